// Installs the construction, measurement and transformation dialogs into the
// core's hooks for one main window.
#include "tools/dialogs/construction_forms.h"

#include <QPointer>

#include "document/document.h"
#include "document/globals.h"
#include "geometry/property_commands.h"
#include "tools/canvas_input.h"
#include "tools/construction_prompts.h"
#include "tools/notes.h"

namespace vt::app {

namespace {

// The window the hooks open their dialogs on (the hooks are plain functions).
QPointer<QWidget>& Window() {
  static QPointer<QWidget> window;
  return window;
}

// One transformation dialog of a kind at a time: a second request brings the
// open one forward ("Select" there takes the new selection).
template <class Dialog>
void OpenTransform() {
  QWidget* window = Window();
  if (!window) return;
  // (A closed one may still wait for its deletion: it does not count.)
  for (Dialog* open : window->findChildren<Dialog*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (!open->isVisible()) continue;
    open->raise();
    open->activateWindow();
    return;
  }
  auto* d = new Dialog(window);
  d->show();
  d->raise();
}

template <class Dialog>
void OpenPrompt() {
  QWidget* window = Window();
  if (!window) return;
  auto* d = new Dialog(window);
  d->open();
}

void OpenCompute(CNote* edit) {
  QWidget* window = Window();
  if (!window) return;
  if (auto* old = window->findChild<frmComp*>(QString(), Qt::FindDirectChildrenOnly)) {
    old->setAttribute(Qt::WA_DeleteOnClose, false);
    old->reject();
    delete old;
    if (edit) {
      EditMode = true;
      EditObjectId = edit->ID;
    }
  }
  auto* d = new frmComp(window, edit ? edit->ID : std::string());
  d->show();
  d->raise();
}

}  // namespace

void InstallConstructionForms(QWidget* mainWindow) {
  static int installed = 0;
  const int mine = ++installed;
  Window() = mainWindow;
  ComputeDialog = OpenCompute;
  MoveDialog = OpenTransform<frmTMove>;
  RotateDialog = OpenTransform<frmTRotate>;
  ZoomDialog = OpenTransform<frmTZoom>;
  MirrorDialog = OpenTransform<frmTMirror>;
  DivisionDialog = OpenPrompt<frmDFD>;
  LineExtDialog = OpenPrompt<frmLineExtP>;
  FlexP2DDialog = OpenPrompt<frmFlexP2D>;
  Circle3DDialog = OpenPrompt<frm3DCircle>;
  CircleRadiusDialog = OpenPrompt<frmCircleRadius>;
  // A double click on a computed note reopens it; a measurement opens its
  // property dialog.
  RegisterEditDialog(Kind::NT, [](DocObject& o) {
    auto* n = dynamic_cast<CNote*>(&o);
    if (n && n->NoteType != 0 && OpenPropertyForm(PropertyForm::Note, n->ID)) return;
    if (!n || n->NoteType != 0) {
      EditMode = false;
      return;
    }
    OpenCompute(n);
  });
  QObject::connect(mainWindow, &QObject::destroyed, [mine] {
    if (mine != installed) return;
    ComputeDialog = nullptr;
    MoveDialog = RotateDialog = ZoomDialog = MirrorDialog = nullptr;
    DivisionDialog = LineExtDialog = FlexP2DDialog = Circle3DDialog = CircleRadiusDialog = nullptr;
    RegisterEditDialog(Kind::NT, {});
  });
}

}  // namespace vt::app
