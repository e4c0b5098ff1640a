#!/bin/bash
# mishap.sh POSEBENCH MISHAP - what a mishap may cost: nothing. Brings one about in a home with 16
# poses, 6 of them ranked, and a reference pose, and finds every byte of these again: where it was, or
# in the backups, from where it comes back by copying.
set -u
posebench=$1
here=$(cd "$(dirname "$0")" && pwd)
home=$(mktemp -d) || exit 1
trap 'rm -rf "$home"' EXIT
mkdir -p "$home/content" "$home/data"
data=$home/data/Brannoc/Quillon

fail() {
    echo "$*" >&2
    exit 1
}

start=(--headless --home "$home" --content "$home/content" --content "$home/data")
act() { # ACT
    "$posebench" "${start[@]}" --script "$here/mishap.js" "$1" || fail "$1 did not hold"
}

# COUNT: a start that warns of nothing finds so many poses.
starts_with() {
    local line
    line=$("$posebench" "${start[@]}" --no-pane --script "$here/mishap.js" quiet_start) \
        || fail "a start warned"
    [ "${line##* }" = "$1" ] || fail "a start found: $line"
}

# ACT COMMAND...: the act by a host that was started before the command and goes on after it.
act_after() {
    local act=$1 line pid
    shift
    exec 3< <(exec "$posebench" "${start[@]}" --script "$here/mishap.js" "$act" "$home/pipe")
    pid=$!
    read -r line <&3 && [ "$line" = started ] || fail "it said: $line"
    "$@"
    echo >"$home/pipe"
    wait "$pid" || fail "$act did not hold"
    exec 3<&-
}

# FILE...: has the bytes that it had before the mishap.
is_unchanged() {
    local name
    for name; do
        cmp "$home/before/$name" "$data/$name" || fail "$name was changed"
    done
}

# FILE...: brings a copy with the bytes of before back, as the guide tells it.
bring_back() {
    local name copy
    for name; do
        for copy in "$data/backup/$name".*.bak; do
            if cmp -s "$copy" "$home/before/$name"; then
                cp "$copy" "$data/$name" && continue 2
            fi
        done
        fail "$name is neither live nor in the backups"
    done
}

tidy() { # after a start and an end nothing lies beside the files
    local left
    left=$(find "$home/data" -name '*.new' -o -name '*.lock' -o -name 'crashed_*')
    [ -z "$left" ] || fail "left behind: $left"
}

killed_while_memorizing() {
    local n line pid
    for n in 1 2 3 5 8 13; do
        exec 3< <(exec "$posebench" "${start[@]}" --script "$here/mishap.js" memorize_for_ever)
        pid=$!
        for ((; n > 0; --n)); do
            read -r line <&3 && [ "$line" = memorized ] || fail "it said: $line"
        done
        kill -KILL "$pid"
        exec 3<&-
        wait "$pid" 2>/dev/null
        gzip -t "$data/reference.duf" || fail "the reference pose is not whole"
    done
    act write_fails
    is_unchanged "$ranks"
}

offline_and_four_times_next() {
    act_after next_four_times mv "$home/content" "$home/offline"
    is_unchanged "$index" "$ranks" reference.duf
    mkdir "$home/content" # where the drive is mounted
    act next_four_times
    is_unchanged "$index" "$ranks" reference.duf
    rmdir "$home/content" && mv "$home/offline" "$home/content"
    starts_with 16
}

offline_and_a_scan() {
    act_after scan mv "$home/content" "$home/offline"
    cmp -s "$home/before/$index" "$data/$index" && fail "the scan did nothing"
    is_unchanged "$ranks"
    mv "$home/offline" "$home/content"
    bring_back "$index" reference.duf
    is_unchanged "$index" "$ranks" reference.duf
    act scan_with_failing_opendir
    bring_back reference.duf
}

cancelled_scan() {
    act cancel_a_scan_and_save
    bring_back reference.duf
    is_unchanged "$ranks" reference.duf
}

killed_while_it_starts() {
    starts_with 16
    ("$posebench" "${start[@]}" --die-at setIconFile --script "$here/mishap.js" nothing; exit $?) \
        2>/dev/null && fail "the start was not killed"
    [ "$(od -An -tx1 "$data/crashed_"*.dat)" = " 4d 00 00 00" ] || fail "no crash marker was left"
    "$posebench" "${start[@]}" --no-pane --script "$here/mishap.js" warned_start \
        || fail "the next start did not warn"
    act scan # which brings the ranks back
    cmp <(ranks_of "$home/before/$ranks") <(ranks_of "$data/$ranks") || fail "ranks are lost"
    rm "$data/$settings"
    bring_back "$index" "$settings" reference.duf
    starts_with 16
    act unlink_fails
}

# The records of a rank file, sorted.
ranks_of() {
    tail -c +9 "$1" | od -An -v -tx8 -w8 | sort
}

newer_host() {
    act newer_host
    rm -rf "$home/before" && cp -r "$data" "$home/before"
}

two_hosts() {
    act_after nothing newer_host # the older one ends last
    is_unchanged "$index" "$settings" "$ranks" reference.duf custom/mine.duf
    # As while another host starts: its marker is there, and it holds the lock.
    printf '\x4d\0\0\0' >"$data/crashed_$key.dat"
    exec 4>"$data/crashed_$key.dat.lock"
    flock 4
    starts_with 17
    exec 4>&-
    is_unchanged "$index" "$settings" "$ranks" reference.duf
    rm "$data/crashed_$key.dat"*
}

mkfifo "$home/pipe"
act prepare
index=$(cd "$data" && echo poseIndex_*.dat)
key=${index#poseIndex_} key=${key%.dat}
ranks=ranks_$key.dat settings=settings_$key.dat
cp -r "$data" "$home/before"
"$2"
tidy
