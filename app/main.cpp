// vantrel: the desktop program. Its command line is one document path, the
// whole command tail.
#include <QApplication>
#include <QImageReader>
#include <QTimer>
#include <string>

#include "app/canvas.h"
#include "app/frmF1.h"
#include "app/startup_report.h"
#include "document/frame_commands.h"
#include "document/recovery.h"

int main(int argc, char* argv[]) {
  vt::app::MarkStartup("main");
  QApplication app(argc, argv);
  QApplication::setApplicationName("Vantrel");
  QApplication::setApplicationVersion(VANTREL_VERSION);
  QApplication::setDesktopFileName("vantrel");
  vt::app::MarkStartup("application made");
  // The image format plugins (the window's style reads its icons with them)
  // are loaded before the driver starts loading on the other thread: loading
  // a library waits while another is being loaded.
  QImageReader::supportedImageFormats();
  vt::app::frmF1::MakeCanvasContextInBackground();

  // Qt has taken its own options out of argv; the rest, blanks and all, is
  // the path.
  std::string commandLine;
  for (int i = 1; i < argc; ++i) {
    if (i > 1) commandLine += ' ';
    commandLine += argv[i];
  }

  vt::app::frmF1 window(commandLine);
  vt::app::MarkStartup("window built");
  QApplication::setWindowIcon(window.windowIcon());
  window.show();
  vt::app::MarkStartup("window shown");

  // The recovery copy of this program: the orphans of other runs are offered
  // as soon as the program has started (before the user is at work), then
  // this one is kept up to date in the background; a clean exit removes it
  // unless unsaved work would go with it.
  vt::RecoveryKeeper recovery(vt::RecoveryFilePath());
  QObject::connect(&window, &vt::app::frmF1::programStarted, [&] {
    if (window.picDraw()) window.picDraw()->MakeCurrent();
    if (vt::OfferRecoveryCopies(vt::RecoveryFolder(), recovery.writer().path()) > 0) window.RefreshControls();
  });
  QTimer recoveryTimer;
  QObject::connect(&recoveryTimer, &QTimer::timeout, [&] {
    if (window.started()) recovery.Tick();
  });
  recoveryTimer.start(5000);

  int rc = app.exec();
  recoveryTimer.stop();
  recovery.CleanExit(!vt::UnsavedWork());
  return rc;
}
