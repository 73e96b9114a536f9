// Update propagation: structure points handed on from carrier to carrier,
// the refresh pass and its constructions, and the directed extension.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "document/document.h"
#include "document/globals.h"
#include "geometry/extension.h"
#include "geometry/geom.h"
#include "geometry/on_object.h"
#include "geometry/propagation.h"
#include "tool_fixture.h"

namespace vt::test {
namespace {

class PropagationTest : public ToolTest {
 protected:
  // Moves a real point by a delta as a drag does.
  static void Shift(Position* p, float dx, float dy, int flag = 0) {
    p->Set(p->x + dx, p->y + dy, p->z);
    p->UpdateLinked(dx, dy, 0, flag);
  }
};

TEST_F(PropagationTest, AStructurePointOnAStructurePointFollowsOneStepLateUnlessTheDragRepropagates) {
  Position* a = Free(0, 0);
  Position* b = Free(4, 0);
  CLine* l1 = Segment(a, b);
  Position* s = MakePointOn(*l1, Position(2, 0, 0));
  Position* c = Free(2, 4);
  CLine* l2 = Segment(s, c);
  Position* t = MakePointOn(*l2, Position(2, 2, 0));
  ExpectAt(t, 2, 2);

  Shift(b, 4, 0);
  ExpectAt(s, 4, 0);
  ExpectAt(&l2->pBegin, 4, 0);  // handed on one level
  ExpectAt(t, 2, 2);            // but no further
  Shift(b, 0, 0);  // a further call does not reach it either
  ExpectAt(t, 2, 2);

  // A drag step carries the structure of every touched carrier on.
  {
    PropagationTrace trace;
    Shift(b, 4, 0);
    RepropagateAfterMove();
  }
  ExpectAt(s, 6, 0);
  ExpectAt(t, 4, 2);  // the middle of (6, 0) and (2, 4)
  EXPECT_FALSE(PropagationTrace::Active());
}

TEST_F(PropagationTest, TheRefreshPassRecomputesDivisionEpitaxialImageAndTriangleCentres) {
  Position* a = Free(0, 0);
  Position* b = Free(6, 0);
  Position* c = Free(0, 6);
  Position* third = Derived(9, a->ID, b->ID, 2);
  third->Para1 = 3;
  Position* even = Derived(9, a->ID, b->ID, 1);
  even->Para1 = 2.5f;  // rounded half to even: 2 parts
  Position* beyond = Derived(6, a->ID, b->ID);
  beyond->Para1 = 1, beyond->Para2 = 0, beyond->Para3 = 0.5f;  // half the base beyond b
  Position* beyondAbs = Derived(6, a->ID, b->ID);
  beyondAbs->Para1 = 1, beyondAbs->Para2 = 1, beyondAbs->Para3 = 2;
  Position* inter = Derived(6, a->ID, b->ID);
  inter->Para1 = 2.00005f, inter->Para2 = 1, inter->Para3 = 1.5f;  // interpolated, absolute
  CLine* base = Segment(a, c);
  Position* onLine = Derived(6, base->ID, "");
  onLine->Para1 = 2, onLine->Para2 = 0, onLine->Para3 = 0.25f;
  Position* image = Derived(10, a->ID, "");
  image->TransType = 4;  // reflection in the point c
  image->LKID2 = c->ID;
  Position* zoom = Derived(10, b->ID, "");
  zoom->TransType = 3;
  zoom->Para1 = -0.5f;
  Position* centroid = Derived(24, a->ID, b->ID);
  centroid->LKID3 = c->ID;
  Position* circum = Derived(21, a->ID, b->ID);
  circum->LKID3 = c->ID;

  RefreshPass();
  ExpectAt(third, 4, 0);
  ExpectAt(even, 3, 0);
  ExpectAt(beyond, 9, 0);
  ExpectAt(beyondAbs, 8, 0);
  ExpectAt(inter, 1.5f, 0);
  ExpectAt(onLine, 0, 1.5f);
  ExpectAt(image, 0, 12);
  ExpectAt(zoom, -3, 0);
  ExpectAt(centroid, 2, 2);
  ExpectAt(circum, 3, 3);

  // A collapsed triangle has no centre: the point stays where it was.
  c->Set(3, 0, 0);
  RefreshPass();
  ExpectAt(circum, 3, 3);
  ExpectAt(centroid, 3, 0);
  // A base that has gone leaves its points alone.
  Doc.Points.Remove(Doc.Points.FindId(b->ID));
  RefreshPass();
  ExpectAt(third, 4, 0);
  ExpectAt(beyond, 9, 0);
}

TEST_F(PropagationTest, IntersectionsKeepTheirPlaceWithoutASolutionAndComeBack) {
  Position* a = Free(-4, 0);
  Position* b = Free(4, 0);
  Position* c = Free(0, -4);
  Position* d = Free(0, 4);
  CLine* l1 = Segment(a, b, 2);
  CLine* l2 = Segment(c, d, 2);
  Position* x = Derived(4, l1->ID, l2->ID);
  RefreshPass();
  ExpectAt(x, 0, 0);
  // Parallel lines: no crossing, the point stays.
  Shift(c, -4, 6);  // (-4, 2)
  Shift(d, 4, -2);  // (4, 2)
  RefreshPass();
  ExpectAt(x, 0, 0);
  Shift(d, -2, -4);  // (2, -2): the crossing is at x = -1
  RefreshPass();
  ExpectAt(x, -1, 0);

  // A line and a circle, given either way round; Pos picks the root.
  Position* o = Free(0, 0);
  CCircle* circle = Circle(o, Free(0, 5));
  Position* r1 = Derived(4, circle->ID, l1->ID, 1);
  Position* r2 = Derived(4, l1->ID, circle->ID, 2);
  RefreshPass();
  EXPECT_NEAR(std::fabs(r1->x), 5, 1e-4);
  EXPECT_NEAR(r2->x, -r1->x, 1e-4);
  EXPECT_NEAR(r1->y, 0, 1e-4);
  // The segment of a shorter line holds only one root.
  Shift(a, 6, 0);  // the line is infinite: still both
  RefreshPass();
  EXPECT_NEAR(std::fabs(r2->x), 5, 1e-4);
  l1->lt = 1;  // a segment from (2, 0) to (4, 0): no root on it
  const float kept1 = r1->x, kept2 = r2->x;
  RefreshPass();
  EXPECT_EQ(r1->x, kept1);
  EXPECT_EQ(r2->x, kept2);

}

TEST_F(PropagationTest, TheBisectorOfRaysMoreThanHalfATurnApartUsesTheShortTurn) {
  Position* v = Free(0, 0);
  CLine* arm1 = Segment(v, Free(1, 0.1f));
  Position* end2 = Free(1, -0.3f);
  CLine* arm2 = Segment(v, end2);
  Position* far = Free(0, 0);
  far->ptype = 3;
  CLine* bis = Segment(v, far, 3, 4);
  bis->LKID = arm1->ID;
  bis->LKID2 = arm2->ID;
  RefreshPass();
  // 6.2628 in place of a whole turn: the direction is -0.0857, not the
  // true -0.0959.
  EXPECT_NEAR(far->x, 99.633f, 0.01f);
  EXPECT_NEAR(far->y, -8.559f, 0.01f);
  EXPECT_EQ(bis->pEnd.y, far->y);
  // Arms less than half a turn apart: the half sum.
  Shift(end2, -1, 1.3f);  // to (0, 1), straight up (an angle with the 0.0001 of a vertical)
  RefreshPass();
  const double a = (std::atan(0.1) + std::atan(1 / 0.0001)) / 2;
  EXPECT_NEAR(far->x, 100 * std::cos(a), 0.01);
  EXPECT_NEAR(far->y, 100 * std::sin(a), 0.01);
}

TEST_F(PropagationTest, DerivedLinesFollowInTheDragStep) {
  Position* a = Free(0, 0);
  Position* b = Free(4, 0);
  CLine* base = Segment(a, b);
  Position* p = Free(1, 3);
  Position* foot = Free(1, 0);
  foot->ptype = 3;
  CLine* perp = Segment(p, foot, 1, 1);
  perp->LKID = p->ID;
  perp->LKID2 = base->ID;
  Position* q = Free(0, 2);
  Position* farEnd = Free(2, 2);
  farEnd->ptype = 3;
  CLine* para = Segment(q, farEnd, 2, 2);
  para->LKID = base->ID;

  {
    PropagationTrace trace;
    Shift(p, 2, 1);   // the perpendicular's begin moves by half at first
    Shift(b, 0, 4);   // the base turns up to (4, 4)
    RepropagateAfterMove();
  }
  ExpectAt(&perp->pBegin, 3, 4);
  ExpectAt(foot, 3.5f, 3.5f);
  ExpectAt(&perp->pEnd, 3.5f, 3.5f);
  // The parallel keeps its length along the new direction.
  ExpectAt(farEnd, std::sqrt(2.0f), 2 + std::sqrt(2.0f));
}

// Extension points that follow a dragged base are the select tool test's.
// Where a directed extension point stands is the construction table's.
TEST_F(PropagationTest, ADirectedExtensionNeedsAFlatBase) {
  Position start(0, 0, 0), end(2, 0, 1), point(7, 7, 7), farPoint;
  EXPECT_FALSE(DirectedExtension(start, end, 0, 1, point, farPoint));
  EXPECT_EQ(host_.LastMessage(), "The start point and end point of the given line must have the same z value.");
  EXPECT_EQ(point.x, 7);
}

}  // namespace
}  // namespace vt::test
