#!/bin/bash
# content_pictures.sh POSEBENCH SAMPLES - the pictures of the content library: made once by the helper
# process, kept in the home, taken from there by the next run, and never made where there is one.
set -u
posebench=$1
samples=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d) || exit 1
trap 'rm -rf "$work"' EXIT
failures=0

complain() {
    echo "not so: $1" >&2
    failures=$((failures + 1))
}

poses="$work/content/People/Genesis 8 Female/Poses/Maker"
mkdir -p "$poses"
find "$samples/People/Genesis 8 Female/Poses/Brannoc/Everyday Stands" -name '*.duf' | sort | head -5 | while read -r pose; do
    cp "$pose" "$poses"
done
[ "$(find "$poses" -name '*.duf' | wc -l)" = 5 ] || complain "there are five samples"
echo "no preset" >"$poses/Broken.duf"

look() { # look COUNT PICTURE
    "$posebench" --headless --home "$work/home" --no-pane --size 1200x800 --content "$work/content" \
        --script "$here/content_pictures.js" "$poses" "$1" "$2" || complain "a run that makes $1"
}
kept() {
    find "$work/home/thumbnails" -name '*.png' 2>/dev/null | wc -l
}

look 5 "$work/first.png"
[ "$(kept)" = 5 ] || complain "five are kept, it was $(kept)"
look 0 "$work/second.png"
cmp -s "$work/first.png" "$work/second.png" || complain "the next run shows the same"

# A preset that changes gets another one, a picture of its own comes before ours.
first=$(find "$poses" -name '*.duf' | sort | grep -v Broken | head -1)
touch -d '2001-01-01' "$first"
look 1 "$work/third.png"
[ "$(kept)" = 6 ] || complain "six are kept, it was $(kept)"
rm -rf "$work/home/thumbnails"
cp "$samples/../../art/icon.png" "${first%.duf}.png"
look 4 "$work/fourth.png"
cmp -s "$work/third.png" "$work/fourth.png" && complain "the picture beside a preset is shown"

# The helper alone: a line for each order, and an end.
printf '%s\t%s\n%s\t%s\n' "$first" "$work/one.png" "$poses/Broken.duf" "$work/two.png" |
    "$posebench" --thumbnails >"$work/said" || complain "the helper ends with 0"
[ "$(cat "$work/said")" = "$work/one.png
$work/two.png" ] || complain "the helper answers each: $(cat "$work/said")"
[ -s "$work/one.png" ] && [ ! -e "$work/two.png" ] || complain "it writes the one that can be read"

exit $((failures > 0))
