#!/usr/bin/env bash
# Installs missing packages, builds for release, runs every benchmark, and prints each result beside its floor.
# Arguments go to the benchmarks: benchmarks/bench.sh --benchmark_repetitions=1 --benchmark_min_time=0.001
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${bench_packages[@]}"

cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DZEPHYR_CONSOLE_BUILD_TESTS=OFF \
  -DZEPHYR_CONSOLE_BUILD_EXAMPLES=OFF -DZEPHYR_CONSOLE_BUILD_BENCHMARKS=ON >/dev/null
cmake --build build/bench --target benchmarks

results=$PWD/build/bench/results
rm -rf "$results"
mkdir -p "$results"
for program in build/bench/benchmarks/*_benchmark; do
  on_display=()
  if [[ $program == */opengl_benchmark ]]; then
    [ -n "${DISPLAY:-}" ] || on_display=(xvfb-run --auto-servernum)
    on_display+=(env QT_QPA_PLATFORM=xcb)
  fi
  # A row and its floor take turns, so that other load on the machine slows both.
  "${on_display[@]}" "$program" --benchmark_enable_random_interleaving=true --benchmark_repetitions=21 --benchmark_min_time=0.05 \
    "$@" --benchmark_out_format=json --benchmark_out="$results/$(basename "$program" _benchmark).json" >/dev/null
done
benchmarks/bench_report.py table "$results"
