// The property dialogs without their windows: what Load shows, what Apply
// refuses and changes, the undo snapshot a change leaves, and the opening
// of a dialog for an object that is gone.
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "document/globals.h"
#include "document/undo.h"
#include "geometry/properties.h"
#include "geometry/property_commands.h"
#include "persist/docio.h"
#include "support/fixtures.h"

namespace vt {
namespace {

class PropertiesTest : public test::DocumentTest {
 protected:
  void SetUp() override {
    DocumentTest::SetUp();
    SceneMode = 1;
    PushSnapshot();  // the document as it stands is the last undo step
  }

  CCircle* AddCircle(int ctype, Position* centre, Position* rim, float r) {
    auto c = std::make_unique<CCircle>();
    c->ID = NewObjectId("CR");
    c->CType = ctype;
    c->Circle1(centre->ID, rim ? rim->ID : std::string());
    c->R = r;
    return Doc.Circles.Add(std::move(c));
  }
  CArc* AddArc(Position* b, Position* centre, Position* e) {
    auto a = std::make_unique<CArc>();
    a->ID = NewObjectId("AR");
    a->Arc1(b->ID, centre->ID, e->ID);
    return Doc.Arcs.Add(std::move(a));
  }
  // What must hold after a refused or empty OK.
  void ExpectNothingChanged(const std::string& before, int undoCount) {
    EXPECT_EQ(GetUndoVar(), before);
    EXPECT_EQ(UndoCount, undoCount);
  }
  // One snapshot, and it is the document as it now stands.
  void ExpectOneSnapshot(int undoCount) {
    EXPECT_EQ(UndoCount, undoCount + 1);
    EXPECT_EQ(UndoEntry(UndoCount), GetUndoVar());
  }
};

// ---- points ---------------------------------------------------------------------------

TEST_F(PropertiesTest, RefusedPointFieldsChangeNothingAndPushNothing) {
  Position* a = AddPoint(1, 1, 0, "A");
  const std::string before = GetUndoVar();
  const int undo = UndoCount;
  PointProps good;
  ASSERT_TRUE(LoadPointProps(a->ID, good));
  const std::vector<std::pair<const char*, void (*)(PointProps&)>> bad = {
      {"letters in x", [](PointProps& p) { p.x = "1a"; }},
      {"a sign at the end of y", [](PointProps& p) { p.y = "1-"; }},
      {"overflowing z", [](PointProps& p) { p.z = "1E60"; }},
      {"size 0", [](PointProps& p) { p.size = 0; }},
      {"size 10", [](PointProps& p) { p.size = 10; }},
      {"no symbol chosen", [](PointProps& p) { p.symbol = 0; }},
      {"symbol 7", [](PointProps& p) { p.symbol = 7; }},
      {"frame mark in the label", [](PointProps& p) { p.label = "a@b"; }},
      {"record end in the label", [](PointProps& p) { p.label = "a;;b"; }},
  };
  for (const auto& [what, spoil] : bad) {
    PointProps p = good;
    p.label = "changed";  // a good change beside the bad one is not applied either
    spoil(p);
    EXPECT_EQ(ApplyPointProps(a->ID, p), kIllegalData) << what;
    ExpectNothingChanged(before, undo);
  }
  EXPECT_TRUE(host_.messages.empty());  // the dialog shows the message, not Apply
}

TEST_F(PropertiesTest, AnOkThatChangesNothingPushesNothingAndKeepsExactValues) {
  // A dragged point has more digits than the fields show.
  Position* a = AddPoint(1.23456789f, -0.000123456789f, 7654321.5f, "A");
  const float x = a->x, y = a->y, z = a->z;
  Position* b = AddPoint(0, 0, 0, "B");
  CLine* l = Segment(a, b);
  l->GELineWidth = 1.23456789f;
  const std::string before = GetUndoVar();
  const int undo = UndoCount;
  PointProps p;
  ASSERT_TRUE(LoadPointProps(a->ID, p));
  EXPECT_EQ(ApplyPointProps(a->ID, p), "");
  EXPECT_EQ(a->x, x);
  EXPECT_EQ(a->y, y);
  EXPECT_EQ(a->z, z);
  LineProps lp;
  ASSERT_TRUE(LoadLineProps(l->ID, lp));
  EXPECT_EQ(ApplyLineProps(l->ID, lp), "");
  ExpectNothingChanged(before, undo);
}

TEST_F(PropertiesTest, AnObjectThatVanishedUnderTheDialogIsReported) {
  Position* a = AddPoint(0, 0, 0, "A");
  Position* b = AddPoint(1, 0, 0, "B");
  Position* c = AddPoint(0, 1, 0, "C");
  PointProps pp;
  LineProps lp;
  CircleProps cp;
  ArcProps ap;
  RegionProps rp;
  const std::string pt = a->ID, ln = Segment(a, b)->ID, cr = AddCircle(1, a, b, 1)->ID, ar = AddArc(b, a, c)->ID,
                    rg = Region({a, b, c})->ID;
  ASSERT_TRUE(LoadPointProps(pt, pp) && LoadLineProps(ln, lp) && LoadCircleProps(cr, cp) && LoadArcProps(ar, ap) &&
              LoadRegionProps(rg, rp));
  ClearDocument();
  const int undo = UndoCount;
  EXPECT_EQ(ApplyPointProps(pt, pp), kObjectNotExist);
  EXPECT_EQ(ApplyLineProps(ln, lp), kObjectNotExist);
  EXPECT_EQ(ApplyCircleProps(cr, cp), kObjectNotExist);
  EXPECT_EQ(ApplyArcProps(ar, ap), kObjectNotExist);
  EXPECT_EQ(ApplyRegionProps(rg, rp), kObjectNotExist);
  EXPECT_EQ(UndoCount, undo);
  EXPECT_FALSE(LoadLineProps(ln, lp));
  EXPECT_EQ(ApplyPointStyleToSelection(PointStyle{}), "");  // nothing selected: nothing to do
  EXPECT_EQ(UndoCount, undo);
}

// ---- lines, circles, arcs, regions ---------------------------------------------------------

TEST_F(PropertiesTest, WidthsThatAreNoPositiveNumberAreRefusedForEveryKind) {
  Position* a = AddPoint(0, 0);
  Position* b = AddPoint(2, 0);
  Position* c = AddPoint(0, 2);
  CLine* l = Segment(a, b);
  CCircle* k = AddCircle(1, a, b, 2);
  CArc* r = AddArc(b, a, c);
  const std::string before = GetUndoVar();
  const int undo = UndoCount;
  for (const char* width : {"", "0", "-1", "abc", "1..5", "101", "1E40", "1e"}) {
    LineProps lp;
    CircleProps cp;
    ArcProps ap;
    ASSERT_TRUE(LoadLineProps(l->ID, lp) && LoadCircleProps(k->ID, cp) && LoadArcProps(r->ID, ap));
    lp.width = cp.width = ap.width = width;
    lp.style = cp.style = ap.style = 2;
    EXPECT_EQ(ApplyLineProps(l->ID, lp), kIllegalData) << width;
    EXPECT_EQ(ApplyCircleProps(k->ID, cp), kIllegalData) << width;
    EXPECT_EQ(ApplyArcProps(r->ID, ap), kIllegalData) << width;
    ExpectNothingChanged(before, undo);
  }
  LineProps lp;
  ASSERT_TRUE(LoadLineProps(l->ID, lp));
  lp.lt = 5;
  EXPECT_EQ(ApplyLineProps(l->ID, lp), kIllegalData);
  lp.lt = 1;
  lp.style = 0;
  EXPECT_EQ(ApplyLineProps(l->ID, lp), kIllegalData);
  ExpectNothingChanged(before, undo);
}

TEST_F(PropertiesTest, OnlyACircleOfAGivenRadiusTakesANewRadiusAndItsRimPointsFollow) {
  Position* o = AddPoint(1, 1);
  Position* rim = AddPoint(3, 1);
  CCircle* given = AddCircle(3, o, nullptr, 1);
  // A point on the circle at angle 0, with a segment resting on it.
  Position* on = Doc.Points.Add(NewObjectId("PT"), 2, 1, 0, 7, "", "", 0);
  given->AddStruPoint(*on, 0);
  CLine* seg = Segment(on, rim);

  CircleProps p;
  ASSERT_TRUE(LoadCircleProps(given->ID, p));
  EXPECT_TRUE(p.radiusEditable);
  EXPECT_EQ(p.radius, "1");
  const int undo = UndoCount;
  p.radius = "2.5";
  p.filled = true;
  EXPECT_EQ(ApplyCircleProps(given->ID, p), "");
  EXPECT_FLOAT_EQ(given->R, 2.5f);
  EXPECT_TRUE(given->Filled);
  EXPECT_FLOAT_EQ(on->x, 3.5f);            // the real point on the rim
  EXPECT_FLOAT_EQ(seg->pBegin.x, 3.5f);    // and the copy the segment keeps
  ExpectOneSnapshot(undo);
  for (const char* r : {"0", "-2", "r"}) {
    p.radius = r;
    EXPECT_EQ(ApplyCircleProps(given->ID, p), kIllegalData) << r;
  }
  EXPECT_FLOAT_EQ(given->R, 2.5f);

  // Through a rim point the radius is the points' business.
  CCircle* drawn = AddCircle(1, o, rim, 2);
  ASSERT_TRUE(LoadCircleProps(drawn->ID, p));
  EXPECT_FALSE(p.radiusEditable);
  EXPECT_EQ(p.radius, "2");
  p.radius = "7";
  p.style = 3;
  EXPECT_EQ(ApplyCircleProps(drawn->ID, p), "");
  EXPECT_FLOAT_EQ(drawn->Radius(), 2);
  EXPECT_EQ(drawn->GELineStyle, 3);
}

// ---- the commands that open the dialogs --------------------------------------------------------

TEST_F(PropertiesTest, AVanishedObjectOpensNoDialogAndSaysSo) {
  int opened = 0;
  SetPropertyFormOpener([&](PropertyForm, const std::string&) { ++opened; });
  EditMode = false;
  EXPECT_FALSE(OpenPropertyForm(PropertyForm::Line, "LN0042"));
  SetPropertyFormOpener({});
  ASSERT_EQ(host_.messages.size(), 1u);
  EXPECT_EQ(host_.messages[0].title + ": " + host_.messages[0].text, std::string("Error: ") + kObjectNotExist);
  EXPECT_EQ(opened, 0);
  EXPECT_FALSE(EditMode);
}

}  // namespace
}  // namespace vt
