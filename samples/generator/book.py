"""The list of poses, filled by the files poses_*.py, and what several of them share."""

from .pose import Pose
from .reach import solve


class Entry:
    def __init__(self, name, make, face, how):
        self.name, self.make, self.face, self.how = name, make, face, how

    def solved(self):
        pose = Pose(self.name)
        self.make(pose)
        solve(pose, **self.how)
        pose.controls.update(FACES[self.face])
        return pose


POSES = {}

# Expressions by their controls.
FACES = {
    "calm": {},
    "smile": {"eCTRLMouthSmile": 0.55, "eCTRLCheekFlex": 0.3},
    "laugh": {"eCTRLMouthSmileOpen": 0.7, "eCTRLCheekEyeFlex": 0.4},
    "open": {"eCTRLMouthOpen": 0.35, "eCTRLBrowUp-Down": 0.2},
    "shout": {"eCTRLMouthOpen": 0.8, "eCTRLBrowSqueeze": 0.5},
    "strain": {"eCTRLLipsPressed": 0.6, "eCTRLBrowSqueeze": 0.6, "eCTRLEyesSquint": 0.3},
    "asleep": {"eCTRLEyesClosed": 1.0, "eCTRLLipsPart": 0.15},
    "wonder": {"eCTRLBrowInnerUp-Down": 0.6, "eCTRLLipsPart": 0.3},
    "sad": {"eCTRLMouthFrown": 0.5, "eCTRLBrowInnerUp-Down": 0.7},
    "wink": {"eCTRLEyesClosedL": 1.0, "eCTRLMouthSmile": 0.4},
}


def pose(name, face="calm", **how):
    """Enters a function that tells a pose; how: what reach.solve is asked for."""
    def enter(make):
        if name in POSES:
            raise ValueError("two poses are called " + name)
        POSES[name] = Entry(name, make, face, how)
        return make
    return enter


def hand_on_hip(p, side, fingers="soft"):
    sign = 1 if side == "l" else -1
    p.hand(side, (15.0 * sign, 99.5, 2.0), of="pelvis", palm=(-sign, 0.25, -0.1),
           fingers=(0, -0.6, 0.8), elbow=(sign, 0, -0.35))
    p.fingers(side, fingers)


def hand_on_knee(p, side, of=None, up=0.0):
    """On top of a thigh near its knee."""
    of = of or side
    sign = 1 if of == "l" else -1
    p.hand(side, (11.8 * sign, 55.0 + up, 8.0), of=of + "ThighTwist", palm=(0, 0, -1))
    p.fingers(side, "soft")


def arms_crossed(p):
    p.hand("l", (-9, 121, 12.5), of="chestUpper", palm=(-0.2, 0.2, -1), fingers=(-1, 0.15, 0))
    p.hand("r", (12.5, 122, 11), of="chestUpper", palm=(-0.3, 0, -1), fingers=(1, 0.35, -0.3))
    p.elbow_at("l", (21, 113, 4), of="chestUpper", weight=0.4)
    p.elbow_at("r", (-21, 114, 5), of="chestUpper", weight=0.4)
    p.fingers("l", "soft")
    p.fingers("r", "soft")
