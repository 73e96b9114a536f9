#!/usr/bin/env bash
# Configures and builds into build/ (or $BUILD_DIR) with Ninja.
set -euo pipefail
cd "$(dirname "$0")/.."
BUILD_DIR="${BUILD_DIR:-build}"
BUILD_TYPE="${BUILD_TYPE:-RelWithDebInfo}"
cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE="$BUILD_TYPE" "$@" >/dev/null
cmake --build "$BUILD_DIR" -j"$(nproc)"
