// Drawing and screen-space selection of points.
#include <GL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <cmath>

#include "geometry/position.h"
#include "render/frame.h"
#include "render/strokes.h"
#include "render/text.h"

namespace vt {

// The name picked by the last selection pass; -1 while none has run.
int PickedName = -1;

namespace {

// Rim directions of the two round symbols, at the angles i * 31416 / 100000
// (21 samples) and i * 31416 / 200000 (41 samples), computed once.
struct RimTable {
  float c[41];
  float s[41];
};

const RimTable& Rim(int samples) {
  static const RimTable solid = [] {
    RimTable t{};
    for (int i = 0; i <= 20; ++i) {
      const double a = i * 31416.0 / 100000.0;
      t.c[i] = static_cast<float>(std::cos(a));
      t.s[i] = static_cast<float>(std::sin(a));
    }
    return t;
  }();
  static const RimTable hollow = [] {
    RimTable t{};
    for (int i = 0; i <= 40; ++i) {
      const double a = i * 31416.0 / 200000.0;
      t.c[i] = static_cast<float>(std::cos(a));
      t.s[i] = static_cast<float>(std::sin(a));
    }
    return t;
  }();
  return samples == 21 ? solid : hollow;
}

// Colour and size of a point in its draw mode.
void PointLook(const Position& p, bool plane, std::uint32_t& color, float& size) {
  size = p.Size;
  switch (p.DrawMode) {
    case 2: color = RGB(0, 0, 255); break;
    case 3: color = kCanvasBackColor; break;
    case 4: color = RGB(0, 255, 0); break;
    case 5: color = RGB(150, 0, 100); break;
    case 6:
      color = RGB(128, 128, 128);
      size = plane ? 1.0f : 2.0f;
      break;
    default: color = p.ForeColor; break;
  }
}

void DrawSymbol(const Position& p, float size, std::uint32_t color) {
  const float x = p.x, y = p.y, z = p.z;
  switch (p.Symbol) {
    case 1: {  // solid circle
      const float r = size / 30.0f;
      const RimTable& t = Rim(21);
      BeginPointPrimitive(GL_TRIANGLES);
      for (int i = 0; i < 20; ++i) {
        glVertex3f(x + r * t.c[i], y + r * t.s[i], 0);
        glVertex3f(x + r * t.c[i + 1], y + r * t.s[i + 1], 0);
        glVertex3f(x, y, z);
      }
      EndPointPrimitive();
      break;
    }
    case 2: {  // hollow circle: a white inside that covers what lies below
      const float r = size / 35.0f;
      const RimTable& t = Rim(41);
      glColor3f(1, 1, 1);
      BeginPointPrimitive(GL_TRIANGLES);
      for (int i = 0; i < 40; ++i) {
        glVertex3f(x + r * t.c[i], y + r * t.s[i], 0.01f);
        glVertex3f(x + r * t.c[i + 1], y + r * t.s[i + 1], 0.01f);
        glVertex3f(x, y, z);
      }
      EndPointPrimitive();
      ClosePointPrimitive();
      SetColor(color);
      glLineWidth(2.0f);
      glBegin(GL_LINES);
      for (int i = 0; i < 40; ++i) {
        glVertex3f(x + r * t.c[i], y + r * t.s[i], 0.01f);
        glVertex3f(x + r * t.c[i + 1], y + r * t.s[i + 1], 0.01f);
      }
      glEnd();
      break;
    }
    case 3: {  // solid rectangle
      const float s = size / 30.0f;
      BeginPointPrimitive(GL_QUADS);
      glVertex3f(x - s, y + s, 0);
      glVertex3f(x - s, y - s, 0);
      glVertex3f(x + s, y - s, 0);
      glVertex3f(x + s, y + s, 0);
      EndPointPrimitive();
      break;
    }
    case 4: {  // solid triangle
      const float s = size / 20.0f;
      BeginPointPrimitive(GL_TRIANGLES);
      glVertex3f(x, y + s, 0);
      glVertex3f(x - s, y - s, 0);
      glVertex3f(x + s, y - s, 0);
      EndPointPrimitive();
      break;
    }
    case 5: {  // pyramid: a diamond
      const float s = size / 20.0f;
      BeginPointPrimitive(GL_QUADS);
      glVertex3f(x, y + s, 0);
      glVertex3f(x - s, y, 0);
      glVertex3f(x, y - s, 0);
      glVertex3f(x + s, y, 0);
      EndPointPrimitive();
      break;
    }
    case 6: {  // crosshair
      const float s = size / 20.0f;
      ClosePointPrimitive();
      glLineWidth(std::max(size, 1.0f));
      glBegin(GL_LINES);
      glVertex3f(x, y + s, 0);
      glVertex3f(x, y - s, 0);
      glVertex3f(x - s, y, 0);
      glVertex3f(x + s, y, 0);
      glEnd();
      break;
    }
    default: break;
  }
}

}  // namespace

void Position::Draw() {
  if (Hide) return;
  const bool plane = PlaneView();
  const bool batch = InPointBatch();
  std::uint32_t color;
  float size;
  PointLook(*this, plane, color, size);
  if (batch) SetPointBatchState();
  if (!plane) {
    // In space every point is a ball.
    if (!batch) {
      glDisable(GL_LIGHTING);
      glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    }
    SetColor(color);
    if (!DrawBallCap(x, y, z, size / 30.0f)) {
      ClosePointPrimitive();
      glPushMatrix();
      glTranslatef(x, y, z);
      DrawBall(size / 30.0f);
      glPopMatrix();
    }
    if (batch) {
      // The label stands at (0.3, 0.3, 0.3) from the point.
      if (!HideLabel) QueueLabel(x + 0.3f, y + 0.3f, z + 0.3f, PLabel);
      return;
    }
    glEnable(GL_LIGHTING);
    if (!HideLabel) {
      glPushMatrix();
      glTranslatef(x, y, z);
      DrawTextAt(0.3f, 0.3f, 0.3f, PLabel);
      glPopMatrix();
    }
    return;
  }
  // The plane symbols move nothing on the matrix stack, so a batch leaves the
  // stack alone and the symbols of consecutive points join into one stream.
  if (!batch) {
    glPushMatrix();
    glDisable(GL_LIGHTING);
    glEnable(GL_LINE_SMOOTH);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  }
  SetColor(color);
  DrawSymbol(*this, size, color);
  if (batch) {
    if (!HideLabel) QueueLabel(x + 0.1f, y + 0.1f, z, PLabel);
    return;
  }
  glDisable(GL_LINE_SMOOTH);
  glDisable(GL_BLEND);
  glEnable(GL_LIGHTING);
  if (!HideLabel) DrawTextAt(x + 0.1f, y + 0.1f, z, PLabel);
  glPopMatrix();
}

bool Position::BoxSel(float x1, float y1, float x2, float y2) const {
  if (!HaveContext()) return false;
  GLdouble model[16], proj[16];
  GLint viewport[4];
  glGetDoublev(GL_MODELVIEW_MATRIX, model);
  glGetDoublev(GL_PROJECTION_MATRIX, proj);
  glGetIntegerv(GL_VIEWPORT, viewport);
  GLdouble wx, wy, wz;
  if (gluProject(x, y, z, model, proj, viewport, &wx, &wy, &wz) != GL_TRUE) return false;
  // Window y runs up; the rectangle is in canvas pixels with y down. The
  // bounds are strict, so a rectangle of no width or height holds nothing.
  const double sy = viewport[1] + viewport[3] - wy;
  const double lx = std::min(x1, x2), hx = std::max(x1, x2);
  const double ly = std::min(y1, y2), hy = std::max(y1, y2);
  return wx > lx && wx < hx && sy > ly && sy < hy;
}

bool Position::Pick3() const { return name == PickedName; }

}  // namespace vt
