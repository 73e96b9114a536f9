// A frame of a plane figure: 500 lines, 200 circles, 100 arcs and 50 regions,
// DrawScene + Display at 800 x 600 on the offscreen context.
#include <benchmark/benchmark.h>

#include <GL/gl.h>

#include <cstdio>
#include <random>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "render/frame.h"
#include "render/offscreen.h"
#include "render/view_state.h"

namespace {

using namespace vt;

Position* NewPoint(std::mt19937& rng) {
  std::uniform_real_distribution<float> coord(-12, 12);
  std::string id = NewObjectId("PT");
  Position* p = Doc.Points.Add(id, coord(rng), coord(rng), 0, 1, "", "", 0, id);
  AssignNextPointLabel(*p);
  return p;
}

void BuildFigure() {
  std::mt19937 rng(11);
  std::uniform_real_distribution<float> radius(0.3f, 4);
  std::uniform_int_distribution<int> style(1, 4);
  for (int i = 0; i < 500; ++i) {
    Position* a = NewPoint(rng);
    Position* b = NewPoint(rng);
    auto l = std::make_unique<CLine>();
    l->ID = NewObjectId("LN");
    l->Line1(a->ID, b->ID);
    l->lt = 1 + i % 4;
    l->GELineStyle = style(rng);
    l->LLabel = "l" + std::to_string(i);
    Doc.Lines.Add(std::move(l));
  }
  for (int i = 0; i < 200; ++i) {
    Position* c = NewPoint(rng);
    auto cr = std::make_unique<CCircle>();
    cr->ID = NewObjectId("CR");
    cr->CType = 3;
    cr->PCenter = HolderCopy(*c);
    cr->R = radius(rng);
    cr->GELineStyle = style(rng);
    cr->Filled = i % 5 == 0;
    Doc.Circles.Add(std::move(cr));
  }
  for (int i = 0; i < 100; ++i) {
    Position* c = NewPoint(rng);
    Position* b = NewPoint(rng);
    Position* e = NewPoint(rng);
    auto a = std::make_unique<CArc>();
    a->ID = NewObjectId("AR");
    a->Arc1(b->ID, c->ID, e->ID);
    a->AT = 1 + i % 3;
    Doc.Arcs.Add(std::move(a));
  }
  for (int i = 0; i < 50; ++i) {
    auto g = std::make_unique<CRegion>();
    g->ID = NewObjectId("RG");
    for (int k = 0; k < 3 + i % 3; ++k) g->Points.push_back(HolderCopy(*NewPoint(rng)));
    g->Alpha = 0.3f;
    g->ForeColor = RGB(0, 128, 255);
    Doc.Regions.Add(std::move(g));
  }
}

// Which kinds take part: 0 all, 1 lines, 2 circles, 3 arcs, 4 regions, 5
// none (the points alone).
void KeepOnly(int kind) {
  if (kind == 0) return;
  if (kind != 1) Doc.Lines.Clear();
  if (kind != 2) Doc.Circles.Clear();
  if (kind != 3) Doc.Arcs.Clear();
  if (kind != 4) Doc.Regions.Clear();
}

void BM_GeometryFrame(benchmark::State& state) {
  OffscreenContext ctx;
  std::string error;
  if (!ctx.Create(800, 600, error)) {
    state.SkipWithError(error.c_str());
    return;
  }
  StartUp("", true);
  View.SetScreen(800, 600);
  ClearDocument();
  BuildFigure();
  KeepOnly(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    DrawScene();
    Display();
    glFinish();
  }
  state.counters["fps"] = benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  ctx.Destroy();
}

}  // namespace

BENCHMARK(BM_GeometryFrame)->Arg(0)->Unit(benchmark::kMillisecond)->UseRealTime();
// The same frame one kind at a time, to see what dominates.
BENCHMARK(BM_GeometryFrame)->DenseRange(1, 5)->Unit(benchmark::kMillisecond)->UseRealTime();
