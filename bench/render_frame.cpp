// Frame cost at 800x600 on the offscreen context: DrawScene (compile the
// scene list) and Display (draw it) for a plane scene with axes, grid and
// 1,000 labelled points, and a space scene with axes, ground and 1,000
// points. Each mouse event costs one DrawScene and one Display, so
// frames per second = 1 / (time of DrawScene + Display).
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "render/frame.h"
#include "bench/bench_context.h"
#include "render/view_state.h"

namespace {

using vt::bench::Context;
using vt::bench::kHeight;
using vt::bench::kWidth;

// 1,000 points on a 40 x 25 lattice inside the view, each with the next
// automatic label.
void AddPoints(bool labelled) {
  for (int i = 0; i < 1000; ++i) {
    const float x = -7.0f + 14.0f * static_cast<float>(i % 40) / 39.0f;
    const float y = -5.0f + 10.0f * static_cast<float>(i / 40) / 24.0f;
    vt::Position* p = vt::Doc.Points.Add(vt::NewObjectId("PT"), x, y, 0, 1, "", "", 0);
    if (labelled) vt::AssignNextPointLabel(*p);
  }
}

void Setup(bool space, bool labelled) {
  Context().MakeCurrent();
  vt::ResetGlobals();
  vt::Initialize();
  if (space) vt::mnuFileNew3D_Click();
  else vt::mnuFileNew2D_Click();
  vt::View.Zoom(0.3f);
  vt::View.SetScreen(kWidth, kHeight);
  vt::ShowAxis = true;
  vt::ShowGrid = !space;
  AddPoints(labelled);
}

void RunFrames(benchmark::State& state, bool compile, bool draw) {
  vt::DrawScene();
  double compileMs = 0, drawMs = 0;
  for (auto _ : state) {
    const auto t0 = std::chrono::steady_clock::now();
    if (compile) vt::DrawScene();
    const auto t1 = std::chrono::steady_clock::now();
    if (draw) vt::Display();
    const auto t2 = std::chrono::steady_clock::now();
    compileMs += std::chrono::duration<double, std::milli>(t1 - t0).count();
    drawMs += std::chrono::duration<double, std::milli>(t2 - t1).count();
  }
  const double n = static_cast<double>(state.iterations());
  state.counters["fps"] = benchmark::Counter(n, benchmark::Counter::kIsRate);
  state.counters["DrawScene_ms"] = compileMs / n;
  state.counters["Display_ms"] = drawMs / n;
}

void BM_PlaneFrame(benchmark::State& state) {
  Setup(false, true);
  RunFrames(state, true, true);
}
void BM_PlaneDrawSceneOnly(benchmark::State& state) {
  Setup(false, true);
  RunFrames(state, true, false);
}
void BM_PlaneDisplayOnly(benchmark::State& state) {
  Setup(false, true);
  RunFrames(state, false, true);
}
void BM_PlaneFrameNoLabels(benchmark::State& state) {
  Setup(false, false);
  RunFrames(state, true, true);
}
void BM_SpaceFrame(benchmark::State& state) {
  Setup(true, true);
  RunFrames(state, true, true);
}
void BM_SpaceFrameNoLabels(benchmark::State& state) {
  Setup(true, false);
  RunFrames(state, true, true);
}
void BM_SpaceDrawSceneOnly(benchmark::State& state) {
  Setup(true, true);
  RunFrames(state, true, false);
}
void BM_SpaceDisplayOnly(benchmark::State& state) {
  Setup(true, true);
  RunFrames(state, false, true);
}

}  // namespace

BENCHMARK(BM_PlaneFrame)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_PlaneDrawSceneOnly)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_PlaneDisplayOnly)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_PlaneFrameNoLabels)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SpaceFrame)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SpaceFrameNoLabels)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SpaceDrawSceneOnly)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SpaceDisplayOnly)->Unit(benchmark::kMillisecond)->UseRealTime();
