// Drawing and screen-space selection of points.
#include <GL/gl.h>
#include <GL/glu.h>

#include "geometry/position.h"

namespace vt {

// The name picked by the last selection pass.
int PickedName = 0;

void Position::Draw() {
  // The symbols arrive with the renderer.
}

bool Position::BoxSel(float x1, float y1, float x2, float y2) const {
  GLdouble model[16], proj[16];
  GLint viewport[4];
  glGetDoublev(GL_MODELVIEW_MATRIX, model);
  glGetDoublev(GL_PROJECTION_MATRIX, proj);
  glGetIntegerv(GL_VIEWPORT, viewport);
  GLdouble wx, wy, wz;
  if (gluProject(x, y, z, model, proj, viewport, &wx, &wy, &wz) != GL_TRUE) return false;
  // Window y runs up; the rectangle is in canvas pixels with y down.
  double sy = viewport[3] - wy;
  float lx = x1 < x2 ? x1 : x2, hx = x1 < x2 ? x2 : x1;
  float ly = y1 < y2 ? y1 : y2, hy = y1 < y2 ? y2 : y1;
  return wx >= lx && wx <= hx && sy >= ly && sy <= hy;
}

bool Position::Pick3() const { return name == PickedName; }

}  // namespace vt
