"""Head below: hand stands, head stands, hanging, turning over."""

from .book import pose


def over(p, yaw=0, pitch=180, lean=0, y=0.0, z=0.0, x=0.0, free=(1.0, 0.3, 1.0)):
    p.hip(yaw=yaw, pitch=pitch, lean=lean)
    p.at(x, y, z, free=free)


def on_palms(p, apart=18, z=0.0, y=0.8):
    """Palms on the floor, the fingers to where the back looks."""
    for side, sign in (("l", 1), ("r", -1)):
        p.arm(side, up=80, forward=40, elbow=4, wrist=60, collar=40)
        p.hand(side, (apart * sign, y, z), palm="down", fingers=(0, 0, 1))
        p.fingers(side, "flat")


@pose("Handstand", "strain", on_hands=True)
def _(p):
    over(p, yaw=180, pitch=180, lean=0, y=4)
    p.spine(bend=-8)
    p.head(nod=-34)
    p.leg("l", thigh=2, foot=60)
    p.leg("r", thigh=2, foot=60)
    for side, sign in (("l", -1), ("r", 1)):  # it looks the other way
        p.arm(side, up=80, forward=40, elbow=4, wrist=60, collar=40)
        p.hand(side, (18 * sign, 0.8, 0), palm="down", fingers=(0, 0, -1))
        p.fingers(side, "flat")


@pose("Handstand split", "strain", on_hands=True)
def _(p):
    over(p, y=4)
    p.spine(bend=-6)
    p.head(nod=-30)
    p.leg("l", thigh=84, out=2, knee=2, foot=60)
    p.leg("r", thigh=-34, out=2, knee=14, foot=60)
    on_palms(p)


@pose("Handstand straddle", "strain", on_hands=True)
def _(p):
    over(p, y=4)
    p.spine(bend=-4)
    p.head(nod=-34)
    p.leg("l", thigh=10, out=72, knee=2, foot=60)
    p.leg("r", thigh=10, out=72, knee=2, foot=60)
    on_palms(p, 20)


@pose("Stag handstand", "strain", on_hands=True)
def _(p):
    over(p, pitch=186, y=4)
    p.spine(bend=-14)
    p.head(nod=-36)
    p.leg("l", thigh=64, knee=110, foot=60)
    p.leg("r", thigh=-24, knee=52, foot=60)
    on_palms(p)


@pose("One-handed stand", "strain", on_hands=True)
def _(p):
    over(p, lean=12, y=3, free=(0.3, 0.1, 0.3))
    p.spine(side=4)
    p.head(nod=-26)
    p.leg("l", thigh=6, out=48, knee=2, foot=60)
    p.leg("r", thigh=6, out=40, knee=2, foot=60)
    p.arm("l", up=80, forward=40, elbow=3, wrist=60, collar=40)
    p.hand("l", (12, 0.8, 0), palm="down", fingers=(0.4, 0, 1))
    p.arm("r", up=44, forward=6, elbow=6)
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Headstand", ground=True)
def _(p):
    over(p, y=-22)
    p.leg("l", thigh=2, foot=50)
    p.leg("r", thigh=4, foot=50)
    p.spine(bend=2)
    p.hand("l", (22, 0.8, -24), palm="down", fingers=(-0.2, 0, 1), elbow=(0.5, 0.4, 0.3))
    p.hand("r", (-22, 0.8, -24), palm="down", fingers=(0.2, 0, 1), elbow=(-0.5, 0.4, 0.3))
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Headstand, knees drawn in", ground=True)
def _(p):
    over(p, pitch=170, y=-22)
    p.leg("l", thigh=104, out=4, knee=130, foot=50)
    p.leg("r", thigh=98, out=6, knee=120, foot=50)
    p.spine(bend=10)
    p.hand("l", (24, 0.8, -22), palm="down", fingers=(-0.2, 0, 1), elbow=(0.5, 0.4, 0.3))
    p.hand("r", (-24, 0.8, -22), palm="down", fingers=(0.2, 0, 1), elbow=(-0.5, 0.4, 0.3))
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Shoulder stand", "strain", lie=True)
def _(p):
    over(p, pitch=-172)
    p.spine(bend=38)
    p.head(nod=50)
    p.leg("l", thigh=14, foot=50)
    p.leg("r", thigh=4, foot=50)
    p.hand("l", (10, 106, -9), of="abdomenLower", palm=(-0.3, 0, 1), fingers=(-0.5, 0.8, 0),
           elbow=(0.3, 0.3, -1))
    p.hand("r", (-10, 106, -9), of="abdomenLower", palm=(0.3, 0, 1), fingers=(0.5, 0.8, 0),
           elbow=(-0.3, 0.3, -1))


@pose("Cartwheel", "laugh", on_hands=True, heading=30)
def _(p):
    p.hip(lean=164)
    p.at(0, -2, 0, free=(0.3, 0.1, 0.3))
    p.spine(side=-6)
    p.head(nod=-10)
    p.leg("l", thigh=4, out=70, knee=2, foot=55)
    p.leg("r", thigh=4, out=58, knee=2, foot=55)
    p.arm("l", up=80, forward=6, elbow=4, wrist=50, collar=40)
    p.hand("l", (2, 0.8, 0), palm="down", fingers=(0.9, 0, 0.3))
    p.arm("r", up=64, forward=6, elbow=4, collar=30)
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Hanging from the bar by the knees", "laugh")
def _(p):
    over(p, y=70)
    p.leg("l", thigh=30, out=2, knee=112, foot=30)
    p.leg("r", thigh=26, out=4, knee=108, foot=30)
    p.spine(bend=-6)
    p.head(nod=-16)
    p.arm("l", up=78, forward=20, elbow=14, collar=30)
    p.arm("r", up=70, forward=26, elbow=22, collar=26)


@pose("Diving in")
def _(p):
    over(p, pitch=148, y=40)
    p.leg("l", thigh=4, foot=70)
    p.leg("r", thigh=4, foot=70)
    p.spine(bend=6)
    p.head(nod=14)
    p.arm("l", up=86, forward=30, elbow=2, collar=45)
    p.arm("r", up=86, forward=30, elbow=2, collar=45)
    p.fingers("l", "flat")
    p.fingers("r", "flat")


@pose("Somersault, tucked", "strain")
def _(p):
    over(p, pitch=200, y=40)
    p.leg("l", thigh=112, out=4, knee=134, foot=50)
    p.leg("r", thigh=112, out=6, knee=128, foot=50)
    p.spine(bend=44)
    p.head(nod=24)
    p.hand("l", (14.5, 40, 7), of="lShin", palm=(0, 0, -1), fingers=(-0.6, -0.7, 0), elbow=None)
    p.hand("r", (-14.5, 40, 7), of="rShin", palm=(0, 0, -1), fingers=(0.6, -0.7, 0), elbow=None)


@pose("Falling head first", "shout")
def _(p):
    over(p, pitch=162, lean=14, y=60, yaw=30)
    p.leg("l", thigh=40, out=16, knee=60, foot=20)
    p.leg("r", thigh=-10, out=26, knee=34, foot=20)
    p.spine(bend=-16, twist=14)
    p.head(nod=-20, turn=-20)
    p.arm("l", up=30, forward=40, elbow=40)
    p.arm("r", up=64, forward=-10, elbow=30)
    p.fingers("l", "claw")
    p.fingers("r", "spread")


@pose("Aerial silk, upside down")
def _(p):
    over(p, lean=10, y=80, yaw=-40)
    p.leg("l", thigh=6, out=20, knee=6, foot=70)
    p.leg("r", thigh=60, out=34, knee=112, foot=60)
    p.spine(bend=-30, side=8)
    p.head(nod=-26)
    p.arm("l", up=26, forward=-20, elbow=10)
    p.arm("r", up=60, forward=4, elbow=20, collar=20)
    p.fingers("l", "soft")
    p.fingers("r", "soft")
