#!/usr/bin/env bash
# Formats all C++ of the project. With --check it changes nothing, and fails if a file is not formatted.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${format_packages[@]}"
mode=(-i)
if [ "${1:-}" = --check ]; then
  mode=(--dry-run -Werror)
fi
git ls-files -z -- '*.h' '*.cpp' | xargs -0 "$(clang_tool clang-format)" "${mode[@]}"
