#include "geometry/circle.h"

#include <cmath>

#include "document/document.h"
#include "document/numtext.h"
#include "geometry/geom.h"
#include "geometry/line.h"
#include "persist/record.h"

namespace vt {

void CCircle::Circle1(const std::string& centreId, const std::string& rimId) {
  PCenter = HolderCopyOf(centreId);
  PCircleR = HolderCopyOf(rimId);
}

void CCircle::Circle2(const std::string& id1, const std::string& id2, const std::string& id3) {
  PCircleR = HolderCopyOf(id1);
  PCircleR2 = HolderCopyOf(id2);
  PCircleR3 = HolderCopyOf(id3);
}

// ---- record --------------------------------------------------------------------

std::string CCircle::Save() const {
  RecordWriter w(ID);
  w.AddFramed(CLabel).AddFramed(SingleToText(R)).Add(PCircleR.ID).AddFramed(PCircleR2.ID)
      .AddFramed(PCircleR3.ID).Add(PCenter.ID).Add(DrawMode).Add(CType).Add(static_cast<long>(ForeColor))
      .Add(GELineStyle).Add(GELineWidth).Add(StruPNum());
  for (const Position& s : StruP) w.Add(s.ID);
  for (size_t i = 0; i < StruP.size(); ++i) w.Add(i < StruAngle.size() ? StruAngle[i] : 0.0f);
  w.Add(Filled).AddFlag(Selected).AddFlag(Hide).AddFlag(HideLabel);
  w.AddFramed(LKID).AddFramed(LKID2).AddFramed(LKID3).AddFramed(LKID4);
  w.Add(Para1).Add(Para2).Add(Para3).Add(MoveType).Add(TransType);
  return w.Close();
}

std::unique_ptr<CCircle> CCircle::Load(RecordReader& r) {
  auto c = std::make_unique<CCircle>();
  c->ID = r.OwnId();
  c->CLabel = r.FramedText();
  if (!TextToSingle(r.FramedText(), c->R)) throw RecordError("bad radius");
  c->PCircleR = HolderCopyOf(r.Id());
  c->PCircleR2 = HolderCopyOf(r.FramedId());
  c->PCircleR3 = HolderCopyOf(r.FramedId());
  c->PCenter = HolderCopyOf(r.Id());
  c->DrawMode = r.Int();
  c->CType = r.Int();
  c->ForeColor = static_cast<std::uint32_t>(r.Long());
  c->GELineStyle = r.Int();
  c->GELineWidth = r.Single();
  int n = r.Int();
  if (n < 0 || n > kMaxStru) throw RecordError("too many structure points");
  for (int i = 0; i < n; ++i) c->StruP.push_back(HolderCopyOf(r.Id()));
  for (int i = 0; i < n; ++i) c->StruAngle.push_back(r.Single());
  c->Filled = r.Bool();
  c->Selected = r.Bool();
  c->Hide = r.Bool();
  c->HideLabel = r.Bool();
  c->LKID = r.FramedId();
  c->LKID2 = r.FramedId();
  c->LKID3 = r.FramedId();
  c->LKID4 = r.FramedId();
  c->Para1 = r.Single();
  c->Para2 = r.Single();
  c->Para3 = r.Single();
  c->MoveType = r.Int();
  c->TransType = r.Int();
  return c;
}

// ---- shape ----------------------------------------------------------------------

namespace {
// The inscribed circle of the triangle of the three points: the incentre and
// its distance to the first side. False for a triangle that has collapsed.
bool Inscribed(const CCircle& c, Position& centre, float& radius) {
  bool ok = true;
  centre = TriIncenter(c.PCircleR, c.PCircleR2, c.PCircleR3, &ok);
  if (!ok) return false;
  radius = DistanceBetween(centre, FootOnLine(centre, c.PCircleR, c.PCircleR2));
  return true;
}
}  // namespace

Position CCircle::Centre() const {
  Position centre;
  float radius;
  if (CType == 2 && CircleFromThreePoints(PCircleR, PCircleR2, PCircleR3, centre, radius)) return centre;
  // The inscribed circle follows its corners; a flat triangle keeps the
  // last centre.
  if (CType == 4 && Inscribed(*this, centre, radius)) return centre;
  return Position(PCenter.x, PCenter.y, PCenter.z);
}

float CCircle::Radius() const {
  switch (CType) {
    case 1:
    case 10:
      return DistanceBetween(PCenter, PCircleR);
    case 2: {
      Position centre;
      float radius;
      if (CircleFromThreePoints(PCircleR, PCircleR2, PCircleR3, centre, radius)) return radius;
      return 0;
    }
    case 4: {
      Position centre;
      float radius;
      if (Inscribed(*this, centre, radius)) return radius;
      return R;
    }
    default:
      return R;
  }
}

int CCircle::SegmentCount() const {
  bool dashed = DrawMode == 1 && GELineStyle >= 2 && GELineStyle <= 4;
  if (!dashed) return 60;
  float r = Radius();
  int n;
  if (r <= 0.25f) n = 6;
  else if (r <= 0.5f) n = 10;
  else if (r < 1) n = 16;
  else n = std::max(20, static_cast<int>(RoundToLong(r * 20.0)));
  return std::min(n, 60);
}

namespace {
// The axis of a normal-direction circle: the direction of its line.
Position SpatialAxis(const CCircle& c) {
  if (const CLine* l = Doc.Lines.FindById(c.LKID))
    return Position(l->pEnd.x - l->pBegin.x, l->pEnd.y - l->pBegin.y, l->pEnd.z - l->pBegin.z);
  return Position(0, 0, 1);
}
}  // namespace

void CCircle::ComputeRim() {
  int n = SegmentCount();
  DrawSegments = n;
  Rim.clear();
  float r = Radius();
  if (CType != 1 && CType != 10) R = r;
  if (CType == 5 || CType == 2) {
    // Circles in space: their rim in the space of their points.
    Position centre = Centre();
    Position axis = SpatialAxis(*this);
    if (CType == 2) {
      double ux = PCircleR2.x - PCircleR.x, uy = PCircleR2.y - PCircleR.y, uz = PCircleR2.z - PCircleR.z;
      double vx = PCircleR3.x - PCircleR.x, vy = PCircleR3.y - PCircleR.y, vz = PCircleR3.z - PCircleR.z;
      axis = Position(static_cast<float>(uy * vz - uz * vy), static_cast<float>(uz * vx - ux * vz),
                      static_cast<float>(ux * vy - uy * vx));
    }
    Rim = SpatialCirclePoints(centre, axis, r, n);
    return;
  }
  // Circles in the plane: samples 1 to n + 1 at z 0.
  double step = kTwoPi / n;
  const Position centre = Centre();
  double cx = centre.x, cy = centre.y;
  for (int i = 1; i <= n + 1; ++i)
    Rim.emplace_back(static_cast<float>(cx + r * std::cos(i * step)), static_cast<float>(cy + r * std::sin(i * step)),
                     0.0f);
}

std::vector<Position> CCircle::Points() const {
  float r = Radius();
  if (CType == 5) return SpatialCirclePoints(PCenter, SpatialAxis(*this), r, 50);
  std::vector<Position> out;
  Position c = Centre();
  double step = kTwoPi / 50;
  for (int i = 0; i <= 50; ++i)
    out.emplace_back(static_cast<float>(c.x + r * std::cos(i * step)), static_cast<float>(c.y + r * std::sin(i * step)),
                     c.z);
  return out;
}

void CCircle::GetBox(CBox& box) const {
  Position c = Centre();
  float r = Radius();
  if (CType == 2 || CType == 5) {
    // A circle in space: the box of its samples.
    std::vector<Position> pts = const_cast<CCircle*>(this)->Points();
    box.MinX = box.MaxX = pts[0].x;
    box.MinY = box.MaxY = pts[0].y;
    box.MinZ = box.MaxZ = pts[0].z;
    for (const Position& p : pts) {
      box.MinX = std::fmin(box.MinX, p.x), box.MaxX = std::fmax(box.MaxX, p.x);
      box.MinY = std::fmin(box.MinY, p.y), box.MaxY = std::fmax(box.MaxY, p.y);
      box.MinZ = std::fmin(box.MinZ, p.z), box.MaxZ = std::fmax(box.MaxZ, p.z);
    }
    return;
  }
  box.MinX = c.x - r, box.MaxX = c.x + r;
  box.MinY = c.y - r, box.MaxY = c.y + r;
  box.MinZ = box.MaxZ = 0;
}

bool CCircle::Pick2(const Position& rayStart, const Position& rayEnd) {
  if (Rim.empty()) ComputeRim();
  CLine piece;
  for (int i = 0; i + 1 < static_cast<int>(Rim.size()) && i < DrawSegments; ++i) {
    piece.pBegin = Rim[static_cast<size_t>(i)];
    piece.pEnd = Rim[static_cast<size_t>(i) + 1];
    if (piece.Pick(rayStart, rayEnd)) return true;
  }
  return false;
}

bool CCircle::Pick1(const Position& rayStart, const Position& rayEnd) {
  if (Rim.empty()) ComputeRim();
  Position c = Centre();
  if (CType != 2 && CType != 5) c.z = 0;
  for (int i = 0; i + 1 < static_cast<int>(Rim.size()) && i < DrawSegments; ++i)
    if (RayHitsPolygon(rayStart, rayEnd, {c, Rim[static_cast<size_t>(i)], Rim[static_cast<size_t>(i) + 1]}))
      return true;
  return false;
}

bool CCircle::Pick(const Position& rayStart, const Position& rayEnd) {
  if (Pick2(rayStart, rayEnd)) return true;
  return Filled && Pick1(rayStart, rayEnd);
}

bool CCircle::Pick(const Position&, const Position& farPoint, const Position& nearPoint) {
  if (Hide) return false;
  return Pick(nearPoint, farPoint);
}

bool CCircle::BoxSel(float x1, float y1, float x2, float y2) const {
  CBox b;
  GetBox(b);
  return Position(b.MinX, b.MinY, b.MinZ).BoxSel(x1, y1, x2, y2) && Position(b.MaxX, b.MaxY, b.MaxZ).BoxSel(x1, y1, x2, y2) &&
         Position(b.MinX, b.MaxY, b.MinZ).BoxSel(x1, y1, x2, y2) && Position(b.MaxX, b.MinY, b.MaxZ).BoxSel(x1, y1, x2, y2);
}

void CCircle::UpdateStru() {
  // The centre as the kind defines it: a circle through three points and an
  // inscribed circle have theirs from the points.
  const Position centre = Centre();
  float r = Radius();
  for (size_t i = 0; i < StruP.size(); ++i) {
    Position& s = StruP[i];
    Position* real = FindPoint(s.ID);
    if (s.ptype == 9) {
      // A division point keeps its own place; the copy follows it.
      if (real) s.Set(real->x, real->y, real->z);
      continue;
    }
    float a = i < StruAngle.size() ? StruAngle[i] : 0.0f;
    s.Set(static_cast<float>(centre.x + r * std::cos(a)), static_cast<float>(centre.y + r * std::sin(a)), s.z);
    if (real) real->Set(s.x, s.y, s.z);
  }
}

void CCircle::AddStruPoint(const Position& p, float angle) {
  AddStruP(HolderCopy(p));
  StruAngle.push_back(angle);
}

// ---- transforms -------------------------------------------------------------------

CCircle* CCircle::Transform(const std::function<Position(const Position&)>& map, float radiusScale, int flag,
                            int transType, const std::string& paramId, int moveType, float p1, float p2, float p3,
                            int imageCType) {
  auto moveCopy = [&](Position& p) {
    Position m = map(p);
    p.Set(m.x, m.y, m.z);
  };
  if (flag == 1) {
    moveCopy(PCenter);
    moveCopy(PCircleR);
    if (!PCircleR2.ID.empty()) moveCopy(PCircleR2);
    if (!PCircleR3.ID.empty()) moveCopy(PCircleR3);
    R *= radiusScale;
    return nullptr;
  }
  auto img = std::make_unique<CCircle>();
  img->ID = NewObjectId("CR");
  img->CType = imageCType;
  img->ForeColor = ForeColor;
  img->TransType = transType;
  img->LKID = ID;
  img->LKID2 = paramId;
  img->MoveType = moveType;
  img->Para1 = p1;
  img->Para2 = p2;
  img->Para3 = p3;
  Position centre = Centre();
  Position rim = CType == 1 || CType == 10 ? Position(PCircleR.x, PCircleR.y, PCircleR.z)
                                           : Position(centre.x + Radius(), centre.y, centre.z);
  img->PCenter = map(centre);
  img->PCircleR = map(rim);
  img->R = Radius() * radiusScale;
  // The images of the centre and the rim point were made just before.
  int n = Doc.Points.count();
  if (n >= 2) {
    img->PCenter.ID = Doc.Points.Item(n - 1)->ID;
    img->PCircleR.ID = Doc.Points.Item(n)->ID;
  }
  if (imageCType == 5) img->LKID = LKID.empty() ? ID : LKID;
  return Doc.Circles.Add(std::move(img));
}

CCircle* CCircle::Move(int moveType, float a, float b, float c, const std::string& id3, const std::string& id4,
                       int flag) {
  CCircle* img = Transform([&](const Position& p) { return p.Move(moveType, a, b, c, id3, id4); }, 1, flag, 1, "",
                           moveType, a, b, c);
  if (img) {
    img->LKID3 = id3;
    img->LKID4 = id4;
  }
  return img;
}

CCircle* CCircle::RotateP(const std::string& centreId, float angle, int flag) {
  return Transform([&](const Position& p) { return p.RotateP(centreId, angle); }, 1, flag, 2, centreId, 0, angle);
}

CCircle* CCircle::RotL3D(const std::string& lineId, float angle, int flag) {
  return Transform([&](const Position& p) { return p.RotL3D(lineId, angle); }, 1, flag, 2, lineId, 0, angle, 0, 0, 5);
}

CCircle* CCircle::MirrorP(const std::string& pointId, int flag) {
  return Transform([&](const Position& p) { return p.MirrorP(pointId); }, 1, flag, 4, pointId);
}

CCircle* CCircle::MirrorL(const std::string& lineId, int flag) {
  return Transform([&](const Position& p) { return p.MirrorL(lineId); }, 1, flag, 4, lineId);
}

CCircle* CCircle::MirrorR(const std::string& regionId, int flag) {
  return Transform([&](const Position& p) { return p.MirrorR(regionId); }, 1, flag, 4, regionId);
}

CCircle* CCircle::Zoom(float factor, int flag) {
  return Transform([&](const Position& p) { return p.Zoom(factor); }, std::fabs(factor), flag, 3, "", 0, factor);
}

}  // namespace vt
