// CContour: level lines of a grid of singles, traced cell by cell and drawn
// as line segments on the current GL context. No state between runs: each run
// gets its grid, marks the crossings, follows them and forgets them.
//
// The grid is 1-based in both directions: column i (1..nx) lies at
// originX + (i - 1) * stepX, row j (1..ny) at originY + (j - 1) * stepY. A
// value that is not finite (NaN) is a hole: no edge that touches it is
// crossed, so lines stop at its border.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vt {

// The plane the traced lines are drawn on. 1: the plane z = 0, where the
// coordinate kind 2 makes the traced pair polar; 3 and 7: the horizontal
// plane z = the given height, 0.01 above it.
extern int ContourPlaneMode;

class ContourGrid {
 public:
  ContourGrid() = default;
  ContourGrid(int nx, int ny, float fill = 0) { Resize(nx, ny, fill); }
  void Resize(int nx, int ny, float fill = 0);
  int nx() const { return nx_; }
  int ny() const { return ny_; }
  // 1-based column i, row j.
  float& operator()(int i, int j) { return v_[Index(i, j)]; }
  float operator()(int i, int j) const { return v_[Index(i, j)]; }
  float* data() { return v_.data(); }
  const float* data() const { return v_.data(); }

 private:
  std::size_t Index(int i, int j) const {
    return static_cast<std::size_t>(i - 1) + static_cast<std::size_t>(j - 1) * static_cast<std::size_t>(nx_);
  }
  int nx_ = 0, ny_ = 0;
  std::vector<float> v_;
};

// Where the grid stands in the plane.
struct ContourFrame {
  float originX = 0, originY = 0;
  float stepX = 1, stepY = 1;
};

class CContour {
 public:
  // Traces the lines of `level` and appends their segments to `segments` as
  // x1, y1, x2, y2 in grid coordinates (origin and step applied, nothing
  // mapped). The grid is perturbed in place first: a value within 0.0001 of
  // the level is raised by 1e-5, so no line runs through a node. Lines start
  // at unused crossings of the border first, then of the interior; a line
  // ends on the border, at a dead end, or when it is back at its start
  // within 1e-7 in both coordinates.
  static void Trace(ContourGrid& grid, float level, const ContourFrame& frame, std::vector<float>& segments);

  // Traces and draws: lighting off, line smoothing and blending on, the
  // width and colour, and every segment a separate GL line (all in one
  // primitive run), mapped by the plane mode (see ContourPlaneMode).
  // coordKind 2 in plane mode 1: the traced pair (q, p) = (first, second
  // coordinate) is drawn at x = p sin q, y = p cos q. The segments drawn, in
  // grid coordinates, are left in `segments` when it is given.
  static void Contour(ContourGrid& grid, float level, const ContourFrame& frame, int coordKind, float height,
                      float lineWidth, std::uint32_t color, int planeMode, std::vector<float>* segments = nullptr);

  // Segments x1 y1 x2 y2 already in the plane z = 0, in the look of Contour.
  static void DrawSegments(const std::vector<float>& segments, float lineWidth, std::uint32_t color);

  // The vertex of a traced point (a, b) in a plane mode and coordinate kind.
  static void MapPoint(float a, float b, int coordKind, float height, int planeMode, float& x, float& y, float& z);
};

}  // namespace vt
