// Screen items under a real display: a text placed with the text tool and
// its dialog, a show/hide button made for it and pressed with the mouse, and
// the view settings keeping their dialog open on a bad limit.
#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>
#include <memory>

#include "app/canvas.h"
#include "app/frmF1.h"
#include "gui_fixture.h"
#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/undo.h"
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
  void theViewSettingsRefuseOneXAndStayOpen();

 private:
  // Runs `act` on the next modal dialog once it is up.
  static void WhenModal(std::function<void(QWidget*)> act) {
    auto* timer = new QTimer;
    timer->setInterval(20);
    QObject::connect(timer, &QTimer::timeout, [timer, act] {
      if (QWidget* w = QApplication::activeModalWidget()) {
        timer->stop();
        timer->deleteLater();
        act(w);
      }
    });
    timer->start();
  }
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

void GuiScreenItemsTest::init() {
  QVERIFY(guitest::OpenEmptyWindow(window_));
  QCOMPARE(DocumentObjectCount(), 0);
}

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

void GuiScreenItemsTest::theViewSettingsRefuseOneXAndStayOpen() {
  QAction* settings = window_->menuAction("mnuViewSet");
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

QTEST_MAIN(GuiScreenItemsTest)
#include "gui_screen_items_test.moc"
