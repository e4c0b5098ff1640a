#!/usr/bin/python3
"""host_calls.py SOURCE BUILD [--write]

Every use that the plug-in makes of the host's interface must stand in host_calls.tsv, and
docs/developer/host_calls.md, which is made of both, must be as they are; --write makes it anew.
Reads the sources together with qt48_uses.py, whose kept reading it takes where nothing has changed.

host_calls.tsv has one row for each name, in order:
  name      "Class::member", a class, a type, a global, a macro, or a header
  tag       seen: somebody's public source or the documentation of the host's scripts has the name;
            likely: inferred; unknown: nobody outside is known to use it
  witness   of a seen name: "C++", or "scripts", which leave const and overloads open; else "-"
  only      the one file that may use it, where the call is uncertain; else "-"
  note      what to compare; or "-"
"""
import os
import re
import sys

import host_names
import qt48_uses

HERE = os.path.dirname(os.path.abspath(__file__))
TABLE = os.path.join(HERE, "host_calls.tsv")
PAGE = "docs/developer/host_calls.md"
HEAD = """# What the plug-in asks of the host

Made by `tests/checks/host_calls.py . build/release --write` from the sources and `tests/checks/host_calls.tsv`; not edited.
Every class, function, signal, slot, field, constant, macro and header of the host's SDK that the plug-in's rooms use, with
the files that do. `checks.host_calls` refuses a use that the table lacks.

**Tags.** *Seen*: the name stands in somebody's public C++ source, or only in the documentation of the host's scripts; then const and
overloads are inferred. *Likely*: inferred from its neighbours. *Unknown*: nobody outside is known to use it.

**With the real headers at hand**, compare in this order:

1. The unknown ones below, each in the one file that uses it; a comment there says what else it might be.
2. The likely ones; their headers first, for a missing header stops the compiler before it says anything else.
3. Of those seen in scripts: const, default arguments, and which overloads take a time first.
4. What no header tells, by `packaging/first_steps.dsa` in the running host.
"""


def read_table():
    rows = {}
    for line in open(TABLE):
        if not line.startswith("#"):
            name, tag, witness, only, note = line.rstrip("\n").split("\t")
            rows[name] = (tag, witness, only, note)
    return rows


def gather(source, build):
    """name -> (kinds, {file: first line})"""
    by_file, errors = qt48_uses.gather(source, build)[:2]
    uses = {}

    def add(file, line, name, kind):
        kinds, files = uses.setdefault(name, (set(), {}))
        kinds.add(kind)
        files[file] = min(line, files.get(file, line))

    for file, rows in by_file.items():
        for line, scope, name, kind in rows:
            if scope == host_names.SCOPE:
                add(file, line, name, kind)
    for file, line, name in host_names.headers(source):
        add(file, line, name, "header")
    return uses, errors


def row_text(name, uses, table):
    tag, witness, _, note = table[name]
    kinds, files = uses[name]
    shown = tag if witness == "-" else f"{tag}, {witness}"
    return f"| `{name}` | {', '.join(sorted(kinds))} | {shown} | {' '.join(f'`{file}`' for file in sorted(files))} |" \
        f" {'' if note == '-' else note} |"


def page_text(uses, table):
    known = [name for name in sorted(uses, key=str.lower) if name in table]
    text = HEAD
    parts = [("Unknown", lambda n: table[n][0] == "unknown"), ("Likely", lambda n: table[n][0] == "likely"),
             ("Seen", lambda n: table[n][0] == "seen")]
    for title, wanted in parts:
        names = [name for name in known if wanted(name)]
        text += f"\n## {title} ({len(names)})\n\n| name | what | tag | used in | |\n|---|---|---|---|---|\n"
        text += "".join(row_text(name, uses, table) + "\n" for name in names)
    return text


def findings_in(uses, table, source):
    found = []
    for name, (_, files) in sorted(uses.items()):
        row = table.get(name)
        for file, line in sorted(files.items()):
            if row is None:
                found.append(f"{file}:{line}: {name} of the host is not in host_calls.tsv")
            elif row[2] != "-" and not re.fullmatch(row[2], file):
                found.append(f"{file}:{line}: {name} of the host is uncertain: only {row[2]} uses it")
    found += [f"host_calls.tsv: nothing uses {name}" for name in sorted(set(table) - set(uses))]
    found += [f"host_calls.tsv: {name} has the tag {row[0]}" for name, row in sorted(table.items())
              if row[0] not in ("seen", "likely", "unknown") or (row[0] == "seen") != (row[1] in ("C++", "scripts"))]
    page = os.path.join(source, PAGE)
    if not os.path.exists(page) or open(page).read() != page_text(uses, table):
        found.append(f"{PAGE} is not as sources and table are: run tests/checks/host_calls.py . build/release --write")
    return found


def main():
    source, build = (os.path.abspath(each) for each in sys.argv[1:3])
    table = read_table()
    uses, errors = gather(source, build)
    if "--write" in sys.argv:
        with open(os.path.join(source, PAGE), "w") as out:
            out.write(page_text(uses, table))
    found = errors + findings_in(uses, table, source)
    for each in found:
        print(each, file=sys.stderr)
    print(f"{len(found)} finding(s): {len(uses)} names of the host's interface")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
