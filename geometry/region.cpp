#include "geometry/region.h"

#include <cmath>

#include "document/document.h"
#include "geometry/geom.h"
#include "geometry/line.h"
#include "persist/record.h"
#include "render/strokes.h"

namespace vt {

std::vector<Position> CRegion::GetRotPoints() const {
  std::vector<Position> out = Points;
  if (!out.empty()) out.push_back(out.front());
  return out;
}

std::vector<CRegion> CRegion::GetRegions() const {
  CRegion face;
  face.Points = Points;
  face.ForeColor = ForeColor;
  face.Alpha = Alpha;
  face.Texture = Texture;
  return {face};
}

// ---- record --------------------------------------------------------------------

std::string CRegion::Save() const {
  RecordWriter w(ID);
  w.AddFramed(Label).Add(static_cast<long>(ForeColor)).Add(Alpha).Add(DrawMode).Add(PTNum());
  for (const Position& p : Points) w.Add(p.ID);
  w.Add(StruPNum());
  for (size_t i = 0; i < StruP.size(); ++i) {
    w.Add(StruP[i].ID);
    w.Add(i < StruXScale.size() ? StruXScale[i] : 0.0f);
    w.Add(i < StruYScale.size() ? StruYScale[i] : 0.0f);
    w.Add(i < StruZScale.size() ? StruZScale[i] : 0.0f);
  }
  w.AddFlag(Selected).AddFlag(Hide).AddFlag(HideLabel);
  w.AddFramed(LKID).AddFramed(LKID2).AddFramed(LKID3).AddFramed(LKID4);
  w.Add(Para1).Add(Para2).Add(Para3).Add(MoveType).Add(TransType).AddFramed(Texture).Add(RType);
  return w.Close();
}

std::unique_ptr<CRegion> CRegion::Load(RecordReader& r) {
  auto g = std::make_unique<CRegion>();
  g->ID = r.OwnId();
  g->Label = r.FramedText();
  g->ForeColor = static_cast<std::uint32_t>(r.Long());
  g->Alpha = r.Single();
  g->DrawMode = r.Int();
  int corners = r.Int();
  if (corners < 0 || corners > 10000) throw RecordError("bad corner count");
  for (int i = 0; i < corners; ++i) g->Points.push_back(HolderCopyOf(r.Id()));
  int n = r.Int();
  if (n < 0 || n > kMaxStru) throw RecordError("too many structure points");
  for (int i = 0; i < n; ++i) {
    g->StruP.push_back(HolderCopyOf(r.Id()));
    g->StruXScale.push_back(r.Single());
    g->StruYScale.push_back(r.Single());
    g->StruZScale.push_back(r.Single());
  }
  g->Selected = r.Bool();
  g->Hide = r.Bool();
  g->HideLabel = r.Bool();
  g->LKID = r.FramedId();
  g->LKID2 = r.FramedId();
  g->LKID3 = r.FramedId();
  g->LKID4 = r.FramedId();
  g->Para1 = r.Single();
  g->Para2 = r.Single();
  g->Para3 = r.Single();
  g->MoveType = r.Int();
  g->TransType = r.Int();
  g->Texture = r.FramedText();
  g->RType = r.Int();
  return g;
}

// ---- shape ----------------------------------------------------------------------

void CRegion::Draw() {
  DrawRegionFill(*this, false);
  if (Hide || HideLabel || Label.empty() || Points.empty()) return;
  // In the middle of the corners.
  double x = 0, y = 0, z = 0;
  for (const Position& p : Points) x += p.x, y += p.y, z += p.z;
  const double n = static_cast<double>(Points.size());
  QueueLabel(static_cast<float>(x / n), static_cast<float>(y / n), static_cast<float>(z / n), Label);
}
void CRegion::Draw2() { DrawRegionFill(*this, true); }

void CRegion::GetBox(CBox& box) const {
  if (Points.empty()) return;
  box.MinX = box.MaxX = Points[0].x;
  box.MinY = box.MaxY = Points[0].y;
  box.MinZ = box.MaxZ = Points[0].z;
  for (const Position& p : Points) {
    box.MinX = std::fmin(box.MinX, p.x), box.MaxX = std::fmax(box.MaxX, p.x);
    box.MinY = std::fmin(box.MinY, p.y), box.MaxY = std::fmax(box.MaxY, p.y);
    box.MinZ = std::fmin(box.MinZ, p.z), box.MaxZ = std::fmax(box.MaxZ, p.z);
  }
}

bool CRegion::Pick(const Position& rayStart, const Position& rayEnd) const {
  return RayHitsPolygon(rayStart, rayEnd, Points);
}

bool CRegion::Pick(const Position&, const Position& farPoint, const Position& nearPoint) {
  if (Hide) return false;
  return Pick(nearPoint, farPoint);
}

bool CRegion::BoxSel(float x1, float y1, float x2, float y2) const {
  if (Points.empty()) return false;
  for (const Position& p : Points)
    if (!p.BoxSel(x1, y1, x2, y2)) return false;
  return true;
}

namespace {
struct Frame {
  double ox, oy, oz;        // first corner
  double ux, uy, uz;        // to the second
  double vx, vy, vz;        // to the third
  double nx, ny, nz;        // unit normal
};
bool MakeFrame(const std::vector<Position>& c, Frame& f) {
  if (c.size() < 3) return false;
  f.ox = c[0].x, f.oy = c[0].y, f.oz = c[0].z;
  f.ux = c[1].x - f.ox, f.uy = c[1].y - f.oy, f.uz = c[1].z - f.oz;
  f.vx = c[2].x - f.ox, f.vy = c[2].y - f.oy, f.vz = c[2].z - f.oz;
  f.nx = f.uy * f.vz - f.uz * f.vy;
  f.ny = f.uz * f.vx - f.ux * f.vz;
  f.nz = f.ux * f.vy - f.uy * f.vx;
  double n = std::sqrt(f.nx * f.nx + f.ny * f.ny + f.nz * f.nz);
  if (n == 0) return false;
  f.nx /= n, f.ny /= n, f.nz /= n;
  return true;
}
}  // namespace

bool CRegion::FrameCoords(const Position& p, float& fx, float& fy, float& fz) const {
  Frame f;
  if (!MakeFrame(Points, f)) return false;
  double px = p.x - f.ox, py = p.y - f.oy, pz = p.z - f.oz;
  // Solve p = X u + Y v + Z n by Cramer's rule.
  auto det3 = [](double a1, double a2, double a3, double b1, double b2, double b3, double c1, double c2, double c3) {
    return a1 * (b2 * c3 - b3 * c2) - b1 * (a2 * c3 - a3 * c2) + c1 * (a2 * b3 - a3 * b2);
  };
  double d = det3(f.ux, f.uy, f.uz, f.vx, f.vy, f.vz, f.nx, f.ny, f.nz);
  if (d == 0) return false;
  fx = static_cast<float>(det3(px, py, pz, f.vx, f.vy, f.vz, f.nx, f.ny, f.nz) / d);
  fy = static_cast<float>(det3(f.ux, f.uy, f.uz, px, py, pz, f.nx, f.ny, f.nz) / d);
  fz = static_cast<float>(det3(f.ux, f.uy, f.uz, f.vx, f.vy, f.vz, px, py, pz) / d);
  return true;
}

void CRegion::AddStruPoint(const Position& p) {
  float fx = 0, fy = 0, fz = 0;
  FrameCoords(p, fx, fy, fz);
  AddStruP(HolderCopy(p));
  StruXScale.push_back(fx);
  StruYScale.push_back(fy);
  StruZScale.push_back(fz);
}

void CRegion::UpdateStru() {
  Frame f;
  if (!MakeFrame(Points, f)) return;  // no plane: nothing to do
  for (size_t i = 0; i < StruP.size(); ++i) {
    double X = i < StruXScale.size() ? StruXScale[i] : 0, Y = i < StruYScale.size() ? StruYScale[i] : 0,
           Z = i < StruZScale.size() ? StruZScale[i] : 0;
    Position q(static_cast<float>(f.ox + X * f.ux + Y * f.vx + Z * f.nx),
               static_cast<float>(f.oy + X * f.uy + Y * f.vy + Z * f.ny),
               static_cast<float>(f.oz + X * f.uz + Y * f.vz + Z * f.nz));
    // Down the normal onto the plane.
    Position q2(static_cast<float>(q.x + f.nx), static_cast<float>(q.y + f.ny), static_cast<float>(q.z + f.nz));
    Position on = q;
    LineRegion(q, q2, *this, on);
    StruP[i].Set(on.x, on.y, on.z);
    if (Position* real = FindPoint(StruP[i].ID)) real->Set(on.x, on.y, on.z);
  }
}

// ---- transforms -------------------------------------------------------------------

CRegion* CRegion::Transform(const std::function<Position(const Position&)>& map, int flag, int transType,
                            const std::string& paramId, int moveType, float p1, float p2, float p3) {
  if (flag == 1) {
    for (Position& c : Points) {
      Position m = map(c);
      c.Set(m.x, m.y, m.z);
    }
    return nullptr;
  }
  auto img = std::make_unique<CRegion>();
  img->ID = NewObjectId("RG");
  img->RType = 1;
  img->ForeColor = ForeColor;
  img->Alpha = Alpha;
  img->TransType = transType;
  img->LKID = ID;
  img->LKID2 = paramId;
  img->MoveType = moveType;
  img->Para1 = p1;
  img->Para2 = p2;
  img->Para3 = p3;
  int n = Doc.Points.count();
  int k = PTNum();
  for (int i = 0; i < k; ++i) {
    Position c = map(Points[static_cast<size_t>(i)]);
    // The images of the corners were made just before, in order.
    if (n >= k) c.ID = Doc.Points.Item(n - k + 1 + i)->ID;
    img->Points.push_back(c);
  }
  return Doc.Regions.Add(std::move(img));
}

CRegion* CRegion::Move(int moveType, float a, float b, float c, const std::string& id3, const std::string& id4,
                       int flag) {
  CRegion* img = Transform([&](const Position& p) { return p.Move(moveType, a, b, c, id3, id4); }, flag, 1, "",
                           moveType, a, b, c);
  if (img) {
    img->LKID3 = id3;
    img->LKID4 = id4;
  }
  return img;
}

CRegion* CRegion::RotateP(const std::string& centreId, float angle, int flag) {
  return Transform([&](const Position& p) { return p.RotateP(centreId, angle); }, flag, 2, centreId, 0, angle);
}

CRegion* CRegion::RotL3D(const std::string& lineId, float angle, int flag) {
  return Transform([&](const Position& p) { return p.RotL3D(lineId, angle); }, flag, 2, lineId, 0, angle);
}

CRegion* CRegion::MirrorP(const std::string& pointId, int flag) {
  return Transform([&](const Position& p) { return p.MirrorP(pointId); }, flag, 4, pointId);
}

CRegion* CRegion::MirrorL(const std::string& lineId, int flag) {
  return Transform([&](const Position& p) { return p.MirrorL(lineId); }, flag, 4, lineId);
}

CRegion* CRegion::MirrorR(const std::string& regionId, int flag) {
  return Transform([&](const Position& p) { return p.MirrorR(regionId); }, flag, 4, regionId);
}

CRegion* CRegion::Zoom(float factor, int flag) {
  return Transform([&](const Position& p) { return p.Zoom(factor); }, flag, 3, "", 0, factor);
}

}  // namespace vt
