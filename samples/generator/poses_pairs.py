"""Poses for two: each of a pair is a preset of its own."""

from .book import pose
from .poses_fighting import guard


@pose("Pair: first dance, she")
def _(p):
    p.hip(pitch=-3, lean=-3)
    p.at(-2, 3, 0)
    p.foot("l", 7, -10, 10, heel=30)
    p.foot("r", -7, 4, 10, heel=12)
    p.spine(bend=-8, side=-6)
    p.head(turn=24, tilt=-6)
    p.hand("l", (19, 147, 34), palm=(0.2, -0.8, -0.6), fingers=(-0.5, 0.2, 0.8), elbow=(1, -0.2, 0))
    p.hand("r", (-46, 142, 20), palm=(0.4, 0, 0.9), fingers=(-0.2, 0.9, 0.2), elbow=(-0.4, -1, 0))


@pose("Pair: first dance, he")
def _(p):
    p.hip(pitch=3, yaw=4)
    p.at(0, -2, 0)
    p.foot("l", 9, 10, 10)
    p.foot("r", -8, -6, 12)
    p.spine(bend=-2)
    p.head(nod=8, turn=-10)
    p.hand("l", (48, 142, 22), palm=(-0.4, 0.2, 0.9), fingers=(0.2, 0.9, 0.2), elbow=(0.4, -1, 0))
    p.hand("r", (-4, 112, 42), palm=(0.4, 0.2, -0.9), fingers=(0.9, 0.1, 0.2), elbow=(-1, -0.2, 0))


@pose("Pair: the dip, she")
def _(p):
    p.hip(pitch=-46, yaw=10)
    p.at(0, -20, -16, free=(0.4, 0.2, 0.4))
    p.foot("r", -9, 14, 10)
    p.leg("l", thigh=70, out=4, knee=40, foot=50)
    p.spine(bend=-34, twist=-8)
    p.head(nod=-16, turn=-16)
    p.hand("r", (-20, 128, 10), palm=(0, -0.5, 0.9), fingers=(0.5, 0.5, 0.6), elbow=(-1, 0, 0))
    p.arm("l", up=70, forward=-4, elbow=16, collar=20)


@pose("Pair: the dip, he")
def _(p):
    p.hip(pitch=34, yaw=12)
    p.at(4, -22, -4)
    p.foot("l", 16, 26, 16)
    p.foot("r", -16, -26, 30)
    p.spine(bend=18, twist=14)
    p.head(nod=-4)
    p.hand("r", (8, 84, 56), palm=(0.2, 1, 0), fingers=(0.9, 0, 0.4))
    p.hand("l", (34, 92, 50), palm=(-0.6, 0.8, 0), fingers=(0, 0.1, 1))


@pose("Pair: bench, leaning on her")
def _(p):
    p.hip(pitch=-6, lean=6)
    p.at(0, -38.5, 0, free=(4, 4, 4))
    p.foot("l", 7, 36, 4)
    p.foot("r", -5, 28, 6, heel=24)
    p.spine(side=20, bend=6, twist=6)
    p.head(tilt=20, nod=8)
    p.hand("l", (22, 76, 30), palm="down", fingers=(0.3, -0.2, 0.9), elbow=(0.6, 0, -0.8))
    p.hand("r", (14, 72, 32), palm=(0, -1, 0), fingers=(0.8, -0.1, 0.5), elbow=(-0.8, -0.4, 0))


@pose("Pair: bench, arm around her")
def _(p):
    p.hip(pitch=-12)
    p.at(0, -38.5, 2, free=(4, 4, 4))
    p.foot("l", 10, 46, 10)
    p.foot("r", -10, 36, 12)
    p.spine(side=-6)
    p.head(turn=-18, tilt=-12)
    p.arm("r", up=40, forward=20, elbow=34, collar=8, wrist=-14)
    p.hand("l", (12, 66, 34), palm="down", fingers=(0, -0.3, 1), elbow=(0.7, 0, -1))


@pose("Pair: bench, whispering")
def _(p):
    p.hip(pitch=2, yaw=-24)
    p.at(0, -38.5, 0, free=(4, 4, 4))
    p.foot("l", 0, 42, -16)
    p.foot("r", -22, 30, 30)
    p.spine(side=-14, bend=12, twist=-16)
    p.head(turn=-20, tilt=-8)
    p.hand("r", (-7, 151, 12), of="head", palm=(0.8, 0, -0.2), fingers=(0.1, 0.9, 0.3),
           elbow=(-0.5, -1, 0))
    p.hand("l", (8, 72, 32), palm="down", fingers=(-0.5, -0.2, 0.8), elbow=(1, 0, -0.4))


@pose("Pair: bench, laughing with her")
def _(p):
    p.hip(pitch=12, yaw=20)
    p.at(0, -38.5, 0, free=(4, 4, 4))
    p.foot("l", 20, 32, 34)
    p.foot("r", 2, 42, 6)
    p.spine(bend=22, twist=10)
    p.head(nod=-10, turn=22)
    p.hand("l", (5, 149, 10), of="head", palm=(-0.2, 0.1, -1), fingers=(-0.8, 0.6, 0),
           elbow=(0.6, -1, 0))
    p.hand("r", (-2, 66, 40), palm="down", fingers=(0.5, -0.4, 0.8), elbow=(-1, 0, -0.3))


@pose("Pair: sparring, the throw")
def _(p):
    p.hip(pitch=56, yaw=24)
    p.at(2, -22, -8)
    p.foot("l", 15, 12, 20)
    p.foot("r", -15, 2, 10)
    p.spine(bend=44, twist=18)
    p.head(nod=10)
    p.hand("l", (8, 64, 48), palm=(-0.7, 0, -0.6), fingers=(0, -0.4, 0.9))
    p.hand("r", (14, 80, 40), palm=(0.5, 0.6, -0.4), fingers=(0.6, -0.3, 0.7))
    p.fingers("l", "fist", 0.9)
    p.fingers("r", "fist", 0.9)


@pose("Pair: sparring, ducking under")
def _(p):
    p.hip(pitch=30, yaw=-16, lean=16)
    p.at(4, -30, -6)
    p.foot("l", 14, 16, 6)
    p.foot("r", -16, -20, 40, heel=20)
    p.spine(bend=26, side=18)
    p.head(nod=-16)
    p.hand("l", (12, 140, 22), of="chestUpper", palm=(-0.8, 0, -0.5), fingers=(-0.1, 0.9, 0.3),
           elbow=(0.4, -1, 0))
    p.hand("r", (-9, 140, 18), of="chestUpper", palm=(0.8, 0, -0.5), fingers=(0.1, 0.9, 0.3),
           elbow=(-0.4, -1, 0))
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("Pair: sparring, southpaw")
def _(p):
    p.hip(yaw=30, pitch=4)
    p.at(0, -10, -4)
    p.foot("r", -12, 20, 2)
    p.foot("l", 16, -22, 48, heel=12)
    p.spine(bend=12, twist=-10, side=-6)
    p.head(nod=10, turn=-16)
    guard(p, 4)


@pose("Pair: sparring, hook")
def _(p):
    p.hip(yaw=-6, pitch=8)
    p.at(3, -8, 4)
    p.foot("l", 11, 18, 6)
    p.foot("r", -14, -18, 30, heel=24)
    p.spine(bend=4, twist=-22)
    p.head(nod=6, turn=20)
    p.hand("l", (2, 140, 46), palm=(-0.2, -0.2, -1), fingers=(-0.9, 0, 0.3), elbow=(1, 0.3, 0))
    p.hand("r", (-9, 136, 15), palm=(0.8, -0.3, -0.4), fingers=(0.1, 0.7, 0.6), elbow=(-0.4, -1, 0))
    p.fingers("l", "fist")
    p.fingers("r", "fist")


@pose("Single: Sunday morning, coffee in bed", "smile", lie=True)
def _(p):
    p.hip(pitch=-22)
    p.ankle("l", (8, 6, 86), toes=(0.2, 0.9, 0.4))
    p.foot("r", -9, 44, 6)
    p.spine(bend=20)
    p.head(nod=-2, turn=12)
    p.hand("l", (2, 72, 34), palm=(-0.8, 0, -0.4), fingers=(-0.3, 0.5, 0.7), elbow=(1, -0.5, 0))
    p.hand("r", (-4, 70, 33), palm=(0.8, 0, -0.4), fingers=(0.3, 0.5, 0.7), elbow=(-1, -0.5, 0))
    p.fingers("l", "grip", 0.8)
    p.fingers("r", "grip", 0.8)


@pose("Single: Sunday morning, yawn", "open", lie=True)
def _(p):
    p.hip(pitch=-12, yaw=10)
    p.foot("l", 16, 56, 20)
    p.knee("r", (-30, 12, 24))
    p.ankle("r", (4, 6.5, 34), toes=(0.8, -0.1, 0.5))
    p.spine(bend=-10, side=10)
    p.head(nod=-12, tilt=6)
    p.arm("l", up=84, forward=10, elbow=60, collar=30)
    p.arm("r", up=60, forward=4, elbow=16, collar=20)
    p.fingers("l", "fist", 0.8)
    p.fingers("r", "spread")


@pose("Single: Sunday morning, one more minute", "asleep", lie=True)
def _(p):
    p.hip(pitch=90, yaw=20, spin=-16)
    p.ankle("l", (-22, 7, -88), toes=(-0.4, -0.3, -0.9))
    p.ankle("r", (-40, 7, -78), toes=(-0.5, -0.3, -0.8))
    p.head(turn=44, nod=-4)
    p.hand("l", (30, 3, 62), palm="down", fingers=(-0.7, 0, 0.6), elbow=(1, 0, 0))
    p.hand("r", (-4, 3, 74), palm="down", fingers=(0.8, 0, 0.5), elbow=(-1, 0, 0.4))
