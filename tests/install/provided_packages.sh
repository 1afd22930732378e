#!/usr/bin/env bash
# Checks that scripts/install-packages.sh takes a package for installed that only another one provides, and asks apt for one
# that isn't there: provided_packages.sh SOURCES
set -euo pipefail
bin=$(mktemp -d)
trap 'rm -rf "$bin"' EXIT
for program in apt-get sudo; do # nothing is installed by a test
  printf '#!/bin/sh\necho "asked for: $*"\nexit 1\n' >"$bin/$program"
  chmod 755 "$bin/$program"
done
export PATH=$bin:$PATH

"$1/scripts/install-packages.sh" dpkg awk # each Debian has an awk, and none has a package of that name
if "$1/scripts/install-packages.sh" dpkg no-such-package >"$bin/log"; then
  echo "error: a package that isn't there is taken for installed" >&2
  exit 1
fi
grep -x "Installing: no-such-package" "$bin/log"
