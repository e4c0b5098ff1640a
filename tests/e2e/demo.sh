#!/bin/bash
# demo.sh POSEBENCH - the built-in demo with content: scans, walks through every category, writes a
# picture and a report; and what it does when there is nothing to find.
set -u
posebench=$1
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d) || exit 1
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0

complain() {
    echo "not so: $1" >&2
    failures=$((failures + 1))
}

demo() { # home content...
    local home=$1
    shift
    local options=()
    for directory in "$@"; do
        options+=(--content "$directory")
    done
    "$posebench" --headless --home "$home" "${options[@]}" >out 2>err ||
        complain "the demo ends with 0"
    [ ! -s err ] || complain "the demo is silent on stderr: $(cat err)"
    [ "$(cat out)" = "$work/$home/contact-sheet.png
$work/$home/report.txt" ] || complain "the demo prints two paths: $(cat out)"
}

size() { # of a PNG: width height
    od -An -t u1 -j 16 -N 8 "$1" | awk '{print $3 * 256 + $4, $7 * 256 + $8}'
}

tells() { # pattern
    grep -Eq -- "$1" h/report.txt || complain "the report tells '$1': $(cat h/report.txt)"
}

mkdir content empty
"$posebench" --headless --home prepare --content content --script "$here/demo_content.js" ||
    complain "the content is written"
demo h content

# Every phase, and what is left after it; the index file has as many.
while read -r phase; do
    tells "^  $phase +16 +16 +16 +[0-9]+\\.[0-9]+$"
done <<'PHASES'
Scanning pose files
Identifying pose files
Optimizing pose index \(1\)
Optimizing pose index \(2\)
Ignoring duplicate poses
Indexing poses
Skipping mirrored poses
Skipping similar poses
Cleaning up
PHASES
tells '^ +16  poses indexed$'
tells '^ +0  have the same content as another$'
tells 'Scan: "Success! Indexed pose files: 16"'
[ "$(od -An -t d4 -j 4 -N 4 h/data/Brannoc/Quillon/poseIndex_*.dat | tr -d ' ')" = 16 ] ||
    complain "the index file has 16 entries"

# Every category, as the library was made.
while read -r count name; do
    tells "^ +$count  $name$"
done <<'CATEGORIES'
16 Browse All Poses
5 similar to a sitting pose
5 similar to a standing pose
2 similar to a laying-belly-up pose
1 similar to a laying-belly-down pose
1 similar to a laying-on-left-side pose
1 similar to a laying-on-right-side pose
1 similar to an upside-down pose
5 similar to the REFERENCE POSE
CATEGORIES

# Nine rows; the widest has eight pictures.
read -r width height <<<"$(size h/contact-sheet.png)"
[ "$width" -gt 1600 ] && [ "$height" -gt 2400 ] || complain "the sheet is $width x $height"

# A second time in the same home: the same again.
sed 's/[0-9.]* s\b//g; s/ [0-9.]*$//' h/report.txt >first
demo h content
sed 's/[0-9.]* s\b//g; s/ [0-9.]*$//' h/report.txt | cmp -s - first ||
    complain "a second run tells the same: $(diff first h/report.txt)"

# Nothing to find: the figures themselves.
demo e empty
[ "$(grep -c '170 bones' e/report.txt)" = 4 ] || complain "the report tells of four figures"

exit $((failures > 0))
