#include "geometry/on_object.h"

#include <cmath>
#include <limits>

#include "document/document.h"
#include "geometry/arc.h"
#include "geometry/circle.h"
#include "geometry/geom.h"
#include "geometry/line.h"
#include "geometry/region.h"
#include "graphs/funcurve.h"

namespace vt {

namespace {

// Nearest point of the closed polygon's edges to P, in space.
Position NearestOnEdges(const std::vector<Position>& corners, const Position& p) {
  Position best(corners.front().x, corners.front().y, corners.front().z);
  double bestD = std::numeric_limits<double>::max();
  const size_t n = corners.size();
  for (size_t i = 0; i < n; ++i) {
    const Position& a = corners[i];
    const Position& b = corners[(i + 1) % n];
    const double dx = static_cast<double>(b.x) - a.x, dy = static_cast<double>(b.y) - a.y,
                 dz = static_cast<double>(b.z) - a.z;
    const double len2 = dx * dx + dy * dy + dz * dz;
    double t = len2 > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy + (p.z - a.z) * dz) / len2 : 0.0;
    t = std::fmin(1.0, std::fmax(0.0, t));
    const double fx = a.x + dx * t, fy = a.y + dy * t, fz = a.z + dz * t;
    const double d = (fx - p.x) * (fx - p.x) + (fy - p.y) * (fy - p.y) + (fz - p.z) * (fz - p.z);
    if (d < bestD) {
      bestD = d;
      best = Position(static_cast<float>(fx), static_cast<float>(fy), static_cast<float>(fz));
    }
  }
  return best;
}

// The index of the structure point with this id, or -1.
int StruIndex(const CCarrier& c, const std::string& id) {
  for (size_t i = 0; i < c.StruP.size(); ++i)
    if (c.StruP[i].ID == id) return static_cast<int>(i);
  return -1;
}

void SetParameter(std::vector<float>& list, int i, float v) {
  if (i < 0) return;
  if (list.size() <= static_cast<size_t>(i)) list.resize(static_cast<size_t>(i) + 1, 0.0f);
  list[static_cast<size_t>(i)] = v;
}

DocObject* CarrierById(const std::string& id) {
  const std::string head = id.substr(0, 2);
  if (head == "LN") return Doc.Lines.FindById(id);
  if (head == "CR") return Doc.Circles.FindById(id);
  if (head == "AR") return Doc.Arcs.FindById(id);
  if (head == "RG") return Doc.Regions.FindById(id);
  if (head == "C2") return Doc.FunCurves.FindById(id);
  return nullptr;
}

}  // namespace

DocObject* FindCarrierUnderRay(const Position& scenePoint, const Position& farPoint, const Position& nearPoint,
                               const DocObject* skip) {
  for (CLine* l : Doc.Lines)
    if (l != skip && !l->Hide && l->Pick(scenePoint, farPoint, nearPoint)) return l;
  for (CCircle* c : Doc.Circles)
    if (c != skip && !c->Hide && c->Pick(scenePoint, farPoint, nearPoint)) return c;
  for (CArc* a : Doc.Arcs)
    if (a != skip && !a->Hide && a->Pick(scenePoint, farPoint, nearPoint)) return a;
  for (CRegion* g : Doc.Regions) {
    if (g == skip || g->Hide || !g->Pick(scenePoint, farPoint, nearPoint)) continue;
    // A corner under the mouse is a point, taken before any carrier.
    bool corner = false;
    for (const Position& c : g->Points) corner = corner || c.Pick(nearPoint, farPoint);
    if (!corner) return g;
  }
  for (CFunCurve* f : Doc.FunCurves)
    if (f != skip && !f->Hide && f->Pick(scenePoint, farPoint, nearPoint)) return f;
  return nullptr;
}

bool PlaceOnCarrier(const DocObject& carrier, const Position& target, Position& place, float& parameter) {
  const std::string head = carrier.Tag();
  if (head == "LN") {
    const auto& l = static_cast<const CLine&>(carrier);
    place = ProjectOnLine(target, l.pBegin, l.pEnd, l.lt);
    // The fraction along pBegin -> pEnd, with its sign: behind pBegin on an
    // infinite line it is negative.
    const double dx = static_cast<double>(l.pEnd.x) - l.pBegin.x, dy = static_cast<double>(l.pEnd.y) - l.pBegin.y,
                 dz = static_cast<double>(l.pEnd.z) - l.pBegin.z;
    const double len2 = dx * dx + dy * dy + dz * dz;
    parameter = len2 > 0 ? static_cast<float>(((place.x - l.pBegin.x) * dx + (place.y - l.pBegin.y) * dy +
                                               (place.z - l.pBegin.z) * dz) /
                                              len2)
                         : 0.0f;
    return true;
  }
  if (head == "CR") {
    const auto& c = static_cast<const CCircle&>(carrier);
    const Position centre = c.Centre();
    const float r = c.Radius();
    parameter = AngleOfSegment(target, centre);
    place = Position(static_cast<float>(centre.x + r * std::cos(parameter)),
                     static_cast<float>(centre.y + r * std::sin(parameter)), centre.z);
    return true;
  }
  if (head == "AR") {
    const auto& a = static_cast<const CArc&>(carrier);
    place = a.ProjectOnArc(target, &parameter);
    return true;
  }
  if (head == "RG") {
    const auto& g = static_cast<const CRegion&>(carrier);
    if (g.Points.empty()) return false;
    place = NearestOnEdges(g.Points, target);
    parameter = 0;
    return true;
  }
  if (head == "C2") {
    const auto& f = static_cast<const CFunCurve&>(carrier);
    const int i = f.NearestSample(target.x, target.y);
    if (i < 0) return false;
    const Position& s = f.Vert3D[static_cast<size_t>(i)];
    place = Position(s.x, s.y, s.z);
    parameter = static_cast<float>(i);
    return true;
  }
  return false;
}

std::vector<std::string> DefiningPointIds(const DocObject& carrier) {
  std::vector<std::string> ids;
  auto add = [&](const Position& p) {
    if (p.ID.empty()) return;
    for (const std::string& id : ids)
      if (id == p.ID) return;
    ids.push_back(p.ID);
  };
  const std::string head = carrier.Tag();
  if (head == "LN") {
    const auto& l = static_cast<const CLine&>(carrier);
    add(l.pBegin);
    add(l.pEnd);
  } else if (head == "CR") {
    const auto& c = static_cast<const CCircle&>(carrier);
    add(c.PCenter);
    add(c.PCircleR);
    add(c.PCircleR2);
    add(c.PCircleR3);
  } else if (head == "AR") {
    const auto& a = static_cast<const CArc&>(carrier);
    add(a.pBegin);
    add(a.PCenter);
    add(a.pEnd);
    add(a.pMid);
  } else if (head == "RG") {
    for (const Position& c : static_cast<const CRegion&>(carrier).Points) add(c);
  }
  return ids;
}

Position* MakePointOn(DocObject& carrier, const Position& click) {
  Position place;
  float parameter = 0;
  if (!PlaceOnCarrier(carrier, click, place, parameter)) return nullptr;
  const std::string head = carrier.Tag();
  const bool structure = head != "C2";
  if (structure && static_cast<CCarrier&>(carrier).StruPNum() >= CCarrier::kMaxStru)
    throw RunTimeError("An object can carry at most 30 points.");
  std::vector<Position*> defining;
  for (const std::string& id : DefiningPointIds(carrier))
    if (Position* d = FindPoint(id)) {
      if (d->ChildNum() >= Position::kMaxChildren) throw RunTimeError("A point can carry at most 30 points.");
      defining.push_back(d);
    }

  const std::string id = NewObjectId("PT");
  Position* p = Doc.Points.Add(id, place.x, place.y, place.z, 7, "", "", 0, id);
  AssignNextPointLabel(*p);
  p->AddParent(carrier.ID);
  p->SetDrawMode(5);
  if (head == "LN") static_cast<CLine&>(carrier).AddStruPoint(*p, parameter);
  else if (head == "CR") static_cast<CCircle&>(carrier).AddStruPoint(*p, parameter);
  else if (head == "AR") static_cast<CArc&>(carrier).AddStruPoint(*p, parameter);
  else if (head == "RG") static_cast<CRegion&>(carrier).AddStruPoint(*p);
  for (Position* d : defining) d->AddChild(id);
  return p;
}

bool ConstrainToParent(Position& point, const std::string& parentID, const Position& target) {
  DocObject* carrier = CarrierById(parentID);
  if (!carrier) return false;
  Position place;
  float parameter = 0;
  if (!PlaceOnCarrier(*carrier, target, place, parameter)) return false;
  point.Set(place.x, place.y, place.z);
  const std::string head = carrier->Tag();
  if (head == "C2") return true;  // tied by its parent id alone
  auto& c = static_cast<CCarrier&>(*carrier);
  const int i = StruIndex(c, point.ID);
  if (i < 0) return true;
  c.StruP[static_cast<size_t>(i)].Set(place.x, place.y, place.z);
  if (head == "LN") {
    SetParameter(static_cast<CLine&>(c).StruPercB, i, parameter);
  } else if (head == "CR") {
    SetParameter(static_cast<CCircle&>(c).StruAngle, i, parameter);
  } else if (head == "AR") {
    SetParameter(static_cast<CArc&>(c).StruAngle, i, parameter);
  } else if (head == "RG") {
    auto& g = static_cast<CRegion&>(c);
    float fx = 0, fy = 0, fz = 0;
    if (g.FrameCoords(place, fx, fy, fz)) {
      SetParameter(g.StruXScale, i, fx);
      SetParameter(g.StruYScale, i, fy);
      SetParameter(g.StruZScale, i, fz);
    }
  }
  return true;
}

}  // namespace vt
