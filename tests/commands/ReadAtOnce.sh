#!/usr/bin/env bash
# Checks that SOURCE, which reads and writes atomically, calls no library for it: ReadAtOnce.sh COMPILER SOURCE INCLUDE...
set -euo pipefail
compiler=$1 source=$2
includes=()
for folder in "${@:3}"; do # of which CMake gives empty ones for what doesn't apply
  includes+=(${folder:+"-I$folder"})
done
assembly=$("$compiler" -std=c++17 -fPIC -O0 -S -o - "${includes[@]}" "$source")
if ! grep -q SharedValue <<<"$assembly" || grep -E 'call.*__atomic_' <<<"$assembly" >&2; then
  echo "Atomic operations are missing, or call a library." >&2
  exit 1
fi
