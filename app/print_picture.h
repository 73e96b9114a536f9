// File › Print and File › Print Preview: the scene drawn as shapes and texts
// (the same picture as the vector exports), fitted to the page inside its
// margins, without the players' panels and the command buttons.
#pragma once

class QPrinter;

namespace vt {
struct Picture;
}

namespace vt::app {

class frmF1;

// Registers the handlers mnuFilePrint and mnuFilePrintPreview.
void InstallPrinting(frmF1* window);

// Paints the picture on one page of the printer: as large as the paintable
// area allows, aspect kept, centred. False when the printer cannot start.
bool PrintPicture(QPrinter& printer, const Picture& picture);

}  // namespace vt::app
