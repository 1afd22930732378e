#!/usr/bin/env bash
# Builds the Debian packages, then installs, uses and removes them as a user of this system would.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${package_packages[@]}" "${qml_packages[@]}" pkg-config
scripts/package.sh

files=("$PWD"/build/package/packages/*.deb)
packages=()
for file in "${files[@]}"; do
  package=$(dpkg-deb --field "$file" Package)
  packages+=("$package")
  if dpkg-query -W "$package" >/dev/null 2>&1; then
    echo "error: $package is already installed on this system, and a test must not replace it" >&2
    exit 1
  fi
done
for expected in libzephyrconsole1 libzephyrconsole-quick1 libzephyrconsole-remote1 qml6-module-zephyr-console \
  libzephyrconsole-dev zephyr-attach zephyr-sandbox; do
  if [[ " ${packages[*]} " != *" $expected "* ]]; then
    echo "error: there is no package $expected" >&2
    exit 1
  fi
done
attach=$(printf '%s\n' "${files[@]}" | grep /zephyr-attach_)
if dpkg-deb --field "$attach" Depends | grep -E 'qt6gui|zephyrconsole'; then
  echo "error: zephyr-attach needs no window system and no library of the project" >&2
  exit 1
fi
kit=$(printf '%s\n' "${files[@]}" | grep /libzephyrconsole1_)
if dpkg-deb --field "$kit" Depends | grep -E 'qt6(widgets|opengl|qml|quick)'; then
  echo "error: libzephyrconsole1 needs modules of Qt that only other packages need" >&2
  exit 1
fi
for file in "${files[@]}"; do
  if [[ $file != */libzephyrconsole-dev_* ]] && dpkg-deb --field "$file" Depends | grep -E 'zephyrconsole[a-z0-9-]* \(='; then
    echo "error: $file needs the very build of a library that it was made with" >&2
    exit 1
  fi
done
# What lintian need not find, each with its reason:
tags=(
  initial-upload-closes-no-bugs # these packages aren't uploaded to Debian, where a report asks for each new one
  out-of-date-standards-version # the newest one that Debian 12's lintian knows is named
)
lintian --display-info --pedantic --fail-on error,warning,info,pedantic --suppress-tags "$(IFS=,; echo "${tags[*]}")" \
  build/package/*.changes

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
work=$(mktemp -d)
installed=$work/installed
clean_up() {
  "${as_root[@]}" apt-get purge -y -qq "${packages[@]}" >/dev/null
  rm -rf "$work"
}
trap clean_up EXIT
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${files[@]}" >/dev/null
dpkg -L "${packages[@]}" | grep -i zephyr | sort -u >"$installed"

# An optimised build has no debug information, so not even the libraries name the folder of the build.
if xargs -d '\n' grep -lF "$PWD" -d skip <"$installed"; then
  echo "error: these installed files name a folder of the build" >&2
  exit 1
fi

# The report goes into a file: in a pipe, grep -q would leave early, and readelf would fail.
mapfile -t libraries < <(grep '\.so\.1$' "$installed")
[ "${#libraries[@]}" -eq "$(grep -c 'Targets\.cmake$' "$installed")" ]
for library in "${libraries[@]}"; do
  tests/install/exported_symbols.sh "$library" debian
  readelf -W -d -l -s "$library" >"$work/report"
  for mark in BIND_NOW GNU_RELRO __stack_chk_fail; do
    if ! grep -q "$mark" "$work/report"; then
      echo "error: $library is not hardened: no $mark" >&2
      exit 1
    fi
  done
done

mapfile -t documents < <(grep '\.md$' "$installed")
/usr/bin/python3 scripts/checks/check_links.py "${documents[@]}"

for test in $(sed -n 's/^Tests: //p' debian/tests/control); do
  debian/tests/"$test"
done

"${as_root[@]}" apt-get purge -y -qq "${packages[@]}" >/dev/null
trap 'rm -rf "$work"' EXIT
while read -r file; do
  if [ -e "$file" ]; then
    echo "error: $file is still there after the packages were removed" >&2
    exit 1
  fi
done <"$installed"
echo "packages: built, checked, installed, used and removed"
