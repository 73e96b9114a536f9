#include "render/offscreen.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <stb_image_write.h>

#include <cstring>

#include "render/frame.h"

namespace vt {

namespace {

EGLDisplay SurfacelessDisplay(std::string& error) {
  auto getPlatformDisplay =
      reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (!getPlatformDisplay) {
    error = "EGL has no eglGetPlatformDisplayEXT";
    return EGL_NO_DISPLAY;
  }
  EGLDisplay d = getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
  if (d == EGL_NO_DISPLAY) error = "no surfaceless EGL display";
  return d;
}

}  // namespace

OffscreenContext::~OffscreenContext() { Destroy(); }

bool OffscreenContext::Create(int width, int height, std::string& error, bool deepest) {
  Destroy();
  if (width <= 0 || height <= 0) {
    error = "the size must be positive";
    return false;
  }
  EGLDisplay d = SurfacelessDisplay(error);
  if (d == EGL_NO_DISPLAY) return false;
  EGLint major = 0, minor = 0;
  if (!eglInitialize(d, &major, &minor)) {
    error = "eglInitialize failed";
    return false;
  }
  display_ = d;
  if (!eglBindAPI(EGL_OPENGL_API)) {
    error = "EGL has no desktop OpenGL";
    Destroy();
    return false;
  }
  // A stencil (the space scene's shadow) where there is one.
  EGLint configAttribs[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                            EGL_RED_SIZE, 8, EGL_GREEN_SIZE, 8, EGL_BLUE_SIZE, 8,
                            EGL_DEPTH_SIZE, 24, EGL_STENCIL_SIZE, 8, EGL_NONE};
  // EGL lists deeper colour first (10 bits a channel on Mesa). The canvas on
  // a screen has 8 bits a channel, and blending into 10-bit pixels costs the
  // software renderer a third more per pixel, so the first configuration of
  // 8 bits without alpha is taken where there is one.
  EGLConfig configs[64];
  EGLint count = 0;
  if (!eglChooseConfig(d, configAttribs, configs, 64, &count) || count < 1) {
    configAttribs[12] = EGL_NONE;
    count = 0;
  }
  if (count < 1 && (!eglChooseConfig(d, configAttribs, configs, 64, &count) || count < 1)) {
    error = "no EGL configuration with OpenGL, colour and depth";
    Destroy();
    return false;
  }
  EGLConfig config = configs[0];
  for (EGLint i = 0; i < count && !deepest; ++i) {
    EGLint red = 0, alpha = 0;
    eglGetConfigAttrib(d, configs[i], EGL_RED_SIZE, &red);
    eglGetConfigAttrib(d, configs[i], EGL_ALPHA_SIZE, &alpha);
    if (red == 8 && alpha == 0) {
      config = configs[i];
      break;
    }
  }
  config_ = config;
  const EGLint contextAttribs[] = {EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                   EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT, EGL_NONE};
  EGLContext c = eglCreateContext(d, config, EGL_NO_CONTEXT, contextAttribs);
  if (c == EGL_NO_CONTEXT) {
    error = "eglCreateContext failed";
    Destroy();
    return false;
  }
  context_ = c;
  if (!MakeSurface(width, height) || !MakeCurrent()) {
    error = "cannot make the offscreen surface current";
    Destroy();
    return false;
  }
  return true;
}

bool OffscreenContext::MakeSurface(int width, int height) {
  const EGLint attribs[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
  EGLSurface s = eglCreatePbufferSurface(static_cast<EGLDisplay>(display_), static_cast<EGLConfig>(config_), attribs);
  if (s == EGL_NO_SURFACE) return false;
  surface_ = s;
  width_ = width;
  height_ = height;
  return true;
}

bool OffscreenContext::Resize(int width, int height) {
  if (!context_ || width <= 0 || height <= 0) return false;
  if (width == width_ && height == height_) return MakeCurrent();
  EGLDisplay d = static_cast<EGLDisplay>(display_);
  EGLSurface old = static_cast<EGLSurface>(surface_);
  surface_ = nullptr;
  if (!MakeSurface(width, height)) {
    surface_ = old;
    return false;
  }
  const bool ok = MakeCurrent();
  if (old) eglDestroySurface(d, old);
  return ok;
}

bool OffscreenContext::MakeCurrent() {
  if (!context_ || !surface_) return false;
  EGLSurface s = static_cast<EGLSurface>(surface_);
  if (!eglMakeCurrent(static_cast<EGLDisplay>(display_), s, s, static_cast<EGLContext>(context_))) return false;
  GLint drawBuffer = GL_BACK;
  glGetIntegerv(GL_DRAW_BUFFER, &drawBuffer);
  glReadBuffer(static_cast<GLenum>(drawBuffer));
  return true;
}

void OffscreenContext::Destroy() {
  EGLDisplay d = static_cast<EGLDisplay>(display_);
  if (context_) {
    if (eglGetCurrentContext() == static_cast<EGLContext>(context_)) {
      ReleaseContext();
      eglMakeCurrent(d, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }
    eglDestroyContext(d, static_cast<EGLContext>(context_));
  }
  if (surface_) eglDestroySurface(d, static_cast<EGLSurface>(surface_));
  // The display stays initialised: EGL counts it once per process, and other
  // contexts of this process may still use it.
  context_ = surface_ = config_ = display_ = nullptr;
  width_ = height_ = 0;
}

Image OffscreenContext::ReadPixels() const {
  Image img;
  if (!context_) return img;
  img.width = width_;
  img.height = height_;
  std::vector<std::uint8_t> raw(static_cast<size_t>(width_) * static_cast<size_t>(height_) * 3);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, width_, height_, GL_RGB, GL_UNSIGNED_BYTE, raw.data());
  img.rgb.resize(raw.size());
  const size_t row = static_cast<size_t>(width_) * 3;
  for (int y = 0; y < height_; ++y) {
    std::memcpy(img.rgb.data() + static_cast<size_t>(y) * row,
                raw.data() + static_cast<size_t>(height_ - 1 - y) * row, row);
  }
  return img;
}

bool WritePng(const std::string& path, const Image& image) {
  if (image.empty()) return false;
  return stbi_write_png(path.c_str(), image.width, image.height, 3, image.rgb.data(), image.width * 3) != 0;
}

}  // namespace vt
