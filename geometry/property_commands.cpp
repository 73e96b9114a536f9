#include "geometry/property_commands.h"

#include "document/command_table.h"
#include "document/globals.h"
#include "document/host.h"
#include "geometry/properties.h"
#include "tools/canvas_input.h"
#include "tools/note_object.h"

namespace vt {

const char* const kSelectPointFirst = "Please select a point first.";
const char* const kSelectLineFirst = "Please select a line first.";
const char* const kSelectRegionFirst = "Please select a polygon first.";
const char* const kSelectObjectsFirst = "Please select objects first.";

namespace {

PropertyFormOpener& Opener() {
  static PropertyFormOpener opener;
  return opener;
}

void Note(const char* text) { host().MsgBox(text, "Note", MsgButtons::OK, MsgIcon::Exclamation); }

// The id of the first object of a selection set that is still in the
// document, or "".
std::string FirstSelected(Kind kind) {
  CollectionBase& set = Sel.Of(kind);
  CollectionBase& doc = Doc.Of(kind);
  for (int i = 1; i <= set.count(); ++i) {
    const std::string& id = set.ItemBase(i)->ID;
    if (doc.FindId(id)) return id;
  }
  return {};
}

// The double click hands over the object with EditMode already set; a kind
// whose dialog cannot open leaves no edit state behind.
void OpenFromDoubleClick(DocObject& object) {
  Kind kind;
  PropertyForm form;
  if (!KindOfTag(object.Tag(), kind) || !PropertyFormOfKind(kind, form) || !OpenPropertyForm(form, object.ID))
    EditMode = false;
}

}  // namespace

void SetPropertyFormOpener(PropertyFormOpener opener) { Opener() = std::move(opener); }
bool PropertyFormsAvailable() { return static_cast<bool>(Opener()); }

bool PropertyFormOfKind(Kind kind, PropertyForm& form) {
  switch (kind) {
    case Kind::PT: form = PropertyForm::Point; return true;
    case Kind::LN: form = PropertyForm::Line; return true;
    case Kind::CR: form = PropertyForm::Circle; return true;
    case Kind::AR: form = PropertyForm::Arc; return true;
    case Kind::RG: form = PropertyForm::Region; return true;
    case Kind::FA: form = PropertyForm::Sector; return true;
    case Kind::RB: form = PropertyForm::Ribbon; return true;
    case Kind::SP: form = PropertyForm::Sphere; return true;
    case Kind::IL: form = PropertyForm::InterLine; return true;
    case Kind::LO: form = PropertyForm::Locus; return true;
    case Kind::NT: form = PropertyForm::Note; return true;
    default: return false;
  }
}

bool OpenPropertyForm(PropertyForm form, const std::string& id) {
  if (!Opener()) return false;
  if (form != PropertyForm::PointStyle) {
    if (!GetObjectById(id)) {
      host().MsgBox(kObjectNotExist, "Error", MsgButtons::OK, MsgIcon::Exclamation);
      return false;
    }
    EditMode = true;
    EditObjectId = id;
  }
  // A copy: the opener may replace itself.
  PropertyFormOpener opener = Opener();
  opener(form, id);
  return true;
}

void mnuEditPoint_Click() {
  if (FirstSelected(Kind::PT).empty()) {
    Note(kSelectPointFirst);
    return;
  }
  OpenPropertyForm(PropertyForm::PointStyle, std::string());
}

void mnuEditLine_Click() {
  const std::string id = FirstSelected(Kind::LN);
  if (id.empty()) {
    Note(kSelectLineFirst);
    return;
  }
  OpenPropertyForm(PropertyForm::Line, id);
}

void mnuEditRegion_Click() {
  const std::string id = FirstSelected(Kind::RG);
  if (id.empty()) {
    Note(kSelectRegionFirst);
    return;
  }
  OpenPropertyForm(PropertyForm::Region, id);
}

// Opens the dialog of the first selected object; false when nothing is
// selected.
bool OpenSelectedProperties() {
  for (Kind k : {Kind::PT, Kind::LN, Kind::AR, Kind::CR, Kind::LO, Kind::IL, Kind::RG, Kind::NT, Kind::FA, Kind::RB,
                 Kind::SP}) {
    const std::string id = FirstSelected(k);
    // Computed notes have their own dialog, not this one.
    if (k == Kind::NT && !id.empty() && Doc.Notes.FindById(id)->NoteType == 0) continue;
    PropertyForm form;
    if (!id.empty() && PropertyFormOfKind(k, form)) {
      OpenPropertyForm(form, id);
      return true;
    }
  }
  // The other kinds open what a double click on them opens: curves, surfaces,
  // swept surfaces, computed notes, text items, buttons, players.
  for (Kind k : {Kind::C2, Kind::SF, Kind::SR, Kind::SS, Kind::NT, Kind::TT, Kind::BT, Kind::AC}) {
    const std::string id = FirstSelected(k);
    if (id.empty()) continue;
    CollectionBase& doc = Doc.Of(k);
    if (OpenEditDialog(k, *doc.ItemBase(doc.FindId(id)))) return true;
  }
  return false;
}

void mnuEditProp_Click() {
  if (!OpenSelectedProperties()) Note(kSelectObjectsFirst);
}

// The canvas's own menu: with nothing selected, the properties of what was
// clicked are the view's.
void mnuGraphProp_Click() {
  if (!OpenSelectedProperties() && !RunHandler("mnuViewSet")) Note(kSelectObjectsFirst);
}

void RegisterPropertyCommands() {
  RegisterHandler("mnuEditPoint", mnuEditPoint_Click, PropertyFormsAvailable);
  RegisterHandler("mnuEditLine", mnuEditLine_Click, PropertyFormsAvailable);
  RegisterHandler("mnuEditRegion", mnuEditRegion_Click, PropertyFormsAvailable);
  RegisterHandler("mnuEditProp", mnuEditProp_Click, PropertyFormsAvailable);
  RegisterHandler("mnuGraphProp", mnuGraphProp_Click, PropertyFormsAvailable);
  for (Kind k : {Kind::PT, Kind::LN, Kind::CR, Kind::AR, Kind::RG, Kind::FA, Kind::RB, Kind::SP, Kind::IL, Kind::LO})
    RegisterEditDialog(k, OpenFromDoubleClick);
}

}  // namespace vt
