"""What a scan makes of the presets: an account of its own of how poses are told apart, with which
the generator checks what it wrote. Quaternions here are x, y, z, w as the host stores them: a
right-handed turn by t about n is (-sin(t/2) n, cos(t/2)), and a product acts from left to right.
"""

import math
import re

from .rig import RIG

SLOTS = [  # each the product of local turns from left to right; the hip is the pelvis in the world
    ("hip", ["pelvis", "hip"]),
    ("torso", ["chestUpper", "chestLower", "abdomenUpper", "abdomenLower"]),
    ("left shin", ["lShin"]), ("right shin", ["rShin"]),
    ("left thigh", ["lThighBend"]), ("right thigh", ["rThighBend"]),
    ("left arm", ["lShldrBend", "lCollar"]), ("right arm", ["rShldrBend", "rCollar"]),
    ("left forearm", ["lForearmBend"]), ("right forearm", ["rForearmBend"]),
]
MIRROR_OF = [0, 1, 3, 2, 5, 4, 7, 6, 9, 8]
HALF = 0.7069999575614929  # 0.707 in single precision
BASES = [
    (0, 0, 0, 1), (0, 0, 0, 1), (0, 0, 0, 1), (0, -HALF, -HALF, 0), (-HALF, 0, 0, HALF),
    (-0.5, 0.5, 0.5, 0.5), (-0.5, -0.5, -0.5, 0.5), (0, 0, -1, 0),
]
NAMES = ["all", "sitting", "standing", "on the back", "on the belly", "on the left side",
         "on the right side", "upside down", "like the reference"]
SITTING = {4: (0.698, 0.036, -0.122, 0.704), 5: (0.698, -0.036, 0.122, 0.704)}
WHOLE = (0.0, 0.0, 0.0, 1.0)


def times(a, b):
    return (
        a[3] * b[0] + a[0] * b[3] + a[1] * b[2] - a[2] * b[1],
        a[3] * b[1] - a[0] * b[2] + a[1] * b[3] + a[2] * b[0],
        a[3] * b[2] + a[0] * b[1] - a[1] * b[0] + a[2] * b[3],
        a[3] * b[3] - a[0] * b[0] - a[1] * b[1] - a[2] * b[2],
    )


def back(q):
    return (-q[0], -q[1], -q[2], q[3])


def unit(q):
    n = math.sqrt(sum(c * c for c in q))
    return tuple(c / n for c in q)


def about(axis, deg):
    half = math.radians(deg) / 2
    q = [0.0, 0.0, 0.0, math.cos(half)]
    q[axis] = -math.sin(half)
    return tuple(q)


def local(bone, angles_deg):
    e = WHOLE
    for axis in bone.order:
        e = times(e, about(axis, angles_deg[axis]))
    o = back(bone.orientation_quat)  # the file's quaternions turn the other way about
    return times(times(back(o), e), o)


def turned(q, v):
    return times(times(back(q), (v[0], v[1], v[2], 0.0)), q)[:3]


def probes(q):
    return turned(q, (0, 1, 0)), turned(q, (0, 0, 1))


def farther(a, b):
    """The larger of the two distances between probes."""
    return max(math.dist(a[0], b[0]), math.dist(a[1], b[1]))


def passes(a, b, tolerance):
    return 1 - farther(a, b) / tolerance > 0.001


class Signature:
    def __init__(self, quats):
        self.quats = quats
        self.probes = [probes(q) for q in quats]


def read(text):
    """The signature of a preset's text; a bone that it does not tell is at rest."""
    found = dict()
    for name, axis, value in re.findall(
            r'@selection/(\w+):\?rotation/([xyz])/value",\s*"keys" : \[ \[ 0, (\S+) \] \]', text):
        found.setdefault((name, "xyz".index(axis)), float(value))
    quats = []
    for _, bones in SLOTS:
        q = WHOLE
        for name in bones:
            q = times(q, local(RIG.bone(name), [found.get((name, axis), 0.0) for axis in range(3)]))
        quats.append(q)
    return Signature(quats)


def is_mirror(a, b):
    return all(abs(a.quats[i][c] + b.quats[j][c]) < 0.1
               for i, j in enumerate(MIRROR_OF) for c in (1, 2))


def is_similar(a, b):
    return all(passes(p, q, 0.5) for p, q in zip(a.probes, b.probes))


def yaw_table(base):
    return [probes(times(unit(base), about(1, i))) for i in range(360)]


YAWS = [yaw_table(base) for base in BASES]
REST = [probes(WHOLE)] * 10


def matches(signature, kind, reference=None):
    """Whether a pose is shown in one of the nine categories."""
    if kind == 0:
        return True
    yaws = YAWS[kind] if kind < 8 else yaw_table(reference.quats[0])
    if not any(passes(signature.probes[0], yaw, 0.75) for yaw in yaws):
        return False
    slots = {1: (4, 5), 2: (4, 5), 3: (1,), 4: (1,), 8: (1, 4, 5)}.get(kind, ())
    for slot in slots:
        if kind == 1:
            wanted = probes(unit(SITTING[slot]))
        else:
            wanted = REST[slot] if kind < 8 else reference.probes[slot]
        if not passes(signature.probes[slot], wanted, 0.75):
            return False
    return True


def djb2(data):
    h = 5381
    for byte in data[:0x80000]:
        h = (h * 33 + byte - (256 if byte > 127 else 0)) & 0xFFFFFFFF
    return h


def figure_code(data, path):
    """8 of a woman or unmarked, 264 of a man, 0 of no whole body, else another generation."""
    text, where = data[:0x80000].lower(), path.lower()
    if not all(word in text for word in (b"bigtoe", b"pinky", b"head")):
        return 0
    title = ""
    if "data/brannoc/poses" in where:
        title = where.rsplit("/", 1)[-1][:-4]
    female = b"breast" in text or "g8f" in where or "female" in where or "f" in title
    male = not female and ("g8m" in where or "male" in where or "m" in title)
    generation = 2 if b"abdomen2" in text else 3 if b"rheel" in text else 8
    return generation + (256 if male else 0)


class Scan:
    """The phases over files given as (path, bytes unpacked), in the order that they are found."""

    def __init__(self, files):
        self.dropped = {}  # phase: list of (path, why)
        entries = []
        for path, data in files:
            if b"preset_pose" not in data[:1024].lower():
                self._drop(1, path, "no pose preset")
                continue
            entries.append((path, data))
        kept = []
        for path, data in entries:
            code = figure_code(data, path)
            maker = "data/brannoc/poses" in path.lower()
            if maker and ("mirror" in path.lower() or "noexpression" in path.lower()):
                self._drop(4, path, "the maker's variant")
            else:
                kept.append([path, code if code in (8, 264) else 0, djb2(data), data])
        seen = {}
        poses = []
        for path, code, key, data in kept:
            if code == 0:
                self._drop(2, path, "no whole body of this generation")
            elif key in seen:
                self._drop(5, path, "same bytes as " + seen[key])
            else:
                seen[key] = path
                poses.append((path, code, read(data.decode("latin-1"))))
        poses = self._thin(7, poses, lambda a, b: is_mirror(a[2], b[2]), "mirrored ")
        poses = self._thin(8, poses, lambda a, b: a[1] == b[1] and is_similar(a[2], b[2]), "like ")
        self.poses = poses

    def _drop(self, phase, path, why):
        self.dropped.setdefault(phase, []).append((path, why))

    def _thin(self, phase, poses, same, why):
        kept = []
        for pose in poses:
            first = next((other for other in kept if same(other, pose)), None)
            if first:
                self._drop(phase, pose[0], why + first[0])
            else:
                kept.append(pose)
        return kept

    def counts(self):
        reference = Signature([WHOLE] * 10)
        return [sum(matches(pose[2], kind, reference) for pose in self.poses) for kind in range(9)]
