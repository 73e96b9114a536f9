// Saving a film of 100 frames at 800 x 600 from their bitmaps, as Save
// Animation does it: each bitmap read back, converted and compressed, in
// each compressor offered. The target is under 10 s with MJPEG.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <vector>

#include "animation/animation.h"
#include "animation/export.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/host.h"
#include "persist/docio.h"

namespace {

using namespace vt;

constexpr int kFrames = 100, kWidth = 800, kHeight = 600;

// A scene-like picture: white with a moving disc and a few lines.
Image Frame(int n) {
  Image img;
  img.width = kWidth;
  img.height = kHeight;
  img.rgb.assign(static_cast<size_t>(kWidth) * kHeight * 3, 255);
  const int cx = 100 + n * 6, cy = 300;
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) {
      uint8_t* p = &img.rgb[(static_cast<size_t>(y) * kWidth + x) * 3];
      const int dx = x - cx, dy = y - cy;
      if (dx * dx + dy * dy < 60 * 60) {
        p[0] = 200, p[1] = 30, p[2] = 30;
      } else if (x % 80 == 0 || y % 80 == 0) {
        p[0] = p[1] = p[2] = 180;
      }
    }
  return img;
}

struct Frames {
  std::string dir;
  std::vector<std::string> paths;
  Frames() {
    dir = (std::filesystem::temp_directory_path() / "vantrel-bench-film").string();
    std::filesystem::create_directories(dir);
    for (int i = 1; i <= kFrames; ++i) {
      paths.push_back(FramePath(dir, i));
      WriteBmp(paths.back(), Frame(i));
    }
  }
  ~Frames() {
    std::error_code ec;
    std::filesystem::remove_all(dir, ec);
  }
};

Frames& Shared() {
  static Frames frames;
  return frames;
}

void BM_SaveAnimation(benchmark::State& state, const std::string& codec) {
  Frames& f = Shared();
  const std::string out = f.dir + "/film-" + codec + ".avi";
  for (auto _ : state) {
    if (!SaveAnimation(f.paths, f.paths, out, 10, codec)) state.SkipWithError("the film was not written");
  }
  state.counters["frames"] = kFrames;
  state.counters["MB"] = static_cast<double>(std::filesystem::file_size(out)) / 1e6;
}

BENCHMARK_CAPTURE(BM_SaveAnimation, mjpeg, std::string("mjpeg"))->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_CAPTURE(BM_SaveAnimation, mpeg4, std::string("mpeg4"))->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK_CAPTURE(BM_SaveAnimation, rawvideo, std::string("rawvideo"))->Unit(benchmark::kMillisecond)->Iterations(2);

// The whole road of vantrel-cli avi: a document with a player of 100 frames
// (a square sliding and turning) drawn offscreen at 800 x 600 and compressed
// with MJPEG.
void BM_HeadlessFilm(benchmark::State& state) {
  Frames& f = Shared();
  ResetGlobals();
  SceneMode = 1;
  std::vector<std::string> corners;
  const float xy[4][2] = {{-2, -2}, {2, -2}, {2, 2}, {-2, 2}};
  for (const auto& c : xy) {
    const std::string id = NewObjectId("PT");
    Doc.Points.Add(id, c[0], c[1], 0, 1, "", "", 0, id);
    corners.push_back(id);
  }
  CAniControl* player = NewPlayer();
  player->Steps = 99;
  TrackForm move;
  move.playerId = player->ID;
  move.bound = corners;
  move.x = 5;
  ConfirmTrackForm(move);
  TrackForm turn = move;
  turn.kind = 2;
  turn.para1 = corners[0];
  turn.x = 180;
  ConfirmTrackForm(turn);
  const std::string doc = f.dir + "/film.vtd";
  std::string error;
  WriteDocumentFile(doc, GetUndoVar(), error);
  HeadlessFilm film;
  film.documentPath = doc;
  film.aviPath = f.dir + "/headless.avi";
  for (auto _ : state) {
    if (!RenderDocumentToAvi(film, error)) state.SkipWithError(error.c_str());
  }
  state.counters["frames"] = 100;
}
BENCHMARK(BM_HeadlessFilm)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace
