// vantrel: the desktop program. Its command line is one document path, the
// whole command tail.
#include <QApplication>
#include <QSurfaceFormat>
#include <string>

#include "app/frmF1.h"
#include "app/surface_format.h"

int main(int argc, char* argv[]) {
  // The canvas's format must be the default before the application exists.
  vt::app::SetCanvasSurfaceFormat();
  QApplication app(argc, argv);
  QApplication::setApplicationName("Vantrel");
  QApplication::setApplicationVersion(VANTREL_VERSION);
  QApplication::setDesktopFileName("vantrel");

  // Qt has taken its own options out of argv; the rest, blanks and all, is
  // the path.
  std::string commandLine;
  for (int i = 1; i < argc; ++i) {
    if (i > 1) commandLine += ' ';
    commandLine += argv[i];
  }

  vt::app::frmF1 window(commandLine);
  QApplication::setWindowIcon(window.windowIcon());
  window.show();
  return app.exec();
}
