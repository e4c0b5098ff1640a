#!/bin/bash
# try_package.sh [MIRROR] - makes the Debian package and tries it in a bare Debian 12 of its own, in a folder that goes
# afterwards: installs it there with what it depends on, runs the demo as a user without a display, and the
# catalogue where the package has one. Needs root (for chroot) and a Debian mirror, the usual one unless told; some minutes.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
me=try_package
. "$root/packaging/prepare.sh"
[ "$(id -u)" = 0 ] || fail "needs root"
install_missing debootstrap dpkg-dev file
targets=(posebench Quillon)
[ ! -d "$root/catalogue" ] || targets+=(quillon-catalogue)
build_targets "${targets[@]}"
work=$(mktemp -d)
system=$work/system
leave() {
    umount "$system/proc" 2>/dev/null || true
    rm -rf --one-file-system "$work"
}
trap leave EXIT

cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work/packages" >&2
debootstrap --variant=minbase bookworm "$system" "$@" >&2
for file in /etc/apt/apt.conf /etc/resolv.conf; do # how this machine reaches the network
    if [ -f $file ]; then cp $file "$system$file"; fi
done
cp -r /etc/apt/apt.conf.d/. "$system/etc/apt/apt.conf.d/"
cp "$work"/packages/quillon_*.deb "$system/quillon.deb"
mount -t proc proc "$system/proc" # by which programs know where they stand
chroot "$system" useradd -m user

inside() {
    chroot "$system" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive \
        http_proxy="${http_proxy:-}" https_proxy="${https_proxy:-}" "$@"
}
as_user() {
    inside su user -c "$*"
}
inside apt-get update -qq >&2
inside apt-get install -y -qq --no-install-recommends /quillon.deb >&2
as_user posebench --headless
as_user ls -l '~/.local/share/quillon-posebench'
if [ -x "$system/usr/bin/quillon-catalogue" ]; then
    as_user quillon-catalogue '~/catalogue' --content /usr/share/quillon/samples
    as_user test -s '~/catalogue/index.htm' -a -s '~/catalogue/catalogue.json'
fi
inside apt-get purge -y -qq quillon >&2
left=$(cd "$system" && find usr -path '*quillon*' | head)
[ -z "$left" ] || fail "left behind: $left"
echo "the package installs, runs and goes"
