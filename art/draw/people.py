"""The figures: a jointed body seen from the side and one seen from the front.

A standing body is 100 units high. Sizes of segments are shares of that height; radii give the flesh.
A body comes as layers, back to front: (path data, colour). Layers are set off from each other by a gap.
"""
from .shapes import FAR, INK, PLATE, chain, fill, flowing, polar, ring, solid

THIGH, SHIN, UPPER_ARM, FOREARM, HAND = 24.5, 22.5, 16, 13.5, 7.5


class Frame:
    """Places body units on the canvas: point(along, aside) from an origin, along a direction."""

    def __init__(self, origin, angle, scale, side=1):
        self.origin, self.angle, self.scale, self.side = origin, angle, scale, side

    def point(self, along, aside=0.0):
        p = polar(self.origin, self.angle, along * self.scale)
        return polar(p, self.angle + 90 * self.side, aside * self.scale)

    def knot(self, along, aside, radius):
        return (self.point(along, aside), radius * self.scale)


# ---- limbs, the same in both views -----------------------------------------------------------
def arm(shoulder, angles, scale, side, build=1.0):
    """angles: upper arm, forearm, hand. Returns path data."""
    upper = Frame(shoulder, angles[0], scale, side)
    fore = Frame(upper.point(UPPER_ARM), angles[1], scale, side)
    hand = Frame(fore.point(FOREARM), angles[2], scale, side)
    return chain(*flowing([
        upper.knot(0, 0, 4.4 * build), upper.knot(6, 0.2, 4.0 * build), upper.knot(12, 0, 3.3 * build),
        fore.knot(0, 0, 3.1), fore.knot(4, 0, 3.3 * build), fore.knot(FOREARM, 0, 2.1),
        hand.knot(3.2, 0, 2.7), hand.knot(HAND, 0.2, 1.6)]))


def leg_side(hip, angles, scale, side):
    """A leg seen from the side; angles: thigh, shin, foot. side: where the toes point."""
    thigh = Frame(hip, angles[0], scale, -side)
    shin = Frame(thigh.point(THIGH), angles[1], scale, -side)
    foot = Frame(shin.point(SHIN), angles[2], scale, side)
    return chain(*flowing([
        thigh.knot(0, 0, 7.2), thigh.knot(9, 0.2, 6.6), thigh.knot(18, 0, 5.2), thigh.knot(THIGH, 0, 4.5),
        shin.knot(7, -0.9, 4.5), shin.knot(14, -0.5, 3.5), shin.knot(SHIN - 1, 0, 2.6)])) + chain(
        shin.knot(SHIN - 2, 0, 2.7), foot.knot(-1.2, 1.2, 2.7), foot.knot(5, 1.2, 2.6),
        foot.knot(11, 2.0, 1.8))


def leg_front(hip, angles, scale, outward, build=1.0, thigh_seen=1.0):
    """A leg seen from the front; outward: +1 when the body's outer side lies clockwise. thigh_seen: the
    share of the thigh's length that remains when the knee comes towards the viewer."""
    length = THIGH * thigh_seen
    thigh = Frame(hip, angles[0], scale, outward)
    shin = Frame(thigh.point(length), angles[1], scale, outward)
    foot = Frame(shin.point(SHIN), angles[2], scale, outward)
    return chain(*flowing([
        thigh.knot(0, 0, 6.4 * build), thigh.knot(0.37 * length, 0.3, 5.9 * build),
        thigh.knot(0.73 * length, 0, 4.8 * build), thigh.knot(length, 0, 4.1 * build),
        shin.knot(7, 0.5, 4.3 * build), shin.knot(14, 0.2, 3.4 * build), shin.knot(SHIN - 1, 0, 2.6 * build),
        foot.knot(2, 0, 2.8 * build), foot.knot(6, 0, 3.0 * build)]))


# ---- the side view ---------------------------------------------------------------------------
def head_side(neck, angle, scale, side):
    """Profile: skull, brow, jaw and nose tell where the face looks."""
    head = Frame(neck, angle, scale, side)
    return (chain(head.knot(-3, -0.3, 3.6), head.knot(4, 0.2, 3.1))
            + chain(head.knot(9.9, -0.9, 6.6), head.knot(8.4, 1.9, 5.4), head.knot(3.8, 4.2, 2.5))
            + chain(head.knot(9.6, 5.0, 1.9), head.knot(7.2, 8.0, 1.0), head.knot(5.6, 5.2, 1.5)))


def side_body(hip, scale, pelvis, chest, head, legs, arms, side=1):
    """hip: the hip joint; pelvis, chest, head: directions in which those parts rise; legs, arms: near
    and far one as angle triples (None: hidden). side +1: the belly lies clockwise of the trunk."""
    low = Frame(hip, pelvis, scale, side)
    high = Frame(low.point(12), chest, scale, side)
    shoulder = high.point(15.5, -0.6)
    neck = high.point(20.5, -0.4)
    trunk = chain(*flowing([
        low.knot(-1.5, -1.6, 7.6), low.knot(3, -0.8, 7.8), low.knot(11, 0.2, 6.5), high.knot(4, 0.5, 7.0),
        high.knot(11, 0.6, 7.8), high.knot(16, -0.3, 6.2), high.knot(20, -0.5, 3.6)]))
    layers = []
    if arms[1]:
        layers.append((arm(shoulder, arms[1], scale, side), FAR))
    if legs[1]:
        layers.append((leg_side(low.point(0, 0.4), legs[1], scale, side), FAR))
    layers.append((trunk + head_side(neck, head, scale, side) + leg_side(hip, legs[0], scale, side), INK))
    if arms[0]:
        layers.append((arm(shoulder, arms[0], scale, side), INK))
    return layers


# ---- the front view --------------------------------------------------------------------------
BUILDS = {  # half widths: shoulders, ribs, waist, hips; flesh of arms and legs
    "plain": (9.2, 5.4, 4.0, 5.4, 1.0),
    "bold": (11.5, 6.8, 5.4, 6.4, 1.3),
}


def head_front(body, tilt=0.0):
    head = Frame(body.point(37), body.angle + tilt, body.scale, body.side)
    return (chain(body.knot(33, 0, 3.8), head.knot(5, 0, 3.2))
            + chain(head.knot(10.2, 0, 6.3), head.knot(7.8, 0, 6.0), head.knot(3.8, 0, 3.6)))


def trunk_front(body, build="plain"):
    shoulders, ribs, waist, hips, _ = BUILDS[build]
    half = [(31, shoulders - 0.4, 4.2), (24, ribs + 0.6, 4.9), (18, ribs - 0.6, 4.6), (11.5, waist, 4.3),
            (6, hips - 0.7, 4.8), (1.5, hips, 5.6)]
    right = flowing([body.knot(a, w, r) for a, w, r in half])
    left = flowing([body.knot(a, -w, r) for a, w, r in reversed(half)])
    slope = [body.knot(a, w, r) for a, w, r in ((31, -shoulders, 4.2), (33.8, 0, 4.6), (31, shoulders, 4.2))]
    return ring(*right, *left) + chain(*slope)


def front_body(hip, scale, legs, arms, up=-90, tilt=0.0, build="plain", colour=INK):
    """hip: the middle between the hip joints; legs, arms: the ones on the viewer's right (before
    turning), then the left one, as angle triples relative to a body that stands upright."""
    body = Frame(hip, up, scale)
    turn = up + 90
    shoulders, _, _, hips, flesh = BUILDS[build]

    def turned(angles):
        return [a + turn for a in angles]

    d = trunk_front(body, build) + head_front(body, tilt)
    for side, leg, limb in ((1, legs[0], arms[0]), (-1, legs[1], arms[1])):
        d += leg_front(body.point(0.5, side * hips), turned(leg), scale, -side, flesh)
        d += arm(body.point(31, side * shoulders), turned(limb), scale, side, flesh)
    return [(d, colour)]


def mirror_angles(angles):
    return tuple(180 - a for a in angles)


def both(angles):
    """The same limb on both sides."""
    return (angles, mirror_angles(angles))


def body_side_lying(origin, s):
    """Lying on the right side, seen from the front: head to the viewer's left, propped on a hand.
    origin: where the 112 x 112 field of this pose has its corner; s: 1 draws it 90 long."""

    def at(x, y):
        return (origin[0] + x * s, origin[1] + y * s)

    k = 0.8 * s
    upper = [(36, 51.5, 3.6), (43.5, 57, 4.2), (50.5, 62, 3.4), (57, 61, 4.4), (62.5, 61, 5.2)]
    lower = [(63, 76.6, 5.4), (55, 77.6, 4.4), (46.5, 76, 4.4), (38, 72.5, 4.4), (31.5, 66.5, 3.6)]
    trunk = ring(*[(at(x, y), r * s) for x, y, r in upper + lower])
    neck = Frame(at(32, 59), 225, k)
    head = chain(neck.knot(-3, 0, 4.0), neck.knot(5, 0, 3.2)) + chain(
        neck.knot(14.2, -1.2, 6.3), neck.knot(11.8, -0.9, 6.0), neck.knot(7.8, -0.2, 3.6))
    prop = arm(at(32, 66.5), (123, 258, 282), k, 1)
    low_leg = leg_front(at(63, 77), (4, 3, 10), k, 1, thigh_seen=0.72)
    top_leg = leg_front(at(62, 61.8), (44, 9, 22), k, -1, thigh_seen=0.74)
    top_arm = arm(at(35.9, 51.8), (64, 103, 118), k, 1)
    return [(prop, FAR), (trunk + head + low_leg, INK), (top_leg, INK), (trunk, None), (top_arm, INK)]


def painted(layers, gap=1.1, around=PLATE):
    """Layers back to front; a layer without colour closes gaps in the body below it."""
    return "".join(solid(d, colour, gap, around) if colour else fill(d, INK) for d, colour in layers)


def path_data(layers):
    return "".join(d for d, _ in layers)


# ---- poses that appear on several buttons ----------------------------------------------------
def standing(hip, scale, build="plain", colour=INK):
    return front_body(hip, scale, both((84, 89, 80)), both((71, 82, 86)), build=build, colour=colour)


def zero_pose(hip, scale, colour=INK):
    """Arms straight out, legs straight: every channel at zero."""
    return front_body(hip, scale, both((85, 90, 82)), both((2, 2, 2)), colour=colour)


def dancing(hip, scale, colour=INK):
    """The pose that stands for "a pose": one arm up, a hand on the hip, one leg bent."""
    return front_body(hip, scale, ((58, 112, 100), (97, 97, 130)), ((-42, -80, -70), (134, 40, 62)),
                      tilt=7, colour=colour)
