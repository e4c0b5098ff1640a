#!/bin/bash
# command_line.sh POSEBENCH TRIAL_PLUGIN - what posebench refuses: exit 2, one line on stderr,
# nothing on stdout, nothing written. And what it takes.
set -u
posebench=$1
plugin=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d) || exit 1
trap 'rm -rf "$work"' EXIT
mkdir -m 700 "$work/runtime" # the toolkit makes one of its own in TMPDIR when the user has none
export XDG_RUNTIME_DIR=$work/runtime
failures=0

complain() {
    echo "not so: $1" >&2
    failures=$((failures + 1))
}

prepare() {
    rm -rf "$work/box"
    mkdir -p "$work/box/user" "$work/box/content"
    cd "$work/box" || exit 1
    export HOME=$work/box/user TMPDIR=$work/box
    echo "this is a text" >file
    cp file file.duf
    cp "$library" library.so
    find . | sort >"$work/before"
}

# refuses 'what has to stand in the message' argument...
refuses() {
    local words=$1
    shift
    prepare
    "$posebench" "$@" >"$work/out" 2>"$work/err"
    local code=$?
    find . | sort >"$work/after"
    [ $code = 2 ] || complain "[$*] ends with 2, it was $code"
    [ "$(wc -l <"$work/err")" = 1 ] || complain "[$*] one line on stderr: $(cat "$work/err")"
    grep -q "^posebench: .*$words" "$work/err" || complain "[$*] tells '$words': $(cat "$work/err")"
    [ ! -s "$work/out" ] || complain "[$*] is silent on stdout"
    cmp -s "$work/before" "$work/after" || complain "[$*] writes nothing: $(diff "$work/before" "$work/after")"
}

library=$(ldd "$posebench" | awk '/libQt5Core/ {print $3}') # a library, but no plug-in

refuses "unknown option '--bogus'" --bogus
refuses "unknown option '-x'" --headless -x
refuses "unexpected argument 'word'" word
refuses "script 'none.js' does not exist" --headless --home h --script none.js
refuses "script '.' does not exist" --headless --home h --script .
refuses "needs a value" --headless --home h --script
refuses "needs a value" --headless --home
refuses "content directory 'none' does not exist" --headless --home h --content content --content none
refuses "content directory 'file' does not exist" --headless --home h --content file
refuses "plug-in file 'none.so' does not exist" --headless --home h --plugin none.so
refuses "plug-in .*file: not a library" --headless --home h --plugin file
refuses "plug-in .*not a plug-in" --headless --home h --plugin library.so
refuses "home '.*file' cannot be used" --headless --home file
refuses "home '.*below' cannot be used" --headless --home file/below
refuses "unknown figure 'Nobody'" --headless --home h --figure Nobody
refuses "no node 'nose'" --headless --home h --figure Genesis8Female --select nose
refuses "no node 'hip'" --headless --home h --select hip
for size in 12 12x 0x5 5x-1 axb 1x2x3 99999x1 ""; do
    refuses "is no size" --headless --home h --size "$size"
done
for proxy in 8080 host: host:0 host:99999 :80 ""; do
    refuses "is no proxy" --headless --home h --proxy "$proxy"
done
refuses "pose preset 'none.duf' does not exist" --headless --home h none.duf
refuses "file.duf" --headless --home h file.duf # no preset inside
refuses "screenshot" --headless --home h --screenshot none/x.png
refuses "needs the name of a host call" --headless --home h --die-at ""
refuses "'noSuchCall' is no call" --headless --home h --die-at noSuchCall
refuses "'noSuchCall' is no call" --headless --home h --die-at noSuchCall:2
for call in findAction: findAction:0 findAction:-1 findAction:x findAction:1:2 findAction:99999999999; do
    refuses "'$call' tells no call" --headless --home h --die-at "$call"
done
(
    unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
    refuses "no display" --home h
    exit $failures
)
failures=$?

prepare
"$posebench" --help >"$work/out" 2>"$work/err" || complain "--help ends with 0"
[ ! -s "$work/err" ] || complain "--help is silent on stderr"
for option in $(printf '%s\n' --headless --home --data --temp --content --plugin --no-pane --figure \
        --select --size --proxy --die-at --screenshot --script --help); do
    grep -q -- "$option" "$work/out" || complain "--help tells of $option"
done
for call in setRawValue execute gzRead opendir readdir flock 'CALL\[:N\]'; do
    grep -qw -- "$call" "$work/out" || complain "--help tells of the call $call"
done
grep -q "example" "$work/out" || complain "--help has an example"
cmp -s "$work/before" <(find . | sort) || complain "--help writes nothing"

prepare
mkdir "content ж"
"$posebench" --headless --home h --no-pane --plugin "$plugin" --figure Genesis8_1Male --select lHand \
    --size 1200x800 --data /C:/somewhere/data/base --temp "" --content "content ж/" --content user \
    --screenshot shot.png --script "$here/options.js" --no-pane café "" || complain "every option is taken"

# A plug-in that is named twice, in whatever words, is loaded once.
prepare
cp "$plugin" plugin.so
echo 'quit(Bench.plugins().length)' >count.js
"$posebench" --headless --home h --plugin plugin.so --plugin ./content/../plugin.so --script count.js
code=$?
[ $code = 1 ] || complain "one plug-in is loaded, it was $code"

# Presets are applied in their order, to a figure that comes by itself; a start is nothing to undo.
prepare
for pose in "one l 20" "two r 30" "three l 40"; do
    read -r name side angle <<<"$pose"
    echo "{\"asset_info\": {\"type\": \"preset_pose\"}, \"scene\": {\"animations\": [{
        \"url\": \"name://@selection/${side}Shin:?rotation/x/value\", \"keys\": [[0, $angle]]}]}}" >"$name.duf"
done
cat >posed.js <<'JS'
function x(bone) { return Scene.getPrimarySelection().findBone(bone).getXRotControl().getValue(); }
quit(x("lShin") == 40 && x("rShin") == 30 && UndoStack.count() === 0
    && Scene.getPrimarySelection().getName() == args[0] ? 0 : 1);
JS
"$posebench" --headless --home h one.duf two.duf three.duf --script posed.js Genesis8Female ||
    complain "presets are applied"
"$posebench" --headless --home h one.duf --figure Genesis8_1Male two.duf three.duf --script posed.js Genesis8_1Male ||
    complain "presets are applied to the figure asked for"

# The home: --home, else QUILLON_HOME, else a folder of the user's data.
prepare
homed() { # homed FOLDER VARIABLE=VALUE... -- the home that is used
    local want=$1
    shift
    env -u QUILLON_HOME -u XDG_DATA_HOME "$@" "$posebench" --headless --no-pane \
        --script "$here/outcomes/nothing.js" >/dev/null || complain "it runs with $*"
    [ -d "$want/data" ] || complain "the home is $want with $*: $(find . -name data)"
}
homed "$work/box/mine" QUILLON_HOME="$work/box/mine"
homed "$work/box/here" QUILLON_HOME=here XDG_DATA_HOME="$work/box/share"
homed "$work/box/share/quillon-posebench" XDG_DATA_HOME="$work/box/share"
homed "$work/box/user/.local/share/quillon-posebench"
homed "$work/box/user2/.local/share/quillon-posebench" HOME="$work/box/user2" QUILLON_HOME=

# The window is as large as was asked for, also where its panels want more.
prepare
echo 'quit(MainWindow.width == 800 && MainWindow.height == 600 ? 0 : 1)' >size.js
"$posebench" --headless --home h --size 800x600 --screenshot shot.png --script size.js 2>err ||
    complain "the window is 800x600"
[ ! -s err ] || complain "a small window is no reason for a message: $(cat err)"
[ "$(od -An -tx1 -j16 -N8 shot.png | tr -d ' ')" = 0000032000000258 ] || complain "so is its picture"

# The built-in demo tells where its picture and its report are.
prepare
"$posebench" --headless --home h --plugin "$plugin" >"$work/out" || complain "the demo ends with 0"
[ "$(wc -l <"$work/out")" = 2 ] || complain "the demo prints two paths: $(cat "$work/out")"
while read -r path; do
    [ -s "$path" ] || complain "the demo has written '$path'"
done <"$work/out"
[ "$(grep -c '170 bones' h/report.txt)" = 4 ] || complain "the report tells of four figures"
[ "$(head -c 4 h/contact-sheet.png | tail -c 3)" = PNG ] || complain "the contact sheet is a PNG"

# Whatever the locale, names of files survive.
prepare
echo 'quit(Bench.writeFile("ü-" + args[0], "YQ==") ? 0 : 3)' >"ж.js"
LC_ALL=C "$posebench" --headless --home "ö" --script "ж.js" "ß" || complain "it runs in the C locale"
[ "$(cat "ü-ß")" = a ] && [ -d "ö/data" ] || complain "names survive the C locale: $(ls)"

# Folders that cannot be had are done without.
prepare
mkdir h
touch h/data h/temp h/docs
"$posebench" --headless --home h --plugin "$plugin" --script "$here/outcomes/nothing.js" >/dev/null ||
    complain "it starts without its folders"

exit $((failures > 0))
