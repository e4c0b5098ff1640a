"""A pose as its author tells it: where the hip is and how it is turned, what the spine does, where
feet, knees and hands are. Legs and arms are then worked out within the limits of the joints.

Sides are "l" and "r" of the figure; values of a side are told as for the left one, so that an
outward turn is positive on both.
"""

from . import rig
from .rig import RIG, axis_turn, minus, plus, product, turned, unit


SPINE = {"abdomenLower": 0.25, "abdomenUpper": 0.32, "chestLower": 0.28, "chestUpper": 0.15}
NECK = {"neckLower": 0.4, "neckUpper": 0.2, "head": 0.4}

# What the solver may turn, with the cost of a degree: what is dear stays near where it was.
LEG_CHANNELS = [
    ("ThighBend", 0, 0.002), ("ThighBend", 2, 0.006), ("ThighTwist", 1, 0.008),
    ("Shin", 0, 0.001), ("Foot", 0, 0.008), ("Foot", 1, 0.03), ("Foot", 2, 0.03),
]
ARM_CHANNELS = [
    ("Collar", 1, 0.05), ("Collar", 2, 0.035), ("ShldrBend", 1, 0.004), ("ShldrBend", 2, 0.004),
    ("ShldrTwist", 0, 0.008), ("ForearmBend", 1, 0.002), ("ForearmTwist", 0, 0.008),
    ("Hand", 1, 0.025), ("Hand", 2, 0.015),
]
# Arms are tried from several beginnings: shoulder Y and Z, twist, elbow; the best end counts.
ARM_STARTS = [(-20, -25, 0, -40), (-70, 10, 0, -60), (-20, 60, 0, -40), (15, -30, 0, -30),
              (-40, -20, -50, -100), (-60, -10, 50, -90)]

AXIS_WEIGHT = 12.0  # of a direction's error, against centimetres
ELBOW_REACH_CM, ELBOW_WEIGHT = 16.0, 0.12  # how far out an elbow or a knee is wished
FLOOR_WEIGHT, APART_WEIGHT = 1.5, 0.8

WAYS = {"down": (0, -1, 0), "up": (0, 1, 0), "front": (0, 0, 1), "back": (0, 0, -1),
        "left": (1, 0, 0), "right": (-1, 0, 0)}

PALM = (58.3, 92.6, 1.5)  # the palm's surface at rest, left
FINGERS_WAY, PALM_WAY = (0.7071, -0.7071, 0.0), (-0.7071, -0.7071, 0.0)
BALL_OF_FOOT, HEEL = (19.5, 2.0, 10.0), (16.8, 0.0, -5.5)

# Curl of the fingers in degrees: the three joints of index to pinky; thumb 1 Y and Z, 2, 3.
HANDS = {
    "flat": ([(-4, -4, -2)] * 4, (0, 0, 0, 0)),
    "relaxed": ([(-12, -22, -14), (-18, -28, -16), (-24, -32, -18), (-28, -36, -20)],
                (8, 0, 10, 12)),
    "soft": ([(-4, -14, -8), (-8, -18, -10), (-12, -22, -12), (-14, -26, -14)], (4, 0, 6, 6)),
    "fist": ([(-78, -95, -62), (-82, -97, -62), (-84, -97, -62), (-84, -95, -60)],
             (36, -8, 45, 40)),
    "grip": ([(-50, -62, -36), (-54, -62, -36), (-58, -64, -36), (-62, -64, -36)],
             (30, -4, 24, 24)),
    "point": ([(-4, -6, -4), (-80, -95, -60), (-82, -95, -60), (-82, -92, -58)],
              (34, -8, 42, 36)),
    "spread": ([(-2, -4, -2)] * 4, (-10, 0, 0, 0)),
    "thumb up": ([(-78, -95, -62), (-82, -97, -62), (-84, -97, -62), (-84, -95, -60)],
                 (-18, 0, -8, -8)),
    "claw": ([(12, -60, -40), (10, -60, -40), (10, -60, -40), (8, -60, -40)], (10, 0, 30, 30)),
    "victory": ([(0, -4, -2), (0, -4, -2), (-82, -95, -60), (-82, -92, -58)], (36, -8, 48, 40)),
}
SPREAD_DEG = {"spread": (-12, -3, 6, 13), "victory": (-13, 9, 0, 0), "flat": (-2, 0, 1, 3)}


def way(told):
    return unit(WAYS[told] if isinstance(told, str) else told)


def mirror_of(v):
    return (-v[0], v[1], v[2])


class Pose:
    def __init__(self, name):
        self.name = name
        self.angles = [[0.0, 0.0, 0.0] for _ in RIG.bones]
        self.controls = {}
        self.shift = [0.0, 0.0, 0.0]  # the hip's translation
        self.R = [rig.IDENTITY] * len(RIG.bones)
        self.P = [bone.center for bone in RIG.bones]
        self._local = [((0.0, 0.0, 0.0), rig.IDENTITY)] * len(RIG.bones)
        self.leg_goals = {"l": [], "r": []}
        self.arm_goals = {"l": [], "r": []}
        self.hip_goal = (0.0, 0.4, 0.0)
        self.hip_free = (0.5, 0.2, 0.5)  # cost of a centimetre off it
        self.notes = []
        for side in "lr":
            self.hang(side)
            self.fingers(side, "relaxed")

    # ---- channels

    def set(self, bone, x=None, y=None, z=None):
        """Degrees; of a right bone as its channels are."""
        angles = self.angles[RIG.number[bone]]
        for axis, value in enumerate((x, y, z)):
            if value is not None:
                low, high = RIG.bone(bone).limits[axis]
                angles[axis] = float(min(max(value, low), high))
                if abs(angles[axis] - value) > 0.5:
                    self.notes.append("%s %s %g is beyond %g..%g"
                                      % (bone, "XYZ"[axis], value, low, high))

    def side(self, side, bone, x=None, y=None, z=None):
        """Degrees as for the left bone."""
        sign = 1 if side == "l" else -1
        self.set(side + bone, x, None if y is None else y * sign, None if z is None else z * sign)

    # ---- trunk

    def hip(self, yaw=0, pitch=0, lean=0, spin=0):
        """The body is spun about itself, leaned to its left, pitched forward, then turned."""
        m = product(axis_turn(2, -lean), axis_turn(1, spin))
        m = product(axis_turn(1, yaw), product(axis_turn(0, pitch), m))
        self.angles[0] = list(rig.hip_angles(m))

    def at(self, x=0.0, y=0.0, z=0.0, free=None):
        """Where the hip is, from its place when standing at rest."""
        self.hip_goal = (x, y, z)
        if free is not None:
            self.hip_free = free

    def pelvis(self, bend=0, side=0, twist=0):
        self.set("pelvis", bend, twist, -side)

    def spine(self, bend=0, side=0, twist=0):
        for bone, share in SPINE.items():
            self.set(bone, bend * share, twist * share, -side * share)

    def head(self, nod=0, turn=0, tilt=0):
        for bone, share in NECK.items():
            self.set(bone, nod * share, turn * share, -tilt * share)

    # ---- legs

    def leg(self, side, thigh=0, out=0, twist=0, knee=0, foot=0, toe=0):
        """Straight by angles: thigh forward, out to the side, turned out; foot pointed."""
        self.side(side, "ThighBend", -thigh, None, out)
        self.side(side, "ThighTwist", None, twist)
        self.side(side, "Shin", knee)
        self.side(side, "Foot", foot)
        self.side(side, "Toe", toe)

    def foot(self, side, x, z, turn=8, heel=0, y=0.0, roll=0):
        """The sole on a floor of height y: the ankle above x, z when flat; the heel lifted over the
        ball of the foot, or the toes over the heel when negative."""
        sign = 1 if side == "l" else -1
        ankle = RIG.bone("lFoot").center
        ball = minus(BALL_OF_FOOT if heel >= 0 else HEEL, ankle)
        if side == "r":
            ball = mirror_of(ball)
        heading = axis_turn(1, sign * (turn - 8))
        # The rest pose turns the foot 8 degrees out; the heel is lifted square to it.
        own = product(axis_turn(1, sign * 8), product(axis_turn(0, heel), axis_turn(1, -sign * 8)))
        frame = product(heading, product(own, axis_turn(2, -sign * roll)))
        flat = turned(heading, ball)
        at = minus((x + flat[0], y + ankle[1] + ball[1], z + flat[2]), turned(frame, ball))
        self.leg_goals[side].append(("frame", "Foot", frame))
        self.leg_goals[side].append(("point", "Foot", (0, 0, 0), at, 3.0))
        self.side(side, "Toe", -max(heel, 0))

    def ankle(self, side, at, toes=None, sole=None):
        """The ankle's place; ways of the toes and of the sole."""
        self.leg_goals[side].append(("point", "Foot", (0, 0, 0), at, 1.0))
        if toes is not None:
            self.leg_goals[side].append(("way", "Foot", self._rest("Foot", side, 14), way(toes)))
        if sole is not None:
            self.leg_goals[side].append(("way", "Foot", (0, -1, 0), way(sole)))

    def knee(self, side, at, weight=1.0):
        self.leg_goals[side].append(("point", "Shin", (0, 0, 0), at, weight))

    def knee_way(self, side, told):
        self.leg_goals[side].append(("knee", way(told)))

    def _rest(self, bone, side, to_cm):
        """The way from the ankle to the toes, in the foot at rest."""
        v = unit((2.5, -1.5, 18))
        return v if side == "l" else mirror_of(v)

    # ---- arms

    def hang(self, side, out=6, forward=0, elbow=14, turn=0):
        self.side(side, "ShldrBend", None, -forward, -45 + out + 4)
        self.side(side, "Collar", None, 0, -3)
        self.side(side, "ForearmBend", None, -elbow)
        self.side(side, "ForearmTwist", -turn)

    def arm(self, side, up=-35, forward=0, twist=0, elbow=0, turn=0, wrist=0, collar=0, slant=0):
        """By angles: 45 lifts the arm level; the wrist bends towards the palm when negative."""
        self.side(side, "ShldrBend", None, -forward, up)
        self.side(side, "ShldrTwist", twist)
        self.side(side, "ForearmBend", None, -elbow)
        self.side(side, "ForearmTwist", turn)
        self.side(side, "Hand", None, slant, wrist)
        self.side(side, "Collar", None, 0, collar)

    def hand(self, side, at, fingers=None, palm=None, elbow=None, of=None, weight=1.5, near=None):
        """The palm's place, in the world or on a bone as told in the rest pose; ways of the
        fingers, the palm and the elbow are the world's, on a bone its own at rest."""
        offset = minus(PALM, RIG.bone("lHand").center)
        goals = self.arm_goals[side]
        fingers_way, palm_way = FINGERS_WAY, PALM_WAY
        if side == "r":
            offset, fingers_way, palm_way = (mirror_of(v) for v in (offset, fingers_way, palm_way))
        goals.append(("point", "Hand", offset, at, weight, of))
        if fingers is not None:
            goals.append(("way", "Hand", fingers_way, way(fingers), of))
        if palm is not None:
            goals.append(("way", "Hand", palm_way, way(palm), of))
        if elbow is not None:
            goals.append(("elbow", way(elbow), of))

    def elbow_at(self, side, at, of=None, weight=1.0):
        self.arm_goals[side].append(("point", "ForearmBend", (0, 0, 0), at, weight, of))

    def fingers(self, side, how, curl=1.0):
        rows, thumb = HANDS[how]
        spread = SPREAD_DEG.get(how, (0, 0, 0, 0))
        for name, joints, aside in zip(("Index", "Mid", "Ring", "Pinky"), rows, spread):
            for i, deg in enumerate(joints):
                self.side(side, name + str(i + 1), None, aside if i == 0 else None, deg * curl)
        self.side(side, "Thumb1", None, thumb[0] * curl, thumb[1] * curl)
        self.side(side, "Thumb2", None, thumb[2] * curl)
        self.side(side, "Thumb3", None, thumb[3] * curl)

    # ---- where everything is

    def update(self, numbers=None):
        bones = RIG.bones
        for i in numbers if numbers is not None else range(len(bones)):
            bone = bones[i]
            key = tuple(self.angles[i])
            if self._local[i][0] != key:
                self._local[i] = (key, bone.local_turn(key))
            local = self._local[i][1]
            if bone.parent < 0:
                self.R[i] = local
                self.P[i] = plus(bone.center, self.shift)
            else:
                up = self.R[bone.parent]
                self.R[i] = product(up, local)
                self.P[i] = plus(self.P[bone.parent], turned(up, bone.offset))

    def point(self, number, offset):
        return plus(self.P[number], turned(self.R[number], offset))

    def place(self, bone, rest_point):
        """Where a point of the rest pose is now that moves with the bone."""
        b = RIG.bone(bone)
        return self.point(b.number, minus(rest_point, b.center))

    def ball(self, ball):
        return self.point(ball.bone, ball.offset)
