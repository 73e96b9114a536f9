#include "render/frame.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <cmath>

#include "document/document.h"
#include "document/host.h"
#include "render/view_state.h"

namespace vt {

namespace {
bool g_haveContext = false;
GLuint g_sceneList = 0;
}  // namespace

bool HaveContext() { return g_haveContext; }

bool Initialize() {
  g_haveContext = true;
  g_sceneList = 0;
  glClearColor(1, 1, 1, 1);
  glEnable(GL_DITHER);
  glDepthFunc(GL_LEQUAL);
  glClearDepth(1.0);
  glEnable(GL_DEPTH_TEST);
  return true;
}

void ReleaseContext() {
  g_haveContext = false;
  g_sceneList = 0;
}

void Cls4::Projection(float pickX, float pickY, float pickW, float pickH, int mode) {
  GLint viewport[4];
  glGetIntegerv(GL_VIEWPORT, viewport);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glRenderMode(GL_RENDER);
  double left = -VolWidth / 2.0, right = VolWidth / 2.0;
  double bottom = -VolHeight / 2.0, top = VolHeight / 2.0;
  Volleft = static_cast<float>(left);
  VolRight = static_cast<float>(right);
  VolBottom = static_cast<float>(bottom);
  VolTop = static_cast<float>(top);
  if (ProjectType == 2) {
    CBox b = ViewGraph.GetBox();
    double e = std::max({b.MaxX - b.MinX, b.MaxY - b.MinY, b.MaxZ - b.MinZ});
    VolNear = 0.01f;
    double dx = EyePos.x - RefPos.x, dy = EyePos.y - RefPos.y, dz = EyePos.z - RefPos.z;
    double dist = std::sqrt(dx * dx + dy * dy + dz * dz);
    if (dist <= 0) dist = 1;
    double k = VolNear / dist;
    glFrustum(left * k, right * k, bottom * k, top * k, VolNear, 1000 - e);
  } else {
    glOrtho(left, right, bottom, top, VolNear, VolFar);
  }
  (void)pickX, (void)pickY, (void)pickW, (void)pickH, (void)mode;
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  gluLookAt(EyePos.x, EyePos.y, EyePos.z, RefPos.x, RefPos.y, RefPos.z, VecUp.x, VecUp.y, VecUp.z);
}

void Cls10::SetLight() const {
  if (!LightingOn) {
    glDisable(GL_LIGHTING);
    return;
  }
  for (int i = 0; i < 2; ++i) {
    if (i == 1 && !Enabled[1]) break;
    GLenum light = GL_LIGHT0 + static_cast<GLenum>(i);
    glLightfv(light, GL_POSITION, Position[i]);
    glLightfv(light, GL_DIFFUSE, Diffuse[i]);
    glLightfv(light, GL_AMBIENT, Amission[i]);
    glLightfv(light, GL_SPECULAR, Specular[i]);
  }
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, GlobalAmbient);
  glLightModelfv(GL_LIGHT_MODEL_TWO_SIDE, TwoSides);
  glEnable(GL_LIGHTING);
  for (int i = 0; i < 2; ++i) {
    if (Enabled[i]) glEnable(GL_LIGHT0 + static_cast<GLenum>(i));
    else glDisable(GL_LIGHT0 + static_cast<GLenum>(i));
  }
}

void DrawScene() {
  if (!g_haveContext || ViewGraph.Busy) return;
  if (g_sceneList) glDeleteLists(g_sceneList, 1);
  g_sceneList = glGenLists(1);
  glNewList(g_sceneList, GL_COMPILE);
  glClear(GL_ACCUM_BUFFER_BIT);
  glMultMatrixf(SceneMatrix);
  const Kind order[] = {Kind::RG, Kind::LN, Kind::CR, Kind::AR, Kind::C2, Kind::SF, Kind::SR,
                        Kind::SS, Kind::LO, Kind::FA, Kind::RB, Kind::IL, Kind::SP, Kind::PT};
  for (Kind k : order) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) c.ItemBase(i)->Draw();
  }
  glEndList();
}

void Display() {
  if (!g_haveContext) return;
  MainLight.SetLight();
  glShadeModel(GL_SMOOTH);
  View.Projection(1.0f, 0, 0, 0, 0);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glPushMatrix();
  if (!ViewGraph.Busy && g_sceneList) glCallList(g_sceneList);
  glPopMatrix();
  glFinish();
  host().SwapBuffers();
}

}  // namespace vt
