#!/bin/bash
# check_headers.sh ROOT - every header says at its top what it is, is guarded, and is the first
# include of the source file of its name, which shows that it compiles alone. (Headers without a
# source file are compiled alone by the target header_check.)
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cd "$1"
. "$here/sources.sh"

mapfile -t files < <(list_sources plugin pane services finder posefile figure ground art host catalogue)
[ ${#files[@]} -gt 0 ] || { echo "no source files in $1" >&2; exit 1; }
findings=
for file in "${files[@]}"; do
    name=${file##*/}
    case $file in
    *.h)
        # a list that is included several times is a header, too, but has no guard
        if ! grep -q '^#pragma once$' "$file" && grep -q '^#' "$file"; then
            findings+="$file:1: no #pragma once"$'\n'
        fi
        if ! head -n 1 "$file" | grep -qF "// $name - "; then
            findings+="$file:1: the first line is not '// $name - what it is'"$'\n'
        fi
        ;;
    *.cpp)
        header=${file%.cpp}.h
        [ -f "$header" ] || continue
        first=$(grep -n -m 1 '^ *# *include' "$file" || true)
        case $first in
        *"include \"$header\"" | *"include \"${header##*/}\"") ;;
        *)
            line=${first%%:*}
            findings+="$file:${line:-1}: the first include is not its own header"$'\n'
            ;;
        esac
        ;;
    esac
done
verdict "${findings%$'\n'}" "headers that cannot be read alone, in ${#files[@]} files"
