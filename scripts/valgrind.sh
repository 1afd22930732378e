#!/usr/bin/env bash
# Runs every test program under Valgrind; an invalid access, a use of what was never set, or a leak fails. Takes an hour.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${test_packages[@]}" valgrind

cmake --preset dev >/dev/null
cmake --build --preset dev
mkdir -p build/valgrind
export QT_QPA_PLATFORM=offscreen
check() {
  local log=$PWD/build/valgrind/${1##*/}.log
  # The tests that count allocations bring a `new` of their own, which Valgrind is to leave alone.
  if (cd "$(dirname "$1")" && valgrind --quiet --leak-check=full --show-leak-kinds=definite \
    --errors-for-leak-kinds=definite --error-exitcode=1 --soname-synonyms=somalloc=none "$1") >"$log" 2>&1; then
    echo "${1##*/}: no findings"
  else
    echo "${1##*/}: a finding, see build/valgrind/${1##*/}.log" >&2
    return 1
  fi
}
export -f check
# The tests that are programs of their own, and need no arguments.
ctest --preset dev --show-only --verbose | sed -n 's|^[0-9]*: Test command: "*\([^"]*/build/dev/tests/[^" ]*\)"*$|\1|p' | sort -u |
  xargs -d '\n' -P "$(nproc)" -I '{}' bash -c 'check "$0"' '{}'
echo "valgrind: no findings"
