// Cls15: picture files (BMP, JPG, GIF) as two-dimensional textures, scaled
// to sides that are powers of two. The surfaces bind their texture through
// CreateMapImage while their drawing is compiled into the scene's list, so
// each call records the bind and the image into the list; the decoded and
// scaled picture, and the texture name, are kept per path.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vt {

class Cls15 {
 public:
  unsigned int TextureName = 0;  // the generated texture name

  // Rows of RGBA (or RGB, comps 3) bytes, top-down, to RGB rows bottom-up
  // (the order GL reads).
  static std::vector<std::uint8_t> FixPictureRGBA(const std::uint8_t* pixels, int width, int height, int comps);
  static int max(int a, int b) { return a > b ? a : b; }
  static int min(int a, int b) { return a < b ? a : b; }
  // The side a texture gets: a power of two by the base-2 logarithm (to the
  // nearest), at most the limit.
  static int PowerOfTwoSide(int side, int limit);
  // Scales the RGB image to power-of-two sides within the larger of the
  // pipeline's maximum texture size and 256 (gluScaleImage). False after the
  // box "ValidateTextureSize : gluScaleImage failure".
  static bool ScaleImg(std::vector<std::uint8_t>& rgb, int& width, int& height);
  // Reads the picture into RGB rows bottom-up. False when it cannot be read.
  static bool LoadBMP(const std::string& path, std::vector<std::uint8_t>& rgb, int& width, int& height);
  // The texture of a picture file: "BMP", "JPG" and "GIF" endings (any case)
  // load, any other ending loads nothing. Binds the texture to the 2D target
  // with the image and linear filters. False when nothing was bound.
  bool LoadGLTextures(const std::string& path, int* width = nullptr, int* height = nullptr);
  // The entry of the surfaces: the texture of the picture, its size.
  bool CreateMapImage(const std::string& path, int& width, int& height) {
    return LoadGLTextures(path, &width, &height);
  }
};

// Forgets the kept pictures and names (the context is gone).
void ForgetTextures();

}  // namespace vt
