#include "render/gl_batch.h"

#include <cstring>

#include "render/picture.h"

namespace vt::glb {

namespace {

// The switches the drawing code uses.
constexpr GLenum kCaps[] = {GL_LIGHTING,   GL_LINE_SMOOTH,   GL_BLEND,     GL_DEPTH_TEST,
                            GL_LINE_STIPPLE, GL_POLYGON_OFFSET_FILL, GL_TEXTURE_2D, GL_CULL_FACE};
constexpr int kCapCount = sizeof kCaps / sizeof kCaps[0];

enum class Tri : signed char { Unknown = -1, Off = 0, On = 1 };

struct State {
  Tri caps[kCapCount];
  float lineWidth;      // < 0 unknown
  GLint stippleFactor;  // 0 unknown
  GLushort stipplePattern;
  GLenum blendSrc, blendDst;  // 0 unknown
  GLenum lineHint;            // 0 unknown
  GLenum polygonMode;         // 0 unknown
  GLuint texture;             // with textureKnown
  bool textureKnown;
};

State Unknown() {
  State s;
  for (Tri& t : s.caps) t = Tri::Unknown;
  s.lineWidth = -1;
  s.stippleFactor = 0;
  s.stipplePattern = 0;
  s.blendSrc = s.blendDst = 0;
  s.lineHint = 0;
  s.polygonMode = 0;
  s.texture = 0;
  s.textureKnown = false;
  return s;
}

bool g_active = false;
State g_want = Unknown();
State g_have = Unknown();
bool g_dirty = false;
GLenum g_open = 0xFFFF;  // the primitive left open, or none
constexpr GLenum kNone = 0xFFFF;
float g_color[4] = {0, 0, 0, 1};
// The wanted colour has been issued in the primitive that is open now (or,
// with nothing open, outside any primitive). A closed primitive forgets it:
// a colour given after the last vertex of a primitive is not reliably the
// current colour once that primitive ends (display lists drop it), so every
// primitive issues its colour again before its first vertex.
bool g_colorSent = false;
bool g_inside = false;  // between the caller's Begin and End

int CapIndex(GLenum cap) {
  for (int i = 0; i < kCapCount; ++i)
    if (kCaps[i] == cap) return i;
  return -1;
}

bool Joinable(GLenum mode) { return mode == GL_LINES || mode == GL_TRIANGLES || mode == GL_QUADS; }

void CloseOpen() {
  if (g_open != kNone) {
    glEnd();
    g_open = kNone;
    g_colorSent = false;
  }
}

void SendColor() {
  glColor4f(g_color[0], g_color[1], g_color[2], g_color[3]);
  g_colorSent = true;
}

void Apply() {
  if (!g_dirty) return;
  CloseOpen();
  for (int i = 0; i < kCapCount; ++i) {
    if (g_want.caps[i] == Tri::Unknown || g_want.caps[i] == g_have.caps[i]) continue;
    if (g_want.caps[i] == Tri::On) glEnable(kCaps[i]);
    else glDisable(kCaps[i]);
    g_have.caps[i] = g_want.caps[i];
  }
  if (g_want.lineWidth >= 0 && g_want.lineWidth != g_have.lineWidth) {
    glLineWidth(g_want.lineWidth);
    g_have.lineWidth = g_want.lineWidth;
  }
  if (g_want.stippleFactor &&
      (g_want.stippleFactor != g_have.stippleFactor || g_want.stipplePattern != g_have.stipplePattern)) {
    glLineStipple(g_want.stippleFactor, g_want.stipplePattern);
    g_have.stippleFactor = g_want.stippleFactor;
    g_have.stipplePattern = g_want.stipplePattern;
  }
  if (CapturingPicture()) {
    const int stipple = CapIndex(GL_LINE_STIPPLE);
    CaptureLineState(g_have.lineWidth < 0 ? 1.0f : g_have.lineWidth, g_have.caps[stipple] == Tri::On,
                     g_have.stippleFactor, g_have.stipplePattern);
  }
  if (g_want.blendSrc && (g_want.blendSrc != g_have.blendSrc || g_want.blendDst != g_have.blendDst)) {
    glBlendFunc(g_want.blendSrc, g_want.blendDst);
    g_have.blendSrc = g_want.blendSrc;
    g_have.blendDst = g_want.blendDst;
  }
  if (g_want.lineHint && g_want.lineHint != g_have.lineHint) {
    glHint(GL_LINE_SMOOTH_HINT, g_want.lineHint);
    g_have.lineHint = g_want.lineHint;
  }
  if (g_want.polygonMode && g_want.polygonMode != g_have.polygonMode) {
    glPolygonMode(GL_FRONT_AND_BACK, g_want.polygonMode);
    g_have.polygonMode = g_want.polygonMode;
  }
  if (g_want.textureKnown && (!g_have.textureKnown || g_want.texture != g_have.texture)) {
    glBindTexture(GL_TEXTURE_2D, g_want.texture);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    g_have.texture = g_want.texture;
    g_have.textureKnown = true;
  }
  g_dirty = false;
}

void MarkDirty() { g_dirty = true; }

}  // namespace

void Reset() {
  g_want = Unknown();
  g_have = Unknown();
  g_dirty = false;
  g_open = kNone;
  g_colorSent = false;
  g_inside = false;
}

bool Active() { return g_active; }
void SetActive(bool on) {
  if (!on) Sync();
  g_active = on;
  Reset();
}

void Enable(GLenum cap, bool on) {
  if (!g_active) {
    if (on) glEnable(cap);
    else glDisable(cap);
    return;
  }
  int i = CapIndex(cap);
  if (i < 0) {
    Sync();
    if (on) glEnable(cap);
    else glDisable(cap);
    return;
  }
  Tri t = on ? Tri::On : Tri::Off;
  if (g_want.caps[i] != t) {
    g_want.caps[i] = t;
    if (g_have.caps[i] != t) MarkDirty();
  }
}

void LineWidth(float width) {
  if (!g_active) {
    glLineWidth(width);
    return;
  }
  g_want.lineWidth = width;
  if (g_have.lineWidth != width) MarkDirty();
}

void LineStipple(GLint factor, GLushort pattern) {
  if (!g_active) {
    glLineStipple(factor, pattern);
    return;
  }
  g_want.stippleFactor = factor;
  g_want.stipplePattern = pattern;
  if (g_have.stippleFactor != factor || g_have.stipplePattern != pattern) MarkDirty();
}

void BlendFunc(GLenum src, GLenum dst) {
  if (!g_active) {
    glBlendFunc(src, dst);
    return;
  }
  g_want.blendSrc = src;
  g_want.blendDst = dst;
  if (g_have.blendSrc != src || g_have.blendDst != dst) MarkDirty();
}

void Hint(GLenum target, GLenum mode) {
  if (!g_active || target != GL_LINE_SMOOTH_HINT) {
    Sync();
    glHint(target, mode);
    return;
  }
  g_want.lineHint = mode;
  if (g_have.lineHint != mode) MarkDirty();
}

void PolygonMode(GLenum mode) {
  if (!g_active) {
    glPolygonMode(GL_FRONT_AND_BACK, mode);
    return;
  }
  g_want.polygonMode = mode;
  if (g_have.polygonMode != mode) MarkDirty();
}

void BindTexture(GLuint name) {
  if (!g_active) {
    glBindTexture(GL_TEXTURE_2D, name);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    return;
  }
  g_want.texture = name;
  g_want.textureKnown = true;
  if (!g_have.textureKnown || g_have.texture != name) MarkDirty();
}

void Color(float r, float g, float b, float a) {
  if (!g_active || g_inside) {
    // Between Begin and End a colour is a vertex colour.
    glColor4f(r, g, b, a);
    g_color[0] = r, g_color[1] = g, g_color[2] = b, g_color[3] = a;
    g_colorSent = g_active;
    return;
  }
  if (g_color[0] == r && g_color[1] == g && g_color[2] == b && g_color[3] == a) return;
  // Outside the caller's primitive (a joined one may still be open): the
  // colour goes with the next primitive, before its first vertex.
  g_color[0] = r, g_color[1] = g, g_color[2] = b, g_color[3] = a;
  g_colorSent = false;
}

void ColorShadow(float out[4]) { std::memcpy(out, g_color, sizeof g_color); }

void SetColorShadow(const float in[4]) {
  std::memcpy(g_color, in, sizeof g_color);
  g_colorSent = false;
}

void Begin(GLenum mode) {
  if (!g_active) {
    glBegin(mode);
    return;
  }
  Apply();
  if (g_open != kNone && !(g_open == mode && Joinable(mode))) CloseOpen();
  if (g_open == kNone) {
    glBegin(mode);
    g_open = mode;
  }
  if (!g_colorSent) SendColor();
  g_inside = true;
}

void End() {
  if (!g_active) {
    glEnd();
    return;
  }
  g_inside = false;
  // Stays open for a following primitive of the same kind; a strip or a fan
  // cannot be continued.
  if (!Joinable(g_open)) CloseOpen();
}

void Sync() {
  if (!g_active) return;
  CloseOpen();
  Apply();
  if (!g_colorSent) SendColor();
}

void Forget() {
  if (!g_active) return;
  CloseOpen();
  g_have = Unknown();
  g_dirty = true;
  g_colorSent = false;
}

}  // namespace vt::glb
