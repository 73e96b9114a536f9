#include "render/frame.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <cmath>

#include "document/document.h"
#include "document/globals.h"
#include "document/host.h"
#include "geometry/region.h"
#include "graphs/curve_analysis.h"
#include "render/gl_batch.h"
#include "render/reference.h"
#include "render/strokes.h"
#include "render/text.h"
#include "render/texture.h"
#include "render/trackball.h"
#include "render/view_state.h"

namespace vt {

Position* ToolCursorPoint = nullptr;

namespace {

bool g_haveContext = false;
GLuint g_sceneList = 0;
WindowProjection g_compiled;

// What the compiled list depends on of the view.
struct ViewKey {
  int projectType = 0;
  float vol[4] = {0, 0, 0, 0};  // width, height, near, far
  float eye[3] = {0, 0, 0}, ref[3] = {0, 0, 0}, up[3] = {0, 0, 0};
  GLint viewport[4] = {0, 0, 0, 0};
  bool operator==(const ViewKey&) const = default;
};
ViewKey g_compiledKey;

ViewKey CurrentViewKey() {
  ViewKey k;
  k.projectType = View.ProjectType;
  k.vol[0] = View.VolWidth;
  k.vol[1] = View.VolHeight;
  k.vol[2] = View.VolNear;
  k.vol[3] = View.VolFar;
  const Position* ps[3] = {&View.EyePos, &View.RefPos, &View.VecUp};
  float* out[3] = {k.eye, k.ref, k.up};
  for (int i = 0; i < 3; ++i) {
    out[i][0] = ps[i]->x;
    out[i][1] = ps[i]->y;
    out[i][2] = ps[i]->z;
  }
  glGetIntegerv(GL_VIEWPORT, k.viewport);
  return k;
}

// Reads back the matrices the frame will draw the list with, leaving the GL
// matrices as they were.
void CaptureProjection() {
  GLdouble savedModel[16], savedProj[16];
  GLint savedMode = GL_MODELVIEW;
  glGetIntegerv(GL_MATRIX_MODE, &savedMode);
  glGetDoublev(GL_MODELVIEW_MATRIX, savedModel);
  glGetDoublev(GL_PROJECTION_MATRIX, savedProj);
  View.Projection(1.0f, 0, 0, 0, 0);
  glMultMatrixf(SceneMatrix);
  glGetDoublev(GL_MODELVIEW_MATRIX, g_compiled.model);
  glGetDoublev(GL_PROJECTION_MATRIX, g_compiled.proj);
  glGetIntegerv(GL_VIEWPORT, g_compiled.viewport);
  g_compiled.valid = true;
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixd(savedProj);
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixd(savedModel);
  glMatrixMode(static_cast<GLenum>(savedMode));
  g_compiledKey = CurrentViewKey();
}

// The kinds in the order the scene draws them: points last, so that they stay
// on top at equal depth.
constexpr Kind kDrawOrder[] = {Kind::RG, Kind::LN, Kind::CR, Kind::AR, Kind::C2, Kind::SF, Kind::SR,
                               Kind::SS, Kind::LO, Kind::FA, Kind::RB, Kind::IL, Kind::SP, Kind::PT};

// The kinds whose drawing goes through the batched state (render/gl_batch.h).
bool Batched(Kind k) { return k == Kind::RG || k == Kind::LN || k == Kind::CR || k == Kind::AR; }

void DrawObjects() {
  BeginLabelBatch();
  for (Kind k : kDrawOrder) {
    CollectionBase& c = Doc.Of(k);
    const int n = c.count();
    if (n == 0) continue;
    if (Batched(k)) glb::SetActive(true);
    if (k == Kind::PT) BeginPointBatch();
    for (int i = 1; i <= n; ++i) c.ItemBase(i)->Draw();
    if (k == Kind::PT) EndPointBatch();
    if (Batched(k)) glb::SetActive(false);
  }
  EndLabelBatch();
}

// Dotted guides from each selected point to the axes: in the plane to its
// feet on the x and y axes, in space down to the ground and from there to
// the x and y axes.
void DrawCoordinateLines() {
  bool begun = false;
  for (const Position* sel : Sel.Points) {
    const Position* p = FindPoint(sel->ID);
    if (!p || p->Hide) continue;
    if (!begun) {
      begun = true;
      glDisable(GL_LIGHTING);
      glEnable(GL_BLEND);
      glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
      glEnable(GL_LINE_SMOOTH);
      glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
      glLineStipple(1, 21845);
      glEnable(GL_LINE_STIPPLE);
      glLineWidth(1.0f);
      glColor3f(0, 0, 0);
    }
    const float fx = p->x, fy = p->y;
    glBegin(GL_LINES);
    if (PlaneView()) {
      glVertex3f(fx, fy, p->z);
      glVertex3f(fx, 0, 0);
      glVertex3f(fx, fy, p->z);
      glVertex3f(0, fy, 0);
    } else {
      glVertex3f(fx, fy, p->z);
      glVertex3f(fx, fy, 0);
      glVertex3f(fx, fy, 0);
      glVertex3f(fx, 0, 0);
      glVertex3f(fx, fy, 0);
      glVertex3f(0, fy, 0);
    }
    glEnd();
  }
  if (begun) {
    glDisable(GL_LINE_STIPPLE);
    glDisable(GL_LINE_SMOOTH);
    glDisable(GL_BLEND);
    glEnable(GL_LIGHTING);
  }
}

void DrawRubberBand() {
  const float w = View.ScreenWidth > 0 ? View.ScreenWidth : 1;
  const float h = View.ScreenHeight > 0 ? View.ScreenHeight : 1;
  const float x1 = DragAnchorX / w * 100, y1 = 100 - DragAnchorY / h * 100;
  const float x2 = DragCurrentX / w * 100, y2 = 100 - DragCurrentY / h * 100;
  glColor3f(0, 0, 0);
  glLineWidth(1.0f);
  glLineStipple(1, 21845);
  glEnable(GL_LINE_STIPPLE);
  DrawOverlayRect(GL_LINE_LOOP, x1, y1, x2, y2, 1.0f);
  glDisable(GL_LINE_STIPPLE);
}

// The overlay in per cent of the canvas, above the scene: the depth test is
// off while it draws, so nothing of the scene can hide it.
void DrawOverlay() {
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glLoadIdentity();
  glOrtho(0, 100, 0, 100, -10, 10);
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  glPushAttrib(GL_ENABLE_BIT);
  glDisable(GL_LIGHTING);
  glDisable(GL_DEPTH_TEST);
  if (SceneMode == 1 || SceneMode == 3 || SceneMode == 4) {
    if (RubberBandOn) DrawRubberBand();
    for (Kind k : {Kind::AC, Kind::TT, Kind::NT, Kind::BT}) {
      CollectionBase& c = Doc.Of(k);
      const int n = c.count();
      for (int i = 1; i <= n; ++i) c.ItemBase(i)->Draw();
    }
  }
  glPopAttrib();
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
  glPopMatrix();
}

void CompileScene() {
  glClear(GL_ACCUM_BUFFER_BIT);
  glMultMatrixf(SceneMatrix);
  if (ShowGrid) DrawGrid();
  if (ShowAxis) DrawAxes();
  DrawObjects();
  if (ToolCursorPoint) ToolCursorPoint->Draw();
  if (ShowCoordLines) DrawCoordinateLines();
  if (SceneMode == 3) GroundRegion().Draw2();
  if (LabelsOverlay) DrawOverlay();
}

}  // namespace

bool HaveContext() { return g_haveContext; }

unsigned int SceneList() { return g_sceneList; }

const WindowProjection& CompiledProjection() { return g_compiled; }

bool Initialize() {
  if (!glGetString(GL_VERSION)) {
    g_haveContext = false;
    host().MsgBox("ChoosePixelFormat failed", "Error", MsgButtons::OK, MsgIcon::Critical);
    return false;
  }
  g_haveContext = true;
  if (g_sceneList && glIsList(g_sceneList)) glDeleteLists(g_sceneList, 1);
  g_sceneList = 0;
  glClearColor(1, 1, 1, 1);
  glEnable(GL_DITHER);
  glDepthFunc(GL_LEQUAL);
  glClearDepth(1.0);
  glEnable(GL_DEPTH_TEST);
  EnsureFonts();
  EnsureBallList();
  return true;
}

void ReleaseContext() {
  g_haveContext = false;
  g_sceneList = 0;
  g_compiled.valid = false;
  ForgetFonts();
  ForgetBallList();
  ForgetTextures();
}

void Cls4::Projection(float pickX, float pickY, float pickW, float pickH, int mode) {
  if (!g_haveContext) return;
  GLint viewport[4];
  glGetIntegerv(GL_VIEWPORT, viewport);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  // A picture capture runs the frame in feedback mode: that mode stays.
  GLint renderMode = GL_RENDER;
  glGetIntegerv(GL_RENDER_MODE, &renderMode);
  if (renderMode != GL_FEEDBACK) glRenderMode(GL_RENDER);
  const double left = -VolWidth / 2.0, right = VolWidth / 2.0;
  const double bottom = -VolHeight / 2.0, top = VolHeight / 2.0;
  // A selection pass narrows the volume to the pick rectangle around the
  // pixel; a plain frame keeps it whole.
  if (mode != 0 && pickW > 0 && pickH > 0) {
    gluPickMatrix(pickX, viewport[3] - pickY, pickW, pickH, viewport);
  }
  if (ProjectType == 2) {
    const CBox b = ViewGraph.GetBox();
    const double e = std::max({static_cast<double>(b.MaxX) - b.MinX, static_cast<double>(b.MaxY) - b.MinY,
                               static_cast<double>(b.MaxZ) - b.MinZ});
    VolNear = 0.01f;
    double farPlane = 1000 - e;
    // A document larger than the far plane keeps a thin volume rather than
    // an invalid one.
    if (farPlane <= VolNear) farPlane = VolNear * 2;
    const double dx = static_cast<double>(EyePos.x) - RefPos.x, dy = static_cast<double>(EyePos.y) - RefPos.y,
                 dz = static_cast<double>(EyePos.z) - RefPos.z;
    double dist = std::sqrt(dx * dx + dy * dy + dz * dz);
    if (dist <= 0) dist = 50;
    const double k = VolNear / dist;
    Volleft = static_cast<float>(left * k);
    VolRight = static_cast<float>(right * k);
    VolBottom = static_cast<float>(bottom * k);
    VolTop = static_cast<float>(top * k);
    glFrustum(left * k, right * k, bottom * k, top * k, VolNear, farPlane);
  } else {
    Volleft = static_cast<float>(left);
    VolRight = static_cast<float>(right);
    VolBottom = static_cast<float>(bottom);
    VolTop = static_cast<float>(top);
    glOrtho(left, right, bottom, top, VolNear, VolFar);
  }
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
    const GLenum light = GL_LIGHT0 + static_cast<GLenum>(i);
    glLightfv(light, GL_POSITION, Position[i]);
    glLightfv(light, GL_DIFFUSE, Diffuse[i]);
    glLightfv(light, GL_AMBIENT, Amission[i]);
    glLightfv(light, GL_SPECULAR, Specular[i]);
  }
  glLightModelfv(GL_LIGHT_MODEL_AMBIENT, GlobalAmbient);
  glLightModelfv(GL_LIGHT_MODEL_TWO_SIDE, TwoSides);
  glEnable(GL_LIGHTING);
  for (int i = 0; i < 2; ++i) {
    const GLenum light = GL_LIGHT0 + static_cast<GLenum>(i);
    if (Enabled[i]) glEnable(light);
    else glDisable(light);
  }
}

void DrawScene() {
  if (!g_haveContext || ViewGraph.Busy) return;
  if (g_sceneList) glDeleteLists(g_sceneList, 1);
  g_sceneList = glGenLists(1);
  if (!g_sceneList) return;
  UpdateSceneMatrix();
  CaptureProjection();
  glNewList(g_sceneList, GL_COMPILE);
  // Drawing opens no message box: a box's event loop would run inside the
  // open list. An object that cannot be drawn shows so in its own place.
  MessageHold quiet;
  try {
    CompileScene();
  } catch (...) {
    EndPointBatch();
    EndLabelBatch();
    glb::SetActive(false);
    // A fault in an object's drawing ends the list where it stands; the frame
    // still shows what was compiled.
  }
  glEndList();
  // The curves have written their parts of the results panel.
  CurveResults.Publish();
}

void Display() {
  if (!g_haveContext) return;
  DrawFrame();
  host().SwapBuffers();
}

void DrawFrame() {
  if (!g_haveContext) return;
  // A repaint after the view changed (a resize) needs the texts placed anew.
  if (g_sceneList && !ViewGraph.Busy && !(CurrentViewKey() == g_compiledKey)) DrawScene();
  // The lights are placed in the view's frame, without the scene rotation,
  // whatever the previous event left on the modelview stack.
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  gluLookAt(View.EyePos.x, View.EyePos.y, View.EyePos.z, View.RefPos.x, View.RefPos.y, View.RefPos.z,
            View.VecUp.x, View.VecUp.y, View.VecUp.z);
  MainLight.SetLight();
  glShadeModel(GL_SMOOTH);
  View.Projection(1.0f, 0, 0, 0, 0);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glPushMatrix();
  if (!ViewGraph.Busy && g_sceneList) glCallList(g_sceneList);
  glPopMatrix();
  glFinish();
}

}  // namespace vt
