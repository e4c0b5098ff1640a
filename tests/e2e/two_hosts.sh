#!/bin/bash
# two_hosts.sh POSEBENCH [SAVES] - two hosts on one home save ranks, custom poses and settings at the
# same time, SAVES in all (100 unless told), and are killed now and then while they do. Nothing that
# either has saved may be lost.
set -u
posebench=$1
saves=$((${2:-100} / 2)) # of each host
here=$(cd "$(dirname "$0")" && pwd)
home=$(mktemp -d) || exit 1
trap 'rm -rf "$home"' EXIT
mkdir -p "$home/content" "$home/data"

bench() {
    "$posebench" --headless --home "$home" --content "$home/content" --content "$home/data" \
        --script "$@"
}

# host NAME: starts it again after each kill until all its saves are made. A kill comes when it has
# told of 6 to 25 saves more, in the middle of the next one.
host() {
    local name=$1 made=0 kills=0 told line left pid killed code
    RANDOM=$(($(printf '%d' "'$name")))
    while [ "$made" -lt "$saves" ]; do
        left=$((6 + RANDOM % 20)) told=0 killed=0
        exec 3< <(exec "$posebench" --headless --home "$home" --content "$home/content" \
            --content "$home/data" --script "$here/two_hosts.js" "$name" "$made" "$saves" 2>&1)
        pid=$!
        while read -r line <&3; do
            echo "$line" >>"$home/told_$name"
            case $line in
            "try "*) told=$((told + 1)) ;;
            "done "*) made=$((made + 1)) ;;
            "fail "*) made=$((made + 1)) ;;
            "seen "*) ;;
            *) echo "host $name: $line" >&2 && return 1 ;;
            esac
            if [ "$told" -gt "$left" ] && [ "$made" -lt "$saves" ]; then
                kill -KILL "$pid" && kills=$((kills + 1)) killed=1
                left=$saves
            fi
        done
        exec 3<&-
        wait "$pid"
        code=$?
        [ "$code" = 0 ] || [ "$killed $code" = "1 137" ] || {
            echo "host $name ended with $code" >&2
            return 1
        }
        [ "$told" -gt 0 ] || { echo "host $name did not begin" >&2 && return 1; }
    done
    echo "host $name was killed $kills times"
}

bench "$here/two_hosts_check.js" prepare || exit 1
host a &
a=$!
host b &
b=$!
wait "$a"
failed=$?
wait "$b" && [ "$failed" = 0 ] || exit 1
bench "$here/two_hosts_check.js" "$home/told_a" "$home/told_b" || exit 1
left=$(find "$home/data" -name '*.new' -o -name '*.lock')
[ -z "$left" ] || { echo "left behind: $left" >&2 && exit 1; }
