#!/usr/bin/env bash
# Checks what an installation has beside its programs, with the tools that say what is valid: programs.sh PREFIX
# Each program has a manual page with all of its options; menus and software centres know zephyr-sandbox.
set -euo pipefail
prefix=$1
failed=
complain() {
  echo "error: $*" >&2
  failed=yes
}

for program in "$prefix"/bin/*; do
  name=$(basename "$program")
  page=$prefix/share/man/man1/$name.1
  mandoc -T lint -W warning "$page" || complain "mandoc finds mistakes in the manual page of $name"
  options=$(QT_QPA_PLATFORM=offscreen "$program" --help | grep -oE '^ +(-[a-z], )?--[a-z-]+' | sed 's/.*--//')
  [ -n "$options" ] || complain "$name --help names no options"
  for option in $options; do
    grep -qE "^\.It (.*, )?Fl -$option( |$)" "$page" || complain "the manual page of $name does not know --$option"
  done
done

completion=share/zsh/site-functions/_zephyr-attach
[ -e "$prefix/$completion" ] || complain "zsh finds no completion of zephyr-attach, which is not in $completion"

desktop=$prefix/share/applications/zephyr-sandbox.desktop
desktop-file-validate "$desktop" || complain "$desktop is not valid"
[ -x "$prefix/bin/$(sed -n 's/^Exec=//p' "$desktop")" ] || complain "$desktop starts no program"
[ -e "$prefix/share/icons/hicolor/scalable/apps/$(sed -n 's/^Icon=//p' "$desktop").svg" ] || complain "$desktop has no icon"

metainfo=$prefix/share/metainfo/org.example.zephyrconsole.sandbox.metainfo.xml
appstreamcli validate --no-net --pedantic "$metainfo" || complain "$metainfo is not valid"
grep -q '<launchable type="desktop-id">zephyr-sandbox.desktop<' "$metainfo" || complain "$metainfo launches no program"
version=$(QT_QPA_PLATFORM=offscreen "$prefix/bin/zephyr-sandbox" --version)
newest=$(sed -n 's/.*<release version="\([^"]*\)".*/\1/p' "$metainfo" | sed -n 1p)
[ "$version" = "zephyr-sandbox $newest" ] || complain "the newest release in $metainfo is '$newest', and this is $version"
[ -z "$failed" ]
