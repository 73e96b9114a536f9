// libvantrel_film.so: the AVI writer over FFmpeg behind the plain C interface
// of film_encoder.h.
#include "animation/film_plugin/film_encoder.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libavutil/log.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

#include <cstdio>
#include <string>

namespace {

struct Writer {
  AVFormatContext* fmt = nullptr;
  AVCodecContext* cc = nullptr;
  AVStream* stream = nullptr;
  SwsContext* sws = nullptr;
  AVFrame* frame = nullptr;
  AVPacket* packet = nullptr;
  int srcW = 0, srcH = 0;
  long frames = 0;
  bool failed = false;
  bool headerWritten = false;

  ~Writer() {
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

  // Sets everything up; the reason of a failure in `error`.
  bool Open(const std::string& path, int width, int height, int fps, const std::string& codec, std::string& error) {
    if (width < 2 || height < 2 || fps < 1) {
      error = "bad frame size or rate";
      return false;
    }
    const AVCodec* enc = avcodec_find_encoder_by_name(codec.c_str());
    if (!enc) {
      error = "unknown compressor " + codec;
      return false;
    }
    if (avformat_alloc_output_context2(&fmt, nullptr, "avi", path.c_str()) < 0 || !fmt) {
      error = "cannot make the film";
      return false;
    }
    stream = avformat_new_stream(fmt, nullptr);
    cc = avcodec_alloc_context3(enc);
    packet = av_packet_alloc();
    frame = av_frame_alloc();
    if (!stream || !cc || !packet || !frame) {
      error = "out of memory";
      return false;
    }
    srcW = width;
    srcH = height;
    const bool raw = codec == "rawvideo";
    // Chroma halves want even sizes; the odd pixel is dropped.
    cc->width = raw ? width : width & ~1;
    cc->height = raw ? height : height & ~1;
    cc->time_base = AVRational{1, fps};
    cc->framerate = AVRational{fps, 1};
    cc->gop_size = 12;
    if (codec == "mjpeg") {
      cc->pix_fmt = AV_PIX_FMT_YUVJ420P;
      cc->flags |= AV_CODEC_FLAG_QSCALE;
      cc->global_quality = FF_QP2LAMBDA * 3;
    } else if (raw) {
      cc->pix_fmt = AV_PIX_FMT_BGR24;
    } else {
      cc->pix_fmt = enc->pix_fmts ? enc->pix_fmts[0] : AV_PIX_FMT_YUV420P;
      if (codec == "mpeg4" || codec == "msmpeg4" || codec == "msmpeg4v2") cc->bit_rate = 4000000;
    }
    if (fmt->oformat->flags & AVFMT_GLOBALHEADER) cc->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    if (avcodec_open2(cc, enc, nullptr) < 0) {
      error = "the compressor " + codec + " cannot be opened";
      return false;
    }
    if (avcodec_parameters_from_context(stream->codecpar, cc) < 0) {
      error = "cannot set the stream format";
      return false;
    }
    stream->time_base = cc->time_base;
    stream->avg_frame_rate = cc->framerate;
    if (avio_open(&fmt->pb, path.c_str(), AVIO_FLAG_WRITE) < 0 || avformat_write_header(fmt, nullptr) < 0) {
      error = "cannot write " + path;
      return false;
    }
    headerWritten = true;
    frame->format = cc->pix_fmt;
    frame->width = cc->width;
    frame->height = cc->height;
    if (av_frame_get_buffer(frame, 0) < 0) {
      error = "out of memory";
      return false;
    }
    sws = sws_getContext(width, height, AV_PIX_FMT_RGB24, cc->width, cc->height, cc->pix_fmt, SWS_BILINEAR, nullptr,
                         nullptr, nullptr);
    if (!sws) {
      error = "no colour conversion";
      return false;
    }
    return true;
  }

  bool Write(const unsigned char* rgb, int width, int height) {
    if (!headerWritten || failed || width != srcW || height != srcH || !rgb || av_frame_make_writable(frame) < 0) {
      failed = true;
      return false;
    }
    const uint8_t* src[1] = {rgb};
    const int stride[1] = {width * 3};
    sws_scale(sws, src, stride, 0, height, frame->data, frame->linesize);
    frame->pts = frames;
    if (!Encode(frame)) {
      failed = true;
      return false;
    }
    ++frames;
    return true;
  }

  bool Close() {
    bool ok = headerWritten && !failed;
    if (headerWritten) {
      if (!Encode(nullptr)) ok = false;
      if (av_write_trailer(fmt) < 0) ok = false;
    }
    return ok;
  }
};

int HasEncoder(const char* name) { return avcodec_find_encoder_by_name(name) != nullptr; }

void* Open(const char* path, int width, int height, int fps, const char* codec, char* error, int errorSize) {
  // The encoders' chatter stays out of the program's output.
  av_log_set_level(AV_LOG_ERROR);
  auto* w = new Writer;
  std::string why;
  if (w->Open(path, width, height, fps, codec, why)) return w;
  delete w;
  if (error && errorSize > 0) std::snprintf(error, static_cast<size_t>(errorSize), "%s", why.c_str());
  return nullptr;
}

int Write(void* w, const unsigned char* rgb, int width, int height) {
  return static_cast<Writer*>(w)->Write(rgb, width, height);
}

int Close(void* w) {
  auto* writer = static_cast<Writer*>(w);
  const bool ok = writer->Close();
  delete writer;
  return ok;
}

void Discard(void* w) { delete static_cast<Writer*>(w); }

const VtFilmEncoderApi kApi = {kVtFilmEncoderVersion, &HasEncoder, &Open, &Write, &Close, &Discard};

}  // namespace

extern "C" __attribute__((visibility("default"))) const VtFilmEncoderApi* vt_film_encoder_api() { return &kApi; }
