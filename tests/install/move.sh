#!/usr/bin/env bash
# Moves an installation, and checks that no file depends on where it was: move.sh FROM TO SOURCES
set -euo pipefail
from=$1 to=$2 sources=$3
rm -rf "$to"
mv "$from" "$to"

# Debug information may name the source tree. Text files must not, since programs read them after the move.
if grep -rIlF -e "$from" -e "$sources" "$to"; then
  echo "These installed files name a folder of the build." >&2
  exit 1
fi
