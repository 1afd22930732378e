#!/usr/bin/env bash
# Checks that the zephyr-sandbox of an installation that was moved still works: moved_sandbox.sh PREFIX
set -euo pipefail
prefix=$1
program=$prefix/bin/zephyr-sandbox
if ! grep -q 'R.*PATH.*\$ORIGIN/' <(readelf -d "$program"); then
  echo "$program does not look for its libraries relative to itself." >&2
  exit 1
fi
libraries=$(ldd "$program" | grep libZephyr)
if grep -vF " $prefix/" <<<"$libraries" >&2; then
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
