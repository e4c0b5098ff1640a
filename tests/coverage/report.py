#!/usr/bin/env python3
"""report.py SOURCE BUILD [--missed] - what the last tests of an instrumented tree reached.

Prints lines and branches a room, and its files below the goal; ends with 1 if a room is below it.
--missed: also the lines that were not reached, and those with a branch that was not taken. Branches
that only an exception takes, and such as the compiler makes where nothing can be taken, do not count;
nor does what exceptions.txt lists, whose numbers are printed beside. Needs gcovr.
"""
import json
import os
import subprocess
import sys

from exceptions import Refused, read_exceptions

ROOMS = ["ground", "figure", "posefile", "catalogue", "finder", "services", "pane", "plugin"]
LINE_GOAL, BRANCH_GOAL = 99.0, 95.0


class Count:
    def __init__(self):
        self.done, self.total, self.excepted = 0, 0, 0

    def add(self, other):
        self.done += other.done
        self.total += other.total
        self.excepted += other.excepted

    @property
    def percent(self):
        return 100.0 * self.done / self.total if self.total else 100.0

    def __str__(self):
        excepted = f"+{self.excepted}" if self.excepted else ""
        return f"{self.percent:6.1f} % {self.done:6} of {self.total:6} {excepted:5}"


class Reached:
    """Lines and branches of a file or a room, and a text for each place that is missed."""

    def __init__(self):
        self.lines, self.branches, self.missed, self.needless = Count(), Count(), [], []

    def add(self, other):
        self.lines.add(other.lines)
        self.branches.add(other.branches)

    @property
    def is_low(self):
        return self.lines.percent < LINE_GOAL or self.branches.percent < BRANCH_GOAL


def gathered(source, build, rooms):
    """The files of gcovr's report."""
    command = ["gcovr", "--root", source, "--object-directory", build, "-j", str(os.cpu_count()),
               "--exclude-unreachable-branches", "--exclude-throw-branches", "--json", "-"]
    for room in rooms:
        command += ["--filter", os.path.join(source, room) + "/"]
    return json.loads(subprocess.run(command + [build], check=True, stdout=subprocess.PIPE).stdout)["files"]


def count_line(line, excepted, reached):
    """Excepted: None where nothing is, "all", or a number of branches."""
    number, taken = line["line_number"], [branch["count"] > 0 for branch in line["branches"]]
    is_reached, not_taken = line["count"] > 0, taken.count(False)
    may_miss = 0 if excepted is None else not_taken if excepted == "all" else min(excepted, not_taken)
    if excepted == "all" and not is_reached:
        reached.lines.excepted += 1
    else:
        reached.lines.total += 1
        reached.lines.done += is_reached
    reached.branches.excepted += may_miss
    reached.branches.total += len(taken) - may_miss
    reached.branches.done += len(taken) - not_taken
    if excepted is not None and (is_reached if excepted == "all" else not_taken < excepted):
        reached.needless.append(f"{number}")
    if not is_reached and excepted != "all":
        reached.missed.append(f"{number}")
    elif not_taken > may_miss:
        reached.missed.append(f"{number} ({not_taken - may_miss} of {len(taken)} branches)")


def counted(file, exceptions):
    reached = Reached()
    for line in file["lines"]:
        if line.get("gcovr/noncode"):
            continue
        number = line["line_number"]
        excepted = exceptions[number] or "all" if number in exceptions else None
        count_line(line, excepted, reached)
    return reached


def tell(room, files, whole, with_missed):
    print(f"{room:40}{whole.lines} {whole.branches}{'  below the goal' if whole.is_low else ''}")
    for name, each in sorted(files.items()):
        if each.is_low:
            print(f"  {name:38}{each.lines} {each.branches}")
        for what, places in (("", each.missed), (" excepted, and reached", each.needless)):
            for place in places if with_missed else []:
                print(f"    {name}:{place}{what}")


def main():
    source, build = (os.path.abspath(each) for each in sys.argv[1:3])
    rooms = [room for room in ROOMS if os.path.isdir(os.path.join(source, room))]
    try:
        exceptions = read_exceptions(source)
    except Refused as why:
        print(why, file=sys.stderr)
        return 1
    tables = {room: {} for room in rooms}
    for file in gathered(source, build, rooms):
        name = file["file"]
        tables[name.split("/")[0]][name] = counted(file, exceptions.get(name, {}))
    low = False
    print(f"{'':42}{'lines':32}branches")
    for room in rooms:
        whole = Reached()
        for each in tables[room].values():
            whole.add(each)
        low = low or whole.is_low or not tables[room]
        tell(room, tables[room], whole, "--missed" in sys.argv)
    return 1 if low else 0


if __name__ == "__main__":
    sys.exit(main())
