#!/usr/bin/env python3
"""bench/performance.py - measures the Pose Finder and brings docs/developer/performance.md up to date.

    bench/performance.py                 build the programs, run all, write the page and its picture
    bench/performance.py --scan          with a whole scan of 65,536 files, too (long; half a gigabyte)
    bench/performance.py --only passes   programs with this in their name; the others' rows stay
    bench/performance.py --page          the page once more, from the rows of the last runs

Runs every time_* program of the build tree, those of others' libraries (bench/peers/) where these
are installed, and keeps what each printed in bench/performance/ of the build tree. One program at a
time, as they take processor time; still, a quiet machine gives better numbers. The real poses are
those beside the project where they are, else the samples. Ends with 1 if a result was wrong or a
program failed; a missed goal is told and is no failure. Needs python3 only.
"""

import argparse
import os
import pathlib
import platform
import re
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
TOP = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(TOP / "bench/performance"))

import page  # noqa: E402
import plot  # noqa: E402
import rows as row_form  # noqa: E402

PAGE = TOP / "docs/developer/performance.md"
PICTURE = TOP / "docs/developer/performance.svg"
GOALS = TOP / "bench/performance/goals.tsv"
SCAN = "scan_65536.sh"


def say(text):
    print(text, file=sys.stderr, flush=True)


# ---- the machine

def found(pattern, text, default="unknown"):
    match = re.search(pattern, text, re.MULTILINE)
    return match.group(1).strip() if match else default


def cached(tree, name):
    return found(rf"^{name}:\w+=(.*)$", (tree / "CMakeCache.txt").read_text())


def qt_version(tree):
    folder = pathlib.Path(cached(tree, "Qt5Core_DIR"))
    text = "".join(path.read_text() for path in folder.glob("Qt5CoreConfigVersion*.cmake"))
    return found(r'PACKAGE_VERSION "?([\d.]+)', text)


def machine(tree, real_poses):
    cpu = pathlib.Path("/proc/cpuinfo").read_text()
    memory = int(found(r"^MemTotal:\s+(\d+)", pathlib.Path("/proc/meminfo").read_text(), "0"))
    compiler = subprocess.run([cached(tree, "CMAKE_CXX_COMPILER"), "--version"],
                              capture_output=True, text=True, check=True).stdout.splitlines()[0]
    clock = float(found(r"^cpu MHz\s*: ([\d.]+)", cpu, "0"))
    return [
        ("processor", f"{found(r'^model name.*: (.*)$', cpu)}, {os.cpu_count()} cores, "
                      f"{clock / 1000:.2f} GHz"),
        ("memory", f"{memory / 2 ** 20:.1f} GB"),
        ("kernel", f"{platform.system()} {found(r'^([0-9.]+)', platform.release())}"),
        ("compiler", f"{compiler}, {cached(tree, 'CMAKE_BUILD_TYPE')}"),
        ("Qt", qt_version(tree)),
        ("real poses", real_poses),
    ]


# ---- running

def targets():
    return sorted(path.stem for path in (TOP / "bench").glob("time_*.cpp"))


def build(tree):
    subprocess.run(["cmake", "--build", tree, "--target", "posebench", "Quillon", "peers", *targets()],
                   check=True, stdout=sys.stderr)


def programs(tree):
    own = [tree / "bench" / name for name in targets()]
    return [path for path in own + sorted((tree / "bench/peers").glob("time_*")) if path.is_file()]


def poses_folder():
    beside = pathlib.Path(os.environ.get("QUILLON_SHARED_POSES", TOP.parent / "shared/poses"))
    return beside if beside.is_dir() else TOP / "samples/content"


def make_index(tree, home):
    """The pose index that a scan of the real poses makes; posebench's demo does one."""
    say(f"scanning {poses_folder()}")
    subprocess.run([tree / "bin/posebench", "--headless", "--home", home, "--content", poses_folder()],
                   check=True, stdout=subprocess.DEVNULL)
    return next(pathlib.Path(home).glob("data/*/*/poseIndex_*.dat"))


def run(command, kept):
    """Runs a program, shows what it prints and keeps it. Whether it ended well."""
    say(f"{command[0].name}")
    with subprocess.Popen(command, stdout=subprocess.PIPE, text=True) as process:
        lines = []
        for line in process.stdout:
            sys.stderr.write(line)
            lines.append(line)
    kept.write_text("".join(lines))
    return process.returncode == 0


def run_all(options, tree, folder):
    with tempfile.TemporaryDirectory() as home:
        index = make_index(tree, home) if not options.only or options.only in "time_passes" else None
        commands = [[path] + ([index] if path.name == "time_passes" else []) for path in programs(tree)]
        if options.scan and (TOP / "bench" / SCAN).is_file():
            commands.append([TOP / "bench" / SCAN])
        wanted = [command for command in commands if options.only in command[0].name]
        failed = [command[0].name for command in wanted
                  if not run(command, folder / f"{command[0].stem}.tsv")]
    for name in failed:
        say(f"FAILED: {name}")
    return not failed


# ---- the page

def write_page(tree, folder):
    goals = row_form.read_goals(GOALS.read_text())
    rows = [row for path in sorted(folder.glob("*.tsv")) for row in row_form.parse(path.read_text())]
    picture = plot.picture(goals, rows)
    if picture:
        PICTURE.write_text(picture)
    real = "motion capture beside the project" if poses_folder().parent.name == "shared" else "the samples"
    text = page.measured(goals, rows, machine(tree, real), bool(picture))
    PAGE.write_text(page.put(PAGE.read_text(), text))
    for goal in page.missed(goals, rows):
        say(f"missed: {goal.name}")
    for row in rows:
        if row.differs:
            say(f"WRONG: {row.name}, {row.n}: {row.note}")
    return not any(row.differs for row in rows)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--tree", type=pathlib.Path, default=TOP / "build/release", help="the build tree")
    parser.add_argument("--scan", action="store_true", help=f"run bench/{SCAN}, too")
    parser.add_argument("--only", default="", metavar="WORD", help="only programs with this in their name")
    parser.add_argument("--no-build", action="store_true", help="take the programs as they are")
    parser.add_argument("--page", action="store_true", help="measure nothing")
    options = parser.parse_args()
    tree = options.tree.resolve()
    os.environ.update(QT_QPA_PLATFORM="offscreen", BUILD=str(tree))  # BUILD: for the scan
    folder = tree / "bench/performance"
    folder.mkdir(exist_ok=True)
    if not (options.page or options.no_build):
        build(tree)
    well = options.page or run_all(options, tree, folder)
    return 0 if write_page(tree, folder) and well else 1


if __name__ == "__main__":
    sys.exit(main())
