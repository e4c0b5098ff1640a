#!/bin/bash
# check_globals.sh MODULE ROOT - holds the plug-in's mutable process-wide variables against the
# table in docs/developer/architecture.md: each stands there with its owner, none else does, and
# there are at most 25. Read from the module's symbols, so that none hides: writable objects of
# .data and .bss. Not counted: guards, what the compiler, moc and the meta-type system keep, and
# tables that a function fills once and never changes (its own statics without "g_").
set -euo pipefail
module=$1
page=$2/docs/developer/architecture.md
most=25

objects() {
    LC_ALL=C objdump -tC "$module" | awk '
        / O \.(data|bss)\t/ {
            name = $0
            sub(/^.*\t[0-9a-f]+ +(\.hidden )?/, "", name)
            gsub(/\(anonymous namespace\)::/, "", name)
            print name
        }' | grep -vE '^(guard variable|completed|__|DW\.ref|_?QMetaTypeId|typeinfo|vtable)' |
        grep -vE '::(metatype_id|s_id|staticMetaObject)$' || true
}

state=$(objects | grep -E '(^|::)(g_|s_)[A-Za-z_]+$' | sed -E 's/^.*(::|^)(g_|s_)/\2/' | LC_ALL=C sort)
other=$(objects | grep -vE '(^|::)(g_|s_)[A-Za-z_]+$' | grep -vE '\)(::|\[)|::k[A-Z]' || true)
listed=$(sed -n '/^| variable | owner/,/^$/p' "$page" | sed -nE 's/^\| `([gs]_[A-Za-z_]+)`.*/\1/p' | LC_ALL=C sort)
count=$(grep -c . <<<"$state" || true)
findings=0
if [ -n "$other" ]; then
    printf 'neither state (g_...) nor a table that a function fills once:\n%s\n' "$other" >&2
    findings=1
fi
if [ "$(uniq <<<"$state")" != "$(uniq <<<"$listed")" ]; then
    printf 'not the same in the module (<) and in architecture.md (>):\n' >&2
    diff <(uniq <<<"$state") <(uniq <<<"$listed") >&2 || true
    findings=1
fi
if [ "$count" -gt $most ]; then
    printf '%d mutable variables, at most %d may be\n' "$count" $most >&2
    findings=1
fi
[ $findings = 0 ] || exit 1
printf 'no findings: %d mutable process-wide variables, each with an owner\n' "$count"
