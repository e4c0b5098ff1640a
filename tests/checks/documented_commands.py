#!/usr/bin/env python3
"""documented_commands.py SOURCE BUILD WORK - every command that a document names works.

Commands are read from the code blocks and the inline code of *.md and *.htm. Each has a row in
documented_commands.txt, of three columns between " | ": the command as it is written, what is done about it, and more.

    run       it is run here, in the third column's form where the command has placeholders
    test      the test of that name runs it or what it does
    reason    nothing runs it, for the reason told

A command without a row is a finding, and so is a row that no document has, a test that does not exist, and a command
that fails. It is run in WORK/tree, where all files of SOURCE are linked to, build/release is BUILD, and HOME is WORK/home.
"""
import html
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

TOOLS = {"cmake", "ctest", "cpack", "git", "ninja", "clang-format", "clang-tidy", "run-clang-tidy", "posebench", "apt",
         "dpkg", "lintian", "python3", "gcovr", "set", "cd", "man", "quillon-catalogue"}
ASSIGNMENT = re.compile(r"[A-Z_]+=\S*$")
NO_DOCUMENTS = ("build", "page")  # built, and the page that the catalogue fills
SECONDS = 120
KINDS = ("run", "test", "reason")


# ---- reading

def is_command(text, source, in_block=False):
    """In a line of text a file's name alone is no command."""
    words = text.split()
    while words and ASSIGNMENT.match(words[0]):
        words.pop(0)
    if not words:
        return False
    first = words[0]
    if first in TOOLS or first.startswith("QUILLON_") or first.startswith("build/"):
        return len(words) > 1
    file = source / first
    is_program = "/" in first and file.is_file() and os.access(file, os.X_OK)
    return is_program and (len(words) > 1 or in_block or first.startswith("./"))


def without_remark(line):
    """A block's line may end in a comment, or in words in a second column."""
    return re.split(r"\s+#\s|\s{3,}", line.strip())[0].strip()


def of_markdown(text):
    blocks = re.findall(r"^```[^\n]*\n(.*?)^```", text, re.M | re.S)
    rest = re.sub(r"^```.*?^```", "", text, flags=re.M | re.S)
    blocks += re.findall(r"^    (?=\S)(.*)$", rest, re.M)
    for block in blocks:
        for line in block.splitlines():
            yield without_remark(line), True
    for span in re.findall(r"`([^`]+)`", rest):
        yield " ".join(span.split()), False


def of_page(text):
    for span in re.findall(r"<(?:code|pre|kbd)>(.*?)</(?:code|pre|kbd)>", text, re.S):
        yield " ".join(html.unescape(span).split()), False


def documents(source):
    for top, folders, files in os.walk(source):
        folders[:] = sorted(f for f in folders if not f.startswith(".") and f not in NO_DOCUMENTS)
        yield from (Path(top, f) for f in sorted(files) if f.endswith((".md", ".htm")))


def documented(source):
    """{command: the first document that names it}"""
    found = {}
    for file in documents(source):
        read = of_markdown if file.suffix == ".md" else of_page
        for text, in_block in read(file.read_text(encoding="utf-8")):
            for each in re.split(r"\s+&&\s+", text):
                if is_command(each, source, in_block):
                    found.setdefault(each, str(file.relative_to(source)))
    return found


def rows_of(file):
    rows, faults = {}, []
    for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        cells = [cell.strip() for cell in line.split(" | ", 2)] + [""]
        if len(cells) < 3 or cells[1] not in KINDS or (cells[1] != "run" and not cells[2]):
            faults.append(f"{file.name}:{number}: not a row: {line}")
        elif cells[0] in rows:
            faults.append(f"{file.name}:{number}: a second row of {cells[0]}")
        else:
            rows[cells[0]] = (cells[1], cells[2])
    return rows, faults


# ---- trying

def make_tree(source, build, work):
    shutil.rmtree(work, ignore_errors=True)
    tree = work / "tree"
    (tree / "build").mkdir(parents=True)
    (work / "home").mkdir()
    for each in source.iterdir():
        if each.name not in ("build", ".git"):
            (tree / each.name).symlink_to(each)
    (tree / "build/release").symlink_to(build)
    return tree


def tried(command, tree, work):
    """What is wrong with it, or nothing."""
    surroundings = dict(os.environ, HOME=str(work / "home"), QT_QPA_PLATFORM="offscreen", WORK=str(work))
    try:
        ran = subprocess.run(["bash", "-c", command], cwd=tree, env=surroundings, stdin=subprocess.DEVNULL,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=SECONDS, text=True)
    except subprocess.TimeoutExpired:
        return f"takes more than {SECONDS} s"
    return f"ends with {ran.returncode}:\n{ran.stdout[-1500:]}" if ran.returncode else ""


def tests_of(build):
    listed = subprocess.run(["ctest", "--test-dir", str(build), "-N"], capture_output=True, text=True, check=True).stdout
    return set(re.findall(r"Test\s+#\d+: (\S+)", listed))


def main(source, build, work):
    source, build, work = Path(source).resolve(), Path(build).resolve(), Path(work).absolute()
    commands = documented(source)
    rows, faults = rows_of(source / "tests/checks/documented_commands.txt")
    faults += [f"{commands[c]}: no row for: {c}" for c in commands if c not in rows]
    faults += [f"no document has: {c}" for c in rows if c not in commands]
    names = tests_of(build) if any(kind == "test" for kind, _ in rows.values()) else set()
    tree = make_tree(source, build, work)
    ran = 0
    for command, (kind, more) in rows.items():
        if kind == "test" and more not in names:
            faults.append(f"{command}: there is no test {more}")
        elif kind == "run":
            ran += 1
            fault = tried(more or command, tree, work)
            faults += [f"{commands.get(command)}: {command}: {fault}"] if fault else []
    print("\n".join(faults) or f"{len(commands)} commands, {ran} of them run")
    if not faults:
        shutil.rmtree(work, ignore_errors=True)
    return 1 if faults or not commands else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
