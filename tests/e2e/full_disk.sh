#!/bin/bash
# full_disk.sh POSEBENCH - starts and ends the pane with its data on a small disk that is full.
# The disk is a tmpfs; where mounting one is not allowed the test is skipped (exit 77).
set -u
posebench=$1
here=$(cd "$(dirname "$0")" && pwd)
home=$(mktemp -d) || exit 1
disk=$home/disk
mkdir "$disk"
trap 'umount "$disk" 2>/dev/null; rm -rf "$home"' EXIT
if ! mount -t tmpfs -o size=128k tmpfs "$disk"; then
    echo "SKIPPED: this machine allows no tmpfs, so a full disk was NOT tested" >&2
    exit 77
fi

folder=$disk/data/Brannoc/Quillon
mkdir -p "$folder"
# Of version 1, so that any save would change it; and an index that nobody may touch.
{ printf '\x01\0\0\0'; head -c 46 /dev/zero; } >"$folder/settings_0ff58ef1.dat"
printf '\x01\0\0\0\0\0\0\0' >"$folder/poseIndex_0ff58ef1.dat"
head -c 200000 /dev/zero >"$disk/filler" 2>/dev/null
if printf 'x' 2>/dev/null >"$disk/probe" && [ -s "$disk/probe" ]; then
    echo "the disk did not fill up" >&2
    exit 1
fi
rm -f "$disk/probe"
before=$(cd "$folder" && sha256sum ./*)

"$posebench" --headless --home "$home/home" --temp "$home/Studio4/temp" --data "$disk/data" \
    --no-pane --script "$here/full_disk.js" || exit 1

after=$(cd "$folder" && sha256sum ./*)
if [ "$before" != "$after" ]; then
    printf 'the data folder changed.\nbefore:\n%s\nafter:\n%s\n' "$before" "$after" >&2
    exit 1
fi

# With room again the same settings are saved in the present format.
rm "$disk/filler"
"$posebench" --headless --home "$home/home" --temp "$home/Studio4/temp" --data "$disk/data" \
    --no-pane --script "$here/full_disk.js" || exit 1
if [ "$(stat -c %s "$folder/settings_0ff58ef1.dat")" != 58 ]; then
    echo "settings were not saved although there was room" >&2
    exit 1
fi
