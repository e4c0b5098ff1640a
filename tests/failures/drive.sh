#!/bin/bash
# drive.sh POSEBENCH SCRIPT [ARG...] - runs a script of this folder in a home of its own, which is
# gone afterwards: once more after each kill, in the same home. "full.js" gets a small disk for it, and
# is not run where there can be none: 77 then. Otherwise it ends as the script does.
# A web server on the loopback has the picture of a new version. The home lies in memory where that can be had: what a kill leaves is the same there.
set -u
posebench=$1
script=$2
shift 2
here=$(cd "$(dirname "$0")" && pwd)
small=3m # of the disk for full.js

if [ "$script" = full.js ] && [ -z "${QUILLON_OWN_MOUNTS:-}" ]; then
    if ! unshare -rm mount -t tmpfs -o size=$small tmpfs /mnt 2>/dev/null; then
        echo "no disk can be mounted here: nothing was tried on a full one"
        exit 77
    fi
    QUILLON_OWN_MOUNTS=1 exec unshare -rm "$0" "$posebench" "$script" "$@"
fi
[ -w /dev/shm ] && export TMPDIR=/dev/shm
home=$(mktemp -d) || exit 1
trap 'umount "$home/disk" 2>/dev/null; rm -rf "$home"' EXIT
export XDG_CONFIG_HOME=$home/config XDG_RUNTIME_DIR=$home/runtime
mkdir -m 700 "$home/runtime" "$home/disk"
[ "$script" != full.js ] || mount -t tmpfs -o size=$small tmpfs "$home/disk" || exit 1
mkdir -p "$home/disk/content" "$home/disk/data"

# The web server lives as long as this end of the pipe.
mkfifo "$home/port" "$home/alive"
python3 "$here/serve_picture.py" "$here/picture.png" <"$home/alive" >"$home/port" 2>/dev/null &
exec 9>"$home/alive"
read -r port <"$home/port" || { echo "no web server can be started" >&2; exit 1; }

start() {
    exec 9>&-
    exec "$posebench" --proxy "127.0.0.1:$port" --headless --no-pane --home "$home/disk" --content "$home/disk/content" \
        --content "$home/disk/data" --script "$here/$script" "$@"
}

killed=137
starts=0
code=$killed
while [ $code = $killed ] && [ $starts -lt 20000 ]; do
    start "$@" 2>"$home/err" & # in the foreground the shell would tell of each kill
    wait $! 2>/dev/null
    code=$?
    starts=$((starts + 1))
done
[ $code = 0 ] || { cat "$home/err" >&2; echo "$script ended with $code" >&2; }
exit $code
