// Surfaces of rotation and extrusions: the sweep, the closed seam, the
// degenerate profiles, the rebuild after a drag, the records.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "document/document.h"
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
  // A segment between two new free points, linked as the line tool links it.
  CLine* Segment(float x1, float y1, float z1, float x2, float y2, float z2) {
    return test::LinkedLine(AddPoint(x1, y1, z1), AddPoint(x2, y2, z2));
  }

  CSurRot* Rotation(const std::string& profile, const std::string& axis, const std::string& angle, int steps) {
    auto s = std::make_unique<CSurRot>();
    s->ID = NewObjectId("SR");
    s->RotObjID = profile;
    s->RotCenterID = axis;
    s->RotAngle = angle;
    s->StepV = steps;
    return Doc.SurRots.Add(std::move(s));
  }

  CStretch* Extrusion(const std::string& profile, const char* dx, const char* dy, const char* dz, int steps) {
    auto s = std::make_unique<CStretch>();
    s->ID = NewObjectId("SS");
    s->ObjID = profile;
    s->DX = dx;
    s->DY = dy;
    s->DZ = dz;
    s->StepV = steps;
    return Doc.Stretchs.Add(std::move(s));
  }

  static bool Finite(const Vec3& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }
};

TEST_F(SweptTest, SegmentTurnedFullyAboutAParallelAxisIsAClosedCylinder) {
  CLine* profile = Segment(1, 0, 0, 1, 0, 2);
  CLine* axis = Segment(0, 0, 0, 0, 0, 1);
  CSurRot* s = Rotation(profile->ID, axis->ID, "6.2832", 24);
  ASSERT_TRUE(s->GetPoints());
  EXPECT_EQ(s->StepU, 1);
  EXPECT_EQ(s->StepV, 24);
  ASSERT_EQ(s->Vert3D.size(), 2u * 25u);
  for (int i = 0; i <= 1; ++i)
    for (int j = 0; j <= 24; ++j) {
      const Position& p = s->Vert3D[GridIndex(i, j, 24)];
      EXPECT_NEAR(std::hypot(p.x, p.y), 1.0, 1e-5);
      EXPECT_NEAR(p.z, i == 0 ? 0.0 : 2.0, 1e-6);
    }
  // Quarter turn after 6 of 24 steps.
  EXPECT_NEAR(s->Vert3D[GridIndex(0, 6, 24)].x, 0.0, 1e-4);
  EXPECT_NEAR(s->Vert3D[GridIndex(0, 6, 24)].y, 1.0, 1e-4);
  EXPECT_NEAR(s->MaxZ, 2.0, 1e-6);
  EXPECT_NEAR(s->MinX, -1.0, 1e-3);

  s->ComputeNormals();
  const std::vector<Vec3>& n = s->VertexNormalsOf();
  ASSERT_EQ(n.size(), s->Vert3D.size());
  for (int i = 0; i <= 1; ++i) {
    const Vec3& first = n[GridIndex(i, 0, 24)];
    const Vec3& last = n[GridIndex(i, 24, 24)];
    // Both edges of the seam carry the same normal, and it is radial there
    // as it is everywhere else: no dark line at the seam.
    EXPECT_NEAR(first.x, last.x, 1e-5);
    EXPECT_NEAR(first.y, last.y, 1e-5);
    EXPECT_NEAR(first.z, last.z, 1e-5);
    EXPECT_NEAR(std::fabs(first.x), 1.0, 1e-4);
    EXPECT_NEAR(first.y, 0.0, 1e-4);
    EXPECT_NEAR(first.z, 0.0, 1e-4);
    const Vec3& mid = n[GridIndex(i, 6, 24)];
    EXPECT_NEAR(std::fabs(mid.y), 1.0, 1e-4);
  }
  EXPECT_EQ(s->GetRGNum(), 24);
  EXPECT_EQ(s->GetRegions().size(), 24u);

  // Picking: a ray along the wall meets no face but runs down a chord; a
  // ray across the cylinder meets its faces; a ray beside it misses.
  EXPECT_TRUE(s->Pick(Position(), Position(1, 0, -10), Position(1, 0, 10)));
  EXPECT_TRUE(s->Pick(Position(), Position(-10, 0.3f, 1), Position(10, 0.3f, 1)));
  EXPECT_FALSE(s->Pick(Position(), Position(3, 0, -10), Position(3, 0, 10)));
  EXPECT_FALSE(s->Pick(Position(), Position(-10, 0.3f, 2.5f), Position(10, 0.3f, 2.5f)));
  s->Hide = true;
  EXPECT_FALSE(s->Pick(Position(), Position(1, 0, -10), Position(1, 0, 10)));
}

TEST_F(SweptTest, ProfileOnTheAxisGivesZeroNormalsAndNoNaN) {
  // A segment lying on the axis: every quad has no area.
  CLine* axis = Segment(0, 0, 0, 0, 0, 2);
  CSurRot* s = Rotation(axis->ID, axis->ID, "6.2832", 10);
  ASSERT_TRUE(s->GetPoints());
  s->ComputeNormals();
  for (const Vec3& v : s->FaceNormalsOf()) {
    ASSERT_TRUE(Finite(v));
    EXPECT_TRUE(v.x == 0.0f && v.y == 0.0f && v.z == 0.0f);
  }
  for (const Vec3& v : s->VertexNormalsOf()) ASSERT_TRUE(Finite(v));

  // A point on the axis: StepV + 1 equal vertices and no quads.
  Position* on = AddPoint(0, 0, 1);
  CSurRot* p = Rotation(on->ID, axis->ID, "6.2832", 10);
  ASSERT_TRUE(p->GetPoints());
  EXPECT_EQ(p->StepU, 0);
  ASSERT_EQ(p->Vert3D.size(), 11u);
  for (const Position& v : p->Vert3D) EXPECT_TRUE(v.x == 0 && v.y == 0 && v.z == 1);
  p->ComputeNormals();
  for (const Vec3& v : p->VertexNormalsOf()) ASSERT_TRUE(Finite(v));
  EXPECT_TRUE(p->GetRegions().empty());
}

TEST_F(SweptTest, RotationAboutACentrePointTurnsInThePlane) {
  Position* c = AddPoint(1, 1, 0);
  Position* q = AddPoint(3, 1, 0.5f);
  CSurRot* s = Rotation(q->ID, c->ID, "3.1416", 4);
  ASSERT_TRUE(s->GetPoints());
  const Position& end = s->Vert3D[GridIndex(0, 4, 4)];
  EXPECT_NEAR(end.x, -1.0, 1e-3);
  EXPECT_NEAR(end.y, 1.0, 1e-3);
  EXPECT_FLOAT_EQ(end.z, 0.5f);
}

TEST_F(SweptTest, MissingObjectsOrABadAngleLeaveTheMeshAlone) {
  CLine* profile = Segment(1, 0, 0, 1, 0, 2);
  CLine* axis = Segment(0, 0, 0, 0, 0, 1);
  CSurRot* s = Rotation(profile->ID, axis->ID, "6.2832", 8);
  ASSERT_TRUE(s->GetPoints());
  const std::vector<Position> before = s->Vert3D;
  s->RotObjID = "LN9999";
  EXPECT_FALSE(s->GetPoints());
  s->RotObjID = profile->ID;
  s->RotCenterID = "PT9999";
  EXPECT_FALSE(s->GetPoints());
  s->RotCenterID = axis->ID;
  s->RotAngle = "2*";
  EXPECT_FALSE(s->GetPoints());
  EXPECT_FALSE(host_.messages.empty());
  ASSERT_EQ(s->Vert3D.size(), before.size());
  for (size_t k = 0; k < before.size(); ++k) EXPECT_EQ(s->Vert3D[k].x, before[k].x);
}

TEST_F(SweptTest, ExtrusionByAZeroVectorIsFlatWithoutNaN) {
  Position* a = AddPoint(0, 0, 0);
  Position* b = AddPoint(1, 0, 0);
  Position* c = AddPoint(0, 1, 0);
  auto g = std::make_unique<CRegion>();
  g->ID = NewObjectId("RG");
  for (Position* p : {a, b, c}) g->Points.emplace_back(p->x, p->y, p->z);
  CRegion* region = Doc.Regions.Add(std::move(g));
  CStretch* s = Extrusion(region->ID, "0", "0", "0", 5);
  ASSERT_TRUE(s->GetPoints());
  EXPECT_EQ(s->StepU, 3);  // the closed outline: 4 vertices
  s->ComputeNormals();
  for (const Vec3& v : s->FaceNormalsOf()) {
    ASSERT_TRUE(Finite(v));
    EXPECT_EQ(v.x * v.x + v.y * v.y + v.z * v.z, 0.0f);
  }
  for (const Vec3& v : s->VertexNormalsOf()) ASSERT_TRUE(Finite(v));

  // A real vector: a prism side wall, each step a fifth of the vector.
  s->DZ = "2*1.5";
  ASSERT_TRUE(s->GetPoints());
  EXPECT_NEAR(s->Vert3D[GridIndex(1, 1, 5)].z, 0.6, 1e-6);
  EXPECT_NEAR(s->Vert3D[GridIndex(1, 5, 5)].z, 3.0, 1e-6);
  EXPECT_FLOAT_EQ(s->Vert3D[GridIndex(1, 5, 5)].x, 1.0f);
  s->ComputeNormals();
  // The wall on y = 0 faces along y.
  EXPECT_NEAR(std::fabs(s->FaceNormalsOf()[0].y), 1.0, 1e-5);
}

TEST_F(SweptTest, ASpaceCurveProfileHasFiftyOneVerticesAndKeepsItsGaps) {
  auto c = std::make_unique<CSurface>();
  // x = u, y = 0, z = u over -2..2 in 8 steps of its own.
  c->Init("C30001", "", 1, 3, 3, "u", "0", "u", 8, 1, "-2", "2", "0", "0");
  CSurface* curve = Doc.Surfaces.Add(std::move(c));
  ASSERT_TRUE(curve->GetPoints());
  ASSERT_EQ(curve->CurveVert.size(), 9u);
  CStretch* s = Extrusion(curve->ID, "0", "0", "1", 2);
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

TEST_F(SweptTest, DraggingAProfilePointRebuildsTheSurfaces) {
  CLine* profile = Segment(1, 0, 0, 1, 0, 2);
  CLine* axis = Segment(0, 0, 0, 0, 0, 1);
  CSurRot* rot = Rotation(profile->ID, axis->ID, "6.2832", 8);
  CStretch* ext = Extrusion(profile->ID, "1", "0", "0", 2);
  ASSERT_TRUE(rot->GetPoints());
  ASSERT_TRUE(ext->GetPoints());
  Position* begin = FindPoint(profile->pBegin.ID);
  ASSERT_TRUE(begin);
  MovePointTo(*begin, 3, 0, 0);
  // The begin now lies 3 from the axis.
  EXPECT_NEAR(std::hypot(rot->Vert3D[GridIndex(0, 3, 8)].x, rot->Vert3D[GridIndex(0, 3, 8)].y), 3.0, 1e-4);
  EXPECT_NEAR(std::hypot(rot->Vert3D[GridIndex(1, 3, 8)].x, rot->Vert3D[GridIndex(1, 3, 8)].y), 1.0, 1e-4);
  EXPECT_NEAR(ext->Vert3D[GridIndex(0, 2, 2)].x, 4.0, 1e-5);
  // Moving the axis turns the surface about the new axis.
  Position* axisEnd = FindPoint(axis->pEnd.ID);
  Position* axisBegin = FindPoint(axis->pBegin.ID);
  MovePointTo(*axisBegin, 1, 0, 0);
  MovePointTo(*axisEnd, 1, 0, 1);
  EXPECT_NEAR(std::hypot(rot->Vert3D[GridIndex(0, 4, 8)].x - 1, rot->Vert3D[GridIndex(0, 4, 8)].y), 2.0, 1e-4);
}

TEST_F(SweptTest, FormulasFollowTheParameters) {
  CNote* h = test::AddParameter("h", 2);
  CLine* profile = Segment(1, 0, 0, 2, 0, 0);
  CLine* axis = Segment(0, 0, 0, 0, 0, 1);
  CStretch* ext = Extrusion(profile->ID, "0", "h/2", "h", 4);
  CSurRot* rot = Rotation(profile->ID, axis->ID, "3.1416/h", 4);
  ASSERT_TRUE(ext->GetPoints());
  ASSERT_TRUE(rot->GetPoints());
  EXPECT_NEAR(ext->Vert3D[GridIndex(1, 4, 4)].y, 1, 1e-6);
  EXPECT_NEAR(ext->Vert3D[GridIndex(1, 4, 4)].z, 2, 1e-6);
  EXPECT_NEAR(rot->Vert3D[GridIndex(1, 4, 4)].y, 2, 1e-4);  // a quarter turn
  // The parameter changes; the next refresh of the surfaces follows it.
  h->Value = 1;
  RefreshSurfaces();
  EXPECT_NEAR(ext->Vert3D[GridIndex(1, 4, 4)].z, 1, 1e-6);
  EXPECT_NEAR(rot->Vert3D[GridIndex(1, 4, 4)].x, -2, 1e-4);  // a half turn
}

TEST_F(SweptTest, RecordsRoundTripAndDamagedRecordsStop) {
  CLine* profile = Segment(1, 0, 0, 1, 0, 2);
  CLine* axis = Segment(0, 0, 0, 0, 0, 1);
  CSurRot* rot = Rotation(profile->ID, axis->ID, "6.2832", 8);
  rot->NameS = "a b";
  rot->Ramp.ColorName = "@GREY";  // a ramp name may carry its mark
  rot->ShowTrans = true;
  rot->TransAlpha = 0.25f;
  rot->TexName = "C:\\t x.bmp";
  CStretch* ext = Extrusion(profile->ID, "1", "t/2", "0", 3);
  const std::string rotText = rot->Save();
  RecordReader r(rotText.substr(0, rotText.size() - 2));
  std::unique_ptr<CSurRot> back = CSurRot::Load(r);
  EXPECT_EQ(back->Save(), rotText);
  EXPECT_EQ(back->Ramp.ColorNum, 2);
  EXPECT_EQ(back->Ramp.ColorR[0], 200);

  const std::string extText = ext->Save();
  EXPECT_NE(extText.find("@1@ @t/2@ @0@ @" + profile->ID + "@"), std::string::npos);
  RecordReader r2(extText.substr(0, extText.size() - 2));
  EXPECT_EQ(CStretch::Load(r2)->Save(), extText);

  // A record cut short stops the reader.
  RecordReader cut(rotText.substr(0, rotText.find("@6.2832@")));
  EXPECT_THROW(CSurRot::Load(cut), RecordError);

  // Through the document text (of a space scene); ids shift with a model's
  // base.
  const std::string profileId = profile->ID;
  SceneMode = 3;
  const std::string doc = GetUndoVar();
  OpenUnRe(doc);
  ASSERT_EQ(Doc.SurRots.count(), 1);
  ASSERT_EQ(Doc.Stretchs.count(), 1);
  EXPECT_TRUE(Doc.SurRots.Item(1)->GetPoints());
  EXPECT_EQ(Doc.SurRots.Item(1)->Vert3D.size(), 18u);
  RecordReader shifted(rotText.substr(0, rotText.size() - 2), 100);
  EXPECT_EQ(CSurRot::Load(shifted)->RotObjID, ShiftId(profileId, 100));
}

}  // namespace
}  // namespace vt
