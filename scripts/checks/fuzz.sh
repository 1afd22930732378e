#!/usr/bin/env bash
# Builds the fuzz targets with Clang, replays their corpus, then fuzzes each: scripts/checks/fuzz.sh SECONDS
# With 0 it only replays. A finding is an error, and its input is kept in build/fuzz/findings.
set -euo pipefail
cd "$(dirname "$0")/../.."
if ! [[ ${1:-} =~ ^[0-9]+$ ]]; then
  echo "usage: scripts/checks/fuzz.sh SECONDS" >&2
  exit 2
fi
seconds=$1
source scripts/packages.sh
scripts/install-packages.sh "${fuzz_packages[@]}"

cmake -S . -B build/fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_UNITY_BUILD=ON -DCMAKE_COMPILE_WARNING_AS_ERROR=ON -DZEPHYR_CONSOLE_BUILD_FUZZERS=ON -DZEPHYR_CONSOLE_BUILD_TESTS=OFF \
  -DZEPHYR_CONSOLE_BUILD_EXAMPLES=OFF >/dev/null
targets=(keys lines files switches utf8 renderer commands variables view server)
cmake --build build/fuzz --target "${targets[@]/#/fuzz_}"

export LSAN_OPTIONS=suppressions=$PWD/fuzz/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1
if [ -w /dev/shm ]; then
  export TMPDIR=/dev/shm # the targets create and remove a directory for each input
fi

mkdir -p build/fuzz/findings
fuzz() {
  local target=$1 seconds=$2
  local log=build/fuzz/$target.log found=build/fuzz/corpus/$target
  local fuzzer=(build/fuzz/fuzz/fuzz_"$target" -verbosity=0 -print_final_stats=1
    -artifact_prefix=build/fuzz/findings/"$target"-)
  mkdir -p "$found"
  if "${fuzzer[@]}" -runs=0 fuzz/corpus/"$target" >"$log" 2>&1 &&
    { [ "$seconds" -eq 0 ] || "${fuzzer[@]}" -max_total_time="$seconds" "$found" fuzz/corpus/"$target" >"$log" 2>&1; }; then
    echo "$target: $(sed -n 's/.*number_of_executed_units: *//p' "$log") inputs, no findings"
  else
    cat "$log" >&2
    echo "$target: a finding, kept in build/fuzz/findings" >&2
    return 1
  fi
}
export -f fuzz
printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I '{}' bash -c 'fuzz {} "$0"' "$seconds"
echo "fuzz: no findings"
