#!/usr/bin/env bash
# Installs missing packages, builds, and starts the simulation with its console.
# Arguments go to the program: scripts/demo.sh --size 1600x900
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

packages=("${build_packages[@]}")
if [ -z "${DISPLAY:-}" ] && [ -n "${WAYLAND_DISPLAY:-}" ]; then
  packages+=(qt6-wayland)
fi
scripts/install-packages.sh "${packages[@]}"

cmake --preset release >/dev/null
cmake --build --preset release --target zephyr-sandbox
cd build/release # so that files from the tour do not litter the clone

program=examples/sandbox/zephyr-sandbox
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$program" "$@"
fi
echo "No display here: running the tour without a window and taking a picture of it."
QT_QPA_PLATFORM=offscreen "$program" --type '`run tour\n' --print-log --screenshot zephyr-sandbox.png --quit "$@"
echo "Picture of the window: build/release/zephyr-sandbox.png"
