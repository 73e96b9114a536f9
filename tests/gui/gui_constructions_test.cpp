// The construction, measurement, transformation and property dialogs in the
// running program, opened from their commands or by a double click. A first
// figure drawn, dragged, undone and saved is the session test's.
// Before the Qt headers: its names would meet Qt's keyword macros.
#include "document/undo.h"

#include <QColorDialog>
#include <QComboBox>
#include <QPointer>
#include <QListWidget>
#include <QRadioButton>
#include <cmath>

#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"
#include "geometry/dialogs/property_forms.h"
#include "geometry/geom.h"
#include "gui_fixture.h"
#include "persist/docio.h"
#include "tools/construction_prompts.h"
#include "tools/constructions.h"
#include "tools/dialogs/construction_forms.h"
#include "tools/notes.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;

class GuiConstructionsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase();
  void init();
  void cleanup();

  void computeDialogKeepsItsNameRulesAndMakesAComputedNote();
  void transformDialogsRefuseBadFieldsAndChangeNothing();
  void promptDialogsOpenFromTheirCommandsAndRefuseBadNumbers();
  void aVectorTranslationFollowsItsPointsAndSelectAddsToTheList();
  void aDoubleClickOnALineOpensFrmLineAndOkAppliesStyleWidthAndColour();
  void pointPropertiesNeedsSelectedPointsAndStylesOnlyThem();
  void frmF16ShowsAConstructedPointsPlaceReadOnly();

 private:
  QStringList TakeMessages() { return watcher_.Take(); }
  static Position* Free(float x, float y) { return guitest::FreePoint(x, y, 0, true); }
  void Select(std::initializer_list<DocObject*> objs);
  // Three points A(-3, -2), B(3, -2), C(0, 3), and a segment AB made as a
  // construction command makes one.
  void ThreePoints();
  CLine* AddSegment();
  QPoint PixelOf(float x, float y) { return guitest::PixelOf(window_, x, y); }
  void Click(const QPoint& at) { guitest::Click(window_->picDraw(), at); }
  QPoint EmptySpot() const { return QPoint(window_->picDraw()->width() * 9 / 10, window_->picDraw()->height() * 9 / 10); }
  template <class T>
  T* Shown() {
    return guitest::Shown<T>(window_, 3000);
  }
  template <class T>
  T* Field(QWidget* dialog, const char* name) {
    return dialog->findChild<T*>(name);
  }
  static void ClickOk(QWidget* dialog) { guitest::PressOk(dialog); }

  std::unique_ptr<QTemporaryDir> xdg_;
  frmF1* window_ = nullptr;
  guitest::MessageWatcher watcher_;
  QStringList& messages_ = watcher_.messages;
};

void GuiConstructionsTest::initTestCase() {
  xdg_ = guitest::IsolateDesktopFolders();
  QVERIFY(xdg_->isValid());
}

void GuiConstructionsTest::init() {
  QVERIFY(guitest::OpenEmptyWindow(window_));
  watcher_.messages.clear();
  watcher_.file.clear();
  watcher_.Start(this);
}

void GuiConstructionsTest::cleanup() {
  watcher_.Stop();
  delete window_;
  window_ = nullptr;
  ClearHandlers();
}

void GuiConstructionsTest::Select(std::initializer_list<DocObject*> objs) {
  for (DocObject* o : objs) {
    o->SetDrawMode(2);
    SelectObject(*o);
  }
  window_->picDraw()->MakeCurrent();
  RedrawScene();
}

void GuiConstructionsTest::ThreePoints() {
  for (auto [x, y] : {std::pair{-3.0f, -2.0f}, {3.0f, -2.0f}, {0.0f, 3.0f}}) Free(x, y);
  window_->picDraw()->MakeCurrent();
  PushSnapshot();
}

CLine* GuiConstructionsTest::AddSegment() {
  CLine* line = guitest::Segment(Doc.Points.Item(1), Doc.Points.Item(2));
  window_->picDraw()->MakeCurrent();
  PushSnapshot();
  RedrawScene();
  return line;
}

// ---- 1. each dialog from its command; bad fields ------------------------------------------

void GuiConstructionsTest::computeDialogKeepsItsNameRulesAndMakesAComputedNote() {
  window_->menuAction("mnuMCompute")->trigger();
  auto* d = Shown<vt::app::frmComp>();
  QVERIFY(d);
  auto* name = Field<QLineEdit>(d, "txtName");
  auto* expr = Field<QLineEdit>(d, "txtExpression");
  expr->setText("2+3*4");
  const int undo = UndoCount;
  const std::string before = GetUndoVar();
  const struct {
    const char* name;
    const char* message;
  } refused[] = {
      {"  ", "Please input the name. "},
      {"1a", "The name is invalid, the first character must be a letter. "},
      {"A-1",
       "The name is invalid, invalid character exists. The name must be composed of letters, digits and \"_\", "
       "and start with a letter. "},
      {"Sqr", "The name Sqr is a function of the formulas; please choose another name. "},
      {"x", "The name x is a variable of curves and surfaces; please choose another name. "},
  };
  for (const auto& r : refused) {
    name->setText(r.name);
    ClickOk(d);
    QTRY_COMPARE(messages_.size(), 1);
    QVERIFY2(TakeMessages().first().endsWith(r.message), r.name);
    QVERIFY(d->isVisible());
    QCOMPARE(Doc.Notes.count(), 0);
    QCOMPARE(UndoCount, undo);
    QCOMPARE(GetUndoVar(), before);
  }
  name->setText(" A1_b ");
  ClickOk(d);
  QTRY_VERIFY(!window_->findChild<vt::app::frmComp*>());
  QCOMPARE(Doc.Notes.count(), 1);
  CNote* n = Doc.Notes.Item(1);
  QCOMPARE(QString::fromStdString(n->VarName), QString("A1_b"));
  QCOMPARE(QString::fromStdString(n->Para1), QString("2+3*4"));
  QCOMPARE(n->Value, 14.0f);  // evaluated by the draw that ended the command
  QCOMPARE(UndoCount, undo + 1);

  // Reopened (as a double click does): it edits the note and adds none; the
  // list offers the names an expression can read, without the note's own.
  Free(0, 0);
  Select({Doc.Points.Item(1)});
  window_->menuAction("mnuMX")->trigger();
  QCOMPARE(Doc.Notes.count(), 2);
  EditMode = true;
  EditObjectId = n->ID;
  ComputeDialog(n);
  d = Shown<vt::app::frmComp>();
  QVERIFY(d);
  QCOMPARE(Field<QLineEdit>(d, "txtName")->text(), QString("A1_b"));
  auto* vars = Field<QListWidget>(d, "lstVariables");
  QCOMPARE(vars->count(), 1);
  const QString varName = vars->item(0)->text();
  QCOMPARE(varName, QString::fromStdString(Doc.Notes.Item(2)->VarName));
  // A double click on the list puts the name into the expression.
  auto* exprField = Field<QLineEdit>(d, "txtExpression");
  exprField->clear();
  const QRect item = vars->visualItemRect(vars->item(0));
  QTest::mouseClick(vars->viewport(), Qt::LeftButton, Qt::NoModifier, item.center());
  QTest::mouseDClick(vars->viewport(), Qt::LeftButton, Qt::NoModifier, item.center());
  exprField->insert("+1");
  QCOMPARE(exprField->text(), vars->item(0)->text() + "+1");
  ClickOk(d);
  QTRY_VERIFY(!window_->findChild<vt::app::frmComp*>());
  QCOMPARE(Doc.Notes.count(), 2);
  QCOMPARE(QString::fromStdString(n->Para1), varName + "+1");
  QVERIFY(!EditMode);
  // The x of the point at 0, plus 1: the note reads the measurement.
  window_->picDraw()->MakeCurrent();
  RedrawScene();
  QCOMPARE(n->Value, 1.0f);
  QVERIFY(messages_.isEmpty());
}

void GuiConstructionsTest::transformDialogsRefuseBadFieldsAndChangeNothing() {
  Position* a = Free(1, 1);
  Select({a});
  const int undo = UndoCount;
  const std::string before = GetUndoVar();
  auto unchanged = [&] { return UndoCount == undo && GetUndoVar() == before; };

  // Rotation: no centre.
  window_->menuAction("mnuTRotate")->trigger();
  auto* rot = Shown<vt::app::frmTRotate>();
  QVERIFY(rot);
  QCOMPARE(Field<QListWidget>(rot, "List1")->count(), 1);
  ClickOk(rot);
  QTRY_VERIFY(!messages_.isEmpty());
  QCOMPARE(TakeMessages(), QStringList{"Note: Please select a rotating axis or center point first."});
  QVERIFY(rot->isVisible());
  QVERIFY(unchanged());
  rot->reject();

  // Mirror: an id that names nothing.
  window_->menuAction("mnuMirrorP")->trigger();
  auto* mir = Shown<vt::app::frmTMirror>();
  QVERIFY(mir);
  Field<QLineEdit>(mir, "Text2")->setText("LN9999");
  ClickOk(mir);
  QTRY_VERIFY(!messages_.isEmpty());
  QCOMPARE(TakeMessages(), QStringList{"Note: Please select objects first."});
  QVERIFY(mir->isVisible() && unchanged());
  mir->reject();

  // Scale: a centre that is no point; a scale that is no number counts as 0.
  window_->menuAction("mnuTZoom")->trigger();
  auto* zoom = Shown<vt::app::frmTZoom>();
  QVERIFY(zoom);
  Field<QLineEdit>(zoom, "Text2")->setText("PT9999");
  ClickOk(zoom);
  QTRY_VERIFY(!messages_.isEmpty());
  QCOMPARE(TakeMessages(), QStringList{"Note: Please select a point first from the canvas."});
  QVERIFY(zoom->isVisible() && unchanged());
  Field<QLineEdit>(zoom, "Text2")->clear();
  Field<QLineEdit>(zoom, "Text1")->setText("abc");
  Field<QRadioButton>(zoom, "Option1")->setChecked(true);
  ClickOk(zoom);
  QTRY_VERIFY(!window_->findChild<vt::app::frmTZoom*>());
  QCOMPARE(a->x, 0.0f);
  QCOMPARE(a->y, 0.0f);
  QCOMPARE(UndoCount, undo + 1);

  // Translation by a vector without its points; then with nothing listed.
  window_->menuAction("mnuTMoving")->trigger();
  auto* mv = Shown<vt::app::frmTMove>();
  QVERIFY(mv);
  Field<QRadioButton>(mv, "Option5")->setChecked(true);
  const std::string moved = GetUndoVar();
  ClickOk(mv);
  QTRY_VERIFY(!messages_.isEmpty());
  QCOMPARE(TakeMessages(), QStringList{"Note: Please select a point first from the canvas."});
  QVERIFY(mv->isVisible());
  QCOMPARE(GetUndoVar(), moved);
  // "Select a point from the canvas" with no point selected.
  Click(EmptySpot());
  QCOMPARE(Sel.Points.count(), 0);
  Field<QPushButton>(mv, "cmdStart")->click();
  QTRY_VERIFY(!messages_.isEmpty());
  QCOMPARE(TakeMessages(), QStringList{"Note: Please select a point first from the canvas."});
  QVERIFY(Field<QLineEdit>(mv, "txtStart")->text().isEmpty());
  mv->reject();
  window_->menuAction("mnuTMoving")->trigger();
  mv = Shown<vt::app::frmTMove>();
  QVERIFY(mv);
  QCOMPARE(Field<QListWidget>(mv, "List1")->count(), 0);
  const std::string deselected = GetUndoVar();  // the click took A out of the selection
  const int undoNow = UndoCount;
  ClickOk(mv);
  QTRY_VERIFY(!messages_.isEmpty());
  QCOMPARE(TakeMessages(), QStringList{"Note: Please select at lease 1 object first."});
  QVERIFY(mv->isVisible());
  QCOMPARE(GetUndoVar(), deselected);
  QCOMPARE(UndoCount, undoNow);
  mv->reject();
}

void GuiConstructionsTest::promptDialogsOpenFromTheirCommandsAndRefuseBadNumbers() {
  // Nothing selected: the commands say what they need and open nothing.
  const struct {
    const char* command;
    const char* message;
  } wrong[] = {{"mnuEP", kMsgMiddle},
               {"mnuDraw2LineSt", kMsgTwoPointsOrSegment},
               {"mnuDraw2SSD2D", kMsgTwoPointsOrSegment},
               {"mnuDraw23DCir", kMsgAxisSegment},
               {"mnuDraw2DJC", kMsgOnePointFirst}};
  for (const auto& w : wrong) {
    window_->menuAction(w.command)->trigger();
    QTRY_VERIFY(!messages_.isEmpty());
    QCOMPARE(TakeMessages(), QStringList{QString("Note: ") + w.message});
    QVERIFY(!window_->findChild<vt::app::PromptDialog*>());
  }
  QCOMPARE(DocumentObjectCount(), 0);

  Position* a = Free(-2, 0);
  Position* b = Free(2, 0);
  Select({a, b});
  // frmDFD: "3" to "10"; five parts make four points.
  window_->menuAction("mnuEP")->trigger();
  auto* dfd = Shown<vt::app::frmDFD>();
  QVERIFY(dfd);
  auto* parts = Field<QComboBox>(dfd, "cboParts");
  parts->setCurrentText("5");
  ClickOk(dfd);
  QTRY_VERIFY(!window_->findChild<vt::app::frmDFD*>());
  QCOMPARE(Doc.Points.count(), 6);
  QCOMPARE(Doc.Points.Item(3)->x, -1.2f);

  // A bad number: the message, the dialog stays, nothing changes.
  auto refuses = [&](const char* command, const char* field, const char* bad) -> QWidget* {
    window_->menuAction(command)->trigger();
    auto* d = Shown<vt::app::PromptDialog>();
    if (!d) return nullptr;
    const std::string before = GetUndoVar();
    const int undo = UndoCount;
    Field<QLineEdit>(d, field)->setText(bad);
    ClickOk(d);
    if (!QTest::qWaitFor([&] { return !messages_.isEmpty(); }, 3000)) return nullptr;
    const bool ok = TakeMessages() == QStringList{"Error: Illegal data exist."} && d->isVisible() &&
                    GetUndoVar() == before && UndoCount == undo;
    return ok ? d : nullptr;
  };
  QWidget* ext = refuses("mnuDraw2LineSt", "txtDistance", "1..2");
  QVERIFY(ext);
  Field<QLineEdit>(ext, "txtDistance")->setText("1");
  ClickOk(ext);
  QTRY_VERIFY(!window_->findChild<vt::app::frmLineExtP*>());
  Position* e = Doc.Points.Item(Doc.Points.count());
  QCOMPARE(e->ptype, 6);
  QCOMPARE(e->x, 3.0f);

  QWidget* flex = refuses("mnuDraw2SSD2D", "txtAngle", "ninety");
  QVERIFY(flex);
  Field<QLineEdit>(flex, "txtAngle")->setText("90");
  Field<QLineEdit>(flex, "txtDistance")->setText("2");
  ClickOk(flex);
  QTRY_VERIFY(!window_->findChild<vt::app::frmFlexP2D*>());
  Position* f = nullptr;
  for (Position* p : Doc.Points)
    if (p->ptype == 11) f = p;
  QVERIFY(f);
  QVERIFY(std::fabs(f->x - 2) < 1e-3f && std::fabs(f->y - 2) < 1e-3f);

  // The spatial circle about a segment; a radius of 0 is refused.
  Click(EmptySpot());
  CLine* axis = nullptr;
  {
    Select({a, b});
    window_->menuAction("mnuLinkLine")->trigger();
    QCOMPARE(Doc.Lines.count(), 1);
    axis = Doc.Lines.Item(1);
    Click(EmptySpot());
    Select({axis});
  }
  QWidget* c3 = refuses("mnuDraw23DCir", "txtRadius", "0");
  QVERIFY(c3);
  Field<QLineEdit>(c3, "txtRadius")->setText("1.5");
  ClickOk(c3);
  QTRY_COMPARE(Doc.Circles.count(), 1);
  QCOMPARE(Doc.Circles.Item(1)->CType, 5);
  QCOMPARE(Doc.Circles.Item(1)->Radius(), 1.5f);

  // frmCircle for a circle of a given radius about the selected point.
  Click(EmptySpot());
  Select({a});
  QWidget* cr = refuses("mnuDraw2DJC", "txtRadius", "");
  QVERIFY(cr);
  Field<QLineEdit>(cr, "txtRadius")->setText("2.5");
  ClickOk(cr);
  QTRY_COMPARE(Doc.Circles.count(), 2);
  CCircle* circle = Doc.Circles.Item(2);
  QCOMPARE(circle->CType, 3);
  QCOMPARE(circle->Radius(), 2.5f);
  QCOMPARE(circle->PCenter.ID, a->ID);
}

// ---- 2. images that follow their source ----------------------------------------------------

void GuiConstructionsTest::aVectorTranslationFollowsItsPointsAndSelectAddsToTheList() {
  Position* p = Free(-4, 2);
  Position* q = Free(-2, 2);
  Position* v1 = Free(2, -2);
  Position* v2 = Free(3, -1);
  // Opened with nothing selected; the dialog stays above the window while the
  // user clicks on the canvas.
  window_->menuAction("mnuTMoving")->trigger();
  auto* mv = Shown<vt::app::frmTMove>();
  QVERIFY(mv);
  auto* list = Field<QListWidget>(mv, "List1");
  QCOMPARE(list->count(), 0);
  Click(PixelOf(p->x, p->y));
  QVERIFY(IsSelected(p->ID));
  Field<QPushButton>(mv, "Command5")->click();
  QCOMPARE(list->count(), 1);
  Click(PixelOf(q->x, q->y));
  Field<QPushButton>(mv, "Command5")->click();
  QCOMPARE(list->count(), 2);  // p is not listed twice
  QCOMPARE(list->item(1)->text(), QString::fromStdString(q->ID));
  QVERIFY(mv->isVisible());

  Field<QRadioButton>(mv, "Option5")->setChecked(true);
  QVERIFY(Field<QLineEdit>(mv, "txtStart")->isVisible());
  QVERIFY(!Field<QLineEdit>(mv, "txtDx")->isVisible());
  Click(EmptySpot());
  Click(PixelOf(v1->x, v1->y));
  Field<QPushButton>(mv, "cmdStart")->click();
  Click(EmptySpot());
  Click(PixelOf(v2->x, v2->y));
  Field<QPushButton>(mv, "cmdEnd")->click();
  QCOMPARE(Field<QLineEdit>(mv, "txtStart")->text(), QString::fromStdString(v1->ID));
  QCOMPARE(Field<QLineEdit>(mv, "txtEnd")->text(), QString::fromStdString(v2->ID));
  ClickOk(mv);
  QTRY_VERIFY(!window_->findChild<vt::app::frmTMove*>());
  QVERIFY(messages_.isEmpty());
  Position* pi = nullptr;
  for (Position* o : Doc.Points)
    if (o->ptype == 10 && o->LKID == p->ID) pi = o;
  QVERIFY(pi);
  QCOMPARE(pi->MoveType, 3);  // by two points
  QCOMPARE(QString::fromStdString(pi->LKID3), QString::fromStdString(v1->ID));
  QCOMPARE(QString::fromStdString(pi->LKID4), QString::fromStdString(v2->ID));
  QCOMPARE(pi->x, -3.0f);
  QCOMPARE(pi->y, 3.0f);

  Click(EmptySpot());
  guitest::Drag(window_->picDraw(), PixelOf(v2->x, v2->y), PixelOf(v2->x, v2->y) + QPoint(30, -20));
  QVERIFY(v2->x > 3.2f);
  QVERIFY(std::fabs(pi->x - (p->x + v2->x - v1->x)) < 1e-4f);
  QVERIFY(std::fabs(pi->y - (p->y + v2->y - v1->y)) < 1e-4f);
}

// ---- 4. the property dialogs ----------------------------------------------------------------------------

void GuiConstructionsTest::aDoubleClickOnALineOpensFrmLineAndOkAppliesStyleWidthAndColour() {
  ThreePoints();
  CLine* line = AddSegment();
  const std::string id = line->ID;
  SelectObject(*line);
  window_->RunCommand("mnuEditRegion");  // a line is no region
  QCOMPARE(TakeMessages(), QStringList{"Note: Please select a polygon first."});
  Canvas* canvas = window_->picDraw();
  const QPoint pixel = guitest::PixelOf(window_, 0.5f, -2, 0);
  QVERIFY(canvas->rect().contains(pixel));
  guitest::DoubleClick(canvas, pixel);
  QPointer<vt::app::frmLine> dialog = Shown<vt::app::frmLine>();
  QVERIFY(dialog);
  QCOMPARE(dialog->objectId(), id);
  auto* style = dialog->findChild<QComboBox*>("cboStyle");
  auto* width = dialog->findChild<QLineEdit*>("txtWidth");
  auto* label = dialog->findChild<QLineEdit*>("txtLabel");
  auto* color = dialog->findChild<vt::app::ColorButton*>("cmdColor");
  style->setCurrentIndex(style->findText("Dot"));
  QTest::keyClicks(label, "g");
  // The colour goes through the colour dialog, which opens on the line's colour.
  QColor offered;
  guitest::WhenModal<QColorDialog>(this, [&](QColorDialog* d) {
    offered = d->currentColor();
    d->setCurrentColor(QColor(0, 128, 64));
    d->accept();
  });
  QTest::mouseClick(color, Qt::LeftButton);
  QTRY_COMPARE(color->color(), RGB(0, 128, 64));
  QCOMPARE(offered, QColor(0, 0, 0));

  // A bad width: the message, the dialog open with all that was typed, the
  // document as it was.
  const std::string before = GetUndoVar();
  const int undo = UndoCount;
  guitest::Type(dialog, "txtWidth", "wide");
  ClickOk(dialog);
  QTRY_VERIFY(!messages_.isEmpty());
  QCOMPARE(TakeMessages(), QStringList{"Error: Illegal data exist."});
  QVERIFY(dialog && dialog->isVisible());
  QCOMPARE(width->text(), QString("wide"));
  QCOMPARE(style->currentText(), QString("Dot"));
  QCOMPARE(label->text(), QString("g"));
  QCOMPARE(GetUndoVar(), before);
  QCOMPARE(UndoCount, undo);

  // Corrected, the same dialog applies everything at once, as one undo step.
  guitest::Type(dialog, "txtWidth", "4.5");
  ClickOk(dialog);
  QTRY_VERIFY(!dialog);
  line = Doc.Lines.FindById(id);
  QCOMPARE(line->GELineStyle, 3);
  QCOMPARE(line->GELineWidth, 4.5f);
  QCOMPARE(line->ForeColor, RGB(0, 128, 64));
  QCOMPARE(line->LLabel, std::string("g"));
  QCOMPARE(UndoCount, undo + 1);
  window_->RunCommand("mnuFUndo");
  line = Doc.Lines.FindById(id);
  QCOMPARE(line->GELineStyle, 1);
  QCOMPARE(line->GELineWidth, 2.0f);
}

// ---- points ---------------------------------------------------------------------------

void GuiConstructionsTest::pointPropertiesNeedsSelectedPointsAndStylesOnlyThem() {
  ThreePoints();
  window_->menuAction("mnuEditPoint")->trigger();
  QTRY_VERIFY(!messages_.isEmpty());
  QCOMPARE(TakeMessages(), QStringList{"Note: Please select a point first."});
  QVERIFY(!window_->findChild<vt::app::frmPointEdit*>());

  Position* a = Doc.Points.Item(1);
  Position* b = Doc.Points.Item(2);
  Position* c = Doc.Points.Item(3);
  SelectObject(*b);
  SelectObject(*c);
  const std::string untouched = a->Save();
  const int undo = UndoCount;
  window_->menuAction("mnuEditPoint")->trigger();
  QPointer<vt::app::frmPointEdit> dialog = Shown<vt::app::frmPointEdit>();
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
  dialog = Shown<vt::app::frmPointEdit>();
  QVERIFY(dialog);
  dialog->findChild<QComboBox*>("cboSize")->setCurrentIndex(0);
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
  QTRY_VERIFY(!dialog);
  QCOMPARE(static_cast<int>(b->Size), 5);
  QCOMPARE(UndoCount, undo + 1);
}

// A free point's coordinates edited through frmF16 are the follow session's.
void GuiConstructionsTest::frmF16ShowsAConstructedPointsPlaceReadOnly() {
  ThreePoints();
  Position* a = Doc.Points.Item(1);
  // A constructed point shows its place but does not take a new one.
  Position* m = Doc.Points.Add(NewObjectId("PT"), 0, -2, 0, 9, a->ID, Doc.Points.Item(2)->ID, 1);
  const std::string mId = m->ID;
  QVERIFY(OpenPropertyForm(PropertyForm::Point, mId));
  QPointer<vt::app::frmF16> dialog = Shown<vt::app::frmF16>();
  QVERIFY(dialog);
  QCOMPARE(dialog->objectId(), mId);
  auto* x = dialog->findChild<QLineEdit*>("txtX");
  QVERIFY(x->isReadOnly());
  QTest::keyClicks(x, "7");
  QCOMPARE(x->text(), QString("0"));
  QTest::mouseClick(dialog->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
  QTRY_VERIFY(!dialog);
  QCOMPARE(FindPoint(mId)->x, 0.0f);
}

VT_GUI_TEST_MAIN(GuiConstructionsTest)
#include "gui_constructions_test.moc"
