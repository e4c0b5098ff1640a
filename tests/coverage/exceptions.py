#!/usr/bin/env python3
"""exceptions.py SOURCE - holds tests/coverage/exceptions.txt against the sources that it speaks of.

An entry says of one line, or of several that follow each other, what no test reaches, and why:

    file: ground/whole_file.cpp
    1 branch: if (!written && !old.isNull())
    unreached: return false;
    reason: a text, which may go on
      in further lines

The lines are whole source lines, blanks squeezed, in the order in which they stand; lines without a
row may stand between them. A row "unreached" stands for the line and its branches, one with a number
for so many branches that are not taken. Where the first line stands more than once in its file,
"in: TEXT" before it is a line above, from where on it is looked for. An entry whose lines are not
there, and one without a reason, is refused.
"""
import os
import re
import sys

ROW = re.compile(r"(file|in|reason|unreached|(\d+) branch(?:es)?): (.+)$")


class Refused(Exception):
    pass


def squeezed(line):
    return " ".join(line.split())


def entries(text, name="exceptions.txt"):
    """Of each entry a dictionary: file, in, reason, and rows of (branches or None, line)."""
    found = []
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith("#"):
            continue
        match = ROW.match(line)
        if not line.strip():
            found.append(None)
        elif line.startswith("  ") and found and found[-1] and found[-1]["reason"]:
            found[-1]["reason"] += " " + line.strip()
        elif not match:
            raise Refused(f"{name}:{number}: no row of an entry: {line}")
        else:
            if not found or found[-1] is None:
                found.append({"at": f"{name}:{number}", "file": "", "in": "", "reason": "", "rows": []})
            kind, branches, rest = match.groups()
            if kind in ("file", "in", "reason"):
                found[-1][kind] = squeezed(rest)
            else:
                found[-1]["rows"].append((int(branches) if branches else None, squeezed(rest)))
    return [each for each in found if each]


def next_place(lines, text, start, entry):
    for number in range(start, len(lines)):
        if lines[number] == text:
            return number
    raise Refused(f"{entry['at']}: {entry['file']} has no such line any more: {text}")


def placed(entry, source):
    """Line numbers of an entry's rows, each with what is excepted there."""
    for field in ("file", "reason", "rows"):
        if not entry[field]:
            raise Refused(f"{entry['at']}: an entry without {field}")
    path = os.path.join(source, entry["file"])
    if not os.path.isfile(path):
        raise Refused(f"{entry['at']}: there is no {entry['file']}")
    with open(path, encoding="utf-8") as file:
        lines = [squeezed(line) for line in file]
    start = next_place(lines, entry["in"], 0, entry) + 1 if entry["in"] else 0
    first = entry["rows"][0][1]
    if not entry["in"] and lines.count(first) > 1:
        raise Refused(f"{entry['at']}: {entry['file']} has this line more than once: {first}")
    for branches, text in entry["rows"]:
        at = next_place(lines, text, start, entry)
        yield at + 1, branches
        start = at + 1


def read_exceptions(source):
    """Per file and line number: None where the whole line is excepted, else how many branches."""
    name = "tests/coverage/exceptions.txt"
    with open(os.path.join(source, name), encoding="utf-8") as file:
        text = file.read()
    excepted = {}
    for entry in entries(text, name):
        of_file = excepted.setdefault(entry["file"], {})
        for line, branches in placed(entry, source):
            if line in of_file:
                raise Refused(f"{entry['at']}: line {line} of {entry['file']} has an entry already")
            of_file[line] = branches
    return excepted


def main():
    try:
        read_exceptions(os.path.abspath(sys.argv[1]))
    except Refused as why:
        print(why, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
