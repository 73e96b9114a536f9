// Films: the AVI writer checked by ffprobe, the frame bitmaps, the messages of
// the export dialogs, and the headless film of a document.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "animation/animation.h"
#include "animation/export.h"
#include "document/globals.h"
#include "persist/docio.h"
#include "support/fixtures.h"

namespace vt::test {
namespace {

bool HaveFfprobe() { return std::system("command -v ffprobe >/dev/null 2>&1") == 0; }

std::string Run(const std::string& cmd) {
  std::string out;
  FILE* f = popen(cmd.c_str(), "r");
  if (!f) return out;
  char buf[512];
  while (fgets(buf, sizeof buf, f)) out += buf;
  pclose(f);
  return out;
}

// codec_name, nb_read_frames and r_frame_rate of the first video stream.
std::string Probe(const std::string& path) {
  return Run("ffprobe -v error -count_frames -select_streams v:0 -show_entries "
             "stream=codec_name,nb_read_frames,r_frame_rate -of default=noprint_wrappers=1 '" + path + "'");
}

Image Gradient(int w, int h, int shift) {
  Image img;
  img.width = w, img.height = h;
  img.rgb.resize(static_cast<size_t>(w) * h * 3);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      uint8_t* p = &img.rgb[(static_cast<size_t>(y) * w + x) * 3];
      p[0] = static_cast<uint8_t>(x + shift);
      p[1] = static_cast<uint8_t>(y);
      p[2] = static_cast<uint8_t>(shift * 3);
    }
  return img;
}

class FilmTest : public DocumentTest {};

TEST_F(FilmTest, FortyFramesAtTenPerSecondInEachCodec) {
  if (!HaveFfprobe()) GTEST_SKIP() << "ffprobe is not installed";
  TempDir dir;
  for (const FilmCodec& codec : FilmCodecs()) {
    const std::string path = dir.path(codec.name + ".avi");
    AviWriter w;
    std::string error;
    ASSERT_TRUE(w.Open(path, 160, 120, 10, codec.name, error)) << error;
    for (int i = 0; i < 40; ++i) ASSERT_TRUE(w.Write(Gradient(160, 120, i)));
    ASSERT_TRUE(w.Close());
    const std::string probe = Probe(path);
    const std::string expectName = codec.name == "libx264" ? "h264" : codec.name;
    EXPECT_EQ(probe, "codec_name=" + expectName + "\nr_frame_rate=10/1\nnb_read_frames=40\n");
  }
}

TEST_F(FilmTest, WriterRefusesWhatItCannotWrite) {
  TempDir dir;
  AviWriter w;
  std::string error;
  EXPECT_FALSE(w.Open(dir.path("a.avi"), 160, 120, 10, "no-such-codec", error));
  EXPECT_FALSE(error.empty());
  EXPECT_FALSE(AviWriter().Open(dir.path("missing/b.avi"), 160, 120, 10, "mjpeg", error));
  AviWriter ok;
  ASSERT_TRUE(ok.Open(dir.path("c.avi"), 160, 120, 10, "mjpeg", error));
  EXPECT_FALSE(ok.Write(Gradient(100, 100, 0)));  // another size
  EXPECT_FALSE(ok.Close());
}

TEST_F(FilmTest, SaveAnimationMessagesAndFrames) {
  TempDir dir;
  const std::string none = dir.path("none.bmp");
  const std::pair<bool, const char*> refused[] = {
      {SaveAnimation({}, {}, dir.path("x.avi"), 10, "mjpeg"), "Generate animation frames first."},
      {SaveAnimation({"a"}, {}, dir.path("x.avi"), 10, "mjpeg"), "Select some frames first."},
      {SaveAnimation({none}, {none}, dir.path("x.avi"), 10, "mjpeg"), "There was an error writing the file."},
      {CheckFrameRequest(0, 10), "The speed of animation must large than 1 frame per second."},
      {CheckFrameRequest(10, 0), "The number of frames must large than 1."}};
  ASSERT_EQ(host_.messages.size(), 5u);
  for (size_t i = 0; i < 5; ++i) {
    EXPECT_FALSE(refused[i].first) << i;
    EXPECT_EQ(host_.messages[i].title + ": " + host_.messages[i].text, std::string("Error: ") + refused[i].second);
  }

  // Frames of a player, captured by the host, then a film of some of them.
  CAniControl* c = NewPlayer();
  c->Steps = 5;
  int shot = 0;
  const auto frames = GenerateFrames(*c, 6, dir.dir(), [&] { return Gradient(64, 48, shot++); });
  ASSERT_EQ(frames.size(), 6u);
  EXPECT_EQ(frames[0], dir.dir() + "/Graph1.bmp");
  EXPECT_EQ(c->Step, 5);
  Image back;
  ASSERT_TRUE(ReadBmp(frames[2], back));
  EXPECT_EQ(back.rgb, Gradient(64, 48, 2).rgb);
  // A folder the frames cannot go to: one message with the path and the reason.
  namespace fs = std::filesystem;
  std::string blocked = dir.path("blocked"), reason = "Permission denied";
  fs::create_directory(blocked);
  fs::permissions(blocked, fs::perms::owner_read | fs::perms::owner_exec);
  if (geteuid() == 0) {  // permissions do not stop the super-user: a file in the folder's place
    blocked = dir.path("plain");
    std::ofstream(blocked) << "x";
    reason = "Not a directory";
  }
  const size_t shown = host_.messages.size();
  EXPECT_TRUE(GenerateFrames(*c, 6, blocked, [&] { return Gradient(64, 48, 0); }).empty());
  ASSERT_EQ(host_.messages.size(), shown + 1);
  EXPECT_EQ(host_.LastMessage(), "Unable to write " + blocked + "/Graph1.bmp: " + reason);

  const size_t before = host_.messages.size();
  ASSERT_TRUE(SaveAnimation(frames, {frames[5], frames[0], frames[3]}, dir.path("part.avi"), 5, "mpeg4"));
  EXPECT_EQ(host_.messages.size(), before);
  if (HaveFfprobe()) EXPECT_NE(Probe(dir.path("part.avi")).find("nb_read_frames=3"), std::string::npos);
}

TEST_F(FilmTest, HeadlessFilmOfADocument) {
  if (!HaveFfprobe()) GTEST_SKIP() << "ffprobe is not installed";
  TempDir dir;
  SceneMode = 1;
  Position* a = AddPoint(0, 0);
  CAniControl* c = NewPlayer();
  c->Steps = 39;
  TrackForm f;
  f.playerId = c->ID;
  f.bound = {a->ID};
  f.x = 3;
  ASSERT_NE(ConfirmTrackForm(f), nullptr);
  std::string error;
  ASSERT_TRUE(WriteDocumentFile(dir.path("doc.vtd"), GetUndoVar(), error)) << error;
  HeadlessFilm film;
  film.documentPath = dir.path("doc.vtd");
  film.aviPath = dir.path("doc.avi");
  film.width = 320;
  film.height = 240;
  ASSERT_TRUE(RenderDocumentToAvi(film, error)) << error;
  EXPECT_EQ(Probe(film.aviPath), "codec_name=mjpeg\nr_frame_rate=10/1\nnb_read_frames=40\n");
  film.playerId = "AC9999";
  EXPECT_FALSE(RenderDocumentToAvi(film, error));
}

}  // namespace
}  // namespace vt::test
