#include <gtest/gtest.h>

#include <functional>

#include "document/document.h"
#include "document/globals.h"
#include "document/undo.h"
#include "graphs/curve_form.h"
#include "support/fixtures.h"

namespace vt {
namespace {

class CurveFormTest : public test::DocumentTest {
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

TEST_F(CurveFormTest, ConfirmMakesASampledCurveWithOneSnapshot) {
  CurveForm form = Graph("x ^ 2");
  form.steps = "1";  // the test lets 1 pass
  form.showLength = true;
  form.lenTo = "1,5";
  form.tangents.show = true;
  form.tangents.positions = "1; 2 ;0.5";
  const int undo = UndoCount;
  std::string id;
  ASSERT_EQ(ConfirmCurveForm(form, "", &id), CurveConfirm::Done);
  EXPECT_EQ(TakeMessage(), "");
  // Cleaned texts go back into the fields.
  EXPECT_EQ(form.formula1 + " " + form.lenTo + " " + form.tangents.positions, "x^2 1.5 1;2;0.5");
  EXPECT_EQ(UndoCount, undo + 1);
  ASSERT_EQ(Doc.FunCurves.count(), 1);
  const CFunCurve* c = Doc.FunCurves.Item(1);
  EXPECT_TRUE(c->FunForm == 2 && c->ExpressY == "x^2" && c->StepU == 1 && c->Vert3D.size() == 2u && c->LenTo == 1.5f);
  EXPECT_EQ(c->QieX, (std::vector<float>{1, 2, 0.5f}));
  // The fields of the curve read back as the form that made it.
  const CurveForm back = LoadCurveForm(*c);
  EXPECT_EQ(back.formula1 + " " + back.steps + " " + back.tangents.positions, "x^2 1 1;2;0.5");
}

TEST_F(CurveFormTest, RefusedFieldsKeepTheDialogOpenWithTheirMessages) {
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

TEST_F(CurveFormTest, EditChangesTheCurveInPlaceAndKeepsWhatTheDialogDoesNotShow) {
  CurveForm form = Graph("x");
  std::string id;
  ASSERT_EQ(ConfirmCurveForm(form, "", &id), CurveConfirm::Done);
  CFunCurve* c = Doc.FunCurves.FindById(id);
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

}  // namespace
}  // namespace vt
