#!/usr/bin/env bash
# Installs what is missing, builds, and starts the workbench on the start
# document. Without a window system it prints the start document instead.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
BUILD_DIR="${BUILD_DIR:-build}"
if [ -x "$BUILD_DIR/bin/vantrel" ] && [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$BUILD_DIR/bin/vantrel" "$@"
fi
exec "$BUILD_DIR/bin/vantrel-cli" text "$BUILD_DIR/bin/Tutorials/T000.vtd"
