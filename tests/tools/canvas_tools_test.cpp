// The tools behind the real canvas handlers, with an offscreen context: a
// triangle drawn by clicks, a corner dragged and brought back by undo, and
// box selection.
#include <GL/gl.h>
#include <GL/glu.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "document/command_table.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "render/frame.h"
#include "render/offscreen.h"
#include "render/view_state.h"
#include "support/fixtures.h"
#include "render/canvas_input.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"
#include "tools/select.h"

namespace vt::test {
namespace {

class CanvasToolsTest : public DocumentTest {
 protected:
  static constexpr int kWidth = 400;
  static constexpr int kHeight = 300;

  void SetUp() override {
    DocumentTest::SetUp();
    std::string error;
    if (!context_.Create(kWidth, kHeight, error)) GTEST_SKIP() << "no offscreen context: " << error;
    ASSERT_TRUE(Initialize());
    host_.canvasWidth = kWidth;
    host_.canvasHeight = kHeight;
    View.SetScreen(kWidth, kHeight);
    RegisterFrameCommands();
    RegisterToolCommands();
    MakeTools();
    ResetSelectState();
    Hooks.syntheticMouseMove = SyntheticMouseMove;
    mnuFileNew2D_Click();
  }
  void TearDown() override {
    for (ToolSlot s : {ToolSlot::Point, ToolSlot::Line, ToolSlot::Circle, ToolSlot::Text, ToolSlot::Select})
      RegisterTool(s, {});
    MakeTools();
    ClearHandlers();
    Hooks = FrameHooks{};
    if (context_.valid()) {
      ReleaseContext();
      context_.Destroy();
    }
    DocumentTest::TearDown();
  }

  // The pixel (Y down) of a world point of the plane scene.
  void PixelOf(float x, float y, float& X, float& Y) {
    RedrawScene();
    ASSERT_TRUE(SceneToScreen(x, y, 0, X, Y));
  }

  void ClickAt(float x, float y) {
    float X, Y;
    PixelOf(x, y, X, Y);
    picDraw_MouseMove(0, 0, X, Y);
    picDraw_MouseDown(kLeftButton, 0, X, Y);
    picDraw_MouseUp(kLeftButton, 0, X, Y);
  }
  void DragAt(float x0, float y0, float x1, float y1) {
    float X0, Y0, X1, Y1;
    PixelOf(x0, y0, X0, Y0);
    PixelOf(x1, y1, X1, Y1);
    picDraw_MouseDown(kLeftButton, 0, X0, Y0);
    for (int i = 1; i <= 4; ++i)
      picDraw_MouseMove(kLeftButton, 0, X0 + (X1 - X0) * i / 4, Y0 + (Y1 - Y0) * i / 4);
    picDraw_MouseUp(kLeftButton, 0, X1, Y1);
  }
  std::set<std::string> Selected() const {
    std::set<std::string> ids;
    for (Kind k : kAllKinds)
      for (int i = 1; i <= Sel.Of(k).count(); ++i) ids.insert(Sel.Of(k).ItemBase(i)->ID);
    return ids;
  }

  OffscreenContext context_;
};

TEST_F(CanvasToolsTest, ATriangleDrawnByClicksFollowsADraggedCornerAndUndoBringsItBack) {
  ASSERT_TRUE(RunHandler("mnuDrawSeg"));
  ASSERT_EQ(ActiveTool, 2);
  const int undo0 = UndoCount;
  ClickAt(-4, -3);
  ClickAt(4, -3);
  ClickAt(4, -3);
  ClickAt(0, 4);
  ClickAt(0, 4);
  ClickAt(-4, -3);
  ASSERT_EQ(Doc.Lines.count(), 3);
  ASSERT_EQ(Doc.Points.count(), 3);  // the corners are shared
  EXPECT_EQ(UndoCount, undo0 + 3);
  Position* a = Doc.Points.Item(1);
  EXPECT_EQ(a->LinkNum(), 2);
  EXPECT_EQ(Doc.Lines.Item(1)->LLabel, "AB");
  EXPECT_EQ(Doc.Lines.Item(3)->LLabel, "CA");

  ASSERT_TRUE(RunHandler("mnuSelect"));
  ClickAt(8, 8);  // empty: ends the rubber band the command armed
  const float ax = a->x, ay = a->y;
  DragAt(ax, ay, -6, 1);
  EXPECT_NEAR(a->x, -6, 0.1f);
  EXPECT_NEAR(a->y, 1, 0.1f);
  EXPECT_EQ(Doc.Lines.Item(1)->pBegin.x, a->x);
  EXPECT_EQ(Doc.Lines.Item(3)->pEnd.y, a->y);
  EXPECT_EQ(UndoCount, undo0 + 4);

  ASSERT_TRUE(RunHandler("mnuFUndo"));
  a = Doc.Points.Item(1);
  // The snapshot keeps 7 digits.
  EXPECT_NEAR(a->x, ax, 1e-5f);
  EXPECT_NEAR(a->y, ay, 1e-5f);
  EXPECT_EQ(Doc.Lines.Item(1)->pBegin.x, a->x);
}

TEST_F(CanvasToolsTest, ABoxSelectsTheSameWhicheverCornerItStartsFrom) {
  ASSERT_TRUE(RunHandler("mnuDrawSeg"));
  ClickAt(-2, -2);
  ClickAt(2, -2);
  ASSERT_TRUE(RunHandler("mnuDrawCircle"));
  ClickAt(0, 1);
  ClickAt(1, 1);
  ASSERT_TRUE(RunHandler("mnuSelect"));
  ClickAt(9, 9);
  EXPECT_TRUE(Selected().empty());

  DragAt(4, -4, -4, 4);  // bottom right to top left
  const std::set<std::string> one = Selected();
  EXPECT_EQ(one.size(), 6u);  // four points, the segment, the circle
  ClickAt(9, 9);
  EXPECT_TRUE(Selected().empty());
  DragAt(-4, 4, 4, -4);
  EXPECT_EQ(Selected(), one);

  // A box that ends on a segment's end point leaves the segment out.
  ClickAt(9, 9);
  DragAt(-4, 4, 2, -2);
  const std::set<std::string> ends = Selected();
  EXPECT_EQ(ends.count(Doc.Lines.Item(1)->ID), 0u);
  EXPECT_EQ(ends.count(Doc.Points.Item(3)->ID), 1u);  // the centre, inside
  EXPECT_EQ(ends.count(Doc.Circles.Item(1)->ID), 1u);
}

}  // namespace
}  // namespace vt::test
