#!/bin/bash
# test_commands.sh SOURCE WORK - ./run, ./test, tests/fuzz/run and tests/failures/run with every tool
# that they call replaced by one that writes down its arguments: what is installed, built and started,
# and what is said when it fails. Nothing is installed or built.
set -euo pipefail
source=$1
work=$2
log=$work/log
tools=$work/tools
tree=$work/tree
failures=0
extra= # more arguments of env, for one start

# tool NAME [BODY]: a stand-in that logs its call, then runs the body.
tool() {
    printf '#!/bin/bash\necho "%s $*" >>"%s"\n%s\n' "$1" "$log" "${2:-}" >"$tools/$1"
    chmod +x "$tools/$1"
}

# A copy of the commands in a tree that is configured and built, on a machine that lacks nothing.
fresh() {
    rm -rf "$work"
    mkdir -p "$tools" "$tree/packaging" "$tree/samples/People" "$tree/build/release/bin" "$work/home" \
        "$tree/.ci" "$tree/tests/coverage"
    cp "$source/run" "$source/test" "$tree/"
    cp "$source/.ci/run" "$tree/.ci/"
    cp "$source/packaging/prepare.sh" "$source/packaging/"*-packages.txt "$tree/packaging/"
    touch "$tree/build/release/build.ninja"
    for name in apt-get sudo cmake ninja ctest; do tool $name; done
    tool sudo 'exec "$@"'
    tool id 'echo 0'
    tool dpkg-query 'for p in "$@"; do case $p in -*) ;; *) echo "installed $p" ;; esac; done'
    tool posebench
    mv "$tools/posebench" "$tree/build/release/bin/"
    tool report.py
    mv "$tools/report.py" "$tree/tests/coverage/"
    : >"$log"
}

# shellcheck disable=SC2086 # extra is split on purpose
# starts COMMAND ARG...: runs ./run or ./test of the tree without a display; sets status, says.
starts() {
    status=0
    says=$(cd "$tree" && env -u DISPLAY -u WAYLAND_DISPLAY -u XDG_DATA_HOME -u QUILLON_HOME \
        -u XDG_CACHE_HOME -u CCACHE_DIR HOME="$work/home" PATH="$tools:$PATH" env $extra \
        "./$1" "${@:2}" 2>&1 </dev/null) || status=$?
}

expect() { # WHAT CONDITION...
    if ! "${@:2}"; then
        failures=$((failures + 1))
        printf 'FAILED: %s\n  log: %s\n  said: %s\n' "$1" "$(tr '\n' ';' <"$log")" "$says" >&2
    fi
}
logged() { grep -qxF -- "$1" "$log"; }
not_logged() { ! grep -qE -- "$1" "$log"; }

lacks() { # PACKAGE: dpkg does not have it
    tool dpkg-query "for p in \"\$@\"; do case \$p in -*|$1) ;; *) echo \"installed \$p\" ;; esac; done; exit 1"
}

home=$work/home/.local/share/quillon-posebench

# ---- nothing missing
fresh
starts test
expect "test ends well" [ $status = 0 ]
expect "nothing is installed when nothing is missing" not_logged '^(apt-get|sudo) '
expect "a configured tree is not configured again" not_logged '^cmake '
expect "everything is built" logged "ninja -C $tree/build/release"
expect "the tests run" logged \
    "ctest --test-dir $tree/build/release --output-on-failure --no-tests=error --parallel $(nproc)"
fresh
starts test -R checks
expect "options go to ctest" logged \
    "ctest --test-dir $tree/build/release --output-on-failure --no-tests=error --parallel $(nproc) -R checks"

fresh
starts test --sanitize
expect "the sanitizers have a tree of their own" logged "cmake --preset asan"
expect "everything in it is built" logged "ninja -C $tree/build/asan"
expect "and what it changes is tested" logged \
    "ctest --test-dir $tree/build/asan --output-on-failure --no-tests=error --parallel $(nproc) -LE sources"
fresh
starts test --sanitize=2/3 -R unit
expect "a part of it is each third test" logged \
    "ctest --test-dir $tree/build/asan --output-on-failure --no-tests=error --parallel $(nproc) -LE sources -I 2,,3 -R unit"
fresh
starts test --sanitize=0/3
expect "a part that is none is refused" [ "$says" = "test: --sanitize=0/3: a part is told as in --sanitize=2/3" ]
expect "before anything is built" not_logged '^ninja '
fresh
tool ctest 'exit 8'
starts test --sanitize
expect "a red test fails it" [ $status = 8 ]
fresh
lacks gcovr
mkdir -p "$tree/build/coverage"
touch "$tree/build/coverage/old.gcda"
starts test --coverage
expect "what only coverage needs is installed for it" logged \
    "apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=300 gcovr"
expect "it has a tree of its own" logged "cmake --preset coverage"
expect "what earlier tests reached is forgotten" [ ! -e "$tree/build/coverage/old.gcda" ]
expect "and tells of the tests that ran" logged "report.py $tree $tree/build/coverage"
for commits in 4 5; do
    fresh
    tool git "echo $commits"
    starts .ci/run
    expect "everything is tested first" logged "ninja -C $tree/build/release"
    expect "then a third, by the number of commits" \
        grep -q -- "-I $((commits % 3 + 1)),,3\$" "$log"
done

# ---- something missing
fresh
lacks ninja-build
starts test
expect "the list is refreshed first" logged "apt-get update -qq"
expect "only what is missing is installed" logged \
    "apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=300 ninja-build"
fresh
lacks clang-format-14
starts test
expect "what only tests need is installed, too" logged \
    "apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=300 clang-format-14"
fresh
lacks clang-format-14
tool apt-get 'exit 100'
starts test
expect "without it only the test that needs it fails" [ $status = 0 ]
fresh
lacks clang-format-14
starts run --headless
expect "but not to run it" not_logged '^apt-get '
fresh
lacks chromium
starts test
expect "tests get a browser" logged \
    "apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=300 chromium"
fresh
lacks chromium
starts run --headless
expect "who runs it gets none" not_logged '^apt-get '
rm "$tree/packaging/debian-packages.txt"
starts test
expect "without the list of packages nothing is done" [ $status = 1 ]
expect "and that is said" [ "$says" = "test: no package list debian-packages.txt in packaging/" ]
fresh
rm "$tree/packaging/test-packages.txt"
starts test
expect "a missing list of the tests' packages is told" \
    grep -qxF "test: no package list test-packages.txt in packaging/" <<<"$says"
fresh
lacks ninja-build
tool id 'echo 1000'
starts test
expect "a user installs through sudo" logged \
    "sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=300 ninja-build"
fresh
lacks ninja-build
tool apt-get 'exit 100'
starts test
expect "a failed installation ends it" [ $status = 1 ]
expect "and says so" [ "${says##*$'\n'}" = "test: apt-get could not install: ninja-build" ]
expect "and builds nothing" not_logged '^ninja '

fresh
lacks clang-format-14
tool clang-format-14 'exit 127'
tool clang-format 'echo clang-format version 19.1'
status=0
says=$(PATH="$tools:$PATH" "$source/tests/checks/check_format.sh" "$source" 2>&1) || status=$?
expect "the check of the format installs what it needs" logged \
    "apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=300 clang-format-14"
expect "and fails, not passes, without it" [ $status = 1 ]

# ---- configuring and building
fresh
rm "$tree/build/release/build.ninja"
starts test
expect "a new tree is configured" logged "cmake --preset release"
fresh
echo "CMAKE_HOME_DIRECTORY:INTERNAL=/elsewhere" >"$tree/build/release/CMakeCache.txt"
starts test
expect "a tree that was configured elsewhere is configured anew" logged "cmake --preset release"
expect "from nothing" [ ! -e "$tree/build/release/CMakeCache.txt" ]
fresh
tool ninja 'exit 1'
starts run
expect "a failed build ends it" [ $status = 1 ]
expect "in one line" [ "$says" = "run: the build failed, see above" ]

# ---- the catalogue
fresh
mkdir "$work/poses"
tool quillon-catalogue
mv "$tools/quillon-catalogue" "$tree/build/release/bin/"
starts run --catalogue "$work/out" --content "$work/poses" --home "$work/other home"
expect "the catalogue gets its options and no others" logged \
    "quillon-catalogue $work/out --content $work/poses --home $work/other home"
expect "only the catalogue is built for it" logged "ninja -C $tree/build/release quillon-catalogue"
expect "posebench is not started" not_logged '^posebench '
expect "and its home is not made" [ ! -e "$home" ]

# ---- what posebench is told
fresh
starts run --headless
expect "the samples come first, the home last" logged \
    "posebench --content $tree/samples --home $home --headless --content $home"
expect "only the application and the plug-in are built" logged \
    "ninja -C $tree/build/release posebench Quillon"
fresh
starts run
expect "without a display it runs headless" logged \
    "posebench --content $tree/samples --home $home --headless --content $home"
fresh
extra=DISPLAY=:7 starts run
expect "with a display there is a window with a figure" logged \
    "posebench --content $tree/samples --home $home --figure Genesis8Female --content $home"
fresh
extra=DISPLAY=:7 starts run --figure Genesis8_1Male
expect "with the figure asked for" logged \
    "posebench --content $tree/samples --home $home --figure Genesis8_1Male --content $home"
fresh
extra=DISPLAY=:7 starts run --script s.js
expect "with none where a script decides" logged \
    "posebench --content $tree/samples --home $home --content $home --script s.js"
fresh
starts run --headless --content /a --script s.js --content /b
expect "a script's arguments stay the last" logged \
    "posebench --content $tree/samples --home $home --headless --content /a --content $home --script s.js --content /b"
fresh
starts run --headless --home "$work/other"
expect "a home of one's own" logged \
    "posebench --content $tree/samples --headless --home $work/other --content $work/other"
fresh
extra="QUILLON_HOME=$work/third" starts run --headless
expect "a home from the environment" logged \
    "posebench --content $tree/samples --home $work/third --headless --content $work/third"
fresh
extra="-u HOME" starts run --headless
expect "a user without a home" logged \
    "posebench --content $tree/samples --home $tree/build/quillon-posebench --headless --content $tree/build/quillon-posebench"
fresh
printf '#!/bin/bash\nexit 3\n' >"$tree/build/release/bin/posebench"
starts run --headless
expect "posebench's exit code is handed on" [ $status = 3 ]

# ---- fuzzing
fuzz_tree() { # BODY of the one target's program
    fresh
    mkdir -p "$tree/tests/fuzz/corpus/sample" "$tree/build/fuzz/tests"
    cp "$source/tests/fuzz/run" "$tree/tests/fuzz/"
    touch "$tree/build/fuzz/build.ninja"
    tool fuzz_sample "$1"
    mv "$tools/fuzz_sample" "$tree/build/fuzz/tests/"
}
fuzz_tree 'echo "stat::number_of_executed_units: 7" >&2'
starts tests/fuzz/run --runs 7 sample
expect "fuzzing without a finding ends well" [ $status = 0 ]
expect "and says how many inputs there were" grep -qx 'sample *7 inputs, no finding' <<<"$says"
expect "only what is fuzzed is built" logged "ninja -C $tree/build/fuzz fuzz_sample"
expect "it ends after so many inputs" grep -q '^fuzz_sample -runs=7 ' "$log"
rm "$tree/build/fuzz/build.ninja"
starts tests/fuzz/run sample
expect "its tree is configured for it" logged "cmake --preset fuzz"
expect "without a limit it is a minute" grep -q '^fuzz_sample -max_total_time=60 ' "$log"
starts tests/fuzz/run --seconds 300 sample
expect "or as many seconds as told" grep -q '^fuzz_sample -max_total_time=300 ' "$log"
fuzz_tree 'echo "a.cpp:1: not so: b" >&2; exit 77'
starts tests/fuzz/run
expect "a finding fails it" [ $status = 1 ]
expect "and is told" grep -qx '  a.cpp:1: not so: b' <<<"$says"
starts tests/fuzz/run other
expect "no other target is known" [ "$says" = "fuzz: no target 'other'; there are: sample" ]

# ---- failing calls, kills and full disks
failures_tree() { # BODY of posebench, [BODY of unshare]
    fresh
    mkdir -p "$tree/tests/failures"
    cp "$source/tests/failures/"{run,drive.sh,serve_picture.py,picture.png} "$tree/tests/failures/"
    tool posebench "$1"
    mv "$tools/posebench" "$tree/build/release/bin/"
    tool unshare "${2:-exit 1}"
}
skipped='no disk can be mounted here: nothing was tried on a full one'
failures_tree 'exit 0'
starts tests/failures/run full
expect "without a small disk the full one is skipped" [ $status = 77 ]
expect "and that is told" [ "$says" = "$skipped" ]
expect "and posebench not started" not_logged '^posebench'
starts tests/failures/run
expect "so it is when all else is well" [ $status = 77 ]
expect "which was tried" [ "$(grep -c '^posebench' "$log")" = 3 ]
starts tests/failures/run kills
expect "the others need no disk" [ $status = 0 ]
failures_tree 'exit 1'
starts tests/failures/run
expect "a fault counts for more than what is skipped" [ $status = 1 ]
expect "which is told as well" grep -qxF "$skipped" <<<"$says"
failures_tree 'case "$*" in *full.js*) exit 1 ;; esac' 'case "$*" in *"mount -t"*) ;; *) shift; exec "$@" ;; esac'
tool mount
starts tests/failures/run full save
expect "a fault on a full disk fails it" [ $status = 1 ]
expect "for the commands that are named" grep -q '^posebench .*/full.js save$' "$log"

if [ $failures -gt 0 ]; then
    exit 1
fi
rm -rf "$work"
echo "the commands do what they say"
