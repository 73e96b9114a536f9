// The fixed reference of the scene, drawn inside the scene matrix before the
// objects: the grid and the axes. Module routines; the settings object
// AxisObject (view_state.h) keeps how they look for the dialogs.
#pragma once

namespace vt {

class CLine;

// The grid, in RGB(200, 150, 0), lines of width 1, lighting off meanwhile.
// Plane scene: x from -10 to 10 by 1, lines 80 long in y; y from -40 to 40,
// lines 20 long in x. Space scene: a 20 by 20 square of lines with blending
// and line smoothing on. Other scene modes draw no grid.
void DrawGrid();

// The axes as black vectors with arrow heads, ticks 0.2 long, whole numbers
// beside the ticks, the names "O", "x", "y", and in the space scene the z
// axis with its ticks, numbers and "z". Half length of y: 9 in space, else 5.
void DrawAxes();

// The two vectors the axes are drawn with, kept between frames: one for y,
// one for x and z.
CLine& AxisVectorY();
CLine& AxisVectorXZ();

}  // namespace vt
