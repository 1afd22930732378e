#!/usr/bin/env bash
# Installs missing packages, builds with warnings as errors, and runs every test.
# Arguments go to CTest: scripts/test.sh -R console_keys
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${test_packages[@]}"

cmake --preset dev >/dev/null
cmake --build --preset dev
ctest --preset dev "$@"
