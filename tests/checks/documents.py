#!/usr/bin/env python3
"""documents.py FOLDER [FILE...] - every link and picture of the documents (*.md, *.htm; those given, else all) in a folder
leads to a file inside it, and to a heading or an id there."""
import html.parser
import os
import re
import sys
from pathlib import Path
from urllib.parse import unquote

NO_DOCUMENTS = ("build", "page")  # built, and the page that the catalogue fills
REMOTE = re.compile(r"^(https?|mailto|data):")
FENCED = re.compile(r"^```.*?^```", re.M | re.S)
MD_LINK = re.compile(r"!?\[[^\]]*\]\(([^)\s]+)\)")


class Page(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.links, self.ids = [], set()
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id":
                self.ids.add(value)
            elif name in ("href", "src"):
                self.links.append(value or "")


def headings(text):
    """The names by which links reach them."""
    for line in FENCED.sub("", text).splitlines():
        if line.startswith("#"):
            title = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", line.lstrip("#").strip()).lower()
            yield re.sub(r"[^\w\- ]", "", title).replace(" ", "-")


def read(file):
    """Its links, and the names that links may end in."""
    text = file.read_text(encoding="utf-8")
    if file.suffix == ".md":
        return MD_LINK.findall(re.sub(r"`[^`\n]*`", "", FENCED.sub("", text))), set(headings(text))
    page = Page(text)
    return page.links, page.ids


def is_inside(target, folder):
    return target == folder or folder in target.parents


def faults(file, folder):
    for link in read(file)[0]:
        if REMOTE.match(link):
            continue
        path, _, name = unquote(link).partition("#")
        target = Path(os.path.normpath(file.parent / path)) if path else file
        if not target.exists() or not is_inside(target, folder):
            yield link
        elif name and (target.suffix not in (".md", ".htm") or name not in read(target)[1]):
            yield link


def documents(folder):
    for top, folders, files in os.walk(folder):
        folders[:] = sorted(f for f in folders if not f.startswith(".") and f not in NO_DOCUMENTS)
        yield from (Path(top, f) for f in sorted(files) if f.endswith((".md", ".htm")))


def main(folder, *files):
    folder = Path(os.path.abspath(folder))
    read_files = [Path(os.path.abspath(f)) for f in files] or list(documents(folder))
    dead = [f"{file.relative_to(folder)}: {link}" for file in read_files for link in faults(file, folder)]
    print("\n".join(dead) or f"all links of {len(read_files)} documents lead somewhere")
    return 1 if dead or not read_files else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
