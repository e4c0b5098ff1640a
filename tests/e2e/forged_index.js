// An index that names a file outside the custom library as one of its poses: the press that
// deletes custom poses leaves it alone.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

function save(name)
{
    Bench.expect({ file: name });
    click(13);
}

// ---- two poses of the library, one of which the index then takes for another file ---------------
var outside = CUSTOM_FOLDER.replace(/custom\/$/, "vict.duf");
save("sit.duf");
save("seven77.duf");
writePreset(outside, {});
var victim = readBytes(outside), index = readBytes(dataFile("poseIndex"));
var forged = index.replace("custom/seven77.duf", "custom/../vict.duf"); // of the same length
assert(forged != index && forged.length == index.length, "the path is forged");
writeBytes(dataFile("poseIndex"), forged);

Bench.restartPlugin();
Bench.resize(PANE, SIZE[0], SIZE[1]);
click(1);
click(100);
press("last", 201, "middle");
eq(label(), ["vict"]);
press("delete the forged one", 220, "left", 0); // and no box
eq(readBytes(outside), victim, "the file is there");
eq(readBytes(dataFile("poseIndex")), forged, "its entry is there");

// ---- a pose of the library still goes --------------------------------------------------------------
press("first", 200, "middle");
eq(label(), ["sit"]);
Bench.expect({ title: "Quillon - Delete Custom Pose", button: "Yes" });
command("delete", 1, 1, function () { click(220); });
eq(readBytes(CUSTOM_FOLDER + "sit.duf"), null, "it is gone");
eq(readBytes(outside), victim);
quit(0);
