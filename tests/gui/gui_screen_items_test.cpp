// Screen items under a real display: a text placed with the text tool and
// its dialog, a show/hide button made for it and pressed with the mouse, the
// view settings keeping their dialog open on a bad limit, and an animation
// player that plays from its button under the event loop and stops. The
// parameter dialog is the session test's.
#include <QLineEdit>
#include <cmath>

#include "animation/animation.h"
#include "animation/dialogs/animation_forms.h"
#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"
#include "gui_fixture.h"
#include "render/view_state.h"
#include "tools/buttons.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;

class GuiScreenItemsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase();
  void init();
  void cleanup();

  void aShowHideButtonPressedWithTheMouseHidesAndShowsAText();
  void theCanvasMenusPropertiesWithNothingSelectedOpenTheViewSettings();
  void aPlayerPlaysUnderTheEventLoopAndStops();

 private:
  void WhenModal(std::function<void(QWidget*)> act) { guitest::WhenModal<QWidget>(this, act); }
  // The pixel of a place in per cent of the canvas (y from the bottom).
  QPoint PixelOf(float px, float py) const {
    Canvas* c = window_->picDraw();
    return QPoint(static_cast<int>(px / 100 * c->width()), static_cast<int>((100 - py) / 100 * c->height()));
  }

  std::unique_ptr<QTemporaryDir> xdg_;
  frmF1* window_ = nullptr;
};

void GuiScreenItemsTest::initTestCase() {
  xdg_ = guitest::IsolateDesktopFolders();
  QVERIFY(xdg_->isValid());
}

void GuiScreenItemsTest::init() { QVERIFY(guitest::OpenEmptyWindow(window_)); }

void GuiScreenItemsTest::cleanup() {
  delete window_;
  window_ = nullptr;
  ClearHandlers();
}

void GuiScreenItemsTest::aShowHideButtonPressedWithTheMouseHidesAndShowsAText() {
  Canvas* canvas = window_->picDraw();
  QAction* text = window_->menuAction("mnuDrawText");
  QVERIFY(text && text->isEnabled());
  text->trigger();
  QCOMPARE(ActiveTool, 6);
  bool filled = false;
  WhenModal([&filled](QWidget* dialog) {
    auto* field = dialog->findChild<QLineEdit*>("Text1");
    if (!field) return;
    field->setText("a note on the figure");
    filled = true;
    dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
  });
  const QPoint where = PixelOf(30, 60);
  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, where);
  QTRY_COMPARE(Doc.Texts.count(), 1);
  QVERIFY(filled);
  CText* t = Doc.Texts.Item(1);
  QCOMPARE(QString::fromStdString(t->Content), QString("a note on the figure"));
  QVERIFY(std::fabs(t->PosX - 30) < 0.5f && std::fabs(t->PosY - 60) < 0.5f);
  QCOMPARE(ActiveTool, 11);

  window_->RunCommand("mnuEditSelAll");
  QAction* sh = window_->menuAction("mnuSHButton");
  QVERIFY(sh && sh->isEnabled());
  sh->trigger();
  QCOMPARE(Doc.Buttons.count(), 1);
  CButton* b = Doc.Buttons.Item(1);
  b->PosX = 10;
  b->PosY = 20;
  const QPoint face = PixelOf(13, 22.5f);
  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, face);
  QTRY_VERIFY(Doc.Texts.Item(1)->Hide);
  QVERIFY(!Doc.Buttons.Item(1)->Status);
  QTest::qWait(50);
  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, face);
  QTRY_VERIFY(!Doc.Texts.Item(1)->Hide);
  // A press taken off the face before the release leaves the text alone.
  QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, face);
  QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, PixelOf(60, 80));
  QTest::qWait(50);
  QVERIFY(!Doc.Texts.Item(1)->Hide);
}

void GuiScreenItemsTest::theCanvasMenusPropertiesWithNothingSelectedOpenTheViewSettings() {
  // Right click on empty canvas, Properties...: nothing is selected, so
  // they are the view's.
  QAction* settings = window_->menuAction("mnuGraphProp");
  QVERIFY(settings && settings->isEnabled());
  settings->trigger();
  QWidget* dialog = nullptr;
  QTRY_VERIFY((dialog = window_->findChild<QWidget*>("frmF14")) != nullptr);
  QTRY_VERIFY(dialog->isVisible());
  auto* maxY = dialog->findChild<QLineEdit*>("txtMaxY");
  QVERIFY(maxY);
  maxY->setText("1x");
  QString said;
  WhenModal([&said](QWidget* box) {
    if (auto* m = qobject_cast<QMessageBox*>(box)) {
      said = m->text();
      m->accept();
    }
  });
  dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
  QTRY_COMPARE(said, QString("Illegal data exist."));
  QVERIFY(dialog->isVisible());
  QCOMPARE(BoxMaxY, 500.0f);
  maxY->setText("40");
  dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
  QTRY_COMPARE(BoxMaxY, 40.0f);
}

void GuiScreenItemsTest::aPlayerPlaysUnderTheEventLoopAndStops() {
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

VT_GUI_TEST_MAIN(GuiScreenItemsTest)
#include "gui_screen_items_test.moc"
