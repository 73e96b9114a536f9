// CInterLine: the segments where the faces of two faceted objects cross, and
// FaceFaceSegment, the crossing of two flat polygons.
//
// FaceFaceSegment: each polygon's plane is taken by Newell's method. The two
// planes meet in a line L. Each polygon's edges are cut by the other plane;
// the cuts, ordered along L, pair up into the intervals where the polygon
// covers L (an edge counts as cut when its ends lie on different sides, a
// corner on the plane counting as below, so every crossing is counted once
// and the count is even for convex and concave polygons alike). The
// intersection line is where the intervals of both polygons overlap.
#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "document/document.h"
#include "geometry/derived_surfaces.h"
#include "geometry/geom.h"
#include "graphs/surface.h"
#include "persist/record.h"
#include "render/strokes.h"

namespace vt {

namespace {

struct V3 {
  double x = 0, y = 0, z = 0;
};
V3 Of(const Position& p) { return V3{p.x, p.y, p.z}; }
V3 Sub(const V3& a, const V3& b) { return V3{a.x - b.x, a.y - b.y, a.z - b.z}; }
V3 Add(const V3& a, const V3& b) { return V3{a.x + b.x, a.y + b.y, a.z + b.z}; }
V3 Mul(const V3& a, double k) { return V3{a.x * k, a.y * k, a.z * k}; }
double Dot(const V3& a, const V3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
V3 Cross(const V3& a, const V3& b) { return V3{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double Len(const V3& a) { return std::sqrt(Dot(a, a)); }

// The unit normal and offset (n . p = h) of a polygon; false when it spans
// no plane.
bool PlaneOf(const Face& f, V3& n, double& h, double& size) {
  if (f.size() < 3) return false;
  V3 c;
  n = V3{};
  for (size_t i = 0; i < f.size(); ++i) {
    const Position& a = f[i];
    const Position& b = f[(i + 1) % f.size()];
    n.x += (static_cast<double>(a.y) - b.y) * (static_cast<double>(a.z) + b.z);
    n.y += (static_cast<double>(a.z) - b.z) * (static_cast<double>(a.x) + b.x);
    n.z += (static_cast<double>(a.x) - b.x) * (static_cast<double>(a.y) + b.y);
    c = Add(c, Of(a));
  }
  c = Mul(c, 1.0 / static_cast<double>(f.size()));
  const double len = Len(n);
  size = 0;
  for (const Position& p : f) size = std::max(size, Len(Sub(Of(p), c)));
  if (!(len > 1e-12 * std::max(size * size, 1e-12))) return false;
  n = Mul(n, 1.0 / len);
  h = Dot(n, c);
  return true;
}

// The intervals (along the unit direction u, from origin o) where the
// polygon crosses the plane (n, h).
std::vector<double> Cuts(const Face& f, const V3& n, double h, const V3& o, const V3& u, double eps) {
  std::vector<double> t;
  const size_t m = f.size();
  std::vector<double> d(m);
  for (size_t i = 0; i < m; ++i) {
    d[i] = Dot(n, Of(f[i])) - h;
    if (std::fabs(d[i]) < eps) d[i] = 0;
  }
  for (size_t i = 0; i < m; ++i) {
    const size_t k = (i + 1) % m;
    const bool above = d[i] > 0, aboveNext = d[k] > 0;
    if (above == aboveNext) continue;
    const double s = d[i] / (d[i] - d[k]);
    const V3 p = Add(Of(f[i]), Mul(Sub(Of(f[k]), Of(f[i])), s));
    t.push_back(Dot(Sub(p, o), u));
  }
  std::sort(t.begin(), t.end());
  return t;
}

}  // namespace

bool FaceFaceSegment(const Face& first, const Face& second, std::vector<Segment3>& out) {
  V3 n1, n2;
  double h1 = 0, h2 = 0, s1 = 0, s2 = 0;
  if (!PlaneOf(first, n1, h1, s1) || !PlaneOf(second, n2, h2, s2)) return false;
  const V3 d = Cross(n1, n2);
  const double dl = Len(d);
  if (dl < 1e-9) return false;  // parallel planes
  const V3 u = Mul(d, 1.0 / dl);
  // The point of L in the span of the normals: o = ((h1 - h2 c) n1 +
  // (h2 - h1 c) n2) / (1 - c^2), c the cosine between the normals.
  const double c = Dot(n1, n2);
  const double k = 1 - c * c;
  const V3 o = Add(Mul(n1, (h1 - h2 * c) / k), Mul(n2, (h2 - h1 * c) / k));
  const double eps = 1e-6 * std::max({s1, s2, 1.0});
  const std::vector<double> a = Cuts(first, n2, h2, o, u, eps);
  const std::vector<double> b = Cuts(second, n1, h1, o, u, eps);
  bool found = false;
  for (size_t i = 0; i + 1 < a.size(); i += 2) {
    for (size_t j = 0; j + 1 < b.size(); j += 2) {
      const double lo = std::max(a[i], b[j]), hi = std::min(a[i + 1], b[j + 1]);
      if (!(hi > lo + eps)) continue;
      const V3 p = Add(o, Mul(u, lo)), q = Add(o, Mul(u, hi));
      out.push_back(Segment3{Position(static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)),
                             Position(static_cast<float>(q.x), static_cast<float>(q.y), static_cast<float>(q.z))});
      found = true;
    }
  }
  return found;
}

bool FacesOfObject(const std::string& id, std::vector<Face>& out) {
  out.clear();
  const std::string head = id.substr(0, 2);
  if (head == "RG") {
    const CRegion* g = Doc.Regions.FindById(id);
    if (!g) return false;
    Face f;
    for (const Position& p : g->Points) f.emplace_back(p.x, p.y, p.z);
    out.push_back(std::move(f));
    return true;
  }
  if (head == "FA" || head == "RB") {
    CMeshSurface* m = head == "FA" ? static_cast<CMeshSurface*>(Doc.Fans.FindById(id))
                                   : static_cast<CMeshSurface*>(Doc.Ribbons.FindById(id));
    if (!m) return false;
    m->EnsureBuilt();
    out = m->GetRegions();
    return true;
  }
  if (head == "SF") {
    CSurface* s = Doc.Surfaces.FindById(id);
    if (!s) return false;
    if (!s->Sampled()) s->GetPoints();
    out = s->GetRegions();
    return true;
  }
  return false;
}

// ---- CInterLine ------------------------------------------------------------------------------

CInterLine::CInterLine() {
  ForeColor = 0xff0000;
  RegisterDerivedSurfaceUpdates();
}

namespace {

CBox BoxOf(const Face& f) {
  CBox b{3e38f, -3e38f, 3e38f, -3e38f, 3e38f, -3e38f};
  for (const Position& p : f) {
    b.MinX = std::min(b.MinX, p.x), b.MaxX = std::max(b.MaxX, p.x);
    b.MinY = std::min(b.MinY, p.y), b.MaxY = std::max(b.MaxY, p.y);
    b.MinZ = std::min(b.MinZ, p.z), b.MaxZ = std::max(b.MaxZ, p.z);
  }
  return b;
}

bool BoxesMeet(const CBox& a, const CBox& b, float eps) {
  return a.MinX <= b.MaxX + eps && b.MinX <= a.MaxX + eps && a.MinY <= b.MaxY + eps && b.MinY <= a.MaxY + eps &&
         a.MinZ <= b.MaxZ + eps && b.MinZ <= a.MaxZ + eps;
}

}  // namespace

void CInterLine::InitLines() {
  initialised_ = true;
  Lines.clear();
  std::vector<Face> a, b;
  if (!FacesOfObject(LKID, a) || !FacesOfObject(LKID2, b)) return;
  std::vector<CBox> boxesB;
  boxesB.reserve(b.size());
  for (const Face& f : b) boxesB.push_back(BoxOf(f));
  for (const Face& fa : a) {
    const CBox ba = BoxOf(fa);
    for (size_t j = 0; j < b.size(); ++j)
      if (BoxesMeet(ba, boxesB[j], 1e-4f)) FaceFaceSegment(fa, b[j], Lines);
  }
}

void CInterLine::Draw() {
  if (Hide) return;
  if (!initialised_) InitLines();
  for (const Segment3& s : Lines) DrawLineStroke(s.a, s.b, ForeColor, DrawMode, 1, 2.0f);
  EndLineLook();
}

void CInterLine::GetBox(CBox& box) const {
  for (const Segment3& s : Lines)
    for (const Position* p : {&s.a, &s.b}) {
      box.MinX = std::min(box.MinX, p->x), box.MaxX = std::max(box.MaxX, p->x);
      box.MinY = std::min(box.MinY, p->y), box.MaxY = std::max(box.MaxY, p->y);
      box.MinZ = std::min(box.MinZ, p->z), box.MaxZ = std::max(box.MaxZ, p->z);
    }
}

bool CInterLine::Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) {
  if (Hide) return false;
  for (const Segment3& s : Lines) {
    CBox b{std::min(s.a.x, s.b.x), std::max(s.a.x, s.b.x), std::min(s.a.y, s.b.y),
           std::max(s.a.y, s.b.y), std::min(s.a.z, s.b.z), std::max(s.a.z, s.b.z)};
    if (RayMeetsBox(nearPoint, farPoint, b, 0.12) && DistanceRayLine(nearPoint, farPoint, s.a, s.b) < 0.12)
      return true;
  }
  (void)scenePoint;
  return false;
}

bool CInterLine::BoxSel(float x1, float y1, float x2, float y2) const {
  for (const Segment3& s : Lines)
    if (s.a.BoxSel(x1, y1, x2, y2) || s.b.BoxSel(x1, y1, x2, y2)) return true;
  return false;
}

std::string CInterLine::Save() const {
  RecordWriter w(ID);
  w.Add(static_cast<long>(ForeColor)).Add(DrawMode).Add(Selected).Add(Hide).AddFramed(LKID).AddFramed(LKID2);
  return w.Close();
}

std::unique_ptr<CInterLine> CInterLine::Load(RecordReader& r) {
  auto l = std::make_unique<CInterLine>();
  l->ID = r.OwnId();
  l->ForeColor = static_cast<std::uint32_t>(r.Long());
  l->DrawMode = r.Int();
  l->Selected = r.Bool();
  l->Hide = r.Bool();
  l->LKID = r.FramedId();
  l->LKID2 = r.FramedId();
  return l;
}

}  // namespace vt
