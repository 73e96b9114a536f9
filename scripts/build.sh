#!/usr/bin/env bash
# Configures and builds into build/ (or $BUILD_DIR) with Ninja.
set -euo pipefail
cd "$(dirname "$0")/.."
BUILD_DIR="${BUILD_DIR:-build}"
BUILD_TYPE="${BUILD_TYPE:-RelWithDebInfo}"
LAUNCHER=()
# A compiler cache, when there is one, makes rebuilds of unchanged files free.
if command -v ccache >/dev/null; then
  LAUNCHER=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE="$BUILD_TYPE" "${LAUNCHER[@]}" "$@" >/dev/null
cmake --build "$BUILD_DIR" -j"$(nproc)"
