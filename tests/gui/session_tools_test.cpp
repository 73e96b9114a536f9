// Teacher sessions with the canvas tools in the real window: drags that
// neither box-select nor outlive a change of tool, a rotate drag in the plane,
// the right button of the line tool, thirty notes that all find a place on
// the canvas (also on the start document), and a command button that
// measures what was selected.
#include <QApplication>
#include <QMessageBox>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QtTest>
#include <cmath>
#include <memory>

#include "animation/player_objects.h"
#include "app/canvas.h"
#include "app/frmF1.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "gui_fixture.h"
#include "render/canvas_input.h"
#include "render/frame.h"
#include "tools/buttons.h"
#include "tools/canvas_input.h"

using namespace vt;
using vt::app::Canvas;
using vt::app::frmF1;

class SessionToolsTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { xdg_ = guitest::IsolateDesktopFolders(); }
  void init() { QVERIFY(guitest::OpenEmptyWindow(window_)); }
  void cleanup() {
    watcher_.Stop();
    delete window_;
    window_ = nullptr;
  }

  void dragsNeitherBoxSelectNorOutliveAToolChange();
  void thirtyNotesAButtonAndAPlayerAllFindAFreePlace();
  void aCommandButtonMeasuresTheSegmentSelectedBeforeIt();
  void aFirstNoteOnTheStartDocumentCoversNoneOfItsItems();

 private:
  QPoint PixelOf(float x, float y) {
    window_->picDraw()->MakeCurrent();
    RedrawScene();
    float X = 0, Y = 0;
    SceneToScreen(x, y, 0, X, Y);
    const qreal scale = window_->picDraw()->devicePixelRatioF();
    return QPoint(qRound(X / scale), qRound(Y / scale));
  }
  QPoint PctPixel(float px, float py) const {
    const Canvas* c = window_->picDraw();
    return QPoint(qRound(px / 100 * c->width()), qRound((100 - py) / 100 * c->height()));
  }
  void Click(const QPoint& at) {
    QTest::mouseMove(window_->picDraw(), at);
    QTest::mouseClick(window_->picDraw(), Qt::LeftButton, Qt::NoModifier, at);
  }
  void Drag(const QPoint& from, const QPoint& to) {
    Canvas* canvas = window_->picDraw();
    QTest::mouseMove(canvas, from);
    QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, from);
    for (int i = 1; i <= 8; ++i) {
      const QPoint at = from + (to - from) * i / 8;
      QMouseEvent move(QEvent::MouseMove, QPointF(at), QPointF(canvas->mapToGlobal(at)), Qt::NoButton,
                       Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(canvas, &move);
    }
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, to);
  }
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

  std::unique_ptr<QTemporaryDir> xdg_;
  frmF1* window_ = nullptr;
  guitest::MessageWatcher watcher_;
};

void SessionToolsTest::dragsNeitherBoxSelectNorOutliveAToolChange() {
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

void SessionToolsTest::thirtyNotesAButtonAndAPlayerAllFindAFreePlace() {
  NewSegment(-3, -2, 3, -2);
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

void SessionToolsTest::aCommandButtonMeasuresTheSegmentSelectedBeforeIt() {
  const CLine* ab = NewSegment(-3, -2, 3, -2);
  const float length = std::hypot(ab->pEnd.x - ab->pBegin.x, ab->pEnd.y - ab->pBegin.y);
  ButtonForm form = NewButtonForm(5);
  form.Label = "Measure length";
  form.ObjIDs = {"Measurement-Length"};
  CButton* button = ConfirmButtonForm(form, "");
  QVERIFY(button);
  window_->RunCommand("mnuSelect");
  Click(PixelOf(-1, -2));
  QCOMPARE(Sel.Lines.count(), 1);
  watcher_.Start(window_);
  Click(PctPixel((button->PosX + button->FaceRight()) / 2 + 0.4f, button->PosY + 2.5f));
  QTRY_COMPARE(Doc.Notes.count(), 1);
  QCOMPARE(watcher_.messages, QStringList{});
  QCOMPARE(QString::fromStdString(Doc.Notes.Item(1)->Note), QString("len AB = %1").arg(length, 0, 'f', 2));
}

void SessionToolsTest::aFirstNoteOnTheStartDocumentCoversNoneOfItsItems() {
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

QTEST_MAIN(SessionToolsTest)
#include "session_tools_test.moc"
