// Text annotations: the fixed hit rectangle and a drag in per cent. A record
// cut short is a row of the damaged-record table (persist).
#include <gtest/gtest.h>

#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"
#include "persist/docio.h"
#include "tool_fixture.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"
#include "tools/select.h"
#include "tools/text_item.h"

namespace vt::test {
namespace {

class TextItemTest : public ToolTest {
 protected:
  void TearDown() override {
    TextToolStyle = TextStyle{};
    ToolTest::TearDown();
  }
  CText* AddText(float x, float y, const std::string& content) {
    auto t = std::make_unique<CText>();
    t->ID = NewObjectId("TT");
    t->PosX = x;
    t->PosY = y;
    t->Content = content;
    std::string key = t->ID;
    return Doc.Texts.Add(std::move(t), key);
  }
  static Mouse Pct(float px, float py) { return At(px / 5 - 10, (py - 50) / 5); }
};

TEST_F(TextItemTest, ALongTextIsHitOverItsFirstFifteenUnitsOnly) {
  CText* t = AddText(20, 40, std::string(200, 'W'));
  EXPECT_TRUE(t->PickPct(20, 40));
  EXPECT_TRUE(t->PickPct(35, 43));  // bounds included
  EXPECT_FALSE(t->PickPct(35.2f, 41));
  EXPECT_FALSE(t->PickPct(25, 43.2f));
  EXPECT_FALSE(t->PickPct(19.9f, 41));
  // Through the select tool: a press beyond the first 15 units misses it.
  {
    CSelect s;
    Press(s, Pct(45, 41));
  }
  EXPECT_FALSE(IsSelected(t->ID));
  {
    CSelect s;
    Press(s, Pct(30, 41));
  }
  EXPECT_TRUE(IsSelected(t->ID));
  // The double click tests the mouse of the last press.
  LastX = 30 * 4.0f;  // 400 pixels wide
  LastY = (100 - 41) * 4.0f;
  EXPECT_TRUE(t->Pick(Position(), Position(), Position()));
  LastX = 40 * 4.0f;
  EXPECT_FALSE(t->Pick(Position(), Position(), Position()));
}

TEST_F(TextItemTest, ADraggedTextMovesInPerCentAndStaysWhenTheViewTurns) {
  CText* t = AddText(20, 40, "label");
  {
    CSelect s;
    Press(s, Pct(21, 41));
  }
  {
    CSelect s;
    Move(s, Pct(31, 51));
  }
  EXPECT_FLOAT_EQ(t->PosX, 30);
  EXPECT_FLOAT_EQ(t->PosY, 50);
}

}  // namespace
}  // namespace vt::test
