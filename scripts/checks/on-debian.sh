#!/usr/bin/env bash
# Makes a clean Debian and does there what a newcomer does: scripts/checks/on-debian.sh SUITE [ARCHITECTURE]
# An ordinary user runs both commands of the README, then builds, installs, uses and removes the packages. The system comes
# from where this machine gets its own packages. Needs root. An architecture that this machine can't run needs
# qemu-user-static. Takes an hour or more.
set -euo pipefail
cd "$(dirname "$0")/../.."
if [ $# -lt 1 ] || [ $# -gt 2 ]; then
  echo "usage: scripts/checks/on-debian.sh SUITE [ARCHITECTURE]" >&2
  exit 2
fi
if [ "$(id -u)" -ne 0 ]; then
  echo "error: only root can make a system in a folder" >&2
  exit 1
fi
suite=$1
architecture=${2:-$(dpkg --print-architecture)}
scripts/install-packages.sh debootstrap git util-linux

# shellcheck disable=SC2016 # apt's variables
mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Label: Debian' | sed -n 1p)
root=$(mktemp -d -p /var/tmp)
trap 'rm -rf "$root"' EXIT
debootstrap --arch="$architecture" --variant=minbase --include=ca-certificates,sudo "$suite" "$root" \
  "${mirror:?apt knows no source of Debian packages}"
apt-config dump | grep -E '^Acquire::(https?|Check)' >"$root/etc/apt/apt.conf.d/90-as-outside" || true # such as a proxy

# What is mounted for a command, and what the command leaves running, goes with it.
inside() {
  # shellcheck disable=SC2016 # the inner shell's variables
  unshare --mount --pid --fork --kill-child bash -c '
    mount -t proc proc "$0/proc"
    mount -t devpts devpts "$0/dev/pts"
    mount -t tmpfs tmpfs "$0/dev/shm"
    exec chroot "$0" "$@"' "$root" "$@"
}
newcomer() {
  echo "== $suite, $architecture: $1"
  inside su - newcomer -c "cd zephyr-console && $1"
}

inside useradd --create-home --shell /bin/bash newcomer
echo "newcomer ALL=(ALL) NOPASSWD: ALL" >"$root/etc/sudoers.d/newcomer"
git clone -q . "$root/home/newcomer/zephyr-console"
inside chown -R newcomer: /home/newcomer/zephyr-console

newcomer scripts/demo.sh
newcomer scripts/test.sh
newcomer scripts/checks/test-packages.sh
echo "$suite, $architecture: the README's commands and the packages work"
