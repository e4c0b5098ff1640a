"""rows.py - the rows that the time_* programs print, and what they are to reach.

A row is what bench/row_table.h says; a goal is a line of goals.tsv. Plain data, no output.
"""

import dataclasses
import fnmatch

COLUMNS = ["row", "n", "ms", "reference_ms", "ratio", "exponent", "checksum", "note"]
UNITS = {"ms": 1.0, "us": 1000.0, "MB": 1.0}  # of one millisecond; MB stand in the column ms


@dataclasses.dataclass
class Row:
    name: str
    n: int  # 0: nothing
    ms: float | None  # None: nothing
    reference: float | None
    sampled: bool  # the reference
    ratio: float | None
    exponent: float | None
    checksum: str
    note: str

    @property
    def differs(self):
        return "DIFFER" in self.note


def number(cell):
    return None if cell in ("-", "") else float(cell.lstrip("~"))


def parse(text):
    """The rows of a program's output; what is no row is passed by, a row before its header too."""
    rows, started = [], False
    for line in text.splitlines():
        cells = line.split("\t")
        if cells == COLUMNS:
            started = True
        elif started and len(cells) == len(COLUMNS):
            rows.append(Row(cells[0], int(number(cells[1]) or 0), number(cells[2]),
                            number(cells[3]), cells[3].startswith("~"), number(cells[4]),
                            number(cells[5]), cells[6], "" if cells[7] == "-" else cells[7]))
    return rows


@dataclasses.dataclass
class Goal:
    name: str
    pattern: str
    n: str
    at_most: float | None
    unit: str
    ratio: float | None
    curve: str
    bound: str

    def value(self, row):
        """A row's time in the goal's unit."""
        unit, _, each = self.unit.partition("/")
        return (row.ms or 0) * UNITS[unit] / (max(row.n, 1) if each else 1)

    def meets(self, row):
        fast = self.at_most is None or (row.ms is not None and 0 <= self.value(row) <= self.at_most)
        return fast and (self.ratio is None or (row.ratio or 0) >= self.ratio) and not row.differs


def read_goals(text):
    lines = [line.split("\t") for line in text.splitlines() if line and line[0] != "#"]
    return [Goal(name, pattern, n, number(most), unit, number(ratio), curve, bound)
            for name, pattern, n, most, unit, ratio, curve, bound in lines[1:]]


def goal_of(row, goals):
    return next((goal for goal in goals if fnmatch.fnmatchcase(row.name, goal.pattern)), None)


def rows_of(goal, goals, rows):
    """The goal's rows, of the sizes that it asks for."""
    return [row for row in rows if goal_of(row, goals) is goal and goal.n in ("*", str(row.n))]


def worst_of(goal, own):
    """The slowest row, and the one of the least ratio where that is another one."""
    worst = [max(own, key=goal.value)]
    if goal.ratio is not None:
        least = min(own, key=lambda row: row.ratio or 0)
        worst += [] if least is worst[0] else [least]
    return worst
