// The fixed reference of the scene, drawn inside the scene matrix before the
// objects: the grid and the axes. Module routines; the settings object
// AxisObject (view_state.h) keeps how they look for the dialogs.
#pragma once

namespace vt {

class CLine;

// The grid, in RGB(200, 150, 0), lines of width 1, lighting off meanwhile.
// Plane scene: the visible part of the plane (the canvas's corners through
// the projection the scene is compiled with), lines at a step of 1, 2 or 5
// times a power of ten that keeps them 8 pixels or more apart. Space scene:
// a 20 by 20 square of lines with blending and line smoothing on. Other
// scene modes draw no grid.
void DrawGrid();

// The axes as black vectors with arrow heads, ticks, numbers beside the
// ticks, the names "O", "x", "y", and in the space scene the z axis with its
// ticks, numbers and "z". Space: x from -10 to 10, y half length 10, ticks
// 0.2 long at whole numbers. Plane: both axes across the visible part, ticks
// at the grid's step, ticks and number places scaled with the view so they
// keep their size on the screen (the start view: as in space).
void DrawAxes();

// The two vectors the axes are drawn with, kept between frames: one for y,
// one for x and z.
CLine& AxisVectorY();
CLine& AxisVectorXZ();

}  // namespace vt
