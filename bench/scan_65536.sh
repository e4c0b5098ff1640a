#!/usr/bin/env bash
# Times a whole scan of many presets by a real click in posebench: makes the presets once, scans,
# cancels in every phase, and prints rows of common_row.h.
#     bench/scan_65536.sh [count]      65536 unless told; 0.5 GB of presets and half a minute to make
# SCAN_FOLDER keeps them ($TMPDIR/quillon_presets); BUILD is the build tree (build/release).
set -eu
top=$(cd "$(dirname "$0")/.." && pwd)
count=${1:-65536}
build=${BUILD:-$top/build/release}
presets=${SCAN_FOLDER:-${TMPDIR:-/tmp}/quillon_presets}/$count
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
if [ ! -e "$presets.made" ]; then
    rm -rf "$presets"
    python3 "$top/bench/make_presets.py" "$presets" "$count"
    touch "$presets.made"
fi
printf 'row\tn\tms\treference_ms\tratio\texponent\tchecksum\tnote\n'
QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$home "$build/bin/posebench" --headless --home "$home" \
    --content "$presets" --figure Genesis8Female --script "$top/bench/scan_65536.js" "$count"
sum=$(cat "$home"/data*/Brannoc/Quillon/poseIndex_*.dat 2>/dev/null | md5sum | cut -c1-8)
printf 'scan.index_file\t%s\t-\t-\t-\t-\t%s\tmd5, of this folder of presets only\n' "$count" "$sum"
