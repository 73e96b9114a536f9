// Cls11: a material of the fixed-function pipeline with thirteen named
// schemes, set by the objects that draw surfaces.
#pragma once

namespace vt {

// The scheme names, in the order of the lists of the settings dialogs: the
// number of a list entry (1-based) is the scheme.
constexpr int kMaterialSchemeCount = 13;
extern const char* const kMaterialSchemeNames[kMaterialSchemeCount];

class Cls11 {
 public:
  int MatType = 0;  // the scheme last set
  float Emission[4] = {0, 0, 0, 1};
  float Shininess = 0;
  float Specular[4] = {0, 0, 0, 1};
  float Diffuse[4] = {0.8f, 0.8f, 0.8f, 1};
  float Ambient[4] = {0.2f, 0.2f, 0.2f, 1};

  // Fills the arrays from the scheme (1 to 13; any other number keeps them as
  // they are), then sets diffuse, specular, shininess, emission and ambient
  // on front and back faces, in this order.
  void SetMaterial(int scheme);
  // Fills the arrays only (no GL call).
  void LoadScheme(int scheme);
};

}  // namespace vt
