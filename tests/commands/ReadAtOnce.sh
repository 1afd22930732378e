#!/usr/bin/env bash
# Checks that SOURCE, which reads and writes atomically, calls no library for it: ReadAtOnce.sh COMPILER SOURCE INCLUDE...
set -euo pipefail
compiler=$1 source=$2
includes=("${@:3}")
assembly=$("$compiler" -std=c++17 -fPIC -O0 -S -o - "${includes[@]/#/-I}" "$source")
if ! grep -q SharedValue <<<"$assembly" || grep -E 'call.*__atomic_' <<<"$assembly" >&2; then
  echo "Atomic operations are missing, or call a library." >&2
  exit 1
fi
