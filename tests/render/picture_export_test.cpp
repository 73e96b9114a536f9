// Pictures of the scene as shapes and texts (the vector exports): the
// captured shapes checked against the pixels the same scene draws, the
// texts against where the view puts their points, and the files read back
// by libraries that know the formats.
#include <cmath>
#include <cstdio>
#include <string>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "geometry/circle.h"
#include "geometry/line.h"
#include "render/frame.h"
#include "render/picture.h"
#include "render_fixture.h"

#ifdef VANTREL_HAVE_PICTURE_FILE
#include <QFile>
#include <QImage>
#include <poppler-document.h>
#include <poppler-page.h>

#include "app/picture_file.h"
#endif

namespace vt {
namespace {

class PictureExport : public test::RenderTest {
 protected:
  // A segment, a dashed circle and two labelled points, one with Greek letters.
  void PlaneScene() {
    SetCanvas(200, 200, 20);
    a_ = AddPoint(-6, -6, 0, "\xce\xb1\xce\xb2\xce\xb3");  // αβγ
    b_ = AddPoint(6, 2, 0, "B");
    a_->HideLabel = b_->HideLabel = false;
    Segment(a_, b_);
    auto c = std::make_unique<CCircle>();
    c->ID = NewObjectId("CR");
    c->CType = 3, c->PCenter = Position(2, 3, 0), c->R = 4, c->GELineStyle = 2, c->ForeColor = RGB(0, 0, 255);
    Doc.Circles.Add(std::move(c));
  }
  const PictureText* FindText(const Picture& pic, const std::string& text) const {
    for (const PictureText& t : pic.texts)
      if (t.text == text) return &t;
    return nullptr;
  }
  // The text starts near its point, in picture pixels (y down).
  void ExpectTextAt(const Picture& pic, const std::string& text, const Position* p) const {
    const PictureText* t = FindText(pic, text);
    ASSERT_NE(t, nullptr) << text;
    double wx, wy;
    ASSERT_TRUE(WindowOf(p->x, p->y, p->z, wx, wy));
    EXPECT_NEAR(t->x, wx, 12) << text;
    EXPECT_NEAR(t->y, height_ - wy, 16) << text;
  }
  Position* a_ = nullptr;
  Position* b_ = nullptr;
};

TEST_F(PictureExport, PlaneSceneGivesPathsOnTheDrawnInkAndLabelsAsText) {
  PlaneScene();
  Frame();
  const Image drawn = image_;
  Picture pic;
  std::string error;
  ASSERT_TRUE(CapturePicture(pic, error)) << error;
  EXPECT_EQ(pic.width, 200);
  EXPECT_TRUE(pic.raster.empty());

  // Every corner of every solid stroke and fill lies on ink in the frame
  // drawn the usual way (within a pixel): feedback and rasteriser agree.
  int corners = 0;
  for (const PictureShape& s : pic.shapes) {
    if (s.kind == PictureShape::Dot || s.dash) continue;  // a dashed rim has its gaps
    for (size_t k = 0; k + 1 < s.xy.size(); k += 2, ++corners) {
      const int px = static_cast<int>(std::lround(s.xy[k])), py = height_ - 1 - static_cast<int>(std::lround(s.xy[k + 1]));
      bool ink = false;
      for (int dy = -1; dy <= 1 && !ink; ++dy)
        for (int dx = -1; dx <= 1 && !ink; ++dx) ink = !IsWhite(Pixel(px + dx, py + dy));
      EXPECT_TRUE(ink) << "stroke corner at " << px << "," << py;
    }
  }
  EXPECT_GT(corners, 20);

  // The circle is one closed blue path, dashed, 40 pixels about its centre.
  double cx, cy;
  ASSERT_TRUE(WindowOf(2, 3, 0, cx, cy));
  const PictureShape* rim = nullptr;
  for (const PictureShape& s : pic.shapes)
    if (s.kind == PictureShape::Stroke && s.b > 200 && s.r < 50 && s.xy.size() > 40) rim = &s;
  ASSERT_NE(rim, nullptr);
  EXPECT_TRUE(rim->closed);
  EXPECT_NE(rim->dash, 0);
  for (size_t k = 0; k + 1 < rim->xy.size(); k += 2)
    EXPECT_NEAR(std::hypot(rim->xy[k] - cx, rim->xy[k + 1] - (height_ - cy)), 40, 1.5);

  // Labels are texts, Greek included, beside their points.
  ExpectTextAt(pic, "\xce\xb1\xce\xb2\xce\xb3", a_);
  ExpectTextAt(pic, "B", b_);

  // The capture leaves the canvas as it was.
  Repaint();
  EXPECT_EQ(image_.rgb, drawn.rgb);

#ifdef VANTREL_HAVE_PICTURE_FILE
  // The SVG, read back as XML, is the worksheet session's (GUI).
  const std::string dir = ::testing::TempDir();
  // PDF: one page a PDF library opens, with the labels as text on it.
  ASSERT_TRUE(WritePictureFile(pic, dir + "/scene.pdf", 1, error)) << error;
  std::unique_ptr<poppler::document> pdf(poppler::document::load_from_file(dir + "/scene.pdf"));
  ASSERT_NE(pdf, nullptr);
  ASSERT_EQ(pdf->pages(), 1);
  std::unique_ptr<poppler::page> page(pdf->create_page(0));
  const poppler::byte_array text = page->text().to_utf8();
  EXPECT_NE(std::string(text.begin(), text.end()).find('B'), std::string::npos);

  // PNG at twice the canvas, with the blue rim where the frame has it.
  ASSERT_TRUE(WritePictureFile(pic, dir + "/scene.png", 2, error)) << error;
  const QImage png(QString::fromStdString(dir + "/scene.png"));
  ASSERT_EQ(png.size(), QSize(400, 400));
  const QRgb onRim = png.pixel(static_cast<int>(rim->xy[0] * 2), static_cast<int>(rim->xy[1] * 2));
  EXPECT_GT(qBlue(onRim), qRed(onRim) + 60);

  // A name that is none of the three formats is refused with a message.
  EXPECT_FALSE(WritePictureFile(pic, dir + "/scene.bmp", 1, error));
  EXPECT_FALSE(error.empty());
#endif
}

TEST_F(PictureExport, SpaceSceneIsItsFrameWithTheAxisNamesAsText) {
  mnuFileNew3D_Click();
  ShowAxis = true;
  SetCanvas(200, 160, 20);
  Frame();
  Picture pic;
  std::string error;
  ASSERT_TRUE(CapturePicture(pic, error)) << error;
  EXPECT_TRUE(pic.shapes.empty());
  ASSERT_EQ(pic.raster.width, 200);
  ASSERT_EQ(pic.raster.rgb.size(), 200u * 160u * 3u);
  int ink = 0;
  for (size_t k = 0; k < pic.raster.rgb.size(); k += 3) ink += pic.raster.rgb[k] < 200;
  EXPECT_GT(ink, 100);  // the axes are in the picture
  EXPECT_NE(FindText(pic, "z"), nullptr);
  EXPECT_NE(FindText(pic, "x"), nullptr);
}

}  // namespace
}  // namespace vt
