// The construction, measurement and transformation commands on real
// selections: their refusals, the objects they make, and how those follow a
// drag.
#include <cmath>

#include "document/undo.h"
#include "geometry/geom.h"
#include "geometry/propagation.h"
#include "persist/docio.h"
#include "tool_fixture.h"
#include "tools/constructions.h"
#include "tools/notes.h"
#include "tools/transform.h"

namespace vt::test {
namespace {

class ConstructionTest : public ToolTest {};

TEST_F(ConstructionTest, WrongSelectionGivesTheMessageAndChangesNothing) {
  Position* a = Free(0, 0, "A");
  Select({a});
  struct Case {
    void (*run)();
    const char* message;
  } cases[] = {
      {mnuMiddleP_Click, kMsgMiddle},       {mnuLinkLine_Click, kMsgTwoPoints},
      {mnuParaLine_Click, kMsgPointSegment}, {mnuAngleEL_Click, kMsgBisector},
      {mnuQX_Click, kMsgPointCircle},       {mnuCX1_Click, kMsgOnePointOneSegment},
      {mnuCX2_Click, kMsgOnePointOnePolygon}, {mnuDraw2RegSSD_Click, kMsgRegionExtension},
      {mnuInterP_Click, kMsgIntersection},  {mnuDraw2IntLine_Click, kMsgInterLine},
      {mnuDraw3PC_Click, kMsgNotCollinear}, {mnuDraw2NQC_Click, kMsgNotCollinear},
      {mnuDrawArc1_Click, kMsgArcCentre},   {mnuDrawArc3P_Click, kMsgThreePoints},
      {mnuDraw2ArcOnCir_Click, kMsgArcOnCircle}, {mnuAngleLabel_Click, kMsgCornerMark},
      {mnuRegion_Click, kMsgPolygon},       {mnuDraw2Fan_Click, kMsgSector},
      {mnuDraw2Ribbon_Click, kMsgRibbon},   {mnuLength_Click, kMsgLength},
      {mnuAngle_Click, kMsgAngle},          {mnuRadius_Click, kMsgCircle},
      {mnuArea_Click, kMsgArea},            {mnuYXJ_Click, kMsgArc},
      {mnuDis_Click, kMsgDistanceOne},
  };
  for (const Case& c : cases) {
    ExpectRefused(c.run, c.message);
    EXPECT_TRUE(IsSelected(a->ID));
  }
}

TEST_F(ConstructionTest, SelectionOrderGivesTheBisectorVertex) {
  Position* a = Free(4, 0);
  Position* v = Free(0, 0);
  Position* b = Free(0, 4);
  Select({a, v, b});
  mnuAngleEL_Click();
  ASSERT_EQ(Doc.Lines.count(), 1);
  EXPECT_EQ(Doc.Lines.Item(1)->pBegin.ID, v->ID);
  EXPECT_EQ(Doc.Lines.Item(1)->LType, 4);
}

TEST_F(ConstructionTest, LengthNoteFollowsADragAndKeepsItsTextWhenTheSegmentGoes) {
  Position* a = Free(0, 0, "A");
  Position* b = Free(3, 0, "B");
  CLine* l = Segment(a, b);
  l->LLabel = "AB";
  Select({l});
  mnuLength_Click();
  ASSERT_EQ(Doc.Notes.count(), 1);
  CNote* n = Doc.Notes.Item(1);
  EXPECT_EQ(n->Note, "len AB = 3.00");
  EXPECT_EQ(n->VarName.substr(0, 3), "VAR");
  DeselectObject(*l);
  Drag(3, 0, 5, 0);
  EXPECT_TRUE(n->Measure());
  EXPECT_EQ(n->Note, "len AB = 5.00");
  SelectObject(*l);
  DeleteSelection();
  ASSERT_EQ(Doc.Notes.count(), 1);
  EXPECT_FALSE(n->Measure());
  EXPECT_EQ(n->Note, "len AB = 5.00");
}

TEST_F(ConstructionTest, QuarterCircleReadsTheShortConstantsValue) {
  Position* c = Free(0, 0, "O");
  Position* b = Free(2, 0, "B");
  Position* e = Free(0, 2, "E");
  Select({b, c, e});
  mnuDrawArc1_Click();
  ASSERT_EQ(Doc.Arcs.count(), 1);
  DeselectObject(*b);
  DeselectObject(*c);
  DeselectObject(*e);
  Select({Doc.Arcs.Item(1)});
  mnuYXJ_Click();
  ASSERT_EQ(Doc.Notes.count(), 1);
  const float v = Doc.Notes.Item(1)->Value;
  EXPECT_NE(v, 90.0f);
  EXPECT_NEAR(v, 90.0f, 0.01f);
  EXPECT_NEAR(v, Doc.Arcs.Item(1)->RadiusAngle() * 180 / 3.1416, 1e-4);
}

TEST_F(ConstructionTest, ACoordinateNoteReadsItsPointAndADamagedVarNumberIsPassedBy) {
  Position* a = Free(1, 2, "A");
  Select({a});
  mnuMCoord_Click();
  ASSERT_EQ(Doc.Notes.count(), 1);
  EXPECT_EQ(Doc.Notes.Item(1)->Note, "Coord A: x= 1.00  y= 2.00  z= 0.00");
  const std::string text = GetUndoVar();  // its round trip is the property test's

  // The "VAR" counter goes on from the names read; a damaged name with a
  // number past any counter (it once overflowed the conversion) is passed by.
  std::string big = text;
  const size_t at = big.find(" VAR");
  ASSERT_NE(at, std::string::npos);
  big.replace(at + 4, 2, "1.5E+380");
  const int before = NoteCounter;
  OpenUnRe(big);
  ASSERT_EQ(Doc.Notes.count(), 1);
  EXPECT_LE(NoteCounter, before);
}

}  // namespace
}  // namespace vt::test
