"""Sitting on a chair, on the edge of something, on the floor."""

from .book import hand_on_hip, hand_on_knee, pose

SEAT_CM = -38.5  # the hip on a chair 45 centimetres high


def chair(p, pitch=-6, z=0.0, y=SEAT_CM):
    p.hip(pitch=pitch)
    p.at(0, y, z, free=(4, 4, 4))


def floor(p, pitch=-12, yaw=0, lean=0):
    p.hip(pitch=pitch, yaw=yaw, lean=lean)


@pose("Sit upright, hands in the lap")
def _(p):
    chair(p, -2)
    p.foot("l", 8, 40, 6)
    p.foot("r", -8, 40, 6)
    p.spine(bend=-2)
    p.hand("l", (4, 70, 27), palm=(0, -1, 0), fingers=(-0.9, -0.1, 0.5), elbow=(0.4, -0.3, -1))
    p.hand("r", (-3, 72, 24), palm=(0, -1, 0), fingers=(0.9, -0.1, 0.5), elbow=(-0.4, -0.3, -1))


@pose("Sit back, legs crossed", "smile")
def _(p):
    chair(p, -16, 2)
    p.foot("l", 6, 42, 10)
    p.knee("r", (-1, 65, 40))
    p.ankle("r", (12, 32, 60), toes=(0.3, -0.4, 0.9))
    p.spine(bend=2, twist=6)
    p.head(turn=-16)
    hand_on_knee(p, "l", of="r", up=6)
    p.hand("r", (-1, 73, 31), palm=(0, -1, -0.1), fingers=(0.8, -0.1, 0.6), elbow=(-1, 0, -0.4))


@pose("Ankle on the knee", heading=-30)
def _(p):
    chair(p, -18, 2)
    p.foot("l", 12, 42, 12)
    p.ankle("r", (12, 65, 36), toes=(0.5, -0.2, 0.7))
    p.knee("r", (-28, 60, 32))
    p.spine(bend=6)
    p.hand("l", (17, 70, 30), palm=(-0.3, -1, 0), fingers=(-0.8, -0.3, 0.4), elbow=(1, 0, -0.6))
    p.hand("r", (-24, 75, 26), palm=(0.2, -1, 0), fingers=(-0.2, -0.3, 0.9), elbow=(-1, 0, -0.6))


@pose("Elbows on the knees", "wonder")
def _(p):
    chair(p, 18, -2)
    p.foot("l", 17, 40, 18)
    p.foot("r", -17, 40, 18)
    p.spine(bend=28)
    p.head(nod=-16)
    p.hand("l", (2.5, 82, 52), palm=(-0.9, 0, -0.3), fingers=(-0.3, 0.3, 0.9), elbow=(1, -0.8, 0))
    p.hand("r", (-2.5, 80, 52), palm=(0.9, 0, -0.3), fingers=(0.3, 0.3, 0.9), elbow=(-1, -0.8, 0))


@pose("Chin in the hands", "sad")
def _(p):
    chair(p, 20, -3)
    p.foot("l", 12, 38, 12)
    p.foot("r", -12, 38, 12)
    p.spine(bend=34)
    p.head(nod=-6)
    p.hand("l", (4.6, 147, 6.5), of="head", palm=(-0.55, 0.8, 0), fingers=(0.5, 0.7, -0.5),
           elbow=(0.3, -1, 0.3))
    p.hand("r", (-4.6, 147, 6.5), of="head", palm=(0.55, 0.8, 0), fingers=(-0.5, 0.7, -0.5),
           elbow=(-0.3, -1, 0.3))


@pose("Typing at the desk")
def _(p):
    chair(p, 4)
    p.foot("l", 9, 42, 6)
    p.foot("r", -10, 28, 8, heel=30)
    p.spine(bend=8)
    p.head(nod=4)
    p.hand("l", (9, 82, 42), palm="down", fingers=(-0.15, 0, 1), elbow=(0.8, -0.6, -0.6))
    p.hand("r", (-9, 82, 42), palm="down", fingers=(0.15, 0, 1), elbow=(-0.8, -0.6, -0.6))
    p.fingers("l", "relaxed")
    p.fingers("r", "relaxed")


@pose("At the steering wheel")
def _(p):
    chair(p, -20, 0, -46)
    p.foot("l", 10, 62, 8, heel=-16)
    p.foot("r", -7, 64, 4, heel=-20)
    p.spine(bend=2)
    p.head(nod=8)
    p.hand("l", (17, 92, 44), palm=(-0.8, 0, 0.5), fingers=(0.2, 0.9, 0.4), elbow=(0.8, -1, -0.3))
    p.hand("r", (-17, 88, 44), palm=(0.8, 0, 0.5), fingers=(-0.2, 0.9, 0.4), elbow=(-0.8, -1, -0.3))
    p.fingers("l", "grip")
    p.fingers("r", "grip")


@pose("Slouching", "sad")
def _(p):
    chair(p, -34, 14, -37)
    p.foot("l", 12, 62, 14)
    p.foot("r", -14, 72, 20, heel=-14)
    p.spine(bend=36)
    p.head(nod=10, tilt=8)
    p.hang("l", 14, 10, 30)
    hand_on_knee(p, "r", up=8)


@pose("Astride a chair, arms on the back", "smile")
def _(p):
    chair(p, 8, 0)
    p.foot("l", 30, 22, 26)
    p.foot("r", -30, 24, 26)
    p.spine(bend=10)
    p.head(turn=10, tilt=6)
    p.hand("l", (-13, 96, 30), palm="down", fingers=(-1, 0, 0.05), elbow=(1, 0, 0.1))
    p.hand("r", (13, 100, 33), palm="down", fingers=(1, 0, 0.05), elbow=(-1, 0, 0.1))


@pose("Raising a glass", "laugh")
def _(p):
    chair(p, -8)
    p.foot("l", 9, 44, 8)
    p.foot("r", -9, 36, 12)
    p.spine(twist=-8)
    p.head(turn=-6, nod=-4)
    p.hand("r", (-22, 118, 44), palm=(1, 0, 0.2), fingers=(0.2, 0.3, 1), elbow=(-0.8, -1, 0))
    p.fingers("r", "grip")
    hand_on_knee(p, "l", up=8)


@pose("Eating soup")
def _(p):
    chair(p, 8)
    p.foot("l", 8, 30, 4, heel=26)
    p.foot("r", -8, 38, 6)
    p.spine(bend=16)
    p.head(nod=14)
    p.hand("r", (-8, 104, 38), palm=(0.8, -0.5, -0.3), fingers=(0.7, 0.3, 0.5), elbow=(-1, -0.4, 0))
    p.fingers("r", "grip", 0.8)
    p.hand("l", (10, 80, 36), palm=(-0.6, 0.4, 0), fingers=(-0.5, 0, 0.9), elbow=(1, -0.5, -0.4))


@pose("Perched on a bar stool", "smile")
def _(p):
    chair(p, -2, 0, -14)
    p.foot("l", 10, 26, 14, y=8)
    p.foot("r", -8, 30, 10, y=26)
    p.spine(bend=-4, twist=10)
    p.head(turn=16, tilt=-4)
    hand_on_knee(p, "r", up=10)
    hand_on_hip(p, "l")


@pose("Asleep on a chair", "asleep")
def _(p):
    chair(p, -18, 6)
    p.foot("l", 14, 48, 20)
    p.foot("r", -12, 56, 16)
    p.spine(bend=26, side=-8)
    p.head(nod=34, tilt=-14)
    p.hand("l", (7, 76, 22), palm=(0, -0.5, -0.8), fingers=(-0.9, -0.4, 0.2), elbow=(1, 0, -0.4))
    p.hand("r", (-7, 74, 24), palm=(0, -0.5, -0.8), fingers=(0.9, -0.4, 0.2), elbow=(-1, 0, -0.4))


@pose("Called upon in class")
def _(p):
    chair(p, 0)
    p.foot("l", 8, 40, 6)
    p.foot("r", -8, 36, 6)
    p.spine(bend=-4, side=-4)
    p.arm("r", up=88, forward=12, elbow=8, collar=34)
    p.fingers("r", "point")
    p.hand("l", (8, 78, 36), palm="down", fingers=(-0.9, 0, 0.4), elbow=(1, -0.3, -0.3))


# ---- on the floor

@pose("Sit cross-legged", "smile", lie=True)
def _(p):
    floor(p, -6)
    p.knee("l", (36, 12, 20))
    p.knee("r", (-36, 12, 20))
    p.ankle("l", (-8, 6.5, 32), toes=(-0.9, -0.1, 0.4))
    p.ankle("r", (9, 7, 20), toes=(0.9, -0.1, 0.4))
    p.spine(bend=6)
    p.hand("l", (30, 22, 22), palm="down", fingers=(0.3, -0.3, 0.9), elbow=(1, 0, -0.6))
    p.hand("r", (-30, 22, 22), palm="down", fingers=(-0.3, -0.3, 0.9), elbow=(-1, 0, -0.6))


@pose("Lotus", "asleep", lie=True)
def _(p):
    floor(p, 2)
    p.knee("l", (33, 8, 26))
    p.knee("r", (-33, 8, 26))
    p.ankle("l", (-11, 15, 22), toes=(-0.9, 0.1, 0.3))
    p.ankle("r", (11, 9, 25), toes=(0.9, 0.0, 0.4))
    p.spine(bend=-3)
    p.hand("l", (0.8, 112, 4), palm=(-1, 0, 0), fingers=(-0.1, 1, 0.05), elbow=(1, 0, 0.2))
    p.hand("r", (-0.8, 112, 4), palm=(1, 0, 0), fingers=(0.1, 1, 0.05), elbow=(-1, 0, 0.2))
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Hugging the knees", "sad", lie=True)
def _(p):
    floor(p, -26)
    p.foot("l", 7, 56, 6)
    p.foot("r", -7, 56, 6)
    p.spine(bend=58)
    p.head(nod=8)
    p.knee_way("l", (0, 1, 0.3))
    p.knee_way("r", (0, 1, 0.3))
    p.hand("l", (-7, 30, 50), palm=(0, 0, -1), fingers=(-1, -0.2, 0.1), elbow=(1, 0, 0))
    p.hand("r", (8, 24, 51), palm=(0, 0, -1), fingers=(1, -0.2, 0.1), elbow=(-1, 0, 0))


@pose("Leaning back on the hands", "smile", lie=True)
def _(p):
    floor(p, -28)
    p.ankle("l", (10, 6.2, 83), toes=(0.3, 0.9, 0.3))
    p.foot("r", -10, 44, 8)
    p.spine(bend=-4)
    p.head(nod=16, turn=14)
    p.hand("l", (27, 1, -42), palm="down", fingers=(0.5, 0, -0.9), elbow=(0.3, 0, -1), weight=3)
    p.hand("r", (-27, 1, -42), palm="down", fingers=(-0.5, 0, -0.9), elbow=(-0.3, 0, -1), weight=3)
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Legs straight, reaching for the toes", lie=True)
def _(p):
    floor(p, 12)
    p.ankle("l", (8, 6.2, 83), toes=(0.1, 1, 0.05))
    p.ankle("r", (-8, 6.2, 83), toes=(-0.1, 1, 0.05))
    p.spine(bend=50)
    p.head(nod=6)
    p.hand("l", (10, 20, 78), palm=(-0.3, -1, 0.2), fingers=(-0.1, -0.2, 1))
    p.hand("r", (-10, 20, 78), palm=(0.3, -1, 0.2), fingers=(0.1, -0.2, 1))


@pose("Side saddle", "smile", lie=True, heading=45)
def _(p):
    floor(p, -4, lean=10)
    p.knee("l", (22, 8, 32))
    p.ankle("l", (-15, 6.5, 42), toes=(-0.9, -0.1, 0.3))
    p.knee("r", (-12, 9, 44))
    p.ankle("r", (-42, 5.5, 18), toes=(-0.9, -0.2, -0.4))
    p.spine(side=-16, bend=4)
    p.head(turn=-12, tilt=4)
    p.hand("l", (34, 1, -14), palm="down", fingers=(0.9, 0, 0.2), elbow=(0.5, 0, -1))
    p.fingers("l", "flat")
    p.hand("r", (-18, 21, 40), palm="down", fingers=(0.2, -0.2, 1), elbow=(-1, 0, -0.3))


@pose("Straddle stretch", lie=True)
def _(p):
    floor(p, 8)
    p.ankle("l", (62, 6.2, 56), toes=(0.2, 1, 0.1))
    p.ankle("r", (-62, 6.2, 56), toes=(-0.2, 1, 0.1))
    p.spine(bend=20, side=26, twist=10)
    p.hand("l", (48, 20, 42), palm="down", fingers=(0.7, -0.2, 0.6))
    p.hand("r", (34, 8, 34), palm=(0.2, -1, 0), fingers=(0.9, -0.2, 0.5))


@pose("Campfire seat", lie=True)
def _(p):
    floor(p, -22)
    p.foot("l", 11, 56, 10)
    p.knee("r", (-34, 12, 20))
    p.ankle("r", (2, 6.5, 30), toes=(0.8, -0.1, 0.5))
    p.spine(bend=32)
    p.head(nod=-4)
    p.knee_way("l", (0.1, 1, 0.3))
    p.hand("l", (10, 52, 44), palm=(0, -0.8, 0.5), fingers=(-0.2, -0.5, 0.9), elbow=(1, 0.2, 0))
    p.hand("r", (-28, 24, 22), palm="down", fingers=(-0.2, -0.3, 1), elbow=(-1, 0, -0.5))


@pose("Sit on the steps", "wonder")
def _(p):
    chair(p, -4, 0, -64)
    p.foot("l", 12, 36, 14)
    p.foot("r", -9, 50, 12, y=-8 + 8)
    p.spine(bend=22, twist=6)
    p.head(nod=-2, turn=10)
    p.hand("l", (8, 56, 38), palm=(-0.5, -0.8, 0), fingers=(-0.7, 0, 0.8), elbow=(1, -0.2, 0))
    hand_on_knee(p, "r", up=2)


@pose("Sunbathing seat, one knee up", "smile", lie=True)
def _(p):
    floor(p, -34, lean=-4)
    p.ankle("l", (16, 6, 76), toes=(0.6, 0.8, 0.3))
    p.foot("r", -4, 40, 2)
    p.knee_way("r", (0.2, 1, 0))
    p.spine(bend=6, twist=-10)
    p.head(nod=6, turn=-20)
    p.hand("l", (34, 1, -36), palm="down", fingers=(0.6, 0, -0.8), elbow=(0.4, 0, -1))
    hand_on_knee(p, "r")
