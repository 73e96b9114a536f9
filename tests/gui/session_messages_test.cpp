// A teacher's session of mistakes in the running program: each mistake gets
// one message when it is made and changes nothing; drawing opens no box, and
// a file is read with one message at most.
// Before the Qt headers: its names would meet Qt's keyword macros.
#include "document/undo.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

#include "animation/animation.h"
#include "animation/dialogs/animation_forms.h"
#include "animation/player_objects.h"
#include "app/canvas.h"
#include "app/frmF1.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "graphs/dialogs/curve_forms.h"
#include "gui_fixture.h"
#include "persist/docio.h"
#include "render/frame.h"
#include "tools/constructions.h"
#include "tools/dialogs/construction_forms.h"
#include "tools/notes.h"
#include "tools/transform.h"

using namespace vt;

class SessionMessagesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { xdg_ = guitest::IsolateDesktopFolders(); }
  void init() {
    QVERIFY(guitest::OpenEmptyWindow(window_));
    watcher_.messages.clear();
    watcher_.Start(this);
  }
  void cleanup() {
    watcher_.Stop();
    delete window_;
    window_ = nullptr;
  }

  void aBadFormulaIsRefusedOnceWhereItIsTyped();
  void constructionsThatCannotBeMadeSayWhy();
  void filesAndDrawingOpenAtMostOneBox();

 private:
  QStringList Messages() {
    QTest::qWait(150);  // a box raised late would still be counted
    return watcher_.messages;
  }
  Position* Free(float x, float y) {
    const std::string id = NewObjectId("PT");
    Position* p = Doc.Points.Add(id, x, y, 0, 1, "", "", 0, id);
    AssignNextPointLabel(*p);
    return p;
  }
  void Select(std::initializer_list<DocObject*> objs) {
    for (Kind k : kAllKinds)
      for (int i = 1; i <= Doc.Of(k).count(); ++i)
        if (Doc.Of(k).ItemBase(i)->Selected) DeselectObject(*Doc.Of(k).ItemBase(i));
    for (DocObject* o : objs) {
      o->SetDrawMode(2);
      SelectObject(*o);
    }
  }
  template <class T>
  T* Shown() {
    T* d = nullptr;
    if (!QTest::qWaitFor([&] { return (d = window_->findChild<T*>()) && d->isVisible(); }, 3000)) return nullptr;
    return d;
  }

  std::unique_ptr<QTemporaryDir> xdg_;
  vt::app::frmF1* window_ = nullptr;
  guitest::MessageWatcher watcher_;
};

void SessionMessagesTest::aBadFormulaIsRefusedOnceWhereItIsTyped() {
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

  // The parameter dialog reads a decimal comma as every formula field does.
  CAniControl* player = NewPlayer();
  auto* var = new vt::app::frmVar(window_);
  var->show();
  var->findChild<QLineEdit*>("txtName")->setText("K");
  var->findChild<QLineEdit*>("txtMin")->setText("0,5");
  var->findChild<QLineEdit*>("txtMax")->setText(" 2,25 ");
  var->accept();
  QCOMPARE(Messages().size(), 2);
  QCOMPARE(player->AniNum(), 1);
  QCOMPARE(player->anis[0]->RangeFrom1, 0.5f);
  QCOMPARE(player->anis[0]->RangeTo1, 2.25f);
}

void SessionMessagesTest::constructionsThatCannotBeMadeSayWhy() {
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

void SessionMessagesTest::filesAndDrawingOpenAtMostOneBox() {
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

QTEST_MAIN(SessionMessagesTest)
#include "session_messages_test.moc"
