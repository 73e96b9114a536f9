#include "document/command_table.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <system_error>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "animation/animation.h"
#include "geometry/property_commands.h"
#include "graphs/curve_form.h"
#include "graphs/surface_form.h"
#include "graphs/swept_commands.h"
#include "render/trackball.h"
#include "render/view_state.h"
#include "tools/buttons.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"
#include "tools/navigate.h"
#include "tools/constructions.h"
#include "tools/triangle_tool.h"

namespace vt {


// ---- the menu tree ----------------------------------------------------------------

namespace {

constexpr MenuRole M = MenuRole::Menu;
constexpr MenuRole P = MenuRole::Popup;
constexpr MenuRole I = MenuRole::Item;

// name, caption, parent, role, handler, shortcut, check, separator before
const std::vector<MenuItemDef> kMenus = {
    {"File", "File", "", M, "", "", false, false},
    {"mnuFileNew", "New", "File", I, "mnuFileNew", "Ctrl+N", false, false},
    {"mnuFileOpen", "Open...", "File", I, "mnuFileOpen", "Ctrl+O", false, false},
    {"mnuFileSave", "Save...", "File", I, "mnuFileSave", "Ctrl+S", false, false},
    {"mnuFileSaveAs", "SaveAs...", "File", I, "mnuFileSaveAs", "Ctrl+Shift+S", false, false},
    {"mnuFileExportPicture", "Export Picture...", "File", I, "mnuFileExportPicture", "Ctrl+E", false, true},
    {"mnuFilePrintPreview", "Print Preview...", "File", I, "mnuFilePrintPreview", "", false, false},
    {"mnuFilePrint", "Print...", "File", I, "mnuFilePrint", "Ctrl+P", false, false},
    {"mnuFileExit", "Exit", "File", I, "mnuFileExit", "Ctrl+Q", false, true},

    {"mnuEdit", "Edit", "", M, "", "", false, false},
    {"mnuFUndo", "Undo", "mnuEdit", I, "mnuFUndo", "Ctrl+Z", false, false},
    {"mnuFRedo", "Redo", "mnuEdit", I, "mnuFRedo", "Ctrl+Y", false, false},
    {"mnuEditCut", "Cut", "mnuEdit", I, "mnuEditCut", "Ctrl+X", false, true},
    {"mnuEditCopy", "Copy", "mnuEdit", I, "mnuEditCopy", "Ctrl+C", false, false},
    {"mnuEditCopyAs", "Copy As BMP", "mnuEdit", I, "mnuEditCopyAs", "", false, false},
    {"mnuEditPaste", "Paste", "mnuEdit", I, "mnuEditPaste", "Ctrl+V", false, false},
    {"mnuEditDelete", "Delete", "mnuEdit", I, "mnuEditDelete", "Delete", false, true},
    {"mnuEditDelAll", "Delete All", "mnuEdit", I, "mnuEditDelAll", "", false, false},
    {"mnuEditSelAll", "Select All", "mnuEdit", I, "mnuEditSelAll", "Ctrl+A", false, true},
    {"mnuSelGroups", "Classification Selection", "mnuEdit", M, "", "", false, false},
    {"mnuSelPoints", "Select All Points", "mnuSelGroups", I, "mnuSelPoints", "", false, false},
    {"mnuSelLines", "Select All Lines", "mnuSelGroups", I, "mnuSelLines", "", false, false},
    {"mnuSelCircles", "Select All Circles", "mnuSelGroups", I, "mnuSelCircles", "", false, false},
    {"mnuSelArcs", "Select All Arcs", "mnuSelGroups", I, "mnuSelArcs", "", false, false},
    {"mnuSelPoly", "Select All Polygons", "mnuSelGroups", I, "mnuSelPoly", "", false, false},
    {"mnuSelTexts", "Select All Texts", "mnuSelGroups", I, "mnuSelTexts", "", false, false},
    {"mnuEditPoint", "Point Properties...", "mnuEdit", I, "mnuEditPoint", "", false, true},
    {"mnuEditLine", "Line Properties...", "mnuEdit", I, "mnuEditLine", "", false, false},
    {"mnuEditRegion", "Region Properties...", "mnuEdit", I, "mnuEditRegion", "", false, false},
    {"mnuEditProp", "Properties...", "mnuEdit", I, "mnuEditProp", "", false, false},

    {"mnuView", "View", "", M, "", "", false, false},
    {"mnuFileNew2D", "2D", "mnuView", I, "mnuFileNew2D", "", false, false},
    {"mnuFileNew3D", "3D", "mnuView", I, "mnuFileNew3D", "", false, false},
    {"mnuViewMove", "Move", "mnuView", I, "mnuViewMove", "", false, true},
    {"mnuViewZoom", "Zoom", "mnuView", I, "mnuViewZoom", "", false, false},
    {"mnuViewRotX", "Rotate About X Axis", "mnuView", I, "mnuViewRotX", "", false, false},
    {"mnuViewRotY", "Rotate About Y Axis", "mnuView", I, "mnuViewRotY", "", false, false},
    {"mnuViewRotZ", "Rotate About Z Axis", "mnuView", I, "mnuViewRotZ", "", false, false},
    {"mnuViewRotate", "Track Ball", "mnuView", I, "mnuViewRotate", "", false, false},
    {"mnuViewFreeBall", "Free Track Ball", "mnuView", I, "mnuViewFreeBall", "", true, false},
    {"mnuViewISO", "ISO", "mnuView", I, "mnuViewISO", "", false, false},
    {"mnuViewZoomIn", "Zoom In", "mnuView", I, "mnuViewZoomIn", "Ctrl++; Ctrl+=", false, true},
    {"mnuViewZoomOut", "Zoom Out", "mnuView", I, "mnuViewZoomOut", "Ctrl+-", false, false},
    {"mnuViewFitAll", "Fit All", "mnuView", I, "mnuViewFitAll", "Ctrl+Shift+F", false, false},
    {"mnuViewReset", "Reset View", "mnuView", I, "mnuViewReset", "Ctrl+0", false, false},
    {"mnuViewAxis", "Show/Hide Axis", "mnuView", I, "mnuViewAxis", "", true, true},
    {"mnuViewGrid", "Show/Hide Grid", "mnuView", I, "mnuViewGrid", "", true, false},
    {"mnuViewSnap", "Snap", "mnuView", I, "mnuViewSnap", "", true, false},
    {"mnuViewCoordLines", "Coordinate Lines", "mnuView", I, "mnuViewCoordLines", "", true, false},
    {"mnuDrawHideSel", "Hide Selected", "mnuView", I, "mnuDrawHideSel", "", false, true},
    {"mnuDisShowAll", "Show All", "mnuView", I, "mnuDisShowAll", "", false, false},
    {"mnuDisShowLabels", "Show/Hide All Labels", "mnuView", I, "mnuDisShowLabels", "", false, false},
    {"mnuDisShowPoints", "Show/Hide All Points", "mnuView", I, "mnuDisShowPoints", "", false, false},
    {"mnuViewSet", "Settings...", "mnuView", I, "mnuViewSet", "", false, true},

    {"mnuDraw21", "Draw", "", M, "", "", false, false},
    {"mnuSelect", "Select", "mnuDraw21", I, "mnuSelect", "", false, false},
    {"mnuDrawPt", "Point", "mnuDraw21", M, "", "", false, true},
    {"mnuDrawP", "Free Point", "mnuDrawPt", I, "mnuDrawP", "", false, false},
    {"mnuDrawPFollow", "Following Point", "mnuDrawPt", I, "mnuDrawPFollow", "", false, false},
    {"mnuMiddleP", "Middle Point", "mnuDrawPt", I, "mnuMiddleP", "", false, false},
    {"mnuEP", "Equidistant Points", "mnuDrawPt", I, "mnuEP", "", false, false},
    {"mnuDraw2LineSt", "Epitaxial/Interpolated Point", "mnuDrawPt", I, "mnuDraw2LineSt", "", false, false},
    {"mnuDraw2SSD2D", "2D Directed Extension Point", "mnuDrawPt", I, "mnuDraw2SSD2D", "", false, false},
    {"mnuDraw2RegSSD", "Vertical Extension Point of Given Region", "mnuDrawPt", I, "mnuDraw2RegSSD", "", false,
     false},
    {"mnuInterP", "Intersection Point", "mnuDrawPt", I, "mnuInterP", "", false, false},
    {"mnuDrawL", "Line", "mnuDraw21", M, "", "", false, false},
    {"mnuDrawSeg", "Segment", "mnuDrawL", I, "mnuDrawSeg", "", false, false},
    {"mnuDrawLine", "Line", "mnuDrawL", I, "mnuDrawLine", "", false, false},
    {"mnuDrawRay", "Ray", "mnuDrawL", I, "mnuDrawRay", "", false, false},
    {"mnuDrawVec", "Vector", "mnuDrawL", I, "mnuDrawVec", "", false, false},
    {"mnuLinkLine", "Connecting Line", "mnuDrawL", I, "mnuLinkLine", "", false, false},
    {"mnuParaLine", "Paralell Line", "mnuDrawL", I, "mnuParaLine", "", false, false},
    {"mnuAngleEL", "Angle Bisector", "mnuDrawL", I, "mnuAngleEL", "", false, false},
    {"mnuQX", "Tangent Line", "mnuDrawL", I, "mnuQX", "", false, false},
    {"mnuCX1", "Vertical Line (Point to Line)", "mnuDrawL", I, "mnuCX1", "", false, false},
    {"mnuCX2", "Vertical Line (Point to Region)", "mnuDrawL", I, "mnuCX2", "", false, false},
    {"mnuDraw2IntLine", "Intersecting Line", "mnuDrawL", I, "mnuDraw2IntLine", "", false, false},
    {"mnuDraw2Circle", "Circle", "mnuDraw21", M, "", "", false, false},
    {"mnuDrawCircle", "Circle With Center Through Point", "mnuDraw2Circle", I, "mnuDrawCircle", "", false, false},
    {"mnuDraw2DJC", "Circle With Center And Radius", "mnuDraw2Circle", I, "mnuDraw2DJC", "", false, false},
    {"mnuDraw3PC", "Circle Through 3 Points", "mnuDraw2Circle", I, "mnuDraw3PC", "", false, false},
    {"mnuDraw2NQC", "Internally Tangent Circle", "mnuDraw2Circle", I, "mnuDraw2NQC", "", false, false},
    {"mnuDraw23DCir", "Normal Direction Spatial Circle", "mnuDraw2Circle", I, "mnuDraw23DCir", "", false, false},
    {"mnuDrawArc", "Arc", "mnuDraw21", M, "", "", false, false},
    {"mnuDrawArc1", "Circular Arc", "mnuDrawArc", I, "mnuDrawArc1", "", false, false},
    {"mnuDrawArc3P", "Circumcircular Arc", "mnuDrawArc", I, "mnuDrawArc3P", "", false, false},
    {"mnuDraw2ArcOnCir", "Arc On Circle", "mnuDrawArc", I, "mnuDraw2ArcOnCir", "", false, false},
    {"mnuDrawRegion", "Region", "mnuDraw21", M, "", "", false, false},
    {"mnuRegion", "Polygon", "mnuDrawRegion", I, "mnuRegion", "", false, false},
    {"mnuDraw2Fan", "Sector", "mnuDrawRegion", I, "mnuDraw2Fan", "", false, false},
    {"mnuDraw2Ribbon", "Ribbon", "mnuDrawRegion", I, "mnuDraw2Ribbon", "", false, false},
    {"mnuDraw2Sphere", "Spherical Surface", "mnuDrawRegion", I, "mnuDraw2Sphere", "", false, false},
    {"mnuDrawText", "Text", "mnuDraw21", I, "mnuDrawText", "", false, false},
    {"mnuDraw2Curve", "Curve...", "mnuDraw21", I, "mnuDraw2Curve", "", false, true},
    {"mnuDraw2Sur", "Surface...", "mnuDraw21", I, "mnuDraw2Sur", "", false, false},
    {"mnuDrawRot", "Surface/Volume of Rotation", "mnuDraw21", I, "mnuDrawRot", "", false, false},
    {"mnuDraw2Stretch", "Extruded Surface/Volume", "mnuDraw21", I, "mnuDraw2Stretch", "", false, false},
    {"mnuTri", "Triangle", "mnuDraw21", M, "", "", false, true},
    {"mnuDraw2Tri", "Triangle", "mnuTri", I, "mnuDraw2Tri", "", false, false},
    {"mnuDraw2TriEqual", "Equilateral Triangle", "mnuTri", I, "mnuDraw2TriEqual", "", false, false},
    {"mnuDraw2Tri90", "Right Angled Triangle", "mnuTri", I, "mnuDraw2Tri90", "", false, false},
    {"mnuTriWX", "Circumcenter", "mnuTri", I, "mnuTriWX", "", false, true},
    {"mnuTriNX", "Incenter", "mnuTri", I, "mnuTriNX", "", false, false},
    {"mnuTriCX", "Orthocenter", "mnuTri", I, "mnuTriCX", "", false, false},
    {"mnuTriZX", "Barycenter", "mnuTri", I, "mnuTriZX", "", false, false},
    {"mnuDraw2TriXX", "Centroid", "mnuTri", I, "mnuDraw2TriXX", "", false, false},
    {"mnuTriFM", "Fermat point", "mnuTri", I, "mnuTriFM", "", false, false},
    {"mnuDraw2Four", "Quadrangle", "mnuDraw21", M, "", "", false, false},
    {"mnuDraw2Para4", "Parallelogram", "mnuDraw2Four", I, "mnuDraw2Para4", "", false, false},
    {"mnuDraw2Rect", "Rectangle", "mnuDraw2Four", I, "mnuDraw2Rect", "", false, false},
    {"mnuDraw2E4", "Square", "mnuDraw2Four", I, "mnuDraw2E4", "", false, false},
    {"mnuDraw2TX", "Trapezoid", "mnuDraw2Four", I, "mnuDraw2TX", "", false, false},
    {"mnuDraw2XX", "Centroid", "mnuDraw2Four", I, "mnuDraw2XX", "", false, true},
    {"mnuDraw2SolidGeo", "Solid Geometry", "mnuDraw21", M, "", "", false, false},
    {"mnuDrawCube", "Cube", "mnuDraw2SolidGeo", I, "mnuDrawCube", "", false, false},
    {"mnuDrawPrism", "Pyramid", "mnuDraw2SolidGeo", I, "mnuDrawPrism", "", false, false},
    {"mnuDrawCone", "Cone", "mnuDraw2SolidGeo", I, "mnuDrawCone", "", false, false},
    {"mnuDrawCylinder", "Cylinder", "mnuDraw2SolidGeo", I, "mnuDrawCylinder", "", false, false},
    {"mnuDrawSphere", "Sphere", "mnuDraw2SolidGeo", I, "mnuDrawSphere", "", false, false},
    {"mnuButton", "Control Button", "mnuDraw21", M, "", "", false, true},
    {"mnuSHButton", "Show/Hide Button", "mnuButton", I, "mnuSHButton", "", false, false},
    {"mnuDrawScrollBT", "Scroll Button...", "mnuButton", I, "mnuDrawScrollBT", "", false, false},
    {"mnuDrawLink", "Link Button", "mnuButton", I, "mnuDrawLink", "", false, false},
    {"mnuDrawSampleBT", "Sample Button", "mnuButton", I, "mnuDrawSampleBT", "", false, false},
    {"mnuDrawCommand", "Command Button", "mnuButton", I, "mnuDrawCommand", "", false, false},
    {"mnuAngleLabel", "Corner Mark", "mnuDraw21", I, "mnuAngleLabel", "", false, false},
    {"mnuDrawPtReset", "Point Label Reset", "mnuDraw21", I, "mnuDrawPtReset", "", false, false},
    {"mnuDrawLight", "Light...", "mnuDraw21", I, "mnuDrawLight", "", false, true},

    {"mnuMe", "Measurement", "", M, "", "", false, false},
    {"mnuMVar", "Parameter...", "mnuMe", I, "mnuMVar", "", false, false},
    {"mnuMCompute", "Compute...", "mnuMe", I, "mnuMCompute", "", false, false},
    {"mnuDis", "Distance", "mnuMe", I, "mnuDis", "", false, true},
    {"mnuLength", "Length", "mnuMe", I, "mnuLength", "", false, false},
    {"mnuXL", "Slope", "mnuMe", I, "mnuXL", "", false, false},
    {"mnuAngle", "Angle", "mnuMe", I, "mnuAngle", "", false, false},
    {"mnuRadius", "Radius", "mnuMe", I, "mnuRadius", "", false, false},
    {"mnuZC", "Circum", "mnuMe", I, "mnuZC", "", false, false},
    {"mnuArea", "Area", "mnuMe", I, "mnuArea", "", false, false},
    {"mnuYXJ", "Radius Angle", "mnuMe", I, "mnuYXJ", "", false, false},
    {"mnuHC", "Arc Length", "mnuMe", I, "mnuHC", "", false, false},
    {"mnuCoord", "Coordinate", "mnuMe", M, "", "", false, true},
    {"mnuMCoord", "Coordinate", "mnuCoord", I, "mnuMCoord", "", false, false},
    {"mnuMX", "X", "mnuCoord", I, "mnuMX", "", false, false},
    {"mnuMY", "Y", "mnuCoord", I, "mnuMY", "", false, false},
    {"mnuMZ", "Z", "mnuCoord", I, "mnuMZ", "", false, false},

    {"mnuTrans", "Transform", "", M, "", "", false, false},
    {"mnuTMoving", "Translation Transform", "mnuTrans", I, "mnuTMoving", "", false, false},
    {"mnuMirrorP", "Symmetrical Transformation", "mnuTrans", I, "mnuMirrorP", "", false, false},
    {"mnuTRotate", "Rotation Transformation", "mnuTrans", I, "mnuTRotate", "", false, false},
    {"mnuTZoom", "Scale Transform", "mnuTrans", I, "mnuTZoom", "", false, false},

    {"mnuAni2", "Animation", "", M, "", "", false, false},
    {"mnuAMPlayer", "Animation Player", "mnuAni2", I, "mnuAMPlayer", "", false, false},
    {"mnuMove", "Translation Animation", "mnuAni2", I, "mnuMove", "", false, true},
    {"mnuAMRotate", "Rotating Animation", "mnuAni2", I, "mnuAMRotate", "", false, false},
    {"mnuAMZoom", "Scaling Animation", "mnuAni2", I, "mnuAMZoom", "", false, false},
    {"mnuAMPath", "Dynamic Point Animation", "mnuAni2", I, "mnuAMPath", "", false, false},
    {"mnuAMColor", "Coloring Animation", "mnuAni2", I, "mnuAMColor", "", false, false},
    {"mnuLocus", "Add a Locus", "mnuAni2", I, "mnuLocus", "", false, true},
    {"mnuAniExportFilm", "Export Film...", "mnuAni2", I, "mnuAniExportFilm", "", false, true},

    {"mnuHelp", "Help", "", M, "", "", false, false},
    {"mnuHelpCon", "Basic Tutorial", "mnuHelp", I, "mnuHelpCon", "F1", false, false},
    {"mnuHelpHome", "Home Page", "mnuHelp", I, "mnuHelpHome", "", false, true},
    {"mnuHelpCus", "Customer Support", "mnuHelp", I, "mnuHelpCus", "", false, false},
    {"mnuHelpVideo", "Video Tutorials", "mnuHelp", I, "mnuHelpVideo", "", false, false},
    {"mnuHelpTwitter", "Community Page", "mnuHelp", I, "mnuHelpTwitter", "", false, false},
    {"mnuHelpRegisterType", "Register File Type", "mnuHelp", I, "mnuHelpRegisterType", "", false, true},
    {"mnuHelpAbout", "About...", "mnuHelp", I, "mnuHelpAbout", "", false, true},

    // The canvas's context menu: each item forwards to the main menu's
    // command of the same sense.
    {"GraphEdit", "GraphEdit", "", P, "", "", false, false},
    {"mnuGraphUndo", "Undo", "GraphEdit", I, "mnuFUndo", "", false, false},
    {"mnuGraphRedo", "Redo", "GraphEdit", I, "mnuFRedo", "", false, false},
    {"mnuGraphHideSel", "Hide Selected", "GraphEdit", I, "mnuDrawHideSel", "", false, true},
    {"mnuGraphShowAll", "Show All", "GraphEdit", I, "mnuDisShowAll", "", false, false},
    {"mnuGraphShowAxis", "Show/Hide Axis", "GraphEdit", I, "mnuViewAxis", "", true, true},
    {"mnuGraphShowGrid", "Show/Hide Grid", "GraphEdit", I, "mnuViewGrid", "", true, false},
    {"mnuGraphSnap", "Snap", "GraphEdit", I, "mnuViewSnap", "", true, false},
    {"mnuGraphShowCoordLines", "Coordinate Lines", "GraphEdit", I, "mnuViewCoordLines", "", true, false},
    {"mnuGraph2D", "2D", "GraphEdit", I, "mnuFileNew2D", "", false, true},
    {"mnuGraph3D", "3D", "GraphEdit", I, "mnuFileNew3D", "", false, false},
    {"mnuGraphProp", "Properties...", "GraphEdit", I, "mnuGraphProp", "", false, true},

    // The context menu of the function list.
    {"FunEdit", "FunEdit", "", P, "", "", false, false},
    {"mnuFunEdit", "Edit...", "FunEdit", I, "mnuFunEdit", "", false, false},
    {"mnuFunCut", "Cut", "FunEdit", I, "mnuFunCut", "", false, false},
    {"mnuFunCopy", "Copy", "FunEdit", I, "mnuFunCopy", "", false, false},
    {"mnuFunDelete", "Delete", "FunEdit", I, "mnuFunDelete", "", false, false},
};

// ---- the command names ------------------------------------------------------------

const std::vector<CommandNameDef> kCommands = {
    {"File-New", "mnuFileNew"},
    {"File-Open", "mnuFileOpen"},
    {"File-Save", "mnuFileSave"},
    {"File-SaveAs", "mnuFileSaveAs"},
    {"File-Print", "mnuFilePrint"},
    {"File-ExportPicture", "mnuFileExportPicture"},
    {"File-Exit", "mnuFileExit"},
    {"Edit-Undo", "mnuFUndo"},
    {"Edit-Redo", "mnuFRedo"},
    {"Edit-Cut", "mnuEditCut"},
    {"Edit-Copy", "mnuEditCopy"},
    {"Edit-Copy As BMP", "mnuEditCopyAs"},
    {"Edit-Paste", "mnuEditPaste"},
    {"Edit-Delete", "mnuEditDelete"},
    {"Edit-Delete All", "mnuEditDelAll"},
    {"Edit-Select All", "mnuEditSelAll"},
    {"Edit-Select All Points", "mnuSelPoints"},
    {"Edit-Select All Lines", "mnuSelLines"},
    {"Edit-Select All Circles", "mnuSelCircles"},
    {"Edit-Select All Arcs", "mnuSelArcs"},
    {"Edit-Select All Polygons", "mnuSelPoly"},
    {"Edit-Select All Texts", "mnuSelTexts"},
    // Runs the handler of "Select All Texts"; documents rely on it.
    {"Edit-Point Properties", "mnuSelTexts"},
    {"Edit-Line Properties", "mnuEditLine"},
    {"Edit-Region Properties", "mnuEditRegion"},
    {"View-2D", "mnuFileNew2D"},
    {"View-3D", "mnuFileNew3D"},
    {"View-Move", "mnuViewMove"},
    {"View-Zoom", "mnuViewZoom"},
    {"View-Rotate About X Axis", "mnuViewRotX"},
    {"View-Rotate About Y Axis", "mnuViewRotY"},
    {"View-Rotate About Z Axis", "mnuViewRotZ"},
    {"View-Track Ball", "mnuViewRotate"},
    {"View-Free Track Ball", "mnuViewFreeBall"},
    {"View-ISO", "mnuViewISO"},
    {"View-Zoom In", "mnuViewZoomIn"},
    {"View-Zoom Out", "mnuViewZoomOut"},
    {"View-Fit All", "mnuViewFitAll"},
    {"View-Reset View", "mnuViewReset"},
    {"View-Show/Hide Axis", "mnuViewAxis"},
    {"View-Show/Hide Grid", "mnuViewGrid"},
    {"View-Snap", "mnuViewSnap"},
    {"View-Coordinate Lines", "mnuViewCoordLines"},
    {"View-Hide Selected", "mnuDrawHideSel"},
    {"View-Show All", "mnuDisShowAll"},
    {"View-Show/Hide All Labels", "mnuDisShowLabels"},
    {"View-Show/Hide All Points", "mnuDisShowPoints"},
    {"View-Settings", "mnuViewSet"},
    {"Draw-Select", "mnuSelect"},
    {"Draw-Free Point", "mnuDrawP"},
    {"Draw-Following Point", "mnuDrawPFollow"},
    {"Draw-Middle Point", "mnuMiddleP"},
    {"Draw-Equidistant Points", "mnuEP"},
    {"Draw-Epitaxial/Interpolated Point", "mnuDraw2LineSt"},
    {"Draw-2D Directed Extension Point", "mnuDraw2SSD2D"},
    {"Draw-Vertical Extension Point of Given Region", "mnuDraw2RegSSD"},
    {"Draw-Intersection Point", "mnuInterP"},
    {"Draw-Segment", "mnuDrawSeg"},
    {"Draw-Line", "mnuDrawLine"},
    {"Draw-Ray", "mnuDrawRay"},
    {"Draw-Vector", "mnuDrawVec"},
    {"Draw-Connecting Line", "mnuLinkLine"},
    // The key is spelt this way in documents.
    {"Draw-Paralell Line", "mnuParaLine"},
    {"Draw-Angle Bisector", "mnuAngleEL"},
    {"Draw-Tangent Line", "mnuQX"},
    {"Draw-Vertical Line (Point to Line)", "mnuCX1"},
    {"Draw-Vertical Line (Point to Region)", "mnuCX2"},
    {"Draw-Intersecting Line", "mnuDraw2IntLine"},
    {"Draw-Circle With Center Through Point", "mnuDrawCircle"},
    {"Draw-Circle With Center And Radius", "mnuDraw2DJC"},
    {"Draw-Circle Through 3 Points", "mnuDraw3PC"},
    {"Draw-Internally Tangent Circle", "mnuDraw2NQC"},
    {"Draw-Normal Direction Spatial Circle", "mnuDraw23DCir"},
    {"Draw-Circular Arc", "mnuDrawArc1"},
    {"Draw-Circumcircular Arc", "mnuDrawArc3P"},
    {"Draw-Arc On Circle", "mnuDraw2ArcOnCir"},
    {"Draw-Polygon", "mnuRegion"},
    {"Draw-Sector", "mnuDraw2Fan"},
    {"Draw-Ribbon", "mnuDraw2Ribbon"},
    {"Draw-Spherical Surface", "mnuDraw2Sphere"},
    {"Draw-Text", "mnuDrawText"},
    {"Draw-Curve", "mnuDraw2Curve"},
    {"Draw-Surface", "mnuDraw2Sur"},
    {"Draw-Surface of Rotation", "mnuDrawRot"},
    {"Draw-Stretching Surface", "mnuDraw2Stretch"},
    {"Draw-Triangle", "mnuDraw2Tri"},
    {"Draw-Equilateral Triangle", "mnuDraw2TriEqual"},
    {"Draw-Right Angled Triangle", "mnuDraw2Tri90"},
    {"Draw-Triangle-Circumcenter", "mnuTriWX"},
    {"Draw-Triangle-Incenter", "mnuTriNX"},
    {"Draw-Triangle-Orthocenter", "mnuTriCX"},
    {"Draw-Triangle-Barycenter", "mnuTriZX"},
    {"Draw-Triangle-Fermat point", "mnuTriFM"},
    {"Draw-Parallelogram", "mnuDraw2Para4"},
    {"Draw-Rectangle", "mnuDraw2Rect"},
    {"Draw-Square", "mnuDraw2E4"},
    {"Draw-Trapezoid", "mnuDraw2TX"},
    {"Draw-Cube", "mnuDrawCube"},
    {"Draw-Pyramid", "mnuDrawPrism"},
    {"Draw-Cone", "mnuDrawCone"},
    {"Draw-Cylinder", "mnuDrawCylinder"},
    {"Draw-Sphere", "mnuDrawSphere"},
    {"Draw-Show/Hide Button", "mnuSHButton"},
    {"Draw-Scroll Button", "mnuDrawScrollBT"},
    {"Draw-Link Button", "mnuDrawLink"},
    {"Draw-Sample Button", "mnuDrawSampleBT"},
    {"Draw-Command Button", "mnuDrawCommand"},
    {"Draw-Corner Mark", "mnuAngleLabel"},
    {"Draw-Light", "mnuDrawLight"},
    {"Measurement-Parameter", "mnuMVar"},
    {"Measurement-Compute", "mnuMCompute"},
    {"Measurement-Distance", "mnuDis"},
    {"Measurement-Length", "mnuLength"},
    {"Measurement-Slope", "mnuXL"},
    {"Measurement-Angle", "mnuAngle"},
    {"Measurement-Radius", "mnuRadius"},
    {"Measurement-Circum", "mnuZC"},
    {"Measurement-Area", "mnuArea"},
    {"Measurement-Radius Angle", "mnuYXJ"},
    {"Measurement-Arc Length", "mnuHC"},
    {"Measurement-Coordinate", "mnuMCoord"},
    {"Measurement-CoordinateX", "mnuMX"},
    {"Measurement-CoordinateY", "mnuMY"},
    {"Measurement-CoordinateZ", "mnuMZ"},
    {"Transform-Translation", "mnuTMoving"},
    {"Transform-Symmetrical", "mnuMirrorP"},
    {"Transform-Rotation", "mnuTRotate"},
    {"Transform-Scale", "mnuTZoom"},
    {"Animation-Player", "mnuAMPlayer"},
    {"Animation-Translation", "mnuMove"},
    {"Animation-Rotating", "mnuAMRotate"},
    {"Animation-Scaling", "mnuAMZoom"},
    {"Animation-Dynamic Point", "mnuAMPath"},
    {"Animation-Coloring", "mnuAMColor"},
    {"Animation-Add a Locus", "mnuLocus"},
};

// ---- the toolbars -------------------------------------------------------------------

// toolbar, index, handler, icon, hover text, shown pressed
const std::vector<ToolbarButtonDef> kToolbars = {
    {1, 2, "mnuFileNew", "new", "Create a new canvas", false},
    {1, 4, "mnuFileOpen", "open", "Open file", false},
    {1, 5, "mnuFileSave", "save", "Save file", false},
    {1, 6, "mnuFileSaveAs", "saveas", "Save file as", false},
    {1, 8, "mnuFilePrint", "print", "Print", false},
    {1, 10, "mnuEditCut", "cut", "Cut the selected graphs", false},
    {1, 11, "mnuEditCopy", "copy", "Copy the selected graphs", false},
    {1, 12, "mnuEditCopyAs", "copyas", "Copy graphs as bitmap", false},
    {1, 13, "mnuEditPaste", "paste", "Paste", false},
    {1, 14, "mnuFUndo", "undo", "Undo", false},
    {1, 15, "mnuFRedo", "redo", "Redo", false},
    {1, 16, "mnuEditDelete", "delete", "Delete the selected graphs", false},
    {1, 18, "mnuHelpCon", "help", "Get online help", false},
    {1, 20, "mnuFileNew2D", "scene2d", "2D scene", false},
    {1, 21, "mnuFileNew3D", "scene3d", "3D scene", false},
    {1, 23, "mnuViewAxis", "axis", "Show/Hide axis", true},
    {1, 24, "mnuViewGrid", "grid", "Show/Hide grid", true},
    {1, 25, "mnuViewSnap", "snap", "Snap to the nearest grid node or not", true},
    {1, 26, "mnuViewCoordLines", "coordlines", "Show/Hide coordinate lines of the selected point", true},
    {1, 28, "mnuAMPlayer", "aniplayer", "Animation player", false},
    {1, 29, "mnuMVar", "parameter", "Add a parameter", false},
    {1, 30, "mnuMCompute", "compute", "Generate a new parameter by computing", false},
    {1, 31, "mnuMove", "anitranslate", "Translating animation", false},
    {1, 32, "mnuAMRotate", "anirotate", "Rotate animation", false},
    {1, 33, "mnuAMZoom", "anizoom", "Zoom animation", false},
    {1, 34, "mnuAMPath", "anipoint", "Dynamic point animation", false},
    {1, 35, "mnuAMColor", "anicolor", "Color animation", false},
    {1, 36, "mnuLocus", "locus", "Add a locus", false},

    {2, 2, "mnuSelect", "select", "Select", true},
    {2, 4, "mnuDrawP", "point", "Add a point", true},
    {2, 5, "mnuDrawSeg", "segment", "Add a segment", true},
    {2, 6, "mnuDrawCircle", "circle", "Add a circle", true},
    {2, 7, "mnuDrawArc1", "arc", "Add an arc", false},
    {2, 8, "mnuDraw2Tri", "triangle", "Add a triangle", true},
    {2, 9, "mnuDraw2Para4", "parallelogram", "Add a parallelogram", false},
    {2, 10, "mnuDraw2TriEqual", "equilateral", "Add an equilateral triangle", false},
    {2, 11, "mnuDraw2Rect", "rectangle", "Add a rectangle", false},
    {2, 12, "mnuRegion", "polygon", "Add a polygon", false},
    {2, 13, "mnuDraw2Curve", "curve", "Add function curves", false},
    {2, 14, "mnuDrawText", "text", "Add texts", true},
    {2, 16, "mnuDrawCube", "cube", "Add a cube", false},
    {2, 17, "mnuDrawPrism", "pyramid", "Add a pyramid", false},
    {2, 18, "mnuDrawCone", "cone", "Add a cone", false},
    {2, 19, "mnuDrawCylinder", "cylinder", "Add a cylinder", false},
    {2, 20, "mnuDrawSphere", "sphere", "Add a sphere", false},
    {2, 21, "mnuDraw2Sur", "surface", "Add 3d curves or function surfaces", false},
    {2, 22, "mnuDraw2Fan", "sector", "Add a sector", false},
    {2, 23, "mnuDraw2Ribbon", "ribbon", "Add a ribbon", false},
    {2, 24, "mnuDraw2Sphere", "sphericalsurface", "Add a spherical surface", false},
    {2, 25, "mnuDrawRot", "rotation", "Add a surface of rotation", false},
    {2, 26, "mnuDraw2Stretch", "extrusion", "Add an extruded surface", false},
    {2, 28, "mnuInterP", "interpoint", "Add an intersection point", false},
    {2, 29, "mnuDraw2IntLine", "interline", "Add an intersecting line", false},
    {2, 31, "mnuViewISO", "iso", "ISO view", false},
    {2, 32, "mnuViewMove", "move", "Move", true},
    {2, 33, "mnuViewRotate", "rotate", "Rotate", true},
    {2, 34, "mnuViewZoom", "zoom", "Zoom", true},
};

const std::vector<DropDownDef> kDropDowns = {
    {"barFreePoint", 2, 4, "mnuDrawP", "point"},
    {"barFollowP", 2, 4, "mnuDrawPFollow", "followpoint"},
    {"barSegment", 2, 5, "mnuDrawSeg", "segment"},
    {"barLine", 2, 5, "mnuDrawLine", "line"},
    {"barRay", 2, 5, "mnuDrawRay", "ray"},
    {"barVect", 2, 5, "mnuDrawVec", "vector"},
    {"barCircle1", 2, 6, "mnuDrawCircle", "circle"},
    {"barCircle2", 2, 6, "mnuDraw2DJC", "circleradius"},
    {"barCircle3", 2, 6, "mnuDraw3PC", "circle3p"},
    {"barCircle4", 2, 6, "mnuDraw2NQC", "circletangent"},
    {"barCircle5", 2, 6, "mnuDraw23DCir", "circlespace"},
    {"barArc1", 2, 7, "mnuDrawArc1", "arc"},
    {"barArc2", 2, 7, "mnuDrawArc3P", "arc3p"},
    {"barArc3", 2, 7, "mnuDraw2ArcOnCir", "arconcircle"},
};

struct Handler {
  std::function<void()> run;
  std::function<bool()> enabled;
  std::function<bool()> checked;
};

std::map<std::string, Handler>& Handlers() {
  static std::map<std::string, Handler> h;
  return h;
}

}  // namespace

const std::vector<MenuItemDef>& MenuTable() { return kMenus; }

const MenuItemDef* FindMenuItem(const std::string& name) {
  for (const MenuItemDef& m : kMenus)
    if (name == m.name) return &m;
  return nullptr;
}

const std::vector<CommandNameDef>& CommandTable() { return kCommands; }

const char* CommandHandler(const std::string& command) {
  for (const CommandNameDef& c : kCommands)
    if (command == c.command) return c.handler;
  return nullptr;
}

const std::vector<ToolbarButtonDef>& ToolbarTable() { return kToolbars; }

int ToolbarLength(int toolbar) {
  int n = 0;
  for (const ToolbarButtonDef& b : kToolbars)
    if (b.toolbar == toolbar && b.index > n) n = b.index;
  return n;
}

const ToolbarButtonDef* FindToolbarButton(int toolbar, int index) {
  for (const ToolbarButtonDef& b : kToolbars)
    if (b.toolbar == toolbar && b.index == index) return &b;
  return nullptr;
}

const std::vector<DropDownDef>& DropDownTable() { return kDropDowns; }

// ---- handlers -----------------------------------------------------------------------

void RegisterHandler(const std::string& name, std::function<void()> run, std::function<bool()> enabled,
                     std::function<bool()> checked) {
  if (!run) {
    UnregisterHandler(name);
    return;
  }
  Handlers()[name] = Handler{std::move(run), std::move(enabled), std::move(checked)};
}

void UnregisterHandler(const std::string& name) { Handlers().erase(name); }
void ClearHandlers() { Handlers().clear(); }

bool HandlerRegistered(const std::string& name) { return Handlers().count(name) > 0; }

bool HandlerEnabled(const std::string& name) {
  auto it = Handlers().find(name);
  if (it == Handlers().end()) return false;
  return !it->second.enabled || it->second.enabled();
}

bool HandlerChecked(const std::string& name) {
  auto it = Handlers().find(name);
  return it != Handlers().end() && it->second.checked && it->second.checked();
}

bool RunHandler(const std::string& name) {
  auto it = Handlers().find(name);
  if (it == Handlers().end()) return false;
  // A copy: the handler may replace its own registration.
  std::function<void()> run = it->second.run;
  run();
  return true;
}

bool DoCommand(const std::string& command) {
  const char* handler = CommandHandler(command);
  return handler && RunHandler(handler);
}

void RegisterFrameCommands() {
  auto toolThere = [](ToolSlot s) { return [s] { return ToolRegistered(s); }; };
  auto toolActive = [](int tool) { return [tool] { return ActiveTool == tool; }; };

  RegisterHandler("mnuFileNew", mnuFileNew_Click);
  RegisterHandler("mnuFileOpen", mnuFileOpen_Click);
  RegisterHandler("mnuFileSave", [] { mnuFileSave_Click(); });
  RegisterHandler("mnuFileSaveAs", [] { mnuFileSaveAs_Click(); });

  RegisterHandler("mnuFUndo", mnuFUndo_Click, [] { return UndoEnabled; });
  RegisterHandler("mnuFRedo", mnuFRedo_Click, [] { return RedoEnabled; });
  RegisterHandler("mnuEditCut", mnuEditCut_Click);
  RegisterHandler("mnuEditCopy", mnuEditCopy_Click);
  RegisterHandler("mnuEditCopyAs", mnuEditCopyAs_Click);
  RegisterHandler("mnuEditPaste", mnuEditPaste_Click);
  RegisterHandler("mnuEditDelete", mnuEditDelete_Click);
  RegisterHandler("mnuEditDelAll", mnuEditDelAll_Click);

  RegisterHandler("mnuFileNew2D", mnuFileNew2D_Click);
  RegisterHandler("mnuFileNew3D", mnuFileNew3D_Click);
  RegisterHandler("mnuViewISO", mnuViewISO_Click);
  RegisterHandler("mnuViewZoomIn", mnuViewZoomIn_Click);
  RegisterHandler("mnuViewZoomOut", mnuViewZoomOut_Click);
  RegisterHandler("mnuViewFitAll", mnuViewFitAll_Click);
  RegisterHandler("mnuViewReset", mnuViewReset_Click);
  RegisterHandler("mnuViewMove", mnuViewMove_Click, {}, [] { return ViewMove; });
  RegisterHandler("mnuViewZoom", mnuViewZoom_Click, {}, [] { return ViewZoom; });
  RegisterHandler("mnuViewRotate", mnuViewRotate_Click, {}, [] { return ViewRotate && RotateMode == 1; });
  RegisterHandler("mnuViewFreeBall", mnuViewFreeBall_Click, {}, [] { return FreeTrackBall; });
  RegisterHandler("mnuViewRotX", mnuViewRotX_Click);
  RegisterHandler("mnuViewRotY", mnuViewRotY_Click);
  RegisterHandler("mnuViewRotZ", mnuViewRotZ_Click);
  RegisterHandler("mnuViewAxis", mnuViewAxis_Click, {}, [] { return ShowAxis; });
  RegisterHandler("mnuViewGrid", mnuViewGrid_Click, {}, [] { return ShowGrid; });
  RegisterHandler("mnuViewSnap", mnuViewSnap_Click, {}, [] { return SnapToGrid; });
  RegisterHandler("mnuViewCoordLines", mnuViewCoordLines_Click, {}, [] { return ShowCoordLines; });
  RegisterHandler("mnuDrawHideSel", mnuDrawHideSel_Click);
  RegisterHandler("mnuDisShowAll", mnuDisShowAll_Click);
  RegisterHandler("mnuDisShowLabels", mnuDisShowLabels_Click);
  RegisterHandler("mnuDisShowPoints", mnuDisShowPoints_Click);

  // The tool commands are there once their tools are.
  RegisterHandler("mnuSelect", mnuSelect_Click, toolThere(ToolSlot::Select), toolActive(11));
  RegisterHandler("mnuDrawP", mnuDrawP_Click, toolThere(ToolSlot::Point), toolActive(1));
  RegisterHandler("mnuDrawPFollow", mnuDrawPFollow_Click, toolThere(ToolSlot::Point));
  RegisterHandler("mnuDrawSeg", mnuDrawSeg_Click, toolThere(ToolSlot::Line), toolActive(2));
  RegisterHandler("mnuDrawLine", mnuDrawLine_Click, toolThere(ToolSlot::Line));
  RegisterHandler("mnuDrawRay", mnuDrawRay_Click, toolThere(ToolSlot::Line));
  RegisterHandler("mnuDrawVec", mnuDrawVec_Click, toolThere(ToolSlot::Line));
  RegisterHandler("mnuDrawCircle", mnuDrawCircle_Click, toolThere(ToolSlot::Circle), toolActive(4));
  RegisterHandler("mnuDrawText", mnuDrawText_Click, toolThere(ToolSlot::Text), toolActive(6));

  RegisterHandler("mnuHelpCon", mnuHelpCon_Click);
  RegisterHandler("mnuHelpHome", mnuHelpHome_Click);
  RegisterHandler("mnuHelpCus", mnuHelpCus_Click);
  RegisterHandler("mnuHelpVideo", mnuHelpVideo_Click);
  RegisterHandler("mnuHelpTwitter", mnuHelpTwitter_Click);
  RegisterHandler("mnuHelpAbout", mnuHelpAbout_Click);
}

void RegisterAllCommands() {
  RegisterFrameCommands();
  // Subsystems add their Register...Commands() calls here.
  RegisterPropertyCommands();
  RegisterToolCommands();
  RegisterCurveCommands();
  RegisterSurfaceCommands();
  RegisterSweptCommands();
  RegisterAnimationCommands();
  RegisterButtonCommands();
  RegisterConstructionCommands();
  RegisterTriangleTool();  // after the ready-made figures: the triangle is drawn with clicks
}

// ---- capture, copy as bitmap --------------------------------------------------

Image CaptureCanvasBitmap() {
  Image img = host().CaptureCanvas();
  if (img.empty() || img.rgb.size() < static_cast<size_t>(img.width) * img.height * 3) return Image();
  if ((img.width * 3) % 4 == 0 || img.width <= 2) return img;
  // A row of the device-independent bitmap is made a whole number of 4-byte
  // words by dropping 2 pixels at the right.
  Image cut;
  cut.width = img.width - 2;
  cut.height = img.height;
  cut.rgb.resize(static_cast<size_t>(cut.width) * cut.height * 3);
  for (int y = 0; y < img.height; ++y) {
    const std::uint8_t* src = img.rgb.data() + static_cast<size_t>(y) * img.width * 3;
    std::copy(src, src + static_cast<size_t>(cut.width) * 3, cut.rgb.data() + static_cast<size_t>(y) * cut.width * 3);
  }
  return cut;
}

namespace {
void Put16(std::string& s, std::uint32_t v) {
  s += static_cast<char>(v & 0xFF);
  s += static_cast<char>((v >> 8) & 0xFF);
}
void Put32(std::string& s, std::uint32_t v) {
  Put16(s, v & 0xFFFF);
  Put16(s, v >> 16);
}
std::uint32_t Get16(const std::string& s, size_t at) {
  return static_cast<std::uint8_t>(s[at]) | (static_cast<std::uint32_t>(static_cast<std::uint8_t>(s[at + 1])) << 8);
}
std::uint32_t Get32(const std::string& s, size_t at) { return Get16(s, at) | (Get16(s, at + 2) << 16); }
}  // namespace

bool WriteBitmapFile(const std::string& path, const Image& image) {
  if (image.empty() || image.rgb.size() < static_cast<size_t>(image.width) * image.height * 3) return false;
  const std::uint32_t rowBytes = (static_cast<std::uint32_t>(image.width) * 3 + 3) & ~3u;
  const std::uint32_t dataBytes = rowBytes * static_cast<std::uint32_t>(image.height);
  std::string out;
  out.reserve(54 + dataBytes);
  out += "BM";
  Put32(out, 54 + dataBytes);
  Put32(out, 0);
  Put32(out, 54);
  Put32(out, 40);
  Put32(out, static_cast<std::uint32_t>(image.width));
  Put32(out, static_cast<std::uint32_t>(image.height));  // positive: rows bottom-up
  Put16(out, 1);
  Put16(out, 24);
  Put32(out, 0);  // no compression
  Put32(out, dataBytes);
  Put32(out, 2835);  // 72 dots per inch
  Put32(out, 2835);
  Put32(out, 0);
  Put32(out, 0);
  for (int y = image.height - 1; y >= 0; --y) {
    const std::uint8_t* row = image.rgb.data() + static_cast<size_t>(y) * image.width * 3;
    for (int x = 0; x < image.width; ++x) {
      out += static_cast<char>(row[x * 3 + 2]);
      out += static_cast<char>(row[x * 3 + 1]);
      out += static_cast<char>(row[x * 3]);
    }
    for (std::uint32_t pad = static_cast<std::uint32_t>(image.width) * 3; pad < rowBytes; ++pad) out += '\0';
  }
  std::ofstream f(path, std::ios::binary | std::ios::trunc);
  if (!f) return false;
  f.write(out.data(), static_cast<std::streamsize>(out.size()));
  return static_cast<bool>(f);
}

bool ReadBitmapFile(const std::string& path, Image& image) {
  std::ifstream f(path, std::ios::binary);
  if (!f) return false;
  std::string s((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
  if (s.size() < 54 || s[0] != 'B' || s[1] != 'M') return false;
  const std::uint32_t offset = Get32(s, 10);
  const std::int32_t width = static_cast<std::int32_t>(Get32(s, 18));
  const std::int32_t rawHeight = static_cast<std::int32_t>(Get32(s, 22));
  if (Get16(s, 26) != 1 || Get16(s, 28) != 24 || Get32(s, 30) != 0) return false;
  if (width <= 0 || rawHeight == 0 || width > 32767 || rawHeight > 32767 || rawHeight < -32767) return false;
  const bool bottomUp = rawHeight > 0;
  const int height = bottomUp ? rawHeight : -rawHeight;
  const size_t rowBytes = (static_cast<size_t>(width) * 3 + 3) & ~static_cast<size_t>(3);
  if (offset > s.size() || s.size() - offset < rowBytes * static_cast<size_t>(height)) return false;
  Image out;
  out.width = width;
  out.height = height;
  out.rgb.resize(static_cast<size_t>(width) * height * 3);
  for (int y = 0; y < height; ++y) {
    const int fileRow = bottomUp ? height - 1 - y : y;
    const char* src = s.data() + offset + rowBytes * static_cast<size_t>(fileRow);
    std::uint8_t* dst = out.rgb.data() + static_cast<size_t>(y) * width * 3;
    for (int x = 0; x < width; ++x) {
      dst[x * 3] = static_cast<std::uint8_t>(src[x * 3 + 2]);
      dst[x * 3 + 1] = static_cast<std::uint8_t>(src[x * 3 + 1]);
      dst[x * 3 + 2] = static_cast<std::uint8_t>(src[x * 3]);
    }
  }
  image = std::move(out);
  return true;
}

void mnuEditCopyAs_Click() {
  RedrawScene();
  host().ProcessEvents();
  Image picture = CaptureCanvasBitmap();
  if (picture.empty()) return;
  // The picture goes through temp.bmp in the program's folder; where that
  // folder cannot be written (an installed program) the temporary folder
  // takes the file.
  std::string path = ProgramPath("temp.bmp");
  if (!WriteBitmapFile(path, picture)) {
    std::error_code ec;
    path = (std::filesystem::temp_directory_path(ec) / "temp.bmp").string();
    if (ec || !WriteBitmapFile(path, picture)) {
      host().SetClipboardImage(picture);
      return;
    }
  }
  Image loaded;
  host().SetClipboardImage(ReadBitmapFile(path, loaded) ? loaded : picture);
}

// ---- hide and show --------------------------------------------------------------------

void mnuDrawHideSel_Click() {
  for (Kind k : kAllKinds) {
    CollectionBase& set = Sel.Of(k);
    std::vector<std::string> ids;
    for (int i = 1; i <= set.count(); ++i) ids.push_back(set.ItemBase(i)->ID);
    CollectionBase& doc = Doc.Of(k);
    for (const std::string& id : ids) {
      int j = doc.FindId(id);
      if (!j) continue;
      DocObject* o = doc.ItemBase(j);
      o->Hide = true;
      // A hidden object can be neither seen nor picked: it leaves the
      // selection too.
      DeselectObject(*o);
      o->SetDrawMode(1);
    }
  }
  PushSnapshot();
  RedrawScene();
}

void mnuDisShowAll_Click() {
  for (Kind k : kAllKinds) {
    CollectionBase& doc = Doc.Of(k);
    for (int i = 1; i <= doc.count(); ++i) doc.ItemBase(i)->Hide = false;
  }
  PushSnapshot();
  RedrawScene();
}

// ---- help -----------------------------------------------------------------------------

namespace {
// The help ships with the program; the web pages of the menu are its sections.
void ShowHelpSection(const char* section) {
  std::error_code ec;
  if (HelpFile.empty() || !std::filesystem::is_regular_file(HelpFile, ec)) {
    host().MsgBox("The help file " + HelpFile + " cannot be found.", "Error", MsgButtons::OK, MsgIcon::Exclamation);
    return;
  }
  host().ShowHelp(HelpFile, section);
}
}  // namespace

void mnuHelpCon_Click() { ShowHelpSection(""); }
void mnuHelpHome_Click() { ShowHelpSection("about"); }
void mnuHelpCus_Click() { ShowHelpSection("support"); }
void mnuHelpVideo_Click() { ShowHelpSection("tutorials"); }
void mnuHelpTwitter_Click() { ShowHelpSection("sharing"); }

void mnuHelpAbout_Click() {
  std::string text = "Vantrel ";
  text += VANTREL_VERSION;
  text += "\n";
  text += "A workbench for school mathematics: geometry in the plane and in space, curves, surfaces, "
          "measurements and animation.\n"
          "Help > Basic Tutorial (F1) explains the window and the tools.";
  host().MsgBox(text, "About Vantrel", MsgButtons::OK, MsgIcon::Information);
}

}  // namespace vt
