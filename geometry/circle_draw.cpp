// Drawing of circles.
#include <GL/gl.h>

#include "geometry/circle.h"
#include "render/strokes.h"

namespace vt {

namespace {
// A circle's dashes are not a line's: style 2 is factor 1, pattern 255.
bool CircleStippleOf(int style, GLint& factor, GLushort& pattern) {
  switch (style) {
    case 2: factor = 1, pattern = 255; return true;
    case 3: factor = 1, pattern = 21845; return true;
    case 4: factor = 1, pattern = 10239; return true;
    default: return false;
  }
}
}  // namespace

void CCircle::Draw() {
  if (Hide) return;
  ComputeRim();
  std::uint32_t color = LineColorOf(ForeColor, DrawMode);
  glDisable(GL_LIGHTING);
  glEnable(GL_LINE_SMOOTH);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  glDisable(GL_POLYGON_OFFSET_FILL);
  glLineWidth(GELineWidth);
  GLint factor = 1;
  GLushort pattern = 0xFFFF;
  bool stippled = DrawMode == 1 && CircleStippleOf(GELineStyle, factor, pattern);
  if (stippled) glLineStipple(factor, pattern);

  bool planar = !(CType == 2 || CType == 5);
  Position centre = planar ? Position(PCenter.x, PCenter.y, 0) : Centre();
  for (int i = 0; i < DrawSegments; ++i) {
    const Position& a = Rim[static_cast<size_t>(i)];
    const Position& b = Rim[static_cast<size_t>(i) + 1];
    if (Filled) {
      // The disc is painted piece by piece under a blend, the outline after
      // each piece.
      glDisable(GL_DEPTH_TEST);
      SetColor(color, 0.3f);
      glBegin(GL_TRIANGLES);
      glVertex3f(centre.x, centre.y, centre.z);
      glVertex3f(a.x, a.y, a.z);
      glVertex3f(b.x, b.y, b.z);
      glEnd();
      glEnable(GL_DEPTH_TEST);
    }
    SetColor(color);
    if (stippled) glEnable(GL_LINE_STIPPLE);
    glBegin(GL_LINES);
    glVertex3f(a.x, a.y, a.z);
    glVertex3f(b.x, b.y, b.z);
    glEnd();
    if (stippled) glDisable(GL_LINE_STIPPLE);
  }
  glDisable(GL_LINE_SMOOTH);
  glDisable(GL_BLEND);
  glEnable(GL_LIGHTING);
}

}  // namespace vt
