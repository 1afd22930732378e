#!/usr/bin/env bash
# Builds the Debian packages libzephyrconsole1, libzephyrconsole-dev and zephyr-sandbox into build/package/packages.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${package_packages[@]}"

cmake --preset package >/dev/null
cmake --build --preset package
cd build/package
rm -rf packages
cpack --config CPackConfig.cmake
