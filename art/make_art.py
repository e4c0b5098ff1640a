#!/usr/bin/env python3
"""Writes the artwork: SVG sources, their PNGs and the tables of atlas_table.h and .cpp.

    art/make_art.py            writes everything (needs rsvg-convert)
    art/make_art.py --check    writes nothing; exit 1 when a source or table is not what would be written

Pieces are drawn by the functions in draw/, packed into the three page images, written as SVG and
rendered. The tables come from the same list of pieces, so that table and picture cannot differ.
"""
import shutil
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # no cache folders between the sources

from draw import banner, browsing_page, main_page, picker_page, png, shapes

ART = Path(__file__).resolve().parent
SCALE = 3   # image pixels per canvas unit
GUTTER = 2  # empty pixels around a piece, so that smooth scaling takes nothing from a neighbour
IMAGES = (
    ("Main", "page_main", banner.PIECES + main_page.PIECES),
    ("Picker", "page_picker", picker_page.PIECES),
    ("Browsing", "page_browsing", browsing_page.PIECES),
)
ORDERS = (  # in which pieces are packed, the best one wins
    lambda w, h: (-h, -w),
    lambda w, h: (-w, -h),
    lambda w, h: (-w * h, -w),
    lambda w, h: (-max(w, h), -min(w, h)),
)


# ---- packing ---------------------------------------------------------------------------------
def pack(sizes, width, order):
    """Places rectangles bottom-left on a skyline; returns positions and the height used."""
    skyline = [(0, 0, width)]  # x, y, width of each step
    places = {}
    for i in sorted(range(len(sizes)), key=lambda k: (order(*sizes[k]), k)):
        w, h = sizes[i]
        found = [(max(sy for sx, sy, sw in skyline if sx < x + w and sx + sw > x), x)
                 for x, _, _ in skyline if x + w <= width]
        y, x = min(found)
        places[i] = (x, y)
        skyline = raised(skyline, x, y + h, w)
    return [places[i] for i in range(len(sizes))], max(y for _, y, _ in skyline)


def raised(skyline, x, top, w):
    steps = [(x, top, w)]
    for sx, sy, sw in skyline:
        if sx < x:
            steps.append((sx, sy, min(sw, x - sx)))
        if sx + sw > x + w:
            start = max(sx, x + w)
            steps.append((start, sy, sx + sw - start))
    return sorted(steps)


def packed(pieces):
    """The packing of the smallest area: cells as (piece, x, y, w, h), and the image's size."""
    sizes = [(p.w * SCALE + GUTTER, p.h * SCALE + GUTTER) for p in pieces]
    best = None
    for width in range(max(w for w, _ in sizes), 2561, 2):
        for order in ORDERS:
            places, height = pack(sizes, width, order)
            if best is None or width * height < best[0]:
                best = (width * height, places, width, height)
    _, places, width, height = best
    cells = [(p, x + GUTTER, y + GUTTER, p.w * SCALE, p.h * SCALE) for p, (x, y) in zip(pieces, places)]
    return cells, (width + GUTTER, height + GUTTER)


# ---- texts -----------------------------------------------------------------------------------
def svg_text(cells, size):
    w, h = size
    rows = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{w}" height="{h}" viewBox="0 0 {w} {h}">']
    for piece, x, y, cw, ch in cells:
        rows.append(f'<svg id="b{piece.button}-{piece.state}" x="{x}" y="{y}" width="{cw}" height="{ch}" '
                    f'viewBox="0 0 {piece.w} {piece.h}" overflow="hidden">')
        rows.append(f"<title>{piece.what}</title>")
        rows.append(piece.content.replace("><", ">\n<"))
        rows.append("</svg>")
    return "\n".join(rows + ["</svg>", ""])


def cells_text(atlases):
    rows = ["// Written by make_art.py: image, button, state, then x, y, w, h in image pixels."]
    cells = [(p.button, p.state, image, x, y, w, h, p.what)
             for image, _, placed, _ in atlases for p, x, y, w, h in placed]
    for button, state, image, x, y, w, h, what in sorted(cells):
        place = f"AtlasImage::{image},".ljust(21)
        rows.append(f"{{{place} {button:3}, {state}, {x:4}, {y:4}, {w:4}, {h:3}}}, // {what}")
    return "\n".join(rows + [""])


def constants_text(atlases):
    places = (
        ("kHeaderTextPlace", banner.HEADER_TEXT, "in the header art (button 400)"),
        ("kNoticePlace", banner.NOTICE_PLACE, "of the notice, in the header art"),
        ("kNoticeTextPlace", banner.NOTICE_TEXT, "in the notice art"),
        ("kLinkTextPlace", banner.LINK_TEXT, "in the link art, state 0"),
        ("kLinkLowTextPlace", banner.LINK_LOW_TEXT, "in the link art, state 1"),
        ("kBodyPlace", browsing_page.BODY_PLACE, "of the body, on the canvas"),
    )
    rows = ["// Written by make_art.py.", "", "// Image pixels, in the order of AtlasImage.",
            "constexpr AtlasSize kAtlasSizes[] = {"]
    rows += [f"    {{{size[0]}, {size[1]}}}, // {stem}.png" for _, stem, _, size in atlases]
    rows += ["};", "", "// Canvas units: x, y, w, h."]
    rows += ["constexpr ArtPlace %s = {%d, %d, %d, %d}; // %s" % (name, *place, what)
             for name, place, what in places]
    rows += ["", "// 0xffRRGGBB."]
    rows += [f"constexpr unsigned kArtColour{name.title()} = 0xff{getattr(shapes, name)[1:]};"
             for name in ("GROUND", "PANEL", "TEAL", "AMBER")]
    return "\n".join(rows + [""])


def texts():
    """Every text file that this script writes: name and content."""
    atlases = [(image, stem, *packed(pieces)) for image, stem, pieces in IMAGES]
    found = {f"{stem}.svg": svg_text(cells, size) for _, stem, cells, size in atlases}
    found["icon.svg"] = banner.icon_svg()
    found["atlas_cells.inc"] = cells_text(atlases)
    found["atlas_constants.inc"] = constants_text(atlases)
    return found


# ---- main ------------------------------------------------------------------------------------
def check(found):
    stale = [name for name, text in found.items()
             if not (ART / name).exists() or (ART / name).read_text() != text]
    for name in stale:
        print(f"art/{name} is not what make_art.py writes", file=sys.stderr)
    return 1 if stale else 0


def render(name):
    image = subprocess.run(["rsvg-convert", str(ART / f"{name}.svg")], check=True, capture_output=True).stdout
    (ART / f"{name}.png").write_bytes(png.with_palette(image))


def main():
    found = texts()
    if "--check" in sys.argv[1:]:
        return check(found)
    if not shutil.which("rsvg-convert"):
        print("make_art.py: rsvg-convert is missing (Debian: librsvg2-bin)", file=sys.stderr)
        return 2
    for name, text in found.items():
        (ART / name).write_text(text)
    for name in [stem for _, stem, _ in IMAGES] + ["icon"]:
        render(name)
    return 0


if __name__ == "__main__":
    sys.exit(main())
