#include "geometry/arc.h"

#include <cmath>

#include "document/document.h"
#include "document/numtext.h"
#include "geometry/geom.h"
#include "geometry/line.h"
#include "persist/record.h"
#include "render/view_state.h"

namespace vt {

void CArc::Arc1(const std::string& beginId, const std::string& centreId, const std::string& endId) {
  pBegin = HolderCopyOf(beginId);
  PCenter = HolderCopyOf(centreId);
  pEnd = HolderCopyOf(endId);
}

void CArc::arc2(const std::string& beginId, const std::string& midId, const std::string& endId) {
  pBegin = HolderCopyOf(beginId);
  pMid = HolderCopyOf(midId);
  pEnd = HolderCopyOf(endId);
}

// ---- record --------------------------------------------------------------------

std::string CArc::Save() const {
  RecordWriter w(ID);
  w.AddFramed(Label).AddFramed(SingleToText(R)).Add(pBegin.ID).Add(pEnd.ID).AddFramed(PCenter.ID)
      .AddFramed(pMid.ID).Add(DrawMode).Add(AType).Add(static_cast<long>(ForeColor)).Add(GELineStyle)
      .Add(GELineWidth).Add(AT).Add(StruPNum());
  for (const Position& s : StruP) w.Add(s.ID);
  for (size_t i = 0; i < StruP.size(); ++i) w.Add(i < StruAngle.size() ? StruAngle[i] : 0.0f);
  w.AddFlag(Selected).AddFlag(Hide).AddFlag(HideLabel);
  w.AddFramed(LKID).AddFramed(LKID2).AddFramed(LKID3).AddFramed(LKID4);
  w.Add(Para1).Add(Para2).Add(Para3).Add(MoveType).Add(TransType);
  return w.Close();
}

std::unique_ptr<CArc> CArc::Load(RecordReader& r) {
  auto a = std::make_unique<CArc>();
  a->ID = r.OwnId();
  a->Label = r.FramedText();
  if (!TextToSingle(r.FramedText(), a->R)) throw RecordError("bad radius");
  a->pBegin = HolderCopyOf(r.Id());
  a->pEnd = HolderCopyOf(r.Id());
  a->PCenter = HolderCopyOf(r.FramedId());
  a->pMid = HolderCopyOf(r.FramedId());
  a->DrawMode = r.Int();
  a->AType = r.Int();
  a->ForeColor = static_cast<std::uint32_t>(r.Long());
  a->GELineStyle = r.Int();
  a->GELineWidth = r.Single();
  a->AT = r.Int();
  int n = r.Int();
  if (n < 0 || n > kMaxStru) throw RecordError("too many structure points");
  for (int i = 0; i < n; ++i) a->StruP.push_back(HolderCopyOf(r.Id()));
  for (int i = 0; i < n; ++i) a->StruAngle.push_back(r.Single());
  a->Selected = r.Bool();
  a->Hide = r.Bool();
  a->HideLabel = r.Bool();
  a->LKID = r.FramedId();
  a->LKID2 = r.FramedId();
  a->LKID3 = r.FramedId();
  a->LKID4 = r.FramedId();
  a->Para1 = r.Single();
  a->Para2 = r.Single();
  a->Para3 = r.Single();
  a->MoveType = r.Int();
  a->TransType = r.Int();
  return a;
}

// ---- shape ----------------------------------------------------------------------

Position CArc::Centre() const {
  if (AType == 2) {
    Position centre;
    float radius;
    if (CircleFromThreePoints(pBegin, pMid, pEnd, centre, radius)) return centre;
  }
  return Position(PCenter.x, PCenter.y, PCenter.z);
}

float CArc::Radius() const { return DistanceBetween(Centre(), pBegin); }

void CArc::Sweep(double& start, double& sweep) const {
  Position c = Centre();
  double a1 = AngleOfSegment(pBegin, c);
  double a2 = AngleOfSegment(pEnd, c);
  double s = a2 - a1;
  if (s <= 0) s += kTwoPi;
  start = a1;
  sweep = s;
  if (AType == 2 && !RunsUp()) {
    start = a2;
    sweep = kTwoPi - s;
  }
}

bool CArc::RunsUp() const {
  if (AType != 2) return true;
  // The middle point decides the sense: the arc runs up (counterclockwise)
  // from the begin through the middle to the end when the three turn left.
  // Told by the turn of the three rather than by their angles, which are
  // too coarse for a nearly straight arc of a huge radius.
  const double turn = (static_cast<double>(pMid.x) - pBegin.x) * (static_cast<double>(pEnd.y) - pMid.y) -
                      (static_cast<double>(pMid.y) - pBegin.y) * (static_cast<double>(pEnd.x) - pMid.x);
  if (turn != 0) return turn > 0;
  const Position c = Centre();
  const double a1 = AngleOfSegment(pBegin, c);
  double s = AngleOfSegment(pEnd, c) - a1, am = AngleOfSegment(pMid, c) - a1;
  if (s <= 0) s += kTwoPi;
  if (am < 0) am += kTwoPi;
  return am <= s;
}

float CArc::RadiusAngle() const {
  Position c = Centre();
  double a1 = AngleOfSegment(pBegin, c);
  double a2 = AngleOfSegment(pEnd, c);
  double s = a2 - a1;
  if (s < 0) s += kTwoPi;
  if (AType == 2) {
    double start, sweep;
    Sweep(start, sweep);
    return static_cast<float>(sweep);
  }
  return static_cast<float>(s);
}

namespace {

// The most pieces an arc is drawn with: more than a canvas can tell apart.
constexpr int kMaxArcPieces = 1024;

// The size of one pixel of the canvas in scene units (the finer of the two
// directions); a tenth of a unit when the view has no size yet.
double SceneUnitsPerPixel() {
  double best = 0;
  if (View.ScreenWidth > 0 && View.VolWidth > 0) best = View.VolWidth / View.ScreenWidth;
  if (View.ScreenHeight > 0 && View.VolHeight > 0) {
    const double h = View.VolHeight / View.ScreenHeight;
    if (best <= 0 || h < best) best = h;
  }
  return best > 0 ? best : 0.1;
}

}  // namespace

int CArc::PieceCount(double radius, double sweep) {
  const double f = sweep / kTwoPi;
  double n;
  if (radius <= 0.25) n = 6 * f;
  else if (radius <= 0.5) n = 10 * f;
  else if (radius < 1) n = 16 * f;
  else n = std::max(radius * 20 * f, 20 * f);
  if (!(n < kMaxArcPieces)) n = kMaxArcPieces;  // also NaN
  int count = std::max(3, static_cast<int>(RoundToLong(n)));
  // What the canvas can show bounds the count. An arc that bulges less than
  // half a pixel off its chord looks straight: it takes the fewest pieces.
  const double px = SceneUnitsPerPixel();
  if (!(radius > 0) || radius * (1 - std::cos(std::min(sweep, kTwoPi) / 2)) < px / 2) return 3;
  // Pieces whose bulge stays under half a pixel, never fewer than a solid
  // circle's 60 for a whole turn.
  const double step = 2 * std::acos(std::max(-1.0, 1 - px / (2 * radius)));
  double enough = step > 0 ? std::ceil(sweep / step) : kMaxArcPieces;
  enough = std::clamp(enough, 60.0, static_cast<double>(kMaxArcPieces));
  return std::min(count, static_cast<int>(enough));
}

std::vector<Position> CArc::Samples() const {
  // The radius to the first end turned step by step about the centre, the
  // sweep measured between the two radii: the samples begin and end on the
  // arc's own ends, however large the radius.
  const bool up = RunsUp();
  const Position& from = up ? pBegin : pEnd;
  const Position& to = up ? pEnd : pBegin;
  const Position c = Centre();
  const double ux = static_cast<double>(from.x) - c.x, uy = static_cast<double>(from.y) - c.y;
  const double vx = static_cast<double>(to.x) - c.x, vy = static_cast<double>(to.y) - c.y;
  double sweep = std::atan2(ux * vy - uy * vx, ux * vx + uy * vy);
  if (sweep <= 0) sweep += 2 * M_PI;
  const int count = PieceCount(Radius(), sweep);
  std::vector<Position> out;
  out.reserve(static_cast<size_t>(count) + 1);
  out.emplace_back(from.x, from.y, c.z);
  for (int i = 1; i < count; ++i) {
    const double a = sweep * i / count, cs = std::cos(a), sn = std::sin(a);
    out.emplace_back(static_cast<float>(c.x + ux * cs - uy * sn), static_cast<float>(c.y + ux * sn + uy * cs), c.z);
  }
  out.emplace_back(to.x, to.y, c.z);
  return out;
}

std::vector<Position> CArc::Points() const {
  double start, sweep;
  Sweep(start, sweep);
  double r = Radius();
  Position c = Centre();
  std::vector<Position> out;
  for (int i = 0; i <= 50; ++i) {
    double a = start + sweep * i / 50;
    out.emplace_back(static_cast<float>(c.x + r * std::cos(a)), static_cast<float>(c.y + r * std::sin(a)), c.z);
  }
  return out;
}

Position CArc::ProjectOnArc(const Position& p, float* angleOut) const {
  Position c = Centre();
  double r = Radius();
  double start, sweep;
  Sweep(start, sweep);
  double a = AngleOfSegment(p, c);
  double rel = a - start;
  while (rel < 0) rel += kTwoPi;
  double chosen;
  if (rel <= sweep) {
    chosen = a;
  } else {
    // Off the arc: the nearer end, by the angle to each.
    double toEnd = rel - sweep, toStart = kTwoPi - rel;
    chosen = toEnd < toStart ? start + sweep : start;
  }
  if (angleOut) *angleOut = static_cast<float>(chosen);
  return Position(static_cast<float>(c.x + r * std::cos(chosen)), static_cast<float>(c.y + r * std::sin(chosen)), c.z);
}

void CArc::GetBox(CBox& box) const {
  std::vector<Position> s = Samples();
  box.MinX = box.MaxX = s[0].x;
  box.MinY = box.MaxY = s[0].y;
  box.MinZ = box.MaxZ = s[0].z;
  for (const Position& p : s) {
    box.MinX = std::fmin(box.MinX, p.x), box.MaxX = std::fmax(box.MaxX, p.x);
    box.MinY = std::fmin(box.MinY, p.y), box.MaxY = std::fmax(box.MaxY, p.y);
    box.MinZ = std::fmin(box.MinZ, p.z), box.MaxZ = std::fmax(box.MaxZ, p.z);
  }
}

bool CArc::Pick(const Position& rayStart, const Position& rayEnd) const {
  std::vector<Position> s = Samples();
  CLine piece;
  for (size_t i = 0; i + 1 < s.size(); ++i) {
    piece.pBegin = s[i];
    piece.pEnd = s[i + 1];
    if (piece.Pick(rayStart, rayEnd)) return true;
  }
  return false;
}

bool CArc::Pick(const Position&, const Position& farPoint, const Position& nearPoint) {
  if (Hide) return false;
  return Pick(nearPoint, farPoint);
}

bool CArc::BoxSel(float x1, float y1, float x2, float y2) const {
  for (const Position& p : Samples())
    if (!p.BoxSel(x1, y1, x2, y2)) return false;
  return true;
}

void CArc::UpdateStru() {
  Position c = Centre();
  float r = Radius();
  for (size_t i = 0; i < StruP.size(); ++i) {
    Position& s = StruP[i];
    Position* real = FindPoint(s.ID);
    if (s.ptype == 9) {
      if (real) s.Set(real->x, real->y, real->z);
      continue;
    }
    float a = i < StruAngle.size() ? StruAngle[i] : 0.0f;
    s.Set(static_cast<float>(c.x + r * std::cos(a)), static_cast<float>(c.y + r * std::sin(a)), s.z);
    if (real) real->Set(s.x, s.y, s.z);
  }
}

void CArc::AddStruPoint(const Position& p, float angle) {
  AddStruP(HolderCopy(p));
  StruAngle.push_back(angle);
}

// ---- transforms -------------------------------------------------------------------

bool ReversesTurn(const std::function<Position(const Position&)>& map, const Position& at) {
  const Position o = map(Position(at.x, at.y, at.z));
  const Position ex = map(Position(at.x + 1, at.y, at.z));
  const Position ey = map(Position(at.x, at.y + 1, at.z));
  const double det = (static_cast<double>(ex.x) - o.x) * (static_cast<double>(ey.y) - o.y) -
                     (static_cast<double>(ex.y) - o.y) * (static_cast<double>(ey.x) - o.x);
  return det < 0;
}

CArc* CArc::Transform(const std::function<Position(const Position&)>& map, int flag, int transType,
                      const std::string& paramId, int moveType, float p1, float p2, float p3) {
  auto moved = [&](const Position& p) {
    Position m = map(p);
    Position out = p;
    out.Set(m.x, m.y, m.z);
    return out;
  };
  // A map that turns the sense of rotation round (a reflection in a line or
  // an upright plane) would draw the other part of the circle from the same
  // ends: begin and end change places. A three-point arc keeps its sense by
  // its middle point.
  const bool reversed = AType != 2 && ReversesTurn(map, Centre());
  if (flag == 1) {
    pBegin = moved(pBegin);
    pEnd = moved(pEnd);
    PCenter = moved(PCenter);
    if (!pMid.ID.empty()) pMid = moved(pMid);
    if (reversed) std::swap(pBegin, pEnd);
    return nullptr;
  }
  auto img = std::make_unique<CArc>();
  img->ID = NewObjectId("AR");
  img->AType = AType == 2 ? 2 : 1;
  img->AT = AT;
  img->ForeColor = ForeColor;
  img->TransType = transType;
  img->LKID = ID;
  img->LKID2 = paramId;
  img->MoveType = moveType;
  img->Para1 = p1;
  img->Para2 = p2;
  img->Para3 = p3;
  img->pBegin = map(pBegin);
  img->pEnd = map(pEnd);
  Position& second = AType == 2 ? img->pMid : img->PCenter;
  second = map(AType == 2 ? pMid : PCenter);
  // The images of begin, centre (or middle) and end were made just before.
  int n = Doc.Points.count();
  if (n >= 3) {
    img->pBegin.ID = Doc.Points.Item(n - 2)->ID;
    second.ID = Doc.Points.Item(n - 1)->ID;
    img->pEnd.ID = Doc.Points.Item(n)->ID;
  }
  if (reversed) std::swap(img->pBegin, img->pEnd);
  img->R = img->Radius();
  return Doc.Arcs.Add(std::move(img));
}

CArc* CArc::Move(int moveType, float a, float b, float c, const std::string& id3, const std::string& id4, int flag) {
  CArc* img = Transform([&](const Position& p) { return p.Move(moveType, a, b, c, id3, id4); }, flag, 1, "",
                        moveType, a, b, c);
  if (img) {
    img->LKID3 = id3;
    img->LKID4 = id4;
  }
  return img;
}

CArc* CArc::RotateP(const std::string& centreId, float angle, int flag) {
  return Transform([&](const Position& p) { return p.RotateP(centreId, angle); }, flag, 2, centreId, 0, angle);
}

CArc* CArc::RotL3D(const std::string& lineId, float angle, int flag) {
  return Transform([&](const Position& p) { return p.RotL3D(lineId, angle); }, flag, 2, lineId, 0, angle);
}

CArc* CArc::MirrorP(const std::string& pointId, int flag) {
  return Transform([&](const Position& p) { return p.MirrorP(pointId); }, flag, 4, pointId);
}

CArc* CArc::MirrorL(const std::string& lineId, int flag) {
  return Transform([&](const Position& p) { return p.MirrorL(lineId); }, flag, 4, lineId);
}

CArc* CArc::MirrorR(const std::string& regionId, int flag) {
  return Transform([&](const Position& p) { return p.MirrorR(regionId); }, flag, 4, regionId);
}

CArc* CArc::Zoom(float factor, int flag) {
  return Transform([&](const Position& p) { return p.Zoom(factor); }, flag, 3, "", 0, factor);
}

}  // namespace vt
