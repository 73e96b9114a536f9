// The curve, surface and swept-surface dialogs in the running program, each
// made and edited after a double click; the expression pad.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QRadioButton>
#include <cmath>

#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/undo.h"
#include "graphs/dialogs/curve_forms.h"
#include "graphs/dialogs/frmF6.h"
#include "graphs/dialogs/swept_forms.h"
#include "gui_fixture.h"
#include "persist/docio.h"
#include "tools/canvas_input.h"

using namespace vt;
using namespace vt::app;
using vt::guitest::Type;

class GraphFormsTest : public QObject {
  Q_OBJECT

 private slots:
  void init();
  void cleanup();

  void aCurveMadeThroughFrmF5IsEditedByDoubleClick();
  void formsAndLabelsFollowTheCoordinateSystem();
  void thePadWritesIntoTheFieldThatOpenedIt();
  void aSurfaceMadeThroughFrmF6IsEditedByDoubleClick();
  void aSurfaceOfRotationIsMadeAndEditedThroughFrmRot();
  void frmStretchAndFrmSphereMakeTheirObjects();

 private:
  // An empty space scene, where the surfaces are made.
  void NewSpaceScene() {
    window_->RunCommand("mnuFileNew3D");
    QCOMPARE(SceneMode, 3);
  }
  QPoint PixelOf(float x, float y, float z = 0) { return guitest::PixelOf(window_, x, y, z); }
  QPoint PixelOf(const Position& p) { return PixelOf(p.x, p.y, p.z); }
  // Opens the dialog of a Draw menu item.
  template <class T>
  T* OpenFromMenu(const char* item) {
    QAction* a = window_->menuAction(item);
    if (!a || !a->isEnabled()) return nullptr;
    a->trigger();
    return guitest::Shown<T>(window_);
  }
  frmF5* OpenCurveDialog() { return OpenFromMenu<frmF5>("mnuDraw2Curve"); }
  frmF6* OpenSurfaceDialog() { return OpenFromMenu<frmF6>("mnuDraw2Sur"); }
  static void ClickOk(QWidget* dialog) { guitest::PressOk(dialog); }

  frmF1* window_ = nullptr;
  guitest::MessageWatcher watcher_;
  QStringList& messages_ = watcher_.messages;
};

void GraphFormsTest::init() {
  QVERIFY(guitest::OpenEmptyWindow(window_));
  messages_.clear();
}

void GraphFormsTest::cleanup() {
  watcher_.Stop();
  delete window_;
  window_ = nullptr;
  ClearHandlers();
}

void GraphFormsTest::aCurveMadeThroughFrmF5IsEditedByDoubleClick() {
  const int before = Doc.FunCurves.count();
  const int undo = UndoCount;
  const std::string doc = GetUndoVar();
  QPointer<frmF5> dialog = OpenCurveDialog();
  QVERIFY(dialog);
  QVERIFY(!dialog->isModal());  // the canvas stays usable beside it
  // Bad formulas and a range the wrong way round: one message each, the
  // dialog open with the text, the document as it was.
  watcher_.Start(this);
  const struct {
    const char *field, *text, *message;
  } bad[] = {{"txtFormula1", "x+", "Syntax Error: "},
             {"txtFormula1", "x#2", "Error: Illegal data exist."},
             {"txtMinU", "999", "Note: Min x must be less than Max x."}};
  for (const auto& b : bad) {
    Type(dialog, "txtFormula1", "x");
    Type(dialog, b.field, b.text);
    ClickOk(dialog);
    QTRY_COMPARE(messages_.size(), 1);
    QVERIFY2(watcher_.Take()[0].startsWith(b.message), b.text);
    QVERIFY(dialog && dialog->isVisible());
    QCOMPARE(dialog->findChild<QLineEdit*>(b.field)->text(), QString(b.text));
    QCOMPARE(GetUndoVar(), doc);
    QCOMPARE(UndoCount, undo);
  }
  Type(dialog, "txtMinU", "-9");
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
  guitest::DoubleClick(canvas, pixel);
  QVERIFY((dialog = guitest::Shown<frmF5>(window_)));
  QCOMPARE(dialog->editId(), id);
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

void GraphFormsTest::formsAndLabelsFollowTheCoordinateSystem() {
  QPointer<frmF5> dialog = OpenCurveDialog();
  QVERIFY(dialog);
  auto* list = dialog->findChild<QListWidget*>("lstForm");
  auto* label1 = dialog->findChild<QLabel*>("lblFormula1");
  auto* formula2 = dialog->findChild<QLineEdit*>("txtFormula2");
  // A parametric form asks for a second formula; the polar system renames the fields.
  QVERIFY(!formula2->isVisible());
  list->setCurrentRow(1);
  QVERIFY(formula2->isVisible());
  const QString cartesian = label1->text();
  dialog->findChild<QRadioButton*>("optPolar")->click();
  QVERIFY(label1->text() != cartesian);
  list->setCurrentRow(2);
  QVERIFY(!formula2->isVisible());

  // An implicit polar circle, made from here.
  guitest::Fill(dialog, {{"txtFormula1", "r-2"}, {"txtMinU", "0"}, {"txtMaxU", "6.2832"}, {"txtMinV", "0"},
                {"txtMaxV", "4"}});
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  CFunCurve* c = Doc.FunCurves.Item(Doc.FunCurves.count());
  QCOMPARE(c->FunForm, 1);
  QCOMPARE(c->CoordType, 2);
  QCOMPARE(c->MaxV, 4.0f);
}

void GraphFormsTest::thePadWritesIntoTheFieldThatOpenedIt() {
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
  watcher_.Start(this);
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

void GraphFormsTest::aSurfaceMadeThroughFrmF6IsEditedByDoubleClick() {
  NewSpaceScene();
  const int before = Doc.Surfaces.count();
  const int undo = UndoCount;
  QPointer<frmF6> dialog = OpenSurfaceDialog();
  QVERIFY(dialog);
  dialog->findChild<QRadioButton*>("optSurface")->click();
  dialog->findChild<QRadioButton*>("optCartesian")->click();
  dialog->findChild<QListWidget*>("lstForm")->setCurrentRow(0);  // z(x,y)
  // A bad formula: the message, the dialog open, the document as it was.
  const std::string doc = GetUndoVar();
  watcher_.Start(this);
  Type(dialog, "txtFormula1", "x*");
  ClickOk(dialog);
  QTRY_VERIFY(!messages_.isEmpty());
  QVERIFY2(watcher_.Take()[0].contains("Error"), qPrintable(messages_.join("|")));
  QVERIFY(dialog && dialog->isVisible());
  QCOMPARE(GetUndoVar(), doc);
  QCOMPARE(UndoCount, undo);
  guitest::Fill(dialog, {{"txtFormula1", "x*y/4"}, {"txtMinU", "-2"}, {"txtMaxU", "2"}, {"txtStepsU", "12"},
                {"txtMinV", "-2"}, {"txtMaxV", "2"}, {"txtStepsV", "10"}});
  dialog->findChild<QComboBox*>("cboShow")->setCurrentIndex(2);  // filled
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  QCOMPARE(Doc.Surfaces.count(), before + 1);
  CSurface* s = Doc.Surfaces.Item(Doc.Surfaces.count());
  const std::string id = s->ID;
  QCOMPARE(s->Vert3D.size(), size_t(13 * 11));
  QCOMPARE(UndoCount, undo + 1);
  // Corner (x, y) = (2, 2): z = 1.
  const Position corner = s->Vert3D[GridIndex(12, 10, 10)];
  QVERIFY(std::fabs(corner.x - 2) < 1e-4 && std::fabs(corner.y - 2) < 1e-4 && std::fabs(corner.z - 1) < 1e-4);

  // A double click on the middle of the surface opens the dialog on it.
  Canvas* canvas = window_->picDraw();
  // The middle of a quad near the centre of the surface.
  Position middle(0, 0, 0);
  for (int c = 0; c < 4; ++c) {
    const Position& q = s->Vert3D[GridIndex(6 + c % 2, 5 + c / 2, 10)];
    middle.Set(middle.x + q.x / 4, middle.y + q.y / 4, middle.z + q.z / 4);
  }
  const QPoint pixel = PixelOf(middle);
  QVERIFY2(canvas->rect().contains(pixel), qPrintable(QString("%1,%2").arg(pixel.x()).arg(pixel.y())));
  window_->RunCommand("mnuSelect");
  guitest::DoubleClick(canvas, pixel);
  QVERIFY((dialog = guitest::Shown<frmF6>(window_)));
  QCOMPARE(dialog->editId(), id);
  QCOMPARE(dialog->findChild<QLineEdit*>("txtFormula1")->text(), QString("x*y/4"));
  QCOMPARE(dialog->findChild<QLineEdit*>("txtStepsU")->text(), QString("12"));

  // Changed formula, steps and look; the same object takes them.
  Type(dialog, "txtFormula1", "x^2-y");
  Type(dialog, "txtStepsU", "8");
  dialog->findChild<QCheckBox*>("chkTrans")->setChecked(true);
  Type(dialog, "txtAlpha", "0.25");
  const int beforeEdit = UndoCount;
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  QCOMPARE(Doc.Surfaces.count(), before + 1);
  s = Doc.Surfaces.FindById(id);
  QVERIFY(s);
  QCOMPARE(s->TransAlpha, 0.25f);
  QCOMPARE(s->Vert3D.size(), size_t(9 * 11));
  // (x, y) = (2, -2): z = 6.
  const Position edited = s->Vert3D[GridIndex(8, 0, 10)];
  QVERIFY(std::fabs(edited.x - 2) < 1e-4 && std::fabs(edited.y + 2) < 1e-4 && std::fabs(edited.z - 6) < 1e-4);
  QCOMPARE(UndoCount, beforeEdit + 1);
  QVERIFY(!EditMode);
}

void GraphFormsTest::aSurfaceOfRotationIsMadeAndEditedThroughFrmRot() {
  NewSpaceScene();
  // A segment and the axis it turns about, both selected.
  auto addLine = [](float x1, float y1, float z1, float x2, float y2, float z2) {
    return guitest::Segment(guitest::FreePoint(x1, y1, z1), guitest::FreePoint(x2, y2, z2));
  };
  CLine* profile = addLine(2, 0, 0, 2, 0, 3);
  CLine* axis = addLine(0, 0, 0, 0, 0, 1);
  SelectObject(*profile);
  SelectObject(*axis);
  QAction* item = window_->menuAction("mnuDrawRot");
  QVERIFY(item && item->isEnabled());
  item->trigger();
  QPointer<frmRot> dialog;
  QVERIFY((dialog = guitest::Shown<frmRot>(window_)));
  QCOMPARE(dialog->findChild<QLineEdit*>("txtObject")->text(), QString::fromStdString(profile->ID));
  QCOMPARE(dialog->findChild<QLineEdit*>("txtCenter")->text(), QString::fromStdString(axis->ID));
  Type(dialog, "txtSteps", "16");
  const int undo = UndoCount;
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  QCOMPARE(Doc.SurRots.count(), 1);
  CSurRot* s = Doc.SurRots.Item(1);
  const std::string id = s->ID;
  QCOMPARE(UndoCount, undo + 1);

  // A double click on it opens frmRot on the object; a half turn is kept.
  DeselectObject(*profile);
  DeselectObject(*axis);
  window_->RunCommand("mnuSelect");
  Canvas* canvas = window_->picDraw();
  const QPoint pixel = PixelOf(s->Vert3D[GridIndex(0, 4, 16)]);
  QVERIFY(canvas->rect().contains(pixel));
  guitest::DoubleClick(canvas, pixel);
  QVERIFY((dialog = guitest::Shown<frmRot>(window_)));
  QCOMPARE(dialog->editId(), id);
  QCOMPARE(dialog->findChild<QLineEdit*>("txtSteps")->text(), QString("16"));
  Type(dialog, "txtAngle", "3.1416");
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  s = Doc.SurRots.FindById(id);
  QVERIFY(s);
  QCOMPARE(Doc.SurRots.count(), 1);
  QVERIFY(std::fabs(s->Vert3D[GridIndex(0, 16, 16)].x + 2) < 1e-3);
}

void GraphFormsTest::frmStretchAndFrmSphereMakeTheirObjects() {
  NewSpaceScene();
  Position* centre = guitest::FreePoint(0, 0, 0);
  Position* on = guitest::FreePoint(0, 0, 1.5f);
  SelectObject(*centre);
  SelectObject(*on);
  window_->menuAction("mnuDraw2Sphere")->trigger();
  QPointer<frmSphere> sphere;
  QVERIFY((sphere = guitest::Shown<frmSphere>(window_)));
  QCOMPARE(sphere->findChild<QLineEdit*>("txtCenter")->text(), QString::fromStdString(centre->ID));
  QCOMPARE(sphere->findChild<QLineEdit*>("txtPoint")->text(), QString::fromStdString(on->ID));
  // A bad alpha keeps the dialog open.
  watcher_.Start(this);
  Type(sphere, "txtAlpha", "7");
  ClickOk(sphere);
  QTRY_COMPARE(messages_.size(), 1);
  QCOMPARE(messages_[0], QString("Error: Illegal data exist."));
  QVERIFY(sphere && sphere->isVisible());
  QCOMPARE(Doc.Spheres.count(), 0);
  Type(sphere, "txtAlpha", "0.4");
  ClickOk(sphere);
  QTRY_VERIFY(!sphere);
  QCOMPARE(Doc.Spheres.count(), 1);
  QCOMPARE(Doc.Spheres.Item(1)->R, 1.5f);
  QCOMPARE(Doc.Spheres.Item(1)->Alpha, 0.4f);
  DeselectObject(*centre);
  DeselectObject(*on);

  // The segment from the centre up, extruded along x.
  CLine* seg = guitest::Segment(centre, on);
  SelectObject(*seg);
  window_->menuAction("mnuDraw2Stretch")->trigger();
  QPointer<frmStretch> stretch;
  QVERIFY((stretch = guitest::Shown<frmStretch>(window_)));
  QCOMPARE(stretch->findChild<QLineEdit*>("txtObject")->text(), QString::fromStdString(seg->ID));
  Type(stretch, "txtDX", "2");
  Type(stretch, "txtDZ", "0");
  ClickOk(stretch);
  QTRY_VERIFY(!stretch);
  QCOMPARE(Doc.Stretchs.count(), 1);
  CStretch* s = Doc.Stretchs.Item(1);
  QCOMPARE(s->Vert3D.back().x, 2.0f);
  QCOMPARE(s->Vert3D.back().z, 1.5f);
}

VT_GUI_TEST_MAIN(GraphFormsTest)
#include "gui_graph_forms_test.moc"
