#!/bin/bash
# test_configure.sh SOURCE WORK - the two ways of configuring that this machine cannot build: against
# the real host's SDK and against a Qt 4.8 prefix, each a stub folder with empty files. Shows that
# CMake finds every file, builds the plug-in and nothing of the stand-in against the SDK, and
# that a folder that lacks something is refused with its name.
set -euo pipefail
source=$1
work=$2
failures=0
rm -rf "$work"

stub() { # FILE...: empty files, those in a bin folder executable
    for file in "$@"; do
        mkdir -p "$work/${file%/*}"
        : >"$work/$file"
        case $file in */bin/*) chmod +x "$work/$file" ;; esac
    done
}
parts=(Core Gui Script Network)
stub sdk/include/dzplugin.h sdk/lib/x64/dzcore.lib sdk/bin/x64/moc sdk/bin/x64/moc.exe
for part in "${parts[@]}"; do stub "sdk/include/Qt$part/qt.h" "sdk/lib/x64/Qt${part}4.lib"; done
for part in "${parts[@]}" Test; do stub "qt4/include/Qt$part/qt.h" "qt4/lib/libQt$part.so"; done
stub qt4/bin/moc

# configures TREE ARG...: sets status and says; the compiler is the one that works here
configures() {
    status=0
    says=$(cmake -G Ninja -S "$source" -B "$work/$1" -DCMAKE_CXX_COMPILER_WORKS=1 "${@:2}" 2>&1) || status=$?
}
expect() { # WHAT CONDITION...
    if ! "${@:2}"; then
        failures=$((failures + 1))
        printf 'FAILED: %s\n%s\n' "$1" "$(tail -n 20 <<<"$says")" >&2
    fi
}
says_so() { tr -s " \n" " " <<<"$says" | grep -F -- "$1" >/dev/null; } # CMake wraps its messages
builds() { ninja -C "$work/$1" -t targets all | grep -E -- "$2" >/dev/null; }
builds_not() { ! builds "$@"; }

# ---- the real host's SDK
configures sdk_tree -DQUILLON_DZSDK="$work/sdk"
expect "an SDK folder configures" [ $status = 0 ]
expect "the module is built" builds sdk_tree '^plugins/Quillon\.(so|dll): '
expect "against dzcore.lib" grep -q "sdk/lib/x64/dzcore.lib" "$work/sdk_tree/build.ninja"
expect "and its Qt" grep -q "sdk/lib/x64/QtGui4.lib" "$work/sdk_tree/build.ninja"
for defined in QT_DLL UNICODE _UNICODE; do
    expect "with $defined" grep -q -- "-D$defined " "$work/sdk_tree/build.ninja"
done
expect "by its moc" grep -q "sdk/bin/x64/moc" "$work/sdk_tree/build.ninja"
expect "gzip by zlib, for there is no dzgzio.h" builds sdk_tree 'ground/.*/host_gzip_zlib'
expect "alone" builds_not sdk_tree 'host_gzip_device'
expect "without the stand-in" builds_not sdk_tree '(libdzcore|posebench|/test_)'
expect "and without its headers" bash -c "! grep -q 'host/dzcore' '$work/sdk_tree/build.ninja'"

stub with_gzip/include/dzgzio.h
cp -r "$work/sdk/." "$work/with_gzip"
configures gzip_tree -DQUILLON_DZSDK="$work/with_gzip"
expect "gzip by the SDK's device where it has one" builds gzip_tree 'ground/.*/host_gzip_device'
configures gzip_tree -DQUILLON_GZIP=zlib
expect "or by zlib, told so" builds gzip_tree 'ground/.*/host_gzip_zlib'
configures gzip_tree -DQUILLON_GZIP=lzma
expect "or by nothing else" says_so "QUILLON_GZIP must be auto, device or zlib, not 'lzma'"
configures bare_tree -DQUILLON_DZSDK="$work/sdk" -DCMAKE_DISABLE_FIND_PACKAGE_ZLIB=ON
expect "an SDK without gzip needs zlib" says_so "set ZLIB_INCLUDE_DIR to the folder of zlib.h"

# what a release of it holds; the module stands for the one that Windows would build
mkdir -p "$work/sdk_tree/plugins"
: >"$work/sdk_tree/plugins/Quillon.so"
cmake --install "$work/sdk_tree" --prefix "$work/release" >/dev/null
says=$(cd "$work/release" && find . -type f ! -path './docs/Plugins/Quillon/pictures/*.png' | sort | tr '\n' ' ')
expect "a release is the module and the guide" \
    [ "$says" = "./docs/Plugins/Quillon/index.htm ./plugins/Quillon.so " ]
says=$("$source/tests/checks/documents.py" "$work/release" 2>&1) || true
expect "with all its pictures" [ "$says" = "all links of 1 documents lead somewhere" ]
says=$(cd "$work/release/docs/Plugins/Quillon" && comm -13 <(grep -o 'pictures/[^"]*' index.htm | sort -u) \
    <(find pictures -type f | sort))
expect "and no other file" [ "$says" = "" ]
says=$(cd "$work/sdk_tree" && cpack -D CPACK_STRIP_FILES=OFF -B "$work/packed" 2>&1 &&
    python3 -m zipfile -e "$work"/packed/Quillon-*.zip "$work/unpacked" && diff -r "$work/release" "$work/unpacked" && echo same) || true
expect "cpack packs it as a zip, to be unpacked over the host's folder" [ "${says##*$'\n'}" = same ]

for missing in include/dzplugin.h lib/x64/dzcore.lib lib/x64/QtScript4.lib include/QtGui; do
    rm -rf "$work/less" "$work/less_tree"
    cp -r "$work/sdk" "$work/less"
    rm -r "${work:?}/less/$missing"
    configures less_tree -DQUILLON_DZSDK="$work/less"
    expect "an SDK without $missing is refused" [ $status != 0 ]
    expect "by name" says_so "$work/less has no $missing"
done
rm -rf "$work/less_tree"
configures less_tree -DQUILLON_DZSDK="$work/nowhere"
expect "a missing SDK folder is refused" says_so "$work/nowhere has no include/dzplugin.h"

configures none_tree -DQUILLON_DZSDK_NEEDED=ON
expect "the preset sdk without an SDK is refused" says_so "Set QUILLON_DZSDK"

# ---- Qt 4.8
configures qt4_tree -DQUILLON_QT=4 -DQUILLON_QT4_DIR="$work/qt4"
expect "a Qt 4.8 prefix configures" [ $status = 0 ]
expect "plug-in and library are built" builds qt4_tree '^lib/libdzcore\.so'
expect "with unit tests" builds qt4_tree '^tests/test_ground'
expect "and that of Qt 4.8's accessible buttons" builds qt4_tree 'test_accessible_qt4'
expect "without posebench" builds_not qt4_tree 'bin/posebench'
expect "against its libraries" grep -q "qt4/lib/libQtGui.so" "$work/qt4_tree/build.ninja"
compiles() { # TREE FILE: the definitions that the file is compiled with
    ninja -C "$work/$1" -t commands | grep -- "$2\.cpp -c\|-c .*/$2\.cpp" | tr ' ' '\n' | grep '^-D'
}
defines() { compiles "$1" "$2" | grep -xF -- "-D$3" >/dev/null; }
defines_not() { ! defines "$@"; }
for library in CORE GUI SCRIPT NETWORK TESTLIB; do
    expect "a test knows of $library" defines qt4_tree ground/test_hash "QT_${library}_LIB"
done
expect "assertions are as chosen: off" defines qt4_tree ground/test_hash QT_NO_DEBUG
expect "and no Qt 5" bash -c "! grep -qi 'qt5' '$work/qt4_tree/build.ninja'"

configures asserts_tree -DQUILLON_QT=4 -DQUILLON_QT4_DIR="$work/qt4" -DQUILLON_ASSERTS=ON
expect "and on" defines_not asserts_tree ground/test_hash QT_NO_DEBUG

rm -rf "$work/none_tree"
configures none_tree -DQUILLON_QT=4
expect "Qt 4 without a prefix is refused" [ $status != 0 ]
expect "with what to give" says_so "QUILLON_QT=4 needs QUILLON_QT4_DIR"
for missing in bin/moc include/QtCore lib/libQtNetwork.so; do
    rm -rf "$work/less" "$work/less_tree"
    cp -r "$work/qt4" "$work/less"
    rm -r "${work:?}/less/$missing"
    configures less_tree -DQUILLON_QT=4 -DQUILLON_QT4_DIR="$work/less"
    expect "a prefix without $missing is refused" [ $status != 0 ]
    expect "by name" says_so "$work/less has no $missing"
done
configures six_tree -DQUILLON_QT=6
expect "other Qt versions are refused" says_so "QUILLON_QT must be 4 or 5, not '6'"

if [ $failures -gt 0 ]; then
    exit 1
fi
rm -rf "$work"
echo "both foreign builds configure, and say what they miss"
