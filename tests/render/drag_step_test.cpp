// A drag step compiles again only the objects whose drawing changed; the
// picture must be the one a whole compile gives, pixel for pixel. The figure
// is a chain dragged by its first point with the select tool: points with
// labels, segments between neighbours, their midpoints, circles about the
// midpoints through the points (every third one filled, so blending meets
// the pieces' boundaries), and regions, with more objects of each kind than
// one piece holds.
#include <memory>
#include <string>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "geometry/circle.h"
#include "geometry/line.h"
#include "geometry/propagation.h"
#include "geometry/region.h"
#include "render/frame.h"
#include "render/view_state.h"
#include "render_fixture.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"
#include "tools/select.h"

namespace vt {
namespace {

using test::RenderTest;

class DragStepTest : public RenderTest {
 protected:
  void Chain(int links) {
    Position* prev = Free(-7, -5, 0);
    for (int i = 1; i <= links; ++i) {
      Position* p = Free(-7 + 0.9f * static_cast<float>(i % 16), -5 + 1.5f * static_cast<float>(i / 16), i);
      auto l = std::make_unique<CLine>();
      l->ID = NewObjectId("LN");
      l->Line1(prev->ID, p->ID);
      l->ForeColor = RGB(0, 0, 200);
      prev->AddLink(CLinkObj{l->ID, 2, 1, 0, 0});
      p->AddLink(CLinkObj{l->ID, 2, 2, 0, 0});
      Doc.Lines.Add(std::move(l));
      const std::string id = NewObjectId("PT");
      Position* mid = Doc.Points.Add(id, (prev->x + p->x) / 2, (prev->y + p->y) / 2, 0, 9, prev->ID, p->ID, 1, id);
      mid->Para1 = 2;
      mid->DrawMode = 5;
      auto c = std::make_unique<CCircle>();
      c->ID = NewObjectId("CR");
      c->Circle1(mid->ID, p->ID);
      c->Filled = i % 3 == 0;
      c->ForeColor = RGB(200, 0, 0);
      mid->AddLink(CLinkObj{c->ID, 3, 1, 1, 0});
      p->AddLink(CLinkObj{c->ID, 3, 2, 1, 0});
      Doc.Circles.Add(std::move(c));
      if (i % 4 == 0) {
        auto g = std::make_unique<CRegion>();
        g->ID = NewObjectId("RG");
        for (const Position* q : {prev, p, mid}) g->Points.emplace_back(q->x, q->y + 0.4f, 0);
        g->ForeColor = RGB(0, 160, 0);
        g->Alpha = 0.4f;
        Doc.Regions.Add(std::move(g));
      }
      prev = p;
    }
    RefreshPass();
  }
  Position* Free(float x, float y, int n) {
    Position* p = AddPoint(x, y, 0, "P" + std::to_string(n));
    return p;
  }
  void Move(float x, float y, bool press) {
    Position view(x, y, 0), scene(x, y, 0), farPoint(x, y, -10), nearPoint(x, y, 10);
    float X = 0, Y = press ? 0 : y;
    CSelect s;
    if (press) s.LButtonDown(view, scene, X, Y, farPoint, nearPoint);
    else s.MouseMove(view, scene, X, Y, farPoint, nearPoint);
  }
};

TEST_F(DragStepTest, StepsDrawWhatAWholeCompileDraws) {
  RegisterToolCommands();
  MakeTools();
  ResetSelectState();
  SetCanvas(kW, kH, 12);
  Chain(70);
  ASSERT_GT(Doc.Points.count(), 64);
  ASSERT_GT(Doc.Circles.count(), 64);
  Frame();
  const Image before = image_;
  Move(-7, -5, true);
  // The first step compiles the pieces, the later ones only what moved.
  for (int i = 1; i <= 4; ++i) {
    Move(-7 + 0.6f * static_cast<float>(i), -5 + 0.4f * static_cast<float>(i), false);
    Frame();
  }
  const Image stepped = image_;
  EXPECT_NE(stepped.rgb, before.rgb) << "the drag moved nothing";
  EXPECT_NEAR(Doc.Points.Item(1)->x, -4.6f, 1e-4f);
  // The same document compiled whole.
  Frame();
  EXPECT_EQ(stepped.rgb, image_.rgb);
  // A step after a whole compile starts the pieces anew: still the same.
  Move(-4, -3, false);
  Frame();
  const Image again = image_;
  Frame();
  EXPECT_EQ(again.rgb, image_.rgb);
}

TEST_F(DragStepTest, AStepThatChangesNothingKeepsTheFrameAndAChangedLookIsDrawn) {
  SetCanvas(kW, kH, 12);
  Chain(40);
  Frame();
  ObjectStep();
  Frame();  // the pieces are made
  ObjectStep();
  DrawScene();
  EXPECT_TRUE(SceneKept());
  // A hover's highlight: one point's draw mode, one circle's colour.
  Doc.Points.Item(30)->DrawMode = 2;
  Doc.Circles.Item(20)->ForeColor = RGB(0, 200, 0);
  ObjectStep();
  Frame();
  EXPECT_FALSE(SceneKept());
  const Image stepped = image_;
  Frame();
  EXPECT_EQ(stepped.rgb, image_.rgb);
  // The tool's cursor point is drawn after the pieces: a change of it alone
  // is not kept either.
  Position cursor(1, 1, 0);
  ToolCursorPoint = &cursor;
  ObjectStep();
  DrawScene();
  EXPECT_FALSE(SceneKept());
}

}  // namespace
}  // namespace vt
