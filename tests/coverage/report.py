#!/usr/bin/env python3
"""report.py SOURCE BUILD [--missed] - what the last tests of an instrumented tree reached.

Prints lines and branches a room, and its files below the goal; ends with 1 if a room is below it.
--missed: also the lines that were not reached, and those with a branch that was not taken. Branches
that only an exception takes, and such as the compiler makes where nothing can be taken, do not count.
Needs gcovr.
"""
import json
import os
import subprocess
import sys

ROOMS = ["ground", "figure", "posefile", "catalogue", "finder", "services", "pane", "plugin"]
LINE_GOAL, BRANCH_GOAL = 99.0, 95.0


class Count:
    def __init__(self, done=0, total=0):
        self.done, self.total = done, total

    def add(self, taken):
        self.total += 1
        self.done += taken

    @property
    def percent(self):
        return 100.0 * self.done / self.total if self.total else 100.0

    def __str__(self):
        return f"{self.percent:6.1f} % {self.done:6} of {self.total:6}"


def gathered(source, build, rooms):
    """The files of gcovr's report."""
    command = ["gcovr", "--root", source, "--object-directory", build, "-j", str(os.cpu_count()),
               "--exclude-unreachable-branches", "--exclude-throw-branches", "--json", "-"]
    for room in rooms:
        command += ["--filter", os.path.join(source, room) + "/"]
    return json.loads(subprocess.run(command + [build], check=True, stdout=subprocess.PIPE).stdout)["files"]


def counted(file):
    """Lines, branches, and per line what is missed."""
    lines, branches, missed = Count(), Count(), []
    for line in file["lines"]:
        if line.get("gcovr/noncode"):
            continue
        lines.add(line["count"] > 0)
        taken = [branch["count"] > 0 for branch in line["branches"]]
        for each in taken:
            branches.add(each)
        if line["count"] == 0:
            missed.append(f"{line['line_number']}")
        elif not all(taken):
            missed.append(f"{line['line_number']} ({len(taken) - sum(taken)} of {len(taken)} branches)")
    return lines, branches, missed


def is_low(lines, branches):
    return lines.percent < LINE_GOAL or branches.percent < BRANCH_GOAL


def main():
    source, build = (os.path.abspath(each) for each in sys.argv[1:3])
    rooms = [room for room in ROOMS if os.path.isdir(os.path.join(source, room))]
    tables = {room: {} for room in rooms}
    for file in gathered(source, build, rooms):
        tables[file["file"].split("/")[0]][file["file"]] = counted(file)
    low = False
    print(f"{'':42}{'lines':26}branches")
    for room in rooms:
        files = tables[room].values()
        lines, branches = Count(), Count()
        for file_lines, file_branches, _ in files:
            lines.done, lines.total = lines.done + file_lines.done, lines.total + file_lines.total
            branches.done, branches.total = branches.done + file_branches.done, branches.total + file_branches.total
        is_room_low = is_low(lines, branches)
        low = low or is_room_low or not files
        print(f"{room:40}{lines}  {branches}{'  below the goal' if is_room_low else ''}")
        for name, (file_lines, file_branches, missed) in sorted(tables[room].items()):
            if is_low(file_lines, file_branches):
                print(f"  {name:38}{file_lines}  {file_branches}")
            if "--missed" in sys.argv:
                for each in missed:
                    print(f"    {name}:{each}")
    return 1 if low else 0


if __name__ == "__main__":
    sys.exit(main())
