#include "app/print_picture.h"

#include <QDialogButtonBox>
#include <QPainter>
#include <QPageLayout>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPushButton>
#include <QStatusBar>

#include <algorithm>

#include "app/export_picture.h"
#include "app/frmF1.h"
#include "app/picture_file.h"
#include "document/command_table.h"
#include "document/host.h"
#include "render/picture.h"

namespace vt::app {

namespace {

// A page of the usual paper with 15 mm margins, turned to the picture's shape.
void SetUpPage(QPrinter& printer, const Picture& picture) {
  printer.setDocName("Vantrel");
  printer.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
  printer.setPageOrientation(picture.width > picture.height ? QPageLayout::Landscape : QPageLayout::Portrait);
}

bool Capture(frmF1* window, Picture& picture) {
  std::string error;
  if (CaptureCanvasPicture(window, picture, error, false)) return true;
  host().MsgBox(error.empty() ? "There is nothing to print." : error, "Print", MsgButtons::OK, MsgIcon::Critical);
  return false;
}

void Preview(frmF1* window, QPrinter& printer, const Picture& picture) {
  QPrintPreviewDialog preview(&printer, window);
  preview.setObjectName("frmPrintPreview");
  preview.setWindowTitle("Print Preview");
  preview.resize(window->size() * 0.85);
  QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                   [&picture](QPrinter* p) { PrintPicture(*p, picture); });
  preview.exec();
}

void PrintCommand(frmF1* window) {
  Picture picture;
  if (!Capture(window, picture)) return;
  QPrinter printer(QPrinter::ScreenResolution);
  SetUpPage(printer, picture);
  QPrintDialog dlg(&printer, window);
  dlg.setWindowTitle("Print");
  // The dialog's own row of buttons gets Preview, which looks at the page
  // with the settings chosen so far.
  bool preview = false;
  for (QDialogButtonBox* box : dlg.findChildren<QDialogButtonBox*>()) {
    if (box->window() != &dlg) continue;  // the printer properties are a window of their own
    QPushButton* b = box->addButton("Preview...", QDialogButtonBox::ActionRole);
    b->setObjectName("cmdPreview");
    QObject::connect(b, &QPushButton::clicked, &dlg, [&] {
      preview = true;
      dlg.reject();
    });
    break;
  }
  const bool accepted = dlg.exec() == QDialog::Accepted;
  if (preview) return Preview(window, printer, picture);
  if (!accepted) return;
  if (!PrintPicture(printer, picture)) {
    host().MsgBox("The printer could not be started.", "Error", MsgButtons::OK, MsgIcon::Critical);
    return;
  }
  if (printer.outputFormat() == QPrinter::PdfFormat)
    window->statusBar()->showMessage(QString("Printed to %1").arg(printer.outputFileName()), 8000);
}

void PreviewCommand(frmF1* window) {
  Picture picture;
  if (!Capture(window, picture)) return;
  // At the screen's resolution: the preview of a high-resolution page left
  // the menus' text drawn at a few pixels afterwards. Pages stay vector.
  QPrinter printer(QPrinter::ScreenResolution);
  SetUpPage(printer, picture);
  Preview(window, printer, picture);
}

}  // namespace

bool PrintPicture(QPrinter& printer, const Picture& picture) {
  QPainter painter;
  if (picture.width <= 0 || picture.height <= 0 || !painter.begin(&printer)) return false;
  // The painter's origin is the corner of the paintable area, inside the margins.
  const QRectF area(QPointF(0, 0), printer.pageLayout().paintRectPixels(printer.resolution()).size());
  const double scale = std::min(area.width() / picture.width, area.height() / picture.height);
  const QSizeF size(picture.width * scale, picture.height * scale);
  const QRectF target(QPointF((area.width() - size.width()) / 2, (area.height() - size.height()) / 2), size);
  PaintPicture(painter, picture, target);
  return painter.end();
}

void InstallPrinting(frmF1* window) {
  RegisterHandler("mnuFilePrint", [window] { PrintCommand(window); });
  RegisterHandler("mnuFilePrintPreview", [window] { PreviewCommand(window); });
}

}  // namespace vt::app
