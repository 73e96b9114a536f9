#include "render/picture.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "document/globals.h"
#include "render/frame.h"

namespace vt {

namespace {

// Pass-through marks: a negative mark, then its values.
constexpr float kWidthMark = -1001;    // width
constexpr float kStippleMark = -1002;  // factor (0: solid), pattern
constexpr float kTextMark = -1003;     // index into g_texts; the next bitmap token places it

bool g_capturing = false;
bool g_controlsOut = false;
std::vector<PictureText> g_texts;     // recorded while compiling
std::vector<bool> g_textPlaced;       // placed in window coordinates already
std::vector<float> g_rise;            // base line above the raster position

std::uint8_t Byte(float v) { return static_cast<std::uint8_t>(std::lround(std::clamp(v, 0.0f, 1.0f) * 255.0f)); }

struct Vertex {
  float x, y, r, g, b, a;
};

struct Parser {
  const std::vector<GLfloat>& buf;
  size_t i = 0;
  size_t n;
  float width = 1;
  int factor = 0;
  std::uint16_t pattern = 0;
  int pendingText = -1;
  float height;
  Picture& out;
  bool shapes;

  Vertex ReadVertex() {
    Vertex v{buf[i], height - buf[i + 1], buf[i + 3], buf[i + 4], buf[i + 5], buf[i + 6]};
    i += 7;  // x, y, z, r, g, b, a
    return v;
  }

  static bool Same(float a, float b) { return std::fabs(a - b) < 0.01f; }

  bool SameLook(const PictureShape& s, PictureShape::Kind kind, const Vertex& v) const {
    return s.kind == kind && s.r == Byte(v.r) && s.g == Byte(v.g) && s.b == Byte(v.b) && s.a == Byte(v.a) &&
           (kind == PictureShape::Fill || (s.width == width && s.dash == (factor ? pattern : 0)));
  }

  PictureShape Start(PictureShape::Kind kind, const Vertex& v) const {
    PictureShape s;
    s.kind = kind;
    s.r = Byte(v.r);
    s.g = Byte(v.g);
    s.b = Byte(v.b);
    s.a = Byte(v.a);
    s.width = width;
    s.dash = factor ? pattern : 0;
    s.dashFactor = std::max(1, factor);
    return s;
  }

  void Line(const Vertex& a, const Vertex& b) {
    if (!shapes) return;
    if (!out.shapes.empty()) {
      PictureShape& last = out.shapes.back();
      const size_t k = last.xy.size();
      if (!last.closed && SameLook(last, PictureShape::Stroke, a) && Same(last.xy[k - 2], a.x) &&
          Same(last.xy[k - 1], a.y)) {
        // A strip continues; one that comes back to its start closes.
        if (Same(last.xy[0], b.x) && Same(last.xy[1], b.y) && k >= 6) last.closed = true;
        else last.xy.insert(last.xy.end(), {b.x, b.y});
        return;
      }
    }
    PictureShape s = Start(PictureShape::Stroke, a);
    s.xy = {a.x, a.y, b.x, b.y};
    out.shapes.push_back(std::move(s));
  }

  void Polygon(const std::vector<Vertex>& vs) {
    if (!shapes || vs.size() < 3) return;
    // A fan arrives as triangles (v0, vk, vk+1): each one that shares the
    // first corner and the last edge of the polygon before grows it.
    if (vs.size() == 3 && !out.shapes.empty()) {
      PictureShape& last = out.shapes.back();
      const size_t k = last.xy.size();
      if (SameLook(last, PictureShape::Fill, vs[0]) && Same(last.xy[0], vs[0].x) && Same(last.xy[1], vs[0].y) &&
          Same(last.xy[k - 2], vs[1].x) && Same(last.xy[k - 1], vs[1].y)) {
        last.xy.insert(last.xy.end(), {vs[2].x, vs[2].y});
        return;
      }
    }
    PictureShape s = Start(PictureShape::Fill, vs[0]);
    s.closed = true;
    for (const Vertex& v : vs) s.xy.insert(s.xy.end(), {v.x, v.y});
    out.shapes.push_back(std::move(s));
  }

  void Run() {
    while (i < n) {
      const GLint token = static_cast<GLint>(buf[i++]);
      switch (token) {
        case GL_PASS_THROUGH_TOKEN: {
          const float mark = buf[i++];
          if (mark == kWidthMark && i + 1 < n) {
            width = buf[i + 1];
            i += 2;
          } else if (mark == kStippleMark && i + 3 < n) {
            factor = static_cast<int>(buf[i + 1]);
            pattern = static_cast<std::uint16_t>(buf[i + 3]);
            i += 4;
          } else if (mark == kTextMark && i + 1 < n) {
            pendingText = static_cast<int>(buf[i + 1]);
            i += 2;
          }
          break;
        }
        case GL_POINT_TOKEN: {
          const Vertex v = ReadVertex();
          if (shapes) {
            PictureShape s = Start(PictureShape::Dot, v);
            s.width = 3;
            s.xy = {v.x, v.y};
            out.shapes.push_back(std::move(s));
          }
          break;
        }
        case GL_LINE_TOKEN:
        case GL_LINE_RESET_TOKEN: {
          const Vertex a = ReadVertex();
          const Vertex b = ReadVertex();
          Line(a, b);
          break;
        }
        case GL_POLYGON_TOKEN: {
          const int count = static_cast<int>(buf[i++]);
          std::vector<Vertex> vs;
          for (int k = 0; k < count; ++k) vs.push_back(ReadVertex());
          Polygon(vs);
          break;
        }
        case GL_BITMAP_TOKEN:
        case GL_DRAW_PIXEL_TOKEN:
        case GL_COPY_PIXEL_TOKEN: {
          const Vertex v = ReadVertex();
          if (token == GL_BITMAP_TOKEN && pendingText >= 0 && pendingText < static_cast<int>(g_texts.size())) {
            PictureText t = g_texts[pendingText];
            t.x = v.x;
            t.y = v.y - g_rise[pendingText];
            out.texts.push_back(std::move(t));
          }
          pendingText = -1;
          break;
        }
        default:
          i = n;  // not a token: the buffer is not what feedback writes
      }
    }
  }
};

}  // namespace

bool CapturingPicture() { return g_capturing; }
bool LeavingControlsOut() { return g_capturing && g_controlsOut; }

void CaptureText(const PictureText& text, float rise) {
  if (!g_capturing || text.text.empty()) return;
  g_texts.push_back(text);
  g_textPlaced.push_back(false);
  g_rise.push_back(rise);
  glPassThrough(kTextMark);
  glPassThrough(static_cast<GLfloat>(g_texts.size() - 1));
  // A bitmap of one clear bit: feedback reports the raster position it is
  // drawn at. (An empty bitmap would not be kept in a display list.)
  static const GLubyte kClear[4] = {0, 0, 0, 0};
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glBitmap(1, 1, 0, 0, 0, 0, kClear);
  glPopClientAttrib();
}

void CaptureTextInWindow(const std::string& text, float wx, float wy) {
  if (!g_capturing || text.empty()) return;
  PictureText t;
  t.text = text;
  t.x = wx;
  t.y = wy;
  g_texts.push_back(std::move(t));
  g_textPlaced.push_back(true);
  g_rise.push_back(0);
}

void CaptureLineState(float width, bool dashed, int factor, std::uint16_t pattern) {
  if (!g_capturing) return;
  glPassThrough(kWidthMark);
  glPassThrough(width);
  glPassThrough(kStippleMark);
  glPassThrough(dashed ? static_cast<GLfloat>(factor) : 0.0f);
  glPassThrough(static_cast<GLfloat>(pattern));
}

bool CapturePicture(Picture& out, std::string& error, bool controls) {
  out = Picture();
  out.width = std::max(1, CanvasWidth);
  out.height = std::max(1, CanvasHeight);
  const bool space = SceneMode == 3;
  g_texts.clear();
  g_textPlaced.clear();
  g_rise.clear();
  g_capturing = true;
  g_controlsOut = !controls;
  DrawScene();
  g_capturing = false;
  g_controlsOut = false;
  bool ok = true;
  if (space) {
    // The frame without glyphs: its texts come on top as texts.
    DrawFrame();
    out.raster.width = out.width;
    out.raster.height = out.height;
    std::vector<std::uint8_t> rows(static_cast<size_t>(out.width) * out.height * 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, out.width, out.height, GL_RGB, GL_UNSIGNED_BYTE, rows.data());
    out.raster.rgb.resize(rows.size());
    const size_t stride = static_cast<size_t>(out.width) * 3;
    for (int y = 0; y < out.height; ++y)
      std::copy_n(rows.data() + (out.height - 1 - y) * stride, stride, out.raster.rgb.data() + y * stride);
  }
  std::vector<GLfloat> buf(size_t(1) << 20);
  GLint count = -1;
  for (;;) {
    glFeedbackBuffer(static_cast<GLsizei>(buf.size()), GL_3D_COLOR, buf.data());
    glRenderMode(GL_FEEDBACK);
    DrawFrame();
    count = glRenderMode(GL_RENDER);
    if (count >= 0 || buf.size() >= (size_t(1) << 27)) break;
    buf.resize(buf.size() * 4);
  }
  if (count < 0) {
    error = "the picture has too many shapes";
    ok = false;
  } else {
    Parser p{buf, 0, static_cast<size_t>(count), 1, 0, 0, -1, static_cast<float>(out.height), out, !space};
    p.Run();
    for (size_t k = 0; k < g_texts.size(); ++k) {
      if (!g_textPlaced[k]) continue;
      PictureText t = g_texts[k];
      t.y = out.height - t.y;
      out.texts.push_back(std::move(t));
    }
  }
  g_texts.clear();
  g_textPlaced.clear();
  g_rise.clear();
  DrawScene();  // the list as the canvas shows it
  return ok;
}

}  // namespace vt
