"""Kneeling and on all fours."""

from .book import hand_on_hip, hand_on_knee, pose

KNEE_CM = 5.0  # height of the joint above the floor that it kneels on


def kneel(p, side, x, z=0.0, tucked=False, apart=0.0):
    """A knee on the floor with its shin flat behind it; apart: the ankle further out."""
    sign = 1 if side == "l" else -1
    p.knee(side, (x * sign, KNEE_CM, z), 1.5)
    out = (x + apart) * sign
    if tucked:
        p.ankle(side, (out, 15.5, z - 39), toes=(0, -0.97, 0.2))
        p.side(side, "Toe", -58)
    else:
        p.ankle(side, (out, 6.5, z - 41), toes=(0, -0.26, -0.97))


@pose("Kneeling upright")
def _(p):
    p.at(0, -43, -4)
    kneel(p, "l", 10)
    kneel(p, "r", 10)
    p.hang("l", 8, 4, 20)
    p.hang("r", 8, 4, 20)
    p.head(turn=10)


@pose("Sit on the heels", "smile")
def _(p):
    p.hip(pitch=4)
    p.at(0, -67, -24, free=(1, 0.6, 1))
    kneel(p, "l", 9, 14)
    kneel(p, "r", 9, 14)
    p.spine(bend=-2)
    p.hand("l", (10, 31, 4), palm="down", fingers=(-0.4, -0.1, 1), elbow=(0.7, 0, -1))
    p.hand("r", (-10, 31, 4), palm="down", fingers=(0.4, -0.1, 1), elbow=(-0.7, 0, -1))


@pose("The proposal", "smile")
def _(p):
    p.hip(pitch=2)
    p.at(0, -44, -4)
    kneel(p, "r", 9, -4, tucked=True)
    p.foot("l", 11, 36, 8)
    p.spine(bend=2)
    p.head(nod=-16)
    p.hand("l", (5, 84, 36), palm=(-0.3, 1, 0), fingers=(-0.3, 0.1, 1), elbow=(1, -0.5, -0.3))
    p.hand("r", (-4, 88, 32), palm=(0.9, 0.2, 0.1), fingers=(0.1, 0.2, 1), elbow=(-0.6, -1, -0.2))
    p.fingers("r", "grip", 0.6)


@pose("Praying", "asleep")
def _(p):
    p.at(0, -43, -5)
    kneel(p, "l", 6)
    kneel(p, "r", 6)
    p.spine(bend=6)
    p.head(nod=24)
    p.hand("l", (1, 88, 26), palm=(-1, 0, 0), fingers=(-0.1, 0.9, 0.35), elbow=(0.8, -1, 0))
    p.hand("r", (-1, 88, 26), palm=(1, 0, 0), fingers=(0.1, 0.9, 0.35), elbow=(-0.8, -1, 0))
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Tying a shoe")
def _(p):
    p.hip(pitch=24)
    p.at(0, -58, -14)
    kneel(p, "r", 10, 0, tucked=True)
    p.foot("l", 9, 26, 6)
    p.spine(bend=34)
    p.head(nod=10)
    p.hand("l", (15, 16, 34), palm=(-0.9, -0.2, -0.2), fingers=(-0.2, -0.9, 0.2), elbow=(1, 0.3, 0))
    p.hand("r", (3, 16, 34), palm=(0.9, -0.2, -0.2), fingers=(0.2, -0.9, 0.2), elbow=(-1, 0, 0))
    p.fingers("l", "grip", 0.6)
    p.fingers("r", "grip", 0.6)


@pose("All fours", on_hands=True)
def _(p):
    p.hip(pitch=84)
    p.at(0, -44, -20, free=(1, 0.5, 1))
    p.leg("l", thigh=80, knee=80, foot=60)
    p.leg("r", thigh=80, knee=80, foot=60)
    kneel(p, "l", 9, -20)
    kneel(p, "r", 9, -20)
    p.head(nod=-30)
    for side, sign in (("l", 1), ("r", -1)):
        p.arm(side, up=-40, forward=75, elbow=6, wrist=60)
        p.hand(side, (17 * sign, 0.8, 25), palm="down", fingers=(0, 0, 1))
        p.fingers(side, "flat")


@pose("Cat stretch", "asleep", on_hands=True)
def _(p):
    p.hip(pitch=106)
    p.at(0, -45, -22, free=(2, 1, 2))
    p.leg("l", thigh=96, knee=90, foot=60)
    p.leg("r", thigh=96, knee=90, foot=60)
    kneel(p, "l", 9, -20)
    kneel(p, "r", 9, -20)
    p.spine(bend=-22)
    p.head(nod=-20)
    for side, sign in (("l", 1), ("r", -1)):
        p.arm(side, up=20, forward=100, elbow=4, collar=30)
        p.hand(side, (17 * sign, 0.8, 65), palm="down", fingers=(0, 0, 1))
        p.fingers(side, "flat")


@pose("Child's pose", "asleep")
def _(p):
    p.hip(pitch=46)
    p.at(0, -66, -26, free=(1, 0.6, 1))
    kneel(p, "l", 20, 12, apart=-8)
    kneel(p, "r", 20, 12, apart=-8)
    p.spine(bend=80)
    p.head(nod=-6)
    p.hand("l", (18, 1, 76), palm="down", fingers=(-0.1, 0, 1))
    p.hand("r", (-18, 1, 76), palm="down", fingers=(0.1, 0, 1))
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Planting a flower", "smile")
def _(p):
    p.hip(pitch=44, yaw=8)
    p.at(0, -58, -18, free=(1, 0.4, 1))
    kneel(p, "l", 10, 8)
    kneel(p, "r", 10, 4)
    p.spine(bend=44, twist=-6)
    p.head(nod=-6)
    p.hand("l", (14, 6, 40), palm=(-0.5, -0.6, -0.4), fingers=(-0.1, -0.8, 0.6))
    p.hand("r", (-6, 3, 40), palm=(0.6, -0.6, 0), fingers=(0.2, -0.6, 0.8))
    p.fingers("r", "grip", 0.7)


@pose("Half kneeling archer")
def _(p):
    p.hip(yaw=-60)
    p.at(0, -43, -4)
    p.knee("r", (-6, KNEE_CM, -7), 1.5)
    p.ankle("r", (28, 15.5, -26), toes=(-0.17, -0.97, 0.1))
    p.side("r", "Toe", -55)
    p.foot("l", -27, 26, -50)
    p.spine(twist=12)
    p.head(turn=50)
    p.hand("l", (34, 98, 56), palm=(-0.87, 0, 0.5), fingers=(0.5, 0, 0.87))
    p.fingers("l", "fist", 0.9)
    p.hand("r", (-6, 102, 10), fingers=(0.5, 0, 0.87), elbow=(-0.5, 0.2, -0.87))
    p.fingers("r", "grip")


@pose("Kneeling, arms thrown up", "shout")
def _(p):
    p.hip(pitch=-14)
    p.at(0, -45, -10, free=(1, 0.4, 1))
    kneel(p, "l", 14)
    kneel(p, "r", 14)
    p.spine(bend=-24)
    p.head(nod=-30)
    p.arm("l", up=58, forward=10, elbow=24, collar=20)
    p.arm("r", up=54, forward=16, elbow=30, collar=20)
    p.fingers("l", "claw")
    p.fingers("r", "claw")


@pose("Looking under the sofa", "wonder", on_hands=True)
def _(p):
    p.hip(pitch=98)
    p.at(0, -46, -24, free=(1, 0.4, 1))
    p.leg("l", thigh=80, knee=90, foot=60)
    p.leg("r", thigh=80, knee=90, foot=60)
    kneel(p, "l", 10, -18)
    kneel(p, "r", 10, -18)
    p.spine(bend=10, twist=10)
    p.head(nod=-24, turn=10, tilt=22)
    for side, sign in (("l", 1), ("r", -1)):
        p.arm(side, up=-30, forward=60, elbow=100)
        p.hand(side, (24 * sign, 1, 40), palm="down", fingers=(-0.3 * sign, 0, 1),
               elbow=(sign, 0.3, -0.5))
        p.fingers(side, "flat")


@pose("Catching a breath", "open")
def _(p):
    p.hip(pitch=12)
    p.at(0, -46, -6)
    kneel(p, "l", 9, -4, tucked=True)
    p.foot("r", -11, 34, 10)
    p.spine(bend=18)
    p.head(nod=12)
    hand_on_knee(p, "r", up=2)
    hand_on_hip(p, "l")
