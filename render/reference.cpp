#include "render/reference.h"

#include <GL/gl.h>

#include <string>

#include "document/globals.h"
#include "geometry/line.h"
#include "render/strokes.h"
#include "render/text.h"

namespace vt {

namespace {

void Segment(float x1, float y1, float z1, float x2, float y2, float z2) {
  glVertex3f(x1, y1, z1);
  glVertex3f(x2, y2, z2);
}

// An axis vector: black, solid, width 1, from a to b.
void DrawAxisVector(CLine& line, float ax, float ay, float az, float bx, float by, float bz) {
  line.lt = 4;
  line.GELineStyle = 1;
  line.GELineWidth = 1.0f;
  line.ForeColor = RGB(0, 0, 0);
  line.DrawMode = 1;
  line.Hide = false;
  line.pBegin.Set(ax, ay, az);
  line.pEnd.Set(bx, by, bz);
  DrawVector(line);
  glDisable(GL_LIGHTING);  // the vector leaves lighting on
  glColor3f(0, 0, 0);
}

}  // namespace

CLine& AxisVectorY() {
  static CLine line;
  return line;
}

CLine& AxisVectorXZ() {
  static CLine line;
  return line;
}

void DrawGrid() {
  const bool plane = SceneMode == 1;
  if (!plane && SceneMode != 3) return;
  glDisable(GL_LIGHTING);
  SetColor(RGB(200, 150, 0));
  glLineWidth(1.0f);
  if (!plane) {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_LINE_SMOOTH);
  }
  const int yHalf = plane ? 40 : 10;
  glBegin(GL_LINES);
  for (int x = -10; x <= 10; ++x) Segment(static_cast<float>(x), static_cast<float>(-yHalf), 0, static_cast<float>(x), static_cast<float>(yHalf), 0);
  for (int y = -yHalf; y <= yHalf; ++y) Segment(-10, static_cast<float>(y), 0, 10, static_cast<float>(y), 0);
  glEnd();
  if (!plane) {
    glDisable(GL_LINE_SMOOTH);
    glDisable(GL_BLEND);
  }
  glEnable(GL_LIGHTING);
}

void DrawAxes() {
  const bool space = SceneMode == 3;
  const int L = space ? 9 : 5;
  const float fL = static_cast<float>(L);
  glDisable(GL_LIGHTING);
  DrawAxisVector(AxisVectorY(), 0, -(fL + 1), 0, 0, fL + 1, 0);
  DrawAxisVector(AxisVectorXZ(), -10, 0, 0, 10, 0, 0);

  glLineWidth(1.0f);
  glBegin(GL_LINES);
  for (int i = -L; i <= L; ++i) Segment(0, static_cast<float>(i), 0, 0.2f, static_cast<float>(i), 0);
  for (int i = -9; i <= 9; ++i) Segment(static_cast<float>(i), 0, 0, static_cast<float>(i), 0.2f, 0);
  glEnd();
  for (int i = -L; i <= L; ++i) {
    if (i == 0) continue;
    const float fi = static_cast<float>(i);
    DrawTextAt(i < 0 ? -0.5f : -0.4f, fi - 0.1f, 0, std::to_string(i));
  }
  for (int i = -9; i <= 9; ++i) {
    if (i == 0) continue;
    const float fi = static_cast<float>(i);
    DrawTextAt(fi - 0.1f, -0.4f, 0, std::to_string(i));
  }
  DrawTextAt(-0.3f, -0.4f, 0, "O");
  DrawTextAt(-0.4f, fL + 0.8f, 0, "y");
  DrawTextAt(9.8f, -0.4f, 0, "x");

  if (space) {
    glDisable(GL_LIGHTING);
    DrawAxisVector(AxisVectorXZ(), 0, 0, -6, 0, 0, 6);
    glLineWidth(1.0f);
    glBegin(GL_LINES);
    for (int i = -5; i <= 5; ++i) Segment(0, 0, static_cast<float>(i), 0.2f, 0, static_cast<float>(i));
    glEnd();
    for (int i = -5; i <= 5; ++i) {
      if (i == 0) continue;
      DrawTextAt(-0.3f, 0, static_cast<float>(i) - 0.1f, std::to_string(i));
    }
    DrawTextAt(-0.3f, 0, 5.8f, "z");
  }
  glEnable(GL_LIGHTING);
}

}  // namespace vt
