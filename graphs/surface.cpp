// CSurface without the drawing: creation, sampling in every form and
// system, box, picking, the mesh for dependents, the record.
#include "graphs/surface.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "document/document.h"
#include "document/globals.h"
#include "expr/derivative.h"
#include "expr/parameters.h"
#include "expr/text_prep.h"
#include "geometry/geom.h"
#include "geometry/derived_surfaces.h"
#include "graphs/curve_analysis.h"
#include "graphs/follow.h"
#include "graphs/mesh_pick.h"
#include "persist/record.h"

namespace vt {

void SurfaceTable::Load(int own) {
  HideOwnNames(vars, LoadParameterTable(vars), own);
  U = vars.Add("U");
  V = vars.Add("V");
  W = vars.Add("W");
  X = vars.Add("X");
  Y = vars.Add("Y");
  Z = vars.Add("Z");
  A = vars.Add("A");
  B = vars.Add("B");
  R = vars.Add("R");
}

bool IsHolePosition(const Position& p) { return p.x == BreakValue || p.y == BreakValue || p.z == BreakValue; }

Position RenderingPoint(double ux, double uy, double uz) {
  return Position(static_cast<float>(ux), static_cast<float>(uy), static_cast<float>(uz));
}

void CylindricalToUser(double a, double r, double z, double& x, double& y, double& zz) {
  x = r * std::cos(a);
  y = r * std::sin(a);
  zz = z;
}

void SphericalToUser(double a, double b, double r, double& x, double& y, double& z) {
  x = r * std::sin(b) * std::cos(a);
  y = r * std::sin(b) * std::sin(a);
  z = r * std::cos(b);
}

std::string SurfaceFormLabel(int graphType, int funForm, int coordType) {
  static const char* const kCurve[3][2] = {
      {"z=f(x) or z=f(y)", "x=f1(u),y=f2(u),z=f3(u)"},
      {"z=f(a) or z=f(r)", "a=f1(u),r=f2(u),z=f3(u)"},
      {"r=f(a) or r=f(b)", "a=f1(u),b=f2(u),r=f3(u)"}};
  static const char* const kSurface[3][3] = {
      {"f(x,y,z)=0", "z=f(x,y)", "x=f1(u,v),y=f2(u,v),z=f3(u,v)"},
      {"f(a,r,z)=0", "z=f(a,r)", "a=f1(u,v),r=f2(u,v),z=f3(u,v)"},
      {"f(a,b,r)=0", "r=f(a,b)", "a=f1(u,v),b=f2(u,v),r=f3(u,v)"}};
  const int s = coordType - 3;
  if (s < 0 || s > 2) return {};
  if (graphType == 1) return funForm == 2 || funForm == 3 ? kCurve[s][funForm - 2] : std::string();
  return funForm >= 1 && funForm <= 3 ? kSurface[s][funForm - 1] : std::string();
}

namespace {

// The first token of the postfix text that names one of the two variables:
// 1 the first, 2 the second, 0 neither.
int FirstNamed(const std::string& postfix, const char* first, const char* second) {
  std::istringstream in(postfix);
  std::string tok;
  while (in >> tok) {
    if (SameNameNoCase(tok, first)) return 1;
    if (SameNameNoCase(tok, second)) return 2;
  }
  return 0;
}

// The user point of three values in the system.
Position PointOf(int coordType, double p, double q, double s) {
  double x = p, y = q, z = s;
  if (coordType == 4) CylindricalToUser(p, q, s, x, y, z);
  else if (coordType == 5) SphericalToUser(p, q, s, x, y, z);
  return RenderingPoint(x, y, z);
}

bool Holed(float v) { return v == BreakValue; }

}  // namespace

CSurface::CSurface() {
  GELineWidth = 1;
  Ramp.SetByName();
}

void CSurface::Init(const std::string& id, const std::string& name, int graphType, int funForm, int coordType,
                    const std::string& expressX, const std::string& expressY, const std::string& expressZ,
                    int stepU, int stepV, const std::string& minU, const std::string& maxU,
                    const std::string& minV, const std::string& maxV) {
  ID = id;
  NameS = name;
  GraphType = graphType;
  FunForm = funForm;
  CoordType = coordType;
  ExpressX = expressX;
  ExpressY = expressY;
  ExpressZ = expressZ;
  StepU = stepU;
  StepV = stepV;
  MinU = minU;
  MaxU = maxU;
  MinV = minV;
  MaxV = maxV;
  Ramp.SetByName();
}

// ---- sampling ------------------------------------------------------------------------

bool CSurface::GetPoints() {
  sampled_ = true;
  RecordFormulaInputs(ID, {});  // until the formulas compile: follows nothing
  iso_.Clear();
  if (StepU == 0) StepU = 1;
  if (StepV == 0) StepV = 1;
  if (StepW == 0) StepW = 1;
  const int limit = IsImplicit() ? kMaxImplicitSteps : kMaxSteps;
  if (StepU < 0 || StepV < 0 || StepW < 0 || StepU > limit || StepV > limit || StepW > limit) return false;
  const std::string fx = InsertImplicitProducts(ExpressX);
  const std::string fy = InsertImplicitProducts(ExpressY);
  const std::string fz = InsertImplicitProducts(ExpressZ);

  Vert3D.clear();
  CurveVert.clear();
  FieldX.clear();
  FieldY.clear();
  FieldZ.clear();
  FieldF.clear();
  MinF = 1e8f;
  MaxF = -1e8f;
  if (IsCurve()) CurveVert.assign(static_cast<size_t>(StepU) + 1, Position(0, 0, 0));
  else if (!IsImplicit())
    Vert3D.assign(static_cast<size_t>(StepU + 1) * static_cast<size_t>(StepV + 1), Position(0, 0, 0));

  SurfaceTable t, ranges;
  t.Load(OwnNames());
  ranges.Load();  // the ranges read every parameter
  // Only the parametric form has formulas in ExpressX and ExpressY.
  std::string px, py, pz, pminU, pmaxU, pminV, pmaxV;
  if (FunForm == 3 && (!CompileFormula(fx, t.vars, px) || !CompileFormula(fy, t.vars, py))) return false;
  if (!CompileFormula(fz, t.vars, pz)) return false;
  RecordFormulaInputs(ID, {ExpressX, ExpressY, ExpressZ, MinU, MaxU, MinV, MaxV});
  if (!CompileFormula(MinU, ranges.vars, pminU) || !CompileFormula(MaxU, ranges.vars, pmaxU)) return false;
  const bool needV = !IsCurve();
  if (needV && (!CompileFormula(MinV, ranges.vars, pminV) || !CompileFormula(MaxV, ranges.vars, pmaxV)))
    return false;
  Cls6 calc;
  float su, eu, sv = 0, ev = 0;
  if (!EvaluatePostfix(calc, pminU, ranges.vars, su) || !EvaluatePostfix(calc, pmaxU, ranges.vars, eu)) return false;
  if (needV && (!EvaluatePostfix(calc, pminV, ranges.vars, sv) || !EvaluatePostfix(calc, pmaxV, ranges.vars, ev)))
    return false;
  bool ok;
  try {
    ok = IsCurve() ? SampleCurve(px, py, pz, t, su, eu) : SampleSurface(px, py, pz, t, su, eu, sv, ev);
  } catch (const ExprFailure&) {
    ok = false;
  }
  if (!IsImplicit()) ClipMesh();
  GetBox();
  return ok;
}

int CSurface::OwnNames() const {
  if (FunForm == 3 || CoordType == 3) return kOwnNone;
  if (IsImplicit()) return CoordType == 4 ? kOwnA | kOwnR : kOwnA | kOwnB | kOwnR;
  return kOwnA | (CoordType == 4 ? kOwnR : kOwnB);
}

bool CSurface::SampleCurve(const std::string& px, const std::string& py, const std::string& pz, SurfaceTable& t,
                           float su, float eu) {
  const float du = (eu - su) / static_cast<float>(StepU);
  int which = 0;
  int slot1 = 0, slot2 = 0;
  if (FunForm == 2) {
    if (CoordType == 4) which = FirstNamed(pz, "A", "R"), slot1 = t.A, slot2 = t.R;
    else if (CoordType == 5) which = FirstNamed(pz, "A", "B"), slot1 = t.A, slot2 = t.B;
    else which = FirstNamed(pz, "X", "Y"), slot1 = t.X, slot2 = t.Y;
    if (which == 0) {
      // A formula of neither variable has no curve.
      for (Position& p : CurveVert) p.Set(BreakValue, BreakValue, BreakValue);
      return true;
    }
  }
  Cls6 calc;
  for (int i = 0; i <= StepU; ++i) {
    const float u = du * static_cast<float>(i) + su;
    t.Load(OwnNames());
    float* v = t.vars.values;
    v[t.U] = u;
    Position p;
    if (FunForm == 2) {
      float first = which == 1 ? u : 0, second = which == 2 ? u : 0;
      // z = f(a) runs round the cylinder of radius 1, and r = f(a) round the
      // equator: with the other coordinate 0 they would lie on the z axis.
      if (which == 1 && CoordType == 4) second = 1;
      if (which == 1 && CoordType == 5) second = 1.5707963f;
      v[slot1] = first;
      v[slot2] = second;
      float f;
      if (!EvaluatePostfix(calc, pz, t.vars, f)) return false;
      if (CoordType == 5) p = PointOf(5, first, second, f);
      else p = PointOf(CoordType, first, second, f);
    } else {
      float a, b, c;
      if (!EvaluatePostfix(calc, px, t.vars, a) || !EvaluatePostfix(calc, py, t.vars, b) ||
          !EvaluatePostfix(calc, pz, t.vars, c))
        return false;
      p = PointOf(CoordType, a, b, c);
    }
    CurveVert[static_cast<size_t>(i)].Set(p.x, p.y, p.z);
  }
  return true;
}

bool CSurface::SampleSurface(const std::string& px, const std::string& py, const std::string& pz,
                             SurfaceTable& t, float su, float eu, float sv, float ev) {
  const float du = (eu - su) / static_cast<float>(StepU);
  const float dv = (ev - sv) / static_cast<float>(StepV);
  Cls6 calc;
  if (FunForm == 1) {
    const size_t nu = static_cast<size_t>(StepU) + 1, nv = static_cast<size_t>(StepV) + 1,
                 nw = static_cast<size_t>(StepW) + 1;
    const size_t n = nu * nv * nw;
    FieldX.assign(n, 0);
    FieldY.assign(n, 0);
    FieldZ.assign(n, 0);
    FieldF.assign(n, 0);
    const float dw = (MaxW - MinW) / static_cast<float>(StepW);
    int s1 = t.X, s2 = t.Y, s3 = t.Z;
    if (CoordType == 4) s1 = t.A, s2 = t.R, s3 = t.Z;
    else if (CoordType == 5) s1 = t.A, s2 = t.B, s3 = t.R;
    for (size_t k = 0; k < nw; ++k) {
      const float w = dw * static_cast<float>(k) + MinW;
      for (size_t j = 0; j < nv; ++j) {
        const float v = dv * static_cast<float>(j) + sv;
        for (size_t i = 0; i < nu; ++i) {
          const float u = du * static_cast<float>(i) + su;
          t.Load(OwnNames());
          t.vars.values[s1] = u;
          t.vars.values[s2] = v;
          t.vars.values[s3] = w;
          const size_t at = (k * nv + j) * nu + i;
          const Position p = PointOf(CoordType, u, v, w);
          FieldX[at] = p.x;
          FieldY[at] = p.y;
          FieldZ[at] = p.z;
          float f;
          bool good = false;
          try {
            good = EvaluatePostfix(calc, pz, t.vars, f);
          } catch (const ExprFailure&) {
          }
          if (!good) continue;  // the cell stays 0
          FieldF[at] = f;
          MinF = std::min(MinF, f);
          MaxF = std::max(MaxF, f);
        }
      }
    }
    return true;
  }
  for (int i = 0; i <= StepU; ++i) {
    const float u = du * static_cast<float>(i) + su;
    for (int j = 0; j <= StepV; ++j) {
      const float v = dv * static_cast<float>(j) + sv;
      t.Load(OwnNames());
      float* val = t.vars.values;
      Position p;
      if (FunForm == 2) {
        int s1 = t.X, s2 = t.Y;
        if (CoordType == 4) s1 = t.A, s2 = t.R;
        else if (CoordType == 5) s1 = t.A, s2 = t.B;
        val[s1] = u;
        val[s2] = v;
        float f;
        if (!EvaluatePostfix(calc, pz, t.vars, f)) return false;
        p = Holed(f) ? Position(BreakValue, BreakValue, BreakValue) : PointOf(CoordType, u, v, f);
      } else {
        val[t.U] = u;
        val[t.V] = v;
        float a, b, c;
        if (!EvaluatePostfix(calc, px, t.vars, a) || !EvaluatePostfix(calc, py, t.vars, b) ||
            !EvaluatePostfix(calc, pz, t.vars, c))
          return false;
        p = Holed(a) || Holed(b) || Holed(c) ? Position(BreakValue, BreakValue, BreakValue)
                                             : PointOf(CoordType, a, b, c);
      }
      Vert3D[GridIndex(i, j, StepV)].Set(p.x, p.y, p.z);
    }
  }
  return true;
}

void CSurface::ClipMesh() {
  if (IsCurve()) {
    for (Position& p : CurveVert) {
      if (p.x > BoxMaxX || p.x < BoxMinX) p.x = BreakValue;
      if (p.y > BoxMaxY || p.y < BoxMinY) p.y = BreakValue;
      if (p.z > BoxMaxZ || p.z < BoxMinZ) p.z = BreakValue;
    }
    return;
  }
  // A point out of range on one axis is marked in the next axis (either
  // mark makes the point a hole).
  for (Position& p : Vert3D) {
    if (p.x > BoxMaxX || p.x < BoxMinX) p.y = BreakValue;
    if (p.y > BoxMaxY || p.y < BoxMinY) p.z = BreakValue;
    if (p.z > BoxMaxZ || p.z < BoxMinZ) p.x = BreakValue;
  }
}

// ---- box, picking, dependents ------------------------------------------------------------

void CSurface::GetBox() {
  float lo[3] = {3e38f, 3e38f, 3e38f}, hi[3] = {-3e38f, -3e38f, -3e38f};
  auto widen = [&](float x, float y, float z) {
    if (Holed(x) || Holed(y) || Holed(z)) return;
    const float c[3] = {x, y, z};
    for (int k = 0; k < 3; ++k) {
      lo[k] = std::min(lo[k], c[k]);
      hi[k] = std::max(hi[k], c[k]);
    }
  };
  if (IsCurve()) {
    for (const Position& p : CurveVert) widen(p.x, p.y, p.z);
  } else if (IsImplicit()) {
    for (size_t i = 0; i < FieldX.size(); ++i) widen(FieldX[i], FieldY[i], FieldZ[i]);
  } else {
    for (const Position& p : Vert3D) widen(p.x, p.y, p.z);
  }
  if (lo[0] > hi[0]) {
    MinX = MaxX = MinY = MaxY = MinZ = MaxZ = 0;
    return;
  }
  MinX = lo[0], MaxX = hi[0], MinY = lo[1], MaxY = hi[1], MinZ = lo[2], MaxZ = hi[2];
}

void CSurface::GetBox(CBox& box) const {
  if (!sampled_ || (Vert3D.empty() && CurveVert.empty() && FieldX.empty())) return;
  box.MinX = std::min(box.MinX, MinX);
  box.MaxX = std::max(box.MaxX, MaxX);
  box.MinY = std::min(box.MinY, MinY);
  box.MaxY = std::max(box.MaxY, MaxY);
  box.MinZ = std::min(box.MinZ, MinZ);
  box.MaxZ = std::max(box.MaxZ, MaxZ);
}

bool CSurface::Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) {
  if (Hide) return false;
  try {
    if (IsCurve()) {
      for (size_t i = 0; i + 1 < CurveVert.size(); ++i) {
        const Position& a = CurveVert[i];
        const Position& b = CurveVert[i + 1];
        if (IsHolePosition(a) || IsHolePosition(b)) continue;
        if (DistanceRayLine(nearPoint, farPoint, a, b) < 0.12) return true;
      }
      return false;
    }
    CBox box;
    box.MinX = MinX, box.MaxX = MaxX, box.MinY = MinY, box.MaxY = MaxY, box.MinZ = MinZ, box.MaxZ = MaxZ;
    if (!RayMeetsBox(nearPoint, farPoint, box, 0.12)) return false;
    if (IsImplicit()) {
      std::vector<Position> tri(3, Position(0, 0, 0));
      for (size_t m = 0; m + 2 < iso_.tri.size(); m += 3) {
        for (int c = 0; c < 3; ++c) {
          const float* p = &iso_.pos[iso_.tri[m + static_cast<size_t>(c)] * 3];
          tri[static_cast<size_t>(c)].Set(p[0], p[1], p[2]);
        }
        if (RayHitsPolygon(nearPoint, farPoint, tri)) return true;
      }
      return false;
    }
    if (RayNearMeshChords(Vert3D, StepU, StepV, nearPoint, farPoint, 0.12)) return true;
    for (const std::vector<Position>& quad : GetRegions())
      if (RayHitsPolygon(nearPoint, farPoint, quad)) return true;
  } catch (...) {
  }
  (void)scenePoint;
  return false;
}

bool RayNearMeshChords(const std::vector<Position>& grid, int su, int sv, const Position& nearPoint,
                       const Position& farPoint, double tol) {
  if (su < 0 || sv < 0 || grid.size() < GridIndex(su, sv, sv) + 1) return false;
  auto near = [&](const Position& a, const Position& b) {
    if (IsHolePosition(a) || IsHolePosition(b)) return false;
    // The chord's own box first: the distance below is to the whole line.
    const CBox box{std::min(a.x, b.x), std::max(a.x, b.x), std::min(a.y, b.y),
                   std::max(a.y, b.y), std::min(a.z, b.z), std::max(a.z, b.z)};
    return RayMeetsBox(nearPoint, farPoint, box, tol) && DistanceRayLine(nearPoint, farPoint, a, b) < tol;
  };
  for (int i = 0; i <= su; ++i)
    for (int j = 0; j <= sv; ++j) {
      const Position& a = grid[GridIndex(i, j, sv)];
      if (i < su && near(a, grid[GridIndex(i + 1, j, sv)])) return true;
      if (j < sv && near(a, grid[GridIndex(i, j + 1, sv)])) return true;
    }
  return false;
}

bool CSurface::BoxSel(float x1, float y1, float x2, float y2) const {
  if (IsCurve()) {
    for (const Position& s : CurveVert)
      if (!IsHolePosition(s) && s.BoxSel(x1, y1, x2, y2)) return true;
    return false;
  }
  if (IsImplicit()) {
    Position p;
    for (size_t v = 0; v + 2 < iso_.pos.size(); v += 3) {
      p.Set(iso_.pos[v], iso_.pos[v + 1], iso_.pos[v + 2]);
      if (p.BoxSel(x1, y1, x2, y2)) return true;
    }
    return false;
  }
  for (const Position& s : Vert3D)
    if (!IsHolePosition(s) && s.BoxSel(x1, y1, x2, y2)) return true;
  return false;
}

std::vector<Position> CSurface::Points() const {
  std::vector<Position> out;
  const std::vector<Position>& src = IsCurve() ? CurveVert : Vert3D;
  for (const Position& p : src)
    if (!IsHolePosition(p)) out.emplace_back(p.x, p.y, p.z);
  return out;
}

std::vector<Position> CSurface::GetRotPoints() const {
  if (!IsCurve()) return Points();
  CSurface probe = *this;
  probe.StepU = 50;
  if (!probe.GetPoints()) return {};
  std::vector<Position> out;
  out.reserve(probe.CurveVert.size());
  for (const Position& p : probe.CurveVert) out.emplace_back(p.x, p.y, p.z);
  return out;
}

int CSurface::GetRGNum() const { return IsCurve() || IsImplicit() ? 0 : StepU * StepV; }

std::vector<std::vector<Position>> GridQuads(const std::vector<Position>& grid, int su, int sv) {
  std::vector<std::vector<Position>> out;
  if (su < 1 || sv < 1 || grid.size() < GridIndex(su, sv, sv) + 1) return out;
  for (int i = 0; i < su; ++i) {
    for (int j = 0; j < sv; ++j) {
      const Position* c[4] = {&grid[GridIndex(i, j, sv)], &grid[GridIndex(i + 1, j, sv)],
                              &grid[GridIndex(i + 1, j + 1, sv)], &grid[GridIndex(i, j + 1, sv)]};
      bool hole = false;
      for (const Position* p : c) hole = hole || IsHolePosition(*p);
      if (hole) continue;
      std::vector<Position> quad;
      for (const Position* p : c) quad.emplace_back(p->x, p->y, p->z);
      out.push_back(std::move(quad));
    }
  }
  return out;
}

std::vector<std::vector<Position>> CSurface::GetRegions() const {
  if (IsCurve() || IsImplicit()) return {};
  return GridQuads(Vert3D, StepU, StepV);
}

// ---- tangent planes and normals --------------------------------------------------------

bool CSurface::Derivatives(std::string& dx, std::string& dy) const {
  if (!IsSurfaceKind() || FunForm != 2 || CoordType != 3) return false;
  const std::string fz = InsertImplicitProducts(ExpressZ);
  VariableTable parameters;
  LoadParameterTable(parameters);
  return DerivativeText(fz, "x", dx, &parameters) && DerivativeText(fz, "y", dy, &parameters);
}

namespace {

bool SlopesAt(const std::string& fz, const std::string& dx, const std::string& dy, float x, float y, float& z,
              float& p, float& q) {
  SurfaceTable t;
  t.Load();
  t.vars.values[t.X] = x;
  t.vars.values[t.Y] = y;
  std::string cz, cx, cy;
  if (!CompileFormula(fz, t.vars, cz) || !CompileFormula(dx, t.vars, cx) || !CompileFormula(dy, t.vars, cy))
    return false;
  Cls6 calc;
  try {
    return EvaluatePostfix(calc, cz, t.vars, z) && EvaluatePostfix(calc, cx, t.vars, p) &&
           EvaluatePostfix(calc, cy, t.vars, q) && !Holed(z) && !Holed(p) && !Holed(q);
  } catch (const ExprFailure&) {
    return false;
  }
}

}  // namespace

bool CSurface::TangentPlaneAt(float x, float y, Position corners[4]) const {
  std::string dx, dy;
  if (!Derivatives(dx, dy)) return false;
  float z, p, q;
  if (!SlopesAt(InsertImplicitProducts(ExpressZ), dx, dy, x, y, z, p, q)) return false;
  const float h = 1.0f;
  const float off[4][2] = {{-h, -h}, {h, -h}, {h, h}, {-h, h}};
  for (int c = 0; c < 4; ++c) {
    const float ex = off[c][0], ey = off[c][1];
    corners[c] = RenderingPoint(x + ex, y + ey, z + p * ex + q * ey);
  }
  return true;
}

bool CSurface::NormalAt(float x, float y, Position ends[2]) const {
  std::string dx, dy;
  if (!Derivatives(dx, dy)) return false;
  float z, p, q;
  if (!SlopesAt(InsertImplicitProducts(ExpressZ), dx, dy, x, y, z, p, q)) return false;
  const double len = std::sqrt(static_cast<double>(p) * p + static_cast<double>(q) * q + 1.0);
  const double k = 2.0 / len;
  ends[0] = RenderingPoint(x, y, z);
  ends[1] = RenderingPoint(x - p * k, y - q * k, z + k);
  return true;
}

// ---- record ------------------------------------------------------------------------------

std::string CSurface::Save() const {
  RecordWriter w(ID);
  w.AddFramed(NameS).Add(GraphType).Add(FunForm).Add(CoordType).Add(FillStyle);
  w.Add(static_cast<long>(FirstColor)).Add(static_cast<long>(SecondColor)).Add(static_cast<long>(LineColor));
  w.Add(LineWidth).Add(Material).Add(Show).Add(Smoothness).Add(DrawMode);
  w.AddFramed(ExpressX).AddFramed(ExpressY).AddFramed(ExpressZ);
  w.Add(StepU).Add(StepV).Add(StepW);
  w.AddFramed(MinU).AddFramed(MaxU).AddFramed(MinV).AddFramed(MaxV).Add(MinW).Add(MaxW);
  w.Add(Clip).Add(ClipMinX).Add(ClipMaxX).Add(ClipMinY).Add(ClipMaxY).Add(ClipMinZ).Add(ClipMaxZ);
  w.AddFramed(Ramp.ColorName).Add(Ramp.ColorNum);
  for (int i = 0; i < Ramp.ColorNum && i < ColorRamp::kMaxStops; ++i)
    w.Add(Ramp.ColorPos[i]).Add(Ramp.ColorR[i]).Add(Ramp.ColorG[i]).Add(Ramp.ColorB[i]);
  w.Add(ShowTex).AddFramed(TexName).Add(TexMode).Add(ShowTrans).Add(TransAlpha);
  w.Add(ShowContour).Add(ShowVector).Add(ShowColormap).Add(ContourLevel);
  w.Add(ShowTangent).Add(TangentNum());
  for (int i = 0; i < TangentNum(); ++i) w.Add(TangentX[static_cast<size_t>(i)]).Add(TangentY[static_cast<size_t>(i)]);
  w.Add(ShowNormal).Add(NormalNum());
  for (int i = 0; i < NormalNum(); ++i) w.Add(NormalX[static_cast<size_t>(i)]).Add(NormalY[static_cast<size_t>(i)]);
  w.Add(Selected).Add(Hide);
  return w.Close();
}

std::unique_ptr<CSurface> CSurface::Load(RecordReader& r) {
  auto s = std::make_unique<CSurface>();
  s->ID = r.OwnId();
  s->NameS = r.FramedText();
  s->GraphType = r.Int();
  s->FunForm = r.Int();
  s->CoordType = r.Int();
  s->FillStyle = r.Int();
  s->FirstColor = static_cast<std::uint32_t>(r.Long());
  s->SecondColor = static_cast<std::uint32_t>(r.Long());
  s->LineColor = static_cast<std::uint32_t>(r.Long());
  s->LineWidth = r.Int();
  s->Material = r.Int();
  s->Show = r.Int();
  s->Smoothness = r.Int();
  s->DrawMode = r.Int();
  s->ExpressX = r.FramedText();
  s->ExpressY = r.FramedText();
  s->ExpressZ = r.FramedText();
  s->StepU = r.Int();
  s->StepV = r.Int();
  s->StepW = r.Int();
  s->MinU = r.FramedText();
  s->MaxU = r.FramedText();
  s->MinV = r.FramedText();
  s->MaxV = r.FramedText();
  s->MinW = r.Single();
  s->MaxW = r.Single();
  s->Clip = r.Bool();
  s->ClipMinX = r.Single();
  s->ClipMaxX = r.Single();
  s->ClipMinY = r.Single();
  s->ClipMaxY = r.Single();
  s->ClipMinZ = r.Single();
  s->ClipMaxZ = r.Single();
  s->Ramp.ColorName = r.FramedText();
  const int stops = r.Int();
  if (stops < 0 || stops > ColorRamp::kMaxStops) throw RecordError("too many colour stops");
  s->Ramp.ColorNum = stops;
  for (int i = 0; i < stops; ++i) {
    s->Ramp.ColorPos[i] = r.Single();
    s->Ramp.ColorR[i] = r.Int();
    s->Ramp.ColorG[i] = r.Int();
    s->Ramp.ColorB[i] = r.Int();
  }
  // A named ramp takes its stops from the name; another name keeps these.
  s->Ramp.SetByName();
  s->ShowTex = r.Bool();
  s->TexName = r.FramedText();
  s->TexMode = r.Int();
  s->ShowTrans = r.Bool();
  s->TransAlpha = r.Single();
  s->ShowContour = r.Bool();
  s->ShowVector = r.Bool();
  s->ShowColormap = r.Bool();
  s->ContourLevel = r.Int();
  auto pairs = [&r](std::vector<float>& xs, std::vector<float>& ys) {
    const int n = r.Int();
    if (n < 0 || n > kMaxPositions) throw RecordError("too many positions");
    xs.clear();
    ys.clear();
    for (int i = 0; i < n; ++i) {
      xs.push_back(r.Single());
      ys.push_back(r.Single());
    }
  };
  s->ShowTangent = r.Bool();
  pairs(s->TangentX, s->TangentY);
  s->ShowNormal = r.Bool();
  pairs(s->NormalX, s->NormalY);
  s->Selected = r.Bool();
  s->Hide = r.Bool();
  s->ForeColor = s->FirstColor;
  return s;
}

void RefreshSurfaces() {
  for (CSurface* s : Doc.Surfaces) s->GetPoints();
  // What rests on them follows, in this order: sectors and ribbons over
  // sampled rims, the swept surfaces (their formulas may name parameters,
  // and a profile may be such a sector or ribbon), the intersection lines.
  auto sampled = [](const std::string& id) {
    const std::string head = id.substr(0, 2);
    return head == "C2" || head == "C3" || head == "SF";
  };
  for (CFan* f : Doc.Fans)
    if (sampled(f->LKID) || sampled(f->LKID2)) f->InitPos();
  for (CRibbon* b : Doc.Ribbons)
    if (sampled(b->LKID) || sampled(b->LKID2)) b->InitPos();
  RefreshSweptSurfaces();
  for (CInterLine* l : Doc.InterLines) l->InitLines();
}

}  // namespace vt
