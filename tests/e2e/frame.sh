#!/bin/bash
# frame.sh POSEBENCH SCRIPT - runs a script that looks at the plug-in's frame, in a home of its own
# and without a pane at the start.
set -u
home=$(mktemp -d) || exit 1
trap 'rm -rf "$home"' EXIT
"$1" --headless --home "$home" --temp "$home/Studio4/temp" --no-pane --script "$2"
