// The constructions that ask for numbers: what they build stands where it
// should and follows its base. Their refusals of bad selections and bad
// numbers are walked through the dialogs by the GUI constructions test.
#include <cmath>
#include <string>
#include <vector>

#include "document/command_table.h"
#include "document/undo.h"
#include "geometry/geom.h"
#include "persist/docio.h"
#include "tool_fixture.h"
#include "tools/construction_prompts.h"
#include "tools/constructions.h"

namespace vt::test {
namespace {

int opened = 0;
void CountOpen() { ++opened; }

class PromptTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    ClearHandlers();
    RegisterAllCommands();
    opened = 0;
    DivisionDialog = LineExtDialog = FlexP2DDialog = Circle3DDialog = CircleRadiusDialog = CountOpen;
  }
  void TearDown() override {
    DivisionDialog = LineExtDialog = FlexP2DDialog = Circle3DDialog = CircleRadiusDialog = nullptr;
    ClearHandlers();
    ToolTest::TearDown();
  }
};

TEST_F(PromptTest, DivisionPointsOnTwoPointsFollowTheirEnds) {
  Position* a = Free(0, 0, "A");
  Position* b = Free(6, 3, "B");
  Select({a, b});
  ASSERT_EQ(DivisionChoices().front(), "3");
  ASSERT_EQ(DivisionChoices().back(), "10");
  ASSERT_TRUE(EquidistantPointsOK(3));
  ASSERT_EQ(Doc.Points.count(), 4);
  Position* p1 = Doc.Points.Item(3);
  Position* p2 = Doc.Points.Item(4);
  EXPECT_EQ(p1->ptype, 9);
  EXPECT_EQ(p1->Para1, 3);
  EXPECT_EQ(p1->Pos, 1);
  EXPECT_EQ(p2->Pos, 2);
  EXPECT_EQ(p1->LKID, a->ID);
  EXPECT_EQ(p1->LKID2, b->ID);
  ExpectAt(p1, 2, 1);
  ExpectAt(p2, 4, 2);
  DeselectAll();
  Drag(6, 3, 9, 0);
  ExpectAt(p1, 3, 0, 1e-3f);
  ExpectAt(p2, 6, 0, 1e-3f);
}

TEST_F(PromptTest, DivisionPointsOnASegmentACircleAndAnArcAreStructurePoints) {
  Position* a = Free(0, 0, "A");
  Position* b = Free(8, 0, "B");
  CLine* l = Segment(a, b);
  Select({l});
  ASSERT_TRUE(EquidistantPointsOK(4));
  EXPECT_EQ(l->StruPNum(), 3);
  ExpectAt(Doc.Points.Item(3), 2, 0);
  ExpectAt(Doc.Points.Item(5), 6, 0);
  DeselectAll();
  Drag(8, 0, 8, 8);
  ExpectAt(Doc.Points.Item(4), 4, 4, 1e-3f);
  DeselectAll();

  Position* c = Free(20, 0, "C");
  Position* r = Free(22, 0, "D");
  CCircle* circle = Circle(c, r);
  Select({circle});
  const int before = Doc.Points.count();
  ASSERT_TRUE(EquidistantPointsOK(4));
  ASSERT_EQ(Doc.Points.count(), before + 3);
  // With the rim point they cut the circle in four quarters.
  ExpectAt(Doc.Points.Item(before + 1), 20, 2, 2e-3f);
  ExpectAt(Doc.Points.Item(before + 2), 18, 0, 2e-3f);
  ExpectAt(Doc.Points.Item(before + 3), 20, -2, 2e-3f);
  for (int i = 1; i <= 3; ++i) EXPECT_EQ(Doc.Points.Item(before + i)->Pos, i);
  const int undo = UndoCount;
  // A full carrier refuses: 30 points at most.
  for (int k = 0; k < 3; ++k) ASSERT_TRUE(EquidistantPointsOK(10));
  EXPECT_EQ(circle->StruPNum(), 30);
  EXPECT_FALSE(EquidistantPointsOK(3));
  EXPECT_EQ(circle->StruPNum(), 30);
  EXPECT_EQ(UndoCount, undo + 3);
}

TEST_F(PromptTest, EpitaxialAndInterpolatedPointsFollowTheirBase) {
  Position* a = Free(0, 0, "A");
  Position* b = Free(4, 0, "B");
  Select({a, b});
  ASSERT_TRUE(LineExtPointOK(1, true, 2));    // 2 beyond B
  ASSERT_TRUE(LineExtPointOK(2, false, 0.25f));  // a quarter of the way from A
  Position* ext = Doc.Points.Item(3);
  Position* in = Doc.Points.Item(4);
  EXPECT_EQ(ext->ptype, 6);
  ExpectAt(ext, 6, 0);
  ExpectAt(in, 1, 0);
  DeselectAll();
  Drag(4, 0, 0, 8);
  ExpectAt(ext, 0, 10, 1e-3f);
  ExpectAt(in, 0, 2, 1e-3f);

  // On a segment the line is the base.
  DeselectAll();
  CLine* l = Segment(a, b);
  Select({l});
  ASSERT_TRUE(LineExtPointOK(1, false, 0.5f));
  Position* onLine = Doc.Points.Item(Doc.Points.count());
  EXPECT_EQ(onLine->LKID, l->ID);
  ExpectAt(onLine, 0, 12, 1e-3f);
}

TEST_F(PromptTest, DirectedExtensionPointIsTurnedAndFollowsItsBase) {
  Position* a = Free(0, 0, "A");
  Position* b = Free(2, 0, "B");
  Select({a, b});
  ASSERT_TRUE(DirectedExtensionOK(90, 3));
  Position* p = nullptr;
  for (Position* q : Doc.Points)
    if (q->ptype == 11) p = q;
  ASSERT_NE(p, nullptr);
  // 3 beyond B, turned a quarter about B.
  ExpectAt(p, 2, 3, 2e-3f);
  EXPECT_NEAR(p->Para1, 3.1416f / 2, 1e-5f);
  EXPECT_EQ(p->Para2, 3);
  Position* far = FindPoint(p->LKID3);
  ASSERT_NE(far, nullptr);
  EXPECT_TRUE(far->Hide);
  EXPECT_EQ(far->ptype, 2);
  EXPECT_EQ(a->LKID4, p->ID);
  EXPECT_EQ(b->LKID4, p->ID);
  DeselectAll();
  Drag(2, 0, 4, 0);
  ExpectAt(p, 4, 3, 2e-3f);
}

TEST_F(PromptTest, CirclesOfAGivenRadiusAndAboutAnAxis) {
  Position* c = Free(1, 1, "C");
  Select({c});
  CircleRadiusForm f;
  f.radius = 2.5f;
  ASSERT_TRUE(CircleRadiusOK(f));
  CCircle* circle = Doc.Circles.Item(1);
  DeselectAll();
  Drag(1, 1, 3, -1);
  EXPECT_NEAR(circle->Centre().x, 3, 1e-3f);
  EXPECT_NEAR(circle->Centre().y, -1, 1e-3f);
  EXPECT_EQ(circle->Radius(), 2.5f);
  DeselectAll();

  // About an axis: the circle lies in the plane normal to the segment.
  Position* a = Free(10, 0, "A");
  Position* b = Free(10, 0, "B");
  b->z = 4;
  CLine* axis = Segment(a, b);
  Select({axis});
  ASSERT_TRUE(Circle3DOK(2));
  CCircle* s = Doc.Circles.Item(2);
  EXPECT_EQ(s->CType, 5);
  EXPECT_EQ(s->LKID, axis->ID);
  EXPECT_EQ(s->PCenter.ID, a->ID);
  for (const Position& q : s->Points()) {
    EXPECT_NEAR(q.z, 0, 1e-3f);
    EXPECT_NEAR(DistanceBetween(q, *a), 2, 1e-3f);
  }
}

}  // namespace
}  // namespace vt::test
