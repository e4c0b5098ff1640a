"""What stands on every page: header, new-version notice, link to the web page; and the icon."""
from .people import both, dancing, front_body, path_data, side_body, standing
from .piece import NOTICE, Piece
from .shapes import (AMBER, DEEP_TEAL, EDGE, GROUND, INK, PANEL, TEAL, chain, circle, fill, line,
                     moved, num, plate, polar, polygon, rounded, stroke)

# Where texts may stand, in canvas units of the piece: nothing there is lighter than PANEL.
HEADER_TEXT = (152, 14, 346, 132)
NOTICE_PLACE = (152, 14, 346, 132)
NOTICE_TEXT = (74, 12, 260, 108)
LINK_TEXT = (138, 14, 264, 152)
LINK_LOW_TEXT = (92, 8, 320, 84)


def emblem(c, r, ground=GROUND):
    """A ring with a tail, a Q, around a figure in motion."""
    body = front_body((c[0] - 0.07 * r, c[1] + 0.07 * r), 0.0138 * r, ((62, 104, 96), (118, 112, 118)),
                      ((-40, -44, -42), (164, 150, 148)), tilt=4, build="bold")
    tail = line(polar(c, 45, 0.78 * r), polar(c, 45, 1.32 * r))
    return (stroke(circle(c, r), TEAL, 0.2 * r) + stroke(tail, ground, 0.46 * r)
            + stroke(tail, AMBER, 0.26 * r) + fill(path_data(body), INK))


def frieze():
    """A row of small poses on a line."""
    row = [standing((0, -54.5), 1), dancing((0, -53), 1),
           side_body((-10, -9), 1, -96, -88, -88, ((-48, 58, 4), None), ((64, -12, -6), None)),
           front_body((0, -63), 1, both((62, 70, 78)), both((-74, -88, -86)), up=90),
           front_body((0, -50), 1, both((58, 82, 70)), both((-28, -50, -48))),
           side_body((4, -9), 1, 182, 207, -94, ((4, -80, -62), None), ((99, 176, 182), None), side=-1)]
    return "".join(moved(fill(path_data(body), EDGE), 200 + 50 * i, 189.5, 0.35)
                   for i, body in enumerate(row))


def header():
    stripe = fill(rounded(152, 190, 346, 3, 1.5), TEAL) + fill(rounded(152, 190, 62, 3, 1.5), AMBER)
    return fill(rounded(0, 0, 512, 202, 0), GROUND) + emblem((74, 98), 50) + frieze() + stripe


def notice():
    """Stands over the header's text place; its own text place takes text or the announcing picture."""
    bell = ("M40 40c-12 0-17.5 8.5-17.5 19v9c0 5-2.6 7.6-6.4 11.4a2 2 0 0 0 1.4 3.4h45"
            "a2 2 0 0 0 1.4-3.4C60.1 75.6 57.5 73 57.5 68v-9c0-10.5-5.5-19-17.5-19z")
    clapper = "M33 87.5a7 7 0 0 0 14 0z"
    return (fill(rounded(0, 0, 346, 132, 16), PANEL) + stroke(rounded(1.5, 1.5, 343, 129, 14.5), AMBER, 3)
            + fill(bell, AMBER) + fill(clapper, AMBER) + fill(circle((40, 38), 4.4), AMBER)
            + fill(circle((57, 46), 11), PANEL) + fill(circle((57, 46), 8), TEAL))


def globe(c, r, width):
    x, y = c
    lines = line((x, y - r), (x, y + r)) + line((x - r, y), (x + r, y))
    for sweep in (0, 1):
        lines += f"M{num(x)} {num(y - r)}a{num(0.46 * r)} {num(r)} 0 0 {sweep} 0 {num(2 * r)}"
    half = r * 0.5
    reach = (r * r - half * half) ** 0.5
    for dy in (-half, half):
        lines += line((x - reach, y + dy), (x + reach, y + dy))
    return (fill(circle(c, r), DEEP_TEAL) + stroke(lines, TEAL, width * 0.7)
            + stroke(circle(c, r), TEAL, width))


def pointer(tip, s):
    """A mouse pointer, s high."""
    x, y = tip
    shape = [(0, 0), (0, 0.8), (0.2, 0.63), (0.34, 0.95), (0.47, 0.89), (0.33, 0.58), (0.6, 0.57)]
    d = polygon([(x + px * s, y + py * s) for px, py in shape])
    return stroke(d, PANEL, 0.26 * s) + stroke(d, AMBER, 0.07 * s) + fill(d, AMBER)


def link(w, h, globe_at, r, chevron_at, half):
    x, y = chevron_at
    chevron = stroke(line((x, y - half), (x + half * 0.7, y), (x, y + half)), TEAL, half * 0.32)
    return (fill(rounded(0, 0, w, h, 18), PANEL) + stroke(rounded(1, 1, w - 2, h - 2, 17), EDGE, 2)
            + globe(globe_at, r, r * 0.11)
            + pointer((globe_at[0] + r * 0.2, globe_at[1] + r * 0.16), r * 1.15) + chevron)


PIECES = [
    Piece(400, 0, 512, 202, "header", header()),
    Piece(401, 0, 462, 180, "link to the web page, main and picker pages",
          link(462, 180, (72, 88), 46, (420, 90), 24)),
    Piece(401, 1, 462, 100, "link to the web page while browsing",
          link(462, 100, (50, 48), 29, (428, 50), 16)),
    Piece(NOTICE, 0, NOTICE_PLACE[2], NOTICE_PLACE[3], "new-version notice", notice()),
]


def icon_svg():
    ground = "#1a1e25"
    content = plate(64, 64, 14, ground) + emblem((29.5, 29.5), 23, ground)
    return ('<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64" viewBox="0 0 64 64">\n'
            + content.replace("><", ">\n<") + "\n</svg>\n")
