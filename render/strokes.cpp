#include "render/strokes.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "document/globals.h"
#include "geometry/line.h"
#include "geometry/position.h"
#include "geometry/region.h"
#include "render/frame.h"
#include "render/gl_batch.h"
#include "render/picture.h"
#include "render/text.h"
#include "render/view_state.h"

namespace vt {

namespace {
GLuint g_ballList = 0;

GLUquadric* Quadric() {
  static GLUquadric* q = [] {
    GLUquadric* made = gluNewQuadric();
    if (made) gluQuadricDrawStyle(made, GLU_FILL);
    return made;
  }();
  return q;
}
}  // namespace

bool PlaneView() { return SceneMode != 3; }

void ColorParts(std::uint32_t color, float& r, float& g, float& b) {
  std::uint32_t blue = color / 65536;
  std::uint32_t green = (color - blue * 65536) / 256;
  std::uint32_t red = color - blue * 65536 - green * 256;
  r = static_cast<float>(red % 256) / 255.0f;
  g = static_cast<float>(green % 256) / 255.0f;
  b = static_cast<float>(blue % 256) / 255.0f;
}

void SetColor(std::uint32_t color) { SetColor(color, 1.0f); }

void SetColor(std::uint32_t color, float alpha) {
  float r, g, b;
  ColorParts(color, r, g, b);
  glb::Color(r, g, b, alpha);
}

std::uint32_t LineColorOf(std::uint32_t foreColor, int drawMode) {
  switch (drawMode) {
    case 2: return RGB(255, 0, 0);
    case 3: return kCanvasBackColor;
    case 4: return RGB(0, 255, 0);
    default: return foreColor;
  }
}

bool LineStippleOf(int lineStyle, int& factor, unsigned short& pattern) {
  switch (lineStyle) {
    case 2: factor = 2; pattern = 16191; return true;
    case 3: factor = 1; pattern = 21845; return true;
    case 4: factor = 1; pattern = 10239; return true;
    default: return false;
  }
}

namespace {

// The dash patterns of lines and circles (16 bits, lowest first), one
// texture row each.
constexpr unsigned short kDashRows[] = {16191, 21845, 10239, 255};
constexpr int kDashRowCount = 4;
GLuint g_dashTexture = 0;

int DashRow(unsigned short pattern) {
  for (int i = 0; i < kDashRowCount; ++i)
    if (kDashRows[i] == pattern) return i;
  return -1;
}

// The part [t0, t1] of the window segment p + t (q - p), t in [0, 1], inside
// the viewport; false when none is.
bool ClipToViewport(const int* vp, double px, double py, double qx, double qy, double& t0, double& t1) {
  t0 = 0, t1 = 1;
  const double d[2] = {qx - px, qy - py}, p[2] = {px, py};
  for (int axis = 0; axis < 2; ++axis) {
    const double lo = vp[axis], hi = static_cast<double>(vp[axis]) + vp[axis + 2];
    if (d[axis] == 0) {
      if (p[axis] < lo || p[axis] > hi) return false;
      continue;
    }
    double a = (lo - p[axis]) / d[axis], b = (hi - p[axis]) / d[axis];
    if (a > b) std::swap(a, b);
    t0 = std::max(t0, a);
    t1 = std::min(t1, b);
  }
  return t0 <= t1;
}

}  // namespace

bool TextureDashes = true;

void EnsureDashTexture() {
  if (g_dashTexture && glIsTexture(g_dashTexture)) return;
  glGenTextures(1, &g_dashTexture);
  if (!g_dashTexture) return;
  unsigned char texels[kDashRowCount][16];
  for (int r = 0; r < kDashRowCount; ++r)
    for (int i = 0; i < 16; ++i) texels[r][i] = (kDashRows[r] >> i) & 1 ? 255 : 0;
  GLint old = 0;
  glGetIntegerv(GL_TEXTURE_BINDING_2D, &old);
  glBindTexture(GL_TEXTURE_2D, g_dashTexture);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, 16, kDashRowCount, 0, GL_ALPHA, GL_UNSIGNED_BYTE, texels);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
  glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(old));
}

void ForgetDashTexture() { g_dashTexture = 0; }

DashPen::DashPen(bool stippled, int factor, unsigned short pattern) {
  const int row = stippled && TextureDashes ? DashRow(pattern) : -1;
  const WindowProjection& m = CompiledProjection();
  textured_ = row >= 0 && factor > 0 && g_dashTexture && glb::Active() && PlaneView() && !CapturingPicture() &&
              m.valid && m.proj[15] != 0;
  if (textured_) {
    row_ = (static_cast<float>(row) + 0.5f) / kDashRowCount;
    perTexel_ = factor;
    glb::Enable(GL_LINE_STIPPLE, false);
    glb::BindTexture(g_dashTexture);
    glb::Enable(GL_TEXTURE_2D, true);
    return;
  }
  if (stippled) glb::LineStipple(factor, pattern);
  glb::Enable(GL_LINE_STIPPLE, stippled);
}

void DashPen::Segment(const Position& a, const Position& b, bool runOn) {
  if (!textured_) {
    glVertex3f(a.x, a.y, a.z);
    glVertex3f(b.x, b.y, b.z);
    return;
  }
  if (!runOn || !started_) along_ = 0;
  started_ = true;
  const WindowProjection& m = CompiledProjection();
  double ax = 0, ay = 0, az = 0, bx = 0, by = 0, bz = 0, t0 = 0, t1 = 0;
  double s0 = along_, s1 = along_;
  // Places outside the view volume too: a line is made 500 units long.
  if (ProjectToWindow(m, a.x, a.y, a.z, ax, ay, az, false) && ProjectToWindow(m, b.x, b.y, b.z, bx, by, bz, false)) {
    // GL's count for a smooth line: one a pixel of its length, from where it
    // enters the canvas, and the whole of a last part pixel.
    const double len = std::hypot(bx - ax, by - ay);
    if (ClipToViewport(m.viewport, ax, ay, bx, by, t0, t1)) {
      s0 = along_ - t0 * len;
      s1 = s0 + len;
      along_ += std::ceil((t1 - t0) * len);
    }
  }
  const double k = 1.0 / (16.0 * perTexel_);
  glTexCoord2f(static_cast<float>(s0 * k), row_);
  glVertex3f(a.x, a.y, a.z);
  glTexCoord2f(static_cast<float>(s1 * k), row_);
  glVertex3f(b.x, b.y, b.z);
}

void DashPen::Strip(const Position* points, std::size_t count) {
  glb::Begin(textured_ ? GL_LINES : GL_LINE_STRIP);
  if (textured_) {
    for (std::size_t i = 0; i + 1 < count; ++i) Segment(points[i], points[i + 1], true);
  } else {
    for (std::size_t i = 0; i < count; ++i) glVertex3f(points[i].x, points[i].y, points[i].z);
  }
  glb::End();
}

void DashPen::Finish() {
  if (textured_) glb::Enable(GL_TEXTURE_2D, false);
  else glb::Enable(GL_LINE_STIPPLE, false);
}

void DrawLineStroke(const Position& a, const Position& b, std::uint32_t foreColor, int drawMode,
                    int lineStyle, float lineWidth) {
  glb::Enable(GL_LIGHTING, false);
  glb::Enable(GL_LINE_SMOOTH, true);
  glb::Enable(GL_BLEND, true);
  glb::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glb::Hint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  glb::Enable(GL_POLYGON_OFFSET_FILL, false);
  SetColor(LineColorOf(foreColor, drawMode));
  if (lineWidth > 0) glb::LineWidth(lineWidth);
  int factor = 1;
  unsigned short pattern = 0xFFFF;
  const bool stippled = drawMode == 1 && LineStippleOf(lineStyle, factor, pattern);
  DashPen pen(stippled, factor, pattern);
  glb::Begin(GL_LINES);
  pen.Segment(a, b, false);
  glb::End();
  pen.Finish();
}

void EndLineLook() {
  glb::Enable(GL_LINE_SMOOTH, false);
  glb::Enable(GL_BLEND, false);
  glb::Enable(GL_LIGHTING, true);
}

void DrawArrowHead(const Position& a, const Position& b) {
  const double dx = static_cast<double>(a.x) - b.x, dy = static_cast<double>(a.y) - b.y;
  const double len = std::sqrt(dx * dx + dy * dy);
  if (len <= 0) return;
  const double head = len >= 0.45 ? 0.45 : len;
  const double ux = dx / len, uy = dy / len;  // from the tip back along the shaft
  const double wing = 15 * 3.1416 / 180;
  const double c = std::cos(wing), s = std::sin(wing);
  // Wing ends: the shaft direction turned by +-15 degrees, head long; the base
  // point lies head back on the shaft.
  const float z = b.z;
  const float w1x = static_cast<float>(b.x + head * (ux * c - uy * s));
  const float w1y = static_cast<float>(b.y + head * (ux * s + uy * c));
  const float w2x = static_cast<float>(b.x + head * (ux * c + uy * s));
  const float w2y = static_cast<float>(b.y + head * (-ux * s + uy * c));
  const float mx = static_cast<float>(b.x + head * ux);
  const float my = static_cast<float>(b.y + head * uy);
  glb::Begin(GL_TRIANGLES);
  glVertex3f(b.x, b.y, z);
  glVertex3f(w1x, w1y, z);
  glVertex3f(mx, my, z);
  glVertex3f(b.x, b.y, z);
  glVertex3f(mx, my, z);
  glVertex3f(w2x, w2y, z);
  glb::End();
  glb::Enable(GL_LINE_STIPPLE, false);
  glb::LineWidth(1.0f);
  glb::Begin(GL_LINES);
  glVertex3f(b.x, b.y, z);
  glVertex3f(w1x, w1y, z);
  glVertex3f(b.x, b.y, z);
  glVertex3f(w2x, w2y, z);
  glVertex3f(w1x, w1y, z);
  glVertex3f(mx, my, z);
  glVertex3f(mx, my, z);
  glVertex3f(w2x, w2y, z);
  glb::End();
}

void DrawVector(const Position& a, const Position& b, std::uint32_t foreColor, int drawMode, int lineStyle,
                float lineWidth) {
  DrawLineStroke(a, b, foreColor, drawMode, lineStyle, lineWidth);
  if (PlaneView()) DrawArrowHead(a, b);
  EndLineLook();
}

void DrawVector(const CLine& line) {
  if (line.Hide) return;
  DrawVector(line.pBegin, line.pEnd, line.ForeColor, line.DrawMode, line.GELineStyle, line.GELineWidth);
}

namespace {
// The corners of a convex polygon: `first`, then rim[0..).
struct Corners {
  const Position& first;
  const Position* rim;
  const Position& operator[](std::size_t i) const { return i == 0 ? first : rim[i - 1]; }
};

void EmitCorner(const Position& p) { glVertex3f(p.x, p.y, p.z); }

// The caps between corners a and b (indices into a polygon of n corners,
// b == n meaning corner 0).
void EmitCaps(const Corners& v, std::size_t n, std::size_t a, std::size_t b) {
  if (b - a < 2) return;
  const std::size_t m = (a + b) / 2;
  EmitCorner(v[a]);
  EmitCorner(v[m]);
  EmitCorner(v[b % n]);
  EmitCaps(v, n, a, m);
  EmitCaps(v, n, m, b);
}
}  // namespace

void EmitConvexFill(const Position& first, const Position* rim, std::size_t rimCount) {
  const std::size_t n = rimCount + 1;
  if (n < 3) return;
  const Corners v{first, rim};
  const std::size_t a = n / 3, b = 2 * n / 3;
  EmitCorner(v[0]);
  EmitCorner(v[a]);
  EmitCorner(v[b]);
  EmitCaps(v, n, 0, a);
  EmitCaps(v, n, a, b);
  EmitCaps(v, n, b, n);
}

void DrawRegionFill(const CRegion& region, bool depthTest) {
  if (region.Hide) return;
  std::uint32_t color = region.ForeColor;
  float alpha = region.Alpha;
  switch (region.DrawMode) {
    case 2: color = RGB(0, 0, 255); alpha = 0.5f; break;
    case 3: color = kCanvasBackColor; break;
    case 4: color = RGB(0, 255, 0); alpha = 0.5f; break;
    default: break;
  }
  glb::Enable(GL_LIGHTING, false);
  glb::Enable(GL_BLEND, true);
  glb::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glb::Enable(GL_DEPTH_TEST, depthTest);
  glb::PolygonMode(GL_FILL);
  SetColor(color, alpha);
  glb::Begin(GL_POLYGON);
  for (const Position& p : region.Points) glVertex3f(p.x, p.y, p.z);
  glb::End();
  glb::Enable(GL_DEPTH_TEST, true);
  glb::Enable(GL_BLEND, false);
  glb::Enable(GL_LIGHTING, true);
}

namespace {
bool g_pointBatch = false;
bool g_labelBatch = false;
bool g_batchStateSet = false;  // the shared look has been set for this batch
std::vector<TextAt> g_labels;
constexpr GLenum kNoPrimitive = 0xFFFF;
GLenum g_openPrimitive = kNoPrimitive;
}  // namespace

void BeginPointPrimitive(unsigned int mode) {
  if (g_pointBatch && g_openPrimitive == mode) return;
  ClosePointPrimitive();
  glBegin(mode);
  if (g_pointBatch) g_openPrimitive = mode;
}

void EndPointPrimitive() {
  if (!g_pointBatch) glEnd();
}

void ClosePointPrimitive() {
  if (g_openPrimitive == kNoPrimitive) return;
  glEnd();
  g_openPrimitive = kNoPrimitive;
}

void BeginPointBatch() {
  g_pointBatch = true;
  g_batchStateSet = false;
}

void SetPointBatchState() {
  if (!g_pointBatch || g_batchStateSet) return;
  g_batchStateSet = true;
  glDisable(GL_LIGHTING);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  if (PlaneView()) {
    glEnable(GL_LINE_SMOOTH);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  }
}

void EndPointBatch() {
  if (!g_pointBatch) return;
  ClosePointPrimitive();
  g_pointBatch = false;
  if (g_batchStateSet) {
    if (PlaneView()) {
      glDisable(GL_LINE_SMOOTH);
      glDisable(GL_BLEND);
    }
    glEnable(GL_LIGHTING);
  }
  g_batchStateSet = false;
}

void BeginLabelBatch() {
  g_labelBatch = true;
  g_labels.clear();
}

void EndLabelBatch() {
  if (!g_labelBatch) return;
  g_labelBatch = false;
  DrawTextsInWindow(g_labels, CompiledProjection());
  g_labels.clear();
}

void DropLabelBatch() {
  g_labelBatch = false;
  g_labels.clear();
}

bool InLabelBatch() { return g_labelBatch; }

bool InPointBatch() { return g_pointBatch; }

void QueueLabel(float x, float y, float z, const std::string& text) {
  if (text.empty()) return;
  if (g_labelBatch) {
    g_labels.push_back(TextAt{x, y, z, &text});
    return;
  }
  glb::Sync();
  DrawTextAt(x, y, z, text);
  glb::Forget();
}

void DrawBall(float radius) {
  if (g_ballList) {
    glPushMatrix();
    glScalef(radius / DrawnScale(0), radius / DrawnScale(1), radius / DrawnScale(2));
    glCallList(g_ballList);
    glPopMatrix();
    return;
  }
  if (GLUquadric* q = Quadric()) gluSphere(q, radius, 16, 16);
}

namespace {

// Directions around a circle in n equal steps (n + 1 entries, the last equal
// to the first), kept per n.
const std::vector<float>& CircleTable(int n, bool sine) {
  static std::vector<float> tables[2][kMaxCapSegments + 1];
  std::vector<float>& t = tables[sine ? 1 : 0][n];
  if (t.empty()) {
    t.resize(static_cast<std::size_t>(n) + 1);
    for (int i = 0; i <= n; ++i) {
      const double a = 2 * 3.14159265358979323846 * (i % n) / n;
      t[static_cast<std::size_t>(i)] = static_cast<float>(sine ? std::sin(a) : std::cos(a));
    }
  }
  return t;
}

struct Vec3 {
  double x, y, z;
};
Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vec3 operator*(double k, Vec3 a) { return {k * a.x, k * a.y, k * a.z}; }
double Dot(Vec3 a, Vec3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Vec3 Cross(Vec3 a, Vec3 b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
bool Normalize(Vec3& a) {
  const double l = std::sqrt(Dot(a, a));
  if (!(l > 1e-12)) return false;
  a = (1 / l) * a;
  return true;
}

// The view's frame in the scene's coordinates, from the modelview matrix:
// the inverse of its linear part applied to the window's axes, and the eye.
struct ViewFrame {
  Vec3 right, up, back, eye;
  bool perspective = false;
  bool ok = false;
};

ViewFrame FrameOf(const WindowProjection& m) {
  ViewFrame f;
  const double* a = m.model;  // column-major: a[col * 4 + row]
  const double a00 = a[0], a01 = a[4], a02 = a[8], a10 = a[1], a11 = a[5], a12 = a[9], a20 = a[2], a21 = a[6],
               a22 = a[10];
  const double det = a00 * (a11 * a22 - a12 * a21) - a01 * (a10 * a22 - a12 * a20) + a02 * (a10 * a21 - a11 * a20);
  if (!(std::fabs(det) > 1e-18)) return f;
  const double k = 1 / det;
  // Rows of the inverse.
  const Vec3 r0{k * (a11 * a22 - a12 * a21), k * (a02 * a21 - a01 * a22), k * (a01 * a12 - a02 * a11)};
  const Vec3 r1{k * (a12 * a20 - a10 * a22), k * (a00 * a22 - a02 * a20), k * (a02 * a10 - a00 * a12)};
  const Vec3 r2{k * (a10 * a21 - a11 * a20), k * (a01 * a20 - a00 * a21), k * (a00 * a11 - a01 * a10)};
  f.right = {r0.x, r1.x, r2.x};
  f.up = {r0.y, r1.y, r2.y};
  f.back = {r0.z, r1.z, r2.z};
  const Vec3 t{-a[12], -a[13], -a[14]};
  f.eye = {Dot(r0, t), Dot(r1, t), Dot(r2, t)};
  f.perspective = m.proj[15] == 0;
  f.ok = Normalize(f.right) && Normalize(f.back);
  return f;
}

}  // namespace

bool DrawBallCap(float x, float y, float z, float radius) {
  // Under uneven axis scales the ball is built round where it is drawn (the
  // view without the scales) and its vertices written back in scene units.
  const double S[3] = {DrawnScale(0), DrawnScale(1), DrawnScale(2)};
  const WindowProjection m = UnscaledProjection();
  if (!m.valid || !(radius > 0)) return false;
  const ViewFrame f = FrameOf(m);
  if (!f.ok) return false;
  const Vec3 c{x * S[0], y * S[1], z * S[2]};
  // Towards the eye, and the circle where the lines of sight touch the ball:
  // a great circle in a parallel view, a little nearer the eye and smaller in
  // a perspective one.
  Vec3 w = f.back;
  double capAngle = 3.14159265358979323846 / 2;
  if (f.perspective) {
    w = f.eye - c;
    const double d = std::sqrt(Dot(w, w));
    if (!(d > radius)) return false;  // the eye inside the ball
    w = (1 / d) * w;
    capAngle = std::acos(radius / d);
  }
  Vec3 u = f.right - Dot(f.right, w) * w;
  if (!Normalize(u)) return false;
  const Vec3 v = Cross(w, u);
  // Detail by size on the screen: the rim's chords stay within a fifth of a
  // pixel of the circle, and a ring of depth per three pixels of radius.
  double cx, cy, cz, ex, ey, ez;
  const double rimRadius = radius * std::sin(capAngle);
  const Vec3 rimPoint = c + rimRadius * u;
  if (!ProjectToWindow(m, c.x, c.y, c.z, cx, cy, cz) || !ProjectToWindow(m, rimPoint.x, rimPoint.y, rimPoint.z, ex, ey, ez))
    return false;
  const double px = std::hypot(ex - cx, ey - cy);
  int n = kMinCapSegments;
  if (px > 0.2) n = static_cast<int>(std::ceil(3.14159265358979323846 / std::acos(1 - 0.2 / px)));
  n = std::clamp(n, kMinCapSegments, kMaxCapSegments);
  const int rings = std::clamp(static_cast<int>(px / 3) + 1, 1, 4);
  const std::vector<float>& co = CircleTable(n, false);
  const std::vector<float>& si = CircleTable(n, true);
  // Ring k lies at the angle capAngle * k / rings from the pole facing the eye.
  auto ringPoint = [&](int k, int i) {
    const double th = capAngle * k / rings;
    const double s = radius * std::sin(th), h = radius * std::cos(th);
    const std::size_t j = static_cast<std::size_t>(i);
    const Vec3 p = c + h * w + (s * co[j]) * u + (s * si[j]) * v;
    glVertex3d(p.x / S[0], p.y / S[1], p.z / S[2]);
  };
  BeginPointPrimitive(GL_TRIANGLES);
  for (int i = 0; i < n; ++i) {
    ringPoint(0, 0);
    ringPoint(1, i);
    ringPoint(1, i + 1);
  }
  for (int k = 1; k < rings; ++k) {
    for (int i = 0; i < n; ++i) {
      ringPoint(k, i);
      ringPoint(k + 1, i);
      ringPoint(k + 1, i + 1);
      ringPoint(k, i);
      ringPoint(k + 1, i + 1);
      ringPoint(k, i + 1);
    }
  }
  EndPointPrimitive();
  return true;
}

void EnsureBallList() {
  if (g_ballList && glIsList(g_ballList)) return;
  GLUquadric* q = Quadric();
  if (!q) return;
  g_ballList = glGenLists(1);
  if (!g_ballList) return;
  glNewList(g_ballList, GL_COMPILE);
  gluSphere(q, 1.0, 16, 16);
  glEndList();
}

void ForgetBallList() { g_ballList = 0; }

void DrawOverlayRect(unsigned int mode, float x1, float y1, float x2, float y2, float z) {
  glBegin(mode);
  glVertex3f(x1, y1, z);
  glVertex3f(x2, y1, z);
  glVertex3f(x2, y2, z);
  glVertex3f(x1, y2, z);
  glEnd();
}

void DrawSelectionFrame(float x, float y, float z) {
  glColor3f(1, 0, 0);
  glLineWidth(1.0f);
  DrawOverlayRect(GL_LINE_LOOP, x, y, x + 15, y + 3, z);
}

}  // namespace vt
