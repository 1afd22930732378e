#!/usr/bin/env bash
# Checks that PROGRAM, which links the kit alone, loads no module of Qt that only other libraries need, and loads the kit if
# its TYPE is SHARED_LIBRARY: needed.sh PROGRAM TYPE
set -euo pipefail

loaded=$(ldd "$1")
unneeded='libQt6(Widgets|OpenGL|Qml|Quick)|libZephyrConsole(Widgets|OpenGL|Quick)'
if [ "$2" = SHARED_LIBRARY ]; then
  grep -q libZephyrConsoleQt <<<"$loaded"
else
  unneeded="$unneeded|libZephyr"
fi
if grep -E "$unneeded" <<<"$loaded" >&2; then
  echo "$1 uses none of these." >&2
  exit 1
fi
