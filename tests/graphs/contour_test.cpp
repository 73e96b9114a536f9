#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "graphs/contour.h"

namespace vt {
namespace {

ContourGrid GridOf(int n, float lo, float hi, float (*f)(float, float), ContourFrame& frame) {
  ContourGrid g(n, n);
  const float step = (hi - lo) / static_cast<float>(n - 1);
  frame = {lo, lo, step, step};
  for (int i = 1; i <= n; ++i)
    for (int j = 1; j <= n; ++j) g(i, j) = f(lo + static_cast<float>(i - 1) * step, lo + static_cast<float>(j - 1) * step);
  return g;
}

double TotalLength(const std::vector<float>& s) {
  double len = 0;
  for (size_t k = 0; k + 3 < s.size(); k += 4) len += std::hypot(s[k + 2] - s[k], s[k + 3] - s[k + 1]);
  return len;
}

// How often each end point occurs among the segments: on a closed line
// every point is the end of exactly two segments.
std::map<std::pair<float, float>, int> EndCounts(const std::vector<float>& s) {
  std::map<std::pair<float, float>, int> n;
  for (size_t k = 0; k + 1 < s.size(); k += 2) ++n[{s[k], s[k + 1]}];
  return n;
}

// Two separate circles are two closed lines of the right length: every end
// point is the end of exactly two segments.
TEST(Contour, CirclesAreClosedLinesOfTheRightLength) {
  ContourFrame frame;
  ContourGrid g = GridOf(61, -3, 3, [](float x, float y) {
    return std::min((x - 1.5f) * (x - 1.5f) + y * y - 0.5f, (x + 1.5f) * (x + 1.5f) + y * y - 0.5f);
  }, frame);
  std::vector<float> segs;
  CContour::Trace(g, 0, frame, segs);
  ASSERT_FALSE(segs.empty());
  EXPECT_NEAR(TotalLength(segs), 4 * M_PI * std::sqrt(0.5), 0.02 * 4 * M_PI * std::sqrt(0.5));
  for (const auto& [p, count] : EndCounts(segs)) EXPECT_EQ(count, 2);
}

TEST(Contour, FlatGridAtTheLevelHasNoLineAndNodeValuesArePerturbed) {
  ContourFrame frame;
  ContourGrid g(5, 5, 0.0f);
  std::vector<float> segs;
  CContour::Trace(g, 0, frame, segs);
  EXPECT_TRUE(segs.empty());
  EXPECT_FLOAT_EQ(g(3, 3), 1e-5f);

  // A line through grid nodes is moved off them: a plane x - 2 on nodes
  // 0..4 passes the node column x = 2 just beside it.
  ContourGrid p(5, 5);
  for (int i = 1; i <= 5; ++i)
    for (int j = 1; j <= 5; ++j) p(i, j) = static_cast<float>(i - 1) - 2;
  segs.clear();
  CContour::Trace(p, 0, frame, segs);
  ASSERT_EQ(segs.size(), 4u * 4);  // one open line across 4 rows of cells
  for (size_t k = 0; k < segs.size(); k += 2) EXPECT_NEAR(segs[k], 2.0f, 1e-4f);
  EXPECT_LT(segs[0], 2.0f);
}

TEST(Contour, OpenLinesRunFromBorderToBorder) {
  ContourFrame frame;
  ContourGrid g = GridOf(21, -1, 1, [](float x, float y) { return y - 0.3f * x - 0.05f; }, frame);
  std::vector<float> segs;
  CContour::Trace(g, 0, frame, segs);
  auto ends = EndCounts(segs);
  int single = 0;
  for (const auto& [p, count] : ends) {
    if (count == 1) {
      ++single;
      EXPECT_NEAR(std::fabs(p.first), 1.0f, 1e-5f);  // on the left or right border
    }
  }
  EXPECT_EQ(single, 2);
  EXPECT_NEAR(TotalLength(segs), 2 * std::sqrt(1 + 0.09), 1e-3);
}

TEST(Contour, SaddleBranchesKeepToTheirQuadrants) {
  ContourFrame frame;
  ContourGrid s = GridOf(40, -1, 1, [](float x, float y) { return x * y + 0.001f; }, frame);
  std::vector<float> segs;
  CContour::Trace(s, 0, frame, segs);
  ASSERT_FALSE(segs.empty());
  for (size_t k = 0; k + 3 < segs.size(); k += 4)
    EXPECT_LE((segs[k] + segs[k + 2]) * (segs[k + 1] + segs[k + 3]), 0.0f);  // the middle of each segment
}

TEST(Contour, HolesEndLinesWithoutCrossingThem) {
  ContourFrame frame;
  ContourGrid g = GridOf(41, -2, 2, [](float x, float y) { return x * x + y * y - 1; }, frame);
  const float nan = std::numeric_limits<float>::quiet_NaN();
  // A column of holes at x = 0.5 cuts the circle into two arcs, each traced
  // from a start in its middle both ways.
  for (int j = 1; j <= 41; ++j) g(26, j) = nan;
  std::vector<float> segs;
  CContour::Trace(g, 0, frame, segs);
  ASSERT_FALSE(segs.empty());
  int single = 0;
  for (const auto& [p, count] : EndCounts(segs)) {
    EXPECT_LE(count, 2);
    if (count == 1) ++single;
    EXPECT_FALSE(p.first > 0.4f + 1e-4f && p.first < 0.6f - 1e-4f) << p.first;
  }
  EXPECT_EQ(single, 4);
  // Both arcs are there: the long one on the left and the short one on the
  // right of the holes.
  bool left = false, right = false;
  for (size_t k = 0; k < segs.size(); k += 2) {
    left |= segs[k] < -0.9f;
    right |= segs[k] > 0.9f;
  }
  EXPECT_TRUE(left && right);
}

}  // namespace
}  // namespace vt
