// The scene's rotation: the virtual track ball that turns a mouse drag into
// a quaternion, the composition of quaternions, and the scene matrix.
//
// Quaternions are (x, y, z, w). The scene matrix is the usual rotation matrix
// of the normalised quaternion written row by row; glMultMatrixf reads it
// column by column, so the scene turns by the inverse rotation. The track
// ball's axis and the order of composition are chosen to match: a drag
// carries the scene along with the mouse, and the angles 111, -41, 60 stand
// the z axis up on the screen.
#pragma once

namespace vt {

// Axis-angle to quaternion: the axis normalised and scaled by sin(angle/2),
// w = cos(angle/2). A zero axis gives the identity.
void QuatFromAxisAngle(const float axis[3], float angle, float q[4]);

// The rotation of a followed by the rotation of b: dest = b * a (Hamilton
// product). dest may be a or b. Every 97th composition renormalises dest,
// as a guard against drift.
void ComposeQuat(const float a[4], const float b[4], float dest[4]);

// The 16 values of the scene matrix of q (normalised first); identity for a
// zero quaternion.
void QuatToMatrix(const float q[4], float m[16]);

// The track ball: the rotation from the start point (p1x, p1y) to the end
// point (p2x, p2y), both in -1..1 of the canvas, by rotateMode: 1 free, 2
// about x, 3 about y, 4 about z. Equal points give the identity.
void TrackBall(float q[4], float p1x, float p1y, float p2x, float p2y, int rotateMode);

// The track-ball coordinates of a canvas pixel: ((2x - w)/w, (h - 2y)/h).
void TrackBallPoint(float x, float y, float width, float height, float& tx, float& ty);

// The free track ball instead of the turntable for free turns in space (a
// setting of the program, the View menu's "Free Track Ball").
extern bool FreeTrackBall;

// One step of a rotating drag from the pixel (lastX, lastY) to (x, y) on a
// canvas of the size given, SceneQuat changed and SceneChanged set. A free
// turn (RotateMode 1) in a space scene is the turntable unless FreeTrackBall
// is set; else the track ball by RotateMode.
void RotateSceneByDrag(float lastX, float lastY, float x, float y, float width, float height);

// The turntable: the scene turns about the world z axis by the drag across
// (half a turn for the canvas's width) and tilts by the drag down (half a
// turn for its height), the camera's height above the xy plane held between
// straight above and straight below, so z always points up the screen. The
// present rotation is read as such a turn first (a view turned otherwise
// stands z up at the first step).
void TurnTableByDrag(float dx, float dy, float width, float height);

// SceneMatrix for the next frame: from SceneQuat when SceneChanged, else from
// ViewGraph's angles (roll about z, pitch about x, yaw about y, degrees times
// 3.1416/180), composed roll, pitch, yaw and stored in SceneQuat.
void UpdateSceneMatrix();

// The three angles of ViewGraph (degrees, with the same 3.1416/180 as the
// way back) that compose to SceneQuat. A rotating drag ends with this, so
// the turned scene stays as it is when the frame goes back to the angles.
void AnglesFromSceneQuat();

}  // namespace vt
