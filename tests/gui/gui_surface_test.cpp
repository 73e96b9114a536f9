// The surface dialog in the running program: a surface made through frmF6
// from the Draw menu in a space scene, then opened again by a double click on
// it and changed; a bad formula keeps the dialog open and the document as it
// was.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QtTest>
#include <cmath>
#include <memory>

#include "app/canvas.h"
#include "app/frmF1.h"
#include "gui_fixture.h"
#include "app/surface_format.h"
#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "graphs/dialogs/frmF6.h"
#include "graphs/dialogs/swept_forms.h"
#include "persist/docio.h"
#include "render/canvas_input.h"
#include "tools/canvas_input.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;
using vt::app::frmF6;
using vt::app::frmRot;
using vt::app::frmSphere;
using vt::app::frmStretch;

class SurfaceFormsTest : public QObject {
  Q_OBJECT

 private slots:
  void init();
  void cleanup();

  void aSurfaceMadeThroughFrmF6IsEditedByDoubleClick();
  void aBadFormulaKeepsTheDialogOpen();
  void aSurfaceOfRotationIsMadeAndEditedThroughFrmRot();
  void frmStretchAndFrmSphereMakeTheirObjects();

 private:
  void WatchMessages() { watcher_.Start(this); }
  frmF6* OpenSurfaceDialog();
  static void Type(QWidget* dialog, const char* field, const QString& text);
  static void ClickOk(QWidget* dialog) {
    auto* box = dialog->findChild<QDialogButtonBox*>("buttons");
    QVERIFY(box);
    QTest::mouseClick(box->button(QDialogButtonBox::Ok), Qt::LeftButton);
  }
  // The canvas pixel (logical) of a point in scene coordinates.
  QPoint PixelOf(const Position& p);

  frmF1* window_ = nullptr;
  guitest::MessageWatcher watcher_;
  QStringList& messages_ = watcher_.messages;
};

void SurfaceFormsTest::init() {
  window_ = new frmF1();
  window_->show();
  QVERIFY(QTest::qWaitForWindowExposed(window_));
  QTRY_VERIFY(window_->started());
  QVERIFY(window_->picDraw() && window_->picDraw()->isValid());
  // An empty space scene (the start document is gone).
  window_->RunCommand("mnuEditDelAll");
  window_->RunCommand("mnuFileNew3D");
  QCOMPARE(DocumentObjectCount(), 0);
  messages_.clear();
}

void SurfaceFormsTest::cleanup() {
  watcher_.Stop();
  delete window_;
  window_ = nullptr;
  ClearHandlers();
}

frmF6* SurfaceFormsTest::OpenSurfaceDialog() {
  QAction* item = window_->menuAction("mnuDraw2Sur");
  if (!item || !item->isEnabled()) return nullptr;
  item->trigger();
  frmF6* dialog = nullptr;
  if (!QTest::qWaitFor([&] { return (dialog = window_->findChild<frmF6*>()) && dialog->isVisible(); }, 5000))
    return nullptr;
  return dialog;
}

void SurfaceFormsTest::Type(QWidget* dialog, const char* field, const QString& text) {
  auto* e = dialog->findChild<QLineEdit*>(field);
  QVERIFY2(e, field);
  e->selectAll();
  QTest::keyClicks(e, text);
}

QPoint SurfaceFormsTest::PixelOf(const Position& p) {
  Canvas* canvas = window_->picDraw();
  canvas->MakeCurrent();
  RedrawScene();
  float X = 0, Y = 0;
  if (!SceneToScreen(p.x, p.y, p.z, X, Y)) return QPoint(-1, -1);
  const qreal scale = canvas->devicePixelRatioF();
  return QPoint(qRound(X / scale), qRound(Y / scale));
}

void SurfaceFormsTest::aSurfaceMadeThroughFrmF6IsEditedByDoubleClick() {
  QCOMPARE(SceneMode, 3);
  const int before = Doc.Surfaces.count();
  const int undo = UndoCount;
  QPointer<frmF6> dialog = OpenSurfaceDialog();
  QVERIFY(dialog);
  QVERIFY(!dialog->isModal());
  QCOMPARE(dialog->editId(), std::string());
  dialog->findChild<QRadioButton*>("optSurface")->click();
  dialog->findChild<QRadioButton*>("optCartesian")->click();
  dialog->findChild<QListWidget*>("lstForm")->setCurrentRow(0);  // z(x,y)
  Type(dialog, "txtFormula1", "x*y/4");
  Type(dialog, "txtMinU", "-2");
  Type(dialog, "txtMaxU", "2");
  Type(dialog, "txtStepsU", "12");
  Type(dialog, "txtMinV", "-2");
  Type(dialog, "txtMaxV", "2");
  Type(dialog, "txtStepsV", "10");
  dialog->findChild<QComboBox*>("cboShow")->setCurrentIndex(2);  // filled
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  QCOMPARE(Doc.Surfaces.count(), before + 1);
  CSurface* s = Doc.Surfaces.Item(Doc.Surfaces.count());
  const std::string id = s->ID;
  QCOMPARE(id.substr(0, 2), std::string("SF"));
  QCOMPARE(s->FunForm, 2);
  QCOMPARE(s->CoordType, 3);
  QCOMPARE(s->StepU, 12);
  QCOMPARE(s->StepV, 10);
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
  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, pixel);
  QTest::mouseDClick(canvas, Qt::LeftButton, Qt::NoModifier, pixel);
  QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, pixel);
  QTRY_VERIFY((dialog = window_->findChild<frmF6*>()) && dialog->isVisible());
  QCOMPARE(dialog->editId(), id);
  QVERIFY(EditMode);
  QCOMPARE(EditObjectId, id);
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
  QCOMPARE(s->ExpressZ, std::string("x^2-y"));
  QCOMPARE(s->StepU, 8);
  QVERIFY(s->ShowTrans);
  QCOMPARE(s->TransAlpha, 0.25f);
  QCOMPARE(s->Vert3D.size(), size_t(9 * 11));
  // (x, y) = (2, -2): z = 6.
  const Position edited = s->Vert3D[GridIndex(8, 0, 10)];
  QVERIFY(std::fabs(edited.x - 2) < 1e-4 && std::fabs(edited.y + 2) < 1e-4 && std::fabs(edited.z - 6) < 1e-4);
  QCOMPARE(UndoCount, beforeEdit + 1);
  QVERIFY(!EditMode);
}

void SurfaceFormsTest::aBadFormulaKeepsTheDialogOpen() {
  const std::string doc = GetUndoVar();
  const int undo = UndoCount;
  QPointer<frmF6> dialog = OpenSurfaceDialog();
  QVERIFY(dialog);
  WatchMessages();
  dialog->findChild<QRadioButton*>("optSurface")->click();
  dialog->findChild<QListWidget*>("lstForm")->setCurrentRow(0);
  Type(dialog, "txtFormula1", "x*");
  ClickOk(dialog);
  QTRY_VERIFY(!messages_.isEmpty());
  QVERIFY2(messages_[0].contains("Error"), qPrintable(messages_[0]));
  QVERIFY(dialog && dialog->isVisible());
  QCOMPARE(GetUndoVar(), doc);
  QCOMPARE(UndoCount, undo);
  dialog->reject();
  QTRY_VERIFY(!dialog);
}

void SurfaceFormsTest::aSurfaceOfRotationIsMadeAndEditedThroughFrmRot() {
  // A segment and the axis it turns about, both selected.
  auto addPoint = [](float x, float y, float z) {
    const std::string id = NewObjectId("PT");
    return Doc.Points.Add(id, x, y, z, 1, "", "", 0, id);
  };
  auto addLine = [&](float x1, float y1, float z1, float x2, float y2, float z2) {
    Position* a = addPoint(x1, y1, z1);
    Position* b = addPoint(x2, y2, z2);
    auto l = std::make_unique<CLine>();
    l->ID = NewObjectId("LN");
    l->Line1(a->ID, b->ID);
    a->AddLink(CLinkObj{l->ID, 2, 1, 0, 0});
    b->AddLink(CLinkObj{l->ID, 2, 2, 0, 0});
    return Doc.Lines.Add(std::move(l));
  };
  CLine* profile = addLine(2, 0, 0, 2, 0, 3);
  CLine* axis = addLine(0, 0, 0, 0, 0, 1);
  SelectObject(*profile);
  SelectObject(*axis);
  QAction* item = window_->menuAction("mnuDrawRot");
  QVERIFY(item && item->isEnabled());
  item->trigger();
  QPointer<frmRot> dialog;
  QTRY_VERIFY((dialog = window_->findChild<frmRot*>()) && dialog->isVisible());
  QVERIFY(!dialog->isModal());
  QCOMPARE(dialog->findChild<QLineEdit*>("txtObject")->text(), QString::fromStdString(profile->ID));
  QCOMPARE(dialog->findChild<QLineEdit*>("txtCenter")->text(), QString::fromStdString(axis->ID));
  Type(dialog, "txtSteps", "16");
  const int undo = UndoCount;
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  QCOMPARE(Doc.SurRots.count(), 1);
  CSurRot* s = Doc.SurRots.Item(1);
  const std::string id = s->ID;
  QCOMPARE(s->StepV, 16);
  QCOMPARE(s->NameS, std::string("Untitled"));
  QCOMPARE(UndoCount, undo + 1);

  // A double click on it opens frmRot on the object; a half turn is kept.
  DeselectObject(*profile);
  DeselectObject(*axis);
  window_->RunCommand("mnuSelect");
  Canvas* canvas = window_->picDraw();
  const QPoint pixel = PixelOf(s->Vert3D[GridIndex(0, 4, 16)]);
  QVERIFY(canvas->rect().contains(pixel));
  QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, pixel);
  QTest::mouseDClick(canvas, Qt::LeftButton, Qt::NoModifier, pixel);
  QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, pixel);
  QTRY_VERIFY((dialog = window_->findChild<frmRot*>()) && dialog->isVisible());
  QCOMPARE(dialog->editId(), id);
  QCOMPARE(dialog->findChild<QLineEdit*>("txtSteps")->text(), QString("16"));
  Type(dialog, "txtAngle", "3.1416");
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  s = Doc.SurRots.FindById(id);
  QVERIFY(s);
  QCOMPARE(s->RotAngle, std::string("3.1416"));
  QCOMPARE(Doc.SurRots.count(), 1);
  QVERIFY(std::fabs(s->Vert3D[GridIndex(0, 16, 16)].x + 2) < 1e-3);
}

void SurfaceFormsTest::frmStretchAndFrmSphereMakeTheirObjects() {
  auto addPoint = [](float x, float y, float z) {
    const std::string id = NewObjectId("PT");
    return Doc.Points.Add(id, x, y, z, 1, "", "", 0, id);
  };
  Position* centre = addPoint(0, 0, 0);
  Position* on = addPoint(0, 0, 1.5f);
  SelectObject(*centre);
  SelectObject(*on);
  window_->menuAction("mnuDraw2Sphere")->trigger();
  QPointer<frmSphere> sphere;
  QTRY_VERIFY((sphere = window_->findChild<frmSphere*>()) && sphere->isVisible());
  QCOMPARE(sphere->findChild<QLineEdit*>("txtCenter")->text(), QString::fromStdString(centre->ID));
  QCOMPARE(sphere->findChild<QLineEdit*>("txtPoint")->text(), QString::fromStdString(on->ID));
  // A bad alpha keeps the dialog open.
  WatchMessages();
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
  const std::string a = centre->ID, b = on->ID;
  auto l = std::make_unique<CLine>();
  l->ID = NewObjectId("LN");
  l->Line1(a, b);
  CLine* seg = Doc.Lines.Add(std::move(l));
  SelectObject(*seg);
  window_->menuAction("mnuDraw2Stretch")->trigger();
  QPointer<frmStretch> stretch;
  QTRY_VERIFY((stretch = window_->findChild<frmStretch*>()) && stretch->isVisible());
  QCOMPARE(stretch->findChild<QLineEdit*>("txtObject")->text(), QString::fromStdString(seg->ID));
  Type(stretch, "txtDX", "2");
  Type(stretch, "txtDZ", "0");
  ClickOk(stretch);
  QTRY_VERIFY(!stretch);
  QCOMPARE(Doc.Stretchs.count(), 1);
  CStretch* s = Doc.Stretchs.Item(1);
  QCOMPARE(s->DX, std::string("2"));
  QCOMPARE(s->Vert3D.back().x, 2.0f);
  QCOMPARE(s->Vert3D.back().z, 1.5f);
}

int main(int argc, char** argv) {
  vt::app::SetCanvasSurfaceFormat();
  QApplication app(argc, argv);
  SurfaceFormsTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "gui_surface_test.moc"
