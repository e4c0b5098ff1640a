#!/usr/bin/env python3
"""Makes the demo content directory samples/content from the poses told in samples/generator.

    samples/make_samples.py            writes the folder anew and checks it
    samples/make_samples.py --notes    also tells of places that a pose could not quite reach
    samples/make_samples.py --check    only checks what is there

Needs nothing but Python 3 and host/figures; the same input gives the same bytes. Neither the build
nor the tests run it: its output is kept beside it.
"""

import importlib
import os
import random
import shutil
import sys
import urllib.parse
import zlib

sys.dont_write_bytecode = True
HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)

from generator import book, check, extras, products, scan  # noqa: E402
from generator.preset import Shot, document, entries_of, gzipped  # noqa: E402
from generator.products import FEMALE  # noqa: E402
from generator.rig import RIG, other_side  # noqa: E402

CONTENT = os.path.join(HERE, "content")
FILES = ["standing", "moving", "seated", "kneeling", "lying", "sides", "upside_down", "fighting",
         "dancing", "pairs"]
MALE_SCALE = 1.06  # how much taller the male figure is
LEAST_PER_CATEGORY = 8


def load_poses(notes):
    """Every pose as a Shot, and the names that each file of poses tells."""
    told = {}
    for name in FILES:
        before = set(book.POSES)
        importlib.import_module("generator.poses_" + name)
        told[name] = [each for each in book.POSES if each not in before]
    shots = {}
    for name, entry in book.POSES.items():
        pose = entry.solved()
        for warning in check.warnings(pose) if notes else []:
            print("note: %s: %s" % (name, warning))
        shots[name] = Shot(pose.angles, pose.shift, pose.controls)
    return shots, told


def mirrored(shot):
    angles = [None] * len(RIG.bones)
    for bone in RIG.bones:
        x, y, z = shot.angles[bone.number]
        angles[RIG.number[other_side(bone.name)]] = (x, -y, -z)
    x, y, z = shot.shift
    controls = {}
    for name, value in shot.controls.items():
        swap = {"L": "R", "R": "L"}.get(name[-1]) if name.startswith("eCTRLEyesClosed") else None
        controls[name[:-1] + swap if swap else name] = value
    return Shot(angles, (-x, y, z), controls)


def varied(shot, name):
    """A few degrees off in the upper body and the head, within the limits."""
    dice = random.Random(zlib.crc32(name.encode()))
    angles = [list(each) for each in shot.angles]
    for bone in RIG.bones:
        if bone.name[1:] in ("ShldrBend", "ForearmBend", "Hand") or bone.name in (
                "abdomenUpper", "chestLower", "neckLower", "head"):
            for axis, (low, high) in enumerate(bone.limits):
                if low < high:
                    value = angles[bone.number][axis] + dice.uniform(-7, 7)
                    angles[bone.number][axis] = min(max(value, low), high)
    return Shot(angles, shot.shift, shot.controls)


def raised(shot):
    """The same for the male figure's longer legs."""
    return Shot(shot.angles, [v * MALE_SCALE for v in shot.shift], shot.controls)


def asset_id(path):
    return "/" + urllib.parse.quote(path)


class Writer:
    def __init__(self):
        self.written = {}  # path below content: bytes before packing

    def put(self, path, data, plain=False):
        file = os.path.join(CONTENT, *path.split("/"))
        os.makedirs(os.path.dirname(file), exist_ok=True)
        if path in self.written:
            raise ValueError("two files called " + path)
        self.written[path] = data
        with open(file, "wb") as out:
            out.write(data if plain else gzipped(data))

    def pose(self, path, shot, female, plain=False, with_scale=False):
        if not female:
            shot = raised(shot)
        text = document(asset_id(path), entries_of(shot, female, with_scale))
        self.put(path, text.encode("utf-8"), plain)


def product_path(figure, product, name):
    return "People/%s/Poses/Brannoc/%s/%s.duf" % (figure, product, name)


def taken_by(figure, name):
    if figure == FEMALE:
        return name not in products.MEN_ONLY
    return name in products.MEN_ONLY or name in products.ALSO_MEN


def write_products(writer, shots, told):
    for figure, shelf in products.PRODUCTS.items():
        for product, sources in shelf.items():
            for name in [n for source in sources.split() for n in told[source]]:
                if not taken_by(figure, name):
                    continue
                key = (product, name)
                more = {"female": figure == FEMALE, "with_scale": key in products.WITH_SCALE}
                writer.pose(product_path(figure, product, name), shots[name],
                            plain=key in products.PLAIN, **more)
                if name in products.MIRRORED[figure]:
                    writer.pose(product_path(figure, product, name + " (mirrored)"),
                                mirrored(shots[name]), **more)
                if name in products.VARIED[figure]:
                    writer.pose(product_path(figure, product, name + " B"),
                                varied(shots[name], name), **more)


def write_copies(writer):
    for product, figure, name, plain in products.COPIES:
        writer.put(product_path(figure, products.SAMPLER, name),
                   writer.written[product_path(figure, product, name)], plain)


def write_pairs(writer, shots):
    for number, file, name in products.PAIR_FILES:
        female = file[3] == "f"
        path = "data/Brannoc/poses/%s/%s" % (number, file)
        writer.pose(path + ".duf", shots[name], female)
        if file in products.PAIR_MIRRORED:
            writer.pose(path + " mirror.duf", mirrored(shots[name]), female)
        if file in products.PAIR_NO_EXPRESSION:
            bare = Shot(shots[name].angles, shots[name].shift, {})
            writer.pose(path + " noexpression.duf", bare, female)


def write_old(writer, shots):
    for name, file in products.OLD_POSES:
        path = "Poses/%s/%s" % (products.OLD, file)
        writer.put(path, document(asset_id(path), entries_of(shots[name], False)).encode("utf-8"))


def content_files():
    """Paths below content and their bytes, unpacked, of all that a scan looks at."""
    found = []
    for folder, _, names in os.walk(CONTENT):
        for name in names:
            if not name.lower().endswith(".duf"):
                continue
            path = os.path.join(folder, name)
            with open(path, "rb") as file:
                data = file.read()
            if data[:2] == b"\x1f\x8b":
                data = zlib.decompressobj(31).decompress(data)
            found.append((os.path.relpath(path, CONTENT).replace(os.sep, "/"), data))
    return sorted(found)


def report(result):
    for phase, dropped in sorted(result.dropped.items()):
        print("phase %d drops %d" % (phase, len(dropped)))
        for path, why in dropped:
            print("    %s: %s" % (path, why))
    print("%d poses remain" % len(result.poses))
    for kind, count in enumerate(result.counts()):
        women = sum(scan.matches(p[2], kind, scan.Signature([scan.WHOLE] * 10))
                    for p in result.poses if p[1] == 8)
        print("    %-20s %3d (%d of women)" % (scan.NAMES[kind], count, women))


def check_content():
    """False when a category is thin in one of several orders of finding the files."""
    files = content_files()
    report(scan.Scan(files))
    good = True
    for seed in range(4):
        order = list(files)
        random.Random(seed).shuffle(order)
        result = scan.Scan(order)
        counts = result.counts()
        print("order %d: %d poses, by category %s" % (seed, len(result.poses), counts))
        good = good and min(counts) >= LEAST_PER_CATEGORY
    size = sum(os.path.getsize(os.path.join(f, n)) for f, _, ns in os.walk(CONTENT) for n in ns)
    print("%d preset files, %d bytes in all" % (len(files), size))
    return good


def main():
    if "--check" not in sys.argv[1:]:
        shots, told = load_poses("--notes" in sys.argv[1:])
        shutil.rmtree(CONTENT, ignore_errors=True)
        writer = Writer()
        write_products(writer, shots, told)
        write_copies(writer)
        write_pairs(writer, shots)
        write_old(writer, shots)
        extras.write(CONTENT, writer, shots)
    return 0 if check_content() else 1


if __name__ == "__main__":
    sys.exit(main())
