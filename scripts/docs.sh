#!/usr/bin/env bash
# Builds the reference into build/docs/html and that of the inside into build/docs/internals; any warning of Doxygen
# fails.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${docs_packages[@]}"

version=$(sed -n 's/^project(ZephyrConsole VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
mkdir -p build/docs
rm -rf build/docs/html build/docs/internals # or pages of what is gone would stay
export ZEPHYR_VERSION=${version:?CMakeLists.txt names no version}
doxygen docs/Doxyfile
doxygen docs/Doxyfile.internals
echo "Reference: build/docs/html/index.html"
echo "The inside: build/docs/internals/index.html"
