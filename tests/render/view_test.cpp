// The camera, the track ball and the scene matrix, checked on where they put
// the scene's points; degenerate input; the pick ray of a flat view.
#include <algorithm>
#include <cmath>

#include "document/globals.h"
#include "render/trackball.h"
#include "render/view_state.h"
#include "support/fixtures.h"

namespace vt {
namespace {

using ViewTest = test::DocumentTest;

// The scene matrix applied as glMultMatrixf applies it (column by column).
void Apply(const float v[3], float out[3]) {
  for (int r = 0; r < 3; ++r) out[r] = SceneMatrix[r] * v[0] + SceneMatrix[4 + r] * v[1] + SceneMatrix[8 + r] * v[2];
}
void ExpectSceneMatrix(const float m[16]) {
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(SceneMatrix[i], m[i], 1e-4) << i;
}

TEST_F(ViewTest, DegenerateScreensZoomsAndDragsChangeNothingBadly) {
  View.SetScreen(300, 0);
  EXPECT_FLOAT_EQ(View.VolWidth, 40 * 300);
  View.SetScreen(300, 150);  // the height of the volume survived
  EXPECT_TRUE(View.VolHeight == 40 && View.VolWidth == 80);
  for (float f : {0.3f, 0.0f, -2.0f}) View.Zoom(f);  // factors at or below zero are refused
  EXPECT_TRUE(View.VolWidth == 24 && View.VolHeight == 12);
  float q[4] = {9, 9, 9, 9};
  for (int mode = 0; mode <= 4; ++mode) {  // a drag of no length is the identity
    TrackBall(q, 0.3f, -0.2f, 0.3f, -0.2f, mode);
    EXPECT_TRUE(q[0] == 0 && q[1] == 0 && q[2] == 0 && q[3] == 1) << mode;
  }
}

TEST_F(ViewTest, DragCarriesTheSceneAlongWithTheMouse) {
  SceneChanged = false;
  RotateMode = 1;
  RotateSceneByDrag(100, 100, 130, 100, 200, 200);  // to the right on a 200 x 200 canvas
  EXPECT_TRUE(SceneChanged);
  UpdateSceneMatrix();
  const float front[3] = {0, 0, 1};
  float moved[3];
  Apply(front, moved);
  EXPECT_GT(moved[0], 0.5f);  // the point nearest the eye went right
  EXPECT_NEAR(moved[1], 0, 1e-5);
  // The point now on the screen's x axis is on the axis of the next drag, an
  // upward one: that drag turns about the screen's axis, so it stays.
  float onAxis[3], still[3], up[3];
  for (int r = 0; r < 3; ++r) onAxis[r] = SceneMatrix[4 * r];  // the inverse takes (1, 0, 0) back
  RotateSceneByDrag(100, 100, 100, 70, 200, 200);
  UpdateSceneMatrix();
  Apply(onAxis, still);
  EXPECT_TRUE(std::fabs(still[0] - 1) < 1e-4 && std::fabs(still[1]) < 1e-4);
  Apply(front, up);
  EXPECT_GT(up[1], 0.4f);  // and the near point went up
  // A long drag composes many turns: the quaternion stays of length one.
  for (int i = 0; i < 300; ++i) RotateSceneByDrag(100, 100, 103, 101, 200, 200);
  EXPECT_NEAR(std::sqrt(SceneQuat[0] * SceneQuat[0] + SceneQuat[1] * SceneQuat[1] + SceneQuat[2] * SceneQuat[2] +
                        SceneQuat[3] * SceneQuat[3]),
              1, 1e-3);
}

// The iso angles stand the z axis up; the angles found for any quaternion
// (set by angles or made by a free drag) compose back to it.
TEST_F(ViewTest, IsoAnglesStandTheZAxisUpAndAnglesComposeBackToTheQuaternion) {
  ViewGraph.RotRoll = 111, ViewGraph.RotPitch = -41, ViewGraph.RotYaw = 60;
  SceneChanged = false;
  UpdateSceneMatrix();
  const float x[3] = {1, 0, 0}, y[3] = {0, 1, 0}, z[3] = {0, 0, 1};
  float sx[3], sy[3], sz[3];
  Apply(x, sx), Apply(y, sy), Apply(z, sz);
  EXPECT_TRUE(std::fabs(sz[0]) <= 0.01f && sz[1] > 0.9f);  // z up, x to the lower left, y to the lower right
  EXPECT_TRUE(sx[0] < -0.6f && sx[1] < 0 && sy[0] > 0.6f && sy[1] < 0);
  float before[16];
  const float angles[][3] = {{111, -41, 60}, {0, 0, 0}, {30, 20, -170}, {-95, 80, 10}, {5, -89.9f, 44}, {0, 0, 0}};
  for (const auto& a : angles) {
    SCOPED_TRACE(a[0]);
    ViewGraph.RotRoll = a[0], ViewGraph.RotPitch = a[1], ViewGraph.RotYaw = a[2];
    SceneChanged = false;
    UpdateSceneMatrix();
    if (&a == &angles[5]) RotateMode = 1, RotateSceneByDrag(100, 100, 160, 130, 400, 300), UpdateSceneMatrix();
    std::copy(SceneMatrix, SceneMatrix + 16, before);
    ViewGraph.RotRoll = ViewGraph.RotPitch = ViewGraph.RotYaw = 0;
    if (&a == &angles[0]) {  // with SceneChanged the matrix comes from the kept quaternion, not the angles
      SceneChanged = true;
      UpdateSceneMatrix();
      ExpectSceneMatrix(before);
    }
    AnglesFromSceneQuat();
    SceneChanged = false;
    UpdateSceneMatrix();
    ExpectSceneMatrix(before);
  }
}

TEST_F(ViewTest, PointPickCountsFarZAsZero) {
  // The ray of a flat view: from z 50 to a far end 1950 below the plane. Its
  // far z counts as 0, so the ray ends on the plane at (0.3, 0).
  const Position nearEnd(0, 0, 50), farEnd(0.3f, 0, -1950);
  Position p(0.3f, 0, 0), q(0, 0, 0);
  EXPECT_TRUE(p.Pick(nearEnd, farEnd));
  // A far end above -900 keeps its z: the ray passes the plane at x 0.0075,
  // 0.29 from the point.
  const Position shortFar(0.3f * 850 / 2000, 0, -800);
  EXPECT_FALSE(p.Pick(nearEnd, shortFar));
  EXPECT_TRUE(q.Pick(nearEnd, shortFar));
}

}  // namespace
}  // namespace vt
