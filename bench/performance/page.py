"""page.py - the tables of docs/developer/performance.md, from rows and goals. Plain text in and out."""

import re

import rows as row_form

BEGIN, END = "<!-- measured: begin -->", "<!-- measured: end -->"


def plain(value):
    """Three digits that count; no exponent."""
    if abs(value) >= 100:
        return f"{value:,.0f}"
    return f"{value:.{1 if abs(value) >= 10 else 2}f}" if abs(value) >= 1 else f"{value:.2g}"


def time(ms):
    if ms is None:
        return ""
    if ms >= 10000:
        return f"{plain(ms / 1000)} s"
    return f"{plain(ms)} ms" if ms >= 1 else f"{plain(ms * 1000)} \u00b5s"


def unit_of(goal):
    return goal.unit.replace("us", "\u00b5s").replace("/n", " each")


def time_of(goal, row):
    """A row by the clock on the wall says in its note what the processor took: both are shown."""
    processor = re.search(r"processor ([\d.]+) ms", row.note)
    more = f", processor {time(float(processor.group(1)))}" if processor else ""
    return f"{plain(goal.value(row))} {unit_of(goal)}{more}"


def limit_of(goal):
    words = []
    if goal.at_most is not None:
        words.append(f"\u2264 {goal.at_most:,g} {unit_of(goal)}")
    if goal.ratio is not None:
        words.append(f"\u2265 {goal.ratio:g} \u00d7")
    return ", ".join(words)


def reference_of(row):
    return ("~" if row.sampled else "") + time(row.reference)


def ratio_of(row):
    return f"{plain(row.ratio)} \u00d7" if row.ratio is not None else ""


def exponent_of(row):
    return f"{row.exponent:.2f}" if row.exponent is not None else ""


def line(cells):
    return "| " + " | ".join(cells) + " |"


def table(head, align, body):
    return [line(head), line(align)] + [line(cells) for cells in body]


def goal_lines(goals, rows):
    body = []
    for goal in goals:
        own = row_form.rows_of(goal, goals, rows)
        if not own:
            body.append([goal.name, "", "", "", "", "", "", limit_of(goal), "not measured"])
            continue
        count = f" ({len(own)} rows)" if len(own) > 1 else ""
        for row in row_form.worst_of(goal, own):
            met = "yes" if goal.meets(row) else "**no**"
            body.append([goal.name + count, row.name, f"{row.n:,}" if row.n else "", time_of(goal, row),
                         reference_of(row), ratio_of(row), exponent_of(row), limit_of(goal), met])
    return table(["goal", "row", "n", "time", "reference", "ratio", "exponent", "limit", "met"],
                 ["---", "---", "--:", "--:", "--:", "--:", "--:", "---", "---"], body)


def other_lines(goals, rows):
    """Rows that no goal asks for, each at its greatest size."""
    last = {}
    for row in rows:
        if row_form.goal_of(row, goals) is None and row.n >= last.get(row.name, row).n:
            last[row.name] = row
    body = [[row.name, f"{row.n:,}" if row.n else "", time(row.ms), reference_of(row),
             ratio_of(row), exponent_of(row), row.note] for row in last.values()]
    return table(["row", "n", "time", "reference", "ratio", "exponent", "note"],
                 ["---", "--:", "--:", "--:", "--:", "--:", "---"], body)


def missed(goals, rows):
    """Goals with a row that does not meet them."""
    return [goal for goal in goals
            if any(not goal.meets(row) for row in row_form.rows_of(goal, goals, rows))]


def measured(goals, rows, machine, has_picture):
    """What stands between the marks. machine: pairs of a name and a value."""
    bounds = [f"- {goal.name}: {goal.bound}." for goal in missed(goals, rows) if goal.bound != "-"]
    parts = table(["machine", ""], ["---", "---"], [list(pair) for pair in machine]) + [""]
    parts += ["![Time against entries](performance.svg)", ""] if has_picture else []
    parts += ["### Goals", ""] + goal_lines(goals, rows) + [""]
    if bounds:
        parts += ["What bounds the goals that are missed:", ""] + bounds + [""]
    return "\n".join(parts + ["### Further rows, at their greatest size", ""] + other_lines(goals, rows))


def put(page, text):
    """The page with the text between its marks; ValueError if it lacks one."""
    before, after = page.index(BEGIN) + len(BEGIN), page.index(END)
    return page[:before] + "\n" + text + "\n" + page[after:]
