#!/usr/bin/env bash
# Builds the fuzz targets with Clang, replays their corpus, and lets each look for new inputs: scripts/fuzz.sh SECONDS
# With 0 it only replays. A finding fails, and is kept in build/fuzz/findings.
set -euo pipefail
cd "$(dirname "$0")/.."
if ! [[ ${1:-} =~ ^[0-9]+$ ]]; then
  echo "usage: scripts/fuzz.sh SECONDS" >&2
  exit 2
fi
seconds=$1
source scripts/packages.sh
scripts/install-packages.sh "${fuzz_packages[@]}"

cmake -S . -B build/fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_COMPILE_WARNING_AS_ERROR=ON -DZEPHYR_CONSOLE_BUILD_FUZZERS=ON -DZEPHYR_CONSOLE_BUILD_TESTS=OFF \
  -DZEPHYR_CONSOLE_BUILD_EXAMPLES=OFF >/dev/null
targets=(keys lines files switches utf8 renderer)
cmake --build build/fuzz --target "${targets[@]/#/fuzz_}"

export LSAN_OPTIONS=suppressions=$PWD/fuzz/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1
if [ -w /dev/shm ]; then
  export TMPDIR=/dev/shm # the targets make and remove a directory for each input
fi

mkdir -p build/fuzz/findings
failed=()
for target in "${targets[@]}"; do
  fuzzer=(build/fuzz/fuzz/fuzz_"$target" -verbosity=0 -print_final_stats=1 -artifact_prefix=build/fuzz/findings/"$target"-)
  found=build/fuzz/corpus/$target
  mkdir -p "$found"
  echo "== $target"
  "${fuzzer[@]}" -runs=0 fuzz/corpus/"$target" || failed+=("$target, replaying")
  if [ "$seconds" -gt 0 ]; then
    "${fuzzer[@]}" -max_total_time="$seconds" "$found" fuzz/corpus/"$target" || failed+=("$target")
  fi
done

if [ ${#failed[@]} -gt 0 ]; then
  printf 'fuzz: a finding by: %s\n' "${failed[@]}" >&2
  exit 1
fi
echo "fuzz: no findings"
