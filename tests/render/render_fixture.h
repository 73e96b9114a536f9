// The fixture of the render tests: one offscreen context for the whole test
// program (made current and initialised again before each test, since other
// tests may make and drop contexts of their own), a fresh document, and a
// plane scene of 160 x 120 pixels at 10 pixels to the unit.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>

#include "document/document.h"
#include "render/offscreen.h"
#include "support/fixtures.h"

namespace vt::test {

using Rgb = std::array<int, 3>;

class RenderTest : public DocumentTest {
 protected:
  static constexpr int kW = 160;
  static constexpr int kH = 120;

  void SetUp() override;
  void TearDown() override;

  static OffscreenContext& Context();

  // Sets the canvas to w x h pixels with the view `unitsHigh` units high.
  void SetCanvas(int w, int h, float unitsHigh);
  // DrawScene, Display, and the picture read back. With VT_DUMP set to a
  // folder, each picture is also written there as a PNG (for looking at a
  // failing test).
  void Frame();
  // Display alone, and the picture read back.
  void Repaint();

  // Window position (x right, y up, origin at the lower left corner of the
  // canvas) of a scene point, with the matrices of the last compiled list.
  bool WindowOf(float x, float y, float z, double& wx, double& wy) const;
  // Colour of the pixel with window coordinates (px, py), y up.
  Rgb Pixel(int px, int py) const;
  // Colour of the pixel a scene point falls on.
  Rgb At(float x, float y, float z = 0) const;
  // Number of pixels that pass `is` (by default: darker than mid grey) in the
  // window rectangle, y up, both corners included.
  int DarkPixels(int x0, int y0, int x1, int y1, const std::function<bool(const Rgb&)>& is = IsDark) const;
  // The same for the window rectangle around two scene points.
  int DarkPixelsAround(float x0, float y0, float x1, float y1, float z = 0) const;

  static bool IsWhite(const Rgb& c) { return c[0] > 245 && c[1] > 245 && c[2] > 245; }
  // Dark: black or dark grey (a pure colour is not dark).
  static bool IsDark(const Rgb& c) { return c[0] < 140 && c[1] < 140 && c[2] < 140; }
  // Dark within one pixel of where the scene point falls (for lines that may
  // lie on a pixel edge).
  bool DarkNear(float x, float y, float z = 0) const { return AnyNear(x, y, z, 1, IsDark); }
  // Some pixel within `radius` pixels of where the scene point falls passes `is`.
  bool AnyNear(float x, float y, float z, int radius, const std::function<bool(const Rgb&)>& is) const;
  static bool Near(const Rgb& c, int r, int g, int b, int tol = 30) {
    return std::abs(c[0] - r) <= tol && std::abs(c[1] - g) <= tol && std::abs(c[2] - b) <= tol;
  }

  Image image_;
  int width_ = kW;
  int height_ = kH;
};

}  // namespace vt::test
