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
#include "bench/chain_figure.h"
#include "render/view_state.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"
#include "tools/select.h"

namespace {

using namespace vt;

using namespace vt::bench;

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
BENCHMARK(BM_DragStep)->Arg(100)->Arg(1000)->Arg(5000)->Arg(20000)->Unit(benchmark::kMicrosecond)->Complexity();
BENCHMARK(BM_DragFrame)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond)->UseRealTime();
