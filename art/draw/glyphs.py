"""Signs that appear on more than one page: books, padlock, eye, magnifier, refresh, back."""
from .shapes import (DIM, GROUND, TEAL, arrow, chain, circle, fill, line, plate, polar, polygon,
                     round_arrow, rounded, stroke)


def back_button(cells):
    """An arrow to the left and the grid of the page it leads to."""
    step = 34 / cells
    grid = "".join(fill(rounded(72 + step * i, 13 + step * k, step * 0.76, step * 0.76, step * 0.2), DIM)
                   for i in range(cells) for k in range(cells))
    return plate(120, 60, 14) + grid + arrow((56, 30), (14, 30), TEAL, 8, 30)


def books(colours):
    """Two books upright and one that leans, 30 x 28, standing on y 28."""
    first, second, third = colours
    lean = f'<g transform="rotate(-17 29 28)">{fill(rounded(20.5, 2, 8, 26, 1.8), third)}</g>'
    return fill(rounded(0, 0, 8, 28, 1.8), first) + fill(rounded(9.6, 4, 7.4, 24, 1.8), second) + lean


def padlock(closed, colour, around):
    """16 x 20. The shackle of an open one stands up and to the side."""
    if closed:
        shackle = stroke("M3.6 10V6.6a4.4 4.4 0 0 1 8.8 0V10", colour, 2.8)
        keyhole = chain(((8, 13.6), 1.7), ((8, 16.4), 1.1))
        body = fill(rounded(0, 9, 16, 11.5, 2.6), colour) + fill(keyhole, around)
    else:
        shackle = stroke("M12.4 9.5V5.4a4.4 4.4 0 0 1 8.8 0V7.4", colour, 2.8)
        body = stroke(rounded(1.4, 10.2, 13.2, 9.2, 2), colour, 2.8)
    return shackle + body


def check_badge(colour, around):
    """A ticked disc, 20 x 20."""
    return (fill(circle((10, 10), 10), around) + fill(circle((10, 10), 8.4), colour)
            + stroke(line((6.4, 10.3), (9.1, 13), (13.7, 7.4)), GROUND, 2.6))


def plus_badge(colour, around):
    """A disc with a plus, 24 x 24."""
    return (fill(circle((12, 12), 14), around) + fill(circle((12, 12), 11.5), colour)
            + stroke(line((12, 6.6), (12, 17.4)) + line((6.6, 12), (17.4, 12)), GROUND, 3.6))


def refresh_badge(colour, around):
    """A turning arrow on a disc, 32 x 32."""
    return (fill(circle((16, 16), 19), around) + fill(circle((16, 16), 16), colour)
            + round_arrow((16, 16), 8.4, -55, 185, GROUND, 3.2, 8))


EYE = "M3 20C9.5 10 16.5 6.5 24 6.5S38.5 10 45 20C38.5 30 31.5 33.5 24 33.5S9.5 30 3 20z"


def eye_crossed(colour, around, lit=True):
    """48 x 40. Lit: a filled eye under the bar; else its rim alone."""
    bar = line((8, 37), (40, 3))
    if lit:
        eye = fill(EYE, colour) + fill(circle((24, 20), 8.2), around) + fill(circle((24, 20), 4.6), colour)
    else:
        eye = stroke(EYE, colour, 3.2) + stroke(circle((24, 20), 5.6), colour, 3.2)
    return eye + stroke(bar, around, 10) + stroke(bar, colour, 4.6)


def magnifier(c, r, glass, handle, inside):
    end = polar(c, 45, r * 2.0)
    return (stroke(line(polar(c, 45, r + 3), end), handle, r * 0.34) + fill(circle(c, r), inside)
            + stroke(circle(c, r), glass, r * 0.2))


def gear(c, r, colour, hole, teeth=8):
    d = circle(c, r * 0.76)
    for i in range(teeth):
        a = 360 * i / teeth + 180 / teeth
        d += chain((polar(c, a, r * 0.5), r * 0.26), (polar(c, a, r * 0.86), r * 0.15))
    return fill(d, colour) + fill(circle(c, r * 0.34), hole)


def folder(colour, tab):
    """62 x 48."""
    return (fill(rounded(0, 0, 30, 20, 5), tab) + fill(rounded(0, 7, 62, 41, 6), colour))


def package(colour, tape, around):
    """A closed parcel, 36 x 32."""
    lid = polygon([(5, 2), (31, 2), (34.5, 8.2), (1.5, 8.2)])
    return (fill(rounded(0, 11, 36, 21, 3.4), colour) + fill(lid, colour) + stroke(lid, colour, 2)
            + fill(rounded(14, 0, 8, 18, 1.6), around) + fill(rounded(15.6, 0, 4.8, 16.4, 1), tape))


def trash(colour, lid):
    """30 x 34."""
    ribs = "".join(line((x, 16), (x, 27)) for x in (10.5, 15, 19.5))
    return (fill(rounded(0.5, 4, 29, 4.6, 2.3), lid) + stroke("M10.5 4.5V2.4h9V4.5", lid, 3)
            + fill("M3.6 10.6h22.8l-1.7 19.6a3.6 3.6 0 0 1 -3.6 3.3h-12.2a3.6 3.6 0 0 1 -3.6 -3.3z", colour)
            + stroke(ribs, GROUND, 2))
