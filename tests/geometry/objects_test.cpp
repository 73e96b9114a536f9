#include <gtest/gtest.h>

#include <cmath>

#include "document/document.h"
#include "document/globals.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "support/fixtures.h"

namespace vt {
namespace {

using ObjectsTest = test::DocumentTest;

TEST_F(ObjectsTest, MissingPointsLeaveEmptyReferences) {
  std::string text = "GL Ver3.00 1 0 0 0 0;;LN0003 PT0001 PT0002 @@ 1 1 0 0 1 2 0 @@ @@ @@ @@ 1 0 0 0 0 0 0 0;;";
  ASSERT_TRUE(OpenDocumentText(text));
  ASSERT_EQ(Doc.Lines.count(), 1);
  EXPECT_EQ(Doc.Lines.Item(1)->pBegin.ID, "");
  EXPECT_EQ(NextObjectNumber, 3);  // a line record cut short is a row of the damaged-record table (persist)
}

TEST_F(ObjectsTest, LineStructurePointsFollowTheEnds) {
  Position* on = AddPoint(1, 0);
  CLine l;
  l.pBegin = Position(0, 0, 0);
  l.pEnd = Position(4, 0, 0);
  l.AddStruPoint(*on, 0.25f);
  l.pEnd.Set(4, 8, 0);
  l.UpdateStru();
  EXPECT_FLOAT_EQ(on->x, 1);
  EXPECT_FLOAT_EQ(on->y, 2);
  EXPECT_FLOAT_EQ(l.StruP[0].y, 2);
}

TEST(LinePick, NearTheLineWithinTheBox) {
  CLine seg;
  seg.pBegin = Position(0, 0, 0);
  seg.pEnd = Position(4, 0, 0);
  auto ray = [](float x, float y) { return std::pair<Position, Position>{Position(x, y, 50), Position(x, y, -50)}; };
  auto [n1, f1] = ray(2, 0.1f);
  EXPECT_TRUE(seg.Pick(n1, f1));
  auto [n2, f2] = ray(2, 0.13f);
  EXPECT_FALSE(seg.Pick(n2, f2));
  auto [n3, f3] = ray(6, 0);  // on the carrier line but past the segment's box
  EXPECT_FALSE(seg.Pick(n3, f3));
  seg.lt = 2;
  EXPECT_TRUE(seg.Pick(n3, f3));
  seg.Hide = true;
  EXPECT_FALSE(seg.Pick(Position(), f3, n3));
}

TEST(CircleShape, SegmentsRadiusAndPick) {
  CCircle c;
  c.PCenter = Position(0, 0, 0);
  c.PCircleR = Position(0.25f, 0, 0);
  c.DrawMode = 1;
  c.GELineStyle = 1;
  c.PCircleR.x = 2;
  Position nearRim(0, 2.05f, 10), farRim(0, 2.05f, -10);
  EXPECT_TRUE(c.Pick(nearRim, farRim));
  Position nearIn(0.3f, 0.3f, 10), farIn(0.3f, 0.3f, -10);
  EXPECT_FALSE(c.Pick(nearIn, farIn));
  c.Filled = true;  // a filled circle is hit inside too
  EXPECT_TRUE(c.Pick(nearIn, farIn));

  CCircle three;
  three.CType = 2;
  three.PCircleR = Position(1, 0, 0);
  three.PCircleR2 = Position(0, 1, 0);
  three.PCircleR3 = Position(-1, 0, 0);
  EXPECT_NEAR(three.Radius(), 1, 1e-6);
  EXPECT_NEAR(three.Centre().x, 0, 1e-6);
}

TEST(ArcShape, SweepAndProjection) {
  CArc a;
  a.PCenter = Position(0, 0, 0);
  a.pBegin = Position(1, 0, 0);
  a.pEnd = Position(0, 1, 0);
  EXPECT_NEAR(a.RadiusAngle(), 3.1416 / 2, 1e-3);
  std::swap(a.pBegin, a.pEnd);
  EXPECT_NEAR(a.RadiusAngle(), 6.2832 - 3.1416 / 2, 1e-3);  // the long way round
  std::swap(a.pBegin, a.pEnd);

  // Through three points: the middle point decides the sense.
  CArc t;
  t.AType = 2;
  t.pBegin = Position(1, 0, 0);
  t.pMid = Position(0, -1, 0);
  t.pEnd = Position(0, 1, 0);
  EXPECT_NEAR(t.RadiusAngle(), 6.2832 - 3.1416 / 2, 1e-3);  // more than half a turn
  std::vector<Position> s = t.Samples();
  EXPECT_NEAR(s.front().x, 0, 1e-4);  // runs from the end round through the middle
  EXPECT_NEAR(s.front().y, 1, 1e-4);
  EXPECT_GE(s.size(), 4u);

  float angle = 0;
  Position on = a.ProjectOnArc(Position(2, 2, 0), &angle);
  EXPECT_NEAR(on.x, std::sqrt(0.5), 1e-4);
  EXPECT_NEAR(angle, std::atan(1.0), 1e-4);
  Position end = a.ProjectOnArc(Position(-1, 0.2f, 0));  // past the end: the nearer end
  EXPECT_NEAR(end.x, 0, 1e-4);
  EXPECT_NEAR(end.y, 1, 1e-4);
  Position start = a.ProjectOnArc(Position(0.5f, -2, 0));
  EXPECT_NEAR(start.x, 1, 1e-4);
}

TEST(RegionShape, PickByWindingAndFrames) {
  CRegion g;
  g.Points = {Position(0, 0, 0), Position(4, 0, 0), Position(4, 4, 0), Position(2, 1, 0), Position(0, 4, 0)};
  auto hits = [&](float x, float y) { return g.Pick(Position(x, y, 10), Position(x, y, -10)); };
  EXPECT_TRUE(hits(1, 0.5f));
  EXPECT_TRUE(hits(3.5f, 3));
  EXPECT_FALSE(hits(2, 3));  // in the notch of the concave polygon
  EXPECT_FALSE(hits(5, 1));
  CRegion two;
  two.Points = {Position(0, 0, 0), Position(1, 0, 0)};
  EXPECT_FALSE(two.Pick(Position(0.5f, 0, 1), Position(0.5f, 0, -1)));  // no plane
  two.UpdateStru();                                                       // and nothing to do

  // A structure point keeps its frame place when the region turns.
  CRegion tri;
  tri.Points = {Position(0, 0, 0), Position(2, 0, 0), Position(0, 2, 0)};
  Position p(0.5f, 0.5f, 0);
  p.ID = "PT0042";
  tri.AddStruPoint(p);
  tri.Points = {Position(0, 0, 0), Position(0, 2, 0), Position(-2, 0, 0)};  // a quarter turn
  tri.UpdateStru();
  EXPECT_NEAR(tri.StruP[0].x, -0.5, 1e-5);
  EXPECT_NEAR(tri.StruP[0].y, 0.5, 1e-5);
  EXPECT_EQ(tri.GetRotPoints().size(), 4u);
}

}  // namespace
}  // namespace vt
