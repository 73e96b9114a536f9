// The curve dialog in the running program: a curve made through frmF5 from
// the Draw menu, edited after a double click on it, a bad formula refused
// with the dialog left open, the expression pad writing into its field, and
// the results panel beside the canvas.
#include <GL/gl.h>
#include <GL/glu.h>

#include <QApplication>
#include <QCheckBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QtTest>
#include <functional>

#include "render/canvas_input.h"
#include "app/canvas.h"
#include "app/frmF1.h"
#include "gui_fixture.h"
#include "app/surface_format.h"
#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "expr/expression.h"
#include "graphs/dialogs/curve_forms.h"
#include "persist/docio.h"
#include "render/view_state.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;
using vt::app::frmF5;
using vt::app::frmFunCal;

class CurveFormsTest : public QObject {
  Q_OBJECT

 private slots:
  void init();
  void cleanup();

  void aCurveMadeThroughFrmF5IsEditedByDoubleClick();
  void aBadFormulaIsRefusedAndTheDialogStaysOpen();
  void formsAndLabelsFollowTheCoordinateSystem();
  void thePadWritesIntoTheFieldThatOpenedIt();
  void theResultsPanelShowsTheAnalysis();

 private:
  // Collects every message box shown while it runs, answering OK.
  void WatchMessages() { watcher_.Start(this); }
  QPoint PixelOf(float x, float y);
  frmF5* OpenCurveDialog();
  static void Type(QWidget* dialog, const char* field, const QString& text);
  static void ClickOk(QWidget* dialog) {
    QTest::mouseClick(dialog->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
  }

  frmF1* window_ = nullptr;
  guitest::MessageWatcher watcher_;
  QStringList& messages_ = watcher_.messages;
};

void CurveFormsTest::init() {
  window_ = new frmF1();
  window_->show();
  QVERIFY(QTest::qWaitForWindowExposed(window_));
  QTRY_VERIFY(window_->started());
  QVERIFY(window_->picDraw() && window_->picDraw()->isValid());
  messages_.clear();
}

void CurveFormsTest::cleanup() {
  watcher_.Stop();
  delete window_;
  window_ = nullptr;
  ClearHandlers();
}

QPoint CurveFormsTest::PixelOf(float x, float y) {
  Canvas* canvas = window_->picDraw();
  canvas->MakeCurrent();
  RedrawScene();
  float X = 0, Y = 0;
  if (!SceneToScreen(x, y, 0, X, Y)) return QPoint(-1, -1);
  const qreal scale = canvas->devicePixelRatioF();
  return QPoint(qRound(X / scale), qRound(Y / scale));
}

frmF5* CurveFormsTest::OpenCurveDialog() {
  QAction* item = window_->menuAction("mnuDraw2Curve");
  if (!item || !item->isEnabled()) return nullptr;
  item->trigger();
  frmF5* dialog = nullptr;
  if (!QTest::qWaitFor([&] { return (dialog = window_->findChild<frmF5*>()) && dialog->isVisible(); }, 5000))
    return nullptr;
  return dialog;
}

void CurveFormsTest::Type(QWidget* dialog, const char* field, const QString& text) {
  auto* e = dialog->findChild<QLineEdit*>(field);
  QVERIFY2(e, field);
  e->selectAll();
  QTest::keyClicks(e, text);
}

void CurveFormsTest::aCurveMadeThroughFrmF5IsEditedByDoubleClick() {
  const int before = Doc.FunCurves.count();
  const int undo = UndoCount;
  QPointer<frmF5> dialog = OpenCurveDialog();
  QVERIFY(dialog);
  QVERIFY(!dialog->isModal());  // the canvas stays usable beside it
  QCOMPARE(dialog->parentWidget(), static_cast<QWidget*>(window_));
  QCOMPARE(dialog->editId(), std::string());
  Type(dialog, "txtFormula1", "x/2 + 3");
  Type(dialog, "txtSteps", "50");
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  QCOMPARE(Doc.FunCurves.count(), before + 1);
  CFunCurve* c = Doc.FunCurves.Item(Doc.FunCurves.count());
  const std::string id = c->ID;
  QCOMPARE(c->ExpressY, std::string("x/2+3"));
  QCOMPARE(c->StepU, 50);
  QCOMPARE(c->FunForm, 2);
  QCOMPARE(UndoCount, undo + 1);

  // A double click on the curve opens the dialog on it.
  Canvas* canvas = window_->picDraw();
  const QPoint pixel = PixelOf(1.1f, 3.55f);
  QVERIFY(canvas->rect().contains(pixel));
  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, pixel);
  QTest::mouseDClick(canvas, Qt::LeftButton, Qt::NoModifier, pixel);
  QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, pixel);
  QTRY_VERIFY((dialog = window_->findChild<frmF5*>()) && dialog->isVisible());
  QCOMPARE(dialog->editId(), id);
  QVERIFY(EditMode);
  QCOMPARE(EditObjectId, id);
  QCOMPARE(dialog->findChild<QLineEdit*>("txtFormula1")->text(), QString("x/2+3"));
  QCOMPARE(dialog->findChild<QLineEdit*>("txtSteps")->text(), QString("50"));

  Type(dialog, "txtFormula1", "x^2-1");
  const int beforeEdit = UndoCount;
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  QCOMPARE(Doc.FunCurves.count(), before + 1);
  c = Doc.FunCurves.FindById(id);
  QVERIFY(c);
  QCOMPARE(c->ExpressY, std::string("x^2-1"));
  QCOMPARE(UndoCount, beforeEdit + 1);
  QVERIFY(!EditMode);
}

void CurveFormsTest::aBadFormulaIsRefusedAndTheDialogStaysOpen() {
  const std::string doc = GetUndoVar();
  const int undo = UndoCount;
  QPointer<frmF5> dialog = OpenCurveDialog();
  QVERIFY(dialog);
  WatchMessages();
  Type(dialog, "txtFormula1", "x+");
  ClickOk(dialog);
  QTRY_COMPARE(messages_.size(), 1);
  QVERIFY(messages_[0].startsWith("Syntax Error: "));
  QVERIFY(dialog && dialog->isVisible());
  QCOMPARE(dialog->findChild<QLineEdit*>("txtFormula1")->text(), QString("x+"));
  QCOMPARE(GetUndoVar(), doc);
  QCOMPARE(UndoCount, undo);

  // A character no formula holds, and a range the wrong way round.
  Type(dialog, "txtFormula1", "x#2");
  ClickOk(dialog);
  QTRY_COMPARE(messages_.size(), 2);
  QCOMPARE(messages_[1], QString("Error: Illegal data exist."));
  Type(dialog, "txtFormula1", "x");
  Type(dialog, "txtMinU", "9");
  ClickOk(dialog);
  QTRY_COMPARE(messages_.size(), 3);
  QCOMPARE(messages_[2], QString("Note: Min x must be less than Max x."));
  QVERIFY(dialog && dialog->isVisible());
  QCOMPARE(GetUndoVar(), doc);

  // Corrected, it is made.
  Type(dialog, "txtMinU", "-9");
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  QCOMPARE(UndoCount, undo + 1);
}

void CurveFormsTest::formsAndLabelsFollowTheCoordinateSystem() {
  QPointer<frmF5> dialog = OpenCurveDialog();
  QVERIFY(dialog);
  auto* list = dialog->findChild<QListWidget*>("lstForm");
  auto* label1 = dialog->findChild<QLabel*>("lblFormula1");
  auto* formula2 = dialog->findChild<QLineEdit*>("txtFormula2");
  QCOMPARE(list->count(), 4);
  QCOMPARE(list->item(1)->text(), QString("x=f1(u),y=f2(u)"));
  QCOMPARE(label1->text(), QString("y(x)"));
  QVERIFY(!formula2->isVisible());
  list->setCurrentRow(1);
  QCOMPARE(label1->text(), QString("x(u)"));
  QVERIFY(formula2->isVisible());
  dialog->findChild<QRadioButton*>("optPolar")->click();
  QCOMPARE(list->item(3)->text(), QString("f(a,r)<=0"));
  QCOMPARE(label1->text(), QString("a(u)"));
  list->setCurrentRow(2);
  QCOMPARE(label1->text(), QString("f(a,r)"));
  QCOMPARE(dialog->findChild<QLabel*>("lblMaxV")->text(), QString("Max r"));

  // An implicit polar circle, made from here.
  Type(dialog, "txtFormula1", "r-2");
  Type(dialog, "txtMinU", "0");
  Type(dialog, "txtMaxU", "6.2832");
  Type(dialog, "txtMinV", "0");
  Type(dialog, "txtMaxV", "4");
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  CFunCurve* c = Doc.FunCurves.Item(Doc.FunCurves.count());
  QCOMPARE(c->FunForm, 1);
  QCOMPARE(c->CoordType, 2);
  QCOMPARE(c->MaxV, 4.0f);
}

void CurveFormsTest::thePadWritesIntoTheFieldThatOpenedIt() {
  QPointer<frmF5> dialog = OpenCurveDialog();
  QVERIFY(dialog);
  auto* field = dialog->findChild<QLineEdit*>("txtFormula1");
  field->setText("x");
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdPad1"), Qt::LeftButton);
  QPointer<frmFunCal> pad;
  QTRY_VERIFY((pad = dialog->findChild<frmFunCal*>()) && pad->isVisible());
  auto* text1 = pad->findChild<QLineEdit*>("Text1");
  QCOMPARE(text1->text(), QString("x"));
  // Inserted at the caret: "x" -> "2*x" with the caret at the start.
  text1->setCursorPosition(0);
  QTest::mouseClick(pad->findChild<QPushButton*>("Command2"), Qt::LeftButton);
  QTest::mouseClick(pad->findChild<QPushButton*>("Command14"), Qt::LeftButton);
  QCOMPARE(text1->text(), QString("2*x"));
  QCOMPARE(text1->cursorPosition(), 2);
  // A function from the list, then delete the character before the caret.
  text1->setCursorPosition(3);
  QTest::mouseClick(pad->findChild<QPushButton*>("Command12"), Qt::LeftButton);
  auto* list = pad->findChild<QListWidget*>("List1");
  list->setCurrentRow(list->row(list->findItems("sin", Qt::MatchExactly).value(0)));
  QTest::mouseClick(pad->findChild<QPushButton*>("Command17"), Qt::LeftButton);
  QCOMPARE(text1->text(), QString("2*x+sin("));
  QTest::mouseClick(pad->findChild<QPushButton*>("Command24"), Qt::LeftButton);
  QTest::mouseClick(pad->findChild<QPushButton*>("Command23"), Qt::LeftButton);
  QTest::mouseClick(pad->findChild<QPushButton*>("Command23"), Qt::LeftButton);
  QTest::mouseClick(pad->findChild<QPushButton*>("Command21"), Qt::LeftButton);
  QCOMPARE(text1->text(), QString("2*x+sin(x)"));

  // A refused text keeps the pad open; a good one goes back to the field.
  WatchMessages();
  text1->setText("2*x;");
  QTest::mouseClick(pad->findChild<QPushButton*>("Command18"), Qt::LeftButton);
  QTRY_COMPARE(messages_.size(), 1);
  QCOMPARE(messages_[0], QString("Error: Illegal expression exist."));
  QVERIFY(pad && pad->isVisible());
  QCOMPARE(field->text(), QString("x"));
  QVERIFY(!ReportEvalErrors);
  text1->setText("2 * x + sin(x)");
  QTest::mouseClick(pad->findChild<QPushButton*>("Command18"), Qt::LeftButton);
  QTRY_VERIFY(!pad);
  QCOMPARE(field->text(), QString("2*x+sin(x)"));
  QVERIFY(!ReportEvalErrors);

  // Clear empties both lines; Close leaves the field alone.
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdPad1"), Qt::LeftButton);
  QTRY_VERIFY((pad = dialog->findChild<frmFunCal*>()) && pad->isVisible());
  QTest::mouseClick(pad->findChild<QPushButton*>("Command19"), Qt::LeftButton);
  QVERIFY(pad->findChild<QLineEdit*>("Text1")->text().isEmpty());
  QVERIFY(pad->findChild<QLineEdit*>("Text2")->text().isEmpty());
  QTest::mouseClick(pad->findChild<QPushButton*>("Command20"), Qt::LeftButton);
  QTRY_VERIFY(!pad);
  QCOMPARE(field->text(), QString("2*x+sin(x)"));
  dialog->reject();
}

void CurveFormsTest::theResultsPanelShowsTheAnalysis() {
  auto* dock = window_->findChild<QDockWidget*>("dockResults");
  auto* text = window_->findChild<QPlainTextEdit*>("txtResults");
  QVERIFY(dock && text);
  QVERIFY(dock->isHidden() || text->toPlainText().isEmpty());
  QPointer<frmF5> dialog = OpenCurveDialog();
  QVERIFY(dialog);
  Type(dialog, "txtFormula1", "x^2-2");
  Type(dialog, "txtSteps", "99");
  dialog->findChild<QCheckBox*>("chkRoot")->setChecked(true);
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  QTRY_VERIFY(dock->isVisible());
  const QStringList lines = text->toPlainText().split('\n');
  QCOMPARE(lines.size(), 3);
  QCOMPARE(lines[0], QString("y=x^2-2"));
  QVERIFY(lines[1].startsWith("    Root: x=-1.41"));
  QVERIFY(lines[2].startsWith("    Root: x=1.41"));
  // The curve gone, the panel empties and goes.
  window_->picDraw()->MakeCurrent();
  Doc.FunCurves.Remove(Doc.FunCurves.count());
  RedrawScene();
  QTRY_VERIFY(dock->isHidden());
}

int main(int argc, char** argv) {
  vt::app::SetCanvasSurfaceFormat();
  QApplication app(argc, argv);
  CurveFormsTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "curve_forms_test.moc"
