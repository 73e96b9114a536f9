#include "render_fixture.h"

#include <GL/glu.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "document/globals.h"
#include "render/frame.h"
#include "render/text.h"
#include "render/view_state.h"

namespace vt::test {

OffscreenContext& RenderTest::Context() {
  static OffscreenContext ctx;
  if (!ctx.valid()) {
    std::string error;
    EXPECT_TRUE(ctx.Create(kW, kH, error)) << error;
  }
  return ctx;
}

void RenderTest::SetUp() {
  DocumentTest::SetUp();
  ASSERT_TRUE(Context().valid());
  ASSERT_TRUE(Context().MakeCurrent());
  ASSERT_TRUE(Initialize());
  SceneMode = 1;
  SetCanvas(kW, kH, 12);
}

void RenderTest::TearDown() {
  ToolCursorPoint = nullptr;
  DocumentTest::TearDown();
}

void RenderTest::SetCanvas(int w, int h, float unitsHigh) {
  ASSERT_TRUE(Context().Resize(w, h));
  width_ = w;
  height_ = h;
  View.SetScreen(w, h);
  View.SetViewRect(unitsHigh, unitsHigh);
  CanvasWidth = w;
  CanvasHeight = h;
}

void RenderTest::Frame() {
  DrawScene();
  Display();
  image_ = Context().ReadPixels();
  if (const char* dump = std::getenv("VT_DUMP")) {
    static int n = 0;
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    WritePng(std::string(dump) + "/" + info->name() + "_" + std::to_string(n++) + ".png", image_);
  }
}

void RenderTest::Repaint() {
  Display();
  image_ = Context().ReadPixels();
}

bool RenderTest::WindowOf(float x, float y, float z, double& wx, double& wy) const {
  const WindowProjection& m = CompiledProjection();
  if (!m.valid) return false;
  double wz;
  return gluProject(x, y, z, m.model, m.proj, m.viewport, &wx, &wy, &wz) == GL_TRUE;
}

Rgb RenderTest::Pixel(int px, int py) const {
  if (px < 0 || py < 0 || px >= image_.width || py >= image_.height) return {255, 255, 255};
  const size_t row = static_cast<size_t>(image_.height - 1 - py);
  const std::uint8_t* p = &image_.rgb[(row * static_cast<size_t>(image_.width) + static_cast<size_t>(px)) * 3];
  return {p[0], p[1], p[2]};
}

Rgb RenderTest::At(float x, float y, float z) const {
  double wx = -1, wy = -1;
  if (!WindowOf(x, y, z, wx, wy)) return {255, 255, 255};
  return Pixel(static_cast<int>(std::floor(wx)), static_cast<int>(std::floor(wy)));
}

bool RenderTest::AnyNear(float x, float y, float z, int radius, const std::function<bool(const Rgb&)>& is) const {
  double wx, wy;
  if (!WindowOf(x, y, z, wx, wy)) return false;
  const int px = static_cast<int>(std::floor(wx)), py = static_cast<int>(std::floor(wy));
  for (int dy = -radius; dy <= radius; ++dy)
    for (int dx = -radius; dx <= radius; ++dx)
      if (is(Pixel(px + dx, py + dy))) return true;
  return false;
}

int RenderTest::DarkPixels(int x0, int y0, int x1, int y1, const std::function<bool(const Rgb&)>& is) const {
  int n = 0;
  for (int y = std::min(y0, y1); y <= std::max(y0, y1); ++y)
    for (int x = std::min(x0, x1); x <= std::max(x0, x1); ++x)
      if (is(Pixel(x, y))) ++n;
  return n;
}

int RenderTest::DarkPixelsAround(float x0, float y0, float x1, float y1, float z) const {
  double ax, ay, bx, by;
  if (!WindowOf(x0, y0, z, ax, ay) || !WindowOf(x1, y1, z, bx, by)) return 0;
  return DarkPixels(static_cast<int>(std::floor(ax)), static_cast<int>(std::floor(ay)),
                    static_cast<int>(std::floor(bx)), static_cast<int>(std::floor(by)));
}

}  // namespace vt::test
