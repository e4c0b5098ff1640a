#!/bin/bash
# crash_guard.sh POSEBENCH - kills posebench in the middle of the pane's construction, at each of
# several host calls, and starts it again. Uses a folder of its own below $TMPDIR.
set -u
posebench=$1
here=$(cd "$(dirname "$0")" && pwd)
home=$(mktemp -d) || exit 1
trap 'rm -rf "$home"' EXIT

bench() {
    "$posebench" --headless --home "$home" --temp "$home/Studio4/temp" "$@"
}

# call | whether the marker is written before it
for step in getDataFolderPath:bare getTempPath:bare getBoolValue:marked getContentMgr:marked \
            findAction:marked setIconFile:marked; do
    call=${step%%:*}
    marked=${step##*:}
    rm -rf "$home/data"
    bench --no-pane --script "$here/crash_guard_prepare.js" || exit 1
    bench --die-at "$call" --script "$here/crash_guard_prepare.js" 2>/dev/null
    code=$?
    if [ $code -le 128 ]; then
        echo "a start killed at $call ended with exit code $code instead of a signal" >&2
        exit 1
    fi
    bench --no-pane --script "$here/crash_guard.js" "$marked" || {
        echo "after a start killed at $call" >&2
        exit 1
    }
done
