// names.js scan|browse - paths in many scripts, through a scan, a restart and browsing.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

// One folder and one file each, all in the order of a figure's bends. The last is written with
// combining marks, the one before it with letters that have them built in.
var NAMES = ["姿勢集/座る 一", "Позы/Стоя на мосту", "Haltung/Fußbank", "ποζα/όρθια", "😀/wave 👋",
    "a \"quoted\" name/a", "back\\slash\\/b", "line\nend/c",
    "caf\u00e9/d\u00e9j\u00e0 vu", "cafe\u0301/de\u0301ja\u0300 vu"];
var library = {};
NAMES.forEach(function (name, i) {
    library[CONTENT + "/" + name + ".duf"] = poseOf(i, "upright");
});

if (args[0] == "scan") {
    for (var path in library)
        writePreset(path, library[path]);
    eq(scan(), "Success! Indexed pose files: " + NAMES.length);
}
var entries = readIndexFile();
eq(entries.length, NAMES.length);
entries.forEach(function (entry) {
    assert(entry.path in library, "'" + entry.path + "' is one of the library");
});

click(1);
click(100);
press("first", 200, "middle");
entries.forEach(function (entry, i) {
    eq(label()[0], fileName(entry.path).slice(0, -4));
    eq(counter(), "POSE " + (i + 1) + " of " + entries.length);
    wears(library[entry.path], entry.path);
    press("the folder", 220, "left", 0);
    eq(Bench.browsedFolders().slice(-1)[0] + "/", entry.path.replace(/[^\/]*$/, ""));
    MainWindow.getPaneMgr().showPane(PANE);
    press("next", 201, "left");
});

if (args[0] == "scan") {
    press("first", 200, "middle");
    press("a favourite", 213, "left", 0);
    click(202);
    click(202);
    Bench.expect({ file: "保存 ё e\u0301" });
    click(13);
    Bench.expect({ title: "Quillon", button: "Yes" });
    Bench.expect({ title: "Info", button: "OK" });
    click(14);
    var custom = readIndexFile().filter(function (e) { return /Quillon\/custom/.test(e.path); });
    eq(custom.map(function (e) { return fileName(e.path); }), ["保存 ё e\u0301.duf"], "found again");
    click(1);
    click(100);
    click(201, "middle");
    Bench.expect({ title: "Quillon - Delete Custom Pose", button: "Yes",
        text: "Pose named '保存 ё e\u0301' will be permanently deleted. Are you sure?" });
    click(220);
    eq(readBytes(CUSTOM_FOLDER + "保存 ё e\u0301.duf"), null, "deleted");
} else {
    eq(readRankFile()[entries[0].hash], 1, "the favourite after a restart");
}
quit(0);
