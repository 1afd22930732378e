#!/usr/bin/env bash
# Changes one thing at a time in src/ and lists what no test notices: scripts/mutants.sh SECONDS
# Goes on where the last run ended, as long as the sources are the same; results are in build/mutants/results.
set -euo pipefail
cd "$(dirname "$0")/.."
if ! [[ ${1:-} =~ ^[0-9]+$ ]]; then
  echo "usage: scripts/mutants.sh SECONDS" >&2
  exit 2
fi
source scripts/packages.sh
scripts/install-packages.sh "${test_packages[@]}" python3 rsync

work=$PWD/build/mutants
sources=$(git ls-files -s src tests common include | sha256sum)
if [ "$(cat "$work/sources" 2>/dev/null)" != "$sources" ]; then
  rm -f "$work/results"
fi
mkdir -p "$work/tree"
git ls-files -z | rsync -a --checksum --from0 --files-from=- . "$work/tree"
echo "$sources" >"$work/sources"

# Programs needn't be linked again for a change within a shared library.
cmake -S "$work/tree" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS="-D_GLIBCXX_ASSERTIONS -g0" \
  -DCMAKE_LINK_DEPENDS_NO_SHARED=ON -DZEPHYR_CONSOLE_BUILD_EXAMPLES=OFF -DZEPHYR_CONSOLE_TEST_ROOMS="console;properties;faults;transcripts" \
  >/dev/null
scripts/mutants.py "$work/tree" "$work/build" "$work/results" "$1"
