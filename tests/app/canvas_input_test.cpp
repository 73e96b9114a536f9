// The canvas handlers with an offscreen context: which tool gets which call,
// the world points of a click, the view drags, the rubber band, the double
// click.
#include <GL/glu.h>
#include <gtest/gtest.h>

#include <cmath>

#include "app_fixture.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "geometry/line.h"
#include "render/frame.h"
#include "render/view_state.h"

namespace vt::test {
namespace {

TEST_F(CanvasTest, PressAndMoveGoToTheToolOfActiveToolAndRightPressWithSelectOnlyShowsTheMenu) {
  // Text moves go to the line tool; tool 3 has no press case here.
  const struct {
    int tool;
    const char *press, *move;
  } cases[] = {{1, "point", "point"}, {2, "line", "line"},     {4, "circle", "circle"},
               {6, "text", "line"},   {11, "select", "select"}, {3, nullptr, "line"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.tool);
    ActiveTool = c.tool;
    if (c.press) {
      log_.clear();
      picDraw_MouseDown(kLeftButton, 0, 100, 80);
      ASSERT_EQ(log_.size(), 1u);
      EXPECT_EQ(log_[0].tool, c.press);
      EXPECT_EQ(log_[0].op, "L");
      EXPECT_FLOAT_EQ(log_[0].X, 100);
      EXPECT_FLOAT_EQ(log_[0].Y, 80);
    }
    log_.clear();
    const int swaps = host_.swaps;
    picDraw_MouseMove(0, 0, 70, 20);
    ASSERT_EQ(log_.size(), 1u);
    EXPECT_EQ(log_[0].tool, c.move);
    EXPECT_EQ(log_[0].op, "M");
    EXPECT_EQ(host_.swaps, swaps + 1);  // every move ends with a frame
  }
  // Right press: creation tools get the end of their gesture.
  log_.clear();
  ActiveTool = 4;
  picDraw_MouseDown(kRightButton, 0, 30, 40);
  ASSERT_EQ(log_.size(), 1u);
  EXPECT_EQ(log_[0].tool, "circle");
  EXPECT_EQ(log_[0].op, "R");

  // With the select tool the context menu shows at the pixel, and no tool is
  // reached.
  float menuX = -1, menuY = -1;
  CanvasWindow.showGraphEdit = [&](float X, float Y) {
    menuX = X;
    menuY = Y;
  };
  log_.clear();
  ActiveTool = 11;
  const int selects = selectsMade_;
  picDraw_MouseDown(kRightButton, 0, 33, 44);
  EXPECT_TRUE(log_.empty());
  EXPECT_EQ(selectsMade_, selects);
  EXPECT_FLOAT_EQ(menuX, 33);
  EXPECT_FLOAT_EQ(menuY, 44);
  // A left press with a select tool does not show it.
  menuX = -1;
  picDraw_MouseDown(kLeftButton, 0, 33, 44);
  EXPECT_FLOAT_EQ(menuX, -1);
}

TEST_F(CanvasTest, ReleaseEndsASelectGestureAndADragThatMovedSomethingIsOneUndoStep) {
  ActiveTool = 11;
  SelectPressed = false;
  picDraw_MouseUp(kLeftButton, 0, 10, 10);
  EXPECT_TRUE(Calls("select", "R").empty());

  SelectPressed = true;
  DragMoved = false;
  const int undo = UndoCount;
  picDraw_MouseUp(kLeftButton, 0, 10, 10);
  EXPECT_EQ(Calls("select", "R").size(), 1u);
  EXPECT_EQ(UndoCount, undo);

  // The release ended the gesture; a new one that moved something.
  EXPECT_FALSE(SelectPressed || DragMoved || RubberBandOn);
  SelectPressed = DragMoved = true;
  picDraw_MouseUp(kLeftButton, 0, 10, 10);
  EXPECT_EQ(UndoCount, undo + 1);
  EXPECT_TRUE(UndoEnabled);
  // A right release ends no gesture.
  picDraw_MouseUp(kRightButton, 0, 10, 10);
  EXPECT_EQ(Calls("select", "R").size(), 2u);

  // With a creation tool the release goes to the tool of the last press.
  ActiveTool = 2;
  picDraw_MouseDown(kLeftButton, 0, 10, 10);
  SelectPressed = true;  // a tool that keeps its gesture open
  picDraw_MouseUp(kLeftButton, 0, 12, 12);
  EXPECT_EQ(Calls("line", "R").size(), 1u);
  EXPECT_EQ(UndoCount, undo + 1);
}

TEST_F(CanvasTest, AClickGivesTheScenePointUnderThePixelAndThePickRay) {
  mnuFileNew3D_Click();  // a rotated scene
  RedrawScene();
  // A plane z = 0 of the scene in the depth buffer.
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glMultMatrixf(SceneMatrix);
  glDisable(GL_LIGHTING);
  glBegin(GL_QUADS);
  glVertex3f(-200, -200, 0);
  glVertex3f(200, -200, 0);
  glVertex3f(200, 200, 0);
  glVertex3f(-200, 200, 0);
  glEnd();
  glPopMatrix();

  ActiveTool = 1;
  const float X = 123.4f, Y = 87.6f;
  picDraw_MouseDown(kLeftButton, 0, X, Y);
  ASSERT_EQ(log_.size(), 1u);
  const ToolCall& c = log_[0];
  // The point lies on the plane that was under the mouse...
  EXPECT_NEAR(c.scenePoint.z, 0, 0.02);
  // ...and goes back to the clicked pixel with the scene's matrices.
  GLdouble wx, wy, wz;
  ASSERT_EQ(gluProject(c.scenePoint.x, c.scenePoint.y, c.scenePoint.z, c.model, c.proj, c.viewport, &wx, &wy, &wz),
            GL_TRUE);
  EXPECT_NEAR(wx, X, 1.0);
  EXPECT_NEAR(c.viewport[3] - wy, Y, 1.0);
  // viewPoint is the same place without the scene's rotation.
  const float* m = SceneMatrix;
  const Position& s = c.scenePoint;
  EXPECT_NEAR(c.viewPoint.x, m[0] * s.x + m[4] * s.y + m[8] * s.z + m[12], 0.02);
  EXPECT_NEAR(c.viewPoint.y, m[1] * s.x + m[5] * s.y + m[9] * s.z + m[13], 0.02);
  EXPECT_NEAR(c.viewPoint.z, m[2] * s.x + m[6] * s.y + m[10] * s.z + m[14], 0.02);
  // The ray: the far end at window depth 1, the near end at 0, both on the pixel.
  for (const Position* p : {&c.farPoint, &c.nearPoint}) {
    ASSERT_EQ(gluProject(p->x, p->y, p->z, c.model, c.proj, c.viewport, &wx, &wy, &wz), GL_TRUE);
    EXPECT_NEAR(wx, X, 1.0);
    EXPECT_NEAR(c.viewport[3] - wy, Y, 1.0);
    EXPECT_NEAR(wz, p == &c.farPoint ? 1.0 : 0.0, 1e-3);
  }
  // The double click works with what the press saw.
  EXPECT_FLOAT_EQ(LastScenePoint.x, c.scenePoint.x);
  EXPECT_FLOAT_EQ(LastFarPoint.z, c.farPoint.z);
}

TEST_F(CanvasTest, AMoveDragCarriesThePictureWithTheMouse) {
  const Position ref0 = View.RefPos;
  const float w = View.VolWidth, h = View.VolHeight;
  mnuViewMove_Click();
  picDraw_MouseDown(kLeftButton, 0, 100, 100);
  picDraw_MouseMove(kLeftButton, 0, 140, 70);  // right by 0.1, up by 0.1 of the canvas
  // The camera goes the other way, so the picture follows the mouse.
  EXPECT_NEAR(View.RefPos.x, ref0.x - 0.1f * w, 1e-3);
  EXPECT_NEAR(View.RefPos.y, ref0.y - 0.1f * h, 1e-3);
  picDraw_MouseUp(kLeftButton, 0, 140, 70);
  EXPECT_TRUE(ViewMove && !ViewZoom && !ViewRotate);
}

TEST_F(CanvasTest, ARotationDragTurnsTheSceneQuaternionUntilTheRelease) {
  mnuViewRotX_Click();
  EXPECT_EQ(RotateMode, 2);
  mnuViewRotate_Click();
  EXPECT_EQ(RotateMode, 1);
  EXPECT_TRUE(ViewRotate);
  EXPECT_FALSE(ViewMove || ViewZoom);
  picDraw_MouseDown(kLeftButton, 0, 200, 150);
  picDraw_MouseMove(kLeftButton, 0, 260, 150);
  EXPECT_TRUE(SceneChanged);
  EXPECT_LT(std::fabs(SceneQuat[3]), 0.9999f);  // no longer the identity
  EXPECT_FLOAT_EQ(LastX, 260);
  // The release ends the turn; the rotation stays armed.
  picDraw_MouseUp(kLeftButton, 0, 260, 150);
  EXPECT_TRUE(ViewRotate && !SceneChanged);
}

TEST_F(CanvasTest, TheRubberBandSelectsWhatLiesInsideWhicheverWayItIsDrawn) {
  Position* inside = AddPoint(0, 0);
  Position* outside = AddPoint(15, 0);
  Position* hidden = AddPoint(0.5f, 0.5f);
  hidden->Hide = true;
  auto line = std::make_unique<CLine>();
  line->ID = NewObjectId("LN");
  line->pBegin.Set(-1, -1, 0);
  line->pEnd.Set(1, 1, 0);
  CLine* inBox = Doc.Lines.Add(std::move(line));
  auto line2 = std::make_unique<CLine>();
  line2->ID = NewObjectId("LN");
  line2->pBegin.Set(-1, 0, 0);
  line2->pEnd.Set(15, 0, 0);
  CLine* halfOut = Doc.Lines.Add(std::move(line2));
  RedrawScene();
  float cx, cy;
  ASSERT_TRUE(ScreenOf(0, 0, 0, cx, cy));

  ActiveTool = 11;
  // From bottom right to top left.
  picDraw_MouseDown(kLeftButton, 0, cx + 30, cy + 30);
  picDraw_MouseUp(kLeftButton, 0, cx - 30, cy - 30);
  EXPECT_TRUE(IsSelectedPoint(*inside));
  EXPECT_EQ(inside->DrawMode, 2);
  EXPECT_FALSE(IsSelectedPoint(*outside));
  EXPECT_FALSE(IsSelectedPoint(*hidden));
  EXPECT_TRUE(IsSelectedLine(*inBox));
  EXPECT_FALSE(IsSelectedLine(*halfOut));
  EXPECT_EQ(Sel.Points.count(), 1);

  // The other way round selects the same; nothing is entered twice.
  picDraw_MouseDown(kLeftButton, 0, cx - 30, cy - 30);
  picDraw_MouseUp(kLeftButton, 0, cx + 30, cy + 30);
  EXPECT_EQ(Sel.Points.count(), 1);
  EXPECT_EQ(Sel.Lines.count(), 1);

  // A box of no size on an empty spot selects nothing new.
  float ox, oy;
  ASSERT_TRUE(ScreenOf(15, 0, 0, ox, oy));
  picDraw_MouseDown(kLeftButton, 0, ox + 20.5f, oy + 20.5f);
  picDraw_MouseUp(kLeftButton, 0, ox + 20.5f, oy + 20.5f);
  EXPECT_EQ(Sel.Points.count(), 1);

  // With a creation tool the release draws no box.
  ActiveTool = 1;
  picDraw_MouseDown(kLeftButton, 0, ox - 20, oy - 20);
  picDraw_MouseUp(kLeftButton, 0, ox + 20, oy + 20);
  EXPECT_FALSE(IsSelectedPoint(*outside));
}

TEST_F(CanvasTest, DoubleClickOpensTheDialogOfTheFirstHitOnlyWithTheSelectTool) {
  Position* p = AddPoint(2, 1);
  AddPoint(6, 1);
  RedrawScene();
  std::vector<std::string> opened;
  RegisterEditDialog(Kind::LN, [&](DocObject& o) { opened.push_back("line " + o.ID); });

  float X, Y;
  ASSERT_TRUE(ScreenOf(2, 1, 0, X, Y));
  ActiveTool = 11;
  picDraw_MouseDown(kLeftButton, 0, X, Y);
  picDraw_MouseUp(kLeftButton, 0, X, Y);
  // The point is hit and its kind has no dialog yet: nothing opens, and no
  // later kind is tried.
  picDraw_DblClick();
  EXPECT_TRUE(opened.empty());
  EXPECT_FALSE(EditMode);

  RegisterEditDialog(Kind::PT, [&](DocObject& o) {
    EXPECT_TRUE(EditMode);
    EXPECT_EQ(EditObjectId, o.ID);
    opened.push_back("point " + o.ID);
  });
  picDraw_DblClick();
  ASSERT_EQ(opened.size(), 1u);
  EXPECT_EQ(opened[0], "point " + p->ID);

  // Away from every object nothing opens.
  EditMode = false;
  ASSERT_TRUE(ScreenOf(-4, -3, 0, X, Y));
  picDraw_MouseDown(kLeftButton, 0, X, Y);
  picDraw_DblClick();
  EXPECT_EQ(opened.size(), 1u);
  EXPECT_FALSE(EditMode);

  // Only the select tool opens dialogs.
  ASSERT_TRUE(ScreenOf(2, 1, 0, X, Y));
  picDraw_MouseDown(kLeftButton, 0, X, Y);
  ActiveTool = 2;
  picDraw_DblClick();
  EXPECT_EQ(opened.size(), 1u);
}

TEST_F(CanvasTest, UndoSendsTheToolAMoveAtTheCorner) {
  ActiveTool = 2;
  AddPoint(1, 1);
  PushSnapshot();
  log_.clear();
  mnuFUndo_Click();
  const auto moves = Calls("line", "M");
  ASSERT_EQ(moves.size(), 1u);
  EXPECT_FLOAT_EQ(moves[0].X, 0);
  EXPECT_FLOAT_EQ(moves[0].Y, 0);
}

}  // namespace
}  // namespace vt::test
