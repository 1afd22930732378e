#!/usr/bin/env bash
# Checks that each case of SOURCE but 0 is refused with one error, which says why: cant_be_command.sh COMPILER SOURCE INCLUDE...
set -euo pipefail
compiler=$1 source=$2
includes=("${@:3}")
compile() {
  "$compiler" -std=c++17 -fPIC -fsyntax-only -DCASE="$1" "${includes[@]/#/-I}" "$source" 2>&1
}

compile 0
cases=$(grep -c '^#elif CASE ==' "$source")
for number in $(seq "$cases"); do
  if errors=$(compile "$number"); then
    echo "Case $number compiles." >&2
    exit 1
  fi
  if [ "$(grep -c 'error:' <<<"$errors")" -ne 1 ] || ! grep -q "error: static.*This function can't be a command" <<<"$errors"; then
    printf 'Case %s is not refused with one line:\n%s\n' "$number" "$errors" >&2
    exit 1
  fi
done
