#!/usr/bin/env bash
# Runs every test program, but not what it starts, under Valgrind: an invalid access, a use of what was never set, or a
# leak fails. Takes a quarter of an hour.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${test_packages[@]}" valgrind

cmake --preset dev >/dev/null
cmake --build --preset dev
mkdir -p build/valgrind
# The tests that are programs of their own, and need no arguments.
pattern='s|^[0-9]*: Test command: "*\([^"]*/build/dev/tests/[^" ]*\)"*$|\1|p'
mapfile -t programs < <(ctest --preset dev --show-only --verbose | sed -n "$pattern" | sort -u)
if [ "${#programs[@]}" -eq 0 ]; then
  echo "error: no test programs found" >&2
  exit 1
fi

export QT_QPA_PLATFORM=offscreen
export QT_ENABLE_REGEXP_JIT=0 # whose code Valgrind can't follow
check() {
  local log=$PWD/build/valgrind/${1##*/}.log
  if [ "${1##*/}" = qt_places ]; then
    export QT_QUICK_BACKEND=software
  fi
  # The tests that count allocations bring a `new` of their own, which Valgrind is to leave alone.
  local options=(--quiet --leak-check=full --show-leak-kinds=definite --errors-for-leak-kinds=definite --error-exitcode=1
    --suppressions="$PWD/cmake/valgrind.supp" --soname-synonyms=somalloc=nouserintercepts)
  if (cd "$(dirname "$1")" && valgrind "${options[@]}" "$1") >"$log" 2>&1; then
    echo "${1##*/}: no findings"
  else
    echo "${1##*/}: a finding, see build/valgrind/${1##*/}.log" >&2
    return 1
  fi
}
export -f check
printf '%s\n' "${programs[@]}" | xargs -d '\n' -P "$(nproc)" -I '{}' bash -c 'check "$0"' '{}'
echo "valgrind: no findings"
