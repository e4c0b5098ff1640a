"""The browsing page: stepping, rank, filters, locks, and the body behind the ten area squares.

A filter or lock that is off is a rim with an empty outline inside; one that is on is a filled plate with a
solid figure and a badge (a tick for filters, a closed padlock for locks), so that colour is never the only
difference.
"""
from .glyphs import back_button, books, check_badge, eye_crossed, folder, padlock, trash
from .people import (BUILDS, Frame, arm, dancing, front_body, head_front, leg_front, path_data,
                     trunk_front)
from .piece import BODY, BODY_AREA, Piece
from .shapes import (AMBER, DEEP_AMBER, DEEP_TEAL, DIM, DULL_AMBER, EDGE, FAR, GROUND, INK, PLATE,
                     TEAL, arrow, brackets, chain, circle, clipped, fill, flowing, hollow_plate,
                     line, mirrored, moved, outline, plate, ring, rounded, solid, star, stroke)

RADIUS = 13


def filter_plate(on, size):
    return plate(size, size, RADIUS * size / 80 + 1, DEEP_TEAL) if on else hollow_plate(
        size, size, RADIUS * size / 80 + 1, 2.4 if size > 60 else 2)


def tick():
    return moved(check_badge(TEAL, DEEP_TEAL), 59, 2, 0.95)


def lock_plate(on, w, h):
    return plate(w, h, min(RADIUS, h * 0.4), DEEP_AMBER) if on else hollow_plate(w, h, min(RADIUS, h * 0.4))


def shape(d, on, lit=INK, around=GROUND):
    """A solid figure, or its rim."""
    return fill(d, lit) if on else outline(d, DIM, 2.8, around)


# ---- stepping --------------------------------------------------------------------------------
def next_pose():
    ghost = stroke(line((24, 76), (55, 120), (24, 164)), EDGE, 13)
    return plate(120, 240, 20) + ghost + stroke(line((52, 66), (90, 120), (52, 174)), TEAL, 17)


def previous_pose():
    return mirrored(next_pose(), 120)


# ---- rank ------------------------------------------------------------------------------------
def rank_glyph(rank, around, on=True):
    """In a field of 48 x 48; around is the colour behind it."""
    tint = (INK, AMBER, INK, TEAL)[rank] if on else DIM
    if rank == 0:
        return stroke(star((24, 26), 17.5, 0.5), tint, 4.4)
    if rank == 1:
        return stroke(star((24, 26), 17.5, 0.5), tint, 4.4) + fill(star((24, 26), 17.5, 0.5), tint)
    if rank == 2:
        return moved(eye_crossed(tint, around), 0, 4)
    return moved(books((tint,) * 3 if not on else (TEAL, INK, AMBER)), 4, 7, 1.2)


def rank(value):
    return plate(80, 80, RADIUS) + moved(rank_glyph(value, PLATE), 4.6, 2.5 if value == 2 else 4, 1.475)


def include_rank(value, on):
    badge = moved(check_badge(TEAL, DEEP_TEAL), 26.5, 0.5, 0.65) if on else ""
    glyph = rank_glyph(value, DEEP_TEAL if on else GROUND, on)
    return filter_plate(on, 40) + moved(glyph, 4.5, 7 if on else 5, 0.62) + badge


# ---- figures to include ----------------------------------------------------------------------
def mirrored_rim(knots):
    """A rim around x = 40 from the knots of its right half."""
    right = flowing(knots)
    return ring(*right, *[((80 - x, y), r) for (x, y), r in reversed(right)])


BUSTS = {  # hair, half of the shoulders' rim, head, neck
    "female": (mirrored_rim([((40, 23), 9), ((49, 26), 6.5), ((53.5, 36), 4.6), ((55, 47), 3.6),
                             ((54, 52), 3.2)]),
               [((40, 59), 4), ((52, 61.5), 4.6), ((58, 66), 4.6), ((59.5, 71), 2.6)],
               ring(((40, 30.5), 9.4), ((40, 37), 7)), 4.3),
    "male": (ring(*flowing([((29.8, 28), 2.4), ((31.6, 20.5), 4), ((40, 17), 4.8), ((48.4, 20.5), 4),
                            ((50.2, 28), 2.4), ((46, 23.5), 2.4), ((34, 23.5), 2.4)])),
             [((40, 57), 5), ((54, 59), 5.6), ((61.5, 64.5), 5), ((63.5, 71), 2.6)],
             ring(((40, 30), 10.4), ((40, 37.5), 8.2)), 6.2),
}


def bust(kind, on):
    """Long hair lies behind the head, short hair on it."""
    hair, half, head, neck = BUSTS[kind]
    d = mirrored_rim(half) + chain(((40, 42), neck), ((40, 58), neck + 0.6)) + head
    layers = [hair, d] if kind == "female" else [d, hair]
    if not on:
        return "".join(outline(part, DIM, 2.8, GROUND) for part in layers)
    return "".join(solid(part, TEAL if part is hair else INK, 1.6, DEEP_TEAL) for part in layers)


def include_figure(kind, on):
    return filter_plate(on, 80) + bust(kind, on) + (tick() if on else "")


def toggle_reference(on):
    d = dancing((40, 41), 0.56)[0][0]
    if on:
        frame = stroke(rounded(13, 9, 54, 62, 5), AMBER, 4.6)
        return filter_plate(on, 80) + frame + fill(d, INK) + tick()
    return filter_plate(on, 80) + brackets(13, 9, 54, 62, 11, DIM, 4) + outline(d, DIM, 2.2, GROUND)


def toggle_mirrored(on):
    d = path_data(front_body((20, 45.5), 0.5, ((72, 90, 80), (96, 94, 100)),
                             ((-62, -82, -76), (128, 106, 100))))
    axis = "".join(fill(rounded(38.7, y, 2.6, 5.4, 1.3), AMBER if on else DIM) for y in range(10, 72, 9))
    if on:
        return (filter_plate(on, 80) + fill(d, INK) + mirrored(fill(d, TEAL), 80) + axis
                + tick())
    return filter_plate(on, 80) + fill(d, DIM) + mirrored(outline(d, DIM, 2, GROUND), 80) + axis


# ---- locks -----------------------------------------------------------------------------------
def lock_sign(on, x, y, scale=1.0):
    return moved(padlock(on, AMBER if on else DIM, DEEP_AMBER), x, y, scale)


def upper_body(on):
    body = Frame((34, 77), -90, 1.26)
    d = trunk_front(body) + head_front(body)
    for side, angles in ((1, (70, 84, 88)), (-1, (110, 96, 92))):
        d += arm(body.point(31, side * BUILDS["plain"][0]), angles, 1.26, side)
    bust_only = clipped(shape(d, on), f"upper-{int(on)}", 4, 2, 60, 74)
    return lock_plate(on, 80, 80) + bust_only + lock_sign(on, 57 if on else 53, 6)


def lower_body(on):
    body = Frame((31, 12.8), -90, 0.75)
    hips = ring(body.knot(5, 4.2, 5), body.knot(1.5, 5.4, 5.6), body.knot(1.5, -5.4, 5.6),
                body.knot(5, -4.2, 5))
    d = hips + "".join(leg_front(body.point(0.5, side * 5.4), angles, 0.75, -side)
                       for side, angles in ((1, (76, 86, 76)), (-1, (104, 94, 104))))
    return lock_plate(on, 80, 60) + shape(d, on) + lock_sign(on, 57 if on else 53, 6)


def feet(on):
    foot = (chain(((0, 3), 2.4), ((0, 11), 2.8))
            + chain(((0, 11.2), 2.8), ((8, 11.8), 2.4), ((13.5, 12.7), 1.6)))
    foot = fill(foot, INK) if on else outline(foot, DIM, 1.5, GROUND)
    return (lock_plate(on, 80, 20) + moved(foot, 13, 3) + moved(foot, 35, 3)
            + lock_sign(on, 61 if on else 58, 3, 0.7))


def expression(on):
    head = ring(((31, 36), 19.5), ((31, 46), 17.5))
    eyes = circle((24, 38), 3) + circle((38, 38), 3)
    smile = "M22 49c3.8 7.6 14.2 7.6 18 0"
    if on:
        features = fill(eyes, DEEP_AMBER) + fill(smile + "z", DEEP_AMBER) + stroke(smile + "z", DEEP_AMBER, 3)
    else:
        features = fill(eyes, DIM) + stroke(smile, DIM, 3)
    return lock_plate(on, 80, 80) + shape(head, on) + features + lock_sign(on, 58 if on else 54, 5)


def left_hand(on):
    """Open, palm to the viewer: a left thumb points to the viewer's right."""
    palm = ring(((26, 45), 6), ((41, 44), 6), ((40, 60), 6.5), ((30, 61), 6.5))
    fingers = (chain(((22.8, 44), 4), ((15.5, 26.5), 3)) + chain(((29.5, 41), 4.2), ((25.8, 16.5), 3.3))
               + chain(((36.6, 41), 4.3), ((37.2, 13), 3.4)) + chain(((43.2, 42.5), 4.2), ((47.8, 19), 3.3))
               + chain(((40, 58), 6.5), ((49, 51), 4.6), ((58.5, 40.5), 3.3)))
    wrist = chain(((34.5, 58), 9.4), ((34.5, 66), 8.2))
    return shape(palm + fingers + wrist, on)


def hand_lock(side, on):
    hand = moved(left_hand(on), -1.5, -0.5)
    return (lock_plate(on, 80, 80) + (hand if side == "left" else mirrored(hand, 73))
            + lock_sign(on, 59 if on else 54, 51))


# ---- product folder, delete ------------------------------------------------------------------
def product_folder():
    return (plate(50, 50, 10) + moved(folder(AMBER, DULL_AMBER), 8, 12, 0.55)
            + arrow((18, 28), (34, 28), GROUND, 3.6, 11))


def delete_pose():
    return plate(50, 50, 10) + moved(trash(INK, TEAL), 10, 8)


# ---- the body behind the area squares --------------------------------------------------------
BODY_PLACE = (194, 394, 128, 194)  # on the canvas, so that the squares fall on the limbs
BODY_LEFT, BODY_TOP, BODY_W, BODY_H = BODY_PLACE


def body():
    def knot(x, y, r, side):
        return ((258 + side * x - BODY_LEFT, y - BODY_TOP), r)

    d = ""
    for side in (1, -1):
        d += chain(*flowing([knot(x, y, r, side) for x, y, r in (
            (8.5, 489, 11), (12, 508, 10.6), (14.5, 525, 8), (15.5, 533, 7.4), (18, 549, 7.8), (19, 563, 5.6),
            (19.5, 572, 4.8), (22.5, 579, 5.6))]))
        d += chain(*flowing([knot(x, y, r, side) for x, y, r in (
            (15.5, 440, 8), (22, 454, 7.4), (28, 464.5, 6.2), (35, 469.5, 6), (43, 475, 5.8),
            (50, 480.5, 4.2), (55, 484.5, 4.8), (60, 489, 3))]))
    half = [(15, 439.5, 7.6), (11, 452, 8.6), (9, 463, 8.2), (7.4, 472, 8), (8.4, 481, 8.8), (9, 488, 10)]
    right = flowing([knot(x, y, r, 1) for x, y, r in half])
    left = flowing([knot(x, y, r, -1) for x, y, r in reversed(half)])
    d += ring(*right, *left)
    d += chain(knot(-15, 440, 7.6, 1), knot(0, 435, 8.4, 1), knot(15, 440, 7.6, 1))
    d += chain(knot(0, 436, 7, 1), knot(0, 424, 5.4, 1))
    d += chain(knot(0, 411.5, 11, 1), knot(0, 416, 10.4, 1), knot(0, 423, 6.4, 1))
    return fill(d, EDGE)


def body_area(on):
    if on:
        return (fill(rounded(0, 0, 20, 20, 5), AMBER)
                + stroke(line((5.4, 10.4), (8.7, 13.8), (14.6, 6.6)), GROUND, 3))
    return fill(rounded(0.5, 0.5, 19, 19, 5), GROUND) + stroke(rounded(1.2, 1.2, 17.6, 17.6, 4.4), FAR, 2.2)


def toggles(button, w, h, what, draw):
    return [Piece(button, int(on), w, h, what + (" on" if on else " off"), draw(on)) for on in (False, True)]


RANKS = ("unranked", "favorite", "hidden", "custom library")

PIECES = [
    Piece(200, 0, 120, 240, "previous pose", previous_pose()),
    Piece(201, 0, 120, 240, "next pose", next_pose()),
    Piece(202, 1, 120, 60, "back to the picker page", back_button(3)),
    *toggles(210, 80, 80, "include Genesis 8 Female", lambda on: include_figure("female", on)),
    *toggles(211, 80, 80, "include Genesis 8 Male", lambda on: include_figure("male", on)),
    *toggles(212, 80, 80, "mirrored pose", toggle_mirrored),
    *[Piece(213, i, 80, 80, "rank: " + RANKS[i], rank(i)) for i in range(4)],
    *toggles(214, 80, 80, "lock upper body", upper_body),
    *toggles(215, 80, 60, "lock lower body", lower_body),
    *toggles(216, 80, 20, "lock feet", feet),
    *toggles(217, 80, 80, "lock expression", expression),
    *toggles(218, 80, 80, "lock left hand", lambda on: hand_lock("left", on)),
    *toggles(219, 80, 80, "lock right hand", lambda on: hand_lock("right", on)),
    Piece(220, 0, 50, 50, "product folder", product_folder()),
    Piece(220, 1, 50, 50, "delete custom pose", delete_pose()),
    *toggles(223, 80, 80, "reference pose", toggle_reference),
    *[piece for i in range(4)
      for piece in toggles(224 + i, 40, 40, "include " + RANKS[i], lambda on, i=i: include_rank(i, on))],
    Piece(BODY, 0, BODY_W, BODY_H, "body behind the area squares", body()),
    *toggles(BODY_AREA, 20, 20, "body area", body_area),
]
