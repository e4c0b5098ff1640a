"""Lying on the back and on the belly. The head is towards -Z, the feet towards +Z; on the belly the
other way round."""

from .book import pose


def back(p, pitch=-90, spin=0, yaw=0, lean=0):
    p.hip(pitch=pitch, spin=spin, yaw=yaw, lean=lean)


def heel(p, side, x, z, out=0.3):
    """A stretched leg on its heel."""
    sign = 1 if side == "l" else -1
    p.ankle(side, (x * sign, 6.0, z), toes=(out * sign, 0.85, 0.45))


def instep(p, side, x, z):
    """A stretched leg on the back of its foot, toes towards -Z."""
    sign = 1 if side == "l" else -1
    p.ankle(side, (x * sign, 7.0, z), toes=(0.1 * sign, -0.3, -0.95))


def flat_hand(p, side, x, z, fingers=(0, 0, -1), palm="down", how="soft", elbow=None, y=1.2):
    sign = 1 if side == "l" else -1
    p.hand(side, (x * sign, y, z), palm=palm, fingers=(fingers[0] * sign,) + fingers[1:],
           elbow=elbow)
    p.fingers(side, how)


def under_head(p, side):
    """On the back: the hand below the back of the head."""
    sign = 1 if side == "l" else -1
    p.hand(side, (4.5 * sign, 160, -11.5), of="head", palm=(0, 0, 1), fingers=(-0.9 * sign, 0.4, 0),
           elbow=(sign, 0.3, 0))


# ---- on the back

@pose("On the back, at rest", "asleep", lie=True)
def _(p):
    back(p)
    heel(p, "l", 11, 91)
    heel(p, "r", 12, 91)
    p.head(turn=8)
    flat_hand(p, "l", 33, 0, (0.25, 0, 1), y=1.5)
    flat_hand(p, "r", 35, -2, (0.3, 0, 1), y=1.5)


@pose("Cloud watching", "smile", lie=True, heading=35)
def _(p):
    back(p)
    p.foot("l", 10, 46, 6)
    p.knee("r", (-1, 58, 36))
    p.ankle("r", (16, 50, 56), toes=(0.5, 0.3, 0.8))
    p.head(nod=16)
    under_head(p, "l")
    under_head(p, "r")


@pose("Snow angel", "laugh", lie=True)
def _(p):
    back(p)
    heel(p, "l", 36, 86.5, 0.5)
    heel(p, "r", 36, 86.5, 0.5)
    p.spine(bend=-2)
    flat_hand(p, "l", 58, -66, (0.6, 0, -0.8), "up", y=3)
    flat_hand(p, "r", 58, -66, (0.6, 0, -0.8), "up", y=3)


@pose("Asleep, one arm up", "asleep", lie=True)
def _(p):
    back(p, spin=10)
    heel(p, "l", 12, 90)
    p.knee("r", (-26, 20, 40))
    p.ankle("r", (-4, 7, 72), toes=(0.6, 0.2, 0.7))
    p.spine(side=6)
    p.head(turn=34, tilt=6)
    flat_hand(p, "r", 30, -76, (-0.5, 0, -0.9), "up", "relaxed", y=4)
    p.hand("l", (3, 108, 11.5), of="abdomenUpper", palm=(0, 0, -1), fingers=(-1, 0.1, 0),
           elbow=(1, 0, 0))


@pose("Knees to the chest", lie=True)
def _(p):
    back(p, pitch=-100)
    p.knee("l", (8, 52, -28))
    p.knee("r", (-8, 52, -28))
    p.ankle("l", (7, 46, 16), toes=(0.1, 0.2, 1))
    p.ankle("r", (-7, 46, 16), toes=(-0.1, 0.2, 1))
    p.spine(bend=12)
    p.head(nod=14)
    p.hand("l", (8, 58, -16), palm=(0, -1, -0.5), fingers=(-0.8, 0.3, -0.2), elbow=(1, 0, -0.2))
    p.hand("r", (-8, 58, -16), palm=(0, -1, -0.5), fingers=(0.8, 0.3, -0.2), elbow=(-1, 0, -0.2))


@pose("Bridge on the shoulders", "strain", lie=False)
def _(p):
    p.hip(pitch=-112)
    p.at(0, -64, 0, free=(3, 3, 3))
    p.foot("l", 10, 38, 6)
    p.foot("r", -10, 38, 6)
    p.spine(bend=-6)
    p.head(nod=44)
    flat_hand(p, "l", 28, 6, (0.1, 0, 1), "down", "flat")
    flat_hand(p, "r", 28, 6, (0.1, 0, 1), "down", "flat")


@pose("Sit-up", "strain", lie=True)
def _(p):
    back(p, pitch=-86)
    p.foot("l", 10, 42, 4)
    p.foot("r", -10, 42, 4)
    p.spine(bend=34, twist=14)
    p.head(nod=16)
    for side, sign in (("l", 1), ("r", -1)):
        p.hand(side, (8.5 * sign, 159, -4), of="head", palm=(-sign, 0, 0.2),
               fingers=(-0.2 * sign, 0.5, -0.8),
               elbow=(sign, 0, 0.5))


@pose("Reading on the back", lie=True)
def _(p):
    back(p)
    p.foot("l", 10, 44, 6)
    heel(p, "r", 10, 91)
    p.head(nod=24)
    p.hand("l", (8, 56, -32), palm=(-0.7, 0.2, 0.4), fingers=(-0.2, 0.9, -0.2), elbow=(1, -0.2, 0))
    p.hand("r", (-8, 56, -32), palm=(0.7, 0.2, 0.4), fingers=(0.2, 0.9, -0.2), elbow=(-1, -0.2, 0))
    p.fingers("l", "grip", 0.6)
    p.fingers("r", "grip", 0.6)


@pose("Fainted", "asleep", lie=True, heading=-110)
def _(p):
    back(p, spin=-14, lean=5)
    p.knee("l", (20, 24, 44))
    p.ankle("l", (-2, 6, 70), toes=(-0.5, 0.3, 0.8))
    heel(p, "r", 20, 90, 0.7)
    p.spine(side=-10, twist=10)
    p.head(turn=-36, tilt=8)
    flat_hand(p, "l", 56, -32, (0.9, 0, 0.1), "up", "relaxed", y=3)
    flat_hand(p, "r", 30, -84, (0.3, 0, -0.9), "up", "relaxed", y=4)


@pose("Legs up the wall", "smile", lie=True)
def _(p):
    back(p, pitch=-94)
    p.leg("l", thigh=84, out=4, knee=4, foot=8)
    p.leg("r", thigh=80, out=10, knee=8, foot=8)
    p.head(nod=10)
    p.hand("l", (5, 106, 11), of="abdomenUpper", palm=(0, 0, -1), fingers=(-1, 0.1, 0),
           elbow=(1, 0, 0))
    flat_hand(p, "r", 46, -58, (0.4, 0, -0.9), "up", y=3)


@pose("Pointing at the stars", "wonder", lie=True)
def _(p):
    back(p, yaw=24)
    p.foot("r", 10, 46, 30)
    p.ankle("l", (46, 6, 78), toes=(0.7, 0.8, 0.4))
    p.head(nod=12, turn=-10)
    under_head(p, "l")
    p.arm("r", up=-30, forward=84, elbow=4)
    p.fingers("r", "point")


@pose("Cannot sleep", "sad", lie=True)
def _(p):
    back(p, spin=-6)
    heel(p, "l", 16, 90, 0.5)
    p.foot("r", -4, 50, -6)
    p.head(nod=8, turn=12)
    p.hand("l", (2, 163, 10), of="head", palm=(0, -0.2, -1), fingers=(-1, 0.2, 0),
           elbow=(1, 0.3, 0))
    flat_hand(p, "r", 44, -8, (0.5, 0, 0.8))


# ---- on the belly

@pose("On the belly, asleep", "asleep", lie=True)
def _(p):
    back(p, pitch=90)
    instep(p, "l", 9, -91)
    p.knee("r", (-30, 7, -30))
    p.ankle("r", (-16, 6.5, -66), toes=(-0.2, -0.3, -0.9))
    p.head(turn=-52)
    flat_hand(p, "r", 32, 66, (0.2, 0, 1))
    flat_hand(p, "l", 30, -4, (0.2, 0, -1), "up", y=3)


@pose("Sphinx", lie=True)
def _(p):
    back(p, pitch=80)
    instep(p, "l", 9, -91)
    instep(p, "r", 9, -91)
    p.spine(bend=-46)
    p.head(nod=-12)
    flat_hand(p, "l", 15, 70, (0, 0, 1), "down", "flat", elbow=(0.2, -1, -0.2))
    flat_hand(p, "r", 15, 70, (0, 0, 1), "down", "flat", elbow=(-0.2, -1, -0.2))


@pose("Reading on the belly", "smile", lie=True)
def _(p):
    back(p, pitch=82)
    p.knee("l", (11, 6.5, -42))
    p.ankle("l", (6, 44, -56), toes=(0, 0.9, -0.4))
    p.knee("r", (-11, 6.5, -42))
    p.ankle("r", (-8, 38, -68), toes=(0, 0.7, -0.7))
    p.spine(bend=-44)
    p.head(nod=8)
    p.hand("l", (4, 147.5, 6), of="head", palm=(-0.4, 0.9, 0), fingers=(0.5, 0.6, -0.4),
           elbow=(0.2, -1, 0.5))
    flat_hand(p, "r", 8, 76, (-0.5, 0, 1), "down", elbow=(-1, -0.5, 0))


@pose("Crawling under the wire", "strain", lie=True)
def _(p):
    back(p, pitch=84, spin=8)
    p.knee("l", (38, 8, -20))
    p.ankle("l", (24, 7, -56), toes=(0.4, -0.3, -0.9))
    instep(p, "r", 12, -91)
    p.spine(bend=-26, side=12)
    p.head(nod=-28)
    flat_hand(p, "r", 16, 92, (-0.2, 0, 1), "down", "claw", elbow=(-1, 0, 0))
    flat_hand(p, "l", 26, 52, (-0.6, 0, 0.8), "down", "fist", elbow=(1, 0, -0.3), y=3)


@pose("Skydiver", "shout")
def _(p):
    p.hip(pitch=84)
    p.at(0, 30, 0)
    p.spine(bend=-30)
    p.head(nod=-40)
    p.leg("l", thigh=-14, out=26, knee=44, foot=40)
    p.leg("r", thigh=-12, out=22, knee=56, foot=40)
    p.arm("l", up=44, forward=-22, elbow=62, collar=8)
    p.arm("r", up=40, forward=-20, elbow=56, collar=8)
    p.fingers("l", "spread")
    p.fingers("r", "spread")


@pose("Flying hero")
def _(p):
    p.hip(pitch=68)
    p.at(0, 60, 0)
    p.spine(bend=-20)
    p.head(nod=-36)
    p.leg("l", thigh=-6, out=2, knee=4, foot=60)
    p.leg("r", thigh=30, out=2, knee=52, foot=50)
    p.arm("l", up=80, forward=30, elbow=2, collar=40)
    p.arm("r", up=-38, forward=-6, elbow=60)
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("Plank", "strain", on_hands=True)
def _(p):
    p.hip(pitch=76)
    p.at(0, -42, 0, free=(0.3, 0.1, 0.3))
    p.leg("l", foot=10)
    p.leg("r", foot=10)
    p.foot("l", 8, -90, 0, heel=62)
    p.foot("r", -8, -90, 0, heel=62)
    p.head(nod=-18)
    for side, sign in (("l", 1), ("r", -1)):
        p.arm(side, up=-38, forward=75, elbow=4, wrist=70)
        p.hand(side, (18 * sign, 0.8, 40), palm="down", fingers=(0, 0, 1))
        p.fingers(side, "flat")


@pose("Swimming, crawl stroke", "open")
def _(p):
    p.hip(pitch=86, spin=-22)
    p.at(0, -20, 0)
    p.spine(bend=-8, side=6)
    p.head(turn=-40, nod=-10)
    p.leg("l", thigh=8, knee=14, foot=60)
    p.leg("r", thigh=-14, knee=8, foot=60)
    p.arm("l", up=76, forward=26, elbow=8, collar=40)
    p.arm("r", up=-20, forward=-30, elbow=70)
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Massage table", "asleep", lie=True, heading=90)
def _(p):
    back(p, pitch=90)
    instep(p, "l", 10, -91)
    instep(p, "r", 10, -91)
    p.head(turn=20, nod=-6)
    p.hand("l", (14, 3, 68), palm="down", fingers=(-1, 0, 0.1), elbow=(1, 0, 0.3))
    p.hand("r", (-14, 3, 64), palm="down", fingers=(1, 0, 0.1), elbow=(-1, 0, 0.3))


@pose("Locust", "strain", lie=True)
def _(p):
    back(p, pitch=86)
    p.leg("l", thigh=-26, out=6, knee=6, foot=50)
    p.leg("r", thigh=-22, out=6, knee=8, foot=50)
    p.spine(bend=-40)
    p.head(nod=-24)
    p.arm("l", up=-40, forward=-34, elbow=2)
    p.arm("r", up=-40, forward=-34, elbow=2)
