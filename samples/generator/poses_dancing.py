"""Ballet, ballroom, disco, street."""

from .book import hand_on_hip, pose


@pose("Arabesque", "smile")
def _(p):
    p.hip(pitch=26)
    p.at(-4, 1, 0, free=(0.6, 0.15, 0.6))
    p.foot("r", -4, 0, 24)
    p.leg("l", thigh=-35, out=20, twist=30, knee=6, foot=68)
    p.pelvis(bend=10)
    p.spine(bend=-44)
    p.head(nod=-10)
    p.hand("r", (-16, 152, 66), palm="down", fingers=(0, 0.2, 1))
    p.arm("l", up=40, forward=-6, elbow=8)


@pose("First position, arms low", "calm")
def _(p):
    p.at(0, 1, 0)
    p.foot("l", 5, -2, 58)
    p.foot("r", -5, -2, 58)
    p.spine(bend=-3)
    p.hand("l", (9, 88, 26), palm=(-0.3, 0.5, -0.8), fingers=(-0.9, -0.4, 0.1), elbow=(1, 0.1, 0.2))
    p.hand("r", (-9, 88, 26), palm=(0.3, 0.5, -0.8), fingers=(0.9, -0.4, 0.1), elbow=(-1, 0.1, 0.2))


@pose("Grand plié")
def _(p):
    p.at(0, -44, 0)
    p.foot("l", 20, 0, 62, heel=36)
    p.foot("r", -20, 0, 62, heel=36)
    p.spine(bend=-3)
    p.arm("l", up=30, forward=24, elbow=22)
    p.arm("r", up=30, forward=24, elbow=22)


@pose("On the toes, arms in a ring")
def _(p):
    p.at(0, 13, 0)
    p.foot("l", 5, 5, 26, heel=60)
    p.foot("r", -5, -7, 26, heel=60)
    p.spine(bend=-5)
    p.head(nod=-8, turn=-14)
    p.hand("l", (9, 192, 18), palm=(-0.3, -0.9, -0.1), fingers=(-0.9, 0.3, 0.1),
           elbow=(1, 0.1, 0.4))
    p.hand("r", (-9, 192, 18), palm=(0.3, -0.9, -0.1), fingers=(0.9, 0.3, 0.1),
           elbow=(-1, 0.1, 0.4))


@pose("Pirouette")
def _(p):
    p.hip(yaw=20)
    p.at(-3, 13, 0)
    p.foot("r", -3, -2, 10, heel=58)
    p.knee("l", (31, 84, 20))
    p.ankle("l", (2, 60, 12), toes=(-0.5, -0.8, 0.1))
    p.spine(bend=-3)
    p.head(turn=20)
    p.hand("l", (12, 122, 38), palm=(-0.3, 0, -1), fingers=(-0.95, 0, 0.1), elbow=(1, 0.1, 0))
    p.hand("r", (4, 120, 42), palm=(0.3, 0, -1), fingers=(0.95, 0, 0.3), elbow=(-1, 0.1, 0))


@pose("Grand jeté")
def _(p):
    p.hip(pitch=6)
    p.at(0, 46, 0)
    p.leg("l", thigh=92, out=2, twist=20, knee=2, foot=68)
    p.leg("r", thigh=-35, out=24, twist=40, knee=10, foot=68)
    p.spine(bend=-20)
    p.head(nod=-8)
    p.arm("r", up=36, forward=70, elbow=6, collar=10)
    p.arm("l", up=46, forward=4, elbow=8, collar=8)


@pose("Curtsy", "smile")
def _(p):
    p.hip(pitch=10)
    p.at(2, -22, -4)
    p.foot("l", 8, 8, 22)
    p.foot("r", 16, -28, 0, heel=48)
    p.spine(bend=8)
    p.head(nod=12, tilt=6)
    p.hand("l", (42, 84, 10), palm="down", fingers=(0.8, -0.3, 0.2), elbow=(0.4, 0, -1))
    p.hand("r", (-38, 80, 8), palm="down", fingers=(-0.8, -0.3, 0.2), elbow=(-0.4, 0, -1))
    p.fingers("l", "grip", 0.5)
    p.fingers("r", "grip", 0.5)


@pose("Tango lead")
def _(p):
    p.hip(yaw=-8, pitch=6)
    p.at(0, -6, 4)
    p.foot("l", 6, 28, 2)
    p.foot("r", -6, -22, 8, heel=30)
    p.spine(twist=10, bend=-4)
    p.head(turn=24)
    p.hand("l", (54, 142, 24), palm=(-0.3, -0.3, 0.8), fingers=(0.4, 0.8, 0.3), elbow=(0.4, -1, 0))
    p.hand("r", (-6, 124, 44), palm=(0.3, 0, -1), fingers=(0.9, 0.2, 0), elbow=(-1, 0, 0))
    p.fingers("l", "grip", 0.6)


@pose("Tango, leg hooked")
def _(p):
    p.hip(lean=6, pitch=-8)
    p.at(3, 1, 0)
    p.foot("l", 3, 0, 8)
    p.leg("r", thigh=62, out=-16, knee=96, foot=50)
    p.spine(bend=-22, twist=-8)
    p.head(nod=-14, turn=-22)
    p.arm("r", up=60, forward=18, elbow=26, collar=12)
    p.hand("l", (16, 134, 34), palm=(-0.2, -0.8, 0.4), fingers=(-0.3, 0.3, 0.9), elbow=(1, -0.2, 0))


@pose("Disco point", "laugh")
def _(p):
    p.hip(yaw=14, lean=10)
    p.at(6, -3, 0)
    p.foot("l", 13, 0, 26)
    p.foot("r", -24, 4, 20, heel=20)
    p.spine(side=-14, bend=-3)
    p.head(turn=-18, tilt=-8)
    p.hand("r", (-40, 188, 18), palm=(0.3, -0.3, 0.8), fingers=(-0.5, 0.9, 0.1))
    p.fingers("r", "point")
    hand_on_hip(p, "l", "fist")


@pose("Twist", "laugh")
def _(p):
    p.hip(yaw=-34, pitch=6)
    p.at(0, -16, 0)
    p.foot("l", 9, 3, -26, heel=24)
    p.foot("r", -11, 3, 46, heel=24)
    p.spine(twist=44, bend=6)
    p.head(nod=6, turn=4)
    p.hand("l", (30, 112, 8), palm=(-0.6, -0.4, 0), fingers=(0.2, 0.2, 1), elbow=(0.5, 0, -1))
    p.hand("r", (-8, 110, 32), palm=(0.6, -0.4, 0), fingers=(0.4, 0.2, 0.9), elbow=(-1, -0.2, 0))
    p.fingers("l", "fist", 0.8)
    p.fingers("r", "fist", 0.8)


@pose("Flamenco")
def _(p):
    p.hip(yaw=-16, lean=-5)
    p.at(-4, 0.4, 0)
    p.foot("r", -5, -2, 16)
    p.foot("l", 10, 10, 12, heel=30)
    p.spine(bend=-14, twist=18, side=6)
    p.head(turn=22, tilt=-8, nod=4)
    p.hand("l", (2, 190, 8), palm=(0.2, 0.5, -0.6), fingers=(-0.8, 0.5, 0), elbow=(1, 0.2, 0))
    p.hand("r", (8, 108, 26), palm=(0, -0.6, 0.6), fingers=(0.9, 0.2, 0.2), elbow=(-1, 0, 0))
    p.fingers("l", "claw", 0.4)
    p.fingers("r", "claw", 0.4)


@pose("Street dance, low", "strain")
def _(p):
    p.hip(pitch=24, yaw=20, lean=-8)
    p.at(0, -34, -6)
    p.foot("l", 26, 6, 30)
    p.foot("r", -20, -6, 22, heel=30)
    p.spine(bend=12, twist=-14)
    p.head(nod=-20, turn=-20)
    p.arm("l", up=30, forward=-4, elbow=80)
    p.hand("r", (-16, 60, 34), palm=(0.3, -1, 0), fingers=(0.4, -0.4, 0.8))
    p.fingers("l", "fist", 0.8)
    p.fingers("r", "flat")


@pose("Robot")
def _(p):
    p.foot("l", 9, 0, 4)
    p.foot("r", -9, 0, 4)
    p.hip(lean=0)
    p.head(turn=36)
    p.arm("l", up=45, twist=-60, elbow=90)
    p.arm("r", up=45, twist=60, elbow=90)
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Back lean under the bar", "strain")
def _(p):
    p.hip(pitch=-42)
    p.at(0, -38, -26, free=(0.6, 0.3, 0.6))
    p.foot("l", 18, 14, 14)
    p.foot("r", -18, 14, 14)
    p.spine(bend=-26)
    p.head(nod=30)
    p.arm("l", up=34, forward=10, elbow=10)
    p.arm("r", up=34, forward=10, elbow=10)
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Swing kick", "laugh")
def _(p):
    p.hip(pitch=-10, yaw=8)
    p.at(-2, -4, 0)
    p.foot("r", -4, -2, 10)
    p.leg("l", thigh=58, out=6, knee=8, foot=50)
    p.spine(bend=8, twist=-10)
    p.head(nod=4)
    p.arm("r", up=12, forward=66, elbow=40)
    p.arm("l", up=10, forward=-30, elbow=40)
    p.fingers("l", "spread")
    p.fingers("r", "spread")


@pose("Follow spot", "laugh")
def _(p):
    p.hip(yaw=-6)
    p.at(4, 0, 0)
    p.foot("l", 6, 0, 12)
    p.foot("r", -16, 12, 24, heel=24)
    p.spine(bend=-10, side=-6)
    p.head(nod=-12)
    p.arm("l", up=64, forward=10, elbow=14, collar=18, wrist=20)
    p.arm("r", up=18, forward=20, elbow=10, wrist=20)
    p.fingers("l", "spread")
    p.fingers("r", "spread")
