#!/usr/bin/env bash
# Builds the source package of build/package once more: in a clean Debian of the same release, where only what it asks for is
# installed, in another folder, as another user, with another locale, time zone and umask, and with the packaged tests. Then
# compares the packages byte for byte with those in build/package. Needs root. Takes half an hour.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/checks/system.sh
need_root
scripts/install-packages.sh debootstrap diffoscope-minimal util-linux
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")

work=$(mktemp -d -p /var/tmp)
root=$work/system
trap 'rm -rf "$work"' EXIT
make_system "$root" "$suite" "$(dpkg --print-architecture)" ca-certificates
# shellcheck disable=SC2016 # apt's variables
apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' \
  >"$root/etc/apt/sources.list" # with the same updates

# The path has no blank: dpkg tells compilers to leave out only paths without one.
mkdir -p "$root/srv/elsewhere/built"
cp build/package/zephyrconsole_* "$root/srv/elsewhere"
inside "$root" apt-get update -qq
inside "$root" sh -ec 'cd /srv/elsewhere
  DEBIAN_FRONTEND=noninteractive apt-get build-dep -y -qq --no-install-recommends ./*.dsc >/dev/null'
inside "$root" useradd --create-home builder
inside "$root" chown -R builder: /srv/elsewhere
inside "$root" su - builder -c 'set -e
  umask 002
  export LC_ALL=C.UTF-8 TZ=Pacific/Kiritimati
  cd /srv/elsewhere
  dpkg-source --extract *.dsc built/source
  cd built/source
  dpkg-buildpackage --build=binary --unsigned-changes'

different=
for package in build/package/*.deb; do
  again="$root/srv/elsewhere/built/$(basename "$package")"
  if ! cmp -s "$package" "$again"; then
    diffoscope "$package" "$again" || true
    different=yes
  fi
done
[ -z "$different" ]
echo "packages: $(find build/package -maxdepth 1 -name '*.deb' | wc -l) built twice, and the same"
