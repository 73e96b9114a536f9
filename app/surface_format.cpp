#include "app/surface_format.h"

namespace vt::app {

QSurfaceFormat CanvasSurfaceFormat() {
  QSurfaceFormat format;
  format.setRenderableType(QSurfaceFormat::OpenGL);
  format.setProfile(QSurfaceFormat::CompatibilityProfile);
  format.setVersion(2, 1);
  format.setSwapBehavior(QSurfaceFormat::DoubleBuffer);
  format.setRedBufferSize(8);
  format.setGreenBufferSize(8);
  format.setBlueBufferSize(8);
  format.setDepthBufferSize(24);
  format.setStencilBufferSize(8);  // the space scene's shadow
  return format;
}

}  // namespace vt::app
