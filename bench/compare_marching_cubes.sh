#!/usr/bin/env bash
# Meshing of the implicit sphere x^2+y^2+z^2-4 = 0 at 20^3, 40^3 and 64^3
# cells: the program's marching cubes (bench_surface_bench, BM_MarchCubes)
# against skimage.measure.marching_cubes on the same fields, in one run.
#
# Usage: bench/compare_marching_cubes.sh [BUILD_DIR]   (default: build)
set -euo pipefail
cd "$(dirname "$0")/.."
BUILD_DIR="${1:-build}"
BENCH="$BUILD_DIR/bin/bench_surface_bench"
[ -x "$BENCH" ] || BENCH="$BUILD_DIR/bench/bench_surface_bench"
if [ ! -x "$BENCH" ]; then
  echo "bench_surface_bench not found under $BUILD_DIR (ninja -C $BUILD_DIR bench_surface_bench)" >&2
  exit 1
fi
TMP="$(mktemp -d)"
trap 'rm -rf "$TMP"' EXIT
"$BENCH" --dump_fields="$TMP"
echo "== vantrel MarchCubes (ms per mesh: wall, cpu) =="
"$BENCH" --benchmark_filter="BM_MarchCubes" --benchmark_min_time=0.5 --benchmark_repetitions=5 \
  --benchmark_report_aggregates_only=true 2>/dev/null | grep -E 'BM_MarchCubes/[0-9]+_(mean|median|min)'
echo "== skimage.measure.marching_cubes, same fields =="
/usr/bin/python3 bench/skimage_marching_cubes.py "$TMP" 20 40 64 || echo "(skimage not installed: apt-get install python3-skimage)"
