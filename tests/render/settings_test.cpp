// The settings behind frmF14, frmF3/frmF20 and frmF8: a form is taken whole
// or not at all, and a refused field says "Illegal data exist.".
#include <gtest/gtest.h>

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

TEST_F(SettingsTest, TheViewSettingsRefuseOneXAndChangeNothing) {
  ViewSettingsForm f = CurrentViewSettings();
  f.ProjectType = 2;
  f.Limits[0] = "-7";
  f.Limits[3] = "1x";
  EXPECT_FALSE(ApplyViewSettings(f));
  ASSERT_EQ(host_.messages.size(), 1u);
  EXPECT_EQ(host_.messages[0].text, "Illegal data exist.");
  EXPECT_EQ(host_.messages[0].title, "Error");
  EXPECT_EQ(View.ProjectType, 1);
  EXPECT_FLOAT_EQ(BoxMinX, -500);
  f.Limits[3] = "--";
  EXPECT_FALSE(ApplyViewSettings(f));
}

TEST_F(SettingsTest, TheLightsTakeEveryFieldOrNone) {
  LightSettingsForm f = CurrentLightSettings();
  f.Diffuse[1][2] = "0.5";
  EXPECT_TRUE(ApplyLightSettings(f));
  EXPECT_FLOAT_EQ(MainLight.Diffuse[1][2], 0.5f);
  f = CurrentLightSettings();
  f.Specular[0][0] = "0.2";
  f.Position[1][3] = "one";
  EXPECT_FALSE(ApplyLightSettings(f));
  EXPECT_EQ(host_.LastMessage(), "Illegal data exist.");
  EXPECT_FLOAT_EQ(MainLight.Specular[0][0], 1);
}

TEST_F(SettingsTest, TheAxisSettingsChooseScalesAndSchemes) {
  AxisSettingsForm f = CurrentAxisSettings();
  f.Axis.XYPanelMaterial = 13;
  f.Scales = ScaleChoice::Custom;
  f.Scale = {"2", "0.5", "1"};
  EXPECT_TRUE(ApplyAxisSettings(f));
  EXPECT_FLOAT_EQ(ScaleY, 0.5f);
  EXPECT_EQ(CurrentAxisSettings().Scales, ScaleChoice::Custom);

  f.Scales = ScaleChoice::Equal;
  f.Scale = {"3", "x", "x"};  // only the first counts, but each must read
  EXPECT_FALSE(ApplyAxisSettings(f));
  f.Scale = {"3", "1", "1"};
  EXPECT_TRUE(ApplyAxisSettings(f));
  EXPECT_FLOAT_EQ(ScaleZ, 3);
  f.Scales = ScaleChoice::Custom;
  f.Scale = {"0", "1", "1"};
  EXPECT_FALSE(ApplyAxisSettings(f));
  f.Scales = ScaleChoice::Square;
  f.Axis.XYPanelMaterial = 14;
  EXPECT_FALSE(ApplyAxisSettings(f));
  EXPECT_EQ(AxisObject.XYPanelMaterial, 13);
}

}  // namespace
}  // namespace vt::test
