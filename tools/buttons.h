// Control buttons (CButton of screen_items.h): the five kinds, their
// commands and default captions, the form that makes and edits them, the
// drawing, and the hooks that let the select tool press them.
//
//   1 show/hide   2 link   3 sample document   4 scroll   5 commands
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/screen_items.h"

namespace vt {

// The caption a new button of a kind gets.
const char* DefaultButtonLabel(int btType);
// The default path of a sample button.
extern const char* const kDefaultSamplePath;
extern const char* const kSelectOneFirst;

// What the button dialogs edit.
struct ButtonForm {
  int BTType = 1;
  std::string Label;
  std::string Para1;
  int PathType = 1;
  std::vector<std::string> ObjIDs;
};
// The form of a new button of a kind (default caption and path, and for the
// show/hide and scroll kinds the current selection as objects).
ButtonForm NewButtonForm(int btType);
// The form of an existing button.
ButtonForm ButtonFormOf(const CButton& b);
// Makes the button (editId "") or changes the button editId; an undo step
// and a redraw follow. Returns the button, or nullptr when nothing was done.
CButton* ConfirmButtonForm(const ButtonForm& form, const std::string& editId);

// The selected objects in the order of the selection sets (buttons left out).
std::vector<std::string> SelectedObjectIds();

// Opens the dialog of a kind for a new button (editId "") or for editing.
// Set by the window; unset, the commands of kinds 2 to 5 make nothing.
using ButtonFormOpener = std::function<void(int btType, const std::string& editId)>;
void SetButtonFormOpener(ButtonFormOpener opener);

void mnuSHButton_Click();
void mnuDrawLink_Click();
void mnuDrawSampleBT_Click();
void mnuDrawScrollBT_Click();
void mnuDrawCommand_Click();

// The buttons' commands, and the select tool's hooks for the face.
void RegisterButtonCommands();

}  // namespace vt
