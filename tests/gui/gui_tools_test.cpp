// The canvas tools under a real display: a triangle drawn with the segment
// tool by clicks on the canvas, a corner dragged with the select tool, and
// undo bringing it back.
#include <QApplication>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QtTest>
#include <cmath>
#include <memory>

#include "app/canvas.h"
#include "app/frmF1.h"
#include "gui_fixture.h"
#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/undo.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;

class GuiToolsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase();
  void init();
  void cleanup();

  void aTriangleDrawnByClicksFollowsADraggedCornerAndUndoBringsItBack();

 private:
  // Sends a move with the left button held, as a drag on the canvas does.
  void DragMove(const QPoint& to);

  std::unique_ptr<QTemporaryDir> xdg_;
  frmF1* window_ = nullptr;
};

void GuiToolsTest::initTestCase() {
  xdg_ = guitest::IsolateDesktopFolders();
  QVERIFY(xdg_->isValid());
}

void GuiToolsTest::init() {
  QVERIFY(guitest::OpenEmptyWindow(window_));
  QCOMPARE(Doc.Points.count(), 0);
}

void GuiToolsTest::cleanup() {
  delete window_;
  window_ = nullptr;
  ClearHandlers();
}

void GuiToolsTest::DragMove(const QPoint& to) {
  Canvas* canvas = window_->picDraw();
  QMouseEvent move(QEvent::MouseMove, QPointF(to), QPointF(canvas->mapToGlobal(to)), Qt::NoButton, Qt::LeftButton,
                   Qt::NoModifier);
  QApplication::sendEvent(canvas, &move);
}

void GuiToolsTest::aTriangleDrawnByClicksFollowsADraggedCornerAndUndoBringsItBack() {
  Canvas* canvas = window_->picDraw();
  const int w = canvas->width(), h = canvas->height();
  const QPoint pa(w / 3, h * 2 / 3), pb(w * 2 / 3, h * 2 / 3), pc(w / 2, h / 3);

  QAction* segment = window_->menuAction("mnuDrawSeg");
  QVERIFY(segment && segment->isEnabled());
  segment->trigger();
  QCOMPARE(ActiveTool, 2);
  const int undo0 = UndoCount;
  for (const auto& [from, to] : {std::pair{pa, pb}, std::pair{pb, pc}, std::pair{pc, pa}}) {
    QTest::mouseMove(canvas, from);
    QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(canvas, (from + to) / 2);
    QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, to);
  }
  QTRY_COMPARE(Doc.Lines.count(), 3);
  QCOMPARE(Doc.Points.count(), 3);  // the clicks on a corner took the corner
  QCOMPARE(UndoCount, undo0 + 3);
  const Position a0 = *Doc.Points.Item(1);
  const Position b0 = *Doc.Points.Item(2);
  const Position c0 = *Doc.Points.Item(3);
  QCOMPARE(QString::fromStdString(Doc.Lines.Item(1)->LLabel), QString("AB"));
  QCOMPARE(QString::fromStdString(Doc.Lines.Item(3)->LLabel), QString("CA"));
  QCOMPARE(Doc.Lines.Item(3)->pEnd.ID, a0.ID);
  // The plane view is a scale: world units per pixel from A and B.
  const double scale = (b0.x - a0.x) / (pb.x() - pa.x());
  QVERIFY(scale > 0);

  window_->menuAction("mnuSelect")->trigger();
  QCOMPARE(ActiveTool, 11);
  const QPoint target = pa + QPoint(-w / 8, -h / 6);
  QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, pa);
  for (int i = 1; i <= 5; ++i) DragMove(pa + (target - pa) * i / 5);
  QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, target);

  const Position* a = Doc.Points.Item(1);
  const double ex = a0.x + (target.x() - pa.x()) * scale;
  const double ey = a0.y - (target.y() - pa.y()) * scale;
  QVERIFY2(std::fabs(a->x - ex) < 2 * scale && std::fabs(a->y - ey) < 2 * scale,
           qPrintable(QString("A at %1 %2, expected %3 %4").arg(a->x).arg(a->y).arg(ex).arg(ey)));
  QCOMPARE(Doc.Points.Item(2)->x, b0.x);
  QCOMPARE(Doc.Points.Item(3)->y, c0.y);
  QCOMPARE(Doc.Lines.Item(1)->pBegin.x, a->x);
  QCOMPARE(Doc.Lines.Item(3)->pEnd.y, a->y);
  QCOMPARE(UndoCount, undo0 + 4);

  // Undo from the menu: the corner is back, and the segments with it.
  QAction* undo = window_->menuAction("mnuFUndo");
  QVERIFY(undo->isEnabled());
  undo->trigger();
  QTRY_VERIFY(std::fabs(Doc.Points.Item(1)->x - a0.x) < 1e-5f);
  QVERIFY(std::fabs(Doc.Points.Item(1)->y - a0.y) < 1e-5f);
  QCOMPARE(Doc.Lines.count(), 3);
  QCOMPARE(Doc.Lines.Item(1)->pBegin.x, Doc.Points.Item(1)->x);
}

QTEST_MAIN(GuiToolsTest)
#include "gui_tools_test.moc"
