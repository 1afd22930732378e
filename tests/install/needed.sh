#!/usr/bin/env bash
# Checks that PROGRAM, which links the kit alone, loads no module of Qt that only other libraries need: needed.sh PROGRAM
set -euo pipefail

loaded=$(ldd "$1")
grep -q libZephyrConsoleQt <<<"$loaded"
if grep -E 'libQt6(Widgets|OpenGL|Qml|Quick)|libZephyrConsole(Widgets|OpenGL|Quick)' <<<"$loaded" >&2; then
  echo "$1 uses none of these." >&2
  exit 1
fi
