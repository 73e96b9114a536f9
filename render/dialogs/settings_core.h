// The work behind the settings dialogs, without widgets: the view settings
// (frmF14), the axis settings (frmF3, frmF20) and the lights (frmF8). Each
// form is read from the current state, checked as a whole, and written back
// only when every field is good; a refused field shows "Illegal data exist."
// in a box titled "Error" and changes nothing.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "expr/text_prep.h"
#include "graphs/funcurve.h"
#include "graphs/surface.h"
#include "render/view_state.h"

namespace vt {

inline constexpr const char* kIllegalData = "Illegal data exist.";

// One number field as the dialogs take it: through the number filter, then
// read as a Single.
inline bool ReadNumberField(const std::string& text, float& value) { return ReadNumberText(text, value); }

inline void ReportIllegalData() { host().MsgBox(kIllegalData, "Error", MsgButtons::OK, MsgIcon::Critical); }
// A number that reads but lies outside what the setting can take: one box
// that says what is wanted.
inline void ReportOutOfRange(const std::string& what) {
  host().MsgBox(what, "Error", MsgButtons::OK, MsgIcon::Critical);
}

// ---- frmF14, "View Setting" -----------------------------------------------------------
struct ViewSettingsForm {
  int ProjectType = 1;
  // "Min x", "Max x", "Min y", "Max y", "Min z", "Max z".
  std::array<std::string, 6> Limits;
};

inline ViewSettingsForm CurrentViewSettings() {
  ViewSettingsForm f;
  f.ProjectType = View.ProjectType == 2 ? 2 : 1;
  const float v[6] = {BoxMinX, BoxMaxX, BoxMinY, BoxMaxY, BoxMinZ, BoxMaxZ};
  for (int i = 0; i < 6; ++i) f.Limits[static_cast<size_t>(i)] = SingleToText(v[i]);
  return f;
}

// True when applied; false (after the message) when a field was refused.
inline bool ApplyViewSettings(const ViewSettingsForm& f) {
  float v[6];
  for (int i = 0; i < 6; ++i)
    if (!ReadNumberField(f.Limits[static_cast<size_t>(i)], v[i])) {
      ReportIllegalData();
      return false;
    }
  for (int i = 0; i < 6; i += 2)
    if (!(v[i] < v[i + 1])) {
      ReportOutOfRange(std::string("Each minimum must be less than its maximum (") + "xyz"[i / 2] + ").");
      return false;
    }
  View.ProjectType = f.ProjectType == 2 ? 2 : 1;
  BoxMinX = v[0];
  BoxMaxX = v[1];
  BoxMinY = v[2];
  BoxMaxY = v[3];
  BoxMinZ = v[4];
  BoxMaxZ = v[5];
  // Curves and surfaces are cut at the limits when they sample.
  RefreshFunCurves();
  RefreshSurfaces();
  PushSnapshot();
  RedrawScene();
  return true;
}

// ---- frmF8, "Light Properties" ------------------------------------------------------------
// Colours and positions as four numbers each, for light 0 and light 1.
struct LightSettingsForm {
  bool LightingOn = true;
  std::array<bool, 2> Enabled{};
  std::array<std::array<std::string, 4>, 2> Ambient, Diffuse, Specular, Position;
  bool UseGlobalAmbient = true;  // "Global ambient light"
  std::array<std::string, 4> GlobalAmbient;
  bool TwoSides = true;
};

inline LightSettingsForm CurrentLightSettings() {
  LightSettingsForm f;
  f.LightingOn = MainLight.LightingOn;
  for (int l = 0; l < 2; ++l) {
    f.Enabled[static_cast<size_t>(l)] = MainLight.Enabled[l];
    for (int c = 0; c < 4; ++c) {
      f.Ambient[static_cast<size_t>(l)][static_cast<size_t>(c)] = SingleToText(MainLight.Amission[l][c]);
      f.Diffuse[static_cast<size_t>(l)][static_cast<size_t>(c)] = SingleToText(MainLight.Diffuse[l][c]);
      f.Specular[static_cast<size_t>(l)][static_cast<size_t>(c)] = SingleToText(MainLight.Specular[l][c]);
      f.Position[static_cast<size_t>(l)][static_cast<size_t>(c)] = SingleToText(MainLight.Position[l][c]);
    }
  }
  bool any = false;
  for (int c = 0; c < 4; ++c) {
    f.GlobalAmbient[static_cast<size_t>(c)] = SingleToText(MainLight.GlobalAmbient[c]);
    any = any || MainLight.GlobalAmbient[c] != 0;
  }
  f.UseGlobalAmbient = any;
  f.TwoSides = MainLight.TwoSides[0] != 0;
  return f;
}

inline bool ApplyLightSettings(const LightSettingsForm& f) {
  float amb[2][4], dif[2][4], spe[2][4], pos[2][4], glob[4];
  for (int l = 0; l < 2; ++l)
    for (int c = 0; c < 4; ++c) {
      const size_t L = static_cast<size_t>(l), C = static_cast<size_t>(c);
      if (!ReadNumberField(f.Ambient[L][C], amb[l][c]) || !ReadNumberField(f.Diffuse[L][C], dif[l][c]) ||
          !ReadNumberField(f.Specular[L][C], spe[l][c]) || !ReadNumberField(f.Position[L][C], pos[l][c])) {
        ReportIllegalData();
        return false;
      }
    }
  for (int c = 0; c < 4; ++c)
    if (!ReadNumberField(f.GlobalAmbient[static_cast<size_t>(c)], glob[c])) {
      ReportIllegalData();
      return false;
    }
  MainLight.LightingOn = f.LightingOn;
  for (int l = 0; l < 2; ++l) {
    MainLight.Enabled[l] = f.Enabled[static_cast<size_t>(l)];
    for (int c = 0; c < 4; ++c) {
      MainLight.Amission[l][c] = amb[l][c];
      MainLight.Diffuse[l][c] = dif[l][c];
      MainLight.Specular[l][c] = spe[l][c];
      MainLight.Position[l][c] = pos[l][c];
    }
  }
  for (int c = 0; c < 4; ++c) MainLight.GlobalAmbient[c] = f.UseGlobalAmbient ? glob[c] : 0.0f;
  MainLight.TwoSides[0] = f.TwoSides ? 1.0f : 0.0f;
  RedrawScene();
  return true;
}

// ---- frmF3 and frmF20, the axis settings ------------------------------------------------
// The material schemes of the panel lists, in scheme order (1-based).
inline constexpr std::array<const char*, 13> kSchemeNames = {
    "Artdeco", "Autumn", "Glass",  "Metal",  "Neon",     "Recoco", "Santefe",
    "Sheen",   "Silky",  "Spring", "Summer", "Tropical", "Winter"};
// "Square", "Equal" or "Custom" scales.
enum class ScaleChoice { Square = 1, Equal = 2, Custom = 3 };

struct AxisSettingsForm {
  Cls3 Axis;  // the settings object as edited
  ScaleChoice Scales = ScaleChoice::Square;
  std::array<std::string, 3> Scale;  // ScaleX, ScaleY, ScaleZ for Custom
};

inline AxisSettingsForm CurrentAxisSettings() {
  AxisSettingsForm f;
  f.Axis = AxisObject;
  f.Axis.Show = ShowAxis;  // "Show" is the axes' switch of the View menu
  f.Scale = {SingleToText(ScaleX), SingleToText(ScaleY), SingleToText(ScaleZ)};
  if (ScaleX == 1 && ScaleY == 1 && ScaleZ == 1) f.Scales = ScaleChoice::Square;
  else if (ScaleX == ScaleY && ScaleY == ScaleZ) f.Scales = ScaleChoice::Equal;
  else f.Scales = ScaleChoice::Custom;
  return f;
}

// Square: all scales 1. Equal: the x scale for all three. Custom: each its
// own; a scale must be above 0.
inline bool ApplyAxisSettings(const AxisSettingsForm& f) {
  float s[3];
  for (int i = 0; i < 3; ++i)
    if (!ReadNumberField(f.Scale[static_cast<size_t>(i)], s[i]) || !(s[i] > 0)) {
      if (f.Scales == ScaleChoice::Square) {
        s[i] = 1;
        continue;
      }
      ReportIllegalData();
      return false;
    }
  auto scheme = [](int m) { return m >= 1 && m <= static_cast<int>(kSchemeNames.size()); };
  if (!scheme(f.Axis.XYPanelMaterial) || !scheme(f.Axis.XZPanelMaterial) || !scheme(f.Axis.YZPanelMaterial)) {
    ReportIllegalData();
    return false;
  }
  if (!(f.Axis.AxisWidth >= 0.5f && f.Axis.AxisWidth <= 10)) {
    ReportOutOfRange("The axis width must be from 0.5 to 10.");
    return false;
  }
  for (int n : {f.Axis.LabelNumX, f.Axis.LabelNumY, f.Axis.LabelNumZ})
    if (n < 1 || n > 100) {
      ReportOutOfRange("The number of labels must be from 1 to 100.");
      return false;
    }
  AxisObject = f.Axis;
  SetViewToggles(f.Axis.Show, ShowGrid, SnapToGrid, ShowCoordLines);
  switch (f.Scales) {
    case ScaleChoice::Square: ScaleX = ScaleY = ScaleZ = 1; break;
    case ScaleChoice::Equal: ScaleX = ScaleY = ScaleZ = s[0]; break;
    case ScaleChoice::Custom:
      ScaleX = s[0];
      ScaleY = s[1];
      ScaleZ = s[2];
      break;
  }
  SettingsChanged = true;
  PushSnapshot();
  RedrawScene();
  return true;
}

}  // namespace vt
