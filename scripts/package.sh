#!/usr/bin/env bash
# Builds the Debian packages of the libraries (libzephyrconsole1, libzephyrconsole-quick1 and so on), of the QML module, for
# development, of zephyr-attach and of zephyr-sandbox into build/package/packages, from the release archive that it makes
# first: build/package/zephyr-console-VERSION.tar.gz. The source package and the debug symbols are in build/package too.
#
# The archive is what is committed. Changes that aren't are in it too, with the files that git would add, and it says so.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
scripts/install-packages.sh "${package_packages[@]}"

version=$(sed -n 's/^project(ZephyrConsole VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
packaged=$(dpkg-parsechangelog --show-field Version)
if [ "${packaged%-*}" != "$version" ]; then
  echo "error: the newest entry of debian/changelog is of version $packaged, not of $version" >&2
  exit 1
fi
rm -rf build/package
mkdir -p build/package/packages

# A commit that no branch knows, of the same date, so that the same files make the same archive.
commit=HEAD
if [ -n "$(git status --porcelain)" ]; then
  echo "note: the packages have changes that aren't committed" >&2
  cp "$(git rev-parse --git-path index)" build/package/index
  export GIT_INDEX_FILE=$PWD/build/package/index
  git add --all
  GIT_AUTHOR_NAME=nobody GIT_AUTHOR_EMAIL=nobody@localhost GIT_COMMITTER_NAME=nobody GIT_COMMITTER_EMAIL=nobody@localhost
  GIT_AUTHOR_DATE=$(git show --no-patch --format=%cI HEAD)
  GIT_COMMITTER_DATE=$GIT_AUTHOR_DATE
  export GIT_AUTHOR_NAME GIT_AUTHOR_EMAIL GIT_COMMITTER_NAME GIT_COMMITTER_EMAIL GIT_AUTHOR_DATE GIT_COMMITTER_DATE
  commit=$(git commit-tree -p HEAD -m "What isn't committed" "$(git write-tree)")
  rm "$GIT_INDEX_FILE"
  unset GIT_INDEX_FILE
fi
archive=zephyr-console-$version.tar.gz
git archive --prefix="zephyr-console-$version/" -o "build/package/$archive" "$commit"

cd build/package
ln "$archive" "zephyrconsole_$version.orig.tar.gz"
tar -xf "$archive"
cd "zephyr-console-$version"
dpkg-buildpackage --unsigned-source --unsigned-changes
cd ..
rm -rf "zephyr-console-$version"
find . -maxdepth 1 -name '*.deb' ! -name '*-dbgsym_*' -exec ln -t packages {} +
