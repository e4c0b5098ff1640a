#!/bin/bash
# run.sh POSEBENCH SAMPLES - posebench on a screen of its own, with a bus of its own, and a client of
# assistive technology that works it (client.py). Needs xvfb, at-spi2-core, dbus, python3-pyatspi.
set -u
posebench=$1
samples=$2
here=$(cd "$(dirname "$0")" && pwd)
for program in xvfb-run dbus-run-session; do
    command -v $program >/dev/null || { echo "there is no $program" >&2; exit 1; }
done
work=$(mktemp -d) || exit 1
trap 'rm -rf "$work"' EXIT
mkdir -m 700 "$work/runtime"
mkdir -p "$work/content/People/Genesis 8 Female/Poses/Maker"
find "$samples/People/Genesis 8 Female" -name '*.duf' | sort | head -12 | while read -r pose; do
    cp "$pose" "$work/content/People/Genesis 8 Female/Poses/Maker"
done
export XDG_RUNTIME_DIR=$work/runtime HOME=$work
export QT_ACCESSIBILITY=1 QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 NO_AT_BRIDGE=0
unset QT_QPA_PLATFORM

cat >"$work/session.sh" <<SESSION
"$posebench" --home "$work/home" --content "$work/content" --script "$here/scan.js" >"$work/out" &
bench=\$!
for i in \$(seq 200); do
    grep -q ready "$work/out" && break
    kill -0 \$bench 2>/dev/null || break
    sleep 0.05
done
timeout 60 /usr/bin/python3 "$here/client.py"
code=\$?
for i in \$(seq 400); do
    kill -0 \$bench 2>/dev/null && [ \$code = 0 ] || break
    sleep 0.05
done
kill \$bench 2>/dev/null && [ \$code = 0 ] && { echo "it was left, and stays" >&2; code=1; }
wait \$bench
left=\$?
[ \$code = 0 ] && code=\$left
exit \$code
SESSION
xvfb-run -a -s "-screen 0 1600x1000x24" dbus-run-session -- bash "$work/session.sh"
