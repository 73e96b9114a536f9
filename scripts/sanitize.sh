#!/usr/bin/env bash
# The sanitizer stage: builds the whole tree with clang, AddressSanitizer and
# UndefinedBehaviorSanitizer (plus the fuzzers' coverage, so the same build
# carries the fuzz targets) into build-asan/ (or $ASAN_BUILD_DIR), then runs
#   - the unit, render and fuzz-smoke tests with LeakSanitizer on: any leak of
#     ours fails them (tests/sanitizers/lsan.supp lists what the system
#     libraries keep for the life of the process);
#   - the GUI tests under xvfb-run, with leak checking off (Qt and the X
#     libraries hold caches until exit that LeakSanitizer cannot tell apart).
# Any sanitizer report stops the test that caused it and fails the stage.
set -euo pipefail
cd "$(dirname "$0")/.."
BUILD="${ASAN_BUILD_DIR:-build-asan}"
ROOT="$(pwd)"
LAUNCHER=()
if command -v ccache >/dev/null; then
  LAUNCHER=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

CC=clang CXX=clang++ cmake -S . -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
  -DVANTREL_SANITIZE=ON -DVANTREL_FUZZ=ON -DVANTREL_BUILD_APP=ON \
  -DVANTREL_BUILD_BENCH=OFF "${LAUNCHER[@]}" >/dev/null
cmake --build "$BUILD" -j"$(nproc)"

export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1:suppressions=$ROOT/tests/sanitizers/ubsan.supp"
export LSAN_OPTIONS="suppressions=$ROOT/tests/sanitizers/lsan.supp:print_suppressions=0"
cd "$BUILD"
ASAN_OPTIONS="detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1" \
  ctest --output-on-failure -j"$(nproc)" -LE gui
if ctest -N -L gui | grep -q "Total Tests: [1-9]"; then
  ASAN_OPTIONS="detect_leaks=0" \
    xvfb-run -a -s "-screen 0 1280x800x24" ctest --output-on-failure -L gui
fi
