#include "geometry/solid_edges.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string>
#include <unordered_map>

#include "document/document.h"
#include "document/globals.h"
#include "geometry/line.h"
#include "render/frame.h"
#include "render/text.h"
#include "render/view_state.h"

namespace vt {

namespace {

constexpr size_t kMostCorners = 48;

void Cross(const double a[3], const double b[3], double out[3]) {
  out[0] = a[1] * b[2] - a[2] * b[1];
  out[1] = a[2] * b[0] - a[0] * b[2];
  out[2] = a[0] * b[1] - a[1] * b[0];
}

double Dot(const double a[3], const double b[3]) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

// ---- the solids of a frame ------------------------------------------------------------------

struct SolidCache {
  double model[16] = {};
  int lines = -1;
  double sum = 0;
  std::unordered_map<std::string, bool> hidden;  // by segment id
};

SolidCache g_cache;

bool IsEdge(const CLine& l) { return l.lt == 1 && !l.Hide && !l.pBegin.ID.empty() && !l.pEnd.ID.empty(); }

// What the answers depend on besides the matrices: the segments' ends.
double EndsSum() {
  double s = 0;
  int k = 0;
  for (const CLine* l : Doc.Lines) {
    ++k;
    if (!IsEdge(*l)) continue;
    s += k * (l->pBegin.x + 3.0 * l->pBegin.y + 7.0 * l->pBegin.z) +
         (k + 1) * (l->pEnd.x + 5.0 * l->pEnd.y + 11.0 * l->pEnd.z);
  }
  return s;
}

// The representative of a corner's solid (a union-find with path halving).
int Root(std::vector<int>& parent, int i) {
  auto at = [&](int k) -> int& { return parent[static_cast<size_t>(k)]; };
  while (at(i) != i) i = at(i) = at(at(i));
  return i;
}

void Rebuild(const WindowProjection& m) {
  g_cache.hidden.clear();
  // Corners by point id, joined into solids along the segments.
  std::unordered_map<std::string, int> index;
  std::vector<Position> corners;
  std::vector<const CLine*> edges;
  auto corner = [&](const Position& p) {
    auto [it, added] = index.emplace(p.ID, static_cast<int>(corners.size()));
    if (added) corners.push_back(p);
    return it->second;
  };
  std::vector<std::pair<int, int>> ends;
  for (const CLine* l : Doc.Lines) {
    if (!IsEdge(*l)) continue;
    edges.push_back(l);
    ends.emplace_back(corner(l->pBegin), corner(l->pEnd));
  }
  std::vector<int> parent(corners.size());
  for (size_t i = 0; i < parent.size(); ++i) parent[i] = static_cast<int>(i);
  for (const auto& [a, b] : ends) parent[static_cast<size_t>(Root(parent, a))] = Root(parent, b);

  // Towards the viewer: the eye's +z taken back into the scene (the third
  // column of the inverse of the matrix's linear part), or for a perspective
  // view the eye's place.
  const double r0[3] = {m.model[0], m.model[4], m.model[8]}, r1[3] = {m.model[1], m.model[5], m.model[9]},
               r2[3] = {m.model[2], m.model[6], m.model[10]};
  double c0[3], c1[3], c2[3];
  Cross(r1, r2, c0);
  Cross(r2, r0, c1);
  Cross(r0, r1, c2);
  const double det = Dot(r2, c2);
  if (std::fabs(det) < 1e-12) return;
  const bool perspective = View.ProjectType == 2;
  double eye[3];
  for (int i = 0; i < 3; ++i)
    eye[i] = -(c0[i] * m.model[12] + c1[i] * m.model[13] + c2[i] * m.model[14]) / det;
  double toward[3] = {c2[0] / det, c2[1] / det, c2[2] / det};

  std::unordered_map<int, std::vector<HullPlane>> solids;
  std::unordered_map<int, double> sizes;
  for (size_t e = 0; e < edges.size(); ++e) {
    const int root = Root(parent, ends[e].first);
    auto it = solids.find(root);
    if (it == solids.end()) {
      std::vector<Position> pts;
      double lo[3] = {1e300, 1e300, 1e300}, hi[3] = {-1e300, -1e300, -1e300};
      for (size_t i = 0; i < corners.size(); ++i) {
        if (Root(parent, static_cast<int>(i)) != root) continue;
        pts.push_back(corners[i]);
        const double c[3] = {corners[i].x, corners[i].y, corners[i].z};
        for (int k = 0; k < 3; ++k) lo[k] = std::min(lo[k], c[k]), hi[k] = std::max(hi[k], c[k]);
      }
      sizes[root] = std::hypot(hi[0] - lo[0], hi[1] - lo[1], hi[2] - lo[2]);
      it = solids.emplace(root, HullPlanes(pts)).first;
    }
    if (it->second.empty()) continue;
    const CLine& l = *edges[e];
    const Position mid((l.pBegin.x + l.pEnd.x) / 2, (l.pBegin.y + l.pEnd.y) / 2, (l.pBegin.z + l.pEnd.z) / 2);
    if (perspective)
      for (int k = 0; k < 3; ++k) toward[k] = eye[k] - (k == 0 ? mid.x : k == 1 ? mid.y : mid.z);
    if (!OnFrontFace(it->second, mid, toward, 1e-4 * sizes[root])) g_cache.hidden[l.ID] = true;
  }
}

}  // namespace

std::vector<HullPlane> HullPlanes(const std::vector<Position>& points) {
  std::vector<HullPlane> planes;
  const size_t n = points.size();
  if (n < 4 || n > kMostCorners) return planes;
  double lo[3] = {1e300, 1e300, 1e300}, hi[3] = {-1e300, -1e300, -1e300};
  std::vector<std::array<double, 3>> p(n);
  for (size_t i = 0; i < n; ++i) {
    p[i] = {points[i].x, points[i].y, points[i].z};
    for (int k = 0; k < 3; ++k) lo[k] = std::min(lo[k], p[i][k]), hi[k] = std::max(hi[k], p[i][k]);
  }
  const double size = std::hypot(hi[0] - lo[0], hi[1] - lo[1], hi[2] - lo[2]);
  const double eps = 1e-5 * size;
  // Every plane through three corners with all the corners on one side of it
  // bounds the hull; the side with none is its outside.
  for (size_t a = 0; a < n; ++a)
    for (size_t b = a + 1; b < n; ++b)
      for (size_t c = b + 1; c < n; ++c) {
        const double u[3] = {p[b][0] - p[a][0], p[b][1] - p[a][1], p[b][2] - p[a][2]};
        const double v[3] = {p[c][0] - p[a][0], p[c][1] - p[a][1], p[c][2] - p[a][2]};
        double nn[3];
        Cross(u, v, nn);
        const double len = std::sqrt(Dot(nn, nn));
        if (len <= 1e-9 * size * size) continue;  // the three in a line
        for (double& x : nn) x /= len;
        const double d = Dot(nn, p[a].data());
        bool above = false, below = false;
        for (size_t i = 0; i < n && !(above && below); ++i) {
          const double s = Dot(nn, p[i].data()) - d;
          above = above || s > eps;
          below = below || s < -eps;
        }
        if (above && below) continue;
        if (!above && !below) return {};  // all corners in one plane: no solid
        HullPlane h{{nn[0], nn[1], nn[2]}, d};
        if (above) h = HullPlane{{-nn[0], -nn[1], -nn[2]}, -d};
        bool known = false;
        for (const HullPlane& q : planes)
          known = known || (Dot(q.n, h.n) > 1 - 1e-9 && std::fabs(q.d - h.d) <= eps);
        if (!known) planes.push_back(h);
      }
  return planes;
}

bool OnFrontFace(const std::vector<HullPlane>& planes, const Position& p, const double towardViewer[3], double eps) {
  const double x[3] = {p.x, p.y, p.z};
  const double len = std::sqrt(Dot(towardViewer, towardViewer));
  if (len <= 0) return true;
  for (const HullPlane& h : planes)
    if (std::fabs(Dot(h.n, x) - h.d) <= eps && Dot(h.n, towardViewer) > 1e-6 * len) return true;
  return false;
}

bool SolidEdgeHidden(const CLine& segment) {
  if (SceneMode != 3 || !IsEdge(segment)) return false;
  const WindowProjection& m = CompiledProjection();
  if (!m.valid) return false;
  const double sum = EndsSum();
  if (g_cache.lines != Doc.Lines.count() || g_cache.sum != sum ||
      std::memcmp(g_cache.model, m.model, sizeof g_cache.model) != 0) {
    std::memcpy(g_cache.model, m.model, sizeof g_cache.model);
    g_cache.lines = Doc.Lines.count();
    g_cache.sum = sum;
    Rebuild(m);
  }
  return g_cache.hidden.count(segment.ID) > 0;
}

}  // namespace vt
