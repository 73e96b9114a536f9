// The construction commands on selections that fit: the objects they make,
// with their kinds, links and places, checked against the geometry they
// promise (a tangent touches, a foot is perpendicular, a centre is where it
// should be).
#include <cmath>

#include "document/command_table.h"
#include "document/undo.h"
#include "geometry/geom.h"
#include "tool_fixture.h"
#include "tools/constructions.h"

namespace vt::test {
namespace {

class ConstructionKindsTest : public ToolTest {
 protected:
  static double Dist(const Position& a, const Position& b) {
    return std::sqrt(double(a.x - b.x) * (a.x - b.x) + double(a.y - b.y) * (a.y - b.y) +
                     double(a.z - b.z) * (a.z - b.z));
  }
  static double Dot(const Position& a, const Position& b, const Position& c, const Position& d) {
    return double(b.x - a.x) * (d.x - c.x) + double(b.y - a.y) * (d.y - c.y) + double(b.z - a.z) * (d.z - c.z);
  }
  static bool LinkedTo(const Position& p, const std::string& id, short geType, short pos) {
    for (const CLinkObj& l : p.LinkObjs)
      if (l.ID == id && l.GEType == geType && l.Pos == pos) return true;
    return false;
  }
};

TEST_F(ConstructionKindsTest, ParallelAndPerpendicularLines) {
  Position* a = Free(0, 0, "A");
  Position* b = Free(4, 2, "B");
  CLine* ab = Segment(a, b);
  Position* p = Free(1, 3, "P");
  Select({p, ab});
  const int undo = UndoCount;
  mnuParaLine_Click();
  ASSERT_EQ(Doc.Lines.count(), 2);
  CLine* para = Doc.Lines.Item(2);
  EXPECT_EQ(para->LKID, ab->ID);
  EXPECT_EQ(para->pBegin.ID, p->ID);
  const Position* far = FindPoint(para->pEnd.ID);
  ASSERT_NE(far, nullptr);
  // Parallel: the cross product of the directions vanishes.
  const double cross = double(b->x - a->x) * (far->y - p->y) - double(b->y - a->y) * (far->x - p->x);
  EXPECT_NEAR(cross / Dist(*p, *far), 0, 1e-3);
  EXPECT_EQ(UndoCount, undo + 1);

  // The perpendicular from P to AB ends on AB at a right angle.
  mnuCX1_Click();
  ASSERT_EQ(Doc.Lines.count(), 3);
  CLine* perp = Doc.Lines.Item(3);
  const Position* foot = FindPoint(perp->pEnd.ID);
  ASSERT_NE(foot, nullptr);
  EXPECT_NEAR(Dot(*a, *b, *p, *foot), 0, 1e-3);
  EXPECT_NEAR(Dot(*a, *b, *a, *foot) / (Dist(*a, *b) * Dist(*a, *foot)), 1, 1e-4);  // on the line
}

TEST_F(ConstructionKindsTest, PerpendicularToAPolygonMeetsItsPlane) {
  CRegion* g = Region({Free(0, 0), Free(2, 0), Free(0, 2)});
  Position* p = Free(1, 1);
  p->z = 3;
  DeselectAll();
  Select({p, g});
  mnuCX2_Click();
  ASSERT_EQ(Doc.Lines.count(), 1);
  CLine* l = Doc.Lines.Item(1);
  const Position* foot = FindPoint(l->pEnd.ID);
  ASSERT_NE(foot, nullptr);
  ExpectAt(foot, 1, 1);
  EXPECT_NEAR(foot->z, 0, 1e-5);
}

TEST_F(ConstructionKindsTest, TangentsTouchTheCircle) {
  Position* o = Free(0, 0, "O");
  CCircle* c = Circle(o, Free(1, 0, "R"));
  Position* p = Free(3, 0, "P");
  DeselectAll();
  Select({p, c});
  mnuQX_Click();
  ASSERT_EQ(Doc.Lines.count(), 2);
  for (short pos = 1; pos <= 2; ++pos) {
    CLine* ray = Doc.Lines.Item(pos);
    EXPECT_EQ(ray->pBegin.ID, p->ID);
    const Position* t = FindPoint(ray->pEnd.ID);
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t->Pos, pos);
    EXPECT_NEAR(Dist(*t, *o), 1, 1e-4);            // on the circle
    EXPECT_NEAR(Dot(*o, *t, *t, *p), 0, 1e-3);     // the radius is perpendicular
  }
  EXPECT_NE(Doc.Lines.Item(1)->pEnd.y, Doc.Lines.Item(2)->pEnd.y);
}

TEST_F(ConstructionKindsTest, ArcOnACircleAndCornerMark) {
  Position* o = Free(0, 0, "O");
  CCircle* c = Circle(o, Free(2, 0, "R"));
  Position* s = Free(0, 2, "S");
  Position* e = Free(-2, 0, "E");
  DeselectAll();
  Select({c, s, e});
  mnuDraw2ArcOnCir_Click();
  ASSERT_EQ(Doc.Arcs.count(), 1);
  CArc* on = Doc.Arcs.Item(1);
  EXPECT_NEAR(on->Radius(), 2, 1e-4);

  // A corner mark at O, the second point chosen.
  DeselectAll();
  Select({s, o, e});
  mnuAngleLabel_Click();
  ASSERT_EQ(Doc.Arcs.count(), 2);
  CArc* mark = Doc.Arcs.Item(2);
  EXPECT_EQ(mark->PCenter.ID, o->ID);
  EXPECT_TRUE(LinkedTo(*s, mark->ID, 5, 1));
  EXPECT_TRUE(LinkedTo(*o, mark->ID, 5, 2));
  EXPECT_TRUE(LinkedTo(*e, mark->ID, 5, 3));
}

TEST_F(ConstructionKindsTest, PolygonTakesClockwiseCornersInSelectionOrder) {
  Position* a = Free(0, 0, "A");
  Position* b = Free(0, 2, "B");
  Position* c = Free(2, 2, "C");
  Position* d = Free(2, 0, "D");
  Select({a, b, c, d});  // clockwise
  mnuRegion_Click();
  ASSERT_EQ(Doc.Regions.count(), 1);
  CRegion* g = Doc.Regions.Item(1);
  ASSERT_EQ(g->Points.size(), 4u);
  short pos = 1;
  for (Position* p : {a, b, c, d}) {
    EXPECT_EQ(g->Points[pos - 1].ID, p->ID);
    EXPECT_TRUE(LinkedTo(*p, g->ID, 4, pos));
    ++pos;
  }
}

TEST_F(ConstructionKindsTest, TriangleCentres) {
  Position* a = Free(0, 0, "A");
  Position* b = Free(6, 0, "B");
  Position* c = Free(1, 4, "C");
  Select({a, b, c});
  RegisterAllCommands();
  for (const char* h : {"mnuTriWX", "mnuTriNX", "mnuTriCX", "mnuTriZX", "mnuTriFM"}) RunHandler(h);
  ClearHandlers();
  ASSERT_EQ(Doc.Points.count(), 8);
  Position* centre[5];
  for (int k = 0; k < 5; ++k) {
    centre[k] = Doc.Points.Item(4 + k);
    EXPECT_EQ(centre[k]->LKID, a->ID);
    EXPECT_EQ(centre[k]->LKID2, b->ID);
    EXPECT_EQ(centre[k]->LKID3, c->ID);
  }
  // Circumcentre: equally far from the corners.
  EXPECT_NEAR(Dist(*centre[0], *a), Dist(*centre[0], *b), 1e-3);
  EXPECT_NEAR(Dist(*centre[0], *a), Dist(*centre[0], *c), 1e-3);
  // Incentre: equally far from the sides (the inradius is area / half the perimeter).
  const double ab = Dist(*a, *b), bc = Dist(*b, *c), ca = Dist(*c, *a);
  const double area = 12;  // half of 6 x 4
  const double r = area / ((ab + bc + ca) / 2);
  EXPECT_NEAR(centre[1]->y, r, 1e-3);  // the distance to AB, which lies on y = 0
  // Orthocentre: CH is perpendicular to AB, AH to BC.
  EXPECT_NEAR(Dot(*a, *b, *c, *centre[2]), 0, 1e-2);
  EXPECT_NEAR(Dot(*b, *c, *a, *centre[2]), 0, 1e-2);
  // Barycentre: the mean of the corners.
  ExpectAt(centre[3], 7.0f / 3, 4.0f / 3, 1e-4f);
  // Fermat point: the corners are seen under 120 degrees.
  const Position& f = *centre[4];
  const double cosAFB = Dot(f, *a, f, *b) / (Dist(f, *a) * Dist(f, *b));
  const double cosBFC = Dot(f, *b, f, *c) / (Dist(f, *b) * Dist(f, *c));
  EXPECT_NEAR(cosAFB, -0.5, 2e-3);
  EXPECT_NEAR(cosBFC, -0.5, 2e-3);
}

}  // namespace
}  // namespace vt::test
