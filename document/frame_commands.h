// Commands of the main window that work on the document and the scene
// flags: new scene (2D, 3D, ISO), the view toggles, new/open/save, delete.
// The window forwards its menu handlers here; tests call them directly.
#pragma once

#include <functional>
#include <string>

namespace vt {

// What the core asks of the window beyond the host: mirror the state of menus
// and toolbar (undo/redo enabled, toggles checked), and send the canvas a
// synthetic mouse move. Unset hooks do nothing.
struct FrameHooks {
  std::function<void()> refreshControls;
  std::function<void()> syntheticMouseMove;
};
extern FrameHooks Hooks;
void RefreshControls();

// The path of the current document ("" for a new one).
extern std::string CurrentFilePath;
// The document filter and titles of the file dialogs.
extern const char* const kDocumentFilter;

// The start of the program, after the window (if any) has made its drawing
// context current: globals, the empty undo entry, the context, the document
// from the command line or a new plane scene, the view defaults, and always
// the start document Tutorials/T000.vtd last. haveContext tells whether a GL
// context is current.
void StartUp(const std::string& commandLine, bool haveContext);

// DrawScene, then Display.
void RedrawScene();

// Runs a command, turning a fault that ends it into a message box; true when
// it ran to its end.
bool RunGuarded(const std::function<void()>& command);

// Sets the four toggles and their mirrors.
void SetViewToggles(bool axis, bool grid, bool snap, bool coordLines);

void mnuFileNew2D_Click();
void mnuFileNew3D_Click();
void mnuViewISO_Click();
void mnuViewAxis_Click();
void mnuViewGrid_Click();
void mnuViewSnap_Click();
void mnuViewCoordLines_Click();
void mnuDisShowLabels_Click();
void mnuDisShowPoints_Click();

void mnuFileNew_Click();
void mnuFileOpen_Click();
// Opens the document at `path` in place of the current one (the caller has
// asked about unsaved changes). False, with the document kept, when the file
// cannot be read.
bool OpenDocumentPath(const std::string& path);
// True when the document was written.
bool mnuFileSave_Click();
bool mnuFileSaveAs_Click();
// The document as last opened or saved: DocumentModified tells whether it
// differs from that state (undoing back to it counts as unchanged). The
// judgement is by the undo states' numbers, never by the stacks' counters.
void MarkDocumentSaved();
// A document that has never been saved as it stands (a recovered copy).
void MarkDocumentUnsaved();
bool DocumentModified();
// Modified, and not dropped by the user at the save question.
bool UnsavedWork();
// Before the document goes away (close, New, Open, a sample, a command
// button): asks "Save changes to file?" for a modified document. False when
// the user cancels or the save fails.
bool ConfirmDiscardChanges();
// Writes the document to a path; on failure shows why and returns false.
bool SaveDocumentAs(const std::string& path);

void mnuEditDelete_Click();
void mnuEditDelAll_Click();

}  // namespace vt
