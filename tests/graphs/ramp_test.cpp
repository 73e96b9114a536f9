// The colour ramps: the end rule, names, edited ramps, the plain colour rules and the legend's ticks.
#include <gtest/gtest.h>

#include <cmath>

#include "graphs/color_ramp.h"

namespace vt {
namespace {

TEST(ColorRamp, NamesFoldCaseAndOutsideTheRangeTheColourStays) {
  ColorRamp r, rainbow;
  r.ColorName = "grey";
  EXPECT_TRUE(r.SetByName());
  rainbow.ColorName = "Rainbow";
  ASSERT_TRUE(rainbow.SetByName());
  r.ColorName = "";  // empty is the rainbow
  EXPECT_TRUE(r.SetByName());
  EXPECT_TRUE(r.ColorNum == rainbow.ColorNum && r.ColorG[0] == rainbow.ColorG[0]);
  // Another name keeps the stops, as edited.
  r.ColorR[0] = 7;
  r.ColorName = "Mine";
  EXPECT_FALSE(r.SetByName());
  EXPECT_EQ(r.ColorR[0], 7);
  r.SetByName();
  float rgb[3] = {0.25f, 0.5f, 0.75f};
  EXPECT_FALSE(r.Lookup(11, 0, 10, rgb) || r.Lookup(-1, 0, 10, rgb) || r.Lookup(3, 3, 0, rgb));  // the last 0 / 0
  EXPECT_TRUE(rgb[0] == 0.25f && rgb[2] == 0.75f);
  // Just under the top is still the last segment.
  ASSERT_TRUE(r.Lookup(9.99f, 0, 10, rgb));
}

TEST(CornerColoring, BlendsPlainAndRamp) {
  ColorRamp ramp;
  ramp.ColorName = "Grey";
  ramp.SetByName();
  CornerColoring c;
  c.FirstColor = 0;                // black
  c.SecondColor = 255 + 65536 * 100;  // red 255, blue 100
  c.Ramp = &ramp;
  c.MinX = 0, c.MaxX = 4, c.MinY = 0, c.MaxY = 2, c.MinZ = -1, c.MaxZ = 1;
  float rgb[3] = {};
  // The list's order: 1 along y, 2 along z, 3 along x.
  c.FillStyle = 3;
  c.Color(1, 0, 0, rgb);  // a quarter along x
  EXPECT_NEAR(rgb[0] * 255, 63.75, 0.01);
  EXPECT_NEAR(rgb[2] * 255, 25, 0.01);
  c.FillStyle = 2;
  c.Color(0, 0, 1, rgb);
  EXPECT_NEAR(rgb[0], 1.0, 1e-6);
  c.FillStyle = 1;
  c.Color(0, 1, 0, rgb);  // half way along y
  EXPECT_NEAR(rgb[0] * 255, 127.5, 0.01);
  c.FillStyle = 4;
  c.Color(3, 2, 1, rgb);
  EXPECT_EQ(rgb[0], 0.0f);
  c.FillStyle = 5;
  c.Color(0, 0, 1, rgb);  // the top of the height
  EXPECT_NEAR(rgb[0] * 255, 50, 0.01);
}

TEST(Legend, TicksAtRoundValues) {
  // Span 15.9: the power of ten of 1.2; below 1 the exponent goes down, not
  // towards 0; a flat range runs from 0.
  const struct {
    float lo, hi, first, step;
    int count;
  } cases[] = {{-3.7f, 12.2f, 0, 10, 2}, {0.1f, 0.6f, 0.1f, 0.1f, 6}, {120, 980, 200, 100, 8}, {5, 5, 0, 1, 6}};
  for (const auto& c : cases) {
    float first, step;
    int count;
    LegendTicks(c.lo, c.hi, first, step, count);
    EXPECT_TRUE(std::fabs(first - c.first) < 1e-6f && std::fabs(step - c.step) < 1e-6f && count == c.count)
        << c.lo << ".." << c.hi << ": " << first << " " << step << " " << count;
  }
}

}  // namespace
}  // namespace vt
