// The canvas picDraw: an OpenGL widget (compatibility profile) whose mouse
// events go to the core's canvas handlers (tools/canvas_input.h).
//
// Frames are drawn in two places. An event handler that changes something
// draws a frame itself (DrawScene, Display) into the widget's framebuffer
// and the host's buffer swap asks for a repaint; that repaint shows the frame
// as it is. Any other repaint (a resize, the first show, a grab) runs Display
// alone.
#pragma once

#include <QOpenGLWidget>
#include <functional>

namespace vt::app {

class Canvas : public QOpenGLWidget {
  Q_OBJECT
 public:
  explicit Canvas(QWidget* parent = nullptr);

  // Makes the context current (when there is one) before core code draws or
  // reads pixels outside paintGL.
  void MakeCurrent();
  // The end of a frame drawn by an event handler.
  void FrameDone();
  // Size in device pixels, the unit of the core's canvas coordinates.
  int DeviceWidth() const;
  int DeviceHeight() const;
  // Repaints that ran Display (repaints after an event's own frame do not).
  long paints() const { return paints_; }

 signals:
  // The GL context exists and is current (from initializeGL).
  void contextReady();

 protected:
  void initializeGL() override;
  void resizeGL(int w, int h) override;
  void paintGL() override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void mouseDoubleClickEvent(QMouseEvent* e) override;
  void wheelEvent(QWheelEvent* e) override;

 private:
  // Runs a canvas handler with the context current; a fault that ends it is
  // shown as a message.
  void Handle(const std::function<void()>& handler);
  float Scale() const;

  bool inPaint_ = false;
  bool frameFresh_ = false;
  long paints_ = 0;
};

}  // namespace vt::app
