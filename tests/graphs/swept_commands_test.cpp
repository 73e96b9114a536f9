// The commands that make swept and derived surfaces: with a wrong selection
// (their messages, nothing changed) and a right one (the object, its links,
// one snapshot), and the confirmations of frmRot, frmStretch and frmSphere.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "document/command_table.h"
#include "document/document.h"
#include "document/undo.h"
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
  CLine* Segment(float x1, float y1, float z1, float x2, float y2, float z2, int lt = 1) {
    return test::LinkedLine(AddPoint(x1, y1, z1), AddPoint(x2, y2, z2), lt);
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
  template <class... T>
  static void Select(T&... o) { (SelectObject(o), ...); }
  template <class... T>
  static void Deselect(T&... o) { (DeselectObject(o), ...); }
  std::string LastMessage() const { return host_.messages.empty() ? std::string() : host_.messages.back().text; }
};

TEST_F(SweptCommandsTest, RotationFromTheSelection) {
  CLine* profile = Segment(1, 0, 0, 1, 0, 2);
  CLine* axis = Segment(0, 0, 0, 0, 0, 1);
  // Nothing selected: the dialog's message, nothing made.
  const std::string before = GetUndoVar();
  RunHandler("mnuDrawRot");
  EXPECT_EQ(LastMessage(), kMsgRotAxis);
  EXPECT_EQ(Doc.SurRots.count(), 0);
  EXPECT_EQ(GetUndoVar(), before);

  Select(*profile, *axis);
  const SweptForm f = NewSweptForm(true);
  EXPECT_EQ(f.objId, profile->ID);
  EXPECT_EQ(f.centerId, axis->ID);
  const int undo = UndoCount;
  RunHandler("mnuDrawRot");
  ASSERT_EQ(Doc.SurRots.count(), 1);
  CSurRot* s = Doc.SurRots.Item(1);
  EXPECT_EQ(s->RotObjID, profile->ID);
  EXPECT_EQ(s->RotCenterID, axis->ID);
  EXPECT_EQ(s->Vert3D.size(), 42u);
  EXPECT_EQ(UndoCount, undo + 1);

  // With the dialog there: it opens only on a picked profile and axis.
  int opened = 0;
  SetRotFormOpener([&opened](const std::string&) { ++opened; });
  RunHandler("mnuDrawRot");
  EXPECT_EQ(opened, 1);
  DeselectObject(*axis);
  host_.messages.clear();
  RunHandler("mnuDrawRot");
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(LastMessage(), kMsgRotAxis);
  SetRotFormOpener({});
}

TEST_F(SweptCommandsTest, RotationFormChecksItsFields) {
  CLine* profile = Segment(1, 0, 0, 1, 0, 2);
  Position* centre = AddPoint(0, 0, 0);
  SweptForm f;
  f.objId = profile->ID;
  f.centerId = centre->ID;
  f.angle = "3.1416/2";
  using R = test::Refusal<SweptForm>;
  const auto refuses = [](SweptForm& g) { return ConfirmSweptForm(g, "") == SweptConfirm::Stay; };
  test::ExpectRefusals(f, {R{[](SweptForm& g) { g.steps = "0"; }, "Steps must be larger than 1."},
                           R{[](SweptForm& g) { g.steps = "8", g.angle = ""; }, "Input all parameters please."}},
                       refuses, [this] { return LastMessage(); });
  f.angle = "3.1416/";
  const size_t shown = host_.messages.size();
  EXPECT_EQ(ConfirmSweptForm(f, ""), SweptConfirm::Stay);
  EXPECT_GT(host_.messages.size(), shown);  // the compiler's message
  test::ExpectRefusals(f, {R{[](SweptForm& g) { g.centerId = "CR0099"; }, kMsgRotAxis},
                           R{[](SweptForm& g) { g.centerId = "PT0999", g.angle = "3.1416"; },
                             "The selected object is not exist."}},
                       refuses, [this] { return LastMessage(); });
  EXPECT_EQ(Doc.SurRots.count(), 0);

  f.centerId = centre->ID;
  std::string id;
  ASSERT_EQ(ConfirmSweptForm(f, "", &id), SweptConfirm::Done);
  CSurRot* s = Doc.SurRots.FindById(id);
  ASSERT_TRUE(s);
  EXPECT_EQ(s->StepV, 8);

  // Editing keeps the id, what the dialog does not show, and samples again.
  s->LineColor = RGB(1, 2, 3);
  s->NameS = "bowl";
  s->Ramp.ColorName = "@MINE";
  s->Ramp.ColorNum = 2;
  s->Ramp.ColorR[1] = 77;
  SweptForm e = LoadSweptForm(*s);
  EXPECT_EQ(e.customRamp, "@MINE");
  e.steps = "4";
  ASSERT_EQ(ConfirmSweptForm(e, id), SweptConfirm::Done);
  ASSERT_EQ(Doc.SurRots.count(), 1);
  EXPECT_EQ(s->StepV, 4);
  EXPECT_EQ(s->Vert3D.size(), 10u);
  EXPECT_EQ(s->LineColor, RGB(1, 2, 3));
  EXPECT_EQ(s->NameS, "bowl");
  EXPECT_EQ(s->Ramp.ColorR[1], 77);
  e.rampIndex = 2;
  ASSERT_EQ(ConfirmSweptForm(e, id), SweptConfirm::Done);
  EXPECT_EQ(s->Ramp.ColorName, "Fiery");
  // An object that has gone.
  Doc.SurRots.Remove(1);
  EXPECT_EQ(ConfirmSweptForm(e, id), SweptConfirm::Gone);
  EXPECT_EQ(LastMessage(), "The selected object is not exist.");
}

TEST_F(SweptCommandsTest, ExtrusionAlongASelectedVector) {
  // Nothing to extrude.
  RunHandler("mnuDraw2Stretch");
  EXPECT_EQ(LastMessage(), "The selected object is not exist.");
  EXPECT_EQ(Doc.Stretchs.count(), 0);
  CRegion* g = Square(0);
  CLine* v = Segment(0, 0, 0, 0, 0, 3, 4);
  Select(*g, *v);
  RunHandler("mnuDraw2Stretch");
  ASSERT_EQ(Doc.Stretchs.count(), 1);
  CStretch* s = Doc.Stretchs.Item(1);
  EXPECT_EQ(s->ObjID, g->ID);
  EXPECT_EQ(s->DZ, "3");
  EXPECT_EQ(s->StepU, 4);
  EXPECT_NEAR(s->MaxZ, 3, 1e-6);

  SweptForm f = LoadSweptForm(*s);
  f.dx = "";
  EXPECT_EQ(ConfirmSweptForm(f, s->ID), SweptConfirm::Stay);
  EXPECT_EQ(LastMessage(), "Input all parameters please.");
  f.dx = "1";
  f.objId = "RG0999";
  EXPECT_EQ(ConfirmSweptForm(f, s->ID), SweptConfirm::Stay);
  EXPECT_EQ(LastMessage(), "The selected object is not exist.");
  EXPECT_EQ(s->DX, "0");
}

TEST_F(SweptCommandsTest, SectorsRibbonsAndIntersectionLines) {
  // A sector needs its selection.
  RunHandler("mnuDraw2Fan");
  EXPECT_EQ(LastMessage(), kMsgSector);
  EXPECT_EQ(Doc.Fans.count(), 0);
  CRegion* top = Square(1);
  Position* apex = AddPoint(0, 0, -1);
  Select(*apex, *top);
  // A pyramid: the point and a polygon; every face reaches the apex.
  host_.messages.clear();
  RunHandler("mnuDraw2Fan");
  EXPECT_TRUE(host_.messages.empty());
  ASSERT_EQ(Doc.Fans.count(), 1);
  CFan* pyramid = Doc.Fans.Item(1);
  EXPECT_EQ(pyramid->LKID, apex->ID);
  EXPECT_EQ(pyramid->LKID2, top->ID);
  ASSERT_EQ(pyramid->GetRGNum(), 4);
  for (const Face& face : pyramid->GetRegions()) {
    bool atApex = false;
    for (const Position& p : face) atApex = atApex || (p.x == 0 && p.y == 0 && p.z == -1);
    EXPECT_TRUE(atApex);
  }
  Doc.Fans.Remove(1);
  // The polygon alone: a flat sector.
  DeselectObject(*apex);
  RunHandler("mnuDraw2Fan");
  ASSERT_EQ(Doc.Fans.count(), 1);
  CFan* flat = Doc.Fans.Item(1);
  EXPECT_EQ(flat->LKID2, top->ID);
  EXPECT_EQ(flat->GetRGNum(), 4);
  DeselectObject(*top);
  // A circle needs its point.
  CCircle* lone = Circle(AddPoint(5, 5, 0), AddPoint(6, 5, 0));
  SelectObject(*lone);
  RunHandler("mnuDraw2Fan");
  EXPECT_EQ(LastMessage(), kMsgSector);
  EXPECT_EQ(Doc.Fans.count(), 1);
  DeselectObject(*lone);

  // A cone: the point and a circle at z = 1 of radius 1.
  Position* centre = AddPoint(0, 0, 1);
  Position* rim = AddPoint(1, 0, 1);
  CCircle* circle = Circle(centre, rim);
  Select(*apex, *circle);
  RunHandler("mnuDraw2Fan");
  ASSERT_EQ(Doc.Fans.count(), 2);
  CFan* cone = Doc.Fans.Item(2);
  EXPECT_EQ(cone->LKID, apex->ID);
  EXPECT_EQ(cone->LKID2, circle->ID);
  EXPECT_EQ(cone->GetRGNum(), 50);
  Deselect(*apex, *circle);

  // Two segments make no ribbon; two circles do.
  CLine* a = Segment(0, 0, 0, 2, 0, 0);
  CLine* b = Segment(0, 1, 0, 2, 1, 1);
  Select(*a, *b);
  RunHandler("mnuDraw2Ribbon");
  EXPECT_EQ(LastMessage(), kMsgRibbon);
  EXPECT_EQ(Doc.Ribbons.count(), 0);
  Deselect(*a, *b);
  CCircle* lower = Circle(AddPoint(0, 0, 2), AddPoint(1, 0, 2));
  CCircle* upper = Circle(AddPoint(0, 0, 3), AddPoint(2, 0, 3));
  Select(*lower, *upper);
  RunHandler("mnuDraw2Ribbon");
  ASSERT_EQ(Doc.Ribbons.count(), 1);
  CRibbon* rb = Doc.Ribbons.Item(1);
  EXPECT_EQ(rb->LKID, lower->ID);
  EXPECT_EQ(rb->LKID2, upper->ID);
  ASSERT_EQ(rb->GetRGNum(), 50);
  const Face first = rb->GetRegions()[0];
  EXPECT_NEAR(first[0].x, 1, 1e-5);
  EXPECT_NEAR(first[3].x, 2, 1e-5);
  EXPECT_NEAR(first[3].z, 3, 1e-5);
  Deselect(*lower, *upper);

  // The line where the square at z = 0 meets the cone: the circle of radius
  // 1/2, as 50 chords.
  CRegion* bottom = Square(0);
  SelectObject(*bottom);
  RunHandler("mnuDraw2IntLine");
  EXPECT_EQ(LastMessage(), kMsgInterLine);
  SelectObject(*cone);
  const int undo = UndoCount;
  RunHandler("mnuDraw2IntLine");
  ASSERT_EQ(Doc.InterLines.count(), 1);
  CInterLine* il = Doc.InterLines.Item(1);
  EXPECT_EQ(il->LKID, bottom->ID);
  EXPECT_EQ(il->LKID2, cone->ID);
  ASSERT_EQ(il->Lines.size(), 50u);
  for (const Segment3& s : il->Lines) {
    EXPECT_NEAR(s.a.z, 0, 1e-5);
    EXPECT_NEAR(std::hypot(s.a.x, s.a.y), 0.5, 1e-4);
  }
  EXPECT_EQ(UndoCount, undo + 1);
}

TEST_F(SweptCommandsTest, ASpaceCurveHasNoFacesToCut) {
  CRegion* g = Square(0);
  auto c = std::make_unique<CSurface>();
  c->Init("C30001", "", 1, 3, 3, "cos(u)", "sin(u)", "u", 20, 1, "-1", "1", "0", "0");
  CSurface* curve = Doc.Surfaces.Add(std::move(c));
  Select(*g, *curve);
  const std::string before = GetUndoVar();
  RunHandler("mnuDraw2IntLine");
  EXPECT_EQ(LastMessage(), kMsgInterLine);
  EXPECT_EQ(Doc.InterLines.count(), 0);
  EXPECT_EQ(GetUndoVar(), before);
}

TEST_F(SweptCommandsTest, SphereThroughTwoPoints) {
  RunHandler("mnuDraw2Sphere");
  EXPECT_EQ(LastMessage(), kMsgTwoPointsSphere);
  Position* c = AddPoint(0, 0, 0);
  Position* p = AddPoint(3, 4, 0);
  Select(*c, *p);
  SphereForm f = NewSphereForm();
  f.alpha = "2";
  EXPECT_EQ(ConfirmSphereForm(f), SweptConfirm::Stay);
  EXPECT_EQ(LastMessage(), "Illegal data exist.");
  f.alpha = "0.5";
  f.bTo = "3.1416/";
  EXPECT_EQ(ConfirmSphereForm(f), SweptConfirm::Stay);
  EXPECT_EQ(Doc.Spheres.count(), 0);
  RunHandler("mnuDraw2Sphere");
  ASSERT_EQ(Doc.Spheres.count(), 1);
  CSphere* s = Doc.Spheres.Item(1);
  EXPECT_FLOAT_EQ(s->R, 5);
  EXPECT_EQ(s->LKID, c->ID);
  EXPECT_FLOAT_EQ(s->AngleBTo, 3.1416f);
  EXPECT_EQ(s->GetRGNum(), 625);
}

}  // namespace
}  // namespace vt
