#!/usr/bin/env bash
# Runs the libFuzzer targets of tests/fuzz, one after the other.
#
#   scripts/fuzz.sh [SECONDS] [TARGET...]
#       Runs each target (all when none is named) for SECONDS (default 60)
#       from the fuzz build ($FUZZ_BUILD_DIR, default build-asan), on a work
#       corpus seeded from tests/fuzz/corpus/<target>/. Findings go to
#       <build>/fuzz-findings/<target>/; the executions of each target are
#       printed at the end.
#   scripts/fuzz.sh --short BINARY SEEDS WORK SECONDS
#       The short run of the tests: one target on a copy of its seeds.
#
# Runs at the lowest priority; set FUZZ_NICE to change that.
set -euo pipefail
cd "$(dirname "$0")/.."
NICE="${FUZZ_NICE:-19}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-halt_on_error=1:print_stacktrace=1}"
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1}"

# run_one BINARY SEEDS WORK SECONDS FINDINGS LOG
run_one() {
  local bin="$1" seeds="$2" work="$3" secs="$4" findings="$5" log="$6"
  mkdir -p "$work" "$findings"
  if [ -d "$seeds" ]; then cp -n "$seeds"/* "$work"/ 2>/dev/null || true; fi
  local dict=() name
  name="$(basename "$bin")"
  if [ -f "tests/fuzz/$name.dict" ]; then dict=(-dict="tests/fuzz/$name.dict"); fi
  nice -n "$NICE" "$bin" "$work" "${dict[@]}" -max_total_time="$secs" -max_len=65536 -timeout=10 \
    -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$findings/" >"$log" 2>&1
}

if [ "${1:-}" = "--short" ]; then
  bin="$2" seeds="$3" work="$4" secs="$5"
  log="$work.log"
  rm -rf "$work"
  if run_one "$bin" "$seeds" "$work" "$secs" "$work-findings" "$log"; then
    grep -E "stat::number_of_executed_units" "$log" || true
    exit 0
  fi
  tail -n 60 "$log"
  exit 1
fi

SECS="${1:-60}"
shift || true
BUILD="${FUZZ_BUILD_DIR:-build-asan}"
if [ "$#" -gt 0 ]; then
  targets=("$@")
else
  targets=()
  for f in tests/fuzz/targets/*.cpp; do targets+=("$(basename "$f" .cpp)"); done
fi

status=0
summary=()
for t in "${targets[@]}"; do
  bin="$BUILD/bin/$t"
  if [ ! -x "$bin" ]; then
    echo "fuzz: $bin is missing (configure with -DVANTREL_FUZZ=ON and clang)" >&2
    exit 2
  fi
  log="$BUILD/fuzz-logs/$t.log"
  mkdir -p "$BUILD/fuzz-logs"
  echo "fuzz: $t for ${SECS}s"
  if run_one "$bin" "tests/fuzz/corpus/$t" "$BUILD/fuzz-work/$t" "$SECS" \
       "$BUILD/fuzz-findings/$t" "$log"; then
    result="ok"
  else
    result="FINDING (see $log)"
    status=1
  fi
  execs=$(grep -oE "stat::number_of_executed_units: [0-9]+" "$log" | grep -oE "[0-9]+$" || echo "?")
  summary+=("$t: $execs executions in ${SECS}s, $result")
done
printf '%s\n' "${summary[@]}"
exit "$status"
