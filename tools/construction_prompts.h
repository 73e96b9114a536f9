// The construction commands that ask for numbers before they build: the
// division points of "Equidistant Points" (frmDFD), the epitaxial and
// interpolated point (frmLineExtP), the 2D directed extension point
// (frmFlexP2D), the normal-direction spatial circle (frm3DCircle) and the
// circle with a centre and a radius (frmCircle). Each command checks the
// selection and opens its dialog through a hook that the window installs; the
// dialog hands the fields to the OK function here, which checks the selection
// again, builds, and takes one undo step. Nothing here knows a window system.
#pragma once

#include <string>
#include <vector>

namespace vt {

// "Please select 2 points or 1 segment. "
extern const char* const kMsgTwoPointsOrSegment;
// "Please select 1 point first. "
extern const char* const kMsgOnePointFirst;
// "Please select 1 segment, or 1 point and 1 segment. "
extern const char* const kMsgAxisSegment;
// "Illegal data exist."
extern const char* const kMsgIllegalData;

// The choices of frmDFD's list: "3" to "10".
std::vector<std::string> DivisionChoices();

// The division points of `parts` parts (2 to 10) on the selection: two
// points (points of ptype 9 between them, Pos 1 to parts - 1), one segment,
// one circle or one arc (structure points of ptype 9 on it). False, with the
// middle point's message, when the selection does not fit.
bool EquidistantPointsOK(int parts);

// The epitaxial (kind 1) or interpolated (kind 2) point of ptype 6 on two
// selected points or one selected segment: with `absolute` the distance is a
// length, else a fraction of the base. False with a message when the
// selection does not fit or a number is bad.
bool LineExtPointOK(int kind, bool absolute, float distance);

// The 2D directed extension point of ptype 11 beyond the second of two
// selected points (or the end of one selected segment), turned by
// `angleDegrees`, with its hidden far point. False with a message when the
// selection does not fit or the base points differ in z.
bool DirectedExtensionOK(float angleDegrees, float distance);

// A circle of CType 5 of radius `radius` about the selected point (or the
// first point of the segment when only a segment is selected), in the plane
// normal to the selected segment. False with a message on a bad selection or
// a radius that is not above 0.
bool Circle3DOK(float radius);

// A circle of CType 3 about the first selected point with the given radius,
// style, width, colour and fill. False with a message on a bad selection or
// a radius that is not above 0.
struct CircleRadiusForm {
  float radius = 1;
  int style = 1;
  float width = 2;
  unsigned color = 0;
  bool filled = false;
};
bool CircleRadiusOK(const CircleRadiusForm& form);

// Reads a number field of these dialogs: "Illegal data exist." (title
// "Error") and false when the text is not a number.
bool ReadDialogNumber(const std::string& text, float& value);

// The dialogs; installed by the window. Each command checks the selection
// first and opens its dialog only when it fits.
using PromptDialogFn = void (*)();
extern PromptDialogFn DivisionDialog, LineExtDialog, FlexP2DDialog, Circle3DDialog, CircleRadiusDialog;

// mnuEP, mnuDraw2LineSt, mnuDraw2SSD2D, mnuDraw23DCir, mnuDraw2DJC.
void RegisterPromptCommands();

}  // namespace vt
