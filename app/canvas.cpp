#include "app/canvas.h"
#include "app/startup_report.h"
#include "app/surface_format.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QOpenGLWindow>
#include <QTimer>
#include <GL/gl.h>
#include <QVBoxLayout>
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

// The canvas's window: its GL calls and its mouse go to the canvas widget.
class CanvasSurface : public QOpenGLWindow {
 public:
  explicit CanvasSurface(Canvas* canvas) : canvas_(canvas) {
    setFormat(CanvasSurfaceFormat());
    // The keyboard stays with the main window (its shortcuts), whatever the
    // mouse does on the canvas.
    setFlag(Qt::WindowDoesNotAcceptFocus);
  }

 protected:
  void initializeGL() override { canvas_->Initialized(); }
  void resizeGL(int, int) override { canvas_->Resized(); }
  void paintGL() override { canvas_->Paint(); }
  void mousePressEvent(QMouseEvent* e) override { Pass(e); }
  void mouseMoveEvent(QMouseEvent* e) override { Pass(e); }
  void mouseReleaseEvent(QMouseEvent* e) override { Pass(e); }
  void mouseDoubleClickEvent(QMouseEvent* e) override { Pass(e); }
  void wheelEvent(QWheelEvent* e) override { Pass(e); }

 private:
  // The window lies over the whole widget, so its positions are the
  // widget's.
  void Pass(QEvent* e) { QCoreApplication::sendEvent(canvas_, e); }
  Canvas* canvas_;
};

Canvas::Canvas(QWidget* parent) : QWidget(parent) {
  setObjectName("picDraw");
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(64, 64);
  surface_ = new CanvasSurface(this);
  QWidget* container = QWidget::createWindowContainer(surface_, this);
  container->setFocusPolicy(Qt::NoFocus);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(container);
  connect(surface_, &QOpenGLWindow::frameSwapped, this, [] { NoteFrameShown(); });
}

float Canvas::Scale() const { return static_cast<float>(surface_->devicePixelRatio()); }
int Canvas::DeviceWidth() const { return static_cast<int>(width() * Scale() + 0.5f); }
int Canvas::DeviceHeight() const { return static_cast<int>(height() * Scale() + 0.5f); }

bool Canvas::isValid() const { return surface_->isValid(); }
void Canvas::makeCurrent() { surface_->makeCurrent(); }
QOpenGLContext* Canvas::context() const { return surface_->context(); }
QSurfaceFormat Canvas::format() const { return surface_->format(); }
void Canvas::update() { surface_->update(); }

QImage Canvas::grabFramebuffer() {
  if (!isValid() || !started_) return QImage();
  // The back buffer holds nothing after a swap: the frame is drawn again
  // and read back before the next swap.
  makeCurrent();
  DrawFrame();
  const int w = DeviceWidth(), h = DeviceHeight();
  QImage image(w, h, QImage::Format_RGBA8888);
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
  glReadPixels(0, 0, w, h, GL_RGBA, GL_UNSIGNED_BYTE, image.bits());
  image = image.mirrored().convertToFormat(QImage::Format_RGB32);
  image.setDevicePixelRatio(Scale());
  return image;
}

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

void Canvas::Initialized() {
  // The window's framebuffer is made after this, at its first paint: the
  // program starts once that paint is done, and draws its first frame then.
  QTimer::singleShot(0, this, [this] {
    emit contextReady();
    started_ = true;
    frameFresh_ = false;
    update();
  });
}

void Canvas::Resized() {
  View.SetScreen(DeviceWidth(), DeviceHeight());
  frameFresh_ = false;
}

void Canvas::Paint() {
  if (!started_) {
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    return;
  }
  if (frameFresh_) {
    frameFresh_ = false;
    return;
  }
  inPaint_ = true;
  // The frame without the host's swap (the window shows what it painted),
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
  // The canvas's window takes no keyboard focus of its own: a press on it
  // activates the main window, whose shortcuts the keys then reach.
  if (!window()->isActiveWindow()) window()->activateWindow();
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
