// The commands that open the property dialogs of points, lines, circles, arcs
// and regions: the Edit menu's property items and the canvas's double click.
// They decide which object a dialog edits and say so when the selection
// holds none; the dialogs themselves are windows, and the window installs
// the one function that opens them (SetPropertyFormOpener), so everything
// here runs and is tested without a window system.
#pragma once

#include <functional>
#include <string>

#include "document/document.h"

namespace vt {

// The dialogs: frmPointEdit (the style of every selected point), frmF16 (one
// point), frmLine, frmCircle, frmArc, frmRegion; frmSector, frmRibbon,
// frmSphereProps, frmInterLine, frmLocusProps and frmNote (measurement notes;
// a computed note opens frmComp instead).
enum class PropertyForm { PointStyle, Point, Line, Circle, Arc, Region, Sector, Ribbon, Sphere, InterLine, Locus, Note };

// The window's function that shows a dialog for an object (id "" for
// PointStyle, which works on the selection). An empty function removes it.
using PropertyFormOpener = std::function<void(PropertyForm form, const std::string& id)>;
void SetPropertyFormOpener(PropertyFormOpener opener);
bool PropertyFormsAvailable();

// The dialog that edits objects of a kind; false for the kinds without one.
bool PropertyFormOfKind(Kind kind, PropertyForm& form);

// Opens the dialog of an object: EditMode set, EditObjectId the id, then the
// window's opener. An id that names no object says kObjectNotExist and opens
// nothing. False when nothing was opened.
bool OpenPropertyForm(PropertyForm form, const std::string& id);

// The notes of the property commands when the selection has nothing to edit.
extern const char* const kSelectPointFirst;   // "Please select a point first."
extern const char* const kSelectLineFirst;    // "Please select a line first."
extern const char* const kSelectRegionFirst;  // "Please select a polygon first."
extern const char* const kSelectObjectsFirst; // "Please select objects first."

// "Point Properties...": frmPointEdit for the selected points.
void mnuEditPoint_Click();
// "Line Properties...": frmLine for the first selected line.
void mnuEditLine_Click();
// "Region Properties...": frmRegion for the first selected region.
void mnuEditRegion_Click();
// "Properties...": the dialog of the first selected object, the kinds taken
// in the order of the double click (points, lines, arcs, circles, loci,
// intersection lines, regions, measurement notes, sectors, ribbons, spheres).
void mnuEditProp_Click();

// Registers the four handlers (enabled while the window's opener is there)
// and the double-click dialogs of the kinds above but notes (the note's
// double click is the window's: it tells computed notes from measurements).
void RegisterPropertyCommands();

}  // namespace vt
