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
  void SetViewRect(float width, float height);
  void SetVecup(float x, float y, float z);
  void SetRef(float x, float y, float z);
  void SetEye(float x, float y, float z);
  void SetScreen(int width, int height);
  void MoveView(float dx, float dy);
  void SetViewType(int type);
  void ZoomAll(const CBox& box);
  void RotateView(float angle, float x, float y, float z);
  void Zoom(float factor);
  void Selection() {}
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
extern float SceneQuat[4];     // x, y, z, w
extern float SceneMatrix[16];  // column-major, as glMultMatrixf takes it
// The ground of the space scene.
class CRegion;
CRegion& GroundRegion();

// Back to the start-up state of all of the above.
void ResetViewState();

}  // namespace vt
