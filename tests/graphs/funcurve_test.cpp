#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

#include "document/document.h"
#include "document/globals.h"
#include "expr/expression.h"
#include "geometry/line.h"
#include "geometry/propagation.h"
#include "graphs/curve_analysis.h"
#include "graphs/contour.h"
#include "graphs/funcurve.h"
#include "graphs_test_util.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "support/fixtures.h"

namespace vt {
namespace {

using test::AddParameter;
using test::MakeCurve;
using test::MakeGraph;

class FunCurveTest : public test::DocumentTest {
 protected:
  static bool Hole(const Position& p) { return p.x == BreakValue || p.y == BreakValue || p.z == BreakValue; }
  // The total length of traced segments (x1, y1, x2, y2 each).
  static double Length(const std::vector<float>& s) {
    double len = 0;
    for (size_t k = 0; k + 3 < s.size(); k += 4) len += std::hypot(s[k + 2] - s[k], s[k + 3] - s[k + 1]);
    return len;
  }
};

// ---- sampling ----------------------------------------------------------------------

TEST_F(FunCurveTest, ReciprocalHasAHoleAtZeroAndNoChordAcrossIt) {
  auto c = MakeGraph("1/x", 100, "-1", "1");
  ASSERT_TRUE(c->GetPoints());
  ASSERT_EQ(c->Vert3D.size(), 101u);
  EXPECT_TRUE(c->Vert3D[50].x == 0 && c->Vert3D[50].y == BreakValue);
  EXPECT_TRUE(host_.messages.empty());  // a silent break, no "Devision by zero."
  for (size_t i = 0; i + 1 < c->Vert3D.size(); ++i) {  // no drawable chord spans x = 0
    const Position &a = c->Vert3D[i], &b = c->Vert3D[i + 1];
    if (!Hole(a) && !Hole(b)) EXPECT_FALSE(a.x <= 0 && b.x >= 0) << i;
  }
  EXPECT_FLOAT_EQ(c->Vert3D[49].y, 1 / c->Vert3D[49].x);
  EXPECT_NEAR(c->Vert3D[0].y, -1, 1e-6);
}

TEST_F(FunCurveTest, StepsRangesAndTheClipBox) {
  auto c = MakeGraph("x^2", 0, "1", "3");  // zero steps behave as one
  c->StepV = 0;
  ASSERT_TRUE(c->GetPoints());
  EXPECT_TRUE(c->StepU == 1 && c->StepV == 1);
  ASSERT_EQ(c->Vert3D.size(), 2u);
  EXPECT_TRUE(c->Vert3D[0].y == 1 && c->Vert3D[1].y == 9);
  auto back = MakeGraph("x", 4, "2", "-2");  // a range may run backwards
  ASSERT_TRUE(back->GetPoints());
  EXPECT_TRUE(back->Vert3D[0].x == 2 && back->Vert3D[4].x == -2 && back->StartValue == 2 && back->EndValue == -2);
  // Clipping runs to StepV only.
  auto high = MakeGraph("1000", 10, "0", "10");
  high->StepV = 5;
  ASSERT_TRUE(high->GetPoints());
  for (int i = 0; i <= 10; ++i) EXPECT_EQ(high->Vert3D[i].y, i <= 5 ? BreakValue : 1000.0f) << i;
  // A smaller clip box cuts in x as well, one axis at a time.
  BoxMinX = -1, BoxMaxX = 1;
  auto d = MakeGraph("x", 4, "-2", "2");
  ASSERT_TRUE(d->GetPoints());
  EXPECT_TRUE(d->Vert3D[0].x == BreakValue && d->Vert3D[0].y == -2 && d->Vert3D[2].x == 0);
}

TEST_F(FunCurveTest, PolarAndParametricFormsAndTheirParameters) {
  auto rose = MakeCurve(2, 2, "", "2", 8, "0", "6.2832");
  ASSERT_TRUE(rose->GetPoints());
  for (const Position& p : rose->Vert3D) EXPECT_NEAR(std::hypot(p.x, p.y), 2, 1e-5);
  EXPECT_TRUE(std::fabs(rose->Vert3D[2].x) < 1e-4 && std::fabs(rose->Vert3D[2].y - 2) < 1e-4);  // a = pi/2
  auto circle = MakeCurve(3, 1, "2cos(u)", "2sin(u)", 4, "0", "2pi");
  ASSERT_TRUE(circle->GetPoints());
  EXPECT_NEAR(circle->Vert3D[0].x + circle->Vert3D[1].y - circle->Vert3D[2].x, 6, 1e-4);
  // a(u), r(u): the spiral r = u at angle u.
  auto spiral = MakeCurve(3, 2, "u", "u", 2, "0", "pi");
  ASSERT_TRUE(spiral->GetPoints());
  EXPECT_NEAR(spiral->Vert3D[1].y, M_PI / 2, 1e-5);
  EXPECT_NEAR(spiral->Vert3D[2].x, -M_PI, 1e-5);
  // A hole in r is not a hole of the point: r times a cosine of BreakValue.
  auto holed = MakeCurve(2, 2, "", "sqr(a-1)", 1, "0.5", "2");
  ASSERT_TRUE(holed->GetPoints());
  EXPECT_FLOAT_EQ(holed->Vert3D[0].x, static_cast<float>(BreakValue * std::cos(0.5)));
  EXPECT_NEAR(holed->Vert3D[1].x, std::cos(2.0), 1e-5);
  // Parameters are read before every sample, the range's included.
  CNote* k = AddParameter("k", 2);
  auto c = MakeGraph("k*x", 2, "0", "k");
  ASSERT_TRUE(c->GetPoints());
  EXPECT_TRUE(c->EndValue == 2 && c->Vert3D[2].y == 4);
  k->Value = 3;
  ASSERT_TRUE(c->GetPoints());
  EXPECT_TRUE(c->Vert3D[2].x == 3 && c->Vert3D[2].y == 9);
}

TEST_F(FunCurveTest, BadFormulasFailQuietlyOrWithTheCompilersBox) {
  EXPECT_FALSE(MakeGraph("x+", 10, "0", "1")->GetPoints());
  ASSERT_EQ(host_.messages.size(), 1u);
  EXPECT_EQ(host_.messages[0].title, "Syntax Error");
  EXPECT_FALSE(MakeGraph("x", 10, "0", "q")->GetPoints());
  // An overflow is a hole, not a failure.
  host_.messages.clear();
  auto big = MakeGraph("exp(x)*exp(x)", 2, "0", "100");
  ASSERT_TRUE(big->GetPoints());
  EXPECT_EQ(big->Vert3D[2].y, BreakValue);
  EXPECT_TRUE(host_.messages.empty());
  // A damaged step count stops sampling without touching memory it has not.
  auto neg = MakeGraph("x", -3, "0", "1");
  EXPECT_FALSE(neg->GetPoints());
  EXPECT_EQ(neg->Points().size(), 51u);
  // Only the listed graph kinds sample: the others keep fresh samples.
  auto kind = MakeGraph("x", 4, "0", "4");
  kind->GraphType = 9;
  ASSERT_TRUE(kind->GetPoints());
  EXPECT_FLOAT_EQ(kind->Vert3D[4].x, 0);
  kind->GraphType = 41;
  ASSERT_TRUE(kind->GetPoints());
  EXPECT_FLOAT_EQ(kind->Vert3D[4].x, 4);
}

// ---- implicit curves and point fields ----------------------------------------------------

TEST_F(FunCurveTest, ImplicitCurvesTraceOnAFineGridAndReportASyntaxErrorOnce) {
  // Polar: r = 2 in the a, r plane is a circle of length 4 pi, traced on a
  // grid of 90 steps whatever the curve's own steps.
  auto p = MakeCurve(1, 2, "", "r-2", 20, "0", "6.2832", 0, 5);
  ASSERT_TRUE(p->TraceImplicit());
  EXPECT_TRUE(p->StepU == 90 && p->StepV == 90);
  EXPECT_NEAR(Length(p->TracedSegments()), 4 * M_PI, 0.01 * 4 * M_PI);
  auto c = MakeCurve(1, 1, "", "x^2+y^2-", 20, "-5", "5");
  EXPECT_FALSE(c->TraceImplicit());
  EXPECT_FALSE(c->TraceImplicit());
  EXPECT_EQ(host_.messages.size(), 1u);
  c->ExpressY = "x^2+y^2-1";
  EXPECT_TRUE(c->TraceImplicit());
  EXPECT_FALSE(c->TracedSegments().empty());
  // A domain hole inside the grid is a hole, not a failure.
  c->ExpressY = "sqr(x)-y";
  EXPECT_TRUE(c->TraceImplicit());
  for (size_t k = 0; k < c->TracedSegments().size(); k += 2) EXPECT_GE(c->TracedSegments()[k], -1e-3f);
}

// The tracer under the implicit curves, on grids of its own: closed lines
// close, open ones end on the border, saddles and holes split lines.
TEST_F(FunCurveTest, ContourLinesCloseEndOnTheBorderAndStopAtHoles) {
  auto trace = [](int n, float lo, float hi, auto f, int holeColumn = 0) {
    ContourGrid g(n, n);
    const float step = (hi - lo) / static_cast<float>(n - 1);
    for (int i = 1; i <= n; ++i)
      for (int j = 1; j <= n; ++j)
        g(i, j) = i == holeColumn ? std::numeric_limits<float>::quiet_NaN() : f(lo + (i - 1) * step, lo + (j - 1) * step);
    std::vector<float> segs;
    CContour::Trace(g, 0, ContourFrame{lo, lo, step, step}, segs);
    return segs;
  };
  // Ends met once (open line ends) and the largest count of any end.
  auto ends = [](const std::vector<float>& s) {
    std::map<std::pair<float, float>, int> n;
    for (size_t k = 0; k + 1 < s.size(); k += 2) ++n[{s[k], s[k + 1]}];
    int single = 0, most = 0;
    for (const auto& [p, c] : n) single += c == 1, most = std::max(most, c);
    return std::make_pair(single, most);
  };
  auto circles = trace(61, -3, 3, [](float x, float y) { return std::min((x - 1.5f) * (x - 1.5f), (x + 1.5f) * (x + 1.5f)) + y * y - 0.5f; });
  EXPECT_NEAR(Length(circles), 4 * M_PI * std::sqrt(0.5), 0.02 * 4 * M_PI * std::sqrt(0.5));
  EXPECT_EQ(ends(circles), std::make_pair(0, 2));
  auto open = trace(21, -1, 1, [](float x, float y) { return y - 0.3f * x - 0.05f; });
  EXPECT_EQ(ends(open).first, 2);
  EXPECT_NEAR(Length(open), 2 * std::sqrt(1.09), 1e-3);
  for (size_t k = 0; k + 3 < open.size(); k += 4) EXPECT_LE(std::max(std::fabs(open[k]), std::fabs(open[k + 2])), 1 + 1e-5f);
  auto saddle = trace(40, -1, 1, [](float x, float y) { return x * y + 0.001f; });
  ASSERT_FALSE(saddle.empty());
  for (size_t k = 0; k + 3 < saddle.size(); k += 4)
    EXPECT_LE((saddle[k] + saddle[k + 2]) * (saddle[k + 1] + saddle[k + 3]), 0.0f);
  // A column of holes at x = 0.5 cuts the unit circle into two arcs.
  auto cut = trace(41, -2, 2, [](float x, float y) { return x * x + y * y - 1; }, 26);
  EXPECT_EQ(ends(cut), std::make_pair(4, 2));
  for (size_t k = 0; k < cut.size(); k += 2) EXPECT_FALSE(cut[k] > 0.4001f && cut[k] < 0.5999f) << cut[k];
  // A flat grid at the level has no line; nodes on the level are moved off it.
  ContourGrid flat(5, 5, 0.0f);
  std::vector<float> none;
  CContour::Trace(flat, 0, ContourFrame{}, none);
  EXPECT_TRUE(none.empty() && flat(3, 3) == 1e-5f);
  auto plane = trace(5, 0, 4, [](float x, float) { return x - 2; });
  ASSERT_EQ(plane.size(), 16u);
  EXPECT_LT(plane[0], 2.0f);
  EXPECT_NEAR(plane[0], 2.0f, 1e-4f);
}

// ---- box, pick, dependent objects --------------------------------------------------------

TEST_F(FunCurveTest, PointsAndCrossingsWithALine) {
  // Points gives 51 samples and leaves the curve's own alone.
  auto c = MakeGraph("2x", 200, "0", "10");
  ASSERT_TRUE(c->GetPoints());
  const std::vector<Position> p = c->Points();
  ASSERT_EQ(p.size(), 51u);
  EXPECT_TRUE(p[0].x == 0 && p[50].x == 10 && p[25].y == 10);
  EXPECT_TRUE(c->StepU == 200 && c->Vert3D.size() == 201u);
  EXPECT_EQ(c->NearestSample(5.02f, 10), 100);
  // The crossings with a line are numbered along the curve.
  auto q = MakeGraph("x^2-1", 100, "-3", "3");
  ASSERT_TRUE(q->GetPoints());
  CLine l;
  l.lt = 2;
  l.Line2(Position(-10, 0, 0), Position(10, 0, 0));
  Position first, second, third(7, 7, 0);
  EXPECT_EQ(q->LineInter(l, 1, first) + q->LineInter(l, 2, second) + q->LineInter(l, 3, third), 2);
  EXPECT_TRUE(std::fabs(first.x + 1) < 1e-3 && std::fabs(second.x - 1) < 1e-3);
  EXPECT_FLOAT_EQ(third.x, 7);  // untouched
  l.lt = 1;  // a segment that ends before the second crossing
  l.Line2(Position(-10, 0, 0), Position(0, 0, 0));
  EXPECT_EQ(q->LineInters(l).size(), 1u);
}

TEST_F(FunCurveTest, OddValuesOfADamagedDocumentNeverBreakAnything) {
  struct Case {
    int form, coord, steps;
    const char *fx, *fy, *lo, *hi;
    float minV, maxV;
  };
  const Case cases[] = {
      {7, 0, 10, "x", "x", "0", "1", 0, 1},            // unknown form and system
      {1, 1, 10, "", "x-y", "0", "0", 0, 0},           // empty ranges
      {1, 2, 10, "", "r-1", "5", "-5", 3, -3},         // reversed ranges
      {4, 1, 10, "", "x", "-1e6", "1e6", -1e6, 1e6},   // a field far too large
      {4, 1, 10, "", "x", "3", "-3", 3, -3},           // reversed field
      {3, 1, 100000, "u", "u", "0", "1", 0, 0},        // many steps
      {2, 1, 200000, "", "x", "0", "1", 0, 0},         // too many
      {2, 1, 10, "", "asin(x*0.99999999)", "-1", "1", 0, 0},  // a value that pushes nothing
      {3, 2, 10, "", "", "0", "1", 0, 0},              // empty formulas
  };
  for (const Case& k : cases) {
    auto c = MakeCurve(k.form, k.coord, k.fx, k.fy, k.steps, k.lo, k.hi, k.minV, k.maxV);
    c->ShowRoot = c->ShowMax = c->ShowGuai = c->ShowLen = c->ShowInt = c->ShowQie = c->ShowCurv = true;
    c->QieX = {0.5f};
    c->CurvX = {0.5f};
    c->GetPoints(), c->TraceImplicit(), c->ComputeField(), c->GetBox();
    EXPECT_EQ(c->Points().size(), 51u);
    CLine l;
    l.lt = 2;
    l.Line2(Position(-1, -1, 0), Position(1, 1, 0));
    c->LineInters(l), c->Pick(Position(0, 0, 0), Position(0, 0, -50), Position(0, 0, 50)), c->NearestSample(0, 0);
  }
}

TEST_F(FunCurveTest, DamagedRecordsAreLeftOut) {
  SceneMode = 1;
  auto c = MakeGraph("x", 10, "0", "1");
  c->CurvPosExp = "cc";
  Doc.FunCurves.Add(std::move(c));
  const std::string good = GetUndoVar();
  ASSERT_TRUE(OpenDocumentText(good));
  ASSERT_EQ(Doc.FunCurves.count(), 1);
  // Cut inside the overlay fields, a list count out of bounds, a text where
  // a number belongs.
  const std::string rec = Doc.FunCurves.Item(1)->Save();
  const std::string cut = rec.substr(0, rec.size() / 2) + ";;";
  std::string huge = rec;
  huge.replace(huge.find("@cc@ 0 "), 7, "@cc@ 999999 ");
  for (const std::string& bad : {cut, huge, std::string("C20009 @n@ 0 x;;")}) {
    ClearDocument();
    const std::string text = good.substr(0, good.find(";;") + 2) + bad;
    EXPECT_FALSE(OpenDocumentText(text)) << bad;
    EXPECT_EQ(Doc.FunCurves.count(), 0);
  }
  EXPECT_EQ(host_.messages.size(), 3u);  // one for each damaged document
}

// ---- following the values a formula names ------------------------------------------

TEST_F(FunCurveTest, TheRefreshPassSamplesAgainOnlyTheCurvesThatReadAChangedValue) {
  CNote* k = AddParameter("K", 1);
  CFunCurve* reads = Doc.FunCurves.Add(MakeGraph("k*x+1", 10, "0", "1"));
  CFunCurve* other = Doc.FunCurves.Add(MakeGraph("x^2", 10, "0", "1"));
  ASSERT_TRUE(reads->GetPoints() && other->GetPoints());
  // Marks that a new sampling would wipe.
  reads->Vert3D[0].y = other->Vert3D[0].y = 99;
  RefreshPass();  // nothing changed: nothing samples
  EXPECT_EQ(reads->Vert3D[0].y, 99);
  k->Value = 3;
  RefreshPass();
  EXPECT_FLOAT_EQ(reads->Vert3D[0].y, 1);
  EXPECT_FLOAT_EQ(reads->Vert3D[10].y, 4);
  EXPECT_EQ(other->Vert3D[0].y, 99);
}

}  // namespace
}  // namespace vt
