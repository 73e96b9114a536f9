// Scene cost of function curves at 800x600 on the offscreen context: five
// implicit curves, five inequalities (point fields of density 20 over a 10 by
// 10 range) and ten y = f(x) curves of 1,000 steps. Implicit curves and
// point fields are evaluated anew at every DrawScene; the y = f(x) curves
// draw from their samples.
//
// BM_CurveScene/0 is DrawScene of the whole figure (the target: under
// 10 ms); /1, /2, /3 the implicit curves, the fields and the graphs alone.
// At this view the points of a field lie a pixel apart, so its columns go to
// the list as lines; BM_CurveSceneZoomed is the whole figure zoomed in twice,
// where every visible point of the fields is a vertex of its own.
// BM_CurveFrame adds Display (the list drawn by the software renderer).
#include <benchmark/benchmark.h>

#include <GL/gl.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "graphs/funcurve.h"
#include "render/frame.h"
#include "bench/bench_context.h"
#include "render/view_state.h"

namespace {

using namespace vt;

using vt::bench::Context;
using vt::bench::kHeight;
using vt::bench::kWidth;

void AddCurve(int form, const std::string& f, int steps, const char* lo, const char* hi, float minV, float maxV,
              std::uint32_t color) {
  auto c = std::make_unique<CFunCurve>();
  c->Init(NewObjectId("C2"), "", 0, 1, "", f, "", steps, steps, lo, hi, minV, maxV, color, 2);
  c->FunForm = form;
  CFunCurve* p = Doc.FunCurves.Add(std::move(c));
  if (form == 2) p->GetPoints();
}

// Which kinds take part: 0 all, 1 implicit, 2 fields, 3 graphs.
void BuildFigure(int kinds) {
  if (kinds == 0 || kinds == 1) {
    for (const char* f : {"x^2+y^2-4", "x^2/9+y^2/4-1", "x^3-3x-y", "x*y-1", "sin(x)-cos(y)"})
      AddCurve(1, f, 90, "-5", "5", -5, 5, RGB(0, 0, 255));
  }
  if (kinds == 0 || kinds == 2) {
    for (const char* f : {"x^2+y^2-9", "y-sin(x)", "x*y-1", "abs(x)+abs(y)-3", "y-x^2+2"})
      AddCurve(4, f, 20, "-5", "5", -5, 5, RGB(255, 160, 0));
  }
  if (kinds == 0 || kinds == 3) {
    for (const char* f : {"sin(x)", "cos(2x)", "x^3-3x", "exp(-x^2)", "1/x", "x^2/4-2", "sqr(x+5)", "log(x+6)",
                          "tan(x)/4", "abs(x)-1"})
      AddCurve(2, f, 1000, "-5", "5", 0, 0, RGB(200, 0, 0));
  }
}

void Setup(int kinds) {
  Context().MakeCurrent();
  ResetGlobals();
  Initialize();
  mnuFileNew2D_Click();
  View.SetScreen(kWidth, kHeight);
  BuildFigure(kinds);
}

void BM_CurveScene(benchmark::State& state) {
  Setup(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    DrawScene();
    glFinish();
  }
  ClearDocument();
}

void BM_CurveSceneZoomed(benchmark::State& state) {
  Setup(0);
  View.Zoom(0.5f);
  for (auto _ : state) {
    DrawScene();
    glFinish();
  }
  ClearDocument();
}

void BM_CurveFrame(benchmark::State& state) {
  Setup(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    DrawScene();
    Display();
    glFinish();
  }
  state.counters["fps"] = benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  ClearDocument();
}

// What the fields and implicit curves cost without GL: the evaluations and
// the tracing alone.
void BM_CurveCompute(benchmark::State& state) {
  Setup(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    for (CFunCurve* c : Doc.FunCurves) {
      if (c->FunForm == 1) c->TraceImplicit();
      else if (c->FunForm == 4) c->ComputeField();
    }
  }
  ClearDocument();
}

}  // namespace

BENCHMARK(BM_CurveCompute)->DenseRange(1, 2)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CurveScene)->DenseRange(0, 3)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CurveSceneZoomed)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CurveFrame)->Arg(0)->Unit(benchmark::kMillisecond)->UseRealTime();
