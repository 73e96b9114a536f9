#include "geometry/propagation.h"

#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

#include "document/document.h"
#include "document/numtext.h"
#include "geometry/arc.h"
#include "geometry/circle.h"
#include "geometry/extension.h"
#include "geometry/geom.h"
#include "geometry/line.h"
#include "geometry/region.h"
#include "graphs/funcurve.h"

namespace vt {

namespace {

// ---- hooks ----------------------------------------------------------------------

constexpr int kDependentSlots = 5;
std::array<PointDependentHook, kDependentSlots>& DependentHooks() {
  static std::array<PointDependentHook, kDependentSlots> hooks;
  return hooks;
}

constexpr int kStages = 8;
using NamedHooks = std::vector<std::pair<std::string, RefreshHook>>;
std::array<NamedHooks, kStages>& StageHooks() {
  static std::array<NamedHooks, kStages> hooks;
  return hooks;
}

void RunStage(RefreshStage stage) {
  // A copy: a hook may install or remove hooks.
  const NamedHooks hooks = StageHooks()[static_cast<size_t>(stage)];
  for (const auto& h : hooks) h.second();
}

// ---- the trace of a drag step --------------------------------------------------------

std::unordered_set<const DocObject*>* g_trace = nullptr;

void Trace(const DocObject* holder) {
  if (g_trace) g_trace->insert(holder);
}

// ---- writing into copies -------------------------------------------------------------

// A change written into a copy: added (a delta) or set (a place).
struct Change {
  bool absolute;
  float x, y, z;
  void ApplyTo(Position& copy, float scale = 1.0f) const {
    if (absolute) copy.Set(x, y, z);
    else copy.Set(copy.x + x * scale, copy.y + y * scale, copy.z + z * scale);
  }
};

std::string Head(const std::string& id) { return id.substr(0, 2); }

// The copy a circle keeps in the slot `pos` of a link: CType 2, 4 and 5 use
// the three rim points, the others the rim point (1) and the centre (2). A
// holder whose slot does not carry the point's id while another copy does
// (links written with the slots the other way round) gets the copy with the id.
Position* CircleSlot(CCircle& c, int pos, const std::string& id) {
  Position* slot = nullptr;
  if (c.CType == 2 || c.CType == 4 || c.CType == 5) {
    slot = pos == 1 ? &c.PCircleR : pos == 2 ? &c.PCircleR2 : pos == 3 ? &c.PCircleR3 : nullptr;
  } else {
    slot = pos == 1 ? &c.PCircleR : pos == 2 ? &c.PCenter : nullptr;
  }
  if (slot && slot->ID == id) return slot;
  for (Position* p : {&c.PCenter, &c.PCircleR, &c.PCircleR2, &c.PCircleR3})
    if (!id.empty() && p->ID == id) return p;
  return slot;
}

// The same for arcs: AType 2 runs through begin, middle and end; the others
// keep begin, centre and end.
Position* ArcSlot(CArc& a, int pos, const std::string& id) {
  Position* slot = nullptr;
  if (a.AType == 2) slot = pos == 1 ? &a.pBegin : pos == 2 ? &a.pMid : pos == 3 ? &a.pEnd : nullptr;
  else slot = pos == 1 ? &a.pBegin : pos == 2 ? &a.PCenter : pos == 3 ? &a.pEnd : nullptr;
  if (slot && slot->ID == id) return slot;
  for (Position* p : {&a.pBegin, &a.PCenter, &a.pEnd, &a.pMid})
    if (!id.empty() && p->ID == id) return p;
  return slot;
}

// Steps 5 and 6 of UpdateLinked on one holder: the holder recomputes its
// structure points and each real point takes its new place and hands it to
// the copies in its own holders (UpdateStru, one level).
template <class C>
void HandOnStructure(C& holder) {
  if (holder.StruP.empty()) return;
  holder.UpdateStru();
  for (size_t i = 0; i < holder.StruP.size(); ++i) {
    // Handing on writes only defining copies, never this list.
    const Position& s = holder.StruP[i];
    Position* real = FindPoint(s.ID);
    if (!real) continue;
    const float x = s.x, y = s.y, z = s.z;
    real->Set(x, y, z);
    real->UpdateStru(s.ID, x, y, z);
  }
}

// On an arc a division point's angle follows the arc's sweep: Pos parts of
// Para1.
void RefreshDivisionAngles(CArc& a) {
  bool any = false;
  for (const Position& s : a.StruP) any = any || s.ptype == 9;
  if (!any) return;
  const float sweep = a.RadiusAngle();
  for (size_t i = 0; i < a.StruP.size() && i < a.StruAngle.size(); ++i) {
    const Position& s = a.StruP[i];
    if (s.ptype == 9 && s.Para1 != 0) a.StruAngle[i] = s.Pos * sweep / s.Para1;
  }
}

void ReinitDependents(const Position& moved) {
  for (const PointDependentHook& hook : DependentHooks())
    if (hook) hook(moved);
}

// The body of UpdateLinked and UpdateLinked1 (structure and dependents) and
// of UpdateLinked2 and StruUpdateLinked (copies only).
void WriteThrough(const Position& real, const Change& change, int flag, bool further) {
  const bool structure = further && flag != 2;
  // Indexing, not iterators: nothing here changes LinkObjs, but the real
  // point may be handed on to code that reads it.
  for (size_t i = 0; i < real.LinkObjs.size(); ++i) {
    const CLinkObj& link = real.LinkObjs[i];
    switch (link.GEType) {
      case 2: {
        CLine* l = Doc.Lines.FindById(link.ID);
        if (!l) break;
        if (link.Pos != 1) {
          change.ApplyTo(l->pEnd);
        } else {
          switch (l->LType) {
            case 0:
            case 2: change.ApplyTo(l->pBegin); break;
            // A perpendicular's begin follows at half the change; the refresh
            // pass puts it right afterwards.
            case 1: change.ApplyTo(l->pBegin, change.absolute ? 1.0f : 0.5f); break;
            default: break;
          }
        }
        Trace(l);
        if (structure) HandOnStructure(*l);
        break;
      }
      case 3: {
        CCircle* c = Doc.Circles.FindById(link.ID);
        if (!c) break;
        if (Position* slot = CircleSlot(*c, link.Pos, real.ID)) change.ApplyTo(*slot);
        c->Rim.clear();  // the rim of the last draw no longer fits
        Trace(c);
        if (structure) HandOnStructure(*c);
        break;
      }
      case 5: {
        CArc* a = Doc.Arcs.FindById(link.ID);
        if (!a) break;
        if (Position* slot = ArcSlot(*a, link.Pos, real.ID)) change.ApplyTo(*slot);
        Trace(a);
        if (structure) {
          RefreshDivisionAngles(*a);
          HandOnStructure(*a);
        }
        break;
      }
      case 4: {
        CRegion* g = Doc.Regions.FindById(link.ID);
        if (!g) break;
        for (Position& corner : g->Points)
          if (corner.ID == real.ID) change.ApplyTo(corner);
        Trace(g);
        if (structure) HandOnStructure(*g);
        break;
      }
      default:
        break;
    }
  }
  if (further) ReinitDependents(real);
}

// ---- circles and arcs as the refresh pass measures them ------------------------------

// Centre and radius for intersections and tangents: a circle of a centre and
// a rim point measures its radius afresh in the xy plane; the others as their
// kind defines it.
void CircleOf(const CCircle& c, Position& centre, float& radius) {
  if (c.CType == 1 || c.CType == 10) {
    centre = Position(c.PCenter.x, c.PCenter.y, c.PCenter.z);
    const double dx = static_cast<double>(c.PCircleR.x) - c.PCenter.x;
    const double dy = static_cast<double>(c.PCircleR.y) - c.PCenter.y;
    radius = static_cast<float>(std::sqrt(dx * dx + dy * dy));
    return;
  }
  centre = c.Centre();
  radius = c.Radius();
}

// A round object of the document by id: a circle, or an arc standing for its
// circle (then `arc` is set, to test roots against its span).
bool RoundOf(const std::string& id, Position& centre, float& radius, const CArc** arc) {
  *arc = nullptr;
  const std::string head = Head(id);
  if (head == "CR") {
    const CCircle* c = Doc.Circles.FindById(id);
    if (!c) return false;
    CircleOf(*c, centre, radius);
    return true;
  }
  if (head == "AR") {
    const CArc* a = Doc.Arcs.FindById(id);
    if (!a) return false;
    centre = a->Centre();
    radius = a->Radius();
    *arc = a;
    return true;
  }
  return false;
}

// Whether a root on an arc's circle lies on the arc itself.
bool OnArc(const CArc* arc, const Position& p) {
  if (!arc) return true;
  const Position q = arc->ProjectOnArc(p);
  return std::fabs(q.x - p.x) < 1e-3f && std::fabs(q.y - p.y) < 1e-3f;
}

// ---- the steps of the refresh pass ---------------------------------------------------

bool Near(float v, float whole) { return std::fabs(v - whole) < 0.0001f; }

void RefreshTriangleCentre(Position& p) {
  const Position* a = FindPoint(p.LKID);
  const Position* b = FindPoint(p.LKID2);
  const Position* c = FindPoint(p.LKID3);
  if (!a || !b || !c) return;
  bool ok = true;
  Position r;
  switch (p.ptype) {
    case 21: r = TriCircumcenter(*a, *b, *c, &ok); break;
    case 22: r = TriIncenter(*a, *b, *c, &ok); break;
    case 23: r = TriOrthocenter(*a, *b, *c, &ok); break;
    case 24: r = TriBarycenter(*a, *b, *c, &ok); break;
    default: r = TriFermatPoint(*a, *b, *c, &ok); break;
  }
  // A triangle that has collapsed has no centre (its mean still stands): the
  // point keeps its place.
  if (ok || p.ptype == 24) MovePointTo(p, r.x, r.y, r.z);
}

void RefreshImagePoint(Position& p) {
  const Position* src = FindPoint(p.LKID);
  if (!src) return;
  const Position r = ImageUnder(*src, p, p.Para1, p.Para2, p.Para3);
  MovePointTo(p, r.x, r.y, r.z);
}

// The slot of a structure point in its carrier, or -1.
template <class C>
int StruIndex(const C& carrier, const std::string& id) {
  for (size_t i = 0; i < carrier.StruP.size(); ++i)
    if (carrier.StruP[i].ID == id) return static_cast<int>(i);
  return -1;
}

// A division point on a circle or an arc. On a circle the parts are counted
// round a whole turn from the rim point (the middle point stands opposite
// it); a circle without a rim point of its own keeps the stored angle. On an
// arc they are counted along its sweep from the begin. The carrier's copy and
// angle are kept with the point. A point on a line is placed by the line's
// fraction.
void RefreshDivisionOnCarrier(Position& p, long n) {
  const double part = static_cast<double>(p.Pos) / static_cast<double>(n);
  const std::string head = Head(p.LKID);
  Position centre;
  float r = 0;
  double angle = 0;
  float z = 0;
  std::vector<Position>* stru = nullptr;
  std::vector<float>* angles = nullptr;
  int i = -1;
  if (head == "CR") {
    CCircle* c = Doc.Circles.FindById(p.LKID);
    if (!c || c->CType == 5) return;  // a circle in space keeps its points where they are
    i = StruIndex(*c, p.ID);
    centre = c->Centre();
    r = c->Radius();
    if (!c->PCircleR.ID.empty() && DistanceBetween(c->PCircleR, centre) > 0)
      angle = AngleOfSegment(c->PCircleR, centre) + kTwoPi * part;
    else if (i >= 0 && static_cast<size_t>(i) < c->StruAngle.size())
      angle = c->StruAngle[static_cast<size_t>(i)];
    else
      return;
    z = centre.z;
    stru = &c->StruP;
    angles = &c->StruAngle;
  } else if (head == "AR") {
    CArc* a = Doc.Arcs.FindById(p.LKID);
    if (!a) return;
    i = StruIndex(*a, p.ID);
    double start, sweep;
    a->Sweep(start, sweep);
    centre = a->Centre();
    r = a->Radius();
    angle = start + sweep * part;
    z = a->pBegin.z;
    stru = &a->StruP;
    angles = &a->StruAngle;
  } else {
    return;
  }
  const Position at(Sng(centre.x + r * std::cos(angle)), Sng(centre.y + r * std::sin(angle)), z);
  MovePointTo(p, at.x, at.y, at.z);
  if (i >= 0) {
    const size_t k = static_cast<size_t>(i);
    (*stru)[k].Set(at.x, at.y, at.z);
    if (k < angles->size()) (*angles)[k] = static_cast<float>(angle);
  }
}

void RefreshDivisionPoint(Position& p) {
  // A damaged record's count beyond any division keeps the point.
  if (!(std::fabs(p.Para1) < 1e6f)) return;
  const long n = RoundToLong(p.Para1);
  if (n == 0) return;
  if (Head(p.LKID) != "PT") {
    RefreshDivisionOnCarrier(p, n);
    return;
  }
  const Position* a = FindPoint(p.LKID);
  const Position* b = FindPoint(p.LKID2);
  if (!a || !b) return;
  const double k = static_cast<double>(p.Pos) / static_cast<double>(n);
  MovePointTo(p, Sng(a->x + (static_cast<double>(b->x) - a->x) * k), Sng(a->y + (static_cast<double>(b->y) - a->y) * k),
              Sng(a->z + (static_cast<double>(b->z) - a->z) * k));
}

void RefreshEpitaxialPoint(Position& p) {
  Position begin, end;
  if (Head(p.LKID) == "PT") {
    const Position* a = FindPoint(p.LKID);
    const Position* b = FindPoint(p.LKID2);
    if (!a || !b) return;
    begin = *a;
    end = *b;
  } else {
    const CLine* l = Doc.Lines.FindById(p.LKID);
    if (!l) return;
    begin = l->pBegin;
    end = l->pEnd;
  }
  const float length = DistanceBetween(begin, end);
  const bool absolute = Near(p.Para2, 1);
  if (Near(p.Para1, 1)) {
    const float d = absolute ? p.Para3 : p.Para3 * length;
    if (length == 0) return;
    const Position r = PointBeyond(begin, end, d);
    MovePointTo(p, r.x, r.y, r.z);
  } else if (Near(p.Para1, 2)) {
    double k;
    if (absolute) {
      if (length == 0) return;
      k = static_cast<double>(p.Para3) / length;
    } else {
      k = p.Para3;
    }
    MovePointTo(p, Sng(begin.x + (static_cast<double>(end.x) - begin.x) * k),
                Sng(begin.y + (static_cast<double>(end.y) - begin.y) * k),
                Sng(begin.z + (static_cast<double>(end.z) - begin.z) * k));
  }
}

// Writes a computed place into a holder's copy and moves the copy's real point
// there (which brings the copies of all its holders along).
void PlaceCopy(Position& copy, const Position& at) {
  if (Position* real = FindPoint(copy.ID)) MovePointTo(*real, at.x, at.y, at.z);
  // Also where the real point does not list this holder.
  copy.Set(at.x, at.y, at.z);
}

void RefreshCircleImage(CCircle& c) {
  const CCircle* src = Doc.Circles.FindById(c.LKID);
  if (!src || src == &c) return;
  const Position centre = src->Centre();
  const Position rim = src->CType == 1 || src->CType == 10
                           ? Position(src->PCircleR.x, src->PCircleR.y, src->PCircleR.z)
                           : Position(centre.x + src->Radius(), centre.y, centre.z);
  PlaceCopy(c.PCenter, ImageUnder(centre, c, c.Para1, c.Para2, c.Para3));
  PlaceCopy(c.PCircleR, ImageUnder(rim, c, c.Para1, c.Para2, c.Para3));
  c.Rim.clear();
}

void RefreshArc(CArc& a) {
  if (a.AType == 4) {
    // An arc on a circle: the circle's centre, the two points on it.
    const CCircle* c = Doc.Circles.FindById(a.LKID);
    if (!c) return;
    const Position centre = c->Centre();
    a.PCenter.Set(centre.x, centre.y, centre.z);
    if (const Position* b = FindPoint(a.LKID2)) a.pBegin.Set(b->x, b->y, b->z);
    if (const Position* e = FindPoint(a.LKID3)) a.pEnd.Set(e->x, e->y, e->z);
    a.R = a.Radius();
    return;
  }
  const CArc* src = Doc.Arcs.FindById(a.LKID);
  if (!src || src == &a) return;
  // Under a reflection the image runs from the image of the end to the
  // image of the begin (see ReversesTurn).
  const auto image = [&](const Position& p) { return ImageUnder(p, a, a.Para1, a.Para2, a.Para3); };
  const bool reversed = src->AType != 2 && ReversesTurn(image, src->Centre());
  // An image made before its ends were exchanged: exchange them now.
  if (const Position* first = reversed ? FindPoint(a.pBegin.ID) : nullptr)
    if (first->ptype == 10 && !src->pBegin.ID.empty() && first->LKID == src->pBegin.ID) std::swap(a.pBegin, a.pEnd);
  PlaceCopy(reversed ? a.pEnd : a.pBegin, image(src->pBegin));
  if (src->AType == 2) PlaceCopy(a.pMid, image(src->pMid));
  else PlaceCopy(a.PCenter, image(src->PCenter));
  PlaceCopy(reversed ? a.pBegin : a.pEnd, image(src->pEnd));
  a.R = a.Radius();
}

void RefreshRegionImage(CRegion& g) {
  const CRegion* src = Doc.Regions.FindById(g.LKID);
  if (!src || src == &g) return;
  const size_t n = std::min(g.Points.size(), src->Points.size());
  for (size_t i = 0; i < n; ++i) PlaceCopy(g.Points[i], ImageUnder(src->Points[i], g, g.Para1, g.Para2, g.Para3));
}

// Direction of one arm of a bisector: a line from its begin, or a point seen
// from the vertex.
bool ArmDirection(const std::string& id, const Position& vertex, double& angle) {
  if (Head(id) == "LN") {
    const CLine* l = Doc.Lines.FindById(id);
    if (!l) return false;
    angle = AngleOfSegment(l->pEnd, l->pBegin);
    return true;
  }
  if (const Position* p = FindPoint(id)) {
    angle = AngleOfSegment(*p, vertex);
    return true;
  }
  return false;
}

void RefreshBisector(CLine& l) {
  if (const Position* v = FindPoint(l.pBegin.ID)) l.pBegin.Set(v->x, v->y, v->z);
  double a1, a2;
  if (!ArmDirection(l.LKID, l.pBegin, a1) || !ArmDirection(l.LKID2, l.pBegin, a2)) return;
  // 6.2628 where a whole turn is meant, as documents have always been drawn.
  double a;
  if (a2 > a1 + kPi) a = (a2 + 6.2628 - a1) / 2 - (6.2628 - a1);
  else if (a1 > a2 + kPi) a = (a1 + 6.2628 - a2) / 2 - (6.2628 - a2);
  else a = (a1 + a2) / 2;
  const Position end(Sng(l.pBegin.x + 100 * std::cos(a)), Sng(l.pBegin.y + 100 * std::sin(a)), l.pEnd.z);
  PlaceCopy(l.pEnd, end);
}

// The place of the intersection point p from its two objects. With `whole`
// the carriers are taken whole: a segment or a ray as its line, an arc as its
// circle. False when the root that Pos asks for is not there (or an object
// is lost).
bool IntersectionPlace(const Position& p, bool whole, Position& at) {
  std::string id1 = p.LKID, id2 = p.LKID2;
  // The line first, whichever way round the ids were given.
  if (Head(id1) != "LN" && Head(id2) == "LN") std::swap(id1, id2);
  const std::string h1 = Head(id1), h2 = Head(id2);
  Position first(p.x, p.y, p.z), second(p.x, p.y, p.z);
  bool found = false;
  if (h1 == "LN") {
    const CLine* line = Doc.Lines.FindById(id1);
    if (!line) return false;
    // Made only when asked for: the refresh pass runs this for every
    // intersection point on every step.
    std::optional<CLine> wholeLine;
    if (whole) {
      wholeLine.emplace();
      wholeLine->pBegin = line->pBegin;
      wholeLine->pEnd = line->pEnd;
      wholeLine->lt = 2;
    }
    const CLine* l = whole ? &*wholeLine : line;
    if (h2 == "LN") {
      const CLine* m = Doc.Lines.FindById(id2);
      if (!m || p.Pos > 1) return false;
      found = LineLine(*l, *m, first) == 1;
    } else if (h2 == "RG") {
      const CRegion* g = Doc.Regions.FindById(id2);
      if (!g || p.Pos > 1) return false;
      found = LineRegion(l->pBegin, l->pEnd, *g, first) == 1;
    } else if (h2 == "C2") {
      const CFunCurve* c = Doc.FunCurves.FindById(id2);
      if (!c) return false;
      found = c->LineInter(*l, p.Pos, first) == 1;
    } else {
      Position centre;
      float r;
      const CArc* arc;
      if (!RoundOf(id2, centre, r, &arc)) return false;
      if (whole) arc = nullptr;
      const int code = LineCircle(*l, r, centre, first, second);
      if (p.Pos == 2) {
        found = (code == 3 || code == 4) && OnArc(arc, second);
        first = second;
      } else {
        found = (code == 1 || code == 2 || code == 4) && OnArc(arc, first);
      }
    }
  } else {
    Position c1, c2;
    float r1, r2;
    const CArc *arc1, *arc2;
    if (!RoundOf(id1, c1, r1, &arc1) || !RoundOf(id2, c2, r2, &arc2)) return false;
    if (whole) arc1 = arc2 = nullptr;
    const int n = CircleCircle(c1, r1, c2, r2, first, second);
    if (p.Pos == 2) {
      found = n >= 2 && OnArc(arc1, second) && OnArc(arc2, second);
      first = second;
    } else {
      found = n >= 1 && OnArc(arc1, first) && OnArc(arc2, first);
    }
  }
  if (found) at = first;
  return found;
}

void RefreshIntersection(Position& p) {
  // No solution: the point keeps its last place and comes back with the
  // figure.
  Position at;
  if (IntersectionPlace(p, false, at)) MovePointTo(p, at.x, at.y, at.z);
}

void RefreshTangentPoint(Position& p) {
  const Position* from = FindPoint(p.LKID);
  Position centre;
  float r;
  const CArc* arc;
  if (!from || !RoundOf(p.LKID2, centre, r, &arc)) return;
  Position first(p.x, p.y, p.z), second(p.x, p.y, p.z);
  const int n = TangentPoints(centre, r, *from, first, second);
  if (p.Pos == 2) {
    if (n >= 2) MovePointTo(p, second.x, second.y, second.z);
  } else if (n >= 1) {
    MovePointTo(p, first.x, first.y, first.z);
  }
}

// ---- derived lines (the drag's step e) --------------------------------------------------

// The point and the reference object (line or region) of a derived line, from
// LKID and LKID2 in either order; without a point id, the begin's own.
void DerivedLineParts(const CLine& l, std::string& pointId, std::string& refId) {
  for (const std::string* id : {&l.LKID, &l.LKID2}) {
    const std::string h = Head(*id);
    if (h == "PT" && pointId.empty()) pointId = *id;
    else if ((h == "LN" || h == "RG") && refId.empty()) refId = *id;
  }
  if (pointId.empty()) pointId = l.pBegin.ID;
}

void RefreshPerpendicular(CLine& l) {
  std::string pointId, refId;
  DerivedLineParts(l, pointId, refId);
  const Position* p = FindPoint(pointId);
  if (!p) return;
  l.pBegin.Set(p->x, p->y, p->z);
  Position foot;
  if (Head(refId) == "RG") {
    const CRegion* g = Doc.Regions.FindById(refId);
    if (!g) return;
    foot = FootOnPlane(*p, *g);
  } else {
    const CLine* ref = Doc.Lines.FindById(refId);
    if (!ref || ref == &l) return;
    foot = FootOnLine(*p, ref->pBegin, ref->pEnd);
  }
  PlaceCopy(l.pEnd, foot);
}

void RefreshParallel(CLine& l) {
  std::string pointId, refId;
  DerivedLineParts(l, pointId, refId);
  const Position* p = FindPoint(pointId);
  const CLine* ref = Doc.Lines.FindById(refId);
  if (!p || !ref || ref == &l) return;
  l.pBegin.Set(p->x, p->y, p->z);
  const double dx = static_cast<double>(ref->pEnd.x) - ref->pBegin.x;
  const double dy = static_cast<double>(ref->pEnd.y) - ref->pBegin.y;
  const double dz = static_cast<double>(ref->pEnd.z) - ref->pBegin.z;
  const double refLen = std::sqrt(dx * dx + dy * dy + dz * dz);
  if (refLen == 0) return;
  // The far end keeps its distance from the begin; a line of no length takes
  // the reference's.
  double len = DistanceBetween(l.pBegin, l.pEnd);
  if (len == 0) len = refLen;
  const double k = len / refLen;
  PlaceCopy(l.pEnd, Position(Sng(p->x + dx * k), Sng(p->y + dy * k), Sng(p->z + dz * k)));
}

void RefreshLineImage(CLine& l) {
  const CLine* src = Doc.Lines.FindById(l.LKID);
  if (!src || src == &l) return;
  PlaceCopy(l.pBegin, ImageUnder(src->pBegin, l, l.Para1, l.Para2, l.Para3));
  PlaceCopy(l.pEnd, ImageUnder(src->pEnd, l, l.Para1, l.Para2, l.Para3));
}

// A tangent's begin is not carried by UpdateLinked: it takes its point's place.
void RefreshTangentBegin(CLine& l) {
  if (const Position* p = FindPoint(l.pBegin.ID)) l.pBegin.Set(p->x, p->y, p->z);
}

// Step a to d of the drag's repropagation for one carrier touched by the
// step: its structure points are recomputed and each real point carries its
// own change on.
template <class C>
void CarryStructure(C& holder) {
  if (holder.StruP.empty() || !PropagationTrace::Touched(&holder)) return;
  std::vector<std::array<float, 3>> before;
  before.reserve(holder.StruP.size());
  for (const Position& s : holder.StruP) before.push_back({s.x, s.y, s.z});
  holder.UpdateStru();
  for (size_t i = 0; i < holder.StruP.size() && i < before.size(); ++i) {
    const Position& s = holder.StruP[i];
    Position* real = FindPoint(s.ID);
    if (!real) continue;
    const float x = s.x, y = s.y, z = s.z;
    const float dx = x - before[i][0], dy = y - before[i][1], dz = z - before[i][2];
    real->Set(x, y, z);
    if (dx != 0 || dy != 0 || dz != 0) real->UpdateLinked(dx, dy, dz, 0);
  }
}

}  // namespace

// ---- registries -----------------------------------------------------------------------

void RegisterPointDependents(DependentSlot slot, PointDependentHook hook) {
  DependentHooks()[static_cast<size_t>(slot)] = std::move(hook);
}

void RegisterRefreshHook(RefreshStage stage, const std::string& name, RefreshHook hook) {
  NamedHooks& hooks = StageHooks()[static_cast<size_t>(stage)];
  for (auto it = hooks.begin(); it != hooks.end(); ++it)
    if (it->first == name) {
      if (hook) it->second = std::move(hook);
      else hooks.erase(it);
      return;
    }
  if (hook) hooks.emplace_back(name, std::move(hook));
}

bool IdRestsOnPoint(const std::string& id, const std::string& pointId, unsigned heads) {
  if (id.empty() || pointId.empty()) return false;
  const std::string head = Head(id);
  if (head == "PT") return (heads & kHeadPT) && id == pointId;
  if (head == "LN" && (heads & kHeadLN)) {
    const CLine* l = Doc.Lines.FindById(id);
    return l && (l->pBegin.ID == pointId || l->pEnd.ID == pointId);
  }
  if (head == "CR" && (heads & kHeadCR)) {
    const CCircle* c = Doc.Circles.FindById(id);
    return c && (c->PCenter.ID == pointId || c->PCircleR.ID == pointId || c->PCircleR2.ID == pointId ||
                 c->PCircleR3.ID == pointId);
  }
  if (head == "AR" && (heads & kHeadAR)) {
    const CArc* a = Doc.Arcs.FindById(id);
    return a && (a->pBegin.ID == pointId || a->pEnd.ID == pointId || a->pMid.ID == pointId ||
                 a->PCenter.ID == pointId);
  }
  if (head == "RG" && (heads & kHeadRG)) {
    const CRegion* g = Doc.Regions.FindById(id);
    if (!g) return false;
    for (const Position& c : g->Points)
      if (c.ID == pointId) return true;
  }
  return false;
}

PropagationTrace::PropagationTrace() {
  if (g_trace) throw RunTimeError("A propagation trace is already open.");
  g_trace = new std::unordered_set<const DocObject*>();
}

PropagationTrace::~PropagationTrace() {
  delete g_trace;
  g_trace = nullptr;
}

bool PropagationTrace::Touched(const DocObject* holder) { return g_trace && g_trace->count(holder) > 0; }
bool PropagationTrace::Active() { return g_trace != nullptr; }

// ---- Position's propagation members ------------------------------------------------------

void Position::UpdateLinked(float dx, float dy, float dz, int flag) {
  WriteThrough(*this, Change{false, dx, dy, dz}, flag, true);
}

void Position::UpdateLinked1(float x_, float y_, float z_, int flag) {
  WriteThrough(*this, Change{true, x_, y_, z_}, flag, true);
}

void Position::UpdateLinked2(float x0, float y0, float z0, float dx, float dy, float dz) {
  WriteThrough(*this, Change{true, x0 + dx, y0 + dy, z0 + dz}, 0, false);
}

void Position::StruUpdateLinked(float x_, float y_, float z_) { WriteThrough(*this, Change{true, x_, y_, z_}, 0, false); }

void Position::UpdateStru(const std::string& id, float x_, float y_, float z_) {
  auto put = [&](Position& copy) {
    if (copy.ID == id) copy.Set(x_, y_, z_);
  };
  for (size_t i = 0; i < LinkObjs.size(); ++i) {
    const CLinkObj& link = LinkObjs[i];
    switch (link.GEType) {
      case 2:
        if (CLine* l = Doc.Lines.FindById(link.ID)) {
          put(l->pBegin);
          put(l->pEnd);
          Trace(l);
        }
        break;
      case 3:
        if (CCircle* c = Doc.Circles.FindById(link.ID)) {
          put(c->PCenter);
          put(c->PCircleR);
          put(c->PCircleR2);
          put(c->PCircleR3);
          c->Rim.clear();
          Trace(c);
        }
        break;
      case 5:
        if (CArc* a = Doc.Arcs.FindById(link.ID)) {
          put(a->pBegin);
          put(a->pEnd);
          put(a->pMid);
          put(a->PCenter);
          Trace(a);
        }
        break;
      case 4:
        if (CRegion* g = Doc.Regions.FindById(link.ID)) {
          for (Position& c : g->Points) put(c);
          Trace(g);
        }
        break;
      default:
        break;
    }
  }
}

void Position::DrawLinked(int mode) {
  for (const CLinkObj& link : LinkObjs) {
    DocObject* holder = nullptr;
    switch (link.GEType) {
      case 2: holder = Doc.Lines.FindById(link.ID); break;
      case 3: holder = Doc.Circles.FindById(link.ID); break;
      case 4: holder = Doc.Regions.FindById(link.ID); break;
      default: break;  // arcs are passed over
    }
    if (holder) holder->SetDrawMode(mode);
  }
}

// ---- moving and images ------------------------------------------------------------------

void MovePointTo(Position& real, float x, float y, float z) {
  const float dx = x - real.x, dy = y - real.y, dz = z - real.z;
  if (dx == 0 && dy == 0 && dz == 0) return;
  real.Set(x, y, z);
  real.UpdateLinked(dx, dy, dz, 0);
}

Position ImageUnder(const Position& source, const DocObject& image, float para1, float para2, float para3) {
  switch (image.TransType) {
    case 1: return source.Move(image.MoveType, para1, para2, para3, image.LKID3, image.LKID4);
    case 2:
      if (Head(image.LKID2) == "LN") return source.RotL3D(image.LKID2, para1);
      return source.RotateP(image.LKID2, para1);
    case 3: return ZoomAbout(source, image.LKID2, para1);
    case 4: {
      const std::string h = Head(image.LKID2);
      if (h == "LN") return source.MirrorL(image.LKID2);
      if (h == "RG") return source.MirrorR(image.LKID2);
      return source.MirrorP(image.LKID2);
    }
    default: return Position(source.x, source.y, source.z);
  }
}

bool PlaceNewIntersection(Position& p) {
  Position at;
  if (IntersectionPlace(p, false, at) || IntersectionPlace(p, true, at)) {
    MovePointTo(p, at.x, at.y, at.z);
    return true;
  }
  return false;
}

Position ZoomAbout(const Position& p, const std::string& centreId, float factor) {
  const Position* c = centreId.empty() ? nullptr : FindPoint(centreId);
  if (!c) return p.Zoom(factor);
  // Moved so that the centre stands on the origin, scaled there, moved back.
  const Position scaled = Position(p.x - c->x, p.y - c->y, p.z - c->z).Zoom(factor);
  return Position(scaled.x + c->x, scaled.y + c->y, scaled.z + c->z);
}

// ---- the passes -----------------------------------------------------------------------------

void RefreshPass() {
  // 1. Points: triangle centres, images, division and epitaxial points.
  for (Position* p : Doc.Points) {
    switch (p->ptype) {
      case 21:
      case 22:
      case 23:
      case 24:
      case 25: RefreshTriangleCentre(*p); break;
      case 10: RefreshImagePoint(*p); break;
      case 9: RefreshDivisionPoint(*p); break;
      case 6: RefreshEpitaxialPoint(*p); break;
      default: break;
    }
  }
  RunStage(RefreshStage::AfterPoints);
  // 2. Circles rebuilt from a source. The centre and radius that circles
  // through three points and inscribed circles take from their points are
  // kept in PCenter and R as well, for those who read the fields.
  for (CCircle* c : Doc.Circles) {
    if (c->CType == 10) {
      RefreshCircleImage(*c);
    } else if (c->CType == 2 || c->CType == 4) {
      const Position o = c->Centre();
      c->PCenter.Set(o.x, o.y, o.z);
      c->R = c->Radius();
    }
  }
  RunStage(RefreshStage::AfterCircleImages);
  // 3. Arcs on a circle and arcs rebuilt from a source.
  for (CArc* a : Doc.Arcs)
    if (a->AType == 4 || a->AType == 10) RefreshArc(*a);
  RunStage(RefreshStage::AfterArcs);
  // 4. Regions rebuilt from a source.
  for (CRegion* g : Doc.Regions)
    if (g->RType == 2) RefreshRegionImage(*g);
  RunStage(RefreshStage::AfterRegionImages);
  // 5. Intersection lines.
  RunStage(RefreshStage::InterLines);
  // 6. Angle bisectors.
  for (CLine* l : Doc.Lines)
    if (l->LType == 4) RefreshBisector(*l);
  RunStage(RefreshStage::AfterBisectors);
  // 7. Intersection points.
  for (Position* p : Doc.Points)
    if (p->ptype == 4) RefreshIntersection(*p);
  RunStage(RefreshStage::AfterIntersections);
  // 8. Tangent points.
  for (Position* p : Doc.Points)
    if (p->ptype == 5) RefreshTangentPoint(*p);
  RunStage(RefreshStage::End);
}

void RepropagateAfterMove() {
  // a. to d. Carriers whose defining points changed in this step.
  if (PropagationTrace::Active()) {
    for (CLine* l : Doc.Lines) CarryStructure(*l);
    for (CCircle* c : Doc.Circles) CarryStructure(*c);
    for (CArc* a : Doc.Arcs) CarryStructure(*a);
    for (CRegion* g : Doc.Regions) CarryStructure(*g);
  }
  // e. Derived lines: perpendiculars (and the begins of tangents), then images,
  // then, in a walk of their own, parallels.
  for (CLine* l : Doc.Lines) {
    if (l->LType == 1) RefreshPerpendicular(*l);
    else if (l->LType == 3) RefreshTangentBegin(*l);
  }
  for (CLine* l : Doc.Lines)
    if (l->LType == 10) RefreshLineImage(*l);
  for (CLine* l : Doc.Lines)
    if (l->LType == 2) RefreshParallel(*l);
  // f. and g. The refresh pass.
  RefreshPass();
}

}  // namespace vt
