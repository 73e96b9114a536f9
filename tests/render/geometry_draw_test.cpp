// Lines, circles, arcs and regions drawn offscreen, checked on the pixels.
#include <gtest/gtest.h>

#include <cmath>

#include "document/document.h"
#include "geometry/line.h"
#include "render_fixture.h"
#include "render/view_state.h"

namespace vt {
namespace {

class GeometryDrawTest : public test::RenderTest {
 protected:
  void SetUp() override {
    RenderTest::SetUp();
    SetCanvas(200, 200, 20);  // 10 pixels to the unit
  }
  Position* Point(float x, float y) {
    Position* p = AddPoint(x, y);
    p->Hide = true;  // only the object under test shows
    return p;
  }
  // Share of dark pixels on a circle of radius r about the origin.
  double DarkShareOnCircle(float r) const {
    int dark = 0, n = 360;
    for (int i = 0; i < n; ++i) {
      double a = 2 * M_PI * (i + 0.5) / n;
      if (DarkNear(static_cast<float>(r * std::cos(a)), static_cast<float>(r * std::sin(a)))) ++dark;
    }
    return static_cast<double>(dark) / n;
  }
};

TEST_F(GeometryDrawTest, ASegmentShowsOnlyBetweenItsEnds) {
  Position* a = Point(-5, 0);
  Position* b = Point(5, 0);
  auto l = std::make_unique<CLine>();
  l->ID = NewObjectId("LN");
  l->Line1(a->ID, b->ID);
  CLine* line = Doc.Lines.Add(std::move(l));
  Frame();
  EXPECT_TRUE(DarkNear(0, 0));
  EXPECT_TRUE(DarkNear(-4, 0));
  EXPECT_TRUE(IsWhite(At(0, 1)));
  EXPECT_TRUE(IsWhite(At(7, 0)));
  line->lt = 2;  // an infinite line runs past both ends
  Frame();
  EXPECT_TRUE(DarkNear(7, 0));
  EXPECT_TRUE(DarkNear(-9, 0));
  line->Hide = true;
  Frame();
  EXPECT_TRUE(IsWhite(At(0, 0)));
}

TEST_F(GeometryDrawTest, DashedCirclesLeaveGapsSolidOnesDoNot) {
  auto c = std::make_unique<CCircle>();
  c->ID = NewObjectId("CR");
  c->CType = 3;
  c->PCenter = Position(0, 0, 0);
  // 16 pieces of 14 pixels each at 40 pixels to the unit: each piece is
  // dashed on its own, 8 pixels on and 8 off.
  c->R = 0.9f;
  c->GELineWidth = 2;
  CCircle* circle = Doc.Circles.Add(std::move(c));
  SetCanvas(200, 200, 5);
  Frame();
  EXPECT_GT(DarkShareOnCircle(0.9f), 0.9);
  EXPECT_TRUE(IsWhite(At(0, 0)));
  circle->GELineStyle = 2;
  Frame();
  double share = DarkShareOnCircle(0.9f);
  EXPECT_GT(share, 0.2);
  EXPECT_LT(share, 0.8);
}

TEST_F(GeometryDrawTest, AFilledCircleTintsItsInside) {
  auto c = std::make_unique<CCircle>();
  c->ID = NewObjectId("CR");
  c->CType = 3;
  c->PCenter = Position(0, 0, 0);
  c->R = 5;
  c->Filled = true;
  c->ForeColor = RGB(255, 0, 0);
  Doc.Circles.Add(std::move(c));
  Frame();
  // Red at alpha 0.3 over white.
  EXPECT_TRUE(Near(At(1, 1), 255, 178, 178, 12));
  EXPECT_TRUE(IsWhite(At(7, 7)));
}

TEST_F(GeometryDrawTest, ArcsAndSectors) {
  Position* o = Point(0, 0);
  Position* b = Point(6, 0);
  Position* e = Point(0, 6);
  auto a = std::make_unique<CArc>();
  a->ID = NewObjectId("AR");
  a->Arc1(b->ID, o->ID, e->ID);
  CArc* arc = Doc.Arcs.Add(std::move(a));
  Frame();
  float d = static_cast<float>(6 / std::sqrt(2.0));
  EXPECT_TRUE(DarkNear(d, d));
  EXPECT_TRUE(IsWhite(At(-d, -d)));  // the other part of the circle is not drawn
  EXPECT_TRUE(IsWhite(At(2, 2)));
  arc->AT = 2;  // a sector: filled to the centre, with its two radii
  arc->ForeColor = RGB(0, 0, 255);
  Frame();
  EXPECT_TRUE(Near(At(2, 2), 178, 178, 255, 12));
  // The radius along x: darker blue than the fill on either side of it.
  auto edge = At(3, 0.05f);
  EXPECT_GT(edge[2], 240);
  EXPECT_LT(edge[0], 150);
  EXPECT_TRUE(IsWhite(At(-2, -2)));
  arc->AT = 3;  // a bow face: the segment over the chord only
  Frame();
  EXPECT_TRUE(IsWhite(At(1, 1)));
  EXPECT_TRUE(Near(At(3.8f, 3.8f), 178, 178, 255, 12));
}

TEST_F(GeometryDrawTest, ATranslucentRegionShowsWhatLiesBelow) {
  Position* l1 = Point(-8, 0);
  Position* l2 = Point(8, 0);
  auto l = std::make_unique<CLine>();
  l->ID = NewObjectId("LN");
  l->Line1(l1->ID, l2->ID);
  Doc.Lines.Add(std::move(l));
  auto g = std::make_unique<CRegion>();
  g->ID = NewObjectId("RG");
  for (auto [x, y] : {std::pair{-4.f, -4.f}, {4.f, -4.f}, {4.f, 4.f}, {-4.f, 4.f}})
    g->Points.push_back(HolderCopy(*Point(x, y)));
  g->ForeColor = RGB(0, 255, 0);
  g->Alpha = 0.5f;
  Doc.Regions.Add(std::move(g));
  Frame();
  EXPECT_TRUE(Near(At(2, 2), 128, 255, 128, 12));  // green at one half over white
  EXPECT_TRUE(IsWhite(At(6, 6)));
  // The line drawn after the fill shows within it.
  EXPECT_LT(At(0, 0)[1], 200);
}

}  // namespace
}  // namespace vt
