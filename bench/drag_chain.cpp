// Cost of one drag step of the select tool as documents grow. The figure is
// a chain of N objects built as the tools and commands link them: free
// points, segments between neighbours, the midpoints of the segments, circles
// about the midpoints through the points, and the crossings of each circle
// with the next segment. The first free point is dragged.
//
// BM_DragMove:  the select tool's MouseMove alone (move the point, write the
//               copies, repropagate: the structure, derived lines, the
//               refresh pass).
// BM_DragStep:  MouseMove and DrawScene (the drag step as the canvas runs it,
//               before the frame is shown).
// BM_DragFrame: the whole canvas event, picDraw_MouseMove: the depth reads of
//               the mouse's world point, MouseMove, DrawScene and Display.
//
// Run with --benchmark_repetitions=N to get medians.
#include <benchmark/benchmark.h>

#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "geometry/propagation.h"
#include "render/canvas_input.h"
#include "render/frame.h"
#include "bench/bench_context.h"
#include "render/view_state.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"
#include "tools/select.h"

namespace {

using namespace vt;

using vt::bench::Context;
using vt::bench::kHeight;
using vt::bench::kWidth;

Position* AddFree(float x, float y) {
  const std::string id = NewObjectId("PT");
  Position* p = Doc.Points.Add(id, x, y, 0, 1, "", "", 0, id);
  AssignNextPointLabel(*p);
  return p;
}

Position* AddDerived(int ptype, const std::string& a, const std::string& b, short pos) {
  const std::string id = NewObjectId("PT");
  Position* p = Doc.Points.Add(id, 0, 0, 0, ptype, a, b, pos, id);
  p->DrawMode = 5;
  return p;
}

CLine* AddSegment(Position* a, Position* b) {
  auto l = std::make_unique<CLine>();
  l->ID = NewObjectId("LN");
  l->Line1(a->ID, b->ID);
  a->AddLink(CLinkObj{l->ID, 2, 1, 0, 0});
  b->AddLink(CLinkObj{l->ID, 2, 2, 0, 0});
  return Doc.Lines.Add(std::move(l));
}

CCircle* AddCircle(Position* centre, Position* rim) {
  auto c = std::make_unique<CCircle>();
  c->ID = NewObjectId("CR");
  c->Circle1(centre->ID, rim->ID);
  centre->AddLink(CLinkObj{c->ID, 3, 1, 1, 0});
  rim->AddLink(CLinkObj{c->ID, 3, 2, 1, 0});
  return Doc.Circles.Add(std::move(c));
}

int ObjectCount() { return Doc.Points.count() + Doc.Lines.count() + Doc.Circles.count(); }

// The chain, laid out in rows inside the view, until it has n objects.
void BuildChain(int n) {
  Position* prev = AddFree(-10, -8);
  CLine* prevSeg = nullptr;
  CCircle* prevCircle = nullptr;
  for (int i = 1; ObjectCount() < n; ++i) {
    const float x = -10 + 0.5f * static_cast<float>(i % 40);
    const float y = -8 + 0.6f * static_cast<float>(i / 40) + 0.3f * static_cast<float>(i % 2);
    Position* p = AddFree(x, y);
    CLine* seg = AddSegment(prev, p);
    Position* mid = AddDerived(9, prev->ID, p->ID, 1);
    mid->Para1 = 2;
    mid->Set((prev->x + p->x) / 2, (prev->y + p->y) / 2, 0);
    if (prevCircle) AddDerived(4, seg->ID, prevCircle->ID, 2);
    prevCircle = AddCircle(mid, p);
    prevSeg = seg;
    prev = p;
  }
  (void)prevSeg;
  RefreshPass();
}

void Setup(int n) {
  Context().MakeCurrent();
  ResetGlobals();
  Initialize();
  RegisterToolCommands();
  MakeTools();
  ResetSelectState();
  mnuFileNew2D_Click();
  View.Zoom(0.7f);
  View.SetScreen(kWidth, kHeight);
  BuildChain(n);
  RedrawScene();
}

// The mouse events of the drag: a press on the first point, then moves back
// and forth by a little.
struct DragEvents {
  Position view, scene, farPoint, nearPoint;
  float X = 0, Y = 0;
  void At(float x, float y) {
    scene = Position(x, y, 0);
    view = scene;
    nearPoint = Position(x, y, 10);
    farPoint = Position(x, y, -10);
  }
};

void Press() {
  DragEvents e;
  const Position* first = Doc.Points.Item(1);
  e.At(first->x, first->y);
  CSelect s;
  s.LButtonDown(e.view, e.scene, e.X, e.Y, e.farPoint, e.nearPoint);
}

void MoveOnce(int i) {
  DragEvents e;
  e.At(-10 + 0.05f * static_cast<float>(i % 2), -8 - 0.05f * static_cast<float>(i % 2));
  e.Y = static_cast<float>(i % 2);
  CSelect s;
  s.MouseMove(e.view, e.scene, e.X, e.Y, e.farPoint, e.nearPoint);
}

// After the timed steps: one more step must carry the first point, and with
// it the midpoint of the first segment.
void Report(benchmark::State& state) {
  MoveOnce(1);
  const Position* first = Doc.Points.Item(1);
  const Position* second = Doc.Points.Item(2);
  const Position* mid = Doc.Points.Item(3);
  const bool follows = first->x == -9.95f && mid->ptype == 9 && std::fabs(mid->x - (first->x + second->x) / 2) < 1e-5f;
  if (!follows) state.SkipWithError("the drag did not carry the figure");
  state.counters["objects"] = static_cast<double>(ObjectCount());
  state.SetComplexityN(state.range(0));
}

void BM_DragMove(benchmark::State& state) {
  Setup(static_cast<int>(state.range(0)));
  Press();
  int i = 0;
  for (auto _ : state) MoveOnce(++i);
  Report(state);
}

void BM_DragStep(benchmark::State& state) {
  Setup(static_cast<int>(state.range(0)));
  Press();
  int i = 0;
  for (auto _ : state) {
    MoveOnce(++i);
    DrawScene();
  }
  Report(state);
}

void BM_DragFrame(benchmark::State& state) {
  Setup(static_cast<int>(state.range(0)));
  host().CanvasSize(CanvasWidth, CanvasHeight);
  // The press through the canvas, on the first point's pixel.
  float X = 0, Y = 0;
  const Position* first = Doc.Points.Item(1);
  SceneToScreen(first->x, first->y, 0, X, Y);

  ActiveTool = 11;
  picDraw_MouseDown(kLeftButton, 0, X, Y);
  int i = 0;
  for (auto _ : state) {
    ++i;
    picDraw_MouseMove(kLeftButton, 0, X + static_cast<float>(i % 2) * 2, Y + static_cast<float>(i % 2) * 2);
    glFinish();
  }
  if (PickedPointID != Doc.Points.Item(1)->ID) state.SkipWithError("the press missed the first point");
  picDraw_MouseUp(kLeftButton, 0, X, Y);
  state.counters["objects"] = static_cast<double>(ObjectCount());
}

}  // namespace

BENCHMARK(BM_DragMove)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond)->Complexity();
BENCHMARK(BM_DragStep)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond)->Complexity();
BENCHMARK(BM_DragFrame)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond)->UseRealTime();
