// The scene gallery: small plane documents rendered whole, each checked on
// its pixels in two ways that do not lean on each other (the place the view
// projects a scene point to, the canvas arithmetic of 10 pixels to the unit
// about the centre, the whole picture, or the object's own numbers).
#include <cmath>
#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

#include "document/document.h"
#include "geometry/line.h"
#include "geometry/propagation.h"
#include "graphs/funcurve.h"
#include "render_fixture.h"
#include "tools/transform.h"

namespace vt {
namespace {

using test::Rgb;
using PixelTest = std::function<bool(const Rgb&)>;

class SceneGallery;
struct Scene {
  const char* name;
  std::function<void(SceneGallery&)> run;
};

bool Red(const Rgb& c) { return c[0] - c[1] > 80 && c[0] - c[2] > 80; }
bool Blue(const Rgb& c) { return c[2] - c[0] > 80 && c[2] - c[1] > 80; }
bool Yellow(const Rgb& c) { return c[0] > 150 && c[1] > 120 && c[2] < 100; }
bool Dark(const Rgb& c) { return c[0] < 140 && c[1] < 140 && c[2] < 140; }
bool Ink(const Rgb& c) { return c[0] <= 245 || c[1] <= 245 || c[2] <= 245; }

class SceneGallery : public test::RenderTest, public ::testing::WithParamInterface<Scene> {
 public:
  static std::vector<Scene> Scenes();

 protected:
  void SetUp() override {
    RenderTest::SetUp();
    SetCanvas(200, 200, 20);  // 10 pixels to the unit, the origin in the middle
  }
  Position* Pt(float x, float y) {
    Position* p = AddPoint(x, y);
    p->Hide = true;  // only the objects under test show
    return p;
  }
  CCircle* Circle(float cx, float cy, float r, std::uint32_t color, int style = 1) {
    auto c = std::make_unique<CCircle>();
    c->ID = NewObjectId("CR");
    c->CType = 3;
    c->PCenter = Position(cx, cy, 0);
    c->R = r;
    c->ForeColor = color;
    c->GELineStyle = style;
    return Doc.Circles.Add(std::move(c));
  }
  CLine* Line(float x0, float y0, float x1, float y1, int lt, std::uint32_t color, int style = 1) {
    auto l = std::make_unique<CLine>();
    l->ID = NewObjectId("LN");
    l->Line1(Pt(x0, y0)->ID, Pt(x1, y1)->ID);
    l->lt = lt;
    l->ForeColor = color;
    l->GELineStyle = style;
    return Doc.Lines.Add(std::move(l));
  }
  // The arc about (cx, cy) of radius r from angle a0 to a1 (degrees).
  CArc* Arc(float cx, float cy, float r, float a0, float a1, std::uint32_t color, int at = 1) {
    auto a = std::make_unique<CArc>();
    a->ID = NewObjectId("AR");
    const double d0 = a0 * M_PI / 180, d1 = a1 * M_PI / 180;
    Position* p[] = {Pt(cx + r * static_cast<float>(std::cos(d0)), cy + r * static_cast<float>(std::sin(d0))),
                     Pt(cx, cy),
                     Pt(cx + r * static_cast<float>(std::cos(d1)), cy + r * static_cast<float>(std::sin(d1)))};
    a->Arc1(p[0]->ID, p[1]->ID, p[2]->ID);
    for (short i = 0; i < 3; ++i) p[i]->AddLink(CLinkObj{a->ID, 5, static_cast<short>(i + 1), 0, 1});
    a->ForeColor = color;
    a->AT = at;
    return Doc.Arcs.Add(std::move(a));
  }
  CRegion* Region(std::initializer_list<std::pair<float, float>> corners, std::uint32_t color, float alpha) {
    auto g = std::make_unique<CRegion>();
    g->ID = NewObjectId("RG");
    for (auto [x, y] : corners) g->Points.push_back(HolderCopy(*Pt(x, y)));
    g->ForeColor = color;
    g->Alpha = alpha;
    return Doc.Regions.Add(std::move(g));
  }
  CFunCurve* Curve(const std::string& fy, float from, float to, int style) {
    auto c = std::make_unique<CFunCurve>();
    c->Init(NewObjectId("C2"), "", 0, 1, "", fy, "", 400, 400, std::to_string(from), std::to_string(to), -5, 5,
            RGB(0, 0, 255), 2);
    c->LineStyle = style;
    CFunCurve* p = Doc.FunCurves.Add(std::move(c));
    EXPECT_TRUE(p->GetPoints());
    return p;
  }

  // Some pixel within a pixel of where the view projects (x, y) passes.
  bool Projected(float x, float y, const PixelTest& t) const {
    double wx, wy;
    if (!WindowOf(x, y, 0, wx, wy)) return false;
    return Around(static_cast<int>(std::floor(wx)), static_cast<int>(std::floor(wy)), t);
  }
  // The same at the pixel the canvas arithmetic gives, without the view.
  bool Counted(float x, float y, const PixelTest& t) const {
    return Around(100 + static_cast<int>(std::floor(10 * x)), 100 + static_cast<int>(std::floor(10 * y)), t);
  }
  bool Around(int px, int py, const PixelTest& t) const {
    for (int dy = -1; dy <= 1; ++dy)
      for (int dx = -1; dx <= 1; ++dx)
        if (t(Pixel(px + dx, py + dy))) return true;
    return false;
  }
  // Share of n places along (x(s), y(s)), s in [0, 1], where the test passes.
  double Share(const std::function<std::pair<float, float>(double)>& at, const PixelTest& t, int n = 360) const {
    int hits = 0;
    for (int i = 0; i < n; ++i) {
      auto [x, y] = at((i + 0.5) / n);
      hits += Projected(x, y, t);
    }
    return static_cast<double>(hits) / n;
  }
  double ShareOnCircle(float cx, float cy, float r, const PixelTest& t) const {
    return Share([&](double s) { return std::pair{cx + r * static_cast<float>(std::cos(2 * M_PI * s)),
                                                  cy + r * static_cast<float>(std::sin(2 * M_PI * s))}; },
                 t);
  }
  // Pixels of the whole picture that pass, left of column `split` and right.
  std::pair<int, int> CountSides(int split, const PixelTest& t) const {
    std::pair<int, int> n{0, 0};
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x)
        if (t(Pixel(x, y))) ++(x < split ? n.first : n.second);
    return n;
  }
  int DarkInWindowBox(float x, float y, int w, int h) const {
    double wx, wy;
    if (!WindowOf(x, y, 0, wx, wy)) return 0;
    return DarkPixels(static_cast<int>(wx) - 2, static_cast<int>(wy) - 2, static_cast<int>(wx) + w, static_cast<int>(wy) + h);
  }
  static double Rad(double deg) { return deg * M_PI / 180; }
};

std::vector<Scene> SceneGallery::Scenes() {
  return {
      {"DashedCircleAfterASolidOneKeepsItsColour",
       [](SceneGallery& g) {
         g.Circle(-5, 0, 3, RGB(255, 0, 0));
         g.Circle(5, 0, 3, RGB(0, 0, 255), 2);
         g.Frame();
         EXPECT_GT(g.ShareOnCircle(-5, 0, 3, Red), 0.9);
         const double blue = g.ShareOnCircle(5, 0, 3, Blue);
         EXPECT_GT(blue, 0.2);  // dashed: ink and gaps
         EXPECT_LT(blue, 0.8);
         EXPECT_EQ(g.ShareOnCircle(5, 0, 3, Red), 0);
         // The whole picture: red only on the left, blue only on the right.
         const auto red = g.CountSides(100, Red);
         const auto blues = g.CountSides(100, Blue);
         EXPECT_GT(red.first, 100);
         EXPECT_EQ(red.second, 0);
         EXPECT_EQ(blues.first, 0);
         EXPECT_GT(blues.second, 50);
       }},
      {"BlackDashedSegmentAfterAVectorIsBlack",
       [](SceneGallery& g) {
         g.Line(-8, 5, -2, 5, 4, RGB(255, 200, 0));  // a yellow vector
         g.Line(-6, -3, 6, -3, 1, RGB(0, 0, 0), 2);  // a black dashed segment
         g.Frame();
         auto along = [](double s) { return std::pair{static_cast<float>(-6 + 12 * s), -3.0f}; };
         const double dark = g.Share(along, Dark);
         EXPECT_GT(dark, 0.3);
         EXPECT_LT(dark, 0.9);
         EXPECT_EQ(g.Share(along, Yellow), 0);
         EXPECT_FALSE(g.Counted(8, -3, Ink));  // nothing past its end
         // Yellow is the vector's alone: all of it above the middle row.
         int yellowBelow = 0;
         for (int y = 0; y < 100; ++y)
           for (int x = 0; x < 200; ++x) yellowBelow += Yellow(g.Pixel(x, y));
         EXPECT_EQ(yellowBelow, 0);
         EXPECT_TRUE(g.Counted(-4, 5, Yellow));
       }},
      {"DashedSmoothCurveHasGaps",
       [](SceneGallery& g) {
         CFunCurve* c = g.Curve("2*sin(x)", -8, 8, 2);
         auto along = [](double s) {
           const float x = static_cast<float>(-7 + 14 * s);
           return std::pair{x, 2 * std::sin(x)};
         };
         g.Frame();
         const double dashed = g.Share(along, Blue, 700);
         EXPECT_GT(dashed, 0.25);
         EXPECT_LT(dashed, 0.85);
         c->LineStyle = 1;
         g.Frame();
         EXPECT_GT(g.Share(along, Blue, 700), 0.97);
       }},
      {"CurveLiesWhereTheFormulaPutsIt",
       [](SceneGallery& g) {
         g.Curve("x*x/4-3", -6, 6, 1);
         g.Frame();
         for (float x = -5; x <= 5; x += 0.5f) {
           const float y = x * x / 4 - 3;
           EXPECT_TRUE(g.Projected(x, y, Blue)) << x;
           EXPECT_TRUE(g.Counted(x, y, Blue)) << x;
           EXPECT_FALSE(g.Counted(x, y + 1.5f, Ink)) << x;
         }
       }},
      {"MirroredArcCoversTheAngleOfItsOriginal",
       [](SceneGallery& g) {
         CArc* src = g.Arc(-5, 0, 3, 0, 90, RGB(0, 0, 255));
         Position* a = g.Pt(0, -1);
         Position* b = g.Pt(0, 1);
         auto axis = std::make_unique<CLine>();
         axis->ID = NewObjectId("LN");
         axis->Line1(a->ID, b->ID);
         axis->Hide = true;
         const std::string axisId = Doc.Lines.Add(std::move(axis))->ID;
         TransformParams mirror;
         mirror.op = TransformOp::Mirror;
         mirror.centre = axisId;
         ApplyTransform({src->ID}, mirror, true);
         CArc* img = Doc.Arcs.Item(Doc.Arcs.count());
         ASSERT_NE(img, src);
         img->HideLabel = true;
         for (Position* p : Doc.Points) p->Hide = true;
         auto check = [&](double from, double to) {
           g.Frame();
           EXPECT_NEAR(img->RadiusAngle(), src->RadiusAngle(), 1e-3);
           const double mid = Rad((from + to) / 2), away = mid + M_PI;
           EXPECT_TRUE(g.Projected(5 + 3 * static_cast<float>(std::cos(mid)), 3 * static_cast<float>(std::sin(mid)), Blue));
           EXPECT_FALSE(g.Counted(5 + 3 * static_cast<float>(std::cos(away)), 3 * static_cast<float>(std::sin(away)), Ink));
         };
         check(90, 180);  // the image of 0..90 about (-5, 0) in x = 0
         // A drag of the source's begin to -30 degrees: the image follows.
         Position* begin = FindPoint(src->pBegin.ID);
         MovePointTo(*begin, -5 + 3 * static_cast<float>(std::cos(Rad(-30))), 3 * static_cast<float>(std::sin(Rad(-30))), 0);
         RefreshPass();
         check(90, 210);
       }},
      {"TinyCirclesAreDrawn",
       [](SceneGallery& g) {
         g.Circle(0, 0, 8, RGB(0, 160, 0));
         CCircle* solid = g.Circle(-4, -4, 0.25f, RGB(255, 0, 0));
         CCircle* dashed = g.Circle(4, -4, 0.25f, RGB(0, 0, 255), 2);
         g.Frame();
         EXPECT_EQ(solid->DrawSegments, 60);
         EXPECT_EQ(dashed->DrawSegments, 6);  // a hexagon
         for (const Position& p : solid->Rim) EXPECT_TRUE(g.Projected(p.x, p.y, Red));
         int dashes = 0;  // 8 pixels on and 8 off round 15 pixels
         for (const Position& p : dashed->Rim) dashes += g.Projected(p.x, p.y, Blue);
         EXPECT_GE(dashes, 3);
         EXPECT_TRUE(g.Counted(-4.25f, -4, Red));
         EXPECT_TRUE(g.Counted(-3.75f, -4, Red));
         EXPECT_TRUE(g.Counted(4.25f, -4, Blue) || g.Counted(3.75f, -4, Blue));
       }},
      {"FillsKeepTheirAlpha",
       [](SceneGallery& g) {
         g.Region({{-9, 2}, {-1, 2}, {-1, 9}, {-9, 9}}, RGB(0, 255, 0), 0.5f);
         g.Line(-9, -6, 9, -6, 1, RGB(0, 0, 0));
         g.Circle(0, 5, 3, RGB(0, 0, 0), 2);
         g.Circle(5, 5, 2, RGB(255, 0, 0))->Filled = true;
         g.Arc(-8, -8, 5, 0, 90, RGB(0, 0, 255), 2);  // a sector
         g.Arc(2, -8, 5, 0, 90, RGB(255, 0, 0), 2);   // a second sector
         g.Arc(2, 2, 6, 270, 360, RGB(0, 0, 255), 3);  // a bow face
         g.Frame();
         EXPECT_TRUE(Near(g.At(-5, 5), 128, 255, 128, 15));  // green at one half over white
         EXPECT_TRUE(Near(g.At(5, 5.5f), 255, 178, 178, 15));  // the filled circle at 0.3
         EXPECT_TRUE(Near(g.At(-6.5f, -7.5f), 178, 178, 255, 15));
         EXPECT_TRUE(Near(g.At(3.5f, -7.5f), 255, 178, 178, 15));
         EXPECT_TRUE(Near(g.At(5.7f, -1.7f), 178, 178, 255, 15));  // in the bow over the chord
         EXPECT_TRUE(IsWhite(g.At(3, 1)));                           // under the chord
         // The segment under the sectors shows through them.
         EXPECT_TRUE(g.Counted(-5, -6, Dark));
         EXPECT_TRUE(g.Counted(4, -6, Dark));
       }},
      {"LabelsOfCirclesArcsAndRegionsFollowShowLabel",
       [](SceneGallery& g) {
         CCircle* c = g.Circle(-5, 4, 2, RGB(255, 0, 0));
         CArc* a = g.Arc(4, 2, 3, 0, 90, RGB(0, 0, 255));
         CRegion* r = g.Region({{-8, -8}, {-2, -8}, {-2, -4}, {-8, -4}}, RGB(0, 255, 0), 0.3f);
         c->CLabel = "Cq";
         a->Label = "Aq";
         r->Label = "Rq";
         const float d = 2.1f * static_cast<float>(std::sqrt(0.5)), e = 3.1f * static_cast<float>(std::sqrt(0.5));
         auto count = [&] {
           return std::vector<int>{g.DarkInWindowBox(-5 + d, 4 + d, 16, 12), g.DarkInWindowBox(4 + e, 2 + e, 16, 12),
                                   g.DarkInWindowBox(-5, -6, 16, 12)};
         };
         g.Frame();
         const std::vector<int> shown = count();
         const int darkShown = g.DarkPixels(0, 0, 199, 199);
         c->HideLabel = a->HideLabel = r->HideLabel = true;
         g.Frame();
         for (int n : shown) EXPECT_GT(n, 4);
         for (int n : count()) EXPECT_EQ(n, 0);
         EXPECT_EQ(g.DarkPixels(0, 0, 199, 199), 0);  // the objects themselves are not dark
         EXPECT_GE(darkShown, shown[0] + shown[1] + shown[2]);
       }},
      {"NearlyStraightThreePointArcsStayCheap",
       [](SceneGallery& g) {
         auto three = [&](float mx, float my) {
           auto a = std::make_unique<CArc>();
           a->ID = NewObjectId("AR");
           a->AType = 2;
           a->arc2(g.Pt(-6, 0)->ID, g.Pt(mx, my)->ID, g.Pt(6, 0)->ID);
           a->ForeColor = RGB(0, 0, 255);
           return Doc.Arcs.Add(std::move(a));
         };
         CArc* shortWay = three(0, 1e-5f);
         g.Frame();
         EXPECT_LE(shortWay->Samples().size(), 4u);
         EXPECT_TRUE(g.Counted(0, 0, Blue));
         EXPECT_TRUE(g.Counted(-5.5f, 0, Blue));
         shortWay->Hide = true;
         // Through a middle point past the end: the long way round a circle
         // of a huge radius; near the ends it runs on outwards.
         CArc* longWay = three(8, 1e-4f);
         g.Frame();
         EXPECT_LE(longWay->Samples().size(), 1025u);
         EXPECT_TRUE(g.Counted(8, 0, Blue));
         EXPECT_TRUE(g.Counted(-8, 0, Blue));
         EXPECT_FALSE(g.Counted(0, 0, Ink));
       }},
  };
}

TEST_P(SceneGallery, RendersAsDrawn) { GetParam().run(*this); }

INSTANTIATE_TEST_SUITE_P(Plane, SceneGallery, ::testing::ValuesIn(SceneGallery::Scenes()),
                         [](const ::testing::TestParamInfo<Scene>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace vt
