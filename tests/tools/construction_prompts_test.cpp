// The constructions that ask for numbers: a full carrier refuses division
// points. What they build follows its base in the construction table; their
// refusals of bad selections and bad numbers are walked through the dialogs
// by the GUI constructions test.
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

}  // namespace
}  // namespace vt::test
