#include "tools/construction_prompts.h"

#include <cmath>
#include <memory>

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/host.h"
#include "expr/text_prep.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "geometry/extension.h"
#include "geometry/geom.h"
#include "geometry/propagation.h"
#include "tools/constructions.h"

namespace vt {

const char* const kMsgTwoPointsOrSegment = "Please select 2 points or 1 segment. ";
const char* const kMsgOnePointFirst = "Please select 1 point first. ";
const char* const kMsgAxisSegment = "Please select 1 segment, or 1 point and 1 segment. ";
const char* const kMsgIllegalData = "Illegal data exist.";

PromptDialogFn DivisionDialog = nullptr, LineExtDialog = nullptr, FlexP2DDialog = nullptr, Circle3DDialog = nullptr,
               CircleRadiusDialog = nullptr;

namespace {

// Which selections the commands here take.
bool TwoPointsOrOneSegment() {
  const int others = Sel.Circles.count() + Sel.Arcs.count() + Sel.Regions.count();
  if (others) return false;
  return (Sel.Points.count() == 2 && Sel.Lines.count() == 0 && SelPts().size() == 2) ||
         (Sel.Points.count() == 0 && Sel.Lines.count() == 1 && Doc.Lines.FindById(Sel.Lines.Item(1)->ID));
}

bool DivisionSelectionFits() {
  const int pt = Sel.Points.count(), ln = Sel.Lines.count(), cr = Sel.Circles.count(), ar = Sel.Arcs.count();
  return (pt == 2 && SelPts().size() == 2) || (pt == 0 && ln + cr + ar == 1);
}

bool AxisSelectionFits() { return Sel.Lines.count() == 1 && Sel.Points.count() <= 1; }

bool CentreSelectionFits() { return Sel.Points.count() == 1 && SelPts().size() == 1; }

// The two base points of a selection of two points or one segment.
bool BasePoints(Position*& begin, Position*& end, std::string& lineId) {
  lineId.clear();
  if (Sel.Points.count() == 2) {
    std::vector<Position*> p = SelPts();
    if (p.size() != 2) return false;
    begin = p[0];
    end = p[1];
    return true;
  }
  CLine* l = Doc.Lines.FindById(Sel.Lines.Item(1)->ID);
  if (!l) return false;
  begin = FindPoint(l->pBegin.ID);
  end = FindPoint(l->pEnd.ID);
  lineId = l->ID;
  return begin && end;
}

void CheckRoom(const CCarrier& c, int more) {
  if (c.StruPNum() + more > CCarrier::kMaxStru) throw RunTimeError("An object can carry at most 30 points.");
}

void Done() {
  PushSnapshot();
  RedrawScene();
}

}  // namespace

std::vector<std::string> DivisionChoices() {
  std::vector<std::string> out;
  for (int n = 3; n <= 10; ++n) out.push_back(std::to_string(n));
  return out;
}

bool ReadDialogNumber(const std::string& text, float& value) {
  std::string t = text;
  while (!t.empty() && t.front() == ' ') t.erase(t.begin());
  while (!t.empty() && t.back() == ' ') t.pop_back();
  // The reader every number field shares: a decimal comma is a point.
  if (!t.empty() && ReadNumberText(t, value) && std::isfinite(value)) return true;
  host().MsgBox(kMsgIllegalData, "Error", MsgButtons::OK, MsgIcon::Exclamation);
  return false;
}

// ---- division points ------------------------------------------------------------------------

bool EquidistantPointsOK(int parts) {
  if (!DivisionSelectionFits()) {
    ShowNote(kMsgMiddle);
    return false;
  }
  if (parts < 2 || parts > 10) {
    host().MsgBox(kMsgIllegalData, "Error", MsgButtons::OK, MsgIcon::Exclamation);
    return false;
  }
  bool made = false;
  RunGuarded([&] {
    const float n = static_cast<float>(parts);
    if (Sel.Points.count() == 2) {
      std::vector<Position*> p = SelPts();
      Position* a = p[0];
      Position* b = p[1];
      for (short i = 1; i < parts; ++i) {
        const double k = static_cast<double>(i) / parts;
        Position at(static_cast<float>(a->x + (static_cast<double>(b->x) - a->x) * k),
                    static_cast<float>(a->y + (static_cast<double>(b->y) - a->y) * k),
                    static_cast<float>(a->z + (static_cast<double>(b->z) - a->z) * k));
        Position* q = NewPoint(at, 9, a->ID, b->ID, i);
        q->Para1 = n;
        ChildOf(*q, {a, b});
      }
    } else if (Sel.Lines.count() == 1) {
      CLine* l = Doc.Lines.FindById(Sel.Lines.Item(1)->ID);
      if (!l) return;
      CheckRoom(*l, parts - 1);
      for (short i = 1; i < parts; ++i) {
        const float k = static_cast<float>(i) / n;
        Position at(l->pBegin.x + (l->pEnd.x - l->pBegin.x) * k, l->pBegin.y + (l->pEnd.y - l->pBegin.y) * k,
                    l->pBegin.z + (l->pEnd.z - l->pBegin.z) * k);
        Position* q = NewPoint(at, 9, l->ID, "", i);
        q->Para1 = n;
        q->AddParent(l->ID);
        l->AddStruPoint(*q, k);
        ChildOf(*q, {FindPoint(l->pBegin.ID), FindPoint(l->pEnd.ID)});
      }
    } else if (Sel.Circles.count() == 1) {
      CCircle* c = Doc.Circles.FindById(Sel.Circles.Item(1)->ID);
      if (!c) return;
      CheckRoom(*c, parts - 1);
      const Position centre = c->Centre();
      const float r = c->Radius();
      // The rim point is the first division; the others go on around.
      const double a0 = AngleOfSegment(c->PCircleR, centre);
      for (short i = 1; i < parts; ++i) {
        const float a = static_cast<float>(a0 + i * kTwoPi / parts);
        Position at(static_cast<float>(centre.x + r * std::cos(a)), static_cast<float>(centre.y + r * std::sin(a)),
                    centre.z);
        Position* q = NewPoint(at, 9, c->ID, "", i);
        q->Para1 = n;
        q->AddParent(c->ID);
        c->AddStruPoint(*q, a);
      }
    } else {
      CArc* arc = Doc.Arcs.FindById(Sel.Arcs.Item(1)->ID);
      if (!arc) return;
      CheckRoom(*arc, parts - 1);
      double start, sweep;
      arc->Sweep(start, sweep);
      const Position centre = arc->Centre();
      const float r = arc->Radius();
      for (short i = 1; i < parts; ++i) {
        const double a = start + sweep * i / parts;
        Position at(static_cast<float>(centre.x + r * std::cos(a)), static_cast<float>(centre.y + r * std::sin(a)),
                    arc->pBegin.z);
        Position* q = NewPoint(at, 9, arc->ID, "", i);
        q->Para1 = n;
        q->AddParent(arc->ID);
        arc->AddStruPoint(*q, static_cast<float>(a));
      }
    }
    made = true;
  });
  if (made) Done();
  return made;
}

// ---- epitaxial and interpolated point ------------------------------------------------------

bool LineExtPointOK(int kind, bool absolute, float distance) {
  if (!TwoPointsOrOneSegment()) {
    ShowNote(kMsgTwoPointsOrSegment);
    return false;
  }
  Position *begin = nullptr, *end = nullptr;
  std::string lineId;
  if (!BasePoints(begin, end, lineId)) return false;
  if (kind != 1 && kind != 2) kind = 1;
  bool made = false;
  RunGuarded([&] {
    Position* p = lineId.empty() ? NewPoint(*end, 6, begin->ID, end->ID, 0) : NewPoint(*end, 6, lineId, "", 0);
    p->Para1 = static_cast<float>(kind);
    p->Para2 = absolute ? 1.0f : 2.0f;
    p->Para3 = distance;
    ChildOf(*p, {begin, end});
    RefreshPass();  // places the new point
    made = true;
  });
  if (made) Done();
  return made;
}

// ---- 2D directed extension point ----------------------------------------------------------

bool DirectedExtensionOK(float angleDegrees, float distance) {
  if (!TwoPointsOrOneSegment()) {
    ShowNote(kMsgTwoPointsOrSegment);
    return false;
  }
  Position *start = nullptr, *end = nullptr;
  std::string lineId;
  if (!BasePoints(start, end, lineId)) return false;
  const float angle = static_cast<float>(angleDegrees * 3.1416 / 180);
  Position at, far;
  if (start->x == end->x && start->y == end->y && start->z == end->z) {
    ShowNote("The two points are at the same place, so they give no direction. ");
    return false;
  }
  // Says itself why when the two points differ in z.
  if (!DirectedExtension(*start, *end, angle, distance, at, far)) return false;
  bool made = false;
  RunGuarded([&] {
    Position* aux = NewHiddenPoint(far, 2, "", "", 0);
    Position* p = NewPoint(at, 11, start->ID, end->ID, 0);
    p->Para1 = angle;
    p->Para2 = distance;
    p->LKID3 = aux->ID;
    start->LKID4 = p->ID;
    end->LKID4 = p->ID;
    ChildOf(*p, {start, end});
    made = true;
  });
  if (made) Done();
  return made;
}

// ---- circles --------------------------------------------------------------------------------

bool Circle3DOK(float radius) {
  if (!AxisSelectionFits()) {
    ShowNote(kMsgAxisSegment);
    return false;
  }
  CLine* axis = Doc.Lines.FindById(Sel.Lines.Item(1)->ID);
  if (!axis) return false;
  Position* centre = Sel.Points.count() == 1 ? FindPoint(Sel.Points.Item(1)->ID) : FindPoint(axis->pBegin.ID);
  Position* first = FindPoint(axis->pBegin.ID);
  if (!centre || !first) return false;
  if (!(radius > 0)) {
    host().MsgBox(kMsgIllegalData, "Error", MsgButtons::OK, MsgIcon::Exclamation);
    return false;
  }
  bool made = false;
  RunGuarded([&] {
    auto c = std::make_unique<CCircle>();
    c->ID = NewObjectId("CR");
    c->CType = 5;
    c->PCenter = HolderCopy(*centre);
    c->PCircleR = HolderCopy(*first);
    c->LKID = axis->ID;
    c->R = radius;
    c->CLabel = centre->PLabel;
    first->AddLink(CLinkObj{c->ID, 3, 1, 5, 0});
    // The centre's copy is found by its id (the slots 1 to 3 of this kind
    // are the rim points).
    if (centre != first) centre->AddLink(CLinkObj{c->ID, 3, 2, 5, 0});
    Doc.Circles.Add(std::move(c));
    made = true;
  });
  if (made) Done();
  return made;
}

bool CircleRadiusOK(const CircleRadiusForm& form) {
  if (!CentreSelectionFits()) {
    ShowNote(kMsgOnePointFirst);
    return false;
  }
  if (!(form.radius > 0) || !std::isfinite(form.radius) || form.style < 1 || form.style > 4 ||
      !(form.width > 0) || !std::isfinite(form.width)) {
    host().MsgBox(kMsgIllegalData, "Error", MsgButtons::OK, MsgIcon::Exclamation);
    return false;
  }
  Position* centre = SelPts()[0];
  bool made = false;
  RunGuarded([&] {
    auto c = std::make_unique<CCircle>();
    c->ID = NewObjectId("CR");
    c->CType = 3;
    c->PCenter = HolderCopy(*centre);
    c->R = form.radius;
    c->GELineStyle = form.style;
    c->GELineWidth = form.width;
    c->ForeColor = form.color;
    c->Filled = form.filled;
    c->CLabel = centre->PLabel;
    centre->AddLink(CLinkObj{c->ID, 3, 2, 3, 0});
    Doc.Circles.Add(std::move(c));
    made = true;
  });
  if (made) Done();
  return made;
}

// ---- the commands -------------------------------------------------------------------------

void RegisterPromptCommands() {
  RegisterHandler("mnuEP", [] {
    if (!DivisionSelectionFits()) ShowNote(kMsgMiddle);
    else if (DivisionDialog) DivisionDialog();
  });
  RegisterHandler("mnuDraw2LineSt", [] {
    if (!TwoPointsOrOneSegment()) ShowNote(kMsgTwoPointsOrSegment);
    else if (LineExtDialog) LineExtDialog();
  });
  RegisterHandler("mnuDraw2SSD2D", [] {
    if (!TwoPointsOrOneSegment()) ShowNote(kMsgTwoPointsOrSegment);
    else if (FlexP2DDialog) FlexP2DDialog();
  });
  RegisterHandler("mnuDraw23DCir", [] {
    if (!AxisSelectionFits()) ShowNote(kMsgAxisSegment);
    else if (Circle3DDialog) Circle3DDialog();
  });
  RegisterHandler("mnuDraw2DJC", [] {
    if (!CentreSelectionFits()) ShowNote(kMsgOnePointFirst);
    else if (CircleRadiusDialog) CircleRadiusDialog();
  });
}

}  // namespace vt
