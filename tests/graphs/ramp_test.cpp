// The colour ramps: the end rule, names, edited ramps, the plain colour rules and the legend's ticks.
#include <gtest/gtest.h>

#include <cmath>

#include "graphs/color_ramp.h"

namespace vt {
namespace {

TEST(ColorRamp, NamesFoldCaseAndEmptyIsRainbow) {
  ColorRamp r;
  r.ColorName = "grey";
  EXPECT_TRUE(r.SetByName());
  EXPECT_EQ(r.ColorNum, 2);
  r.ColorName = "";
  EXPECT_TRUE(r.SetByName());
  EXPECT_EQ(r.ColorNum, 6);
  EXPECT_EQ(r.ColorG[0], 102);
  // Another name keeps the stops, as edited.
  r.ColorR[0] = 7;
  r.ColorName = "Mine";
  EXPECT_FALSE(r.SetByName());
  EXPECT_EQ(r.ColorR[0], 7);
}

TEST(ColorRamp, OutsideTheRangeAndFlatRangeKeepTheColour) {
  ColorRamp r;
  r.SetByName();
  float rgb[3] = {0.25f, 0.5f, 0.75f};
  EXPECT_FALSE(r.Lookup(11, 0, 10, rgb));
  EXPECT_FALSE(r.Lookup(-1, 0, 10, rgb));
  EXPECT_FALSE(r.Lookup(3, 3, 0, rgb));  // 0 / 0
  EXPECT_FLOAT_EQ(rgb[0], 0.25f);
  EXPECT_FLOAT_EQ(rgb[2], 0.75f);
  // Just under the top is still the last segment; the top itself the last stop.
  ASSERT_TRUE(r.Lookup(9.99f, 0, 10, rgb));
  EXPECT_GT(rgb[1], 0.0f);
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
  float first, step;
  int count;
  LegendTicks(-3.7f, 12.2f, first, step, count);
  // Span 15.9: the power of ten of 1.2.
  EXPECT_FLOAT_EQ(step, 10);
  EXPECT_FLOAT_EQ(first, 0);
  EXPECT_EQ(count, 2);  // 0 and 10
  // Below 1 the exponent goes down, not towards 0: span 0.5 ticks by 0.1.
  LegendTicks(0.1f, 0.6f, first, step, count);
  EXPECT_NEAR(step, 0.1f, 1e-7f);
  EXPECT_NEAR(first, 0.1f, 1e-6f);
  EXPECT_EQ(count, 6);
  LegendTicks(120, 980, first, step, count);
  EXPECT_FLOAT_EQ(step, 100);
  EXPECT_FLOAT_EQ(first, 200);
  EXPECT_EQ(count, 8);
  LegendTicks(5, 5, first, step, count);  // flat: from 0 to 5
  EXPECT_FLOAT_EQ(step, 1);
  EXPECT_FLOAT_EQ(first, 0);
  EXPECT_EQ(count, 6);
}

}  // namespace
}  // namespace vt
