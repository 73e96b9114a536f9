#include "graphs/contour.h"

#include <GL/gl.h>

#include <cmath>

#include "render/strokes.h"

namespace vt {

int ContourPlaneMode = 1;

void ContourGrid::Resize(int nx, int ny, float fill) {
  nx_ = nx > 0 ? nx : 0;
  ny_ = ny > 0 ? ny : 0;
  v_.assign(static_cast<size_t>(nx_) * static_cast<size_t>(ny_), fill);
}

namespace {

constexpr float kNoCrossing = -1.0f;
constexpr float kUsed = -2.0f;

// One edge of the grid: horizontal edges join node (i, j) and (i + 1, j),
// vertical ones node (i, j) and (i, j + 1); 0-based.
struct Edge {
  bool horizontal = true;
  int i = 0, j = 0;
  bool operator==(const Edge&) const = default;
};

// The crossing marks and the walk from cell to cell (the ContourTwo and
// ContourOne steps).
class Tracer {
 public:
  Tracer(const ContourGrid& g, float level, const ContourFrame& f, std::vector<float>& out)
      : g_(g), nx_(g.nx()), ny_(g.ny()), level_(level), f_(f), out_(out) {}

  void Run() {
    if (nx_ < 2 || ny_ < 2) return;
    Mark();
    // From the border: the bottom and top rows, then the left and right
    // columns.
    for (int j : {0, ny_ - 1})
      for (int i = 0; i + 1 < nx_; ++i) StartAt({true, i, j}, false);
    for (int i : {0, nx_ - 1})
      for (int j = 0; j + 1 < ny_; ++j) StartAt({false, i, j}, false);
    // Then the interior: what is left are closed lines (or lines cut by
    // holes at both ends).
    for (int j = 1; j + 1 < ny_; ++j)
      for (int i = 0; i + 1 < nx_; ++i) StartAt({true, i, j}, true);
    for (int i = 1; i + 1 < nx_; ++i)
      for (int j = 0; j + 1 < ny_; ++j) StartAt({false, i, j}, true);
  }

 private:
  float& MarkOf(const Edge& e) {
    return e.horizontal ? h_[static_cast<size_t>(e.i) + static_cast<size_t>(e.j) * (nx_ - 1)]
                        : v_[static_cast<size_t>(e.i) + static_cast<size_t>(e.j) * nx_];
  }

  // The fraction of the level along a -> b, or kNoCrossing when the level
  // does not lie strictly between them (holes never cross).
  float Fraction(float a, float b) const {
    if ((a < level_ && b > level_) || (a > level_ && b < level_)) return (level_ - a) / (b - a);
    return kNoCrossing;
  }

  void Mark() {
    h_.assign(static_cast<size_t>(nx_ - 1) * ny_, kNoCrossing);
    v_.assign(static_cast<size_t>(nx_) * (ny_ - 1), kNoCrossing);
    for (int j = 0; j < ny_; ++j)
      for (int i = 0; i + 1 < nx_; ++i) MarkOf({true, i, j}) = Fraction(g_(i + 1, j + 1), g_(i + 2, j + 1));
    for (int j = 0; j + 1 < ny_; ++j)
      for (int i = 0; i < nx_; ++i) MarkOf({false, i, j}) = Fraction(g_(i + 1, j + 1), g_(i + 1, j + 2));
  }

  bool Unused(const Edge& e) { return MarkOf(e) >= 0; }

  // The point of a crossing (ContourOne), in grid coordinates.
  void PointOf(const Edge& e, float& x, float& y) {
    const float t = MarkOf(e);
    if (e.horizontal) {
      x = f_.originX + (static_cast<float>(e.i) + t) * f_.stepX;
      y = f_.originY + static_cast<float>(e.j) * f_.stepY;
    } else {
      x = f_.originX + static_cast<float>(e.i) * f_.stepX;
      y = f_.originY + (static_cast<float>(e.j) + t) * f_.stepY;
    }
  }

  bool OnBorder(const Edge& e) const {
    return e.horizontal ? (e.j == 0 || e.j == ny_ - 1) : (e.i == 0 || e.i == nx_ - 1);
  }

  // The four edges of cell (ci, cj) in the order bottom, right, top, left.
  static void EdgesOf(int ci, int cj, Edge (&e)[4]) {
    e[0] = {true, ci, cj};
    e[1] = {false, ci + 1, cj};
    e[2] = {true, ci, cj + 1};
    e[3] = {false, ci, cj};
  }

  // The cell on the other side of edge e from cell (ci, cj); false on the
  // border.
  bool Across(const Edge& e, int ci, int cj, int& ni, int& nj) const {
    ni = ci;
    nj = cj;
    if (e.horizontal) nj = (e.j == cj) ? cj - 1 : cj + 1;
    else ni = (e.i == ci) ? ci - 1 : ci + 1;
    return ni >= 0 && nj >= 0 && ni + 1 < nx_ && nj + 1 < ny_;
  }

  void Emit(float x1, float y1, float x2, float y2) {
    out_.push_back(x1);
    out_.push_back(y1);
    out_.push_back(x2);
    out_.push_back(y2);
  }

  // Follows the line from cell (ci, cj), entered through `entry`, with the
  // pen at (px, py). True when the line came back to its start.
  bool Walk(int ci, int cj, Edge entry, const Edge& start, float sx, float sy, float px, float py) {
    for (;;) {
      Edge e[4];
      EdgesOf(ci, cj, e);
      int k = 0;
      while (k < 4 && !(e[k] == entry)) ++k;
      // The three other edges (ContourTwo): the two beside the entry before
      // the one facing it, which keeps the two lines of a saddle apart.
      const int order[3] = {(k + 1) & 3, (k + 3) & 3, (k + 2) & 3};
      const Edge* next = nullptr;
      for (int n : order)
        if (Unused(e[n])) {
          next = &e[n];
          break;
        }
      if (!next) return false;
      float x, y;
      PointOf(*next, x, y);
      Emit(px, py, x, y);
      MarkOf(*next) = kUsed;
      if (*next == start || (std::fabs(x - sx) < 1e-7f && std::fabs(y - sy) < 1e-7f)) return true;
      int ni, nj;
      if (!Across(*next, ci, cj, ni, nj)) return false;
      entry = *next;
      ci = ni;
      cj = nj;
      px = x;
      py = y;
    }
  }

  void StartAt(const Edge& start, bool interior) {
    if (!Unused(start)) return;
    float sx, sy;
    PointOf(start, sx, sy);
    // The two cells beside the edge; on the border only one exists.
    int ai = start.i, aj = start.j, bi = start.i, bj = start.j;
    if (start.horizontal) bj = start.j - 1;
    else bi = start.i - 1;
    const bool aOk = ai + 1 < nx_ && aj + 1 < ny_;
    const bool bOk = bi >= 0 && bj >= 0;
    if (!interior) {
      MarkOf(start) = kUsed;
      if (aOk) Walk(ai, aj, start, start, sx, sy, sx, sy);
      else if (bOk) Walk(bi, bj, start, start, sx, sy, sx, sy);
      return;
    }
    // An interior start stays unused while the line runs, so the walk can
    // find it again and close there.
    if (Walk(ai, aj, start, start, sx, sy, sx, sy)) return;
    // Open at the far end (a hole): the other way from the start.
    if (Unused(start)) {
      MarkOf(start) = kUsed;
      Walk(bi, bj, start, start, sx, sy, sx, sy);
    }
  }

  const ContourGrid& g_;
  int nx_, ny_;
  float level_;
  ContourFrame f_;
  std::vector<float>& out_;
  std::vector<float> h_, v_;
};

}  // namespace

void CContour::Trace(ContourGrid& grid, float level, const ContourFrame& frame, std::vector<float>& segments) {
  float* v = grid.data();
  const size_t n = static_cast<size_t>(grid.nx()) * static_cast<size_t>(grid.ny());
  for (size_t k = 0; k < n; ++k)
    if (std::fabs(v[k] - level) < 0.0001f) v[k] += 1e-5f;
  Tracer(grid, level, frame, segments).Run();
}

void CContour::MapPoint(float a, float b, int coordKind, float height, int planeMode, float& x, float& y, float& z) {
  if (planeMode == 3 || planeMode == 7) {
    x = a;
    y = b;
    z = height + 0.01f;
    return;
  }
  z = 0;
  if (coordKind == 2) {
    // p is the radius (second coordinate), q the angle (first).
    const double p = b, q = a;
    x = static_cast<float>(p * std::sin(q));
    y = static_cast<float>(p * std::cos(q));
  } else {
    x = a;
    y = b;
  }
}

void CContour::Contour(ContourGrid& grid, float level, const ContourFrame& frame, int coordKind, float height,
                       float lineWidth, std::uint32_t color, int planeMode, std::vector<float>* segments) {
  std::vector<float> local;
  std::vector<float>& segs = segments ? *segments : local;
  segs.clear();
  Trace(grid, level, frame, segs);
  if (segs.empty()) return;
  glDisable(GL_LIGHTING);
  glEnable(GL_LINE_SMOOTH);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  if (lineWidth > 0) glLineWidth(lineWidth);
  SetColor(color);
  glBegin(GL_LINES);
  for (size_t k = 0; k + 1 < segs.size(); k += 2) {
    float x, y, z;
    MapPoint(segs[k], segs[k + 1], coordKind, height, planeMode, x, y, z);
    glVertex3f(x, y, z);
  }
  glEnd();
  glDisable(GL_LINE_SMOOTH);
  glDisable(GL_BLEND);
  glEnable(GL_LIGHTING);
}

void CContour::DrawSegments(const std::vector<float>& segs, float lineWidth, std::uint32_t color) {
  if (segs.size() < 4) return;
  glDisable(GL_LIGHTING);
  glEnable(GL_LINE_SMOOTH);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  if (lineWidth > 0) glLineWidth(lineWidth);
  SetColor(color);
  glBegin(GL_LINES);
  for (size_t k = 0; k + 1 < segs.size(); k += 2) glVertex3f(segs[k], segs[k + 1], 0);
  glEnd();
  glDisable(GL_LINE_SMOOTH);
  glDisable(GL_BLEND);
  glEnable(GL_LIGHTING);
}

}  // namespace vt
