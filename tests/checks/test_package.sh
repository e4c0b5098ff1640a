#!/bin/bash
# test_package.sh SOURCE BUILD WORK - makes the Debian package, unpacks it, and looks: lintian has no error, nothing is
# missing, documents have no dead links, the program runs with figures, plug-in and samples of the package, and what the
# command of the package tells it. packaging/try_package.sh installs it in a system of its own.
set -euo pipefail
source=$1
build=$2
work=$3
rm -rf "$work"
mkdir -p "$work/home"
failures=0

expect() { # WHAT CONDITION...
    if ! "${@:2}" >"$work/said" 2>&1; then
        failures=$((failures + 1))
        printf 'FAILED: %s\n%s\n' "$1" "$(tail -n 20 "$work/said")" >&2
    fi
}

cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work/packages" >"$work/cpack.log" 2>&1 || {
    cat "$work/cpack.log" >&2
    exit 1
}
package=$(ls "$work"/packages/quillon_*.deb)
dpkg-deb -x "$package" "$work/root"
root=$work/root

expect "lintian has no error" lintian --allow-root --fail-on error "$package"
depends=$(dpkg-deb -f "$package" Depends)
for library in libqt5widgets5 libqt5script5 libqt5network5 zlib1g libc6 fonts-dejavu-core; do
    expect "it depends on $library, $depends" grep -q "\b$library\b" <<<"$depends"
done
for file in bin/posebench lib/quillon/{bin/posebench,plugins/Quillon.so,lib/libdzcore.so.4} share/applications/posebench.desktop \
    share/icons/hicolor/{scalable/apps/quillon.svg,64x64/apps/quillon.png} share/man/man1/posebench.1.gz \
    share/doc/quillon/{index.htm,pictures/page_main.png,copyright,changelog.gz,CHANGES.md} share/quillon/figures/Genesis8Female.json \
    "share/quillon/samples/People/Genesis 8 Male/Poses/Brannoc/Have a Seat/Slouching.duf"; do
    expect "it has $file" test -s "$root/usr/$file"
done
for program in "$root"/usr/lib/quillon/bin/*; do
    expect "a command and a manual page for ${program##*/}" \
        test -e "$root/usr/bin/${program##*/}" -a -s "$root/usr/share/man/man1/${program##*/}.1.gz"
done
for page in "$root"/usr/share/man/man1/*.gz; do
    expect "man reads ${page##*/} without a warning" \
        bash -c '[ -z "$(zcat "$0" | groff -man -Tutf8 -ww -z 2>&1)" ]' "$page"
done
expect "its desktop entry is valid" desktop-file-validate "$root/usr/share/applications/posebench.desktop"
expect "its documents have no dead links" "$source/tests/checks/documents.py" "$root/usr/share/doc/quillon"

# A mark in the package's figure tells it from the one in the sources.
sed -i 's/"label": "Genesis 8 Female"/"label": "packaged figure"/' "$root/usr/share/quillon/figures/Genesis8Female.json"
cat >"$work/try.js" <<'JS'
var names = Bench.plugins().map(function (p) { return p.name; });
if (names.join() != "Quillon") throw new Error("plug-ins found: " + names);
var label = Scene.loadFigure("Genesis8Female").getLabel();
if (label != "packaged figure") throw new Error("figure of another tree: " + label);
quit(0);
JS
expect "the program runs" env QT_QPA_PLATFORM=offscreen "$root/usr/lib/quillon/bin/posebench" --headless \
    --home "$work/home" --content "$root/usr/share/quillon/samples" --script "$work/try.js"

# The package's command, with a program that tells its arguments.
printf '#!/bin/bash\necho "$*"\n' >"$work/program"
chmod +x "$work/program"
sed "s|/usr/lib/quillon/bin/posebench|$work/program|" "$root/usr/bin/posebench" >"$work/command"
samples=/usr/share/quillon/samples
tells() { # EXPECTED SURROUNDINGS... -- ARG...
    local expected=$1 surroundings=()
    shift
    while [ "$1" != -- ]; do surroundings+=("$1") && shift; done
    shift
    says=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QUILLON_HOME -u XDG_DATA_HOME HOME="$work/home" "${surroundings[@]}" \
        sh "$work/command" "$@" 2>&1) || true
    if [ "$says" != "$expected" ]; then
        failures=$((failures + 1))
        printf 'FAILED: posebench %s\n  tells: %s\n  not:   %s\n' "$*" "$says" "$expected" >&2
    fi
}
home=$work/home/.local/share/quillon-posebench
tells "--content $samples --content $home --home $home --headless" -- --headless
tells "--content $samples --content $home --figure Genesis8Female --home $home" DISPLAY=:7 --
tells "--content $samples --content $home --home $home" --
tells "--content $samples --content $home --home $home --figure Genesis8Male" DISPLAY=:7 -- --figure Genesis8Male
tells "--content $samples --content $work/x --headless --home $work/x" -- --headless --home "$work/x"
tells "--content $samples --content $work/y --home $work/y --headless" QUILLON_HOME="$work/y" -- --headless
tells "--content $samples --content $work/z/quillon-posebench --home $work/z/quillon-posebench --headless" \
    XDG_DATA_HOME="$work/z" -- --headless
tells "--content $samples --content $home --home $home --script s.js --home b" DISPLAY=:7 -- --script s.js --home b

if [ $failures -gt 0 ]; then
    exit 1
fi
rm -rf "$work"
echo "the package is whole"
