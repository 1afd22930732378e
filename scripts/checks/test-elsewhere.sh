#!/usr/bin/env bash
# Runs every test in other surroundings: in a folder whose path has blanks and letters beyond ASCII, with unsigned char, in
# the C locale, in one with a decimal comma, in one without UTF-8, and as a user without rights.
# Arguments go to CTest: scripts/checks/test-elsewhere.sh -R console
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${test_packages[@]}" locales util-linux

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"
sources="$work/Zephyr Übung 風"
git clone -q . "$sources"
cd "$sources"
cmake --preset dev -DCMAKE_CXX_FLAGS="-D_GLIBCXX_ASSERTIONS -funsigned-char" >/dev/null
cmake --build --preset dev

export LOCPATH=$work/locales
mkdir "$LOCPATH"
localedef -i de_DE -f UTF-8 "$LOCPATH/de_DE.UTF-8"
localedef -i de_DE -f ISO-8859-1 "$LOCPATH/de_DE.ISO-8859-1"
failed=()
for locale in C de_DE.UTF-8 de_DE.ISO-8859-1; do
  echo "== in the locale $locale"
  LC_ALL=$locale ctest --preset dev "$@" || failed+=("in the locale $locale")
done

if [ "$(id -u)" -eq 0 ]; then
  echo "== as a user without rights"
  chown -R nobody:nogroup "$work"
  HOME=$work setpriv --reuid=nobody --regid=nogroup --clear-groups ctest --preset dev "$@" ||
    failed+=("as a user without rights")
else
  echo "== the runs above had no superuser's rights: no further run"
fi

for where in "${failed[@]}"; do
  echo "error: tests fail $where" >&2
done
[ "${#failed[@]}" -eq 0 ]
