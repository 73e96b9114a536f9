// Frames of the scene at a size of their own (a film's 1280 x 720), drawn in
// the canvas's context into a framebuffer object of that size: the same
// display lists and glyphs as the canvas, nothing scaled from the screen.
// The canvas's view and size are put back after each frame, so that the
// canvas may repaint between frames.
#pragma once

#include <memory>

#include "document/host.h"

class QOpenGLFramebufferObject;

namespace vt::app {

class Canvas;

class SceneFrames {
 public:
  SceneFrames(Canvas* canvas, int width, int height);
  ~SceneFrames();
  SceneFrames(const SceneFrames&) = delete;
  SceneFrames& operator=(const SceneFrames&) = delete;

  // False when the canvas has no context or the framebuffer cannot be made.
  bool valid() const { return fbo_ != nullptr; }
  // The scene as it stands, drawn at the frame size; rows top-down.
  Image Draw();

 private:
  Canvas* canvas_;
  int width_, height_;
  std::unique_ptr<QOpenGLFramebufferObject> fbo_;
};

}  // namespace vt::app
