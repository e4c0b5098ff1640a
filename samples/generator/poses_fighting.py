"""Guards, strikes, kicks, weapons held."""

from .book import pose


def guard(p, high=0.0):
    """Both fists before the face, the left one ahead."""
    p.hand("l", (12, 140 + high, 32), palm=(-0.8, -0.3, -0.4), fingers=(-0.1, 0.7, 0.6),
           elbow=(0.4, -1, 0))
    p.hand("r", (-7, 137 + high, 19), palm=(0.8, -0.3, -0.4), fingers=(0.1, 0.7, 0.6),
           elbow=(-0.4, -1, 0))
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("Boxing guard")
def _(p):
    p.hip(yaw=-24, pitch=6)
    p.at(0, -6, -2)
    p.foot("l", 9, 18, -4)
    p.foot("r", -13, -20, 46, heel=14)
    p.spine(bend=8, twist=6)
    p.head(nod=8, turn=14)
    guard(p)


@pose("Jab", "strain")
def _(p):
    p.hip(yaw=-30, pitch=6)
    p.at(2, -7, 4)
    p.foot("l", 9, 26, -6)
    p.foot("r", -12, -22, 44, heel=18)
    p.spine(bend=6, twist=-14)
    p.head(turn=34, nod=6)
    p.hand("l", (8, 136, 82), palm="down", fingers=(-0.1, 0, 1), elbow=(0.7, -0.8, 0))
    p.hand("r", (-10, 134, 16), palm=(0.8, -0.3, -0.4), fingers=(0.1, 0.7, 0.6),
           elbow=(-0.4, -1, 0))
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("Cross punch", "shout")
def _(p):
    p.hip(yaw=34, pitch=10)
    p.at(2, -9, 8)
    p.foot("l", 11, 26, 4)
    p.foot("r", -11, -24, -8, heel=40)
    p.spine(bend=6, twist=24)
    p.head(turn=-40, nod=4)
    p.hand("r", (-3, 130, 92), palm="down", fingers=(0.05, 0, 1), elbow=(-0.7, -0.8, 0))
    p.hand("l", (18, 128, 22), palm=(-0.8, -0.3, -0.4), fingers=(-0.1, 0.7, 0.6),
           elbow=(0.6, -1, 0))
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("Uppercut", "shout")
def _(p):
    p.hip(yaw=20, pitch=-4)
    p.at(0, 2, 4)
    p.foot("l", 11, 12, 8)
    p.foot("r", -10, -14, -2, heel=34)
    p.spine(bend=-6, twist=16, side=6)
    p.head(turn=-20, nod=-16)
    p.hand("r", (-2, 162, 36), palm=(0.1, 0.2, -1), fingers=(0, 1, 0.2), elbow=(-0.2, -1, 0.4))
    p.hand("l", (16, 124, 22), palm=(-0.8, -0.3, -0.4), fingers=(-0.1, 0.7, 0.6),
           elbow=(0.6, -1, 0))
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("High kick", "shout")
def _(p):
    p.hip(yaw=-50, lean=-34, pitch=-6)
    p.at(-6, 0, -4, free=(0.6, 0.1, 0.6))
    p.foot("r", -8, -4, 66)
    p.leg("l", thigh=30, out=78, knee=8, foot=40)
    p.spine(side=10, bend=4)
    p.head(turn=44, tilt=14)
    p.hand("l", (22, 128, 20), palm=(-0.8, -0.3, -0.4), fingers=(-0.1, 0.7, 0.6))
    p.hand("r", (-22, 124, 16), palm=(0.8, -0.3, -0.4), fingers=(0.1, 0.7, 0.6),
           elbow=(-0.4, -1, 0))
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("Front kick", "shout")
def _(p):
    p.hip(pitch=-18)
    p.at(0, -1, -6, free=(0.6, 0.1, 0.6))
    p.foot("r", -8, -4, 16)
    p.leg("l", thigh=82, out=0, knee=6, foot=-10, toe=-40)
    p.spine(bend=12)
    p.head(nod=8)
    p.hand("l", (18, 120, 16), palm=(-0.8, -0.2, -0.4), fingers=(-0.1, 0.7, 0.6))
    p.hand("r", (-14, 124, 22), palm=(0.8, -0.2, -0.4), fingers=(0.1, 0.7, 0.6))
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("Knee strike", "strain")
def _(p):
    p.hip(pitch=-14, yaw=10)
    p.at(0, 4, 4)
    p.foot("l", 7, 0, 10, heel=26)
    p.leg("r", thigh=104, out=-4, knee=112, foot=40)
    p.spine(bend=18)
    p.hand("l", (10, 116, 36), palm=(-0.8, -0.6, 0), fingers=(-0.2, -0.4, 0.8), elbow=(1, 0, 0))
    p.hand("r", (-10, 116, 36), palm=(0.8, -0.6, 0), fingers=(0.2, -0.4, 0.8), elbow=(-1, 0, 0))
    p.fingers("l", "grip")
    p.fingers("r", "grip")


@pose("Low block")
def _(p):
    p.hip(yaw=-10)
    p.at(2, -15, 6)
    p.foot("l", 12, 30, 4)
    p.foot("r", -13, -34, 34)
    p.head(turn=8)
    p.hand("l", (22, 78, 40), palm=(-0.3, -0.5, -0.8), fingers=(0.1, -0.8, 0.6))
    p.hand("r", (-16, 104, 4), of="abdomenLower", palm="up", fingers=(0.1, 0, 1),
           elbow=(-0.4, 0, -1))
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("Rising block")
def _(p):
    p.at(-2, -16, 4)
    p.foot("r", -12, 30, 4)
    p.foot("l", 13, -34, 34)
    p.hip(yaw=14)
    p.head(turn=-10, nod=-4)
    p.hand("r", (2, 170, 24), palm=(0, 0.3, 1), fingers=(0.9, 0.4, 0), elbow=(-1, -0.3, 0.2))
    p.hand("l", (16, 104, 4), of="abdomenLower", palm="up", fingers=(-0.1, 0, 1),
           elbow=(0.4, 0, -1))
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("Horse stance, double punch", "shout")
def _(p):
    p.at(0, -26, 0)
    p.foot("l", 36, 4, 16)
    p.foot("r", -36, 4, 16)
    p.spine(bend=-2)
    p.hand("l", (12, 112, 60), palm="down", fingers=(0, 0, 1))
    p.hand("r", (-12, 112, 60), palm="down", fingers=(0, 0, 1))
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("Warrior lunge")
def _(p):
    p.hip(yaw=24)
    p.at(6, -28, 0)
    p.foot("l", 46, 2, 84)
    p.foot("r", -50, -6, 12)
    p.spine(twist=-14)
    p.head(turn=56)
    p.arm("l", up=42, elbow=2)
    p.arm("r", up=42, elbow=2)
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Sword raised overhead", "shout")
def _(p):
    p.hip(yaw=8, pitch=-4)
    p.at(0, -7, 2)
    p.foot("r", -10, 24, 6)
    p.foot("l", 12, -20, 34, heel=14)
    p.spine(bend=-12)
    p.head(nod=4)
    p.hand("r", (-3, 180, 6), palm=(0.8, 0.2, 0.3), fingers=(0, 0.6, 0.7), elbow=(-1, 0.2, 0.3))
    p.hand("l", (2, 172, 0), palm=(-0.8, 0.2, 0.3), fingers=(0, 0.6, 0.7), elbow=(1, 0.2, 0.3))
    p.fingers("l", "grip", 1.2)
    p.fingers("r", "grip", 1.2)


@pose("Sword at the ready")
def _(p):
    p.hip(yaw=-18, pitch=4)
    p.at(0, -12, 0)
    p.foot("l", 11, 22, 2)
    p.foot("r", -14, -24, 40)
    p.spine(twist=8, bend=4)
    p.head(turn=12)
    p.hand("r", (-2, 108, 34), palm=(0.8, 0, -0.4), fingers=(0.2, 0.1, 1), elbow=(-1, -0.5, -0.2))
    p.hand("l", (3, 101, 29), palm=(-0.8, 0, -0.4), fingers=(-0.2, 0.1, 1), elbow=(1, -0.5, -0.2))
    p.fingers("l", "grip", 1.2)
    p.fingers("r", "grip", 1.2)


@pose("Fencing lunge")
def _(p):
    p.hip(yaw=44, pitch=4)
    p.at(0, -28, 12, free=(0.4, 0.15, 0.4))
    p.foot("r", -6, 52, 2)
    p.foot("l", 6, -46, 74)
    p.spine(twist=14)
    p.head(turn=-44)
    p.hand("r", (-8, 116, 92), palm=(0.5, 0.8, 0), fingers=(0, 0, 1))
    p.hand("l", (30, 118, -38), palm="down", fingers=(0.3, 0.1, -0.8), elbow=(0.6, -0.3, 0))
    p.fingers("r", "grip", 1.2)


@pose("Drawing the bow")
def _(p):
    p.hip(yaw=-76)
    p.foot("l", 16, 12, 8)
    p.foot("r", -2, -22, 92)
    p.spine(twist=4, bend=-3)
    p.head(turn=50)
    p.hand("l", (8, 140, 72), palm=(-0.95, 0, 0.2), fingers=(0.2, 0.1, 0.95))
    p.hand("r", (-6, 147, 9), fingers=(0.2, 0, 1), elbow=(-0.2, 0.15, -1))
    p.fingers("l", "fist", 0.9)
    p.fingers("r", "grip", 1.1)


@pose("Throwing the spear", "shout")
def _(p):
    p.hip(yaw=-46, pitch=-8)
    p.at(-4, -8, -8)
    p.foot("l", 12, 32, -4, heel=-10)
    p.foot("r", -12, -26, 50)
    p.spine(twist=-16, bend=-8, side=-6)
    p.head(turn=50)
    p.hand("r", (-34, 158, -18), palm=(0.2, 1, 0), fingers=(-0.2, 0.1, -0.9), elbow=(-0.5, -0.6, 0))
    p.hand("l", (22, 144, 50), palm="down", fingers=(0.3, 0.2, 1))
    p.fingers("r", "grip")
    p.fingers("l", "flat")


@pose("Shield and crouch")
def _(p):
    p.hip(yaw=-24, pitch=16)
    p.at(0, -38, -8)
    p.foot("l", 14, 20, 4)
    p.foot("r", -14, -26, 36, heel=30)
    p.spine(bend=20, twist=6)
    p.head(turn=14, nod=-22)
    p.hand("l", (4, 102, 46), palm=(-0.3, 0, -1), fingers=(-0.8, 0.6, 0), elbow=(1, -0.2, 0.4))
    p.hand("r", (-40, 88, -4), palm=(0.3, 0.3, 0.8), fingers=(-0.2, 0.9, 0.2),
           elbow=(-0.5, -0.5, -1))
    p.fingers("l", "fist")
    p.fingers("r", "grip", 1.2)


@pose("Crane stance")
def _(p):
    p.at(-3, 0.4, 0)
    p.foot("r", -3, 0, 8)
    p.leg("l", thigh=88, out=4, knee=104, foot=46)
    p.spine(bend=-4)
    p.arm("l", up=60, forward=16, elbow=20, wrist=-60, collar=12)
    p.arm("r", up=60, forward=16, elbow=20, wrist=-60, collar=12)
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Staggering back", "open")
def _(p):
    p.hip(pitch=-22, yaw=14, lean=8)
    p.at(2, -9, -12)
    p.foot("l", 14, -26, 24)
    p.foot("r", -8, 22, 10, heel=-24)
    p.spine(bend=-10, side=8, twist=12)
    p.head(nod=-12, tilt=10)
    p.arm("l", up=24, forward=10, elbow=46)
    p.arm("r", up=12, forward=56, elbow=34)
    p.fingers("l", "spread")
    p.fingers("r", "claw", 0.7)
