"""plot.py - rows as an SVG picture: time against entries, both logarithmic; ours solid, the
reference dashed in the same colour. Its colours follow the reader's choice of light or dark.
"""

import fnmatch
import math
from xml.sax.saxutils import escape

WIDTH, HEIGHT = 960, 520
LEFT, RIGHT, TOP, BOTTOM = 88, 600, 48, 456  # of the axes
COLORS = ["#2f7fd6", "#d9622b", "#2f9e5f", "#a259c4", "#c79a12", "#d6456f", "#3aa6a6", "#8a7a5c"]

STYLE = """
    .paper { fill: #ffffff; }
    text { fill: #24292f; font: 13px sans-serif; }
    .title { font-size: 16px; font-weight: bold; }
    .grid { stroke: #d8dee4; stroke-width: 1; }
    .axis { stroke: #57606a; stroke-width: 1.2; }
    .line { fill: none; stroke-width: 2.2; }
    .reference { stroke-dasharray: 6 4; stroke-width: 1.6; }
    @media (prefers-color-scheme: dark) {
      .paper { fill: #0d1117; }
      text { fill: #e6edf3; }
      .grid { stroke: #30363d; }
      .axis { stroke: #8b949e; }
    }
"""


def curves(goals, rows):
    """For each goal with a curve: its name and its rows by rising n; two sizes at least."""
    found = []
    for goal in goals:
        own = sorted((row for row in rows if fnmatch.fnmatchcase(row.name, goal.curve) and row.n
                      and (row.ms or 0) > 0),
                     key=lambda row: row.n)
        if len({row.n for row in own}) > 1:
            found.append((goal.name, own))
    return found


def decades(values):
    """The powers of ten around them."""
    return range(math.floor(math.log10(min(values))), math.ceil(math.log10(max(values))) + 1)


class Axes:
    """Where a size and a time lie."""

    def __init__(self, sizes, times):
        self.sizes = sorted(sizes)
        self.powers = decades(times)
        self.span = max(len(self.powers) - 1, 1)

    def x(self, n):
        first, last = math.log(self.sizes[0]), math.log(self.sizes[-1])
        return LEFT + 24 + (RIGHT - LEFT - 48) * (math.log(n) - first) / (last - first)

    def y(self, ms):
        return BOTTOM - (BOTTOM - TOP) * (math.log10(ms) - self.powers[0]) / self.span


def time_label(power):
    if power < 0:
        return f"{10.0 ** (power + 3):g} \u00b5s"
    return f"{10 ** power:g} ms" if power < 3 else f"{10 ** (power - 3):g} s"


def line(kind, x1, y1, x2, y2, more=""):
    return f'  <line class="{kind}" x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}"{more}/>'


def label(x, y, text, anchor="start", more=""):
    return f'  <text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}"{more}>{escape(text)}</text>'


def frame(axes):
    parts = []
    for power in axes.powers:
        y = axes.y(10.0 ** power)
        parts += [line("grid", LEFT, y, RIGHT, y), label(LEFT - 8, y + 4, time_label(power), "end")]
    for n in axes.sizes:
        x = axes.x(n)
        parts += [line("grid", x, TOP, x, BOTTOM), label(x, BOTTOM + 20, f"{n:,}", "middle")]
    middle = (TOP + BOTTOM) / 2
    return parts + [
        line("axis", LEFT, BOTTOM, RIGHT, BOTTOM), line("axis", LEFT, TOP, LEFT, BOTTOM),
        label((LEFT + RIGHT) / 2, BOTTOM + 44, "poses in the index", "middle"),
        label(18, middle, "processor time", "middle", f' transform="rotate(-90 18 {middle:.1f})"')]


def path(points, kind, color):
    places = " L".join(f"{x:.1f},{y:.1f}" for x, y in points)
    return f'  <path class="{kind}" stroke="{color}" d="M{places}"/>'


def curve(axes, own, color):
    parts = [path([(axes.x(row.n), axes.y(row.ms)) for row in own], "line", color)]
    parts += [f'  <circle cx="{axes.x(row.n):.1f}" cy="{axes.y(row.ms):.1f}" r="3.5" fill="{color}"/>'
              for row in own]
    beside = [(axes.x(row.n), axes.y(row.reference)) for row in own if (row.reference or 0) > 0]
    return parts + ([path(beside, "line reference", color)] if len(beside) > 1 else [])


def legend(found):
    x, parts = RIGHT + 24, []
    for i, (name, _) in enumerate(found):
        y = TOP + 12 + 24 * i
        parts += [line("line", x, y, x + 26, y, f' stroke="{COLORS[i]}"'), label(x + 34, y + 4, name)]
    y = TOP + 12 + 24 * len(found) + 12
    for kind, words in (("line axis", "solid: Quillon"), ("line reference axis", "dashed: the reference")):
        parts += [line(kind, x, y, x + 26, y), label(x + 34, y + 4, words)]
        y += 24
    return parts


def picture(goals, rows):
    """The SVG text; an empty one if no row was measured at two sizes."""
    found = curves(goals, rows)[:len(COLORS)]
    if not found:
        return ""
    shown = [row for _, own in found for row in own]
    axes = Axes({row.n for row in shown},
                [ms for row in shown for ms in (row.ms, row.reference) if (ms or 0) > 0])
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}"'
             f' width="{WIDTH}" height="{HEIGHT}">',
             f"  <style>{STYLE}  </style>",
             f'  <rect class="paper" width="{WIDTH}" height="{HEIGHT}"/>',
             label(LEFT, 28, "The Pose Finder's work by size of the index", "start", ' class="title"')]
    parts += frame(axes)
    for (_, own), color in zip(found, COLORS):
        parts += curve(axes, own, color)
    return "\n".join(parts + legend(found) + ["</svg>", ""])
