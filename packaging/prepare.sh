# prepare.sh - what ./run, ./test and tests/fuzz/run share: install, configure, build. Sourced, not run.
# Needs: $root, the top folder of the sources; $me, the name to put before messages.
# Gives: $build, the build tree, and its $preset, which a caller may set to others;
# packages_in, install_missing, configure, build_targets, fail.
# Messages and build output go to stderr, so that stdout is the program's alone.
# shellcheck shell=bash disable=SC2154

preset=release
build=$root/build/release

fail() {
    printf '%s: %s\n' "$me" "$*" >&2
    exit 1
}

# packages_in FILE: those of a list in packaging/, one a line.
packages_in() {
    grep -v '^#' "$root/packaging/$1" 2>/dev/null || fail "no package list $1 in packaging/"
}

# Names of the packages, listed or given, that are not installed; asks dpkg's own files, never the
# network.
missing_packages() {
    local wanted
    wanted=$(packages_in debian-packages.txt) || exit 1
    [ $# = 0 ] || wanted+=$(printf '\n%s' "$@")
    # dpkg-query says nothing about a package it has never heard of, hence the comparison
    # shellcheck disable=SC2086
    LC_ALL=C comm -23 <(LC_ALL=C sort <<<"$wanted") \
        <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' $wanted 2>/dev/null |
            sed -n 's/^installed //p' | LC_ALL=C sort -u) || true
}

# install_missing [package...]: installs what is missing of the list and of the packages given; with
# nothing missing the network is not touched.
install_missing() {
    local missing admin=()
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        printf '%s: this is no Debian system, so packages are not installed; see %s\n' \
            "$me" docs/developer/building.md >&2
        return 0
    fi
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    missing=${missing//$'\n'/ }
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null ||
            fail "missing packages, and neither root nor sudo to install them: $missing"
        admin=(sudo)
    fi
    printf '%s: installing %s\n' "$me" "$missing" >&2
    # One unreachable source need not hold the packages wanted here, so only installing decides.
    "${admin[@]}" apt-get update -qq >&2 || true
    # shellcheck disable=SC2086
    "${admin[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=300 $missing >&2 ||
        fail "apt-get could not install: $missing"
}

# The compiler cache stands where ccache always has it, or in the build tree when there is no
# home to write to.
choose_cache() {
    local cache=${XDG_CACHE_HOME:-${HOME:-}/.cache}/ccache
    if [ -z "${CCACHE_DIR:-}" ] && ! { [ -n "${XDG_CACHE_HOME:-${HOME:-}}" ] &&
        mkdir -p "$cache" 2>/dev/null && [ -w "$cache" ]; }; then
        export CCACHE_DIR=$root/build/ccache
    fi
}

# Configures a tree that is new, or that was copied here from another folder. Later changes of
# CMake files are Ninja's affair.
configure() {
    local made_for
    made_for=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$build/CMakeCache.txt" 2>/dev/null) ||
        true
    if [ -n "$made_for" ] && ! [ "$made_for" -ef "$root" ]; then
        rm -rf "$build"
    fi
    if [ ! -f "$build/build.ninja" ]; then
        (cd "$root" && cmake --preset "$preset") >&2 || fail "configuring failed, see above"
    fi
}

# build_targets [target...]: builds these, or everything. One build at a time per tree.
build_targets() {
    if ! mkdir -p "$root/build" 2>/dev/null || ! [ -w "$root/build" ]; then
        fail "cannot write to $root/build"
    fi
    choose_cache
    exec 9>"$root/build/.lock"
    flock 9
    configure
    ninja -C "$build" "$@" 9>&- >&2 || fail "the build failed, see above"
    exec 9>&-
}
