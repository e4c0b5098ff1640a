#!/bin/bash
# check_qt_names.sh ROOT - refuses what Qt 4.8 does not have. The plug-in's folders, the stand-in's
# library and their unit tests must build with both toolkits; posebench, the
# catalogue, their tests and benches are Qt 5 only.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cd "$1"
. "$here/sources.sh"

mapfile -t files < <(list_sources plugin pane services finder posefile figure ground art host tests |
    grep -vE '^host/(body|posebench|driver)/|^tests/(e2e|catalogue|unit/(body|posebench|driver|catalogue))/' |
    grep -vE '^tests/reference/(figure_renderer|raster|scene_mesh|index_tables|[a-z]*_passes)')
[ ${#files[@]} -gt 0 ] || { echo "no source files in $1" >&2; exit 1; }
findings=$(awk -f "$here/strip.awk" -f "$here/qt_statements.awk" "${files[@]}")

# The files that ask for the Qt version may name both versions' names.
code=$(awk -f "$here/strip.awk" -f "$here/print_code.awk" "${files[@]}" |
    grep -vE '^(ground/qt_compat\.h|host/figures/json_text\.cpp|tests/qt_test_compat\.h):')
rows=$(grep -v '^#' "$here/qt_names.txt")
while IFS= read -r place; do
    [ -n "$place" ] || continue
    while IFS= read -r row; do
        if grep -qE -- "${row% => *}" <<<"$place"; then
            findings+=$'\n'"$(cut -d: -f1,2 <<<"$place"): matches ${row% => *}; use ${row##* => }"
        fi
    done <<<"$rows"
done < <(grep -E -f <(awk -F' => ' '{ print $1 }' <<<"$rows") <<<"$code" || true)
verdict "$(sed '/^$/d' <<<"$findings")" "names that one toolkit lacks, in ${#files[@]} files"
