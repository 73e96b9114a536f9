#include "render/strokes.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>
#include <vector>

#include "document/globals.h"
#include "geometry/line.h"
#include "geometry/position.h"
#include "geometry/region.h"
#include "render/frame.h"
#include "render/gl_batch.h"
#include "render/text.h"

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
  if (stippled) glb::LineStipple(factor, pattern);
  glb::Enable(GL_LINE_STIPPLE, stippled);
  glb::Begin(GL_LINES);
  glVertex3f(a.x, a.y, a.z);
  glVertex3f(b.x, b.y, b.z);
  glb::End();
  glb::Enable(GL_LINE_STIPPLE, false);
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
    glScalef(radius, radius, radius);
    glCallList(g_ballList);
    glPopMatrix();
    return;
  }
  if (GLUquadric* q = Quadric()) gluSphere(q, radius, 16, 16);
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
