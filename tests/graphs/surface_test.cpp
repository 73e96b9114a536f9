// CSurface: sampling in the forms and systems, the axis convention and the
// crossing clip, normals with the seam test, holes, the mesh for dependents,
// tangent planes, and the record with its readers.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <tuple>

#include "document/document.h"
#include "document/globals.h"
#include "geometry/geom.h"
#include "graphs/isosurface.h"
#include "graphs/surface.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "graphs_test_util.h"
#include "support/fixtures.h"

namespace vt {
namespace {

class SurfaceTest : public test::DocumentTest {
 protected:
  template <class... A>
  static std::unique_ptr<CSurface> Make(A&&... a) { return test::MakeSurface(std::forward<A>(a)...); }
  static float Len(const Vec3& v) { return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z); }
};

TEST_F(SurfaceTest, ClosedSeamsShareTheirNormalsOpenEdgesDoNot) {
  auto s = Make(2, 3, 5, "u", "v", "2", 24, "0", "6.2832", "0.1", "3.04");
  ASSERT_TRUE(s->GetPoints());
  s->ComputeNormals();
  const auto& n = s->VertexNormalsOf();
  for (int j = 0; j <= 24; ++j) {
    const Vec3 &a = n[GridIndex(0, j, 24)], &b = n[GridIndex(24, j, 24)];
    EXPECT_TRUE(a.x == b.x && a.y == b.y && a.z == b.z) << j;
    EXPECT_NEAR(Len(a), 1.0, 1e-4);
  }
  // The normals are radial (all one way), the seam included.
  int out = 0, in = 0;
  for (int i = 0; i <= 24; ++i)
    for (int j = 0; j <= 24; ++j) {
      const Position& p = s->Vert3D[GridIndex(i, j, 24)];
      const Vec3& v = n[GridIndex(i, j, 24)];
      const float d = (p.x * v.x + p.y * v.y + p.z * v.z) / 2.0f;
      out += d > 0.95f, in += d < -0.95f;
    }
  EXPECT_TRUE(out == 25 * 25 || in == 25 * 25) << out << " " << in;
  // Half a cylinder: the first and last rows are far apart, so no seam.
  auto h = Make(2, 3, 4, "u", "2", "v", 12, "0", "3.1416", "0", "2");
  ASSERT_TRUE(h->GetPoints());
  h->ComputeNormals();
  const Vec3 &a = h->VertexNormalsOf()[GridIndex(0, 5, 12)], &b = h->VertexNormalsOf()[GridIndex(12, 5, 12)];
  EXPECT_GT(std::fabs(a.x - b.x) + std::fabs(a.y - b.y) + std::fabs(a.z - b.z), 1.0f);
}

TEST_F(SurfaceTest, QuadsNextToAHoleAreSkipped) {
  // A dome over the disk of radius 2: outside it the root has no value.
  auto s = Make(2, 2, 3, "", "", "sqr(4-x^2-y^2)", 10, "-2.5", "2.5", "-2.5", "2.5");
  ASSERT_TRUE(s->GetPoints());
  auto inside = [](int i, int j) {
    const float x = -2.5f + 0.5f * static_cast<float>(i), y = -2.5f + 0.5f * static_cast<float>(j);
    return 4 - x * x - y * y >= 0;
  };
  int expected = 0;
  for (int i = 0; i < 10; ++i)
    for (int j = 0; j < 10; ++j)
      if (inside(i, j) && inside(i + 1, j) && inside(i, j + 1) && inside(i + 1, j + 1)) ++expected;
  const auto quads = s->GetRegions();
  EXPECT_EQ(static_cast<int>(quads.size()), expected);
  EXPECT_LT(expected, s->GetRGNum());
  EXPECT_GT(expected, 0);
  for (const auto& q : quads)
    for (const Position& p : q) EXPECT_FALSE(IsHolePosition(p));
  // Quads with a hole get no face normal.
  s->ComputeNormals();
  EXPECT_EQ(Len(s->FaceNormalsOf()[0]), 0.0f);
}

// Implicit surfaces: the sphere's mesh is closed, consistently wound, facing
// the larger values, of the right area, with no vertex repeated; a field in
// cylindrical coordinates is mapped before the cubes are marched.
TEST_F(SurfaceTest, ImplicitMeshesAreClosedOrientedAndMapped) {
  auto s = Make(2, 1, 3, "", "", "x^2+y^2+z^2-4", 30, "-3", "3", "-3", "3");
  s->StepW = 30, s->MinW = -3, s->MaxW = 3;
  ASSERT_TRUE(s->GetPoints());
  EXPECT_TRUE(s->MinF == -4.0f && std::fabs(s->MaxF - 23) < 1e-4);
  s->MeshImplicit();
  const IsoMesh& m = s->ImplicitMesh();
  ASSERT_GT(m.TriangleCount(), 1000u);
  auto at = [&m](std::uint32_t v) { return Position(m.pos[v * 3], m.pos[v * 3 + 1], m.pos[v * 3 + 2]); };
  double area = 0;
  std::map<std::pair<std::uint32_t, std::uint32_t>, int> edges;  // directed
  for (size_t t = 0; t + 2 < m.tri.size(); t += 3) {
    const Position a = at(m.tri[t]), b = at(m.tri[t + 1]), c = at(m.tri[t + 2]);
    const float ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z, vx = c.x - a.x, vy = c.y - a.y, vz = c.z - a.z;
    const Vec3 n{uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx};
    area += Len(n) / 2;
    EXPECT_GT(n.x * (a.x + b.x + c.x) + n.y * (a.y + b.y + c.y) + n.z * (a.z + b.z + c.z), 0);  // outward
    for (int k = 0; k < 3; ++k) ++edges[{m.tri[t + k], m.tri[t + (k + 1) % 3]}];
  }
  EXPECT_NEAR(area, 16 * M_PI, 16 * M_PI * 0.02);
  for (const auto& [e, n] : edges) EXPECT_TRUE(n == 1 && edges.count({e.second, e.first}) == 1);  // closed, wound alike
  std::map<std::tuple<long, long, long>, int> seen;  // no vertex repeated
  for (std::uint32_t v = 0; v < m.VertexCount(); ++v) {
    const Position p = at(v);
    EXPECT_NEAR(DistanceBetween(p, Position(0, 0, 0)), 2.0, 0.05);
    EXPECT_GT((p.x * m.nrm[v * 3] + p.y * m.nrm[v * 3 + 1] + p.z * m.nrm[v * 3 + 2]) / 2, 0.95);
    EXPECT_EQ((++seen[{std::lround(p.x * 1e5), std::lround(p.y * 1e5), std::lround(p.z * 1e5)}]), 1);
  }
  auto tube = Make(2, 1, 4, "", "", "r-1.5", 24, "0", "6.2832", "0.5", "3");  // a, r, z
  tube->StepV = 10, tube->StepW = 4, tube->MinW = -1, tube->MaxW = 1;
  ASSERT_TRUE(tube->GetPoints());
  tube->MeshImplicit();
  ASSERT_GT(tube->ImplicitMesh().TriangleCount(), 0u);
  for (size_t v = 0; v < tube->ImplicitMesh().VertexCount(); ++v)
    EXPECT_NEAR(std::hypot(tube->ImplicitMesh().pos[v * 3], tube->ImplicitMesh().pos[v * 3 + 1]), 1.5, 0.03);
  IsoMesh none;
  MarchCubes(IsoGrid{}, 0, none);
  EXPECT_EQ(none.TriangleCount(), 0u);
}

TEST_F(SurfaceTest, CrossingClipMarksTheNextAxis) {
  BoxMaxZ = 5;
  auto s = Make(2, 2, 3, "", "", "x", 4, "0", "8", "0", "1");
  ASSERT_TRUE(s->GetPoints());
  const Position& high = s->Vert3D[GridIndex(4, 0, 4)];  // z = 8
  EXPECT_EQ(high.x, BreakValue);  // z out of range marks x
  EXPECT_FLOAT_EQ(high.z, 8.0f);
  EXPECT_FALSE(IsHolePosition(s->Vert3D[GridIndex(2, 0, 4)]));
  BoxMaxZ = 500;
}

TEST_F(SurfaceTest, SpaceCurvesOfOneVariable) {
  auto s = Make(1, 2, 3, "", "", "y^2", 4, "0", "2", "", "");
  ASSERT_TRUE(s->GetPoints());
  ASSERT_EQ(s->CurveVert.size(), 5u);
  EXPECT_EQ(DistanceBetween(s->CurveVert[4], Position(0, 2, 4)), 0);  // y = t, x = 0: (0, t, t^2)
  auto x = Make(1, 2, 3, "", "", "3*x", 2, "0", "1", "", "");
  ASSERT_TRUE(x->GetPoints());
  EXPECT_TRUE(x->CurveVert[2].x == 1 && x->CurveVert[2].z == 3);
  // Cylindrical: r = t, a = 0, z = r.
  auto c = Make(1, 2, 4, "", "", "r", 2, "0", "2", "", "");
  ASSERT_TRUE(c->GetPoints());
  EXPECT_EQ(c->Points().size(), 3u);
  EXPECT_TRUE(c->CurveVert[2].x == 2 && c->CurveVert[2].z == 2);
  // Naming neither variable: no points.
  auto n = Make(1, 2, 3, "", "", "3+a", 10, "0", "2", "", "");
  n->GetPoints();
  EXPECT_TRUE(n->Points().empty());
  for (const Position& p : n->CurveVert) EXPECT_TRUE(IsHolePosition(p));
}

TEST_F(SurfaceTest, BadFormulaEndsSampling) {
  auto s = Make(2, 2, 3, "", "", "x+*", 4, "0", "1", "0", "1");
  EXPECT_FALSE(s->GetPoints());
  auto r = Make(2, 2, 3, "", "", "x", 4, "0", "(", "0", "1");
  EXPECT_FALSE(r->GetPoints());
  EXPECT_FALSE(host_.messages.empty());
}

// The tangent plane itself is the space gallery's (drawn where z = 2x - 1).
TEST_F(SurfaceTest, NormalFromDerivatives) {
  auto s = Make(2, 2, 3, "", "", "x^2+y^2", 10, "-2", "2", "-2", "2");
  ASSERT_TRUE(s->GetPoints());
  Position e[2];
  ASSERT_TRUE(s->NormalAt(1, 1, e));
  EXPECT_NEAR(e[0].z, 2.0, 1e-4);
  // The normal (-2, -2, 1) scaled to length 2: x falls, z rises.
  EXPECT_TRUE(e[1].x < e[0].x && e[1].z > e[0].z);
  EXPECT_NEAR(DistanceBetween(e[0], e[1]), 2.0, 1e-3);
  Position c[4];  // a parametric surface has none
  EXPECT_FALSE(Make(2, 3, 3, "u", "v", "u", 4, "0", "1", "0", "1")->TangentPlaneAt(0, 0, c));
}

// Whole-text round trips are the property test's; here an edited ramp keeps
// its stops, and a space curve reads back under its own tag.
TEST_F(SurfaceTest, RecordsKeepEditedRampsAndTheCurveTag) {
  auto s = Make(2, 3, 5, "u", "v", "2", 8, "0", "6.2832", "0", "3.1416");
  s->Ramp.ColorName = "Custom", s->Ramp.ColorNum = 2, s->Ramp.ColorPos[1] = 100, s->Ramp.ColorR[1] = 10;
  const std::string text = s->Save();
  auto c = Make(1, 3, 3, "u", "u^2", "u", 5, "0", "1", "", "");
  ASSERT_TRUE(OpenDocumentText("GL Ver3.00 3 0 0 0 0;;" + text + c->Save()));
  ASSERT_EQ(Doc.Surfaces.count(), 2);
  EXPECT_EQ(Doc.Surfaces.Item(1)->Ramp.ColorR[1], 10);
  EXPECT_EQ(Doc.Surfaces.Item(2)->GraphType, 1);
  EXPECT_EQ(Doc.Surfaces.Item(2)->Tag(), "C3");
  EXPECT_NE(GetUndoVar().find(text), std::string::npos);
}

}  // namespace
}  // namespace vt
