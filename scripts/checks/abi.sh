#!/usr/bin/env bash
# Compares what programs that are already linked know of the libraries (functions, sizes, members, vtables) with the last
# release's, and fails if anything but additions differs: scripts/checks/abi.sh
# With --renew, writes down the libraries as those of the release that is being made.
#
# It reads the debug information of the libraries of the preset dev, which scripts/test.sh has built. What is written down is of
# one system, as Qt's and the compiler's types are in it, so on any other it says that it compares nothing.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${abi_packages[@]}"
system=$(. /etc/os-release && echo "$ID-${VERSION_ID:-}")-$(uname -m)
release=$PWD/packaging/abi/$system.tar.xz
if [ "${1:-}" != --renew ] && [ ! -e "$release" ]; then
  echo "abi: skipped, as nothing is written down of the last release on $system"
  exit 0
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/headers" "$work/now" "$work/released"
for headers in include */include build/dev/*/include; do
  cp -r "$headers/zephyr" "$work/headers"
done
libraries=(build/dev/*/libZephyr*.so)
if [ "${#libraries[@]}" -ne 8 ]; then
  echo "error: build/dev has ${#libraries[@]} libraries, not 8: ${libraries[*]}" >&2
  exit 1
fi
for library in "${libraries[@]}"; do
  abidw --headers-dir "$work/headers" --drop-private-types --exported-interfaces-only --no-corpus-path --no-comp-dir-path \
    --no-show-locs --no-parameter-names --no-elf-needed \
    --out-file "$work/now/$(basename "$library" .so).abi" "$(readlink -f "$library")"
done

if [ "${1:-}" = --renew ]; then
  mkdir -p packaging/abi
  tar --create --sort=name --owner=0 --group=0 --mode=u=rwX,go=rX --mtime=@0 -C "$work/now" . | xz -9e >"$release"
  echo "abi: written down for $system"
  exit 0
fi
tar -xf "$release" -C "$work/released"
differs=
for released in "$work"/released/*.abi; do
  library=$(basename "$released")
  status=0
  abidiff --no-added-syms "$released" "$work/now/$library" >"$work/changes" || status=$?
  # Status 4 is a change. Nothing is shown of a mere addition.
  if [ $((status & ~4)) -ne 0 ] || grep -qvE '^ *$|changes summary: 0 Removed( \([0-9]+ filtered out\))?, 0 Changed' "$work/changes"; then
    echo "== $library"
    cat "$work/changes"
    differs=yes
  fi
done
if [ -n "$differs" ]; then
  echo "error: programs that are linked to the last release may break. CONTRIBUTING.md says what to do if that is meant." >&2
  exit 1
fi
echo "abi: nothing that the last release had has changed"
