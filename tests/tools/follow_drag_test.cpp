// Constructed objects that must stay true while their defining points are
// dragged with the select tool: the inscribed circle, points on and middle
// points of circles and arcs, and intersection points from the moment the
// command makes them. Every check is numeric, after real drags.
#include <cmath>
#include <vector>

#include "document/document.h"
#include "geometry/geom.h"
#include "geometry/on_object.h"
#include "geometry/propagation.h"
#include "persist/docio.h"
#include "tool_fixture.h"
#include "tools/constructions.h"

namespace vt::test {
namespace {

class FollowDragTest : public ToolTest {
 protected:
  // The inscribed circle of the triangle abc touches the three side lines.
  static void ExpectInscribed(const CCircle& c, const Position& a, const Position& b, const Position& d) {
    const Position centre = c.Centre();
    const float r = c.Radius();
    EXPECT_GT(r, 0.01f);
    EXPECT_NEAR(DistanceToLine(centre, a, b), r, 2e-3f);
    EXPECT_NEAR(DistanceToLine(centre, b, d), r, 2e-3f);
    EXPECT_NEAR(DistanceToLine(centre, d, a), r, 2e-3f);
    // Inside the triangle: the centre is the incentre.
    const Position in = TriIncenter(a, b, d);
    EXPECT_NEAR(centre.x, in.x, 2e-3f);
    EXPECT_NEAR(centre.y, in.y, 2e-3f);
  }
};

TEST_F(FollowDragTest, InscribedCircleStaysTangentToTheSidesThroughDragsAndAReload) {
  Position* a = Free(0, 0, "A");
  Position* b = Free(6, 0, "B");
  Position* c = Free(1, 5, "C");
  Command({a, b, c}, mnuDraw2NQC_Click);
  ASSERT_EQ(Doc.Circles.count(), 1);
  CCircle* in = Doc.Circles.Item(1);
  EXPECT_EQ(in->CType, 4);
  ExpectInscribed(*in, *a, *b, *c);

  // Each corner in turn, the drawn rim included.
  DragAlone(6, 0, 8, 1);
  ExpectInscribed(*in, *a, *b, *c);
  DragAlone(1, 5, -2, 4);
  ExpectInscribed(*in, *a, *b, *c);
  DragAlone(0, 0, 1, -2);
  ExpectInscribed(*in, *a, *b, *c);
  in->ComputeRim();
  ASSERT_FALSE(in->Rim.empty());
  for (const Position& s : in->Rim) EXPECT_NEAR(DistanceBetween(s, in->Centre()), in->Radius(), 2e-3f);

  // Read back from its record, before any drag.
  const std::string text = GetUndoVar();
  ASSERT_TRUE(OpenDocumentText(text));
  ASSERT_EQ(Doc.Circles.count(), 1);
  in = Doc.Circles.Item(1);
  ASSERT_NE(FindPoint(in->PCircleR3.ID), nullptr);
  ExpectInscribed(*in, *FindPoint(in->PCircleR.ID), *FindPoint(in->PCircleR2.ID), *FindPoint(in->PCircleR3.ID));
}

TEST_F(FollowDragTest, PointOnThreePointCircleAndOnIncircleStayOnThem) {
  Position* a = Free(0, 0);
  Position* b = Free(4, 0);
  Position* c = Free(0, 3);
  Command({a, b, c}, mnuDraw3PC_Click);
  Command({a, b, c}, mnuDraw2NQC_Click);
  ASSERT_EQ(Doc.Circles.count(), 2);
  CCircle* through = Doc.Circles.Item(1);
  CCircle* in = Doc.Circles.Item(2);
  EXPECT_NEAR(through->Radius(), 2.5f, 1e-4f);
  Position* on1 = MakePointOn(*through, Position(2, 4, 0));
  Position* on2 = MakePointOn(*in, Position(1, 2.5f, 0));
  ASSERT_NE(on1, nullptr);
  ASSERT_NE(on2, nullptr);
  DragAlone(4, 0, 7, -1);
  DragAlone(0, 3, -1, 5);
  for (Position* p : {a, b, c}) EXPECT_NEAR(DistanceBetween(through->Centre(), *p), through->Radius(), 1e-3f);
  EXPECT_NEAR(DistanceBetween(*on1, through->Centre()), through->Radius(), 2e-3f);
  EXPECT_NEAR(DistanceBetween(*on2, in->Centre()), in->Radius(), 2e-3f);
  ExpectInscribed(*in, *a, *b, *c);
}

TEST_F(FollowDragTest, MiddlePointOfACircleStaysOppositeItsRimPoint) {
  Position* centre = Free(0, 0);
  Position* rim = Free(2, 0);
  CCircle* circle = Circle(centre, rim);
  Command({circle}, mnuMiddleP_Click);
  Position* m = Last();
  ASSERT_EQ(m->ptype, 9);
  ExpectAt(m, -2, 0, 1e-3f);
  DragAlone(2, 0, 0, 3);  // the rim point: the radius and the direction change
  ExpectAt(m, 0, -3, 2e-3f);
  DragAlone(0, 0, 1, 1);  // the centre
  ExpectAt(m, 2 * centre->x - rim->x, 2 * centre->y - rim->y, 2e-3f);
  EXPECT_NEAR(DistanceBetween(*m, circle->Centre()), circle->Radius(), 2e-3f);
}

TEST_F(FollowDragTest, MiddlePointOfAThreePointCircleFollows) {
  Position* a = Free(2, 0);
  Position* b = Free(0, 2);
  Position* c = Free(-2, 0);
  Command({a, b, c}, mnuDraw3PC_Click);
  CCircle* circle = Doc.Circles.Item(1);
  Command({circle}, mnuMiddleP_Click);
  Position* m = Last();
  ExpectAt(m, -2, 0, 1e-3f);  // opposite the first point
  DragAlone(2, 0, 4, 0);
  const Position o = circle->Centre();
  EXPECT_NEAR(DistanceBetween(*m, o), circle->Radius(), 2e-3f);
  // Still opposite the first point, through the new centre.
  EXPECT_NEAR(m->x, 2 * o.x - a->x, 2e-3f);
  EXPECT_NEAR(m->y, 2 * o.y - a->y, 2e-3f);
}

TEST_F(FollowDragTest, MiddlePointOfArcsHalvesTheSweepAfterDrags) {
  // A circular arc from its centre (the second point) and a three-point arc.
  Position* b1 = Free(2, 0);
  Position* o1 = Free(0, 0);
  Position* e1 = Free(0, 2);
  Command({b1, o1, e1}, mnuDrawArc1_Click);
  CArc* arc1 = Doc.Arcs.Item(1);
  Command({arc1}, mnuMiddleP_Click);
  Position* m1 = Last();
  ExpectAt(m1, std::sqrt(2.0f), std::sqrt(2.0f), 1e-3f);

  Position* b2 = Free(8, 0);
  Position* p2 = Free(6, 2);
  Position* e2 = Free(4, 0);
  Command({b2, p2, e2}, mnuDrawArc3P_Click);
  CArc* arc2 = Doc.Arcs.Item(2);
  Command({arc2}, mnuMiddleP_Click);
  Position* m2 = Last();
  ExpectAt(m2, 6, 2, 1e-3f);

  // The end of the first arc swings round to the negative x axis; the
  // second arc's end moves down and out.
  DragAlone(0, 2, -2, 0);
  ExpectAt(m1, 0, 2, 2e-3f);
  DragAlone(4, 0, 3, -1);
  for (auto [arc, m] : {std::pair{arc1, m1}, std::pair{arc2, m2}}) {
    const Position o = arc->Centre();
    EXPECT_NEAR(DistanceBetween(*m, o), arc->Radius(), 2e-3f);
    EXPECT_NEAR(DistanceBetween(*m, arc->pBegin), DistanceBetween(*m, arc->pEnd), 2e-3f);
    // On the arc, not on the far side of its circle.
    const Position q = arc->ProjectOnArc(*m);
    EXPECT_NEAR(q.x, m->x, 2e-3f);
    EXPECT_NEAR(q.y, m->y, 2e-3f);
  }
}

TEST_F(FollowDragTest, DivisionPointsOfACircleKeepTheirShareOfTheTurn) {
  Position* o = Free(0, 0);
  Position* rim = Free(2, 0);
  CCircle* c = Circle(o, rim);
  // Three parts, counted round from the rim point, as the equidistant points
  // are made.
  std::vector<Position*> parts;
  for (short i = 1; i <= 2; ++i) {
    const float a = static_cast<float>(i * 6.2832 / 3);
    Position* q = AddPoint(2 * std::cos(a), 2 * std::sin(a));
    q->ptype = 9;
    q->LKID = c->ID;
    q->Para1 = 3;
    q->Pos = i;
    q->AddParent(c->ID);
    c->AddStruPoint(*q, a);
    parts.push_back(q);
  }
  DragAlone(2, 0, 0, 3);  // the rim point a quarter turn on, the radius 3
  for (short i = 1; i <= 2; ++i) {
    const double a = 1.5708 + i * 6.2832 / 3;
    ExpectAt(parts[static_cast<size_t>(i - 1)], static_cast<float>(3 * std::cos(a)), static_cast<float>(3 * std::sin(a)),
             2e-3f);
  }
  // The saved angle goes with the point.
  EXPECT_NEAR(c->StruAngle[1], 1.5708 + 2 * 6.2832 / 3, 1e-3);
}

TEST_F(FollowDragTest, IntersectionPointsStandAtTheCrossingFromTheStart) {
  Position* a = Free(-3, -1);
  Position* b = Free(3, 2);
  CLine* l1 = Segment(a, b);
  CLine* l2 = Segment(Free(-2, 3), Free(2, -3));
  CCircle* c1 = Circle(Free(5, 0), Free(7, 0));
  CCircle* c2 = Circle(Free(8, 0), Free(10, 0));
  CLine* l3 = Segment(Free(3, -4), Free(6, 4));

  // Line and line: one point, on both lines.
  Command({l1, l2}, mnuInterP_Click);
  Position* p = Last();
  EXPECT_EQ(p->ptype, 4);
  EXPECT_NEAR(DistanceToLine(*p, l1->pBegin, l1->pEnd), 0, 1e-3f);
  EXPECT_NEAR(DistanceToLine(*p, l2->pBegin, l2->pEnd), 0, 1e-3f);
  EXPECT_GT(std::fabs(p->x) + std::fabs(p->y), 0.01f);  // the crossing is not at the origin

  // Circle and circle: two points, apart, on both circles.
  Command({c1, c2}, mnuInterP_Click);
  Position* q2 = Last();
  Position* q1 = Doc.Points.Item(Doc.Points.count() - 1);
  for (Position* q : {q1, q2}) {
    EXPECT_NEAR(DistanceBetween(*q, c1->Centre()), c1->Radius(), 1e-3f);
    EXPECT_NEAR(DistanceBetween(*q, c2->Centre()), c2->Radius(), 1e-3f);
  }
  EXPECT_GT(DistanceBetween(*q1, *q2), 1.0f);

  // Line and circle.
  Command({l3, c1}, mnuInterP_Click);
  Position* r2 = Last();
  Position* r1 = Doc.Points.Item(Doc.Points.count() - 1);
  for (Position* r : {r1, r2}) {
    EXPECT_NEAR(DistanceBetween(*r, c1->Centre()), c1->Radius(), 1e-3f);
    EXPECT_NEAR(DistanceToLine(*r, l3->pBegin, l3->pEnd), 0, 1e-3f);
  }
  EXPECT_GT(DistanceBetween(*r1, *r2), 0.5f);

  // And they follow a drag of a defining point.
  DragAlone(3, 2, 3, 4);
  EXPECT_NEAR(DistanceToLine(*p, l1->pBegin, l1->pEnd), 0, 1e-3f);
  EXPECT_NEAR(DistanceToLine(*p, l2->pBegin, l2->pEnd), 0, 1e-3f);
}

TEST_F(FollowDragTest, IntersectionOffTheSegmentWaitsOnItsLineAndComesAlive) {
  CCircle* circle = Circle(Free(5, 0), Free(7, 0));
  // Only the lower crossing (5, -2) lies on the segment.
  CLine* seg = Segment(Free(5, -4), Free(5, 0.5f));
  Command({seg, circle}, mnuInterP_Click);
  Position* s2 = Last();
  Position* s1 = Doc.Points.Item(Doc.Points.count() - 1);
  ASSERT_EQ(s1->ptype, 4);
  ASSERT_EQ(s2->ptype, 4);
  // Both on the circle and on the segment's line: one at each crossing.
  for (Position* s : {s1, s2}) {
    EXPECT_NEAR(DistanceBetween(*s, circle->Centre()), 2, 1e-3f);
    EXPECT_NEAR(s->x, 5, 1e-3f);
  }
  EXPECT_NEAR(std::fabs(s1->y - s2->y), 4, 1e-3f);
  // The segment grows through the circle: both are real crossings now, and
  // they follow the segment when it moves sideways.
  DragAlone(5, 0.5f, 5, 3);
  DragAlone(5, -4, 6, -4);
  DragAlone(5, 3, 6, 3);
  for (Position* s : {s1, s2}) {
    EXPECT_NEAR(DistanceBetween(*s, circle->Centre()), 2, 1e-3f);
    EXPECT_NEAR(s->x, 6, 1e-3f);
  }
  EXPECT_NEAR(std::fabs(s1->y - s2->y), 2 * std::sqrt(3.0f), 2e-3f);
}

}  // namespace
}  // namespace vt::test
