"""Standing about: weight, waiting, gestures."""

from .book import arms_crossed, hand_on_hip, pose


def feet(p, l=(10, 1, 10), r=(-10, -1, 10)):
    p.foot("l", *l)
    p.foot("r", *r)


def weight_on(p, side, by=4.0):
    """The hip goes over one leg and rises there; the trunk comes back."""
    sign = 1 if side == "l" else -1
    p.hip(yaw=sign * 3, lean=-sign * 5)
    p.at(sign * by, 0.2, 0)
    p.spine(bend=2, side=sign * 9, twist=-sign * 4)
    p.head(tilt=-sign * 3)


@pose("Relaxed contrapposto", "smile")
def _(p):
    weight_on(p, "r", 6)
    feet(p, (11, 12, 18), (-6, -2, 8))
    p.hang("l", 10, 4, 22)
    p.hang("r", 8, -4, 12)
    p.head(nod=3, turn=14, tilt=2)


@pose("Hands on hips", "smile")
def _(p):
    weight_on(p, "l", 3)
    feet(p, (10, 0, 12), (-14, 4, 20))
    hand_on_hip(p, "l")
    hand_on_hip(p, "r")


@pose("One hand on the hip", "smile")
def _(p):
    weight_on(p, "l", 6)
    feet(p, (6, -2, 10), (-13, 9, 22))
    hand_on_hip(p, "l")
    p.hang("r", 10, 0, 16)
    p.head(turn=-18, tilt=4)


@pose("Arms crossed")
def _(p):
    weight_on(p, "r", 3)
    feet(p, (11, 5, 16), (-9, -1, 10))
    arms_crossed(p)
    p.head(nod=4, turn=8)


@pose("Thinking it over", "wonder")
def _(p):
    weight_on(p, "r", 4)
    feet(p, (10, 8, 18), (-8, -2, 8))
    p.head(nod=10, turn=-8, tilt=6)
    p.hand("l", (-7, 113, 13), of="chestUpper", palm=(-0.1, 0.5, -1), fingers=(-1, 0.1, 0))
    p.hand("r", (-3.5, 146.5, 11), of="head", palm=(0.3, 0.6, -0.6), fingers=(0.3, 0.9, 0),
           elbow=(0, -1, 0.3))
    p.fingers("r", "grip", 0.7)


@pose("Waving hello", "laugh")
def _(p):
    weight_on(p, "l", 3)
    feet(p, (8, 0, 8), (-12, 2, 18))
    p.spine(bend=0, side=-4, twist=-6)
    p.hand("r", (-34, 168, 12), palm="front", fingers=(-0.25, 1, 0), elbow=(-1, -0.4, 0))
    p.fingers("r", "spread")
    p.hang("l", 8, 0, 20)
    p.head(turn=-6, tilt=-6)


@pose("Pointing the way", "open")
def _(p):
    weight_on(p, "r", 2)
    feet(p, (10, 8, 12), (-10, -3, 14))
    p.spine(twist=12, bend=1)
    p.hand("l", (46, 139, 50), palm=(-1, -0.2, 0.9), fingers=(0.65, 0.0, 0.75))
    p.fingers("l", "point")
    hand_on_hip(p, "r")
    p.head(turn=28)


@pose("Hands behind the back")
def _(p):
    feet(p, (9, 0, 12), (-9, 0, 12))
    p.spine(bend=-4)
    p.hand("l", (-2, 98, -13.5), of="pelvis", palm="back", fingers=(-0.9, -0.4, 0),
           elbow=(1, 0, -0.6))
    p.hand("r", (1, 96, -16), of="pelvis", palm="back", fingers=(0.9, -0.4, 0), elbow=(-1, 0, -0.6))
    p.head(nod=-3, turn=-12)


@pose("Looking at the watch")
def _(p):
    weight_on(p, "l", 4)
    feet(p, (8, -2, 8), (-12, 6, 20))
    p.head(nod=20, turn=10)
    p.hand("l", (-2, 124, 24), of="chestUpper", palm=(-0.1, -0.9, -0.5), fingers=(-1, 0.2, 0.1),
           elbow=(1, -0.5, 0))
    p.hang("r", 7, 4, 24)


@pose("On the phone", "open")
def _(p):
    weight_on(p, "r", 5)
    feet(p, (12, 8, 22), (-7, -2, 6))
    p.head(turn=12, tilt=-8)
    p.hand("r", (-10.5, 156, 2.5), of="head", palm=(1, 0, 0), fingers=(0.1, 0.9, -0.3),
           elbow=(-0.5, -1, 0.4))
    p.fingers("r", "grip", 0.45)
    hand_on_hip(p, "l")


@pose("Leaning against the wall", "smile")
def _(p):
    p.hip(pitch=-9)
    p.at(0, -4.5, -17, free=(1, 0.2, 1))
    p.foot("r", -9, 6, 10)
    p.ankle("l", (9, 42, -24), toes=(0.1, -0.45, 0.9))
    p.spine(bend=9)
    p.head(nod=6, turn=-20)
    arms_crossed(p)


@pose("Shrugging", "wonder")
def _(p):
    feet(p, (10, 2, 14), (-11, -1, 14))
    p.spine(bend=-3, side=3)
    for side, sign in (("l", 1), ("r", -1)):
        p.hand(side, (sign * 40, 118, 24), palm=(0.25 * sign, 1, 0.3),
               fingers=(0.7 * sign, 0.15, 0.7),
               elbow=(0.3 * sign, -1, -0.4))
        p.fingers(side, "soft")
        p.side(side, "Collar", None, None, 18)
    p.head(tilt=9, nod=2)


@pose("Stretching tall", "asleep")
def _(p):
    p.at(0, 7.4, 0)
    p.foot("l", 8, 0, 8, heel=28)
    p.foot("r", -8, 0, 8, heel=28)
    p.spine(bend=-16, side=5)
    p.hand("l", (4, 209, -2), palm="up", fingers=(-1, 0, 0.1), elbow=(1, 0, 0))
    p.hand("r", (-1, 208, -3), palm="up", fingers=(1, 0, 0.1), elbow=(-1, 0, 0))
    p.head(nod=-14)


@pose("Reaching the top shelf")
def _(p):
    p.hip(lean=-4)
    p.at(3, 8.6, 3)
    p.foot("l", 8, 4, 8, heel=34)
    p.foot("r", -10, -6, 14, heel=38)
    p.spine(bend=-6, side=-8)
    p.hand("l", (14, 206, 22), palm=(0, 0, 1), fingers=(0, 1, 0.3))
    p.fingers("l", "soft")
    p.hand("r", (-24, 122, 30), palm=(0, 0, 1), fingers=(-0.2, 1, 0.2), elbow=(-1, -1, 0))
    p.fingers("r", "flat")
    p.head(nod=-20, turn=8)


@pose("Saluting")
def _(p):
    feet(p, (7, 0, 14), (-7, 0, 14))
    p.spine(bend=-4)
    p.hand("r", (-9.5, 162.5, 9), of="head", palm=(0.3, -0.75, 0.5), fingers=(0.9, 0.35, 0.1),
           elbow=(-1, -0.1, 0.2))
    p.fingers("r", "flat")
    p.hang("l", 3, 0, 5)
    p.fingers("l", "flat")


@pose("Tying up the hair")
def _(p):
    weight_on(p, "r", 4)
    feet(p, (11, 6, 18), (-8, -2, 8))
    p.spine(bend=-8, side=-4)
    p.hand("l", (5.5, 165, -13), of="head", palm=(-0.9, 0, -0.1), fingers=(-0.6, 0.3, -0.6),
           elbow=(1, 0.3, 0.4))
    p.hand("r", (-5.5, 166, -13), of="head", palm=(0.9, 0, -0.1), fingers=(0.6, 0.3, -0.6),
           elbow=(-1, 0.3, 0.4))
    p.fingers("l", "grip", 0.6)
    p.fingers("r", "grip", 0.6)
    p.head(nod=14)


@pose("Carrying a tray", "smile")
def _(p):
    p.hip(yaw=-6)
    feet(p, (8, 12, 8), (-9, -8, 14))
    p.spine(bend=-3, side=2)
    p.hand("l", (26, 146, 14), palm="up", fingers=(0.75, 0, -0.5), elbow=(0.6, -1, 0.2))
    p.fingers("l", "flat")
    p.hang("r", 8, -6, 24)
    p.head(turn=-10)


@pose("Lifting a heavy box", "strain")
def _(p):
    p.hip(pitch=16)
    p.at(0, -30, -16)
    feet(p, (17, 4, 18), (-17, 2, 18))
    p.spine(bend=14)
    p.head(nod=-14)
    for side, sign in (("l", 1), ("r", -1)):
        p.hand(side, (19 * sign, 52, 32), palm=(-0.9 * sign, 0.5, 0), fingers=(0, -0.6, 0.8),
               elbow=(sign, -0.2, -0.6))
        p.fingers(side, "grip", 0.5)


@pose("Picking up a coin")
def _(p):
    p.hip(pitch=50, yaw=10)
    p.at(2, -33, -14)
    feet(p, (9, 8, 10), (-11, -10, 14))
    p.spine(bend=48, twist=-6)
    p.head(nod=10)
    p.hand("r", (-6, 10, 40), palm=(0.2, -0.3, -1), fingers=(0.1, -1, 0.25))
    p.fingers("r", "grip", 0.5)
    p.hand("l", (12, 64, 8), of="lThighTwist", palm=(0, 0, -1), fingers=(-0.2, -1, 0))


@pose("Bowing")
def _(p):
    feet(p, (7, 0, 8), (-7, 0, 8))
    p.hip(pitch=34)
    p.at(0, -1.5, -9)
    p.spine(bend=20)
    p.head(nod=12)
    p.hand("l", (6, 112, 10.5), of="abdomenUpper", palm="back", fingers=(-1, -0.3, 0))
    p.hand("r", (-4, 98, -13), of="pelvis", palm="back", fingers=(0.9, -0.4, 0),
           elbow=(-1, 0, -0.5))


@pose("Glance over the shoulder", "smile")
def _(p):
    p.hip(yaw=-38, lean=3)
    p.at(-3, 0.2, 0)
    feet(p, (5, 8, -18), (-8, -8, 48))
    p.spine(twist=34, side=-4, bend=-5)
    p.head(turn=48, nod=-2, tilt=4)
    hand_on_hip(p, "l")
    p.hang("r", 12, 8, 26)


@pose("Shading the eyes", "wonder")
def _(p):
    weight_on(p, "l", 3)
    feet(p, (8, 6, 6), (-12, -8, 22))
    p.spine(bend=4, twist=6)
    p.hand("l", (7.5, 164.5, 11.5), of="head", palm=(-0.2, -1, 0.1), fingers=(-0.95, 0.1, 0.25),
           elbow=(1, -0.1, 0.3))
    p.fingers("l", "flat")
    p.hang("r", 12, -4, 26)
    p.head(nod=-2, turn=10)


@pose("Taking a selfie", "wink")
def _(p):
    weight_on(p, "r", 5)
    feet(p, (10, 10, 14), (-7, -3, 10))
    p.spine(bend=-4, twist=10, side=-4)
    p.hand("l", (30, 160, 52), palm=(-0.6, 0, -1), fingers=(-0.5, 0.8, 0.2), elbow=(0.4, -1, 0))
    p.fingers("l", "grip", 0.7)
    p.hand("r", (-9, 136, 24), palm=(0.2, 0, 1), fingers=(-0.15, 1, 0.2), elbow=(-1, -1, 0))
    p.fingers("r", "victory")
    p.head(turn=20, tilt=-10, nod=-4)


@pose("Standing at attention")
def _(p):
    feet(p, (5.5, 0, 20), (-5.5, 0, 20))
    p.spine(bend=-5)
    for side in "lr":
        p.hang(side, 3, 2, 4)
        p.fingers(side, "flat")


@pose("Reading on the way")
def _(p):
    weight_on(p, "l", 3)
    feet(p, (8, 0, 8), (-10, 10, 12))
    p.spine(bend=8)
    p.head(nod=22)
    p.hand("l", (7, 122, 27), palm=(-0.5, 0.5, -0.8), fingers=(-0.2, 0.8, 0.5), elbow=(0.8, -1, 0))
    p.hand("r", (-7, 122, 27), palm=(0.5, 0.5, -0.8), fingers=(0.2, 0.8, 0.5), elbow=(-0.8, -1, 0))
    p.fingers("l", "soft", 1.5)
    p.fingers("r", "soft", 1.5)


@pose("Pushing a stuck door", "strain")
def _(p):
    p.hip(pitch=26, yaw=6)
    p.at(0, -13, 2, free=(0.5, 0.1, 0.5))
    p.foot("l", 9, 22, 6)
    p.foot("r", -10, -46, 14, heel=32)
    p.spine(bend=6)
    p.head(nod=-16)
    for side, sign in (("l", 1), ("r", -1)):
        p.hand(side, (15 * sign, 120, 72), palm="front", fingers=(-0.15 * sign, 1, 0.1),
               elbow=(sign, -0.5, -0.3))
        p.fingers(side, "flat")


@pose("Pulling the rope", "strain")
def _(p):
    p.hip(pitch=-20, yaw=-30)
    p.at(0, -17, -16, free=(0.3, 0.1, 0.3))
    p.foot("l", 12, 28, 20)
    p.foot("r", -14, -8, 50)
    p.spine(bend=6, twist=10)
    p.head(turn=14, nod=4)
    p.hand("l", (12, 108, 46), palm=(-1, 0, 0), fingers=(0, -0.1, 1))
    p.hand("r", (2, 102, 20), palm=(1, 0.2, 0), fingers=(0.3, 0, 1), elbow=(-1, 0, -0.6))
    p.fingers("l", "fist", 0.9)
    p.fingers("r", "fist", 0.9)
