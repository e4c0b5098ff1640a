"""The sixteen tiles of the main page, 94 x 94 each."""
from .glyphs import books, folder, gear, magnifier, package, plus_badge, refresh_badge
from .people import both, dancing, front_body, painted, path_data, standing, zero_pose
from .piece import Piece
from .shapes import (AMBER, DEEP_TEAL, DIM, DULL_AMBER, EDGE, GROUND, INK, PLATE, RIM, TEAL, WELL,
                     arc, arrow, arrow_head, brackets, chain, circle, clipped, fill, line,
                     mirrored, moved, plate, polar, round_arrow, rounded, solid, stroke)

SIZE = 94
MID = 47


def reference_pose():
    return painted(dancing((47, 47.5), 0.66)) + brackets(10, 10, 74, 74, 13, AMBER, 5)


def pose_finder():
    c = (41, 41)
    return magnifier(c, 29, TEAL, AMBER, GROUND) + fill(dancing((41, 42), 0.43)[0][0], INK)


def reset_pose():
    turn = round_arrow((MID, MID), 36, -60, 208, TEAL, 5.5, 17)
    return mirrored(turn, SIZE) + fill(zero_pose((MID, 48), 0.47)[0][0], INK)


def optimize_editing():
    """The hip becomes the centre of turning: a ring around it."""
    front = "M81 47a34 12.5 0 0 1 -53 10.4"
    crossing = "M65.1 57.6a34 12.5 0 0 1 -36.2 0"
    return (stroke("M13 47a34 12.5 0 0 1 68 0", AMBER, 5) + painted(standing((MID, 45.5), 0.74), 1.6)
            + stroke(crossing, PLATE, 8.5) + stroke(front, AMBER, 5) + arrow_head((16, 47.5), 228, 17, AMBER)
            + fill(circle((MID, 46), 6.6), PLATE) + fill(circle((MID, 46), 4.6), TEAL))


def swap_pose():
    d = path_data(front_body((MID, 45), 0.62, both((70, 84, 70)), ((-34, -62, -58), (132, 112, 106)),
                             build="bold"))
    y = 84
    return (clipped(fill(d, TEAL), "swap-left", 0, 0, MID - 1, SIZE)
            + clipped(fill(d, AMBER), "swap-right", MID + 1, 0, MID - 1, SIZE)
            + arrow((MID, y), (17, y), AMBER, 5, 14) + arrow((MID, y), (77, y), TEAL, 5, 14))


def symmetrize():
    d = path_data(front_body((MID, 44), 0.6, both((70, 84, 70)), both((-30, -60, -56)), build="bold"))
    rim = stroke(d, TEAL, 4.6) + fill(d, PLATE)
    axis = "".join(fill(rounded(MID - 1.4, y, 2.8, 6, 1.4), AMBER) for y in range(8, 72, 10))
    return (clipped(fill(d, INK), "half-left", 0, 0, MID - 2.4, SIZE)
            + clipped(rim, "half-right", MID + 2.4, 0, MID - 3, SIZE) + axis
            + arrow((20, 84), (75, 84), AMBER, 5, 14))


def pose_limits():
    """A limb that turns between two stops."""
    c = (27, 69)
    reach = "M27 69L" + "%g %g" % polar(c, -84, 52) + "A52 52 0 0 1 %g %gz" % polar(c, 6, 52)
    stops = "".join(stroke(line(polar(c, a, 20), polar(c, a, 57)), AMBER, 5.5) for a in (-84, 6))
    limb = chain((c, 11), (polar(c, -39, 26), 8), (polar(c, -39, 50), 6))
    swing = (arrow_head(polar(c, -76, 46), -163, 12, TEAL) + stroke(arc(c, 46, -66, -53), TEAL, 4.5)
             + arrow_head(polar(c, -2, 46), 85, 12, TEAL) + stroke(arc(c, 46, -25, -12), TEAL, 4.5))
    return fill(reach, DEEP_TEAL) + swing + stops + solid(limb, INK, 2) + fill(circle(c, 4.4), PLATE)


def bone_translations():
    """A bone pushed back to its place from all sides."""
    bone = chain(((36, 58), 3.6), ((58, 36), 3.6))
    for x, y, sign in ((34, 60, 1), (60, 34, -1)):
        bone += circle((x - 3.6 * sign, y - 1.6 * sign), 5.4) + circle((x + 1.6 * sign, y + 3.6 * sign), 5.4)
    arrows = ""
    for angle in (0, 90, 180, 270):
        arrows += arrow(polar((MID, MID), angle, 39), polar((MID, MID), angle, 22), TEAL, 5, 13)
    return fill(bone, INK) + arrows + brackets(13, 13, 68, 68, 10, AMBER, 4.5)


def bake_pose():
    """The pose stays, its controls go to zero."""
    sliders = ""
    for y in (25, 47, 69):
        sliders += stroke(line((55, y), (82, y)), DIM, 4) + fill(circle((56.5, y), 7.4), AMBER)
    zero = fill(rounded(55, 12, 3, 70, 1.5), EDGE)
    return painted(dancing((27, 47.5), 0.62)) + zero + sliders


def product_updates():
    turn = "".join(round_arrow((MID, MID), 35, a, a + 118, TEAL, 5.5, 16) for a in (-158, 22))
    return turn + moved(package(INK, AMBER, PLATE), 29, 30)


def save_pose():
    shelf = moved(books((AMBER, INK, TEAL)), 47, 42, 1.12) + fill(rounded(43, 75, 41, 4.5, 2.2), DIM)
    return painted(dancing((26, 52), 0.58)) + shelf + moved(plus_badge(TEAL, PLATE), 55, 11)


def scan_poses():
    body = moved(folder(AMBER, DULL_AMBER), 12, 20, 1.08)
    pose = fill(dancing((35, 50.5), 0.33)[0][0], GROUND)
    return body + pose + moved(refresh_badge(TEAL, PLATE), 53, 51)


def settings():
    return gear((MID, MID), 34, INK, PLATE) + fill(circle((MID, MID), 7), AMBER)


def tile(content):
    return plate(SIZE, SIZE, 16) + content


def well():
    return fill(rounded(0, 0, SIZE, SIZE, 16), WELL) + stroke(rounded(1, 1, SIZE - 2, SIZE - 2, 15), RIM, 1.4)


TILES = (
    ("reference pose", tile(reference_pose())),
    ("pose finder", tile(pose_finder())),
    ("reset figure pose", tile(reset_pose())),
    ("optimize editing", tile(optimize_editing())),
    ("swap pose", tile(swap_pose())),
    ("symmetrize pose", tile(symmetrize())),
    ("pose limits", tile(pose_limits())),
    ("bone translations", tile(bone_translations())),
    ("bake current pose", tile(bake_pose())),
    ("empty well", well()),
    ("empty well", well()),
    ("empty well", well()),
    ("product updates", tile(product_updates())),
    ("save current pose", tile(save_pose())),
    ("re-initialize the finder", tile(scan_poses())),
    ("settings", tile(settings())),
)

PIECES = [Piece(n, 0, SIZE, SIZE, what, content) for n, (what, content) in enumerate(TILES)]
