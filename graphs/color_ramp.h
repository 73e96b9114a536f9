// Colour of a surface's corners: two plain colours blended along an axis,
// one plain colour, or a named ramp of stops; the ramp's legend. Shared by
// CSurface and the swept surfaces (CSurRot, CStretch).
#pragma once

#include <cstdint>
#include <string>

namespace vt {

// A ramp: ColorNum stops (1 to 6) at ColorPos percent of the range, with
// channels of 0 to 255.
struct ColorRamp {
  static constexpr int kMaxStops = 6;
  std::string ColorName = "Rainbow";
  int ColorNum = 0;
  float ColorPos[kMaxStops] = {};
  int ColorR[kMaxStops] = {}, ColorG[kMaxStops] = {}, ColorB[kMaxStops] = {};

  // Loads the stops of the named ramp ("Rainbow", "Earth", "Fiery", "Marine",
  // "Grey", compared in upper case; an empty name is "Rainbow"). Another name
  // leaves the stops as they are. True when the name was one of the five.
  bool SetByName();
  // The colour of value in [minimum, minimum + range], channels 0 to 1.
  // Outside every segment rgb is left as it was (and false comes back).
  bool Lookup(float value, float minimum, float range, float rgb[3]) const;
};

// The names of the ramps, in the order of the dialog's list.
constexpr int kRampCount = 5;
extern const char* const kRampNames[kRampCount];
// The index of a ramp name in kRampNames (upper case or not, with or without
// the mark "@" that the swept surfaces' records put before it); -1 for a
// name that is none of the five.
int RampIndexOf(const std::string& name);

// The colour of one corner by FillStyle: 1, 2, 3 blend FirstColor to
// SecondColor along y, z, x by the corner's place in the box (the order of
// the dialog's list); 4 is FirstColor; 5 the ramp along z (the height). rgb
// keeps its value where the rule gives none.
struct CornerColoring {
  int FillStyle = 4;
  std::uint32_t FirstColor = 0, SecondColor = 0;
  const ColorRamp* Ramp = nullptr;
  float MinX = 0, MaxX = 0, MinY = 0, MaxY = 0, MinZ = 0, MaxZ = 0;
  void Color(float x, float y, float z, float rgb[3]) const;
};

// The legend of a ramp: a column of the ramp's colours from minimum to
// maximum standing up along z from (x, y, z) in the current frame, height h
// and width w along x, with labels at round values. Needs a current context.
void DrawLegend(const ColorRamp& ramp, float minimum, float maximum, float x, float y, float z, float w, float h);
// The round values the legend labels: the span is maximum - minimum (when 0,
// the minimum counts as 0 and the span is the maximum); the step is the
// power of ten of the integer part of log10(span).
void LegendTicks(float minimum, float maximum, float& first, float& step, int& count);

}  // namespace vt
