#!/usr/bin/env bash
# Start-up of the desktop program: launches the window RUNS times (default 7)
# and prints, for each run and as the median of the runs, the time from the
# launch until its window is mapped (read from outside by vt_window_watch, as
# for any program), the time until the canvas's first frame is on the screen
# and the resident memory at that moment (VmRSS, from /proc), then VmRSS and
# its peak VmHWM one second later, read by this script (the same for any
# program, whatever moment it reports). Without a display it runs itself
# under xvfb-run with a 1280x800 screen. Three launches before the counted
# runs warm the disk cache, the user's settings and the OpenGL driver's shader
# cache (which fills over the first launches); every launch uses the same
# private HOME and cache, removed at the end.
#
# Given several programs (an older build against the current one), the runs
# alternate between them, so that a shared machine's load falls on all alike,
# and each gets its own median row.
#
#   bench/startup.sh [RUNS] [PROGRAM...]      PROGRAM defaults to build/bin/vantrel
set -euo pipefail

runs=${1:-7}
shift || true
programs=("$@")
[[ ${#programs[@]} -gt 0 ]] || programs=(build/bin/vantrel)
if [[ -z "${DISPLAY:-}" ]]; then
  exec xvfb-run -a -s "-screen 0 1280x800x24" "$0" "$runs" "${programs[@]}"
fi
for program in "${programs[@]}"; do
  [[ -x "$program" ]] || { echo "no program at $program (build the target vantrel)" >&2; exit 1; }
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/home"

# The window's map is read from outside the program by vt_window_watch (built
# with the GUI); without it that column reads -1.
watch=${VT_WINDOW_WATCH:-$(dirname "$0")/../build/bin/vt_window_watch}

# One launch of $1: prints "map_ms ms rss_kib settled_rss_kib settled_hwm_kib".
launch() {
  local program=$1 report="$work/report" t0 pid mapped=-1 line=""
  rm -f "$report"
  t0=$(date +%s%3N)
  export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" XDG_DATA_HOME="$work/home/.local/share" \
    XDG_CACHE_HOME="$work/home/.cache" VANTREL_STARTUP_REPORT="$report"
  if [[ -x "$watch" ]]; then
    # The program is the watcher's child; the watcher returns at the map.
    read -r pid mapped < <("$watch" --epoch "$program" 2>/dev/null)
    [[ "$mapped" == -1 ]] || mapped=$((mapped - t0))
  else
    "$program" >/dev/null 2>&1 &
    pid=$!
  fi
  for _ in $(seq 600); do
    [[ -s "$report" ]] && break
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.05
  done
  local settled="0 0"
  if [[ -s "$report" ]]; then
    line=$(head -n1 "$report")
    sleep 1
    settled=$(awk '/^VmRSS:/ { r = $2 } /^VmHWM:/ { h = $2 } END { print r + 0, h + 0 }' "/proc/$pid/status" 2>/dev/null || echo "0 0")
  fi
  kill "$pid" 2>/dev/null || true
  for _ in $(seq 100); do kill -0 "$pid" 2>/dev/null || break; sleep 0.02; done
  [[ -n "$line" ]] || { echo "$program painted no frame" >&2; exit 1; }
  read -r t rss _ <<<"$line"
  echo "$mapped $((t - t0)) $rss $settled"
}

median() { sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

many=$(( ${#programs[@]} > 1 ))
for p in "${!programs[@]}"; do
  for _ in 1 2 3; do launch "${programs[$p]}" >/dev/null; done  # warm-up, not counted
  : >"$work/runs.$p"
  if (( many )); then echo "program $((p + 1)): ${programs[$p]}"; fi
done
printf '%-6s %8s %12s %10s %12s %10s\n' run "map ms" "window ms" "RSS MiB" "RSS 1 s MiB" "HWM MiB"
row() {
  awk -v n="$1" -v m="$2" -v ms="$3" -v r="$4" -v s="$5" -v h="$6" \
    'BEGIN { printf "%-6s %8d %12d %10.1f %12.1f %10.1f\n", n, m, ms, r / 1024, s / 1024, h / 1024 }'
}
for i in $(seq "$runs"); do
  for p in "${!programs[@]}"; do
    read -r mapped ms rss settled hwm <<<"$(launch "${programs[$p]}")"
    echo "$mapped $ms $rss $settled $hwm" >>"$work/runs.$p"
    name=$i
    if (( many )); then name="$i/$((p + 1))"; fi
    row "$name" "$mapped" "$ms" "$rss" "$settled" "$hwm"
  done
done
for p in "${!programs[@]}"; do
  name=med
  if (( many )); then name="med/$((p + 1))"; fi
  row "$name" $(for f in 1 2 3 4 5; do cut -d' ' -f$f "$work/runs.$p" | median; done)
done
