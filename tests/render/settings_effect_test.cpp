// Each setting of the view and axis dialogs changes the picture, and comes
// back the same after the document is written and read; snapping lands on
// the grid that is drawn, at any zoom.
#include <algorithm>
#include <functional>

#include "document/globals.h"
#include "graphs/funcurve.h"
#include "graphs/graphs_test_util.h"
#include "persist/docio.h"
#include "render/dialogs/settings_core.h"
#include "render/picture.h"
#include "render/reference.h"
#include "render_fixture.h"

namespace vt {
namespace {

class SettingsEffectTest : public test::RenderTest {
 protected:
  void TearDown() override {
    ResetViewState();
    ResetSceneSettings();
    RenderTest::TearDown();
  }
  // The scene with axes and grid (and a curve y = x in the plane), drawn.
  void Scene(int mode) {
    ClearDocument();
    ResetViewState();
    ResetSceneSettings();
    SetCanvas(kW, kH, 12);
    SceneMode = mode;
    if (mode == 3) ViewGraph.RotRoll = 111, ViewGraph.RotPitch = -41, ViewGraph.RotYaw = 60;
    SetViewToggles(true, true, false, false);
    if (mode == 1) Doc.FunCurves.Add(test::MakeCurve(2, 1, "", "x", 40, "-8", "8"))->GetPoints();
    Frame();
  }
};

TEST_F(SettingsEffectTest, EachSettingChangesThePictureAndIsKeptWithTheDocument) {
  // A row changes the axis settings, or else the view settings.
  const struct { const char* field; int scene; std::function<void(Cls3&)> axis; ViewSettingsForm view; } kRows[] = {
      {"Show", 1, [](Cls3& a) { a.Show = false; }, {}},
      {"Width", 1, [](Cls3& a) { a.AxisWidth = 3; }, {}},
      {"X title", 1, [](Cls3& a) { a.TitleX = "\xCE\xB8 (rad)"; }, {}},
      {"Show PI", 1, [](Cls3& a) { a.ShowPI = true; }, {}},
      {"Secondary labels", 1, [](Cls3& a) { a.ShowSecondaryLabel = true; }, {}},
      {"Primary grid", 1, [](Cls3& a) { a.ShowprimaryGrid = false; }, {}},
      {"Secondary grid", 1, [](Cls3& a) { a.ShowSecondaryGrid = true; }, {}},
      {"Background", 1, [](Cls3& a) { a.ShowBackground = true; }, {}},
      {"Better fonts", 1, [](Cls3& a) { a.BetterFonts = true; }, {}},
      {"XY panel", 1, [](Cls3& a) { a.ShowXYPanel = true, a.XYPanelMaterial = 5; }, {}},
      {"Max x", 1, nullptr, {1, {"-500", "2", "-500", "500", "-500", "500"}}},
      {"Labels x", 3, [](Cls3& a) { a.LabelNumX = 4; }, {}},
      {"Z title", 3, [](Cls3& a) { a.TitleZ = "h"; }, {}},
      {"XZ panel", 3, [](Cls3& a) { a.ShowXZPanel = true; }, {}},
      {"Better fonts in space", 3, [](Cls3& a) { a.BetterFonts = true; }, {}},
      {"Perspective", 3, nullptr, {2, {"-500", "500", "-500", "500", "-500", "500"}}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.field);
    Scene(row.scene);
    const auto before = image_.rgb;
    AxisSettingsForm f = CurrentAxisSettings();
    if (row.axis) row.axis(f.Axis);
    ASSERT_TRUE(row.axis ? ApplyAxisSettings(f) : ApplyViewSettings(row.view));
    Frame();
    const auto changed = image_.rgb;
    EXPECT_NE(changed, before);
    // Written, the settings set back, and read: the same picture.
    const std::string text = GetUndoVar();
    Scene(1);
    ASSERT_TRUE(OpenDocumentText(text));
    SetCanvas(kW, kH, 12);
    Frame();
    EXPECT_EQ(image_.rgb, changed);
  }
  EXPECT_TRUE(host_.messages.empty());
  // A vector picture of outline axis text carries the title as text.
  Scene(1);
  AxisObject.BetterFonts = true;
  AxisObject.TitleX = "\xCE\xB8";
  Picture picture;
  std::string error;
  ASSERT_TRUE(CapturePicture(picture, error)) << error;
  EXPECT_TRUE(std::any_of(picture.texts.begin(), picture.texts.end(),
                          [](const PictureText& t) { return t.text == "\xCE\xB8"; }));
  // A number out of range is refused with one message and changes nothing.
  AxisSettingsForm f = CurrentAxisSettings();
  f.Axis.AxisWidth = 0;
  EXPECT_FALSE(ApplyAxisSettings(f));
  ViewSettingsForm v = CurrentViewSettings();
  v.Limits[1] = "-600";
  EXPECT_FALSE(ApplyViewSettings(v));
  EXPECT_EQ(host_.messages.size(), 2u);
  EXPECT_TRUE(AxisObject.AxisWidth == 1 && BoxMaxX == 500);
}

TEST_F(SettingsEffectTest, SnapLandsOnTheGridAsDrawnAtEachZoom) {
  // 10 pixels to the unit: lines at every unit; 1 pixel: every 10 units.
  for (const float unitsHigh : {12.0f, 120.0f}) {
    SetCanvas(kW, kH, unitsHigh);
    SceneMode = 1;
    SetViewToggles(false, true, true, false);
    Frame();
    double sx = 0, sy = 0;
    GridSteps(sx, sy);
    EXPECT_EQ(sx, unitsHigh / 12) << unitsHigh;
    const float off = static_cast<float>(0.37 * sx);
    const Position p = SnappedToGrid(Position(2 * off + static_cast<float>(sx), -off, 0));
    EXPECT_NEAR(p.x, 2 * sx, 1e-5);
    EXPECT_NEAR(p.y, 0, 1e-5);
    // The node is where a drawn grid line runs, and half a step off none runs.
    auto ink = [](const test::Rgb& c) { return !IsWhite(c); };
    EXPECT_TRUE(AnyNear(p.x, p.y + off, 0, 1, ink) && !AnyNear(p.x + sx / 2, p.y + off, 0, 0, ink));
  }
}

}  // namespace
}  // namespace vt
