#include "tools/create_tools.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "geometry/geom.h"
#include "geometry/on_object.h"
#include "render/frame.h"
#include "render/reference.h"
#include "tools/canvas_input.h"
#include "tools/screen_items.h"
#include "tools/text_item.h"
#include "tools/select.h"

namespace vt {

Position SnapMarker;
TextDialogFn TextToolDialog;

namespace {

const char* const kTooManyHolders = "A point can be held by at most 20 objects.";
const char* const kTooManyChildren = "A point can carry at most 30 points.";

bool PlaneScene() { return SceneMode != 3; }

// Snapping follows the grid as it is drawn: its step changes with the zoom.
Position Rounded(const Position& p) { return SnappedToGrid(p); }

Position* AddFreePoint(const Position& at, int ptype) {
  const std::string id = NewObjectId("PT");
  Position* p = Doc.Points.Add(id, at.x, at.y, at.z, ptype, "", "", 0, id);
  AssignNextPointLabel(*p);
  p->SetDrawMode(1);
  return p;
}

// The snap marker under the mouse; the frame shows it while snapping is on.
void UpdateSnapMarker(const Position& scenePoint) {
  const Position node = Rounded(scenePoint);
  SnapMarker.Set(node.x, node.y, 0);
  SnapMarker.Symbol = 6;
  SnapMarker.Size = 3;
  SnapMarker.HideLabel = true;
  SnapMarker.ForeColor = RGB(0, 128, 0);
  // Shown while snapping is on and a creation tool is chosen (moves reach
  // the line tool under the text tool too).
  const bool creating = ActiveTool == 1 || ActiveTool == 2 || ActiveTool == 4 || ActiveTool == 7;
  ToolCursorPoint = SnapToGrid && creating ? &SnapMarker : nullptr;
}

// Highlights the first object under the mouse (points, lines, circles, arcs,
// regions, curves) and gives every other its normal look.
void HighlightUnderMouse(Position& scenePoint, Position& farPoint, Position& nearPoint, const DocObject* skip) {
  static constexpr Kind kOrder[] = {Kind::PT, Kind::LN, Kind::CR, Kind::AR, Kind::RG, Kind::C2};
  auto normal = [](DocObject& o) { o.SetDrawMode(IsSelected(o.ID) ? 2 : NormalDrawMode(o)); };
  DocObject* hit = nullptr;
  for (Kind k : kOrder) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count() && !hit; ++i) {
      DocObject* o = c.ItemBase(i);
      if (o == skip) continue;
      if (!o->Hide && o->Pick(scenePoint, farPoint, nearPoint)) hit = o;
      else normal(*o);
    }
    if (hit) break;
  }
  if (!hit) return;
  // The first hit clears the highlights of the rest.
  for (Kind k : kOrder) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) {
      DocObject* o = c.ItemBase(i);
      if (o != hit && o != skip && o->DrawMode == 4) normal(*o);
    }
  }
  hit->SetDrawMode(4);
}

// Removes the back-links that the points keep of a holder being removed.
void DropLinksTo(const std::string& holderId, const std::vector<std::string>& pointIds) {
  for (const std::string& id : pointIds) {
    Position* p = FindPoint(id);
    if (!p) continue;
    auto& links = p->LinkObjs;
    for (size_t i = links.size(); i-- > 0;)
      if (links[i].ID == holderId) links.erase(links.begin() + static_cast<std::ptrdiff_t>(i));
  }
}

template <class Coll>
void RemoveRecordOf(Coll& coll, const std::string& recordId,
                    const std::function<std::vector<std::string>(DocObject&)>& ends) {
  const int n = recordId.empty() ? 0 : coll.FindId(recordId);
  if (n == 0) return;
  DocObject* o = coll.Item(n);
  const std::string id = o->ID;
  DropLinksTo(id, ends(*o));
  CollectionBase* set = Sel.OfId(id);
  if (set)
    while (int i = set->FindId(id)) set->Remove(i);
  coll.Remove(n);
}

}  // namespace

// ---- the search of a click ----------------------------------------------------------------

ClickTarget ResolveClick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint,
                         const DocObject* making, int pointsAtStart) {
  ClickTarget t;
  Position click(scenePoint.x, scenePoint.y, 0);
  const Position probe = SnapToGrid ? Rounded(click) : click;
  int last = Doc.Points.count();
  if (pointsAtStart >= 0 && last > pointsAtStart) --last;  // the point the first click made
  for (int i = 1; i <= last; ++i) {
    Position* p = Doc.Points.Item(i);
    if (p->Hide) continue;
    if (p->Pick(nearPoint, farPoint) || DistanceBetween(*p, probe) < 0.01f) {
      t.kind = ClickKind::ExistingPoint;
      t.point = p;
      t.at = Position(p->x, p->y, p->z);
      return t;
    }
  }
  if (DocObject* carrier = FindCarrierUnderRay(scenePoint, farPoint, nearPoint, making)) {
    t.kind = ClickKind::PointOnObject;
    t.carrier = carrier;
    t.at = click;
    return t;
  }
  t.kind = ClickKind::FreePoint;
  t.at = probe;
  if (PlaneScene()) t.at.z = 0;
  return t;
}

Position* TakeClickPoint(const ClickTarget& target) {
  switch (target.kind) {
    case ClickKind::ExistingPoint: return target.point;
    case ClickKind::PointOnObject:
      if (Position* p = MakePointOn(*target.carrier, target.at)) return p;
      return AddFreePoint(target.at, 1);  // a carrier with nothing to stand on
    case ClickKind::FreePoint: return AddFreePoint(target.at, 1);
  }
  return nullptr;
}

// ---- point tool -------------------------------------------------------------------------------

void CCreatePoint::LButtonDown(Position&, Position& scenePoint, float&, float&, Position& farPoint,
                               Position& nearPoint) {
  SelectPressed = false;
  RunGuarded([&] {
    CurPos = Position(scenePoint.x, scenePoint.y, 0);
    bool found = false;
    for (Position* p : Doc.Points)
      if (!p->Hide && p->Pick(nearPoint, farPoint)) {
        // A click on a point still makes a new one, on the same spot.
        CurPos = Position(p->x, p->y, p->z);
        found = true;
        break;
      }
    if (!found) {
      if (DocObject* carrier = FindCarrierUnderRay(scenePoint, farPoint, nearPoint)) {
        // A following point is never made on an object.
        if (PointToolKind == 1 && MakePointOn(*carrier, CurPos)) PushSnapshot();
        return;
      }
    }
    Position at = CurPos;
    if (SnapToGrid && !found) at = Rounded(at);
    Position* leader = nullptr;
    if (PointToolKind == 8) {
      leader = FindPoint(FollowPointId);
      if (!leader) return;  // the leader has gone
      if (leader->ChildNum() >= Position::kMaxChildren) throw RunTimeError(kTooManyChildren);
    }
    Position* p = AddFreePoint(at, PointToolKind == 8 ? 8 : 1);
    if (leader) {
      p->AddParent(leader->ID);
      leader->AddChild(p->ID);
    }
    PushSnapshot();
  });
}

void CCreatePoint::MouseMove(Position&, Position& scenePoint, float&, float&, Position& farPoint,
                             Position& nearPoint) {
  UpdateSnapMarker(scenePoint);
  RunGuarded([&] { HighlightUnderMouse(scenePoint, farPoint, nearPoint, nullptr); });
}

void CCreatePoint::RButtonDown(Position&, Position&, float&, float&, Position&, Position&) {}

// ---- line and circle tools ------------------------------------------------------------------

void CTwoClickTool::LButtonDown(Position&, Position& scenePoint, float&, float&, Position& farPoint,
                                Position& nearPoint) {
  SelectPressed = false;
  RunGuarded([&] {
    // A record that has gone between the clicks (undo, a new document) starts
    // the gesture again.
    if (Clicks == 1 && !Making()) Clicks = 0;
    if (Clicks == 1) SecondClick(scenePoint, farPoint, nearPoint);
    else FirstClick(scenePoint, farPoint, nearPoint);
  });
}

void CTwoClickTool::FirstClick(Position& scenePoint, Position& farPoint, Position& nearPoint) {
  Clicks = 0;
  FirstEnd = Position(scenePoint.x, scenePoint.y, scenePoint.z);
  CurPos = FirstEnd;
  PointsAtStart = static_cast<short>(Doc.Points.count());
  const ClickTarget target = ResolveClick(scenePoint, farPoint, nearPoint, nullptr, -1);
  DocObject* record = AddRecord(target.at);
  makingId_ = record->ID;
  Position* point = nullptr;
  try {
    point = TakeClickPoint(target);
  } catch (...) {
    RemoveMaking();
    makingId_.clear();
    throw;
  }
  SetFirst(*record, *point);
  FirstPointID = point->ID;
  FirstPointIndex = static_cast<short>(Doc.Points.FindId(point->ID));
  FirstPointExisted = target.kind == ClickKind::ExistingPoint;
  Clicks = 1;
}

void CTwoClickTool::SecondClick(Position& scenePoint, Position& farPoint, Position& nearPoint) {
  DocObject* record = Making();
  Clicks = 2;
  // The point the first end stands for: its own id, else the point on its spot.
  const Position& copy = FirstCopy(*record);
  Position* first = FindPoint(copy.ID);
  if (!first) {
    for (Position* p : Doc.Points)
      if (std::fabs(p->x - copy.x) < 0.001f && std::fabs(p->y - copy.y) < 0.001f && std::fabs(p->z - copy.z) < 0.001f) {
        first = p;
        break;
      }
  }
  auto abandon = [&] {
    RemoveMaking();
    makingId_.clear();
    Clicks = 0;
  };
  if (!first) {
    abandon();
    FirstClick(scenePoint, farPoint, nearPoint);
    return;
  }
  const ClickTarget target = ResolveClick(scenePoint, farPoint, nearPoint, record, PointsAtStart);
  // The bounds first, so that a refused click changes nothing of the points.
  const bool same = target.kind == ClickKind::ExistingPoint && target.point == first;
  if (first->LinkNum() + (same ? 2 : 1) > Position::kMaxLinks ||
      (target.kind == ClickKind::ExistingPoint && !same && target.point->LinkNum() >= Position::kMaxLinks)) {
    abandon();
    throw RunTimeError(kTooManyHolders);
  }
  Position* second = nullptr;
  try {
    second = TakeClickPoint(target);
  } catch (...) {
    abandon();
    throw;
  }
  Finish(*record, *first, *second);
  makingId_.clear();
  Clicks = 0;
  PushSnapshot();
}

void CTwoClickTool::MouseMove(Position&, Position& scenePoint, float&, float&, Position& farPoint,
                              Position& nearPoint) {
  UpdateSnapMarker(scenePoint);
  RunGuarded([&] {
    if (Clicks == 1) {
      DocObject* record = Making();
      if (!record) {
        Clicks = 0;
      } else {
        CurPos = Position(scenePoint.x, scenePoint.y, PlaneScene() ? 0.0f : scenePoint.z);
        if (!PlaneScene() && CoordGuideActive) FirstEnd = Position(scenePoint.x, scenePoint.y, 0);
        Follow(*record, CurPos);
      }
    }
    // Moves that reach this tool while another tool is chosen change nothing.
    if (ActiveTool == tool_) HighlightUnderMouse(scenePoint, farPoint, nearPoint, Making());
  });
}

void CTwoClickTool::RButtonDown(Position&, Position&, float&, float&, Position&, Position&) { Cancel(); }

void CTwoClickTool::Cancel() {
  // Only the record in the making goes; finished ones stay (Delete and Undo
  // remove those).
  if (Clicks == 1) RunGuarded([&] { RemoveMaking(); });
  makingId_.clear();
  Clicks = 0;
}

// ---- line -------------------------------------------------------------------------------------

DocObject* CCreateLine::Making() const { return makingId_.empty() ? nullptr : Doc.Lines.FindById(makingId_); }

CLine& AddLineRecord(int lt, const Position& from, const Position& to) {
  auto l = std::make_unique<CLine>();
  l->ID = NewObjectId("LN");
  l->lt = lt;
  l->GELineWidth = 2;
  l->GELineStyle = 1;
  l->DrawMode = 1;
  l->pBegin = from;
  l->pEnd = to;
  return *Doc.Lines.Add(std::move(l));
}

DocObject* CCreateLine::AddRecord(const Position& at) {
  const Position p(at.x, at.y, at.z);
  return &AddLineRecord(LineToolKind, p, p);
}

void CCreateLine::SetFirst(DocObject& record, const Position& point) {
  auto& l = static_cast<CLine&>(record);
  l.pBegin = HolderCopy(point);
}

void CCreateLine::Follow(DocObject& record, const Position& at) {
  static_cast<CLine&>(record).pEnd.Set(at.x, at.y, at.z);
}

void CCreateLine::Finish(DocObject& record, Position& first, Position& second) {
  auto& l = static_cast<CLine&>(record);
  first.AddLink(CLinkObj{l.ID, 2, 1, 0, 0});
  second.AddLink(CLinkObj{l.ID, 2, 2, 0, 0});
  l.pBegin = HolderCopy(first);
  l.pEnd = HolderCopy(second);
  l.LLabel = first.PLabel + second.PLabel;
}

const Position& CCreateLine::FirstCopy(DocObject& record) const { return static_cast<CLine&>(record).pBegin; }

void CCreateLine::RemoveMaking() {
  RemoveRecordOf(Doc.Lines, makingId_, [](DocObject& o) {
    auto& l = static_cast<CLine&>(o);
    return std::vector<std::string>{l.pBegin.ID, l.pEnd.ID};
  });
}

// ---- circle -----------------------------------------------------------------------------------

DocObject* CCreateCircle::Making() const { return makingId_.empty() ? nullptr : Doc.Circles.FindById(makingId_); }

DocObject* CCreateCircle::AddRecord(const Position& at) {
  auto c = std::make_unique<CCircle>();
  c->ID = NewObjectId("CR");
  c->CType = 1;
  c->GELineWidth = 2;
  c->GELineStyle = 1;
  c->DrawMode = 1;
  c->PCenter = Position(at.x, at.y, at.z);
  c->PCircleR = Position(at.x, at.y, at.z);
  return Doc.Circles.Add(std::move(c));
}

void CCreateCircle::SetFirst(DocObject& record, const Position& point) {
  auto& c = static_cast<CCircle&>(record);
  c.PCenter = HolderCopy(point);
  c.PCircleR.Set(point.x, point.y, point.z);
  c.Rim.clear();
}

void CCreateCircle::Follow(DocObject& record, const Position& at) {
  auto& c = static_cast<CCircle&>(record);
  c.PCircleR.Set(at.x, at.y, at.z);
  c.R = DistanceBetween(c.PCenter, c.PCircleR);
  c.Rim.clear();
}

void CCreateCircle::Finish(DocObject& record, Position& first, Position& second) {
  auto& c = static_cast<CCircle&>(record);
  // The centre holds link slot 1 and the rim point slot 2.
  first.AddLink(CLinkObj{c.ID, 3, 1, 1, 0});
  second.AddLink(CLinkObj{c.ID, 3, 2, 1, 0});
  c.PCenter = HolderCopy(first);
  c.PCircleR = HolderCopy(second);
  c.R = DistanceBetween(c.PCenter, c.PCircleR);
  c.CLabel = first.PLabel + second.PLabel;
  c.Rim.clear();
}

const Position& CCreateCircle::FirstCopy(DocObject& record) const { return static_cast<CCircle&>(record).PCenter; }

void CCreateCircle::RemoveMaking() {
  RemoveRecordOf(Doc.Circles, makingId_, [](DocObject& o) {
    auto& c = static_cast<CCircle&>(o);
    return std::vector<std::string>{c.PCenter.ID, c.PCircleR.ID, c.PCircleR2.ID, c.PCircleR3.ID};
  });
}

// ---- text -------------------------------------------------------------------------------------

void CCreateText::LButtonDown(Position&, Position&, float& X, float& Y, Position&, Position&) {
  SelectPressed = false;
  RunGuarded([&] {
    if (!TextToolDialog) return;
    std::string text;
    if (!TextToolDialog(text)) return;
    const size_t a = text.find_first_not_of(' '), b = text.find_last_not_of(' ');
    text = a == std::string::npos ? std::string() : text.substr(a, b - a + 1);
    host().CanvasSize(CanvasWidth, CanvasHeight);
    auto t = std::make_unique<CText>();
    t->ID = NewObjectId("TT");
    t->Content = text;
    t->TType = 1;
    ApplyTextToolStyle(*t);
    t->PosX = X / static_cast<float>(std::max(1, CanvasWidth)) * 100.0f;
    t->PosY = 100.0f - Y / static_cast<float>(std::max(1, CanvasHeight)) * 100.0f;
    Doc.Texts.Add(std::move(t));
    ActiveTool = 11;
    RefreshControls();
    PushSnapshot();
  });
}

// ---- commands and registration ------------------------------------------------------------------

void mnuDrawPtReset_Click() { LastPointLabel = "0"; }

void RegisterToolCommands() {
  RegisterTool(ToolSlot::Point, [] { return std::make_unique<CCreatePoint>(); });
  RegisterTool(ToolSlot::Line, [] { return std::make_unique<CCreateLine>(); });
  RegisterTool(ToolSlot::Circle, [] { return std::make_unique<CCreateCircle>(); });
  RegisterTool(ToolSlot::Text, [] { return std::make_unique<CCreateText>(); });
  RegisterTool(ToolSlot::Select, [] { return std::make_unique<CSelect>(); });
  RegisterSelectBoxTests();
  RegisterHandler("mnuEditSelAll", mnuEditSelAll_Click);
  RegisterHandler("mnuSelPoints", mnuSelPoints_Click);
  RegisterHandler("mnuSelLines", mnuSelLines_Click);
  RegisterHandler("mnuSelCircles", mnuSelCircles_Click);
  RegisterHandler("mnuSelArcs", mnuSelArcs_Click);
  RegisterHandler("mnuSelPoly", mnuSelPoly_Click);
  RegisterHandler("mnuSelTexts", mnuSelTexts_Click);
  RegisterHandler("mnuDrawPtReset", mnuDrawPtReset_Click);
}

}  // namespace vt
