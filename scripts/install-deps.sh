#!/usr/bin/env bash
# Installs the Debian 12 packages that building, running and testing need.
# Safe to run again: only missing packages are fetched.
set -euo pipefail

PKGS=(
  build-essential cmake ninja-build pkg-config git
  qt6-base-dev libqt6opengl6-dev qt6-base-dev-tools qt6-svg-dev
  libgl-dev libglu1-mesa-dev libegl-dev libegl-mesa0 libgl1-mesa-dri libx11-dev
  libfreetype-dev libfontconfig-dev fonts-dejavu-core fonts-liberation2
  libavformat-dev libavcodec-dev libswscale-dev libavutil-dev ffmpeg
  libstb-dev
  libgtest-dev libgmock-dev libbenchmark-dev libmuparser-dev libpoppler-cpp-dev
  xvfb xauth xdotool imagemagick
  clang libclang-rt-14-dev
  ccache
)
# scripts/install-deps.sh --bench adds what the benchmark comparisons run.
if [ "${1:-}" = "--bench" ]; then PKGS+=(python3-skimage python3-numpy); fi

missing=()
for p in "${PKGS[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ "${#missing[@]}" -eq 0 ]; then
  echo "install-deps: all packages present"
  exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
echo "install-deps: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
