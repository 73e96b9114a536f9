// Installs the opener of a formula dialog that is kept above the main window,
// one at a time: a second request closes the first and takes its place.
#pragma once

#include <QMainWindow>
#include <QObject>
#include <QPointer>

#include <functional>
#include <string>

#include "document/globals.h"

namespace vt::app {

// setOpener is the core's SetCurveFormOpener or SetSurfaceFormOpener. The
// opener is cleared again when the window that installed it goes away (and no
// later window has installed its own).
template <class Dialog>
void InstallSingleFormOpener(QMainWindow* mainWindow,
                             void (*setOpener)(std::function<void(const std::string&)>)) {
  static int installed = 0;
  const int mine = ++installed;
  QPointer<QMainWindow> window(mainWindow);
  setOpener([window](const std::string& editId) {
    if (!window) return;
    if (auto* old = window->findChild<Dialog*>()) {
      old->setAttribute(Qt::WA_DeleteOnClose, false);
      old->reject();
      delete old;
      // Closing the old dialog ended its edit; the new one edits again.
      if (!editId.empty()) {
        EditMode = true;
        EditObjectId = editId;
      }
    }
    auto* dialog = new Dialog(window, editId);
    dialog->show();
    dialog->raise();
  });
  QObject::connect(mainWindow, &QObject::destroyed, [mine, setOpener] {
    if (mine == installed) setOpener({});
  });
}

}  // namespace vt::app
