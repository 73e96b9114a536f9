// The curve and surface dialogs without their windows: confirmation with its
// messages, new and edited objects, what an edit keeps.
#include <gtest/gtest.h>

#include <functional>

#include "document/document.h"
#include "document/globals.h"
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
      {[](CurveForm& f) { f.formula1 = "x&1"; }, "Error: Illegal data exist."},
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
}

// Making and editing through the window is the graph forms GUI test's; here
// what an edit keeps that the dialog does not show.
TEST_F(FormTest, AnEditKeepsWhatTheDialogDoesNotShow) {
  SurfaceForm f = NewSurfaceForm();
  f.formula1 = "x^2 - y";
  std::string id;
  ASSERT_EQ(ConfirmSurfaceForm(f, "", &id), SurfaceConfirm::Done);
  CSurface* s = Doc.Surfaces.FindById(id);
  ASSERT_NE(s, nullptr);
  s->Selected = true;
  s->NameS = "saddle";
  s->ShowTrans = false, s->TransAlpha = 0.7f;
  s->Ramp.ColorName = "Mine", s->Ramp.ColorNum = 2;
  s->Ramp.ColorPos[0] = 0, s->Ramp.ColorPos[1] = 100, s->Ramp.ColorR[1] = 77;
  SurfaceForm e = LoadSurfaceForm(*s);
  EXPECT_TRUE(e.rampIndex == kRampCount && e.customRamp == "Mine");
  e.listIndex = 2;  // implicit
  e.formula1 = "x^2+y^2+z^2-9";
  e.minW = "-pi", e.stepsW = "8";  // a range may be a formula
  ASSERT_EQ(ConfirmSurfaceForm(e, id), SurfaceConfirm::Done) << TakeMessage();
  EXPECT_EQ(Doc.Surfaces.count(), 1);
  EXPECT_TRUE(s->FunForm == 1 && s->StepW == 8 && s->Selected && s->NameS == "saddle");
  EXPECT_NEAR(s->MinW, -3.1416f, 1e-3f);
  EXPECT_FLOAT_EQ(s->TransAlpha, 0.7f);  // transparency off: its field is not read
  EXPECT_TRUE(s->Ramp.ColorName == "Mine" && s->Ramp.ColorNum == 2 && s->Ramp.ColorR[1] == 77);
  e.rampIndex = 2;  // choosing one of the five replaces the own ramp
  ASSERT_EQ(ConfirmSurfaceForm(e, id), SurfaceConfirm::Done);
  EXPECT_EQ(s->Ramp.ColorName, "Fiery");
  Doc.Surfaces.Remove(1);  // the object goes while its dialog is open
  EXPECT_EQ(ConfirmSurfaceForm(e, id), SurfaceConfirm::Gone);
  EXPECT_EQ(TakeMessage(), "Error: The selected object is not exist.");
}

}  // namespace
}  // namespace vt
