// Transformations about a centre and the images that follow their sources:
// scaling maps P to C + k (P - C) in place and as a linked image, for points,
// segments, circles (radius included) and polygons, and the image keeps that
// rule while the source or the centre is dragged. Also the numbers an image
// records for its transformation, which documents keep.
#include <cmath>
#include <vector>

#include "document/document.h"
#include "geometry/geom.h"
#include "geometry/propagation.h"
#include "persist/docio.h"
#include "tool_fixture.h"
#include "tools/transform.h"

namespace vt::test {
namespace {

class TransformFollowTest : public ToolTest {
 protected:
  static TransformParams ZoomBy(float k, const std::string& centre) {
    TransformParams s;
    s.op = TransformOp::Zoom;
    s.a = k;
    s.centre = centre;
    return s;
  }
  // C + k (P - C) in the plane.
  static void ExpectScaled(const Position* image, const Position& p, const Position& c, float k, float tol = 2e-3f) {
    ASSERT_NE(image, nullptr);
    EXPECT_NEAR(image->x, c.x + k * (p.x - c.x), tol);
    EXPECT_NEAR(image->y, c.y + k * (p.y - c.y), tol);
  }
};

TEST_F(TransformFollowTest, ScaledPointImageFollowsItsSourceAndItsCentre) {
  Position* c = Free(1, 1);
  Position* p = Free(3, 2);
  ApplyTransform({p->ID}, ZoomBy(2, c->ID), true);
  Position* img = Last();
  ASSERT_EQ(img->ptype, 10);
  EXPECT_EQ(img->LKID, p->ID);
  EXPECT_EQ(img->LKID2, c->ID);
  ExpectScaled(img, *p, *c, 2);  // (5, 3), not (6, 4)

  DragAlone(3, 2, 4, 4);
  ExpectScaled(img, *p, *c, 2);
  DragAlone(1, 1, 0, 2);
  ExpectScaled(img, *p, *c, 2);
  ExpectAt(img, 8, 6, 2e-3f);

  // A shrink towards the centre, and the record read back keeps following.
  ApplyTransform({p->ID}, ZoomBy(0.5f, c->ID), true);
  Position* half = Last();
  ExpectScaled(half, *p, *c, 0.5f);
  const std::string cid = c->ID, pid = p->ID, doubled = img->ID, halved = half->ID;
  ASSERT_TRUE(OpenDocumentText(GetUndoVar()));
  DragAlone(4, 4, 2, 6);
  const Position* src = FindPoint(pid);
  const Position* centre = FindPoint(cid);
  ASSERT_NE(src, nullptr);
  ASSERT_NE(centre, nullptr);
  ExpectAt(src, 2, 6, 1e-3f);
  ExpectScaled(FindPoint(doubled), *src, *centre, 2);
  ExpectScaled(FindPoint(halved), *src, *centre, 0.5f);
}

TEST_F(TransformFollowTest, ScalingInPlaceMovesFreePointsAboutTheCentre) {
  Position* c = Free(-1, 2);
  Position* a = Free(1, 2);
  Position* b = Free(1, 4);
  CLine* l = Segment(a, b);
  const Position a0 = *a, b0 = *b;
  ApplyTransform({l->ID}, ZoomBy(3, c->ID), false);
  ExpectScaled(a, a0, *c, 3);
  ExpectScaled(b, b0, *c, 3);
  ExpectScaled(&l->pEnd, b0, *c, 3);
  ExpectAt(c, -1, 2);  // the centre stays
  // A point alone, in place.
  Position* q = Free(0, 0);
  ApplyTransform({q->ID}, ZoomBy(-1, c->ID), false);
  ExpectAt(q, -2, 4, 1e-3f);
}

TEST_F(TransformFollowTest, ScaledSegmentCirclesAndPolygonFollowTheirSources) {
  Position* c = Free(0, -2);
  Position* a = Free(2, 0);
  Position* b = Free(4, 1);
  CLine* seg = Segment(a, b);
  Position* o = Free(-4, 0);
  Position* r = Free(-3, 0);
  CCircle* circle = Circle(o, r);
  CRegion* tri = Region({Free(6, 0), Free(8, 0), Free(7, 2)});
  Position* p1 = Free(2, 11);
  Position* p2 = Free(4, 13);
  Position* p3 = Free(2, 15);
  auto three = std::make_unique<CCircle>();
  three->ID = NewObjectId("CR");
  three->CType = 2;
  three->Circle2(p1->ID, p2->ID, p3->ID);
  short slot = 1;
  for (Position* q : {p1, p2, p3}) q->AddLink(CLinkObj{three->ID, 3, slot++, 2, 0});
  CCircle* src = Doc.Circles.Add(std::move(three));
  const float k = 1.5f;
  ApplyTransform({seg->ID, circle->ID, tri->ID, src->ID}, ZoomBy(k, c->ID), true);
  ASSERT_EQ(Doc.Lines.count(), 2);
  ASSERT_EQ(Doc.Circles.count(), 4);
  ASSERT_EQ(Doc.Regions.count(), 2);
  CLine* segImg = Doc.Lines.Item(2);
  CCircle* cirImg = Doc.Circles.Item(3);
  CCircle* srcImg = Doc.Circles.Item(4);
  CRegion* triImg = Doc.Regions.Item(2);
  auto check = [&] {
    ExpectScaled(FindPoint(segImg->pBegin.ID), *a, *c, k);
    ExpectScaled(FindPoint(segImg->pEnd.ID), *b, *c, k);
    ExpectScaled(&segImg->pEnd, *b, *c, k);
    const Position centre = cirImg->Centre();
    ExpectScaled(&centre, *o, *c, k);
    EXPECT_NEAR(cirImg->Radius(), k * circle->Radius(), 2e-3f);
    const Position so = src->Centre(), si = srcImg->Centre();
    ExpectScaled(&si, so, *c, k, 3e-3f);
    EXPECT_NEAR(srcImg->Radius(), k * src->Radius(), 3e-3f);
    for (size_t i = 0; i < tri->Points.size(); ++i)
      ExpectScaled(FindPoint(triImg->Points[i].ID), *FindPoint(tri->Points[i].ID), *c, k);
  };
  check();
  DragAlone(4, 1, 5, 3);    // a segment end
  DragAlone(-3, 0, -4, 2);  // the rim point: the radius grows
  DragAlone(7, 2, 7, 4);    // a corner
  DragAlone(4, 13, 6, 13);  // a point of the three-point circle
  check();
  DragAlone(0, -2, 1, -1);  // the centre of the scaling
  check();
}

TEST_F(TransformFollowTest, ScalingWithoutACentreIsAboutTheOrigin) {
  Position* p = Free(1, -2);
  ApplyTransform({p->ID}, ZoomBy(3, ""), true);
  Position* img = Last();
  ExpectAt(img, 3, -6, 1e-3f);
  DragAlone(1, -2, 2, 0);
  ExpectAt(img, 6, 0, 1e-3f);
}

}  // namespace
}  // namespace vt::test
