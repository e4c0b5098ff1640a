// The custom pose library and the folders of products, by real clicks: save, browse, delete,
// rescan, restart.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

var library = writeLibrary();
scan();
var installed = readIndexFile().length;

function forearm() { return figure.findBone("lForearmBend").getYRotControl(); }

// The figure with that bend, saved under the name.
function save(name, bendDeg)
{
    forearm().setValue(bendDeg);
    Bench.expect({ file: name });
    command("save '" + name + "'", 0, 1, function () { click(13); });
    near(forearm().getValue(), bendDeg, 1e-4, "saving leaves the pose alone");
}

function names()
{
    return readIndexFile().map(function (entry) { return fileName(entry.path); });
}

// ---- saving --------------------------------------------------------------------------------------
command("no file is chosen", 0, 1, function () {
    Bench.expect({ file: "" });
    click(13);
});
var dialog = Bench.dialogs().slice(-1)[0];
eq([dialog.kind, dialog.filter, dialog.directory + "/"],
    ["file", "Custom Pose Library Files (*.duf)", CUSTOM_FOLDER]);
eq(readIndexFile().length, installed, "cancelled: nothing is indexed");

save("one", -20);
eq(names().slice(installed), ["one.duf"], "the suffix is added, the pose comes last");
save("two.duf", -40);
save("Käthe ж 姿勢", -60);
eq(names().slice(installed), ["one.duf", "two.duf", "Käthe ж 姿勢.duf"]);
var before = readIndexFile();
// "two" would replace a file that the dialog has not asked about: it opens again with the whole name.
forearm().setValue(-80);
command("save 'two' over 'two.duf'", 0, 3, function () {
    Bench.expect({ file: "two" });
    Bench.expect({ button: "Save" });
    Bench.expect({ text: "two.duf already exists", button: "Yes" });
    click(13);
});
near(forearm().getValue(), -80, 1e-4, "saving leaves the pose alone");
var after = readIndexFile();
eq(after.length, before.length, "the entry of that name is refilled");
before.forEach(function (entry, i) {
    eq(after[i].path, entry.path);
    eq(after[i].hash == entry.hash, i != installed + 1, "hash of " + entry.path);
    eq(show(after[i].slots) == show(entry.slots), i != installed + 1, "signature of " + entry.path);
});
// A turn by 80 degrees, whatever its axis: the left forearm's slot is of the ten the ninth.
near(Math.abs(after[installed + 1].slots[8][3]), Math.cos(40 * Math.PI / 180), 1e-4);

// Elsewhere: indexed, but not of the custom library.
Bench.expect({ file: CONTENT + "/elsewhere.duf" });
click(13);
eq(names().slice(-1)[0], "elsewhere.duf");

var length = readIndexFile().length;

// ---- browsing ------------------------------------------------------------------------------------
click(1);
click(100);
press("last", 201, "middle");
eq(label(), ["elsewhere"]);
press("previous", 200, "left");
eq(label(), ["Käthe ж 姿勢"]);
near(forearm().getValue(), -60, 1e-3, "as it was saved");
press("previous", 200, "left");
near(forearm().getValue(), -80, 1e-3, "as it was saved again");
var ranks = readBytes(dataFile("ranks"));
["left", "right", "middle"].forEach(function (which) {
    press("rank of a custom pose, " + which, 213, which, 0);
});
eq(readBytes(dataFile("ranks")), ranks, "a custom pose cannot be given a rank");
Bench.move(PANE, 1, 1);
Bench.move(PANE, place(213)[0] * paneSize()[0] / 512, place(213)[1] * paneSize()[1] / 1024);
assert(shows("This is a Custom Library Pose"), "the tip of the rank button");
Bench.move(PANE, place(220)[0] * paneSize()[0] / 512, place(220)[1] * paneSize()[1] / 1024);
assert(shows("Delete current custom pose"), "the tip of the folder button");
// Without the custom library: the next other pose, wrapping.
press("without the custom library", 227, "left");
eq(label(), ["elsewhere"]);
eq(counter(), "POSE " + length + " of " + length);
press("with it", 227, "left");
press("only it", 224, "left");
press("first of it", 200, "middle");
eq(label(), ["one"]);
press("all", 224, "left");

// ---- deleting ------------------------------------------------------------------------------------
function remove(answer, steps)
{
    var title = label()[0];
    Bench.expect({ title: "Quillon - Delete Custom Pose", button: answer,
        text: "Pose named '" + title + "' will be permanently deleted. Are you sure?" });
    command("delete '" + title + "', " + answer, steps, 1, function () { click(220); });
    var box = Bench.dialogs().slice(-1)[0];
    eq([box.kind, box.icon, box.buttons, box.parentClass], ["message", "question", ["Yes", "No"], ""]);
}
var index = readBytes(dataFile("poseIndex"));
remove("No", 0);
eq(readBytes(dataFile("poseIndex")), index, "No changes nothing");
assert(readBytes(CUSTOM_FOLDER + "one.duf") !== null, "the file is there");
// A file that cannot be deleted keeps its entry.
Bench.failCall("unlink", 1);
remove("Yes", 1);
eq(readBytes(dataFile("poseIndex")), index, "it keeps its entry");
eq(label(), ["one"]);
// The next pose takes over.
remove("Yes", 1);
eq(readBytes(CUSTOM_FOLDER + "one.duf"), null, "the file is gone");
eq(names().slice(installed), ["two.duf", "Käthe ж 姿勢.duf", "elsewhere.duf"]);
eq(label(), ["two"]);
near(forearm().getValue(), -80, 1e-3, "the next pose is on the figure");
// From the last of all to the first.
press("previous", 200, "left");
press("next", 201, "left");
press("next", 201, "left");
eq(label(), ["Käthe ж 姿勢"]);
press("only the custom library", 224, "left");
remove("Yes", 1);
eq(label(), ["two"], "the next match, wrapping");
eq(counter(), "POSE " + (installed + 1) + " of " + (installed + 2));
remove("Yes", 0);
eq(counter(), NOTHING, "the last custom pose is gone");
press("all", 224, "left");

// ---- folders -------------------------------------------------------------------------------------
function openFolder()
{
    press("open the folder", 220, "left", 0);
    return Bench.browsedFolders().slice(-1)[0];
}
press("first", 200, "middle");
var folders = {};
for (var i = 0; i < installed; ++i) {
    folders[label()[0]] = openFolder();
    click(201);
}
eq(folders["stand one"], FEMALE + "Alpha");
eq(folders["left side"], FEMALE + "Gamma");
eq(folders["on the back"], MALE + "Delta");
// The maker's files lead to the product's own folder.
eq(folders["BT02 010"], FEMALE + "Brannoc/Bench for Two");
eq(folders["BT02 011"], MALE + "Brannoc/Bench for Two");
eq(folders["012f"], FEMALE + "Brannoc/Sunday Morning");
eq(MainWindow.getPaneMgr().findPane("DzContentLibraryPane").visible, true, "the library shows");
MainWindow.getPaneMgr().showPane(PANE);
Bench.resize(PANE, SIZE[0], SIZE[1]);

// ---- a file that vanished --------------------------------------------------------------------------
// The reference pose, here none, takes its place; the next step in the same direction skips nothing.
press("first", 200, "middle");
var entries = readIndexFile();
Bench.removeFile(entries[1].path);
press("next, which is gone", 201, "left");
eq(readIndexFile().length, entries.length - 1, "the entry is gone");
press("next", 201, "left");
wears(library[entries[2].path] || {}, "the pose behind the gap");
eq(counter(), "POSE 2 of " + (entries.length - 1));

// ---- a rescan keeps the library ------------------------------------------------------------------
click(202);
click(202);
save("kept", -33);
eq(scan(), "Success! Indexed pose files: " + (entries.length));
assert(names().indexOf("kept.duf") >= 0, "the custom pose is found again");
Bench.restartPlugin();
Bench.resize(PANE, SIZE[0], SIZE[1]);
click(1);
click(100);
press("only the custom library", 224, "left");
eq(label(), ["kept"]);
near(forearm().getValue(), -33, 1e-3);

// ---- a figure that stands on a prop ----------------------------------------------------------------
click(202);
click(202);
Scene.addProp("cart", [-50, 0, -50], [50, 10, 50]).addNodeChild(figure);
save("on a cart", 12);
assert(names().indexOf("on a cart.duf") >= 0, "where it stands does not matter");
quit(0);
