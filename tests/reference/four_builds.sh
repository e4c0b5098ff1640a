#!/bin/bash
# four_builds.sh SOURCE WORK - builds checksum_passes with g++ and clang++, at -O0 and at -O3, and
# refuses checksums that differ. A compiler that is not installed is left out and named.
set -euo pipefail
source=$1
work=$2
mkdir -p "$work"
sums=
for compiler in g++ clang++; do
    if ! command -v "$compiler" >/dev/null; then
        echo "$compiler is not installed"
        continue
    fi
    for level in -O0 -O3; do
        "$compiler" -std=c++17 "$level" -ffp-contract=off -I"$source" -I"$source/tests" \
            "$source"/finder/{box_tree,box_tree_build,image_match,mirror_pass,similar_pass}.cpp \
            "$source"/tests/reference/{pass_reference,pass_tables,pass_differential,image_differential}.cpp \
            "$source/tests/reference/checksum_passes.cpp" -o "$work/checksum_passes"
        sum=$("$work/checksum_passes")
        echo "$compiler $level $sum"
        sums+=$sum$'\n'
    done
done
if [ "$(sort -u <<<"${sums%$'\n'}" | wc -l)" != 1 ]; then
    echo "the checksums differ" >&2
    exit 1
fi
