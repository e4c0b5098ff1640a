"""What is wrong with a pose: goals that were not reached, flesh in the floor or in other flesh."""

import math

from .flesh import BALLS
from .reach import goal_errors
from .rig import length, minus

GOAL_CM, DEEP_CM, FLOOR_CM = 3.0, 3.0, 1.6

# Parts that belong together whatever the pose.
NEIGHBOURS = {frozenset(pair) for pair in (
    ("trunk", "bust"), ("trunk", "shoulder"), ("bust", "shoulder"), ("trunk", "neck"),
    ("neck", "head"), ("neck", "shoulder"), ("trunk", "thigh"), ("thigh", "shin"),
    ("shin", "foot"), ("foot", "toe"), ("shoulder", "upper arm"), ("upper arm", "forearm"),
    ("forearm", "hand"), ("hand", "fingers"), ("trunk", "upper arm"), ("bust", "upper arm"),
    ("shoulder", "head"), ("trunk", "head"), ("neck", "upper arm"), ("bust", "head"),
)}


def _apart(a, b):
    """Whether two balls have to keep apart."""
    if a.part == b.part and (a.side == b.side or a.part in ("trunk", "bust", "head")):
        return False
    same_side = a.side == b.side or not a.side or not b.side
    if frozenset((a.part, b.part)) in NEIGHBOURS and (same_side or "trunk" in (a.part, b.part)):
        return False
    if a.part == b.part == "thigh":
        return False
    return "fingers" not in (a.part, b.part)


def _reached(pose, found):
    for goals in (pose.leg_goals, pose.arm_goals):
        for side in "lr":
            for goal in goals[side]:
                if goal[0] not in ("point", "way", "frame"):
                    continue
                errors = []
                goal_errors(pose, side, [goal], errors)
                off = math.sqrt(sum(e * e for e in errors))
                if off > GOAL_CM * (2 if goal[0] == "way" else 1):
                    found.append("%s%s %s off by %.1f" % (side, goal[1], goal[0], off))


def warnings(pose):
    found = []
    _reached(pose, found)
    worst = {}
    where = [pose.ball(ball) for ball in BALLS]
    for ball, at in zip(BALLS, where):
        deep = ball.radius - at[1]
        if deep > FLOOR_CM:
            key = ball.name() + " in the floor"
            worst[key] = max(worst.get(key, 0), deep)
    for i, a in enumerate(BALLS):
        for j in range(i):
            b = BALLS[j]
            deep = a.radius + b.radius - length(minus(where[i], where[j]))
            if deep > DEEP_CM and _apart(a, b):
                key = "%s in %s" % (a.name(), b.name())
                worst[key] = max(worst.get(key, 0), deep)
    found += ["%s %.1f" % item for item in sorted(worst.items())]
    return found
