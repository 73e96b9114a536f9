// The curve dialog frmF5 without its window: the fields as text, the forms
// and labels of each coordinate system, the confirmation that checks the
// fields and makes or changes the curve, and the command that opens the
// dialog (Draw-Curve, and a double click on a curve). The window installs
// the function that shows the dialog (SetCurveFormOpener); everything here
// runs and is tested without a window system.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "graphs/funcurve.h"

namespace vt {

// ---- forms and labels ----------------------------------------------------------------

// The forms of the list, in list order, for CoordType 1 or 2.
std::vector<std::string> CurveFormNames(int coordType);
// List index 0..3 to FunForm (0 -> 2, 1 -> 3, 2 -> 1, 3 -> 4) and back.
int FunFormOfListIndex(int index);
int ListIndexOfFunForm(int funForm);

// The captions of the fields of a form; an empty caption hides the field.
struct CurveFieldLabels {
  std::string formula1, formula2;  // y(x) | x(u), y(u) | f(x,y)
  std::string minU, maxU, steps;   // the sampled variable
  std::string minV, maxV;          // the second range (implicit, inequality)
};
CurveFieldLabels CurveLabels(int coordType, int funForm);

// ---- the fields ----------------------------------------------------------------------

// An overlay drawn as a line (inverse, derivative, parity).
struct CurveLineOverlay {
  bool show = false;
  std::uint32_t color = 0;
  std::string width = "1";
};
// An overlay of markers (roots, maxima, minima, inflexions).
struct CurveMarkOverlay {
  bool show = false;
  std::uint32_t color = 0;
  std::string size = "3";
  int symbol = 1;  // 1..6, the point symbols
};
// An overlay at positions (tangents, normals, curvature circles).
struct CurvePlaceOverlay {
  bool show = false;
  std::uint32_t color = 0;
  std::string width = "1";
  int posType = CFunCurve::kPosByList;
  std::string positions;  // numbers separated by ";"
  std::string formula;    // the position as a formula
};

// Everything frmF5 shows, as the user typed it.
struct CurveForm {
  int coordType = 1;
  int listIndex = 0;  // index into CurveFormNames
  std::string formula1, formula2;
  std::string minU = "-5", maxU = "5", steps = "100";
  std::string minV = "-5", maxV = "5";
  std::uint32_t lineColor = 0;
  std::string lineWidth = "2";
  int lineStyle = 1;  // 1 Solid, 2 Dash, 3 Dot, 4 Dot Dash

  bool showCurve = true;
  CurveLineOverlay inverse, derivative, parity;
  bool showIntegral = false;
  std::uint32_t intColor = 0;
  std::string intFrom = "0", intTo = "1";
  bool showLength = false;
  std::string lenFrom = "0", lenTo = "1";
  CurveMarkOverlay roots, maxima, minima, inflexions;
  CurvePlaceOverlay tangents, normals, curvature;

  int funForm() const { return FunFormOfListIndex(listIndex); }
};

// The defaults of a new curve (the overlays' colours of a new CFunCurve),
// its x and y ranges those the canvas shows (VisiblePlaneRange).
CurveForm NewCurveForm();

// The x and y ranges of the plane z = 0 that the last drawn frame shows,
// rounded outwards to a tenth of their order of magnitude: in the plane scene
// the canvas's rectangle, in space a square about the point at the canvas's
// centre, as wide as the nearer canvas edge. False before any frame, or
// when the view does not meet the plane.
bool VisiblePlaneRange(float& minX, float& maxX, float& minY, float& maxY);
// The canvas's rectangle on the plane z = 0 in the plane scene, not rounded:
// from the last drawn frame, or before any frame from the camera (looking
// down z). False in space, and when the view does not meet the plane.
bool VisiblePlaneArea(CBox& area);
// The fields of an existing curve.
CurveForm LoadCurveForm(const CFunCurve& curve);

// ---- confirmation ----------------------------------------------------------------------

enum class CurveConfirm {
  Stay,  // a field was refused and a message shown: the dialog stays open
  Done,  // the curve was made or changed: the dialog closes
  Gone,  // the edited curve is no longer there (its message shown): the dialog closes
};

// Confirm of frmF5: every visible field through its filter (the cleaned
// text written back into the form), then the checks of the form with their
// messages, then a new curve (editId "") or the changed curve editId:
// sampled, added, one undo snapshot, the scene rebuilt. A formula that does
// not compile or sample leaves the dialog open after the compiler's message.
// The id of the curve made or changed goes to `id` when given.
CurveConfirm ConfirmCurveForm(CurveForm& form, const std::string& editId, std::string* id = nullptr);

// The messages of the confirmation besides kIllegalData ("Illegal data
// exist.") and kObjectNotExist of geometry/properties.h.
extern const char* const kInputAllParams;   // "Input all parameters please."

// ---- the command ------------------------------------------------------------------------

// The window's function that shows frmF5: editId "" makes a curve, an id
// edits that curve. An empty function removes it.
using CurveFormOpener = std::function<void(const std::string& editId)>;
void SetCurveFormOpener(CurveFormOpener opener);
bool CurveFormAvailable();

// "Curve...": frmF5 for a new curve (the edit state cleared).
void mnuDraw2Curve_Click();
// Registers mnuDraw2Curve (enabled while the opener is there), the double
// click on a curve (frmF5 in edit mode) and the box selection of curves.
void RegisterCurveCommands();

}  // namespace vt
