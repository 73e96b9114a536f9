// Marching cubes: the cube tables, and the meshes of implicit surfaces made
// by CSurface (area, closedness, orientation, the mapped systems).
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <tuple>

#include "graphs/isosurface.h"
#include "graphs/surface.h"
#include "support/fixtures.h"

namespace vt {
namespace {

struct MeshStats {
  double area = 0;
  bool closed = true;      // every edge in exactly two triangles
  bool oriented = true;    // neighbours run their shared edge opposite ways
  int outward = 0, inward = 0;
};

MeshStats Stats(const IsoMesh& m, float cx = 0, float cy = 0, float cz = 0) {
  MeshStats s;
  std::map<std::pair<std::uint32_t, std::uint32_t>, int> directed;
  for (size_t t = 0; t + 2 < m.tri.size(); t += 3) {
    const float* a = &m.pos[m.tri[t] * 3];
    const float* b = &m.pos[m.tri[t + 1] * 3];
    const float* c = &m.pos[m.tri[t + 2] * 3];
    const double ux = b[0] - a[0], uy = b[1] - a[1], uz = b[2] - a[2];
    const double vx = c[0] - a[0], vy = c[1] - a[1], vz = c[2] - a[2];
    const double nx = uy * vz - uz * vy, ny = uz * vx - ux * vz, nz = ux * vy - uy * vx;
    s.area += 0.5 * std::sqrt(nx * nx + ny * ny + nz * nz);
    const double mx = (a[0] + b[0] + c[0]) / 3 - cx, my = (a[1] + b[1] + c[1]) / 3 - cy,
                 mz = (a[2] + b[2] + c[2]) / 3 - cz;
    if (nx * mx + ny * my + nz * mz > 0) ++s.outward;
    else ++s.inward;
    for (int k = 0; k < 3; ++k) ++directed[{m.tri[t + k], m.tri[t + (k + 1) % 3]}];
  }
  for (const auto& [e, n] : directed) {
    if (n != 1) s.oriented = false;
    auto back = directed.find({e.second, e.first});
    if (back == directed.end()) s.closed = false;
    else if (back->second != 1) s.oriented = false;
  }
  return s;
}

class IsoSurfaceTest : public test::DocumentTest {};

TEST_F(IsoSurfaceTest, ImplicitSphereAreaAndOrientation) {
  CSurface s;
  s.Init("SF0001", "", 2, 1, 3, "", "", "x^2+y^2+z^2-4", 30, 30, "-3", "3", "-3", "3");
  s.StepW = 30, s.MinW = -3, s.MaxW = 3;
  ASSERT_TRUE(s.GetPoints());
  EXPECT_FLOAT_EQ(s.MinF, -4.0f + 0.0f);
  EXPECT_NEAR(s.MaxF, 23.0f, 1e-4);
  s.MeshImplicit();
  const IsoMesh& m = s.ImplicitMesh();
  ASSERT_GT(m.TriangleCount(), 1000u);
  const MeshStats st = Stats(m);
  EXPECT_NEAR(st.area, 16 * 3.14159265, 16 * 3.14159265 * 0.02);
  EXPECT_TRUE(st.closed);
  EXPECT_TRUE(st.oriented);
  // All facing out, towards the larger values.
  EXPECT_EQ(st.inward, 0);
  std::set<std::tuple<long, long, long>> seen;
  for (size_t v = 0; v < m.VertexCount(); ++v) {
    const float* p = &m.pos[v * 3];
    const float* n = &m.nrm[v * 3];
    EXPECT_NEAR(std::sqrt(p[0] * p[0] + p[1] * p[1] + p[2] * p[2]), 2.0, 0.05);
    EXPECT_GT((p[0] * n[0] + p[1] * n[1] + p[2] * n[2]) / 2, 0.95);
    // Shared vertices are not repeated.
    EXPECT_TRUE(seen.insert({std::lround(p[0] * 1e5), std::lround(p[1] * 1e5), std::lround(p[2] * 1e5)}).second);
  }
}

TEST_F(IsoSurfaceTest, CylindricalFieldIsMappedFirst) {
  // r - 1.5 = 0 over a in [0, 2 pi], r in [0.5, 3], z in [-1, 1]: a tube
  // whose points all lie 1.5 from the z axis.
  CSurface s;
  s.Init("SF0001", "", 2, 1, 4, "", "", "r-1.5", 24, 10, "0", "6.2832", "0.5", "3");
  s.StepW = 4, s.MinW = -1, s.MaxW = 1;
  ASSERT_TRUE(s.GetPoints());
  s.MeshImplicit();
  const IsoMesh& m = s.ImplicitMesh();
  ASSERT_GT(m.TriangleCount(), 0u);
  for (size_t v = 0; v < m.VertexCount(); ++v)
    EXPECT_NEAR(std::hypot(m.pos[v * 3], m.pos[v * 3 + 1]), 1.5, 0.03);
  IsoMesh none;  // an empty grid makes nothing
  MarchCubes(IsoGrid{}, 0, none);
  EXPECT_EQ(none.TriangleCount(), 0u);
}

}  // namespace
}  // namespace vt
