"""One piece of artwork: what it shows, for which button and state, and how large it is."""
from typing import NamedTuple

# Numbers of pieces that are no buttons; atlas_table.h has the same.
NOTICE, BODY, BODY_AREA = 500, 501, 502


class Piece(NamedTuple):
    button: int   # the button's number, or one of the above
    state: int    # 0 off, 1 on; else told where the piece is listed
    w: int        # canvas units
    h: int
    what: str     # a few plain words, for the reader of table and source
    content: str  # SVG elements in canvas units
