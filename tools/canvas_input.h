// The canvas's mouse input, without a window system: press, move, release and
// double click of the canvas picDraw, turned into world points (through
// ScreenToWorld and ScreenToRay of render/canvas_input.h) and handed to the
// current tool, or, while a view drag is armed, into a change of the view.
// Also the commands that choose the tool or arm a view drag.
//
// The window calls these handlers with its GL context current and the last
// frame in it; every handler ends with DrawScene and Display. Tests call them
// the same way with an offscreen context.
//
// What lives here and what it may call: the tool registry and the dispatch;
// it reads and writes the frame's globals (document/globals.h), the view
// (render/view_state.h), the selection (document/document.h) and the undo
// stack. The tools themselves (CSelect, CCreatePoint, ...) live in their own
// files and plug in through RegisterTool.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "document/document.h"
#include "geometry/position.h"
#include "tools/ccommand.h"

namespace vt {

// Mouse buttons and shift keys as the canvas reports them.
constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kMiddleButton = 4;
constexpr int kShiftKey = 1;
constexpr int kCtrlKey = 2;
constexpr int kAltKey = 4;

// ---- the tools ------------------------------------------------------------------
// The creation tools are made once at the end of start-up (MakeTools)
// and keep their gesture state between events; the select tool is made anew
// for each event that needs it and dropped at the end of that event.
enum class ToolSlot { Point, Line, Circle, Text, Select, Triangle };
using ToolFactory = std::function<std::unique_ptr<CCommand>()>;

// Installs the factory of a tool (an empty factory removes it). A creation
// tool registered after start-up is made at once.
void RegisterTool(ToolSlot slot, ToolFactory factory);
bool ToolRegistered(ToolSlot slot);
// Makes the four creation tools anew from their factories and forgets the
// current tool and the points of the last press.
void MakeTools();
// The creation tool of a slot as made by MakeTools (nullptr when the slot has
// no tool; for Select always nullptr, as it lives for one event).
CCommand* ToolObject(ToolSlot slot);

// The tool that gets the next call; nullptr when there is none.
extern CCommand* CurrentTool;
// The scene point and pick ray of the last press; the double click uses them.
extern Position LastScenePoint, LastFarPoint, LastNearPoint;

// What the canvas asks of the window: the context menu GraphEdit at a pixel
// of the canvas.
struct CanvasHooks {
  std::function<void(float X, float Y)> showGraphEdit;
};
extern CanvasHooks CanvasWindow;

// Double click: the editing dialog of a kind, opened for one object (the
// object's id is in EditObjectId and EditMode is set when it is called).
using EditDialogOpener = std::function<void(DocObject& object)>;
void RegisterEditDialog(Kind kind, EditDialogOpener opener);
bool EditDialogRegistered(Kind kind);
// Opens the editing dialog of an object of that kind as a double click would
// (EditMode and EditObjectId set first). False when the kind has none.
bool OpenEditDialog(Kind kind, DocObject& object);

// Box selection: whether an object lies in the rectangle between two corners
// given in canvas pixels (any order), with the current GL matrices. Points and
// lines have their tests from the start; other kinds join with theirs.
using BoxSelTest = std::function<bool(DocObject& object, float x1, float y1, float x2, float y2)>;
void RegisterBoxSelTest(Kind kind, BoxSelTest test);

// ---- the handlers -------------------------------------------------------------
// Button is the button of the event (press, release) or the buttons held
// (move), as a sum of kLeftButton, kRightButton, kMiddleButton; Shift likewise
// of kShiftKey, kCtrlKey, kAltKey. X and Y are canvas pixels, Y down.
void picDraw_MouseDown(int Button, int Shift, float X, float Y);
void picDraw_MouseMove(int Button, int Shift, float X, float Y);
void picDraw_MouseUp(int Button, int Shift, float X, float Y);
void picDraw_DblClick();
// The move with no button at (0, 0) that undo and redo send so that the
// current tool redraws.
void SyntheticMouseMove();

// ---- choice of tool and view drags ---------------------------------------------
// Ends whatever a tool has under way: a select drag or box, an armed view
// drag, a line or circle in the making, the hover highlight. Choosing a tool,
// New and Open call it, so no gesture outlives them.
void ResetToolGestures();
void mnuSelect_Click();
void mnuDrawP_Click();
void mnuDrawPFollow_Click();
void mnuDrawSeg_Click();
void mnuDrawLine_Click();
void mnuDrawRay_Click();
void mnuDrawVec_Click();
void mnuDrawCircle_Click();
void mnuDrawText_Click();
// Each arms one view drag and disarms the others; the rotations also set
// RotateMode (1 track ball, 2, 3, 4 about x, y, z).
void mnuViewMove_Click();
void mnuViewZoom_Click();
void mnuViewRotate_Click();
void mnuViewRotX_Click();
void mnuViewRotY_Click();
void mnuViewRotZ_Click();

}  // namespace vt
