#include "render/texture.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <stb_image.h>

#include <cctype>
#include <cmath>
#include <map>

#include "document/host.h"
#include "render/frame.h"

namespace vt {

namespace {

struct KeptPicture {
  std::vector<std::uint8_t> rgb;
  int width = 0, height = 0;
  unsigned int name = 0;
};

// Never destroyed: a context may be released while statics are torn down.
std::map<std::string, KeptPicture>& Kept() {
  static auto* kept = new std::map<std::string, KeptPicture>;
  return *kept;
}

}  // namespace

void ForgetTextures() { Kept().clear(); }

std::vector<std::uint8_t> Cls15::FixPictureRGBA(const std::uint8_t* pixels, int width, int height, int comps) {
  std::vector<std::uint8_t> out;
  if (!pixels || width <= 0 || height <= 0 || comps < 3) return out;
  out.resize(static_cast<size_t>(width) * static_cast<size_t>(height) * 3);
  for (int y = 0; y < height; ++y) {
    const std::uint8_t* src = pixels + static_cast<size_t>(height - 1 - y) * static_cast<size_t>(width) * comps;
    std::uint8_t* dst = &out[static_cast<size_t>(y) * static_cast<size_t>(width) * 3];
    for (int x = 0; x < width; ++x) {
      dst[x * 3] = src[x * comps];
      dst[x * 3 + 1] = src[x * comps + 1];
      dst[x * 3 + 2] = src[x * comps + 2];
    }
  }
  return out;
}

int Cls15::PowerOfTwoSide(int side, int limit) {
  if (side < 1) side = 1;
  int p = 1 << static_cast<int>(std::lround(std::log2(static_cast<double>(side))));
  while (p > limit && p > 1) p >>= 1;
  return p;
}

bool Cls15::ScaleImg(std::vector<std::uint8_t>& rgb, int& width, int& height) {
  GLint maxSize = 0;
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxSize);
  const int limit = max(maxSize, 256);
  const int w = PowerOfTwoSide(width, limit), h = PowerOfTwoSide(height, limit);
  if (w == width && h == height) return true;
  std::vector<std::uint8_t> out(static_cast<size_t>(w) * static_cast<size_t>(h) * 3);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  if (gluScaleImage(GL_RGB, width, height, GL_UNSIGNED_BYTE, rgb.data(), w, h, GL_UNSIGNED_BYTE, out.data()) != 0) {
    host().MsgBox("ValidateTextureSize : gluScaleImage failure", "Error");
    return false;
  }
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
  rgb.swap(out);
  width = w;
  height = h;
  return true;
}

bool Cls15::LoadBMP(const std::string& path, std::vector<std::uint8_t>& rgb, int& width, int& height) {
  int w = 0, h = 0, comps = 0;
  stbi_uc* data = stbi_load(path.c_str(), &w, &h, &comps, 3);
  if (!data) return false;
  rgb = FixPictureRGBA(data, w, h, 3);
  stbi_image_free(data);
  width = w;
  height = h;
  return !rgb.empty();
}

bool Cls15::LoadGLTextures(const std::string& path, int* width, int* height) {
  if (path.size() < 3) return false;
  std::string ending = path.substr(path.size() - 3);
  for (char& c : ending) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (ending != "BMP" && ending != "JPG" && ending != "GIF") return false;
  if (!HaveContext()) return false;
  auto found = Kept().find(path);
  if (found == Kept().end()) {
    KeptPicture pic;
    if (!LoadBMP(path, pic.rgb, pic.width, pic.height)) return false;
    if (!ScaleImg(pic.rgb, pic.width, pic.height)) return false;
    found = Kept().emplace(path, std::move(pic)).first;
  }
  KeptPicture& pic = found->second;
  if (!pic.name) glGenTextures(1, &pic.name);
  TextureName = pic.name;
  glBindTexture(GL_TEXTURE_2D, pic.name);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glTexImage2D(GL_TEXTURE_2D, 0, 4, pic.width, pic.height, 0, GL_RGB, GL_UNSIGNED_BYTE, pic.rgb.data());
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  if (width) *width = pic.width;
  if (height) *height = pic.height;
  return true;
}

}  // namespace vt
