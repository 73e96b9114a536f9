// A teacher's sessions in the running program. What names something follows
// it: a line plotted from a measured angle moves with the dragged triangle,
// dialog edits carry intersections and following points along. The canvas
// tools: drags that neither box-select nor outlive a change of tool, notes
// that find a free place, a command button. A worksheet exported as SVG, PNG
// and PDF, the help window, Recent Files, the Unicode clipboard. Mistakes get
// one message at the moment of entry and change nothing. A sector, a sphere,
// a locus, a measurement and the tracks of a player restyled in their dialogs.
// Before the Qt headers: its names would meet Qt's keyword macros.
#include "document/undo.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QStatusBar>
#include <QTextBrowser>
#include <QXmlStreamReader>
#include <cmath>

#include "animation/animation.h"
#include "animation/dialogs/animation_forms.h"
#include "animation/player_objects.h"
#include "document/command_table.h"
#include "document/frame_commands.h"
#include "document/host.h"
#include "geometry/derived_surfaces.h"
#include "geometry/dialogs/property_forms.h"
#include "geometry/extension.h"
#include "geometry/locus.h"
#include "geometry/property_commands.h"
#include "graphs/curve_analysis.h"
#include "graphs/dialogs/curve_forms.h"
#include "graphs/swept_commands.h"
#include "gui_fixture.h"
#include "persist/docio.h"
#include "render/frame.h"
#include "tools/buttons.h"
#include "tools/canvas_input.h"
#include "tools/construction_prompts.h"
#include "tools/constructions.h"
#include "tools/dialogs/construction_forms.h"
#include "tools/notes.h"
#include "tools/transform.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;
using vt::app::PropertyFormDialog;

class SessionTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    xdg_ = guitest::IsolateDesktopFolders();
    qputenv("XDG_CONFIG_HOME", (xdg_->path() + "/config").toUtf8());  // the recent files
  }
  void init() {
    QVERIFY(guitest::OpenEmptyWindow(window_));
    watcher_.messages.clear();
    watcher_.file.clear();
  }
  void cleanup() {
    watcher_.Stop();
    delete window_;
    window_ = nullptr;
    ClearHandlers();
  }

  void aLineOfAMeasuredAngleFollowsTheDraggedTriangle();
  void dialogEditsMoveWhatIsBuiltOnTheObject();
  void dragsNeitherBoxSelectNorOutliveAToolChange();
  void thirtyNotesAButtonAndAPlayerAllFindAFreePlace();
  void aFirstNoteOnTheStartDocumentCoversNoneOfItsItems();
  void aWorksheetFromTheStartDocument();
  void aBadFormulaIsRefusedOnceWhereItIsTyped();
  void constructionsThatCannotBeMadeSayWhy();
  void filesAndDrawingOpenAtMostOneBox();
  void aSectorASphereALocusAndAMeasurementAreRestyled();
  void tracksAreEditedInPlaceFromTheirRows();

 private:
  void Click(const QPoint& at) { guitest::Click(window_->picDraw(), at); }
  // A curve y = formula through frmF5, with its roots shown.
  CFunCurve* Plot(const QString& formula) {
    window_->menuAction("mnuDraw2Curve")->trigger();
    QPointer<QWidget> d = guitest::ShownNamed("frmF5");
    if (!d) return nullptr;
    guitest::Type(d, "txtFormula1", formula);
    d->findChild<QCheckBox*>("chkRoot")->setChecked(true);
    guitest::PressOk(d);
    if (!QTest::qWaitFor([&] { return !d; }, 3000)) return nullptr;
    return Doc.FunCurves.Item(Doc.FunCurves.count());
  }
  QPoint PixelOf(float x, float y) { return guitest::PixelOf(window_, x, y); }
  QPoint PctPixel(float px, float py) const {
    const Canvas* c = window_->picDraw();
    return QPoint(qRound(px / 100 * c->width()), qRound((100 - py) / 100 * c->height()));
  }
  void Drag(const QPoint& from, const QPoint& to) { guitest::Drag(window_->picDraw(), from, to, 8); }
  // A point made with the point tool at a place of the plane.
  Position* NewPoint(float x, float y) {
    window_->RunCommand("mnuDrawP");
    Click(PixelOf(x, y));
    return Doc.Points.Item(Doc.Points.count());
  }
  // A segment made with the segment tool between two places.
  CLine* NewSegment(float x1, float y1, float x2, float y2) {
    window_->RunCommand("mnuDrawSeg");
    Click(PixelOf(x1, y1));
    Click(PixelOf(x2, y2));
    return Doc.Lines.Item(Doc.Lines.count());
  }
  // Runs a command whose file dialog is answered with `path`.
  void RunWithFile(const char* command, const QString& path) {
    watcher_.file = path;
    watcher_.Start(this);
    window_->RunCommand(command);
    watcher_.Stop();
  }
  QStringList Messages() {
    QTest::qWait(150);  // a box raised late would still be counted
    return watcher_.messages;
  }
  static Position* Free(float x, float y) { return guitest::FreePoint(x, y, 0, true); }
  void Select(std::initializer_list<DocObject*> objs) {
    guitest::SelectOnly({});
    for (DocObject* o : objs) {
      o->SetDrawMode(2);
      SelectObject(*o);
    }
  }
  template <class T>
  T* Shown() {
    return guitest::Shown<T>(window_, 3000);
  }
  static Position* Point(float x, float y, float z) { return guitest::FreePoint(x, y, z); }
  // A double click where a screen item at (pctX, pctY) per cent lies.
  void DoubleClickAtPct(float pctX, float pctY) {
    QWidget* canvas = window_->picDraw();
    guitest::DoubleClick(canvas, QPoint(qRound((pctX + 2) / 100 * canvas->width()),
                                        qRound((100 - pctY - 1.5f) / 100 * canvas->height())));
  }
  // Edit > Properties with only `o` selected.
  void OpenProperties(DocObject& o) {
    guitest::SelectOnly({&o});
    window_->menuAction("mnuEditProp")->trigger();
  }
  template <class T>
  T* Visible(const char* name) {
    T* d = nullptr;
    // Null when it did not show within the wait: the caller's check fails on it.
    if (!QTest::qWaitFor([&] { return (d = window_->findChild<T*>(name)) && d->isVisible(); }, 5000)) return nullptr;
    return d;
  }
  // OK, and checks that it took exactly one undo step.
  void OkIsOneStep(QDialog* d) {
    const int undo = UndoCount;
    QPointer<QDialog> alive(d);
    QTest::mouseClick(d->findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    QTRY_VERIFY(!alive || !alive->isVisible());
    QCOMPARE(UndoCount, undo + 1);
  }
  static void Set(QWidget* d, const char* field, const QString& text) { d->findChild<QLineEdit*>(field)->setText(text); }

  std::unique_ptr<QTemporaryDir> xdg_;
  QTemporaryDir temp_;
  frmF1* window_ = nullptr;
  guitest::MessageWatcher watcher_;
};

void SessionTest::aLineOfAMeasuredAngleFollowsTheDraggedTriangle() {
  watcher_.Start(this);
  // A triangle with the segment tool, the angle at A measured from the menu.
  Canvas* canvas = window_->picDraw();
  const int w = canvas->width(), h = canvas->height();
  const QPoint pa(w * 3 / 10, h * 7 / 10), pb(w * 7 / 10, h * 7 / 10), pc(w * 4 / 10, h * 3 / 10);
  window_->menuAction("mnuDrawSeg")->trigger();
  for (const auto& [from, to] : {std::pair{pa, pb}, std::pair{pb, pc}, std::pair{pc, pa}}) {
    Click(from);
    QTest::mouseMove(canvas, (from + to) / 2);
    Click(to);
  }
  QTRY_COMPARE(Doc.Lines.count(), 3);
  window_->menuAction("mnuSelect")->trigger();
  for (const QPoint& at : {pb, pa, pc}) Click(at);
  window_->menuAction("mnuAngle")->trigger();
  QCOMPARE(Doc.Notes.count(), 1);
  CNote* angle = Doc.Notes.Item(1);
  const QString a = QString::fromStdString(angle->VarName);

  // y = a x + b with a that angle (scaled to a slope), and a parabola beside it.
  CFunCurve* line = Plot(a + "/100*x+1");
  QVERIFY(line);
  QVERIFY(Plot("x^2-2"));
  auto followsTheAngle = [&] {
    for (size_t i = 0; i < line->Vert3D.size(); i += 10) {
      const Position& s = line->Vert3D[i];
      if (std::fabs(s.y - (angle->Value / 100 * s.x + 1)) > 1e-3f) return false;
    }
    return !line->Vert3D.empty();
  };
  QVERIFY(followsTheAngle());

  // The results panel: one block per curve, under its title.
  auto* dock = window_->findChild<QDockWidget*>("dockResults");
  auto* text = window_->findChild<QPlainTextEdit*>("txtResults");
  QTRY_VERIFY(dock->isVisible() && text->toPlainText().contains("x^2-2"));
  QStringList blocks = text->toPlainText().split("\n\n");
  QCOMPARE(blocks.size(), 2);
  QVERIFY2(blocks[0].startsWith("y=" + a + "/100*x+1\n    Root: x=-"), qPrintable(blocks[0]));
  QVERIFY2(blocks[1].startsWith("y=x^2-2\n    Root: x=-1.41"), qPrintable(blocks[1]));
  QCOMPARE(blocks[1].count("Root"), 2);
  const QString firstBlock = blocks[0];

  // Drag A: the angle changes, the line's samples and its root with it.
  Click(QPoint(w * 9 / 10, h * 9 / 10));
  const float before = angle->Value;
  const float y1 = line->Vert3D.back().y;
  guitest::Drag(canvas, pa, pa + QPoint(-w / 10, h / 10));
  QVERIFY2(std::fabs(angle->Value - before) > 0.5f, qPrintable(QString::number(angle->Value)));
  QVERIFY(std::fabs(line->Vert3D.back().y - y1) > 1e-3f);
  QVERIFY(followsTheAngle());
  QTRY_VERIFY(text->toPlainText().split("\n\n").value(0) != firstBlock);
  QCOMPARE(text->toPlainText().toStdString(), CurveResults.Text());
  // Undo puts A back, and the angle and the line with it.
  window_->menuAction("mnuFUndo")->trigger();
  QTRY_VERIFY(Doc.Notes.count() == 1 && std::fabs(Doc.Notes.Item(1)->Value - before) < 0.01f);
  angle = Doc.Notes.Item(1);
  line = Doc.FunCurves.Item(1);
  canvas->MakeCurrent();
  RedrawScene();
  QVERIFY(followsTheAngle());
  QVERIFY2(watcher_.messages.isEmpty(), qPrintable(watcher_.messages.join(" | ")));
}

void SessionTest::dialogEditsMoveWhatIsBuiltOnTheObject() {
  watcher_.Start(this);
  // The line y = 1 and the circle of radius 2 about the origin, made from
  // the menus, and their crossings.
  Position* o = guitest::FreePoint(0, 0);
  Position* p = guitest::FreePoint(-5, 1);
  Position* q = guitest::FreePoint(5, 1);
  window_->picDraw()->MakeCurrent();
  guitest::SelectOnly({p, q});
  QVERIFY(DirectedExtensionOK(90, 2));  // an extension point over the segment
  Position* ext = Doc.Points.Item(Doc.Points.count());
  QCOMPARE(ext->ptype, 11);
  guitest::Segment(p, q);
  guitest::SelectOnly({o});
  window_->menuAction("mnuDraw2DJC")->trigger();
  QPointer<QWidget> make = guitest::ShownNamed("frmCircle");
  QVERIFY(make);
  guitest::Type(make, "txtRadius", "2");
  guitest::PressOk(make);
  QTRY_COMPARE(Doc.Circles.count(), 1);
  CCircle* circle = Doc.Circles.Item(1);
  QCOMPARE(Doc.Lines.count(), 1);
  guitest::SelectOnly({Doc.Lines.Item(1), circle});
  const int points = Doc.Points.count();
  window_->menuAction("mnuInterP")->trigger();
  QCOMPARE(Doc.Points.count(), points + 2);
  Position* x1 = Doc.Points.Item(points + 1);
  Position* x2 = Doc.Points.Item(points + 2);
  auto crossings = [&](float r) {
    const float x = std::sqrt(r * r - 1);
    return std::fabs(std::fabs(x1->x) - x) < 1e-3f && std::fabs(std::fabs(x2->x) - x) < 1e-3f &&
           std::fabs(x1->x + x2->x) < 1e-3f && std::fabs(x1->y - 1) < 1e-3f && std::fabs(x2->y - 1) < 1e-3f;
  };
  QVERIFY(crossings(2));

  // The radius 2 to 4 in the circle's dialog: the crossings go to +-3.873.
  const int undo = UndoCount;
  QVERIFY(OpenPropertyForm(PropertyForm::Circle, circle->ID));
  QPointer<QWidget> cd = guitest::ShownNamed("frmCircle");
  QVERIFY(cd);
  guitest::Type(cd, "txtRadius", "4");
  guitest::PressOk(cd);
  QTRY_VERIFY(!cd);
  QVERIFY2(crossings(4), qPrintable(QString("%1 %2").arg(x1->x).arg(x2->x)));
  QCOMPARE(UndoCount, undo + 1);

  // A point that follows P; P moved through its dialog takes it along, and
  // the extension point over P and Q is placed anew.
  Position* f = guitest::FreePoint(-4, 3);
  f->ptype = 8;
  f->AddParent(p->ID);
  p->AddChild(f->ID);
  Position expected, far;
  QVERIFY(OpenPropertyForm(PropertyForm::Point, p->ID));
  QPointer<QWidget> pd = guitest::ShownNamed("frmF16");
  QVERIFY(pd);
  guitest::Type(pd, "txtY", "3");
  guitest::PressOk(pd);
  QTRY_VERIFY(!pd);
  QCOMPARE(p->y, 3.0f);
  QCOMPARE(f->x, -4.0f);
  QCOMPARE(f->y, 5.0f);
  QVERIFY(DirectedExtension(*p, *q, ext->Para1, ext->Para2, expected, far));
  QVERIFY(std::fabs(ext->x - expected.x) < 1e-4f && std::fabs(ext->y - expected.y) < 1e-4f);
  // The line tilted: the crossings left y = 1 and stayed on the circle.
  for (Position* x : {x1, x2}) QVERIFY(std::fabs(std::hypot(x->x, x->y) - 4) < 1e-3f);
  QVERIFY(!crossings(4));
  QCOMPARE(UndoCount, undo + 2);
  QVERIFY2(watcher_.messages.isEmpty(), qPrintable(watcher_.messages.join(" | ")));
}

void SessionTest::dragsNeitherBoxSelectNorOutliveAToolChange() {
  Position* a = NewPoint(-4, 0);
  Position* c = NewPoint(0, 0.5f);
  QCOMPARE(Doc.Points.count(), 2);
  const float cx = c->x, cy = c->y;
  window_->RunCommand("mnuSelect");
  // A dragged across C: A moves, C is neither selected nor moved.
  Drag(PixelOf(-4, 0), PixelOf(4, 1));
  QVERIFY(std::fabs(a->x - 4) < 0.3f && std::fabs(a->y - 1) < 0.3f);
  QVERIFY(IsSelected(a->ID));
  QVERIFY(!IsSelected(c->ID));
  Drag(PixelOf(4, 1), PixelOf(-2, -3));
  QCOMPARE(c->x, cx);
  QCOMPARE(c->y, cy);
  QVERIFY(!RubberBandOn);
  // Then C dragged: C alone moves, though A was still selected.
  const float ax0 = a->x, ay0 = a->y;
  Drag(PixelOf(cx, cy), PixelOf(cx + 1, cy - 2));
  QVERIFY(std::fabs(c->x - cx - 1) < 0.3f && std::fabs(c->y - cy + 2) < 0.3f);
  QCOMPARE(a->x, ax0);
  QCOMPARE(a->y, ay0);
  QVERIFY(!IsSelected(a->ID) && IsSelected(c->ID));
  Drag(PixelOf(c->x, c->y), PixelOf(cx, cy));  // back where it was
  QVERIFY(std::fabs(c->x - cx) < 0.3f && std::fabs(c->y - cy) < 0.3f);

  // Another tool and back to the arrow: moving the mouse moves nothing.
  const float ax = a->x, ay = a->y;
  window_->RunCommand("mnuDrawP");
  window_->RunCommand("mnuSelect");
  for (const QPoint& at : {PixelOf(3, 3), PixelOf(-5, 4), PixelOf(2, -4)}) QTest::mouseMove(window_->picDraw(), at);
  QCOMPARE(a->x, ax);
  QCOMPARE(a->y, ay);
  QCOMPARE(Doc.Points.count(), 2);

  // A box still selects, but only when drawn from empty canvas.
  Drag(PixelOf(-1, 2), PixelOf(1, -1));
  QVERIFY(IsSelected(c->ID));

  // A rotate drag in the plane: the selection stays, the plane snaps back and
  // a new point lands under the cursor.
  window_->RunCommand("mnuViewRotate");
  Drag(PixelOf(-6, -6), PixelOf(3, 2));
  QVERIFY(IsSelected(c->ID));
  Position* d = NewPoint(3, -2);
  QVERIFY2(std::fabs(d->x - 3) < 0.2f && std::fabs(d->y + 2) < 0.2f, qPrintable(QString("D at %1 %2").arg(d->x).arg(d->y)));

  // The right button with the segment tool at rest deletes nothing; during a
  // segment it drops the segment in the making.
  NewSegment(-6, 5, -2, 5);
  QCOMPARE(Doc.Lines.count(), 1);
  QTest::mouseClick(window_->picDraw(), Qt::RightButton, Qt::NoModifier, PixelOf(5, 5));
  QCOMPARE(Doc.Lines.count(), 1);
  Click(PixelOf(1, 5));
  QCOMPARE(Doc.Lines.count(), 2);
  QTest::mouseClick(window_->picDraw(), Qt::RightButton, Qt::NoModifier, PixelOf(5, 5));
  QCOMPARE(Doc.Lines.count(), 1);
}

void SessionTest::thirtyNotesAButtonAndAPlayerAllFindAFreePlace() {
  const CLine* ab = NewSegment(-3, -2, 3, -2);
  const float length = std::hypot(ab->pEnd.x - ab->pBegin.x, ab->pEnd.y - ab->pBegin.y);
  window_->RunCommand("mnuSelect");
  window_->RunCommand("mnuSelLines");
  for (int i = 0; i < 30; ++i) window_->RunCommand("mnuLength");
  ButtonForm form = NewButtonForm(5);
  form.Label = "Measure length";
  form.ObjIDs = {"Measurement-Length"};
  QVERIFY(ConfirmButtonForm(form, "") != nullptr);
  window_->RunCommand("mnuAMPlayer");
  QCOMPARE(Doc.Notes.count(), 30);
  QCOMPARE(Doc.AniCtrls.count(), 1);

  struct Box {
    float x0, y0, x1, y1;
  };
  QList<Box> boxes;
  for (CNote* n : Doc.Notes) boxes << Box{n->PosX, n->PosY, n->PosX + 15, n->PosY + 3};
  CButton* button = Doc.Buttons.Item(1);
  boxes << Box{button->PosX, button->PosY, button->FaceRight(), button->PosY + 5};
  CAniControl* player = Doc.AniCtrls.Item(1);
  boxes << Box{player->PosX, player->PosY, player->PosX + 15, player->PosY + 3};
  for (int i = 0; i < boxes.size(); ++i) {
    const Box& b = boxes[i];
    QVERIFY2(b.x0 >= 0 && b.x1 <= 100 && b.y0 >= 0 && b.y1 <= 100, qPrintable(QString("item %1 off the canvas").arg(i)));
    for (int j = 0; j < i; ++j) {
      const Box& o = boxes[j];
      QVERIFY2(b.x1 <= o.x0 || o.x1 <= b.x0 || b.y1 <= o.y0 || o.y1 <= b.y0,
               qPrintable(QString("items %1 and %2 overlap").arg(j).arg(i)));
    }
  }
  // Every note is on screen: a click on it selects it.
  window_->RunCommand("mnuEditSelAll");
  Click(PctPixel(70, 10));
  QCOMPARE(Sel.Notes.count(), 0);
  for (CNote* n : Doc.Notes) {
    Click(PctPixel(n->PosX + 2, n->PosY + 1.5f));
    QVERIFY2(IsSelected(n->ID), n->ID.c_str());
  }
  // The button measures the segment selected before it is pressed.
  Click(PctPixel(70, 10));
  Click(PixelOf(-1, -2));
  QCOMPARE(Sel.Lines.count(), 1);
  watcher_.Start(window_);
  Click(PctPixel((button->PosX + button->FaceRight()) / 2 + 0.4f, button->PosY + 2.5f));
  QTRY_COMPARE(Doc.Notes.count(), 31);
  QCOMPARE(watcher_.messages, QStringList{});
  QCOMPARE(QString::fromStdString(Doc.Notes.Item(31)->Note), QString("len AB = %1").arg(length, 0, 'f', 2));
  watcher_.Stop();

  // New starts over: the first note goes to the top left again.
  QTimer::singleShot(50, [] {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) box->button(QMessageBox::No)->click();
  });
  window_->RunCommand("mnuFileNew");
  QTRY_COMPARE(DocumentObjectCount(), 0);
  NewSegment(-3, -2, 3, -2);
  window_->RunCommand("mnuSelLines");
  window_->RunCommand("mnuLength");
  QCOMPARE(Doc.Notes.count(), 1);
  QCOMPARE(Doc.Notes.Item(1)->PosX, 2.0f);
  QCOMPARE(Doc.Notes.Item(1)->PosY, 90.0f);
}

void SessionTest::aFirstNoteOnTheStartDocumentCoversNoneOfItsItems() {
  delete window_;
  window_ = new frmF1();
  window_->show();
  QVERIFY(QTest::qWaitForWindowExposed(window_));
  QTRY_VERIFY(window_->started());
  QVERIFY(CurrentFilePath.empty());
  const int notes = Doc.Notes.count();
  QVERIFY(notes > 0 && Doc.Lines.count() > 0);
  SelectObject(*Doc.Lines.Item(1));
  window_->RunCommand("mnuLength");
  QCOMPARE(Doc.Notes.count(), notes + 1);
  const CNote* made = Doc.Notes.Item(notes + 1);
  for (CNote* n : Doc.Notes)
    QVERIFY(n == made || std::fabs(n->PosX - made->PosX) >= 15 || std::fabs(n->PosY - made->PosY) >= 3);
  for (CText* t : Doc.Texts)
    QVERIFY(std::fabs(t->PosX - made->PosX) >= 15 || std::fabs(t->PosY - made->PosY) >= 3);
}

void SessionTest::aWorksheetFromTheStartDocument() {
  QVERIFY(OpenDocumentPath(ProgramPath("Tutorials/T000.vtd")));
  const QString dir = temp_.path();

  // SVG: the figure as paths, the labels as text; the status bar says where.
  RunWithFile("mnuFileExportPicture", dir + "/lesson.svg");
  QFile svg(dir + "/lesson.svg");
  QVERIFY(svg.open(QIODevice::ReadOnly));
  QXmlStreamReader xml(&svg);
  int paths = 0;
  QStringList texts;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    if (xml.name() == QLatin1String("path")) ++paths;
    if (xml.name() == QLatin1String("text")) texts << xml.readElementText().trimmed();
  }
  QVERIFY(!xml.hasError());
  QVERIFY2(paths > 20, qPrintable(QString::number(paths)));
  QVERIFY2(texts.contains("ABC") && texts.contains("K = 1.50"), qPrintable(texts.join("|")));
  QVERIFY(window_->statusBar()->currentMessage().contains("lesson.svg"));
  QVERIFY(watcher_.Take().isEmpty());

  // PNG: the size question offers 1x to 4x; 2x is the first choice.
  guitest::WhenModal<QInputDialog>(this, [](QInputDialog* d) { d->accept(); });
  RunWithFile("mnuFileExportPicture", dir + "/lesson.png");
  const QImage png(dir + "/lesson.png");
  QCOMPARE(png.size(), QSize(CanvasWidth * 2, CanvasHeight * 2));

  // PDF.
  RunWithFile("mnuFileExportPicture", dir + "/lesson.pdf");
  QFile pdf(dir + "/lesson.pdf");
  QVERIFY(pdf.open(QIODevice::ReadOnly));
  QVERIFY(pdf.read(5) == "%PDF-");

  // Help: the sections of the menu open in the program's help window.
  window_->RunCommand("mnuHelpCus");
  auto* help = window_->findChild<QWidget*>("frmHelp");
  QVERIFY(help);
  QTRY_VERIFY(help->isVisible());
  auto* page = help->findChild<QTextBrowser*>("HelpText");
  QCOMPARE(page->source().fragment(), QString("support"));
  QVERIFY(page->toPlainText().contains("When something goes wrong"));
  window_->RunCommand("mnuHelpCon");
  QCOMPARE(window_->findChildren<QTextBrowser*>("HelpText").size(), 1);  // one window, reused
  QVERIFY(page->source().fragment().isEmpty());
  help->close();

  // Recent Files: the saved lesson comes back after New.
  const QString lesson = QFileInfo(dir + "/lesson.vtd").absoluteFilePath();
  RunWithFile("mnuFileSaveAs", lesson);
  QVERIFY(QFileInfo::exists(lesson));
  auto* recent = window_->findChild<QMenu*>("mnuFileRecent");
  QVERIFY(recent);
  QTRY_COMPARE(recent->actions().value(0)->toolTip(), lesson);
  window_->RunCommand("mnuFileNew");
  QVERIFY(CurrentFilePath.empty() && Doc.Points.count() == 0);
  recent->actions().first()->trigger();
  QCOMPARE(QString::fromStdString(CurrentFilePath), lesson);
  QVERIFY(Doc.Points.count() > 0);

  // The clipboard carries Unicode: other programs read the Greek letters.
  host().SetClipboardText("\xce\xb1\xce\xb2 = 90\xc2\xb0");
  QCOMPARE(QApplication::clipboard()->text(), QString::fromUtf8("\xce\xb1\xce\xb2 = 90\xc2\xb0"));
  QApplication::clipboard()->setText(QString::fromUtf8("\xce\xb3"));
  QCOMPARE(host().ClipboardText(), std::string("\xce\xb3"));
}

void SessionTest::aBadFormulaIsRefusedOnceWhereItIsTyped() {
  watcher_.Start(this);
  // A computed note "1+": one message naming the character, the dialog
  // stays open with the caret there, and no note is made.
  window_->menuAction("mnuMCompute")->trigger();
  QPointer<vt::app::frmComp> compute = Shown<vt::app::frmComp>();
  QVERIFY(compute);
  auto* expr = compute->findChild<QLineEdit*>("txtExpression");
  compute->findChild<QLineEdit*>("txtName")->setText("A");
  expr->setText("1+");
  compute->findChild<QPushButton*>("cmdOK")->click();
  QCOMPARE(Messages().size(), 1);
  QVERIFY2(watcher_.messages[0].startsWith("Syntax Error: Character 2:"), qPrintable(watcher_.messages[0]));
  QVERIFY(compute && compute->isVisible());
  QVERIFY(expr->hasFocus() || compute->focusWidget() == expr);
  QCOMPARE(Doc.Notes.count(), 0);

  // The pad beside it names the field and checks the formula too.
  compute->findChild<QPushButton*>("cmdPad")->click();
  QPointer<vt::app::frmFunCal> pad = Shown<vt::app::frmFunCal>();
  QVERIFY(pad);
  QCOMPARE(pad->findChild<QLineEdit*>("Text2")->text(), QString("Expression"));
  pad->findChild<QPushButton*>("Command18")->click();
  QCOMPARE(Messages().size(), 2);
  QVERIFY(watcher_.messages[1].startsWith("Syntax Error: "));
  QVERIFY(pad && pad->isVisible());
  pad->findChild<QLineEdit*>("Text1")->setText("1+2");
  pad->findChild<QPushButton*>("Command18")->click();
  QTRY_VERIFY(!pad);
  QCOMPARE(expr->text(), QString("1+2"));
  compute->findChild<QPushButton*>("cmdOK")->click();
  QTRY_VERIFY(!compute);
  QCOMPARE(Doc.Notes.count(), 1);
  QCOMPARE(Doc.Notes.Item(1)->Value, 3.0f);

  // The parameter dialog keeps a bad name open with its message, and reads a
  // decimal comma as every formula field does.
  CAniControl* player = NewPlayer();
  auto* var = new vt::app::frmVar(window_);
  var->show();
  var->findChild<QLineEdit*>("txtName")->setText("x");
  var->findChild<QComboBox*>("cboPlayer")->setCurrentText(QString::fromStdString(player->ID));
  var->findChild<QLineEdit*>("txtMin")->setText("0,5");
  var->findChild<QLineEdit*>("txtMax")->setText(" 2,25 ");
  var->accept();
  QCOMPARE(Messages().size(), 3);
  QVERIFY(var->isVisible() && player->AniNum() == 0);
  var->findChild<QLineEdit*>("txtName")->setText("K");
  var->accept();
  QCOMPARE(Messages().size(), 3);
  QCOMPARE(player->AniNum(), 1);
  QCOMPARE(player->anis[0]->RangeFrom1, 0.5f);
  QCOMPARE(player->anis[0]->RangeTo1, 2.25f);
}

void SessionTest::constructionsThatCannotBeMadeSayWhy() {
  watcher_.Start(this);
  // A tangent from a point inside a circle.
  Position* top = Free(0, 3);
  Position* rim = Free(3, 0);
  Position* left = Free(-3, 0);
  Position* inside = Free(1, 1);
  Select({top, rim, left});
  window_->RunCommand("mnuDraw3PC");
  QCOMPARE(Doc.Circles.count(), 1);
  CCircle* circle = Doc.Circles.Item(1);
  const int points = Doc.Points.count(), undo = UndoCount;
  const int msgs = Messages().size();
  Select({inside, circle});
  window_->RunCommand("mnuQX");
  QCOMPARE(Messages().size(), msgs + 1);
  QVERIFY(watcher_.messages.last().contains("inside the circle"));
  QCOMPARE(Doc.Points.count(), points);
  QCOMPARE(Doc.Lines.count(), 0);
  QCOMPARE(UndoCount, undo);

  // The circumcentre of three points on a line.
  Position* a = Free(-2, -2);
  Position* b = Free(0, -2);
  Position* c = Free(2, -2);
  Select({a, b, c});
  window_->RunCommand("mnuTriWX");
  QCOMPARE(Messages().size(), msgs + 2);
  QVERIFY(watcher_.messages.last().contains("not collinear"));
  QCOMPARE(Doc.Points.count(), points + 3);

  // "Transform Itself" on a point that lies on the circle, and a rotation
  // about a segment in the plane: each refused, nothing moves.
  Select({a, c});
  window_->RunCommand("mnuLinkLine");
  QCOMPARE(Doc.Lines.count(), 1);
  CLine* seg = Doc.Lines.Item(1);
  const std::string onId = NewObjectId("PT");
  Position* on = Doc.Points.Add(onId, 0, 3, 0, 7, circle->ID, "", 0, onId);
  TransformParams move;
  move.a = 1;
  QVERIFY(!ApplyTransform({on->ID}, move, false));
  QCOMPARE(on->y, 3.0f);
  QCOMPARE(SceneMode, 1);
  TransformParams turn;
  turn.op = TransformOp::Rotate;
  turn.a = 1.5708f;
  turn.centre = seg->ID;
  QVERIFY(!ApplyTransform({rim->ID}, turn, true));
  QCOMPARE(rim->x, 3.0f);
  QCOMPARE(Messages().size(), msgs + 4);
  QCOMPARE(Doc.Points.count(), points + 4);
  QCOMPARE(UndoCount, undo + 1);  // the segment only
}

void SessionTest::filesAndDrawingOpenAtMostOneBox() {
  watcher_.Start(this);
  QTemporaryDir dir;
  QVERIFY(dir.isValid());
  std::string error;
  // A note whose formula cannot be read, as an older file may hold it.
  window_->picDraw()->MakeCurrent();
  ComputeNoteOK("A", "1+2", "sum", "");
  std::string text = GetUndoVar();
  const size_t at = text.find("1+2");
  QVERIFY(at != std::string::npos);
  text.replace(at, 3, "1+");
  const std::string bad = (dir.path() + "/bad-note.vtd").toStdString();
  const std::string damaged = (dir.path() + "/damaged.vtd").toStdString();
  QVERIFY(WriteDocumentFile(bad, text, error));
  QVERIFY(WriteDocumentFile(damaged, text + "QQ0099 1 2 ;;", error));
  watcher_.messages.clear();

  // Read: the one thing the reader had to say, after reading.
  window_->picDraw()->MakeCurrent();
  OpenFile(bad);
  QCOMPARE(Messages().size(), 1);
  QVERIFY(watcher_.messages[0].startsWith("Syntax Error: "));
  // Drawn again and again: no box, the note shows its mark in place.
  for (int i = 0; i < 3; ++i) RedrawScene();
  window_->picDraw()->update();
  QCOMPARE(Messages().size(), 1);
  QCOMPARE(Doc.Notes.count(), 1);
  MessageHold quiet;  // the note is measured as drawing does
  QVERIFY(Doc.Notes.Item(1)->ShownText().ends_with("sum = ?  (formula error)"));
  quiet.Release();

  // A damaged file: one message, about the records left out.
  watcher_.messages.clear();
  OpenFile(damaged);
  QCOMPARE(Messages().size(), 1);
  QVERIFY2(watcher_.messages[0].contains("could not be read"), qPrintable(watcher_.messages[0]));
}

void SessionTest::aSectorASphereALocusAndAMeasurementAreRestyled() {
  window_->RunCommand("mnuFileNew3D");
  watcher_.Start(this);
  // A square and an apex above it make a pyramid sector.
  auto g = std::make_unique<CRegion>();
  g->ID = NewObjectId("RG");
  const float corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
  for (const auto& c : corners) g->Points.emplace_back(c[0], c[1], 0.0f);
  CRegion* square = Doc.Regions.Add(std::move(g));
  Position* apex = Point(0, 0, 2);
  const std::string rim = Point(3, 0, 0)->ID;
  guitest::SelectOnly({apex, square});
  window_->RunCommand("mnuDraw2Fan");
  QCOMPARE(Doc.Fans.count(), 1);
  const std::string fan = Doc.Fans.Item(1)->ID;
  const float alpha = Doc.Fans.Item(1)->Alpha;

  OpenProperties(*Doc.Fans.Item(1));
  auto* sector = Visible<PropertyFormDialog>("frmSector");
  QVERIFY(sector);
  QCOMPARE(sector->findChild<QLineEdit*>("txtOpacity")->text(), QString("0.3"));
  Set(sector, "txtOpacity", "0,75");  // a decimal comma, as every number field takes
  sector->findChild<QComboBox*>("cboFillStyle")->setCurrentIndex(4);  // the colour ramp
  sector->findChild<QComboBox*>("cboRamp")->setCurrentIndex(1);
  OkIsOneStep(sector);
  const CFan* styled = Doc.Fans.FindById(fan);
  QVERIFY(styled && styled->Alpha == 0.75f && styled->FillStyle == 5 && styled->Ramp.ColorName == "Earth");
  window_->RunCommand("mnuFUndo");
  QVERIFY(Doc.Fans.FindById(fan) && Doc.Fans.FindById(fan)->Alpha == alpha);

  // A sphere about the apex through the rim point: half of it, by its range.
  SphereForm f = NewSphereForm();
  f.centerId = Doc.Points.Item(1)->ID;
  f.pointId = Doc.Points.Item(2)->ID;
  std::string sphere;
  QCOMPARE(ConfirmSphereForm(f, &sphere), SweptConfirm::Done);
  OpenProperties(*Doc.Spheres.FindById(sphere));
  auto* props = Visible<PropertyFormDialog>("frmSphereProps");
  QVERIFY(props);
  Set(props, "txtATo", "3.1416");
  OkIsOneStep(props);
  const CSphere* half = Doc.Spheres.FindById(sphere);
  QVERIFY(half && std::fabs(half->AngleATo - 3.1416f) < 1e-6);
  float lowestY = 0;
  for (const Position& p : half->Mesh) lowestY = std::min(lowestY, p.y - half->Center.y);
  QVERIFY(lowestY > -1e-3);  // the mesh was rebuilt: no corner on the other side
  window_->RunCommand("mnuFUndo");
  QVERIFY(std::fabs(Doc.Spheres.FindById(sphere)->AngleATo - 6.2832f) < 1e-6);

  // A locus of the rim point: colour and visibility.
  CAniControl* player = NewPlayer();
  CLocus* locus = AddLocus(player->ID, rim, RGB(0, 0, 255));
  QVERIFY(locus);
  const std::string lo = locus->ID;
  PushSnapshot();
  OpenProperties(*locus);
  auto* trace = Visible<PropertyFormDialog>("frmLocusProps");
  QVERIFY(trace);
  trace->findChild<vt::app::ColorButton*>("cmdColor")->setColor(RGB(0, 160, 0));
  trace->findChild<QCheckBox*>("chkVisible")->setChecked(false);
  OkIsOneStep(trace);
  QVERIFY(Doc.Locuses.FindById(lo)->ForeColor == RGB(0, 160, 0) && Doc.Locuses.FindById(lo)->Hide);
  window_->RunCommand("mnuFUndo");
  QVERIFY(Doc.Locuses.FindById(lo)->ForeColor == RGB(0, 0, 255) && !Doc.Locuses.FindById(lo)->Hide);

  // The distance of two points, shown with 4 decimals in 14 points after a
  // double click on it; the file keeps that.
  guitest::SelectOnly({Doc.Points.Item(1), Doc.Points.Item(2)});
  window_->RunCommand("mnuDis");
  QCOMPARE(Doc.Notes.count(), 1);
  CNote* note = Doc.Notes.Item(1);
  const std::string nt = note->ID;
  QVERIFY(QString::fromStdString(note->Note).endsWith("= 3.61"));
  window_->menuAction("mnuSelect")->trigger();
  DoubleClickAtPct(note->PosX, note->PosY);
  auto* measure = Visible<PropertyFormDialog>("frmNote");
  QVERIFY(measure);
  measure->findChild<QComboBox*>("cboDecimals")->setCurrentText("4");
  measure->findChild<QComboBox*>("cboFontSize")->setCurrentText("14");
  measure->findChild<vt::app::ColorButton*>("cmdColor")->setColor(RGB(200, 0, 0));
  OkIsOneStep(measure);
  note = Doc.Notes.FindById(nt);
  QVERIFY2(QString::fromStdString(note->Note).endsWith("= 3.6056"), note->Note.c_str());
  QVERIFY(note->FontSize == 14 && note->ForeColor == RGB(200, 0, 0));
  OpenUnRe(GetUndoVar());  // as a file would read it back
  note = Doc.Notes.FindById(nt);
  QVERIFY(note->Decim == 4 && note->FontSize == 14 && note->ForeColor == RGB(200, 0, 0));
  window_->RunCommand("mnuFUndo");
  QVERIFY(QString::fromStdString(Doc.Notes.FindById(nt)->Note).endsWith("= 3.61"));
  QVERIFY2(watcher_.messages.isEmpty(), qPrintable(watcher_.messages.join("\n")));
}

void SessionTest::tracksAreEditedInPlaceFromTheirRows() {
  window_->RunCommand("mnuFileNew3D");
  watcher_.Start(this);
  Position* p = Point(1, 1, 0);
  CAniControl* player = NewPlayer();
  const std::string ac = player->ID;
  TrackForm f;
  f.kind = 5;
  f.playerId = ac;
  f.bound = {p->ID};
  f.colorFrom = RGB(0, 128, 0);
  f.colorTo = RGB(0, 0, 255);
  CAnimation* colour = ConfirmTrackForm(f);
  QVERIFY(colour);
  const std::string colourId = colour->ID;
  CAnimation* param = CreateParameter(ac, "K", 0, 2, 2, 0, 1);
  QVERIFY(param);
  const std::string paramId = param->ID;
  PushSnapshot();
  window_->menuAction("mnuSelect")->trigger();

  // The colour track's row: the dialog shows its colours, and a new time
  // range leaves them as they were.
  DoubleClickAtPct(colour->PosX, colour->PosY);
  auto* track = Visible<QDialog>("frmColorAni");
  QVERIFY(track);
  QCOMPARE(track->findChild<vt::app::ColorButton*>("cmdColorFrom")->color(), RGB(0, 128, 0));
  QCOMPARE(track->findChild<vt::app::ColorButton*>("cmdColorTo")->color(), RGB(0, 0, 255));
  Set(track, "txtTo", "0.5");
  track->accept();
  colour = FindTrack(colourId);
  QVERIFY(colour && colour->TimeTo == 0.5f);
  QVERIFY(colour->RangeFrom2 == 128 && colour->RangeTo3 == 255 && colour->RangeTo1 == 0);
  QCOMPARE(Doc.AniCtrls.FindById(ac)->AniNum(), 2);

  // The parameter's row opens the parameter dialog on it.
  param = FindTrack(paramId);
  DoubleClickAtPct(param->PosX, param->PosY);
  auto* var = Visible<QDialog>("frmVar");
  QVERIFY(var);
  QCOMPARE(var->findChild<QLineEdit*>("txtName")->text(), QString("K"));
  QCOMPARE(var->findChild<QLineEdit*>("txtMax")->text(), QString("2"));
  Set(var, "txtMax", "5");
  Set(var, "txtDecimal", "3");
  const int undo = UndoCount;
  var->accept();
  param = FindTrack(paramId);
  QVERIFY(param && param->RangeTo1 == 5 && param->RangeFrom2 == 3 && param->Para1 == "K");
  QCOMPARE(UndoCount, undo + 1);
  QCOMPARE(Doc.AniCtrls.FindById(ac)->AniNum(), 2);
  window_->RunCommand("mnuFUndo");
  QCOMPARE(FindTrack(paramId)->RangeTo1, 2.0f);
  QVERIFY2(watcher_.messages.isEmpty(), qPrintable(watcher_.messages.join("\n")));
}

VT_GUI_TEST_MAIN(SessionTest)
#include "session_test.moc"
