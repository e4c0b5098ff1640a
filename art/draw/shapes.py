"""Colours and the few outline functions that all artwork is made of.

Lengths are canvas units (the pane is 512 x 1024 of them), angles degrees, y grows downwards:
0 points right, 90 down. Every outline runs clockwise, so that overlapping ones in one path add up
under the nonzero fill rule.
"""
import math

GROUND = "#121418"  # behind everything; grey 128 text reads on it
PANEL = "#15171b"   # the lightest tone that still carries grey 128 text
PLATE = "#272c36"   # a button's body
EDGE = "#3a4250"    # hairlines and quiet details on plates
WELL = "#15181d"    # a place without a button
RIM = "#22272f"     # its edge
INK = "#e9edf2"     # figures
FAR = "#8e9aab"     # limbs on the far side
DIM = "#8793a1"     # glyphs that are switched off
TEAL = "#3ccfbe"    # first accent: go, include
AMBER = "#ffb347"   # second accent: keep, attention
DEEP_TEAL = "#1c4648"   # the accents as grounds: plates that are switched on
DEEP_AMBER = "#503d20"
DULL_AMBER = "#d9923a"   # a side in shade


def num(value):
    text = f"{value:.2f}".rstrip("0").rstrip(".")
    return "0" if text in ("-0", "") else text


def polar(origin, angle, length):
    rad = math.radians(angle)
    return (origin[0] + length * math.cos(rad), origin[1] + length * math.sin(rad))


# ---- outlines: functions that return path data -----------------------------------------------
def circle(c, r):
    x, y, d = num(c[0] - r), num(c[1]), num(2 * r)
    return f"M{x} {y}a{num(r)} {num(r)} 0 1 1 {d} 0a{num(r)} {num(r)} 0 1 1 -{d} 0z"


def capsule(a, ra, b, rb):
    """The convex hull of two circles: a tapered limb."""
    dist = math.hypot(b[0] - a[0], b[1] - a[1])
    if dist <= abs(ra - rb) + 1e-6:
        return circle(a, ra) if ra >= rb else circle(b, rb)
    phi = math.degrees(math.atan2(b[1] - a[1], b[0] - a[0]))
    alpha = math.degrees(math.acos((ra - rb) / dist))
    a0, a1 = polar(a, phi - alpha, ra), polar(a, phi + alpha, ra)
    b0, b1 = polar(b, phi - alpha, rb), polar(b, phi + alpha, rb)
    arc_b = f"A{num(rb)} {num(rb)} 0 {int(alpha > 90)} 1 {num(b1[0])} {num(b1[1])}"
    arc_a = f"A{num(ra)} {num(ra)} 0 {int(alpha < 90)} 1 {num(a0[0])} {num(a0[1])}"
    return (f"M{num(a0[0])} {num(a0[1])}L{num(b0[0])} {num(b0[1])}{arc_b}"
            f"L{num(a1[0])} {num(a1[1])}{arc_a}z")


def chain(*knots):
    """A limb through (point, radius) knots."""
    return "".join(capsule(p, r, q, s) for (p, r), (q, s) in zip(knots, knots[1:]))


def flowing(knots, steps=3):
    """More knots in between, on a Catmull-Rom curve: the limb gets a smooth rim."""
    flat = [(*p, r) for p, r in knots]
    flat = [flat[0]] + flat + [flat[-1]]
    found = []
    for a, b, c, d in zip(flat, flat[1:], flat[2:], flat[3:]):
        for i in range(steps):
            t = i / steps
            v = [0.5 * (2 * q + (r - p) * t + (2 * p - 5 * q + 4 * r - s) * t * t
                        + (3 * q - p - 3 * r + s) * t ** 3) for p, q, r, s in zip(a, b, c, d)]
            found.append(((v[0], v[1]), v[2]))
    return found + [knots[-1]]


def polygon(points):
    area = sum(p[0] * q[1] - q[0] * p[1] for p, q in zip(points, points[1:] + points[:1]))
    ordered = points if area > 0 else points[::-1]
    return "M" + "L".join(f"{num(x)} {num(y)}" for x, y in ordered) + "z"


def ring(*knots):
    """A body whose rim runs around the given circles."""
    return chain(*knots, knots[0]) + polygon([p for p, _ in knots])


def rounded(x, y, w, h, r):
    r = min(r, w / 2, h / 2)
    arc = f"a{num(r)} {num(r)} 0 0 1 "
    return (f"M{num(x + r)} {num(y)}h{num(w - 2 * r)}{arc}{num(r)} {num(r)}v{num(h - 2 * r)}"
            f"{arc}-{num(r)} {num(r)}h-{num(w - 2 * r)}{arc}-{num(r)} -{num(r)}"
            f"v-{num(h - 2 * r)}{arc}{num(r)} -{num(r)}z")


def line(*points):
    return "M" + "L".join(f"{num(x)} {num(y)}" for x, y in points)


def arc(c, r, start, end):
    """An open arc, clockwise from start to end."""
    p, q = polar(c, start, r), polar(c, end, r)
    return (f"M{num(p[0])} {num(p[1])}A{num(r)} {num(r)} 0 {int((end - start) % 360 > 180)} 1 "
            f"{num(q[0])} {num(q[1])}")


def star(c, r, inner=0.45, points=5):
    tips = []
    for i in range(2 * points):
        tips.append(polar(c, -90 + 180 * i / points, r if i % 2 == 0 else r * inner))
    return polygon(tips)


# ---- painting: functions that return SVG elements --------------------------------------------
def fill(d, colour, **more):
    return f'<path d="{d}" fill="{colour}"{attributes(more)}/>'


def stroke(d, colour, width, **more):
    return (f'<path d="{d}" fill="none" stroke="{colour}" stroke-width="{num(width)}" '
            f'stroke-linecap="round" stroke-linejoin="round"{attributes(more)}/>')


def outline(d, colour, width, inside):
    """The rim of a shape that is made of overlapping parts."""
    return stroke(d, colour, 2 * width) + fill(d, inside)


def solid(d, colour, gap=0, around=PLATE):
    """A filled shape, set off by a gap from whatever it covers."""
    return (stroke(d, around, 2 * gap) if gap else "") + fill(d, colour)


def soft(points, colour, r):
    """A filled polygon with rounded corners."""
    d = polygon(list(points))
    return (f'<path d="{d}" fill="{colour}" stroke="{colour}" stroke-width="{num(2 * r)}" '
            f'stroke-linejoin="round"/>')


def group(content, **more):
    return f"<g{attributes(more)}>{content}</g>"


def moved(content, dx, dy, scale=1):
    return group(content, transform=f"translate({num(dx)} {num(dy)}) scale({num(scale)})")


def mirrored(content, width):
    return group(content, transform=f"translate({num(width)} 0) scale(-1 1)")


def clipped(content, name, x, y, w, h):
    """content inside a rectangle; name is unique in the picture."""
    d = rounded(x, y, w, h, 0)
    return f'<clipPath id="{name}"><path d="{d}"/></clipPath>' + group(content, clip_path=f"url(#{name})")


def attributes(more):
    return "".join(f' {key.replace("_", "-")}="{value}"' for key, value in more.items())


# ---- small parts that several pieces share ---------------------------------------------------
def plate(w, h, r, colour=PLATE):
    return fill(rounded(0, 0, w, h, r), colour)


def hollow_plate(w, h, r, width=2.4):
    """A rim only; the pane's ground shows inside."""
    half = width / 2
    return stroke(rounded(half, half, w - width, h - width, r - half), EDGE, width)


def arrow_head(tip, angle, size, colour):
    """A rounded triangle that points along angle."""
    r = size * 0.16
    tip = polar(tip, angle, -r)
    back = polar(tip, angle, -size * 0.68)
    return soft([tip, polar(back, angle + 90, size * 0.43), polar(back, angle - 90, size * 0.43)], colour, r)


def arrow(tail, tip, colour, width, head):
    angle = math.degrees(math.atan2(tip[1] - tail[1], tip[0] - tail[0]))
    return (stroke(line(tail, polar(tip, angle, -head * 0.7)), colour, width)
            + arrow_head(tip, angle, head, colour))


def round_arrow(c, r, start, end, colour, width, head):
    """An arc that ends in an arrow head; clockwise from start to end, where the head has its base."""
    ahead = end + 90 + math.degrees(head * 0.42 / r)
    tip = polar(polar(c, end, r), ahead, head * 0.84)
    return stroke(arc(c, r, start, end), colour, width) + arrow_head(tip, ahead, head, colour)


def brackets(x, y, w, h, leg, colour, width):
    """The four corners of a view finder."""
    d = ""
    for cx, sx in ((x, 1), (x + w, -1)):
        for cy, sy in ((y, 1), (y + h, -1)):
            d += line((cx, cy + sy * leg), (cx, cy), (cx + sx * leg, cy))
    return stroke(d, colour, width)
