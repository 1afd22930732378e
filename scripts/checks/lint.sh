#!/usr/bin/env bash
# Runs clang-tidy and cppcheck over the libraries and programs; any finding fails.
set -euo pipefail
cd "$(dirname "$0")/../.."
cmake --preset lint >/dev/null
cmake --build build/lint --target ZephyrConsoleQtObjects_autogen >/dev/null # whose result the kit's sources include
if grep '"file":' build/lint/compile_commands.json | grep -v '/Unity/\|mocs_compilation' >&2; then
  echo "error: these files would not be read" >&2
  exit 1
fi
# Nearly all of the time goes into the headers of Qt and the standard library, so that several files share them.
run-clang-tidy -quiet -checks=-bugprone-suspicious-include -p build/lint "^$PWD/build/lint/.*/Unity/" \
  >build/lint/clang-tidy.log 2>&1 || {
  grep -E '(warning|error):' build/lint/clang-tidy.log | sort -u >&2
  exit 1
}
cppcheck --quiet --enable=warning,performance,portability --std=c++20 --library=qt --error-exitcode=1 \
  -I include -I common/include -I qt/include -I src -I build/lint/src/include -I build/lint/common/include \
  -I build/lint/qt/include src common/src qt/src examples
echo "clang-tidy, cppcheck: no findings"
