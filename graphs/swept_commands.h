// The commands that make swept and derived surfaces, and the dialogs frmRot,
// frmStretch and frmSphere without their windows: the fields as text, the
// confirmation with its messages that makes or changes the object.
//
// mnuDraw2Fan, mnuDraw2Ribbon and mnuDraw2IntLine check their selection in
// tools/constructions.cpp and then call the Make... functions here.
// mnuDrawRot, mnuDraw2Stretch and mnuDraw2Sphere open their dialog through
// the opener the window installs; without a window they confirm the form
// that the selection gives.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "graphs/look_fields.h"
#include "graphs/swept.h"

namespace vt {

class CSphere;

// A sector from the selection (a point and a circle, or an arc, a curve or a
// polygon), a ribbon from the two selected objects, an intersection line of
// the two selected faceted objects: each with a new id, built, one undo
// snapshot, the scene rebuilt.
void MakeFanFromSelection();
void MakeRibbonFromSelection();
void MakeInterLineFromSelection();

// frmRot (rotation true) and frmStretch.
struct SweptForm : SurfaceLookFields {
  bool rotation = true;
  std::string objId;     // the profile
  std::string centerId;  // the axis, a line or a point (rotation)
  std::string angle = "6.2832";
  std::string dx = "0", dy = "0", dz = "1";  // the vector (extrusion)
  std::string steps = "20";
};

// The form of a new object: the profile and the axis (or, for an extrusion,
// a selected vector) from the selection.
SweptForm NewSweptForm(bool rotation);
SweptForm LoadSweptForm(const CSurRot& s);
SweptForm LoadSweptForm(const CStretch& s);

enum class SweptConfirm { Stay, Done, Gone };
// Checks the fields (messages as the dialogs show them) and makes the object
// ("SR" or "SS", named "Untitled") or changes editId, which is sampled
// again; one undo snapshot and the scene rebuilt.
SweptConfirm ConfirmSweptForm(SweptForm& form, const std::string& editId, std::string* id = nullptr);

// frmSphere: the centre and the point on the surface, the ranges of the two
// angles (radians, as formulas of the parameters), colour and translucency.
struct SphereForm {
  std::string centerId, pointId;
  std::string aFrom = "0", aTo = "6.2832", bFrom = "0", bTo = "3.1416";
  std::uint32_t color = RGB(128, 192, 255);
  std::string alpha = "0.3";
};
SphereForm NewSphereForm();
SweptConfirm ConfirmSphereForm(SphereForm& form, std::string* id = nullptr);

// The messages.
extern const char* const kMsgRotAxis;    // "Please select a rotating axis or center point first."
extern const char* const kMsgTwoPointsSphere;

// The windows: the function that shows a dialog for a new object ("") or for
// an object to edit.
using SweptFormOpener = std::function<void(const std::string& editId)>;
void SetRotFormOpener(SweptFormOpener opener);
void SetStretchFormOpener(SweptFormOpener opener);
void SetSphereFormOpener(SweptFormOpener opener);

void mnuDrawRot_Click();
void mnuDraw2Stretch_Click();
void mnuDraw2Sphere_Click();

// Registers mnuDrawRot, mnuDraw2Stretch, mnuDraw2Sphere, the double click on
// the swept surfaces and their box selection.
void RegisterSweptCommands();

}  // namespace vt
