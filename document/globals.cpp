#include "document/globals.h"

#include <filesystem>
#include <system_error>

namespace vt {

int SceneMode = 0;
int ActiveTool = 11;
int LineToolKind = 1;
int PointToolKind = 1;
std::string FollowPointId;
bool ShowAxis = false, ShowGrid = false, ShowCoordLines = false, SnapToGrid = false;
int RotateMode = 0;
bool EditMode = false;
std::string EditObjectId;

float BoxMinX = -500, BoxMaxX = 500, BoxMinY = -500, BoxMaxY = 500, BoxMinZ = -500, BoxMaxZ = 500;
float ScaleX = 1, ScaleY = 1, ScaleZ = 1;
float GridStepX = 1, GridStepY = 1, GridStepZ = 1;
int SceneDetail = 1;
bool LabelsOverlay = true;
float AniDefaultStep = 5.0f, AniDefaultAngle = 90.0f;
const std::string LineBreak = "\r\n";
const std::string TabChar = "\t";
std::string HelpFile;
std::string SystemFolder = ".";

bool ViewRotate = false, ViewZoom = false, ViewMove = false;
bool SceneChanged = false;
bool IsoPending = true;
float ZoomScale = 1.0f;
int CanvasWidth = 200, CanvasHeight = 200;
float LastX = 0, LastY = 0;
float DragAnchorX = 0, DragAnchorY = 0, DragCurrentX = 0, DragCurrentY = 0;
bool RubberBandOn = false;
bool DragMoved = false;
bool SelectPressed = false;
int FrameCounter = 0;
bool SettingsChanged = false;

void ResetFrameGlobals() {
  SceneMode = 0;
  ActiveTool = 11;
  LineToolKind = 1;
  PointToolKind = 1;
  FollowPointId.clear();
  ShowAxis = ShowGrid = ShowCoordLines = SnapToGrid = false;
  RotateMode = 0;
  EditMode = false;
  EditObjectId.clear();
  BoxMinX = BoxMinY = BoxMinZ = -500;
  BoxMaxX = BoxMaxY = BoxMaxZ = 500;
  ScaleX = ScaleY = ScaleZ = 1;
  GridStepX = GridStepY = GridStepZ = 1;
  SceneDetail = 1;
  LabelsOverlay = true;
  AniDefaultStep = 5.0f;
  AniDefaultAngle = 90.0f;
  ViewRotate = ViewZoom = ViewMove = false;
  SceneChanged = false;
  IsoPending = true;
  ZoomScale = 1.0f;
  CanvasWidth = CanvasHeight = 200;
  LastX = LastY = 0;
  DragAnchorX = DragAnchorY = DragCurrentX = DragCurrentY = 0;
  RubberBandOn = false;
  DragMoved = false;
  SelectPressed = false;
  FrameCounter = 0;
  SettingsChanged = false;
}

namespace {
bool HoldsData(const std::filesystem::path& dir) {
  std::error_code ec;
  return std::filesystem::is_directory(dir / "Tutorials", ec) &&
         std::filesystem::is_directory(dir / "Models", ec);
}
}  // namespace

void LocateSystemFolder() {
  std::error_code ec;
  std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  std::filesystem::path folder;
  if (!ec && HoldsData(exe.parent_path())) {
    folder = exe.parent_path();
  } else {
    folder = VANTREL_INSTALL_DATA_DIR;
  }
  SystemFolder = folder.string();
  HelpFile = ProgramPath("help/index.html");
}

std::string ProgramPath(const std::string& relative) {
  return (std::filesystem::path(SystemFolder) / relative).string();
}

}  // namespace vt
