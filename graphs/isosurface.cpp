#include "graphs/isosurface.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace vt {

namespace {

// Corner c of the unit cube, and the corners of edge e.
constexpr int kCorner[8][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
constexpr int kEdge[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                              {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
// The faces, corners counter-clockwise seen from outside the cube.
constexpr int kFace[6][4] = {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4}, {3, 7, 6, 2}, {0, 4, 7, 3}, {1, 2, 6, 5}};

int EdgeOf(int a, int b) {
  for (int e = 0; e < 12; ++e)
    if ((kEdge[e][0] == a && kEdge[e][1] == b) || (kEdge[e][0] == b && kEdge[e][1] == a)) return e;
  return -1;
}

// The middle of edge e.
void EdgeMiddle(int e, double m[3]) {
  for (int d = 0; d < 3; ++d) m[d] = (kCorner[kEdge[e][0]][d] + kCorner[kEdge[e][1]][d]) / 2.0;
}

// The corner of the fan over a loop of edges whose triangles, placed on the
// edges' middles, turn most evenly with the loop as a whole (a bent loop
// fanned from a poor corner folds a triangle back).
size_t FanStart(const std::vector<int>& loop) {
  const size_t n = loop.size();
  if (n <= 3) return 0;
  std::vector<std::array<double, 3>> p(n);
  for (size_t i = 0; i < n; ++i) EdgeMiddle(loop[i], p[i].data());
  double whole[3] = {0, 0, 0};  // Newell's normal of the loop
  for (size_t i = 0; i < n; ++i) {
    const auto& a = p[i];
    const auto& b = p[(i + 1) % n];
    whole[0] += (a[1] - b[1]) * (a[2] + b[2]);
    whole[1] += (a[2] - b[2]) * (a[0] + b[0]);
    whole[2] += (a[0] - b[0]) * (a[1] + b[1]);
  }
  size_t best = 0;
  double bestScore = -1e30;
  for (size_t s = 0; s < n; ++s) {
    double worst = 1e30;
    for (size_t i = 1; i + 1 < n; ++i) {
      const auto& a = p[s];
      const auto& b = p[(s + i) % n];
      const auto& c = p[(s + i + 1) % n];
      const double u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
      const double v[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
      const double t[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
      const double len = std::sqrt(t[0] * t[0] + t[1] * t[1] + t[2] * t[2]);
      const double d = len > 0 ? (t[0] * whole[0] + t[1] * whole[1] + t[2] * whole[2]) / len : -1e30;
      worst = std::min(worst, d);
    }
    if (worst > bestScore) {
      bestScore = worst;
      best = s;
    }
  }
  return best;
}

struct Tables {
  std::uint16_t mask[256];
  std::vector<std::int8_t> tris[256];
  Tables() {
    for (int c = 0; c < 256; ++c) {
      auto in = [c](int corner) { return (c >> corner) & 1; };
      std::uint16_t m = 0;
      for (int e = 0; e < 12; ++e)
        if (in(kEdge[e][0]) != in(kEdge[e][1])) m = static_cast<std::uint16_t>(m | (1u << e));
      mask[c] = m;
      // The level line on each face: from where a run of low corners is
      // entered to where it is left, walking counter-clockwise from outside.
      int next[12];
      for (int& n : next) n = -1;
      for (const auto& q : kFace) {
        for (int k = 0; k < 4; ++k) {
          const int a = q[k], b = q[(k + 1) & 3];
          if (!in(a) || in(b)) continue;  // the run of low corners is left between a and b
          int s = k;
          while (in(q[(s + 3) & 3])) s = (s + 3) & 3;
          next[EdgeOf(q[(s + 3) & 3], q[s])] = EdgeOf(a, b);
        }
      }
      // Each closed loop of edges becomes a fan of triangles.
      bool used[12] = {};
      for (int e0 = 0; e0 < 12; ++e0) {
        if (next[e0] < 0 || used[e0]) continue;
        std::vector<int> loop;
        for (int e = e0; e >= 0 && !used[e]; e = next[e]) {
          used[e] = true;
          loop.push_back(e);
        }
        const size_t start = FanStart(loop);
        const size_t n = loop.size();
        for (size_t i = 1; i + 1 < n; ++i) {
          tris[c].push_back(static_cast<std::int8_t>(loop[start]));
          tris[c].push_back(static_cast<std::int8_t>(loop[(start + i) % n]));
          tris[c].push_back(static_cast<std::int8_t>(loop[(start + i + 1) % n]));
        }
      }
    }
  }
};

const Tables& CubeTables() {
  static const Tables t;
  return t;
}

}  // namespace

std::uint16_t CubeEdgeMask(int pattern) { return CubeTables().mask[pattern & 255]; }
const std::vector<std::int8_t>& CubeTriangles(int pattern) { return CubeTables().tris[pattern & 255]; }

void MarchCubes(const IsoGrid& g, float level, IsoMesh& mesh) {
  mesh.Clear();
  if (g.nu < 2 || g.nv < 2 || g.nw < 2 || !g.X || !g.Y || !g.Z || !g.F) return;
  const Tables& tables = CubeTables();
  const size_t nu = static_cast<size_t>(g.nu), nv = static_cast<size_t>(g.nv), nw = static_cast<size_t>(g.nw);
  const size_t layer = nu * nv;
  const size_t step[3] = {1, nu, layer};
  // Per corner its offset from the cell's lower node; per edge the offsets of
  // its ends, the end nearer the origin and the axis it runs along.
  size_t cornerOff[8];
  for (int c = 0; c < 8; ++c)
    cornerOff[c] = step[0] * static_cast<size_t>(kCorner[c][0]) + step[1] * static_cast<size_t>(kCorner[c][1]) +
                   step[2] * static_cast<size_t>(kCorner[c][2]);
  size_t edgeA[12], edgeB[12], edgeLo[12];
  int edgeAxis[12];
  for (int e = 0; e < 12; ++e) {
    edgeA[e] = cornerOff[kEdge[e][0]];
    edgeB[e] = cornerOff[kEdge[e][1]];
    edgeLo[e] = std::min(edgeA[e], edgeB[e]);
    edgeAxis[e] = 0;
    for (int d = 0; d < 3; ++d)
      if (kCorner[kEdge[e][0]][d] != kCorner[kEdge[e][1]][d]) edgeAxis[e] = d;
  }
  // The vertex on each grid edge and at each sample, kept for the two layers
  // of samples that the current layer of cells touches: the x and y edges
  // and the samples of layer k (slot k & 1) and k + 1, the z edges of layer k.
  std::vector<std::int32_t> flatEdges(layer * 4, -1), upEdges(layer, -1), atNode(layer * 2, -1);
  // Which samples lie below the level, one layer of cells at a time.
  std::vector<std::uint8_t> below(layer * nw);
  for (size_t n = 0; n < layer * nw; ++n) below[n] = g.F[n] < level;
  auto vertexOn = [&](size_t base, int e) -> std::uint32_t {
    const size_t na = base + edgeA[e], nb = base + edgeB[e], lo = base + edgeLo[e];
    const size_t loLayer = lo / layer, inLayer = lo % layer;
    const int axis = edgeAxis[e];
    std::int32_t& slot = axis == 2 ? upEdges[inLayer] : flatEdges[((loLayer & 1) * layer + inLayer) * 2 + static_cast<size_t>(axis)];
    if (slot >= 0) return static_cast<std::uint32_t>(slot);
    const float fa = g.F[na], fb = g.F[nb];
    float t = fb != fa ? (level - fa) / (fb - fa) : 0.5f;
    if (!(t >= 0)) t = 0;
    if (t > 1) t = 1;
    const float p[3] = {g.X[na] + t * (g.X[nb] - g.X[na]), g.Y[na] + t * (g.Y[nb] - g.Y[na]),
                        g.Z[na] + t * (g.Z[nb] - g.Z[na])};
    // A crossing on a sample (within 1e-5 on every axis) is that sample's
    // vertex, shared by all the edges that meet there.
    auto near = [&](size_t n) {
      return std::fabs(p[0] - g.X[n]) < 1e-5f && std::fabs(p[1] - g.Y[n]) < 1e-5f && std::fabs(p[2] - g.Z[n]) < 1e-5f;
    };
    auto nodeSlot = [&](size_t n) -> std::int32_t& { return atNode[((n / layer) & 1) * layer + n % layer]; };
    std::int32_t* node = near(na) ? &nodeSlot(na) : near(nb) ? &nodeSlot(nb) : nullptr;
    if (node && *node >= 0) {
      slot = *node;
      return static_cast<std::uint32_t>(slot);
    }
    slot = static_cast<std::int32_t>(mesh.pos.size() / 3);
    if (node) *node = slot;
    mesh.pos.insert(mesh.pos.end(), p, p + 3);
    return static_cast<std::uint32_t>(slot);
  };
  for (size_t k = 0; k + 1 < nw; ++k) {
    if (k > 0) {
      // Layer k + 1 takes the slots of layer k - 1.
      const size_t s = (k + 1) & 1;
      std::fill(flatEdges.begin() + static_cast<std::ptrdiff_t>(s * layer * 2),
                flatEdges.begin() + static_cast<std::ptrdiff_t>((s + 1) * layer * 2), -1);
      std::fill(atNode.begin() + static_cast<std::ptrdiff_t>(s * layer),
                atNode.begin() + static_cast<std::ptrdiff_t>((s + 1) * layer), -1);
      std::fill(upEdges.begin(), upEdges.end(), -1);
    }
    for (size_t j = 0; j + 1 < nv; ++j) {
      for (size_t i = 0; i + 1 < nu; ++i) {
        const size_t base = (k * nv + j) * nu + i;
        const std::uint8_t* b = &below[base];
        const int pattern = b[cornerOff[0]] | b[cornerOff[1]] << 1 | b[cornerOff[2]] << 2 | b[cornerOff[3]] << 3 |
                            b[cornerOff[4]] << 4 | b[cornerOff[5]] << 5 | b[cornerOff[6]] << 6 | b[cornerOff[7]] << 7;
        if (pattern == 0 || pattern == 255) continue;
        const std::vector<std::int8_t>& t = tables.tris[pattern];
        for (size_t m = 0; m + 2 < t.size(); m += 3) {
          const std::uint32_t v0 = vertexOn(base, t[m]), v1 = vertexOn(base, t[m + 1]), v2 = vertexOn(base, t[m + 2]);
          if (v0 == v1 || v1 == v2 || v0 == v2) continue;
          mesh.tri.push_back(v0);
          mesh.tri.push_back(v1);
          mesh.tri.push_back(v2);
        }
      }
    }
  }
  // Vertex normals: the sum of the (area-weighted) normals of the triangles
  // around each vertex.
  mesh.nrm.assign(mesh.pos.size(), 0.0f);
  for (size_t m = 0; m + 2 < mesh.tri.size(); m += 3) {
    const float* p0 = &mesh.pos[mesh.tri[m] * 3];
    const float* p1 = &mesh.pos[mesh.tri[m + 1] * 3];
    const float* p2 = &mesh.pos[mesh.tri[m + 2] * 3];
    const float ax = p1[0] - p0[0], ay = p1[1] - p0[1], az = p1[2] - p0[2];
    const float bx = p2[0] - p0[0], by = p2[1] - p0[1], bz = p2[2] - p0[2];
    const float n[3] = {ay * bz - az * by, az * bx - ax * bz, ax * by - ay * bx};
    for (int c = 0; c < 3; ++c) {
      float* d = &mesh.nrm[mesh.tri[m + static_cast<size_t>(c)] * 3];
      d[0] += n[0];
      d[1] += n[1];
      d[2] += n[2];
    }
  }
  for (size_t v = 0; v + 2 < mesh.nrm.size(); v += 3) {
    float* d = &mesh.nrm[v];
    float len = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
    if (len == 0) len = 0.0001f;
    d[0] /= len;
    d[1] /= len;
    d[2] /= len;
  }
}

void DrawIsoMesh(const IsoMesh& mesh, const std::vector<float>& colors, float alpha) {
  const bool colored = colors.size() >= mesh.pos.size();
  glBegin(GL_TRIANGLES);
  for (std::uint32_t v : mesh.tri) {
    if (colored) glColor4f(colors[v * 3], colors[v * 3 + 1], colors[v * 3 + 2], alpha);
    glNormal3fv(&mesh.nrm[v * 3]);
    glVertex3fv(&mesh.pos[v * 3]);
  }
  glEnd();
}

}  // namespace vt
