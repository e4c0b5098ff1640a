#!/bin/bash
# names.sh POSEBENCH - paths in many scripts survive a scan in one run and browsing in the next,
# whatever the locale of either.
set -u
home=$(mktemp -d) || exit 1
trap 'rm -rf "$home"' EXIT
here=$(cd "$(dirname "$0")" && pwd)
for locales in "C C" "C C.UTF-8" "C.UTF-8 POSIX"; do
    read -r first second <<<"$locales"
    box=$home/ордер-$first
    rm -rf "$box"
    mkdir -p "$box/content" "$box/data"
    for run in "$first scan" "$second browse"; do
        read -r locale what <<<"$run"
        LC_ALL=$locale "$1" --headless --home "$box" --content "$box/content" --content "$box/data" \
            --script "$here/names.js" "$what" ||
            { echo "not so: it runs with '$what' in the locale '$locale'" >&2; exit 1; }
    done
done
