"""The figure's skeleton and where its bones are when channels are turned.

Space: right-handed, Y up, centimetres, the figure faces +Z with its left at +X; degrees. Matrices
are tuples of nine numbers, row after row, for column vectors.
"""

import json
import math
import os

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
FIGURES = os.path.join(ROOT, "host", "figures")
AXES = "XYZ"
IDENTITY = (1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0)


def product(a, b):
    return (
        a[0] * b[0] + a[1] * b[3] + a[2] * b[6],
        a[0] * b[1] + a[1] * b[4] + a[2] * b[7],
        a[0] * b[2] + a[1] * b[5] + a[2] * b[8],
        a[3] * b[0] + a[4] * b[3] + a[5] * b[6],
        a[3] * b[1] + a[4] * b[4] + a[5] * b[7],
        a[3] * b[2] + a[4] * b[5] + a[5] * b[8],
        a[6] * b[0] + a[7] * b[3] + a[8] * b[6],
        a[6] * b[1] + a[7] * b[4] + a[8] * b[7],
        a[6] * b[2] + a[7] * b[5] + a[8] * b[8],
    )


def transposed(m):
    return (m[0], m[3], m[6], m[1], m[4], m[7], m[2], m[5], m[8])


def turned(m, v):
    return (
        m[0] * v[0] + m[1] * v[1] + m[2] * v[2],
        m[3] * v[0] + m[4] * v[1] + m[5] * v[2],
        m[6] * v[0] + m[7] * v[1] + m[8] * v[2],
    )


def plus(a, b):
    return (a[0] + b[0], a[1] + b[1], a[2] + b[2])


def minus(a, b):
    return (a[0] - b[0], a[1] - b[1], a[2] - b[2])


def scaled(v, f):
    return (v[0] * f, v[1] * f, v[2] * f)


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def length(v):
    return math.sqrt(dot(v, v))


def unit(v):
    return scaled(v, 1.0 / length(v))


def axis_turn(axis, deg):
    """A right-handed turn about axis 0, 1 or 2."""
    s, c = math.sin(math.radians(deg)), math.cos(math.radians(deg))
    if axis == 0:
        return (1.0, 0.0, 0.0, 0.0, c, -s, 0.0, s, c)
    if axis == 1:
        return (c, 0.0, s, 0.0, 1.0, 0.0, -s, 0.0, c)
    return (c, -s, 0.0, s, c, 0.0, 0.0, 0.0, 1.0)


def from_quaternion(x, y, z, w):
    return (
        1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y),
        2 * (x * y + w * z), 1 - 2 * (x * x + z * z), 2 * (y * z - w * x),
        2 * (x * z - w * y), 2 * (y * z + w * x), 1 - 2 * (x * x + y * y),
    )


class Bone:
    def __init__(self, row, numbers):
        self.name = row["name"]
        self.number = row["number"]
        self.parent = numbers[row["parent"]] if row["parent"] else -1
        self.order = [AXES.index(letter) for letter in row["rotation_order"]]
        self.center = tuple(row["center"])
        self.end = tuple(row["end"])
        self.orientation_quat = tuple(row["orientation_quat_xyzw"])
        self.orientation = from_quaternion(*self.orientation_quat)
        self.orientation_back = transposed(self.orientation)
        self.limits = []
        for letter in AXES:
            channel = row["rotation"][letter]
            self.limits.append((channel["min"], channel["max"]))
        self.offset = self.center  # from the parent's centre; set by Rig

    def local_turn(self, angles_deg):
        m = None
        for axis in self.order:  # the first letter acts first
            if angles_deg[axis]:
                t = axis_turn(axis, angles_deg[axis])
                m = t if m is None else product(t, m)
        if m is None:
            return IDENTITY
        return product(product(self.orientation, m), self.orientation_back)


class Rig:
    """The bones in their order of numbers: parents stand before their children."""

    def __init__(self):
        with open(os.path.join(FIGURES, "skeleton.json"), encoding="utf-8") as file:
            rows = json.load(file)["bones"]
        numbers = {row["name"]: row["number"] for row in rows}
        self.bones = [Bone(row, numbers) for row in rows]
        self.number = numbers
        for bone in self.bones:
            if bone.parent >= 0:
                bone.offset = minus(bone.center, self.bones[bone.parent].center)

    def bone(self, name):
        return self.bones[self.number[name]]

    def below(self, name):
        """Numbers of the bone and of everything that hangs on it."""
        found = {self.number[name]}
        for bone in self.bones:
            if bone.parent in found:
                found.add(bone.number)
        return sorted(found)


RIG = Rig()


def other_side(name):
    """lShin of rShin and the other way; names of the middle stay."""
    if name[0] in "lr" and name[1:2].isupper():
        return ("r" if name[0] == "l" else "l") + name[1:]
    return name


def hip_angles(turn):
    """X, Y, Z of the hip, whose order is YZX and whose axes are the figure's: m = X * Z * Y."""
    z = math.asin(max(-1.0, min(1.0, -turn[1])))
    if abs(turn[1]) > 0.999999:  # the first and the last axis fall together
        x = math.atan2(turn[6] * math.sin(z), turn[8])
        return (math.degrees(x), 0.0, math.degrees(z))
    x = math.atan2(turn[7], turn[4])
    y = math.atan2(turn[2], turn[0])
    return tuple(math.degrees(angle) for angle in (x, y, z))
