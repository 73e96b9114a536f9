// The camera (Cls4), the track ball and the scene matrix, checked on their
// numbers; the point's pick test.
#include <cmath>

#include "document/globals.h"
#include "render/trackball.h"
#include "render/view_state.h"
#include "support/fixtures.h"

namespace vt {
namespace {

using ViewTest = test::DocumentTest;

// The scene matrix applied as glMultMatrixf applies it (column by column).
void Apply(const float m[16], const float v[3], float out[3]) {
  for (int r = 0; r < 3; ++r) out[r] = m[r] * v[0] + m[4 + r] * v[1] + m[8 + r] * v[2];
}

double Norm(const float q[4]) { return std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]); }

TEST_F(ViewTest, ScreenOfNoHeightKeepsTheAspectFinite) {
  View.SetScreen(300, 0);
  EXPECT_FLOAT_EQ(View.VolWidth, 40 * 300);
  View.SetScreen(300, 150);  // the height of the volume survived
  EXPECT_FLOAT_EQ(View.VolHeight, 40);
  EXPECT_FLOAT_EQ(View.VolWidth, 80);
}

TEST_F(ViewTest, ZoomRefusesFactorsAtOrBelowZero) {
  View.Zoom(0.3f);
  View.Zoom(0);
  View.Zoom(-2);
  EXPECT_FLOAT_EQ(View.VolWidth, 12);
  EXPECT_FLOAT_EQ(View.VolHeight, 12);
}

TEST_F(ViewTest, ZeroLengthDragGivesTheIdentity) {
  float q[4] = {9, 9, 9, 9};
  for (int mode = 1; mode <= 4; ++mode) {
    TrackBall(q, 0.3f, -0.2f, 0.3f, -0.2f, mode);
    EXPECT_TRUE(q[0] == 0 && q[1] == 0 && q[2] == 0 && q[3] == 1) << mode;
  }
  TrackBall(q, 0, 0, 0, 0, 0);
  EXPECT_EQ(q[3], 1);
}

TEST_F(ViewTest, DragCarriesTheSceneAlongWithTheMouse) {
  SceneChanged = false;
  RotateMode = 1;
  // A drag to the right on a 200 x 200 canvas.
  RotateSceneByDrag(100, 100, 130, 100, 200, 200);
  EXPECT_TRUE(SceneChanged);
  UpdateSceneMatrix();
  const float front[3] = {0, 0, 1};
  float moved[3];
  Apply(SceneMatrix, front, moved);
  EXPECT_GT(moved[0], 0.5f);  // the point nearest the eye went right
  EXPECT_NEAR(moved[1], 0, 1e-5);
  // The point now on the screen's x axis is on the axis of the next drag, an
  // upward one: that drag turns about the screen's axis, so it stays.
  float onAxis[3];
  for (int r = 0; r < 3; ++r) onAxis[r] = SceneMatrix[4 * r];  // the inverse takes (1, 0, 0) back
  RotateSceneByDrag(100, 100, 100, 70, 200, 200);
  UpdateSceneMatrix();
  float still[3];
  Apply(SceneMatrix, onAxis, still);
  EXPECT_NEAR(still[0], 1, 1e-4);
  EXPECT_NEAR(still[1], 0, 1e-4);
  float up[3];
  Apply(SceneMatrix, front, up);
  EXPECT_GT(up[1], 0.4f);  // and the near point went up
}

TEST_F(ViewTest, CompositionRenormalisesAtIntervals) {
  // A quaternion 1 % too long grows with every composition, until the
  // renormalisation brings it back within at most 97 steps.
  float q[4] = {0, 0, 0, 1};
  const float step[4] = {0, 0, 0, 1.01f};
  bool cameBack = false;
  double highest = 0;
  for (int i = 0; i < 200; ++i) {
    ComposeQuat(step, q, q);
    highest = std::max(highest, Norm(q));
    if (i > 0 && std::fabs(Norm(q) - 1) < 1e-5) cameBack = true;
  }
  EXPECT_TRUE(cameBack);
  EXPECT_LT(highest, std::pow(1.01, 98));
  EXPECT_GT(highest, 1.5);
}

TEST_F(ViewTest, IsoAnglesStandTheZAxisUp) {
  SceneChanged = false;
  ViewGraph.RotRoll = 111;
  ViewGraph.RotPitch = -41;
  ViewGraph.RotYaw = 60;
  UpdateSceneMatrix();
  const float x[3] = {1, 0, 0}, y[3] = {0, 1, 0}, z[3] = {0, 0, 1};
  float sx[3], sy[3], sz[3];
  Apply(SceneMatrix, x, sx);
  Apply(SceneMatrix, y, sy);
  Apply(SceneMatrix, z, sz);
  EXPECT_TRUE(std::fabs(sz[0]) <= 0.01f && sz[1] > 0.9f);  // z straight up the screen
  EXPECT_TRUE(sx[0] < -0.6f && sx[1] < 0);  // x to the lower left
  EXPECT_TRUE(sy[0] > 0.6f && sy[1] < 0);   // y to the lower right
  // The angles' rotation is kept as the quaternion a drag continues from.
  EXPECT_NEAR(Norm(SceneQuat), 1, 1e-5);
  float again[16];
  QuatToMatrix(SceneQuat, again);
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(again[i], SceneMatrix[i], 1e-6);
  // With SceneChanged the matrix comes from the quaternion, not the angles.
  SceneChanged = true;
  ViewGraph.RotRoll = 0;
  UpdateSceneMatrix();
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(again[i], SceneMatrix[i], 1e-6);
}

TEST_F(ViewTest, PointPickIsStrictAtTwoTenths) {
  Position p(0.2f, 0, 0);
  const Position top(0, 0, 50), bottom(0, 0, -50);
  EXPECT_FALSE(p.Pick(top, bottom));
  p.Set(0.199f, 0, 0);
  EXPECT_TRUE(p.Pick(top, bottom));
  p.Set(0.12f, 0.15f, 3);
  EXPECT_TRUE(p.Pick(top, bottom));  // 0.192 from the ray
  p.Set(0.15f, 0.15f, 3);
  EXPECT_FALSE(p.Pick(top, bottom));  // 0.212
  // The scene-point form takes the ray from the far and near points.
  p.Set(0.1f, 0, 0);
  EXPECT_TRUE(p.Pick(Position(9, 9, 9), bottom, top));
}

TEST_F(ViewTest, PointPickCountsFarZAsZero) {
  // The ray of a flat view: from z 50 to a far end 1950 below the plane. Its
  // far z counts as 0, so the ray ends on the plane at (0.3, 0).
  const Position nearEnd(0, 0, 50), farEnd(0.3f, 0, -1950);
  Position p(0.3f, 0, 0);
  EXPECT_TRUE(p.Pick(nearEnd, farEnd));
  // The same ray with a far end above -900 keeps its z: it passes the plane
  // at x 0.0075, 0.29 from the point.
  const Position shortFar(0.3f * 850 / 2000, 0, -800);
  EXPECT_FALSE(p.Pick(nearEnd, shortFar));
  Position q(0, 0, 0);
  EXPECT_TRUE(q.Pick(nearEnd, shortFar));
}


// A turned scene survives the end of the drag: the angles found for the
// quaternion compose back to it.
TEST(SceneAngles, AnglesComposeBackToTheQuaternion) {
  ResetGlobals();
  const float angles[][3] = {{111, -41, 60}, {0, 0, 0}, {30, 20, -170}, {-95, 80, 10}, {5, -89.9f, 44}};
  for (const auto& a : angles) {
    ViewGraph.RotRoll = a[0];
    ViewGraph.RotPitch = a[1];
    ViewGraph.RotYaw = a[2];
    SceneChanged = false;
    UpdateSceneMatrix();
    float before[16];
    for (int i = 0; i < 16; ++i) before[i] = SceneMatrix[i];
    ViewGraph.RotRoll = ViewGraph.RotPitch = ViewGraph.RotYaw = 0;
    AnglesFromSceneQuat();
    UpdateSceneMatrix();
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(SceneMatrix[i], before[i], 1e-4) << i;
  }
  // After a free drag the same holds for whatever the track ball made.
  SceneChanged = false;
  UpdateSceneMatrix();
  RotateMode = 1;
  RotateSceneByDrag(100, 100, 160, 130, 400, 300);
  UpdateSceneMatrix();
  float dragged[16];
  for (int i = 0; i < 16; ++i) dragged[i] = SceneMatrix[i];
  AnglesFromSceneQuat();
  SceneChanged = false;
  UpdateSceneMatrix();
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(SceneMatrix[i], dragged[i], 1e-4) << i;
}

}  // namespace
}  // namespace vt
