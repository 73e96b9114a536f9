// File › Export Picture: the scene as PNG (at a chosen scale), SVG or PDF.
#pragma once

#include <string>

namespace vt::app {

class frmF1;

// Registers the handler mnuFileExportPicture for the window.
void InstallPictureExport(frmF1* window);

// The export itself, without questions: captures the canvas's scene and
// writes `path` (its extension picks the format). Empty on success, else the
// message to show.
std::string ExportPicture(frmF1* window, const std::string& path, double scale);

}  // namespace vt::app
