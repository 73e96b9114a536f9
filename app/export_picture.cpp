#include "app/export_picture.h"

#include <QInputDialog>
#include <QStatusBar>

#include "app/canvas.h"
#include "app/frmF1.h"
#include "app/picture_file.h"
#include "app/print_picture.h"
#include "document/command_table.h"
#include "document/globals.h"
#include "document/host.h"
#include "render/frame.h"
#include "render/picture.h"

namespace vt::app {

namespace {

constexpr const char* kPictureFilter =
    "PNG picture (*.png)|*.png|SVG drawing (*.svg)|*.svg|PDF document (*.pdf)|*.pdf";

void ExportPictureCommand(frmF1* window) {
  std::string path = host().SaveFileDialog("Export Picture", kPictureFilter);
  if (path.empty()) return;
  if (PictureFormat(path).empty()) path += ".png";
  double scale = 1;
  if (PictureFormat(path) == "png") {
    // The canvas at 1 to 4 times its size in pixels.
    QStringList sizes;
    for (int k = 1; k <= 4; ++k)
      sizes << QString("%1 x %2 pixels (%3x)").arg(CanvasWidth * k).arg(CanvasHeight * k).arg(k);
    bool ok = false;
    const QString picked = QInputDialog::getItem(window, "Export Picture", "Size of the picture:", sizes, 1, false, &ok);
    if (!ok) return;
    scale = sizes.indexOf(picked) + 1;
  }
  const std::string error = ExportPicture(window, path, scale);
  if (!error.empty()) {
    host().MsgBox(error, "Export Picture");
    return;
  }
  window->statusBar()->showMessage(QString("Picture written to %1").arg(QString::fromStdString(path)), 8000);
}

}  // namespace

bool CaptureCanvasPicture(frmF1* window, Picture& picture, std::string& error, bool controls) {
  Canvas* canvas = window->picDraw();
  if (!canvas) {
    error = "There is no canvas to export.";
    return false;
  }
  canvas->makeCurrent();
  host().CanvasSize(CanvasWidth, CanvasHeight);  // the picture takes the canvas's size now
  const bool captured = CapturePicture(picture, error, controls);
  Display();  // the canvas as it was
  return captured;
}

std::string ExportPicture(frmF1* window, const std::string& path, double scale) {
  Picture picture;
  std::string error;
  if (!CaptureCanvasPicture(window, picture, error) || !WritePictureFile(picture, path, scale, error)) return error;
  return {};
}

void InstallPictureExport(frmF1* window) {
  RegisterHandler("mnuFileExportPicture", [window] { ExportPictureCommand(window); });
  InstallPrinting(window);
}

}  // namespace vt::app
