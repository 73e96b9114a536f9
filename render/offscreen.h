// An OpenGL context without a window: EGL on Mesa's surfaceless platform
// (no display, no environment needed), compatibility profile, a pbuffer of
// the requested size with 8-bit colour and a 24-bit depth buffer. Used by the
// render tests, the benchmarks and vantrel-cli render.
#pragma once

#include <string>

#include "document/host.h"

namespace vt {

class OffscreenContext {
 public:
  OffscreenContext() = default;
  OffscreenContext(const OffscreenContext&) = delete;
  OffscreenContext& operator=(const OffscreenContext&) = delete;
  ~OffscreenContext();

  // Makes the context and its surface and makes them current. On failure
  // `error` says why and nothing is left behind. With `deepest` the colour
  // is the deepest EGL lists first (10 bits a channel on Mesa), for comparing
  // with pictures made that way.
  bool Create(int width, int height, std::string& error, bool deepest = false);
  // A new surface of another size for the same context (display lists stay),
  // made current.
  bool Resize(int width, int height);
  bool MakeCurrent();
  // Releases the context (forgetting the frame's lists first when it is the
  // current one) and everything made with it.
  void Destroy();

  bool valid() const { return context_ != nullptr; }
  int width() const { return width_; }
  int height() const { return height_; }

  // The colour buffer of the current context, rows top-down.
  Image ReadPixels() const;

 private:
  bool MakeSurface(int width, int height);

  void* display_ = nullptr;
  void* config_ = nullptr;
  void* context_ = nullptr;
  void* surface_ = nullptr;
  int width_ = 0;
  int height_ = 0;
};

// Writes the picture as a PNG; false when the file cannot be written.
bool WritePng(const std::string& path, const Image& image);

}  // namespace vt
