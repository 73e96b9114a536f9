// Space without switching tools: the select tool's drag on empty canvas turns
// the scene with z kept up, Shift and the right button pan, a right click
// still opens the menu; models land apart, their hidden edges are dashed,
// and undo leaves the scene and its view alone.
#include <QApplication>
#include <QMenu>
#include <QtTest>
#include <cmath>

#include "document/document.h"
#include "document/globals.h"
#include "geometry/line.h"
#include "geometry/solid_edges.h"
#include "gui_fixture.h"
#include "render/view_state.h"
#include "tools/models.h"

using namespace vt;

class GuiSpaceNavTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    xdg_ = guitest::IsolateDesktopFolders();
    qputenv("XDG_CONFIG_HOME", (xdg_->path() + "/config").toUtf8());
  }
  void init() {
    QVERIFY(guitest::OpenEmptyWindow(w_));
    w_->RunCommand("mnuFileNew3D");
  }
  void cleanup() { delete w_; }

  void aDragOnEmptyCanvasTurnsWithZUpAndShiftOrRightPans();
  void modelsLandApartShowHiddenEdgesDashedAndUndoKeepsTheView();

 private:
  QPoint Px(float x, float y, float z) { return guitest::PixelOf(w_, x, y, z); }
  void DragWith(Qt::MouseButton b, Qt::KeyboardModifiers m, QPoint from, QPoint to) {
    QWidget* c = w_->picDraw();
    QTest::mousePress(c, b, m, from);
    for (int i = 1; i <= 6; ++i) {
      const QPoint at = from + (to - from) * i / 6;
      QMouseEvent move(QEvent::MouseMove, QPointF(at), QPointF(c->mapToGlobal(at)), Qt::NoButton, b, m);
      QApplication::sendEvent(c, &move);
    }
    QTest::mouseRelease(c, b, m, to);
  }
  std::unique_ptr<QTemporaryDir> xdg_;
  app::frmF1* w_ = nullptr;
};

void GuiSpaceNavTest::aDragOnEmptyCanvasTurnsWithZUpAndShiftOrRightPans() {
  const QPoint corner(40, 40);  // empty canvas, away from the axes
  for (QPoint by : {QPoint(90, 0), QPoint(-30, 70), QPoint(60, -120)}) {
    const QPoint x0 = Px(3, 0, 0);
    DragWith(Qt::LeftButton, Qt::NoModifier, corner, corner + by);
    QVERIFY(!RubberBandOn && ActiveTool == 11);
    QVERIFY((Px(3, 0, 0) - x0).manhattanLength() > 5);
    // The z axis still stands straight up the screen.
    const QPoint o = Px(0, 0, 0), up = Px(0, 0, 3);
    QVERIFY2(std::abs(o.x() - up.x()) <= 1 && up.y() < o.y(), qPrintable(QString("%1 vs %2").arg(o.x()).arg(up.x())));
  }
  // Shift and the right button pan: the origin follows the mouse.
  for (auto [b, m] : {std::pair{Qt::LeftButton, Qt::ShiftModifier}, std::pair{Qt::RightButton, Qt::NoModifier}}) {
    const QPoint o = Px(0, 0, 0);
    DragWith(b, m, corner, corner + QPoint(50, 30));
    QVERIFY((Px(0, 0, 0) - (o + QPoint(50, 30))).manhattanLength() <= 2);
    QVERIFY(!QApplication::activePopupWidget());
  }
  // A right click without a drag opens the context menu.
  QTest::mouseClick(w_->picDraw(), Qt::RightButton, Qt::NoModifier, corner);
  QVERIFY(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }, 2000));
  QApplication::activePopupWidget()->close();
}

void GuiSpaceNavTest::modelsLandApartShowHiddenEdgesDashedAndUndoKeepsTheView() {
  w_->RunCommand("mnuDrawCube");
  const int cube = Doc.Points.count();
  w_->RunCommand("mnuDrawPrism");
  const CBox a = PointsBox(1, cube), b = PointsBox(cube + 1, Doc.Points.count());
  QVERIFY(a.MinX <= a.MaxX && b.MinX <= b.MaxX);
  QVERIFY(b.MinX > a.MaxX || b.MaxX < a.MinX || b.MinY > a.MaxY || b.MaxY < a.MinY);

  // Turned off the iso view (where hidden edges lie behind front ones), the
  // hidden edges are drawn with gaps.
  DragWith(Qt::LeftButton, Qt::NoModifier, QPoint(40, 40), QPoint(120, 70));
  Px(0, 0, 0);  // a frame compiled
  const QImage shot = w_->picDraw()->grabFramebuffer();
  const qreal scale = w_->picDraw()->devicePixelRatioF();
  int hidden = 0;
  for (CLine* l : Doc.Lines) {
    if (!SolidEdgeHidden(*l)) continue;
    ++hidden;
    const QPoint p = Px(l->pBegin.x, l->pBegin.y, l->pBegin.z), q = Px(l->pEnd.x, l->pEnd.y, l->pEnd.z);
    int ink = 0, gaps = 0;
    for (int i = 30; i <= 70; ++i) {  // the middle, away from other edges
      const QPoint at = (p * (100 - i) + q * i) / 100;
      const QColor c = shot.pixelColor(at * scale);
      (c.lightness() < 200 ? ink : gaps)++;
    }
    QVERIFY2(ink > 3 && gaps > 3, qPrintable(QString("%1: %2 ink, %3 gaps").arg(l->LLabel.c_str()).arg(ink).arg(gaps)));
  }
  QVERIFY(hidden >= 3);

  // Undo and redo of both models: still space, the same view.
  const Position eye = View.EyePos;
  const float roll = ViewGraph.RotRoll, pitch = ViewGraph.RotPitch, h = View.VolHeight;
  for (const char* step : {"mnuFUndo", "mnuFUndo", "mnuFRedo"}) {
    w_->RunCommand(step);
    QVERIFY(SceneMode == 3 && ViewGraph.RotRoll == roll && ViewGraph.RotPitch == pitch);
    QVERIFY(View.EyePos.x == eye.x && View.EyePos.y == eye.y && View.VolHeight == h);
  }
  QCOMPARE(Doc.Points.count(), cube);
}

VT_GUI_TEST_MAIN(GuiSpaceNavTest)
#include "gui_space_nav_test.moc"
