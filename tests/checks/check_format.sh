#!/bin/bash
# check_format.sh ROOT - every C++ file is as clang-format leaves it. Versions differ in taste, so
# only the one of Debian 12 is asked, which is installed where it is missing.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cd "$1"
. "$here/sources.sh"

find_formatter() {
    for formatter in clang-format-14 clang-format; do
        if "$formatter" --version 2>/dev/null | grep -q 'version 14\.'; then
            return 0
        fi
    done
    return 1
}

# ./test has it installed before anything is built; a test that was started otherwise has not.
if ! find_formatter; then
    (root=$here/../.. me=checks.format && . "$root/packaging/prepare.sh" && install_missing clang-format-14)
    find_formatter || { echo "clang-format 14 is missing, so nothing is known of the format" >&2; exit 1; }
fi
mapfile -t files < <(list_sources)
[ ${#files[@]} -gt 0 ] || { echo "no source files in $1" >&2; exit 1; }
findings=$(printf '%s\0' "${files[@]}" |
    xargs -0 -n 16 -P "$(nproc)" "$formatter" --dry-run --ferror-limit=1 2>&1 |
    grep -E '^[^ ].*warning: code should be clang-formatted' | sed 's/ warning:.*/ run clang-format -i/' |
    LC_ALL=C sort -u || true)
verdict "$findings" "files that clang-format would change, of ${#files[@]}"
