#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "geometry/circle.h"
#include "geometry/geom.h"
#include "geometry/line.h"
#include "geometry/region.h"

namespace vt {
namespace {

CLine LineOf(float x1, float y1, float x2, float y2, int lt = 1) {
  CLine l;
  l.pBegin = Position(x1, y1, 0);
  l.pEnd = Position(x2, y2, 0);
  l.lt = lt;
  return l;
}

void ExpectAt(const Position& p, double x, double y, double tol = 1e-4) {
  EXPECT_NEAR(p.x, x, tol);
  EXPECT_NEAR(p.y, y, tol);
}

TEST(AngleOfSegment, QuadrantsUseTheShortPi) {
  Position o(0, 0, 0);
  EXPECT_NEAR(AngleOfSegment(Position(1, 1, 0), o), std::atan(1.0), 1e-6);
  EXPECT_NEAR(AngleOfSegment(Position(-1, 1, 0), o), 3.1416 - std::atan(1.0), 1e-6);
  EXPECT_NEAR(AngleOfSegment(Position(-1, -1, 0), o), 3.1416 + std::atan(1.0), 1e-6);
  EXPECT_NEAR(AngleOfSegment(Position(1, -1, 0), o), 6.2832 - std::atan(1.0), 1e-6);
  // Vertical: the denominator is 0.0001.
  EXPECT_NEAR(AngleOfSegment(Position(0, 2, 0), o), std::atan(2 / 0.0001), 1e-6);
  EXPECT_NEAR(AngleOfSegment(Position(0, -2, 0), o), 6.2832 - std::atan(2 / 0.0001), 1e-6);
  // From Q to P: the direction of the vector Q -> P.
  EXPECT_NEAR(AngleOfSegment(o, Position(1, 0, 0)), 3.1416, 1e-6);
}

TEST(LineLine, CrossingsAndParallels) {
  Position r(7, 7, 7);
  EXPECT_EQ(LineLine(LineOf(0, 0, 2, 2), LineOf(0, 2, 2, 0), r), 1);
  ExpectAt(r, 1, 1);
  EXPECT_FLOAT_EQ(r.z, 7);  // z is not computed
  // Parallel lines keep the old result.
  Position kept(3, 4, 0);
  EXPECT_EQ(LineLine(LineOf(0, 0, 1, 1), LineOf(0, 1, 1, 2), kept), 0);
  ExpectAt(kept, 3, 4);
  // Segments are lines here: the crossing may lie beyond both.
  EXPECT_EQ(LineLine(LineOf(0, 0, 1, 0), LineOf(5, 1, 5, 2), r), 1);
  ExpectAt(r, 5, 0);
}

TEST(LineCircle, RootOrderAndShapeCodes) {
  Position c(0, 0, 0), first, second;
  // Through the centre: symmetric roots, the first towards positive y.
  CLine diag = LineOf(-3, -3, 3, 3);
  ASSERT_EQ(LineCircle(diag, 2, c, first, second), 4);
  ExpectAt(first, std::sqrt(2.0), std::sqrt(2.0));
  ExpectAt(second, -std::sqrt(2.0), -std::sqrt(2.0));
  // Vertical through the centre: first is the upper root.
  CLine vert = LineOf(0, -5, 0, 5);
  ASSERT_EQ(LineCircle(vert, 1, c, first, second), 4);
  ExpectAt(first, 0, 1);
  ExpectAt(second, 0, -1);
  // A ray from the centre keeps only the root in front of it.
  CLine ray = LineOf(0, 0, 1, 1, 3);
  EXPECT_EQ(LineCircle(ray, 2, c, first, second), 2);
  CLine rayBack = LineOf(0, 0, -1, -1, 3);
  EXPECT_EQ(LineCircle(rayBack, 2, c, first, second), 3);
  // A short segment inside the circle touches nothing.
  Position keep(9, 9, 0);
  CLine inside = LineOf(-0.5f, 0, 0.5f, 0);
  EXPECT_EQ(LineCircle(inside, 2, c, keep, keep), 0);
  ExpectAt(keep, 9, 9);
  // A line missing the circle; a tangent gives one root.
  EXPECT_EQ(LineCircle(LineOf(-5, 3, 5, 3, 2), 2, c, first, second), 0);
  ASSERT_EQ(LineCircle(LineOf(-5, 2, 5, 2, 2), 2, c, first, second), 1);
  ExpectAt(first, 0, 2);
  // Off-centre circles shift back.
  Position c2(10, 5, 0);
  ASSERT_EQ(LineCircle(LineOf(0, 5, 20, 5, 2), 3, c2, first, second), 4);
  EXPECT_NEAR(std::fabs(first.x - 10), 3, 1e-4);
  EXPECT_NEAR(first.y, 5, 1e-4);
  EXPECT_NEAR(first.x + second.x, 20, 1e-4);
}

TEST(CircleCircle, RelationsAndCrossings) {
  Position a(0, 0, 0), b(4, 0, 0), first, second;
  const std::tuple<float, float, int> relations[] = {{1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {10, 6, 4}, {10, 1, 5}};
  for (const auto& [r1, r2, rel] : relations) EXPECT_EQ(CircleRelation(a, r1, b, r2), rel) << r1 << " " << r2;
  ASSERT_EQ(CircleCircle(a, 3, b, 3, first, second), 2);
  // Both crossings on x = 2 at y = +-sqrt(5), the first with y > 0.
  ExpectAt(first, 2, std::sqrt(5.0));
  ExpectAt(second, 2, -std::sqrt(5.0));
  ASSERT_EQ(CircleCircle(a, 2, b, 2, first, second), 1);
  ExpectAt(first, 2, 0);
  Position keep(1, 1, 0);
  EXPECT_EQ(CircleCircle(a, 1, b, 1, keep, keep), 0);
  ExpectAt(keep, 1, 1);
  // Centres one above the other (the case of equal x).
  ASSERT_EQ(CircleCircle(Position(0, 0, 0), 5, Position(0, 6, 0), 5, first, second), 2);
  EXPECT_NEAR(first.y, 3, 1e-4);
  EXPECT_NEAR(std::fabs(first.x), 4, 1e-4);
}

struct Tri {
  double ax, ay, bx, by, cx, cy;
};

// Textbook formulas, independent of the routines under test.
void Textbook(const Tri& t, double& ox, double& oy, double& ix, double& iy, double& hx, double& hy) {
  double d = 2 * (t.ax * (t.by - t.cy) + t.bx * (t.cy - t.ay) + t.cx * (t.ay - t.by));
  double a2 = t.ax * t.ax + t.ay * t.ay, b2 = t.bx * t.bx + t.by * t.by, c2 = t.cx * t.cx + t.cy * t.cy;
  ox = (a2 * (t.by - t.cy) + b2 * (t.cy - t.ay) + c2 * (t.ay - t.by)) / d;
  oy = (a2 * (t.cx - t.bx) + b2 * (t.ax - t.cx) + c2 * (t.bx - t.ax)) / d;
  double la = std::hypot(t.bx - t.cx, t.by - t.cy), lb = std::hypot(t.cx - t.ax, t.cy - t.ay),
         lc = std::hypot(t.ax - t.bx, t.ay - t.by);
  ix = (la * t.ax + lb * t.bx + lc * t.cx) / (la + lb + lc);
  iy = (la * t.ay + lb * t.by + lc * t.cy) / (la + lb + lc);
  // The orthocentre from the slopes of two altitudes.
  // Altitude from A is perpendicular to BC: (x - ax)(cx - bx) + (y - ay)(cy - by) = 0.
  double a1 = t.cx - t.bx, b1 = t.cy - t.by, k1 = a1 * t.ax + b1 * t.ay;
  double a3 = t.cx - t.ax, b3 = t.cy - t.ay, k3 = a3 * t.bx + b3 * t.by;
  double det = a1 * b3 - a3 * b1;
  hx = (k1 * b3 - k3 * b1) / det;
  hy = (a1 * k3 - a3 * k1) / det;
}

TEST(TriangleCentres, AgreeWithTextbookFormulas) {
  const Tri tris[] = {{0, 0, 4, 0, 0, 3}, {-2, 1, 5, -1, 1, 6}, {1, 1, 2, 7, -3, 2}, {0, 0, 10, 0, 5, 0.5}};
  for (const Tri& t : tris) {
    Position A(t.ax, t.ay, 0), B(t.bx, t.by, 0), C(t.cx, t.cy, 0);
    double ox, oy, ix, iy, hx, hy;
    Textbook(t, ox, oy, ix, iy, hx, hy);
    bool ok = false;
    ExpectAt(TriCircumcenter(A, B, C, &ok), ox, oy);
    EXPECT_TRUE(ok);
    ExpectAt(TriIncenter(A, B, C), ix, iy);
    ExpectAt(TriOrthocenter(A, B, C), hx, hy, 1e-3 * std::max(1.0, std::fabs(hx)));
    ExpectAt(TriBarycenter(A, B, C), (t.ax + t.bx + t.cx) / 3, (t.ay + t.by + t.cy) / 3);
  }
  bool ok = true;
  TriCircumcenter(Position(0, 0, 0), Position(1, 1, 0), Position(2, 2, 0), &ok);
  EXPECT_FALSE(ok);
}

// The sides seen at 120 degrees from the point are the construction table's
// (tools), followed through drags.
TEST(TriangleCentres, FermatPointBySearch) {
  Position A(0, 0, 0), B(2, 0, 0), C(1, static_cast<float>(std::sqrt(3.0)), 0);
  ExpectAt(TriFermatPoint(A, B, C), 1, std::sqrt(3.0) / 3, 1e-3);  // equilateral: the centre
  // An angle of 120 degrees or more: the obtuse corner itself.
  Position O(0, 0, 0), U(4, 0, 0), W(static_cast<float>(4 * std::cos(2.2)), static_cast<float>(4 * std::sin(2.2)), 0);
  ExpectAt(TriFermatPoint(O, U, W), 0, 0, 1e-3);
}

TEST(SpaceRoutines, CirclesPlanesAndRays) {
  Position centre;
  float r = 0;
  ASSERT_TRUE(CircleFromThreePoints(Position(1, 0, 0), Position(0, 1, 0), Position(-1, 0, 0), centre, r));
  ExpectAt(centre, 0, 0);
  EXPECT_NEAR(r, 1, 1e-6);
  // In a tilted plane.
  ASSERT_TRUE(CircleFromThreePoints(Position(2, 0, 0), Position(0, 0, 2), Position(0, 2, 0), centre, r));
  EXPECT_NEAR(centre.x, 2.0 / 3, 1e-5);
  EXPECT_NEAR(centre.z, 2.0 / 3, 1e-5);
  EXPECT_FALSE(CircleFromThreePoints(Position(0, 0, 0), Position(1, 1, 1), Position(2, 2, 2), centre, r));

  auto ring = SpatialCirclePoints(Position(1, 2, 3), Position(1, 1, 0), 2, 12);
  ASSERT_EQ(ring.size(), 13u);
  for (const Position& p : ring) {
    EXPECT_NEAR(std::sqrt((p.x - 1) * (p.x - 1) + (p.y - 2) * (p.y - 2) + (p.z - 3) * (p.z - 3)), 2, 1e-5);
    EXPECT_NEAR((p.x - 1) + (p.y - 2), 0, 1e-5);  // in the plane normal to (1, 1, 0)
  }

  Position hit;
  ASSERT_EQ(LineRegion(Position(1, 1, 5), Position(1, 1, 4), Position(0, 0, 2), Position(1, 0, 2), Position(0, 1, 2), hit), 1);
  EXPECT_NEAR(hit.z, 2, 1e-6);
  EXPECT_EQ(LineRegion(Position(0, 0, 5), Position(1, 0, 5), Position(0, 0, 2), Position(1, 0, 2), Position(0, 1, 2), hit), 0);

  // Two skew lines one unit apart.
  EXPECT_NEAR(DistanceRayLine(Position(0, 0, 0), Position(1, 0, 0), Position(0, 0, 1), Position(0, 1, 1)), 1, 1e-9);
  // Parallel lines.
  EXPECT_NEAR(DistanceRayLine(Position(0, 0, 0), Position(1, 0, 0), Position(0, 3, 0), Position(2, 3, 0)), 3, 1e-9);
}

TEST(ProjectOnLine, LimitsByShape) {
  Position a(0, 0, 0), b(4, 0, 0);
  // {x of the point at y = 3, shape, x of the projection}
  const std::tuple<float, int, float> cases[] = {{2, 1, 2}, {-2, 1, 0}, {6, 4, 4}, {6, 3, 6}, {-2, 3, 0}, {-2, 2, -2}};
  for (const auto& [x, shape, want] : cases) {
    SCOPED_TRACE(shape);
    ExpectAt(ProjectOnLine(Position(x, 3, 0), a, b, shape), want, 0);
  }
  ExpectAt(ProjectOnLine(Position(5, 5, 0), a, a, 1), 0, 0);  // coinciding ends
}

}  // namespace
}  // namespace vt
