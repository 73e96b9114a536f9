#include "render/canvas_input.h"

#include "document/numtext.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include "geometry/position.h"
#include "render/frame.h"
#include "render/view_state.h"

namespace vt {

namespace {

struct Matrices {
  GLdouble model[16];
  GLdouble proj[16];
  GLint viewport[4];
  void Read() {
    glGetDoublev(GL_MODELVIEW_MATRIX, model);
    glGetDoublev(GL_PROJECTION_MATRIX, proj);
    glGetIntegerv(GL_VIEWPORT, viewport);
  }
};

void Unproject(const Matrices& m, double wx, double wy, double depth, Position& out) {
  GLdouble x = 0, y = 0, z = 0;
  if (gluUnProject(wx, wy, depth, m.model, m.proj, m.viewport, &x, &y, &z) == GL_TRUE) {
    out.Set(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
  } else {
    out.Set(0, 0, 0);
  }
}

}  // namespace

void ScreenToWorld(float X, float Y, Position& viewPoint, Position& scenePoint) {
  if (!HaveContext()) return;
  Matrices m;
  m.Read();
  const float wy = static_cast<float>(m.viewport[3]) - Y;
  GLfloat depth = 1.0f;
  // The pixel is taken as a 16-bit whole number, rounded half to even.
  glReadPixels(static_cast<short>(RoundToLong(X)), static_cast<short>(RoundToLong(wy)), 1, 1, GL_DEPTH_COMPONENT,
               GL_FLOAT, &depth);
  Unproject(m, X, wy, depth, viewPoint);
  glMatrixMode(GL_MODELVIEW);
  glMultMatrixf(SceneMatrix);
  MultSceneScale();
  m.Read();
  Unproject(m, X, wy, depth, scenePoint);
}

void ScreenToRay(float X, float Y, Position& farPoint, Position& nearPoint) {
  if (!HaveContext()) return;
  Matrices m;
  m.Read();
  const float wy = static_cast<float>(m.viewport[3]) - Y;
  Unproject(m, X, wy, 1.0, farPoint);
  Unproject(m, X, wy, 0.0, nearPoint);
}

bool SceneToScreen(float x, float y, float z, float& X, float& Y) {
  if (!HaveContext()) return false;
  Matrices m;
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glMultMatrixf(SceneMatrix);
  MultSceneScale();
  m.Read();
  glPopMatrix();
  GLdouble wx = 0, wy = 0, wz = 0;
  if (gluProject(x, y, z, m.model, m.proj, m.viewport, &wx, &wy, &wz) != GL_TRUE) return false;
  X = static_cast<float>(wx);
  Y = static_cast<float>(m.viewport[3] - wy);
  return true;
}

}  // namespace vt
