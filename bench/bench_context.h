// The offscreen canvas the frame benchmarks draw on: 800 x 600, made once per
// program; a machine without one ends the benchmark with a message.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "render/offscreen.h"

namespace vt::bench {

constexpr int kWidth = 800;
constexpr int kHeight = 600;

inline OffscreenContext& Context() {
  static OffscreenContext ctx;
  if (!ctx.valid()) {
    std::string error;
    if (!ctx.Create(kWidth, kHeight, error)) {
      std::fprintf(stderr, "no offscreen context: %s\n", error.c_str());
      std::exit(1);
    }
  }
  return ctx;
}

}  // namespace vt::bench
