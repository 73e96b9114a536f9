// The scene gallery: small plane documents rendered whole, each checked on
// its pixels in two ways that do not lean on each other: where the view
// projects a scene point (Projected), where the canvas arithmetic of 10
// pixels to the unit about the middle puts it (Counted), the whole picture,
// or the object's own numbers.
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

#include "document/document.h"
#include "document/globals.h"
#include "geometry/line.h"
#include "geometry/propagation.h"
#include "graphs/funcurve.h"
#include "graphs/graphs_test_util.h"
#include "render_fixture.h"
#include "tools/transform.h"

namespace vt {
namespace {

using test::Rgb;
using PixelTest = std::function<bool(const Rgb&)>;
using XY = std::pair<float, float>;

class SceneGallery;
struct Scene {
  const char* name;
  std::function<void(SceneGallery&)> run;
};

bool Red(const Rgb& c) { return c[0] - c[1] > 80 && c[0] - c[2] > 80; }
bool Blue(const Rgb& c) { return c[2] - c[0] > 80 && c[2] - c[1] > 80; }
bool Green(const Rgb& c) { return c[1] - c[0] > 80 && c[1] - c[2] > 80; }
bool Yellow(const Rgb& c) { return c[0] > 150 && c[1] > 120 && c[2] < 100; }
bool Ink(const Rgb& c) { return c[0] <= 245 || c[1] <= 245 || c[2] <= 245; }
// The place at `deg` degrees on the circle about (cx, cy) of radius r.
XY Polar(float cx, float cy, float r, double deg) {
  return {cx + r * static_cast<float>(std::cos(deg * M_PI / 180)), cy + r * static_cast<float>(std::sin(deg * M_PI / 180))};
}

class SceneGallery : public test::RenderTest, public ::testing::WithParamInterface<Scene> {
 public:
  static std::vector<Scene> Scenes();

 protected:
  void SetUp() override {
    RenderTest::SetUp();
    SetCanvas(200, 200, 20);
  }
  Position* Pt(XY at) {
    Position* p = AddPoint(at.first, at.second);
    p->Hide = true;  // only the objects under test show
    return p;
  }
  template <class T>
  static std::unique_ptr<T> Made(const char* tag, std::uint32_t color, int style) {
    auto o = std::make_unique<T>();
    o->ID = NewObjectId(tag), o->ForeColor = color, o->GELineStyle = style;
    return o;
  }
  CCircle* Circle(float cx, float cy, float r, std::uint32_t color, int style = 1) {
    auto c = Made<CCircle>("CR", color, style);
    c->CType = 3, c->PCenter = Position(cx, cy, 0), c->R = r;
    return Doc.Circles.Add(std::move(c));
  }
  CLine* Line(XY a, XY b, int lt, std::uint32_t color, int style = 1) {
    auto l = Made<CLine>("LN", color, style);
    l->Line1(Pt(a)->ID, Pt(b)->ID);
    l->lt = lt;
    return Doc.Lines.Add(std::move(l));
  }
  // From angle a0 to a1 (degrees) about (cx, cy); its points know it.
  CArc* Arc(float cx, float cy, float r, double a0, double a1, std::uint32_t color, int at = 1) {
    auto a = Made<CArc>("AR", color, 1);
    Position* p[] = {Pt(Polar(cx, cy, r, a0)), Pt({cx, cy}), Pt(Polar(cx, cy, r, a1))};
    a->Arc1(p[0]->ID, p[1]->ID, p[2]->ID);
    for (short i = 0; i < 3; ++i) p[i]->AddLink(CLinkObj{a->ID, 5, static_cast<short>(i + 1), 0, 1});
    a->AT = at;
    return Doc.Arcs.Add(std::move(a));
  }
  CRegion* Region(std::vector<XY> corners, std::uint32_t color, float alpha) {
    auto g = Made<CRegion>("RG", color, 1);
    for (XY c : corners) g->Points.push_back(HolderCopy(*Pt(c)));
    g->Alpha = alpha;
    return Doc.Regions.Add(std::move(g));
  }
  // A curve of the form (2 explicit, 3 parametric, 1 implicit) and system
  // (1 cartesian, 2 polar) over [from, to].
  CFunCurve* Curve(const std::string& fy, double from, double to, int style = 1, int form = 2, int coord = 1,
                   const std::string& fx = "") {
    CFunCurve* p = Doc.FunCurves.Add(test::MakeCurve(form, coord, fx, fy, 400, std::to_string(from), std::to_string(to), -8, 8));
    p->LineStyle = style;
    if (form != 1) EXPECT_TRUE(p->GetPoints());
    return p;
  }

  bool Projected(XY p, const PixelTest& t) const { return AnyNear(p.first, p.second, 0, 1, t); }
  // Some pixel within one of the canvas place (10 pixels to the unit) passes.
  bool Counted(XY p, const PixelTest& t) const {
    const int x = static_cast<int>(std::floor(100 + 10.0 * p.first)), y = static_cast<int>(std::floor(100 + 10.0 * p.second));
    return Count(x - 1, y - 1, x + 1, y + 1, t) > 0;
  }
  int Count(int x0, int y0, int x1, int y1, const PixelTest& t) const { return DarkPixels(x0, y0, x1, y1, t); }
  // Share of n places at(s), s in (0, 1), with a passing pixel.
  double Share(const std::function<XY(double)>& at, const PixelTest& t, int n = 360) const {
    int hits = 0;
    for (int i = 0; i < n; ++i) hits += Projected(at((i + 0.5) / n), t);
    return static_cast<double>(hits) / n;
  }
  double ShareOnCircle(float cx, float cy, float r, const PixelTest& t) const {
    return Share([&](double s) { return Polar(cx, cy, r, 360 * s); }, t);
  }
  // Dark pixels of a label's box from 2 pixels left of and below its place.
  int LabelInk(XY at) const {
    double wx, wy;
    if (!WindowOf(at.first, at.second, 0, wx, wy)) return 0;
    return Count(static_cast<int>(wx) - 2, static_cast<int>(wy) - 2, static_cast<int>(wx) + 16, static_cast<int>(wy) + 12, IsDark);
  }
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
         EXPECT_TRUE(blue > 0.2 && blue < 0.8) << blue;  // dashed: ink and gaps
         EXPECT_EQ(g.ShareOnCircle(5, 0, 3, Red), 0);
         // The whole picture: red only on the left half, blue only on the right.
         EXPECT_GT(g.Count(0, 0, 99, 199, Red), 100);
         EXPECT_EQ(g.Count(100, 0, 199, 199, Red), 0);
         EXPECT_EQ(g.Count(0, 0, 99, 199, Blue), 0);
         EXPECT_GT(g.Count(100, 0, 199, 199, Blue), 50);
       }},
      {"BlackDashedSegmentAfterAVectorIsBlack",
       [](SceneGallery& g) {
         g.Line({-8, 5}, {-2, 5}, 4, RGB(255, 200, 0));                 // a yellow vector
         CLine* dashed = g.Line({-6, -3}, {6, -3}, 1, RGB(0, 0, 0), 2);  // a black dashed segment
         g.Frame();
         auto along = [](double s) { return XY{static_cast<float>(-6 + 12 * s), -3.0f}; };
         const double dark = g.Share(along, IsDark);
         EXPECT_TRUE(dark > 0.3 && dark < 0.9) << dark;
         EXPECT_EQ(g.Share(along, Yellow), 0);
         EXPECT_FALSE(g.Counted({8, -3}, Ink));  // nothing past its end
         EXPECT_EQ(g.Count(0, 0, 199, 99, Yellow), 0);  // yellow only above the middle row
         EXPECT_TRUE(g.Counted({-4, 5}, Yellow));
         dashed->DrawMode = 2;  // selected: red and solid, whatever the style
         g.Frame();
         EXPECT_GT(g.Share(along, Red), 0.95);
       }},
      {"VectorHeadsInThePlaneOnly",
       [](SceneGallery& g) {
         g.SetCanvas(200, 200, 4);  // 50 pixels to the unit
         g.Line({-2, 1.01f}, {1.5f, 1.01f}, 4, 0)->GELineWidth = 1;
         g.Line({-0.15f, -1.01f}, {0.15f, -1.01f}, 4, 0)->GELineWidth = 1;  // shorter than a head
         g.Frame();
         // 0.45 long, 2 * 0.45 * tan 15 deg = 0.24 wide at the base; as long as
         // the vector where that is shorter.
         for (XY p : {XY{1.2f, 1.07f}, {1.2f, 0.95f}, {-0.12f, -0.97f}, {-0.12f, -1.05f}})
           EXPECT_TRUE(IsDark(g.At(p.first, p.second))) << p.first << ", " << p.second;
         for (XY p : {XY{1.2f, 1.17f}, {-1, 1.07f}, {1.6f, 1.01f}, {-0.22f, -1.01f}})
           EXPECT_TRUE(IsWhite(g.At(p.first, p.second))) << p.first << ", " << p.second;
         SceneMode = 3;  // in space a vector is a plain segment
         g.Frame();
         EXPECT_TRUE(IsDark(g.At(0, 1.01f)));
         EXPECT_TRUE(IsWhite(g.At(1.2f, 1.07f)) && IsWhite(g.At(1.2f, 0.95f)));
       }},
      {"DashedSmoothCurveHasGaps",
       [](SceneGallery& g) {
         CFunCurve* c = g.Curve("2*sin(x)", -8, 8, 2);
         auto along = [](double s) { return XY{static_cast<float>(-7 + 14 * s), 2 * std::sin(static_cast<float>(-7 + 14 * s))}; };
         g.Frame();
         const double dashed = g.Share(along, Blue, 700);
         EXPECT_TRUE(dashed > 0.25 && dashed < 0.85) << dashed;
         c->LineStyle = 1;
         g.Frame();
         EXPECT_GT(g.Share(along, Blue, 700), 0.97);
         c->DrawMode = 2;  // the draw modes colour it, solid
         g.Frame();
         EXPECT_GT(g.Share(along, Red), 0.95);
         c->DrawMode = 4;
         g.Frame();
         EXPECT_GT(g.Share(along, Green), 0.95);
         c->Hide = true;
         g.Frame();
         EXPECT_EQ(g.Share(along, Ink), 0);
       }},
      {"CurveFormsLieWhereTheirFormulasPutThem",
       [](SceneGallery& g) {
         g.Curve("x*x/4+4", -4, 4);                               // y = f(x)
         g.Curve("2*sin(u)-4", 0, 6.2832, 1, 3, 1, "2*cos(u)-5");  // a circle about (-5, -4)
         g.Curve("2*sin(2a)", 0, 6.2832, 1, 2, 2);                 // a rose of four petals
         g.Curve("(x-5)^2+(y+4)^2-4", -8, 8, 1, 1);                // implicit: a circle about (5, -4)
         g.Curve("1/(x-6)+3", 5, 7);  // two branches, no chord across
         g.Frame();
         std::vector<XY> on = {{6.5f, 5}, {5.5f, 1}}, off = {{-5, -4}, {5, -4}, {1.5f, 0}, {0, -1.5f}};
         for (float y = 0; y <= 6; y += 0.1f) off.push_back({6.005f, y});
         for (float x = -4; x <= 4; x += 0.5f) on.push_back({x, x * x / 4 + 4}), off.push_back({x, x * x / 4 + 5.5f});
         for (double a = 0; a < 360; a += 45) on.push_back(Polar(-5, -4, 2, a)), on.push_back(Polar(5, -4, 2, a + 10));
         for (double a = 45; a < 360; a += 90) on.push_back(Polar(0, 0, 2, a));
         for (XY p : on) EXPECT_TRUE(g.Projected(p, Blue) && g.Counted(p, Blue)) << p.first << ", " << p.second;
         for (XY p : off) EXPECT_FALSE(g.Counted(p, Ink)) << p.first << ", " << p.second;
         const Image first = g.image_;  // repaints trace the implicit grid anew: the same picture
         g.Frame();
         EXPECT_EQ(first.rgb, g.image_.rgb);
       }},
      {"MirroredArcCoversTheAngleOfItsOriginal",
       [](SceneGallery& g) {
         CArc* src = g.Arc(-5, 0, 3, 0, 90, RGB(0, 0, 255));
         CLine* axis = g.Line({0, -1}, {0, 1}, 2, 0);  // the line x = 0
         axis->Hide = true;
         TransformParams mirror;
         mirror.op = TransformOp::Mirror;
         mirror.centre = axis->ID;
         ApplyTransform({src->ID}, mirror, true);
         CArc* img = Doc.Arcs.Item(Doc.Arcs.count());
         ASSERT_NE(img, src);
         img->HideLabel = true;
         for (Position* p : Doc.Points) p->Hide = true;
         auto check = [&](double from, double to) {
           g.Frame();
           EXPECT_NEAR(img->RadiusAngle(), src->RadiusAngle(), 1e-3);
           EXPECT_TRUE(g.Projected(Polar(5, 0, 3, (from + to) / 2), Blue));
           EXPECT_FALSE(g.Counted(Polar(5, 0, 3, (from + to) / 2 + 180), Ink));
         };
         check(90, 180);  // the image of 0..90 about (-5, 0)
         // A drag of the source's begin to -30 degrees: the image follows.
         const XY to = Polar(-5, 0, 3, -30);
         MovePointTo(*FindPoint(src->pBegin.ID), to.first, to.second, 0);
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
         for (const Position& p : solid->Rim) EXPECT_TRUE(g.Projected({p.x, p.y}, Red));
         int dashes = 0;  // 8 pixels on and 8 off round 15 pixels
         for (const Position& p : dashed->Rim) dashes += g.Projected({p.x, p.y}, Blue);
         EXPECT_GE(dashes, 3);
         EXPECT_TRUE(g.Counted({-4.25f, -4}, Red) && g.Counted({-3.75f, -4}, Red));
         EXPECT_TRUE(g.Counted({4.25f, -4}, Blue) || g.Counted({3.75f, -4}, Blue));
       }},
      {"FillsKeepTheirAlpha",
       [](SceneGallery& g) {
         g.Region({{-9, 2}, {-1, 2}, {-1, 9}, {-9, 9}}, RGB(0, 255, 0), 0.5f);
         g.Line({-9, -6}, {9, -6}, 1, RGB(0, 0, 0));
         g.Circle(0, 5, 3, RGB(0, 0, 0), 2);
         g.Circle(5, 5, 2, RGB(255, 0, 0))->Filled = true;
         g.Arc(-8, -8, 5, 0, 90, RGB(0, 0, 255), 2);    // a sector
         g.Arc(2, -8, 5, 0, 90, RGB(255, 0, 0), 2);     // a second sector
         g.Arc(2, 2, 6, 270, 360, RGB(0, 0, 255), 3);  // a bow face
         g.Frame();
         EXPECT_TRUE(Near(g.At(-5, 5), 128, 255, 128, 15));    // green at one half over white
         EXPECT_TRUE(Near(g.At(5, 5.5f), 255, 178, 178, 15));  // the filled circle at 0.3
         EXPECT_TRUE(Near(g.At(-6.5f, -7.5f), 178, 178, 255, 15));
         EXPECT_TRUE(Near(g.At(3.5f, -7.5f), 255, 178, 178, 15));
         EXPECT_TRUE(Near(g.At(5.7f, -1.7f), 178, 178, 255, 15));  // in the bow over the chord
         EXPECT_TRUE(IsWhite(g.At(3, 1)));                           // under the chord
         // The segment under the sectors shows through them.
         EXPECT_TRUE(g.Counted({-5, -6}, IsDark) && g.Counted({4, -6}, IsDark));
       }},
      {"LabelsOfCirclesArcsAndRegionsFollowShowLabel",
       [](SceneGallery& g) {
         CCircle* c = g.Circle(-5, 4, 2, RGB(255, 0, 0));
         CArc* a = g.Arc(4, 2, 3, 0, 90, RGB(0, 0, 255));
         CRegion* r = g.Region({{-8, -8}, {-2, -8}, {-2, -4}, {-8, -4}}, RGB(0, 255, 0), 0.3f);
         Position* p = g.AddPoint(5, -6, 0, "Pq");  // a red disc, labelled above right
         p->Symbol = 1, p->Size = 9;
         c->CLabel = "Cq", a->Label = "Aq", r->Label = "Rq";
         // On the rim an eighth of a turn up, half way along the arc, in the
         // middle of the corners, above right of the point.
         auto ink = [&] {
           return std::vector<int>{g.LabelInk(Polar(-5, 4, 2.1f, 45)), g.LabelInk(Polar(4, 2, 3.1f, 45)),
                                   g.LabelInk({-5, -6}), g.LabelInk({5.1f, -5.9f})};
         };
         g.Frame();
         const std::vector<int> shown = ink();
         const int darkShown = g.Count(0, 0, 199, 199, IsDark);
         c->HideLabel = a->HideLabel = r->HideLabel = p->HideLabel = true;
         g.Frame();
         for (int n : shown) EXPECT_GT(n, 4);
         for (int n : ink()) EXPECT_EQ(n, 0);
         EXPECT_EQ(g.Count(0, 0, 199, 199, IsDark), 0);  // the objects themselves are not dark
         EXPECT_GE(darkShown, shown[0] + shown[1] + shown[2] + shown[3]);
         EXPECT_TRUE(g.Projected({5, -6}, Red) && g.Counted({5, -6}, Red));  // the point's symbol stays
         p->Hide = true;
         g.Frame();
         EXPECT_FALSE(g.Counted({5, -6}, Ink));
       }},
      {"NearlyStraightThreePointArcsStayCheap",
       [](SceneGallery& g) {
         auto three = [&](XY mid) {
           auto a = Made<CArc>("AR", RGB(0, 0, 255), 1);
           a->AType = 2;
           a->arc2(g.Pt({-6, 0})->ID, g.Pt(mid)->ID, g.Pt({6, 0})->ID);
           return Doc.Arcs.Add(std::move(a));
         };
         CArc* shortWay = three({0, 1e-5f});
         g.Frame();
         EXPECT_LE(shortWay->Samples().size(), 4u);
         EXPECT_TRUE(g.Counted({0, 0}, Blue) && g.Counted({-5.5f, 0}, Blue));
         shortWay->Hide = true;
         // Through a middle point past the end: the long way round a circle
         // of a huge radius; near the ends it runs on outwards.
         CArc* longWay = three({8, 1e-5f});
         g.Frame();
         EXPECT_LE(longWay->Samples().size(), 1025u);
         EXPECT_TRUE(g.Counted({8, 0}, Blue) && g.Counted({-8, 0}, Blue));
         EXPECT_FALSE(g.Counted({0, 0}, Ink));
       }},
  };
}

TEST_P(SceneGallery, RendersAsDrawn) { GetParam().run(*this); }

INSTANTIATE_TEST_SUITE_P(Plane, SceneGallery, ::testing::ValuesIn(SceneGallery::Scenes()),
                         [](const ::testing::TestParamInfo<Scene>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace vt
