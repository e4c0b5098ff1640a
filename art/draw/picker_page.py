"""The nine pose types and the way back to the main page.

A figure stands in a 112 x 112 field. The amber thing is what carries it, the teal line the floor; a teal
arrow shows where the belly of a lying figure looks.
"""
from .glyphs import back_button
from .people import body_side_lying, both, dancing, front_body, painted, side_body, standing
from .piece import Piece
from .shapes import AMBER, EDGE, INK, TEAL, arrow, brackets, fill, mirrored, moved, plate, rounded

SIZE = 112
FLOOR = 94
MAT = 83


def floor(x=14, w=84):
    return fill(rounded(x, FLOOR, w, 4.5, 2.2), TEAL)


def mat():
    return fill(rounded(7, MAT, 98, 10, 5), AMBER)


def chair():
    return (fill(rounded(26, 27, 5.5, 52, 2.7), AMBER) + fill(rounded(26, 75.5, 39, 6, 3), AMBER)
            + fill(rounded(27, 76, 5, 19, 2), AMBER) + fill(rounded(56, 76, 5, 19, 2), AMBER))


def sitting_body():
    return side_body((43.5, 68.4), 0.92, -92, -88, -88,
                     legs=((1, 91, 0), (-4, 74, 0)), arms=((72, 16, 10), (58, 0, 0)))


def belly_up_body():
    return side_body((56.5, 75.6), 0.84, 180, 181, 178,
                     legs=((-58, 62, 4), (0, 1, -82)), arms=((4, -3, -5), None))


def belly_down_body():
    return side_body((58, 76.2), 0.84, 182, 207, -94,
                     legs=((4, -80, -62), (4, -46, -30)), arms=((99, 176, 182), None), side=-1)


def upside_down_body():
    return front_body((56, 47), 0.74, both((62, 70, 78)), both((-74, -88, -86)), up=90)


def sitting():
    return chair() + painted(sitting_body()) + floor()


def standing_up():
    return painted(standing((56, 51.5), 0.77)) + floor()


def belly_up():
    return painted(belly_up_body()) + mat() + arrow((42, 53), (42, 25), TEAL, 6, 18)


def belly_down():
    return painted(belly_down_body()) + mat() + arrow((56, 24), (56, 52), TEAL, 6, 18)


def on_right_side():
    return painted(body_side_lying((-10, -9.6), 1.125)) + mat()


def upside_down():
    return painted(upside_down_body()) + floor()


def all_poses():
    """A gallery of four."""
    stool = fill(rounded(33, 77, 28, 20, 5), AMBER)
    bed = fill(rounded(7, MAT, 98, 13, 5), AMBER)
    fields = ((painted(standing((56, 56), 0.96), 2.4, EDGE), (56, 57), 0.37),
              (stool + painted(sitting_body(), 2.4, EDGE), (51, 58.5), 0.47),
              (painted(belly_up_body(), 2.4, EDGE) + bed, (56, 78), 0.4),
              (painted(upside_down_body(), 2.4, EDGE), (56, 52), 0.45))
    corners = ((9, 9), (58, 9), (9, 58), (58, 58))
    cards = ""
    for (x, y), (content, middle, scale) in zip(corners, fields):
        cards += fill(rounded(x, y, 45, 45, 8), EDGE)
        cards += moved(content, x + 22.5 - middle[0] * scale, y + 22.5 - middle[1] * scale, scale)
    return cards


def like_reference():
    return (fill(dancing((33, 59), 0.58)[0][0], INK) + fill(dancing((84, 59), 0.58)[0][0], TEAL)
            + brackets(8, 14, 54, 84, 12, AMBER, 4.5))


def tile(content):
    return plate(SIZE, SIZE, 18) + content


PIECES = [
    Piece(100, 0, SIZE, SIZE, "browse all poses", tile(all_poses())),
    Piece(101, 0, SIZE, SIZE, "sitting", tile(sitting())),
    Piece(102, 0, SIZE, SIZE, "standing", tile(standing_up())),
    Piece(103, 0, SIZE, SIZE, "lying, belly up", tile(belly_up())),
    Piece(104, 0, SIZE, SIZE, "lying, belly down", tile(belly_down())),
    Piece(105, 0, SIZE, SIZE, "lying on the left side", tile(mirrored(on_right_side(), SIZE))),
    Piece(106, 0, SIZE, SIZE, "lying on the right side", tile(on_right_side())),
    Piece(107, 0, SIZE, SIZE, "upside down", tile(upside_down())),
    Piece(108, 0, SIZE, SIZE, "similar to the reference pose", tile(like_reference())),
    Piece(202, 0, 120, 60, "back to the main page", back_button(4)),
]
