// Surfaces drawn offscreen: shading of a lit surface and a texture on a quad
// (directly and through a surface in the scene's list). Where surfaces stand
// in space is the business of space_gallery_test.cpp.
#include <stb_image_write.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "document/document.h"
#include "graphs/surface.h"
#include "render/frame.h"
#include "render/texture.h"
#include "render/view_state.h"
#include "graphs/graphs_test_util.h"
#include "render_fixture.h"

#include <GL/gl.h>

namespace vt {
namespace {

using test::RenderTest;
using test::Rgb;
using XY = std::pair<float, float>;

class SurfaceDrawTest : public RenderTest {
 protected:
  template <class... A>
  CSurface* Add(A&&... a) {
    CSurface* p = Doc.Surfaces.Add(test::MakeSurface(std::forward<A>(a)...));
    EXPECT_TRUE(p->GetPoints());
    return p;
  }
  // A picture file of four quadrants: red lower left, green lower right,
  // blue upper left, yellow upper right (as seen with rows top-down).
  std::string QuadrantPicture(const test::TempDir& dir, int side) {
    std::vector<unsigned char> px(static_cast<size_t>(side * side * 3));
    for (int y = 0; y < side; ++y)
      for (int x = 0; x < side; ++x) {
        const bool top = y < side / 2, right = x >= side / 2;
        unsigned char* p = &px[static_cast<size_t>((y * side + x) * 3)];
        p[0] = (!top && !right) || (top && right) ? 255 : 0;
        p[1] = (!top && right) || (top && right) ? 255 : 0;
        p[2] = top && !right ? 255 : 0;
      }
    const std::string path = dir.path("quad.bmp");
    stbi_write_bmp(path.c_str(), side, side, 3, px.data());
    return path;
  }
  static int Brightness(const Rgb& c) { return c[0] + c[1] + c[2]; }
};

TEST_F(SurfaceDrawTest, LitSphereIsShadedAcross) {
  CSurface* s = Add(2, 3, 5, "u", "v", "4", 32, "0", "6.2832", "0.01", "3.13");
  s->FillStyle = 4;
  s->FirstColor = RGB(255, 255, 255);
  Frame();
  // The light stands up, right and in front: the upper right of the ball is
  // brighter than its lower left, and the brightness changes step by step.
  const Rgb bright = At(1.6f, 1.6f, 3), dark = At(-2.6f, -2.6f, 1);
  EXPECT_FALSE(IsWhite(dark));
  EXPECT_GT(Brightness(bright), Brightness(dark) + 60);
  std::set<int> levels;
  for (float x = -3.5f; x <= 3.5f; x += 0.5f) levels.insert(Brightness(At(x, 0, 0)) / 8);
  EXPECT_GE(levels.size(), 6u);
  // The seam at u = 0 (the half circle over the +x axis) shows no dark line:
  // across it the brightness changes smoothly.
  const int a = Brightness(At(2, -0.15f, 3.4f)), b = Brightness(At(2, 0.15f, 3.4f));
  EXPECT_LT(std::abs(a - b), 30);
}

TEST_F(SurfaceDrawTest, TexturedQuadShowsTheTexture) {
  test::TempDir dir;
  // A surface facing the viewer (the plane seen from above): x = u, y = v,
  // z = 0, the texture alone, lighting off. The picture's sides (8) are
  // powers of two already; 6 x 3 is scaled to 8 x 4.
  CSurface* s = Add(2, 3, 3, "u", "v", "0", 4, "-4", "4", "-4", "4");
  s->ShowTex = true, s->TexName = QuadrantPicture(dir, 8), s->TexMode = 1;
  MainLight.LightingOn = false;
  Frame();
  MainLight.LightingOn = true;
  const std::pair<XY, Rgb> quadrants[] = {{{-2, -2}, {255, 0, 0}}, {{2, -2}, {0, 255, 0}},
                                          {{-2, 2}, {0, 0, 255}},  {{2, 2}, {255, 255, 0}}};
  for (const auto& [at, c] : quadrants) EXPECT_TRUE(Near(At(at.first, at.second, 0.1f), c[0], c[1], c[2], 70)) << at.first << "," << at.second;
  // Drawn again from the list, the texture is still there.
  Repaint();
  EXPECT_TRUE(Near(At(2, 2, 0.1f), 255, 255, 0, 70));
  std::vector<std::uint8_t> rgb(6 * 3 * 3, 128);
  int w = 6, h = 3;
  ASSERT_TRUE(Cls15::ScaleImg(rgb, w, h));
  EXPECT_TRUE(w == 8 && h == 4 && rgb.size() == 8u * 4u * 3u);
  Cls15 t;
  for (const char* bad : {"picture.png", "", "/no/such/file.BMP"}) EXPECT_FALSE(t.LoadGLTextures(bad)) << bad;
}

}  // namespace
}  // namespace vt
