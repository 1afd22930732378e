#!/usr/bin/env bash
# Takes every screenshot in docs/images again, from the real program, and draws every diagram. Look at each picture before
# you commit it.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
scripts/install-packages.sh "${test_packages[@]}" "${docs_packages[@]}"

for diagram in docs/diagrams/*.dot; do
  dot -Tsvg "$diagram" -o "docs/images/$(basename "$diagram" .dot).svg"
done

cmake --preset release >/dev/null
cmake --build --preset release --target zephyr-sandbox
cmake --preset dev >/dev/null
cmake --build --preset dev --target qt_view_pictures
program=$PWD/build/release/examples/sandbox/zephyr-sandbox
view_pictures=$PWD/build/dev/tests/qt/qt_view_pictures
images=$PWD/docs/images
session=$(mktemp -d)
trap 'rm -rf "$session"' EXIT

# The view's pictures show letters that the project's font lacks. Fonts that are installed would change the tests' pictures.
(cd "$session" && apt-get download -qq fonts-wqy-zenhei fonts-noto-color-emoji)
for package in "$session"/*.deb; do
  dpkg-deb -x "$package" "$session/fonts"
done
cat >"$session/fonts.conf" <<END
<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
  <include>/etc/fonts/fonts.conf</include>
  <dir>$session/fonts</dir>
  <cachedir>$session/fonts</cachedir>
</fontconfig>
END
QT_QPA_PLATFORM=offscreen FONTCONFIG_FILE=$session/fonts.conf "$view_pictures" "$images"
cd "$session" # lines may write files

# shoot NAME WxH KEYS LINE...
# Runs the lines, types the keys into the window, and takes a screenshot.
shoot() {
  local name=$1 size=$2 keys=$3 lines=()
  shift 3
  for line in "$@"; do
    lines+=(--exec "$line")
  done
  QT_QPA_PLATFORM=offscreen "$program" --no-startup --size "$size" "${lines[@]}" --type "$keys" \
    --screenshot "$images/$name.png" --quit
}

# The simulation is paused except for these steps, so that the pictures are the same each time. Only the order of
# "run list" depends on the file system.
moved=('sim pause' 'run slalom' 'sim step 1200')

shoot simulation 960x540 '' "${moved[@]}"
shoot sandbox 960x540 '`wind show\nwind set /speed=20\nobstacle ' "${moved[@]}"
shoot typing 800x300 '`wind show\nwind set /speed=20 /head' 'sim pause'
shoot help 800x600 '`help\nhelp wind\n' 'sim pause'
shoot aliases 800x420 '`alias breeze "wind set 4 90; wind show"\nbreeze\nhelp breeze\n' 'sim pause'
shoot files 800x560 '`run list\nrun gusts\n' 'sim pause'
