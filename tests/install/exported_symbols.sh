#!/usr/bin/env bash
# Compares the symbols that LIBRARY exports with the list of its package, debian/PACKAGE.symbols, and prints each difference
# with the name that a reader knows: exported_symbols.sh LIBRARY DEBIAN
#
# The lists have the form of dpkg-gensymbols, which checks them when the packages are built. One list holds for every
# compiler, kind of build and machine: where the machine decides what a type is, as in std::size_t, a line has a pattern.
set -euo pipefail
library=$1 debian=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

soname=$(LC_ALL=C readelf --dynamic --wide "$library" | sed -n 's/.*Library soname: \[\(.*\)\]/\1/p')
sed -n "/^$soname /,/^lib/p" "$debian"/*.symbols | grep '^ ' >"$work/list" || {
  echo "error: no list in $debian has symbols of $soname" >&2
  exit 1
}
sed -n 's/^ (regex)"\^\(.*\)@Base\$" .*/\1/p; s/^ \([^(].*\)@Base .*/\1/p' "$work/list" | LC_ALL=C sort >"$work/listed"
nm --dynamic --defined-only --format=posix "$library" | cut -d' ' -f1 | LC_ALL=C sort >"$work/exported"

differs=
while read -r symbol; do
  echo "exported, and not in the list:  $symbol@Base    $(c++filt "$symbol")"
  differs=yes
done < <(grep -vxEf "$work/listed" "$work/exported")
while read -r pattern; do
  if ! grep -qxE -e "$pattern" "$work/exported"; then
    echo "in the list, and not exported:  $pattern@Base    $(c++filt "$pattern")"
    differs=yes
  fi
done <"$work/listed"
[ -z "$differs" ]
[ "$(wc -l <"$work/list")" -eq "$(wc -l <"$work/listed")" ] # no line has a form that this script doesn't know
