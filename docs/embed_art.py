#!/usr/bin/env python3
"""Puts the pane's own pictures into the user's guide, which is one file without neighbours.

    docs/embed_art.py          refreshes index.htm (needs rsvg-convert)

Every <img data-art="b5-0"> gets piece b5-0 of the artwork as its source, once rendered again from
art/page_*.svg. Run it after the artwork has changed.
"""
import base64
import re
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True
DOCS = Path(__file__).resolve().parent
ART = DOCS.parent / "art"
sys.path.insert(0, str(ART))
from draw import png  # noqa: E402

PIXELS = 144  # on the longer side: twice what the page shows
PIECE = re.compile(r'<svg id="(b[0-9]+-[0-9]+)" .*?viewBox="([^"]*)".*?>\n(.*?)\n</svg>\n(?=<svg|</svg>)', re.S)


def rendered(box, body):
    _, _, width, height = (float(n) for n in box.split())
    scale = PIXELS / max(width, height)
    svg = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width * scale:.0f}" '
           f'height="{height * scale:.0f}" viewBox="{box}">{body}</svg>')
    rgba = subprocess.run(["rsvg-convert"], input=svg.encode(), stdout=subprocess.PIPE, check=True).stdout
    return base64.b64encode(png.with_palette(rgba)).decode()


def main():
    pieces = {}
    for page in ("page_main", "page_picker", "page_browsing"):
        for name, box, body in PIECE.findall((ART / f"{page}.svg").read_text()):
            pieces.setdefault(name, (box, body))
    guide = DOCS / "index.htm"
    text = re.sub(r'<img data-art="([^"]*)"(?: src="[^"]*")?',
                  lambda m: f'<img data-art="{m[1]}" src="data:image/png;base64,{rendered(*pieces[m[1]])}"',
                  guide.read_text())
    guide.write_text(text)


if __name__ == "__main__":
    main()
