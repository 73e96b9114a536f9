// The property dialogs in the running program: opened by a double click on
// the canvas and by the Edit menu, filled in like a user does, confirmed or
// refused, and the document checked afterwards.
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QPointer>

#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/undo.h"
#include "geometry/dialogs/property_forms.h"
#include "gui_fixture.h"
#include "persist/docio.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;

class PropertyFormsTest : public QObject {
  Q_OBJECT

 private slots:
  void init();
  void cleanup();

  void aDoubleClickOnALineOpensFrmLineAndOkAppliesStyleWidthAndColour();
  void aBadWidthKeepsTheDialogOpenWithTheMessageAndChangesNothing();
  void pointPropertiesNeedsSelectedPointsAndStylesOnlyThem();
  void propertiesOpensFrmF16WhereOnlyAFreePointHasEditableCoordinates();

 private:
  // Runs `act` on the next modal widget of type T (a message box, the colour
  // dialog); the property dialogs are modal too and are passed over.
  template <class T>
  void WhenModal(std::function<void(T*)> act) {
    guitest::WhenModal<T>(this, act);
  }
  // A segment between the first two points, made as a construction command makes one.
  CLine* AddSegment();
  template <class T>
  T* OpenDialog() {
    return guitest::Shown<T>(window_);
  }

  frmF1* window_ = nullptr;
};

void PropertyFormsTest::init() {
  QVERIFY(guitest::OpenEmptyWindow(window_));
  // Every case starts from the same three points.
  window_->picDraw()->MakeCurrent();
  OpenUnRe(
      "GL Ver3.00 1 1 1 0 0;;"
      "PT0001 -3 -2 0 1 2 255 0 1 1 @A@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;"
      "PT0002 3 -2 0 1 2 255 0 1 1 @B@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;"
      "PT0003 0 3 0 1 2 255 0 1 1 @C@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;");
  PushSnapshot();
}

void PropertyFormsTest::cleanup() {
  delete window_;
  window_ = nullptr;
  ClearHandlers();
}

CLine* PropertyFormsTest::AddSegment() {
  Position* a = Doc.Points.Item(1);
  Position* b = Doc.Points.Item(2);
  auto l = std::make_unique<CLine>();
  l->ID = NewObjectId("LN");
  l->Line1(a->ID, b->ID);
  a->AddLink({l->ID, 2, 1, 0, 0});
  b->AddLink({l->ID, 2, 2, 0, 0});
  CLine* line = Doc.Lines.Add(std::move(l));
  window_->picDraw()->MakeCurrent();
  PushSnapshot();
  RedrawScene();
  return line;
}

// ---- lines ----------------------------------------------------------------------------

void PropertyFormsTest::aDoubleClickOnALineOpensFrmLineAndOkAppliesStyleWidthAndColour() {
  CLine* line = AddSegment();
  const std::string id = line->ID;
  Canvas* canvas = window_->picDraw();
  const QPoint pixel = guitest::PixelOf(window_, 0.5f, -2, 0);
  QVERIFY(canvas->rect().contains(pixel));
  guitest::DoubleClick(canvas, pixel);

  QPointer<vt::app::frmLine> dialog = OpenDialog<vt::app::frmLine>();
  QVERIFY(dialog);
  QCOMPARE(dialog->objectId(), id);
  QCOMPARE(dialog->parentWidget(), static_cast<QWidget*>(window_));  // kept above the main window
  QCOMPARE(dialog->windowModality(), Qt::WindowModal);
  QVERIFY(EditMode);
  QCOMPARE(EditObjectId, id);

  auto* style = dialog->findChild<QComboBox*>("cboStyle");
  auto* kind = dialog->findChild<QComboBox*>("cboKind");
  auto* width = dialog->findChild<QLineEdit*>("txtWidth");
  auto* color = dialog->findChild<vt::app::ColorButton*>("cmdColor");
  QVERIFY(style && kind && width && color);
  QCOMPARE(style->currentText(), QString("Solid"));
  QCOMPARE(kind->currentText(), QString("Segment"));
  QCOMPARE(width->text(), QString("2"));

  style->setCurrentIndex(style->findText("Dot"));
  width->selectAll();
  QTest::keyClicks(width, "4.5");
  // The colour goes through the colour dialog.
  QColor offered;
  WhenModal<QColorDialog>([&](QColorDialog* d) {
    offered = d->currentColor();
    d->setCurrentColor(QColor(0, 128, 64));
    d->accept();
  });
  QTest::mouseClick(color, Qt::LeftButton);
  QTRY_COMPARE(color->color(), RGB(0, 128, 64));
  QCOMPARE(offered, QColor(0, 0, 0));  // it opened on the line's colour

  const int undo = UndoCount;
  QVERIFY(line->GELineStyle == 1 && line->GELineWidth == 2);  // nothing applied before OK
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
  QTRY_VERIFY(!dialog);
  line = Doc.Lines.FindById(id);
  QVERIFY(line);
  QCOMPARE(line->GELineStyle, 3);
  QCOMPARE(line->GELineWidth, 4.5f);
  QCOMPARE(line->ForeColor, RGB(0, 128, 64));
  QCOMPARE(UndoCount, undo + 1);
  QCOMPARE(UndoEntry(UndoCount), GetUndoVar());
  QVERIFY(!EditMode);

  // The change is one undo step.
  window_->RunCommand("mnuFUndo");
  line = Doc.Lines.FindById(id);
  QVERIFY(line);
  QCOMPARE(line->GELineStyle, 1);
  QCOMPARE(line->GELineWidth, 2.0f);
}

void PropertyFormsTest::aBadWidthKeepsTheDialogOpenWithTheMessageAndChangesNothing() {
  CLine* line = AddSegment();
  const std::string id = line->ID;
  SelectObject(*line);
  QString note;
  WhenModal<QMessageBox>([&](QMessageBox* box) {
    note = box->windowTitle() + ": " + box->text();
    box->button(QMessageBox::Ok)->click();
  });
  window_->RunCommand("mnuEditRegion");  // a line is no region
  QCOMPARE(note, QString("Note: Please select a polygon first."));
  const std::string before = GetUndoVar();
  const int undo = UndoCount;

  QVERIFY(window_->menuAction("mnuEditLine")->isEnabled());
  window_->menuAction("mnuEditLine")->trigger();
  QPointer<vt::app::frmLine> dialog = OpenDialog<vt::app::frmLine>();
  QVERIFY(dialog);
  QCOMPARE(dialog->objectId(), id);
  auto* style = dialog->findChild<QComboBox*>("cboStyle");
  auto* width = dialog->findChild<QLineEdit*>("txtWidth");
  auto* label = dialog->findChild<QLineEdit*>("txtLabel");
  style->setCurrentIndex(style->findText("Dash"));
  QTest::keyClicks(label, "g");
  width->selectAll();
  QTest::keyClicks(width, "wide");

  QString shown;
  WhenModal<QMessageBox>([&](QMessageBox* box) {
    shown = box->windowTitle() + ": " + box->text();
    box->button(QMessageBox::Ok)->click();
  });
  QPushButton* ok = dialog->findChild<QPushButton*>("cmdOK");
  QTest::mouseClick(ok, Qt::LeftButton);
  QTRY_COMPARE(shown, QString("Error: Illegal data exist."));
  // Still open, with everything the user typed, and the document as it was.
  QVERIFY(dialog && dialog->isVisible());
  QCOMPARE(width->text(), QString("wide"));
  QCOMPARE(style->currentText(), QString("Dash"));
  QCOMPARE(label->text(), QString("g"));
  QCOMPARE(GetUndoVar(), before);
  QCOMPARE(UndoCount, undo);

  // Corrected, the same dialog applies everything at once.
  width->selectAll();
  QTest::keyClicks(width, "3");
  QTest::mouseClick(ok, Qt::LeftButton);
  QTRY_VERIFY(!dialog);
  line = Doc.Lines.FindById(id);
  QCOMPARE(line->GELineStyle, 2);
  QCOMPARE(line->GELineWidth, 3.0f);
  QCOMPARE(line->LLabel, std::string("g"));
  QCOMPARE(UndoCount, undo + 1);
}

// ---- points ---------------------------------------------------------------------------

void PropertyFormsTest::pointPropertiesNeedsSelectedPointsAndStylesOnlyThem() {
  QVERIFY(Doc.Points.count() >= 3);
  QString shown;
  WhenModal<QMessageBox>([&](QMessageBox* box) {
    shown = box->windowTitle() + ": " + box->text();
    box->button(QMessageBox::Ok)->click();
  });
  window_->menuAction("mnuEditPoint")->trigger();
  QTRY_COMPARE(shown, QString("Note: Please select a point first."));
  QVERIFY(!window_->findChild<vt::app::frmPointEdit*>());

  Position* a = Doc.Points.Item(1);
  Position* b = Doc.Points.Item(2);
  Position* c = Doc.Points.Item(3);
  SelectObject(*b);
  SelectObject(*c);
  const std::string untouched = a->Save();
  const int undo = UndoCount;
  window_->menuAction("mnuEditPoint")->trigger();
  QPointer<vt::app::frmPointEdit> dialog = OpenDialog<vt::app::frmPointEdit>();
  QVERIFY(dialog);
  auto* symbol = dialog->findChild<QComboBox*>("cboSymbol");
  auto* size = dialog->findChild<QComboBox*>("cboSize");
  symbol->setCurrentIndex(symbol->findText("Crosshair"));
  size->setCurrentIndex(size->findText("5"));
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
  QTRY_VERIFY(!dialog);
  for (Position* p : {b, c}) {
    QCOMPARE(p->Symbol, 6);
    QCOMPARE(static_cast<int>(p->Size), 5);
  }
  QCOMPARE(a->Save(), untouched);
  QCOMPARE(UndoCount, undo + 1);

  // Cancel applies nothing.
  window_->menuAction("mnuEditPoint")->trigger();
  dialog = OpenDialog<vt::app::frmPointEdit>();
  QVERIFY(dialog);
  dialog->findChild<QComboBox*>("cboSize")->setCurrentIndex(0);
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
  QTRY_VERIFY(!dialog);
  QCOMPARE(static_cast<int>(b->Size), 5);
  QCOMPARE(UndoCount, undo + 1);
}

void PropertyFormsTest::propertiesOpensFrmF16WhereOnlyAFreePointHasEditableCoordinates() {
  CLine* line = AddSegment();
  Position* a = Doc.Points.Item(1);
  SelectObject(*a);
  SelectObject(*line);
  window_->menuAction("mnuEditProp")->trigger();
  QPointer<vt::app::frmF16> dialog = OpenDialog<vt::app::frmF16>();
  QVERIFY(dialog);
  QCOMPARE(dialog->objectId(), a->ID);  // points come before lines
  auto* x = dialog->findChild<QLineEdit*>("txtX");
  QVERIFY(!x->isReadOnly());
  QCOMPARE(x->text(), QString("-3"));
  x->selectAll();
  QTest::keyClicks(x, "-1.5");
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
  QTRY_VERIFY(!dialog);
  QCOMPARE(a->x, -1.5f);
  QCOMPARE(line->pBegin.x, -1.5f);  // the segment follows its end

  // A constructed point shows its place but does not take a new one.
  Position* m = Doc.Points.Add(NewObjectId("PT"), 0, -2, 0, 9, a->ID, Doc.Points.Item(2)->ID, 1);
  const std::string mId = m->ID;
  QVERIFY(OpenPropertyForm(PropertyForm::Point, mId));
  dialog = OpenDialog<vt::app::frmF16>();
  QVERIFY(dialog);
  QCOMPARE(dialog->objectId(), mId);
  x = dialog->findChild<QLineEdit*>("txtX");
  QVERIFY(x->isReadOnly());
  QTest::keyClicks(x, "7");
  QCOMPARE(x->text(), QString("0"));
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
  QTRY_VERIFY(!dialog);
  QCOMPARE(FindPoint(mId)->x, 0.0f);
}

VT_GUI_TEST_MAIN(PropertyFormsTest)
#include "property_forms_test.moc"
