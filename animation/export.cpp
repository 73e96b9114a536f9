// Film export: the AVI writer over FFmpeg, the frame bitmaps, the checks and
// messages of the export dialogs, and the headless film of vantrel-cli.
#include "animation/export.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libavutil/log.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

#include <stb_image.h>
#include <stb_image_write.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

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

std::vector<FilmCodec> FilmCodecs() {
  std::vector<FilmCodec> out = {{"mjpeg", "Motion JPEG"}, {"mpeg4", "MPEG-4 Part 2"}, {"rawvideo", "Full Frames (Uncompressed)"}};
  if (avcodec_find_encoder_by_name("libx264")) out.push_back({"libx264", "H.264"});
  return out;
}

// ---- the writer ------------------------------------------------------------------

struct AviWriter::Impl {
  AVFormatContext* fmt = nullptr;
  AVCodecContext* cc = nullptr;
  AVStream* stream = nullptr;
  SwsContext* sws = nullptr;
  AVFrame* frame = nullptr;
  AVPacket* packet = nullptr;
  int srcW = 0, srcH = 0;
  bool failed = false;
  bool headerWritten = false;

  ~Impl() {
    if (sws) sws_freeContext(sws);
    av_frame_free(&frame);
    av_packet_free(&packet);
    avcodec_free_context(&cc);
    if (fmt) {
      if (fmt->pb) avio_closep(&fmt->pb);
      avformat_free_context(fmt);
    }
  }

  // Sends a frame (nullptr drains) and writes the packets that come out.
  bool Encode(AVFrame* f) {
    if (avcodec_send_frame(cc, f) < 0) return false;
    for (;;) {
      const int r = avcodec_receive_packet(cc, packet);
      if (r == AVERROR(EAGAIN) || r == AVERROR_EOF) return true;
      if (r < 0) return false;
      av_packet_rescale_ts(packet, cc->time_base, stream->time_base);
      packet->stream_index = stream->index;
      const int w = av_interleaved_write_frame(fmt, packet);
      av_packet_unref(packet);
      if (w < 0) return false;
    }
  }
};

AviWriter::AviWriter() = default;
AviWriter::~AviWriter() = default;

bool AviWriter::Open(const std::string& path, int width, int height, int fps, const std::string& codec,
                     std::string& error) {
  // The encoders' chatter stays out of the program's output.
  av_log_set_level(AV_LOG_ERROR);
  impl_ = std::make_unique<Impl>();
  frames_ = 0;
  Impl& m = *impl_;
  if (width < 2 || height < 2 || fps < 1) {
    error = "bad frame size or rate";
    return false;
  }
  const AVCodec* enc = avcodec_find_encoder_by_name(codec.c_str());
  if (!enc) {
    error = "unknown compressor " + codec;
    return false;
  }
  if (avformat_alloc_output_context2(&m.fmt, nullptr, "avi", path.c_str()) < 0 || !m.fmt) {
    error = "cannot make the film";
    return false;
  }
  m.stream = avformat_new_stream(m.fmt, nullptr);
  m.cc = avcodec_alloc_context3(enc);
  m.packet = av_packet_alloc();
  m.frame = av_frame_alloc();
  if (!m.stream || !m.cc || !m.packet || !m.frame) {
    error = "out of memory";
    return false;
  }
  m.srcW = width;
  m.srcH = height;
  const bool raw = codec == "rawvideo";
  // Chroma halves want even sizes; the odd pixel is dropped.
  m.cc->width = raw ? width : width & ~1;
  m.cc->height = raw ? height : height & ~1;
  m.cc->time_base = AVRational{1, fps};
  m.cc->framerate = AVRational{fps, 1};
  m.cc->gop_size = 12;
  if (codec == "mjpeg") {
    m.cc->pix_fmt = AV_PIX_FMT_YUVJ420P;
    m.cc->flags |= AV_CODEC_FLAG_QSCALE;
    m.cc->global_quality = FF_QP2LAMBDA * 3;
  } else if (raw) {
    m.cc->pix_fmt = AV_PIX_FMT_BGR24;
  } else {
    m.cc->pix_fmt = enc->pix_fmts ? enc->pix_fmts[0] : AV_PIX_FMT_YUV420P;
    if (codec == "mpeg4" || codec == "msmpeg4" || codec == "msmpeg4v2") m.cc->bit_rate = 4000000;
  }
  if (m.fmt->oformat->flags & AVFMT_GLOBALHEADER) m.cc->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  if (avcodec_open2(m.cc, enc, nullptr) < 0) {
    error = "the compressor " + codec + " cannot be opened";
    return false;
  }
  if (avcodec_parameters_from_context(m.stream->codecpar, m.cc) < 0) {
    error = "cannot set the stream format";
    return false;
  }
  m.stream->time_base = m.cc->time_base;
  m.stream->avg_frame_rate = m.cc->framerate;
  if (avio_open(&m.fmt->pb, path.c_str(), AVIO_FLAG_WRITE) < 0) {
    error = "cannot write " + path;
    return false;
  }
  if (avformat_write_header(m.fmt, nullptr) < 0) {
    error = "cannot write " + path;
    return false;
  }
  m.headerWritten = true;
  m.frame->format = m.cc->pix_fmt;
  m.frame->width = m.cc->width;
  m.frame->height = m.cc->height;
  if (av_frame_get_buffer(m.frame, 0) < 0) {
    error = "out of memory";
    return false;
  }
  m.sws = sws_getContext(width, height, AV_PIX_FMT_RGB24, m.cc->width, m.cc->height, m.cc->pix_fmt, SWS_BILINEAR,
                         nullptr, nullptr, nullptr);
  if (!m.sws) {
    error = "no colour conversion";
    return false;
  }
  return true;
}

bool AviWriter::Write(const Image& image) {
  if (!impl_ || !impl_->headerWritten || impl_->failed) return false;
  Impl& m = *impl_;
  if (image.width != m.srcW || image.height != m.srcH ||
      image.rgb.size() < static_cast<size_t>(image.width) * image.height * 3) {
    m.failed = true;
    return false;
  }
  if (av_frame_make_writable(m.frame) < 0) {
    m.failed = true;
    return false;
  }
  const uint8_t* src[1] = {image.rgb.data()};
  const int stride[1] = {image.width * 3};
  sws_scale(m.sws, src, stride, 0, image.height, m.frame->data, m.frame->linesize);
  m.frame->pts = frames_;
  if (!m.Encode(m.frame)) {
    m.failed = true;
    return false;
  }
  ++frames_;
  return true;
}

bool AviWriter::Close() {
  if (!impl_) return false;
  Impl& m = *impl_;
  bool ok = m.headerWritten && !m.failed;
  if (m.headerWritten) {
    if (!m.Encode(nullptr)) ok = false;
    if (av_write_trailer(m.fmt) < 0) ok = false;
  }
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
