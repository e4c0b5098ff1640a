"""On the way: walking, running, jumping, climbing."""

from .book import pose


def swing(p, side, forward, out=10, elbow=20):
    p.arm(side, up=-45 + out, forward=forward, elbow=elbow, collar=-2)


@pose("Walk 1 contact")
def _(p):
    p.hip(yaw=6, pitch=3)
    p.at(0, -3.5, 2)
    p.foot("r", -7, 34, 6, heel=-16)
    p.foot("l", 7, -28, 8, heel=34)
    p.spine(twist=-12, bend=1)
    p.head(turn=6)
    swing(p, "l", 26, 10, 26)
    swing(p, "r", -28, 10, 10)


@pose("Walk 2 down")
def _(p):
    p.hip(yaw=3, pitch=5, lean=2)
    p.at(-2, -4.5, 4)
    p.foot("r", -6, 24, 6)
    p.ankle("l", (8, 24, -40), toes=(0.1, -0.9, 0.35))
    p.spine(twist=-8, bend=2)
    swing(p, "l", 16, 9, 24)
    swing(p, "r", -16, 9, 14)


@pose("Walk 3 passing")
def _(p):
    p.hip(pitch=2, lean=-3)
    p.at(-3, -0.2, 3)
    p.foot("r", -6, 2, 6)
    p.ankle("l", (8, 20, -14), toes=(0.05, -0.5, 0.85))
    p.spine(bend=1, side=3)
    swing(p, "l", -4, 8, 16)
    swing(p, "r", 6, 8, 18)


@pose("Walk 4 up")
def _(p):
    p.hip(yaw=-5, pitch=1)
    p.at(-2, 1.5, 8)
    p.foot("r", -7, -14, 6, heel=22)
    p.ankle("l", (7, 17, 30), toes=(0.05, 0.1, 1))
    p.spine(twist=10)
    swing(p, "l", -22, 10, 12)
    swing(p, "r", 22, 10, 30)


@pose("Stroll, hands in the pockets", "smile")
def _(p):
    p.hip(yaw=-5, pitch=-2)
    p.at(0, -2, 2)
    p.foot("l", 7, 24, 12, heel=-10)
    p.foot("r", -8, -22, 14, heel=24)
    p.spine(bend=3, twist=6)
    for side, sign in (("l", 1), ("r", -1)):
        p.hand(side, (15.5 * sign, 87, 4.5), of="pelvis", palm=(-sign, 0, -0.3),
               fingers=(-0.2 * sign, -1, 0.2), elbow=(sign, 0, -0.8))
        p.fingers(side, "flat")
    p.head(turn=-14, nod=-3)


@pose("Running, push off", "open")
def _(p):
    p.hip(pitch=14, yaw=-8)
    p.at(0, 2, 16)
    p.foot("r", -6, -40, 4, heel=52)
    p.ankle("l", (6, 42, 18), toes=(0, -0.45, 0.9))
    p.knee_way("l", (0.1, 0.4, 1))
    p.spine(twist=16, bend=4)
    p.head(nod=-8, turn=-6)
    swing(p, "l", -38, 14, 82)
    swing(p, "r", 52, 8, 95)
    for side in "lr":
        p.fingers(side, "grip", 0.9)


@pose("Running, in the air", "open")
def _(p):
    p.hip(pitch=12, yaw=8)
    p.at(0, 10, 0)
    p.leg("r", thigh=58, out=2, knee=62, foot=-6)
    p.leg("l", thigh=-28, out=4, knee=58, foot=40, toe=10)
    p.spine(twist=-18, bend=2)
    p.head(nod=-8, turn=8)
    swing(p, "l", 60, 6, 92)
    swing(p, "r", -38, 16, 78)
    for side in "lr":
        p.fingers(side, "grip", 0.9)


@pose("Running, landing", "strain")
def _(p):
    p.hip(pitch=10, yaw=6)
    p.at(0, -7, 0)
    p.foot("r", -5, 14, 4)
    p.ankle("l", (7, 46, -40), toes=(0.1, -1, -0.15))
    p.spine(twist=-10, bend=6)
    swing(p, "l", 30, 10, 88)
    swing(p, "r", -34, 14, 80)
    for side in "lr":
        p.fingers(side, "fist", 0.85)


@pose("Sprint start", "strain", on_hands=True)
def _(p):
    p.hip(pitch=72)
    p.at(0, -26, -4, free=(1, 0.3, 0.6))
    p.leg("l", thigh=85, knee=70)
    p.leg("r", thigh=40, knee=70)
    p.foot("l", 8, -4, 4, heel=40)
    p.foot("r", -9, -44, 4, heel=55)
    p.spine(bend=6)
    p.head(nod=-20)
    for side, sign in (("l", 1), ("r", -1)):
        p.arm(side, up=-35, forward=70, elbow=6)
        p.hand(side, (21 * sign, 10.5, 46), fingers=(0.5 * sign, -0.8, 0.2))
        p.fingers(side, "soft")


@pose("Jumping for joy", "laugh")
def _(p):
    p.hip(pitch=-6, lean=4)
    p.at(0, 34, 0)
    p.leg("l", thigh=12, out=16, knee=96, foot=50)
    p.leg("r", thigh=30, out=14, knee=100, foot=45)
    p.spine(bend=-16)
    p.head(nod=-12)
    p.arm("l", up=82, forward=18, elbow=14, collar=30)
    p.arm("r", up=74, forward=24, elbow=24, collar=30)
    p.fingers("l", "spread")
    p.fingers("r", "spread")


@pose("Star jump", "laugh")
def _(p):
    p.at(0, 30, 0)
    p.leg("l", thigh=4, out=44, knee=4, foot=45)
    p.leg("r", thigh=4, out=44, knee=4, foot=45)
    p.spine(bend=-6)
    p.arm("l", up=62, forward=6, elbow=4, collar=24)
    p.arm("r", up=62, forward=6, elbow=4, collar=24)
    p.fingers("l", "spread")
    p.fingers("r", "spread")


@pose("Landing from a jump", "strain")
def _(p):
    p.hip(pitch=24)
    p.at(0, -38, -14)
    p.foot("l", 14, 8, 14)
    p.foot("r", -13, 4, 14)
    p.spine(bend=14)
    p.head(nod=-20)
    p.arm("l", up=-8, forward=46, elbow=20)
    p.arm("r", up=4, forward=30, elbow=26)
    p.fingers("l", "spread")
    p.fingers("r", "spread")


@pose("Climbing the stairs")
def _(p):
    p.hip(pitch=10, yaw=-4)
    p.at(-1, 3, 2)
    p.foot("l", 8, 26, 8, y=34)
    p.foot("r", -8, -12, 8, heel=20)
    p.spine(bend=8, twist=8)
    p.head(nod=4)
    p.hand("r", (-33, 112, 24), palm="down", fingers=(-0.1, 0.2, 1), elbow=(-0.5, -0.4, -1))
    p.fingers("r", "grip", 0.8)
    swing(p, "l", -14, 12, 20)


@pose("Climbing a ladder")
def _(p):
    p.hip(pitch=2)
    p.at(0, 34, -14, free=(0.8, 0.4, 0.5))
    p.foot("l", 9, 12, 4, y=72)
    p.foot("r", -9, 10, 4, y=36)
    p.spine(bend=-2)
    p.head(nod=-22)
    p.hand("l", (13, 178, 24), palm=(0, -0.3, 1), fingers=(-0.1, 1, 0.3), elbow=(0.7, -1, -0.2))
    p.hand("r", (-13, 214, 22), palm=(0, -0.3, 1), fingers=(0.1, 1, 0.3), elbow=(-0.7, -1, -0.2))
    p.fingers("l", "grip")
    p.fingers("r", "grip")


@pose("Sneaking past", heading=75)
def _(p):
    p.hip(pitch=22, yaw=-10)
    p.at(0, -22, 0)
    p.foot("l", 9, 30, 10, heel=-6)
    p.foot("r", -11, -22, 16, heel=36)
    p.spine(bend=18, twist=10)
    p.head(nod=-22, turn=14)
    p.hand("l", (24, 108, 48), palm=(0, -0.9, 0.4), fingers=(0.1, 0.5, 0.8), elbow=(1, -0.5, -0.5))
    p.hand("r", (-18, 100, 36), palm=(0, -0.9, 0.4), fingers=(-0.1, 0.5, 0.8),
           elbow=(-1, -0.5, -0.6))


@pose("Balancing on a beam", "wonder")
def _(p):
    p.hip(lean=3)
    p.at(0, 0.4, 0)
    p.foot("r", 0, 2, 0)
    p.ankle("l", (11, 22, 30), toes=(0.1, -0.2, 1))
    p.spine(side=-8)
    p.head(nod=12)
    p.arm("l", up=34, forward=8, elbow=8, collar=8)
    p.arm("r", up=52, forward=8, elbow=12, collar=10)
    p.fingers("l", "flat")
    p.fingers("r", "flat")
