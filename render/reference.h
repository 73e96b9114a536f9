// The fixed reference of the scene, drawn inside the scene matrix before the
// objects: the grid and the axes. Module routines; the settings object
// AxisObject (view_state.h) keeps how they look for the dialogs.
#pragma once

#include <functional>

#include "geometry/position.h"

namespace vt {

class CLine;

// How the reference looks is read from AxisObject at each compile: grid
// colours and which grids, axis colour and width, titles, numbers in units of
// pi, secondary labels, label counts (space), panels, background, and filled
// outline glyphs for the axis text ("Better fonts").

// The grid, lines of width 1, lighting off meanwhile: the primary grid in
// PriGridColor, the secondary one in SecGridColor, halving each primary cell. Plane scene: the visible part of the plane (the canvas's
// corners through the projection the scene is compiled with), lines at a
// step of 1, 2 or 5 times a power of ten that keeps them 8 pixels or more
// apart (of pi with "Show PI" for x). Space scene: whole units across the
// axes' span, with blending and line smoothing on. Other modes draw no grid.
void DrawGrid();

// The axes as vectors with arrow heads, ticks, numbers beside the ticks, "O"
// and the titles, and in the space scene the z axis. Space: each axis
// carries LabelNum whole-number ticks each side and reaches one unit beyond;
// under an axis scale (DrawnScale) its ticks show the true values at a step of
// 1, 2 or 5 times a power of ten, drawn about one unit apart or more.
// Plane: both axes across the visible part, ticks at a readable step, ticks
// and number places scaled with the view so they keep their size on the
// screen (the start view: as in space).
void DrawAxes();

// The background gradient (ShowBackground, BackColor at the top, BackColor2
// at the bottom) and the coordinate panels that are on, before the grid.
void DrawBackground();

// The step of the grid as drawn now, in x and y (plane: the compiled view's
// adaptive step; space: the ticks' step under the axis scales, whole units
// at scale 1, pi/2 in x with "Show PI").
void GridSteps(double& stepX, double& stepY);
// The nearest grid node to a point (z to the z axis's tick step, a whole
// number in the plane scene and at scale 1).
Position SnappedToGrid(const Position& p);

// The space scene's shadow ("Shadow" of the axis settings): the objects as
// light from above casts them on the floor, the plane z = min(0, lowest z of
// the document), drawn dark and see-through over what is in sight there.
// DrawShadow marks the casters (drawn by `casters`, flattened) in the
// stencil, then darkens the marked floor once per pixel; nothing without a
// stencil buffer. State is left as it was.
bool ShadowOn();
void DrawShadow(const std::function<void()>& casters);

// The two vectors the axes are drawn with, kept between frames: one for y,
// one for x and z.
CLine& AxisVectorY();
CLine& AxisVectorXZ();

}  // namespace vt
