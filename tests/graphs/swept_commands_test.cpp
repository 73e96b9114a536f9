// The commands that make swept and derived surfaces: with a wrong selection
// (their messages, nothing changed) and a right one (the object, its links,
// one snapshot), and the confirmation of frmRot.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "document/command_table.h"
#include "document/document.h"
#include "document/undo.h"
#include "geometry/geom.h"
#include "graphs/swept_commands.h"
#include "persist/docio.h"
#include "graphs_test_util.h"
#include "support/fixtures.h"
#include "tools/constructions.h"

namespace vt {
namespace {

class SweptCommandsTest : public test::DocumentTest {
 protected:
  void SetUp() override {
    DocumentTest::SetUp();
    RegisterAllCommands();
  }
  void TearDown() override {
    ClearHandlers();
    DocumentTest::TearDown();
  }
  CRegion* Square(float z) {
    auto g = std::make_unique<CRegion>();
    g->ID = NewObjectId("RG");
    const float c[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    for (const auto& xy : c) g->Points.emplace_back(xy[0], xy[1], z);
    return Doc.Regions.Add(std::move(g));
  }
  CCircle* Circle(Position* centre, Position* rim) {
    auto c = std::make_unique<CCircle>();
    c->ID = NewObjectId("CR");
    c->Circle1(centre->ID, rim->ID);
    centre->AddLink(CLinkObj{c->ID, 3, 1, c->CType, 0});
    rim->AddLink(CLinkObj{c->ID, 3, 2, c->CType, 0});
    return Doc.Circles.Add(std::move(c));
  }
  // The command run on this selection alone, which it leaves unselected.
  static void RunOn(const char* command, std::initializer_list<DocObject*> selection) {
    for (DocObject* o : selection) SelectObject(*o);
    RunHandler(command);
    for (DocObject* o : selection) DeselectObject(*o);
  }
  std::string LastMessage() const { return host_.messages.empty() ? std::string() : host_.messages.back().text; }
};

// Making rotations, spheres and extrusions through their dialogs is the graph
// forms GUI test's; here the messages no window test reaches, and what an edit
// keeps that the dialog does not show.
TEST_F(SweptCommandsTest, RefusalsOfTheSweptDialogsAndWhatAnEditKeeps) {
  for (const auto& [command, message] : {std::pair<const char*, std::string>{"mnuDrawRot", kMsgRotAxis},
                                         {"mnuDraw2Stretch", "The selected object is not exist."},
                                         {"mnuDraw2Sphere", kMsgTwoPointsSphere}}) {
    const std::string before = GetUndoVar();
    RunHandler(command);  // nothing selected
    EXPECT_EQ(LastMessage(), message) << command;
    EXPECT_EQ(GetUndoVar(), before) << command;
  }
  CLine* profile = Segment(1, 0, 0, 1, 0, 2);
  Position* centre = AddPoint(0, 0, 0);
  SweptForm f;
  f.objId = profile->ID, f.centerId = centre->ID, f.angle = "3.1416/2";
  using R = test::Refusal<SweptForm>;
  const auto refuses = [](SweptForm& g) { return ConfirmSweptForm(g, "") == SweptConfirm::Stay; };
  test::ExpectRefusals(f, {R{[](SweptForm& g) { g.steps = "0"; }, "Steps must be larger than 1."},
                           R{[](SweptForm& g) { g.steps = "8", g.angle = ""; }, "Input all parameters please."},
                           R{[](SweptForm& g) { g.angle = "3.1416/"; }, "Syntax Error"},
                           R{[](SweptForm& g) { g.angle = "3.1416", g.centerId = "CR0099"; }, kMsgRotAxis},
                           R{[](SweptForm& g) { g.centerId = "PT0999"; }, "The selected object is not exist."}},
                       refuses, [this] {  // the compiler's box by its title
                         const auto& m = host_.messages.back();
                         return m.title == "Syntax Error" ? m.title : m.text;
                       });
  EXPECT_EQ(Doc.SurRots.count(), 0);
  f.centerId = centre->ID;
  std::string id;
  ASSERT_EQ(ConfirmSweptForm(f, "", &id), SweptConfirm::Done);
  CSurRot* s = Doc.SurRots.FindById(id);
  ASSERT_TRUE(s);
  s->LineColor = RGB(1, 2, 3);
  s->NameS = "bowl";
  s->Ramp.ColorName = "@MINE", s->Ramp.ColorNum = 2, s->Ramp.ColorR[1] = 77;
  SweptForm e = LoadSweptForm(*s);
  EXPECT_EQ(e.customRamp, "@MINE");
  e.steps = "4";
  ASSERT_EQ(ConfirmSweptForm(e, id), SweptConfirm::Done);
  ASSERT_EQ(Doc.SurRots.count(), 1);
  EXPECT_TRUE(s->StepV == 4 && s->Vert3D.size() == 10u);
  EXPECT_TRUE(s->LineColor == RGB(1, 2, 3) && s->NameS == "bowl" && s->Ramp.ColorR[1] == 77);
  Doc.SurRots.Remove(1);  // an object that has gone
  EXPECT_EQ(ConfirmSweptForm(e, id), SweptConfirm::Gone);
  EXPECT_EQ(LastMessage(), "The selected object is not exist.");
}

TEST_F(SweptCommandsTest, SectorsRibbonsAndIntersectionLines) {
  RunHandler("mnuDraw2Fan");  // a sector needs its selection
  EXPECT_EQ(LastMessage(), kMsgSector);
  CRegion* top = Square(1);
  Position* apex = AddPoint(0, 0, -1);
  // A pyramid: the point and a polygon; every face reaches the apex.
  host_.messages.clear();
  RunOn("mnuDraw2Fan", {apex, top});
  EXPECT_TRUE(host_.messages.empty());
  ASSERT_EQ(Doc.Fans.count(), 1);
  CFan* pyramid = Doc.Fans.Item(1);
  EXPECT_TRUE(pyramid->LKID == apex->ID && pyramid->LKID2 == top->ID);
  ASSERT_EQ(pyramid->GetRGNum(), 4);
  for (const Face& face : pyramid->GetRegions())
    EXPECT_TRUE(std::any_of(face.begin(), face.end(), [](const Position& p) { return p.x == 0 && p.y == 0 && p.z == -1; }));
  Doc.Fans.Remove(1);
  RunOn("mnuDraw2Fan", {top});  // the polygon alone: a flat sector
  ASSERT_EQ(Doc.Fans.count(), 1);
  EXPECT_EQ(Doc.Fans.Item(1)->GetRGNum(), 4);
  RunOn("mnuDraw2Fan", {Circle(AddPoint(5, 5, 0), AddPoint(6, 5, 0))});  // a circle needs its point
  EXPECT_EQ(LastMessage(), kMsgSector);
  EXPECT_EQ(Doc.Fans.count(), 1);
  // A cone: the point and a circle at z = 1 of radius 1.
  CCircle* circle = Circle(AddPoint(0, 0, 1), AddPoint(1, 0, 1));
  RunOn("mnuDraw2Fan", {apex, circle});
  ASSERT_EQ(Doc.Fans.count(), 2);
  CFan* cone = Doc.Fans.Item(2);
  EXPECT_TRUE(cone->LKID == apex->ID && cone->LKID2 == circle->ID && cone->GetRGNum() == 50);
  // Two segments make no ribbon; two circles do.
  RunOn("mnuDraw2Ribbon", {Segment(0, 0, 0, 2, 0, 0), Segment(0, 1, 0, 2, 1, 1)});
  EXPECT_EQ(LastMessage(), kMsgRibbon);
  EXPECT_EQ(Doc.Ribbons.count(), 0);
  CCircle* lower = Circle(AddPoint(0, 0, 2), AddPoint(1, 0, 2));
  CCircle* upper = Circle(AddPoint(0, 0, 3), AddPoint(2, 0, 3));
  RunOn("mnuDraw2Ribbon", {lower, upper});
  ASSERT_EQ(Doc.Ribbons.count(), 1);
  CRibbon* rb = Doc.Ribbons.Item(1);
  EXPECT_TRUE(rb->LKID == lower->ID && rb->LKID2 == upper->ID);
  ASSERT_EQ(rb->GetRGNum(), 50);
  const Face first = rb->GetRegions()[0];
  EXPECT_NEAR(DistanceBetween(first[0], Position(1, 0, 2)) + DistanceBetween(first[3], Position(2, 0, 3)), 0, 1e-5);
  // The line where the square at z = 0 meets the cone: the circle of radius
  // 1/2, as 50 chords.
  CRegion* bottom = Square(0);
  RunOn("mnuDraw2IntLine", {bottom});
  EXPECT_EQ(LastMessage(), kMsgInterLine);
  const int undo = UndoCount;
  RunOn("mnuDraw2IntLine", {bottom, cone});
  ASSERT_EQ(Doc.InterLines.count(), 1);
  CInterLine* il = Doc.InterLines.Item(1);
  EXPECT_TRUE(il->LKID == bottom->ID && il->LKID2 == cone->ID);
  ASSERT_EQ(il->Lines.size(), 50u);
  for (const Segment3& s : il->Lines) EXPECT_NEAR(std::fabs(s.a.z) + std::fabs(std::hypot(s.a.x, s.a.y) - 0.5), 0, 1e-4);
  EXPECT_EQ(UndoCount, undo + 1);
  // A space curve has no faces to cut.
  auto c = std::make_unique<CSurface>();
  c->Init("C30099", "", 1, 3, 3, "cos(u)", "sin(u)", "u", 20, 1, "-1", "1", "0", "0");
  host_.messages.clear();
  RunOn("mnuDraw2IntLine", {bottom, Doc.Surfaces.Add(std::move(c))});
  EXPECT_EQ(LastMessage(), kMsgInterLine);
  EXPECT_EQ(Doc.InterLines.count(), 1);
}

}  // namespace
}  // namespace vt
