#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "document/document.h"
#include "document/numtext.h"
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

// The number after `label` in the line is right to its last digit (a whole
// number to its last non-zero digit) and within `near` of the truth, relative.
void ExpectKnownDigits(const std::string& line, const std::string& label, double truth, double near) {
  const size_t at = line.find(label) + label.size();
  const std::string t = line.substr(at, line.find(',', at) - at);
  const size_t dot = t.find('.');
  double decimals = dot == std::string::npos ? 0 : static_cast<double>(t.size() - dot - 1);
  for (size_t i = t.size(); dot == std::string::npos && i > 1 && t[i - 1] == '0'; --i) --decimals;
  const double v = std::stod(t), off = std::fabs(v - truth);
  EXPECT_TRUE(off <= 0.5 * std::pow(10, -decimals) + 1e-12 && off <= near * (1 + std::fabs(truth)))
      << line << " for " << truth;
}

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
  auto check = [](const std::string& line, double truth) { ExpectKnownDigits(line, "x=", truth, 1e-5); };
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

// Areas and lengths by the printed digits, each right to its last one.
TEST_F(AnalysisTest, IntegralStripValueAndArcLength) {
  const double pi = M_PI;
  const struct {
    int form, coord;
    const char *fx, *fy;
    float from, to;
    double area, length;
  } cases[] = {
      {2, 1, "", "x^2", 0, 1, 1.0 / 3, (2 * std::sqrt(5.0) + std::asinh(2.0)) / 4},
      {2, 1, "", "x^2", 0, 3, 9, (6 * std::sqrt(37.0) + std::asinh(6.0)) / 4},
      {2, 1, "", "x", 0, 1, 0.5, std::sqrt(2.0)},
      {2, 1, "", "exp(x)", 0, 1, std::exp(1.0) - 1, 2.0034971116},
      {2, 1, "", "1/x", 1, 2.7182817f, std::log(2.7182817f), 1.8627870},
      {2, 2, "", "1", 0, 6.2831855f, 6.2831855f / 2, 6.2831855f},   // the unit disc and its rim
      {3, 1, "cos(u)", "sin(u)", 0, 1.5707964f, -pi / 4, 1.5707964f},  // y dx runs backwards
  };
  for (const auto& k : cases) {
    auto c = MakeCurve(k.form, k.coord, k.fx, k.fy, 60, "-1", "4");
    c->ShowInt = c->ShowLen = true;
    c->IntFrom = c->LenFrom = k.from, c->IntTo = c->LenTo = k.to;
    ASSERT_TRUE(c->GetPoints());
    ASSERT_EQ(c->ResultLines().size(), 3u) << k.fy;
    EXPECT_EQ(c->ResultLines()[0], "    Integral from " + SingleToText(k.from) + " to " + SingleToText(k.to));
    ExpectKnownDigits(c->ResultLines()[1], "    Area is ", k.area, 1e-6);
    ExpectKnownDigits(c->ResultLines()[2], " is ", k.length, 1e-6);
  }
  auto c = MakeGraph("x^2", 60, "-1", "4");
  c->ShowInt = c->ShowLen = true, c->IntFrom = c->LenFrom = 0, c->IntTo = c->LenTo = 1;
  ASSERT_TRUE(c->GetPoints());
  EXPECT_THAT(c->ResultLines(), ElementsAre("    Integral from 0 to 1", "    Area is 0.3333333",
                                            "    The length of curve from 0 to 1 is 1.478943"));
}

// The nth line with the label.
std::string LineWith(const std::vector<std::string>& lines, const std::string& label, size_t nth = 0) {
  for (const std::string& l : lines)
    if (l.find(label) != std::string::npos && nth-- == 0) return l;
  ADD_FAILURE() << "no line with " << label;
  return label + "nan";
}

// Each form's analysis against an independent computation: the curve as
// x(w), y(w) in double, its slope by central differences, its extrema and
// lengths in closed form.
TEST_F(AnalysisTest, EveryFormAgreesWithAnIndependentComputation) {
  AddParameter("K", 2);  // a parameter is a constant to the derivative
  // A polar curve's angle (and, implicit, its radius) hides a parameter of
  // that name; r = f(a) gives r no value, so r = r reads the parameter.
  AddParameter("a", 5);
  AddParameter("r", 2);
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
      {2, 2, "", "r", "0.1", "3", [](double w) { return 2 * std::cos(w); }, [](double w) { return 2 * std::sin(w); },
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
    // Every digit printed is right.
    ExpectKnownDigits(LineWith(lines, "Slope: ", 0), "Slope: ", slope, 1e-5);
    ExpectKnownDigits(LineWith(lines, "Slope: ", 1), "Slope: ", -1 / slope, 1e-5);
    if (k.coord == 1) {
      ExpectKnownDigits(LineWith(lines, "Tangent position: x="), "x=", k.x(w), 1e-5);
      ExpectKnownDigits(LineWith(lines, "Tangent position: x="), ", y=", k.y(w), 1e-5);
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

  // x = u, y = u^2: curvature, arc length and area in closed form.
  auto p = MakeCurve(3, 1, "u", "u^2", 60, "-3", "3");
  p->ShowCurv = p->ShowLen = p->ShowInt = true;
  p->CurvX = {1};
  p->LenTo = 1;
  p->IntTo = 3;
  ASSERT_TRUE(p->GetPoints());
  // At u = 1: y' = 2, y'' = 2, every digit printed right.
  const std::string circle = LineWith(p->ResultLines(), "Center of curvature circle: ");
  ExpectKnownDigits(LineWith(p->ResultLines(), "Curvature: "), "Curvature: ", 2 / std::pow(5, 1.5), 1e-5);
  ExpectKnownDigits(LineWith(p->ResultLines(), "radius of"), "circle: ", std::pow(5, 1.5) / 2, 1e-5);
  ExpectKnownDigits(circle, "x=", -4, 1e-5);
  ExpectKnownDigits(circle, "y=", 3.5, 1e-5);
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
