#!/bin/bash
# frame.sh POSEBENCH SCRIPT - runs a script that looks at the plug-in's frame, in a home of its own
# and without a pane at the start. Nothing may be written to stderr.
set -u
home=$(mktemp -d) || exit 1
trap 'rm -rf "$home"' EXIT
"$1" --headless --home "$home/home" --temp "$home/home/Studio4/temp" --no-pane --script "$2" \
    2>"$home/err" || { code=$?; cat "$home/err" >&2; exit $code; }
[ ! -s "$home/err" ] || { echo "on stderr: $(cat "$home/err")" >&2; exit 1; }
