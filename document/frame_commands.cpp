#include "document/frame_commands.h"

#include <cctype>

#include "document/document.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/undo.h"
#include "persist/docio.h"
#include "render/frame.h"
#include "render/view_state.h"
#include "tools/canvas_input.h"

namespace vt {

FrameHooks Hooks;
std::string CurrentFilePath;
const char* const kDocumentFilter = "(*.vtd)|*.vtd";

void RefreshControls() {
  if (Hooks.refreshControls) Hooks.refreshControls();
}

void RedrawScene() {
  DrawScene();
  Display();
}

bool RunGuarded(const std::function<void()>& command) {
  try {
    command();
    return true;
  } catch (const std::exception& e) {
    host().MsgBox(e.what(), "Error", MsgButtons::OK, MsgIcon::Critical);
    return false;
  }
}

void SetViewToggles(bool axis, bool grid, bool snap, bool coordLines) {
  ShowAxis = axis;
  ShowGrid = grid;
  SnapToGrid = snap;
  ShowCoordLines = coordLines;
  NoteUnrecordedChange();
  RefreshControls();
}

void StartUp(const std::string& commandLine, bool haveContext) {
  // Form initialisation and load: collections, view objects, the empty
  // undo entry 1.
  ResetGlobals();
  if (haveContext) Initialize();
  LocateSystemFolder();
  ViewRotate = ViewZoom = ViewMove = false;
  SceneChanged = false;
  SceneQuat[0] = SceneQuat[1] = SceneQuat[2] = 0;
  SceneQuat[3] = 1;
  mnuFileNew2D_Click();
  ActiveTool = 11;
  LineToolKind = 1;
  MakeTools();
  SetViewToggles(false, false, false, false);
  AniDefaultStep = 5.0f;
  AniDefaultAngle = 90.0f;
  LastPointLabel = "0";
  View.ProjectType = 1;
  View.Zoom(0.3f);
  // A document named on the command line (the desktop opens files this way)
  // is what the user sees; without one, or when it cannot be read, the start
  // document.
  std::string text;
  if (!commandLine.empty() && ReadDocumentFile(commandLine, text) && !text.empty()) {
    OpenDocumentText(text);
    CurrentFilePath = commandLine;
  } else if (ReadDocumentFile(ProgramPath("Tutorials/T000.vtd"), text) && !text.empty()) {
    OpenDocumentText(text);
    CurrentFilePath.clear();
  }
  // The history starts at the document shown: Undo never empties it.
  BeginHistory();
  MarkDocumentSaved();
  RedrawScene();
}

// ---- scenes ---------------------------------------------------------------------

namespace {
void ClearViewFlags() {
  ViewRotate = ViewZoom = ViewMove = false;
  SceneChanged = false;
}
}  // namespace

void mnuViewISO_Click() {
  if (SceneMode == 1) mnuFileNew3D_Click();
  ViewGraph.RotRoll = 111;
  ViewGraph.RotPitch = -41;
  ViewGraph.RotYaw = 60;
  IsoPending = true;
  SceneChanged = false;
  RedrawScene();
}

void mnuFileNew2D_Click() {
  mnuViewISO_Click();
  ViewGraph.RotRoll = ViewGraph.RotPitch = ViewGraph.RotYaw = 0;
  ClearViewFlags();
  SceneMode = 1;
  SettingsChanged = false;
  NoteUnrecordedChange();
  RefreshControls();
  RedrawScene();
}

void mnuFileNew3D_Click() {
  MainLight.Position[0][0] = 100;
  MainLight.Position[0][1] = 100;
  ViewGraph.RotRoll = 111;
  ViewGraph.RotPitch = -41;
  ViewGraph.RotYaw = 60;
  ClearViewFlags();
  SceneMode = 3;
  SettingsChanged = false;
  NoteUnrecordedChange();
  RefreshControls();
  RedrawScene();
}

void mnuViewAxis_Click() {
  SetViewToggles(!ShowAxis, ShowGrid, SnapToGrid, ShowCoordLines);
  RedrawScene();
}
void mnuViewGrid_Click() {
  SetViewToggles(ShowAxis, !ShowGrid, SnapToGrid, ShowCoordLines);
  RedrawScene();
}
void mnuViewSnap_Click() {
  SetViewToggles(ShowAxis, ShowGrid, !SnapToGrid, ShowCoordLines);
  RedrawScene();
}
void mnuViewCoordLines_Click() {
  SetViewToggles(ShowAxis, ShowGrid, SnapToGrid, !ShowCoordLines);
  RedrawScene();
}

void mnuDisShowLabels_Click() {
  for (Position* p : Doc.Points) p->HideLabel = !p->HideLabel;
  NoteUnrecordedChange();
  RefreshControls();
  RedrawScene();
}

void mnuDisShowPoints_Click() {
  for (Position* p : Doc.Points) p->Hide = !p->Hide;
  NoteUnrecordedChange();
  RefreshControls();
  RedrawScene();
}

// ---- files ----------------------------------------------------------------------

namespace {
void ResetNumbering() {
  AniDefaultStep = 5.0f;
  AniDefaultAngle = 90.0f;
  NextObjectNumber = 0;
  LastPointLabel = "0";
}
}  // namespace

// The state number of the document as last opened or saved, and of the one
// whose changes the user chose to drop at the save question.
namespace {
uint64_t g_savedState = 0;
uint64_t g_droppedState = 0;
}  // namespace

void MarkDocumentSaved() {
  g_savedState = CurrentStateNumber();
  RefreshControls();
}

void MarkDocumentUnsaved() {
  g_savedState = 0;
  RefreshControls();
}

bool DocumentModified() {
  if (CurrentStateNumber() == g_savedState) return false;
  // A new document with nothing in it holds nothing to lose.
  return !(CurrentFilePath.empty() && DocumentObjectCount() <= 0);
}

bool UnsavedWork() { return DocumentModified() && CurrentStateNumber() != g_droppedState; }

bool ConfirmDiscardChanges() {
  if (!DocumentModified()) return true;
  MsgResult r = host().MsgBox("Save changes to file?", "Note", MsgButtons::YesNoCancel, MsgIcon::Question);
  if (r == MsgResult::Cancel) return false;
  if (r == MsgResult::Yes) return mnuFileSave_Click();
  g_droppedState = CurrentStateNumber();
  return true;
}

void mnuFileNew_Click() {
  if (DocumentObjectCount() <= 0 && CurrentFilePath.empty()) return;
  if (!ConfirmDiscardChanges()) return;
  ResetToolGestures();
  ClearDocument();
  ResetSceneSettings();
  ResetNumbering();
  CurrentFilePath.clear();
  BeginHistory();
  MarkDocumentSaved();
  RedrawScene();
}

void mnuFileOpen_Click() {
  if (!ConfirmDiscardChanges()) return;
  OpenDocumentPath(host().OpenFileDialog("Open File", kDocumentFilter));
}

bool OpenDocumentPath(const std::string& path) {
  // A cancelled dialog or a file that cannot be read keeps the document.
  std::string text;
  if (path.empty() || !ReadDocumentFile(path, text) || text.empty()) return false;
  ResetToolGestures();
  OpenDocumentText(text);
  CurrentFilePath = path;
  BeginHistory();
  MarkDocumentSaved();
  RedrawScene();
  return true;
}

bool SaveDocumentAs(const std::string& path) {
  std::string error;
  if (!WriteDocumentFile(path, GetUndoVar(), error)) {
    std::string text = "Unable to save ";
    text += path;
    text += ": ";
    text += error;
    host().MsgBox(text, "Error", MsgButtons::OK, MsgIcon::Critical);
    return false;
  }
  CurrentFilePath = path;
  MarkDocumentSaved();
  return true;
}

bool mnuFileSaveAs_Click() {
  std::string path = host().SaveFileDialog("Save File", kDocumentFilter);
  if (path.empty()) return false;
  // "a.VTD" keeps its own case; only a name without the extension gets one.
  std::string ext = path.size() >= 4 ? path.substr(path.size() - 4) : std::string();
  for (char& c : ext) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (ext != ".vtd") path += ".vtd";
  return SaveDocumentAs(path);
}

bool mnuFileSave_Click() {
  if (CurrentFilePath.empty()) return mnuFileSaveAs_Click();
  return SaveDocumentAs(CurrentFilePath);
}

// ---- delete -----------------------------------------------------------------------

void mnuEditDelete_Click() {
  if (!RunGuarded(DeleteSelection)) return;
  PushSnapshot();
  RedrawScene();
}

void mnuEditDelAll_Click() {
  ClearDocument();
  NextObjectNumber = 0;
  LastPointLabel = "0";
  AniDefaultStep = 5.0f;
  AniDefaultAngle = 90.0f;
  PushSnapshot();
  RedrawScene();
}

}  // namespace vt
