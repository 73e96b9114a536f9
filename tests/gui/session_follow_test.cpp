// A teacher's session in the running program where what names something
// follows it: a line plotted from a measured angle moves when the triangle is
// dragged, and the results panel shows it under its title; a circle resized
// and a point moved through their property dialogs take their intersection,
// following and extension points along.
// Before the Qt headers: its names would meet Qt's keyword macros.
#include "document/undo.h"

#include <QApplication>
#include <QCheckBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QtTest>
#include <cmath>
#include <memory>

#include "app/canvas.h"
#include "app/frmF1.h"
#include "app/surface_format.h"
#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "geometry/extension.h"
#include "geometry/property_commands.h"
#include "graphs/curve_analysis.h"
#include "graphs/dialogs/curve_forms.h"
#include "gui_fixture.h"
#include "tools/construction_prompts.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;

class SessionFollowTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { xdg_ = guitest::IsolateDesktopFolders(); }
  void init() {
    QVERIFY(guitest::OpenEmptyWindow(window_));
    watcher_.Start(this);
  }
  void cleanup() {
    watcher_.Stop();
    delete window_;
    window_ = nullptr;
    ClearHandlers();
  }

  void aLineOfAMeasuredAngleFollowsTheDraggedTriangle();
  void dialogEditsMoveWhatIsBuiltOnTheObject();

 private:
  void Click(const QPoint& at) {
    QTest::mouseMove(window_->picDraw(), at);
    QTest::mouseClick(window_->picDraw(), Qt::LeftButton, Qt::NoModifier, at);
  }
  void DragOnCanvas(const QPoint& from, const QPoint& to) {
    Canvas* canvas = window_->picDraw();
    QTest::mouseMove(canvas, from);
    QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, from);
    for (int i = 1; i <= 6; ++i) {
      const QPoint at = from + (to - from) * i / 6;
      QMouseEvent move(QEvent::MouseMove, QPointF(at), QPointF(canvas->mapToGlobal(at)), Qt::NoButton,
                       Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(canvas, &move);
    }
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, to);
  }
  static void Type(QWidget* dialog, const char* field, const QString& text) {
    auto* e = dialog->findChild<QLineEdit*>(field);
    QVERIFY2(e, field);
    e->selectAll();
    QTest::keyClicks(e, text);
  }
  static void ClickOk(QWidget* dialog) { QTest::mouseClick(dialog->findChild<QPushButton*>("cmdOK"), Qt::LeftButton); }
  // A curve y = formula through frmF5, with its roots shown.
  CFunCurve* Plot(const QString& formula) {
    window_->menuAction("mnuDraw2Curve")->trigger();
    QPointer<QWidget> d = ShownNamed("frmF5");
    if (!d) return nullptr;
    Type(d, "txtFormula1", formula);
    d->findChild<QCheckBox*>("chkRoot")->setChecked(true);
    ClickOk(d);
    if (!QTest::qWaitFor([&] { return !d; }, 3000)) return nullptr;
    return Doc.FunCurves.Item(Doc.FunCurves.count());
  }
  Position* Free(float x, float y) {
    const std::string id = NewObjectId("PT");
    return Doc.Points.Add(id, x, y, 0, 1, "", "", 0, id);
  }
  static void Select(std::initializer_list<DocObject*> objs) {
    std::vector<std::string> ids;
    for (Position* s : Sel.Points) ids.push_back(s->ID);
    for (CLine* s : Sel.Lines) ids.push_back(s->ID);
    for (CCircle* s : Sel.Circles) ids.push_back(s->ID);
    for (const std::string& id : ids) DeselectObject(*GetObjectById(id));
    for (DocObject* o : objs) SelectObject(*o);
  }
  // A dialog of that name once it shows.
  static QWidget* ShownNamed(const QString& name) {
    QWidget* d = nullptr;
    const bool shown = QTest::qWaitFor([&] {
      for (QWidget* t : QApplication::topLevelWidgets())
        if (t->objectName() == name && t->isVisible()) d = t;
      return d != nullptr;
    }, 3000);
    return shown ? d : nullptr;
  }

  std::unique_ptr<QTemporaryDir> xdg_;
  frmF1* window_ = nullptr;
  guitest::MessageWatcher watcher_;
};

void SessionFollowTest::aLineOfAMeasuredAngleFollowsTheDraggedTriangle() {
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
  DragOnCanvas(pa, pa + QPoint(-w / 10, h / 10));
  QVERIFY2(std::fabs(angle->Value - before) > 0.5f, qPrintable(QString::number(angle->Value)));
  QVERIFY(std::fabs(line->Vert3D.back().y - y1) > 1e-3f);
  QVERIFY(followsTheAngle());
  QTRY_VERIFY(text->toPlainText().split("\n\n").value(0) != firstBlock);
  QCOMPARE(text->toPlainText().toStdString(), CurveResults.Text());
  QVERIFY2(watcher_.messages.isEmpty(), qPrintable(watcher_.messages.join(" | ")));
}

void SessionFollowTest::dialogEditsMoveWhatIsBuiltOnTheObject() {
  // The line y = 1 and the circle of radius 2 about the origin, made from
  // the menus, and their crossings.
  Position* o = Free(0, 0);
  Position* p = Free(-5, 1);
  Position* q = Free(5, 1);
  window_->picDraw()->MakeCurrent();
  Select({p, q});
  QVERIFY(DirectedExtensionOK(90, 2));  // an extension point over the segment
  Position* ext = Doc.Points.Item(Doc.Points.count());
  QCOMPARE(ext->ptype, 11);
  auto seg = std::make_unique<CLine>();  // as the segment tool makes it
  seg->ID = NewObjectId("LN");
  seg->Line1(p->ID, q->ID);
  p->AddLink({seg->ID, 2, 1, 0, 0});
  q->AddLink({seg->ID, 2, 2, 0, 0});
  Doc.Lines.Add(std::move(seg));
  Select({o});
  window_->menuAction("mnuDraw2DJC")->trigger();
  QPointer<QWidget> make = ShownNamed("frmCircle");
  QVERIFY(make);
  Type(make, "txtRadius", "2");
  ClickOk(make);
  QTRY_COMPARE(Doc.Circles.count(), 1);
  CCircle* circle = Doc.Circles.Item(1);
  QCOMPARE(Doc.Lines.count(), 1);
  Select({Doc.Lines.Item(1), circle});
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
  QPointer<QWidget> cd = ShownNamed("frmCircle");
  QVERIFY(cd);
  Type(cd, "txtRadius", "4");
  ClickOk(cd);
  QTRY_VERIFY(!cd);
  QVERIFY2(crossings(4), qPrintable(QString("%1 %2").arg(x1->x).arg(x2->x)));
  QCOMPARE(UndoCount, undo + 1);

  // A point that follows P; P moved through its dialog takes it along, and
  // the extension point over P and Q is placed anew.
  Position* f = Free(-4, 3);
  f->ptype = 8;
  f->AddParent(p->ID);
  p->AddChild(f->ID);
  Position expected, far;
  QVERIFY(OpenPropertyForm(PropertyForm::Point, p->ID));
  QPointer<QWidget> pd = ShownNamed("frmF16");
  QVERIFY(pd);
  Type(pd, "txtY", "3");
  ClickOk(pd);
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

int main(int argc, char** argv) {
  vt::app::SetCanvasSurfaceFormat();
  QApplication app(argc, argv);
  SessionFollowTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "session_follow_test.moc"
