"""Files that lie among the poses of a content directory and are none, or are none to browse."""

import os

from .preset import document, entries_of, gzipped
from .products import FEMALE, MALE, PAIR_FILES, PAIR_FOLDERS
from .rig import RIG

POSES = "People/%s/Poses/Brannoc/"

MATERIAL = """{
	"file_version" : "0.6.0.0",
	"asset_info" : {
		"id" : "/People/Genesis%208%20Female/Materials/Brannoc/Dance%20Floor/Suit%20Red.duf",
		"type" : "preset_material",
		"contributor" : {
			"author" : "Brannoc",
			"email" : "",
			"website" : ""
		},
		"revision" : "1.0",
		"modified" : "2024-05-01T08:00:00Z"
	},
	"scene" : {
		"animations" : [
			{
				"url" : "name://@selection#materials/Suit:?diffuse/value",
				"keys" : [ [ 0, [ 0.62, 0.11, 0.13 ] ] ]
			}
		]
	}
}"""

SCENE = """{
	"file_version" : "0.6.0.0",
	"asset_info" : {
		"id" : "/Scenes/Brannoc/Empty%20Studio.duf",
		"type" : "scene",
		"contributor" : {
			"author" : "Brannoc",
			"email" : "",
			"website" : ""
		},
		"revision" : "1.0",
		"modified" : "2024-05-01T08:00:00Z"
	},
	"scene" : {
		"presentation" : {
			"type" : "",
			"label" : "Empty Studio",
			"description" : "",
			"icon_large" : ""
		}
	}
}"""

README = """Everyday Stands
===============

Load and select a Genesis 8 Female, then double-click a pose. Files with "(mirrored)" in their
names have left and right exchanged.
"""

# Bones of an older generation and where they stand in a simple pose.
OLD_BONES = ["rBigToe", "lBigToe", "rToe", "lToe", "rFoot", "lFoot", "rShin", "lShin", "rThigh",
             "lThigh", "rPinky1", "lPinky1", "rHand", "lHand", "rForeArm", "lForeArm", "rShldr",
             "lShldr", "head", "neck", "chest", "abdomen2", "abdomen", "pelvis", "hip"]


def _only(shot, keep):
    return [(url, value) for url, value in entries_of(shot, True)
            if any("/" + name + ":" in url for name in keep)]


def _older(bones):
    return [("name://@selection/%s:?rotation/%s/value" % (bone, axis), value)
            for bone in bones for axis, value in zip("xyz", (4, 0, -2))]


def _couple(first, second):
    """Both figures at once: urls that name them."""
    entries = []
    for figure, (shot, female) in (("Genesis8Female", first), ("Genesis8Male", second)):
        entries += [(u, v) for u, v in entries_of(shot, female, figure=figure) if v]
    return entries


def _raw(content, path, data):
    file = os.path.join(content, *path.split("/"))
    os.makedirs(os.path.dirname(file), exist_ok=True)
    with open(file, "wb") as out:
        out.write(data)


def _write_parts(writer, shots):
    fist = [b.name for b in RIG.bones
            if b.name[1:].startswith(("Thumb", "Index", "Mid", "Ring", "Pinky"))]
    path = POSES % FEMALE + "Dojo/Hands only, fists.duf"
    writer.put(path, document("/" + path, _only(shots["Boxing guard"], fist)).encode())
    face = [("name://@selection#%s:?value/value" % name, value) for name, value in (
        ("eCTRLMouthSmile", 0.8), ("eCTRLCheekFlex", 0.4), ("eCTRLEyesSquint", 0.2))]
    path = "People/%s/Expressions/Brannoc/Big Smile.duf" % FEMALE
    writer.put(path, document("/" + path, face).encode())
    path = "People/Genesis 2 Female/Poses/Brannoc/Old Times/At Ease.duf"
    writer.put(path, document("/" + path, _older(OLD_BONES)).encode())
    path = "People/Genesis 3 Female/Poses/Brannoc/Newer Times/At Ease.duf"
    newer = ["rHeel", "lHeel"] + [b.replace("abdomen2", "abdomenUpper") for b in OLD_BONES]
    writer.put(path, document("/" + path, _older(newer)).encode())


def _write_couples(writer, shots):
    """What the content library shows of the pairs: one preset for both figures."""
    by_file = {(number, file): name for number, file, name in PAIR_FILES}
    for (number, file), name in by_file.items():
        if not file.endswith("f0"):
            continue
        folder, prefix = PAIR_FOLDERS[number]
        partner = by_file[(number, file.replace("f0", "m0"))]
        for figure in (FEMALE, MALE):
            path = "%s%s/%s %s/Couple.duf" % (POSES % figure, folder, prefix, file[:3])
            entries = _couple((shots[name], True), (shots[partner], False))
            writer.put(path, document("/" + path, entries, "preset_hierarchical_pose").encode())


def write(content, writer, shots):
    writer.put("People/%s/Materials/Brannoc/Dance Floor/Suit Red.duf" % FEMALE,
               MATERIAL.encode(), plain=True)
    writer.put(POSES % FEMALE + "Dance Floor/Suit Red.duf", MATERIAL.encode())
    writer.put("Scenes/Brannoc/Empty Studio.duf", SCENE.encode())
    _write_parts(writer, shots)
    _write_couples(writer, shots)
    whole = document("/x.duf", entries_of(shots["Robot"], True)).encode()
    _raw(content, POSES % FEMALE + "Dance Floor/Broken download.duf", gzipped(whole)[:1400])
    _raw(content, POSES % MALE + "Night Out/Half a file.duf", whole[:9000])
    _raw(content, POSES % MALE + "Night Out/Nothing.duf", b"")
    _raw(content, POSES % FEMALE + "Everyday Stands/readme.txt", README.encode())
