#include "render/material.h"

#include <GL/gl.h>

#include <cstring>

#include "render/frame.h"

namespace vt {

const char* const kMaterialSchemeNames[kMaterialSchemeCount] = {
    "Artdeco", "Autumn", "Glass", "Metal", "Neon", "Recoco", "Santefe",
    "Sheen", "Silky", "Spring", "Summer", "Tropical", "Winter"};

namespace {

struct Scheme {
  float ambient[4], diffuse[4], specular[4], emission[4];
  float shininess;
};

constexpr Scheme kSchemes[kMaterialSchemeCount] = {
    {{0.937f, 0.09233f, 0.4284f, 0}, {0.5369f, 0.0529f, 0.2455f, 0.8324f}, {0.8053f, 0.7652f, 0.7474f, 0},
     {0, 0, 0, 0}, 106.551296f},
    {{0.09898f, 0.05656f, 0.03206f, 0}, {0.3959f, 0.2262f, 0.1282f, 0}, {1, 0.4644f, 0.4753f, 0}, {0, 0, 0, 0},
     127.30816f},
    {{0.187f, 0.07488f, 0, 0.3475f}, {0.748f, 0.2995f, 0, 0.3475f}, {0.8364f, 0.8364f, 0.8364f, 0.3475f},
     {0, 0, 0, 0.3475f}, 117.9f},
    {{0.1333f, 0.09253f, 0, 0}, {0.497f, 0.3449f, 0, 0}, {1, 0.888f, 0, 0}, {0, 0, 0, 0}, 118.7f},
    {{0, 0, 0, 0}, {0, 0, 0, 0}, {0.6224f, 0.6224f, 0.6224f, 0}, {0.01884f, 0.9403f, 1, 0}, 6.531f},
    {{0.187f, 0.1807f, 0.06723f, 0}, {0.748f, 0.7226f, 0.2689f, 0}, {0.4121f, 0.4121f, 0.4121f, 0},
     {0, 0, 0, 0}, 103.2f},
    {{0.2037f, 0.08325f, 0.08325f, 0}, {0.7996f, 0.3267f, 0.3267f, 0}, {0.3274f, 0.1355f, 0, 0}, {0, 0, 0, 0},
     9.7959168f},
    {{0, 0.001073f, 0.07857f, 0}, {0, 0.004294f, 0.3143f, 0}, {0.3647f, 0.8338f, 0.9091f, 0}, {0, 0, 0, 0},
     81.45f},
    {{0.1711f, 0.1708f, 0.1715f, 0}, {0.6846f, 0.6832f, 0.6861f, 0}, {0.6939f, 0.03356f, 0.3136f, 0},
     {0, 0, 0, 0}, 9.1428608f},
    {{0.254f, 0.2287f, 0.07981f, 0}, {1, 0.9005f, 0.3142f, 0}, {0.8724f, 0.2471f, 0.2542f, 0}, {0, 0, 0, 0},
     128},
    {{0.09898f, 0.05656f, 0.03206f, 0}, {0.3959f, 0.2262f, 0.1282f, 0}, {0.1926f, 0.1101f, 0.06239f, 0},
     {0, 0, 0, 0}, 3.459456f},
    {{0.2261f, 0.1937f, 0.02077f, 0}, {0.9044f, 0.7747f, 0.08307f, 0}, {0.09559f, 0.09559f, 0.09559f, 0},
     {0, 0, 0, 0}, 10},
    {{0.04865f, 0.04865f, 0.04865f, 0}, {0.2054f, 0.2054f, 0.2054f, 0}, {0.6865f, 0.6768f, 0.6842f, 0},
     {0, 0, 0, 0}, 128},
};

}  // namespace

void Cls11::LoadScheme(int scheme) {
  if (scheme < 1 || scheme > kMaterialSchemeCount) return;
  const Scheme& s = kSchemes[scheme - 1];
  MatType = scheme;
  std::memcpy(Ambient, s.ambient, sizeof Ambient);
  std::memcpy(Diffuse, s.diffuse, sizeof Diffuse);
  std::memcpy(Specular, s.specular, sizeof Specular);
  std::memcpy(Emission, s.emission, sizeof Emission);
  Shininess = s.shininess;
}

void Cls11::SetMaterial(int scheme) {
  LoadScheme(scheme);
  if (!HaveContext()) return;
  // The lit alpha is the diffuse alpha; a scheme that leaves it 0 (Neon,
  // whose colour drives the emission) means an opaque material, not an
  // invisible one.
  float diffuse[4] = {Diffuse[0], Diffuse[1], Diffuse[2], Diffuse[3] == 0 ? 1.0f : Diffuse[3]};
  glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, diffuse);
  glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, Specular);
  glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, Shininess);
  glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, Emission);
  glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, Ambient);
}

}  // namespace vt
