// CSurRot and CStretch: the profile from its object, the sweep, the mesh
// drawn through the surface mesh routines, picking, records.
#include "graphs/swept.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "document/document.h"
#include "document/globals.h"
#include "expr/parameters.h"
#include "expr/text_prep.h"
#include "geometry/derived_surfaces.h"
#include "geometry/geom.h"
#include "graphs/curve_analysis.h"
#include "graphs/follow.h"
#include "graphs/mesh_pick.h"
#include "persist/docio.h"
#include "persist/record.h"

namespace vt {

// ---- the profile ------------------------------------------------------------------------

namespace {

void CopyInto(const std::vector<Position>& src, std::vector<Position>& out) {
  out.clear();
  out.reserve(src.size());
  for (const Position& p : src) out.emplace_back(p.x, p.y, p.z);
}


}  // namespace

// A formula of the parameters alone; false (after the compiler's box for a
// bad text) when it does not give a value.
bool ParameterValue(const std::string& text, float& value) {
  VariableTable vars;
  LoadParameterTable(vars);
  std::string postfix;
  if (!CompileFormula(InsertImplicitProducts(text), vars, postfix)) return false;
  Cls6 calc;
  try {
    return EvaluatePostfix(calc, postfix, vars, value) && value != BreakValue && std::isfinite(value);
  } catch (const ExprFailure&) {
    return false;
  }
}

bool ProfileVertices(const std::string& id, std::vector<Position>& out) {
  const std::string head = id.substr(0, 2);
  if (head == "PT") {
    const Position* p = FindPoint(id);
    if (!p) return false;
    out.assign(1, Position(p->x, p->y, p->z));
    return true;
  }
  if (head == "LN") {
    const CLine* l = Doc.Lines.FindById(id);
    if (!l) return false;
    out.clear();
    out.emplace_back(l->pBegin.x, l->pBegin.y, l->pBegin.z);
    out.emplace_back(l->pEnd.x, l->pEnd.y, l->pEnd.z);
    return true;
  }
  if (head == "CR") {
    const CCircle* c = Doc.Circles.FindById(id);
    if (!c) return false;
    CopyInto(c->GetRotPoints(), out);
    return !out.empty();
  }
  if (head == "AR") {
    const CArc* a = Doc.Arcs.FindById(id);
    if (!a) return false;
    CopyInto(a->GetRotPoints(), out);
    return !out.empty();
  }
  if (head == "C2") {
    const CFunCurve* c = Doc.FunCurves.FindById(id);
    if (!c) return false;
    CopyInto(c->GetRotPoints(), out);
    return !out.empty();
  }
  if (head == "C3") {
    CSurface* s = Doc.Surfaces.FindById(id);
    if (!s) return false;
    if (!s->Sampled()) s->GetPoints();
    CopyInto(s->GetRotPoints(), out);
    return !out.empty();
  }
  if (head == "RG") {
    const CRegion* g = Doc.Regions.FindById(id);
    if (!g) return false;
    CopyInto(g->GetRotPoints(), out);
    return !out.empty();
  }
  if (head == "FA") {
    CFan* f = Doc.Fans.FindById(id);
    if (!f) return false;
    f->EnsureBuilt();
    CopyInto(f->GetRotPoints(), out);
    return !out.empty();
  }
  if (head == "RB") {
    CRibbon* b = Doc.Ribbons.FindById(id);
    if (!b) return false;
    b->EnsureBuilt();
    CopyInto(b->GetRotPoints(), out);
    return !out.empty();
  }
  return false;
}

// ---- shared ---------------------------------------------------------------------------------

CSweptSurface::CSweptSurface() {
  GELineWidth = 1;
  Ramp.SetByName();
  RegisterDerivedSurfaceUpdates();
}

template <class F>
void CSweptSurface::BuildMesh(const std::vector<Position>& profile, int steps, F place) {
  StepU = std::max(static_cast<int>(profile.size()) - 1, 0);
  StepV = steps;
  Vert3D.assign(static_cast<size_t>(StepU + 1) * static_cast<size_t>(StepV + 1), Position(0, 0, 0));
  for (int i = 0; i <= StepU; ++i) {
    const Position& v = profile[static_cast<size_t>(i)];
    for (int j = 0; j <= StepV; ++j) {
      Position& out = Vert3D[GridIndex(i, j, StepV)];
      if (IsHolePosition(v)) {
        out.Set(BreakValue, BreakValue, BreakValue);
        continue;
      }
      const Position p = place(v, j);
      out.Set(p.x, p.y, p.z);
    }
  }
  sampled_ = true;
  UpdateBox();
}

void CSweptSurface::UpdateBox() {
  float lo[3] = {3e38f, 3e38f, 3e38f}, hi[3] = {-3e38f, -3e38f, -3e38f};
  for (const Position& p : Vert3D) {
    if (IsHolePosition(p)) continue;
    const float c[3] = {p.x, p.y, p.z};
    for (int k = 0; k < 3; ++k) {
      lo[k] = std::min(lo[k], c[k]);
      hi[k] = std::max(hi[k], c[k]);
    }
  }
  if (lo[0] > hi[0]) {
    MinX = MaxX = MinY = MaxY = MinZ = MaxZ = 0;
    return;
  }
  MinX = lo[0], MaxX = hi[0], MinY = lo[1], MaxY = hi[1], MinZ = lo[2], MaxZ = hi[2];
}

void CSweptSurface::SelectRamp() {
  ColorRamp named = Ramp;
  if (!named.ColorName.empty() && named.ColorName[0] == '@') named.ColorName.erase(0, 1);
  if (named.SetByName()) {
    const std::string keep = Ramp.ColorName;
    Ramp = named;
    Ramp.ColorName = keep;
  }
}

QuadLook CSweptSurface::Look() const { return SurfaceLookOf(*this); }

void CSweptSurface::ComputeNormals() { SurfaceNormalsOf(*this, faceN_, vertN_); }

void CSweptSurface::Draw() {
  if (Hide) return;
  // Read from a document, it samples at its first draw, once: a profile that
  // is gone or a bad formula is not tried again at every repaint.
  if (!sampled_) {
    sampled_ = true;
    GetPoints();
  }
  if (StepU < 1 || StepV < 1 || Vert3D.size() < GridIndex(StepU, StepV, StepV) + 1) return;
  // The ramp may have been renamed since the last draw.
  SelectRamp();
  ComputeNormals();
  const QuadLook look = Look();
  glPushAttrib(GL_ENABLE_BIT | GL_POLYGON_BIT | GL_LIGHTING_BIT | GL_CURRENT_BIT | GL_TEXTURE_BIT |
               GL_COLOR_BUFFER_BIT);
  BeginSurfaceLook(look);
  DrawQuadGrid(Vert3D, StepU, StepV, faceN_, vertN_, look);
  EndSurfaceLook(look);
  glPopAttrib();
}

void CSweptSurface::GetBox(CBox& box) const {
  if (!sampled_ || Vert3D.empty()) return;
  box.MinX = std::min(box.MinX, MinX);
  box.MaxX = std::max(box.MaxX, MaxX);
  box.MinY = std::min(box.MinY, MinY);
  box.MaxY = std::max(box.MaxY, MaxY);
  box.MinZ = std::min(box.MinZ, MinZ);
  box.MaxZ = std::max(box.MaxZ, MaxZ);
}

std::vector<std::vector<Position>> CSweptSurface::GetRegions() const {
  return GridQuads(Vert3D, StepU, StepV);
}

std::vector<Position> CSweptSurface::MeshPoints() const {
  std::vector<Position> out;
  for (const Position& p : Vert3D)
    if (!IsHolePosition(p)) out.emplace_back(p.x, p.y, p.z);
  return out;
}

bool CSweptSurface::Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) {
  if (Hide || !sampled_ || StepU < 0 || StepV < 0 || Vert3D.size() < GridIndex(StepU, StepV, StepV) + 1)
    return false;
  try {
    CBox box;
    box.MinX = MinX, box.MaxX = MaxX, box.MinY = MinY, box.MaxY = MaxY, box.MinZ = MinZ, box.MaxZ = MaxZ;
    if (!RayMeetsBox(nearPoint, farPoint, box, 0.12)) return false;
    // The chords of the mesh, then its faces.
    if (RayNearMeshChords(Vert3D, StepU, StepV, nearPoint, farPoint, 0.12)) return true;
    for (const std::vector<Position>& quad : GetRegions())
      if (RayHitsPolygon(nearPoint, farPoint, quad)) return true;
  } catch (...) {
  }
  (void)scenePoint;
  return false;
}

bool CSweptSurface::BoxSel(float x1, float y1, float x2, float y2) const {
  for (const Position& s : Vert3D)
    if (!IsHolePosition(s) && s.BoxSel(x1, y1, x2, y2)) return true;
  return false;
}

void CSweptSurface::SaveHead(RecordWriter& w) const {
  w.AddFramed(NameS).Add(FillStyle);
  w.Add(static_cast<long>(FirstColor)).Add(static_cast<long>(SecondColor)).Add(static_cast<long>(LineColor));
  w.Add(LineWidth).Add(Material).Add(Show).Add(Smoothness).Add(DrawMode);
  w.AddFramed(Ramp.ColorName).Add(StepU).Add(StepV);
}

void CSweptSurface::LoadHead(RecordReader& r) {
  ID = r.OwnId();
  NameS = r.FramedText();
  FillStyle = r.Int();
  FirstColor = static_cast<std::uint32_t>(r.Long());
  SecondColor = static_cast<std::uint32_t>(r.Long());
  LineColor = static_cast<std::uint32_t>(r.Long());
  LineWidth = r.Int();
  Material = r.Int();
  Show = r.Int();
  Smoothness = r.Int();
  DrawMode = r.Int();
  Ramp.ColorName = r.FramedText();
  SelectRamp();
  StepU = r.Int();
  StepV = r.Int();
  if (StepU < 0 || StepV < 0 || StepV > CSurface::kMaxSteps || StepU > CSurface::kMaxSteps)
    throw RecordError("steps out of range");
  ForeColor = FirstColor;
}

void CSweptSurface::SaveTail(RecordWriter& w) const {
  w.Add(ShowTex).Add(TexMode).Add(ShowTrans).Add(TransAlpha).AddFramed(TexName);
  w.Add(Selected).Add(Hide);
}

void CSweptSurface::LoadTail(RecordReader& r) {
  ShowTex = r.Bool();
  TexMode = r.Int();
  ShowTrans = r.Bool();
  TransAlpha = r.Single();
  TexName = r.FramedText();
  Selected = r.Bool();
  Hide = r.Bool();
}

// ---- CSurRot ------------------------------------------------------------------------------------

bool CSurRot::GetPoints() {
  float angle = 0;
  RecordFormulaInputs(ID, {});
  if (!ParameterValue(RotAngle, angle)) return false;
  RecordFormulaInputs(ID, {RotAngle});
  const int steps = StepV < 1 ? 1 : StepV;
  std::vector<Position> profile;
  if (!ProfileVertices(RotObjID, profile)) return false;
  const std::string axisHead = RotCenterID.substr(0, 2);
  const float step = angle / static_cast<float>(steps);
  if (axisHead == "LN") {
    if (!Doc.Lines.FindById(RotCenterID)) return false;
    const std::string axis = RotCenterID;
    BuildMesh(profile, steps, [&](const Position& v, int j) {
      Position p(v.x, v.y, v.z);
      return p.RotL3D(axis, static_cast<float>(j) * step);
    });
  } else if (axisHead == "PT") {
    if (!FindPoint(RotCenterID)) return false;
    const std::string centre = RotCenterID;
    BuildMesh(profile, steps, [&](const Position& v, int j) {
      Position p(v.x, v.y, v.z);
      return p.RotateP(centre, static_cast<float>(j) * step);
    });
  } else {
    // A curve as the axis is kept in files but gives no rotation.
    return false;
  }
  return true;
}

std::string CSurRot::Save() const {
  RecordWriter w(ID);
  SaveHead(w);
  w.AddFramed(RotCenterID).AddFramed(RotObjID).AddFramed(RotAngle);
  SaveTail(w);
  return w.Close();
}

std::unique_ptr<CSurRot> CSurRot::Load(RecordReader& r) {
  auto s = std::make_unique<CSurRot>();
  s->LoadHead(r);
  s->RotCenterID = r.FramedId();
  s->RotObjID = r.FramedId();
  s->RotAngle = r.FramedText();
  s->LoadTail(r);
  return s;
}

// ---- CStretch -------------------------------------------------------------------------------------

bool CStretch::GetPoints() {
  float dx = 0, dy = 0, dz = 0;
  RecordFormulaInputs(ID, {});
  if (!ParameterValue(DX, dx) || !ParameterValue(DY, dy) || !ParameterValue(DZ, dz)) return false;
  RecordFormulaInputs(ID, {DX, DY, DZ});
  const int steps = StepV < 1 ? 1 : StepV;
  std::vector<Position> profile;
  if (!ProfileVertices(ObjID, profile)) return false;
  BuildMesh(profile, steps, [&](const Position& v, int j) {
    const float t = static_cast<float>(j) / static_cast<float>(steps);
    return Position(v.x + t * dx, v.y + t * dy, v.z + t * dz);
  });
  return true;
}

std::string CStretch::Save() const {
  RecordWriter w(ID);
  SaveHead(w);
  w.AddFramed(DX).AddFramed(DY).AddFramed(DZ).AddFramed(ObjID);
  SaveTail(w);
  return w.Close();
}

std::unique_ptr<CStretch> CStretch::Load(RecordReader& r) {
  auto s = std::make_unique<CStretch>();
  s->LoadHead(r);
  s->DX = r.FramedText();
  s->DY = r.FramedText();
  s->DZ = r.FramedText();
  s->ObjID = r.FramedId();
  s->LoadTail(r);
  return s;
}

void RefreshSweptSurfaces() {
  for (CSurRot* s : Doc.SurRots) s->GetPoints();
  for (CStretch* s : Doc.Stretchs) s->GetPoints();
}

void RegisterSweptReaders() {
  RegisterRecordReader("SR", [](RecordReader& r, int) { Doc.SurRots.Add(CSurRot::Load(r)); });
  RegisterRecordReader("SS", [](RecordReader& r, int) { Doc.Stretchs.Add(CStretch::Load(r)); });
}

}  // namespace vt
