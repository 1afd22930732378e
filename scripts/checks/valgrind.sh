#!/usr/bin/env bash
# Runs every test program under Valgrind, but not the programs that it starts. An invalid access, a use of an unset value
# and a leak are errors. Takes a quarter of an hour.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${test_packages[@]}" valgrind

cmake --preset dev >/dev/null
cmake --build --preset dev
mkdir -p build/valgrind
# The tests that are programs of their own and take no arguments.
pattern='s|^[0-9]*: Test command: "*\([^"]*/build/dev/tests/[^" ]*\)"*$|\1|p'
mapfile -t programs < <(ctest --preset dev --show-only --verbose | sed -n "$pattern" | sort -u)
if [ "${#programs[@]}" -eq 0 ]; then
  echo "error: no test programs found" >&2
  exit 1
fi

export QT_QPA_PLATFORM=offscreen
export FONTCONFIG_FILE=$PWD/build/dev/tests/fonts.conf
export QT_ENABLE_REGEXP_JIT=0 # Valgrind can't follow its code
check() {
  local log=$PWD/build/valgrind/${1##*/}.log
  if [ "${1##*/}" = qt_places ]; then
    export QT_QUICK_BACKEND=software
  fi
  # Valgrind must not replace the `new` of the tests that count allocations.
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
