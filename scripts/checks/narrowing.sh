#!/usr/bin/env bash
# Has the libraries and programs compiled for 32-bit x86, with this 64-bit machine's headers and without their results, to
# find conversions that lose digits there. An argument is a part of the paths of the sources to compile.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${build_packages[@]}" "${module_packages[@]}" g++-multilib
cmake --preset lint -DCMAKE_CXX_COMPILER=g++ >/dev/null

# A command is a string in JSON, whose backslashes go first. What is generated isn't there yet.
commands=$(sed -n 's/^ *"command": "\(.*\)",$/\1/p' build/lint/compile_commands.json | sed 's/\\\(.\)/\1/g' |
  grep "${1:-}[^ ]*\.cpp\$" | grep -v '_autogen/[^ ]*$' |
  sed 's/ -o [^ ]* -c / -m32 -fsyntax-only /') || {
  echo "error: no source has '${1:-}' in its path" >&2
  exit 1
}
tr '\n' '\0' <<<"$commands" | xargs -0 -n 1 -P "$(nproc)" nice sh -c
echo "narrowing: $(wc -l <<<"$commands") sources, no findings"
