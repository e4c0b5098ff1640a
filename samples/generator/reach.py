"""Turns what a pose asks for into angles: legs with the hip's place, arms, the eyes' direction."""

import math

from .flesh import ARMS, BALLS, LEGS, balls_of
from .pose import (APART_WEIGHT, ARM_CHANNELS, ARM_STARTS, AXIS_WEIGHT, ELBOW_REACH_CM,
                   ELBOW_WEIGHT, FLOOR_WEIGHT, LEG_CHANNELS)
from .rig import (RIG, axis_turn, dot, hip_angles, length, minus, plus, product, scaled, transposed,
                  turned)
from .solver import minimise

LEG_CM = 83.4  # from the hip joint to the ankle, stretched
LEG_BONES = ["ThighBend", "ThighTwist", "Shin", "Foot", "Metatarsals", "Toe"]
ARM_BONES = ["Collar", "ShldrBend", "ShldrTwist", "ForearmBend", "ForearmTwist", "Hand", "Carpal2",
             "Mid1", "Mid2", "Mid3"]
FINGER_SHARES, FINGER_CM = (1.0, 0.8, 0.6, 0.4, 0.2, 0.0, -0.2, -0.4), 0.3
TRUNK_BONES = ["hip", "pelvis", "abdomenLower", "abdomenUpper", "chestLower", "chestUpper",
               "lPectoral", "rPectoral", "neckLower", "neckUpper", "head"]


def _numbers(sides, bones):
    return sorted(RIG.number[side + bone] for side in sides for bone in bones)


class Channel:
    """One number the solver may change: a bone's angle or a part of the hip's place."""

    def __init__(self, pose, bone, axis, cost):
        self.pose, self.cost = pose, cost
        self.values = pose.shift if bone is None else pose.angles[RIG.number[bone]]
        self.axis = axis
        self.limits = (-300.0, 300.0) if bone is None else RIG.bone(bone).limits[axis]
        self.liked = pose.hip_goal[axis] if bone is None else self.values[axis]

    def get(self):
        return self.values[self.axis]

    def set(self, value):
        self.values[self.axis] = value


def _channels(pose, side, rows):
    return [Channel(pose, side + bone, axis, cost) for bone, axis, cost in rows]


def goal_errors(pose, side, goals, errors):
    for goal in goals:
        kind = goal[0]
        if kind == "point":
            number = RIG.number[side + goal[1]]
            at = goal[3]
            if len(goal) > 5 and goal[5]:
                at = pose.place(goal[5], at)
            off = minus(pose.point(number, goal[2]), at)
            errors.extend(scaled(off, goal[4]))
        elif kind == "way":
            number = RIG.number[side + goal[1]]
            wanted = goal[3]
            if len(goal) > 4 and goal[4]:
                wanted = turned(pose.R[RIG.number[goal[4]]], wanted)
            errors.extend(scaled(minus(turned(pose.R[number], goal[2]), wanted), AXIS_WEIGHT))
        elif kind == "frame":
            m = pose.R[RIG.number[side + goal[1]]]
            errors.extend((a - b) * AXIS_WEIGHT for a, b in zip(m, goal[2]))
        elif kind == "elbow":
            wanted = goal[1]
            if goal[2]:
                wanted = turned(pose.R[RIG.number[goal[2]]], wanted)
            a, b = (pose.P[RIG.number[side + n]] for n in ("ShldrBend", "Hand"))
            middle = scaled(plus(a, b), 0.5)
            reach = dot(minus(pose.P[RIG.number[side + "ForearmBend"]], middle), wanted)
            errors.append((ELBOW_REACH_CM - reach) * ELBOW_WEIGHT)
        elif kind == "knee":
            a, b = (pose.P[RIG.number[side + n]] for n in ("ThighBend", "Foot"))
            middle = scaled(plus(a, b), 0.5)
            reach = dot(minus(pose.P[RIG.number[side + "Shin"]], middle), goal[1])
            errors.append((ELBOW_REACH_CM - reach) * ELBOW_WEIGHT)


def _floor_errors(pose, balls, errors):
    for ball in balls:
        deep = ball.radius - 0.3 - pose.ball(ball)[1]
        errors.append(deep * FLOOR_WEIGHT if deep > 0 else 0.0)


def _apart_errors(pose, pairs, errors):
    where = {}
    for a, b in pairs:
        for ball in (a, b):
            if ball not in where:
                where[ball] = pose.ball(ball)
        deep = a.radius + b.radius - 0.8 - length(minus(where[a], where[b]))
        errors.append(deep * APART_WEIGHT if deep > 0 else 0.0)


def _solve(pose, channels, goals, balls, pairs, bones, rounds):
    def errors(x):
        for channel, value in zip(channels, x):
            channel.set(value)
        pose.update(bones)
        out = [(v - c.liked) * c.cost for c, v in zip(channels, x)]
        for side, told in goals:
            goal_errors(pose, side, told, out)
        _floor_errors(pose, balls, out)
        _apart_errors(pose, pairs, out)
        return out

    x, cost = minimise(errors, [c.get() for c in channels], [c.limits for c in channels], rounds)
    return x, cost


def _leg_pairs():
    left, right = balls_of(("thigh", "shin", "foot"), "l"), balls_of(("thigh", "shin", "foot"), "r")
    # The thighs' upper ends are one body.
    return [(a, b) for a in left for b in right if not (a.part == b.part == "thigh")]


def _arm_pairs(side):
    arm = balls_of(("forearm", "hand"), side)
    body = balls_of(("trunk", "bust", "head", "neck", "thigh", "shin"))
    return [(a, b) for a in arm for b in body]


def _start_leg(pose, side):
    """Bends the leg about as far as its ankle is near, with the knee to the front."""
    pose.update()
    ankle = RIG.number[side + "Foot"]
    told = [g[3] for g in pose.leg_goals[side] if g[0] == "point" and g[1] == "Foot"]
    if not told:
        return
    thigh = RIG.number[side + "ThighBend"]
    away = minus(told[0], pose.P[thigh])
    near = min(length(away) / LEG_CM, 0.995)
    knee = 180.0 - 2.0 * math.degrees(math.asin(near))
    # The ankle's way in the pelvis: how far to the front of straight down.
    in_pelvis = turned(transposed(pose.R[RIG.number["pelvis"]]), away)
    front = math.degrees(math.atan2(in_pelvis[2], -in_pelvis[1]))
    if front < -120:
        front += 360
    pose.angles[thigh][0] = max(-112.0, min(30.0, -front - knee / 2.0))
    pose.angles[RIG.number[side + "Shin"]][0] = min(max(knee, 4.0), 150.0)


def solve_legs(pose, rounds=60):
    """Both legs and the hip's place; a leg without goals keeps its angles."""
    sides = [side for side in "lr" if pose.leg_goals[side]]
    if not sides:
        pose.shift[:] = pose.hip_goal
        return
    channels = [Channel(pose, None, axis, pose.hip_free[axis]) for axis in range(3)]
    pose.shift[:] = pose.hip_goal
    for side in sides:
        _start_leg(pose, side)
        channels += _channels(pose, side, LEG_CHANNELS)
    for channel in channels[3:]:
        channel.liked = 0.0
    goals = [(side, pose.leg_goals[side]) for side in sides]
    bones = [0, 1] + _numbers("lr", LEG_BONES)
    _solve(pose, channels, goals, balls_of(LEGS), _leg_pairs(), bones, rounds)


def _start_arm(pose, side, start):
    y, z, twist, elbow = start
    pose.side(side, "ShldrBend", None, y, z)
    pose.side(side, "ShldrTwist", twist)
    pose.side(side, "ForearmBend", None, elbow)
    for bone in ("Collar", "Hand", "ForearmTwist"):
        pose.angles[RIG.number[side + bone]][:] = [0.0, 0.0, 0.0]


def solve_arm(pose, side, rounds=45):
    if not pose.arm_goals[side]:
        return
    bones = _numbers(side, ARM_BONES)
    best = None
    for start in ARM_STARTS:
        _start_arm(pose, side, start)
        channels = _channels(pose, side, ARM_CHANNELS)
        for channel in channels:
            channel.liked = 0.0
        x, cost = _solve(pose, channels, [(side, pose.arm_goals[side])], balls_of(ARMS, side),
                         _arm_pairs(side), bones, rounds)
        if best is None or cost < best[0]:
            best = (cost, x, channels)
    for channel, value in zip(best[2], best[1]):
        channel.set(value)


def solve_on_hands(pose, rounds=60):
    """Arms, legs that have goals, and the hip's place at once: hands carry the body."""
    channels = [Channel(pose, None, axis, pose.hip_free[axis]) for axis in range(3)]
    pose.shift[:] = pose.hip_goal
    goals = []
    for side in "lr":
        if pose.arm_goals[side]:
            rows = _channels(pose, side, ARM_CHANNELS)
            goals.append((side, pose.arm_goals[side]))
            channels += rows
        if pose.leg_goals[side]:
            channels += _channels(pose, side, LEG_CHANNELS)
            goals.append((side, pose.leg_goals[side]))
    bones = sorted([RIG.number[b] for b in TRUNK_BONES] + _numbers("lr", LEG_BONES + ARM_BONES))
    _solve(pose, channels, goals, BALLS, [], bones, rounds)


def lowest(pose, parts=None):
    """Height of the lowest point of the body."""
    balls = BALLS if parts is None else balls_of(parts)
    return min(pose.ball(ball)[1] - ball.radius for ball in balls)


def rest_on_floor(pose, sink=0.6):
    """Lets the body down until it touches, trunk and head first; flesh gives a little."""
    pose.shift[:] = pose.hip_goal
    pose.update()
    pose.shift[1] -= lowest(pose, ("trunk", "shoulder", "head", "bust")) + sink
    pose.hip_goal = tuple(pose.shift)
    pose.hip_free = (4.0, 4.0, 4.0)


def lay_fingers(pose):
    """Opens the fingers that would go through the floor, as far as that helps."""
    for finger in [s + f for s in "lr" for f in ("Index", "Mid", "Ring", "Pinky")]:
        joints = [RIG.bone(finger + str(i)) for i in (1, 2, 3)]
        curled = [pose.angles[joint.number][2] for joint in joints]
        for share in FINGER_SHARES:
            for joint, angle in zip(joints, curled):
                low, high = joint.limits[2]
                pose.angles[joint.number][2] = min(max(angle * share, low), high)
            pose.update([joint.number for joint in joints])
            if min(pose.place(j.name, j.end)[1] for j in joints) > FINGER_CM:
                break


def turn(pose, heading):
    """The solved figure about the world's upright axis, to its left."""
    about = axis_turn(1, heading)
    pose.angles[0][:] = hip_angles(product(about, pose.R[0]))
    pose.shift[:] = turned(about, pose.shift)
    pose.update()


def solve(pose, lie=False, on_hands=False, ground=False, heading=0):
    pose.update()
    if lie:
        rest_on_floor(pose)
    if on_hands:
        solve_on_hands(pose)
    else:
        solve_legs(pose)
        pose.update()
        for side in "lr":
            solve_arm(pose, side)
    pose.update()
    if ground:
        pose.shift[1] -= lowest(pose) + 0.3
        pose.update()
    lay_fingers(pose)
    if heading:
        turn(pose, heading)
    return pose
