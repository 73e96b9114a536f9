// Constructions that must stay true while their defining points are dragged
// with the select tool. Each case builds a construction through its command,
// then checks it against an independent computation (a tangent touches, a
// foot is perpendicular, an image is C + k (P - C), a centre is where the
// triangle puts it), right away and after each drag of a defining point.
#include <cmath>
#include <functional>
#include <vector>

#include "document/command_table.h"
#include "document/document.h"
#include "geometry/geom.h"
#include "geometry/on_object.h"
#include "geometry/propagation.h"
#include "tool_fixture.h"
#include "tools/construction_prompts.h"
#include "tools/constructions.h"
#include "tools/transform.h"

namespace vt::test {
namespace {

class Follow;
using Check = std::function<void()>;
struct Drag4 {
  float x0, y0, x1, y1;
};
struct FollowCase {
  const char* name;
  std::function<Check(Follow&)> build;  // builds the construction, returns its check
  std::vector<Drag4> drags;             // each followed by the check
};

class Follow : public ToolTest, public ::testing::WithParamInterface<FollowCase> {
 public:
  static double Dot(const Position& a, const Position& b, const Position& c, const Position& d) {
    return double(b.x - a.x) * (d.x - c.x) + double(b.y - a.y) * (d.y - c.y) + double(b.z - a.z) * (d.z - c.z);
  }
  static void OnCircle(const Position& p, const Position& o, float r, float tol = 2e-3f) {
    EXPECT_NEAR(DistanceBetween(p, o), r, tol);
  }
  static void OnLine(const Position& p, const Position& a, const Position& b) {
    EXPECT_NEAR(DistanceToLine(p, a, b), 0, 2e-3f);
  }
  // The inscribed circle of the triangle abd touches the three side lines.
  static void Inscribed(const CCircle& c, const Position& a, const Position& b, const Position& d) {
    const Position centre = c.Centre(), in = TriIncenter(a, b, d);
    EXPECT_GT(c.Radius(), 0.01f);
    for (auto [p, q] : {std::pair{&a, &b}, std::pair{&b, &d}, std::pair{&d, &a}})
      EXPECT_NEAR(DistanceToLine(centre, *p, *q), c.Radius(), 2e-3f);
    EXPECT_NEAR(centre.x, in.x, 2e-3f);
    EXPECT_NEAR(centre.y, in.y, 2e-3f);
  }
  // C + k (P - C) in the plane.
  static void Scaled(const Position& image, const Position& p, const Position& c, float k, float tol = 3e-3f) {
    EXPECT_NEAR(image.x, c.x + k * (p.x - c.x), tol);
    EXPECT_NEAR(image.y, c.y + k * (p.y - c.y), tol);
  }
  static TransformParams ZoomBy(float k, const std::string& centre) {
    TransformParams s;
    s.op = TransformOp::Zoom;
    s.a = k;
    s.centre = centre;
    return s;
  }
  static Position* Before(int back) { return Doc.Points.Item(Doc.Points.count() - back); }
};

TEST_P(Follow, StaysTrueThroughDrags) {
  Check check = GetParam().build(*this);
  ASSERT_TRUE(check);
  {
    SCOPED_TRACE("as made");
    check();
  }
  for (const Drag4& d : GetParam().drags) {
    SCOPED_TRACE(::testing::Message() << "after the drag from " << d.x0 << "," << d.y0);
    DragAlone(d.x0, d.y0, d.x1, d.y1);
    check();
  }
}

const FollowCase kCases[] = {
    {"InscribedCircle",
     [](Follow& t) -> Check {
       Position *a = t.Free(0, 0), *b = t.Free(6, 0), *c = t.Free(1, 5);
       t.Command({a, b, c}, mnuDraw2NQC_Click);
       CCircle* in = Doc.Circles.Item(1);
       return [=] {
         Follow::Inscribed(*in, *a, *b, *c);
         in->ComputeRim();
         ASSERT_FALSE(in->Rim.empty());
         for (const Position& s : in->Rim) Follow::OnCircle(s, in->Centre(), in->Radius());
       };
     },
     {{6, 0, 8, 1}, {1, 5, -2, 4}, {0, 0, 1, -2}}},
    {"PointsOnAThreePointCircleAndOnAnIncircle",
     [](Follow& t) -> Check {
       Position *a = t.Free(0, 0), *b = t.Free(4, 0), *c = t.Free(0, 3);
       t.Command({a, b, c}, mnuDraw3PC_Click);
       t.Command({a, b, c}, mnuDraw2NQC_Click);
       CCircle *through = Doc.Circles.Item(1), *in = Doc.Circles.Item(2);
       Position* on1 = MakePointOn(*through, Position(2, 4, 0));
       Position* on2 = MakePointOn(*in, Position(1, 2.5f, 0));
       if (!on1 || !on2) return nullptr;
       return [=] {
         for (Position* p : {a, b, c, on1}) Follow::OnCircle(*p, through->Centre(), through->Radius());
         Follow::OnCircle(*on2, in->Centre(), in->Radius());
         Follow::Inscribed(*in, *a, *b, *c);
       };
     },
     {{4, 0, 7, -1}, {0, 3, -1, 5}}},
    {"MiddlePointOfACircleIsOppositeItsRimPoint",
     [](Follow& t) -> Check {
       Position *o = t.Free(0, 0), *rim = t.Free(2, 0);
       t.Command({t.Circle(o, rim)}, mnuMiddleP_Click);
       Position* m = t.Last();
       return [=] { Follow::ExpectAt(m, 2 * o->x - rim->x, 2 * o->y - rim->y, 2e-3f); };
     },
     {{2, 0, 0, 3}, {0, 0, 1, 1}}},
    {"MiddlePointOfAThreePointCircleIsOppositeItsFirstPoint",
     [](Follow& t) -> Check {
       Position *a = t.Free(2, 0), *b = t.Free(0, 2), *c = t.Free(-2, 0);
       t.Command({a, b, c}, mnuDraw3PC_Click);
       CCircle* circle = Doc.Circles.Item(1);
       t.Command({circle}, mnuMiddleP_Click);
       Position* m = t.Last();
       return [=] {
         const Position o = circle->Centre();
         Follow::ExpectAt(m, 2 * o.x - a->x, 2 * o.y - a->y, 2e-3f);
       };
     },
     {{2, 0, 4, 0}}},
    {"MiddlePointsOfArcsHalveTheSweep",
     [](Follow& t) -> Check {
       // A circular arc from its centre (the second point) and a three-point arc.
       t.Command({t.Free(2, 0), t.Free(0, 0), t.Free(0, 2)}, mnuDrawArc1_Click);
       t.Command({Doc.Arcs.Item(1)}, mnuMiddleP_Click);
       Position* m1 = t.Last();
       t.Command({t.Free(8, 0), t.Free(6, 2), t.Free(4, 0)}, mnuDrawArc3P_Click);
       t.Command({Doc.Arcs.Item(2)}, mnuMiddleP_Click);
       Position* m2 = t.Last();
       return [=] {
         for (auto [arc, m] : {std::pair{Doc.Arcs.Item(1), m1}, std::pair{Doc.Arcs.Item(2), m2}}) {
           Follow::OnCircle(*m, arc->Centre(), arc->Radius());
           EXPECT_NEAR(DistanceBetween(*m, arc->pBegin), DistanceBetween(*m, arc->pEnd), 2e-3f);
           const Position q = arc->ProjectOnArc(*m);  // on the arc, not across its circle
           EXPECT_NEAR(DistanceBetween(q, *m), 0, 2e-3f);
         }
       };
     },
     // The first arc's end swings round to the negative x axis (more than a
     // quarter turn); the second arc's end moves down and out.
     {{0, 2, -2, 0}, {4, 0, 3, -1}}},
    {"DivisionPointsOfACircleKeepTheirShareOfTheTurn",
     [](Follow& t) -> Check {
       Position *o = t.Free(0, 0), *rim = t.Free(2, 0);
       CCircle* c = t.Circle(o, rim);
       std::vector<Position*> parts;  // three parts, counted round from the rim point
       for (short i = 1; i <= 2; ++i) {
         const float a = static_cast<float>(i * 6.2832 / 3);
         Position* q = t.AddPoint(2 * std::cos(a), 2 * std::sin(a));
         q->ptype = 9, q->LKID = c->ID, q->Para1 = 3, q->Pos = i;
         q->AddParent(c->ID);
         c->AddStruPoint(*q, a);
         parts.push_back(q);
       }
       return [=] {
         const double start = std::atan2(rim->y - o->y, rim->x - o->x);
         for (short i = 1; i <= 2; ++i) {
           const double a = start + i * 6.2832 / 3, r = c->Radius();
           Follow::ExpectAt(parts[i - 1], float(o->x + r * std::cos(a)), float(o->y + r * std::sin(a)), 2e-3f);
         }
       };
     },
     {{2, 0, 0, 3}}},
    {"IntersectionPointsStandAtTheCrossing",
     [](Follow& t) -> Check {
       CLine* l1 = t.Segment(t.Free(-3, -1), t.Free(3, 2));
       CLine* l2 = t.Segment(t.Free(-2, 3), t.Free(2, -3));
       CCircle* c1 = t.Circle(t.Free(5, 0), t.Free(7, 0));
       CCircle* c2 = t.Circle(t.Free(8, 0), t.Free(10, 0));
       CLine* l3 = t.Segment(t.Free(3, -4), t.Free(6, 4));
       t.Command({l1, l2}, mnuInterP_Click);
       Position* p = t.Last();
       t.Command({c1, c2}, mnuInterP_Click);
       Position *q1 = Follow::Before(1), *q2 = t.Last();
       t.Command({l3, c1}, mnuInterP_Click);
       Position *r1 = Follow::Before(1), *r2 = t.Last();
       return [=] {
         EXPECT_GT(std::fabs(p->x) + std::fabs(p->y), 0.01f);  // not left at the origin
         Follow::OnLine(*p, l1->pBegin, l1->pEnd);
         Follow::OnLine(*p, l2->pBegin, l2->pEnd);
         for (Position* q : {q1, q2}) {
           Follow::OnCircle(*q, c1->Centre(), c1->Radius());
           Follow::OnCircle(*q, c2->Centre(), c2->Radius());
         }
         EXPECT_GT(DistanceBetween(*q1, *q2), 1.0f);
         for (Position* r : {r1, r2}) {
           Follow::OnCircle(*r, c1->Centre(), c1->Radius());
           Follow::OnLine(*r, l3->pBegin, l3->pEnd);
         }
         EXPECT_GT(DistanceBetween(*r1, *r2), 0.5f);
       };
     },
     {{3, 2, 3, 4}, {6, 4, 5, 5}}},
    {"IntersectionOffTheSegmentWaitsOnItsLineAndComesAlive",
     [](Follow& t) -> Check {
       CCircle* circle = t.Circle(t.Free(5, 0), t.Free(7, 0));
       // Only the lower crossing (5, -2) lies on the segment at first.
       CLine* seg = t.Segment(t.Free(5, -4), t.Free(5, 0.5f));
       t.Command({seg, circle}, mnuInterP_Click);
       Position *s1 = Follow::Before(1), *s2 = t.Last();
       return [=] {
         for (Position* s : {s1, s2}) {
           Follow::OnCircle(*s, circle->Centre(), 2);
           Follow::OnLine(*s, seg->pBegin, seg->pEnd);
         }
         EXPECT_GT(DistanceBetween(*s1, *s2), 1.0f);  // one at each crossing
       };
     },
     // The segment grows through the circle, then moves sideways.
     {{5, 0.5f, 5, 3}, {5, -4, 6, -4}, {5, 3, 6, 3}}},
    {"ScaledPointImagesFollowSourceAndCentre",
     [](Follow& t) -> Check {
       Position *c = t.Free(1, 1), *p = t.Free(3, 2), *q = t.Free(1, -2);
       ApplyTransform({p->ID}, Follow::ZoomBy(2, c->ID), true);
       Position* doubled = t.Last();
       ApplyTransform({p->ID}, Follow::ZoomBy(0.5f, c->ID), true);
       Position* halved = t.Last();
       ApplyTransform({q->ID}, Follow::ZoomBy(3, ""), true);  // no centre: the origin
       Position* fromOrigin = t.Last();
       return [=] {
         Follow::Scaled(*doubled, *p, *c, 2);
         Follow::Scaled(*halved, *p, *c, 0.5f);
         Follow::Scaled(*fromOrigin, *q, Position(0, 0, 0), 3);
       };
     },
     {{3, 2, 4, 4}, {1, 1, 0, 2}, {1, -2, 2, 0}}},
    {"ScaledSegmentCirclesAndPolygonFollowTheirSources",
     [](Follow& t) -> Check {
       Position *c = t.Free(0, -2), *a = t.Free(2, 0), *b = t.Free(4, 1);
       CLine* seg = t.Segment(a, b);
       Position* o = t.Free(-4, 0);
       CCircle* circle = t.Circle(o, t.Free(-3, 0));
       CRegion* tri = t.Region({t.Free(6, 0), t.Free(8, 0), t.Free(7, 2)});
       Position *p1 = t.Free(2, 11), *p2 = t.Free(4, 13), *p3 = t.Free(2, 15);
       t.Command({p1, p2, p3}, mnuDraw3PC_Click);
       CCircle* src = Doc.Circles.Item(2);
       const float k = 1.5f;
       ApplyTransform({seg->ID, circle->ID, tri->ID, src->ID}, Follow::ZoomBy(k, c->ID), true);
       if (Doc.Lines.count() != 2 || Doc.Circles.count() != 4 || Doc.Regions.count() != 2) return nullptr;
       CLine* segImg = Doc.Lines.Item(2);
       CCircle *cirImg = Doc.Circles.Item(3), *srcImg = Doc.Circles.Item(4);
       CRegion* triImg = Doc.Regions.Item(2);
       return [=] {
         Follow::Scaled(*FindPoint(segImg->pBegin.ID), *a, *c, k);
         Follow::Scaled(segImg->pEnd, *b, *c, k);
         Follow::Scaled(cirImg->Centre(), *o, *c, k);
         EXPECT_NEAR(cirImg->Radius(), k * circle->Radius(), 2e-3f);
         Follow::Scaled(srcImg->Centre(), src->Centre(), *c, k);
         EXPECT_NEAR(srcImg->Radius(), k * src->Radius(), 3e-3f);
         for (size_t i = 0; i < tri->Points.size(); ++i)
           Follow::Scaled(*FindPoint(triImg->Points[i].ID), *FindPoint(tri->Points[i].ID), *c, k);
       };
     },
     // A segment end, the rim point, a corner, a point of the three-point
     // circle, the centre of the scaling.
     {{4, 1, 5, 3}, {-3, 0, -4, 2}, {7, 2, 7, 4}, {4, 13, 6, 13}, {0, -2, 1, -1}}},
    {"ParallelAndPerpendicularLines",
     [](Follow& t) -> Check {
       Position *a = t.Free(0, 0), *b = t.Free(4, 2), *p = t.Free(1, 3);
       CLine* ab = t.Segment(a, b);
       t.Command({p, ab}, mnuParaLine_Click);
       t.Command({p, ab}, mnuCX1_Click);
       if (Doc.Lines.count() != 3) return nullptr;
       CLine *para = Doc.Lines.Item(2), *perp = Doc.Lines.Item(3);
       return [=] {
         const Position* far = FindPoint(para->pEnd.ID);
         const Position* foot = FindPoint(perp->pEnd.ID);
         ASSERT_TRUE(far && foot);
         EXPECT_EQ(para->pBegin.ID, p->ID);
         const double cross = double(b->x - a->x) * (far->y - p->y) - double(b->y - a->y) * (far->x - p->x);
         EXPECT_NEAR(cross / DistanceBetween(*p, *far), 0, 1e-3);
         EXPECT_NEAR(Follow::Dot(*a, *b, *p, *foot), 0, 1e-3);
         Follow::OnLine(*foot, *a, *b);
       };
     },
     {{4, 2, 4, 5}, {1, 3, 2, 4}}},
    {"PerpendicularToAPolygonMeetsItsPlane",
     [](Follow& t) -> Check {
       CRegion* g = t.Region({t.Free(0, 0), t.Free(2, 0), t.Free(0, 2)});
       Position* p = t.Free(1, 1);
       p->z = 3;
       t.Command({p, g}, mnuCX2_Click);
       if (Doc.Lines.count() != 1) return nullptr;
       const Position* foot = FindPoint(Doc.Lines.Item(1)->pEnd.ID);
       return [=] {
         ASSERT_NE(foot, nullptr);
         Follow::ExpectAt(foot, 1, 1);
         EXPECT_NEAR(foot->z, 0, 1e-5);
       };
     },
     {}},
    {"TangentsTouchTheCircle",
     [](Follow& t) -> Check {
       Position* o = t.Free(0, 0);
       CCircle* c = t.Circle(o, t.Free(1, 0));
       Position* p = t.Free(3, 0);
       t.Command({p, c}, mnuQX_Click);
       if (Doc.Lines.count() != 2) return nullptr;
       return [=] {
         const Position* t1 = FindPoint(Doc.Lines.Item(1)->pEnd.ID);
         const Position* t2 = FindPoint(Doc.Lines.Item(2)->pEnd.ID);
         ASSERT_TRUE(t1 && t2);
         for (const Position* q : {t1, t2}) {
           Follow::OnCircle(*q, *o, c->Radius(), 1e-3f);
           EXPECT_NEAR(Follow::Dot(*o, *q, *q, *p), 0, 1e-3);  // the radius is perpendicular
         }
         EXPECT_GT(DistanceBetween(*t1, *t2), 0.1f);
       };
     },
     {{3, 0, 0, 4}}},
    {"PolygonTakesItsCornersInSelectionOrder",
     [](Follow& t) -> Check {
       Position *a = t.Free(0, 0), *b = t.Free(0, 2), *c = t.Free(2, 2), *d = t.Free(2, 0);
       t.Command({a, b, c, d}, mnuRegion_Click);  // clockwise
       if (Doc.Regions.count() != 1) return nullptr;
       CRegion* g = Doc.Regions.Item(1);
       return [=] {
         ASSERT_EQ(g->Points.size(), 4u);
         short i = 0;
         for (Position* p : {a, b, c, d}) {
           EXPECT_EQ(g->Points[i].ID, p->ID);
           Follow::ExpectAt(&g->Points[i++], p->x, p->y);
         }
       };
     },
     {{0, 0, -1, -1}}},
    {"ExtensionInterpolatedAndDirectedPointsFollowTheirBase",
     [](Follow& t) -> Check {
       // 2 beyond B, a quarter of the way from A, then 3 beyond B turned a
       // quarter about it; on the segment AB, half of it beyond B.
       Position *a = t.Free(0, 0), *b = t.Free(4, 0);
       Follow::Select({a, b});
       if (!LineExtPointOK(1, true, 2) || !LineExtPointOK(2, false, 0.25f)) return nullptr;
       Follow::DeselectAll();
       Follow::Select({a, b});
       if (!DirectedExtensionOK(90, 3)) return nullptr;
       Position *ext = Doc.Points.Item(3), *in = Doc.Points.Item(4), *turned = nullptr;
       for (Position* q : Doc.Points) turned = q->ptype == 11 ? q : turned;
       Follow::DeselectAll();
       Follow::Select({t.Segment(a, b)});
       if (!turned || !LineExtPointOK(1, false, 0.5f)) return nullptr;
       Position* on = t.Last();
       Follow::DeselectAll();
       return [=] {
         const float ux = b->x - a->x, uy = b->y - a->y, len = std::hypot(ux, uy);
         Follow::ExpectAt(ext, b->x + 2 * ux / len, b->y + 2 * uy / len, 1e-3f);
         Follow::ExpectAt(in, a->x + ux / 4, a->y + uy / 4, 1e-3f);
         Follow::ExpectAt(turned, b->x - 3 * uy / len, b->y + 3 * ux / len, 2e-3f);
         Follow::ExpectAt(on, b->x + ux / 2, b->y + uy / 2, 1e-3f);
       };
     },
     {{4, 0, 0, 8}, {0, 0, 1, -1}}},
    {"TriangleCentres",
     [](Follow& t) -> Check {
       Position *a = t.Free(0, 0), *b = t.Free(6, 0), *c = t.Free(1, 4);
       Follow::Select({a, b, c});
       RegisterAllCommands();
       for (const char* h : {"mnuTriWX", "mnuTriNX", "mnuTriCX", "mnuTriZX", "mnuTriFM"}) RunHandler(h);
       ClearHandlers();
       Follow::DeselectAll();
       if (Doc.Points.count() != 8) return nullptr;
       return [=] {
         const Position *w = Doc.Points.Item(4), *n = Doc.Points.Item(5), *h = Doc.Points.Item(6);
         const Position *g = Doc.Points.Item(7), *f = Doc.Points.Item(8);
         // Circumcentre: as far from each corner.
         EXPECT_NEAR(DistanceBetween(*w, *a), DistanceBetween(*w, *b), 1e-3);
         EXPECT_NEAR(DistanceBetween(*w, *a), DistanceBetween(*w, *c), 1e-3);
         const Position in = TriIncenter(*a, *b, *c);
         Follow::ExpectAt(n, in.x, in.y, 1e-3f);
         // Orthocentre: CH is perpendicular to AB, AH to BC.
         EXPECT_NEAR(Follow::Dot(*a, *b, *c, *h), 0, 1e-2);
         EXPECT_NEAR(Follow::Dot(*b, *c, *a, *h), 0, 1e-2);
         Follow::ExpectAt(g, (a->x + b->x + c->x) / 3, (a->y + b->y + c->y) / 3, 1e-3f);
         // Fermat point: the corners are seen under 120 degrees.
         for (auto [p, q] : {std::pair{a, b}, std::pair{b, c}})
           EXPECT_NEAR(Follow::Dot(*f, *p, *f, *q) / (DistanceBetween(*f, *p) * DistanceBetween(*f, *q)), -0.5, 2e-3);
       };
     },
     {{1, 4, 2, 5}}},
};

INSTANTIATE_TEST_SUITE_P(Constructions, Follow, ::testing::ValuesIn(kCases),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace vt::test
