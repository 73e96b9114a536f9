// Text: the bytes for the glyph lists, the shared text routine, the window
// path of the labels against the bitmap path, the outline glyphs, and a font
// that cannot be had.
#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "document/globals.h"
#include "geometry/line.h"
#include "render/frame.h"
#include "render/text.h"
#include "render/view_state.h"
#include "render_fixture.h"

namespace vt {
namespace {

using test::RenderTest;
using test::Rgb;

TEST(AnsiBytesTest, CharactersBecomeWindows1252Bytes) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""}, {"A b-9", "A b-9"}, {"caf\xC3\xA9", "caf\xE9"}, {"\xE2\x82\xAC" "5", "\x80" "5"} /* euro */,
      {"\xE2\x80\x93", "\x96"} /* en dash */, {"x\xE4\xB8\xADy", "x?y"} /* outside the code page */,
      {"\xF0\x9F\x98\x80", "?"} /* outside the plane */, {"a\xFF" "b", "a?b"} /* starts nothing */,
      {"a\xC3", "a?"} /* cut short */};
  for (const auto& [in, out] : cases) EXPECT_EQ(AnsiBytes(in), out) << in;
  EXPECT_EQ(AnsiToUnicode(0x81), 0u);
  // Every character of the code page comes back as its own byte.
  for (unsigned b = 0x20; b < 0x100; ++b) {
    const unsigned cp = AnsiToUnicode(static_cast<unsigned char>(b));
    if (cp == 0 || cp == 0x7F) continue;
    std::string utf8;
    if (cp < 0x80) utf8 = std::string(1, static_cast<char>(cp));
    else if (cp < 0x800) utf8 = {static_cast<char>(0xC0 | (cp >> 6)), static_cast<char>(0x80 | (cp & 0x3F))};
    else utf8 = {static_cast<char>(0xE0 | (cp >> 12)), static_cast<char>(0x80 | ((cp >> 6) & 0x3F)),
                 static_cast<char>(0x80 | (cp & 0x3F))};
    EXPECT_EQ(AnsiBytes(utf8), std::string(1, static_cast<char>(b))) << b;
  }
}

// An object of the scene that writes texts with the shared routine, in
// whatever colour and lighting state it finds.
class Writer : public CLine {
 public:
  struct Item {
    float x, y, z;
    std::string text;
  };
  std::vector<Item> items;
  // Written through textured quads placed with the scene's matrices, as the
  // axes and the overlay write theirs, instead of with glBitmap.
  bool placed = false;
  // A one-bit picture (rows bottom-up) drawn in blue at the first item's place.
  int picW = 0, picH = 0;
  std::vector<unsigned char> pic;
  void Draw() override {
    std::optional<TextPlacement> place;
    if (placed) place.emplace(CompiledProjection());
    glEnable(GL_LIGHTING);
    glColor3f(1, 0, 0);
    for (const Item& i : items) DrawTextAt(i.x, i.y, i.z, i.text);
    glDisable(GL_LIGHTING);
    glColor3f(0, 0, 1);
    if (!pic.empty()) DrawBitmapAt(items[0].x, items[0].y - 1, items[0].z, picW, picH, 2, 1, pic.data());
  }
};

class TextTest : public RenderTest {
 protected:
  void TearDown() override {
    FontFileOverride.clear();
    RenderTest::TearDown();
  }
  Writer* AddWriter() {
    auto w = std::make_unique<Writer>();
    w->ID = "LN0900";
    return static_cast<Writer*>(Doc.Lines.Add(std::move(w), "LN0900"));
  }
  // The picture with the labels of these points written by the frame's
  // label pass, then with the same texts written by DrawTextAt.
  void CompareLabelPaths(const std::vector<Position*>& points, float offset, bool offsetZ) {
    for (Position* p : points) p->Symbol = 7;  // only the labels show
    Frame();
    const Image windowPath = image_;
    Writer* w = AddWriter();
    for (Position* p : points) {
      p->HideLabel = true;
      w->items.push_back({p->x + offset, p->y + offset, p->z + (offsetZ ? offset : 0), p->PLabel});
    }
    Frame();
    ASSERT_EQ(windowPath.rgb.size(), image_.rgb.size());
    int differ = 0, dark = 0;
    for (size_t i = 0; i < image_.rgb.size(); ++i) {
      differ += windowPath.rgb[i] != image_.rgb[i] ? 1 : 0;
      dark += image_.rgb[i] < 128 ? 1 : 0;
    }
    EXPECT_EQ(differ, 0);
    EXPECT_GT(dark, 40);
  }
};

// In the plane (labels running off the edge, with no valid raster position,
// of bytes without glyphs) and in a turned space (balls of no size). The
// writer draws lit and red: the shared routine writes black whatever it finds.
TEST_F(TextTest, LabelPassMatchesTheBitmapGlyphsPixelForPixel) {
  CompareLabelPaths({AddPoint(-5.93f, 3.31f, 0, "Ag9"), AddPoint(0.117f, -0.449f, 0, "W1 x"),
                     AddPoint(6.93f, -5.27f, 0, "Edge"), AddPoint(-9.5f, 0, 0, "Outside"),
                     AddPoint(2.25f, 2.25f, 0, "\xC3\xA9t\xC3\xA9")},
                    0.1f, false);
  ClearDocument();
  SceneMode = 3;
  ViewGraph.RotRoll = 111, ViewGraph.RotPitch = -41, ViewGraph.RotYaw = 60;
  std::vector<Position*> pts = {AddPoint(1.3f, -2.2f, 0.7f, "B7"), AddPoint(-3.1f, 0.4f, -1.9f, "Zq"),
                                AddPoint(0.05f, 4.4f, 2.6f, "Mid")};
  for (Position* p : pts) p->Size = 0;
  CompareLabelPaths(pts, 0.3f, true);
}

// Texts and one-bit pictures written as the axes and the overlay write them,
// through quads placed in window space, give glBitmap's pixels: characters
// beyond ASCII, places off the canvas and a picture with an origin included.
TEST_F(TextTest, PlacedTextsAndPicturesMatchGlBitmap) {
  Writer* w = AddWriter();
  w->items = {{-6.13f, 2.71f, 0, "angle BAC = 63.71\xC2\xB0"}, {0.37f, -3.05f, 0, "r = 2.87 \xCF\x80"}, {-12, 0, 0, "off"}};
  w->picW = 13, w->picH = 7;
  for (int r = 0; r < w->picH; ++r)  // a checkerboard of 2 x 1 cells, 2 bytes a row
    for (int b = 0; b < 2; ++b) w->pic.push_back(r % 2 ? 0xCC : 0x33);
  Frame();
  const Image bitmaps = image_;
  w->placed = true;
  Frame();
  ASSERT_EQ(bitmaps.rgb.size(), image_.rgb.size());
  int differ = 0, dark = 0, blue = 0;
  for (size_t i = 0; i < image_.rgb.size(); ++i) differ += bitmaps.rgb[i] != image_.rgb[i] ? 1 : 0;
  for (int y = 0; y < kH; ++y)
    for (int x = 0; x < kW; ++x) {
      const Rgb p = Pixel(x, y);
      dark += IsDark(p) ? 1 : 0;
      blue += p[2] > 200 && p[0] < 60 && p[1] < 60 ? 1 : 0;
    }
  EXPECT_EQ(differ, 0);
  EXPECT_GT(dark, 80);
  EXPECT_GT(blue, 30);
}

TEST_F(TextTest, OutlineGlyphsAreInEmUnitsExtrudedAndAdvance) {
  EnsureOutlineFonts();  // built on first use, not with the context
  ASSERT_TRUE(FontOutlineSmall != 0 && FontOutlineLarge != 0 && FontOutlineSmall != FontOutlineLarge);
  // The glyphs drawn flat black, 80 pixels to the unit, origin at pixel
  // (16, 40), turned by turnY about y (from the side the extrusion runs
  // along x). Gives the box of the dark pixels in units (x0, x1, y0, y1).
  auto draw = [&](unsigned base, const char* text, float turnY = 0, float shiftX = 0) {
    glViewport(0, 0, kW, kH);
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-0.2, 1.8, -0.5, 1.0, -10, 10);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(shiftX, 0, 0);
    glRotatef(turnY, 0, 1, 0);
    glPushAttrib(GL_ENABLE_BIT);
    glDisable(GL_LIGHTING);
    glDisable(GL_DEPTH_TEST);
    glColor3f(0, 0, 0);
    glListBase(base);
    glCallLists(static_cast<GLsizei>(std::strlen(text)), GL_UNSIGNED_BYTE, text);
    glListBase(0);
    glPopAttrib();
    glFinish();
    image_ = Context().ReadPixels();
    int x0 = kW, x1 = -1, y0 = kH, y1 = -1;
    for (int y = 0; y < kH; ++y)
      for (int x = 0; x < kW; ++x)
        if (IsDark(Pixel(x, y))) x0 = std::min(x0, x), x1 = std::max(x1, x + 1), y0 = std::min(y0, y), y1 = std::max(y1, y + 1);
    return std::array<double, 4>{(x0 - 16) / 80.0, (x1 - 16) / 80.0, (y0 - 40) / 80.0, (y1 - 40) / 80.0};
  };
  const auto one = draw(FontOutlineLarge, "H"), two = draw(FontOutlineLarge, "HH");
  // A capital under one em high, on the base line; the second glyph stands
  // one advance to the right.
  EXPECT_NEAR(one[2], 0, 0.02);
  EXPECT_TRUE(one[3] > 0.6 && one[3] < 0.8) << one[3];
  EXPECT_TRUE(two[1] - one[1] > 0.6 && two[1] - one[1] < 0.9) << two[1] - one[1];
  EXPECT_NEAR(two[0], one[0], 0.02);
  // Seen from the side the glyph is 0.3 deep, from z 0 back to -0.3.
  const auto side = draw(FontOutlineLarge, "H", 90, 0.5f);
  EXPECT_NEAR(side[1] - side[0], 0.3, 0.03);
  EXPECT_NEAR(side[0], 0.5 - 0.3, 0.03);
  // Both sizes are in units of the em.
  const auto small = draw(FontOutlineSmall, "H");
  EXPECT_TRUE(std::fabs(small[3] - one[3]) < 0.02 && std::fabs(small[1] - one[1]) < 0.02);
  // A blank moves without drawing; codes 128 to 255 have glyphs of their own,
  // with the accent above the x height.
  EXPECT_LT(draw(FontOutlineLarge, " ")[1], -0.1);
  EXPECT_GT(draw(FontOutlineLarge, "\xE9")[3], 0.7);
}

TEST_F(TextTest, AFaceThatCannotBeHadShowsTheMessageAndDrawingGoesOn) {
  AddPoint(2.33f, 2.27f, 0, "Label");
  FontFileOverride = "/nonexistent/face.ttf";
  EXPECT_FALSE(BuildFonts());
  EXPECT_EQ(FontBitmapBase, 0u);
  EXPECT_EQ(FontOutlineSmall, 0u);
  EXPECT_EQ(FontOutlineLarge, 0u);
  ASSERT_EQ(host_.messages.size(), 3u);
  for (const auto& m : host_.messages) EXPECT_EQ(m.text, "Unable to create font");
  ShowAxis = true;
  Frame();
  EXPECT_TRUE(Near(At(2.33f, 2.27f), 255, 0, 0, 10));
  EXPECT_EQ(DarkPixelsAround(2.43f, 2.37f, 4.3f, 3.5f), 0);
  EXPECT_TRUE(IsDark(At(0, 3.5f)));  // the axes still draw

  FontFileOverride.clear();
  EXPECT_TRUE(BuildFonts());
  Frame();
  EXPECT_GT(DarkPixelsAround(2.43f, 2.37f, 4.3f, 3.5f), 5);
}

}  // namespace
}  // namespace vt
