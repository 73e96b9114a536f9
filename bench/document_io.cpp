// Writing and reading a document of 2,000 points through its file.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <random>

#include "document/document.h"
#include "document/globals.h"
#include "document/undo.h"
#include "persist/docio.h"

namespace {

using namespace vt;

void BuildDocument(int n) {
  ResetGlobals();
  SceneMode = 1;
  std::mt19937 rng(7);
  std::uniform_real_distribution<float> coord(-100, 100);
  for (int i = 0; i < n; ++i) {
    std::string id = NewObjectId("PT");
    Position* p = Doc.Points.Add(id, coord(rng), coord(rng), 0, 1, "", "", 0, id);
    AssignNextPointLabel(*p);
  }
}

std::string TempPath() {
  return (std::filesystem::temp_directory_path() / "vantrel-bench.vtd").string();
}

void BM_WriteDocument(benchmark::State& state) {
  BuildDocument(static_cast<int>(state.range(0)));
  std::string path = TempPath(), error;
  for (auto _ : state) {
    bool ok = WriteDocumentFile(path, GetUndoVar(), error);
    benchmark::DoNotOptimize(ok);
  }
  std::remove(path.c_str());
}

void BM_ReadDocument(benchmark::State& state) {
  BuildDocument(static_cast<int>(state.range(0)));
  std::string path = TempPath(), error;
  WriteDocumentFile(path, GetUndoVar(), error);
  for (auto _ : state) {
    bool ok = OpenFile(path);
    benchmark::DoNotOptimize(ok);
  }
  std::remove(path.c_str());
}

void BM_WriteAndRead(benchmark::State& state) {
  BuildDocument(static_cast<int>(state.range(0)));
  std::string path = TempPath(), error;
  for (auto _ : state) {
    WriteDocumentFile(path, GetUndoVar(), error);
    bool ok = OpenFile(path);
    benchmark::DoNotOptimize(ok);
  }
  std::remove(path.c_str());
}

// An undo snapshot is the same text without the file.
void BM_Snapshot(benchmark::State& state) {
  BuildDocument(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    std::string text = GetUndoVar();
    benchmark::DoNotOptimize(text);
  }
}

}  // namespace

BENCHMARK(BM_WriteDocument)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadDocument)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteAndRead)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Snapshot)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);
