#!/usr/bin/env bash
# Makes a clean Debian and does there what a newcomer does: scripts/checks/on-debian.sh SUITE [ARCHITECTURE [STEP...]]
# An ordinary user runs both commands of the README (the steps "demo" and "test"), then builds, installs, uses and removes
# the packages ("packages"). The system comes from where this machine gets its own packages. Needs root. An architecture
# that this machine can't run needs qemu-user-static. All of the steps take an hour or more.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/checks/system.sh
if [ $# -lt 1 ]; then
  echo "usage: scripts/checks/on-debian.sh SUITE [ARCHITECTURE [demo|test|packages]...]" >&2
  exit 2
fi
need_root
suite=$1
architecture=${2:-$(dpkg --print-architecture)}
steps=("${@:3}")
[ $# -gt 2 ] || steps=(demo test packages)
declare -A commands=([demo]=scripts/demo.sh [test]=scripts/test.sh [packages]=scripts/checks/test-packages.sh)
for step in "${steps[@]}"; do
  if [ -z "${commands[$step]:-}" ]; then
    echo "error: there is no step $step" >&2
    exit 2
  fi
done
scripts/install-packages.sh debootstrap git util-linux

work=$(mktemp -d -p /var/tmp)
root=$work/system
trap 'rm -rf "$work"' EXIT
say() { printf '== %s, %s: %s (%d s)\n' "$suite" "$architecture" "$1" "$SECONDS"; }
say "making the system"
make_system "$root" "$suite" "$architecture" ca-certificates sudo
inside "$root" useradd --create-home --shell /bin/bash newcomer
echo "newcomer ALL=(ALL) NOPASSWD: ALL" >"$root/etc/sudoers.d/newcomer"
# git reads another user's clone only if a file of settings allows it; options don't reach the process that reads.
printf '[safe]\n\tdirectory = *\n' >"$work/gitconfig"
export GIT_CONFIG_GLOBAL=$work/gitconfig
if [ -n "$(git --no-optional-locks status --porcelain)" ]; then
  echo "note: what isn't committed is left out" >&2
fi
git clone -q . "$root/home/newcomer/zephyr-console"
unset GIT_CONFIG_GLOBAL
inside "$root" chown -R newcomer: /home/newcomer/zephyr-console
chmod 755 "$work"

for step in "${steps[@]}"; do
  say "${commands[$step]}"
  inside "$root" su - newcomer -c "cd zephyr-console && ${commands[$step]}"
done
say "all of it works"
