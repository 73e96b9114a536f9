// The canvas picDraw: an OpenGL window (compatibility profile) in a window
// container, whose mouse events go to the core's canvas handlers
// (tools/canvas_input.h). A window of its own, not a GL widget: the main
// window then stays a plain raster window, and Qt needs no second context to
// compose the canvas into it, which is most of what a GL widget costs at
// start on a software renderer.
//
// Frames are drawn in two places. An event handler that changes something
// draws a frame itself (DrawScene, Display) into the window's back buffer
// and the host's buffer swap asks for a repaint; that repaint shows the frame
// as it is. Any other repaint (a resize, the first show, a grab) runs Display
// alone.
#pragma once

#include <QImage>
#include <QSurfaceFormat>
#include <QWidget>
#include <functional>
#include <future>

class QOpenGLContext;

namespace vt::app {

class CanvasSurface;

// A context in the canvas's format, or nullptr when this display gives no
// OpenGL; made on any thread and handed to the application's.
QOpenGLContext* MakeCanvasContext();

class Canvas : public QWidget {
  Q_OBJECT
 public:
  // context: one being made for the canvas's format on another thread, taken
  // over when it is ready (until then the window waits, without holding up
  // the event loop); without one the window makes its own on its first paint.
  explicit Canvas(QWidget* parent = nullptr, std::future<QOpenGLContext*> context = {});

  // Makes the context current (when there is one) before core code draws or
  // reads pixels outside a paint.
  void MakeCurrent();
  // The end of a frame drawn by an event handler.
  void FrameDone();
  // Size in device pixels, the unit of the core's canvas coordinates.
  int DeviceWidth() const;
  int DeviceHeight() const;
  // Repaints that ran Display (repaints after an event's own frame do not).
  long paints() const { return paints_; }

  // The GL side, as a GL widget would offer it.
  bool isValid() const;
  void makeCurrent();
  QOpenGLContext* context() const;
  QSurfaceFormat format() const;
  // The frame as shown; a null image before the program has started on the
  // canvas's context.
  QImage grabFramebuffer();
  // Asks for a repaint of the canvas window.
  void update();

 signals:
  // The GL context exists and has been current on the window (its first paint).
  void contextReady();
  // The context made for the canvas elsewhere did not come: the display
  // gives no OpenGL.
  void contextRefused();

 protected:
  // Events sent to the canvas widget itself (and those of its window, which
  // are passed on here).
  void mousePressEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void mouseDoubleClickEvent(QMouseEvent* e) override;
  void wheelEvent(QWheelEvent* e) override;

 private:
  friend class CanvasSurface;
  void Initialized();
  void Resized();
  void Paint();
  // Runs a canvas handler with the context current; a fault that ends it is
  // shown as a message.
  void Handle(const std::function<void()>& handler);
  float Scale() const;

  CanvasSurface* surface_ = nullptr;
  bool started_ = false;  // the program has started on the context
  bool inPaint_ = false;
  bool frameFresh_ = false;
  long paints_ = 0;
};

}  // namespace vt::app
