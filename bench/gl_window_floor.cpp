// The floor under the start-up figures: a main window whose only content is
// an OpenGL widget in the canvas's format that clears itself. It writes the
// desktop program's report (app/startup_report.h) when its first frame is on
// the screen, so bench/startup.sh measures both alike:
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
#include <QOpenGLWidget>
#include <QOpenGLWindow>
#include <QWidget>
#include <cstdlib>

#include "app/startup_report.h"
#include "app/surface_format.h"

namespace {

// A GL widget or window that clears itself white.
template <class Surface>
class Clearing : public Surface {
 protected:
  void paintGL() override {
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
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

// The program's own report, at the first frame shown.
void FrameShown() {
  vt::app::NoteFirstPaint();
  vt::app::NoteFrameShown();
}

}  // namespace

int main(int argc, char** argv) {
  // The window a GL widget is composed into: the canvas's format without the
  // depth and stencil buffers, which composing does not use.
  QSurfaceFormat composed = vt::app::CanvasSurfaceFormat();
  composed.setDepthBufferSize(0);
  composed.setStencilBufferSize(0);
  QSurfaceFormat::setDefaultFormat(composed);
  QApplication app(argc, argv);
  QMainWindow window;
  if (std::getenv("VT_FLOOR_WINDOW")) {
    auto* canvas = new Clearing<QOpenGLWindow>;
    canvas->setFormat(vt::app::CanvasSurfaceFormat());
    window.setCentralWidget(QWidget::createWindowContainer(canvas));
    QObject::connect(canvas, &QOpenGLWindow::frameSwapped, FrameShown);
  } else {
    auto* canvas = new Clearing<QOpenGLWidget>;
    canvas->setFormat(vt::app::CanvasSurfaceFormat());
    window.setCentralWidget(canvas);
    QObject::connect(canvas, &QOpenGLWidget::frameSwapped, FrameShown);
  }
  window.resize(1120, 760);
  window.show();
  return app.exec();
}
