#!/usr/bin/env bash
# Checks that each marked line of SOURCE is refused with one error, which says why, and no other line is:
# CantBeCommand.sh COMPILER SOURCE INCLUDE...
set -euo pipefail
compiler=$1 source=$2
includes=("${@:3}")
case $compiler in
  *clang*) limit=-ferror-limit=0 ;;
  *) limit=-fmax-errors=0 ;;
esac
messages=$("$compiler" -std=c++17 -fPIC "$limit" -fsyntax-only "${includes[@]/#/-I}" "$source" 2>&1) || true

complain() {
  printf '%s:\n%s\n' "$1" "$messages" >&2
  exit 1
}
expected=$(grep -c '// refused: ' "$source")
[ "$(grep -c 'error:' <<<"$messages" || true)" -eq "$expected" ] || complain "Expected $expected errors"
sed -n 's|.*// refused: ||p' "$source" | sort | uniq -c | while read -r count why; do
  [ "$(grep -c "error: static.*$why" <<<"$messages" || true)" -eq "$count" ] || complain "Expected $count times '$why'"
done
for line in $(sed -n '/\/\/ refused: /=' "$source"); do
  grep -q "$(basename "$source"):$line:" <<<"$messages" || complain "Line $line is not refused"
done
