// Players and tracks: run modes, timers, frames in any order, parameter
// sweeps, the limits, the panel's picks, the record.
#include <gtest/gtest.h>

#include <cmath>

#include "animation/animation.h"
#include "document/globals.h"
#include "expr/parameters.h"
#include "geometry/locus.h"
#include "graphs/funcurve.h"
#include "persist/docio.h"
#include "tools/canvas_input.h"
#include "tools/select.h"
#include "graphs/graphs_test_util.h"
#include "tools/tool_fixture.h"

namespace vt::test {
namespace {

class AnimationTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    InstallPlayerHooks();
  }

  CAniControl* Player(short steps = 40, int mode = 2) {
    CAniControl* c = NewPlayer();
    c->Steps = steps;
    c->AniRunMode = mode;
    return c;
  }
  static TrackForm Form(int kind, CAniControl* c, std::vector<std::string> bound, const std::string& para1 = "") {
    TrackForm f;
    f.kind = kind;
    f.playerId = c->ID;
    f.bound = std::move(bound);
    f.para1 = para1;
    return f;
  }
  CAnimation* Move(CAniControl* c, std::vector<std::string> ids, float x, float y, float from = 0, float to = 1) {
    TrackForm f = Form(1, c, std::move(ids));
    f.x = x;
    f.y = y;
    f.timeFrom = from;
    f.timeTo = to;
    return ConfirmTrackForm(f);
  }
  static void Show(CAniControl* c, int step) {
    c->Step = static_cast<short>(step);
    c->ShowFrame();
  }
};

TEST_F(AnimationTest, MoveWaitsForItsTimeRangeAndEqualTimesJump) {
  Position* a = Free(1, 1);
  Position* b = Free(5, 5);
  CAniControl* c = Player();
  Move(c, {a->ID}, 4, 2, 0.5f, 1);
  Move(c, {b->ID}, 10, 0, 0.3f, 0.3f);
  // Step, then where a and b stand. TimeFrom = TimeTo = 0.3: StartStep 12;
  // b jumps from start to end.
  const struct {
    int step;
    float ax, ay, bx, by;
  } cases[] = {{0, 1, 1, 5, 5}, {12, 1, 1, 5, 5}, {13, 1, 1, 15, 5}, {20, 1, 1, 15, 5}, {21, 1.2f, 1.1f, 15, 5},
               {40, 5, 3, 15, 5}};
  for (const auto& k : cases) {
    SCOPED_TRACE(k.step);
    Show(c, k.step);
    ExpectAt(a, k.ax, k.ay);
    ExpectAt(b, k.bx, k.by);
  }
}

TEST_F(AnimationTest, ConstructedPointsAreNotDrivenButFollow) {
  Position* a = Free(0, 0);
  Position* b = Free(4, 0);
  CLine* s = Segment(a, b);
  Position* m = Midpoint(a, b);
  CAniControl* c = Player();
  ASSERT_EQ(Move(c, {m->ID}, 5, 5)->SelNum(), 0);
  EXPECT_EQ(Move(c, {s->ID}, 0, 2)->SelNum(), 2);
  Show(c, 40);
  ExpectAt(a, 0, 2);
  ExpectAt(b, 4, 2);
  ExpectAt(&s->pBegin, 0, 2);  // the line's copy followed
  ExpectAt(m, 2, 2);           // the midpoint was recomputed, not driven
}

TEST_F(AnimationTest, ReverseRepeatRetracesAndFramesOutOfOrderAgree) {
  Position* a = Free(1, 0);
  Position* o = Free(0, 0);
  CAniControl* c = Player(10, 2);
  Move(c, {a->ID}, 3, 1);
  TrackForm rot = Form(2, c, {a->ID}, o->ID);
  rot.x = 90;
  ASSERT_NE(ConfirmTrackForm(rot), nullptr);
  c->Step = 0;
  c->Play();
  ASSERT_EQ(c->Status, 2);
  // Each step's place, the first time it is shown; later showings agree.
  std::map<int, std::pair<float, float>> seen;
  std::vector<int> steps;
  for (int i = 0; i < 20; ++i) {
    ASSERT_EQ(host_.TickTimers(), 1);
    steps.push_back(c->Step);
    auto [it, fresh] = seen.emplace(c->Step, std::make_pair(a->x, a->y));
    EXPECT_EQ(it->second, std::make_pair(a->x, a->y)) << "step " << c->Step;
  }
  EXPECT_EQ(steps, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0}));
  for (int s : {7, 2, 9, 0, 4}) {
    Show(c, s);
    EXPECT_EQ(seen[s], std::make_pair(a->x, a->y)) << s;
  }
  c->Stop();
  EXPECT_EQ(host_.TickTimers(), 0);
}

TEST_F(AnimationTest, RunModesEndOrWrap) {
  CAniControl* c = Player(3, 1);
  // The steps of n ticks.
  auto ticks = [&](int n) {
    std::vector<int> steps;
    for (int i = 0; i < n && c->Status == 2; ++i) host_.TickTimers(), steps.push_back(c->Step);
    return steps;
  };
  c->Play();
  EXPECT_EQ(ticks(9), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(host_.TickTimers(), 0);
  c->Play();  // normal, stopped at the end: play stops at the first tick
  ticks(1);
  EXPECT_EQ(c->Status, 1);
  c->AniRunMode = 4;
  c->Play();
  EXPECT_EQ(c->Step, 4);
  EXPECT_EQ(ticks(9), (std::vector<int>{3, 2, 1, 0}));
  c->AniRunMode = 3;
  c->Play();
  EXPECT_EQ(ticks(6), (std::vector<int>{0, 1, 2, 3, 0, 1}));
  // The interval follows the settings from the next tick on.
  ASSERT_TRUE(ApplyAniSetting(c->ID, 1, 2.5f, 3));
  host_.TickTimers();
  EXPECT_EQ(host_.timers[c->TimerId].intervalMs, 2500);
  EXPECT_FALSE(ApplyAniSetting("AC9999", 10, 1, 1));
  EXPECT_EQ(host_.LastMessage(), "The selected object is not exist.");
}

TEST_F(AnimationTest, ParameterSweepSteepensTheCurve) {
  CAniControl* c = Player(10, 1);
  CAnimation* p = CreateParameter(c->ID, " A ", 0, 2, 1, 0, 1);
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(p->Para1 + ": " + p->Note, "A: A = 0.0");
  CFunCurve* f = Doc.FunCurves.Add(MakeGraph("A*x", 20, "0", "1"));
  ASSERT_TRUE(f->GetPoints());
  float last = f->Vert3D.back().y;
  EXPECT_FLOAT_EQ(last, 0);
  c->Play();
  for (int i = 1; i <= 10; ++i) {
    host_.TickTimers();
    const float y = f->Vert3D.back().y;
    EXPECT_GT(y, last) << "frame " << i;
    last = y;
  }
  EXPECT_NEAR(last, 2, 1e-5);
  EXPECT_EQ(p->Note, "A = 2.0");
  VariableTable vars;
  LoadParameterTable(vars);
  EXPECT_EQ(vars.Find("A"), 1);
}

// The play button pressed on the canvas is the screen items GUI test's.
TEST_F(AnimationTest, KnobDraggedThroughTheSelectTool) {
  Position* a = Free(0, 0);
  CAniControl* c = Player(40);
  Move(c, {a->ID}, 8, 0);
  c->PosX = 10, c->PosY = 20;
  ASSERT_TRUE(SelectToolHooks.playerPress);
  // Dragged halfway along the slider.
  SelectToolHooks.playerPress(*c, c->KnobX(), 21.5f);
  EXPECT_TRUE(c->JDPicked && !SelectToolHooks.playerPanel(*c, c->KnobX(), 21.5f));
  EXPECT_TRUE(SelectToolHooks.knobDrag(12.3f + 6, 21.5f));
  EXPECT_EQ(c->Step, 20);
  ExpectAt(a, 4, 0);
}

TEST_F(AnimationTest, PathsColoursAndZoom) {
  Position* p = Free(9, 9);
  Position* a = Free(0, 0);
  Position* b = Free(4, 0);
  CLine* s = Segment(a, b);
  Position* q = Free(2, 2);
  Position* centre = Free(0, 0);
  CAniControl* c = Player(4);
  ASSERT_NE(ConfirmTrackForm(Form(4, c, {p->ID}, s->ID)), nullptr);
  TrackForm zoom = Form(3, c, {q->ID}, centre->ID);
  zoom.x = 3;
  ASSERT_NE(ConfirmTrackForm(zoom), nullptr);
  s->ForeColor = RGB(0, 0, 0);
  TrackForm colour = Form(5, c, {s->ID});
  colour.colorFrom = RGB(0, 0, 0);
  colour.colorTo = RGB(200, 100, 40);
  ASSERT_NE(ConfirmTrackForm(colour), nullptr);
  const struct {
    int step;
    float px, qx;
    std::uint32_t colour;
  } cases[] = {{1, 1, 3, RGB(50, 25, 10)}, {4, 4, 6, RGB(200, 100, 40)}, {0, 0, 2, RGB(0, 0, 0)}};
  for (const auto& k : cases) {
    Show(c, k.step);
    ExpectAt(p, k.px, 0);
    ExpectAt(q, k.qx, k.qx);
    EXPECT_EQ(s->ForeColor, k.colour) << k.step;
  }
  // No object bound: refused.
  EXPECT_EQ(ConfirmTrackForm(Form(1, c, {})), nullptr);
  EXPECT_EQ(host_.LastMessage(), "Please select objects first.");
}

// Whole-text round trips are the property test's; here a document saved
// while its player runs plays when opened, and a damaged track count stops
// the read quietly.
TEST_F(AnimationTest, RunningDocumentsPlayWhenOpened) {
  Move(Player(12, 3), {Free(1, 2)->ID}, 2, 3, 0.25f, 0.75f);
  Doc.AniCtrls.Item(1)->Status = 2;
  const std::string text = GetUndoVar();
  ASSERT_TRUE(OpenDocumentText(text));
  CAniControl* back = Doc.AniCtrls.Item(1);
  EXPECT_TRUE(back->Status == 2 && back->Step == -1);  // Normal Repeat starts at frame 0
  ASSERT_NE(back->TimerId, 0);
  EXPECT_TRUE(host_.timers[back->TimerId].enabled);
  EXPECT_EQ(host_.TickTimers(), 1);
  std::string bad = text;
  bad.replace(bad.find(" 3 1 AN"), 7, " 3 77 AN");
  EXPECT_FALSE(OpenDocumentText(bad));
}

TEST_F(AnimationTest, StartStepsEachTrackOnceWithoutTheTimer) {
  Position* a = Free(0, 0);
  CAniControl* c = Player(4, 1);
  CAnimation* t = Move(c, {a->ID}, 4, 0);
  a->Set(1, 1, 0);  // dragged between runs: Init at the start step takes it again
  c->Start();
  EXPECT_EQ(t->Step, 1);
  ExpectAt(a, 2, 1);
  c->Start();
  EXPECT_EQ(t->Step, 2);
  ExpectAt(a, 3, 1);
  EXPECT_EQ(c->Status, 1);
  EXPECT_EQ(host_.TickTimers(), 0);
}

TEST_F(AnimationTest, TimersOfPlayersThatAreGoneGoAway) {
  CAniControl* running = Player(4, 3);
  running->Play();
  Player(4, 3);  // stopped
  ASSERT_EQ(host_.timers.size(), 2u);
  Doc.AniCtrls.Clear();
  // The running one's tick finds no player and removes its timer; the next
  // timer made sweeps up the other.
  EXPECT_EQ(host_.TickTimers(), 1);
  EXPECT_EQ(host_.timers.size(), 1u);
  CAniControl* fresh = Player();
  ASSERT_EQ(host_.timers.size(), 1u);
  EXPECT_EQ(host_.timers.begin()->first, fresh->TimerId);
}

TEST_F(AnimationTest, DoubleClickOpensTheTrackOrTheSettings) {
  RegisterAnimationCommands();
  std::vector<std::pair<int, std::string>> opened;
  SetAniDialogOpener([&](int kind, const std::string& id) { opened.emplace_back(kind, id); });
  Position* a = Free(50, 50);
  CAniControl* c = Player();
  c->PosX = 10, c->PosY = 50;
  CAnimation* t = Move(c, {a->ID}, 1, 1);
  ActiveTool = 11;
  CanvasWidth = CanvasHeight = 1000;
  LastX = 150;
  // The track's row (48.5 per cent from the bottom), then the panel.
  for (int y : {515, 485}) LastY = y, picDraw_DblClick();
  EXPECT_EQ(opened, (std::vector<std::pair<int, std::string>>{{1, t->ID}, {13, c->ID}}));
  SetAniDialogOpener(nullptr);
}

TEST_F(AnimationTest, LocusRecordsWhileThePlayerRuns) {
  Position* a = Free(0, 0);
  CAniControl* c = Player(4, 1);
  Move(c, {a->ID}, 4, 0);
  CLocus* l = AddLocus(c->ID, a->ID, RGB(255, 0, 0));
  ASSERT_NE(l, nullptr);
  c->Play();
  for (int i = 0; i < 6; ++i) host_.TickTimers();
  ASSERT_TRUE(l->Created && l->PTNum() == 4);
  EXPECT_FLOAT_EQ(l->Points.back().x, 4);
  // Loci are written after the players they name, and read back.
  const std::string doc = GetUndoVar();
  EXPECT_NE(doc.find(l->Save()), std::string::npos);
  ASSERT_TRUE(OpenDocumentText(doc));
  ASSERT_EQ(Doc.Locuses.count(), 1);
  EXPECT_TRUE(Doc.Locuses.Item(1)->PTNum() == 4 && Doc.Locuses.Item(1)->Created);
}

}  // namespace
}  // namespace vt::test
