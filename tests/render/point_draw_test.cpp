// Points drawn offscreen: symbols, colours of the draw modes, labels, the
// ball in space; the box selection through the frame's matrices.
#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>
#include <tuple>
#include <vector>

#include "document/globals.h"
#include "render/frame.h"
#include "render/view_state.h"
#include "render_fixture.h"

namespace vt {
namespace {

using test::RenderTest;
using test::Rgb;

class PointDrawTest : public RenderTest {
 protected:
  Position* Point(float x, float y, int symbol, int size, const std::string& label = std::string()) {
    Position* p = AddPoint(x, y, 0, label);
    p->Symbol = symbol;
    p->Size = static_cast<short>(size);
    p->HideLabel = label.empty();
    return p;
  }
};

TEST_F(PointDrawTest, HollowCircleIsWhiteInsideAndCoversWhatLiesBelow) {
  SetCanvas(kW, kH, 4);  // 30 pixels to the unit
  Position* below = Point(0.01f, 0.01f, 1, 9);  // green disc of radius 0.3
  below->ForeColor = RGB(0, 255, 0);
  Point(0.01f, 0.01f, 2, 6);  // red ring of radius 6/35 = 0.171
  Frame();
  EXPECT_TRUE(IsWhite(At(0.01f, 0.01f)));
  EXPECT_TRUE(IsWhite(At(0.11f, 0.06f)));
  const float r = 6.0f / 35.0f;
  int redOnRim = 0;
  for (int i = 0; i < 8; ++i) {
    const double a = i * 3.14159265 / 4 + 0.2;
    const Rgb c = At(0.01f + static_cast<float>(r * std::cos(a)), 0.01f + static_cast<float>(r * std::sin(a)));
    if (c[0] > 150 && c[1] < 120) ++redOnRim;
  }
  EXPECT_GE(redOnRim, 6);
  // Between the ring and the rim of the disc below, the disc shows.
  EXPECT_TRUE(Near(At(0.25f, 0.01f), 0, 255, 0, 10));
  EXPECT_TRUE(IsWhite(At(0.36f, 0.01f)));
}

TEST_F(PointDrawTest, EachSymbolHasItsShape) {
  SetCanvas(kW, kH, 4);  // 30 pixels to the unit
  // Size 9: squares of half side 0.3, triangle and diamond of 0.45.
  Point(-1.5f, 0.5f, 3, 9);
  Point(0, 0.5f, 4, 9);
  Point(1.5f, 0.5f, 5, 9);
  Point(-1.5f, -1.2f, 6, 9);
  Point(0, -1.2f, 7, 9);  // no such symbol
  Frame();
  // Square: corners filled; triangle: apex up, base corners filled, upper
  // corners of its box empty; diamond: points on the axes filled, corners of
  // its box empty; crosshair: arms filled, the quadrants between them empty.
  // Each place: x, y, red (or else white), tolerance.
  const std::vector<std::tuple<float, float, bool, int>> spots = {
      {-1.25f, 0.75f, true, 30}, {-1.75f, 0.25f, true, 30}, {-1.14f, 0.5f, false, 0},
      {0, 0.85f, true, 30},      {-0.38f, 0.1f, true, 30},  {-0.35f, 0.85f, false, 0},
      {1.88f, 0.5f, true, 30},   {1.5f, 0.12f, true, 30},   {1.8f, 0.8f, false, 0},
      {-1.15f, -1.2f, true, 60}, {-1.5f, -1.55f, true, 60}, {-1.2f, -0.9f, false, 0}};
  for (const auto& [x, y, red, tol] : spots)
    EXPECT_TRUE(red ? Near(At(x, y), 255, 0, 0, tol) : IsWhite(At(x, y))) << x << ", " << y;
  // Symbol 7 draws nothing.
  EXPECT_EQ(DarkPixelsAround(-0.5f, -1.7f, 0.5f, -0.7f), 0);
  EXPECT_TRUE(IsWhite(At(0, -1.2f)));
}

TEST_F(PointDrawTest, InSpaceEveryPointIsABallWithItsLabelOffset) {
  SceneMode = 3;  // space scene seen along z (no rotation)
  SetCanvas(kW, kH, 4);
  Point(0, 0, 6, 9, "P");  // a crosshair in the plane, a ball of radius 0.3 here
  Frame();
  // Red at the middle and between the arms of a crosshair: a ball's disc.
  for (float d : {0.0f, 0.15f, -0.17f}) EXPECT_TRUE(Near(At(d, d, 0.3f), 255, 0, 0, 5)) << d;
  EXPECT_TRUE(IsWhite(At(0.3f, 0.3f, 0.3f)));
  // The label begins at (0.3, 0.3, 0.3) from the point.
  EXPECT_GT(DarkPixelsAround(0.3f, 0.3f, 1.0f, 0.9f, 0.3f), 5);
}

}  // namespace
}  // namespace vt
