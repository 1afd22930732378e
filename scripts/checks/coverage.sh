#!/usr/bin/env bash
# Runs every test with coverage, and prints which lines and branches of the libraries ran.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${coverage_packages[@]}"

cmake --preset coverage >/dev/null
cmake --build --preset coverage
rm -rf build/coverage/profiles
ctest --preset coverage

profile=build/coverage/merged.profdata
llvm-profdata merge -o "$profile" build/coverage/profiles/*.profraw
# Every program with the libraries' code in it: the libraries, and tests, which contain inline code of their headers.
mapfile -t programs < <(find build/coverage -type f \( -name '*.so*' -o -path '*/tests/*' -executable \))
sources=("$PWD/src" "$PWD/common" "$PWD/include" "$PWD/qt")
report() { llvm-cov "$@" -instr-profile "$profile" "${programs[0]}" "${programs[@]/#/-object=}" "${sources[@]}"; }
report show -format=html -output-dir build/coverage/report -show-branches=count
report report -show-branch-summary
echo "Lines and branch directions that didn't run:"
report export -format=lcov >build/coverage/lcov
awk -F '[:,]' -v here="$PWD/" '
  /^SF/ {file = $2; sub(here, "", file)}
  /^DA/ && $3 == 0 {print file ":" $2 ": line"}
  /^BRDA/ && $5 ~ /^[0-]$/ {print file ":" $2 ": branch"}' build/coverage/lcov | sort -u -t : -k 1,1 -k 2,2n -k 3
