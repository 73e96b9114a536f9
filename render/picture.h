// The scene as a picture of shapes and texts, for the vector exports (SVG,
// PDF, printing, and PNG at any size).
//
// A plane scene is captured shape by shape: the scene list is compiled once
// more with text marks in it and run through OpenGL's feedback mode, which
// hands back every point, line and polygon in window coordinates with its
// colour; line widths and dashes travel as pass-through marks that the
// drawing state (gl_batch.h) writes while the capture compiles. Texts are kept
// as texts (the string, its place, colour and font), never as glyph pixels.
// A space scene is kept as the rendered image, with its texts on top.
//
// Coordinates are window pixels with y down, the picture's size the canvas's.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "document/host.h"

namespace vt {

struct PictureShape {
  enum Kind { Dot, Stroke, Fill } kind = Stroke;
  std::vector<float> xy;  // x0, y0, x1, y1, ...
  bool closed = false;
  std::uint8_t r = 0, g = 0, b = 0, a = 255;
  float width = 1;           // stroke width, dot diameter
  std::uint16_t dash = 0;    // the stipple pattern (0: solid)
  int dashFactor = 1;
};

struct PictureText {
  std::string text;  // UTF-8
  float x = 0, y = 0;  // the start of the base line
  std::uint8_t r = 0, g = 0, b = 0;
  std::string font;  // family; empty: the labels' face
  float pixelSize = 12;
  bool bold = false, italic = false;
};

struct Picture {
  int width = 0, height = 0;
  std::vector<PictureShape> shapes;  // in drawing order
  std::vector<PictureText> texts;    // drawn over the shapes
  Image raster;                      // a space scene's frame (shapes empty)
};

// Captures the scene of the current context at the canvas size. Recompiles
// the scene list twice (with marks, then as before), so the context must be
// the one the frame draws in. False with `error` set when OpenGL gives no
// feedback. Without `controls` the players' panels and the command buttons
// are left out (a printed page); the players' rows of values stay.
bool CapturePicture(Picture& out, std::string& error, bool controls = true);

// ---- for the drawing code -------------------------------------------------
// True while the scene compiles for a capture.
bool CapturingPicture();
// True while the scene compiles for a capture that leaves the controls out.
bool LeavingControlsOut();
// Records a text at the current raster position set just before (the
// caller's glRasterPos), in place of its glyphs; its base line lies `rise`
// pixels above that position.
void CaptureText(const PictureText& text, float rise = 0);
// Records a text whose window place is known already (window y up).
void CaptureTextInWindow(const std::string& text, float wx, float wy);
// The line state now in force, as marks in the list.
void CaptureLineState(float width, bool dashed, int factor, std::uint16_t pattern);

}  // namespace vt
