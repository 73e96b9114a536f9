// What the GUI tests of the main window share: the desktop folders kept inside
// the test, and a window brought up on an empty document.
#pragma once

#include <QTemporaryDir>
#include <QtTest>
#include <memory>

#include "app/frmF1.h"

namespace vt::guitest {

// The program registers its document type at start; this sends the
// registration to a folder of the test.
inline std::unique_ptr<QTemporaryDir> IsolateDesktopFolders() {
  auto dir = std::make_unique<QTemporaryDir>();
  qputenv("XDG_DATA_HOME", (dir->path() + "/data").toUtf8());
  qputenv("XDG_DATA_DIRS", (dir->path() + "/none").toUtf8());
  return dir;
}

// Shows a new main window, waits until its canvas has started and empties the
// document. False when the window or its canvas did not come up.
inline bool OpenEmptyWindow(vt::app::frmF1*& window) {
  window = new vt::app::frmF1();
  window->show();
  if (!QTest::qWaitForWindowExposed(window)) return false;
  if (!QTest::qWaitFor([window] { return window->started(); }, 5000)) return false;
  if (!window->picDraw()) return false;
  window->RunCommand("mnuEditDelAll");
  return true;
}

}  // namespace vt::guitest
