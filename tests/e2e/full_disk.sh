#!/bin/bash
# full_disk.sh POSEBENCH - starts and ends the pane with its data on a small disk that is full.
# The disk is a tmpfs; where mounting one is not allowed, a limit that lets no file grow stands for
# it.
set -u
posebench=$1
here=$(cd "$(dirname "$0")" && pwd)
home=$(mktemp -d) || exit 1
disk=$home/disk
mkdir "$disk"
trap 'umount "$disk" 2>/dev/null; rm -rf "$home"' EXIT
kind=tmpfs
if ! mount -t tmpfs -o size=128k tmpfs "$disk" 2>/dev/null; then
    kind=limit
fi
echo "a full disk by: $kind"

# starts_and_ends [full]: full where the limit has to stand for the disk.
starts_and_ends() {
    (
        if [ $kind = limit ] && [ "${1:-}" = full ]; then
            trap '' XFSZ # so that writing fails and does not kill
            ulimit -f 0
        fi
        exec "$posebench" --headless --home "$home/home" --temp "$home/Studio4/temp" \
            --data "$disk/data" --no-pane --script "$here/full_disk.js"
    )
}

folder=$disk/data/Brannoc/Quillon
mkdir -p "$folder"
# Of version 1, so that any save would change it; and an index that nobody may touch.
{ printf '\x01\0\0\0'; head -c 46 /dev/zero; } >"$folder/settings_0ff58ef1.dat"
printf '\x01\0\0\0\0\0\0\0' >"$folder/poseIndex_0ff58ef1.dat"
if [ $kind = tmpfs ]; then
    head -c 200000 /dev/zero >"$disk/filler" 2>/dev/null
    if printf 'x' 2>/dev/null >"$disk/probe" && [ -s "$disk/probe" ]; then
        echo "the disk did not fill up" >&2
        exit 1
    fi
    rm -f "$disk/probe"
fi
before=$(cd "$folder" && sha256sum ./*)

starts_and_ends full || exit 1

after=$(cd "$folder" && sha256sum ./*)
if [ "$before" != "$after" ]; then
    printf 'the data folder changed.\nbefore:\n%s\nafter:\n%s\n' "$before" "$after" >&2
    exit 1
fi

# With room again the same settings are saved in the present format.
rm -f "$disk/filler"
starts_and_ends || exit 1
if [ "$(stat -c %s "$folder/settings_0ff58ef1.dat")" != 58 ]; then
    echo "settings were not saved although there was room" >&2
    exit 1
fi
