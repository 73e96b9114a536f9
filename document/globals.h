// The program's global state: the flags and limits set at start, and the
// fields of the main form that the core reads and writes. ResetGlobals (in
// document.h) puts all of it back to the start values.
#pragma once

#include <string>

namespace vt {

// Scene and tools.
extern int SceneMode;      // 1 plane scene, 3 space scene, 0 before any scene
extern int ActiveTool;     // 1 point, 2 line, 4 circle, 6 text, 11 select
extern int LineToolKind;   // 1 segment, 2 line, 3 ray, 4 vector
extern int PointToolKind;  // 1 free point, 8 following point
extern std::string FollowPointId;
extern bool ShowAxis, ShowGrid, ShowCoordLines, SnapToGrid;
extern int RotateMode;  // 1 track ball, 2, 3, 4 about x, y, z
extern bool EditMode;
extern std::string EditObjectId;

// World limits of function samples.
extern float BoxMinX, BoxMaxX, BoxMinY, BoxMaxY, BoxMinZ, BoxMaxZ;
extern float ScaleX, ScaleY, ScaleZ;
extern float GridStepX, GridStepY, GridStepZ;
extern int SceneDetail;
extern bool LabelsOverlay;
extern float AniDefaultStep, AniDefaultAngle;
extern const std::string LineBreak;  // CR LF
extern const std::string TabChar;
extern std::string HelpFile;
// The program's folder: the one that holds Tutorials/ and Models/.
extern std::string SystemFolder;

// Fields of the main form.
extern bool ViewRotate, ViewZoom, ViewMove;  // the view drag flags
extern bool SceneChanged;  // SceneMatrix comes from SceneQuat rather than the angles
extern bool IsoPending;
extern float ZoomScale;
extern int CanvasWidth, CanvasHeight;
extern float LastX, LastY;
extern float DragAnchorX, DragAnchorY, DragCurrentX, DragCurrentY;
extern bool RubberBandOn;
extern bool DragMoved;
extern bool SelectPressed;
extern int FrameCounter;
// The settings dialog has been used since the last new scene.
extern bool SettingsChanged;

// Puts the values above back to their start values.
void ResetFrameGlobals();

// Locates the program's folder from the executable's place: the folder of
// the executable when it holds Tutorials/ and Models/, else the installed
// data folder. Sets SystemFolder and HelpFile.
void LocateSystemFolder();
// SystemFolder + "/" + relative path.
std::string ProgramPath(const std::string& relative);

}  // namespace vt
