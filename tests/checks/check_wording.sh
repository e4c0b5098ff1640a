#!/bin/bash
# check_wording.sh ROOT - texts and comments explain the program to somebody who has nothing but
# this repository; references to papers outside it are refused.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cd "$1"
. "$here/sources.sh"

mapfile -t files < <(list_files)
[ ${#files[@]} -gt 0 ] || { echo "no files in $1" >&2; exit 1; }
rows=$(grep -v '^#' "$here/wording.txt")
verdict "$(grep -IHniE -f <(echo "$rows") -- "${files[@]}" | cut -c 1-200 || true)" \
    "references to papers outside, in ${#files[@]} files"
