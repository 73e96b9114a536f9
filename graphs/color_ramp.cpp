#include "graphs/color_ramp.h"

#include <GL/gl.h>

#include <cmath>

#include "document/numtext.h"
#include "expr/expression.h"
#include "render/frame.h"
#include "render/text.h"

namespace vt {

const char* const kRampNames[kRampCount] = {"Rainbow", "Earth", "Fiery", "Marine", "Grey"};

namespace {

struct Stop {
  float pos;
  int r, g, b;
};
struct NamedRamp {
  const char* name;
  int count;
  Stop stops[6];
};

constexpr NamedRamp kRamps[kRampCount] = {
    {"RAINBOW",
     6,
     {{0, 153, 102, 255}, {20, 0, 0, 255}, {40, 0, 255, 0}, {60, 255, 255, 0}, {80, 255, 102, 0}, {100, 255, 0, 0}}},
    {"EARTH", 5, {{0, 0, 0, 128}, {25, 0, 128, 0}, {50, 255, 255, 0}, {75, 0, 255, 255}, {100, 128, 64, 64}}},
    {"FIERY", 5, {{0, 255, 255, 0}, {25, 255, 0, 255}, {50, 0, 255, 255}, {75, 255, 0, 0}, {100, 0, 0, 255}}},
    {"MARINE", 3, {{0, 128, 128, 255}, {50, 0, 100, 100}, {100, 255, 255, 128}}},
    {"GREY", 2, {{0, 200, 200, 200}, {100, 50, 50, 50}}},
};

float Channel(std::uint32_t color, int shift) { return static_cast<float>((color >> shift) & 255u); }

}  // namespace

int RampIndexOf(const std::string& name) {
  std::string n = UpperText(name);
  if (!n.empty() && n[0] == '@') n.erase(0, 1);
  for (int i = 0; i < kRampCount; ++i)
    if (n == UpperText(kRampNames[i])) return i;
  return -1;
}

bool ColorRamp::SetByName() {
  std::string name = UpperText(ColorName);
  if (name.empty()) name = "RAINBOW";
  for (const NamedRamp& r : kRamps) {
    if (name != r.name) continue;
    ColorNum = r.count;
    for (int i = 0; i < r.count; ++i) {
      ColorPos[i] = r.stops[i].pos;
      ColorR[i] = r.stops[i].r;
      ColorG[i] = r.stops[i].g;
      ColorB[i] = r.stops[i].b;
    }
    return true;
  }
  return false;
}

bool ColorRamp::Lookup(float value, float minimum, float range, float rgb[3]) const {
  const int n = ColorNum < 0 ? 0 : (ColorNum > kMaxStops ? kMaxStops : ColorNum);
  if (n == 0) return false;
  const float p = (value - minimum) / range * 100.0f;
  float r = 0, g = 0, b = 0;
  bool found = false;
  for (int i = 0; i + 1 < n; ++i) {
    if (ColorPos[i] <= p && p < ColorPos[i + 1]) {
      const float t = (p - ColorPos[i]) / (ColorPos[i + 1] - ColorPos[i]);
      r = t * static_cast<float>(ColorR[i + 1] - ColorR[i]) + static_cast<float>(ColorR[i]);
      g = t * static_cast<float>(ColorG[i + 1] - ColorG[i]) + static_cast<float>(ColorG[i]);
      b = t * static_cast<float>(ColorB[i + 1] - ColorB[i]) + static_cast<float>(ColorB[i]);
      found = true;
      break;
    }
  }
  if (std::fabs(p - ColorPos[n - 1]) < 0.0001f) {
    r = static_cast<float>(ColorR[n - 1]);
    g = static_cast<float>(ColorG[n - 1]);
    b = static_cast<float>(ColorB[n - 1]);
    found = true;
  }
  if (!found) return false;
  rgb[0] = r / 255.0f;
  rgb[1] = g / 255.0f;
  rgb[2] = b / 255.0f;
  return true;
}

void CornerColoring::Color(float x, float y, float z, float rgb[3]) const {
  auto blend = [&](float c, float lo, float hi) {
    const float t = (c - lo) / (hi - lo);
    for (int k = 0; k < 3; ++k) {
      const float a = Channel(FirstColor, 8 * k), b = Channel(SecondColor, 8 * k);
      const float v = (b - a) * t + a;
      if (std::isfinite(v)) rgb[k] = v / 255.0f;
    }
  };
  switch (FillStyle) {
    case 1: blend(y, MinY, MaxY); break;
    case 2: blend(z, MinZ, MaxZ); break;
    case 3: blend(x, MinX, MaxX); break;
    case 5:
      if (Ramp) Ramp->Lookup(z, MinZ, MaxZ - MinZ, rgb);
      break;
    default:
      for (int k = 0; k < 3; ++k) rgb[k] = Channel(FirstColor, 8 * k) / 255.0f;
      break;
  }
}

void LegendTicks(float minimum, float maximum, float& first, float& step, int& count) {
  float lo = minimum;
  float span = maximum - minimum;
  if (span == 0) {
    lo = 0;
    span = maximum;
  }
  span = std::fabs(span);
  count = 0;
  first = lo;
  step = 1;
  if (!(span > 0) || !std::isfinite(span)) return;
  // The power of ten of the integer part (the floor) of log10(span).
  step = static_cast<float>(std::pow(10.0, std::floor(std::log10(span))));
  const float top = lo + span;
  first = std::ceil(lo / step) * step;
  for (float v = first; v <= top + step * 1e-4f && count < 50; v += step) ++count;
}

void DrawLegend(const ColorRamp& ramp, float minimum, float maximum, float x, float y, float z, float w, float h) {
  if (!HaveContext()) return;
  const float range = maximum - minimum;
  glPushAttrib(GL_ENABLE_BIT | GL_POLYGON_BIT);
  glDisable(GL_LIGHTING);
  glDisable(GL_TEXTURE_2D);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  constexpr int kBands = 40;
  float rgb[3] = {1, 1, 1};
  glBegin(GL_QUAD_STRIP);
  for (int i = 0; i <= kBands; ++i) {
    const float t = static_cast<float>(i) / kBands;
    if (range != 0) ramp.Lookup(minimum + t * range, minimum, range, rgb);
    glColor3fv(rgb);
    glVertex3f(x, y, z + t * h);
    glVertex3f(x + w, y, z + t * h);
  }
  glEnd();
  float first, step;
  int count;
  LegendTicks(minimum, maximum, first, step, count);
  if (range != 0) {
    for (int i = 0; i < count; ++i) {
      const float v = first + step * static_cast<float>(i);
      const float tz = z + (v - minimum) / range * h;
      DrawTextAt(x + w * 1.3f, y, tz, SingleToText(v));
    }
  }
  glPopAttrib();
}

}  // namespace vt
