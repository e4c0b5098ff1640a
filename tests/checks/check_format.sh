#!/bin/bash
# check_format.sh ROOT - every C++ file is as clang-format leaves it. Versions differ in taste, so
# only the one of Debian 12 is asked; without it the check is skipped (exit 77).
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cd "$1"
. "$here/sources.sh"

formatter=
for candidate in clang-format-14 clang-format; do
    if "$candidate" --version 2>/dev/null | grep -q 'version 14\.'; then
        formatter=$candidate
        break
    fi
done
if [ -z "$formatter" ]; then
    echo "SKIPPED: clang-format 14 is not installed, so the format of the sources is unchecked"
    exit 77
fi
mapfile -t files < <(list_sources)
[ ${#files[@]} -gt 0 ] || { echo "no source files in $1" >&2; exit 1; }
findings=$(printf '%s\0' "${files[@]}" |
    xargs -0 -n 16 -P "$(nproc)" "$formatter" --dry-run --ferror-limit=1 2>&1 |
    grep -E '^[^ ].*warning: code should be clang-formatted' | sed 's/ warning:.*/ run clang-format -i/' |
    LC_ALL=C sort -u || true)
verdict "$findings" "files that clang-format would change, of ${#files[@]}"
