#!/usr/bin/env bash
# Draws docs/images/performance-*.png from the last results of benchmarks/bench.sh. Look at the pictures before you commit
# them.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${bench_packages[@]}"

results=$PWD/build/bench/results
if [ ! -d "$results" ]; then
  echo "error: nothing measured yet: run benchmarks/bench.sh first" >&2
  exit 1
fi
benchmarks/bench_report.py data "$results"
gnuplot -c benchmarks/bench-plots.gp "$results" docs/images
