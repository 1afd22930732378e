#!/usr/bin/env bash
# Runs every test with coverage and prints what of the libraries' code ran.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${coverage_packages[@]}"

cmake --preset coverage >/dev/null
cmake --build --preset coverage
find build/coverage -name '*.gcda' -delete
ctest --preset coverage
mkdir -p build/coverage/report
gcovr --root . --filter src/ --filter common/ --filter include/ --filter qt/ --exclude-throw-branches \
  --print-summary --html-details build/coverage/report/index.html --txt - build/coverage
