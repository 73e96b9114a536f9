// The select tool (tool 11): what lies under the mouse, the selection, the
// drag of what is selected with the repropagation of everything that hangs on
// it, hover highlighting, and the selection commands of the Edit menu.
//
// A CSelect lives for one mouse event (the canvas makes one per event), so all
// that a gesture remembers lies in the globals below, next to the frame's
// (DragMoved, RubberBandOn, SelectPressed, DragAnchorX... in
// document/globals.h).
//
// Draw modes: 1 normal (a point that can be dragged), 2 selected, 3 selected
// under the mouse, 4 under the mouse, 5 a constructed point.
#pragma once

#include <functional>
#include <string>

#include "geometry/region.h"
#include "tools/ccommand.h"

namespace vt {

class CButton;
class CAniControl;
class CAnimation;

// ---- the state of a gesture --------------------------------------------------------
extern bool DragScreenHit;        // the press hit an item anchored to the screen
extern Position DragStartPos;     // where the drag is measured from (z 0 in a plane scene)
extern float DragPrevDX, DragPrevDY, DragPrevDZ;  // displacement already applied
extern std::string PickedPointID; // the point under the press
extern float DragPrevPctX, DragPrevPctY;          // mouse in per cent of the canvas, y from the bottom
extern float DragLastY;           // mouse Y of the previous move (vertical extension points)
extern CRegion WorkPlane;         // the horizontal plane of a drag in space
extern Position WorkPlaneStart;   // the picked point at the press, in space
extern bool CoordGuideActive;     // guide lines for the point in hand

// The most points one drag moves.
constexpr int kMaxDragPoints = 500;
extern const char* const kTooManyDragPoints;

// Puts the gesture state back to the start and takes the hover highlight off
// (the frame's globals are reset by ResetGlobals).
void ResetSelectState();

// The draw mode an object shows when it is neither selected nor under the
// mouse: 1, and for a point 5 unless it is of a kind the user drags (ptype 1,
// 7, 8, 11).
int NormalDrawMode(const DocObject& o);

// ---- what later kinds add to the select tool -----------------------------------------
// Items anchored to the screen whose behaviour arrives with their own module.
// Unset hooks make the select tool pass the item over.
struct SelectHooks {
  // A press on the playing controls of a player (before anything else).
  std::function<void(CAniControl&, float pctX, float pctY)> playerPress;
  // A button's face (PickMove), its kind (BTType) and its Click.
  std::function<bool(CButton&, float pctX, float pctY)> buttonFace;
  std::function<int(const CButton&)> buttonType;
  std::function<void(CButton&)> buttonClick;
  // A track of a player under the mouse.
  std::function<bool(CAnimation&, float pctX, float pctY)> trackPick;
  // The part of a player's panel that selects it (without its playing
  // controls); unset, the whole panel.
  std::function<bool(CAniControl&, float pctX, float pctY)> playerPanel;
  // A drag of the screen items: true when a player's knob took it.
  std::function<bool(float pctX, float pctY)> knobDrag;
};
extern SelectHooks SelectToolHooks;

// ---- the tool ----------------------------------------------------------------------------
class CSelect : public CCommand {
 public:
  void RButtonDown(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                   Position& nearPoint) override;
  void MouseMove(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                 Position& nearPoint) override;
  void LButtonDown(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                   Position& nearPoint) override;
};

// One drag step with a displacement (DX, DY) from the start of the drag: the
// moved points, their copies and dependants, the repropagation. Used by
// MouseMove; exposed for the benchmark. Throws RunTimeError when more than
// kMaxDragPoints points would move (nothing moved then).
void DragSelectionTo(float DX, float DY, float mouseY);

// The box tests of the kinds the select tool adds to the rubber band.
void RegisterSelectBoxTests();

// ---- selection commands -------------------------------------------------------------------
// 12 all lines, 14 all circles, 15 all arcs, 16 all texts, 17 everything, 18
// nothing, 19 all points, 20 all regions. A kind code selects every visible
// object of the kind not yet selected, as a click does.
void SelectKind(int code);

void mnuEditSelAll_Click();
void mnuSelPoints_Click();
void mnuSelLines_Click();
void mnuSelCircles_Click();
void mnuSelArcs_Click();
void mnuSelPoly_Click();
void mnuSelTexts_Click();

}  // namespace vt
