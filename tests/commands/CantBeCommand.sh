#!/usr/bin/env bash
# Checks that each marked line of SOURCE is refused with one error, which says why, and no other line is:
# CantBeCommand.sh COMPILER SOURCE INCLUDE...
set -euo pipefail
compiler=$1 source=$2
includes=("${@:3}")
messages=$("$compiler" -std=c++17 -fPIC -fsyntax-only "${includes[@]/#/-I}" "$source" 2>&1) || true

expected=$(grep -c '// refused$' "$source")
errors=$(grep -c 'error:' <<<"$messages" || true)
assertions=$(grep -c "error: static.*This function can't be a command" <<<"$messages" || true)
if [ "$expected" -eq 0 ] || [ "$errors" -ne "$expected" ] || [ "$assertions" -ne "$expected" ]; then
  printf 'Expected %s functions to be refused with one line each:\n%s\n' "$expected" "$messages" >&2
  exit 1
fi
for line in $(sed -n '/\/\/ refused$/=' "$source"); do
  if ! grep -q "$(basename "$source"):$line:" <<<"$messages"; then
    printf 'Line %s is not refused:\n%s\n' "$line" "$messages" >&2
    exit 1
  fi
done
