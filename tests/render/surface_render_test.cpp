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
#include "render_fixture.h"

#include <GL/gl.h>

namespace vt {
namespace {

using test::RenderTest;
using test::Rgb;

class SurfaceDrawTest : public RenderTest {
 protected:
  CSurface* Add(int graphType, int funForm, int coordType, const std::string& fx, const std::string& fy,
                const std::string& fz, int steps, const std::string& minU, const std::string& maxU,
                const std::string& minV, const std::string& maxV) {
    auto s = std::make_unique<CSurface>();
    s->Init(NewObjectId(graphType == 1 ? "C3" : "SF"), "", graphType, funForm, coordType, fx, fy, fz, steps, steps,
            minU, maxU, minV, maxV);
    CSurface* p = Doc.Surfaces.Add(std::move(s));
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
  const std::string path = QuadrantPicture(dir, 8);
  // Directly: the texture bound and a quad drawn with it, lighting off.
  SetCanvas(kW, kH, 12);
  DrawScene();
  Display();
  Cls15 tex;
  int w = 0, h = 0;
  ASSERT_TRUE(tex.CreateMapImage(path, w, h));
  EXPECT_EQ(w, 8);
  EXPECT_NE(tex.TextureName, 0u);
  // A surface facing the viewer (the plane seen from above): x = u, y = v,
  // z = 0, the texture alone.
  CSurface* s = Add(2, 3, 3, "u", "v", "0", 4, "-4", "4", "-4", "4");
  s->ShowTex = true;
  s->TexName = path;
  s->TexMode = 1;
  MainLight.LightingOn = false;
  Frame();
  MainLight.LightingOn = true;
  EXPECT_TRUE(Near(At(-2, -2, 0.1f), 255, 0, 0, 70));    // red
  EXPECT_TRUE(Near(At(2, -2, 0.1f), 0, 255, 0, 70));     // green
  EXPECT_TRUE(Near(At(-2, 2, 0.1f), 0, 0, 255, 70));     // blue
  EXPECT_TRUE(Near(At(2, 2, 0.1f), 255, 255, 0, 70));    // yellow
  // Drawn again from the list, the texture is still there.
  Repaint();
  EXPECT_TRUE(Near(At(2, 2, 0.1f), 255, 255, 0, 70));
}

TEST_F(SurfaceDrawTest, PictureSidesBecomePowersOfTwo) {
  DrawScene();
  std::vector<std::uint8_t> rgb(6 * 3 * 3, 128);
  int w = 6, h = 3;
  ASSERT_TRUE(Cls15::ScaleImg(rgb, w, h));
  EXPECT_TRUE(w == 8 && h == 4 && rgb.size() == 8u * 4u * 3u);
  EXPECT_EQ(Cls15::PowerOfTwoSide(5000, 256), 256);
  Cls15 t;
  for (const char* bad : {"picture.png", "", "/no/such/file.BMP"}) EXPECT_FALSE(t.LoadGLTextures(bad)) << bad;
}

}  // namespace
}  // namespace vt
