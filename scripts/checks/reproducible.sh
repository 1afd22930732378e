#!/usr/bin/env bash
# Builds the source package of build/package once more: in a clean Debian of the same release, where only what it asks for is
# installed, in another folder, as another user, with another locale, time zone and umask, and with the packaged tests. Then
# compares the packages byte for byte with those in build/package. Needs root. Takes half an hour.
set -euo pipefail
cd "$(dirname "$0")/../.."
if [ "$(id -u)" -ne 0 ]; then
  echo "error: only root can make a system in a folder" >&2
  exit 1
fi
scripts/install-packages.sh debootstrap diffoscope-minimal util-linux
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")

# shellcheck disable=SC2016 # apt's variables
mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Label: Debian' | sed -n 1p)
root=$(mktemp -d -p /var/tmp)
trap 'rm -rf "$root"' EXIT
debootstrap --variant=buildd --include=ca-certificates "$suite" "$root" "${mirror:?apt knows no source of Debian packages}"
apt-config dump | grep -E '^Acquire::(https?|Check)' >"$root/etc/apt/apt.conf.d/90-as-outside" || true # such as a proxy
# shellcheck disable=SC2016 # apt's variables
apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' \
  >"$root/etc/apt/sources.list" # with the same updates

inside() {
  # shellcheck disable=SC2016 # the inner shell's variables
  unshare --mount --pid --fork --kill-child bash -c '
    mount -t proc proc "$0/proc"
    mount -t tmpfs tmpfs "$0/dev/shm"
    exec chroot "$0" "$@"' "$root" "$@"
}
mkdir -p "$root/srv/another folder/built"
cp build/package/zephyrconsole_* "$root/srv/another folder"
inside apt-get update -qq
inside env DEBIAN_FRONTEND=noninteractive apt-get build-dep -y -qq --no-install-recommends \
  "$(cd "$root" && echo ./srv/another\ folder/*.dsc)" >/dev/null
inside useradd --create-home builder
inside chown -R builder: "/srv/another folder"
inside su - builder -c 'set -e
  umask 002
  export LC_ALL=C.UTF-8 TZ=Pacific/Kiritimati
  cd "/srv/another folder"
  dpkg-source --extract *.dsc built/source
  cd built/source
  dpkg-buildpackage --build=binary --unsigned-changes'

different=
for package in build/package/*.deb; do
  again="$root/srv/another folder/built/$(basename "$package")"
  if ! cmp -s "$package" "$again"; then
    diffoscope "$package" "$again" || true
    different=yes
  fi
done
[ -z "$different" ]
echo "packages: $(find build/package -maxdepth 1 -name '*.deb' | wc -l) built twice, and the same"
