// The creation tools: snapping, points on regions and curves, a line on
// existing points, following points, and the bounds that refuse a click.
#include <gtest/gtest.h>

#include "document/command_table.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/undo.h"
#include "geometry/geom.h"
#include "geometry/on_object.h"
#include "geometry/propagation.h"
#include "render/frame.h"
#include "tool_fixture.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"
#include "tools/screen_items.h"
#include "tools/select.h"

namespace vt::test {
namespace {

class CreateTest : public ToolTest {
 protected:
  CCreatePoint point_;
  CCreateLine line_;
  CCreateCircle circle_;
  CCreateText text_;
};

TEST_F(CreateTest, FreePointsSnapHalfToEvenButAClickOnAPointTakesItsPlace) {
  Click(point_, 0.3f, 0.3f);
  SnapToGrid = true;
  Click(point_, 1.4f, 2.5f);
  ExpectAt(Doc.Points.Item(2), 1, 2, 0);
  Click(point_, -2.5f, 3.5f);
  ExpectAt(Doc.Points.Item(3), -2, 4, 0);
  Click(point_, 0.4f, 0.3f);  // on a point: its place, not the grid's
  ExpectAt(Doc.Points.Item(4), 0.3f, 0.3f, 0);

  // The marker follows the mouse on the grid, shown while snapping is on.
  ActiveTool = 1;
  Move(point_, At(2.5f, -1.5f));
  EXPECT_EQ(ToolCursorPoint, &SnapMarker);
  ExpectAt(&SnapMarker, 2, -2, 0);
  EXPECT_EQ(SnapMarker.z, 0);
  SnapToGrid = false;
  Move(point_, At(3.5f, 0.5f));
  EXPECT_EQ(ToolCursorPoint, nullptr);
  ExpectAt(&SnapMarker, 4, 0, 0);
}

TEST_F(CreateTest, ThePointToolPutsPointsOnRegionsAndCurvesAndFollowsThem) {
  Position* a = Free(0, 0);
  CRegion* g = Region({Free(0, 5), Free(4, 5), Free(4, 9), Free(0, 9)});
  Click(point_, 3, 8.5f);  // inside: the nearest edge is the top one
  Position* onRegion = Doc.Points.Item(Doc.Points.count());
  EXPECT_EQ(onRegion->Parent[0], g->ID);
  ExpectAt(onRegion, 3, 9);
  ASSERT_EQ(g->StruPNum(), 1);
  // It follows the region: the corners move, the point keeps its place in
  // the region's frame.
  for (Position& corner : g->Points) {
    Position* real = FindPoint(corner.ID);
    real->Set(real->x + 1, real->y, real->z);
    real->UpdateLinked(1, 0, 0, 0);
  }
  ExpectAt(onRegion, 4, 9);

  // A function curve carries its point by the parent id alone, at the
  // nearest sample, and keeps it there when it is dragged.
  auto curve = std::make_unique<CFunCurve>();
  curve->Init(NewObjectId("C2"), "", 0, 1, "", "0.5*x", "", 100, 100, "-5", "5", -5, 5, RGB(0, 0, 255), 2);
  curve->FunForm = 2;
  ASSERT_TRUE(curve->GetPoints());
  CFunCurve* f = Doc.FunCurves.Add(std::move(curve));
  Click(point_, -2, -0.97f);
  Position* onCurve = Doc.Points.Item(Doc.Points.count());
  EXPECT_EQ(onCurve->Parent[0], f->ID);
  ExpectAt(onCurve, -2, -1);
  EXPECT_EQ(f->StruPNum(), 0);
  Drag(-2, -1, -3, 0);  // nearest to (-3, 0) on y = x / 2: (-2.4, -1.2)
  ExpectAt(onCurve, -2.4f, -1.2f, 1e-4f);

  // Following points are never made on objects.
  PointToolKind = 8;
  FollowPointId = a->ID;
  const int n = Doc.Points.count();
  Click(point_, 3, 5);  // on the region
  EXPECT_EQ(Doc.Points.count(), n);
}

TEST_F(CreateTest, ALineSharesAnExistingPointAndEndsOnAnotherLineWithAPointOnIt) {
  Position* p = Free(0, 0, "P");
  CLine* carrier = Segment(Free(5, -2), Free(5, 2));
  Click(line_, 0.1f, 0);
  Click(line_, 5.05f, 1);
  CLine* l = Doc.Lines.Item(2);
  EXPECT_EQ(l->pBegin.ID, p->ID);
  Position* end = FindPoint(l->pEnd.ID);
  ASSERT_NE(end, nullptr);
  EXPECT_EQ(end->ptype, 7);
  EXPECT_EQ(end->Parent[0], carrier->ID);
  ExpectAt(end, 5, 1);
  EXPECT_EQ(p->LinkNum(), 1);

  // Both clicks on one existing point: a line of no length on it.
  Click(line_, 0, 0);
  Click(line_, 0, 0.05f);
  CLine* zero = Doc.Lines.Item(3);
  EXPECT_EQ(zero->pBegin.ID, p->ID);
  EXPECT_EQ(zero->pEnd.ID, p->ID);
  EXPECT_EQ(p->LinkNum(), 3);
  // Both on an empty spot: the second click does not take the first's new
  // point, so the line joins two points on one spot.
  const int points = Doc.Points.count();
  Click(line_, -3, -3);
  Click(line_, -3, -3);
  EXPECT_EQ(Doc.Points.count(), points + 2);
  CLine* twin = Doc.Lines.Item(4);
  EXPECT_NE(twin->pBegin.ID, twin->pEnd.ID);
}

TEST_F(CreateTest, BoundsRefuseAClickWithAMessageAndLeaveTheDocumentAsItWas) {
  Position* hub = Free(0, 0, "H");
  for (int i = 0; i < Position::kMaxLinks; ++i) Segment(hub, Free(static_cast<float>(i) + 1, 5));
  const int lines = Doc.Lines.count();
  Click(line_, 0, 0);
  Click(line_, -4, -4);
  EXPECT_EQ(host_.LastMessage(), "A point can be held by at most 20 objects.");
  EXPECT_EQ(Doc.Lines.count(), lines);
  EXPECT_EQ(hub->LinkNum(), Position::kMaxLinks);
  EXPECT_EQ(line_.Clicks, 0);
  // The refused click made no point of its own; the tool starts afresh.
  const int points = Doc.Points.count();
  Click(line_, -4, -4);
  EXPECT_EQ(Doc.Points.count(), points + 1);

  CLine* full = Segment(Free(-9, -9), Free(-9, 9));
  for (int i = 0; i < CCarrier::kMaxStru; ++i) MakePointOn(*full, Position(-9, -8.5f + i * 0.5f, 0));
  const int before = Doc.Points.count();
  const long number = NextObjectNumber;
  Click(point_, -9, 7.5f);
  EXPECT_EQ(host_.LastMessage(), "An object can carry at most 30 points.");
  EXPECT_EQ(Doc.Points.count(), before);
  EXPECT_EQ(NextObjectNumber, number);
  EXPECT_EQ(full->StruPNum(), CCarrier::kMaxStru);
}

TEST_F(CreateTest, AFollowingPointNeedsOneFreePointAndMovesWithIt) {
  Position* lead = Free(0, 0);
  Position* other = Free(3, 3);
  // Nothing, two points, a constructed point: refused.
  for (int step = 0; step < 3; ++step) {
    if (step == 1) Select({lead, other});
    if (step == 2) {
      DeselectAll();
      lead->ptype = 3;
      Select({lead});
    }
    host_.messages.clear();
    mnuDrawPFollow_Click();
    EXPECT_EQ(host_.LastMessage(), "Please select a free point first.") << step;
  }
  lead->ptype = 1;
  host_.messages.clear();
  mnuDrawPFollow_Click();
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_EQ(PointToolKind, 8);
  Click(point_, 1, 2);
  Position* f = Doc.Points.Item(3);

  SelectKind(18);
  Drag(0, 0, 2, -1);
  ExpectAt(lead, 2, -1);
  ExpectAt(f, 3, 1);
  // Dragged with its leader selected, it moves once.
  SelectObject(*f);
  Drag(2, -1, 3, -1);
  ExpectAt(f, 4, 1);
}

TEST_F(CreateTest, InSpaceNewPointsLieInThePlaneZeroAndTheRubberBandKeepsItsDepth) {
  SceneMode = 3;
  Mouse m = Slanted(1, 2, 3);
  Press(point_, m);
  ASSERT_EQ(Doc.Points.count(), 1);
  EXPECT_EQ(Doc.Points.Item(1)->z, 0);
  Press(line_, Slanted(-2, -2, 4));
  CLine* l = Doc.Lines.Item(1);
  EXPECT_EQ(FindPoint(l->pBegin.ID)->z, 0);
  Move(line_, Slanted(5, 5, 2));
  EXPECT_EQ(l->pEnd.z, 2);
}

}  // namespace
}  // namespace vt::test
