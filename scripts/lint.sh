#!/usr/bin/env bash
# Runs clang-tidy over the libraries and programs, as the dev preset compiles them; any finding fails.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset dev >/dev/null
run-clang-tidy -quiet -p build/dev "^$PWD/(common|src|qt|examples)/.*\.cpp$" >build/dev/clang-tidy.log 2>&1 || {
  grep -E '(warning|error):' build/dev/clang-tidy.log | sort -u >&2
  exit 1
}
echo "clang-tidy: no findings"
