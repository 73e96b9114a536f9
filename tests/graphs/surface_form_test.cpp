// The surface dialog without its window: the clip box and tangent places, the
// confirmation with its messages, new and edited objects, the texture file
// choice and the command.
#include <gtest/gtest.h>

#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/undo.h"
#include "graphs/surface_form.h"
#include "support/fixtures.h"

namespace vt {
namespace {

class SurfaceFormTest : public test::DocumentTest {
 protected:
  std::string TakeMessage() {
    std::string s;
    for (const auto& m : host_.messages) s += (s.empty() ? "" : " | ") + m.title + ": " + m.text;
    host_.messages.clear();
    return s;
  }
};

TEST_F(SurfaceFormTest, ClipBoxAndTangentPlaces) {
  SurfaceForm f = NewSurfaceForm();
  f.formula1 = "x^2+y^2";
  f.clip = true;
  f.clipMinX = "1";
  f.clipMaxX = "-1";
  EXPECT_EQ(ConfirmSurfaceForm(f, ""), SurfaceConfirm::Stay);
  EXPECT_EQ(TakeMessage(), "Note: Min clip x must be less than Max clip x.");
  f.clipMinX = "-1";
  f.clipMaxX = "1.5";
  f.showTangent = true;
  f.tangentAt = "1,2; x";
  EXPECT_EQ(ConfirmSurfaceForm(f, ""), SurfaceConfirm::Stay);
  EXPECT_EQ(TakeMessage(), "Error: Illegal data exist.");
  EXPECT_EQ(Doc.Surfaces.count(), 0);
  f.tangentAt = " 1, 2 ;-0.5,0; ";
  f.showNormal = true;
  f.normalAt = "0,0";
  std::string id;
  ASSERT_EQ(ConfirmSurfaceForm(f, "", &id), SurfaceConfirm::Done) << TakeMessage();
  CSurface* s = Doc.Surfaces.FindById(id);
  ASSERT_NE(s, nullptr);
  EXPECT_TRUE(s->Clip);
  EXPECT_FLOAT_EQ(s->ClipMaxX, 1.5f);
  EXPECT_EQ(s->TangentX, (std::vector<float>{1, -0.5f}));
  EXPECT_EQ(s->TangentY, (std::vector<float>{2, 0}));
  EXPECT_TRUE(s->ShowNormal);
  EXPECT_EQ(s->NormalNum(), 1);
  // Read back into the dialog as it would show them.
  const SurfaceForm back = LoadSurfaceForm(*s);
  EXPECT_EQ(back.tangentAt, "1,2; -0.5,0");
  EXPECT_EQ(back.clipMaxX, "1.5");
  EXPECT_TRUE(back.showTangent && back.clip);
}

TEST_F(SurfaceFormTest, RefusedFieldsKeepTheDialogOpen) {
  SurfaceForm f = NewSurfaceForm();
  f.formula1 = "";
  EXPECT_EQ(ConfirmSurfaceForm(f, ""), SurfaceConfirm::Stay);
  EXPECT_EQ(TakeMessage(), "Note: Input all parameters please.");
  f.formula1 = "x*y";
  f.minV = "3";
  f.maxV = "1";
  EXPECT_EQ(ConfirmSurfaceForm(f, ""), SurfaceConfirm::Stay);
  EXPECT_EQ(TakeMessage(), "Note: Min y must be less than Max y.");
  f.maxV = "4";
  f.stepsU = "0";
  EXPECT_EQ(ConfirmSurfaceForm(f, ""), SurfaceConfirm::Stay);
  EXPECT_EQ(TakeMessage(), "Note: Steps x must be larger than 1.");
  f.stepsU = "abc";
  EXPECT_EQ(ConfirmSurfaceForm(f, ""), SurfaceConfirm::Stay);
  EXPECT_EQ(TakeMessage(), "Error: Illegal data exist.");
  f.stepsU = "1";  // one step passes, whatever the message says
  f.coordType = 5;
  f.listIndex = 1;
  f.formula1 = "u";
  f.formula2 = "v";
  f.formula3 = "";
  EXPECT_EQ(ConfirmSurfaceForm(f, ""), SurfaceConfirm::Stay);
  EXPECT_EQ(TakeMessage(), "Note: Input all parameters please.");
  f.formula3 = "2";
  f.minU = "7";
  f.maxU = "1";
  EXPECT_EQ(ConfirmSurfaceForm(f, ""), SurfaceConfirm::Stay);
  EXPECT_EQ(TakeMessage(), "Note: Min u must be less than Max u.");
  EXPECT_EQ(Doc.Surfaces.count(), 0);
  f.minU = "0";
  EXPECT_EQ(ConfirmSurfaceForm(f, ""), SurfaceConfirm::Done);
  ASSERT_EQ(Doc.Surfaces.count(), 1);
  EXPECT_EQ(Doc.Surfaces.Item(1)->StepU, 1);
  // The range of the implicit form may be a formula.
  SurfaceForm g = NewSurfaceForm();
  g.listIndex = 2;
  g.formula1 = "x^2+y^2+z^2-4";
  g.minW = "-pi";
  g.maxW = "pi";
  g.stepsW = "6";
  ASSERT_EQ(ConfirmSurfaceForm(g, ""), SurfaceConfirm::Done) << TakeMessage();
  EXPECT_NEAR(Doc.Surfaces.Item(2)->MinW, -3.1416f, 1e-3f);
}

TEST_F(SurfaceFormTest, NewSurfaceAndCurveAndTheirEdit) {
  const int undoBefore = UndoCount;
  SurfaceForm f = NewSurfaceForm();
  f.formula1 = "x^2 - y";
  f.stepsU = "10";
  f.stepsV = "12";
  f.rampIndex = 3;
  f.material = 4;
  f.showTrans = true;
  f.transAlpha = "0.25";
  std::string id;
  ASSERT_EQ(ConfirmSurfaceForm(f, "", &id), SurfaceConfirm::Done);
  EXPECT_EQ(id.substr(0, 2), "SF");
  CSurface* s = Doc.Surfaces.FindById(id);
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(s->ExpressZ, "x^2-y");
  EXPECT_EQ(s->StepV, 12);
  EXPECT_EQ(s->Ramp.ColorName, "Marine");
  EXPECT_EQ(s->Ramp.ColorNum, 3);
  EXPECT_FLOAT_EQ(s->TransAlpha, 0.25f);
  EXPECT_EQ(s->Vert3D.size(), 11u * 13u);
  EXPECT_GT(UndoCount, undoBefore);

  // The edit: the form read back, changed, confirmed.
  s->Selected = true;
  SurfaceForm e = LoadSurfaceForm(*s);
  EXPECT_EQ(e.formula1, "x^2-y");
  EXPECT_EQ(e.rampIndex, 3);
  e.listIndex = 2;  // implicit
  e.formula1 = "x^2+y^2+z^2-9";
  e.stepsW = "8";
  ASSERT_EQ(ConfirmSurfaceForm(e, id), SurfaceConfirm::Done);
  EXPECT_EQ(Doc.Surfaces.count(), 1);
  EXPECT_EQ(s->FunForm, 1);
  EXPECT_EQ(s->StepW, 8);
  EXPECT_TRUE(s->Selected);
  EXPECT_FALSE(s->FieldF.empty());

  SurfaceForm c = NewSurfaceForm();
  c.graphType = 1;
  c.listIndex = 1;
  c.formula1 = "cos(u)";
  c.formula2 = "sin(u)";
  c.formula3 = "u/4";
  ASSERT_EQ(ConfirmSurfaceForm(c, "", &id), SurfaceConfirm::Done);
  EXPECT_EQ(id.substr(0, 2), "C3");
  EXPECT_EQ(Doc.Surfaces.FindById(id)->CurveVert.size(), 21u);

  // The object goes while its dialog is open.
  const std::string gone = s->ID;
  Doc.Surfaces.Remove(1);
  EXPECT_EQ(ConfirmSurfaceForm(e, gone), SurfaceConfirm::Gone);
  EXPECT_EQ(TakeMessage(), "Error: The selected object is not exist.");
}

TEST_F(SurfaceFormTest, AnEditKeepsWhatTheDialogDoesNotShow) {
  SurfaceForm f = NewSurfaceForm();
  f.formula1 = "x*y/5";
  std::string id;
  ASSERT_EQ(ConfirmSurfaceForm(f, "", &id), SurfaceConfirm::Done);
  CSurface* s = Doc.Surfaces.FindById(id);
  ASSERT_NE(s, nullptr);
  // What only a file (or another dialog) sets.
  s->NameS = "saddle";
  s->LineColor = RGB(10, 20, 30);
  s->LineWidth = 3;
  s->TransAlpha = 0.7f;
  s->Ramp.ColorName = "Mine";
  s->Ramp.ColorNum = 2;
  s->Ramp.ColorPos[0] = 0;
  s->Ramp.ColorPos[1] = 100;
  s->Ramp.ColorR[1] = 77;

  SurfaceForm e = LoadSurfaceForm(*s);
  EXPECT_EQ(e.rampIndex, kRampCount);
  EXPECT_EQ(e.customRamp, "Mine");
  e.formula1 = "x*y/4";
  ASSERT_EQ(ConfirmSurfaceForm(e, id), SurfaceConfirm::Done);
  EXPECT_EQ(s->ExpressZ, "x*y/4");
  EXPECT_EQ(s->NameS, "saddle");
  EXPECT_EQ(s->LineColor, RGB(10, 20, 30));
  EXPECT_EQ(s->LineWidth, 3);
  EXPECT_FLOAT_EQ(s->TransAlpha, 0.7f);  // transparency off: its field is not read
  EXPECT_EQ(s->Ramp.ColorName, "Mine");
  EXPECT_EQ(s->Ramp.ColorNum, 2);
  EXPECT_EQ(s->Ramp.ColorR[1], 77);
  // Choosing one of the five replaces the own ramp.
  e.rampIndex = 2;
  ASSERT_EQ(ConfirmSurfaceForm(e, id), SurfaceConfirm::Done);
  EXPECT_EQ(s->Ramp.ColorName, "Fiery");
  EXPECT_NE(s->Ramp.ColorR[1], 77);
}

TEST_F(SurfaceFormTest, TextureFileAndTheCommand) {
  host_.openPaths.push_back("/pics/wood.jpg");
  EXPECT_EQ(PickTextureFile(), "/pics/wood.jpg");
  EXPECT_EQ(PickTextureFile(), "");  // cancelled
  EXPECT_STREQ(kTextureFilter, "(*.bmp)|*.bmp|*.jpg|*.jpg|*.gif|*.gif");

  ClearHandlers();
  RegisterAllCommands();
  EXPECT_FALSE(HandlerEnabled("mnuDraw2Sur"));
  std::vector<std::string> opened;
  SetSurfaceFormOpener([&](const std::string& id) { opened.push_back(id); });
  EXPECT_TRUE(HandlerEnabled("mnuDraw2Sur"));
  EditMode = true;
  EXPECT_TRUE(RunHandler("mnuDraw2Sur"));
  EXPECT_FALSE(EditMode);
  EXPECT_EQ(opened, std::vector<std::string>{""});
  SetSurfaceFormOpener({});
  ClearHandlers();
}

}  // namespace
}  // namespace vt
