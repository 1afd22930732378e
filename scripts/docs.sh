#!/usr/bin/env bash
# Builds the reference into build/docs/html, and that of the internals into build/docs/internals. Any warning of Doxygen
# is an error.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${docs_packages[@]}"

version=$(sed -n 's/^project(ZephyrConsole VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
mkdir -p build/docs
rm -rf build/docs/html build/docs/internals # otherwise pages of removed names would stay
export ZEPHYR_VERSION=${version:?CMakeLists.txt names no version}
doxygen docs/Doxyfile
doxygen docs/Doxyfile.internals
echo "Reference: build/docs/html/index.html"
echo "The inside: build/docs/internals/index.html"
