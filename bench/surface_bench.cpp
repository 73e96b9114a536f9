// Surfaces in space.
//
// BM_MarchCubes/N: the meshing of an implicit surface alone (field to
// triangles with shared vertices and normals, no GL), the sphere
// x^2+y^2+z^2-4 = 0 sampled by CSurface over -3..3 on each axis with N cells
// a side (N = 20, 40, 64). The field is sampled once before the timing.
// BM_ImplicitSample/N adds what GetPoints costs for that field, for scale.
//
// BM_ExplicitFrame: a 100 x 100 explicit surface with vertex normals
// (Smoothness 3), DrawScene + Display at 800x600 on the offscreen context
// (the software renderer); the counter fps is frames per second.
//
// With --dump_fields=DIR the program writes the fields of BM_MarchCubes as
// DIR/sphere_N.f32 (raw little-endian float32, (N+1)^3 values with u fastest,
// so a (w, v, u) array) and DIR/sphere_N.txt (the grid's size and spacing),
// and ends; bench/compare_marching_cubes.sh meshes the same files with a
// reference library.
#include <benchmark/benchmark.h>

#include <GL/gl.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "bench/bench_context.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "graphs/isosurface.h"
#include "graphs/surface.h"
#include "render/frame.h"
#include "render/view_state.h"

namespace {

using namespace vt;

using vt::bench::Context;
using vt::bench::kHeight;
using vt::bench::kWidth;

constexpr float kRange = 3.0f;

std::unique_ptr<CSurface> SampledSphere(int cells) {
  auto s = std::make_unique<CSurface>();
  const std::string lo = "-3", hi = "3";
  s->Init("SF0001", "", 2, 1, 3, "", "", "x^2+y^2+z^2-4", cells, cells, lo, hi, lo, hi);
  s->StepW = cells;
  s->MinW = -kRange;
  s->MaxW = kRange;
  if (!s->GetPoints()) {
    std::fprintf(stderr, "the sphere field did not sample\n");
    std::exit(1);
  }
  return s;
}

IsoGrid GridOf(const CSurface& s) {
  IsoGrid g;
  g.nu = s.StepU + 1;
  g.nv = s.StepV + 1;
  g.nw = s.StepW + 1;
  g.X = s.FieldX.data();
  g.Y = s.FieldY.data();
  g.Z = s.FieldZ.data();
  g.F = s.FieldF.data();
  return g;
}

void BM_MarchCubes(benchmark::State& state) {
  ResetGlobals();
  const int cells = static_cast<int>(state.range(0));
  std::unique_ptr<CSurface> s = SampledSphere(cells);
  const IsoGrid g = GridOf(*s);
  IsoMesh mesh;
  for (auto _ : state) {
    MarchCubes(g, 0.0f, mesh);
    benchmark::DoNotOptimize(mesh.tri.data());
  }
  state.counters["triangles"] = static_cast<double>(mesh.TriangleCount());
  state.counters["vertices"] = static_cast<double>(mesh.VertexCount());
}

void BM_ImplicitSample(benchmark::State& state) {
  ResetGlobals();
  const int cells = static_cast<int>(state.range(0));
  std::unique_ptr<CSurface> s = SampledSphere(cells);
  for (auto _ : state) benchmark::DoNotOptimize(s->GetPoints());
}

void BM_ExplicitFrame(benchmark::State& state) {
  Context().MakeCurrent();
  ResetGlobals();
  Initialize();
  mnuFileNew3D_Click();
  View.SetScreen(kWidth, kHeight);
  auto s = std::make_unique<CSurface>();
  s->Init(NewObjectId("SF"), "", 2, 2, 3, "", "", "sin(x)*cos(y)", 100, 100, "-5", "5", "-5", "5");
  s->Smoothness = 3;
  s->Show = 3;
  s->FillStyle = 5;
  CSurface* p = Doc.Surfaces.Add(std::move(s));
  if (!p->GetPoints()) {
    state.SkipWithError("the surface did not sample");
    return;
  }
  for (auto _ : state) {
    DrawScene();
    Display();
    glFinish();
  }
  state.counters["fps"] = benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  ClearDocument();
}

// Writes the fields of BM_MarchCubes; false when a file cannot be written.
bool DumpFields(const std::string& dir) {
  ResetGlobals();
  for (int cells : {20, 40, 64}) {
    std::unique_ptr<CSurface> s = SampledSphere(cells);
    const std::string base = dir + "/sphere_" + std::to_string(cells);
    FILE* f = std::fopen((base + ".f32").c_str(), "wb");
    if (!f) return false;
    const size_t n = s->FieldF.size();
    const bool ok = std::fwrite(s->FieldF.data(), sizeof(float), n, f) == n;
    std::fclose(f);
    if (!ok) return false;
    FILE* t = std::fopen((base + ".txt").c_str(), "w");
    if (!t) return false;
    std::fprintf(t, "%d %d %d %.9g\n", s->StepW + 1, s->StepV + 1, s->StepU + 1, 2 * kRange / cells);
    std::fclose(t);
  }
  return true;
}

}  // namespace

BENCHMARK(BM_MarchCubes)->Arg(20)->Arg(40)->Arg(64)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ImplicitSample)->Arg(20)->Arg(40)->Arg(64)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ExplicitFrame)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const char* flag = "--dump_fields=";
    if (std::strncmp(argv[i], flag, std::strlen(flag)) == 0) {
      const std::string dir = argv[i] + std::strlen(flag);
      if (!DumpFields(dir)) {
        std::fprintf(stderr, "cannot write the fields to %s\n", dir.c_str());
        return 1;
      }
      return 0;
    }
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
