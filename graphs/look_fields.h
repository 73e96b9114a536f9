// The look of a sampled surface as its dialogs show it (colour, ramp,
// material, polygon mode, smoothness, transparency, texture), shared by the
// surface form and the forms of the swept surfaces, with the moves between
// these fields and an object (CSurface, CSurRot, CStretch).
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

#include "document/numtext.h"
#include "document/objects.h"
#include "graphs/color_ramp.h"

namespace vt {

struct SurfaceLookFields {
  int fillStyle = 5;  // 1..3 two colours along x, y, z; 4 one colour; 5 ramp
  std::uint32_t firstColor = RGB(0, 128, 255), secondColor = RGB(255, 0, 0);
  // Into kRampNames; kRampCount is the object's own ramp (customRamp, a name
  // that is none of the five), which stays as it is.
  int rampIndex = 0;
  std::string customRamp;
  int material = 0;  // 0 none, 1..13 the schemes
  int show = 3;      // 1 points, 2 wire, 3 filled
  int smoothness = 3;
  bool showTrans = false;
  std::string transAlpha = "0.5";
  bool showTex = false;
  std::string texName;
  int texMode = 1;
};

template <class Surface>
void LoadLookFields(const Surface& s, SurfaceLookFields& f) {
  f.fillStyle = s.FillStyle >= 1 && s.FillStyle <= 5 ? s.FillStyle : 4;
  f.firstColor = s.FirstColor;
  f.secondColor = s.SecondColor;
  f.rampIndex = RampIndexOf(s.Ramp.ColorName);
  f.customRamp.clear();
  if (f.rampIndex < 0) {
    f.rampIndex = kRampCount;
    f.customRamp = s.Ramp.ColorName;
  }
  f.material = s.Material >= 0 && s.Material <= 13 ? s.Material : 0;
  f.show = s.Show >= 1 && s.Show <= 3 ? s.Show : 3;
  f.smoothness = s.Smoothness >= 1 && s.Smoothness <= 3 ? s.Smoothness : 3;
  f.showTrans = s.ShowTrans;
  f.transAlpha = SingleToText(s.TransAlpha);
  f.showTex = s.ShowTex;
  f.texName = s.TexName;
  f.texMode = s.TexMode == 2 ? 2 : 1;
}

// The alpha is taken only while transparency is on (its field is checked
// only then); otherwise the object keeps the one it has.
template <class Surface>
void StoreLookFields(const SurfaceLookFields& f, Surface& s) {
  s.FillStyle = std::clamp(f.fillStyle, 1, 5);
  s.FirstColor = f.firstColor;
  s.SecondColor = f.secondColor;
  if (f.rampIndex >= 0 && f.rampIndex < kRampCount) {
    s.Ramp.ColorName = kRampNames[f.rampIndex];
    s.Ramp.SetByName();
  }
  s.Material = std::clamp(f.material, 0, 13);
  s.Show = std::clamp(f.show, 1, 3);
  s.Smoothness = std::clamp(f.smoothness, 1, 3);
  s.ShowTrans = f.showTrans;
  if (f.showTrans) s.TransAlpha = Sng(Val(f.transAlpha));
  s.ShowTex = f.showTex;
  s.TexName = f.texName;
  s.TexMode = f.texMode == 2 ? 2 : 1;
}

}  // namespace vt
