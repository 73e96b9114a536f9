// Swept and derived surfaces drawn offscreen: a lit surface of rotation and a
// translucent sphere.
#include <cmath>
#include <memory>
#include <set>

#include "document/document.h"
#include "geometry/derived_surfaces.h"
#include "graphs/swept.h"
#include "render/frame.h"
#include "render/view_state.h"
#include "render_fixture.h"

namespace vt {
namespace {

using test::RenderTest;
using test::Rgb;

class SweptDrawTest : public RenderTest {
 protected:
  CLine* Segment(float x1, float y1, float z1, float x2, float y2, float z2) {
    Position* a = AddPoint(x1, y1, z1);
    Position* b = AddPoint(x2, y2, z2);
    a->Hide = b->Hide = true;
    auto l = std::make_unique<CLine>();
    l->ID = NewObjectId("LN");
    l->Line1(a->ID, b->ID);
    l->Hide = true;
    return Doc.Lines.Add(std::move(l));
  }
  static int Brightness(const Rgb& c) { return c[0] + c[1] + c[2]; }
};

TEST_F(SweptDrawTest, SurfaceOfRotationIsLitAcrossItsWidth) {
  // A segment at y = 1 turned fully about the x axis: a cylinder of radius 1
  // lying along x, seen from above as a band |y| <= 1.
  CLine* profile = Segment(-3, 1, 0, 3, 1, 0);
  CLine* axis = Segment(0, 0, 0, 1, 0, 0);
  auto s = std::make_unique<CSurRot>();
  s->ID = NewObjectId("SR");
  s->RotObjID = profile->ID;
  s->RotCenterID = axis->ID;
  s->StepV = 32;
  s->FillStyle = 4;
  s->FirstColor = RGB(40, 90, 160);
  CSurRot* rot = Doc.SurRots.Add(std::move(s));
  ASSERT_TRUE(rot->GetPoints());
  Frame();
  EXPECT_TRUE(IsWhite(At(0, 2.5f, 0)));
  EXPECT_TRUE(IsWhite(At(4, 0, 0)));
  // Inside the band the shading changes with the slope of the wall.
  std::set<int> levels;
  int covered = 0;
  for (float y = -0.9f; y <= 0.9f; y += 0.15f) {
    const Rgb c = At(0, y, 1);
    if (!IsWhite(c)) ++covered;
    levels.insert(Brightness(c) / 8);
  }
  EXPECT_EQ(covered, 13);
  EXPECT_GE(levels.size(), 4u);
  // Along the axis it stays the same.
  EXPECT_LT(std::abs(Brightness(At(-2, 0.5f, 1)) - Brightness(At(2, 0.5f, 1))), 12);

  // Selected, it is drawn in the selection colour: redder across the band.
  auto redness = [this] {
    int sum = 0;
    for (float y = -0.9f; y <= 0.9f; y += 0.15f) {
      const Rgb c = At(0, y, 1);
      sum += c[0] - (c[1] + c[2]) / 2;
    }
    return sum;
  };
  const int plain = redness();
  rot->SetDrawMode(2);
  Frame();
  EXPECT_GT(redness(), plain + 13 * 20);
}

TEST_F(SweptDrawTest, SphereIsTranslucent) {
  Position* c = AddPoint(0, 0, 0);
  Position* on = AddPoint(0, 0, 2);
  c->Hide = on->Hide = true;
  auto s = std::make_unique<CSphere>();
  s->ID = NewObjectId("SP");
  s->LKID = c->ID;
  s->LKID2 = on->ID;
  s->ForeColor = RGB(255, 0, 0);
  s->Alpha = 0.3f;
  CSphere* sphere = Doc.Spheres.Add(std::move(s));
  ASSERT_TRUE(sphere->InitPos());
  Frame();
  // Inside the outline the white canvas shows through the red.
  const Rgb mid = At(0, 0, 0);
  EXPECT_GT(mid[0], 230);
  EXPECT_GT(mid[1], 60);
  EXPECT_LT(mid[1], 215);
  EXPECT_NEAR(mid[1], mid[2], 12);
  EXPECT_TRUE(IsWhite(At(3, 0, 0)));
  // An opaque sphere hides the canvas.
  sphere->Alpha = 1;
  Frame();
  EXPECT_TRUE(Near(At(0, 0, 0), 255, 0, 0, 20));
  // Hidden, it draws nothing.
  sphere->Hide = true;
  Frame();
  EXPECT_TRUE(IsWhite(At(0, 0, 0)));
}

}  // namespace
}  // namespace vt
