// Text in the GL context: three sets of glyph display lists built once per
// context from FreeType glyphs of faces found through fontconfig, and the
// routine that writes a text at a place in the scene.
//
// - FontBitmapBase: bitmap glyphs of a Verdana-like face, 12 pixels, normal
//   weight, for the characters 0 to 127. Every other character of a text is
//   rendered from the same face (or DejaVu Sans when the face lacks it) on
//   first use and written as a bitmap of its own.
// - FontOutlineSmall, FontOutlineLarge: outline glyphs of a bold Arial-like
//   face for the characters 0 to 255 (Windows-1252), as filled polygons
//   through GLU's tessellator, one unit to the em, extruded 0.3 towards -z,
//   each list ending with a move by the glyph's advance.
//
// Text arrives as UTF-8. The outline lists hold the Windows-1252 code page;
// DrawOutlineText writes any other character from the face (or DejaVu Sans).
#pragma once

#include <string>
#include <vector>

namespace vt {

extern unsigned int FontBitmapBase;
extern unsigned int FontOutlineSmall;
extern unsigned int FontOutlineLarge;

// A font file used in place of fontconfig's choice for all three fonts
// (empty: ask fontconfig). A file that cannot be loaded makes every font fail.
extern std::string FontFileOverride;

// Builds the three fonts in the current context, deleting any that exist.
// A font that cannot be had shows "Unable to create font", keeps base 0 and
// is left out; drawing goes on without it. True when all three were built.
bool BuildFonts();
// Builds the bitmap font when the current context has none. The outline
// fonts, which only the axes' "Better fonts" use and which take the most
// time and memory to build, wait for EnsureOutlineFonts.
void EnsureFonts();
// Builds the two outline fonts when the current context has none and has not
// tried yet (a face that cannot be had is reported once). Not inside a list
// being compiled: the scene calls it before compiling.
void EnsureOutlineFonts();
// The context is gone with its lists: forget the names.
void ForgetFonts();

// The bytes for the list calls: a character of the code page is its byte, a
// blank stays a blank, a character outside the code page becomes "?". The
// count of bytes is the length of the text in the code page.
std::string AnsiBytes(const std::string& utf8);
// The characters of a UTF-8 text; a byte that starts no character is "?".
std::vector<unsigned> CodePoints(const std::string& utf8);
// The character of a Windows-1252 byte (0 for the five unassigned bytes).
unsigned AnsiToUnicode(unsigned char byte);

// Writes the text in black with the bitmap glyphs, starting at the raster
// position of the place. An empty text, or no bitmap font, draws nothing.
// Lighting is off while the raster position is taken, so black stays black.
void DrawTextAt(float x, float y, float z, const std::string& text);

// Writes the text with the large outline glyphs from the current origin along
// x, one unit to the em, in the current colour; any character the face (or
// DejaVu Sans Bold) has. The matrix is restored after.
void DrawOutlineText(const std::string& text);

// A text and its place, for the writing of many texts at once.
struct TextAt {
  float x, y, z;
  const std::string* text;
};

// The matrices and viewport a frame draws with, read back from GL.
struct WindowProjection {
  double model[16];
  double proj[16];
  int viewport[4];
  bool valid = false;
};
// The window position of a place as glRasterPos finds it: false when the
// place lies outside the view volume (an invalid raster position); with
// insideOnly false, false only behind the eye.
bool ProjectToWindow(const WindowProjection& m, double x, double y, double z, double& wx, double& wy,
                     double& wz, bool insideOnly = true);
// While one lives, DrawTextAt and DrawBitmapAt write with textured quads
// placed in window space with these matrices (those the head of the scene
// or the overlay is drawn with) instead of glBitmap: the same pixels, with
// the state the labels' quads already use, where each glBitmap call is a
// draw and a texture upload of its own and costs the software renderer
// shader variants of its own.
class TextPlacement {
 public:
  explicit TextPlacement(const WindowProjection& m);
  ~TextPlacement();
  TextPlacement(const TextPlacement&) = delete;
  TextPlacement& operator=(const TextPlacement&) = delete;

 private:
  WindowProjection m_;
  const WindowProjection* previous_;
};
// A one-bit picture in glBitmap's layout (rows bottom-up, (w + 7) / 8 bytes a
// row) with its lower left corner at the raster position of the place less
// the origin, in the current colour: glBitmap, or a textured quad under a
// TextPlacement (not when a picture is captured).
void DrawBitmapAt(float x, float y, float z, int w, int h, float xorig, float yorig, const unsigned char* rows);

// Many texts written as DrawTextAt writes them, pixel for pixel, but in one
// pass of textured quads placed in window space with the matrices given:
// each glyph of the bitmap font lands where glBitmap would put it, at the
// window depth of its place, in black, depth-tested. The quads are only
// right for the view they were placed with: the scene list is compiled again
// when the view changes (frame.cpp).
void DrawTextsInWindow(const std::vector<TextAt>& texts, const WindowProjection& m);

}  // namespace vt
