"""Where the body's surface is, as balls: enough to keep it above the floor and out of itself.

Points are in the rest pose, left side and middle; a row of a left bone stands for both sides.
"""

from .rig import RIG, other_side

# part, bone, point, radius
ROWS = [
    ("trunk", "pelvis", (7.0, 90.5, -5.6), 7.2),
    ("trunk", "pelvis", (7.0, 94.5, 0.0), 8.6),
    ("trunk", "abdomenLower", (0.0, 103.0, 0.6), 9.0),
    ("trunk", "abdomenLower", (5.5, 103.0, 0.0), 7.6),
    ("trunk", "abdomenUpper", (0.0, 112.0, 0.6), 8.6),
    ("trunk", "abdomenUpper", (4.0, 112.0, 0.2), 7.6),
    ("trunk", "chestLower", (4.5, 121.5, 0.2), 8.8),
    ("trunk", "chestUpper", (5.5, 131.0, -1.6), 8.8),
    ("bust", "lPectoral", (7.2, 128.0, 5.6), 5.6),
    ("shoulder", "lShldrBend", (15.5, 135.5, -3.0), 5.0),
    ("neck", "neckLower", (0.0, 146.0, -1.5), 5.2),
    ("head", "head", (0.0, 162.0, -1.2), 9.0),
    ("head", "head", (0.0, 164.0, -11.6), 3.8),
    ("head", "head", (0.0, 150.5, 5.0), 3.6),
    ("thigh", "lThighBend", (10.0, 80.0, 0.2), 8.2),
    ("thigh", "lThighTwist", (11.0, 69.0, 0.5), 7.2),
    ("thigh", "lThighTwist", (12.0, 58.5, 0.8), 6.2),
    ("shin", "lShin", (12.9, 48.2, 1.6), 4.8),
    ("shin", "lShin", (14.2, 36.5, -1.6), 5.0),
    ("shin", "lShin", (15.6, 22.0, -1.4), 3.8),
    ("foot", "lFoot", (16.8, 3.4, -4.6), 3.3),
    ("foot", "lFoot", (17.3, 6.0, -0.5), 3.0),
    ("foot", "lMetatarsals", (19.3, 2.2, 8.4), 2.1),
    ("foot", "lMetatarsals", (22.5, 1.9, 9.4), 1.8),
    ("toe", "lToe", (18.4, 1.5, 16.0), 1.2),
    ("toe", "lToe", (22.0, 1.3, 14.0), 1.0),
    ("upper arm", "lShldrBend", (22.0, 130.0, -3.0), 4.2),
    ("upper arm", "lShldrTwist", (31.0, 121.0, -2.6), 3.6),
    ("forearm", "lForearmBend", (37.2, 114.8, -2.8), 3.3),
    ("forearm", "lForearmBend", (43.5, 108.5, -1.5), 3.1),
    ("forearm", "lForearmTwist", (49.5, 102.5, 0.0), 2.6),
    ("hand", "lHand", (54.5, 97.5, 1.1), 2.1),
    ("hand", "lHand", (58.5, 93.5, 1.6), 2.0),
    ("fingers", "lMid1", (60.9, 91.1, 2.1), 1.2),
    ("fingers", "lMid3", (66.5, 85.5, 2.3), 0.8),
]


class Ball:
    def __init__(self, part, bone, point, radius):
        self.part, self.side = part, bone[0] if other_side(bone) != bone else ""
        self.bone = RIG.number[bone]
        center = RIG.bones[self.bone].center
        self.offset = tuple(p - c for p, c in zip(point, center))
        self.radius = radius

    def name(self):
        return (self.side + " " + self.part).strip()


def _mirrored(point):
    return (-point[0], point[1], point[2])


def _balls():
    balls = []
    for part, bone, point, radius in ROWS:
        balls.append(Ball(part, bone, point, radius))
        if other_side(bone) != bone or point[0]:
            balls.append(Ball(part, other_side(bone), _mirrored(point), radius))
    return balls


BALLS = _balls()
LEGS = ("thigh", "shin", "foot", "toe")
ARMS = ("upper arm", "forearm", "hand", "fingers")


def balls_of(parts, side=None):
    return [b for b in BALLS if b.part in parts and (side is None or b.side == side)]
