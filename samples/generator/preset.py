"""Writes poses as preset files in the layout that the host writes: tabs, four lines an entry, bones
from the leaves to the hip, then the figure itself, then the controls."""

import json
import os
import struct
import zlib

from .rig import FIGURES, RIG

DATE = "2024-05-01T08:00:00Z"
TRANSLATION = ["translation/x", "translation/y", "translation/z"]
ROTATION = ["rotation/x", "rotation/y", "rotation/z"]
SCALE = ["scale/general", "scale/x", "scale/y", "scale/z"]


def _controls():
    names = []
    for file in ("body_links.json", "face_links_g8.json"):
        with open(os.path.join(FIGURES, file), encoding="utf-8") as text:
            names += [row["name"] for row in json.load(text)["controls"]]
    return names


CONTROLS = _controls()


def number(value):
    text = "%.7g" % value
    return "0" if text == "-0" else text


def document(asset_id, entries, kind="preset_pose"):
    """The whole text; entries: pairs of url and value."""
    blocks = ["\t\t\t{\n\t\t\t\t\"url\" : \"%s\",\n\t\t\t\t\"keys\" : [ [ 0, %s ] ]\n\t\t\t}"
              % (url, number(value)) for url, value in entries]
    return ("{\n\t\"file_version\" : \"0.6.0.0\",\n\t\"asset_info\" : {\n"
            "\t\t\"id\" : \"%s\",\n\t\t\"type\" : \"%s\",\n"
            "\t\t\"contributor\" : {\n\t\t\t\"author\" : \"Brannoc\",\n\t\t\t\"email\" : \"\",\n"
            "\t\t\t\"website\" : \"\"\n\t\t},\n\t\t\"revision\" : \"1.0\",\n"
            "\t\t\"modified\" : \"%s\"\n\t},\n\t\"scene\" : {\n\t\t\"animations\" : [\n%s\n"
            "\t\t]\n\t}\n}" % (asset_id.replace(" ", "%20"), kind, DATE, ",\n".join(blocks)))


def entries_of(shot, female, with_scale=False, figure="@selection"):
    """Pairs of url and value of a whole figure; shot: a Shot."""
    out = []
    for bone in reversed(RIG.bones):
        base = "name://%s/%s:?" % (figure, bone.name)
        shift = shot.shift if bone.number == 0 else (0, 0, 0)
        out += [(base + t + "/value", v) for t, v in zip(TRANSLATION, shift)]
        out += [(base + r + "/value", v) for r, v in zip(ROTATION, shot.angles[bone.number])]
        if with_scale:
            out += [(base + s + "/value", 1) for s in SCALE]
    base = "name://%s:?" % figure
    out += [(base + c + "/value", 0) for c in TRANSLATION + ROTATION]
    if with_scale:
        out += [(base + s + "/value", 1) for s in SCALE]
    for name in CONTROLS:
        if female or "breast" not in name.lower():
            out.append(("name://%s#%s:?value/value" % (figure, name), shot.controls.get(name, 0)))
    return out


class Shot:
    """A pose as numbers, rounded as they stand in the file."""

    def __init__(self, angles, shift, controls):
        self.angles = [tuple(round(a, 2) + 0.0 for a in each) for each in angles]
        self.shift = tuple(round(v, 2) + 0.0 for v in shift)
        self.controls = dict(controls)


def gzipped(data):
    """The same bytes on every machine with this zlib: no name, no time."""
    packer = zlib.compressobj(9, zlib.DEFLATED, -15)
    body = packer.compress(data) + packer.flush()
    head = b"\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\xff"
    return head + body + struct.pack("<II", zlib.crc32(data), len(data) & 0xFFFFFFFF)
