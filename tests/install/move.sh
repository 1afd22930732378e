#!/usr/bin/env bash
# Moves an installation, and checks that it still works: move.sh FROM TO SOURCES
set -euo pipefail
from=$1 to=$2 sources=$3
rm -rf "$to"
mv "$from" "$to"

# Debug information may name the source tree. Text files must not, since programs read them after the move.
if grep -rIlF -e "$from" -e "$sources" "$to"; then
  echo "These installed files name a folder of the build." >&2
  exit 1
fi
program=$to/bin/zephyr-sandbox
if ! grep -q 'R.*PATH.*\$ORIGIN/' <(readelf -d "$program"); then
  echo "$program does not look for its libraries relative to itself." >&2
  exit 1
fi
libraries=$(ldd "$program" | grep libZephyr)
if grep -vF " $to/" <<<"$libraries" >&2; then
  echo "$program loads these libraries from elsewhere." >&2
  exit 1
fi

# The program finds its console files from a folder that has none. The tour ends with status 1, since it shows mistakes.
cd "$(mktemp -d)"
trap 'rm -rf "$PWD"' EXIT
for file in tour slalom; do
  echo "run $file" >go.console
  QT_QPA_PLATFORM=offscreen "$program" --no-startup --batch go.console >log || [ $? -eq 1 ]
  if [ "$(wc -l <log)" -lt 6 ] || grep -q 'run: ' log; then
    echo "The installed program does not run '$file':" >&2
    cat log >&2
    exit 1
  fi
done
