#include "geometry/line.h"

#include <cmath>

#include "document/document.h"
#include "geometry/geom.h"
#include "persist/record.h"

namespace vt {

Position HolderCopy(const Position& real) {
  Position c(real.x, real.y, real.z);
  c.ID = real.ID;
  c.ptype = real.ptype;
  c.PLabel = real.PLabel;
  c.Pos = real.Pos;
  c.Para1 = real.Para1;
  c.Para2 = real.Para2;
  c.Para3 = real.Para3;
  return c;
}

Position HolderCopyOf(const std::string& id) {
  if (const Position* p = FindPoint(id)) return HolderCopy(*p);
  return Position();
}

void CLine::Line1(const std::string& beginId, const std::string& endId) {
  pBegin = HolderCopyOf(beginId);
  pEnd = HolderCopyOf(endId);
}

void CLine::Line2(const Position& begin, const Position& end) {
  pBegin = begin;
  pEnd = end;
}

// ---- record --------------------------------------------------------------------

std::string CLine::Save() const {
  RecordWriter w(ID);
  w.Add(pBegin.ID).Add(pEnd.ID).AddFramed(LLabel).Add(lt).Add(DrawMode).Add(LType)
      .Add(static_cast<long>(ForeColor)).Add(GELineStyle).Add(GELineWidth).Add(StruPNum());
  for (const Position& s : StruP) w.Add(s.ID);
  for (size_t i = 0; i < StruP.size(); ++i) w.Add(i < StruPercB.size() ? StruPercB[i] : 0.0f);
  w.AddFramed(LKID).AddFramed(LKID2).AddFramed(LKID3).AddFramed(LKID4);
  w.Add(Selected).Add(Hide).Add(HideLabel);
  w.Add(Para1).Add(Para2).Add(Para3).Add(MoveType).Add(TransType);
  return w.Close();
}

std::unique_ptr<CLine> CLine::Load(RecordReader& r) {
  auto l = std::make_unique<CLine>();
  l->ID = r.OwnId();
  l->pBegin = HolderCopyOf(r.Id());
  l->pEnd = HolderCopyOf(r.Id());
  l->LLabel = r.FramedText();
  l->lt = r.Int();
  l->DrawMode = r.Int();
  l->LType = r.Int();
  l->ForeColor = static_cast<std::uint32_t>(r.Long());
  l->GELineStyle = r.Int();
  l->GELineWidth = r.Single();
  int n = r.Int();
  if (n < 0 || n > kMaxStru) throw RecordError("too many structure points");
  for (int i = 0; i < n; ++i) l->StruP.push_back(HolderCopyOf(r.Id()));
  for (int i = 0; i < n; ++i) l->StruPercB.push_back(r.Single());
  l->LKID = r.FramedId();
  l->LKID2 = r.FramedId();
  l->LKID3 = r.FramedId();
  l->LKID4 = r.FramedId();
  l->Selected = r.Bool();
  l->Hide = r.Bool();
  l->HideLabel = r.Bool();
  l->Para1 = r.Single();
  l->Para2 = r.Single();
  l->Para3 = r.Single();
  l->MoveType = r.Int();
  l->TransType = r.Int();
  return l;
}

// ---- shape ----------------------------------------------------------------------

void CLine::GetBox(CBox& box) const {
  auto span = [](float a, float b, float& lo, float& hi) {
    lo = std::fmin(a, b);
    hi = std::fmax(a, b);
  };
  switch (lt) {
    case 2:
      box.MinX = box.MinY = box.MinZ = -1000;
      box.MaxX = box.MaxY = box.MaxZ = 1000;
      break;
    case 3: {
      // The ray's box runs out to 1000 on the side it points to.
      const float b[3] = {pBegin.x, pBegin.y, pBegin.z};
      const float e[3] = {pEnd.x, pEnd.y, pEnd.z};
      float lo[3], hi[3];
      for (int i = 0; i < 3; ++i) {
        span(b[i], e[i], lo[i], hi[i]);
        if (e[i] > b[i]) hi[i] = 1000;
        if (e[i] < b[i]) lo[i] = -1000;
      }
      box.MinX = lo[0], box.MaxX = hi[0];
      box.MinY = lo[1], box.MaxY = hi[1];
      box.MinZ = lo[2], box.MaxZ = hi[2];
      break;
    }
    default:
      span(pBegin.x, pEnd.x, box.MinX, box.MaxX);
      span(pBegin.y, pEnd.y, box.MinY, box.MaxY);
      span(pBegin.z, pEnd.z, box.MinZ, box.MaxZ);
      break;
  }
}

bool CLine::Pick(const Position& rayStart, const Position& rayEnd) const {
  CBox box;
  GetBox(box);
  // The box pre-test lets through what passes within the hit distance.
  if (!RayMeetsBox(rayStart, rayEnd, box, 0.12)) return false;
  return DistanceRayLine(rayStart, rayEnd, pBegin, pEnd) < 0.12;
}

bool CLine::Pick(const Position&, const Position& farPoint, const Position& nearPoint) {
  if (Hide) return false;
  return Pick(nearPoint, farPoint);
}

bool CLine::BoxSel(float x1, float y1, float x2, float y2) const {
  return pBegin.BoxSel(x1, y1, x2, y2) && pEnd.BoxSel(x1, y1, x2, y2);
}

std::vector<Position> CLine::Points() const {
  std::vector<Position> out;
  out.reserve(51);
  for (int i = 0; i <= 50; ++i) {
    float t = static_cast<float>(i) / 50.0f;
    out.emplace_back(pBegin.x + (pEnd.x - pBegin.x) * t, pBegin.y + (pEnd.y - pBegin.y) * t,
                     pBegin.z + (pEnd.z - pBegin.z) * t);
  }
  return out;
}

void CLine::LineKX(float& k, float& b) const {
  if (pBegin.x == pEnd.x) {
    k = 10000;
  } else {
    k = (pEnd.y - pBegin.y) / (pEnd.x - pBegin.x);
  }
  b = pEnd.y - k * pEnd.x;
}

void CLine::UpdateStru() {
  float dx = pEnd.x - pBegin.x, dy = pEnd.y - pBegin.y, dz = pEnd.z - pBegin.z;
  for (size_t i = 0; i < StruP.size(); ++i) {
    float f = i < StruPercB.size() ? StruPercB[i] : 0.0f;
    Position& s = StruP[i];
    s.Set(pBegin.x + dx * f, pBegin.y + dy * f, pBegin.z + dz * f);
    if (Position* real = FindPoint(s.ID)) real->Set(s.x, s.y, s.z);
  }
}

void CLine::AddStruPoint(const Position& p, float fraction) {
  AddStruP(HolderCopy(p));
  StruPercB.push_back(fraction);
}

// ---- transforms -------------------------------------------------------------------

CLine* CLine::MakeImage(const Position& b, const Position& e, int flag, int transType, const std::string& paramId,
                        int moveType, float p1, float p2, float p3) {
  if (flag == 1) {
    pBegin.Set(b.x, b.y, b.z);
    pEnd.Set(e.x, e.y, e.z);
    return nullptr;
  }
  auto img = std::make_unique<CLine>();
  img->ID = NewObjectId("LN");
  img->lt = 1;
  img->GELineStyle = 1;
  img->ForeColor = 0;
  img->GELineWidth = 2;
  img->TransType = transType;
  img->LKID = ID;
  img->LKID2 = paramId;
  img->MoveType = moveType;
  img->Para1 = p1;
  img->Para2 = p2;
  img->Para3 = p3;
  img->pBegin = b;
  img->pEnd = e;
  // The images of the ends were made just before: the last two points.
  int n = Doc.Points.count();
  if (n >= 2) {
    img->pBegin.ID = Doc.Points.Item(n - 1)->ID;
    img->pEnd.ID = Doc.Points.Item(n)->ID;
  }
  return Doc.Lines.Add(std::move(img));
}

CLine* CLine::Move(int moveType, float a, float b, float c, const std::string& id3, const std::string& id4,
                   int flag) {
  CLine* img = MakeImage(pBegin.Move(moveType, a, b, c, id3, id4), pEnd.Move(moveType, a, b, c, id3, id4), flag,
                         1, "", moveType, a, b, c);
  if (img) {
    img->LKID3 = id3;
    img->LKID4 = id4;
  }
  return img;
}

CLine* CLine::RotateP(const std::string& centreId, float angle, int flag) {
  return MakeImage(pBegin.RotateP(centreId, angle), pEnd.RotateP(centreId, angle), flag, 2, centreId, 0, angle);
}

CLine* CLine::RotL3D(const std::string& lineId, float angle, int flag) {
  return MakeImage(pBegin.RotL3D(lineId, angle), pEnd.RotL3D(lineId, angle), flag, 2, lineId, 0, angle);
}

CLine* CLine::MirrorP(const std::string& pointId, int flag) {
  return MakeImage(pBegin.MirrorP(pointId), pEnd.MirrorP(pointId), flag, 4, pointId);
}

CLine* CLine::MirrorL(const std::string& lineId, int flag) {
  return MakeImage(pBegin.MirrorL(lineId), pEnd.MirrorL(lineId), flag, 4, lineId);
}

CLine* CLine::MirrorR(const std::string& regionId, int flag) {
  return MakeImage(pBegin.MirrorR(regionId), pEnd.MirrorR(regionId), flag, 4, regionId);
}

CLine* CLine::Zoom(float factor, int flag) {
  return MakeImage(pBegin.Zoom(factor), pEnd.Zoom(factor), flag, 3, "", 0, factor);
}

}  // namespace vt
