// Sectors, ribbons, spherical surfaces and intersection lines: the meshes
// from their sources, their faces, picking, the re-initialisation after a
// drag and the crossing of two polygons.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <tuple>
#include <vector>

#include "document/document.h"
#include "geometry/derived_surfaces.h"
#include "geometry/propagation.h"
#include "graphs/surface.h"
#include "tools/notes.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "document/globals.h"
#include "support/fixtures.h"

namespace vt {
namespace {

class DerivedSurfaceTest : public test::DocumentTest {
 protected:
  // A polygon on new points.
  CRegion* Region(std::initializer_list<std::array<float, 3>> corners) {
    std::vector<Position*> points;
    for (const auto& c : corners) points.push_back(AddPoint(c[0], c[1], c[2]));
    return DocumentTest::Region(points);
  }
  CSphere* Sphere(Position* centre, Position* on) {
    auto s = std::make_unique<CSphere>();
    s->ID = NewObjectId("SP");
    s->LKID = centre->ID;
    s->LKID2 = on->ID;
    return Doc.Spheres.Add(std::move(s));
  }
  CInterLine* InterLine(const std::string& a, const std::string& b) {
    auto l = std::make_unique<CInterLine>();
    l->ID = NewObjectId("IL");
    l->LKID = a;
    l->LKID2 = b;
    return Doc.InterLines.Add(std::move(l));
  }
  // The segment's ends, the lower x (then y, z) first.
  static void Ordered(const Segment3& s, Position& lo, Position& hi) {
    const bool swap = std::tie(s.a.x, s.a.y, s.a.z) > std::tie(s.b.x, s.b.y, s.b.z);
    lo = swap ? s.b : s.a;
    hi = swap ? s.a : s.b;
  }
};

void ExpectAt(const Position& p, float x, float y, float z, float tol = 1e-5f) {
  EXPECT_NEAR(p.x, x, tol);
  EXPECT_NEAR(p.y, y, tol);
  EXPECT_NEAR(p.z, z, tol);
}

TEST_F(DerivedSurfaceTest, SphereMeshLiesAtTheDistanceOfItsPoint) {
  Position* c = AddPoint(1, 2, 3);
  Position* on = AddPoint(1, 2, 5);
  CSphere* s = Sphere(c, on);
  ASSERT_TRUE(s->InitPos());
  EXPECT_FLOAT_EQ(s->R, 2);
  ASSERT_EQ(s->Mesh.size(), 26u * 26u);
  for (const Position& p : s->Mesh) {
    const double d = std::sqrt((p.x - 1.0) * (p.x - 1.0) + (p.y - 2.0) * (p.y - 2.0) + (p.z - 3.0) * (p.z - 3.0));
    EXPECT_NEAR(d, 2.0, 1e-5);
  }
  // b = 0 is the top pole, b = pi the bottom.
  ExpectAt(s->Mesh[0], 1, 2, 5);
  ExpectAt(s->Mesh[25], 1, 2, 1, 1e-4f);
  // Faces at the poles lose their repeated corner.
  EXPECT_EQ(s->GetRegions().front().size(), 3u);

  // A ray down through the centre hits it, a ray beside it misses.
  EXPECT_TRUE(s->Pick(Position(), Position(1, 2, -10), Position(1, 2, 10)));
  EXPECT_FALSE(s->Pick(Position(), Position(4, 2, -10), Position(4, 2, 10)));
  s->Hide = true;
  EXPECT_FALSE(s->Pick(Position(), Position(1, 2, -10), Position(1, 2, 10)));
}

TEST_F(DerivedSurfaceTest, FanClosesTheRimToItsApex) {
  CRegion* g = Region({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}});
  Position* apex = AddPoint(1, 1, 3);
  auto f = std::make_unique<CFan>();
  f->ID = NewObjectId("FA");
  f->LKID = apex->ID;
  f->LKID2 = g->ID;
  CFan* fan = Doc.Fans.Add(std::move(f));
  ASSERT_TRUE(fan->InitPos());
  // The closed outline of the square: 5 rim samples, 4 triangles.
  EXPECT_EQ(fan->GetRGNum(), 4);
  const std::vector<Face> faces = fan->GetRegions();
  ASSERT_EQ(faces.size(), 4u);
  for (const Face& t : faces) {
    ASSERT_EQ(t.size(), 3u);
    ExpectAt(t[2], 1, 1, 3);
  }
  // The apex follows its point.
  MovePointTo(*apex, 1, 1, 5);
  ExpectAt(fan->GetRegions()[0][2], 1, 1, 5);
  // Without a point the apex is the middle of the rim samples.
  fan->LKID = "";
  ASSERT_TRUE(fan->InitPos());
  ExpectAt(fan->Apex, 1, 1, 0);  // the closing sample does not count twice
  // A point as the rim is refused.
  fan->LKID2 = apex->ID;
  EXPECT_FALSE(fan->InitPos());
  EXPECT_EQ(fan->GetRGNum(), 0);
}

TEST_F(DerivedSurfaceTest, RibbonJoinsTwoRimsSampleBySample) {
  auto ribbon = [](const std::string& rim1, const std::string& rim2) {
    auto r = std::make_unique<CRibbon>();
    r->ID = NewObjectId("RB");
    r->LKID = rim1;
    r->LKID2 = rim2;
    return Doc.Ribbons.Add(std::move(r));
  };
  CLine* a = Segment(0, 0, 0, 4, 0, 0);
  CLine* b = Segment(0, 1, 1, 4, 1, 1);
  CRibbon* rb = ribbon(a->ID, b->ID);
  ASSERT_TRUE(rb->InitPos());
  EXPECT_EQ(rb->GetRGNum(), 50);
  const std::vector<Face> faces = rb->GetRegions();
  ASSERT_EQ(faces.size(), 50u);
  ExpectAt(faces[0][0], 0, 0, 0);
  ExpectAt(faces[0][1], 0.08f, 0, 0);
  ExpectAt(faces[0][2], 0.08f, 1, 1);
  ExpectAt(faces[0][3], 0, 1, 1);
  // A ribbon standing upright, seen from straight above: no face meets the
  // ray, its edge is still picked.
  CRibbon* wall = ribbon(Segment(0, 5, 0, 2, 5, 0)->ID, Segment(0, 5, 1, 2, 5, 1)->ID);
  ASSERT_TRUE(wall->InitPos());
  EXPECT_TRUE(wall->Pick(Position(), Position(1, 5.05f, -10), Position(1, 5.05f, 10)));
  EXPECT_FALSE(wall->Pick(Position(), Position(1, 5.5f, -10), Position(1, 5.5f, 10)));
  // A point is not a rim.
  rb->LKID2 = a->pBegin.ID;
  EXPECT_FALSE(rb->InitPos());
}

TEST_F(DerivedSurfaceTest, FaceCrossingsMatchTheSegmentsComputedByHand) {
  const Face sq = {Position(-1, -1, 0), Position(1, -1, 0), Position(1, 1, 0), Position(-1, 1, 0)};
  // A square in the plane x = 0.5 from y = -2 to 0: the segment x = 0.5, y in [-1, 0].
  const Face wall = {Position(0.5f, -2, -1), Position(0.5f, 0, -1), Position(0.5f, 0, 1), Position(0.5f, -2, 1)};
  // The plane z = x - 0.5, its corners reaching y from -0.25 to 3.
  const Face tilted = {Position(0, -0.25f, -0.5f), Position(1, -0.25f, 0.5f), Position(1, 3, 0.5f),
                       Position(0, 3, -0.5f)};
  // A U in z = 0 (arms x in [0, 1] and [2, 3]) and a wall at y = 2 across both arms.
  const Face u = {Position(0, 0, 0), Position(3, 0, 0), Position(3, 3, 0), Position(2, 3, 0),
                  Position(2, 1, 0), Position(1, 1, 0), Position(1, 3, 0), Position(0, 3, 0)};
  const Face across = {Position(-1, 2, -1), Position(4, 2, -1), Position(4, 2, 1), Position(-1, 2, 1)};
  const Face parallel = {Position(-1, -1, 1), Position(1, -1, 1), Position(1, 1, 1), Position(-1, 1, 1)};
  const Face beside = {Position(3, -1, -1), Position(3, 1, -1), Position(3, 1, 1), Position(3, -1, 1)};
  const Face line = {Position(0, 0, -1), Position(0, 0, 1), Position(0, 0, 2)};
  const struct {
    const Face *a, *b;
    std::vector<std::array<float, 6>> want;  // lo and hi of each segment, by lowest x
  } cases[] = {{&sq, &wall, {{0.5f, -1, 0, 0.5f, 0, 0}}},   {&wall, &sq, {{0.5f, -1, 0, 0.5f, 0, 0}}},
               {&sq, &tilted, {{0.5f, -0.25f, 0, 0.5f, 1, 0}}}, {&u, &across, {{0, 2, 0, 1, 2, 0}, {2, 2, 0, 3, 2, 0}}},
               {&sq, &parallel, {}}, {&sq, &sq, {}}, {&sq, &beside, {}}, {&sq, &line, {}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    std::vector<Segment3> out;
    EXPECT_EQ(FaceFaceSegment(*c.a, *c.b, out), !c.want.empty());
    ASSERT_EQ(out.size(), c.want.size());
    std::sort(out.begin(), out.end(), [](const Segment3& p, const Segment3& q) {
      return std::min(p.a.x, p.b.x) < std::min(q.a.x, q.b.x);
    });
    for (size_t i = 0; i < out.size(); ++i) {
      Position lo, hi;
      Ordered(out[i], lo, hi);
      const auto& w = c.want[i];
      ExpectAt(lo, w[0], w[1], w[2]);
      ExpectAt(hi, w[3], w[4], w[5]);
    }
  }
}

TEST_F(DerivedSurfaceTest, InterLineOfTwoRegionsFollowsTheRefreshPass) {
  CRegion* a = Region({{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}});
  CRegion* b = Region({{0.5f, -2, -1}, {0.5f, 0, -1}, {0.5f, 0, 1}, {0.5f, -2, 1}});
  CInterLine* il = InterLine(a->ID, b->ID);
  il->InitLines();
  ASSERT_EQ(il->Lines.size(), 1u);
  // The wall moves to x = -0.5: the next refresh pass rebuilds the line.
  for (const Position& corner : b->Points) {
    Position* real = FindPoint(corner.ID);
    ASSERT_TRUE(real);
    MovePointTo(*real, -0.5f, real->y, real->z);
  }
  RefreshPass();
  ASSERT_EQ(il->Lines.size(), 1u);
  Position lo, hi;
  Ordered(il->Lines[0], lo, hi);
  ExpectAt(lo, -0.5f, -1, 0);
  ExpectAt(hi, -0.5f, 0, 0);
  CBox box{3e38f, -3e38f, 3e38f, -3e38f, 3e38f, -3e38f};
  il->GetBox(box);
  EXPECT_FLOAT_EQ(box.MinY, -1);
  EXPECT_FLOAT_EQ(box.MaxY, 0);
  // Picking along the line.
  EXPECT_TRUE(il->Pick(Position(), Position(-0.5f, -0.5f, 10), Position(-0.5f, -0.5f, -10)));
  EXPECT_FALSE(il->Pick(Position(), Position(0.5f, -0.5f, 10), Position(0.5f, -0.5f, -10)));
  // A source that is gone leaves no segments.
  il->LKID2 = "RG9999";
  il->InitLines();
  EXPECT_TRUE(il->Lines.empty());
}

TEST_F(DerivedSurfaceTest, InterLineOfARegionAndASurface) {
  // The plane z = x sampled as a surface.
  auto n = std::make_unique<CNote>();
  n->ID = NewObjectId("NT");
  n->VarName = "k";
  n->Value = 1;
  CNote* k = Doc.Notes.Add(std::move(n));
  auto s = std::make_unique<CSurface>();
  s->Init(NewObjectId("SF"), "", 2, 2, 3, "", "", "x*k", 5, 4, "-2", "2", "-2", "2");
  CSurface* sf = Doc.Surfaces.Add(std::move(s));
  ASSERT_TRUE(sf->GetPoints());
  // A region in the plane z = 1, covering the surface.
  CRegion* g = Region({{-3, -3, 1}, {3, -3, 1}, {3, 3, 1}, {-3, 3, 1}});
  CInterLine* il = InterLine(g->ID, sf->ID);
  il->InitLines();
  ASSERT_FALSE(il->Lines.empty());
  // Every piece lies where x = 1 and z = 1.
  double length = 0;
  for (const Segment3& seg : il->Lines) {
    for (const Position* p : {&seg.a, &seg.b}) {
      EXPECT_NEAR(p->x, 1, 1e-5);
      EXPECT_NEAR(p->z, 1, 1e-5);
    }
    length += std::fabs(seg.b.y - seg.a.y);
  }
  EXPECT_NEAR(length, 4.0, 1e-4);  // y from -2 to 2

  // The parameter changes (z = 2x): the surfaces are sampled again, and the
  // line follows at once, at x = 1/2.
  k->Value = 2;
  RefreshSurfaces();
  ASSERT_FALSE(il->Lines.empty());
  for (const Segment3& seg : il->Lines) EXPECT_NEAR(seg.a.x, 0.5, 1e-5);
}

}  // namespace
}  // namespace vt
