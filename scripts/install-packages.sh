#!/usr/bin/env bash
# Installs those of the named Debian packages that are missing: scripts/install-packages.sh PACKAGE...
# On a system without apt it prints the names and fails.
set -euo pipefail

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
  echo "error: this script installs Debian packages, and this system has no apt. Needed are: $*" >&2
  echo "error: install what they hold and build with: cmake --preset dev && cmake --build --preset dev" >&2
  exit 1
fi

missing=()
for package in "$@"; do
  if [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
    missing+=("$package")
  fi
done
if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "error: these packages are missing, and neither root nor sudo is here to install them: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
