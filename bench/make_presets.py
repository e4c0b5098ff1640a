#!/usr/bin/env python3
"""Writes many small presets of whole bodies for a scan to go through: make_presets.py FOLDER COUNT.

True presets in the host's layout, of the bones that a signature and the look for a whole body need.
Odd ones are plain, even ones compressed; a half each is in folders of women and of men, 256 a folder.
Of eight poses about two are close to an earlier one, one is an earlier one's mirror and one a copy
of it; the others are random. The same count gives the same bytes.
"""

import os
import random
import sys

sys.dont_write_bytecode = True
ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(ROOT, "samples"))

from generator.preset import document, gzipped  # noqa: E402
from generator.rig import other_side  # noqa: E402

MOVED = ["lShin", "rShin", "lThighBend", "rThighBend", "pelvis", "lForearmBend", "rForearmBend",
         "lShldrBend", "rShldrBend", "lCollar", "rCollar", "chestUpper", "chestLower",
         "abdomenUpper", "abdomenLower", "hip"]
RESTING = ["lBigToe", "rBigToe", "lPinky1", "rPinky1", "head", "neckLower", "lHand", "rHand"]
REACH_DEG = 60
NEAR_DEG = 4
A_FOLDER = 256
EARLIER = 4096  # how far back copies, mirrors and neighbours look


def random_pose(dice):
    return {bone: tuple(round(dice.uniform(-REACH_DEG, REACH_DEG), 2) for _ in "xyz")
            for bone in MOVED}


def near(pose, dice):
    return {bone: tuple(round(each + dice.uniform(-NEAR_DEG, NEAR_DEG), 2) for each in angles)
            for bone, angles in pose.items()}


def mirrored(pose):
    return {other_side(bone): (x, -y, -z) for bone, (x, y, z) in pose.items()}


def text_of(pose, asset_id):
    entries = []
    for bone in RESTING + MOVED:
        for axis, value in zip("xyz", pose.get(bone, (0, 0, 0))):
            entries.append(("name://@selection/%s:?rotation/%s/value" % (bone, axis), value))
    return document(asset_id, entries).encode()


def next_text(number, poses, texts, dice):
    """The bytes of this preset; poses and texts are the last ones."""
    kind = number % 8
    if kind == 7 and texts:
        return texts[dice.randrange(len(texts))]
    if kind in (3, 5) and poses:
        pose = near(poses[dice.randrange(len(poses))], dice)
    elif kind == 6 and poses:
        pose = mirrored(poses[dice.randrange(len(poses))])
    else:
        pose = random_pose(dice)
        poses.append(pose)
    return text_of(pose, "/Poses/%05d.duf" % number)


def main(folder, count):
    dice = random.Random(65536)
    poses, texts = [], []
    for number in range(count):
        sex = "Female" if number // A_FOLDER % 2 == 0 else "Male"
        below = os.path.join(folder, "People", "Genesis 8 " + sex, "Poses",
                             "Set %03d" % (number // A_FOLDER))
        os.makedirs(below, exist_ok=True)
        text = next_text(number, poses, texts, dice)
        texts.append(text)
        del poses[:-EARLIER], texts[:-EARLIER]
        with open(os.path.join(below, "pose %05d.duf" % number), "wb") as file:
            file.write(text if number % 2 else gzipped(text))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(sys.argv[1], int(sys.argv[2]))
