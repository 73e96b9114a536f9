// The player's panel as drawn: the knob where its pick looks for it, the
// play button's face, the grey panel.
#include <gtest/gtest.h>

#include "animation/animation.h"
#include "document/globals.h"
#include "render/render_fixture.h"

namespace vt::test {
namespace {

class PanelRenderTest : public RenderTest {
 protected:
  static constexpr int kSide = 500;  // 5 pixels to the per cent
  // Colour at a place given in per cent of the canvas, y from the bottom.
  Rgb AtPct(float x, float y) const {
    return Pixel(static_cast<int>(x / 100 * kSide), static_cast<int>(y / 100 * kSide));
  }
};

TEST_F(PanelRenderTest, KnobFollowsTheStepAndTheButtonShowsTheState) {
  SetCanvas(kSide, kSide, 20);
  LabelsOverlay = true;
  CAniControl* c = NewPlayer();
  c->PosX = 10;
  c->PosY = 20;
  Frame();
  EXPECT_TRUE(Near(AtPct(c->KnobX(), c->KnobY()), 0, 0, 255)) << "knob at the left end";
  EXPECT_TRUE(Near(AtPct(20, 20.5f), 217, 217, 217)) << "the panel";
  EXPECT_TRUE(Near(AtPct(10.8f, 21.5f), 0, 128, 0)) << "the play triangle";
  c->Step = c->Steps;
  Frame();
  EXPECT_TRUE(Near(AtPct(24.3f, 21.5f), 0, 0, 255)) << "knob 12 per cent to the right";
  EXPECT_FALSE(Near(AtPct(12.3f, 21.5f), 0, 0, 255));
  // Running: two bars, with the panel showing between them.
  c->Status = 2;
  Frame();
  EXPECT_TRUE(Near(AtPct(10.7f, 21.5f), 0, 128, 0));
  EXPECT_TRUE(Near(AtPct(11.05f, 21.5f), 217, 217, 217));
  EXPECT_TRUE(Near(AtPct(11.4f, 21.5f), 0, 128, 0));
  c->Hide = true;
  Frame();
  EXPECT_TRUE(IsWhite(AtPct(20, 20.5f)));
}

}  // namespace
}  // namespace vt::test
