// The constructions that ask for numbers: what they build stands where it
// should and follows its base. Their refusals of bad selections and bad
// numbers are walked through the dialogs by the GUI constructions test.
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

TEST_F(PromptTest, DivisionPointsOnAFullCarrierAreRefused) {
  CCircle* circle = Circle(Free(20, 0, "C"), Free(22, 0, "D"));
  Select({circle});
  const int undo = UndoCount;
  // A full carrier refuses: 30 points at most.
  for (int parts : {4, 10, 10, 10}) ASSERT_TRUE(EquidistantPointsOK(parts));
  EXPECT_EQ(circle->StruPNum(), 30);
  EXPECT_FALSE(EquidistantPointsOK(3));
  EXPECT_EQ(circle->StruPNum(), 30);
  EXPECT_EQ(UndoCount, undo + 4);
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

}  // namespace
}  // namespace vt::test
