// The canvas handlers with an offscreen context: the scene point and the pick
// ray of a click.
#include <GL/glu.h>
#include <gtest/gtest.h>

#include "app_fixture.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "render/frame.h"
#include "render/view_state.h"

namespace vt::test {
namespace {

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

}  // namespace
}  // namespace vt::test
