#!/usr/bin/env bash
# Start-up of the desktop program: launches the window RUNS times (default 7)
# and prints, for each run and as the median of the runs, the time from the
# launch to the first painted frame and the resident memory at that moment
# (VmRSS, and its peak VmHWM, from /proc). Without a display it runs itself
# under xvfb-run with a 1280x800 screen. One launch before the counted runs
# warms the disk cache and the user's settings; every launch uses the same
# private HOME, removed at the end.
#
#   bench/startup.sh [RUNS] [PROGRAM]      PROGRAM defaults to build/bin/vantrel
set -euo pipefail

runs=${1:-7}
program=${2:-build/bin/vantrel}
if [[ -z "${DISPLAY:-}" ]]; then
  exec xvfb-run -a -s "-screen 0 1280x800x24" "$0" "$runs" "$program"
fi
[[ -x "$program" ]] || { echo "no program at $program (build the target vantrel)" >&2; exit 1; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/home"

# One launch: prints "ms rss_kib hwm_kib".
launch() {
  local report="$work/report" t0 pid line=""
  rm -f "$report"
  t0=$(date +%s%3N)
  HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" XDG_DATA_HOME="$work/home/.local/share" \
    XDG_CACHE_HOME="$work/home/.cache" VANTREL_STARTUP_REPORT="$report" "$program" >/dev/null 2>&1 &
  pid=$!
  for _ in $(seq 600); do
    [[ -s "$report" ]] && break
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.05
  done
  [[ -s "$report" ]] && line=$(head -n1 "$report")
  kill "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
  [[ -n "$line" ]] || { echo "the program painted no frame" >&2; exit 1; }
  read -r t rss hwm <<<"$line"
  echo "$((t - t0)) $rss $hwm"
}

median() { sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

launch >/dev/null  # warm-up, not counted
printf '%-4s %12s %10s %10s\n' run "window ms" "RSS MiB" "HWM MiB"
: >"$work/runs"
for i in $(seq "$runs"); do
  read -r ms rss hwm <<<"$(launch)"
  echo "$ms $rss $hwm" >>"$work/runs"
  awk -v i="$i" -v ms="$ms" -v r="$rss" -v h="$hwm" 'BEGIN { printf "%-4s %12d %10.1f %10.1f\n", i, ms, r / 1024, h / 1024 }'
done
ms=$(cut -d' ' -f1 "$work/runs" | median)
rss=$(cut -d' ' -f2 "$work/runs" | median)
hwm=$(cut -d' ' -f3 "$work/runs" | median)
awk -v ms="$ms" -v r="$rss" -v h="$hwm" 'BEGIN { printf "%-4s %12d %10.1f %10.1f\n", "med", ms, r / 1024, h / 1024 }'
