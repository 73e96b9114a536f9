// The select tool: what a press takes, points that stay on their carrier,
// and the bound of a drag.
#include <gtest/gtest.h>

#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/undo.h"
#include "geometry/extension.h"
#include "geometry/on_object.h"
#include "geometry/propagation.h"
#include "tool_fixture.h"
#include "tools/create_tools.h"
#include "tools/screen_items.h"
#include "tools/select.h"

namespace vt::test {
namespace {

class SelectTest : public ToolTest {
 protected:
  // A press and release at (x, y) without a move.
  void ClickSelect(float x, float y) { Drag(x, y, x, y, 0); }
};

TEST_F(SelectTest, APointOnASegmentStaysOnItAndOnALineKeepsItsSide) {
  Position* a = Free(0, 0);
  Position* b = Free(4, 0);
  CLine* seg = Segment(a, b);
  Position* s = MakePointOn(*seg, Position(2, 0, 0));
  // One gesture: out beyond the end, then back over the segment.
  {
    CSelect t;
    Press(t, At(2, 0));
  }
  {
    CSelect t;
    Move(t, At(7, 1));
  }
  ExpectAt(s, 4, 0);
  {
    CSelect t;
    Move(t, At(3, 2));
  }
  ExpectAt(s, 3, 0);  // under the mouse again, not behind it
  ExpectAt(&seg->StruP[0], 3, 0);
  {
    CSelect t;
    Release(t, At(3, 2));
  }
  SelectKind(18);

  Position* c = Free(0, 5);
  Position* d = Free(2, 5);
  CLine* line = Segment(c, d, 2);
  Position* t = MakePointOn(*line, Position(1, 5, 0));
  Drag(1, 5, -2, 6);
  ExpectAt(t, -2, 5);
  // The line grows from its begin: the point keeps its side.
  SelectKind(18);
  Drag(2, 5, 4, 5);
  ExpectAt(t, -4, 5);
}

TEST_F(SelectTest, WithSnapAPointDraggedInSpaceGoesFromNodeToNodeOfTheGridAsDrawn) {
  SceneMode = 3;
  SnapToGrid = true;
  Position* p = Free(0.3f, 0.2f);
  p->z = 1.5f;
  DragSlanted(Position(0.3f, 0.2f, 1.5f), Position(2.4f, -0.8f, 1.5f));
  ExpectAt(p, 2, -1);
  EXPECT_EQ(p->z, 1.5f);  // on its plane of motion
  ScaleX = 0.2f;  // x drawn a fifth as wide: ticks and grid lines 5 apart
  DragSlanted(Position(2, -1, 1.5f), Position(6.9f, -1.2f, 1.5f));
  ExpectAt(p, 5, -1);
}

TEST_F(SelectTest, APointWinsOverTheLineItLiesOnAndALineUnderItsEndIsNotTaken) {
  Position* a = Free(0, 0);
  Position* b = Free(4, 0);
  CLine* l = Segment(a, b);
  Position* on = MakePointOn(*l, Position(2, 0, 0));
  ClickSelect(2, 0);
  EXPECT_TRUE(IsSelectedPoint(*on));
  EXPECT_FALSE(IsSelectedLine(*l));
  // A hidden end is no point to take, yet the line is not taken under it.
  ClickSelect(8, 8);
  b->Hide = true;
  ClickSelect(4, 0);
  EXPECT_FALSE(IsSelectedLine(*l));
  EXPECT_FALSE(IsSelectedPoint(*b));
  ClickSelect(3, 0);
  EXPECT_TRUE(IsSelectedLine(*l));
}

TEST_F(SelectTest, ADragOfMoreThanFiveHundredPointsEndsWithAMessageAndMovesNothing) {
  for (int i = 0; i < kMaxDragPoints; ++i) Free(static_cast<float>(i % 40) * 0.5f, static_cast<float>(i / 40));
  SelectKind(19);
  Drag(0, 0, 1, 1);
  ExpectAt(Doc.Points.Item(1), 1, 1);  // 500 move

  Free(-5, -5);
  SelectKind(19);
  const int undo = UndoCount;
  Drag(1, 1, 2, 2);
  EXPECT_EQ(host_.LastMessage(), "At most 500 points can be moved at once.");
  ExpectAt(Doc.Points.Item(1), 1, 1);
  ExpectAt(Doc.Points.Item(501), -5, -5);
  EXPECT_FALSE(RubberBandOn);
  EXPECT_EQ(UndoCount, undo);  // the gesture ended without an edit
}

TEST_F(SelectTest, ExtensionPointsRiseByAFixedStepAndFollowTheirBase) {
  Position* c1 = Free(0, 0);
  Position* c2 = Free(4, 0);
  Position* c3 = Free(4, 4);
  CRegion* square = Region({c1, c2, c3, Free(0, 4)});
  Position* base = Free(1, 1);
  Position* ext = Derived(12, base->ID, square->ID);
  ext->Para1 = 2;
  Position* hidden = Derived(2, "", "");
  ext->LKID3 = hidden->ID;
  base->LKID4 = ext->ID;
  ASSERT_TRUE(RefreshExtensionPoint(*ext));
  SelectObject(*ext);
  DragLastY = 100;
  DragSelectionTo(0, 0, 90);   // up a little
  EXPECT_NEAR(ext->z, 2.05f, 1e-5);
  DragSelectionTo(5, 5, 10);   // up a lot: the same step, and x and y stay
  EXPECT_NEAR(ext->z, 2.1f, 1e-5);
  ExpectAt(ext, 1, 1);
  DragSelectionTo(5, 5, 40);   // down
  EXPECT_NEAR(ext->z, 2.05f, 1e-5);
  EXPECT_NEAR(ext->Para1, 2.05f, 1e-5);
  EXPECT_NEAR(hidden->z, 100, 1e-4);

  // The base dragged: the point comes along, at its height.
  SelectKind(18);
  Drag(1, 1, 2, 3);
  ExpectAt(base, 2, 3);
  ExpectAt(ext, 2, 3);
  EXPECT_NEAR(ext->z, 2.05f, 1e-5);

  // A directed extension point: the drag turns into its angle and distance.
  Position* s = Free(-4, -4);
  Position* e = Free(-2, -4);
  Position* dir = Derived(11, s->ID, e->ID);
  dir->Para1 = 0;
  dir->Para2 = 1;
  s->LKID4 = e->LKID4 = dir->ID;
  ASSERT_TRUE(RefreshExtensionPoint(*dir));
  ExpectAt(dir, -1, -4);
  SelectKind(18);
  Drag(-1, -4, -2, -2);
  ExpectAt(dir, -2, -2, 1e-3f);
  EXPECT_NEAR(dir->Para2, 2, 1e-4);
  EXPECT_NEAR(dir->Para1, 1.5708f, 1e-3);
  SelectKind(18);
  Drag(-2, -4, 0, -4);  // its base's end: the point turns with it
  ExpectAt(e, 0, -4);
  ExpectAt(dir, 0, -2, 1e-3f);
}

}  // namespace
}  // namespace vt::test
