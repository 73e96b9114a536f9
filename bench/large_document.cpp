// Large documents: the chain figure at 20,000 objects saved, opened, drawn
// and dragged; and what undo costs a command and holds in memory at 5,000
// objects.
//
// BM_LargeSave / BM_LargeOpen: the file written and read back (the open is
//   checked to give the same text).
// BM_LargeDraw:  DrawScene + Display of the opened document.
// (The drag step at 20,000 objects is BM_DragStep/20000 of bench_drag_chain.)
// BM_CommandSnapshot: a drag step ended as a command ends it, with its undo
//   snapshot pushed.
// BM_UndoMemory999: 999 commands, each moving a point, with the memory the
//   snapshots hold (stored_MB) against their text (text_MB).
#include <benchmark/benchmark.h>

#include <GL/gl.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "bench/chain_figure.h"
#include "document/undo.h"
#include "persist/docio.h"

namespace {

using namespace vt;
using namespace vt::bench;

std::string TempPath() {
  return (std::filesystem::temp_directory_path() / "vantrel-bench-large.vtd").string();
}

void BM_LargeSave(benchmark::State& state) {
  Setup(static_cast<int>(state.range(0)));
  const std::string path = TempPath();
  std::string error;
  for (auto _ : state)
    if (!WriteDocumentFile(path, GetUndoVar(), error)) state.SkipWithError(error.c_str());
  state.counters["objects"] = ObjectCount();
  state.counters["file_MB"] = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
  std::remove(path.c_str());
}

void BM_LargeOpen(benchmark::State& state) {
  Setup(static_cast<int>(state.range(0)));
  const std::string path = TempPath(), text = GetUndoVar();
  std::string error;
  WriteDocumentFile(path, text, error);
  for (auto _ : state) OpenFile(path);
  if (GetUndoVar() != text) state.SkipWithError("the opened document differs from the saved one");
  state.counters["objects"] = ObjectCount();
  std::remove(path.c_str());
}

void BM_LargeDraw(benchmark::State& state) {
  Setup(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    DrawScene();
    Display();
    glFinish();
  }
  state.counters["objects"] = ObjectCount();
}

void BM_CommandSnapshot(benchmark::State& state) {
  Setup(static_cast<int>(state.range(0)));
  Press();
  int i = 0;
  for (auto _ : state) {
    MoveOnce(++i);
    PushSnapshot();
    if (UndoCount > kUndoDepth - 10) {  // keep storing: start a fresh stack
      state.PauseTiming();
      ResetUndo();
      state.ResumeTiming();
    }
  }
  state.counters["objects"] = ObjectCount();
}

void BM_UndoMemory999(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    Setup(static_cast<int>(state.range(0)));
    ResetUndo();
    Press();
    state.ResumeTiming();
    for (int i = 1; UndoCount < kUndoDepth - 1; ++i) {
      MoveOnce(i);
      PushSnapshot();
    }
  }
  size_t text = 0;
  for (int i = 1; i < kUndoDepth; ++i) text += UndoStack.TextSize(static_cast<size_t>(i));
  state.counters["objects"] = ObjectCount();
  state.counters["snapshots"] = UndoCount - 1;
  state.counters["text_MB"] = static_cast<double>(text) / 1e6;
  state.counters["stored_MB"] = static_cast<double>(UndoStack.StoredBytes()) / 1e6;
  // The newest snapshot must read back as the document stands.
  if (UndoEntry(UndoCount) != GetUndoVar()) state.SkipWithError("the newest snapshot differs");
}

}  // namespace

BENCHMARK(BM_LargeSave)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LargeOpen)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LargeDraw)->Arg(20000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CommandSnapshot)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoMemory999)->Arg(5000)->Iterations(1)->Unit(benchmark::kMillisecond);
