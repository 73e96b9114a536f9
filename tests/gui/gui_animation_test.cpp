// Animation under the event loop: a player with a moving point plays from
// its button on the canvas, its frames advance by its timer, and a second
// press stops it. The parameter dialog makes a parameter track.
#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

#include "animation/animation.h"
#include "animation/dialogs/animation_forms.h"
#include "app/canvas.h"
#include "app/frmF1.h"
#include "gui_fixture.h"
#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;

class GuiAnimationTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase();
  void init();
  void cleanup();

  void aPlayerPlaysUnderTheEventLoopAndStops();
  void theParameterDialogMakesATrack();

 private:
  std::unique_ptr<QTemporaryDir> xdg_;
  frmF1* window_ = nullptr;
};

void GuiAnimationTest::initTestCase() {
  xdg_ = guitest::IsolateDesktopFolders();
  QVERIFY(xdg_->isValid());
}

void GuiAnimationTest::init() {
  QVERIFY(guitest::OpenEmptyWindow(window_));
}

void GuiAnimationTest::cleanup() {
  delete window_;
  window_ = nullptr;
  ClearHandlers();
}

void GuiAnimationTest::aPlayerPlaysUnderTheEventLoopAndStops() {
  const std::string pid = NewObjectId("PT");
  Position* p = Doc.Points.Add(pid, 0, 0, 0, 1, "", "", 0, pid);
  QAction* make = window_->menuAction("mnuAMPlayer");
  QVERIFY(make && make->isEnabled());
  make->trigger();
  QCOMPARE(Doc.AniCtrls.count(), 1);
  CAniControl* c = Doc.AniCtrls.Item(1);
  c->RunTimes = 400;  // 10 ms a frame
  c->AniRunMode = 3;
  TrackForm f;
  f.playerId = c->ID;
  f.bound = {pid};
  f.x = 4;
  QVERIFY(ConfirmTrackForm(f));
  window_->menuAction("mnuSelect")->trigger();

  // The play button, pressed on the canvas.
  Canvas* canvas = window_->picDraw();
  const int w = canvas->width(), h = canvas->height();
  const QPoint play(static_cast<int>((c->PosX + 1.0f) / 100 * w), static_cast<int>((100 - c->PosY - 1.5f) / 100 * h));
  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, play);
  QCOMPARE(c->Status, 2);
  const int first = c->Step;
  QTRY_VERIFY_WITH_TIMEOUT(c->Step >= first + 5 || (c->Step >= 0 && c->Step < first), 5000);
  QTRY_VERIFY_WITH_TIMEOUT(p->x > 0, 5000);

  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, play);
  QCOMPARE(c->Status, 1);
  const short stopped = c->Step;
  QTest::qWait(100);
  QCOMPARE(c->Step, stopped);
}

void GuiAnimationTest::theParameterDialogMakesATrack() {
  CAniControl* c = NewPlayer();
  auto* dialog = new vt::app::frmVar(window_);
  dialog->show();
  dialog->findChild<QLineEdit*>("txtName")->setText("a");
  dialog->findChild<QLineEdit*>("txtMin")->setText("0");
  dialog->findChild<QLineEdit*>("txtMax")->setText("2");
  // A bad name keeps the dialog open (the message box is answered by the
  // test's timer).
  QTimer::singleShot(200, [] {
    if (QWidget* box = QApplication::activeModalWidget()) box->close();
  });
  dialog->accept();
  QVERIFY(dialog->isVisible());
  QCOMPARE(c->AniNum(), 0);
  dialog->findChild<QLineEdit*>("txtName")->setText("A");
  dialog->accept();
  QCOMPARE(c->AniNum(), 1);
  QCOMPARE(c->anis[0]->Para1, std::string("A"));
}

QTEST_MAIN(GuiAnimationTest)
#include "gui_animation_test.moc"
