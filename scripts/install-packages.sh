#!/usr/bin/env bash
# Installs those of the named Debian packages that are missing: scripts/install-packages.sh PACKAGE...
# On a system without apt it prints the names and leaves it to what follows to find what they hold.
set -euo pipefail

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
  echo "note: nothing is installed, as this system has no apt. If something is missing below, install it yourself." >&2
  echo "note: needed is what these Debian packages hold: $*" >&2
  exit 0
fi

# A name may be a real package's, of any architecture, or one that another package provides.
here=$(dpkg-query -W -f='${db:Status-Status} ${Package}, ${Provides}\n' | sed -n 's/^installed //p' |
  tr ',' '\n' | sed 's/^ *//; s/[ (].*//')
missing=()
for package in "$@"; do
  grep -qxF -e "$package" <<<"$here" || missing+=("$package")
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
