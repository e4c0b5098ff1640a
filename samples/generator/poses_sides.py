"""Lying on either side: the head towards -Z, the belly towards +X on the left side, towards -X on
the right one."""

from .book import pose


def left(p, roll=0, **more):
    p.hip(pitch=-90, spin=90 + roll, **more)


def right(p, roll=0, **more):
    p.hip(pitch=-90, spin=-90 - roll, **more)


@pose("On the left side, asleep", "asleep", lie=True)
def _(p):
    left(p)
    p.knee("l", (24, 7, 36))
    p.ankle("l", (-6, 5.5, 64), toes=(0.8, -0.1, 0.5))
    p.knee("r", (34, 16, 26))
    p.ankle("r", (4, 13, 52), toes=(0.8, -0.1, 0.5))
    p.spine(bend=14)
    p.head(nod=10, tilt=16)
    p.hand("l", (16, 3, -66), palm=(-0.2, 1, 0), fingers=(-0.8, 0.1, -0.5), elbow=(1, -0.2, 0.5))
    p.hand("r", (30, 2, -28), palm="down", fingers=(0.8, -0.1, -0.5), elbow=(0.4, 1, 0.4))


@pose("Curled up on the left", "sad", lie=True)
def _(p):
    left(p)
    p.knee("l", (38, 7, -2))
    p.ankle("l", (14, 5.5, 28), toes=(0.7, -0.1, 0.7))
    p.knee("r", (40, 18, -6))
    p.ankle("r", (16, 14, 26), toes=(0.7, -0.1, 0.7))
    p.spine(bend=44)
    p.head(nod=26, tilt=12)
    p.hand("l", (42, 6, -24), palm=(-0.3, 0.6, 0.6), fingers=(0.4, 0.3, 0.8), elbow=(0.4, -0.3, -1))
    p.hand("r", (24, 15, -52), palm=(-0.3, -0.9, 0), fingers=(-0.7, 0.1, -0.6),
           elbow=(0.8, -0.1, 0.5))


@pose("Propped on the left elbow", "smile", lie=True)
def _(p):
    left(p, lean=-14)
    p.ankle("l", (2, 6, 89), toes=(0.7, 0, 0.7))
    p.knee("r", (30, 24, 40))
    p.ankle("r", (24, 8, 78), toes=(0.4, -0.3, 0.8))
    p.spine(side=-30, bend=4)
    p.head(tilt=-14, turn=6)
    p.hand("l", (7.5, 153, 1), of="head", palm=(-1, 0.1, 0), fingers=(0.1, 0.9, -0.4),
           elbow=(0.3, -1, 0.2))
    p.hand("r", (34, 1.2, -10), palm="down", fingers=(0.5, 0, -0.8), elbow=(0, 1, 0.2))


@pose("Side plank on the left", "strain", on_hands=True)
def _(p):
    p.hip(pitch=-90, spin=90, lean=-24)
    p.at(0, -44, 0, free=(0.2, 0.4, 0.3))
    p.ankle("l", (0, 6, 80), toes=(0.97, 0, 0.2))
    p.ankle("r", (0, 14, 80), toes=(0.97, 0, 0.2))
    p.arm("l", up=40, elbow=2, wrist=70)
    p.hand("l", (0, 0.8, -42), palm="down", fingers=(0.9, 0, -0.5))
    p.arm("r", up=50, elbow=2)
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Leg lift, left side down", lie=True, heading=140)
def _(p):
    left(p)
    p.ankle("l", (0, 6, 90), toes=(0.8, 0, 0.5))
    p.leg("r", thigh=6, out=44, knee=2, foot=10)
    p.head(tilt=26)
    p.hand("l", (10, 3.5, -70), palm=(0, 1, 0), fingers=(0.4, 0.1, -0.9), elbow=(0.3, -0.5, -1))
    p.hand("r", (26, 1.2, -22), palm="down", fingers=(0.6, 0, -0.8), elbow=(0, 1, 0.4))


@pose("Spooning, arm over", "asleep", lie=True)
def _(p):
    left(p, roll=-8)
    p.knee("l", (26, 7, 30))
    p.ankle("l", (-2, 5.5, 60), toes=(0.8, -0.1, 0.5))
    p.knee("r", (28, 20, 28))
    p.ankle("r", (-4, 15, 55), toes=(0.8, -0.1, 0.5))
    p.spine(bend=18)
    p.head(nod=6, tilt=20)
    p.hand("l", (20, 6, -88), palm=(0, 1, 0), fingers=(0.4, 0, -0.9))
    p.hand("r", (42, 22, -20), palm=(-0.7, -0.7, 0), fingers=(0.5, -0.8, -0.2), elbow=(0, 1, 0))


@pose("Fallen on the left side", "strain", lie=True)
def _(p):
    left(p, roll=18, lean=-6)
    p.knee("l", (10, 6, 42))
    p.ankle("l", (-24, 6, 66), toes=(0.5, 0, 0.9))
    p.knee("r", (40, 10, 24))
    p.ankle("r", (26, 8, 62), toes=(0.5, -0.2, 0.8))
    p.spine(side=-16, twist=-12)
    p.head(nod=-16, tilt=-6)
    p.hand("l", (36, 2.5, -62), palm="down", fingers=(0.6, 0, -0.8), elbow=(0, 0, -1))
    p.hand("r", (40, 1.2, -30), palm="down", fingers=(0.7, 0, -0.7), elbow=(-0.3, 1, 0))
    p.fingers("r", "claw", 0.7)


@pose("Sunning on the left side", "smile", lie=True)
def _(p):
    left(p, roll=-16)
    p.ankle("l", (-2, 6, 90), toes=(0.6, 0.3, 0.7))
    p.foot("r", 6, 40, -60)
    p.spine(side=-6)
    p.head(tilt=20, nod=6)
    p.hand("l", (6, 3.2, -72), palm=(0, 1, 0), fingers=(0.2, 0.1, -0.9), elbow=(0.6, -0.5, -0.6))
    p.hand("r", (-15, 96, 4), of="pelvis", palm=(1, 0, -0.1), fingers=(0, -0.9, 0.4),
           elbow=(-1, 0, -0.3))


@pose("On the right side, asleep", "asleep", lie=True, heading=-50)
def _(p):
    right(p, roll=6)
    p.ankle("r", (4, 5.5, 90), toes=(-0.8, 0, 0.5))
    p.knee("l", (-38, 9, 16))
    p.ankle("l", (-20, 8, 54), toes=(-0.7, -0.2, 0.7))
    p.spine(bend=8, twist=6)
    p.head(nod=8, tilt=-18)
    p.hand("r", (-12, 3, -72), palm=(0, 1, 0.1), fingers=(0.6, 0.1, -0.7), elbow=(-1, -0.2, 0.2))
    p.hand("l", (-34, 1.2, -36), palm="down", fingers=(-0.8, 0, -0.6), elbow=(-0.3, 1, 0.3))


@pose("Curled up on the right", "asleep", lie=True)
def _(p):
    right(p)
    p.knee("r", (-40, 7, 4))
    p.ankle("r", (-8, 5.5, 30), toes=(-0.7, -0.1, 0.7))
    p.knee("l", (-42, 18, 0))
    p.ankle("l", (-10, 15, 24), toes=(-0.7, -0.1, 0.7))
    p.spine(bend=34)
    p.head(nod=22, tilt=-10)
    p.hand("r", (-28, 4, -60), palm=(0.3, 0.9, 0.2), fingers=(0.7, 0.1, -0.6),
           elbow=(-0.7, -0.3, 0.6))
    p.hand("l", (-30, 10, -58), palm=(0.3, -0.9, 0.2), fingers=(0.7, 0.1, -0.6),
           elbow=(-0.7, 0.4, 0.6))


@pose("Propped on the right elbow", "wink", lie=True)
def _(p):
    right(p, lean=14)
    p.knee("r", (-22, 7, 40))
    p.ankle("r", (10, 6, 62), toes=(-0.6, 0, 0.8))
    p.ankle("l", (-6, 15, 87), toes=(-0.7, -0.1, 0.6))
    p.spine(side=30)
    p.head(tilt=12, turn=-10)
    p.hand("r", (-7.5, 153, 1), of="head", palm=(1, 0.1, 0), fingers=(-0.1, 0.9, -0.4),
           elbow=(-0.3, -1, 0.2))
    p.hand("l", (15.5, 97, 2), of="pelvis", palm=(-1, 0, -0.1), fingers=(0, -0.8, 0.6),
           elbow=(1, 0, -0.4))


@pose("Reaching out, right side down", "sad", lie=True)
def _(p):
    right(p, roll=-10)
    p.knee("r", (-16, 7, 40))
    p.ankle("r", (18, 6, 62), toes=(-0.6, 0, 0.8))
    p.knee("l", (-22, 18, 36))
    p.ankle("l", (6, 14, 66), toes=(-0.7, -0.1, 0.6))
    p.head(nod=-6, tilt=-14)
    p.hand("r", (-54, 2, -70), palm=(0, 1, 0), fingers=(-0.7, 0, -0.7))
    p.hand("l", (-58, 14, -48), palm=(0, -1, 0), fingers=(-0.9, -0.1, -0.3), elbow=(0, 1, 0))


@pose("Yoga side stretch, right side down", lie=True)
def _(p):
    right(p)
    p.ankle("r", (2, 6, 91), toes=(-0.8, 0, 0.5))
    p.ankle("l", (-2, 16, 90), toes=(-0.8, 0, 0.5))
    p.spine(side=6)
    p.head(tilt=-14)
    p.hand("r", (-6, 3, -118), palm=(0, 1, 0), fingers=(0, 0, -1))
    p.arm("l", up=86, forward=12, elbow=6, collar=36)


@pose("Watching a film on the right side", "smile", lie=True)
def _(p):
    right(p, roll=4)
    p.ankle("r", (6, 6, 90), toes=(-0.7, 0.1, 0.7))
    p.foot("l", -30, 40, 60, y=1)
    p.spine(side=12, bend=6)
    p.head(tilt=-4, nod=4)
    p.hand("r", (-8, 156, -4), of="head", palm=(1, 0, 0.2), fingers=(-0.1, 0.7, -0.7),
           elbow=(-0.6, 0.8, 0.2))
    p.hand("l", (-30, 1.2, -20), palm="down", fingers=(-0.7, 0, -0.6), elbow=(0, 1, 0.3))


@pose("Recovery position", "asleep", lie=True)
def _(p):
    right(p, roll=22)
    p.ankle("r", (2, 5.5, 91), toes=(-0.7, -0.2, 0.6))
    p.knee("l", (-42, 7, 20))
    p.ankle("l", (-34, 6.5, 60), toes=(-0.5, -0.3, 0.8))
    p.head(nod=-12, tilt=-14)
    p.hand("r", (-48, 2.2, -40), palm=(0, 1, 0), fingers=(-0.9, 0, -0.2))
    p.hand("l", (-14, 3.5, -70), palm=(0.2, -1, 0), fingers=(0.6, 0, -0.6), elbow=(-1, 0.2, 0))


@pose("Laughing on the floor", "laugh", lie=True)
def _(p):
    right(p, roll=-14)
    p.knee("r", (-34, 8, 18))
    p.ankle("r", (-10, 6, 50), toes=(-0.6, 0, 0.8))
    p.leg("l", thigh=62, out=24, knee=80, foot=20)
    p.spine(bend=26, side=10)
    p.head(nod=-20, tilt=-6)
    p.hand("l", (4, 108, 11), of="abdomenUpper", palm=(0, 0, -1), fingers=(-1, 0, 0),
           elbow=(1, 0, 0.3))
    p.hand("r", (-3, 114, 11), of="abdomenUpper", palm=(0, 0, -1), fingers=(1, 0, 0),
           elbow=(-1, 0, 0.3))
