#include "render/text.h"
#include "render/picture.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <map>
#include <memory>
#include <vector>

#include "document/host.h"

namespace vt {

unsigned int FontBitmapBase = 0;
unsigned int FontOutlineSmall = 0;
unsigned int FontOutlineLarge = 0;
std::string FontFileOverride;

namespace {

constexpr int kBitmapNames = 256;   // names reserved for the bitmap font
constexpr int kBitmapGlyphs = 128;  // characters built: 0 to 127
constexpr int kOutlineGlyphs = 256;
constexpr double kExtrusion = 0.3;
constexpr int kCurveSteps = 8;  // segments of each curve of an outline

// Windows-1252 bytes 0x80 to 0x9F; 0 marks the unassigned ones.
constexpr unsigned short kHigh1252[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// ---- faces ---------------------------------------------------------------------

struct FaceFile {
  std::string path;
  int index = 0;
};

bool FindFace(const char* family, bool bold, FaceFile& out) {
  if (!FontFileOverride.empty()) {
    out.path = FontFileOverride;
    out.index = 0;
    return true;
  }
  static bool fcReady = FcInit() == FcTrue;
  if (!fcReady) return false;
  FcPattern* pat = FcPatternCreate();
  if (!pat) return false;
  FcPatternAddString(pat, FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
  FcPatternAddInteger(pat, FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddInteger(pat, FC_SLANT, FC_SLANT_ROMAN);
  FcPatternAddBool(pat, FC_OUTLINE, FcTrue);
  FcConfigSubstitute(nullptr, pat, FcMatchPattern);
  FcDefaultSubstitute(pat);
  FcResult result = FcResultNoMatch;
  FcPattern* match = FcFontMatch(nullptr, pat, &result);
  FcPatternDestroy(pat);
  if (!match) return false;
  FcChar8* file = nullptr;
  bool ok = FcPatternGetString(match, FC_FILE, 0, &file) == FcResultMatch && file;
  if (ok) {
    out.path = reinterpret_cast<const char*>(file);
    int index = 0;
    if (FcPatternGetInteger(match, FC_INDEX, 0, &index) != FcResultMatch) index = 0;
    out.index = index;
  }
  FcPatternDestroy(match);
  return ok;
}

class FreeTypeFace {
 public:
  FreeTypeFace() = default;
  FreeTypeFace(const FreeTypeFace&) = delete;
  FreeTypeFace& operator=(const FreeTypeFace&) = delete;
  ~FreeTypeFace() {
    if (face_) FT_Done_Face(face_);
    if (lib_) FT_Done_FreeType(lib_);
  }
  bool Open(const FaceFile& f) {
    if (FT_Init_FreeType(&lib_) != 0) {
      lib_ = nullptr;
      return false;
    }
    if (FT_New_Face(lib_, f.path.c_str(), f.index, &face_) != 0) {
      face_ = nullptr;
      return false;
    }
    return FT_IS_SCALABLE(face_);
  }
  FT_Face get() const { return face_; }

 private:
  FT_Library lib_ = nullptr;
  FT_Face face_ = nullptr;
};

void ReportFontFailure() {
  host().MsgBox("Unable to create font", "Error", MsgButtons::OK, MsgIcon::Exclamation);
}

// ---- bitmap glyphs ----------------------------------------------------------------

// The bitmap glyphs again as one alpha texture, for writing many labels in
// window space (DrawTextsInWindow): each glyph keeps its place in the texture
// and the numbers of its glBitmap call.
struct AtlasGlyph {
  bool defined = false;  // a list exists for the character
  int w = 0, h = 0;      // bitmap size; 0 for a glyph that only moves
  float xorig = 0, yorig = 0, advance = 0;
  int u = 0, v = 0;  // lower left corner in the texture
};

struct GlyphAtlas {
  GLuint texture = 0;
  int width = 0, height = 0;
  std::array<AtlasGlyph, kBitmapGlyphs> glyphs;
};

GlyphAtlas g_atlas;

// The placement DrawTextAt and DrawBitmapAt write through, when one is set.
const WindowProjection* g_placement = nullptr;
// The texture the one-off pictures go through: each one is loaded into it
// where it is drawn (in a list, at every call of the list).
GLuint g_oneOff = 0;

// A one-bit picture (glBitmap's rows, (w + 7) / 8 bytes each) as alpha
// bytes, 255 where a bit is set.
std::vector<GLubyte> AlphaOfBits(int w, int h, const GLubyte* rows) {
  std::vector<GLubyte> alpha(static_cast<size_t>(w) * static_cast<size_t>(h), 0);
  const size_t rowBytes = static_cast<size_t>((w + 7) / 8);
  for (int r = 0; r < h; ++r)
    for (int k = 0; k < w; ++k)
      if (rows[static_cast<size_t>(r) * rowBytes + static_cast<size_t>(k / 8)] & (0x80 >> (k % 8)))
        alpha[static_cast<size_t>(r) * static_cast<size_t>(w) + static_cast<size_t>(k)] = 255;
  return alpha;
}

// The bound 2D texture samples its texels as they are, clamped at the edges.
void NearestClamped() {
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

// A textured quad between window corners (x0, y0) and (x1, y1) at depth z,
// taking the texture between (u0, v0) and (u1, v1); inside GL_QUADS.
void EmitQuad(float x0, float y0, float x1, float y1, float z, float u0, float v0, float u1, float v1) {
  glTexCoord2f(u0, v0);
  glVertex3f(x0, y0, z);
  glTexCoord2f(u1, v0);
  glVertex3f(x1, y0, z);
  glTexCoord2f(u1, v1);
  glVertex3f(x1, y1, z);
  glTexCoord2f(u0, v1);
  glVertex3f(x0, y1, z);
}

struct GlyphBits {
  int w = 0, h = 0;
  std::vector<GLubyte> alpha;  // w * h, rows bottom-up, 255 where a bit is set
};

void BuildAtlas(const std::array<GlyphBits, kBitmapGlyphs>& bits) {
  // Shelves of glyphs in a texture 256 wide, one texel of space between them.
  constexpr int kWidth = 256;
  int x = 1, y = 1, shelf = 0;
  for (int c = 0; c < kBitmapGlyphs; ++c) {
    const GlyphBits& b = bits[static_cast<size_t>(c)];
    if (b.w == 0 || b.h == 0) continue;
    if (x + b.w + 1 > kWidth) {
      x = 1;
      y += shelf + 1;
      shelf = 0;
    }
    g_atlas.glyphs[static_cast<size_t>(c)].u = x;
    g_atlas.glyphs[static_cast<size_t>(c)].v = y;
    x += b.w + 1;
    shelf = std::max(shelf, b.h);
  }
  int height = 1;
  while (height < y + shelf + 1) height *= 2;
  std::vector<GLubyte> texels(static_cast<size_t>(kWidth) * static_cast<size_t>(height), 0);
  for (int c = 0; c < kBitmapGlyphs; ++c) {
    const GlyphBits& b = bits[static_cast<size_t>(c)];
    const AtlasGlyph& g = g_atlas.glyphs[static_cast<size_t>(c)];
    for (int r = 0; r < b.h; ++r) {
      for (int k = 0; k < b.w; ++k) {
        texels[static_cast<size_t>(g.v + r) * kWidth + static_cast<size_t>(g.u + k)] =
            b.alpha[static_cast<size_t>(r) * static_cast<size_t>(b.w) + static_cast<size_t>(k)];
      }
    }
  }
  GLint oldBinding = 0;
  glGetIntegerv(GL_TEXTURE_BINDING_2D, &oldBinding);
  glGenTextures(1, &g_atlas.texture);
  glBindTexture(GL_TEXTURE_2D, g_atlas.texture);
  NearestClamped();
  glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, kWidth, height, 0, GL_ALPHA, GL_UNSIGNED_BYTE, texels.data());
  glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(oldBinding));
  g_atlas.width = kWidth;
  g_atlas.height = height;
}

// A glyph as glBitmap takes it: one bit a pixel, rows bottom-up, (w + 7) / 8
// bytes a row; w and h are 0 for a glyph that only moves the pen.
struct MonoGlyph {
  int w = 0, h = 0;
  float xorig = 0, yorig = 0, advance = 0;
  std::vector<GLubyte> rows;
};

bool RenderMonoGlyph(FT_Face f, FT_UInt index, MonoGlyph& out) {
  if (!index || FT_Load_Glyph(f, index, FT_LOAD_RENDER | FT_LOAD_TARGET_MONO | FT_LOAD_MONOCHROME) != 0) return false;
  const FT_GlyphSlot g = f->glyph;
  const FT_Bitmap& bm = g->bitmap;
  out = MonoGlyph();
  out.advance = static_cast<float>(g->advance.x) / 64.0f;
  if (bm.width == 0 || bm.rows == 0 || bm.pixel_mode != FT_PIXEL_MODE_MONO) return true;
  out.w = static_cast<int>(bm.width);
  out.h = static_cast<int>(bm.rows);
  const int rowBytes = (out.w + 7) / 8;
  out.rows.assign(static_cast<size_t>(rowBytes) * static_cast<size_t>(out.h), 0);
  // FreeType's rows run top-down, glBitmap's bottom-up.
  for (int r = 0; r < out.h; ++r)
    std::copy_n(bm.buffer + static_cast<ptrdiff_t>(r) * bm.pitch, rowBytes,
                out.rows.data() + static_cast<size_t>(out.h - 1 - r) * rowBytes);
  out.xorig = static_cast<float>(-g->bitmap_left);
  out.yorig = static_cast<float>(out.h - g->bitmap_top);
  return true;
}

bool BuildBitmapFont(GLuint& base) {
  FaceFile file;
  FreeTypeFace face;
  if (!FindFace("Verdana", false, file) || !face.Open(file)) return false;
  FT_Face f = face.get();
  if (FT_Set_Pixel_Sizes(f, 0, 12) != 0) return false;
  base = glGenLists(kBitmapNames);
  if (!base) return false;
  GLint oldAlign = 4;
  glGetIntegerv(GL_UNPACK_ALIGNMENT, &oldAlign);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  g_atlas = GlyphAtlas();
  std::array<GlyphBits, kBitmapGlyphs> bits;
  for (int c = 0; c < kBitmapGlyphs; ++c) {
    glNewList(base + static_cast<GLuint>(c), GL_COMPILE);
    AtlasGlyph& ag = g_atlas.glyphs[static_cast<size_t>(c)];
    MonoGlyph m;
    if (c >= 32 && RenderMonoGlyph(f, FT_Get_Char_Index(f, static_cast<FT_ULong>(c)), m)) {
      ag.defined = true;
      ag.advance = m.advance;
      ag.w = m.w;
      ag.h = m.h;
      ag.xorig = m.xorig;
      ag.yorig = m.yorig;
      GlyphBits& gb = bits[static_cast<size_t>(c)];
      gb.w = m.w;
      gb.h = m.h;
      gb.alpha = AlphaOfBits(m.w, m.h, m.rows.data());
      glBitmap(m.w, m.h, m.xorig, m.yorig, m.advance, 0.0f, m.w ? m.rows.data() : nullptr);
    }
    glEndList();
  }
  glPixelStorei(GL_UNPACK_ALIGNMENT, oldAlign);
  BuildAtlas(bits);
  return true;
}

// Characters beyond ASCII: rendered on first use from the same face at the
// same size (or from DejaVu Sans when that face lacks them) and kept on the
// CPU, so that they can be written into whatever list is being compiled.
const MonoGlyph* ExtraGlyphFor(unsigned cp) {
  static std::map<unsigned, std::unique_ptr<MonoGlyph>> cache;
  static FreeTypeFace primary, fallback;
  static bool opened = false, havePrimary = false, haveFallback = false;
  if (!opened) {
    opened = true;
    FaceFile file;
    havePrimary = FindFace("Verdana", false, file) && primary.Open(file) && FT_Set_Pixel_Sizes(primary.get(), 0, 12) == 0;
    haveFallback = FindFace("DejaVu Sans", false, file) && fallback.Open(file) &&
                   FT_Set_Pixel_Sizes(fallback.get(), 0, 12) == 0;
  }
  auto it = cache.find(cp);
  if (it != cache.end()) return it->second.get();
  std::unique_ptr<MonoGlyph> glyph;
  for (int pass = 0; pass < 2 && !glyph; ++pass) {
    if (!(pass == 0 ? havePrimary : haveFallback)) continue;
    FT_Face f = pass == 0 ? primary.get() : fallback.get();
    auto m = std::make_unique<MonoGlyph>();
    if (RenderMonoGlyph(f, FT_Get_Char_Index(f, static_cast<FT_ULong>(cp)), *m)) glyph = std::move(m);
  }
  const MonoGlyph* result = glyph.get();
  cache[cp] = std::move(glyph);
  return result;
}

// Writes one glyph beyond ASCII at the raster position and moves it on.
void DrawExtraGlyph(unsigned cp) {
  const MonoGlyph* g = ExtraGlyphFor(cp);
  if (!g) return;
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glBitmap(g->w, g->h, g->xorig, g->yorig, g->advance, 0.0f, g->w ? g->rows.data() : nullptr);
  glPopClientAttrib();
}

// ---- outline glyphs ---------------------------------------------------------------

using Contour = std::vector<std::array<double, 2>>;

struct OutlineWalk {
  std::vector<Contour> contours;
  double scale = 1;
  double lastX = 0, lastY = 0;

  void Add(double x, double y) {
    contours.back().push_back({x * scale, y * scale});
    lastX = x;
    lastY = y;
  }
};

int MoveTo(const FT_Vector* to, void* user) {
  auto* w = static_cast<OutlineWalk*>(user);
  w->contours.emplace_back();
  w->Add(static_cast<double>(to->x), static_cast<double>(to->y));
  return 0;
}

int LineTo(const FT_Vector* to, void* user) {
  auto* w = static_cast<OutlineWalk*>(user);
  w->Add(static_cast<double>(to->x), static_cast<double>(to->y));
  return 0;
}

int ConicTo(const FT_Vector* control, const FT_Vector* to, void* user) {
  auto* w = static_cast<OutlineWalk*>(user);
  const double x0 = w->lastX, y0 = w->lastY;
  const double cx = static_cast<double>(control->x), cy = static_cast<double>(control->y);
  const double x1 = static_cast<double>(to->x), y1 = static_cast<double>(to->y);
  for (int i = 1; i <= kCurveSteps; ++i) {
    const double t = static_cast<double>(i) / kCurveSteps, u = 1 - t;
    w->Add(u * u * x0 + 2 * u * t * cx + t * t * x1, u * u * y0 + 2 * u * t * cy + t * t * y1);
  }
  return 0;
}

int CubicTo(const FT_Vector* c1, const FT_Vector* c2, const FT_Vector* to, void* user) {
  auto* w = static_cast<OutlineWalk*>(user);
  const double x0 = w->lastX, y0 = w->lastY;
  const double ax = static_cast<double>(c1->x), ay = static_cast<double>(c1->y);
  const double bx = static_cast<double>(c2->x), by = static_cast<double>(c2->y);
  const double x1 = static_cast<double>(to->x), y1 = static_cast<double>(to->y);
  for (int i = 1; i <= kCurveSteps; ++i) {
    const double t = static_cast<double>(i) / kCurveSteps, u = 1 - t;
    const double b0 = u * u * u, b1 = 3 * u * u * t, b2 = 3 * u * t * t, b3 = t * t * t;
    w->Add(b0 * x0 + b1 * ax + b2 * bx + b3 * x1, b0 * y0 + b1 * ay + b2 * by + b3 * y1);
  }
  return 0;
}

// Vertex storage of one tessellation: the tessellator keeps pointers into it
// until the polygon ends, so it never moves its elements.
using VertexStore = std::deque<std::array<GLdouble, 3>>;

void GLAPIENTRY TessBegin(GLenum mode) { glBegin(mode); }
void GLAPIENTRY TessEnd() { glEnd(); }
void GLAPIENTRY TessVertex(void* data) { glVertex3dv(static_cast<const GLdouble*>(data)); }
void GLAPIENTRY TessCombine(GLdouble coords[3], void* /*neighbours*/[4], GLfloat /*weights*/[4], void** out,
                            void* polygon) {
  auto* store = static_cast<VertexStore*>(polygon);
  store->push_back({coords[0], coords[1], coords[2]});
  *out = store->back().data();
}
void GLAPIENTRY TessError(GLenum) {}

void TessellateFace(GLUtesselator* tess, const std::vector<Contour>& contours, double z) {
  VertexStore store;
  gluTessBeginPolygon(tess, &store);
  for (const Contour& c : contours) {
    if (c.size() < 3) continue;
    gluTessBeginContour(tess);
    for (const auto& p : c) {
      store.push_back({p[0], p[1], z});
      gluTessVertex(tess, store.back().data(), store.back().data());
    }
    gluTessEndContour(tess);
  }
  gluTessEndPolygon(tess);
}

void DrawSides(const std::vector<Contour>& contours, bool clockwise) {
  for (const Contour& c : contours) {
    const size_t n = c.size();
    if (n < 2) continue;
    glBegin(GL_QUADS);
    for (size_t i = 0; i < n; ++i) {
      const auto& p = c[i];
      const auto& q = c[(i + 1) % n];
      double nx = q[1] - p[1], ny = -(q[0] - p[0]);
      if (!clockwise) {
        nx = -nx;
        ny = -ny;
      }
      const double len = std::sqrt(nx * nx + ny * ny);
      if (len <= 0) continue;
      glNormal3d(nx / len, ny / len, 0);
      glVertex3d(p[0], p[1], 0);
      glVertex3d(q[0], q[1], 0);
      glVertex3d(q[0], q[1], -kExtrusion);
      glVertex3d(p[0], p[1], -kExtrusion);
    }
    glEnd();
  }
}

// One glyph's geometry, one unit to the em.
struct OutlineGlyph {
  std::vector<Contour> contours;
  bool clockwise = true;
  double advance = 0;
};

// One glyph's outline from a face opened for outlines; false when the face
// has no such character.
bool LoadOutlineGlyph(FT_Face f, unsigned code, OutlineGlyph& g) {
  static const FT_Outline_Funcs funcs = [] {
    FT_Outline_Funcs fn{};
    fn.move_to = &MoveTo;
    fn.line_to = &LineTo;
    fn.conic_to = &ConicTo;
    fn.cubic_to = &CubicTo;
    return fn;
  }();
  const double scale = f->units_per_EM > 0 ? 1.0 / f->units_per_EM : 1.0 / 2048;
  FT_UInt index = FT_Get_Char_Index(f, code);
  if (!index) return false;
  if (FT_Load_Glyph(f, index, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) != 0) return false;
  g.advance = static_cast<double>(f->glyph->advance.x) * scale;
  if (f->glyph->format != FT_GLYPH_FORMAT_OUTLINE) return true;
  OutlineWalk walk;
  walk.scale = scale;
  FT_Outline_Decompose(&f->glyph->outline, &funcs, &walk);
  // A closing point that repeats the first adds nothing.
  for (Contour& k : walk.contours) {
    if (k.size() > 1 && k.front() == k.back()) k.pop_back();
  }
  g.contours = std::move(walk.contours);
  g.clockwise = FT_Outline_Get_Orientation(&f->glyph->outline) == FT_ORIENTATION_TRUETYPE;
  return true;
}

bool LoadOutlines(std::vector<OutlineGlyph>& glyphs) {
  FaceFile file;
  FreeTypeFace face;
  if (!FindFace("Arial", true, file) || !face.Open(file)) return false;
  glyphs.assign(kOutlineGlyphs, OutlineGlyph());
  for (int c = 32; c < kOutlineGlyphs; ++c) {
    unsigned code = AnsiToUnicode(static_cast<unsigned char>(c));
    if (code != 0) LoadOutlineGlyph(face.get(), code, glyphs[static_cast<size_t>(c)]);
  }
  return true;
}

GLUtesselator* NewGlyphTess() {
  GLUtesselator* tess = gluNewTess();
  if (!tess) return nullptr;
  gluTessCallback(tess, GLU_TESS_BEGIN, reinterpret_cast<_GLUfuncptr>(&TessBegin));
  gluTessCallback(tess, GLU_TESS_END, reinterpret_cast<_GLUfuncptr>(&TessEnd));
  gluTessCallback(tess, GLU_TESS_VERTEX, reinterpret_cast<_GLUfuncptr>(&TessVertex));
  gluTessCallback(tess, GLU_TESS_COMBINE_DATA, reinterpret_cast<_GLUfuncptr>(&TessCombine));
  gluTessCallback(tess, GLU_TESS_ERROR, reinterpret_cast<_GLUfuncptr>(&TessError));
  gluTessProperty(tess, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
  gluTessNormal(tess, 0, 0, 1);
  return tess;
}

// A glyph's faces and sides, then the move by its advance.
void EmitOutlineGlyph(GLUtesselator* tess, const OutlineGlyph& g) {
  if (!g.contours.empty()) {
    glNormal3d(0, 0, 1);
    TessellateFace(tess, g.contours, 0);
    glNormal3d(0, 0, -1);
    TessellateFace(tess, g.contours, -kExtrusion);
    DrawSides(g.contours, g.clockwise);
  }
  if (g.advance != 0) glTranslated(g.advance, 0, 0);
}

// Characters beyond the code page's outline lists: loaded on first use from
// the same face (or DejaVu Sans Bold when it lacks them) and kept on the CPU,
// so that they can be tessellated into whatever list is being compiled.
const OutlineGlyph* ExtraOutlineFor(unsigned cp) {
  static std::map<unsigned, std::unique_ptr<OutlineGlyph>> cache;
  static FreeTypeFace primary, fallback;
  static bool opened = false, havePrimary = false, haveFallback = false;
  if (!opened) {
    opened = true;
    FaceFile file;
    havePrimary = FindFace("Arial", true, file) && primary.Open(file);
    haveFallback = FindFace("DejaVu Sans", true, file) && fallback.Open(file);
  }
  auto it = cache.find(cp);
  if (it != cache.end()) return it->second.get();
  std::unique_ptr<OutlineGlyph> glyph;
  for (int pass = 0; pass < 2 && !glyph; ++pass) {
    if (!(pass == 0 ? havePrimary : haveFallback)) continue;
    auto g = std::make_unique<OutlineGlyph>();
    if (LoadOutlineGlyph(pass == 0 ? primary.get() : fallback.get(), cp, *g)) glyph = std::move(g);
  }
  const OutlineGlyph* result = glyph.get();
  cache[cp] = std::move(glyph);
  return result;
}

bool BuildOutlineFont(const std::vector<OutlineGlyph>& glyphs, GLuint& base) {
  GLUtesselator* tess = NewGlyphTess();
  if (!tess) return false;
  base = glGenLists(kOutlineGlyphs);
  if (!base) {
    gluDeleteTess(tess);
    return false;
  }
  for (int c = 0; c < kOutlineGlyphs; ++c) {
    glNewList(base + static_cast<GLuint>(c), GL_COMPILE);
    EmitOutlineGlyph(tess, glyphs[static_cast<size_t>(c)]);
    glEndList();
  }
  gluDeleteTess(tess);
  return true;
}

// Lists that each call the list of the same glyph of another outline font.
bool BuildOutlineTwin(GLuint of, GLuint& base) {
  base = glGenLists(kOutlineGlyphs);
  if (!base) return false;
  for (int c = 0; c < kOutlineGlyphs; ++c) {
    glNewList(base + static_cast<GLuint>(c), GL_COMPILE);
    glCallList(of + static_cast<GLuint>(c));
    glEndList();
  }
  return true;
}

// Whether the outline lists were built (or failed) in this context: a face
// that cannot be had is reported once, not at every scene.
bool g_outlinesTried = false;

bool BuildBitmapSet() {
  if (g_atlas.texture) glDeleteTextures(1, &g_atlas.texture);
  if (FontBitmapBase) glDeleteLists(FontBitmapBase, kBitmapNames);
  FontBitmapBase = 0;
  g_atlas = GlyphAtlas();
  GLuint base = 0;
  if (BuildBitmapFont(base)) {
    FontBitmapBase = base;
    return true;
  }
  if (base) glDeleteLists(base, kBitmapNames);
  g_atlas = GlyphAtlas();
  ReportFontFailure();
  return false;
}

bool BuildOutlineSets() {
  if (FontOutlineSmall) glDeleteLists(FontOutlineSmall, kOutlineGlyphs);
  if (FontOutlineLarge) glDeleteLists(FontOutlineLarge, kOutlineGlyphs);
  FontOutlineSmall = FontOutlineLarge = 0;
  g_outlinesTried = true;
  bool all = true;
  // Both outline sizes come from the same unhinted outlines: the lists are in
  // units of the em, whatever the size asked for.
  // The second set calls the glyphs of the first, which are tessellated once.
  std::vector<OutlineGlyph> glyphs;
  const bool loaded = LoadOutlines(glyphs);
  for (unsigned* slot : {&FontOutlineSmall, &FontOutlineLarge}) {
    GLuint b = 0;
    const bool built = slot == &FontOutlineLarge && FontOutlineSmall ? BuildOutlineTwin(FontOutlineSmall, b)
                                                                     : loaded && BuildOutlineFont(glyphs, b);
    if (built) {
      *slot = b;
    } else {
      ReportFontFailure();
      if (b) glDeleteLists(b, kOutlineGlyphs);
      all = false;
    }
  }
  return all;
}

}  // namespace

unsigned AnsiToUnicode(unsigned char byte) {
  if (byte >= 0x80 && byte < 0xA0) return kHigh1252[byte - 0x80];
  return byte;
}

std::vector<unsigned> CodePoints(const std::string& utf8) {
  std::vector<unsigned> out;
  out.reserve(utf8.size());
  size_t i = 0;
  const size_t n = utf8.size();
  while (i < n) {
    const unsigned char c = static_cast<unsigned char>(utf8[i]);
    unsigned cp = 0;
    size_t extra = 0;
    if (c < 0x80) {
      cp = c;
    } else if ((c & 0xE0) == 0xC0) {
      cp = c & 0x1F;
      extra = 1;
    } else if ((c & 0xF0) == 0xE0) {
      cp = c & 0x0F;
      extra = 2;
    } else if ((c & 0xF8) == 0xF0) {
      cp = c & 0x07;
      extra = 3;
    } else {
      out.push_back('?');  // a byte that starts no character
      ++i;
      continue;
    }
    bool valid = i + extra < n || extra == 0;
    for (size_t k = 1; valid && k <= extra; ++k) {
      const unsigned char cc = static_cast<unsigned char>(utf8[i + k]);
      if ((cc & 0xC0) != 0x80) valid = false;
      else cp = (cp << 6) | (cc & 0x3F);
    }
    if (!valid) {
      out.push_back('?');
      ++i;
      continue;
    }
    i += extra + 1;
    out.push_back(cp);
  }
  return out;
}

std::string AnsiBytes(const std::string& utf8) {
  std::string out;
  for (unsigned cp : CodePoints(utf8)) {
    char byte = '?';
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) {
      byte = static_cast<char>(cp);
    } else {
      for (int k = 0; k < 32; ++k) {
        if (kHigh1252[k] != 0 && kHigh1252[k] == cp) {
          byte = static_cast<char>(0x80 + k);
          break;
        }
      }
    }
    out.push_back(byte);
  }
  return out;
}

bool BuildFonts() {
  const bool bitmap = BuildBitmapSet();
  const bool outlines = BuildOutlineSets();
  return bitmap && outlines;
}

void EnsureFonts() {
  if (FontBitmapBase && glIsList(FontBitmapBase + 'A')) return;
  // A context without the lists: names kept from another one mean nothing here.
  ForgetFonts();
  BuildBitmapSet();
}

void EnsureOutlineFonts() {
  const bool have = FontOutlineSmall && glIsList(FontOutlineSmall + 'A') && FontOutlineLarge &&
                    glIsList(FontOutlineLarge + 'A');
  if (!have && !g_outlinesTried) BuildOutlineSets();
}

void ForgetFonts() {
  FontBitmapBase = FontOutlineSmall = FontOutlineLarge = 0;
  g_atlas = GlyphAtlas();
  g_oneOff = 0;
  g_outlinesTried = false;
}

void DrawTextAt(float x, float y, float z, const std::string& text) {
  if (text.empty() || !FontBitmapBase) return;
  if (g_placement && g_atlas.texture && !CapturingPicture()) {
    // Black, as the glyph lists leave the colour.
    glColor3f(0, 0, 0);
    DrawTextsInWindow({TextAt{x, y, z, &text}}, *g_placement);
    return;
  }
  glPushAttrib(GL_LIST_BIT | GL_ENABLE_BIT);
  glDisable(GL_LIGHTING);
  glColor3f(0, 0, 0);
  glRasterPos3f(x, y, z);
  if (CapturingPicture()) {
    PictureText t;
    t.text = text;
    CaptureText(t);
  } else {
    // ASCII runs through the glyph lists, other characters one by one.
    glListBase(FontBitmapBase);
    std::string run;
    for (unsigned cp : CodePoints(text)) {
      if (cp < static_cast<unsigned>(kBitmapGlyphs)) {
        run.push_back(static_cast<char>(cp));
        continue;
      }
      if (!run.empty()) glCallLists(static_cast<GLsizei>(run.size()), GL_UNSIGNED_BYTE, run.data());
      run.clear();
      DrawExtraGlyph(cp);
    }
    if (!run.empty()) glCallLists(static_cast<GLsizei>(run.size()), GL_UNSIGNED_BYTE, run.data());
  }
  glPopAttrib();
}

void DrawOutlineText(const std::string& text) {
  if (text.empty() || !FontOutlineLarge) return;
  glPushMatrix();
  GLUtesselator* tess = nullptr;
  for (unsigned cp : CodePoints(text)) {
    // The lists hold the code page; its bytes below 0x80 and from 0xA0 are
    // the same characters in Unicode.
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) {
      glCallList(FontOutlineLarge + cp);
      continue;
    }
    const OutlineGlyph* g = ExtraOutlineFor(cp);
    if (!g) continue;
    if (!tess && !(tess = NewGlyphTess())) break;
    EmitOutlineGlyph(tess, *g);
  }
  if (tess) gluDeleteTess(tess);
  glPopMatrix();
}

bool ProjectToWindow(const WindowProjection& m, double x, double y, double z, double& wx, double& wy,
                     double& wz, bool insideOnly) {
  if (!m.valid) return false;
  double eye[4], clip[4];
  for (int r = 0; r < 4; ++r) eye[r] = m.model[r] * x + m.model[4 + r] * y + m.model[8 + r] * z + m.model[12 + r];
  for (int r = 0; r < 4; ++r)
    clip[r] = m.proj[r] * eye[0] + m.proj[4 + r] * eye[1] + m.proj[8 + r] * eye[2] + m.proj[12 + r] * eye[3];
  const double w = clip[3];
  if (!(w > 0)) return false;
  for (int i = 0; i < 3 && insideOnly; ++i) {
    if (clip[i] < -w || clip[i] > w) return false;
  }
  wx = m.viewport[0] + (clip[0] / w + 1) * m.viewport[2] / 2.0;
  wy = m.viewport[1] + (clip[1] / w + 1) * m.viewport[3] / 2.0;
  wz = (clip[2] / w + 1) / 2.0;
  return true;
}

namespace {

// Quads in window space: window pixels in x and y, the window depth in z,
// textured with an alpha texture tested at one half, in the current colour.
void BeginWindowQuads(const WindowProjection& m) {
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glLoadIdentity();
  glOrtho(m.viewport[0], m.viewport[0] + m.viewport[2], m.viewport[1], m.viewport[1] + m.viewport[3], 0, -1);
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  glPushAttrib(GL_ENABLE_BIT | GL_TEXTURE_BIT | GL_COLOR_BUFFER_BIT | GL_CURRENT_BIT);
  glDisable(GL_LIGHTING);
  glEnable(GL_TEXTURE_2D);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glEnable(GL_ALPHA_TEST);
  glAlphaFunc(GL_GREATER, 0.5f);
}

void EndWindowQuads() {
  glPopAttrib();
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
  glPopMatrix();
}

// One one-bit picture through the one-off texture, its lower left corner at
// (x0, y0). Inside a list being compiled the picture goes into the list.
void OneOffQuad(float x0, float y0, float z, int w, int h, const GLubyte* rows) {
  if (w <= 0 || h <= 0) return;
  if (!g_oneOff) glGenTextures(1, &g_oneOff);
  const std::vector<GLubyte> alpha = AlphaOfBits(w, h, rows);
  glBindTexture(GL_TEXTURE_2D, g_oneOff);
  NearestClamped();
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
  glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
  glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, w, h, 0, GL_ALPHA, GL_UNSIGNED_BYTE, alpha.data());
  glPopClientAttrib();
  glBegin(GL_QUADS);
  EmitQuad(x0, y0, x0 + static_cast<float>(w), y0 + static_cast<float>(h), z, 0, 0, 1, 1);
  glEnd();
}

}  // namespace

TextPlacement::TextPlacement(const WindowProjection& m) : m_(m), previous_(g_placement) {
  g_placement = m_.valid ? &m_ : nullptr;
}

TextPlacement::~TextPlacement() { g_placement = previous_; }

void DrawBitmapAt(float x, float y, float z, int w, int h, float xorig, float yorig, const unsigned char* rows) {
  if (g_placement && !CapturingPicture()) {
    double wx, wy, wz;
    if (w <= 0 || h <= 0 || !ProjectToWindow(*g_placement, x, y, z, wx, wy, wz)) return;
    BeginWindowQuads(*g_placement);
    // Where glBitmap puts it: the floor of the raster position less the origin.
    OneOffQuad(static_cast<float>(std::floor(wx - xorig)), static_cast<float>(std::floor(wy - yorig)),
               static_cast<float>(wz), w, h, rows);
    EndWindowQuads();
    return;
  }
  glRasterPos3f(x, y, z);
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glBitmap(w, h, xorig, yorig, 0, 0, rows);
  glPopClientAttrib();
}

void DrawTextsInWindow(const std::vector<TextAt>& texts, const WindowProjection& m) {
  if (texts.empty() || !m.valid || !g_atlas.texture || !FontBitmapBase) return;
  const double tw = g_atlas.width, th = g_atlas.height;
  BeginWindowQuads(m);
  glBindTexture(GL_TEXTURE_2D, g_atlas.texture);
  glColor4f(0, 0, 0, 1);
  glBegin(GL_QUADS);
  struct Other {
    float x, y, z;
    const MonoGlyph* glyph;
  };
  std::vector<Other> others;
  for (const TextAt& t : texts) {
    if (!t.text || t.text->empty()) continue;
    double rx, ry, rz;
    if (!ProjectToWindow(m, t.x, t.y, t.z, rx, ry, rz)) continue;  // no valid raster position
    if (CapturingPicture()) {
      CaptureTextInWindow(*t.text, static_cast<float>(rx), static_cast<float>(ry));
      continue;
    }
    const float z = static_cast<float>(rz);
    float pen = static_cast<float>(rx);
    const float base = static_cast<float>(ry);
    for (unsigned cp : CodePoints(*t.text)) {
      if (cp >= static_cast<unsigned>(kBitmapGlyphs)) {
        // Not in the atlas: a picture of its own after the atlas's quads.
        const MonoGlyph* extra = ExtraGlyphFor(cp);
        if (!extra) continue;
        others.push_back({pen, base, z, extra});
        pen += extra->advance;
        continue;
      }
      const AtlasGlyph& g = g_atlas.glyphs[cp];
      if (!g.defined) continue;
      if (g.w > 0) {
        // Where glBitmap puts the bitmap: the floor of the raster position
        // less the origin.
        const float x0 = std::floor(pen - g.xorig), y0 = std::floor(base - g.yorig);
        EmitQuad(x0, y0, x0 + static_cast<float>(g.w), y0 + static_cast<float>(g.h), z, static_cast<float>(g.u / tw),
                 static_cast<float>(g.v / th), static_cast<float>((g.u + g.w) / tw),
                 static_cast<float>((g.v + g.h) / th));
      }
      pen += g.advance;
    }
  }
  glEnd();
  for (const Other& o : others)
    OneOffQuad(std::floor(o.x - o.glyph->xorig), std::floor(o.y - o.glyph->yorig), o.z, o.glyph->w, o.glyph->h,
               o.glyph->rows.data());
  EndWindowQuads();
}

}  // namespace vt
