#!/usr/bin/env bash
# Changes one thing at a time in src/, and lists the changes that no test notices: scripts/checks/mutants.sh SECONDS
# As long as the code is the same, a run continues where the last one ended, and tries again the changes that no test
# noticed. The results are in build/mutants/results.
set -euo pipefail
cd "$(dirname "$0")/../.."
if ! [[ ${1:-} =~ ^[0-9]+$ ]]; then
  echo "usage: scripts/checks/mutants.sh SECONDS" >&2
  exit 2
fi
source scripts/packages.sh
scripts/install-packages.sh "${test_packages[@]}" python3 rsync

work=$PWD/build/mutants
sources=$(git ls-files -z src common include | xargs -0 sha256sum | sha256sum)
if [ "$(cat "$work/sources" 2>/dev/null)" != "$sources" ]; then
  rm -f "$work/results"
elif [ -e "$work/results" ]; then
  sed -i '/^SURVIVED/d' "$work/results"
fi
mkdir -p "$work"
echo "$sources" >"$work/sources"

# One tree and build for each core. rsync keeps no times, so that a file that changes back is also newer than its build.
# Programs needn't be linked again after a change in a shared library.
places=()
for ((core = 0; core < $(nproc); ++core)); do
  place=$work/$core
  places+=("$place")
  mkdir -p "$place/tree"
  git ls-files -z | rsync -a --no-times --checksum --from0 --files-from=- . "$place/tree"
  cmake -S "$place/tree" -B "$place/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS="-D_GLIBCXX_ASSERTIONS -g0" -DCMAKE_LINK_DEPENDS_NO_SHARED=ON -DZEPHYR_CONSOLE_BUILD_EXAMPLES=OFF \
    -DZEPHYR_CONSOLE_TEST_ROOMS="console;properties;faults;transcripts" >/dev/null
done
scripts/checks/mutants.py src "$work/results" "$1" "${places[@]}"
