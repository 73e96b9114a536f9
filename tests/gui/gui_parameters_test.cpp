// Parameters as a lesson writes them: a, b, c typed with value, range and step
// in Measurement > Parameter..., a parabola with roots, minimum and tangent
// that reads them, sliders that show and snap the value, a double click that
// edits it, and the value and step kept with the document.
// Before the Qt headers: its names would meet Qt's keyword macros.
#include "document/undo.h"

#include <QCheckBox>
#include <QPointer>
#include <algorithm>

#include "animation/animation.h"
#include "expr/text_prep.h"
#include "graphs/curve_analysis.h"
#include "gui_fixture.h"
#include "persist/docio.h"
#include "tools/notes.h"

using namespace vt;

class GuiParametersTest : public QObject {
  Q_OBJECT
 private slots:
  void initTestCase() { xdg_ = guitest::IsolateDesktopFolders(); }
  void init() { QVERIFY(guitest::OpenEmptyWindow(window_)); watcher_.Start(this); }
  void cleanup() { watcher_.Stop(); delete window_; }
  void aParabolaFollowsItsParametersAndTheirSliders();

 private:
  static CAnimation* Param(const std::string& name) {
    for (CAniControl* c : Doc.AniCtrls)
      for (auto& a : c->anis) if (a->Para1 == name) return a.get();
    return nullptr;
  }
  static CAniControl* PlayerOf(const std::string& name) { return Doc.AniCtrls.FindById(Param(name)->ACID); }
  // frmVar from the menu, filled and confirmed; the messages it raised.
  QStringList NewParameter(const QString& name, const QString& value, const QString& min = "-10",
                           const QString& max = "10", const QString& step = "0.5") {
    window_->menuAction("mnuMVar")->trigger();
    QPointer<QWidget> d = guitest::ShownNamed("frmVar");
    if (!d) return {"no dialog"};
    guitest::Fill(d, {{"txtName", name}, {"txtValue", value}, {"txtMin", min}, {"txtMax", max}, {"txtStep", step}});
    guitest::PressOk(d);
    QTest::qWait(100);
    if (d) d->close();  // still open after a refusal
    return watcher_.Take();
  }
  QPoint Pct(float x, float yFromBottom) const {
    const QWidget* c = window_->picDraw();
    return QPoint(qRound(x / 100 * c->width()), qRound((100 - yFromBottom) / 100 * c->height()));
  }
  // The curve's sample nearest to x.
  static float YAt(CFunCurve* f, float x) {
    return std::min_element(f->Vert3D.begin(), f->Vert3D.end(), [x](const Position& p, const Position& q) {
             return std::abs(p.x - x) < std::abs(q.x - x);
           })->y;
  }

  std::unique_ptr<QTemporaryDir> xdg_;
  app::frmF1* window_ = nullptr;
  guitest::MessageWatcher watcher_;
};

void GuiParametersTest::aParabolaFollowsItsParametersAndTheirSliders() {
  const char* const abc[][2] = {{"a", "1"}, {"b", "-2"}, {"c", "-8"}, {"a1", "0"}};
  for (const auto& p : abc) QCOMPARE(NewParameter(p[0], p[1]), QStringList());
  QCOMPARE(InsertImplicitProducts("2a1*x+3a"), std::string("2*a1*x+3*a"));  // a name stays one word
  // The slider stands at the value: one frame per step of 0.5 from -10.
  QVERIFY(Param("b") && Param("b")->RangeTo2 == -2 && Param("b")->Para0 == 0.5f && Param("b")->Note == "b = -2.00");
  QVERIFY(PlayerOf("b")->Steps == 40 && PlayerOf("b")->Step == 16 && PlayerOf("c")->Step == 4);
  const struct { const char *name, *value, *min, *max, *step, *message; } refused[] = {
      {"A", "1", "-10", "10", "0.5", "The name A is taken by a already; please choose another name. "},
      {"k", "1", "2", "2", "0.5", "The minimum value must be smaller than the maximum one. "},
      {"k", "11", "-10", "10", "0.5", "The value must lie between the minimum and the maximum. "},
      {"k", "1", "-10", "10", "0", "The step must be larger than 0. "},
  };
  for (const auto& r : refused) {
    const QStringList messages = NewParameter(r.name, r.value, r.min, r.max, r.step);
    QVERIFY2(messages.size() == 1 && messages.first().endsWith(r.message), qPrintable(messages.join("|")));
  }
  QVERIFY(Doc.AniCtrls.count() == 4 && !Param("k"));  // a player of its own for each parameter

  // y = a*x^2+b*x+c with its roots, minimum and tangent at x = 1, and not one message.
  window_->menuAction("mnuDraw2Curve")->trigger();
  QPointer<QWidget> d = guitest::ShownNamed("frmF5");
  QVERIFY(d);
  guitest::Fill(d, {{"txtFormula1", "a*x^2+b*x+c"}, {"txtMinU", "-10"}, {"txtMaxU", "10"},
                    {"txtSteps", "200"}, {"txtTangentPositions", "1"}});
  for (const char* box : {"chkRoot", "chkMin", "chkTangent"}) d->findChild<QCheckBox*>(box)->setChecked(true);
  guitest::PressOk(d);
  QTRY_VERIFY(!d);
  CFunCurve* f = Doc.FunCurves.Item(1);
  QCOMPARE(YAt(f, 1), -9.0f);
  RedrawScene();
  QVERIFY2(CurveResults.LinesOf(f->ID).size() >= 3, CurveResults.Text().c_str());
  QVERIFY(ComputeNoteOK("ab", "a*b", "", ""));  // a computed note reads them too

  // A press on b's knob changes nothing; a drag of two frames gives b = -1 exactly.
  window_->RunCommand("mnuSelect");
  QWidget* canvas = window_->picDraw();
  CAniControl* pb = PlayerOf("b");
  const QPoint knob = Pct(pb->KnobX() + 0.5f, pb->KnobY());
  QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, knob);
  QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, knob);
  QCOMPARE(Param("b")->RangeTo2, -2.0f);
  guitest::Drag(canvas, knob, knob + QPoint(qRound(0.6 / 100 * canvas->width()), 0));
  QVERIFY(Param("b")->RangeTo2 == -1 && Param("b")->Note == "b = -1.00");
  QVERIFY(qFuzzyCompare(YAt(f, 1), -8.0f) && Doc.Notes.Item(1)->Value == -1.0f);

  // A double click on the panel opens b; a typed value is one undo step that the curve follows.
  guitest::DoubleClick(canvas, Pct(pb->PosX + 13.5f, pb->PosY + 0.5f));
  QPointer<QWidget> var = guitest::ShownNamed("frmVar");
  QVERIFY(var);
  QVERIFY(var->findChild<QLineEdit*>("txtName")->text() == "b" && var->findChild<QLineEdit*>("txtValue")->text() == "-1");
  guitest::Type(var, "txtValue", "3");
  const int undo = UndoCount;
  guitest::PressOk(var);
  QTRY_VERIFY(!var || !var->isVisible());
  QCOMPARE(UndoCount, undo + 1);
  QVERIFY(Param("b")->RangeTo2 == 3 && PlayerOf("b")->Step == 26);
  QCOMPARE(YAt(f, 1), -4.0f);
  window_->RunCommand("mnuFUndo");
  QVERIFY(Param("b")->RangeTo2 == -1 && Param("b")->Para0 == 0.5f);
  QCOMPARE(YAt(Doc.FunCurves.Item(1), 1), -8.0f);

  // A file from before parameters kept a step: the value is the frame's.
  Param("b")->Para0 = 0, Param("b")->RangeTo2 = 7;
  QVERIFY(OpenDocumentText(GetUndoVar()));
  QVERIFY(Param("b")->RangeTo2 == -1 && Param("b")->Para0 == 0.5f);
  QCOMPARE(watcher_.Take(), QStringList());
}

VT_GUI_TEST_MAIN(GuiParametersTest)
#include "gui_parameters_test.moc"
