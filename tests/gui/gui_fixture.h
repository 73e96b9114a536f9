// What the GUI tests of the main window share: the desktop folders kept inside
// the test, and a window brought up on an empty document.
#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>
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

// While started, answers each message box that comes up with OK and keeps
// its "title: text".
class MessageWatcher {
 public:
  ~MessageWatcher() { Stop(); }
  void Start(QObject* owner) {
    Stop();
    timer_ = new QTimer(owner);
    timer_->setInterval(10);
    QObject::connect(timer_, &QTimer::timeout, owner, [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box || !box->isVisible()) return;
      messages << box->windowTitle() + ": " + box->text();
      box->button(QMessageBox::Ok)->click();
    });
    timer_->start();
  }
  void Stop() {
    if (timer_) {
      timer_->stop();
      timer_->deleteLater();
    }
    timer_ = nullptr;
  }
  QStringList messages;

 private:
  QTimer* timer_ = nullptr;
};

}  // namespace vt::guitest
