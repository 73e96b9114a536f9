#include "tools/constructions.h"

#include <cmath>
#include <memory>
#include <vector>

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/host.h"
#include "document/undo.h"
#include "geometry/extension.h"
#include "geometry/geom.h"
#include "geometry/propagation.h"
#include "graphs/swept_commands.h"
#include "render/frame.h"
#include "tools/construction_prompts.h"
#include "tools/models.h"
#include "tools/notes.h"
#include "tools/transform.h"

namespace vt {

const char* const kMsgMiddle = "Please select 2 points, 1 segment, 1 circle or 1 arc. ";
const char* const kMsgTwoPoints = "Please select 2 points. ";
const char* const kMsgPointSegment = "Please select a point and a segment. ";
const char* const kMsgBisector = "Please select 3 points first, the second point is the vertex of the angle. ";
const char* const kMsgPointCircle = "Please select a point and a circle. ";
const char* const kMsgOnePointOneSegment = "Please select 1 point and 1 segment. ";
const char* const kMsgOnePointOnePolygon = "Please select 1 point and 1 polygon. ";
const char* const kMsgRegionExtension = "Please select at least 1 point and 1 polygon. ";
const char* const kMsgIntersection =
    "Please select 2 segments, or 1 segment and 1 circle, or 1 segment and 1 polygon, or 1 segment and 1 curve,    "
    "or 1 segment and 1 surface, or 1 segment and 1 arc, or 1 circle and 1 arc, or 2 arcs, or 1 circle and 1 curve, "
    "or 1 arc and 1 curve.  ";
const char* const kMsgInterLine =
    "Please select 2 polygons, or 1 polygon and 1 sector, or 1 polygon and 1 ribbon, or 1 polygon and 1 surface, "
    "or 2 sectors, or 1 sector and 1 ribbon, or 1 ribbon and 1 surface. ";
const char* const kMsgNotCollinear = "Please select three points which are not collinear. ";
const char* const kMsgArcCentre = "Please select 3 points, the second one is center point. ";
const char* const kMsgThreePoints = "Please select 3 points first. ";
const char* const kMsgNoTangent =
    "The point lies inside the circle, so no tangent passes through it. Please select a point outside the circle. ";
const char* const kMsgNoExtension =
    "No point can stand above this polygon: it needs 3 corners that are not on one line. ";
const char* const kMsgArcOnCircle = "Please select 1 circle and 2 points on it. ";
const char* const kMsgCornerMark = "Please select 3 points first, the second is the center point. ";
const char* const kMsgPolygon = "Please select at lease 3 points in anticlockwise order. ";
const char* const kMsgSector =
    "Please select 1 point and 1 circle, or 1 arc, or 1 function curve, or 1 polygon. ";
const char* const kMsgRibbon =
    "Please select 1 segment and 1 arc, or 1 segment and 1 curve, or 2 arcs, or 1 arc and a curve, or 2 curves, "
    "or 1 curve and a surface, or 2 surfaces, or 2 circles, or 2 polygons. ";

void ShowNote(const std::string& text) { host().MsgBox(text, "Note", MsgButtons::OK, MsgIcon::Exclamation); }

std::vector<Position*> SelPts() { return SelectedObjects<Position>(Sel.Points, Doc.Points); }

Position* NewPoint(const Position& at, int ptype, const std::string& lk1, const std::string& lk2, short pos) {
  Position* p = NewHiddenPoint(at, ptype, lk1, lk2, pos);
  p->Hide = false;
  AssignNextPointLabel(*p);
  return p;
}

Position* NewHiddenPoint(const Position& at, int ptype, const std::string& lk1, const std::string& lk2, short pos) {
  const std::string id = NewObjectId("PT");
  Position* p = Doc.Points.Add(id, at.x, at.y, at.z, ptype, lk1, lk2, pos, id);
  p->SetDrawMode(5);
  p->Hide = true;
  return p;
}

void ChildOf(Position& child, std::initializer_list<Position*> parents) {
  for (Position* p : parents)
    if (p && p->ChildNum() < Position::kMaxChildren) p->AddChild(child.ID);
}

namespace {

std::vector<CLine*> SelLines() { return SelectedObjects<CLine>(Sel.Lines, Doc.Lines); }
std::vector<CCircle*> SelCircles() { return SelectedObjects<CCircle>(Sel.Circles, Doc.Circles); }
std::vector<CArc*> SelArcs() { return SelectedObjects<CArc>(Sel.Arcs, Doc.Arcs); }
std::vector<CRegion*> SelRegions() { return SelectedObjects<CRegion>(Sel.Regions, Doc.Regions); }

// Counts of the selection sets that commands test.
struct Counts {
  int pt, ln, cr, ar, rg, cv, sf, fa, rb;
};
Counts Count() {
  return Counts{Sel.Points.count(), Sel.Lines.count(),     Sel.Circles.count(), Sel.Arcs.count(),
                Sel.Regions.count(), Sel.FunCurves.count(), Sel.Surfaces.count(), Sel.Fans.count(),
                Sel.Ribbons.count()};
}

CLine* NewLine(int lt, int ltype, Position& begin, Position& end) {
  auto l = std::make_unique<CLine>();
  l->ID = NewObjectId("LN");
  l->lt = lt;
  l->LType = ltype;
  l->GELineWidth = 2;
  l->GELineStyle = 1;
  l->pBegin = HolderCopy(begin);
  l->pEnd = HolderCopy(end);
  l->LLabel = begin.PLabel + end.PLabel;
  begin.AddLink(CLinkObj{l->ID, 2, 1, 0, 0});
  end.AddLink(CLinkObj{l->ID, 2, 2, 0, 0});
  return Doc.Lines.Add(std::move(l));
}

bool Collinear(const Position& a, const Position& b, const Position& c) {
  Position centre;
  float r;
  return !CircleFromThreePoints(a, b, c, centre, r);
}

// Ends a command that changed the document: undo step and redraw.
void Done() {
  PushSnapshot();
  RedrawScene();
}

void Guarded(void (*body)()) { RunGuarded(body); }

}  // namespace

// ---- points ----------------------------------------------------------------------------------

void mnuMiddleP_Click() {
  const Counts n = Count();
  if (n.pt == 2) {
    std::vector<Position*> p = SelPts();
    if (p.size() != 2) return;
    Position m((p[0]->x + p[1]->x) / 2, (p[0]->y + p[1]->y) / 2, (p[0]->z + p[1]->z) / 2);
    Position* q = NewPoint(m, 9, p[0]->ID, p[1]->ID, 1);
    q->Para1 = 2;
    ChildOf(*q, {p[0], p[1]});
  } else if (n.pt == 0 && n.ln == 1 && n.cr == 0 && n.ar == 0) {
    CLine* l = SelLines()[0];
    if (l->StruPNum() >= CCarrier::kMaxStru) throw RunTimeError("An object can carry at most 30 points.");
    Position m((l->pBegin.x + l->pEnd.x) / 2, (l->pBegin.y + l->pEnd.y) / 2, (l->pBegin.z + l->pEnd.z) / 2);
    Position* q = NewPoint(m, 9, l->ID, "", 1);
    q->Para1 = 2;
    q->AddParent(l->ID);
    l->AddStruPoint(*q, 0.5f);
    ChildOf(*q, {FindPoint(l->pBegin.ID), FindPoint(l->pEnd.ID)});
  } else if (n.pt == 0 && n.ln == 0 && n.cr == 1 && n.ar == 0) {
    CCircle* c = SelCircles()[0];
    if (c->StruPNum() >= CCarrier::kMaxStru) throw RunTimeError("An object can carry at most 30 points.");
    const Position centre = c->Centre();
    const float r = c->Radius();
    const float a = static_cast<float>(AngleOfSegment(c->PCircleR, centre) + kPi);
    Position m(static_cast<float>(centre.x + r * std::cos(a)), static_cast<float>(centre.y + r * std::sin(a)),
               centre.z);
    Position* q = NewPoint(m, 9, c->ID, "", 1);
    q->Para1 = 2;
    q->AddParent(c->ID);
    c->AddStruPoint(*q, a);
  } else if (n.pt == 0 && n.ln == 0 && n.cr == 0 && n.ar == 1) {
    CArc* arc = SelArcs()[0];
    if (arc->StruPNum() >= CCarrier::kMaxStru) throw RunTimeError("An object can carry at most 30 points.");
    double start, sweep;
    arc->Sweep(start, sweep);
    const Position centre = arc->Centre();
    const float r = arc->Radius();
    const double a = start + sweep / 2;
    Position m(static_cast<float>(centre.x + r * std::cos(a)), static_cast<float>(centre.y + r * std::sin(a)),
               arc->pBegin.z);
    Position* q = NewPoint(m, 9, arc->ID, "", 1);
    q->Para1 = 2;
    q->AddParent(arc->ID);
    arc->AddStruPoint(*q, static_cast<float>(a));
  } else {
    ShowNote(kMsgMiddle);
    return;
  }
  Done();
}

void mnuDraw2RegSSD_Click() {
  const Counts n = Count();
  if (n.pt < 1 || n.rg != 1) {
    ShowNote(kMsgRegionExtension);
    return;
  }
  CRegion* g = SelRegions()[0];
  Position* base = SelPts()[0];
  Position at, far;
  const float height = 3;
  if (!VerticalExtension(*g, *base, height, at, far)) {
    ShowNote(kMsgNoExtension);
    return;
  }
  Position* aux = NewHiddenPoint(far, 2, "", "", 0);
  Position* p = NewPoint(at, 12, base->ID, g->ID, 0);
  p->Para1 = height;
  p->LKID3 = aux->ID;
  base->LKID4 = p->ID;
  for (const Position& corner : g->Points)
    if (Position* c = FindPoint(corner.ID)) c->LKID4 = p->ID;
  ChildOf(*p, {base});
  Done();
}

void mnuInterP_Click() {
  const Counts n = Count();
  const int total = n.ln + n.cr + n.ar + n.rg + n.cv + n.sf;
  if (total != 2 || n.pt != 0 || n.fa != 0 || n.rb != 0) {
    ShowNote(kMsgIntersection);
    return;
  }
  // The pairs, first id a line where there is one.
  std::vector<std::string> ids;
  for (CLine* l : SelLines()) ids.push_back(l->ID);
  for (CCircle* c : SelCircles()) ids.push_back(c->ID);
  for (CArc* a : SelArcs()) ids.push_back(a->ID);
  for (CRegion* g : SelRegions()) ids.push_back(g->ID);
  for (CFunCurve* c : SelectedObjects<CFunCurve>(Sel.FunCurves, Doc.FunCurves)) ids.push_back(c->ID);
  for (CSurface* s : SelectedObjects<CSurface>(Sel.Surfaces, Doc.Surfaces)) ids.push_back(s->ID);
  if (ids.size() != 2) return;
  int roots = 0;
  if (n.ln == 2 || (n.ln == 1 && n.rg == 1)) roots = 1;
  else if (n.ln == 1 && (n.cr == 1 || n.ar == 1)) roots = 2;
  else if (n.cr + n.ar == 2) roots = 2;
  else if (n.ln == 1 && n.cv == 1) roots = 1;
  else if (n.cv == 1 && (n.cr == 1 || n.ar == 1)) roots = 2;
  else if (n.ln == 1 && n.sf == 1) roots = 1;
  if (roots == 0) {
    ShowNote(kMsgIntersection);
    return;
  }
  std::vector<Position*> made;
  for (short pos = 1; pos <= roots; ++pos) {
    Position* p = NewPoint(Position(0, 0, 0), 4, ids[0], ids[1], pos);
    made.push_back(p);
  }
  // Each point at its crossing from the start (a root off a segment or an
  // arc waits where the carriers meet); then the kinds placed by later stages.
  for (Position* p : made) PlaceNewIntersection(*p);
  RefreshPass();
  Done();
}

// ---- lines -----------------------------------------------------------------------------------

void mnuLinkLine_Click() {
  const Counts n = Count();
  std::vector<Position*> p = SelPts();
  if (n.pt != 2 || p.size() != 2) {
    ShowNote(kMsgTwoPoints);
    return;
  }
  NewLine(1, 0, *p[0], *p[1]);
  Done();
}

void mnuParaLine_Click() {
  const Counts n = Count();
  if (n.pt != 1 || n.ln != 1) {
    ShowNote(kMsgPointSegment);
    return;
  }
  Position* p = SelPts()[0];
  CLine* ref = SelLines()[0];
  const float dx = ref->pEnd.x - ref->pBegin.x, dy = ref->pEnd.y - ref->pBegin.y, dz = ref->pEnd.z - ref->pBegin.z;
  Position* far = NewPoint(Position(p->x + dx, p->y + dy, p->z + dz), 3, ref->ID, p->ID, 0);
  CLine* l = NewLine(2, 2, *p, *far);
  l->LKID = ref->ID;
  l->LKID2 = p->ID;
  ChildOf(*far, {p});
  Done();
}

void mnuAngleEL_Click() {
  const Counts n = Count();
  std::vector<Position*> p = SelPts();
  if (n.pt != 3 || p.size() != 3) {
    ShowNote(kMsgBisector);
    return;
  }
  Position* vertex = p[1];
  const double a1 = AngleOfSegment(*p[0], *vertex), a2 = AngleOfSegment(*p[2], *vertex);
  double a;
  if (a2 > a1 + kPi) a = (a2 + 6.2628 - a1) / 2 - (6.2628 - a1);
  else if (a1 > a2 + kPi) a = (a1 + 6.2628 - a2) / 2 - (6.2628 - a2);
  else a = (a1 + a2) / 2;
  Position end(static_cast<float>(vertex->x + 100 * std::cos(a)), static_cast<float>(vertex->y + 100 * std::sin(a)),
               vertex->z);
  Position* e = NewHiddenPoint(end, 3, p[0]->ID, p[2]->ID, 0);
  CLine* l = NewLine(3, 4, *vertex, *e);
  l->LKID = p[0]->ID;
  l->LKID2 = p[2]->ID;
  ChildOf(*e, {p[0], vertex, p[2]});
  Done();
}

void mnuQX_Click() {
  const Counts n = Count();
  if (n.pt != 1 || (n.cr != 1) || n.ln || n.ar || n.rg) {
    ShowNote(kMsgPointCircle);
    return;
  }
  Position* p = SelPts()[0];
  CCircle* c = SelCircles()[0];
  Position first, second;
  const int found = TangentPoints(c->Centre(), c->Radius(), *p, first, second);
  if (found < 1) {
    ShowNote(kMsgNoTangent);
    return;
  }
  for (short pos = 1; pos <= 2; ++pos) {
    Position* t = NewPoint(pos == 1 ? first : (found >= 2 ? second : first), 5, p->ID, c->ID, pos);
    CLine* l = NewLine(3, 3, *p, *t);
    l->LKID = p->ID;
    l->LKID2 = c->ID;
    ChildOf(*t, {p});
  }
  Done();
}

namespace {

void Perpendicular(bool toRegion) {
  const Counts n = Count();
  if (n.pt != 1 || (toRegion ? (n.rg != 1) : (n.ln != 1))) {
    ShowNote(toRegion ? kMsgOnePointOnePolygon : kMsgOnePointOneSegment);
    return;
  }
  Position* p = SelPts()[0];
  Position foot;
  std::string ref;
  if (toRegion) {
    CRegion* g = SelRegions()[0];
    foot = FootOnPlane(*p, *g);
    ref = g->ID;
  } else {
    CLine* l = SelLines()[0];
    foot = FootOnLine(*p, l->pBegin, l->pEnd);
    ref = l->ID;
  }
  Position* f = NewPoint(foot, 3, ref, p->ID, 0);
  CLine* l = NewLine(1, 1, *p, *f);
  l->LKID = ref;
  l->LKID2 = p->ID;
  ChildOf(*f, {p});
  Done();
}

}  // namespace

void mnuCX1_Click() { Perpendicular(false); }
void mnuCX2_Click() { Perpendicular(true); }

void mnuDraw2IntLine_Click() {
  const Counts n = Count();
  // Space curves share the surfaces' set; they have no faces to cut.
  int spaceCurves = 0;
  for (CSurface* s : Sel.Surfaces) spaceCurves += s->ID.compare(0, 2, "C3") == 0;
  const int total = n.rg + n.fa + n.rb + n.sf;
  const bool fits = total == 2 && n.pt + n.ln + n.cr + n.ar + n.cv + spaceCurves == 0 &&
                    ((n.rg == 2) || (n.rg == 1 && (n.fa == 1 || n.rb == 1 || n.sf == 1)) || n.fa == 2 ||
                     (n.fa == 1 && n.rb == 1) || (n.rb == 1 && n.sf == 1));
  if (!fits) {
    ShowNote(kMsgInterLine);
    return;
  }
  MakeInterLineFromSelection();
}

// ---- circles and arcs --------------------------------------------------------------------------

namespace {

void ThreePointCircle(int ctype) {
  std::vector<Position*> p = SelPts();
  if (Count().pt != 3 || p.size() != 3 || Collinear(*p[0], *p[1], *p[2])) {
    ShowNote(kMsgNotCollinear);
    return;
  }
  auto c = std::make_unique<CCircle>();
  c->ID = NewObjectId("CR");
  c->CType = ctype;
  c->Circle2(p[0]->ID, p[1]->ID, p[2]->ID);
  c->CLabel = p[0]->PLabel + p[1]->PLabel + p[2]->PLabel;
  for (short i = 0; i < 3; ++i) p[i]->AddLink(CLinkObj{c->ID, 3, static_cast<short>(i + 1), ctype, 0});
  CCircle* made = Doc.Circles.Add(std::move(c));
  if (ctype == 4) {
    // The inscribed circle: the incentre and its distance to a side.
    const Position centre = TriIncenter(*p[0], *p[1], *p[2]);
    made->PCenter = Position(centre.x, centre.y, centre.z);
    made->R = DistanceBetween(centre, FootOnLine(centre, *p[0], *p[1]));
  } else {
    made->R = made->Radius();
    made->PCenter = made->Centre();
  }
  Done();
}

CArc* NewArc(int atype, Position& a, Position& b, Position& c) {
  auto arc = std::make_unique<CArc>();
  arc->ID = NewObjectId("AR");
  arc->AType = atype;
  if (atype == 2) arc->arc2(a.ID, b.ID, c.ID);
  else arc->Arc1(a.ID, b.ID, c.ID);
  arc->Label = a.PLabel + b.PLabel + c.PLabel;
  short pos = 1;
  for (Position* p : {&a, &b, &c}) p->AddLink(CLinkObj{arc->ID, 5, pos++, 0, atype});
  CArc* made = Doc.Arcs.Add(std::move(arc));
  made->R = made->Radius();
  return made;
}

}  // namespace

void mnuDraw3PC_Click() { ThreePointCircle(2); }
void mnuDraw2NQC_Click() { ThreePointCircle(4); }

void mnuDrawArc1_Click() {
  std::vector<Position*> p = SelPts();
  if (Count().pt != 3 || p.size() != 3) {
    ShowNote(kMsgArcCentre);
    return;
  }
  // The second point selected is the centre.
  NewArc(1, *p[0], *p[1], *p[2]);
  Done();
}

void mnuDrawArc3P_Click() {
  std::vector<Position*> p = SelPts();
  if (Count().pt != 3 || p.size() != 3) {
    ShowNote(kMsgThreePoints);
    return;
  }
  NewArc(2, *p[0], *p[1], *p[2]);
  Done();
}

void mnuAngleLabel_Click() {
  std::vector<Position*> p = SelPts();
  if (Count().pt != 3 || p.size() != 3) {
    ShowNote(kMsgCornerMark);
    return;
  }
  CArc* a = NewArc(3, *p[0], *p[1], *p[2]);
  a->GELineStyle = 1;
  a->GELineWidth = 2;
  Done();
}

void mnuDraw2ArcOnCir_Click() {
  const Counts n = Count();
  std::vector<Position*> p = SelPts();
  if (n.cr != 1 || n.pt != 2 || p.size() != 2) {
    ShowNote(kMsgArcOnCircle);
    return;
  }
  CCircle* c = SelCircles()[0];
  auto arc = std::make_unique<CArc>();
  arc->ID = NewObjectId("AR");
  arc->AType = 4;
  arc->ForeColor = 0xff0000;
  arc->GELineWidth = 3;
  arc->LKID = c->ID;
  arc->LKID2 = p[0]->ID;
  arc->LKID3 = p[1]->ID;
  arc->pBegin = HolderCopy(*p[0]);
  arc->pEnd = HolderCopy(*p[1]);
  const Position centre = c->Centre();
  arc->PCenter.Set(centre.x, centre.y, centre.z);
  arc->Label = p[0]->PLabel + p[1]->PLabel;
  p[0]->AddLink(CLinkObj{arc->ID, 5, 1, 0, 4});
  p[1]->AddLink(CLinkObj{arc->ID, 5, 3, 0, 4});
  CArc* made = Doc.Arcs.Add(std::move(arc));
  made->R = made->Radius();
  Done();
}

// ---- regions, sectors, ribbons -----------------------------------------------------------------

void mnuRegion_Click() {
  std::vector<Position*> p = SelPts();
  if (Count().pt < 3 || p.size() < 3) {
    ShowNote(kMsgPolygon);
    return;
  }
  auto g = std::make_unique<CRegion>();
  g->ID = NewObjectId("RG");
  g->Alpha = 0.5f;
  g->ForeColor = RGB(128, 192, 255);
  short pos = 1;
  for (Position* c : p) {
    g->Points.push_back(HolderCopy(*c));
    g->Label += c->PLabel;
    c->AddLink(CLinkObj{g->ID, 4, pos++, 0, 0});
  }
  Doc.Regions.Add(std::move(g));
  Done();
}

void mnuDraw2Fan_Click() {
  const Counts n = Count();
  // The point is the apex; without one an arc, a curve or a polygon makes a
  // flat sector about its own middle, a circle cannot.
  const bool fits = n.cr + n.ar + n.cv + n.rg == 1 && (n.pt == 1 || (n.pt == 0 && n.cr == 0));
  if (!fits) {
    ShowNote(kMsgSector);
    return;
  }
  MakeFanFromSelection();
}

void mnuDraw2Ribbon_Click() {
  const Counts n = Count();
  const int total = n.ln + n.ar + n.cv + n.sf + n.cr + n.rg;
  const bool fits = total == 2 && n.pt == 0 &&
                    ((n.ln == 1 && (n.ar == 1 || n.cv == 1)) || n.ar == 2 || (n.ar == 1 && n.cv == 1) ||
                     n.cv == 2 || (n.cv == 1 && n.sf == 1) || n.sf == 2 || n.cr == 2 || n.rg == 2);
  if (!fits) {
    ShowNote(kMsgRibbon);
    return;
  }
  MakeRibbonFromSelection();
}

// ---- triangle centres --------------------------------------------------------------------------

void TriangleCentre_Click(int ptype) {
  std::vector<Position*> p = SelPts();
  if (Count().pt != 3 || p.size() != 3) {
    ShowNote(kMsgThreePoints);
    return;
  }
  bool ok = true;
  Position at;
  switch (ptype) {
    case 21: at = TriCircumcenter(*p[0], *p[1], *p[2], &ok); break;
    case 22: at = TriIncenter(*p[0], *p[1], *p[2], &ok); break;
    case 23: at = TriOrthocenter(*p[0], *p[1], *p[2], &ok); break;
    case 24: at = TriBarycenter(*p[0], *p[1], *p[2], &ok); break;
    default: at = TriFermatPoint(*p[0], *p[1], *p[2], &ok); break;
  }
  if (!ok || Collinear(*p[0], *p[1], *p[2])) {
    // Three points on a line make no triangle, and no centre of one.
    ShowNote(kMsgNotCollinear);
    return;
  }
  Position* q = NewPoint(at, ptype, p[0]->ID, p[1]->ID, 0);
  q->LKID3 = p[2]->ID;
  ChildOf(*q, {p[0], p[1], p[2]});
  Done();
}

// ---- registration ------------------------------------------------------------------------------

void RegisterConstructionCommands() {
  RegisterHandler("mnuMiddleP", [] { Guarded(mnuMiddleP_Click); });
  RegisterHandler("mnuDraw2RegSSD", [] { Guarded(mnuDraw2RegSSD_Click); });
  RegisterHandler("mnuInterP", [] { Guarded(mnuInterP_Click); });
  RegisterHandler("mnuLinkLine", [] { Guarded(mnuLinkLine_Click); });
  RegisterHandler("mnuParaLine", [] { Guarded(mnuParaLine_Click); });
  RegisterHandler("mnuAngleEL", [] { Guarded(mnuAngleEL_Click); });
  RegisterHandler("mnuQX", [] { Guarded(mnuQX_Click); });
  RegisterHandler("mnuCX1", [] { Guarded(mnuCX1_Click); });
  RegisterHandler("mnuCX2", [] { Guarded(mnuCX2_Click); });
  if (!HandlerRegistered("mnuDraw2IntLine")) RegisterHandler("mnuDraw2IntLine", mnuDraw2IntLine_Click);
  RegisterHandler("mnuDraw3PC", [] { Guarded(mnuDraw3PC_Click); });
  RegisterHandler("mnuDraw2NQC", [] { Guarded(mnuDraw2NQC_Click); });
  RegisterHandler("mnuDrawArc1", [] { Guarded(mnuDrawArc1_Click); });
  RegisterHandler("mnuDrawArc3P", [] { Guarded(mnuDrawArc3P_Click); });
  RegisterHandler("mnuDraw2ArcOnCir", [] { Guarded(mnuDraw2ArcOnCir_Click); });
  RegisterHandler("mnuAngleLabel", [] { Guarded(mnuAngleLabel_Click); });
  RegisterHandler("mnuRegion", [] { Guarded(mnuRegion_Click); });
  if (!HandlerRegistered("mnuDraw2Fan")) RegisterHandler("mnuDraw2Fan", mnuDraw2Fan_Click);
  if (!HandlerRegistered("mnuDraw2Ribbon")) RegisterHandler("mnuDraw2Ribbon", mnuDraw2Ribbon_Click);
  RegisterHandler("mnuTriWX", [] { RunGuarded([] { TriangleCentre_Click(21); }); });
  RegisterHandler("mnuTriNX", [] { RunGuarded([] { TriangleCentre_Click(22); }); });
  RegisterHandler("mnuTriCX", [] { RunGuarded([] { TriangleCentre_Click(23); }); });
  RegisterHandler("mnuTriZX", [] { RunGuarded([] { TriangleCentre_Click(24); }); });
  // Centroid and barycenter of a triangle are the same point.
  RegisterHandler("mnuDraw2TriXX", [] { RunGuarded([] { TriangleCentre_Click(24); }); });
  RegisterHandler("mnuTriFM", [] { RunGuarded([] { TriangleCentre_Click(25); }); });
  RegisterNoteCommands();
  RegisterTransformCommands();
  RegisterPromptCommands();
  RegisterModelCommands();
}

}  // namespace vt
