#include "app/canvas.h"
#include "app/startup_report.h"
#include "app/surface_format.h"

#include <QMouseEvent>
#include <QOpenGLContext>
#include <QWheelEvent>

#include "document/frame_commands.h"
#include "render/frame.h"
#include "render/view_state.h"
#include "tools/canvas_input.h"
#include "tools/navigate.h"

namespace vt::app {

namespace {

int ButtonCode(Qt::MouseButton b) {
  switch (b) {
    case Qt::LeftButton: return kLeftButton;
    case Qt::RightButton: return kRightButton;
    case Qt::MiddleButton: return kMiddleButton;
    default: return 0;
  }
}

int ButtonsCode(Qt::MouseButtons b) {
  int code = 0;
  if (b & Qt::LeftButton) code |= kLeftButton;
  if (b & Qt::RightButton) code |= kRightButton;
  if (b & Qt::MiddleButton) code |= kMiddleButton;
  return code;
}

int ShiftCode(Qt::KeyboardModifiers m) {
  int code = 0;
  if (m & Qt::ShiftModifier) code |= kShiftKey;
  if (m & Qt::ControlModifier) code |= kCtrlKey;
  if (m & Qt::AltModifier) code |= kAltKey;
  return code;
}

}  // namespace

Canvas::Canvas(QWidget* parent) : QOpenGLWidget(parent) {
  setObjectName("picDraw");
  setFormat(CanvasSurfaceFormat());
  // The framebuffer keeps the last frame between repaints, so a repaint that
  // follows a frame drawn by an event need not draw it again.
  setUpdateBehavior(QOpenGLWidget::PartialUpdate);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(64, 64);
  connect(this, &QOpenGLWidget::frameSwapped, this, [] { NoteFrameShown(); });
}

float Canvas::Scale() const { return static_cast<float>(devicePixelRatioF()); }
int Canvas::DeviceWidth() const { return static_cast<int>(width() * Scale() + 0.5f); }
int Canvas::DeviceHeight() const { return static_cast<int>(height() * Scale() + 0.5f); }

void Canvas::MakeCurrent() {
  if (isValid()) makeCurrent();
}

void Canvas::FrameDone() {
  if (inPaint_) return;
  // A frame drawn while another context was current (a dialog's event loop
  // ran inside the command and left the window's own current) did not reach
  // the canvas: the repaint draws it.
  frameFresh_ = context() && QOpenGLContext::currentContext() == context();
  update();
}

void Canvas::initializeGL() { emit contextReady(); }

void Canvas::resizeGL(int, int) {
  View.SetScreen(DeviceWidth(), DeviceHeight());
  frameFresh_ = false;
}

void Canvas::paintGL() {
  if (frameFresh_) {
    frameFresh_ = false;
    return;
  }
  inPaint_ = true;
  // The frame without the host's swap (the widget shows what it painted),
  // drawn even while the start holds the redraws of its commands.
  DrawFrame();
  ++paints_;
  inPaint_ = false;
  NoteFirstPaint();
}

void Canvas::Handle(const std::function<void()>& handler) {
  MakeCurrent();
  RunGuarded(handler);
}

void Canvas::mousePressEvent(QMouseEvent* e) {
  const int button = ButtonCode(e->button());
  if (!button) return;
  setFocus(Qt::MouseFocusReason);
  const QPointF p = e->position() * Scale();
  const int shift = ShiftCode(e->modifiers());
  Handle([&] { picDraw_MouseDown(button, shift, static_cast<float>(p.x()), static_cast<float>(p.y())); });
}

void Canvas::mouseMoveEvent(QMouseEvent* e) {
  const QPointF p = e->position() * Scale();
  const int buttons = ButtonsCode(e->buttons());
  const int shift = ShiftCode(e->modifiers());
  Handle([&] { picDraw_MouseMove(buttons, shift, static_cast<float>(p.x()), static_cast<float>(p.y())); });
}

void Canvas::mouseReleaseEvent(QMouseEvent* e) {
  const int button = ButtonCode(e->button());
  if (!button) return;
  const QPointF p = e->position() * Scale();
  const int shift = ShiftCode(e->modifiers());
  Handle([&] { picDraw_MouseUp(button, shift, static_cast<float>(p.x()), static_cast<float>(p.y())); });
}

void Canvas::mouseDoubleClickEvent(QMouseEvent* e) {
  // The second press of a double click is not a press of its own: the
  // sequence is press, release, double click, release.
  if (e->button() != Qt::LeftButton) return;
  Handle([] { picDraw_DblClick(); });
}

void Canvas::wheelEvent(QWheelEvent* e) {
  // A notch of a wheel is 120; touch pads send parts of it.
  const float steps = static_cast<float>(e->angleDelta().y()) / 120.0f;
  if (steps == 0) return;
  e->accept();
  const QPointF p = e->position() * Scale();
  const int shift = ShiftCode(e->modifiers());
  Handle([&] { picDraw_MouseWheel(steps, shift, static_cast<float>(p.x()), static_cast<float>(p.y())); });
}

}  // namespace vt::app
