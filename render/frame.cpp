#include "render/frame.h"

#include <GL/gl.h>
#include <GL/glu.h>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "animation/player_objects.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/host.h"
#include "geometry/arc.h"
#include "geometry/circle.h"
#include "geometry/line.h"
#include "geometry/region.h"
#include "graphs/curve_analysis.h"
#include "render/gl_batch.h"
#include "render/picture.h"
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
bool g_framesHeld = false;
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
  MultSceneScale();
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

// What casts the shadow of the space scene: all that stands in space, not
// the plane's curves, loci and intersection lines.
bool CastsShadow(Kind k) { return k != Kind::C2 && k != Kind::LO && k != Kind::IL; }

void DrawKinds(bool castersOnly) {
  for (Kind k : kDrawOrder) {
    if (castersOnly && !CastsShadow(k)) continue;
    CollectionBase& c = Doc.Of(k);
    const int n = c.count();
    if (n == 0) continue;
    if (Batched(k)) glb::SetActive(true);
    if (k == Kind::PT) BeginPointBatch();
    for (int i = 1; i <= n; ++i) c.ItemBase(i)->Draw();
    if (k == Kind::PT) EndPointBatch();
    if (Batched(k)) glb::SetActive(false);
  }
}

void DrawObjects() {
  BeginLabelBatch();
  DrawKinds(false);
  EndLabelBatch();
}

// The shadow's casters drawn again, their labels left out.
void DrawShadowCasters() {
  BeginLabelBatch();
  DrawKinds(true);
  DropLabelBatch();
}

// ---- the scene in pieces, for drag steps --------------------------------------------
//
// A drag step moves geometry and nothing else, so most objects draw as they
// did in the step before. After a step the scene is kept in pieces: runs of
// up to kPieceSize objects of one kind, each with a list of its drawing and a
// list of its labels, and a key per object of what its drawing reads. The
// next step recompiles only the pieces whose keys changed, and the scene list
// calls the pieces. Each piece starts from unknown state (glb::Reset) and
// leaves the state its objects wanted, so a piece compiled alone holds what
// it holds when all are compiled together, and the state at every primitive
// is the one the single list gives. Any other change compiles the single
// list again and drops the pieces.

constexpr int kPieceSize = 32;

struct Piece {
  Kind kind = Kind::PT;
  int first = 0, count = 0;  // 1-based index of the first object, and how many
  GLuint objects = 0, labels = 0;
  // The shadow colour (glb::Color) the piece starts with and leaves.
  float colorBefore[4] = {0, 0, 0, 1}, colorAfter[4] = {0, 0, 0, 1};
  std::vector<const DocObject*> items;
  std::vector<std::uint64_t> keys;
};
std::vector<Piece> g_pieces;
bool g_objectStep = false;

void DropPieces() {
  for (Piece& p : g_pieces) {
    if (p.objects && glIsList(p.objects)) glDeleteLists(p.objects, 1);
    if (p.labels && glIsList(p.labels)) glDeleteLists(p.labels, 1);
  }
  g_pieces.clear();
}

struct KeyHash {
  std::uint64_t h = 1469598103934665603ull;
  void Bytes(const void* data, std::size_t n) {
    const auto* b = static_cast<const unsigned char*>(data);
    for (std::size_t i = 0; i < n; ++i) h = (h ^ b[i]) * 1099511628211ull;
  }
  template <class T>
  void Add(const T& v) {
    Bytes(&v, sizeof v);
  }
  void Add(const std::string& s) {
    Add(s.size());
    Bytes(s.data(), s.size());
  }
  void Add(const Position& p) {
    Add(p.x), Add(p.y), Add(p.z), Add(p.Hide);
  }
};

// What an object's drawing reads of the object, hashed; false for kinds
// whose drawing is not covered (their pieces are compiled every step).
bool DrawKey(Kind k, const DocObject& o, std::uint64_t& key) {
  KeyHash h;
  h.Add(o.Hide), h.Add(o.HideLabel), h.Add(o.Selected), h.Add(o.DrawMode), h.Add(o.ForeColor);
  h.Add(o.GELineStyle), h.Add(o.GELineWidth);
  switch (k) {
    case Kind::PT: {
      const auto& p = static_cast<const Position&>(o);
      h.Add(p), h.Add(p.Size), h.Add(p.Symbol), h.Add(p.PLabel);
      break;
    }
    case Kind::LN: {
      const auto& l = static_cast<const CLine&>(o);
      h.Add(l.pBegin), h.Add(l.pEnd), h.Add(l.lt), h.Add(l.LLabel);
      break;
    }
    case Kind::CR: {
      const auto& c = static_cast<const CCircle&>(o);
      h.Add(c.CType), h.Add(c.PCenter), h.Add(c.PCircleR), h.Add(c.PCircleR2), h.Add(c.PCircleR3);
      h.Add(c.R), h.Add(c.Filled), h.Add(c.CLabel);
      break;
    }
    case Kind::AR: {
      const auto& a = static_cast<const CArc&>(o);
      h.Add(a.AType), h.Add(a.AT), h.Add(a.pBegin), h.Add(a.pEnd), h.Add(a.pMid), h.Add(a.PCenter);
      h.Add(a.R), h.Add(a.Label);
      break;
    }
    case Kind::RG: {
      const auto& g = static_cast<const CRegion&>(o);
      h.Add(g.Points.size());
      for (const Position& p : g.Points) h.Add(p);
      h.Add(g.Alpha), h.Add(g.Texture), h.Add(g.Label);
      break;
    }
    default: return false;
  }
  key = h.h;
  return true;
}

void CompilePiece(Piece& p) {
  CollectionBase& c = Doc.Of(p.kind);
  if (!p.objects) {
    p.objects = glGenLists(2);
    if (!p.objects) return;
    p.labels = p.objects + 1;
  }
  glNewList(p.objects, GL_COMPILE);
  BeginLabelBatch();
  const bool batched = Batched(p.kind);
  try {
    if (batched) glb::SetActive(true);
    if (p.kind == Kind::PT) BeginPointBatch();
    for (int i = p.first; i < p.first + p.count; ++i) c.ItemBase(i)->Draw();
  } catch (...) {
    // A fault in an object's drawing ends the piece where it stands.
  }
  if (p.kind == Kind::PT) EndPointBatch();
  if (batched) glb::SetActive(false);
  glEndList();
  glNewList(p.labels, GL_COMPILE);
  EndLabelBatch();
  glEndList();
}

// The pieces for the document as it stands, compiling those that changed
// (counted in `compiled`), starting from the shadow colour in force; false (nothing kept) when no
// lists are to be had.
bool UpdatePieces(int& compiled) {
  std::vector<Piece> wanted;
  for (Kind k : kDrawOrder) {
    const int n = Doc.Of(k).count();
    for (int first = 1; first <= n; first += kPieceSize) {
      Piece p;
      p.kind = k;
      p.first = first;
      p.count = std::min(kPieceSize, n - first + 1);
      wanted.push_back(std::move(p));
    }
  }
  const bool sameShape =
      wanted.size() == g_pieces.size() &&
      std::equal(wanted.begin(), wanted.end(), g_pieces.begin(), [](const Piece& a, const Piece& b) {
        return a.kind == b.kind && a.first == b.first && a.count == b.count;
      });
  if (!sameShape) {
    DropPieces();
    g_pieces = std::move(wanted);
  }
  float color[4];
  glb::ColorShadow(color);
  std::vector<const DocObject*> items;
  std::vector<std::uint64_t> keys;
  for (Piece& p : g_pieces) {
    CollectionBase& c = Doc.Of(p.kind);
    bool changed = !p.objects || !std::equal(color, color + 4, p.colorBefore);
    items.clear();
    keys.clear();
    for (int i = p.first; i < p.first + p.count; ++i) {
      const DocObject* o = c.ItemBase(i);
      std::uint64_t key = 0;
      if (!DrawKey(p.kind, *o, key)) changed = true;
      items.push_back(o);
      keys.push_back(key);
    }
    if (!changed && items == p.items && keys == p.keys) {
      std::copy(p.colorAfter, p.colorAfter + 4, color);
      continue;
    }
    std::copy(color, color + 4, p.colorBefore);
    glb::SetColorShadow(color);
    CompilePiece(p);
    ++compiled;
    if (!p.objects) {
      DropPieces();
      return false;
    }
    p.items = items;
    p.keys = keys;
    glb::ColorShadow(p.colorAfter);
    std::copy(p.colorAfter, p.colorAfter + 4, color);
  }
  glb::SetColorShadow(color);
  return true;
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

// A player's rows of values without its panel, where the player puts them.
void DrawPlayerRows(CAniControl& player) {
  if (player.Hide) return;
  float y = player.PosY;
  for (auto& a : player.anis) {
    y -= 3;
    a->PosX = player.PosX;
    a->PosY = y;
    a->Draw();
  }
}

// The overlay in per cent of the canvas, above the scene: the depth test is
// off while it draws, so nothing of the scene can hide it.
void DrawOverlay() {
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glLoadIdentity();
  // Percent of the canvas in x and y, z from -kDepth to kDepth.
  constexpr double kDepth = 10;
  glOrtho(0, 100, 0, 100, -kDepth, kDepth);
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  // The overlay's texts are placed with those matrices (the identity and the
  // same orthographic projection), read here as the list is compiled.
  WindowProjection overlay = g_compiled;
  std::fill(overlay.model, overlay.model + 16, 0.0);
  std::fill(overlay.proj, overlay.proj + 16, 0.0);
  overlay.model[0] = overlay.model[5] = overlay.model[10] = overlay.model[15] = 1;
  overlay.proj[0] = overlay.proj[5] = 2.0 / 100;
  overlay.proj[10] = -1 / kDepth;
  overlay.proj[12] = overlay.proj[13] = -1;
  overlay.proj[15] = 1;
  TextPlacement place(overlay);
  glPushAttrib(GL_ENABLE_BIT);
  glDisable(GL_LIGHTING);
  glDisable(GL_DEPTH_TEST);
  if (SceneMode == 1 || SceneMode == 3 || SceneMode == 4) {
    if (RubberBandOn) DrawRubberBand();
    const bool controls = !LeavingControlsOut();
    for (Kind k : {Kind::AC, Kind::TT, Kind::NT, Kind::BT}) {
      if (k == Kind::BT && !controls) continue;
      CollectionBase& c = Doc.Of(k);
      const int n = c.count();
      for (int i = 1; i <= n; ++i) {
        if (k == Kind::AC && !controls) DrawPlayerRows(*Doc.AniCtrls.Item(i));
        else c.ItemBase(i)->Draw();
      }
    }
  }
  glPopAttrib();
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
  glPopMatrix();
}

void CompileHead() {
  DrawBackground();
  if (ShowGrid) DrawGrid();
  if (ShowAxis) DrawAxes();
}

void CompileTail() {
  if (ToolCursorPoint) ToolCursorPoint->Draw();
  if (ShowCoordLines) DrawCoordinateLines();
  if (SceneMode == 3) GroundRegion().Draw2();
  if (LabelsOverlay) DrawOverlay();
}

void CompileScene() {
  glClear(GL_ACCUM_BUFFER_BIT);
  glMultMatrixf(SceneMatrix);
  CompileHead();
  MultSceneScale();
  DrawObjects();
  if (ShadowOn()) DrawShadow(DrawShadowCasters);
  CompileTail();
}

GLuint g_headList = 0;
bool g_stepScene = false;  // the scene list was compiled by a step, from pieces
bool g_sceneKept = false;
std::uint64_t g_tailKey = 0;

// What the frame draws besides the pieces reads of the state, hashed: the
// switches, the tool's cursor point, the selected points' guides, the rubber
// band, the overlay's items and the ground.
std::uint64_t TailKey() {
  KeyHash h;
  h.Add(ShowGrid), h.Add(ShowAxis), h.Add(ShowCoordLines), h.Add(LabelsOverlay), h.Add(SceneMode);
  h.Add(RubberBandOn), h.Add(DragAnchorX), h.Add(DragAnchorY), h.Add(DragCurrentX), h.Add(DragCurrentY);
  h.Add(ToolCursorPoint);
  std::uint64_t key = 0;
  if (ToolCursorPoint && DrawKey(Kind::PT, *ToolCursorPoint, key)) h.Add(key);
  for (const Position* sel : Sel.Points) {
    h.Add(sel->ID);
    if (const Position* p = FindPoint(sel->ID)) h.Add(*p);
  }
  for (Kind k : {Kind::AC, Kind::TT, Kind::NT, Kind::BT}) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) {
      const DocObject* o = c.ItemBase(i);
      h.Add(o->Save()), h.Add(o->Selected), h.Add(o->DrawMode), h.Add(o->Hide);
    }
  }
  if (SceneMode == 3) {
    const CRegion& g = GroundRegion();
    for (const Position& p : g.Points) h.Add(p);
    h.Add(g.Hide), h.Add(g.DrawMode), h.Add(g.ForeColor), h.Add(g.Alpha);
  }
  return h.h;
}

// The scene list of a drag step: the head (grid and axes) in a list of its
// own, compiled before the pieces so that the shadow colour runs on as in
// the single list, then the pieces' drawing, their labels, and the tail.
bool CompileStep() {
  if (!g_headList || !glIsList(g_headList)) g_headList = glGenLists(1);
  if (!g_headList) return false;
  glNewList(g_headList, GL_COMPILE);
  try {
    CompileHead();
  } catch (...) {
  }
  glEndList();
  int compiled = 0;
  if (!UpdatePieces(compiled)) return false;
  const std::uint64_t tail = TailKey();
  if (compiled == 0 && g_stepScene && tail == g_tailKey && g_sceneList && glIsList(g_sceneList)) {
    g_sceneKept = true;
    return true;
  }
  if (g_sceneList) glDeleteLists(g_sceneList, 1);
  g_sceneList = glGenLists(1);
  if (!g_sceneList) return false;
  g_tailKey = tail;
  g_stepScene = true;
  glNewList(g_sceneList, GL_COMPILE);
  glClear(GL_ACCUM_BUFFER_BIT);
  glMultMatrixf(SceneMatrix);
  glCallList(g_headList);
  MultSceneScale();
  for (const Piece& p : g_pieces) glCallList(p.objects);
  for (const Piece& p : g_pieces) glCallList(p.labels);
  if (ShadowOn()) DrawShadow([] {
      for (const Piece& p : g_pieces)
        if (CastsShadow(p.kind)) glCallList(p.objects);
    });
  try {
    CompileTail();
  } catch (...) {
    EndPointBatch();
    glb::SetActive(false);
  }
  glEndList();
  return true;
}

}  // namespace

bool HaveContext() { return g_haveContext; }

unsigned int SceneList() { return g_sceneList; }

const WindowProjection& CompiledProjection() { return g_compiled; }

WindowProjection UnscaledProjection() {
  WindowProjection m = g_compiled;
  const double S[3] = {DrawnScale(0), DrawnScale(1), DrawnScale(2)};
  for (int col = 0; col < 3; ++col)
    for (int row = 0; row < 4; ++row) m.model[col * 4 + row] /= S[col];
  return m;
}

bool Initialize() {
  if (!glGetString(GL_VERSION)) {
    g_haveContext = false;
    host().MsgBox("ChoosePixelFormat failed", "Error", MsgButtons::OK, MsgIcon::Critical);
    return false;
  }
  g_haveContext = true;
#if defined(__GLIBC__)
  // The software renderer allocates and frees vertex and bin buffers of
  // several megabytes in every frame of a crowded scene. With the default
  // trim threshold each free hands the top of the heap back to the system
  // and the next frame faults it in again page by page, a fifth or more of
  // the frame; the heap keeps up to 64 MB instead. Setting it ends the
  // allocator's own raising of the mmap threshold, so that is raised here
  // too: blocks up to 32 MB come from the heap, not from fresh mappings.
  static const bool heapKept =
      mallopt(M_MMAP_THRESHOLD, 32 << 20) == 1 && mallopt(M_TRIM_THRESHOLD, 64 << 20) == 1;
  (void)heapKept;
#endif
  if (g_sceneList && glIsList(g_sceneList)) glDeleteLists(g_sceneList, 1);
  g_sceneList = 0;
  DropPieces();
  glClearColor(1, 1, 1, 1);
  glEnable(GL_DITHER);
  glDepthFunc(GL_LEQUAL);
  glClearDepth(1.0);
  glEnable(GL_DEPTH_TEST);
  EnsureFonts();
  EnsureBallList();
  EnsureDashTexture();
  return true;
}

void ReleaseContext() {
  g_haveContext = false;
  g_sceneList = 0;
  g_pieces.clear();
  g_headList = 0;
  g_stepScene = false;
  g_compiled.valid = false;
  ForgetFonts();
  ForgetBallList();
  ForgetDashTexture();
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

void ObjectStep() { g_objectStep = true; }

void DrawScene() {
  if (!g_haveContext || ViewGraph.Busy) return;
  // The axes' outline glyphs are built on the first scene that shows them.
  if (AxisObject.BetterFonts) EnsureOutlineFonts();
  const bool step = g_objectStep;
  g_objectStep = false;
  g_sceneKept = false;
  const bool sameView = g_compiled.valid && CurrentViewKey() == g_compiledKey;
  float before[16];
  std::copy(SceneMatrix, SceneMatrix + 16, before);
  UpdateSceneMatrix();
  CaptureProjection();
  // Pieces kept from the step before stay right only while the view and the
  // scene matrix are the same (texts and balls are placed for the view).
  if (step && sameView && std::equal(before, before + 16, SceneMatrix)) {
    if (CompileStep()) return;
  } else {
    DropPieces();
  }
  g_stepScene = false;
  if (g_sceneList) glDeleteLists(g_sceneList, 1);
  g_sceneList = glGenLists(1);
  if (!g_sceneList) return;
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

bool SceneKept() { return g_sceneKept; }

void HoldFrames(bool hold) { g_framesHeld = hold; }

void Display() {
  if (!g_haveContext || g_framesHeld) return;
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
