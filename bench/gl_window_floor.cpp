// The floor under the start-up figures: a main window whose only content is
// an OpenGL widget in the canvas's format that clears itself. It writes the
// same report line as the desktop program when its first frame is on the
// screen, so bench/startup.sh measures both alike:
//
//   bench/startup.sh 7 build/bin/vantrel build/bin/vt_gl_window_floor
//
// With VT_FLOOR_WINDOW=1 the canvas is a QOpenGLWindow in a window container
// instead, which Qt does not compose through a second context. With
// VT_FLOOR_DRAW=1 the canvas also draws one filled triangle and one smooth
// line: the least a picture asks of the software renderer's shader compiler.
#include <GL/gl.h>

#include <QApplication>
#include <QMainWindow>
#include <QOpenGLFunctions>
#include <QOpenGLWidget>
#include <QOpenGLWindow>
#include <QWidget>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "app/surface_format.h"

namespace {

long StatusKib(const std::string& status, const char* key) {
  const size_t at = status.find(key);
  return at == std::string::npos ? 0 : std::strtol(status.c_str() + at + std::char_traits<char>::length(key), nullptr, 10);
}

// A GL widget or window that clears itself white.
template <class Surface>
class Clearing : public Surface, protected QOpenGLFunctions {
 protected:
  void initializeGL() override { this->initializeOpenGLFunctions(); }
  void paintGL() override {
    this->glClearColor(1, 1, 1, 1);
    this->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (!std::getenv("VT_FLOOR_DRAW")) return;
    glColor3f(1, 0, 0);
    glBegin(GL_TRIANGLES);
    glVertex2f(-0.5f, -0.5f);
    glVertex2f(0.5f, -0.5f);
    glVertex2f(0, 0.5f);
    glEnd();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_LINE_SMOOTH);
    glColor3f(0, 0, 1);
    glBegin(GL_LINES);
    glVertex2f(-0.9f, -0.8f);
    glVertex2f(0.9f, 0.7f);
    glEnd();
    glDisable(GL_LINE_SMOOTH);
    glDisable(GL_BLEND);
  }
};

void WriteReport(const char* report) {
  static bool written = false;
  if (written || !report) return;
  written = true;
  std::ifstream in("/proc/self/status");
  const std::string status((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(
                      std::chrono::system_clock::now().time_since_epoch())
                      .count();
  std::ofstream(report, std::ios::app) << ms << ' ' << StatusKib(status, "VmRSS:") << ' '
                                       << StatusKib(status, "VmHWM:") << '\n';
}

}  // namespace

int main(int argc, char** argv) {
  vt::app::SetCanvasSurfaceFormat();
  QApplication app(argc, argv);
  QMainWindow window;
  const char* report = std::getenv("VANTREL_STARTUP_REPORT");
  if (std::getenv("VT_FLOOR_WINDOW")) {
    auto* canvas = new Clearing<QOpenGLWindow>;
    canvas->setFormat(vt::app::CanvasSurfaceFormat());
    window.setCentralWidget(QWidget::createWindowContainer(canvas));
    QObject::connect(canvas, &QOpenGLWindow::frameSwapped, [report] { WriteReport(report); });
  } else {
    auto* canvas = new Clearing<QOpenGLWidget>;
    canvas->setFormat(vt::app::CanvasSurfaceFormat());
    window.setCentralWidget(canvas);
    QObject::connect(canvas, &QOpenGLWidget::frameSwapped, [report] { WriteReport(report); });
  }
  window.resize(1120, 760);
  window.show();
  return app.exec();
}
