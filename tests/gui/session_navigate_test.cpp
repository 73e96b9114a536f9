// Getting about the view in the real window: the wheel zooms about the
// cursor (plane and space), the middle button pans with any tool, the keys
// zoom, Fit All and Reset View, and a view drag that stays armed.
#include <QApplication>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QWheelEvent>
#include <QtTest>
#include <cmath>
#include <memory>

#include "app/canvas.h"
#include "app/frmF1.h"
#include "document/document.h"
#include "document/globals.h"
#include "gui_fixture.h"
#include "render/view_state.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;

class SessionNavigateTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { xdg_ = guitest::IsolateDesktopFolders(); }
  void init() { QVERIFY(guitest::OpenEmptyWindow(window_)); }
  void cleanup() {
    delete window_;
    window_ = nullptr;
  }

  void theWheelKeepsThePointUnderTheCursorInPlaneAndSpace();
  void theMiddleButtonPansWithAnyToolAndTheKeysZoomAndReset();
  void fitAllBringsAFarPointIntoView();
  void aZoomDragStaysArmedUntilAToolIsChosen();

 private:
  QPoint PixelOf(float x, float y, float z = 0) { return guitest::PixelOf(window_, x, y, z); }
  void Wheel(const QPoint& at, int notches) {
    Canvas* c = window_->picDraw();
    QWheelEvent e(QPointF(at), QPointF(c->mapToGlobal(at)), QPoint(), QPoint(0, 120 * notches), Qt::NoButton,
                  Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(c, &e);
  }
  void DragWith(Qt::MouseButton b, const QPoint& from, const QPoint& to) {
    Canvas* c = window_->picDraw();
    QTest::mousePress(c, b, Qt::NoModifier, from);
    for (int i = 1; i <= 5; ++i) {
      const QPoint at = from + (to - from) * i / 5;
      QMouseEvent move(QEvent::MouseMove, QPointF(at), QPointF(c->mapToGlobal(at)), Qt::NoButton, b, Qt::NoModifier);
      QApplication::sendEvent(c, &move);
    }
    QTest::mouseRelease(c, b, Qt::NoModifier, to);
  }
  static bool Near(const QPoint& a, const QPoint& b) { return std::abs(a.x() - b.x()) <= 1 && std::abs(a.y() - b.y()) <= 1; }
  bool OnCanvas(const QPoint& p) { return window_->picDraw()->rect().adjusted(4, 4, -4, -4).contains(p); }

  std::unique_ptr<QTemporaryDir> xdg_;
  frmF1* window_ = nullptr;
};

void SessionNavigateTest::theWheelKeepsThePointUnderTheCursorInPlaneAndSpace() {
  for (bool space : {false, true}) {
    if (space) window_->RunCommand("mnuFileNew3D");
    // Off the centre, so that a zoom about the centre would move it.
    const float x = 3, y = -2, z = space ? 1.5f : 0;
    const QPoint at = PixelOf(x, y, z);
    QVERIFY(OnCanvas(at) && (at - window_->picDraw()->rect().center()).manhattanLength() > 60);
    const float h0 = View.VolHeight;
    Wheel(at, 2);  // two notches in
    QVERIFY2(std::fabs(View.VolHeight - h0 / 1.44f) < 1e-3f * h0, qPrintable(QString::number(View.VolHeight)));
    QVERIFY(Near(PixelOf(x, y, z), at));
    Wheel(at, -3);  // and further out than before
    QVERIFY(View.VolHeight > h0);
    QVERIFY2(Near(PixelOf(x, y, z), at), qPrintable(QString("%1 %2 vs %3 %4").arg(PixelOf(x, y, z).x()).arg(PixelOf(x, y, z).y()).arg(at.x()).arg(at.y())));
  }
}

void SessionNavigateTest::theMiddleButtonPansWithAnyToolAndTheKeysZoomAndReset() {
  const Position ref0 = View.RefPos, eye0 = View.EyePos;
  const float h0 = View.VolHeight;
  const QPoint o0 = PixelOf(0, 0);
  window_->RunCommand("mnuDrawP");
  DragWith(Qt::MiddleButton, o0 + QPoint(-50, 20), o0 + QPoint(40, -10));
  QVERIFY(Near(PixelOf(0, 0), o0 + QPoint(90, -30)));
  // The point tool made nothing and is still the tool.
  QCOMPARE(Doc.Points.count(), 0);
  QCOMPARE(ActiveTool, 1);

  // Ctrl+= (and Ctrl++) zoom in about the centre, Ctrl+- out, Ctrl+0 resets.
  QWidget* w = window_->picDraw();
  window_->activateWindow();
  QVERIFY(QTest::qWaitForWindowActive(window_));
  QTest::keyClick(w, Qt::Key_Equal, Qt::ControlModifier);
  QVERIFY(std::fabs(View.VolHeight - h0 / 1.25f) < 1e-3f);
  QTest::keyClick(w, Qt::Key_Plus, Qt::ControlModifier);
  QTest::keyClick(w, Qt::Key_Minus, Qt::ControlModifier);
  QTest::keyClick(w, Qt::Key_Minus, Qt::ControlModifier);
  QVERIFY(std::fabs(View.VolHeight - h0) < 1e-3f);
  QVERIFY(!Near(PixelOf(0, 0), o0));
  QTest::keyClick(w, Qt::Key_0, Qt::ControlModifier);
  QVERIFY(Near(PixelOf(0, 0), o0));
  QVERIFY(View.RefPos.x == ref0.x && View.RefPos.y == ref0.y && View.EyePos.z == eye0.z);
  QCOMPARE(View.VolHeight, h0);

  // In space Reset View turns the scene back as well.
  window_->RunCommand("mnuFileNew3D");
  const QPoint p3 = PixelOf(2, 3, 1);
  window_->RunCommand("mnuViewRotate");
  DragWith(Qt::LeftButton, p3, p3 + QPoint(80, 40));
  QVERIFY(!Near(PixelOf(2, 3, 1), p3));
  window_->RunCommand("mnuViewReset");
  QVERIFY(Near(PixelOf(2, 3, 1), p3));
}

void SessionNavigateTest::fitAllBringsAFarPointIntoView() {
  // An empty document fits the square from -10 to 10.
  window_->RunCommand("mnuViewFitAll");
  QCOMPARE(View.VolHeight, 20.0f);
  QVERIFY(Near(PixelOf(0, 0), window_->picDraw()->rect().center()) || Near(PixelOf(0, 0), window_->picDraw()->rect().center() + QPoint(1, 1)));

  window_->RunCommand("mnuDrawP");
  QTest::mouseClick(window_->picDraw(), Qt::LeftButton, Qt::NoModifier, PixelOf(1, 1));
  QTest::mouseClick(window_->picDraw(), Qt::LeftButton, Qt::NoModifier, PixelOf(-2, 1));
  QCOMPARE(Doc.Points.count(), 2);
  Doc.Points.Item(1)->Set(80, -45, 0);
  QVERIFY(!OnCanvas(PixelOf(80, -45)));
  window_->RunCommand("mnuViewFitAll");
  QVERIFY(OnCanvas(PixelOf(80, -45)));
  QVERIFY(OnCanvas(PixelOf(-2, 1)));
  // Fitted, not lost in a huge view: the two points lie far apart on the canvas.
  QVERIFY((PixelOf(80, -45) - PixelOf(-2, 1)).manhattanLength() > window_->picDraw()->width() / 2);
}

void SessionNavigateTest::aZoomDragStaysArmedUntilAToolIsChosen() {
  Canvas* canvas = window_->picDraw();
  window_->RunCommand("mnuDrawP");
  window_->toolbarButton(2, 34)->trigger();  // Zoom
  const QPoint from(canvas->width() / 2, canvas->height() / 3);
  for (int drag = 1; drag <= 2; ++drag) {
    const float h = View.VolHeight;
    DragWith(Qt::LeftButton, from, from + QPoint(0, canvas->height() / 5));
    QVERIFY2(View.VolHeight > h * 1.1f, qPrintable(QString("drag %1").arg(drag)));
    QVERIFY(ViewZoom && window_->toolbarButton(2, 34)->isChecked());
  }
  // The armed zoom kept the press from the point tool; a rotation drag ends
  // its turn at the release and stays armed; choosing a tool clears both.
  QCOMPARE(Doc.Points.count(), 0);
  QVERIFY(!ViewMove && !ViewRotate && !SceneChanged);
  window_->RunCommand("mnuViewRotate");
  DragWith(Qt::LeftButton, from, from + QPoint(0, canvas->height() / 5));
  QVERIFY(ViewRotate && !ViewZoom && !SceneChanged);
  window_->RunCommand("mnuSelect");
  QVERIFY(!ViewZoom && !ViewRotate && !window_->toolbarButton(2, 34)->isChecked());
  const float h = View.VolHeight;
  DragWith(Qt::LeftButton, from, from + QPoint(0, canvas->height() / 5));
  QCOMPARE(View.VolHeight, h);
}

VT_GUI_TEST_MAIN(SessionNavigateTest)
#include "session_navigate_test.moc"
