#!/bin/bash
# test_install.sh BUILD WORK - installs the built tree into a folder, moves that folder, and runs posebench
# there: it must find the library, the plug-in and the figures beside itself.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1
work=$2
rm -rf "$work"
mkdir -p "$work"

cmake --install "$build" --prefix "$work/first" >"$work/install.log"
mv "$work/first" "$work/moved"
cd "$work/moved"
for file in bin/posebench bin/quillon-catalogue plugins/Quillon.so share/doc/quillon/index.htm \
    share/quillon/figures/{Genesis8Female,Genesis8Male,Genesis8_1Female,Genesis8_1Male}.json; do
    if ! [ -s $file ]; then
        echo "not installed: $file" >&2
        exit 1
    fi
done
"$here/documents.py" .
others=$(find . -type f | grep -vE '^\./(bin/posebench|bin/quillon-catalogue|plugins/Quillon\.so|lib/libdzcore\.so[.0-9]*|share/(doc/)?quillon/.*|share/(applications|icons|man)/.*/?(posebench|quillon).*)$' || true)
if [ -n "$others" ]; then
    echo "installed without need: $others" >&2
    exit 1
fi

# A mark in the installed figure tells it from the one in the source tree.
sed -i 's/"label": "Genesis 8 Female"/"label": "installed figure"/' share/quillon/figures/Genesis8Female.json
cat >"$work/try.js" <<'JS'
var names = Bench.plugins().map(function (p) { return p.name; });
if (names.join() != "Quillon") throw new Error("plug-ins found: " + names);
var label = Scene.loadFigure("Genesis8Female").getLabel();
if (label != "installed figure") throw new Error("figure of another tree: " + label);
quit(0);
JS
QT_QPA_PLATFORM=offscreen bin/posebench --headless --home "$work/home" --script "$work/try.js"
mkdir "$work/content"
bin/quillon-catalogue "$work/catalogue" --content "$work/content" 2>/dev/null
[ -s "$work/catalogue/index.htm" ] || { echo "the installed catalogue writes no page" >&2; exit 1; }
if ! ldd plugins/Quillon.so | grep -F "$work/moved" | grep -F libdzcore >/dev/null; then
    echo "the plug-in does not use the library beside it:" >&2
    ldd plugins/Quillon.so >&2
    exit 1
fi
cd /
rm -rf "$work"
echo "the installed tree is whole and runs where it stands"
