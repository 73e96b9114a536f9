// The start document drawn as the program shows it at start: no message on
// the way, the notes measure the figure, and the circle and the curve stand
// where their geometry puts them.
#include <cmath>
#include <cstdio>
#include <string>

#include "document/document.h"
#include "persist/docio.h"
#include "render_fixture.h"

namespace vt {
namespace {

using test::Rgb;

class StartDocumentTest : public test::RenderTest {
 protected:
  // A pixel of about this colour within two pixels of the scene point.
  bool ColourNear(float x, float y, int r, int g, int b) const {
    return AnyNear(x, y, 0, 2, [&](const Rgb& c) { return Near(c, r, g, b, 40); });
  }
  static std::string Fixed2(double v) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.2f", v);
    return buf;
  }
};

TEST_F(StartDocumentTest, DrawsItsFigureNotesAndCurve) {
  ASSERT_TRUE(OpenFile(std::string(VT_SOURCE_DATA_DIR) + "/Tutorials/T000.vtd"));
  SetCanvas(400, 300, 12);  // 25 pixels to the unit
  Frame();
  EXPECT_TRUE(host_.messages.empty()) << host_.LastMessage();

  ASSERT_EQ(Doc.Points.count(), 3);
  ASSERT_EQ(Doc.Notes.count(), 2);
  ASSERT_EQ(Doc.Circles.count(), 1);
  const Position *a = Doc.Points.Item(1), *b = Doc.Points.Item(2), *c = Doc.Points.Item(3);
  // The angle at A, in the degrees of the short constant.
  const double ux = b->x - a->x, uy = b->y - a->y, vx = c->x - a->x, vy = c->y - a->y;
  const double angle = std::acos((ux * vx + uy * vy) / (std::hypot(ux, uy) * std::hypot(vx, vy))) * 180 / 3.1416;
  EXPECT_EQ(Doc.Notes.Item(1)->Note, "angle BAC = " + Fixed2(angle) + "\u00B0");
  const CCircle* circle = Doc.Circles.Item(1);
  EXPECT_EQ(Doc.Notes.Item(2)->Note, "r ABC = " + Fixed2(circle->Radius()));

  // The circumcircle (green) at its top and bottom, the curve K sin(x) (blue)
  // at its crest with K at 1.5.
  const Position centre = circle->Centre();
  EXPECT_TRUE(ColourNear(centre.x, centre.y + circle->Radius(), 0, 128, 0));
  EXPECT_TRUE(ColourNear(centre.x, centre.y - circle->Radius(), 0, 128, 0));
  EXPECT_TRUE(ColourNear(1.5708f, 1.5f, 0, 0, 255));
  EXPECT_TRUE(ColourNear(4.7124f, -1.5f, 0, 0, 255));
  EXPECT_FALSE(ColourNear(1.5708f, -1.5f, 0, 0, 255));
}

}  // namespace
}  // namespace vt
