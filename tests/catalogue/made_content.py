"""made_content.py - a content directory with a file for each thing that a catalogue can tell, and catalogues of it."""
import json
import os
import pathlib
import struct
import subprocess
import sys
import zlib

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "samples"))
from generator.preset import document  # noqa: E402

PROGRAM = os.environ.get("QUILLON_CATALOGUE", str(ROOT / "build/release/bin/quillon-catalogue"))
WHOLE_BODY = ("lBigToe", "lPinky1", "head")

# A name that would be more than text wherever it is taken for markup: its path holds "</script>".
EVIL_FOLDER = 'A"&lt;<'
EVIL_NAME = "script><img src=x onerror=hacked=1>"


def pose(number):
    """One of 48 poses that are neither mirrors of each other nor alike."""
    return {"lShin/x": 10 + 33 * (number % 4), "rShin/x": 15 + 35 * (number // 4 % 4),
            "hip/y": 20 + 40 * (number // 16 % 3), "hip/z": 30, "lShldrBend/y": -20, "lShldrBend/z": -25,
            "rShldrBend/z": -30}


def sitting():
    return {"lThighBend/x": -80, "rThighBend/x": -80, "lShin/x": 85, "rShin/x": 85, "lForearmBend/y": -30,
            "lShldrBend/z": -45, "rShldrBend/z": 40}


def mirrored(angles):
    """Left and right exchanged."""
    other = {"l": "r", "r": "l"}
    return {other.get(key[0], key[0]) + key[1:]: value if key.endswith("/x") else -value
            for key, value in angles.items()}


def pose_text(angles, marks=WHOLE_BODY, more=""):
    entries = [("name://@selection/%s:?rotation/x/value" % mark, 0) for mark in marks]
    entries += [("name://@selection/%s/value" % key.replace("/", ":?rotation/"), value)
                for key, value in angles.items()]
    return document("/pose.duf", entries) + more


def write(path, text):
    path = pathlib.Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")
    return path


def write_png(path, color, side=8, height=None):
    """A picture of one colour."""
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    rows = b"".join(b"\0" + bytes(color) * side for _ in range(height or side))
    pathlib.Path(path).write_bytes(
        b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", side, height or side, 8, 2, 0, 0, 0))
        + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def make_content(top):
    """The directories, in the order in which they are scanned: the first holds what later ones repeat."""
    first, second = pathlib.Path(top, "first"), pathlib.Path(top, "second")
    for number in (1, 2, 5, 36):
        write(first / "People/Female/Stand" / ("Stand %d.duf" % number), pose_text(pose(number)))
    write(first / "People/Female/Sit/On a chair.duf", pose_text(sitting()))
    write(first / "People/Male/Stand/Guard \u00e9lite.duf", pose_text(pose(9)))
    write(first / EVIL_FOLDER / (EVIL_NAME + ".duf"), pose_text(pose(17)))
    write(first / "data/Brannoc/poses/002/012f0.duf", pose_text(pose(22)))
    write_png(first / "People/Female/Stand/Stand 1.png", (220, 20, 30))
    write_png(first / "People/Female/Stand/Stand 2.duf.png", (20, 30, 220))
    (first / "People/Female/Stand/Stand 5.png").write_bytes(b"no picture at all")

    close = dict(pose(36), **{"lShin/x": pose(36)["lShin/x"] + 15})
    write(second / "copy of 1.duf", pose_text(pose(1)))
    write(second / "mirror of 36.duf", pose_text(mirrored(pose(36))))
    write(second / "close to 36.duf", pose_text(close))
    write(second / "data/Brannoc/poses/002/012f0 Mirror.duf", pose_text(pose(30)))
    write(second / "hand.duf", pose_text(pose(3), marks=("lThumb1",)))
    write(second / "older.duf", pose_text(pose(4), more="\n// rHeel"))
    write(second / "shape.duf", document("/shape.duf", [], "preset_shape"))
    write_png(second / "shape.png", (10, 200, 40))
    return [first, second]


def run(output, content, *options, check=True, **environment):
    """The finished process; stdout and stderr are texts."""
    command = [PROGRAM, str(output)]
    for directory in content:
        command += ["--content", str(directory)]
    done = subprocess.run(command + [str(each) for each in options], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          encoding="utf-8", env={**os.environ, **environment})
    assert not check or done.returncode == 0, done.stderr
    return done


def catalogue(output):
    return json.loads(pathlib.Path(output, "catalogue.json").read_text(encoding="utf-8"))


def djb2(data):
    value = 5381
    for byte in data:
        value = (value * 33 + byte) & 0xffffffff
    return value


def write_ranks(home, ranks, name="ranks"):
    """ranks: pairs of content hash and rank, 1 favourite, 2 hidden; into a home of posebench."""
    folder = pathlib.Path(home, "data/Brannoc/Quillon")
    folder.mkdir(parents=True, exist_ok=True)
    key = "%08x" % djb2(pathlib.Path(home).name.encode())
    records = b"".join(struct.pack("<iI", rank, content) for content, rank in ranks)
    (folder / ("%s_%s.dat" % (name, key))).write_bytes(struct.pack("<ii", 1, len(ranks)) + records)
