#!/bin/bash
# check_includes.sh ROOT - refuses an include upwards; the order of the rooms is in includes.awk.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cd "$1"
. "$here/sources.sh"

mapfile -t files < <(list_sources plugin pane services finder posefile figure ground art host catalogue)
[ ${#files[@]} -gt 0 ] || { echo "no source files in $1" >&2; exit 1; }
# The stand-in's own headers, which the real SDK does not have, say so in their first lines.
sdk=
for header in $(list_sources host/dzcore | grep '\.h$'); do
    if ! head -n 4 "$header" | grep -qE 'Not part of the|Private to dzcore'; then
        sdk+=" ${header##*/}"
    fi
done
verdict "$(awk -v sdk="$sdk" -f "$here/includes.awk" "${files[@]}")" \
    "includes upwards, in ${#files[@]} files"
