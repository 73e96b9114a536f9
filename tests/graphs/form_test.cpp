// The curve and surface dialogs without their windows: confirmation with its
// messages, new and edited objects, what an edit keeps.
#include <gtest/gtest.h>

#include <functional>

#include "document/document.h"
#include "document/globals.h"
#include "document/undo.h"
#include "graphs/curve_form.h"
#include "graphs/surface_form.h"
#include "graphs_test_util.h"
#include "support/fixtures.h"

namespace vt {
namespace {

class FormTest : public test::DocumentTest {
 protected:
  // A y = f(x) form as the dialog opens it, with the formula typed in.
  static CurveForm Graph(const std::string& f) {
    CurveForm form = NewCurveForm();
    form.formula1 = f;
    return form;
  }
  // The one message shown since the last call, as "title: text".
  std::string TakeMessage() {
    std::string s;
    for (const auto& m : host_.messages) s += (s.empty() ? "" : " | ") + m.title + ": " + m.text;
    host_.messages.clear();
    return s;
  }
};

TEST_F(FormTest, RefusedFieldsKeepTheDialogOpenWithTheirMessages) {
  struct Case {
    std::function<void(CurveForm&)> edit;
    std::string message;
  };
  const std::vector<Case> cases = {
      {[](CurveForm& f) { f.formula1 = "x_1"; }, "Error: Illegal data exist."},
      {[](CurveForm& f) { f.steps = "10x"; }, "Error: Illegal data exist."},
      {[](CurveForm& f) { f.roots.size = "a"; }, "Error: Illegal data exist."},
      {[](CurveForm& f) { f.tangents.positions = "1;b"; }, "Error: Illegal data exist."},
      {[](CurveForm& f) { f.formula1 = "  "; }, "Note: Input all parameters please."},
      {[](CurveForm& f) { f.minU = "5"; }, "Note: Min x must be less than Max x."},
      {[](CurveForm& f) { f.steps = "0.5"; }, "Note: Steps x must be larger than 1."},
      {[](CurveForm& f) { f.listIndex = 1; f.formula2 = "u"; f.maxU = "-5"; }, "Note: Min u must be less than Max u."},
      {[](CurveForm& f) { f.listIndex = 1; f.formula2 = "u"; f.steps = "0"; }, "Note: Steps u must be larger than 1."},
      {[](CurveForm& f) { f.listIndex = 3; f.minV = "2"; f.maxV = "1"; }, "Note: Min y must be less than Max y."},
  };
  for (const Case& k : cases) {
    CurveForm form = Graph("x");
    k.edit(form);
    EXPECT_EQ(ConfirmCurveForm(form, ""), CurveConfirm::Stay) << k.message;
    EXPECT_EQ(TakeMessage(), k.message);
  }
  // A formula that does not compile: the compiler's message, nothing made.
  CurveForm bad = Graph("x+");
  EXPECT_EQ(ConfirmCurveForm(bad, ""), CurveConfirm::Stay);
  EXPECT_EQ(TakeMessage().substr(0, 14), "Syntax Error: ");
  EXPECT_EQ(Doc.FunCurves.count(), 0);
  EXPECT_EQ(NextObjectNumber, 0);  // no id was spent
  // An empty field becomes "0": y = 0 is a curve.
  CurveForm empty = Graph("");
  EXPECT_EQ(ConfirmCurveForm(empty, ""), CurveConfirm::Done);
  EXPECT_EQ(empty.formula1, "0");
}

// Making and editing through the window (one snapshot each, the fields read
// back) is the graph forms GUI test's; here the cleaned texts, the lists and
// what an edit keeps.
TEST_F(FormTest, EditChangesTheCurveInPlaceAndKeepsWhatTheDialogDoesNotShow) {
  CurveForm form = Graph("x ^ 2");
  form.steps = "1";  // the test lets 1 pass
  form.showLength = true, form.lenTo = "1,5";
  form.tangents.show = true, form.tangents.positions = "1; 2 ;0.5";
  std::string id;
  ASSERT_EQ(ConfirmCurveForm(form, "", &id), CurveConfirm::Done);
  EXPECT_EQ(form.formula1 + " " + form.lenTo + " " + form.tangents.positions, "x^2 1.5 1;2;0.5");
  CFunCurve* c = Doc.FunCurves.FindById(id);
  EXPECT_TRUE(c->StepU == 1 && c->Vert3D.size() == 2u && c->LenTo == 1.5f);
  EXPECT_EQ(c->QieX, (std::vector<float>{1, 2, 0.5f}));
  Position* p = AddPoint(1, 1);
  c->AddStruP(*p);
  c->Selected = true;
  c->GraphType = 3;

  CurveForm edit = LoadCurveForm(*c);
  edit.coordType = 2;
  edit.listIndex = 2;  // f(a,r)=0
  edit.formula1 = "r-2";
  edit.minU = "0";
  edit.maxU = "2pi";
  edit.minV = "0";
  edit.maxV = "3";
  edit.lineColor = RGB(9, 8, 7);
  ASSERT_EQ(ConfirmCurveForm(edit, id), CurveConfirm::Done);
  ASSERT_EQ(Doc.FunCurves.count(), 1);
  c = Doc.FunCurves.FindById(id);
  ASSERT_TRUE(c);
  EXPECT_TRUE(c->FunForm == 1 && c->CoordType == 2 && c->ExpressY == "r-2" && c->MaxV == 3);
  EXPECT_EQ(c->LineColor, RGB(9, 8, 7));
  EXPECT_TRUE(c->StruPNum() == 1 && c->Selected && c->GraphType == 3);  // what the dialog does not show

  // The curve went away while the dialog was open.
  Doc.FunCurves.Remove(1);
  EXPECT_EQ(ConfirmCurveForm(edit, id), CurveConfirm::Gone);
  EXPECT_EQ(TakeMessage(), "Error: The selected object is not exist.");
  EXPECT_EQ(Doc.FunCurves.count(), 0);
}

TEST_F(FormTest, RefusedFieldsKeepTheDialogOpen) {
  using R = test::Refusal<SurfaceForm>;
  SurfaceForm f = NewSurfaceForm();
  const auto refuses = [](SurfaceForm& g) { return ConfirmSurfaceForm(g, "") == SurfaceConfirm::Stay; };
  const auto message = [this] { return TakeMessage(); };
  test::ExpectRefusals(f, {R{[](SurfaceForm& g) { g.formula1 = ""; }, "Note: Input all parameters please."},
                           R{[](SurfaceForm& g) { g.formula1 = "x*y", g.minV = "3", g.maxV = "1"; },
                             "Note: Min y must be less than Max y."},
                           R{[](SurfaceForm& g) { g.maxV = "4", g.stepsU = "0"; }, "Note: Steps x must be larger than 1."},
                           R{[](SurfaceForm& g) { g.stepsU = "abc"; }, "Error: Illegal data exist."},
                           R{[](SurfaceForm& g) { g.stepsU = "1", g.clip = true, g.clipMinX = "1", g.clipMaxX = "-1"; },
                             "Note: Min clip x must be less than Max clip x."},
                           R{[](SurfaceForm& g) { g.clipMinX = "-1", g.clipMaxX = "1.5", g.showTangent = true, g.tangentAt = "1,2; x"; },
                             "Error: Illegal data exist."},
                           R{[](SurfaceForm& g) {
                               g.tangentAt = " 1, 2 ;-0.5,0; ", g.coordType = 5, g.listIndex = 1;
                               g.formula1 = "u", g.formula2 = "v", g.formula3 = "";
                             }, "Note: Input all parameters please."},
                           R{[](SurfaceForm& g) { g.formula3 = "2", g.minU = "7", g.maxU = "1"; },
                             "Note: Min u must be less than Max u."}},
                       refuses, message);
  EXPECT_EQ(Doc.Surfaces.count(), 0);
  f.minU = "0";  // one step passes, whatever the message says
  f.showNormal = true;
  f.normalAt = "0,0";
  std::string id;
  ASSERT_EQ(ConfirmSurfaceForm(f, "", &id), SurfaceConfirm::Done) << TakeMessage();
  CSurface* s = Doc.Surfaces.FindById(id);
  ASSERT_NE(s, nullptr);
  EXPECT_TRUE(s->StepU == 1 && s->Clip && s->ClipMaxX == 1.5f && s->NormalNum() == 1);
  EXPECT_EQ(s->TangentX, (std::vector<float>{1, -0.5f}));
  EXPECT_EQ(s->TangentY, (std::vector<float>{2, 0}));
  // Read back into the dialog as it would show them.
  const SurfaceForm back = LoadSurfaceForm(*s);
  EXPECT_EQ(back.tangentAt + " " + back.clipMaxX, "1,2; -0.5,0 1.5");
  // The range of the implicit form may be a formula.
  SurfaceForm g = NewSurfaceForm();
  g.listIndex = 2;
  g.formula1 = "x^2+y^2+z^2-4";
  g.minW = "-pi", g.maxW = "pi", g.stepsW = "6";
  ASSERT_EQ(ConfirmSurfaceForm(g, "", &id), SurfaceConfirm::Done) << TakeMessage();
  EXPECT_NEAR(Doc.Surfaces.FindById(id)->MinW, -3.1416f, 1e-3f);
}

TEST_F(FormTest, NewSurfaceAndCurveAndAnEditThatKeepsWhatTheDialogDoesNotShow) {
  const int undoBefore = UndoCount;
  SurfaceForm f = NewSurfaceForm();
  f.formula1 = "x^2 - y";
  f.stepsU = "10", f.stepsV = "12";
  f.rampIndex = 3;
  f.showTrans = true, f.transAlpha = "0.25";
  std::string id;
  ASSERT_EQ(ConfirmSurfaceForm(f, "", &id), SurfaceConfirm::Done);
  EXPECT_EQ(id.substr(0, 2), "SF");
  CSurface* s = Doc.Surfaces.FindById(id);
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(s->ExpressZ, "x^2-y");
  EXPECT_TRUE(s->StepV == 12 && s->TransAlpha == 0.25f && s->Vert3D.size() == 11u * 13u);
  EXPECT_GT(UndoCount, undoBefore);
  // What only a file (or another dialog) sets stays through an edit.
  s->Selected = true;
  s->NameS = "saddle";
  s->LineColor = RGB(10, 20, 30);
  s->ShowTrans = false, s->TransAlpha = 0.7f;
  s->Ramp.ColorName = "Mine", s->Ramp.ColorNum = 2;
  s->Ramp.ColorPos[0] = 0, s->Ramp.ColorPos[1] = 100, s->Ramp.ColorR[1] = 77;
  SurfaceForm e = LoadSurfaceForm(*s);
  EXPECT_TRUE(e.rampIndex == kRampCount && e.customRamp == "Mine");
  e.listIndex = 2;  // implicit
  e.formula1 = "x^2+y^2+z^2-9";
  e.stepsW = "8";
  ASSERT_EQ(ConfirmSurfaceForm(e, id), SurfaceConfirm::Done);
  EXPECT_EQ(Doc.Surfaces.count(), 1);
  EXPECT_TRUE(s->FunForm == 1 && s->StepW == 8 && s->Selected && !s->FieldF.empty());
  EXPECT_TRUE(s->NameS == "saddle" && s->LineColor == RGB(10, 20, 30));
  EXPECT_FLOAT_EQ(s->TransAlpha, 0.7f);  // transparency off: its field is not read
  EXPECT_TRUE(s->Ramp.ColorName == "Mine" && s->Ramp.ColorNum == 2 && s->Ramp.ColorR[1] == 77);
  e.rampIndex = 2;  // choosing one of the five replaces the own ramp
  ASSERT_EQ(ConfirmSurfaceForm(e, id), SurfaceConfirm::Done);
  EXPECT_EQ(s->Ramp.ColorName, "Fiery");

  SurfaceForm c = NewSurfaceForm();
  c.graphType = 1;
  c.listIndex = 1;
  c.formula1 = "cos(u)", c.formula2 = "sin(u)", c.formula3 = "u/4";
  ASSERT_EQ(ConfirmSurfaceForm(c, "", &id), SurfaceConfirm::Done);
  EXPECT_EQ(id.substr(0, 2), "C3");
  EXPECT_EQ(Doc.Surfaces.FindById(id)->CurveVert.size(), 21u);
  // The object goes while its dialog is open.
  const std::string gone = s->ID;
  Doc.Surfaces.Remove(1);
  EXPECT_EQ(ConfirmSurfaceForm(e, gone), SurfaceConfirm::Gone);
  EXPECT_EQ(TakeMessage(), "Error: The selected object is not exist.");
}

}  // namespace
}  // namespace vt
