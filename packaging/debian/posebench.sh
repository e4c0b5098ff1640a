#!/bin/sh
# posebench - the installed program, with the samples and its own home among the content directories, and
# a figure in a window that nothing else was asked of. All options are passed on.
set -eu
home=${QUILLON_HOME:-${XDG_DATA_HOME:-${HOME:-/}/.local/share}/quillon-posebench}
own=yes
figure=Genesis8Female
last=
for option in "$@"; do
    case $last in --home) home=$option ;; esac
    case $option in
    --home) own=no ;;
    --figure | --headless | --help) figure= ;;
    --script) figure= ; break ;; # what follows is the script's
    esac
    last=$option
done
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    figure=
fi
if [ $own = yes ]; then
    set -- --home "$home" "$@"
fi
if [ -n "$figure" ]; then
    set -- --figure "$figure" "$@"
fi
mkdir -p "$home" 2>/dev/null || true # the program says what is wrong with it
exec /usr/lib/quillon/bin/posebench --content /usr/share/quillon/samples --content "$home" "$@"
