// The GL format of the canvas: a compatibility profile (the drawing is
// fixed-function OpenGL 1.x with display lists), double buffered, 8-bit
// colour channels and a 24-bit depth buffer.
#pragma once

#include <QSurfaceFormat>

namespace vt::app {

// The canvas's format.
QSurfaceFormat CanvasSurfaceFormat();

// Sets the default format, that of the window the canvas is composed into:
// the canvas's without the depth buffer, which composing does not use (on
// the software renderer it is a window-sized buffer held for nothing). Call
// before the QApplication is made; the canvas asks for its own format.
void SetCanvasSurfaceFormat();

}  // namespace vt::app
