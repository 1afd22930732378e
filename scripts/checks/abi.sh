#!/usr/bin/env bash
# Compares what programs that are already linked know of the packaged libraries (functions, sizes, members, vtables) with the
# last release's, and fails if anything but additions differs: scripts/checks/abi.sh
# With --renew, writes down the libraries of build/package as those of the release that is being made.
#
# A description is of one system, as Qt's and the compiler's types are in it. It is read from the packages of debug symbols,
# which scripts/package.sh makes with the others.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${abi_packages[@]}"
system=$(. /etc/os-release && echo "$ID-$VERSION_ID")-$(dpkg --print-architecture)
release=$PWD/packaging/abi/$system.tar.xz

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/installed" "$work/now" "$work/released"
for package in build/package/libzephyrconsole*.deb; do
  dpkg-deb --extract "$package" "$work/installed"
done
for library in "$work"/installed/usr/lib/*/libZephyr*.so; do
  abidw --debug-info-dir "$work/installed/usr/lib/debug" --headers-dir "$work/installed/usr/include" --drop-private-types \
    --exported-interfaces-only --no-corpus-path --no-comp-dir-path --no-show-locs --no-parameter-names --no-elf-needed \
    --out-file "$work/now/$(basename "$library" .so).abi" "$(readlink -f "$library")"
done

if [ "${1:-}" = --renew ]; then
  mkdir -p packaging/abi
  tar --create --sort=name --owner=0 --group=0 --mode=644 --mtime=@0 -C "$work/now" . | xz -9e >"$release"
  echo "abi: written down for $system"
  exit 0
fi
if [ ! -e "$release" ]; then
  echo "error: nothing is written down of the last release on $system" >&2
  exit 1
fi
tar -xf "$release" -C "$work/released"
differs=
for released in "$work"/released/*.abi; do
  library=$(basename "$released")
  # Exit status 4 is a change, which may be an addition that isn't shown; anything that is shown is more than that.
  abidiff --no-added-syms "$released" "$work/now/$library" >"$work/changes" || true
  if grep -qv -E '^$|changes summary: 0 Removed.*0 Changed' "$work/changes"; then
    echo "== $library"
    cat "$work/changes"
    differs=yes
  fi
done
if [ -n "$differs" ]; then
  echo "error: programs that are linked to the last release may break. If that is meant, CONTRIBUTING.md says what to do." >&2
  exit 1
fi
echo "abi: nothing that the last release had has changed"
