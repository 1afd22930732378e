#!/usr/bin/env bash
# Builds the Debian packages of the libraries (libzephyrconsole1, libzephyrconsole-quick1 and so on), of the QML module, for
# development, of zephyr-attach and of zephyr-sandbox into build/package/packages.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${package_packages[@]}"

cmake --preset package >/dev/null
cmake --build --preset package
cd build/package
rm -rf packages
cpack --config CPackConfig.cmake
