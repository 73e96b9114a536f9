// The GL format of the canvas: a compatibility profile (the drawing is
// fixed-function OpenGL 1.x with display lists), double buffered, 8-bit
// colour channels and a 24-bit depth buffer.
#pragma once

#include <QSurfaceFormat>

namespace vt::app {

// The canvas's format (with an 8-bit stencil buffer for the space scene's
// shadow).
QSurfaceFormat CanvasSurfaceFormat();

}  // namespace vt::app
