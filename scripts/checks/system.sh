# Makes Debian systems in folders, and runs commands in them. Other scripts source this file. Needs root.
# shellcheck shell=bash

need_root() {
  if [ "$(id -u)" -ne 0 ]; then
    echo "error: only root can make a system in a folder" >&2
    exit 1
  fi
}

# make_system FOLDER SUITE ARCHITECTURE [PACKAGE...], with the packages from where this machine gets its own
make_system() {
  local root=$1 suite=$2 architecture=$3 mirror included
  included=$(IFS=,; echo "${*:4}")
  # shellcheck disable=SC2016 # apt's variables
  mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Label: Debian' | sed -n 1p)
  debootstrap --arch="$architecture" --variant=minbase ${included:+--include="$included"} "$suite" "$root" \
    "${mirror:?apt knows no source of Debian packages}" >"$root.log" || {
    tail "$root.log" >&2
    return 1
  }
  rm "$root.log"
  echo force-unsafe-io >"$root/etc/dpkg/dpkg.cfg.d/unsafe-io" # packages needn't survive a power cut here, and come sooner
  echo "127.0.0.1 localhost $(uname -n)" >"$root/etc/hosts"
  apt-config dump | grep -E '^Acquire::(https?|Check)' >"$root/etc/apt/apt.conf.d/90-as-outside" || true # such as a proxy
}

# inside FOLDER COMMAND [ARGUMENT...]
# What is mounted for a command, and what the command leaves running, goes with it. The shell stays, as the one that waits
# for processes whose parents are gone. Where SOURCES is set, that folder is there as /sources, to read.
inside() {
  # shellcheck disable=SC2016 # the inner shell's variables
  unshare --mount --pid --fork --kill-child bash -c '
    set -e
    mount -t proc proc "$0/proc"
    mount -t devpts devpts "$0/dev/pts"
    mount -t tmpfs tmpfs "$0/dev/shm"
    if [ -n "${SOURCES:-}" ]; then
      mkdir -p "$0/sources"
      mount -o bind,ro "$SOURCES" "$0/sources"
    fi
    export PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin
    chroot "$0" "$@" || exit' "$@"
}
