#include <gtest/gtest.h>

#include <cmath>

#include "document/document.h"
#include "geometry/geom.h"
#include "support/fixtures.h"

namespace vt {
namespace {

class PointImageTest : public test::DocumentTest {
 protected:
  CLine* AddLineThrough(const Position& a, const Position& b) {
    auto l = std::make_unique<CLine>();
    l->ID = NewObjectId("LN");
    l->pBegin = a;
    l->pEnd = b;
    return Doc.Lines.Add(std::move(l));
  }
};

void ExpectAt(const Position& p, double x, double y, double z, double tol = 1e-5) {
  EXPECT_NEAR(p.x, x, tol);
  EXPECT_NEAR(p.y, y, tol);
  EXPECT_NEAR(p.z, z, tol);
}

TEST_F(PointImageTest, TranslationsByAllThreeForms) {
  Position* p = AddPoint(1, 2, 3);
  ExpectAt(p->Move(1, static_cast<float>(M_PI / 2), 2, 0, "", ""), 1, 4, 3);  // polar: angle, length
  ExpectAt(p->Move(2, 1, -1, 0.5f, "", ""), 2, 1, 3.5);
  Position* from = AddPoint(0, 0, 0);
  Position* to = AddPoint(1, 1, 1);
  ExpectAt(p->Move(3, 0, 0, 0, from->ID, to->ID), 2, 3, 4);
  ExpectAt(p->Move(3, 0, 0, 0, from->ID, "PT0099"), 1, 2, 3);  // a lost point moves nothing
  ExpectAt(*p, 1, 2, 3);  // the source never changes
}

TEST_F(PointImageTest, RotationScaleAndReflections) {
  Position* p = AddPoint(2, 1, 5);
  Position* c = AddPoint(1, 1, 0);
  // A quarter turn about (1, 1) in the plane of constant z.
  ExpectAt(p->RotateP(c->ID, static_cast<float>(M_PI / 2)), 1, 2, 5);
  ExpectAt(p->Zoom(2), 4, 2, 10);
  // Through a point: as far beyond it as before it.
  ExpectAt(p->MirrorP(c->ID), 0, 1, -5);
  ExpectAt(p->MirrorP(p->ID), 2, 1, 5);  // through itself: itself
  // In the line y = x (any z along it).
  CLine* diag = AddLineThrough(Position(0, 0, 5), Position(1, 1, 5));
  ExpectAt(p->MirrorL(diag->ID), 1, 2, 5);
  // In the plane z = 1 given by a region's first three corners.
  auto rg = std::make_unique<CRegion>();
  rg->ID = NewObjectId("RG");
  rg->Points = {Position(0, 0, 1), Position(1, 0, 1), Position(0, 1, 1), Position(9, 9, 9)};
  std::string rid = Doc.Regions.Add(std::move(rg))->ID;
  ExpectAt(p->MirrorR(rid), 2, 1, -3);
  // About the z axis, a turn in space equals the turn in the plane.
  CLine* zAxis = AddLineThrough(Position(1, 1, 0), Position(1, 1, 1));
  Position a = p->RotL3D(zAxis->ID, 0.7f);
  Position b = p->RotateP(c->ID, 0.7f);
  ExpectAt(a, b.x, b.y, b.z);
  // About the x axis a quarter turn takes y to z.
  CLine* xAxis = AddLineThrough(Position(0, 0, 0), Position(3, 0, 0));
  ExpectAt(p->RotL3D(xAxis->ID, static_cast<float>(M_PI / 2)), 2, -5, 1);
}

TEST_F(PointImageTest, ImageObjectsJoinTheDocument) {
  Position* p = AddPoint(1, 0, 0, "A");
  Position* c = AddPoint(0, 0, 0, "O");
  Position* img = p->RotateP0(0, c->ID, static_cast<float>(M_PI));
  ASSERT_NE(img, nullptr);
  EXPECT_EQ(img->LKID, p->ID);
  ExpectAt(*img, -1, 0, 0);
  EXPECT_EQ(p->Child, std::vector<std::string>{"PT0003"});
  EXPECT_EQ(FindPoint("PT0003"), img);

  // Flag 1: the point itself moves, nothing is added.
  int count = Doc.Points.count();
  EXPECT_EQ(p->Zoom0(1, 3), nullptr);
  ExpectAt(*p, 3, 0, 0);
  EXPECT_EQ(Doc.Points.count(), count);
}

TEST_F(PointImageTest, AFullChildListMakesNoHalfImage) {
  Position* p = AddPoint(1, 0, 0);
  for (int i = 0; i < Position::kMaxChildren; ++i) p->Child.push_back("PT0999");
  long number = NextObjectNumber;
  int count = Doc.Points.count();
  EXPECT_THROW(p->Zoom0(0, 2), RunTimeError);
  EXPECT_EQ(Doc.Points.count(), count);
  EXPECT_EQ(NextObjectNumber, number);
}

TEST(PointBasics, PickIsStrict) {
  Position p(0, 0, 0);
  Position nearEnd(0.1f, 0, 10), farEnd(0.1f, 0, -10);
  EXPECT_TRUE(p.Pick(nearEnd, farEnd));
  Position atRimNear(0.25f, 0, 10), atRimFar(0.25f, 0, -10);
  EXPECT_FALSE(p.Pick(atRimNear, atRimFar));
  // The distance is to the straight line through the two ends, not the segment.
  Position aNear(0.1f, 0, 10), aFar(0.1f, 0, 5);
  EXPECT_TRUE(p.Pick(aNear, aFar));
  // A degenerate ray measures from its start.
  EXPECT_TRUE(p.Pick(Position(0.1f, 0.1f, 0), Position(0.1f, 0.1f, 0)));
  EXPECT_FALSE(p.Pick(Position(0.2f, 0, 0), Position(0.2f, 0, 0)));
}

TEST(GeometryRoutines, FeetAndRotations) {
  Position a(0, 0, 0), b(2, 0, 0);
  ExpectAt(FootOnLine(Position(1, 5, 3), a, b), 1, 0, 0);
  ExpectAt(FootOnLine(Position(7, 5, 3), a, b), 7, 0, 0);  // a line, not a segment
  ExpectAt(FootOnLine(Position(7, 5, 3), a, a), 0, 0, 0);
  ExpectAt(PointBeyond(a, b, 3), 5, 0, 0);
  EXPECT_FLOAT_EQ(DistanceBetween(Position(1, 2, 2), Position(0, 0, 0)), 3);
  CRegion flat;
  flat.Points = {Position(0, 0, 0), Position(1, 0, 0), Position(2, 0, 0)};  // on one line
  ExpectAt(FootOnPlane(Position(1, 1, 1), flat), 1, 1, 1);
}

}  // namespace
}  // namespace vt
