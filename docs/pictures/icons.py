#!/usr/bin/python3
"""icons.py OUT - draws the pieces of the artwork that the guide shows (pictures/b5-0.png and so on) from
art/page_*.svg. Needs rsvg-convert."""
import pathlib
import re
import subprocess
import sys

DOCS = pathlib.Path(__file__).resolve().parent.parent
ART = DOCS.parent / "art"
sys.path.insert(0, str(ART))
from draw import png  # noqa: E402

PIXELS = 144  # on the longer side: twice what the page shows
PIECE = re.compile(r'<svg id="(b[0-9]+-[0-9]+)" .*?viewBox="([^"]*)".*?>\n(.*?)\n</svg>\n(?=<svg|</svg>)', re.S)
SHOWN = re.compile(r'src="pictures/(b[0-9]+-[0-9]+)\.png"')


def drawn(box, body):
    _, _, width, height = (float(n) for n in box.split())
    scale = PIXELS / max(width, height)
    svg = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width * scale:.0f}" '
           f'height="{height * scale:.0f}" viewBox="{box}">{body}</svg>')
    rgba = subprocess.run(["rsvg-convert"], input=svg.encode(), stdout=subprocess.PIPE, check=True).stdout
    return png.with_palette(rgba)


def main(out):
    pieces = {}
    for page in ("page_main", "page_picker", "page_browsing"):
        for name, box, body in PIECE.findall((ART / f"{page}.svg").read_text(encoding="utf-8")):
            pieces.setdefault(name, (box, body))
    for name in sorted(set(SHOWN.findall((DOCS / "index.htm").read_text(encoding="utf-8")))):
        (out / f"{name}.png").write_bytes(drawn(*pieces[name]))


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
