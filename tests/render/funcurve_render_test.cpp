// Function curves drawn offscreen: each form in both coordinate systems, the
// look of the draw modes, the overlays, and the results panel that Draw
// writes.
#include <cmath>
#include <functional>

#include "document/document.h"
#include "document/globals.h"
#include "graphs/curve_analysis.h"
#include "graphs/funcurve.h"
#include "persist/record.h"
#include "render/frame.h"
#include "graphs/graphs_test_util.h"
#include "render_fixture.h"

namespace vt {
namespace {

using test::RenderTest;
using test::Rgb;

class FunCurveDrawTest : public RenderTest {
 protected:
  CFunCurve* Curve(int funForm, int coordType, const std::string& fx, const std::string& fy, int steps,
                   const std::string& minU, const std::string& maxU, float minV = -5, float maxV = 5) {
    CFunCurve* p = Doc.FunCurves.Add(test::MakeCurve(funForm, coordType, fx, fy, steps, minU, maxU, minV, maxV));
    p->LineWidth = 3;
    if (funForm == 2 || funForm == 3) {
      EXPECT_TRUE(p->GetPoints());
    }
    return p;
  }
  // Some pixel within `radius` pixels of the scene point passes the test.
  bool Near(float x, float y, int radius, const std::function<bool(const Rgb&)>& test) const {
    return AnyNear(x, y, 0, radius, test);
  }
  static bool Bluish(const Rgb& c) { return c[2] > 180 && c[0] < 140 && c[1] < 140; }
  static bool Reddish(const Rgb& c) { return c[0] > 180 && c[1] < 140 && c[2] < 140; }
  static bool Greenish(const Rgb& c) { return c[1] > 150 && c[0] < 140 && c[2] < 140; }
  bool WhiteAround(float x, float y, int radius) const {
    return !Near(x, y, radius, [](const Rgb& c) { return !IsWhite(c); });
  }
};

TEST_F(FunCurveDrawTest, InequalityIsAFieldOfPoints) {
  SetCanvas(kW, kH, 6);
  CFunCurve* c = Curve(4, 1, "", "x^2+y^2-1", 20, "-2", "2", -2, 2);
  Frame();
  // Points half a pixel apart: the disc is solid.
  for (float x = -0.5f; x <= 0.5f; x += 0.1f)
    for (float y = -0.5f; y <= 0.5f; y += 0.1f) EXPECT_TRUE(Bluish(At(x, y))) << x << "," << y;
  EXPECT_TRUE(Near(0.6f, -0.5f, 0, Bluish));
  EXPECT_TRUE(WhiteAround(1.6f, 0, 2));
  EXPECT_EQ(c->FieldDensity(), 20);
  // Zoomed in until the points stand 3 pixels apart: dots with gaps.
  SetCanvas(kW, kH, 2);  // 60 pixels to the unit
  Frame();
  int dots = 0, white = 0;
  for (int px = 70; px < 90; ++px)
    for (int py = 50; py < 70; ++py) (IsWhite(Pixel(px, py)) ? white : dots)++;
  EXPECT_GT(dots, 20);
  EXPECT_GT(white, 200);  // most of the area between the dots stays white
  // The polar field r <= 1 over a full turn is the same disc.
  ClearDocument();
  Curve(4, 2, "", "r-1", 20, "0", "6.2832", 0, 1);
  Frame();
  EXPECT_TRUE(Near(0.5f, 0.5f, 1, Bluish));
  EXPECT_TRUE(WhiteAround(1.6f, 0, 2));
}

TEST_F(FunCurveDrawTest, OverlaysReachTheCanvas) {
  CFunCurve* c = Curve(2, 1, "", "0.5x+1", 60, "-6", "6");
  c->ShowInverse = c->ShowInt = c->ShowRoot = true;
  c->InvColor = RGB(0, 200, 0), c->IntColor = c->RootColor = RGB(255, 0, 0);
  c->IntFrom = 1, c->IntTo = 3, c->RootSize = 9;
  ASSERT_TRUE(c->GetPoints());
  Frame();
  // The inverse of (0, 1) is (1, 0), of (4, 3) it is (3, 4).
  EXPECT_TRUE(Near(3, 4, 1, Greenish));
  // The strip under the curve from 1 to 3, and none before it.
  EXPECT_TRUE(Near(2, 1, 0, [](const Rgb& p) { return p[0] > 200 && p[1] < 200 && p[2] < 200; }));
  EXPECT_TRUE(WhiteAround(0, 0.5f, 1));
  // The root marker at (-2, 0).
  EXPECT_TRUE(Near(-2, 0, 0, Reddish));
}

TEST_F(FunCurveDrawTest, DrawWritesTheCurvesLinesToTheResultsPanel) {
  CFunCurve* a = Curve(2, 1, "", "x^2-2", 99, "-5", "5");
  CFunCurve* b = Curve(2, 1, "", "x", 10, "0", "2");
  a->ShowRoot = b->ShowLen = true;
  b->LenFrom = 0, b->LenTo = 1;
  ASSERT_TRUE(a->GetPoints() && b->GetPoints());
  CurveResults.AddLine(a->ID, "stale");
  Frame();
  std::vector<std::string> expected = a->ResultLines();
  expected.insert(expected.end(), b->ResultLines().begin(), b->ResultLines().end());
  ASSERT_EQ(expected.size(), 3u);
  EXPECT_EQ(CurveResults.Lines(), expected);
  Frame();  // drawn again: the same lines, not twice
  EXPECT_EQ(CurveResults.Lines(), expected);
  EXPECT_EQ(CurveResults.Text().substr(0, 21), "y=x^2-2\n    Root: x=-");  // the root at -1.41 first
  // A curve that is gone takes its lines with it.
  Doc.FunCurves.Remove(1);
  Frame();
  EXPECT_EQ(CurveResults.Lines(), b->ResultLines());
}

TEST_F(FunCurveDrawTest, CurveReadFromADocumentSamplesAtItsFirstDraw) {
  test::AddParameter("k", 1);
  CFunCurve* c = Curve(2, 1, "", "k*x", 20, "-4", "4");
  // As the reader leaves it: formula text, no samples yet.
  const std::string rec = c->Save();
  Doc.FunCurves.Remove(1);
  RecordReader r(std::string_view(rec).substr(0, rec.size() - 2));
  CFunCurve* l = Doc.FunCurves.Add(CFunCurve::Load(r));
  EXPECT_TRUE(!l->Sampled() && l->Vert3D.empty());
  Frame();
  EXPECT_EQ(l->Vert3D.size(), 21u);
  EXPECT_TRUE(Near(2, 2, 1, Bluish));
}

}  // namespace
}  // namespace vt
