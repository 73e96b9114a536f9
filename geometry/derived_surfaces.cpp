// CFan, CRibbon and CSphere: the mesh from the objects they rest on, the
// translucent drawing, faces, picking and records; and the re-initialisation
// of these and of the swept surfaces when a point they use moves.
#include "geometry/derived_surfaces.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "document/document.h"
#include "geometry/geom.h"
#include "geometry/propagation.h"
#include "graphs/mesh_pick.h"
#include "graphs/swept.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "render/strokes.h"

namespace vt {

namespace {

size_t MeshIndex(int i, int j, int rows) {
  return static_cast<size_t>(i) * static_cast<size_t>(rows + 1) + static_cast<size_t>(j);
}

bool Same(const Position& a, const Position& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

// n samples evenly along the polyline (by vertex index), holes kept.
std::vector<Position> Resample(const std::vector<Position>& line, int n) {
  std::vector<Position> out;
  if (line.empty() || n < 1) return out;
  out.reserve(static_cast<size_t>(n));
  const int last = static_cast<int>(line.size()) - 1;
  for (int k = 0; k < n; ++k) {
    const double t = n == 1 ? 0.0 : static_cast<double>(k) * last / (n - 1);
    int i = static_cast<int>(std::floor(t));
    if (i >= last) i = std::max(last - 1, 0);
    const double f = last == 0 ? 0.0 : t - i;
    const Position& a = line[static_cast<size_t>(i)];
    const Position& b = line[static_cast<size_t>(std::min(i + 1, last))];
    if (IsHolePosition(a) || IsHolePosition(b)) {
      const Position& keep = f < 0.5 ? a : b;
      if (IsHolePosition(keep)) out.emplace_back(BreakValue, BreakValue, BreakValue);
      else out.emplace_back(keep.x, keep.y, keep.z);
      continue;
    }
    out.emplace_back(static_cast<float>(a.x + (b.x - a.x) * f), static_cast<float>(a.y + (b.y - a.y) * f),
                     static_cast<float>(a.z + (b.z - a.z) * f));
  }
  return out;
}

// The samples of a rim for sectors and ribbons.
bool RimOf(const std::string& id, std::vector<Position>& out) {
  const std::string head = id.substr(0, 2);
  if (head == "SF") {
    CSurface* s = Doc.Surfaces.FindById(id);
    if (!s) return false;
    if (!s->Sampled()) s->GetPoints();
    out.clear();
    if (s->IsCurve()) {
      for (const Position& p : s->CurveVert) out.emplace_back(p.x, p.y, p.z);
    } else if (s->Vert3D.size() >= GridIndex(s->StepU, s->StepV, s->StepV) + 1) {
      // The first row of the mesh.
      for (int i = 0; i <= s->StepU; ++i) {
        const Position& p = s->Vert3D[GridIndex(i, 0, s->StepV)];
        out.emplace_back(p.x, p.y, p.z);
      }
    }
    return !out.empty();
  }
  if (head == "FA" || head == "RB" || head == "PT") return false;
  return ProfileVertices(id, out);
}

}  // namespace

// ---- shared ---------------------------------------------------------------------------

CMeshSurface::CMeshSurface() {
  ForeColor = RGB(128, 192, 255);
  Ramp.SetByName();
  RegisterDerivedSurfaceUpdates();
}

void CMeshSurface::FaceAt(int i, int j, Face& f) const {
  f.clear();
  const size_t at[4] = {MeshIndex(i, j, Rows), MeshIndex(i + 1, j, Rows), MeshIndex(i + 1, j + 1, Rows),
                        MeshIndex(i, j + 1, Rows)};
  for (size_t k : at) {
    const Position& p = Mesh[k];
    if (IsHolePosition(p)) {
      f.clear();
      return;
    }
    // A corner repeated (the apex of a sector, a pole) is left out.
    if (!f.empty() && Same(f.back(), p)) continue;
    f.emplace_back(p.x, p.y, p.z);
  }
  if (f.size() > 1 && Same(f.front(), f.back())) f.pop_back();
}

int CMeshSurface::GetRGNum() const { return Mesh.empty() ? 0 : Cols * Rows; }

std::vector<Face> CMeshSurface::GetRegions() const {
  std::vector<Face> out;
  if (Mesh.size() < MeshIndex(Cols, Rows, Rows) + 1) return out;
  Face f;
  for (int i = 0; i < Cols; ++i)
    for (int j = 0; j < Rows; ++j) {
      FaceAt(i, j, f);
      if (f.size() >= 3) out.push_back(f);
    }
  return out;
}

CornerColoring CMeshSurface::Coloring(CBox& box) const {
  box = CBox{3e38f, -3e38f, 3e38f, -3e38f, 3e38f, -3e38f};
  GetBox(box);
  CornerColoring c;
  c.FillStyle = FillStyle;
  c.FirstColor = ForeColor;
  c.SecondColor = ForeColor2;
  c.Ramp = &Ramp;
  c.MinX = box.MinX, c.MaxX = box.MaxX, c.MinY = box.MinY, c.MaxY = box.MaxY, c.MinZ = box.MinZ,
  c.MaxZ = box.MaxZ;
  return c;
}

void CMeshSurface::Draw() {
  if (Hide) return;
  EnsureBuilt();
  if (Mesh.size() < MeshIndex(Cols, Rows, Rows) + 1) return;
  std::uint32_t plain = ForeColor;
  switch (DrawMode) {
    case 2: plain = RGB(0, 0, 255); break;
    case 3: plain = kCanvasBackColor; break;
    case 4: plain = RGB(0, 255, 0); break;
    default: break;
  }
  const bool ramp = DrawMode == 1 && FillStyle != 4;
  CBox box;
  const CornerColoring coloring = Coloring(box);
  float rgb[3];
  ColorParts(plain, rgb[0], rgb[1], rgb[2]);
  glPushAttrib(GL_ENABLE_BIT | GL_POLYGON_BIT | GL_CURRENT_BIT | GL_COLOR_BUFFER_BIT | GL_LIGHTING_BIT);
  glDisable(GL_LIGHTING);
  glDisable(GL_DEPTH_TEST);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glColor4f(rgb[0], rgb[1], rgb[2], Alpha);
  Face f;
  for (int i = 0; i < Cols; ++i) {
    for (int j = 0; j < Rows; ++j) {
      FaceAt(i, j, f);
      if (f.size() < 3) continue;
      glBegin(GL_POLYGON);
      for (const Position& p : f) {
        if (ramp) {
          coloring.Color(p.x, p.y, p.z, rgb);
          glColor4f(rgb[0], rgb[1], rgb[2], Alpha);
        }
        glVertex3f(p.x, p.y, p.z);
      }
      glEnd();
    }
  }
  glPopAttrib();
}

void CMeshSurface::GetBox(CBox& box) const {
  for (const Position& p : Mesh) {
    if (IsHolePosition(p)) continue;
    box.MinX = std::min(box.MinX, p.x);
    box.MaxX = std::max(box.MaxX, p.x);
    box.MinY = std::min(box.MinY, p.y);
    box.MaxY = std::max(box.MaxY, p.y);
    box.MinZ = std::min(box.MinZ, p.z);
    box.MaxZ = std::max(box.MaxZ, p.z);
  }
}

bool CMeshSurface::Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) {
  if (Hide) return false;
  try {
    EnsureBuilt();
    CBox box{3e38f, -3e38f, 3e38f, -3e38f, 3e38f, -3e38f};
    GetBox(box);
    if (box.MinX > box.MaxX || !RayMeetsBox(nearPoint, farPoint, box, 0.12)) return false;
    // The chords of the mesh (so that a sector seen edge-on is still hit),
    // then its faces.
    if (RayNearMeshChords(Mesh, Cols, Rows, nearPoint, farPoint, 0.12)) return true;
    for (const Face& f : GetRegions())
      if (RayHitsPolygon(nearPoint, farPoint, f)) return true;
  } catch (...) {
  }
  (void)scenePoint;
  return false;
}

bool CMeshSurface::BoxSel(float x1, float y1, float x2, float y2) const {
  for (const Position& p : Mesh)
    if (!IsHolePosition(p) && p.BoxSel(x1, y1, x2, y2)) return true;
  return false;
}

void CMeshSurface::SaveHead(RecordWriter& w) const {
  w.Add(Alpha).Add(static_cast<long>(ForeColor)).Add(static_cast<long>(ForeColor2)).Add(FillStyle);
  w.AddFramed(Ramp.ColorName).Add(DrawMode);
}

void CMeshSurface::LoadHead(RecordReader& r) {
  ID = r.OwnId();
  Alpha = r.Single();
  ForeColor = static_cast<std::uint32_t>(r.Long());
  ForeColor2 = static_cast<std::uint32_t>(r.Long());
  FillStyle = r.Int();
  Ramp.ColorName = r.FramedText();
  Ramp.SetByName();
  DrawMode = r.Int();
}

// ---- CFan ---------------------------------------------------------------------------------

bool CFan::InitPos() {
  built_ = true;
  Mesh.clear();
  Cols = Rows = 0;
  Rim.clear();
  // The point is the apex; the other id names the rim.
  std::string apexId, rimId;
  if (LKID.substr(0, 2) == "PT") apexId = LKID, rimId = LKID2;
  else if (LKID2.substr(0, 2) == "PT") apexId = LKID2, rimId = LKID;
  else rimId = LKID.empty() ? LKID2 : LKID;
  if (!RimOf(rimId, Rim) || Rim.size() < 2) {
    Rim.clear();
    return false;
  }
  if (!apexId.empty()) {
    const Position* p = FindPoint(apexId);
    if (!p) {
      Rim.clear();
      return false;
    }
    Apex.Set(p->x, p->y, p->z);
  } else if (const CArc* a = rimId.substr(0, 2) == "AR" ? Doc.Arcs.FindById(rimId) : nullptr) {
    Apex.Set(a->PCenter.x, a->PCenter.y, a->PCenter.z);
  } else if (const CCircle* c = rimId.substr(0, 2) == "CR" ? Doc.Circles.FindById(rimId) : nullptr) {
    Apex.Set(c->PCenter.x, c->PCenter.y, c->PCenter.z);
  } else {
    // The middle of the rim samples; a closed rim repeats its first sample
    // at the end, which would count twice.
    size_t count = Rim.size();
    if (count > 1 && Rim.front().x == Rim.back().x && Rim.front().y == Rim.back().y && Rim.front().z == Rim.back().z)
      --count;
    double sx = 0, sy = 0, sz = 0;
    int n = 0;
    for (size_t k = 0; k < count; ++k) {
      const Position& p = Rim[k];
      if (IsHolePosition(p)) continue;
      sx += p.x, sy += p.y, sz += p.z;
      ++n;
    }
    if (n == 0) {
      Rim.clear();
      return false;
    }
    Apex.Set(static_cast<float>(sx / n), static_cast<float>(sy / n), static_cast<float>(sz / n));
  }
  Cols = static_cast<int>(Rim.size()) - 1;
  Rows = 1;
  Mesh.reserve(Rim.size() * 2);
  for (const Position& p : Rim) {
    Mesh.emplace_back(p.x, p.y, p.z);
    Mesh.emplace_back(Apex.x, Apex.y, Apex.z);
  }
  return true;
}

std::vector<Position> CFan::GetRotPoints() const {
  std::vector<Position> out;
  if (Rim.empty()) return out;
  out.emplace_back(Apex.x, Apex.y, Apex.z);
  for (const Position& p : Rim) out.emplace_back(p.x, p.y, p.z);
  out.emplace_back(Apex.x, Apex.y, Apex.z);
  return out;
}

std::string CFan::Save() const {
  RecordWriter w(ID);
  SaveHead(w);
  w.Add(Selected).Add(Hide).AddFramed(LKID).AddFramed(LKID2);
  return w.Close();
}

std::unique_ptr<CFan> CFan::Load(RecordReader& r) {
  auto f = std::make_unique<CFan>();
  f->LoadHead(r);
  f->Selected = r.Bool();
  f->Hide = r.Bool();
  f->LKID = r.FramedId();
  f->LKID2 = r.FramedId();
  return f;
}

// ---- CRibbon -------------------------------------------------------------------------------

bool CRibbon::InitPos() {
  built_ = true;
  Mesh.clear();
  Cols = Rows = 0;
  std::vector<Position> a, b;
  if (!RimOf(LKID, a) || !RimOf(LKID2, b)) return false;
  const std::vector<Position> ra = Resample(a, kSamples), rb = Resample(b, kSamples);
  Cols = kSamples - 1;
  Rows = 1;
  Mesh.reserve(static_cast<size_t>(kSamples) * 2);
  for (int k = 0; k < kSamples; ++k) {
    const Position& p = ra[static_cast<size_t>(k)];
    const Position& q = rb[static_cast<size_t>(k)];
    Mesh.emplace_back(p.x, p.y, p.z);
    Mesh.emplace_back(q.x, q.y, q.z);
  }
  return true;
}

std::vector<Position> CRibbon::GetRotPoints() const {
  std::vector<Position> out;
  if (Mesh.size() < MeshIndex(Cols, Rows, Rows) + 1) return out;
  for (int i = 0; i <= Cols; ++i) {
    const Position& p = Mesh[MeshIndex(i, 0, Rows)];
    out.emplace_back(p.x, p.y, p.z);
  }
  for (int i = Cols; i >= 0; --i) {
    const Position& p = Mesh[MeshIndex(i, Rows, Rows)];
    out.emplace_back(p.x, p.y, p.z);
  }
  out.emplace_back(out.front().x, out.front().y, out.front().z);
  return out;
}

std::string CRibbon::Save() const {
  RecordWriter w(ID);
  SaveHead(w);
  w.Add(Selected).Add(Hide).AddFramed(LKID).AddFramed(LKID2);
  return w.Close();
}

std::unique_ptr<CRibbon> CRibbon::Load(RecordReader& r) {
  auto b = std::make_unique<CRibbon>();
  b->LoadHead(r);
  b->Selected = r.Bool();
  b->Hide = r.Bool();
  b->LKID = r.FramedId();
  b->LKID2 = r.FramedId();
  return b;
}

// ---- CSphere ------------------------------------------------------------------------------

bool CSphere::InitPos() {
  built_ = true;
  const Position* c = FindPoint(LKID);
  const Position* on = FindPoint(LKID2);
  if (!c || !on) {
    Mesh.clear();
    Cols = Rows = 0;
    return false;
  }
  R = DistanceBetween(*c, *on);
  Center.Set(c->x, c->y, c->z);
  Cols = Rows = kSteps;
  Mesh.assign(static_cast<size_t>(kSteps + 1) * static_cast<size_t>(kSteps + 1), Position(0, 0, 0));
  for (int i = 0; i <= kSteps; ++i) {
    const double a = AngleAFrom + i * static_cast<double>(AngleATo - AngleAFrom) / kSteps;
    for (int j = 0; j <= kSteps; ++j) {
      const double b = AngleBFrom + j * static_cast<double>(AngleBTo - AngleBFrom) / kSteps;
      Mesh[MeshIndex(i, j, kSteps)].Set(static_cast<float>(Center.x + R * std::sin(b) * std::cos(a)),
                                        static_cast<float>(Center.y + R * std::sin(b) * std::sin(a)),
                                        static_cast<float>(Center.z + R * std::cos(b)));
    }
  }
  return true;
}

std::string CSphere::Save() const {
  RecordWriter w(ID);
  SaveHead(w);
  w.Add(R).Add(AngleAFrom).Add(AngleATo).Add(AngleBFrom).Add(AngleBTo);
  w.Add(Selected).Add(Hide).AddFramed(LKID).AddFramed(LKID2);
  return w.Close();
}

std::unique_ptr<CSphere> CSphere::Load(RecordReader& r) {
  auto s = std::make_unique<CSphere>();
  s->LoadHead(r);
  s->R = r.Single();
  s->AngleAFrom = r.Single();
  s->AngleATo = r.Single();
  s->AngleBFrom = r.Single();
  s->AngleBTo = r.Single();
  s->Selected = r.Bool();
  s->Hide = r.Bool();
  s->LKID = r.FramedId();
  s->LKID2 = r.FramedId();
  return s;
}

// ---- re-initialisation ------------------------------------------------------------------------

namespace {

bool RestsOn(const std::string& id, const std::string& pointId) {
  if (id.empty()) return false;
  if (IdRestsOnPoint(id, pointId)) return true;
  const std::string head = id.substr(0, 2);
  if (head == "FA") {
    const CFan* f = Doc.Fans.FindById(id);
    return f && (IdRestsOnPoint(f->LKID, pointId) || IdRestsOnPoint(f->LKID2, pointId));
  }
  if (head == "RB") {
    const CRibbon* b = Doc.Ribbons.FindById(id);
    return b && (IdRestsOnPoint(b->LKID, pointId) || IdRestsOnPoint(b->LKID2, pointId));
  }
  return false;
}

template <class C>
void RebuildSwept(C& collection, const Position& moved) {
  for (auto* s : collection) {
    bool any = false;
    for (const std::string& id : s->SourceIds()) {
      if (!RestsOn(id, moved.ID)) continue;
      any = true;
      // A sector or ribbon as the profile is brought up to date first.
      if (CFan* f = id.substr(0, 2) == "FA" ? Doc.Fans.FindById(id) : nullptr) f->InitPos();
      if (CRibbon* b = id.substr(0, 2) == "RB" ? Doc.Ribbons.FindById(id) : nullptr) b->InitPos();
    }
    if (any) s->GetPoints();
  }
}

template <class C>
void RebuildMeshes(C& collection, const Position& moved) {
  for (auto* m : collection)
    if (RestsOn(m->LKID, moved.ID) || RestsOn(m->LKID2, moved.ID)) m->InitPos();
}

}  // namespace

void RegisterDerivedSurfaceUpdates() {
  // Installed again with each object made, so that the steps are in place
  // whenever such an object exists, also after someone cleared the slots.
  RegisterPointDependents(DependentSlot::SurRots, [](const Position& moved) { RebuildSwept(Doc.SurRots, moved); });
  RegisterPointDependents(DependentSlot::Stretchs,
                          [](const Position& moved) { RebuildSwept(Doc.Stretchs, moved); });
  RegisterPointDependents(DependentSlot::Fans, [](const Position& moved) { RebuildMeshes(Doc.Fans, moved); });
  RegisterPointDependents(DependentSlot::Ribbons, [](const Position& moved) { RebuildMeshes(Doc.Ribbons, moved); });
  RegisterPointDependents(DependentSlot::Spheres, [](const Position& moved) { RebuildMeshes(Doc.Spheres, moved); });
  RegisterRefreshHook(RefreshStage::InterLines, "CInterLine", [] {
    for (CInterLine* l : Doc.InterLines) l->InitLines();
  });
}

void RegisterDerivedSurfaceReaders() {
  RegisterRecordReader("FA", [](RecordReader& r, int) { Doc.Fans.Add(CFan::Load(r)); });
  RegisterRecordReader("RB", [](RecordReader& r, int) { Doc.Ribbons.Add(CRibbon::Load(r)); });
  RegisterRecordReader("SP", [](RecordReader& r, int) { Doc.Spheres.Add(CSphere::Load(r)); });
  RegisterRecordReader("IL", [](RecordReader& r, int) { Doc.InterLines.Add(CInterLine::Load(r)); });
}

}  // namespace vt
