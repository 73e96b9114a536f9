#include "render/trackball.h"

#include <cmath>

#include "document/globals.h"
#include "render/view_state.h"

namespace vt {

namespace {

constexpr int kRenormalizeEvery = 97;
constexpr float kBallRadius = 0.5f;

void Normalize(float q[4]) {
  const double n = std::sqrt(static_cast<double>(q[0]) * q[0] + static_cast<double>(q[1]) * q[1] +
                             static_cast<double>(q[2]) * q[2] + static_cast<double>(q[3]) * q[3]);
  if (n <= 0) return;
  for (int i = 0; i < 4; ++i) q[i] = static_cast<float>(q[i] / n);
}

// A point of the canvas lifted onto the ball: a sphere of radius r near the
// centre, blended into a hyperbola further out.
float ProjectToBall(float r, float x, float y) {
  const double d = std::sqrt(static_cast<double>(x) * x + static_cast<double>(y) * y);
  if (d < r * 7071.0 / 10000.0) return static_cast<float>(std::sqrt(static_cast<double>(r) * r - d * d));
  const double t = r / 1414.0 * 1000.0;
  return static_cast<float>(t * t / d);
}

}  // namespace

void QuatFromAxisAngle(const float axis[3], float angle, float q[4]) {
  const double len = std::sqrt(static_cast<double>(axis[0]) * axis[0] + static_cast<double>(axis[1]) * axis[1] +
                               static_cast<double>(axis[2]) * axis[2]);
  if (len <= 0) {
    q[0] = q[1] = q[2] = 0;
    q[3] = 1;
    return;
  }
  const double s = std::sin(angle / 2.0) / len;
  for (int i = 0; i < 3; ++i) q[i] = static_cast<float>(axis[i] * s);
  q[3] = static_cast<float>(std::cos(angle / 2.0));
}

void ComposeQuat(const float a[4], const float b[4], float dest[4]) {
  static int count = 0;
  // b * a: vector part b.w a + a.w b + b x a, scalar b.w a.w - b . a.
  float r[4];
  r[0] = b[3] * a[0] + a[3] * b[0] + (b[1] * a[2] - b[2] * a[1]);
  r[1] = b[3] * a[1] + a[3] * b[1] + (b[2] * a[0] - b[0] * a[2]);
  r[2] = b[3] * a[2] + a[3] * b[2] + (b[0] * a[1] - b[1] * a[0]);
  r[3] = b[3] * a[3] - (b[0] * a[0] + b[1] * a[1] + b[2] * a[2]);
  for (int i = 0; i < 4; ++i) dest[i] = r[i];
  if (++count >= kRenormalizeEvery) {
    count = 0;
    Normalize(dest);
  }
}

void QuatToMatrix(const float q[4], float m[16]) {
  float n[4] = {q[0], q[1], q[2], q[3]};
  if (n[0] == 0 && n[1] == 0 && n[2] == 0 && n[3] == 0) n[3] = 1;
  Normalize(n);
  const float x = n[0], y = n[1], z = n[2], w = n[3];
  // Row by row.
  m[0] = 1 - 2 * (y * y + z * z);
  m[1] = 2 * (x * y - z * w);
  m[2] = 2 * (z * x + y * w);
  m[3] = 0;
  m[4] = 2 * (x * y + z * w);
  m[5] = 1 - 2 * (z * z + x * x);
  m[6] = 2 * (y * z - x * w);
  m[7] = 0;
  m[8] = 2 * (z * x - y * w);
  m[9] = 2 * (y * z + x * w);
  m[10] = 1 - 2 * (y * y + x * x);
  m[11] = 0;
  m[12] = m[13] = m[14] = 0;
  m[15] = 1;
}

void TrackBall(float q[4], float p1x, float p1y, float p2x, float p2y, int rotateMode) {
  if (p1x == p2x && p1y == p2y) {
    q[0] = q[1] = q[2] = 0;
    q[3] = 1;
    return;
  }
  const float p1[3] = {p1x, p1y, ProjectToBall(kBallRadius, p1x, p1y)};
  const float p2[3] = {p2x, p2y, ProjectToBall(kBallRadius, p2x, p2y)};
  float axis[3];
  switch (rotateMode) {
    case 2:
      axis[0] = 0;
      axis[1] = 0;
      axis[2] = p1x >= p2x ? -1.0f : 1.0f;
      break;
    case 3:
      axis[0] = p1y >= p2y ? -1.0f : 1.0f;
      axis[1] = 0;
      axis[2] = 0;
      break;
    case 4:
      axis[0] = 0;
      axis[1] = p1y >= p2y ? -1.0f : 1.0f;
      axis[2] = 0;
      break;
    default:
      // End point across start point: with the scene matrix read column by
      // column this carries the scene along with the mouse.
      axis[0] = p2[1] * p1[2] - p2[2] * p1[1];
      axis[1] = p2[2] * p1[0] - p2[0] * p1[2];
      axis[2] = p2[0] * p1[1] - p2[1] * p1[0];
      break;
  }
  const double dx = static_cast<double>(p1[0]) - p2[0], dy = static_cast<double>(p1[1]) - p2[1],
               dz = static_cast<double>(p1[2]) - p2[2];
  double t = std::sqrt(dx * dx + dy * dy + dz * dz) / (2.0 * kBallRadius);
  if (t > 1.0) t = 1.0;
  if (t < -1.0) t = -1.0;
  const float angle = static_cast<float>(2.0 * std::asin(t));
  QuatFromAxisAngle(axis, angle, q);
}

void TrackBallPoint(float x, float y, float width, float height, float& tx, float& ty) {
  if (width <= 0) width = 1;
  if (height <= 0) height = 1;
  tx = (2 * x - width) / width;
  ty = (height - 2 * y) / height;
}

bool FreeTrackBall = false;

void TurnTableByDrag(float dx, float dy, float width, float height) {
  if (!SceneChanged) UpdateSceneMatrix();  // SceneQuat from the angles
  float m[16];
  QuatToMatrix(SceneQuat, m);
  // The view takes world axis j to (m[4j], m[4j + 1], m[4j + 2]). A turntable
  // view Rx(elevation - 90 deg) Rz(azimuth) takes z to (0, cos e, sin e) and
  // y to (-sin a, ...), x to (cos a, ...).
  const double pi = 3.14159265358979;
  double azimuth = std::atan2(-m[4], m[0]);
  double elevation = std::asin(std::fmax(-1.0, std::fmin(1.0, static_cast<double>(m[10]))));
  azimuth += pi * dx / std::fmax(1.0f, width);
  elevation = std::fmax(-pi / 2, std::fmin(pi / 2, elevation + pi * dy / std::fmax(1.0f, height)));
  // The scene matrix is the inverse of the view: Rz(-a) Rx(90 deg - e).
  const float zAxis[3] = {0, 0, 1}, xAxis[3] = {1, 0, 0};
  float qz[4], qx[4];
  QuatFromAxisAngle(zAxis, static_cast<float>(-azimuth), qz);
  QuatFromAxisAngle(xAxis, static_cast<float>(pi / 2 - elevation), qx);
  ComposeQuat(qx, qz, SceneQuat);
  SceneChanged = true;
}

void RotateSceneByDrag(float lastX, float lastY, float x, float y, float width, float height) {
  if (RotateMode == 1 && SceneMode == 3 && !FreeTrackBall) {
    TurnTableByDrag(x - lastX, y - lastY, width, height);
    return;
  }
  float p1x, p1y, p2x, p2y;
  TrackBallPoint(lastX, lastY, width, height, p1x, p1y);
  TrackBallPoint(x, y, width, height, p2x, p2y);
  float q[4];
  TrackBall(q, p1x, p1y, p2x, p2y, RotateMode);
  SceneChanged = true;
  ComposeQuat(q, SceneQuat, SceneQuat);
}

void UpdateSceneMatrix() {
  if (SceneChanged) {
    QuatToMatrix(SceneQuat, SceneMatrix);
    return;
  }
  const double toRadians = 3.1416 / 180;
  const float zAxis[3] = {0, 0, 1}, xAxis[3] = {1, 0, 0}, yAxis[3] = {0, 1, 0};
  float qz[4], qx[4], qy[4], q[4];
  QuatFromAxisAngle(zAxis, static_cast<float>(ViewGraph.RotRoll * toRadians), qz);
  QuatFromAxisAngle(xAxis, static_cast<float>(ViewGraph.RotPitch * toRadians), qx);
  QuatFromAxisAngle(yAxis, static_cast<float>(ViewGraph.RotYaw * toRadians), qy);
  ComposeQuat(qz, qx, q);
  ComposeQuat(q, qy, q);
  QuatToMatrix(q, SceneMatrix);
  for (int i = 0; i < 4; ++i) SceneQuat[i] = q[i];
}

void AnglesFromSceneQuat() {
  float q[4] = {SceneQuat[0], SceneQuat[1], SceneQuat[2], SceneQuat[3]};
  if (q[0] == 0 && q[1] == 0 && q[2] == 0 && q[3] == 0) q[3] = 1;
  Normalize(q);
  const double x = q[0], y = q[1], z = q[2], w = q[3];
  // The rotation is yaw (y) after pitch (x) after roll (z): R = Ry Rx Rz.
  const double r02 = 2 * (x * z + y * w), r22 = 1 - 2 * (x * x + y * y);
  const double r10 = 2 * (x * y + z * w), r11 = 1 - 2 * (x * x + z * z);
  const double r12 = 2 * (y * z - x * w);
  const double r00 = 1 - 2 * (y * y + z * z), r20 = 2 * (x * z - y * w);
  double pitch = std::asin(std::fmax(-1.0, std::fmin(1.0, -r12)));
  double yaw, roll;
  if (std::fabs(std::cos(pitch)) > 1e-6) {
    yaw = std::atan2(r02, r22);
    roll = std::atan2(r10, r11);
  } else {
    // Looking straight along x: roll and yaw turn about one axis.
    roll = 0;
    yaw = std::atan2(-r20, r00);
  }
  const double toDegrees = 180 / 3.1416;
  ViewGraph.RotRoll = static_cast<float>(roll * toDegrees);
  ViewGraph.RotPitch = static_cast<float>(pitch * toDegrees);
  ViewGraph.RotYaw = static_cast<float>(yaw * toDegrees);
}

}  // namespace vt
