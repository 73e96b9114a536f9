#include "tools/select.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>
#include <vector>

#include "animation/player_objects.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "geometry/extension.h"
#include "geometry/geom.h"
#include "geometry/on_object.h"
#include "geometry/propagation.h"
#include "render/reference.h"
#include "render/frame.h"
#include "tools/canvas_input.h"
#include "tools/screen_items.h"

namespace vt {

bool DragScreenHit = false;
Position DragStartPos;
float DragPrevDX = 0, DragPrevDY = 0, DragPrevDZ = 0;
std::string PickedPointID;
float DragPrevPctX = 0, DragPrevPctY = 0;
float DragLastY = 0;
CRegion WorkPlane;
Position WorkPlaneStart;
bool CoordGuideActive = false;
SelectHooks SelectToolHooks;

const char* const kTooManyDragPoints = "At most 500 points can be moved at once.";

namespace {

// The ray of the last release, for the box tests (a defining point under the
// mouse keeps its object out of the box).
Position g_releaseFar, g_releaseNear;
bool g_releaseRayValid = false;

void SetWorkPlaneZ(float z) {
  if (WorkPlane.Points.size() != 4) {
    WorkPlane.Points.assign(4, Position());
    WorkPlane.Points[0].Set(-1000, -1000, 0);
    WorkPlane.Points[1].Set(1000, -1000, 0);
    WorkPlane.Points[2].Set(1000, 1000, 0);
    WorkPlane.Points[3].Set(-1000, 1000, 0);
  }
  for (Position& p : WorkPlane.Points) p.z = z;
}

bool ViewToolArmed() { return ViewRotate || ViewZoom || ViewMove; }
bool SpaceScene() { return SceneMode == 3; }

float PctX(float X) { return X / static_cast<float>(std::max(1, CanvasWidth)) * 100.0f; }
float PctY(float Y) { return 100.0f - Y / static_cast<float>(std::max(1, CanvasHeight)) * 100.0f; }

bool InRect(float px, float py, float x0, float x1, float y0, float y1) {
  return px >= x0 && px <= x1 && py >= y0 && py <= y1;
}
// Texts, notes and players: 15 by 3 per cent from their position.
bool PanelHit(float posX, float posY, float px, float py) { return InRect(px, py, posX, posX + 15, posY, posY + 3); }
// A button's grip, and its face where its kind tells it.
bool ButtonHit(CButton& b, float px, float py) {
  if (InRect(px, py, b.PosX, b.PosX + 0.8f, b.PosY, b.PosY + 5)) return true;
  return SelectToolHooks.buttonFace && SelectToolHooks.buttonFace(b, px, py);
}

// Kinds whose selected objects a press takes out of the selection.
bool DeselectsOnPress(Kind k) {
  return k == Kind::RG || k == Kind::SF || k == Kind::SR || k == Kind::SS || k == Kind::FA || k == Kind::RB ||
         k == Kind::SP;
}

bool EndUnderMouse(const CLine& l, const Position& farPoint, const Position& nearPoint) {
  return l.pBegin.Pick(nearPoint, farPoint) || l.pEnd.Pick(nearPoint, farPoint);
}

// ---- the press -------------------------------------------------------------------------

// The object a press added to the selection. Clicks gather a selection for
// the commands; a drag that starts on an object not selected before moves
// that object alone, so the selection is narrowed to it when the mouse moves.
DocObject* g_freshPick = nullptr;
void ClearSelection();

// Step 5: the world objects in their hit order. True when the event is
// finished (an object was selected).
bool PressWorld(Position& scenePoint, Position& farPoint, Position& nearPoint) {
  static constexpr Kind kHitOrder[] = {Kind::PT, Kind::LN, Kind::AR, Kind::CR, Kind::LO, Kind::IL, Kind::RG,
                                       Kind::C2, Kind::SF, Kind::SR, Kind::SS, Kind::FA, Kind::RB, Kind::SP};
  const bool space = SpaceScene();
  for (Kind k : kHitOrder) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) {
      DocObject* o = c.ItemBase(i);
      if (o->Hide || !o->Pick(scenePoint, farPoint, nearPoint)) continue;
      // A line is taken only when neither of its ends is under the mouse too.
      if (k == Kind::LN && EndUnderMouse(static_cast<CLine&>(*o), farPoint, nearPoint)) continue;
      DragMoved = true;
      if (k == Kind::PT) {
        auto* p = static_cast<Position*>(o);
        if (space) {
          SetWorkPlaneZ(p->z);
          WorkPlaneStart = Position(p->x, p->y, p->z);
        }
        PickedPointID = p->ID;
        if (ShowCoordLines) CoordGuideActive = true;
        DragStartPos = Position(p->x, p->y, space ? p->z : 0.0f);
      }
      if (IsSelected(o->ID)) {
        // Regions and surfaces leave the selection on a press; lines, arcs
        // and circles stay selected, their points being the usual handle.
        if (DeselectsOnPress(k)) {
          o->SetDrawMode(1);
          DeselectObject(*o);
        }
        continue;
      }
      o->SetDrawMode(2);
      SelectObject(*o);
      g_freshPick = o;
      return true;
    }
    if (DragMoved) break;
  }
  return false;
}

// Step 6: texts, notes, buttons, players and tracks, to select them. True
// when the event is finished.
bool PressScreenItems(float px, float py) {
  auto take = [&](DocObject& o) {
    DragMoved = true;
    DragScreenHit = true;
    if (IsSelected(o.ID)) return false;
    o.Selected = true;
    SelectObject(o);
    return true;
  };
  for (CText* t : Doc.Texts)
    if (!t->Hide && PanelHit(t->PosX, t->PosY, px, py) && take(*t)) return true;
  for (CNote* n : Doc.Notes)
    if (!n->Hide && PanelHit(n->PosX, n->PosY, px, py) && take(*n)) return true;
  for (CButton* b : Doc.Buttons) {
    if (b->Hide || !ButtonHit(*b, px, py)) continue;
    if (IsSelected(b->ID)) {
      // A selected button leaves the selection, as regions do.
      DragMoved = true;
      DragScreenHit = true;
      b->Selected = false;
      DeselectObject(*b);
      continue;
    }
    if (take(*b)) return true;
  }
  for (CAniControl* c : Doc.AniCtrls)
    if (!c->Hide &&
        (SelectToolHooks.playerPanel ? SelectToolHooks.playerPanel(*c, px, py) : PanelHit(c->PosX, c->PosY, px, py)) &&
        take(*c))
      return true;
  if (SelectToolHooks.trackPick)
    for (CAniControl* c : Doc.AniCtrls)
      for (auto& track : c->anis)
        if (SelectToolHooks.trackPick(*track, px, py)) {
          DragMoved = true;
          DragScreenHit = true;
          track->Selected = true;
          return true;
        }
  return false;
}

void Press(Position& scenePoint, float X, float Y, Position& farPoint, Position& nearPoint) {
  host().CanvasSize(CanvasWidth, CanvasHeight);
  DragMoved = false;
  DragScreenHit = false;
  RubberBandOn = true;
  SelectPressed = true;
  g_freshPick = nullptr;
  DragPrevDX = DragPrevDY = DragPrevDZ = 0;
  DragStartPos = Position(scenePoint.x, scenePoint.y, 0);
  WorkPlaneStart = DragStartPos;
  PickedPointID.clear();
  DragLastY = Y;
  g_releaseRayValid = false;
  if (SpaceScene()) SetWorkPlaneZ(0);
  const float px = PctX(X), py = PctY(Y);

  // Players first: their playing controls act on the press.
  if (SelectToolHooks.playerPress)
    for (CAniControl* c : Doc.AniCtrls) SelectToolHooks.playerPress(*c, px, py);
  // Every screen item under the mouse is flagged.
  auto flag = [&](DocObject& o) {
    DragPrevPctX = px;
    DragPrevPctY = py;
    o.Selected = true;
  };
  for (CText* t : Doc.Texts)
    if (!t->Hide && PanelHit(t->PosX, t->PosY, px, py)) flag(*t);
  for (CNote* n : Doc.Notes)
    if (!n->Hide && PanelHit(n->PosX, n->PosY, px, py)) flag(*n);
  // The face hook marks the face it is pressed on (Status), which is how a
  // press on a face is told from one on empty canvas.
  bool onFace = false;
  for (CButton* b : Doc.Buttons) {
    if (b->Hide) continue;
    b->Status = false;
    if (ButtonHit(*b, px, py)) flag(*b);
    onFace = onFace || b->Status;
  }

  const bool view = ViewToolArmed();
  if (!view && (PressWorld(scenePoint, farPoint, nearPoint) || (!DragMoved && PressScreenItems(px, py)))) {
    RubberBandOn = false;
    return;
  }
  // Only a press on empty canvas clears the selection and opens a box; a
  // button's face keeps the selection for the button's commands, and a view
  // drag leaves it alone.
  const bool empty = !DragMoved && !onFace && !view;
  if (empty) {
    SelectKind(18);
    CoordGuideActive = false;
  }
  RubberBandOn = empty;
}

// ---- the drag ----------------------------------------------------------------------------

bool Draggable(const Position& p) { return p.ptype == 1 || p.ptype == 7 || p.ptype == 8 || p.ptype == 11; }

std::string FirstParent(const Position& p) {
  if (!p.Parent.empty()) return p.Parent.front();
  return p.LKID;
}

// The defining points a selected object contributes in a plane scene.
void DefiningOfSelected(std::vector<std::vector<std::string>>& groups) {
  for (CLine* s : Sel.Lines)
    if (const CLine* l = Doc.Lines.FindById(s->ID)) groups.push_back({l->pBegin.ID, l->pEnd.ID});
  for (CCircle* s : Sel.Circles) {
    const CCircle* c = Doc.Circles.FindById(s->ID);
    if (!c) continue;
    if (c->CType == 1) groups.push_back({c->PCenter.ID, c->PCircleR.ID});
    else if (c->CType == 2 || c->CType == 4) groups.push_back({c->PCircleR.ID, c->PCircleR2.ID, c->PCircleR3.ID});
  }
  for (CArc* s : Sel.Arcs) {
    const CArc* a = Doc.Arcs.FindById(s->ID);
    if (!a) continue;
    // A three-point arc rests on its middle point; the others on their centre.
    if (a->AType == 1 || a->AType == 3) groups.push_back({a->pBegin.ID, a->PCenter.ID, a->pEnd.ID});
    else if (a->AType == 2) groups.push_back({a->pBegin.ID, a->pMid.ID, a->pEnd.ID});
  }
  for (CRegion* s : Sel.Regions) {
    const CRegion* g = Doc.Regions.FindById(s->ID);
    if (!g) continue;
    std::vector<std::string> corners;
    for (const Position& c : g->Points) corners.push_back(c.ID);
    groups.push_back(std::move(corners));
  }
}

// Step 4: the ids of the points this drag moves, each once.
std::vector<std::string> BuildMoveList() {
  std::vector<std::string> ids;
  std::unordered_set<std::string> listed;
  auto add = [&](const std::string& id) {
    if (id.empty() || listed.count(id)) return;
    if (static_cast<int>(ids.size()) >= kMaxDragPoints) throw RunTimeError(kTooManyDragPoints);
    listed.insert(id);
    ids.push_back(id);
  };
  for (Position* s : Sel.Points) {
    const Position* p = FindPoint(s->ID);
    if (!p) continue;
    if (Draggable(*p) || (p->ptype == 12 && !IsSelected(FirstParent(*p)))) add(p->ID);
  }
  if (SpaceScene()) return ids;
  std::vector<std::vector<std::string>> groups;
  DefiningOfSelected(groups);
  for (const auto& group : groups)
    for (const std::string& id : group) {
      const Position* p = FindPoint(id);
      if (!p) continue;
      bool ok = p->ptype == 1 || p->ptype == 7;
      if (p->ptype == 8) {
        const std::string parent = FirstParent(*p);
        ok = !IsSelected(parent) && std::find(group.begin(), group.end(), parent) == group.end();
      }
      if (ok) add(id);
    }
  return ids;
}

// A point on carriers that move as a whole with it: every carrier's defining
// points are among the moved ones.
bool CarriersMoveAlong(const Position& p, const std::unordered_set<std::string>& listed) {
  if (p.Parent.empty()) return false;
  for (const std::string& parentId : p.Parent) {
    CollectionBase* coll = Doc.OfId(parentId);
    const int i = coll ? coll->FindId(parentId) : 0;
    if (!i) return false;
    const std::vector<std::string> defining = DefiningPointIds(*coll->ItemBase(i));
    if (defining.empty()) return false;
    for (const std::string& id : defining)
      if (!listed.count(id)) return false;
  }
  return true;
}

void Shift(Position& p, float dx, float dy) {
  p.Set(p.x + dx, p.y + dy, p.z);
  p.UpdateLinked(dx, dy, 0, 0);
}

void DragFree(Position& p, float incX, float incY, const std::unordered_set<std::string>& listed) {
  Shift(p, incX, incY);
  // Following points go with their leader.
  for (const std::string& childId : p.Child) {
    if (listed.count(childId)) continue;
    Position* c = FindPoint(childId);
    if (!c || c->ptype != 8 || c->Parent.empty() || c->Parent.front() != p.ID) continue;
    Shift(*c, incX, incY);
    RefreshExtensionOf(*c);
  }
  RefreshExtensionOf(p);
}

void DragOnCarrier(Position& p, float incX, float incY, float DX, float DY,
                   const std::unordered_set<std::string>& listed) {
  const bool space = SpaceScene();
  if (p.Parent.empty() || (!space && CarriersMoveAlong(p, listed))) {
    Shift(p, incX, incY);
    RefreshExtensionOf(p);
    return;
  }
  // The point in hand follows the mouse itself; others the increment.
  Position target(p.x + incX, p.y + incY, p.z);
  if (p.ID == PickedPointID) {
    target = space ? Position(WorkPlaneStart.x + DX, WorkPlaneStart.y + DY, WorkPlaneStart.z)
                   : Position(DragStartPos.x + DX, DragStartPos.y + DY, p.z);
  }
  const float ox = p.x, oy = p.y, oz = p.z;
  if (!ConstrainToParent(p, p.Parent.front(), target)) p.Set(target.x, target.y, target.z);
  const float dx = p.x - ox, dy = p.y - oy, dz = p.z - oz;
  if (dx != 0 || dy != 0 || dz != 0) p.UpdateLinked(dx, dy, dz, 0);
  RefreshExtensionOf(p);
}

// A vertical extension point rises or sinks by 0.05 in z per event.
void DragVertical(Position& p, bool up) {
  const float step = up ? 0.05f : -0.05f;
  const Position* base = FindPoint(p.LKID);
  const CRegion* g = Doc.Regions.FindById(p.LKID2);
  Position unit, far;
  if (!base || !g || !VerticalExtension(*g, *base, 1.0f, unit, far)) {
    p.Set(p.x, p.y, p.z + step);
    p.UpdateLinked(0, 0, step, 0);
    return;
  }
  // The height along the normal that gives the step in z.
  const float uz = unit.z - base->z;
  p.Para1 += uz > 1e-6f ? step / uz : step;
  RefreshExtensionPoint(p);
}

// A directed extension point: the increment turns into its angle and distance
// from the end of its base, and it is recomputed from them.
void DragDirected(Position& p, float incX, float incY, const std::unordered_set<std::string>& listed) {
  const Position* start = FindPoint(p.LKID);
  const Position* end = FindPoint(p.LKID2);
  if (!start || !end || (start->x == end->x && start->y == end->y)) {
    DragFree(p, incX, incY, listed);
    return;
  }
  const Position q(p.x + incX, p.y + incY, p.z);
  p.Para1 = AngleOfSegment(q, *end) - AngleOfSegment(*end, *start);
  p.Para2 = std::hypot(q.x - end->x, q.y - end->y);
  if (!RefreshExtensionPoint(p)) Shift(p, incX, incY);
}

void MoveScreenItems(float px, float py) {
  auto move = [&](float& x, float& y) {
    x += px - DragPrevPctX;
    y += py - DragPrevPctY;
  };
  for (CAniControl* s : Sel.AniCtrls)
    if (CAniControl* c = Doc.AniCtrls.FindById(s->ID)) move(c->PosX, c->PosY);
  for (CText* s : Sel.Texts)
    if (CText* t = Doc.Texts.FindById(s->ID)) move(t->PosX, t->PosY);
  for (CNote* s : Sel.Notes)
    if (CNote* n = Doc.Notes.FindById(s->ID)) move(n->PosX, n->PosY);
  for (CButton* s : Sel.Buttons)
    if (CButton* b = Doc.Buttons.FindById(s->ID)) move(b->PosX, b->PosY);
  DragPrevPctX = px;
  DragPrevPctY = py;
}

void Drag(const Position& scenePoint, float X, float Y, const Position& farPoint, const Position& nearPoint) {
  float DX, DY;
  if (SpaceScene()) {
    Position q;
    if (LineRegion(nearPoint, farPoint, WorkPlane, q) != 1) return;  // the ray runs along the plane
    // With snap on, the point in hand goes from node to node of the grid on
    // its plane of motion (its height stays).
    if (SnapToGrid && !PickedPointID.empty()) {
      const Position node = SnappedToGrid(q);
      q.x = node.x;
      q.y = node.y;
    }
    DX = q.x - WorkPlaneStart.x;
    DY = q.y - WorkPlaneStart.y;
  } else {
    // With snap on, the point in hand goes from grid node to grid node.
    const Position to = SnapToGrid && !PickedPointID.empty() ? SnappedToGrid(scenePoint) : scenePoint;
    DX = to.x - DragStartPos.x;
    DY = to.y - DragStartPos.y;
  }
  if (DragScreenHit) {
    if (SelectToolHooks.knobDrag && SelectToolHooks.knobDrag(PctX(X), PctY(Y))) return;
    MoveScreenItems(PctX(X), PctY(Y));
    return;
  }
  if (g_freshPick && (DX != 0 || DY != 0)) {
    DocObject* fresh = g_freshPick;
    g_freshPick = nullptr;
    ClearSelection();
    fresh->SetDrawMode(2);
    SelectObject(*fresh);
  }
  try {
    DragSelectionTo(DX, DY, Y);
  } catch (const RunTimeError& e) {
    // The gesture ends here; nothing has moved.
    RubberBandOn = false;
    DragMoved = false;
    SelectPressed = false;
    host().MsgBox(e.what(), "Error", MsgButtons::OK, MsgIcon::Critical);
  }
}

// ---- hover ---------------------------------------------------------------------------------

constexpr Kind kHoverOrder[] = {Kind::PT, Kind::LN, Kind::AR, Kind::CR, Kind::RG, Kind::C2, Kind::SF,
                                Kind::SR, Kind::SS, Kind::LO, Kind::IL, Kind::FA, Kind::RB, Kind::SP};

void ClearHover() {
  for (Kind k : kHoverOrder) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) {
      DocObject* o = c.ItemBase(i);
      if (o->DrawMode == 4) o->SetDrawMode(NormalDrawMode(*o));
      else if (o->DrawMode == 3) o->SetDrawMode(2);
    }
  }
}

void Hover(Position& scenePoint, Position& farPoint, Position& nearPoint) {
  for (Kind k : kHoverOrder) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) {
      DocObject* o = c.ItemBase(i);
      const bool hit = !o->Hide && o->Pick(scenePoint, farPoint, nearPoint);
      if (IsSelected(o->ID)) {
        o->SetDrawMode(hit ? 3 : 2);
      } else if (hit) {
        ClearHover();
        o->SetDrawMode(4);
        return;
      } else {
        o->SetDrawMode(NormalDrawMode(*o));
      }
    }
  }
}

// ---- box tests -------------------------------------------------------------------------------

bool UnderRelease(const Position& p) { return g_releaseRayValid && !p.ID.empty() && p.Pick(g_releaseNear, g_releaseFar); }

bool LineInBox(DocObject& o, float x1, float y1, float x2, float y2) {
  auto& l = static_cast<CLine&>(o);
  return !UnderRelease(l.pBegin) && !UnderRelease(l.pEnd) && l.BoxSel(x1, y1, x2, y2);
}
bool CircleInBox(DocObject& o, float x1, float y1, float x2, float y2) {
  auto& c = static_cast<CCircle&>(o);
  for (const Position* p : {&c.PCenter, &c.PCircleR, &c.PCircleR2, &c.PCircleR3})
    if (UnderRelease(*p)) return false;
  return c.BoxSel(x1, y1, x2, y2);
}
bool ArcInBox(DocObject& o, float x1, float y1, float x2, float y2) {
  auto& a = static_cast<CArc&>(o);
  for (const Position* p : {&a.pBegin, &a.PCenter, &a.pEnd, &a.pMid})
    if (UnderRelease(*p)) return false;
  return a.BoxSel(x1, y1, x2, y2);
}
bool RegionInBox(DocObject& o, float x1, float y1, float x2, float y2) {
  return static_cast<CRegion&>(o).BoxSel(x1, y1, x2, y2);
}
bool CurveInBox(DocObject& o, float x1, float y1, float x2, float y2) {
  return static_cast<CFunCurve&>(o).BoxSel(x1, y1, x2, y2);
}

void ClearSelection() {
  for (Kind k : kAllKinds) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) {
      DocObject* o = c.ItemBase(i);
      o->Selected = false;
      if (o->DrawMode == 2 || o->DrawMode == 3 || o->DrawMode == 4) o->SetDrawMode(NormalDrawMode(*o));
    }
  }
  for (CAniControl* c : Doc.AniCtrls)
    for (auto& track : c->anis) track->Selected = false;
  for (Kind k : kAllKinds) Sel.Of(k).Clear();
}

void SelectAllOf(Kind k) {
  CollectionBase& c = Doc.Of(k);
  for (int i = 1; i <= c.count(); ++i) {
    DocObject* o = c.ItemBase(i);
    if (o->Hide || IsSelected(o->ID)) continue;
    o->SetDrawMode(2);
    SelectObject(*o);
  }
}

}  // namespace

// ---- public ------------------------------------------------------------------------------------

void ResetSelectState() {
  g_freshPick = nullptr;
  ClearHover();
  DragScreenHit = false;
  DragStartPos = Position();
  DragPrevDX = DragPrevDY = DragPrevDZ = 0;
  PickedPointID.clear();
  DragPrevPctX = DragPrevPctY = 0;
  DragLastY = 0;
  SetWorkPlaneZ(0);
  WorkPlaneStart = Position();
  CoordGuideActive = false;
  g_releaseRayValid = false;
}

int NormalDrawMode(const DocObject& o) {
  if (o.Tag() != "PT") return 1;
  const auto& p = static_cast<const Position&>(o);
  return Draggable(p) ? 1 : 5;
}

void DragSelectionTo(float DX, float DY, float mouseY) {
  const std::vector<std::string> ids = BuildMoveList();
  const std::unordered_set<std::string> listed(ids.begin(), ids.end());
  const bool space = SpaceScene();
  const float incX = DX - DragPrevDX, incY = DY - DragPrevDY;
  const bool up = mouseY < DragLastY;
  {
    PropagationTrace trace;
    for (const std::string& id : ids) {
      // In space only the point in hand moves, in its horizontal plane.
      if (space && id != PickedPointID) continue;
      Position* p = FindPoint(id);
      if (!p) continue;
      switch (p->ptype) {
        case 7: DragOnCarrier(*p, incX, incY, DX, DY, listed); break;
        case 12: DragVertical(*p, up); break;
        case 11: DragDirected(*p, incX, incY, listed); break;
        default: DragFree(*p, incX, incY, listed); break;
      }
    }
    DragLastY = mouseY;
    DragPrevDX = DX;
    DragPrevDY = DY;
    DragPrevDZ = 0;
    RepropagateAfterMove();
  }
  ObjectStep();
}

void CSelect::LButtonDown(Position&, Position& scenePoint, float& X, float& Y, Position& farPoint,
                          Position& nearPoint) {
  RunGuarded([&] { Press(scenePoint, X, Y, farPoint, nearPoint); });
}

void CSelect::MouseMove(Position&, Position& scenePoint, float& X, float& Y, Position& farPoint, Position& nearPoint) {
  ToolCursorPoint = nullptr;
  RunGuarded([&] {
    if (SelectPressed && DragMoved) {
      Drag(scenePoint, X, Y, farPoint, nearPoint);
    } else if (RubberBandOn) {
      DragCurrentX = X;
      DragCurrentY = Y;
    } else if (!SelectPressed) {
      Hover(scenePoint, farPoint, nearPoint);
    }
  });
}

void CSelect::RButtonDown(Position&, Position&, float& X, float& Y, Position& farPoint, Position& nearPoint) {
  RubberBandOn = false;
  SelectPressed = false;
  g_releaseFar = farPoint;
  g_releaseNear = nearPoint;
  g_releaseRayValid = true;
  RunGuarded([&] {
    // A button is clicked on release, while the mouse is still over its face.
    if (!SelectToolHooks.buttonFace) return;
    host().CanvasSize(CanvasWidth, CanvasHeight);
    const float px = PctX(X), py = PctY(Y);
    CButton* last = nullptr;
    for (CButton* b : Doc.Buttons) {
      if (!SelectToolHooks.buttonFace(*b, px, py)) continue;
      if (SelectToolHooks.buttonType && SelectToolHooks.buttonType(*b) == 3) {
        if (SelectToolHooks.buttonClick) SelectToolHooks.buttonClick(*b);
        return;
      }
      last = b;
    }
    if (last && SelectToolHooks.buttonClick) SelectToolHooks.buttonClick(*last);
  });
}

void RegisterSelectBoxTests() {
  RegisterBoxSelTest(Kind::LN, LineInBox);
  RegisterBoxSelTest(Kind::CR, CircleInBox);
  RegisterBoxSelTest(Kind::AR, ArcInBox);
  RegisterBoxSelTest(Kind::RG, RegionInBox);
  RegisterBoxSelTest(Kind::C2, CurveInBox);
}

void SelectKind(int code) {
  switch (code) {
    case 12: SelectAllOf(Kind::LN); break;
    case 14: SelectAllOf(Kind::CR); break;
    case 15: SelectAllOf(Kind::AR); break;
    case 16: SelectAllOf(Kind::TT); break;
    case 17:
      for (Kind k : kAllKinds) SelectAllOf(k);
      break;
    case 18: ClearSelection(); break;
    case 19: SelectAllOf(Kind::PT); break;
    case 20: SelectAllOf(Kind::RG); break;
    default: break;
  }
}

void mnuEditSelAll_Click() {
  SelectKind(17);
  RedrawScene();
}
void mnuSelPoints_Click() {
  SelectKind(19);
  RedrawScene();
}
void mnuSelLines_Click() {
  SelectKind(12);
  RedrawScene();
}
void mnuSelCircles_Click() {
  SelectKind(14);
  RedrawScene();
}
void mnuSelArcs_Click() {
  SelectKind(15);
  RedrawScene();
}
void mnuSelPoly_Click() {
  SelectKind(20);
  RedrawScene();
}
void mnuSelTexts_Click() {
  SelectKind(16);
  RedrawScene();
}

}  // namespace vt
