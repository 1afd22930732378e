#!/usr/bin/env bash
# Builds and runs the consumer with nothing but pkg-config: build-with-pkg-config.sh LIBRARIES DIRECTORY COMPILER FLAG...
set -euo pipefail
libraries=$1 directory=$2 compiler=("${@:3}")
sources=$(cd "$(dirname "$0")" && pwd)
export PKG_CONFIG_PATH=$libraries/pkgconfig LD_LIBRARY_PATH=$libraries

version=$(sed -n 's/^project(ZephyrConsole VERSION \([0-9.]*\) .*/\1/p' "$sources/../../../CMakeLists.txt")
for library in "$libraries"/libZephyr*.so; do
  pkg-config --print-errors --exists "$(basename "$library" .so | cut -c4-) = ${version:?CMakeLists.txt names no version}"
done
if pkg-config --print-requires ZephyrConsole | grep -x glm; then
  echo "error: not every GLM has a pkg-config file" >&2
  exit 1
fi
# Programs that link Qt must be position-independent, which Qt's pkg-config files don't say: hence -fPIC.
quoted=$(pkg-config --cflags --libs ZephyrConsoleQt) # quoted for a shell
eval "flags=($quoted)"
mkdir -p "$directory"
cd "$directory"
"${compiler[@]}" -fPIC -shared -o plugin.so "$sources/plugin.cpp" "${flags[@]}"
"${compiler[@]}" -fPIC -o consumer "$sources/main.cpp" "${flags[@]}"
./consumer ./plugin.so

quoted=$(pkg-config --cflags --libs ZephyrConsoleOpenGL)
eval "flags=($quoted)"
"${compiler[@]}" -fPIC -o opengl_consumer "$sources/opengl.cpp" "${flags[@]}"
QT_QPA_PLATFORM=offscreen ./opengl_consumer
