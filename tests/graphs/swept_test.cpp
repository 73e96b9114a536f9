// Surfaces of rotation and extrusions: the sweep, the closed seam, the
// degenerate profiles, the rebuild after a drag, the records.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "document/document.h"
#include "geometry/geom.h"
#include "geometry/propagation.h"
#include "graphs/swept.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "document/globals.h"
#include "graphs_test_util.h"
#include "support/fixtures.h"

namespace vt {
namespace {

class SweptTest : public test::DocumentTest {
 protected:
  static bool Finite(const Vec3& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }
};

TEST_F(SweptTest, SegmentTurnedFullyAboutAParallelAxisIsAClosedCylinder) {
  CLine* profile = Segment(1, 0, 0, 1, 0, 2);
  CLine* axis = Segment(0, 0, 0, 0, 0, 1);
  CSurRot* s = test::AddRotation(profile->ID, axis->ID, "6.2832", 24);
  ASSERT_TRUE(s->GetPoints());
  EXPECT_TRUE(s->StepU == 1 && s->StepV == 24);
  ASSERT_EQ(s->Vert3D.size(), 2u * 25u);  // where it stands: the space gallery's cylinder twin
  s->ComputeNormals();
  const std::vector<Vec3>& n = s->VertexNormalsOf();
  ASSERT_EQ(n.size(), s->Vert3D.size());
  for (int i = 0; i <= 1; ++i) {
    // Both edges of the seam carry the same normal, and it is radial there
    // as it is everywhere else: no dark line at the seam.
    const Vec3 &first = n[GridIndex(i, 0, 24)], &last = n[GridIndex(i, 24, 24)], &mid = n[GridIndex(i, 6, 24)];
    EXPECT_NEAR(std::fabs(first.x - last.x) + std::fabs(first.y - last.y) + std::fabs(first.z - last.z), 0, 1e-5);
    EXPECT_NEAR(std::fabs(std::fabs(first.x) - 1) + std::fabs(first.y) + std::fabs(first.z), 0, 1e-4);
    EXPECT_NEAR(std::fabs(mid.y), 1.0, 1e-4);
  }
  EXPECT_TRUE(s->GetRGNum() == 24 && s->GetRegions().size() == 24u);
  // Picking: a ray along the wall meets no face but runs down a chord; a
  // ray across the cylinder meets its faces; a ray beside it misses.
  auto ray = [&](Position a, Position b) { return s->Pick(Position(), a, b); };
  EXPECT_TRUE(ray(Position(1, 0, -10), Position(1, 0, 10)));
  EXPECT_TRUE(ray(Position(-10, 0.3f, 1), Position(10, 0.3f, 1)));
  EXPECT_FALSE(ray(Position(3, 0, -10), Position(3, 0, 10)));
  EXPECT_FALSE(ray(Position(-10, 0.3f, 2.5f), Position(10, 0.3f, 2.5f)));
  s->Hide = true;
  EXPECT_FALSE(ray(Position(1, 0, -10), Position(1, 0, 10)));
}

TEST_F(SweptTest, DegenerateProfilesGiveZeroNormalsAndNoNaN) {
  auto zero = [](const Vec3& v) { return Finite(v) && v.x == 0 && v.y == 0 && v.z == 0; };
  // A segment lying on the axis: every quad has no area.
  CLine* axis = Segment(0, 0, 0, 0, 0, 2);
  CSurRot* s = test::AddRotation(axis->ID, axis->ID, "6.2832", 10);
  ASSERT_TRUE(s->GetPoints());
  s->ComputeNormals();
  for (const Vec3& v : s->FaceNormalsOf()) EXPECT_TRUE(zero(v));
  for (const Vec3& v : s->VertexNormalsOf()) ASSERT_TRUE(Finite(v));
  // A point on the axis: StepV + 1 equal vertices and no quads.
  CSurRot* p = test::AddRotation(AddPoint(0, 0, 1)->ID, axis->ID, "6.2832", 10);
  ASSERT_TRUE(p->GetPoints());
  EXPECT_EQ(p->StepU, 0);
  ASSERT_EQ(p->Vert3D.size(), 11u);
  for (const Position& v : p->Vert3D) EXPECT_TRUE(v.x == 0 && v.y == 0 && v.z == 1);
  p->ComputeNormals();
  for (const Vec3& v : p->VertexNormalsOf()) ASSERT_TRUE(Finite(v));
  EXPECT_TRUE(p->GetRegions().empty());
  // A triangle extruded by a zero vector: flat, without NaN.
  auto g = std::make_unique<CRegion>();
  g->ID = NewObjectId("RG");
  for (float xy : {0.0f, 1.0f, 2.0f}) g->Points.emplace_back(xy == 1, xy == 2, 0);
  CStretch* e = test::AddExtrusion(Doc.Regions.Add(std::move(g))->ID, "0", "0", "0", 5);
  ASSERT_TRUE(e->GetPoints());
  EXPECT_EQ(e->StepU, 3);  // the closed outline: 4 vertices
  e->ComputeNormals();
  for (const Vec3& v : e->FaceNormalsOf()) EXPECT_TRUE(zero(v));
  for (const Vec3& v : e->VertexNormalsOf()) ASSERT_TRUE(Finite(v));
  // A real vector: a prism side wall, each step a fifth of the vector; the
  // wall on y = 0 faces along y.
  e->DZ = "2*1.5";
  ASSERT_TRUE(e->GetPoints());
  EXPECT_NEAR(e->Vert3D[GridIndex(1, 1, 5)].z, 0.6, 1e-6);
  EXPECT_NEAR(DistanceBetween(e->Vert3D[GridIndex(1, 5, 5)], Position(1, 0, 3)), 0, 1e-6);
  e->ComputeNormals();
  EXPECT_NEAR(std::fabs(e->FaceNormalsOf()[0].y), 1.0, 1e-5);
}

TEST_F(SweptTest, CentrePointsMissingObjectsAndBadAngles) {
  // About a centre point the rotation turns in the plane.
  Position* c = AddPoint(1, 1, 0);
  CSurRot* half = test::AddRotation(AddPoint(3, 1, 0.5f)->ID, c->ID, "3.1416", 4);
  ASSERT_TRUE(half->GetPoints());
  EXPECT_NEAR(DistanceBetween(half->Vert3D[GridIndex(0, 4, 4)], Position(-1, 1, 0.5f)), 0, 1e-3);
  // Missing objects or a bad angle leave the mesh alone.
  CLine* profile = Segment(1, 0, 0, 1, 0, 2);
  CLine* axis = Segment(0, 0, 0, 0, 0, 1);
  CSurRot* s = test::AddRotation(profile->ID, axis->ID, "6.2832", 8);
  ASSERT_TRUE(s->GetPoints());
  const std::vector<Position> before = s->Vert3D;
  s->RotObjID = "LN9999";
  EXPECT_FALSE(s->GetPoints());
  s->RotObjID = profile->ID, s->RotCenterID = "PT9999";
  EXPECT_FALSE(s->GetPoints());
  s->RotCenterID = axis->ID, s->RotAngle = "2*";
  EXPECT_FALSE(s->GetPoints());
  EXPECT_FALSE(host_.messages.empty());
  ASSERT_EQ(s->Vert3D.size(), before.size());
  for (size_t k = 0; k < before.size(); ++k) EXPECT_EQ(s->Vert3D[k].x, before[k].x);
}

TEST_F(SweptTest, ASpaceCurveProfileHasFiftyOneVerticesAndKeepsItsGaps) {
  auto c = std::make_unique<CSurface>();
  // x = u, y = 0, z = u over -2..2 in 8 steps of its own.
  c->Init("C30001", "", 1, 3, 3, "u", "0", "u", 8, 1, "-2", "2", "0", "0");
  CSurface* curve = Doc.Surfaces.Add(std::move(c));
  ASSERT_TRUE(curve->GetPoints());
  ASSERT_EQ(curve->CurveVert.size(), 9u);
  CStretch* s = test::AddExtrusion(curve->ID, "0", "0", "1", 2);
  ASSERT_TRUE(s->GetPoints());
  EXPECT_EQ(s->StepU, 50);
  int holes = 0;
  for (const Position& p : s->Vert3D) holes += IsHolePosition(p);
  EXPECT_EQ(holes, 0);
  // A clip box that cuts the curve's upper half: the profile keeps the gap
  // instead of bridging it.
  BoxMaxZ = 1;
  ASSERT_TRUE(s->GetPoints());
  EXPECT_EQ(s->StepU, 50);
  holes = 0;
  for (int i = 0; i <= s->StepU; ++i) holes += IsHolePosition(s->Vert3D[GridIndex(i, 0, s->StepV)]);
  EXPECT_GT(holes, 10);
  EXPECT_LT(holes, 40);
}

// Dragged points and changed parameters rebuild the surfaces.
TEST_F(SweptTest, SurfacesFollowDragsAndParameters) {
  CNote* h = test::AddParameter("h", 2);
  CLine* profile = Segment(1, 0, 0, 1, 0, 2);
  CLine* axis = Segment(0, 0, 0, 0, 0, 1);
  CSurRot* rot = test::AddRotation(profile->ID, axis->ID, "6.2832", 8);
  CStretch* ext = test::AddExtrusion(profile->ID, "1", "0", "0", 2);
  CSurRot* half = test::AddRotation(profile->ID, axis->ID, "3.1416/h", 4);
  CStretch* up = test::AddExtrusion(profile->ID, "0", "h/2", "h", 4);
  for (CSweptSurface* s : std::initializer_list<CSweptSurface*>{rot, ext, half, up}) ASSERT_TRUE(s->GetPoints());
  auto radius = [](const Position& p, float cx = 0) { return std::hypot(p.x - cx, p.y); };
  EXPECT_NEAR(half->Vert3D[GridIndex(1, 4, 4)].y, 1, 1e-4);  // a quarter turn
  EXPECT_NEAR(DistanceBetween(up->Vert3D[GridIndex(1, 4, 4)], Position(1, 1, 4)), 0, 1e-5);
  MovePointTo(*FindPoint(profile->pBegin.ID), 3, 0, 0);  // the begin now lies 3 from the axis
  EXPECT_NEAR(radius(rot->Vert3D[GridIndex(0, 3, 8)]), 3.0, 1e-4);
  EXPECT_NEAR(radius(rot->Vert3D[GridIndex(1, 3, 8)]), 1.0, 1e-4);
  EXPECT_NEAR(ext->Vert3D[GridIndex(0, 2, 2)].x, 4.0, 1e-5);
  // Moving the axis turns the surface about the new axis.
  MovePointTo(*FindPoint(axis->pBegin.ID), 1, 0, 0);
  MovePointTo(*FindPoint(axis->pEnd.ID), 1, 0, 1);
  EXPECT_NEAR(radius(rot->Vert3D[GridIndex(0, 4, 8)], 1), 2.0, 1e-4);
  // The parameter changes; the next refresh of the surfaces follows it.
  h->Value = 1;
  RefreshSurfaces();
  EXPECT_NEAR(DistanceBetween(up->Vert3D[GridIndex(1, 4, 4)], Position(1, 0.5f, 3)), 0, 1e-5);
  EXPECT_NEAR(half->Vert3D[GridIndex(0, 4, 4)].x, -1, 1e-4);  // a half turn of (3, 0, 0) about x = 1
}

// Whole-text round trips are the property test's; here a ramp name with its
// mark, the reopened document sampling again, and ids shifted by a model's base.
TEST_F(SweptTest, RecordsReadTheirRampsAndShiftWithAModel) {
  CLine* profile = Segment(1, 0, 0, 1, 0, 2);
  CLine* axis = Segment(0, 0, 0, 0, 0, 1);
  CSurRot* rot = test::AddRotation(profile->ID, axis->ID, "6.2832", 8);
  rot->Ramp.ColorName = "@GREY";  // a ramp name may carry its mark
  test::AddExtrusion(profile->ID, "1", "t/2", "0", 3);
  const std::string rotText = rot->Save(), profileId = profile->ID;
  RecordReader r(rotText.substr(0, rotText.size() - 2));
  std::unique_ptr<CSurRot> back = CSurRot::Load(r);
  EXPECT_TRUE(back->Ramp.ColorNum == 2 && back->Ramp.ColorR[0] == 200);
  SceneMode = 3;
  OpenUnRe(GetUndoVar());
  ASSERT_TRUE(Doc.SurRots.count() == 1 && Doc.Stretchs.count() == 1);
  EXPECT_TRUE(Doc.SurRots.Item(1)->GetPoints());
  EXPECT_EQ(Doc.SurRots.Item(1)->Vert3D.size(), 18u);
  RecordReader shifted(rotText.substr(0, rotText.size() - 2), 100);
  EXPECT_EQ(CSurRot::Load(shifted)->RotObjID, ShiftId(profileId, 100));
}

}  // namespace
}  // namespace vt
