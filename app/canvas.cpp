#include "app/canvas.h"
#include "app/startup_report.h"
#include "app/surface_format.h"

#include <GL/gl.h>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QPalette>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QWindow>
#include <chrono>
#include <memory>

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

QOpenGLContext* MakeCanvasContext() {
  auto context = std::make_unique<QOpenGLContext>();
  context->setFormat(CanvasSurfaceFormat());
  if (!context->create()) return nullptr;
  context->moveToThread(QCoreApplication::instance()->thread());
  return context.release();
}

// The canvas's window: an OpenGL window with a context of its own (made here
// on first use, or taken over from the thread that made it), whose paints
// and mouse go to the canvas widget.
class CanvasSurface : public QWindow {
 public:
  CanvasSurface(Canvas* canvas, std::future<QOpenGLContext*> pending)
      : canvas_(canvas), pending_(std::move(pending)) {
    setSurfaceType(QSurface::OpenGLSurface);
    setFormat(CanvasSurfaceFormat());
    // The keyboard stays with the main window (its shortcuts), whatever the
    // mouse does on the canvas.
    setFlag(Qt::WindowDoesNotAcceptFocus);
  }

  // True once the context is made and has been current on this window.
  bool isValid() const { return initialized_ && context_ && context_->isValid(); }
  QOpenGLContext* context() const { return context_.get(); }
  void makeCurrent() {
    if (MakeContext() && handle()) context_->makeCurrent(this);
  }
  // Whether the context being made elsewhere has come (or was refused);
  // true when none was being made.
  bool ContextArrived() {
    if (!pending_.valid()) return true;
    if (pending_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return false;
    context_.reset(pending_.get());
    refused_ = !context_;
    return true;
  }
  bool Refused() const { return refused_; }

  // A repaint asked for while a frame is being made is that frame.
  void update() {
    if (!rendering_) requestUpdate();
  }

 protected:
  void exposeEvent(QExposeEvent*) override {
    if (isExposed()) Render();
  }
  void resizeEvent(QResizeEvent*) override {
    if (initialized_) canvas_->Resized();
  }
  bool event(QEvent* e) override {
    if (e->type() == QEvent::UpdateRequest) {
      Render();
      return true;
    }
    return QWindow::event(e);
  }
  void mousePressEvent(QMouseEvent* e) override { Pass(e); }
  void mouseMoveEvent(QMouseEvent* e) override { Pass(e); }
  void mouseReleaseEvent(QMouseEvent* e) override { Pass(e); }
  void mouseDoubleClickEvent(QMouseEvent* e) override { Pass(e); }
  void wheelEvent(QWheelEvent* e) override { Pass(e); }

 private:
  bool MakeContext() {
    if (!ContextArrived() || refused_) return false;
    if (!context_) {
      context_.reset(MakeCanvasContext());
      refused_ = !context_;
    }
    return context_ != nullptr;
  }
  // One frame: the canvas paints into the back buffer, which is then shown.
  void Render() {
    if (rendering_ || !isExposed() || !MakeContext() || !context_->makeCurrent(this)) return;
    rendering_ = true;
    if (!initialized_) {
      initialized_ = true;
      canvas_->Resized();
      canvas_->Initialized();
      // Shown before the main window is on the screen (Qt takes the child's
      // mapping for its exposure), a frame would be drawn for nothing and
      // drawn again at the main window's exposure: the first frame waits for
      // that, or for the next repaint.
      if (!MainWindowExposed()) {
        rendering_ = false;
        requestUpdate();
        return;
      }
    }
    canvas_->Paint();
    rendering_ = false;
    context_->swapBuffers(this);
    if (MainWindowExposed()) NoteFrameShown();
  }
  bool MainWindowExposed() const {
    const QWindow* top = canvas_->window()->windowHandle();
    return !top || top->isExposed();
  }
  // The window lies over the whole widget, so its positions are the
  // widget's.
  void Pass(QEvent* e) { QCoreApplication::sendEvent(canvas_, e); }
  Canvas* canvas_;
  std::future<QOpenGLContext*> pending_;
  std::unique_ptr<QOpenGLContext> context_;
  bool refused_ = false;
  bool initialized_ = false;
  bool rendering_ = false;
};

Canvas::Canvas(QWidget* parent, std::future<QOpenGLContext*> context) : QWidget(parent) {
  setObjectName("picDraw");
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(64, 64);
  setAutoFillBackground(true);
  setPalette(QPalette(Qt::white));
  const bool waiting = context.valid();
  surface_ = new CanvasSurface(this, std::move(context));
  QWidget* container = QWidget::createWindowContainer(surface_, this);
  container->setFocusPolicy(Qt::NoFocus);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(container);
  if (!waiting) return;
  // The canvas's window is made once its context has come: making an OpenGL
  // window needs the driver, which the context's thread is still loading.
  // Until then the main window shows, with a white canvas area.
  container->hide();
  auto* poll = new QTimer(this);
  poll->setInterval(2);
  connect(poll, &QTimer::timeout, this, [this, poll, container] {
    if (!surface_->ContextArrived()) return;
    poll->stop();
    poll->deleteLater();
    if (surface_->Refused())
      emit contextRefused();
    else
      container->show();
  });
  poll->start();
}

float Canvas::Scale() const { return static_cast<float>(surface_->devicePixelRatio()); }
int Canvas::DeviceWidth() const { return static_cast<int>(width() * Scale() + 0.5f); }
int Canvas::DeviceHeight() const { return static_cast<int>(height() * Scale() + 0.5f); }

bool Canvas::isValid() const { return surface_->isValid(); }
void Canvas::makeCurrent() { surface_->makeCurrent(); }
QOpenGLContext* Canvas::context() const { return surface_->context(); }
QSurfaceFormat Canvas::format() const { return context() ? context()->format() : surface_->format(); }
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
  // The context is current on the window: the program starts now, and the
  // paint that follows draws its first frame.
  emit contextReady();
  started_ = true;
  frameFresh_ = false;
}

void Canvas::Resized() {
  View.SetScreen(DeviceWidth(), DeviceHeight());
  frameFresh_ = false;
}

void Canvas::Paint() {
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
