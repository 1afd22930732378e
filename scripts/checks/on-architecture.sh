#!/usr/bin/env bash
# Crosses the tree to another architecture of Debian, and runs its tests emulated:
# scripts/checks/on-architecture.sh ARCHITECTURE [FOLDER-OF-TESTS...]
# For example: scripts/checks/on-architecture.sh s390x console transcripts
#
# The system with the compilers, and what they built, stay in /var/tmp/zephyr-console-ARCHITECTURE for the next time: i386 has
# one that its programs run in directly, all others share "cross". Needs root, and leaves the kernel with the emulator
# that the tests need until this script ends.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
source scripts/checks/system.sh
if [ $# -lt 1 ]; then
  echo "usage: scripts/checks/on-architecture.sh ARCHITECTURE [FOLDER-OF-TESTS...]" >&2
  exit 2
fi
need_root
architecture=$1
rooms=$(IFS=';'; echo "${*:2}")
targets=(all)
if [ $# -gt 1 ]; then
  targets=("${@:2}")
  targets=("${targets[@]/#/tests/}")
  targets=("${targets[@]/%//all}")
fi
scripts/install-packages.sh debootstrap dpkg-dev util-linux
triplet=$(dpkg-architecture -a "$architecture" -q DEB_HOST_GNU_TYPE -f 2>/dev/null) || {
  echo "error: Debian has no architecture $architecture" >&2
  exit 2
}
cpu=${triplet%%-*}
export SOURCES=$PWD
step() { printf '== %s: %s (%d s)\n' "$architecture" "$1" "$SECONDS"; }

# Of these, programs of the other architecture link or load one of their own.
own_packages=(libgtest-dev librapidcheck-dev libedit-dev libgl-dev libgl1-mesa-dri libxcb1-dev qt6-base-dev
  "${module_packages[@]}" "${qml_packages[@]}")
install() {
  inside "$root" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@" >"$root/install.log" ||
    { tail "$root/install.log" >&2; return 1; }
}

# What programs, and tests, find under the usual names, and works for programs of any architecture.
write_wrapper() {
  cat >"$root/usr/local/bin/$1"
  chmod 755 "$root/usr/local/bin/$1"
}
make_cross_system() {
  local native=() package
  for package in "${test_packages[@]}"; do
    [[ " ${own_packages[*]} " == *" $package "* ]] || native+=("$package")
  done
  make_system "$root" trixie "$(dpkg --print-architecture)"
  inside "$root" apt-get update -qq
  install "${native[@]}" binutils-multiarch dpkg-dev qemu-user qt6-base-dev-tools
  write_wrapper Xvfb <<<'#!/bin/sh
exec /usr/bin/Xvfb +byteswappedclients "$@"'
  write_wrapper ldd <<<'#!/bin/sh
LD_TRACE_LOADED_OBJECTS=1 exec "$1"'
}
add_architecture() {
  inside "$root" dpkg --add-architecture "$architecture"
  inside "$root" apt-get update -qq
  install "g++-$triplet" "${own_packages[@]/%/:$architecture}"
  # Locales are in the byte order of their architecture. Emulated programs find a file below this folder first.
  inside "$root" sh -c "cd /tmp && apt-get download -qq libc-bin:$architecture &&
    dpkg-deb --fsys-tarfile libc-bin_*_$architecture.deb | tar -x --one-top-level=/usr/gnemul/qemu-$cpu ./usr/lib/locale"
  write_wrapper "$triplet-clang++" <<<"#!/bin/sh
exec clang++ --target=$triplet \"\$@\""
  cat >"$root/etc/$architecture.cmake" <<TOOLCHAIN
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR $cpu)
if(NOT CMAKE_CXX_COMPILER)
  set(CMAKE_CXX_COMPILER $triplet-g++)
endif()
set(CMAKE_LIBRARY_ARCHITECTURE $triplet)
TOOLCHAIN
}

# The kernel opens the emulator now (flag F), and so finds it from within the system too.
binfmt=/proc/sys/fs/binfmt_misc
mounted=
stop_emulating() {
  [ ! -e "$binfmt/zephyr-$cpu" ] || echo -1 >"$binfmt/zephyr-$cpu"
  [ -z "$mounted" ] || umount $binfmt
}
emulate() {
  trap stop_emulating EXIT
  if [ ! -e $binfmt/register ]; then
    mount -t binfmt_misc binfmt_misc $binfmt
    mounted=yes
  fi
  [ ! -e "$binfmt/zephyr-$cpu" ] || echo -1 >"$binfmt/zephyr-$cpu" # of a script that was killed
  sed -n "s#^:qemu-$cpu:\(.*\):[^:]*:[^:]*\$#:zephyr-$cpu:\1:$root/usr/bin/qemu-$cpu:OPF#p" \
    "$root/usr/share/qemu/binfmt.d/qemu-$cpu.conf" >$binfmt/register
}

configuring=("-DZEPHYR_CONSOLE_TEST_ROOMS=$rooms")
if [ "$architecture" = i386 ]; then
  root=/var/tmp/zephyr-console-i386
  if [ ! -e "$root/made" ]; then
    step "making the system"
    rm -rf "$root"
    make_system "$root" trixie i386
    inside "$root" apt-get update -qq
    install "${test_packages[@]}"
    touch "$root/made"
  fi
else
  root=/var/tmp/zephyr-console-cross
  if [ ! -e "$root/made" ]; then
    step "making the system"
    rm -rf "$root"
    make_cross_system
    touch "$root/made"
  fi
  if [ ! -e "$root/etc/$architecture.cmake" ]; then
    step "its compiler and libraries"
    add_architecture
  fi
  emulate
  export CMAKE_TOOLCHAIN_FILE=/etc/$architecture.cmake # for the projects that tests configure, too
  export PKG_CONFIG_LIBDIR=/usr/lib/$triplet/pkgconfig:/usr/share/pkgconfig
  configuring+=("-DCLANG_PROGRAM=/usr/local/bin/$triplet-clang++")
fi

step "building"
# shellcheck disable=SC2016 # the inner shell's variables
inside "$root" sh -ec 'cd /sources && cmake --preset dev --no-warn-unused-cli -B "$@" >/dev/null' - "/build/$architecture" "${configuring[@]}"
inside "$root" cmake --build "/build/$architecture" --target "${targets[@]}"
# Emulated, a program may take ten times as long.
[ "$architecture" = i386 ] ||
  find "$root/build/$architecture" -name CTestTestfile.cmake -exec sed -i 's/TIMEOUT "[0-9]*/&0/' {} +
step "testing"
export QT_XCB_NO_MITSHM=1 # an emulated program and the X server share no memory
inside "$root" ctest --test-dir "/build/$architecture" --output-on-failure --no-tests=error -j4
step "every test passed"
