#include "tools/canvas_input.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/undo.h"
#include "geometry/line.h"
#include "render/canvas_input.h"
#include "render/frame.h"
#include "render/trackball.h"
#include "render/view_state.h"
#include "tools/note_properties.h"
#include "tools/select.h"

namespace vt {

CCommand* CurrentTool = nullptr;
Position LastScenePoint, LastFarPoint, LastNearPoint;
CanvasHooks CanvasWindow;

namespace {

constexpr int kSlotCount = 6;

struct ToolRegistry {
  std::array<ToolFactory, kSlotCount> factories;
  // The creation tools as made at start-up (the Select entry stays empty).
  std::array<std::unique_ptr<CCommand>, kSlotCount> made;
};

ToolRegistry& Tools() {
  static ToolRegistry r;
  return r;
}

size_t SlotIndex(ToolSlot s) { return static_cast<size_t>(s); }

std::map<Kind, EditDialogOpener>& EditDialogs() {
  static std::map<Kind, EditDialogOpener> m;
  return m;
}

bool PointInBox(DocObject& o, float x1, float y1, float x2, float y2) {
  return static_cast<Position&>(o).BoxSel(x1, y1, x2, y2);
}
bool LineInBox(DocObject& o, float x1, float y1, float x2, float y2) {
  auto& l = static_cast<CLine&>(o);
  return l.pBegin.BoxSel(x1, y1, x2, y2) && l.pEnd.BoxSel(x1, y1, x2, y2);
}

std::map<Kind, BoxSelTest>& BoxSelTests() {
  static std::map<Kind, BoxSelTest> m = {{Kind::PT, PointInBox}, {Kind::LN, LineInBox}};
  return m;
}

// The select tool of the event being handled: made on demand, dropped when
// the handler ends (the guard below), so that it never outlives its event.
std::unique_ptr<CCommand> g_eventSelect;

CCommand* NewSelect() {
  const ToolFactory& f = Tools().factories[SlotIndex(ToolSlot::Select)];
  g_eventSelect = f ? f() : nullptr;
  return g_eventSelect.get();
}

struct EventSelectScope {
  ~EventSelectScope() {
    if (g_eventSelect && CurrentTool == g_eventSelect.get()) CurrentTool = nullptr;
    g_eventSelect.reset();
  }
};

CCommand* Made(ToolSlot s) { return Tools().made[SlotIndex(s)].get(); }

// The middle button's pan: on from its press to its release, with the pixel
// of the last move.
bool g_panning = false;
float g_panX = 0, g_panY = 0;

bool ViewDragArmed() { return ViewRotate || ViewZoom || ViewMove; }

// The select tool's own view drags: in space a left drag that starts on empty
// canvas turns the scene (with Shift: pans); in both scenes a right drag pans,
// and a right click that does not drag opens the context menu on release.
enum class FreeDrag { None, Turn, Pan };
FreeDrag g_freeDrag = FreeDrag::None;
bool g_rightPressed = false, g_rightPanning = false;
float g_rightX = 0, g_rightY = 0;
constexpr float kDragSlop = 4;  // pixels a right press may wander and still be a click

void CanvasSize(float& w, float& h) {
  host().CanvasSize(CanvasWidth, CanvasHeight);
  w = static_cast<float>(std::max(1, CanvasWidth));
  h = static_cast<float>(std::max(1, CanvasHeight));
}

// The four points of one event.
struct EventPoints {
  Position viewPoint, scenePoint, farPoint, nearPoint;
  void Fill(float X, float Y) {
    ScreenToWorld(X, Y, viewPoint, scenePoint);
    ScreenToRay(X, Y, farPoint, nearPoint);
  }
};

// Selects every object of the box-selectable kinds that lies between the
// anchor and the current corner and is not selected yet, kind by kind in the
// order of the tag table.
void FinishRubberBand() {
  if (!HaveContext()) return;
  for (Kind k : kAllKinds) {
    auto it = BoxSelTests().find(k);
    if (it == BoxSelTests().end() || !it->second) continue;
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) {
      DocObject* o = c.ItemBase(i);
      if (o->Hide || IsSelected(o->ID)) continue;
      if (!it->second(*o, DragAnchorX, DragAnchorY, DragCurrentX, DragCurrentY)) continue;
      SelectObject(*o);
      o->SetDrawMode(2);
    }
  }
}

void ArmViewDrag(bool& flag) {
  ViewMove = ViewZoom = ViewRotate = false;
  flag = true;
  RefreshControls();
}

void ArmRotation(int mode) {
  RotateMode = mode;
  ArmViewDrag(ViewRotate);
}

// The select gesture is over: no drag, no box, nothing pressed.
void EndSelectGesture() {
  RubberBandOn = false;
  DragMoved = false;
  SelectPressed = false;
}

void ChooseTool(int tool) {
  ResetToolGestures();
  ActiveTool = tool;
  RefreshControls();
}

}  // namespace

// ---- registry -------------------------------------------------------------------

void RegisterTool(ToolSlot slot, ToolFactory factory) {
  ToolRegistry& r = Tools();
  const size_t i = SlotIndex(slot);
  r.factories[i] = std::move(factory);
  if (slot == ToolSlot::Select) return;
  if (CurrentTool && CurrentTool == r.made[i].get()) CurrentTool = nullptr;
  r.made[i] = r.factories[i] ? r.factories[i]() : nullptr;
}

bool ToolRegistered(ToolSlot slot) { return static_cast<bool>(Tools().factories[SlotIndex(slot)]); }

void MakeTools() {
  ToolRegistry& r = Tools();
  CurrentTool = nullptr;
  g_eventSelect.reset();
  for (ToolSlot s : {ToolSlot::Point, ToolSlot::Line, ToolSlot::Circle, ToolSlot::Text, ToolSlot::Triangle}) {
    const size_t i = SlotIndex(s);
    r.made[i] = r.factories[i] ? r.factories[i]() : nullptr;
  }
  LastScenePoint = Position();
  LastFarPoint = Position();
  LastNearPoint = Position();
}

CCommand* ToolObject(ToolSlot slot) { return slot == ToolSlot::Select ? nullptr : Made(slot); }

void RegisterEditDialog(Kind kind, EditDialogOpener opener) {
  if (opener) EditDialogs()[kind] = std::move(opener);
  else EditDialogs().erase(kind);
}

bool EditDialogRegistered(Kind kind) { return EditDialogs().count(kind) > 0; }

bool OpenEditDialog(Kind kind, DocObject& object) {
  auto it = EditDialogs().find(kind);
  if (it == EditDialogs().end()) return false;
  EditMode = true;
  EditObjectId = object.ID;
  it->second(object);
  return true;
}

void RegisterBoxSelTest(Kind kind, BoxSelTest test) {
  if (test) BoxSelTests()[kind] = std::move(test);
  else BoxSelTests().erase(kind);
}

// ---- handlers -------------------------------------------------------------------

void picDraw_MouseDown(int Button, int Shift, float X, float Y) {
  EventSelectScope scope;
  // The middle button pans whatever the tool; the tool never sees it.
  if (Button == kMiddleButton) {
    g_panning = true;
    g_panX = X;
    g_panY = Y;
    return;
  }
  EventPoints e;
  e.Fill(X, Y);
  if (Button == kLeftButton) {
    DragAnchorX = DragCurrentX = X;
    DragAnchorY = DragCurrentY = Y;
    LastX = X;
    LastY = Y;
    FrameCounter = 0;
    if (ActiveTool == 11 && !ViewDragArmed()) RubberBandOn = true;
  }
  // An armed view drag takes the left button for itself.
  const bool viewDrag = Button == kLeftButton && ViewDragArmed();
  if (Button == kRightButton && ActiveTool == 11) {
    g_rightPressed = true;
    g_rightPanning = false;
    g_rightX = X;
    g_rightY = Y;
  }

  if (!viewDrag && (Button == kLeftButton || Button == kRightButton)) {
    switch (ActiveTool) {
      case 1: CurrentTool = Made(ToolSlot::Point); break;
      case 2: CurrentTool = Made(ToolSlot::Line); break;
      case 4: CurrentTool = Made(ToolSlot::Circle); break;
      case 6: CurrentTool = Made(ToolSlot::Text); break;
      case 7: CurrentTool = Made(ToolSlot::Triangle); break;
      case 11:
        if (Button == kLeftButton) CurrentTool = NewSelect();
        break;
      default: break;
    }
    // The right button has no case for the select tool: its press shows the
    // context menu and reaches no tool.
    const bool menuOnly = Button == kRightButton && ActiveTool == 11;
    if (CurrentTool && !menuOnly) {
      if (Button == kLeftButton)
        CurrentTool->LButtonDown(e.viewPoint, e.scenePoint, X, Y, e.farPoint, e.nearPoint);
      else
        CurrentTool->RButtonDown(e.viewPoint, e.scenePoint, X, Y, e.farPoint, e.nearPoint);
    }
    // A press on empty canvas in space starts a turn (a pan with Shift)
    // instead of a selection box.
    if (Button == kLeftButton && ActiveTool == 11 && SceneMode == 3 && RubberBandOn) {
      RubberBandOn = false;
      g_freeDrag = (Shift & kShiftKey) ? FreeDrag::Pan : FreeDrag::Turn;
    }
  }
  // What the tool left in the points of the press.
  LastScenePoint = e.scenePoint;
  LastFarPoint = e.farPoint;
  LastNearPoint = e.nearPoint;
  RedrawScene();
}

void picDraw_MouseMove(int Button, int Shift, float X, float Y) {
  EventSelectScope scope;
  float w = 1, h = 1;
  CanvasSize(w, h);
  if (g_panning && (Button & kMiddleButton)) {
    View.MoveView((X - g_panX) / w, (g_panY - Y) / h);
    g_panX = X;
    g_panY = Y;
    RedrawScene();
    return;
  }
  g_panning = false;
  if (g_rightPressed && (Button & kRightButton)) {
    if (!g_rightPanning && std::abs(X - g_rightX) + std::abs(Y - g_rightY) > kDragSlop) g_rightPanning = true;
    if (g_rightPanning) {
      View.MoveView((X - g_rightX) / w, (g_rightY - Y) / h);
      g_rightX = X;
      g_rightY = Y;
      RedrawScene();
    }
    return;
  }
  if (g_freeDrag != FreeDrag::None && !(Button & kLeftButton)) g_freeDrag = FreeDrag::None;
  if (g_freeDrag != FreeDrag::None) {
    if (g_freeDrag == FreeDrag::Turn) {
      const int keep = RotateMode;
      RotateMode = 1;
      RotateSceneByDrag(LastX, LastY, X, Y, w, h);
      RotateMode = keep;
    } else {
      View.MoveView((X - LastX) / w, (LastY - Y) / h);
    }
    LastX = X;
    LastY = Y;
    RedrawScene();
    return;
  }
  // A move with the left button up while a select gesture is open: its
  // release went elsewhere (a dialog, another window). The gesture ends here,
  // so nothing follows a mouse with no button held.
  if (!(Button & kLeftButton) && (SelectPressed || DragMoved || RubberBandOn)) EndSelectGesture();
  const bool viewDrag = (Button & kLeftButton) && ViewDragArmed();
  if (viewDrag) {
    if (ViewZoom) {
      // Dragging down gives a factor above 1: the view rectangle grows.
      ZoomScale = 1 - (LastY - Y) / h;
      LastX = X;
      LastY = Y;
      View.Zoom(ZoomScale);
    }
    if (ViewRotate) {
      RotateSceneByDrag(LastX, LastY, X, Y, w, h);
      LastX = X;
      LastY = Y;
    }
    if (ViewMove) {
      View.MoveView((X - LastX) / w, (LastY - Y) / h);
      LastX = X;
      LastY = Y;
    }
    RedrawScene();
    return;
  }
  EventPoints e;
  e.Fill(X, Y);
  // The line tool first, then the tool of ActiveTool; the text tool has no
  // case here, so with it the line tool gets the move (and ignores it, as no
  // line is under way).
  CurrentTool = Made(ToolSlot::Line);
  switch (ActiveTool) {
    case 1: CurrentTool = Made(ToolSlot::Point); break;
    case 2: CurrentTool = Made(ToolSlot::Line); break;
    case 4: CurrentTool = Made(ToolSlot::Circle); break;
    case 7: CurrentTool = Made(ToolSlot::Triangle); break;
    case 11: CurrentTool = NewSelect(); break;
    default: break;
  }
  if (CurrentTool) CurrentTool->MouseMove(e.viewPoint, e.scenePoint, X, Y, e.farPoint, e.nearPoint);
  // A move without a button changes at most the objects' looks (the hover)
  // and what the frame draws after them.
  if (Button == 0) {
    ObjectStep();
    DrawScene();
    // Nothing changed: the frame on the canvas stands; the matrices are put
    // back as a frame leaves them, for the next event's depth reads.
    if (SceneKept()) View.Projection(1.0f, 0, 0, 0, 0);
    else Display();
    return;
  }
  RedrawScene();
}

void picDraw_MouseUp(int Button, int Shift, float X, float Y) {
  EventSelectScope scope;
  if (Button == kMiddleButton) {
    g_panning = false;
    return;
  }
  if (Button == kRightButton && g_rightPressed) {
    g_rightPressed = false;
    if (!g_rightPanning && ActiveTool == 11 && CanvasWindow.showGraphEdit) CanvasWindow.showGraphEdit(X, Y);
    g_rightPanning = false;
    return;
  }
  if (Button == kLeftButton) g_freeDrag = FreeDrag::None;
  EventPoints e;
  e.Fill(X, Y);
  // The press chose between a drag (it hit something) and a box (empty
  // canvas); the release ends either.
  const bool box = ActiveTool == 11 && RubberBandOn && !DragMoved;
  const bool wasArmed = ViewDragArmed();
  if (Button == kLeftButton && SelectPressed && !wasArmed) {
    if (ActiveTool == 11) CurrentTool = NewSelect();
    if (CurrentTool) CurrentTool->RButtonDown(e.viewPoint, e.scenePoint, X, Y, e.farPoint, e.nearPoint);
    if (ActiveTool == 11 && DragMoved) PushSnapshot();
  }
  // An armed view drag stays armed for the next drag, until a tool is chosen.
  // In space the turned scene is kept in the angles, as the frame reads them
  // from here on. A plane scene goes back to its angles: a tilted plane would
  // put clicks far from the cursor.
  if (SceneChanged && SceneMode == 3) AnglesFromSceneQuat();
  SceneChanged = false;
  if (box && !wasArmed) {
    DragCurrentX = X;
    DragCurrentY = Y;
    FinishRubberBand();
  }
  if (Button == kLeftButton) EndSelectGesture();
  RedrawScene();
}

void picDraw_DblClick() {
  if (ActiveTool != 11) return;
  // Translucent sectors, ribbons and spheres come last: they often cover
  // the view, and a double click on what lies in or on them opens that.
  static constexpr Kind kOrder[] = {Kind::PT, Kind::LN, Kind::AR, Kind::CR, Kind::LO, Kind::IL, Kind::RG,
                                    Kind::C2, Kind::SF, Kind::SR, Kind::SS, Kind::TT, Kind::NT, Kind::BT,
                                    Kind::AC, Kind::FA, Kind::RB, Kind::SP};
  for (Kind k : kOrder) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) {
      DocObject* o = c.ItemBase(i);
      const bool hit = k == Kind::NT ? NoteUnderPress(static_cast<CNote&>(*o))
                                     : o->Pick(LastScenePoint, LastFarPoint, LastNearPoint);
      if (o->Hide || !hit) continue;
      // The first hit decides; a kind whose dialog is not there yet opens
      // nothing and leaves the edit state alone.
      OpenEditDialog(k, *o);
      return;
    }
  }
}

void SyntheticMouseMove() { picDraw_MouseMove(0, 0, 0, 0); }

// ---- choice of tool ---------------------------------------------------------------

void ResetToolGestures() {
  EndSelectGesture();
  g_freeDrag = FreeDrag::None;
  g_rightPressed = g_rightPanning = false;
  DragAnchorX = DragAnchorY = DragCurrentX = DragCurrentY = 0;
  ViewRotate = ViewZoom = ViewMove = false;
  SceneChanged = false;
  ToolCursorPoint = nullptr;
  for (ToolSlot s : {ToolSlot::Point, ToolSlot::Line, ToolSlot::Circle, ToolSlot::Text, ToolSlot::Triangle})
    if (CCommand* t = Made(s)) t->Cancel();
  CurrentTool = nullptr;
  ResetSelectState();
}

void mnuSelect_Click() { ChooseTool(11); }

void mnuDrawP_Click() {
  PointToolKind = 1;
  ChooseTool(1);
}

void mnuDrawPFollow_Click() {
  const Position* leader = nullptr;
  if (Sel.Points.count() == 1) leader = FindPoint(Sel.Points.Item(1)->ID);
  if (!leader || leader->ptype != 1) {
    host().MsgBox("Please select a free point first.", "Note", MsgButtons::OK, MsgIcon::Exclamation);
    return;
  }
  FollowPointId = leader->ID;
  PointToolKind = 8;
  ChooseTool(1);
}

void mnuDrawSeg_Click() {
  LineToolKind = 1;
  ChooseTool(2);
}
void mnuDrawLine_Click() {
  LineToolKind = 2;
  ChooseTool(2);
}
void mnuDrawRay_Click() {
  LineToolKind = 3;
  ChooseTool(2);
}
void mnuDrawVec_Click() {
  LineToolKind = 4;
  ChooseTool(2);
}
void mnuDrawCircle_Click() { ChooseTool(4); }
void mnuDrawText_Click() { ChooseTool(6); }

void mnuViewMove_Click() { ArmViewDrag(ViewMove); }
void mnuViewZoom_Click() { ArmViewDrag(ViewZoom); }
void mnuViewRotate_Click() { ArmRotation(1); }
void mnuViewRotX_Click() { ArmRotation(2); }
void mnuViewRotY_Click() { ArmRotation(3); }
void mnuViewRotZ_Click() { ArmRotation(4); }

}  // namespace vt
