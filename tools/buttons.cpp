#include "tools/buttons.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/undo.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "render/text.h"
#include "tools/canvas_input.h"
#include "tools/link_safety.h"
#include "tools/screen_place.h"
#include "tools/select.h"
#include "tools/text_item.h"
#include "render/strokes.h"

namespace vt {

const char* const kDefaultSamplePath = "\\Tutorials\\T000.vtd";
const char* const kSelectOneFirst = "Please select at lease 1 object first.";

namespace {

ButtonFormOpener g_opener;

void SetHidden(const std::string& id, bool hide) {
  DocObject* o = GetObjectById(id);
  if (!o) return;
  o->Hide = hide;
  if (hide && IsSelected(id)) {
    DeselectObject(*o);
    o->SetDrawMode(NormalDrawMode(*o));
  }
}

void Bevel(float x0, float y0, float x1, float y1, bool pressed) {
  const float light = pressed ? 0.45f : 1.0f, dark = pressed ? 1.0f : 0.45f;
  glBegin(GL_LINES);
  glColor3f(light, light, light);
  glVertex3f(x0, y0, 1.1f);
  glVertex3f(x0, y1, 1.1f);
  glVertex3f(x0, y1, 1.1f);
  glVertex3f(x1, y1, 1.1f);
  glColor3f(dark, dark, dark);
  glVertex3f(x1, y1, 1.1f);
  glVertex3f(x1, y0, 1.1f);
  glVertex3f(x1, y0, 1.1f);
  glVertex3f(x0, y0, 1.1f);
  glEnd();
}

void Finish(bool onlyWhenChanged) {
  if (!onlyWhenChanged || GetUndoVar() != UndoEntry(UndoCount)) PushSnapshot();
  RedrawScene();
}

// A step of a command button that would drop or overwrite the document asks
// first: Delete All, New, Open and Exit the save question of a modified
// document (the last three ask it themselves), a save whether to write.
enum class StepAnswer { Run, Skip, Stop };
StepAnswer AskBeforeStep(const std::string& command) {
  if (command == "Edit-Delete All") return ConfirmDiscardChanges() ? StepAnswer::Run : StepAnswer::Stop;
  if ((command == "File-Save" || command == "File-SaveAs") && DocumentModified()) {
    switch (host().MsgBox("Save changes to file?", "Note", MsgButtons::YesNoCancel, MsgIcon::Question)) {
      case MsgResult::Yes: return StepAnswer::Run;
      case MsgResult::No: return StepAnswer::Skip;
      default: return StepAnswer::Stop;
    }
  }
  return StepAnswer::Run;
}

void OpenForm(int btType) {
  if (g_opener) g_opener(btType, std::string());
}

}  // namespace

const char* DefaultButtonLabel(int btType) {
  switch (btType) {
    case 1: return "SHOW/HIDE";
    case 2: return "LINK";
    case 3: return "TUTORIAL 1";
    case 4: return "SHOW";
    case 5: return "COMMAND";
    default: return "";
  }
}

// ---- CButton ----------------------------------------------------------------------------

float CButton::FaceRight() const {
  return PosX + 3 + std::trunc(static_cast<float>(AnsiBytes(Label).size()) * 0.6f);
}

bool CButton::PickGrip(float px, float py) const {
  return px >= PosX && px <= PosX + 0.8f && py >= PosY && py <= PosY + 5;
}

bool CButton::PickMove(float px, float py) const {
  return px >= PosX + 0.8f && px <= FaceRight() && py >= PosY && py <= PosY + 5;
}

bool CButton::Pick(const Position&, const Position&, const Position&) {
  return PickGrip(LastPressPctX(), LastPressPctY());
}

void CButton::Draw() {
  if (Hide) return;
  const float x0 = PosX + 0.8f, x1 = FaceRight(), y0 = PosY, y1 = PosY + 5;
  // The grip, then the face, raised or pressed.
  glColor3f(0.35f, 0.35f, 0.4f);
  DrawOverlayRect(GL_QUADS, PosX, y0, x0, y1, 1.0f);
  const float face = Status ? 0.72f : 0.85f;
  glColor3f(face, face, face);
  DrawOverlayRect(GL_QUADS, x0, y0, x1, y1, 1.0f);
  glLineWidth(1.0f);
  Bevel(x0, y0, x1, y1, Status);
  const float shift = Status ? 0.15f : 0.0f;
  DrawTextAt(x0 + 1.0f + shift, y0 + 1.6f - shift, 1.2f, Label);
  if (Selected) {
    glColor3f(1, 0, 0);
    DrawOverlayRect(GL_LINE_LOOP, PosX - 0.2f, y0 - 0.2f, x1 + 0.2f, y1 + 0.2f, 1.2f);
  }
}

std::string CButton::Save() const {
  RecordWriter w(ID);
  w.Add(BTType).AddFramed(Label).Add(PosX).Add(PosY).Add(ObjNum).Add(PathType).AddFramed(Para1);
  for (int i = 0; i < ObjNum && i < static_cast<int>(ObjIDs.size()); ++i) {
    // Command names hold blanks: those are framed.
    w.AddText(ObjIDs[static_cast<size_t>(i)]);
  }
  w.Add(BoolField(Status)).Add(BoolField(Selected)).Add(BoolField(Hide));
  return w.Close();
}

std::unique_ptr<CButton> CButton::Load(RecordReader& r) {
  auto b = std::make_unique<CButton>();
  b->ID = r.OwnId();
  b->BTType = r.Short();
  b->Label = r.FramedText();
  b->PosX = r.Single();
  b->PosY = r.Single();
  const long n = r.Long();
  if (n < 0 || n > kMaxObjects) throw RecordError("bad count");
  b->ObjNum = static_cast<int>(n);
  b->PathType = r.Short();
  b->Para1 = r.FramedText();
  for (long i = 0; i < n; ++i) {
    if (b->BTType == 5) b->ObjIDs.push_back(r.FramedText());
    else b->ObjIDs.push_back(ShiftId(r.FramedText(), r.base()));
  }
  b->Status = r.Bool();
  b->Selected = r.Bool();
  b->Hide = r.Bool();
  // A button is never read pressed.
  b->Status = false;
  return b;
}

void CButton::Click() {
  // What the action needs is copied first: a command may delete the button.
  const int type = BTType;
  const std::string id = ID;
  const int n = std::min(ObjNum, static_cast<int>(ObjIDs.size()));
  const std::vector<std::string> items(ObjIDs.begin(), ObjIDs.begin() + n);
  switch (type) {
    case 1: {
      // The state follows the objects: all hidden counts as hidden.
      bool allHidden = n > 0;
      for (const std::string& o : items)
        if (DocObject* obj = GetObjectById(o); obj && !obj->Hide) allHidden = false;
      HideObjs = !allHidden;
      for (const std::string& o : items) SetHidden(o, HideObjs);
      break;
    }
    case 2:
      OpenLinkSafely(ResolveButtonPath(Para1, PathType));
      break;
    case 3:
      // The sample replaces the document: a modified one is offered to be
      // saved first, and the sample starts a history of its own.
      if (ConfirmDiscardChanges() && OpenSampleDocument(ResolveButtonPath(Para1, PathType))) {
        BeginHistory();
        MarkDocumentSaved();
        RedrawScene();
      }
      return;
    case 4:
      ++ScrollPos;
      if (ScrollPos > n) ScrollPos = 0;
      for (int i = 0; i < n; ++i) SetHidden(items[static_cast<size_t>(i)], i + 1 > ScrollPos);
      break;
    case 5:
      for (const std::string& command : items) {
        const StepAnswer a = AskBeforeStep(command);
        if (a == StepAnswer::Stop) break;
        if (a == StepAnswer::Run) DoCommand(command);
      }
      Finish(true);
      return;
    default:
      break;
  }
  Finish(false);
}

// ---- the form ---------------------------------------------------------------------------

std::vector<std::string> SelectedObjectIds() {
  std::vector<std::string> ids;
  for (Kind k : kAllKinds) {
    if (k == Kind::BT) continue;
    CollectionBase& set = Sel.Of(k);
    for (int i = 1; i <= set.count(); ++i) {
      const std::string& id = set.ItemBase(i)->ID;
      if (GetObjectById(id) && std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(id);
    }
  }
  if (ids.size() > static_cast<size_t>(CButton::kMaxObjects)) ids.resize(CButton::kMaxObjects);
  return ids;
}

ButtonForm NewButtonForm(int btType) {
  ButtonForm f;
  f.BTType = btType;
  f.Label = DefaultButtonLabel(btType);
  if (btType == 3) {
    f.Para1 = kDefaultSamplePath;
    f.PathType = 2;
  }
  if (btType == 1 || btType == 4) f.ObjIDs = SelectedObjectIds();
  return f;
}

ButtonForm ButtonFormOf(const CButton& b) {
  ButtonForm f;
  f.BTType = b.BTType;
  f.Label = b.Label;
  f.Para1 = b.Para1;
  f.PathType = b.PathType;
  const int n = std::min(b.ObjNum, static_cast<int>(b.ObjIDs.size()));
  f.ObjIDs.assign(b.ObjIDs.begin(), b.ObjIDs.begin() + n);
  return f;
}

CButton* ConfirmButtonForm(const ButtonForm& form, const std::string& editId) {
  if (form.BTType < 1 || form.BTType > 5) return nullptr;
  CButton* b = nullptr;
  if (!editId.empty()) {
    b = Doc.Buttons.FindById(editId);
    if (!b) return nullptr;
  } else {
    auto made = std::make_unique<CButton>();
    made->ID = NewObjectId("BT");
    made->Label = form.Label;
    FreeScreenPlace(made->FaceRight(), 5, made->PosX, made->PosY);
    std::string key = made->ID;
    b = Doc.Buttons.Add(std::move(made), key);
  }
  b->BTType = form.BTType;
  b->Label = form.Label;
  b->Para1 = form.Para1;
  b->PathType = form.PathType == 1 ? 1 : 2;
  b->ObjIDs = form.ObjIDs;
  if (b->ObjIDs.size() > static_cast<size_t>(CButton::kMaxObjects)) b->ObjIDs.resize(CButton::kMaxObjects);
  b->ObjNum = static_cast<int>(b->ObjIDs.size());
  b->ScrollPos = 0;
  PushSnapshot();
  RedrawScene();
  return b;
}

void SetButtonFormOpener(ButtonFormOpener opener) { g_opener = std::move(opener); }

// ---- commands ---------------------------------------------------------------------------

void mnuSHButton_Click() {
  ButtonForm f = NewButtonForm(1);
  if (f.ObjIDs.empty()) {
    host().MsgBox(kSelectOneFirst, "Note", MsgButtons::OK, MsgIcon::Exclamation);
    return;
  }
  ConfirmButtonForm(f, std::string());
}
void mnuDrawLink_Click() { OpenForm(2); }
void mnuDrawSampleBT_Click() { OpenForm(3); }
void mnuDrawScrollBT_Click() { OpenForm(4); }
void mnuDrawCommand_Click() { OpenForm(5); }

void RegisterButtonCommands() {
  RegisterHandler("mnuSHButton", mnuSHButton_Click);
  RegisterHandler("mnuDrawLink", mnuDrawLink_Click);
  RegisterHandler("mnuDrawSampleBT", mnuDrawSampleBT_Click);
  RegisterHandler("mnuDrawScrollBT", mnuDrawScrollBT_Click);
  RegisterHandler("mnuDrawCommand", mnuDrawCommand_Click);
  RegisterEditDialog(Kind::BT, [](DocObject& o) {
    if (g_opener) g_opener(static_cast<CButton&>(o).BTType, o.ID);
  });

  // The face is pressed on the press (drawn pressed, but it neither selects
  // nor drags: only the grip does), and clicked on the release over it.
  SelectToolHooks.buttonFace = [](CButton& b, float px, float py) {
    const bool hit = !b.Hide && b.PickMove(px, py);
    if (RubberBandOn) {
      if (hit) b.Status = true;
      return false;
    }
    b.Status = false;
    return hit;
  };
  SelectToolHooks.buttonType = [](const CButton& b) { return b.BTType; };
  SelectToolHooks.buttonClick = [](CButton& b) { b.Click(); };
}

}  // namespace vt
