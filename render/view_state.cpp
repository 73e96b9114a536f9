#include "render/view_state.h"

#include <GL/gl.h>
#include <cmath>
#include <cstring>

#include "document/document.h"
#include "document/globals.h"
#include "geometry/region.h"
#include "render/frame.h"

namespace vt {

Cls8 ViewGraph;
Cls8 GraphList;
Cls4 View;
Cls10 MainLight;
Cls3 AxisObject;
float SceneQuat[4] = {0, 0, 0, 1};
float SceneMatrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

CBox Cls8::GetBox() const {
  CBox box;
  bool any = false;
  for (Kind k : kAllKinds) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) {
      CBox b;
      DocObject* o = c.ItemBase(i);
      if (o->Hide) continue;
      // Seed the box with the object's first extent, then widen.
      const float big = 3.0e38f;
      b.MinX = b.MinY = b.MinZ = big;
      b.MaxX = b.MaxY = b.MaxZ = -big;
      o->GetBox(b);
      if (b.MinX > b.MaxX) continue;  // the kind has no extent
      if (!any) {
        box = b;
        any = true;
      } else {
        box.MinX = std::fmin(box.MinX, b.MinX);
        box.MaxX = std::fmax(box.MaxX, b.MaxX);
        box.MinY = std::fmin(box.MinY, b.MinY);
        box.MaxY = std::fmax(box.MaxY, b.MaxY);
        if (b.MinZ <= b.MaxZ) {
          box.MinZ = std::fmin(box.MinZ, b.MinZ);
          box.MaxZ = std::fmax(box.MaxZ, b.MaxZ);
        }
      }
    }
  }
  if (box.MinZ > box.MaxZ) box.MinZ = box.MaxZ = 0;
  return box;
}

// ---- Cls4 ------------------------------------------------------------------------

namespace {
struct D3 {
  double x, y, z;
};
D3 Of(const Position& p) { return {p.x, p.y, p.z}; }
D3 Sub(D3 a, D3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
D3 Cross(D3 a, D3 b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double Len(D3 a) { return std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z); }
D3 Norm(D3 a) {
  double l = Len(a);
  return l > 0 ? D3{a.x / l, a.y / l, a.z / l} : a;
}
}  // namespace

void Cls4::GetViewRect(float& width, float& height) const {
  width = VolWidth;
  height = VolHeight;
}

void Cls4::SetViewRect(float width, float height) {
  VolHeight = height;
  VolWidth = height * ScreenWidth / ScreenHeight;
  (void)width;
}

void Cls4::SetVecup(float x, float y, float z) { VecUp.Set(x, y, z); }
void Cls4::SetRef(float x, float y, float z) { RefPos.Set(x, y, z); }
void Cls4::SetEye(float x, float y, float z) { EyePos.Set(x, y, z); }

void Cls4::SetScreen(int width, int height) {
  if (height == 0) height = 1;
  if (HaveContext()) glViewport(0, 0, width, height);
  ScreenWidth = static_cast<float>(width);
  ScreenHeight = static_cast<float>(height);
  VolWidth = VolHeight * ScreenWidth / ScreenHeight;
}

void Cls4::MoveView(float dx, float dy) {
  D3 dir = Norm(Sub(Of(RefPos), Of(EyePos)));
  D3 r = Cross(dir, Of(VecUp));
  D3 u = Cross(r, dir);
  D3 off = {-(r.x * VolWidth * dx + u.x * VolHeight * dy), -(r.y * VolWidth * dx + u.y * VolHeight * dy),
            -(r.z * VolWidth * dx + u.z * VolHeight * dy)};
  RefPos.Set(static_cast<float>(RefPos.x + off.x), static_cast<float>(RefPos.y + off.y),
             static_cast<float>(RefPos.z + off.z));
  EyePos.Set(static_cast<float>(EyePos.x + off.x), static_cast<float>(EyePos.y + off.y),
             static_cast<float>(EyePos.z + off.z));
}

void Cls4::SetViewType(int type) {
  double d = Len(Sub(Of(EyePos), Of(RefPos)));
  if (d == 0) d = 50;
  if (d >= 30000) d = 10000;
  D3 ref = Of(RefPos);
  D3 eye = ref;
  const double s3 = std::sqrt(3.0);
  bool recompute = false;
  switch (type) {
    case 1: eye.z += d; break;
    case 2: eye.z -= d; break;
    case 3: eye.y += d; VecUp.Set(0, 0, 1); break;
    case 4: eye.y -= d; VecUp.Set(0, 0, 1); break;
    case 5: eye.x += d; recompute = true; break;
    case 6: eye.x -= d; recompute = true; break;
    case 7: eye = {ref.x - d / s3, ref.y + d / s3, ref.z - d / s3}; recompute = true; break;
    case 8: eye = {ref.x + d / s3, ref.y - d / s3, ref.z + d / s3}; recompute = true; break;
    case 9: eye = {ref.x + d / s3, ref.y + d / s3, ref.z + d / s3}; recompute = true; break;
    case 10: eye = {ref.x - d / s3, ref.y - d / s3, ref.z - d / s3}; recompute = true; break;
    default: return;
  }
  EyePos.Set(static_cast<float>(eye.x), static_cast<float>(eye.y), static_cast<float>(eye.z));
  if (recompute) {
    D3 dir = Norm(Sub(ref, eye));
    D3 side = Cross(dir, D3{0, 1, 0});
    D3 up = Cross(side, dir);
    VecUp.Set(static_cast<float>(up.x), static_cast<float>(up.y), static_cast<float>(up.z));
  }
}

void Cls4::ZoomAll(const CBox& box) {
  double minx = box.MinX / ScaleX, maxx = box.MaxX / ScaleX;
  double miny = box.MinY / ScaleY, maxy = box.MaxY / ScaleY;
  double minz = box.MinZ / ScaleZ, maxz = box.MaxZ / ScaleZ;
  double ext = std::fmax(std::fmax(maxx - minx, maxy - miny), maxz - minz);
  // A box without extent (one point) keeps the rectangle: a volume of no
  // height would show nothing.
  if (ext > 0) SetViewRect(static_cast<float>(ext), static_cast<float>(ext));
  D3 c = {(minx + maxx) / 2, (miny + maxy) / 2, (minz + maxz) / 2};
  D3 delta = Sub(c, Of(RefPos));
  RefPos.Set(static_cast<float>(c.x), static_cast<float>(c.y), static_cast<float>(c.z));
  EyePos.Set(static_cast<float>(EyePos.x + delta.x), static_cast<float>(EyePos.y + delta.y),
             static_cast<float>(EyePos.z + delta.z));
}

void Cls4::RotateView(float angle, float x, float y, float z) {
  D3 k = Norm(D3{x, y, z});
  double c = std::cos(angle), s = std::sin(angle), t = 1 - c;
  // Rotation matrix of the axis k and the angle, row by row.
  double m[3][3] = {{t * k.x * k.x + c, t * k.x * k.y - s * k.z, t * k.x * k.z + s * k.y},
                    {t * k.x * k.y + s * k.z, t * k.y * k.y + c, t * k.y * k.z - s * k.x},
                    {t * k.x * k.z - s * k.y, t * k.y * k.z + s * k.x, t * k.z * k.z + c}};
  D3 v = Sub(Of(EyePos), Of(RefPos));
  D3 r = {m[0][0] * v.x + m[0][1] * v.y + m[0][2] * v.z, m[1][0] * v.x + m[1][1] * v.y + m[1][2] * v.z,
          m[2][0] * v.x + m[2][1] * v.y + m[2][2] * v.z};
  EyePos.Set(static_cast<float>(RefPos.x + r.x), static_cast<float>(RefPos.y + r.y),
             static_cast<float>(RefPos.z + r.z));
}

void Cls4::Zoom(float factor) {
  if (factor > 0) {
    VolWidth *= factor;
    VolHeight *= factor;
  }
}

// ---- Cls10, Cls3 -----------------------------------------------------------------

Cls10::Cls10() {
  std::memset(Specular, 0, sizeof Specular);
  std::memset(Amission, 0, sizeof Amission);
  std::memset(Diffuse, 0, sizeof Diffuse);
  std::memset(Position, 0, sizeof Position);
  std::memset(GlobalAmbient, 0, sizeof GlobalAmbient);
  std::memset(TwoSides, 0, sizeof TwoSides);
  Enabled[0] = true;
  Enabled[1] = false;
  const float pos[4] = {100, 100, 100, 1};
  for (int i = 0; i < 4; ++i) {
    Position[0][i] = pos[i];
    Diffuse[0][i] = 1;
    Amission[0][i] = 1;
    Specular[0][i] = 1;
  }
  GlobalAmbient[0] = 1;
  TwoSides[0] = 1;
}

Cls3::Cls3() { SetDefault(); }

void Cls3::SetDefault() {
  ShowShadow = false;
  ShowSecondaryLabel = false;
  ShowPI = false;
  PriGridColor = RGB(200, 150, 0);
  SecGridColor = RGB(230, 220, 180);
  BackColor = RGB(255, 255, 255);
  BackColor2 = RGB(200, 220, 245);  // so that "Show background" shows a gradient
  BackStyle = 0;
  ShowBackground = false;
  ShowprimaryGrid = true;
  ShowSecondaryGrid = false;
  AxisStyle = 1;
  BetterFonts = false;
  AxisColor = RGB(0, 0, 0);
  AxisWidth = 1;
  Show = true;
  YZPanelMaterial = XZPanelMaterial = XYPanelMaterial = 7;
  YZGridColor = XZGridColor = XYGridColor = RGB(128, 128, 128);
  YZPanelColor = XZPanelColor = XYPanelColor = RGB(240, 240, 240);
  ShowYZZGrid = ShowXZZGrid = ShowXYYGrid = true;
  TitleZ = "z";
  TitleY = "y";
  TitleX = "x";
  // The space axes' whole-number ticks each side: x and y 9, z 5.
  LabelNumX = LabelNumY = 9;
  LabelNumZ = 5;
  ShowYZYGrid = ShowXZXGrid = ShowXYXGrid = true;
  ShowYZPanel = ShowXZPanel = ShowXYPanel = false;
}

float DrawnScale(int axis) {
  if (SceneMode != 3) return 1;
  const float s = axis == 0 ? ScaleX : axis == 1 ? ScaleY : ScaleZ;
  return s > 0 && std::isfinite(s) ? s : 1;
}

void MultSceneScale() {
  const float sx = DrawnScale(0), sy = DrawnScale(1), sz = DrawnScale(2);
  if (sx == 1 && sy == 1 && sz == 1) return;
  glScalef(sx, sy, sz);
  glEnable(GL_NORMALIZE);
}

CRegion& GroundRegion() {
  static CRegion ground;
  return ground;
}

namespace {
void InitGround() {
  CRegion& g = GroundRegion();
  g = CRegion();
  g.ID = "RG0000";
  g.ForeColor = 0xFFFFFF;
  g.Alpha = 0;
  const float c[4][2] = {{1000, -1000}, {1000, 1000}, {-1000, 1000}, {-1000, -1000}};
  for (auto& p : c) g.Points.emplace_back(p[0], p[1], 0.0f);
}
}  // namespace

void ResetViewState() {
  ViewGraph = Cls8();
  GraphList = Cls8();
  View = Cls4();
  MainLight = Cls10();
  AxisObject = Cls3();
  SceneQuat[0] = SceneQuat[1] = SceneQuat[2] = 0;
  SceneQuat[3] = 1;
  for (int i = 0; i < 16; ++i) SceneMatrix[i] = (i % 5 == 0) ? 1.0f : 0.0f;
  InitGround();
}

}  // namespace vt
