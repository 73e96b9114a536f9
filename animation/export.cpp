// Film export: the AVI writer (FFmpeg in libvantrel_film.so), the frame bitmaps, the checks and
// messages of the export dialogs, and the headless film of vantrel-cli.
#include "animation/export.h"

#include <dlfcn.h>

#include <stb_image.h>
#include <stb_image_write.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "animation/film_plugin/film_encoder.h"
#include "animation/player_objects.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "geometry/locus.h"
#include "persist/docio.h"
#include "render/frame.h"
#include "render/headless.h"
#include "render/offscreen.h"
#include "render/view_state.h"

namespace vt {

const char* const kFilmSaveTitle = "Choose a filename to save AVI to...";
const char* const kFilmSaveFilter = "AVI Files|*.avi";

namespace {

// The film encoder library, loaded once on first use from the executable's
// folder (a build tree, or an installed bin/), else from ../lib/vantrel
// beside it. Null with `why` set when it cannot be had.
const VtFilmEncoderApi* FilmEncoder(std::string* why = nullptr) {
  static const VtFilmEncoderApi* api = nullptr;
  static std::string failure;
  static bool tried = false;
  if (!tried) {
    tried = true;
    namespace fs = std::filesystem;
    std::error_code ec;
    const fs::path dir = fs::read_symlink("/proc/self/exe", ec).parent_path();
    void* library = nullptr;
    for (const fs::path& at : {dir / kVtFilmEncoderLibrary, dir / ".." / "lib" / "vantrel" / kVtFilmEncoderLibrary}) {
      if ((library = dlopen(at.c_str(), RTLD_NOW | RTLD_LOCAL))) break;
      if (failure.empty() || fs::exists(at, ec)) failure = dlerror();
    }
    if (library) {
      using Entry = const VtFilmEncoderApi* (*)();
      auto entry = reinterpret_cast<Entry>(dlsym(library, kVtFilmEncoderSymbol));
      api = entry ? entry() : nullptr;
      if (api && api->version != kVtFilmEncoderVersion) api = nullptr;
      if (!api) failure = std::string(kVtFilmEncoderLibrary) + " is of another version";
    }
    if (!api) failure = "no film encoder (" + failure + ")";
  }
  if (!api && why) *why = failure;
  return api;
}

}  // namespace

std::vector<FilmCodec> FilmCodecs() {
  std::vector<FilmCodec> out = {{"mjpeg", "Motion JPEG"}, {"mpeg4", "MPEG-4 Part 2"}, {"rawvideo", "Full Frames (Uncompressed)"}};
  if (const VtFilmEncoderApi* api = FilmEncoder(); api && api->has_encoder("libx264")) out.push_back({"libx264", "H.264"});
  return out;
}

// ---- the writer ------------------------------------------------------------------

struct AviWriter::Impl {
  const VtFilmEncoderApi* api = nullptr;
  void* writer = nullptr;
  ~Impl() {
    if (writer) api->discard(writer);
  }
};

AviWriter::AviWriter() = default;
AviWriter::~AviWriter() = default;

bool AviWriter::Open(const std::string& path, int width, int height, int fps, const std::string& codec,
                     std::string& error) {
  impl_.reset();
  frames_ = 0;
  const VtFilmEncoderApi* api = FilmEncoder(&error);
  if (!api) return false;
  char why[512] = "";
  void* writer = api->open(path.c_str(), width, height, fps, codec.c_str(), why, sizeof why);
  if (!writer) {
    error = why;
    return false;
  }
  impl_ = std::make_unique<Impl>();
  impl_->api = api;
  impl_->writer = writer;
  return true;
}

bool AviWriter::Write(const Image& image) {
  if (!impl_) return false;
  if (image.rgb.size() < static_cast<size_t>(image.width) * image.height * 3) {
    impl_->api->write(impl_->writer, nullptr, 0, 0);  // marks the film failed
    return false;
  }
  if (!impl_->api->write(impl_->writer, image.rgb.data(), image.width, image.height)) return false;
  ++frames_;
  return true;
}

bool AviWriter::Close() {
  if (!impl_) return false;
  const bool ok = impl_->api->close(impl_->writer) != 0;
  impl_->writer = nullptr;
  impl_.reset();
  return ok;
}

// ---- bitmaps ----------------------------------------------------------------------

std::string FramePath(const std::string& folder, int n) { return folder + "/Graph" + std::to_string(n) + ".bmp"; }

bool WriteBmp(const std::string& path, const Image& image, std::string* error) {
  auto fail = [&](const std::string& why) {
    if (error) *error = why;
    return false;
  };
  if (image.empty()) return fail("the picture is empty");
  FILE* f = std::fopen(path.c_str(), "wb");
  if (!f) return fail(std::strerror(errno));
  const int ok = stbi_write_bmp_to_func(
      [](void* file, void* data, int size) { std::fwrite(data, 1, static_cast<size_t>(size), static_cast<FILE*>(file)); },
      f, image.width, image.height, 3, image.rgb.data());
  const bool written = ok != 0 && !std::ferror(f);
  const int saved = errno;
  if (std::fclose(f) != 0 || !written) return fail(std::strerror(written ? errno : (saved ? saved : EIO)));
  return true;
}

std::string DefaultFrameFolder() {
  if (!CurrentFilePath.empty()) {
    const std::string folder = std::filesystem::path(CurrentFilePath).parent_path().string();
    if (!folder.empty()) return folder;
  }
  if (const char* home = std::getenv("HOME"); home && home[0] == '/') return home;
  return std::filesystem::temp_directory_path().string();
}

bool ReadBmp(const std::string& path, Image& image) {
  int w = 0, h = 0, n = 0;
  unsigned char* data = stbi_load(path.c_str(), &w, &h, &n, 3);
  if (!data) return false;
  image.width = w;
  image.height = h;
  image.rgb.assign(data, data + static_cast<size_t>(w) * h * 3);
  stbi_image_free(data);
  return true;
}

// ---- frames and films ----------------------------------------------------------------

std::vector<std::string> GenerateFrames(CAniControl& player, int count, const std::string& folder,
                                        const std::function<Image()>& capture,
                                        const std::function<bool(int, int)>& progress) {
  std::vector<std::string> paths;
  player.Stop();
  player.RunDirect = 1;
  player.Step = static_cast<short>(player.AniRunMode == 4 ? player.Steps : 0);
  for (int i = 1; i <= count; ++i) {
    if (progress && !progress(i - 1, count)) break;
    if (i == 1) {
      player.ShowFrame();
      RedrawScene();
    } else {
      player.Tick();
    }
    const Image image = capture();
    const std::string path = FramePath(folder, i);
    std::string error;
    if (!WriteBmp(path, image, &error)) {
      host().MsgBox("Unable to write " + path + ": " + error, "Error", MsgButtons::OK, MsgIcon::Critical);
      break;
    }
    paths.push_back(path);
  }
  player.Stop();
  return paths;
}

bool CheckFrameRequest(int fps, int frames) {
  if (fps < 1) {
    host().MsgBox("The speed of animation must large than 1 frame per second.", "Error", MsgButtons::OK,
                  MsgIcon::Critical);
    return false;
  }
  if (frames < 1) {
    host().MsgBox("The number of frames must large than 1.", "Error", MsgButtons::OK, MsgIcon::Critical);
    return false;
  }
  return true;
}

bool SaveAnimation(const std::vector<std::string>& listed, const std::vector<std::string>& selected,
                   const std::string& path, int fps, const std::string& codec,
                   const std::function<bool(int, int)>& progress) {
  if (listed.empty()) {
    host().MsgBox("Generate animation frames first.", "Error", MsgButtons::OK, MsgIcon::Critical);
    return false;
  }
  if (selected.empty()) {
    host().MsgBox("Select some frames first.", "Error", MsgButtons::OK, MsgIcon::Critical);
    return false;
  }
  if (path.empty()) return false;
  auto fail = [] {
    host().MsgBox("There was an error writing the file.", "Error", MsgButtons::OK, MsgIcon::Critical);
    return false;
  };
  // The first listed bitmap gives the size of the film.
  Image first;
  if (!ReadBmp(listed.front(), first)) return fail();
  AviWriter writer;
  std::string error;
  if (!writer.Open(path, first.width, first.height, std::max(1, fps), codec, error)) return fail();
  const int n = static_cast<int>(selected.size());
  for (int i = 0; i < n; ++i) {
    if (progress && !progress(i, n)) {
      writer.Close();
      return false;
    }
    Image frame;
    if (!ReadBmp(selected[static_cast<size_t>(i)], frame) || !writer.Write(frame)) {
      writer.Close();
      return fail();
    }
  }
  if (!writer.Close()) return fail();
  return true;
}

FilmEnd WriteFilm(CAniControl& player, const FilmRequest& request, const std::function<Image()>& draw,
                  const std::function<bool(int, int)>& progress, std::string& error) {
  namespace fs = std::filesystem;
  const std::string part = request.path + ".part";
  AviWriter writer;
  if (!writer.Open(part, request.width, request.height, request.fps, request.codec, error)) {
    std::error_code ec;
    fs::remove(part, ec);
    return FilmEnd::Failed;
  }
  const short step = player.Step, direction = player.RunDirect;
  const bool running = player.Status == 2;
  player.Stop();
  player.RunDirect = 1;
  FilmEnd end = FilmEnd::Written;
  const int n = player.Steps + 1;
  for (int s = 0; s < n; ++s) {
    if (progress && !progress(s, n)) {
      end = FilmEnd::Cancelled;
      break;
    }
    player.Step = static_cast<short>(s);
    player.ShowFrame();
    RecordLoci(player.ID, s == n - 1);
    const Image frame = draw();
    if (frame.width != request.width || frame.height != request.height || !writer.Write(frame)) {
      error = "There was an error writing the file.";
      end = FilmEnd::Failed;
      break;
    }
  }
  if (!writer.Close() && end == FilmEnd::Written) {
    error = "There was an error writing the file.";
    end = FilmEnd::Failed;
  }
  std::error_code ec;
  if (end == FilmEnd::Written) {
    fs::rename(part, request.path, ec);
    if (ec) {
      error = "cannot write " + request.path + ": " + ec.message();
      end = FilmEnd::Failed;
    }
  }
  if (end != FilmEnd::Written) fs::remove(part, ec);
  player.Step = step;
  player.RunDirect = direction;
  player.ShowFrame();
  if (running && player.TimerId) {
    host().EnableTimer(player.TimerId, true);
    player.Status = 2;
  }
  return end;
}

// ---- headless ----------------------------------------------------------------------------

bool RenderDocumentToAvi(const HeadlessFilm& request, std::string& error) {
  if (request.width < 2 || request.height < 2 || request.width > 8192 || request.height > 8192) {
    error = "the size must be between 2x2 and 8192x8192";
    return false;
  }
  if (request.fps < 1) {
    error = "the speed must be at least 1 frame per second";
    return false;
  }
  auto film = [&request](OffscreenContext& context, std::string& why) {
    CAniControl* player = request.playerId.empty() ? (Doc.AniCtrls.count() ? Doc.AniCtrls.Item(1) : nullptr)
                                                   : Doc.AniCtrls.FindById(request.playerId);
    if (!player) {
      why = "no player " + request.playerId;
      return false;
    }
    const FilmRequest film{request.aviPath, request.codec, request.fps, request.width, request.height};
    auto draw = [&context] {
      DrawScene();
      Display();
      return context.ReadPixels();
    };
    return WriteFilm(*player, film, draw, {}, why) == FilmEnd::Written;
  };
  return RunOnHeadlessDocument(request.documentPath, request.width, request.height, film, error);
}

}  // namespace vt
