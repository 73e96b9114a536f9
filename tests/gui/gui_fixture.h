// What the GUI tests of the main window share: the desktop folders kept inside
// the test, and a window brought up on an empty document.
#pragma once

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>
#include <functional>
#include <memory>

#include "app/canvas.h"
#include "app/frmF1.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/frame_commands.h"
#include "render/canvas_input.h"

namespace vt::guitest {

// Help > Register File Type writes into the desktop folders; this sends them
// to a folder of the test.
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

// The canvas pixel (logical units) where a scene point is drawn; (-1, -1)
// when it is not on the screen.
inline QPoint PixelOf(vt::app::frmF1* window, float x, float y, float z = 0) {
  vt::app::Canvas* canvas = window->picDraw();
  canvas->MakeCurrent();
  vt::RedrawScene();
  float X = 0, Y = 0;
  if (!vt::SceneToScreen(x, y, z, X, Y)) return QPoint(-1, -1);
  const qreal scale = canvas->devicePixelRatioF();
  return QPoint(qRound(X / scale), qRound(Y / scale));
}

// The child dialog of type T once it is shown; null when none comes up.
template <class T>
T* Shown(QWidget* parent, int ms = 5000) {
  T* d = nullptr;
  if (!QTest::qWaitFor([&] { return (d = parent->findChild<T*>()) && d->isVisible(); }, ms)) return nullptr;
  return d;
}

// Replaces the text of a dialog's line edit by typing.
inline void Type(QWidget* dialog, const char* field, const QString& text) {
  auto* e = dialog->findChild<QLineEdit*>(field);
  QVERIFY2(e, field);
  e->selectAll();
  QTest::keyClicks(e, text);
}

// Types into several fields, in order.
inline void Fill(QWidget* dialog, std::initializer_list<std::pair<const char*, QString>> fields) {
  for (const auto& [field, text] : fields) Type(dialog, field, text);
}

// Presses a dialog's OK: its cmdOK button or the OK of its button box.
inline void PressOk(QWidget* dialog) {
  if (auto* ok = dialog->findChild<QPushButton*>("cmdOK")) return QTest::mouseClick(ok, Qt::LeftButton);
  auto* box = dialog->findChild<QDialogButtonBox*>();
  QVERIFY(box && box->button(QDialogButtonBox::Ok));
  QTest::mouseClick(box->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

// A double click on the canvas as the mouse sends it: click, double click, release.
inline void DoubleClick(QWidget* canvas, const QPoint& at) {
  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, at);
  QTest::mouseDClick(canvas, Qt::LeftButton, Qt::NoModifier, at);
  QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, at);
}

// A drag on the canvas with moves on the way.
inline void Drag(QWidget* canvas, const QPoint& from, const QPoint& to, int steps = 6) {
  QTest::mouseMove(canvas, from);
  QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, from);
  for (int i = 1; i <= steps; ++i) {
    const QPoint at = from + (to - from) * i / steps;
    QMouseEvent move(QEvent::MouseMove, QPointF(at), QPointF(canvas->mapToGlobal(at)), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(canvas, &move);
  }
  QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, to);
}

// A left click on the canvas with the mouse moved there first.
inline void Click(QWidget* canvas, const QPoint& at) {
  QTest::mouseMove(canvas, at);
  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, at);
}

// A top-level dialog of that object name once it shows; null when none does.
inline QWidget* ShownNamed(const QString& name, int ms = 3000) {
  QWidget* d = nullptr;
  const bool shown = QTest::qWaitFor([&] {
    for (QWidget* t : QApplication::topLevelWidgets())
      if (t->objectName() == name && t->isVisible()) d = t;
    return d != nullptr;
  }, ms);
  return shown ? d : nullptr;
}

// A free point of the plane (or space), labelled when `label` is set.
inline vt::Position* FreePoint(float x, float y, float z = 0, bool label = false) {
  const std::string id = vt::NewObjectId("PT");
  vt::Position* p = vt::Doc.Points.Add(id, x, y, z, 1, "", "", 0, id);
  if (label) vt::AssignNextPointLabel(*p);
  return p;
}

// A segment between two points, linked to them as the segment tool links it.
inline vt::CLine* Segment(vt::Position* a, vt::Position* b) {
  auto l = std::make_unique<vt::CLine>();
  l->ID = vt::NewObjectId("LN");
  l->Line1(a->ID, b->ID);
  a->AddLink({l->ID, 2, 1, 0, 0});
  b->AddLink({l->ID, 2, 2, 0, 0});
  return vt::Doc.Lines.Add(std::move(l));
}

// Makes `objs` the whole selection.
inline void SelectOnly(std::initializer_list<vt::DocObject*> objs) {
  for (vt::Kind k : vt::kAllKinds)
    for (int i = 1; i <= vt::Doc.Of(k).count(); ++i)
      if (vt::Doc.Of(k).ItemBase(i)->Selected) vt::DeselectObject(*vt::Doc.Of(k).ItemBase(i));
  for (vt::DocObject* o : objs) vt::SelectObject(*o);
}

// Runs `act` on the next visible modal widget of type T. A file dialog may
// ignore an accept while its folder is still being listed (its name field is
// cleared again); such a dialog is answered again until it closes.
template <class T = QWidget>
void WhenModal(QObject* owner, std::function<void(T*)> act) {
  auto* timer = new QTimer(owner);
  timer->setInterval(10);
  QObject::connect(timer, &QTimer::timeout, owner, [timer, act] {
    auto* w = qobject_cast<T*>(QApplication::activeModalWidget());
    if (!w || !w->isVisible()) return;
    timer->stop();
    QPointer<QFileDialog> files = qobject_cast<QFileDialog*>(w);
    act(w);
    if (files && files->isVisible() && QApplication::activeModalWidget() == files) timer->start();
    else timer->deleteLater();
  });
  timer->start();
}

// While started, answers each message box that comes up with OK (or No, or
// its escape) and keeps its "title: text"; a file dialog gets `file` when
// that is set, or is cancelled while `cancelFiles` is.
class MessageWatcher {
 public:
  ~MessageWatcher() { Stop(); }
  void Start(QObject* owner) {
    Stop();
    timer_ = new QTimer(owner);
    timer_->setInterval(10);
    QObject::connect(timer_, &QTimer::timeout, owner, [this] {
      QWidget* w = QApplication::activeModalWidget();
      if (!w || !w->isVisible()) return;
      if (auto* box = qobject_cast<QMessageBox*>(w)) {
        messages << box->windowTitle() + ": " + box->text();
        QAbstractButton* b = box->button(QMessageBox::Ok);
        if (!b) b = box->button(QMessageBox::No);
        if (b) b->click();
        else box->reject();
      } else if (auto* dlg = qobject_cast<QFileDialog*>(w); dlg && cancelFiles) {
        static_cast<QDialog*>(dlg)->reject();
      } else if (dlg && !file.isEmpty()) {
        dlg->selectFile(file);
        static_cast<QDialog*>(dlg)->accept();
      }
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
  QStringList Take() {
    QStringList m = messages;
    messages.clear();
    return m;
  }
  QStringList messages;
  QString file;
  bool cancelFiles = false;

 private:
  QTimer* timer_ = nullptr;
};

}  // namespace vt::guitest

// The main of a GUI test.
#define VT_GUI_TEST_MAIN(TestClass)          \
  int main(int argc, char** argv) {          \
    QApplication app(argc, argv);            \
    TestClass test;                          \
    return QTest::qExec(&test, argc, argv);  \
  }
