#!/usr/bin/env bash
# Builds and runs the consumer with pkg-config and nothing else: build-with-pkg-config.sh LIBRARIES DIRECTORY COMPILER FLAG...
set -euo pipefail
libraries=$1 directory=$2 compiler=("${@:3}")
sources=$(cd "$(dirname "$0")" && pwd)
export PKG_CONFIG_PATH=$libraries/pkgconfig LD_LIBRARY_PATH=$libraries

pkg-config --print-errors --exists 'ZephyrConsole = 1.0.0'
# Qt's libraries want position-independent code of whoever links them, which their pkg-config files don't say.
quoted=$(pkg-config --cflags --libs ZephyrConsoleQt) # for a shell to read, blanks and other letters escaped
eval "flags=($quoted)"
mkdir -p "$directory"
cd "$directory"
"${compiler[@]}" -fPIC -shared -o plugin.so "$sources/plugin.cpp" "${flags[@]}"
"${compiler[@]}" -fPIC -o consumer "$sources/main.cpp" "${flags[@]}"
./consumer ./plugin.so
