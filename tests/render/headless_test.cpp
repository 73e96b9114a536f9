// One frame of a document without a window: the PNG shows the points, and
// damaged documents are refused with one line, as vantrel-cli reports them.
#include <stb_image.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "document/globals.h"
#include "persist/docio.h"
#include "render/headless.h"
#include "render_fixture.h"

namespace vt {
namespace {

using test::RenderTest;
using test::TempDir;

class HeadlessTest : public RenderTest {
 protected:
  // A plane document with three points of the given colours.
  std::string WriteDocument(const std::string& name) {
    const std::string text =
        "GL Ver3.00 1 0 0 0 0;;"
        "PT0001 -3 -2 0 1 4 255 0 1 1 @A@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;"
        "PT0002 3 -2 0 1 4 65280 0 1 1 @B@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;"
        "PT0003 0 3 0 1 4 16711680 0 3 1 @C@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;";
    std::string error;
    const std::string path = dir_.path(name);
    EXPECT_TRUE(WriteDocumentFile(path, text, error)) << error;
    return path;
  }
  static void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
  struct Png {
    int w = 0, h = 0;
    std::vector<unsigned char> rgb;
    // Colour at a scene point of a plane view 12 units high, y up.
    std::array<int, 3> At(float x, float y) const {
      const float scale = static_cast<float>(h) / 12;
      const int px = static_cast<int>(w / 2.0f + x * scale), py = static_cast<int>(h / 2.0f - y * scale);
      const unsigned char* p = &rgb[(static_cast<size_t>(py) * static_cast<size_t>(w) + static_cast<size_t>(px)) * 3];
      return {p[0], p[1], p[2]};
    }
  };
  static bool Load(const std::string& path, Png& png) {
    int n = 0;
    unsigned char* data = stbi_load(path.c_str(), &png.w, &png.h, &n, 3);
    if (!data) return false;
    png.rgb.assign(data, data + static_cast<size_t>(png.w) * static_cast<size_t>(png.h) * 3);
    stbi_image_free(data);
    return true;
  }
  TempDir dir_;
};

TEST_F(HeadlessTest, PngShowsThePointsOfTheDocumentInThePlaneAndInSpace) {
  HeadlessRender r;
  r.documentPath = WriteDocument("three.vtd");
  r.pngPath = dir_.path("three.png");
  r.width = 240, r.height = 180;
  std::string error;
  std::vector<std::string> messages;
  ASSERT_TRUE(RenderDocumentToPng(r, error, &messages)) << error;
  EXPECT_TRUE(messages.empty());
  Png png;
  ASSERT_TRUE(Load(r.pngPath, png));
  EXPECT_TRUE(png.w == 240 && png.h == 180);
  // Red, green, and blue (a square, symbol 3) where the points stand.
  EXPECT_TRUE(Near(png.At(-3, -2), 255, 0, 0, 10) && Near(png.At(3, -2), 0, 255, 0, 10) && Near(png.At(0, 3), 0, 0, 255, 10));
  EXPECT_TRUE(IsWhite(png.At(-1.5f, 1.5f)));
  // The host the test installed is back, and the document is the one opened.
  EXPECT_EQ(&host(), static_cast<Host*>(&host_));
  EXPECT_EQ(Doc.Points.count(), 3);

  r.pngPath = dir_.path("three3d.png");
  r.space = true;
  ASSERT_TRUE(RenderDocumentToPng(r, error)) << error;
  EXPECT_EQ(SceneMode, 3);
  ASSERT_TRUE(Load(r.pngPath, png));
  int red = 0;
  for (size_t i = 0; i + 2 < png.rgb.size(); i += 3)
    if (png.rgb[i] > 200 && png.rgb[i + 1] < 60 && png.rgb[i + 2] < 60) ++red;
  EXPECT_GT(red, 3);
}

TEST_F(HeadlessTest, DamagedFilesAreRefusedWithOneLineDamagedRecordsCostOnlyThemselves) {
  const std::string png = dir_.path("out.png");
  WriteBytes(dir_.path("garbage.vtd"), "this is not a document");
  WriteBytes(dir_.path("noscene.vtd"),
             EncodeDocumentFrame("PT0001 1 2 0 1 2 255 0 1 1 @A@ 0 0 0 0 @@ @@ @@ @@ 0 0 0 0 0 0 0 0;;"));
  // A damaged record costs only itself: the picture is drawn from what was
  // kept, and the one message names the damage.
  WriteBytes(dir_.path("badrecord.vtd"), EncodeDocumentFrame("GL Ver3.00 1 0 0 0 0;;PT0001 1 2 zero;;"));
  const struct {
    std::string doc;
    int width;
    const char* error;  // nullptr: drawn
  } cases[] = {{dir_.path("missing.vtd"), 240, "cannot open"}, {dir_.path("garbage.vtd"), 240, "is damaged"},
               {dir_.path("noscene.vtd"), 240, "is damaged"},  {WriteDocument("ok.vtd"), 0, ""},
               {dir_.path("badrecord.vtd"), 240, nullptr}};
  for (const auto& c : cases) {
    HeadlessRender r;
    r.documentPath = c.doc, r.pngPath = png, r.width = c.width;
    std::string error;
    std::vector<std::string> messages;
    EXPECT_EQ(RenderDocumentToPng(r, error, &messages), c.error == nullptr) << c.doc;
    EXPECT_EQ(std::filesystem::exists(png), c.error == nullptr) << c.doc;
    if (c.error) {
      EXPECT_TRUE(error.find(c.error) != std::string::npos && error.find('\n') == std::string::npos) << error;
    } else {
      ASSERT_EQ(messages.size(), 1u);
      EXPECT_NE(messages[0].find("could not be read"), std::string::npos) << messages[0];
    }
  }
}

// The command itself, when it was built beside the tests.
TEST_F(HeadlessTest, CommandLineExitCodesAndItsOneLineError) {
  std::error_code ec;
  const auto exe = std::filesystem::read_symlink("/proc/self/exe", ec).parent_path() / "vantrel-cli";
  if (ec || !std::filesystem::exists(exe)) GTEST_SKIP() << "vantrel-cli not built";
  const std::string doc = WriteDocument("cli.vtd");
  const std::string out = dir_.path("cli.png");
  const std::string err = dir_.path("stderr.txt");
  auto run = [&](const std::string& args) {
    const std::string cmd = "'" + exe.string() + "' render " + args + " 2>'" + err + "'";
    const int status = std::system(cmd.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  };
  EXPECT_EQ(run("'" + doc + "' '" + out + "' --size 120x90"), 0);
  Png png;
  ASSERT_TRUE(Load(out, png));
  EXPECT_TRUE(png.w == 120 && png.h == 90);
  const std::string damaged = dir_.path("damaged.vtd");
  WriteBytes(damaged, "\x08\x00\x05\x00" "junk!");
  EXPECT_EQ(run("'" + damaged + "' '" + dir_.path("no.png") + "'"), 1);
  std::ifstream in(err);
  std::string all((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 1) << all;
  EXPECT_NE(all.find("damaged"), std::string::npos) << all;
  EXPECT_EQ(run("'" + doc + "' '" + out + "' --size 12by9"), 2);
}

}  // namespace
}  // namespace vt
