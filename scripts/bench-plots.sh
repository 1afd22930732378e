#!/usr/bin/env bash
# Draws docs/images/performance-*.png from what the last scripts/bench.sh measured. Look at them before you commit them.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${bench_packages[@]}"

results=$PWD/build/bench/results
if [ ! -d "$results" ]; then
  echo "error: nothing measured yet: run scripts/bench.sh first" >&2
  exit 1
fi
scripts/bench_report.py data "$results"
gnuplot -c scripts/bench-plots.gp "$results" docs/images
