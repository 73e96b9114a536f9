// The view and axis settings kept with the document: optional fields at the
// end of the GL record, after the marker "VS1", written only when a setting
// differs from its default, so that a document without them reads as
// before and older readers pass over them. Fields added later (the shadow
// and the axis scales) come last and read as defaults when a record ends
// before them.
#include <array>
#include <cmath>
#include <exception>
#include <string>

#include "document/globals.h"
#include "document/numtext.h"
#include "persist/record.h"
#include "render/view_state.h"

namespace vt {

namespace {

constexpr const char* kMarker = "VS1";

struct Kept {
  int projectType = 1;
  std::array<float, 6> box{-500, 500, -500, 500, -500, 500};
  Cls3 axis;
  std::array<float, 3> scale{1, 1, 1};
};

Kept Current() {
  Kept k;
  k.projectType = View.ProjectType;
  k.box = {BoxMinX, BoxMaxX, BoxMinY, BoxMaxY, BoxMinZ, BoxMaxZ};
  k.axis = AxisObject;
  k.scale = {ScaleX, ScaleY, ScaleZ};
  return k;
}

std::string Fields(const Kept& k) {
  const Cls3& a = k.axis;
  std::string s = std::to_string(k.projectType);
  for (float v : k.box) s += " " + SingleToText(v);
  auto b = [](bool v) { return " " + BoolField(v); };
  auto n = [](long v) { return " " + std::to_string(v); };
  s += " " + SingleToText(a.AxisWidth) + b(a.ShowSecondaryLabel) + b(a.ShowPI) + n(a.LabelNumX) + n(a.LabelNumY) +
       n(a.LabelNumZ) + b(a.ShowprimaryGrid) + b(a.ShowSecondaryGrid) + b(a.ShowBackground) + n(a.BackColor) +
       n(a.BackColor2) + b(a.BetterFonts) + " " + TextField(a.TitleX) + " " + TextField(a.TitleY) + " " +
       TextField(a.TitleZ) + b(a.ShowXYPanel) + b(a.ShowXZPanel) + b(a.ShowYZPanel) + n(a.XYPanelMaterial) +
       n(a.XZPanelMaterial) + n(a.YZPanelMaterial) + n(a.AxisColor) + b(a.ShowShadow);
  for (float v : k.scale) s += " " + SingleToText(v);
  return s;
}

}  // namespace

std::string SceneSettingsFields() {
  const std::string now = Fields(Current());
  return now == Fields(Kept()) ? std::string() : std::string(" ") + kMarker + " " + now;
}

void ResetSceneSettings() {
  const bool show = AxisObject.Show;
  View.ProjectType = 1;
  BoxMinX = BoxMinY = BoxMinZ = -500;
  BoxMaxX = BoxMaxY = BoxMaxZ = 500;
  AxisObject = Cls3();
  AxisObject.Show = show;
  ScaleX = ScaleY = ScaleZ = 1;
}

void ReadSceneSettings(RecordReader& r) {
  // What the record does not carry is the default.
  Kept k;
  try {
    if (!r.AtEnd() && r.Text() == kMarker) {
      Cls3& a = k.axis;
      k.projectType = r.Int() == 2 ? 2 : 1;
      for (float& v : k.box) v = r.Single();
      a.AxisWidth = r.Single();
      a.ShowSecondaryLabel = r.Bool();
      a.ShowPI = r.Bool();
      a.LabelNumX = r.Int();
      a.LabelNumY = r.Int();
      a.LabelNumZ = r.Int();
      a.ShowprimaryGrid = r.Bool();
      a.ShowSecondaryGrid = r.Bool();
      a.ShowBackground = r.Bool();
      a.BackColor = static_cast<std::uint32_t>(r.Long());
      a.BackColor2 = static_cast<std::uint32_t>(r.Long());
      a.BetterFonts = r.Bool();
      a.TitleX = r.FramedText();
      a.TitleY = r.FramedText();
      a.TitleZ = r.FramedText();
      a.ShowXYPanel = r.Bool();
      a.ShowXZPanel = r.Bool();
      a.ShowYZPanel = r.Bool();
      a.XYPanelMaterial = r.Int();
      a.XZPanelMaterial = r.Int();
      a.YZPanelMaterial = r.Int();
      a.AxisColor = static_cast<std::uint32_t>(r.Long());
      if (!r.AtEnd()) {
        a.ShowShadow = r.Bool();
        for (float& v : k.scale) {
          v = r.Single();
          if (!(v > 0) || !std::isfinite(v)) v = 1;  // a scale must be above 0
        }
      }
    }
  } catch (const std::exception&) {
    k = Kept();  // a damaged tail costs the settings only
  }
  View.ProjectType = k.projectType;
  BoxMinX = k.box[0], BoxMaxX = k.box[1], BoxMinY = k.box[2], BoxMaxY = k.box[3], BoxMinZ = k.box[4],
  BoxMaxZ = k.box[5];
  k.axis.Show = AxisObject.Show;
  AxisObject = k.axis;
  ScaleX = k.scale[0], ScaleY = k.scale[1], ScaleZ = k.scale[2];
}

}  // namespace vt
