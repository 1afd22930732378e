#!/usr/bin/env bash
# Runs clang-tidy and cppcheck over the libraries and programs; any finding fails.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${lint_packages[@]}"
cmake --preset lint >/dev/null

# clang-tidy reads what the build compiles, so a source that the build leaves out would pass unread.
unread=$(comm -23 \
  <(git ls-files --cached --others --exclude-standard -- '*.cpp' ':!benchmarks' ':!fuzz' ':!tests' | sort) \
  <(sed -n "s|^ *\"file\": \"$PWD/\(.*\)\",\?$|\1|p" build/lint/compile_commands.json | sort))
if [ -n "$unread" ]; then
  printf 'error: the build leaves these files out, so clang-tidy would not read them:\n%s\n' "$unread" >&2
  exit 1
fi
"run-$(clang_tool clang-tidy)" -quiet -p build/lint "^$PWD/(?!build/)" >build/lint/clang-tidy.log 2>&1 || {
  grep -E '(warning|error):' build/lint/clang-tidy.log | sort -u >&2
  exit 1
}
cppcheck --quiet --enable=warning,performance,portability --std=c++20 --library=qt --error-exitcode=1 \
  -I include -I common/include -I qt/include -I opengl/include -I widgets/include -I quick/include -I commands/include -I remote/include -I src -I remote -I remote/src -I quick/src \
  -I build/lint/src/include -I build/lint/common/include -I build/lint/qt/include -I build/lint/opengl/include \
  -I build/lint/widgets/include -I build/lint/quick/include -I build/lint/commands/include \
  -I build/lint/remote/include \
  src common/src commands/src remote/src remote/attach qt/src opengl/src widgets/src quick/src examples
echo "clang-tidy, cppcheck: no findings"
