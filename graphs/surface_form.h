// The surface dialog frmF6 without its window: the forms of each system, the
// captions of the fields, the fields as text, the confirmation that checks
// them and makes or changes the CSurface, the texture file choice, and the
// command that opens the dialog ("Surface...", and a double click on a
// surface). The window installs the function that shows the dialog.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "graphs/look_fields.h"
#include "graphs/surface.h"

namespace vt {

// The forms of the list, in list order: GraphType 1 (curve) or 2, CoordType
// 3, 4 or 5.
std::vector<std::string> SurfaceFormNames(int graphType, int coordType);
// List index to FunForm: a curve 0 -> 2, 1 -> 3; a surface 0 -> 2, 1 -> 3,
// 2 -> 1. And back.
int SurfaceFunFormOfListIndex(int graphType, int index);
int SurfaceListIndexOfFunForm(int graphType, int funForm);

// The captions of a form's fields; an empty caption hides the field. The
// variable names name the ranges in the messages.
struct SurfaceFieldLabels {
  std::string formula1, formula2, formula3;
  std::string varU, varV, varW;  // "u", "x", "a", ...; empty: no such range
};
SurfaceFieldLabels SurfaceLabels(int graphType, int coordType, int funForm);

// Everything frmF6 shows, as the user typed it.
struct SurfaceForm : SurfaceLookFields {
  int graphType = 2;  // 1 curve, 2 surface
  int coordType = 3;  // 3 Cartesian, 4 cylindrical, 5 spherical
  int listIndex = 0;
  std::string formula1, formula2, formula3;
  std::string minU = "-5", maxU = "5", stepsU = "20";
  std::string minV = "-5", maxV = "5", stepsV = "20";
  std::string minW = "-5", maxW = "5", stepsW = "20";
  bool showContour = false, showVector = false, showColormap = false;
  std::string contourLevel = "10";
  // The clip box, and the places (x, y) of tangent planes and normals of an
  // explicit Cartesian surface as "x,y" pairs parted by ";".
  bool clip = false;
  std::string clipMinX = "-5", clipMaxX = "5", clipMinY = "-5", clipMaxY = "5", clipMinZ = "-5", clipMaxZ = "5";
  bool showTangent = false, showNormal = false;
  std::string tangentAt, normalAt;

  int funForm() const { return SurfaceFunFormOfListIndex(graphType, listIndex); }
};

SurfaceForm NewSurfaceForm();
SurfaceForm LoadSurfaceForm(const CSurface& surface);

enum class SurfaceConfirm { Stay, Done, Gone };

// Confirm of frmF6: the visible fields through their filters (the cleaned
// texts written back), the checks with their messages, then a new object
// ("C3" or "SF") or the changed object editId: sampled, added, one undo
// snapshot, the scene rebuilt. The id goes to `id` when given.
SurfaceConfirm ConfirmSurfaceForm(SurfaceForm& form, const std::string& editId, std::string* id = nullptr);

// The texture file, through the open dialog titled "Open File" with the
// picture filter; "" when cancelled.
extern const char* const kTextureFilter;  // "(*.bmp)|*.bmp|*.jpg|*.jpg|*.gif|*.gif"
std::string PickTextureFile();

using SurfaceFormOpener = std::function<void(const std::string& editId)>;
void SetSurfaceFormOpener(SurfaceFormOpener opener);
bool SurfaceFormAvailable();

// "Surface...": frmF6 for a new object.
void mnuDraw2Sur_Click();
// Registers mnuDraw2Sur, the double click on a surface (frmF6 in edit mode)
// and the box selection of surfaces.
void RegisterSurfaceCommands();

// A dialog field through the input filter (formula or plain number); false
// leaves it as it was.
bool FilterField(std::string& text, bool expr);
// A steps field as a whole number; 0 for what is no number in range.
int WholeField(const std::string& text);
// The places of tangent planes or normals as text ("1,2; 0,-1.5") and
// back; false for a text that is not such a list.
std::string PlacesText(const std::vector<float>& xs, const std::vector<float>& ys);
bool ParsePlaces(const std::string& text, std::vector<float>& xs, std::vector<float>& ys);

}  // namespace vt
