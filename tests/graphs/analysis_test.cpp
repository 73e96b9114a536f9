#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "document/document.h"
#include "expr/expression.h"
#include "geometry/geom.h"
#include "graphs/curve_analysis.h"
#include "graphs/funcurve.h"
#include "graphs/surface.h"
#include "graphs_test_util.h"
#include "support/fixtures.h"

namespace vt {
namespace {

using test::AddParameter;
using test::MakeCurve;
using test::MakeGraph;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class AnalysisTest : public test::DocumentTest {};

// ---- overlays of GetPoints ----------------------------------------------------------------

TEST_F(AnalysisTest, RootsExtremaAndInflexions) {
  auto c = MakeGraph("x^2-2", 99, "-5", "5");
  c->ShowRoot = true;
  ASSERT_TRUE(c->GetPoints());
  ASSERT_EQ(c->RootMarks().size(), 2u);
  EXPECT_TRUE(std::fabs(c->RootMarks()[0].x + 1.4142) < 0.005 && std::fabs(c->RootMarks()[1].x - 1.4142) < 0.005);
  ASSERT_EQ(c->ResultLines().size(), 2u);
  EXPECT_THAT(c->ResultLines()[1], StartsWith("    Root: x=1.41"));
  // A root on a sample, seen by both chords that end there, is found once.
  auto on = MakeGraph("x-1", 100, "-5", "5");
  on->ShowRoot = true;
  ASSERT_TRUE(on->GetPoints());
  EXPECT_THAT(on->ResultLines(), ElementsAre("    Root: x=1,y=0"));

  auto cubic = MakeGraph("x^3-3x", 97, "-3", "3");
  cubic->ShowMax = cubic->ShowMin = cubic->ShowGuai = true;
  ASSERT_TRUE(cubic->GetPoints());
  ASSERT_EQ(cubic->InflexionMarks().size(), 1u);
  EXPECT_NEAR(cubic->InflexionMarks()[0].x, 0, 0.01);
  EXPECT_TRUE(cubic->MaxMarks().size() == 1 && cubic->MinMarks().size() == 1);
  // The derived samples: 3x^2 - 3 and 6x.
  EXPECT_NEAR(cubic->DevVert[0].y, 24, 1e-4);
  EXPECT_NEAR(cubic->Dev2Vert[97].y, 18, 1e-4);
  // An extreme at the end of the range is no sign change: nothing.
  auto line = MakeGraph("x", 10, "0", "1");
  line->ShowMax = line->ShowMin = true;
  ASSERT_TRUE(line->GetPoints());
  EXPECT_TRUE(line->ResultLines().empty());
}

// Roots and minima are refined on the formula, found once each, and every
// digit printed is right; a pole is no root, a near miss no touch.
TEST_F(AnalysisTest, ResultsAreRightToTheDigitsShown) {
  const double pi = M_PI, r2 = std::sqrt(2.0);
  const struct {
    const char *f, *from, *to;
    int steps;
    std::vector<double> roots, minima;
  } cases[] = {
      {"x^2-2", "-5", "5", 99, {-r2, r2}, {0}},
      {"0.5x^2-x-4", "-10", "10", 100, {-2, 4}, {1}},  // both on samples
      {"sin(x)", "-10", "10", 100, {-3 * pi, -2 * pi, -pi, 0, pi, 2 * pi, 3 * pi}, {-2.5 * pi, -pi / 2, 1.5 * pi}},
      {"(x-1)^2", "-4", "5", 100, {1}, {1}},
      {"x^2-2x+1", "-4.1", "5", 100, {1}, {1}},
      {"x^2+0.01", "-3", "3.1", 61, {}, {0}},
      {"1/x", "-1", "1.05", 20, {}, {}},
  };
  // The number after "x=" is right to its last digit, and close to the truth.
  auto check = [](const std::string& line, double truth) {
    const size_t at = line.find("x=") + 2;
    const std::string t = line.substr(at, line.find(',') - at);
    const size_t dot = t.find('.');
    const double decimals = dot == std::string::npos ? 0 : static_cast<double>(t.size() - dot - 1);
    const double v = std::stod(t);
    EXPECT_TRUE(std::fabs(v - truth) <= 0.5 * std::pow(10, -decimals) + 1e-12 && std::fabs(v - truth) < 1e-5)
        << line << " for " << truth;
  };
  for (const auto& k : cases) {
    auto c = MakeGraph(k.f, k.steps, k.from, k.to);
    c->ShowRoot = c->ShowMin = true;
    ASSERT_TRUE(c->GetPoints());
    const auto& lines = c->ResultLines();
    ASSERT_EQ(lines.size(), k.roots.size() + k.minima.size()) << k.f;
    for (size_t i = 0; i < lines.size(); ++i)
      check(lines[i], i < k.roots.size() ? k.roots[i] : k.minima[i - k.roots.size()]);
  }
  auto p = MakeGraph("0.5x^2-x-4", 100, "-10", "10");
  p->ShowMin = true;
  ASSERT_TRUE(p->GetPoints());
  EXPECT_THAT(p->ResultLines(), ElementsAre("    Minimum: x=1,y=-4.5"));
}

TEST_F(AnalysisTest, IntegralStripValueAndArcLength) {
  auto c = MakeGraph("x^2", 60, "-1", "4");
  c->ShowInt = true, c->IntFrom = 0, c->IntTo = 3;
  ASSERT_TRUE(c->GetPoints());
  EXPECT_NEAR(c->IntegralValue(), 9, 0.01);
  ASSERT_EQ(c->ResultLines().size(), 2u);
  EXPECT_EQ(c->ResultLines()[0], "    Integral from 0 to 3");
  EXPECT_THAT(c->ResultLines()[1], StartsWith("    Area is 9"));
  auto y = MakeGraph("x", 10, "0", "2");
  y->ShowLen = true, y->LenFrom = 0, y->LenTo = 1;
  ASSERT_TRUE(y->GetPoints());
  EXPECT_THAT(y->ResultLines(), ElementsAre("    The length of curve from 0 to 1 is 1.414214"));
  // Polar: the area of the unit disc, and the length of its rim.
  auto disc = MakeCurve(2, 2, "", "1", 36, "0", "6.2832");
  disc->ShowInt = disc->ShowLen = true;
  disc->IntFrom = disc->LenFrom = 0;
  disc->IntTo = disc->LenTo = 6.2832f;
  ASSERT_TRUE(disc->GetPoints());
  EXPECT_NEAR(disc->IntegralValue(), M_PI, 0.01);
  EXPECT_NEAR(disc->LengthValue(), 2 * M_PI, 0.01);
}

// The number after a result line's label.
double After(const std::vector<std::string>& lines, const std::string& label, size_t nth = 0) {
  for (const std::string& l : lines) {
    const size_t at = l.find(label);
    if (at != std::string::npos && nth-- == 0) return std::stod(l.substr(at + label.size()));
  }
  ADD_FAILURE() << "no line with " << label;
  return NAN;
}

// Each form's analysis against an independent computation: the curve as
// x(w), y(w) in double, its slope by central differences, its extrema and
// lengths in closed form.
TEST_F(AnalysisTest, EveryFormAgreesWithAnIndependentComputation) {
  AddParameter("K", 2);  // a parameter is a constant to the derivative
  struct Case {
    int form, coord;
    const char *fx, *fy, *from, *to;
    std::function<double(double)> x, y;
    float at;                                        // tangent and normal there
    std::vector<std::pair<double, double>> max, min;  // expected marks
  };
  const double pi = M_PI;
  const std::vector<Case> cases = {
      {2, 1, "", "K*sin(x)", "0", "6", [](double w) { return w; }, [](double w) { return 2 * std::sin(w); }, 1,
       {{pi / 2, 2}}, {{3 * pi / 2, -2}}},
      {3, 1, "u", "(u-1)^2-1", "-2", "3", [](double w) { return w; }, [](double w) { return (w - 1) * (w - 1) - 1; },
       1.5f, {}, {{1, -1}}},
      {3, 1, "cos(u)", "K*sin(u)", "0", "6", [](double w) { return std::cos(w); },
       [](double w) { return 2 * std::sin(w); }, 0.7f, {{0, 2}}, {{0, -2}}},
      {2, 2, "", "2cos(a)", "-1.5", "1.5", [](double w) { return 2 * std::cos(w) * std::cos(w); },
       [](double w) { return 2 * std::cos(w) * std::sin(w); }, 0.5f, {{1, 1}}, {{1, -1}}},
      {3, 2, "u", "K", "0.1", "3", [](double w) { return 2 * std::cos(w); }, [](double w) { return 2 * std::sin(w); },
       1, {{0, 2}}, {}},
  };
  for (const Case& k : cases) {
    SCOPED_TRACE(k.fy);
    auto c = MakeCurve(k.form, k.coord, k.fx, k.fy, 97, k.from, k.to);
    c->ShowQie = c->ShowNml = c->ShowMax = c->ShowMin = true;
    c->QieX = c->NmlX = {k.at};
    ASSERT_TRUE(c->GetPoints());
    ASSERT_TRUE(host_.messages.empty()) << host_.LastMessage();
    const double h = 1e-4, w = k.at;
    const double slope = (k.y(w + h) - k.y(w - h)) / (k.x(w + h) - k.x(w - h));
    const auto& lines = c->ResultLines();
    EXPECT_NEAR(After(lines, "Slope: ", 0), slope, 1e-3 * (1 + std::fabs(slope)));
    EXPECT_NEAR(After(lines, "Slope: ", 1), -1 / slope, 1e-3 * (1 + std::fabs(1 / slope)));
    if (k.coord == 1) {
      EXPECT_NEAR(After(lines, "Tangent position: x="), k.x(w), 1e-4);
      EXPECT_NEAR(After(lines, ", y="), k.y(w), 1e-4);
    }
    auto check = [&](const std::vector<Position>& marks, const std::vector<std::pair<double, double>>& want) {
      ASSERT_EQ(marks.size(), want.size());
      for (size_t i = 0; i < want.size(); ++i) {
        EXPECT_NEAR(marks[i].x, want[i].first, 2e-3);
        EXPECT_NEAR(marks[i].y, want[i].second, 2e-3);
      }
    };
    check(c->MaxMarks(), k.max);
    check(c->MinMarks(), k.min);
  }

  // x = u, y = u^2: curvature at the vertex, arc length and area in closed form.
  auto p = MakeCurve(3, 1, "u", "u^2", 60, "-3", "3");
  p->ShowCurv = p->ShowLen = p->ShowInt = true;
  p->CurvX = {0};
  p->LenTo = 1;
  p->IntTo = 3;
  ASSERT_TRUE(p->GetPoints());
  EXPECT_NEAR(After(p->ResultLines(), "radius of curvature circle: "), 0.5, 1e-4);
  EXPECT_NEAR(After(p->ResultLines(), "Center of curvature circle: x="), 0, 1e-4);
  EXPECT_NEAR(After(p->ResultLines(), ", y=", 1), 0.5, 1e-4);
  EXPECT_NEAR(p->LengthValue(), (2 * std::sqrt(5.0) + std::asinh(2.0)) / 4, 1e-3);
  EXPECT_NEAR(p->IntegralValue(), 9, 1e-2);

  // The implicit polar curve r - 2cos(a) = 0 is the circle of r = 2cos(a),
  // centred at (1, 0).
  auto implicit = MakeCurve(1, 2, "", "r-2cos(a)", 90, "0", "3.1416", -3, 3);
  ASSERT_TRUE(implicit->TraceImplicit());
  const auto& seg = implicit->TracedSegments();
  ASSERT_GT(seg.size(), 40u);
  double maxX = -1;
  for (size_t i = 0; i + 1 < seg.size(); i += 2) {
    EXPECT_NEAR(std::hypot(seg[i] - 1, seg[i + 1]), 1, 0.02) << seg[i] << "," << seg[i + 1];
    maxX = std::max<double>(maxX, seg[i]);
  }
  EXPECT_NEAR(maxX, 2, 0.02);

  // Space curves: z = f(a) on the cylinder of radius 1, r = f(a) on the
  // equator.
  for (int system : {4, 5}) {
    CSurface s;
    s.Init(NewObjectId("C3"), "", 1, 2, system, "", "", system == 4 ? "a/2" : "1+a/4", 8, 8, "0", "3.1416", "", "");
    ASSERT_TRUE(s.GetPoints());
    for (int i = 0; i <= 8; ++i) {
      const double a = 3.1416f / 8 * i;
      const Position want = system == 4 ? RenderingPoint(std::cos(a), std::sin(a), a / 2)
                                        : RenderingPoint((1 + a / 4) * std::cos(a), (1 + a / 4) * std::sin(a), 0);
      EXPECT_NEAR(DistanceBetween(s.CurveVert[static_cast<size_t>(i)], want), 0, 1e-4) << system << " " << i;
    }
  }
}

TEST_F(AnalysisTest, ParitySamplesHoldFOfMinusX) {
  auto c = MakeGraph("x^3+x^2", 10, "-1", "1");
  c->ShowJO = true;
  ASSERT_TRUE(c->GetPoints());
  ASSERT_EQ(c->JOVert.size(), c->Vert3D.size());
  for (size_t i = 0; i < c->JOVert.size(); ++i) {
    const float x = c->Vert3D[i].x;
    EXPECT_NEAR(c->JOVert[i].y, -x * x * x + x * x, 1e-5) << i;
  }
  c->ShowJO = false;
  ASSERT_TRUE(c->GetPoints());
  EXPECT_TRUE(c->JOVert.empty());
}

// The values are the independent computation's; here the lines as the
// results panel shows them, positions from a formula, and a straight line.
TEST_F(AnalysisTest, TangentNormalAndCurvatureLines) {
  auto c = MakeGraph("x^2", 40, "-2", "2");
  c->ShowQie = c->ShowNml = c->ShowCurv = true;
  c->QieX = c->NmlX = {1};
  c->CurvX = {0};
  ASSERT_TRUE(c->GetPoints());
  EXPECT_THAT(c->ResultLines(),
              ElementsAre("    Tangent position: x=1, y=1", "      Slope: 2", "    Normal position: x=1, y=1",
                          "      Slope: -0.5", "    Curvature circle:", "      Position: x=0, y=0",
                          "        Curvature: 2", "        The radius of curvature circle: 0.5",
                          "        Center of curvature circle: x=0, y=0.5"));
  // Positions from a formula, and the polar form of the line.
  AddParameter("k", 0);
  auto p = MakeCurve(2, 2, "", "1", 36, "0", "6.2832");
  p->ShowQie = true;
  p->QiePosType = CFunCurve::kPosByFormula;
  p->QiePosExp = "k";
  ASSERT_TRUE(p->GetPoints());
  EXPECT_THAT(p->ResultLines(), ElementsAre("    Tangent position: a=0, r=1", "      Slope: 10000"));

  // A straight line has no curvature: y'' of 0 becomes 0.0001.
  auto s = MakeGraph("2x", 10, "0", "1");
  s->ShowCurv = true;
  s->CurvX = {0};
  ASSERT_TRUE(s->GetPoints());
  ASSERT_EQ(s->ResultLines().size(), 5u);
  EXPECT_THAT(s->ResultLines()[2], StartsWith("        Curvature: 8.94"));
}

TEST_F(AnalysisTest, AFailedDerivativeEndsItsOverlaysOnly) {
  auto c = MakeGraph("abs(x)-1", 97, "-3", "3");
  c->ShowDev = c->ShowMax = c->ShowRoot = true;
  ASSERT_TRUE(c->GetPoints());
  ASSERT_FALSE(host_.messages.empty());
  EXPECT_THAT(host_.messages[0].text, HasSubstr("Can not find derivative of"));
  EXPECT_TRUE(c->MaxMarks().empty());
  EXPECT_EQ(c->RootMarks().size(), 2u);
}

}  // namespace
}  // namespace vt
