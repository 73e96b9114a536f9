// Labels in any script: characters beyond ASCII are drawn from the label
// face (or its fallback), and a document written in the old one-byte code
// page opens with its accented letters and shows them.
#include <string>
#include <vector>

#include "document/document.h"
#include "persist/docio.h"
#include "render_fixture.h"

namespace vt {
namespace {

class UnicodeText : public test::RenderTest {
 protected:
  // The pixels right of and above a labelled point at the origin, where its
  // label is written, and how many of them are dark.
  std::vector<std::uint8_t> LabelArea(int& dark) {
    Frame();
    double wx, wy;
    EXPECT_TRUE(WindowOf(0.1f, 0.1f, 0, wx, wy));
    std::vector<std::uint8_t> area;
    dark = 0;
    for (int y = static_cast<int>(wy) - 4; y < static_cast<int>(wy) + 14; ++y)
      for (int x = static_cast<int>(wx) + 2; x < static_cast<int>(wx) + 40; ++x) {
        const test::Rgb c = Pixel(x, y);
        area.push_back(static_cast<std::uint8_t>(c[0]));
        dark += IsDark(c);
      }
    return area;
  }
  std::vector<std::uint8_t> Labelled(const std::string& label, int& dark) {
    ClearDocument();
    Position* p = AddPoint(0, 0, 0, label);
    p->HideLabel = false;
    return LabelArea(dark);
  }
};

TEST_F(UnicodeText, GreekAndAccentedLabelsHaveTheirOwnInk) {
  SetCanvas(kW, kH, 12);
  int greekInk = 0, queryInk = 0, degreeInk = 0;
  const auto greek = Labelled("\xce\xb1\xce\xb2\xce\xb3", greekInk);  // αβγ
  const auto query = Labelled("??", queryInk);
  Labelled("90\xc2\xb0", degreeInk);  // 90°
  int plainInk = 0;
  Labelled("90", plainInk);
  EXPECT_GT(greekInk, 10);
  EXPECT_GT(queryInk, 10);
  EXPECT_NE(greek, query);
  EXPECT_GT(degreeInk, plainInk);  // the degree sign is drawn

  // A file of the old code page: "\xe9" is e acute in one byte.
  ClearDocument();
  AddPoint(0, 0, 0, "Q")->HideLabel = false;
  std::string text = GetUndoVar();
  const size_t at = text.find("@Q@");
  ASSERT_NE(at, std::string::npos);
  text.replace(at, 3, "@\xe9@");
  const std::string path = ::testing::TempDir() + "/legacy.vtd";
  std::string error;
  ASSERT_TRUE(WriteDocumentFile(path, text, error)) << error;
  ClearDocument();
  std::string read;
  ASSERT_TRUE(ReadDocumentFile(path, read));
  ASSERT_TRUE(OpenDocumentText(read));
  ASSERT_EQ(Doc.Points.count(), 1);
  EXPECT_EQ(Doc.Points.Item(1)->PLabel, "\xc3\xa9");
  int accentInk = 0;
  LabelArea(accentInk);
  EXPECT_GT(accentInk, 3);
}

}  // namespace
}  // namespace vt
