// File › Export Picture: the scene as PNG (at a chosen scale), SVG or PDF.
#pragma once

#include <string>

namespace vt {
struct Picture;
}

namespace vt::app {

class frmF1;

// Registers the handler mnuFileExportPicture for the window, and printing
// (print_picture.h), which draws the same picture.
void InstallPictureExport(frmF1* window);

// The export itself, without questions: captures the canvas's scene and
// writes `path` (its extension picks the format). Empty on success, else the
// message to show.
std::string ExportPicture(frmF1* window, const std::string& path, double scale);

// Captures the canvas's scene at the canvas's size (render/picture.h); the
// canvas shows its frame again afterwards. False with `error` set when there
// is no canvas or OpenGL gives no feedback.
bool CaptureCanvasPicture(frmF1* window, Picture& picture, std::string& error, bool controls = true);

}  // namespace vt::app
