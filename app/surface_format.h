// The GL format of the canvas: a compatibility profile (the drawing is
// fixed-function OpenGL 1.x with display lists), double buffered, 8-bit
// colour channels and a 24-bit depth buffer.
#pragma once

namespace vt::app {

// Sets the format as the default; call before the QApplication is made.
void SetCanvasSurfaceFormat();

}  // namespace vt::app
