#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test: unit and render tests
# directly (render tests draw on an offscreen EGL context, no display needed),
# GUI tests under xvfb-run; then the sanitizer stage (scripts/sanitize.sh): the
# whole suite again built with AddressSanitizer and UndefinedBehaviorSanitizer,
# the unit tests with LeakSanitizer, and a short run of each fuzz target.
# VANTREL_SANITIZE=0 leaves the sanitizer stage out.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
BUILD_DIR="${BUILD_DIR:-build}"
cd "$BUILD_DIR"
ctest --output-on-failure -j"$(nproc)" -LE gui
if ctest -N -L gui | grep -q "Total Tests: [1-9]"; then
  xvfb-run -a -s "-screen 0 1280x800x24" ctest --output-on-failure -L gui
fi
cd - >/dev/null
bash scripts/test-size.sh || true
if [ "${VANTREL_SANITIZE:-1}" != "0" ]; then
  bash scripts/sanitize.sh
fi
