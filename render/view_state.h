// The view objects of the frame: the graph wrappers ViewGraph and GraphList
// (Cls8), the camera View (Cls4), the light MainLight (Cls10), the reference
// settings AxisObject (Cls3), and the scene rotation.
#pragma once

#include <string>
#include <vector>

#include "document/objects.h"
#include "geometry/position.h"

namespace vt {

// Graph wrapper: the scene's rotation angles (degrees), its busy flag and its
// function list (ids of function graphs; no command fills it, so its legend
// never shows).
class Cls8 {
 public:
  float RotRoll = 0, RotPitch = 0, RotYaw = 0;
  bool Busy = false;
  std::vector<std::string> FunList;
  // The box of everything the document draws (used by the perspective view).
  CBox GetBox() const;
};

// The camera: a look-at camera with an orthographic or perspective volume.
class Cls4 {
 public:
  int ProjectType = 1;  // 1 orthographic, 2 perspective
  float ScreenWidth = 200, ScreenHeight = 200;
  float VolWidth = 40, VolHeight = 40;
  float VolNear = 0.001f, VolFar = 2000;
  float Volleft = 0, VolRight = 0, VolTop = 0, VolBottom = 0;
  Position EyePos{0, 0, 50}, RefPos{0, 0, 0};
  Position VecUp{0, 1, 0};

  void GetViewRect(float& width, float& height) const;
  // Keeps the height; the width follows the screen's aspect.
  void SetViewRect(float width, float height);
  void SetVecup(float x, float y, float z);
  void SetRef(float x, float y, float z);
  void SetEye(float x, float y, float z);
  // The canvas size: the viewport from (0, 0) (when a context is current), a
  // height of 0 taken as 1, the volume's width following the aspect.
  void SetScreen(int width, int height);
  // Moves eye and reference by fractions of the canvas, so the picture
  // follows the mouse.
  void MoveView(float dx, float dy);
  // Eye around the reference at the present distance (0 taken as 50, 30000
  // and more as 10000): 1 +z, 2 -z, 3 +y, 4 -y, 5 +x, 6 -x, 7 (-1, 1, -1),
  // 8 (1, -1, 1), 9 (1, 1, 1), 10 (-1, -1, -1); other numbers do nothing.
  void SetViewType(int type);
  // Fits the volume to the box (in axis units, ScaleX..ScaleZ) and centres it;
  // the viewing direction stays. A box without extent only centres.
  void ZoomAll(const CBox& box);
  // Turns the eye about the axis through the reference; angle in radians.
  void RotateView(float angle, float x, float y, float z);
  // Scales the volume; factors at or below 0 are refused.
  void Zoom(float factor);
  void Selection() {}
  // Loads projection and modelview for a frame (frame.cpp): mode 0 a plain
  // frame, otherwise a pick rectangle of pickW x pickH around (pickX, pickY).
  void Projection(float pickX, float pickY, float pickW, float pickH, int mode);
};

// Two lights of the fixed-function pipeline and the light model.
class Cls10 {
 public:
  Cls10();
  bool Enabled[2];
  float Specular[2][4];
  float Amission[2][4];  // ambient colour of each light
  float Diffuse[2][4];
  float Position[2][4];
  float GlobalAmbient[4];
  float TwoSides[4];
  bool LightingOn = true;  // the master flag

  void SetLight() const;
};

// Settings of the reference (axes, grid, background).
class Cls3 {
 public:
  Cls3();
  bool ShowShadow, ShowSecondaryLabel, ShowPI;
  std::uint32_t PriGridColor, SecGridColor, BackColor, BackColor2;
  int BackStyle;
  bool ShowBackground, ShowprimaryGrid, ShowSecondaryGrid;
  int AxisStyle;
  bool BetterFonts;
  std::uint32_t AxisColor;
  float AxisWidth;
  bool Show;
  int YZPanelMaterial, XZPanelMaterial, XYPanelMaterial;
  std::uint32_t YZGridColor, XZGridColor, XYGridColor, YZPanelColor, XZPanelColor, XYPanelColor;
  bool ShowYZZGrid, ShowXZZGrid, ShowXYYGrid;
  std::string TitleZ, TitleY, TitleX;
  int LabelNumZ, LabelNumY, LabelNumX;
  bool ShowYZYGrid, ShowXZXGrid, ShowXYXGrid, ShowYZPanel, ShowXZPanel, ShowXYPanel;

  void SetDefault();
};

extern Cls8 ViewGraph;
extern Cls8 GraphList;
extern Cls4 View;
extern Cls10 MainLight;
extern Cls3 AxisObject;
extern float SceneQuat[4];  // x, y, z, w
// The rotation matrix of SceneQuat written row by row, handed to
// glMultMatrixf as it stands (see trackball.h for what that means).
extern float SceneMatrix[16];
// The ground of the space scene.
class CRegion;
CRegion& GroundRegion();

// The axis scale the scene draws an axis with (0 x, 1 y, 2 z): ScaleX, ScaleY
// or ScaleZ in the space scene (a z scale of 0.2 draws z a fifth as tall),
// 1 in the plane scene, which draws x and y 1 to 1.
float DrawnScale(int axis);
// glScalef of the three drawn scales (nothing when all are 1), with
// GL_NORMALIZE so that lit normals stay unit under an uneven scale. Called
// after SceneMatrix wherever the objects are drawn, picked or projected.
void MultSceneScale();

// The settings a document keeps (projection, view limits, AxisObject) back
// to their defaults, for a new document (render/settings_record.cpp).
void ResetSceneSettings();

// Back to the start-up state of all of the above.
void ResetViewState();

}  // namespace vt
