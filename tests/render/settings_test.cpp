// The settings behind frmF14, frmF3/frmF20 and frmF8: a form is taken whole
// or not at all, and a refused field says "Illegal data exist.".
#include <gtest/gtest.h>

#include <array>

#include "document/globals.h"
#include "render/dialogs/settings_core.h"
#include "render/view_state.h"
#include "support/fixtures.h"

namespace vt::test {
namespace {

class SettingsTest : public DocumentTest {
 protected:
  void SetUp() override {
    DocumentTest::SetUp();
    ResetViewState();
  }
  void TearDown() override {
    ResetViewState();
    ScaleX = ScaleY = ScaleZ = 1;
    DocumentTest::TearDown();
  }
};

TEST_F(SettingsTest, EachFormIsTakenWholeOrNotAtAll) {
  ViewSettingsForm v = CurrentViewSettings();
  v.ProjectType = 2;
  v.Limits[0] = "-7";
  v.Limits[3] = "1x";
  EXPECT_FALSE(ApplyViewSettings(v));
  ASSERT_EQ(host_.messages.size(), 1u);
  EXPECT_EQ(host_.messages[0].title + ": " + host_.messages[0].text, "Error: Illegal data exist.");
  EXPECT_TRUE(View.ProjectType == 1 && BoxMinX == -500);
  v.Limits[3] = "--";
  EXPECT_FALSE(ApplyViewSettings(v));

  LightSettingsForm l = CurrentLightSettings();
  l.Diffuse[1][2] = "0.5";
  EXPECT_TRUE(ApplyLightSettings(l));
  EXPECT_FLOAT_EQ(MainLight.Diffuse[1][2], 0.5f);
  l.Specular[0][0] = "0.2";
  l.Position[1][3] = "one";
  EXPECT_FALSE(ApplyLightSettings(l));
  EXPECT_EQ(host_.LastMessage(), "Illegal data exist.");
  EXPECT_FLOAT_EQ(MainLight.Specular[0][0], 1);

  AxisSettingsForm a = CurrentAxisSettings();
  a.Axis.XYPanelMaterial = 13;
  a.Scales = ScaleChoice::Custom;
  a.Scale = {"2", "0.5", "1"};
  EXPECT_TRUE(ApplyAxisSettings(a));
  EXPECT_TRUE(ScaleY == 0.5f && CurrentAxisSettings().Scales == ScaleChoice::Custom);
  // Equal scales: only the first counts, but each must read.
  const struct {
    ScaleChoice choice;
    std::array<std::string, 3> scale;
    int material;
    bool taken;
  } steps[] = {{ScaleChoice::Equal, {"3", "x", "x"}, 13, false}, {ScaleChoice::Equal, {"3", "1", "1"}, 13, true},
               {ScaleChoice::Custom, {"0", "1", "1"}, 13, false}, {ScaleChoice::Square, {"3", "1", "1"}, 14, false}};
  for (const auto& k : steps) {
    a.Scales = k.choice, a.Scale = k.scale, a.Axis.XYPanelMaterial = k.material;
    EXPECT_EQ(ApplyAxisSettings(a), k.taken) << k.scale[0] << k.scale[1];
  }
  EXPECT_TRUE(ScaleZ == 3 && AxisObject.XYPanelMaterial == 13);
}

}  // namespace
}  // namespace vt::test
