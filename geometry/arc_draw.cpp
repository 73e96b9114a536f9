// Drawing of arcs.
#include <GL/gl.h>

#include "geometry/arc.h"
#include "render/strokes.h"

namespace vt {

void CArc::Draw() {
  if (Hide) return;
  std::vector<Position> s = Samples();
  Position c = Centre();
  std::uint32_t color = LineColorOf(ForeColor, DrawMode);
  glDisable(GL_LIGHTING);
  glEnable(GL_LINE_SMOOTH);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  glDisable(GL_POLYGON_OFFSET_FILL);

  if (AT == 2 || AT == 3) {
    // Sector (to the centre) or bow face (over the chord), at the alpha of
    // a filled circle.
    glDisable(GL_DEPTH_TEST);
    SetColor(color, 0.3f);
    glBegin(GL_TRIANGLE_FAN);
    if (AT == 2) glVertex3f(c.x, c.y, c.z);
    for (const Position& p : s) glVertex3f(p.x, p.y, p.z);
    glEnd();
    glEnable(GL_DEPTH_TEST);
  }

  SetColor(color);
  glLineWidth(GELineWidth);
  int factor;
  unsigned short pattern;
  bool stippled = DrawMode == 1 && LineStippleOf(GELineStyle, factor, pattern);
  if (stippled) {
    glLineStipple(factor, pattern);
    glEnable(GL_LINE_STIPPLE);
  }
  glBegin(GL_LINE_STRIP);
  for (const Position& p : s) glVertex3f(p.x, p.y, p.z);
  glEnd();
  glBegin(GL_LINES);
  if (AT == 2) {
    glVertex3f(s.front().x, s.front().y, s.front().z);
    glVertex3f(c.x, c.y, c.z);
    glVertex3f(c.x, c.y, c.z);
    glVertex3f(s.back().x, s.back().y, s.back().z);
  } else if (AT == 3) {
    glVertex3f(s.front().x, s.front().y, s.front().z);
    glVertex3f(s.back().x, s.back().y, s.back().z);
  }
  glEnd();
  if (stippled) glDisable(GL_LINE_STIPPLE);
  glDisable(GL_LINE_SMOOTH);
  glDisable(GL_BLEND);
  glEnable(GL_LIGHTING);
}

}  // namespace vt
