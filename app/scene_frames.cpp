#include "app/scene_frames.h"

#include <QImage>
#include <QOpenGLFramebufferObject>

#include <algorithm>

#include "app/canvas.h"
#include "document/globals.h"
#include "render/frame.h"
#include "render/view_state.h"

namespace vt::app {

SceneFrames::SceneFrames(Canvas* canvas, int width, int height) : canvas_(canvas), width_(width), height_(height) {
  if (!canvas_ || !canvas_->isValid() || !HaveContext() || width < 2 || height < 2) return;
  canvas_->MakeCurrent();
  QOpenGLFramebufferObjectFormat format;
  format.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
  format.setSamples(canvas_->format().samples() > 0 ? 4 : 0);
  // No alpha: the scene blends its smoothed lines into the alpha channel as
  // well, which a film has no use for and which would darken them when read.
  format.setInternalTextureFormat(GL_RGB8);
  fbo_ = std::make_unique<QOpenGLFramebufferObject>(width, height, format);
  if (!fbo_->isValid()) fbo_.reset();
}

SceneFrames::~SceneFrames() {
  if (!fbo_) return;
  canvas_->MakeCurrent();
  fbo_.reset();
}

Image SceneFrames::Draw() {
  Image out;
  if (!fbo_) return out;
  canvas_->MakeCurrent();
  fbo_->bind();
  const int canvasWidth = CanvasWidth, canvasHeight = CanvasHeight;
  View.SetScreen(width_, height_);
  CanvasWidth = width_;
  CanvasHeight = height_;
  DrawScene();
  DrawFrame();
  const QImage image = fbo_->toImage().convertToFormat(QImage::Format_RGB888);
  CanvasWidth = canvasWidth;
  CanvasHeight = canvasHeight;
  View.SetScreen(canvas_->DeviceWidth(), canvas_->DeviceHeight());
  fbo_->release();
  canvas_->MakeCurrent();  // the widget's own framebuffer again
  out.width = image.width();
  out.height = image.height();
  out.rgb.resize(static_cast<size_t>(out.width) * out.height * 3);
  for (int y = 0; y < out.height; ++y)
    std::copy_n(image.constScanLine(y), static_cast<size_t>(out.width) * 3, out.rgb.data() + static_cast<size_t>(y) * out.width * 3);
  return out;
}

}  // namespace vt::app
