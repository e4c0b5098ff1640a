// The scan by real clicks: what each phase goes through and drops, the index file's bytes, and that
// neither the end nor a cancel in any phase leaves a trace on figure, undo stack and files.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

function channelOf(channel)
{
    var parts = channel.split("/");
    return figure.findBone(parts[0])["get" + parts[1].toUpperCase() + "RotControl"]();
}

// ---- nothing to find -----------------------------------------------------------------------------
eq(scan(), "Success! Indexed pose files: 0");
eq(hex(readBytes(dataFile("poseIndex"))), "0100000000000000", "version 1, no entry");

// ---- one pose: wherever the figure stands, the bytes are the same ------------------------------------
var TURNED = FEMALE + "Turned/turned.duf", turnedPose = poseOf(19, "upright");
turnedPose["hip/y"] = 120;
writePreset(TURNED, turnedPose);
eq(scan(), "Success! Indexed pose files: 1");
var alone = readBytes(dataFile("poseIndex"));
figure.getYRotControl().setValue(90);
figure.getXPosControl().setValue(50);
eq(scan(), "Success! Indexed pose files: 1");
eq(readBytes(dataFile("poseIndex")) === alone, true, "the index of a figure at 90 degrees");
figure.getYRotControl().setValue(0);
figure.getXPosControl().setValue(0);

// ---- content of every fate -----------------------------------------------------------------------
var library = writeLibrary(), found = 16;
var STAND = FEMALE + "Alpha/stand one.duf", text = utf8(presetText(library[STAND]));

function mirrored(values)
{
    var other = {};
    for (var channel in values) {
        var name = channel.replace(/^([lr])([A-Z])/, function (all, side, rest) {
            return (side == "l" ? "r" : "l") + rest;
        });
        other[name] = /x$/.test(channel) ? values[channel] : -values[channel];
    }
    return other;
}

function slightlyOther(values)
{
    var other = {};
    for (var channel in values)
        other[channel] = values[channel] + 1;
    return other;
}

library[TURNED] = turnedPose;
++found;
// Not looked at: other names, hidden files, files without the word in their first kilobyte.
writeBytes(CONTENT + "/People/readme.txt", text);
writeBytes(CONTENT + "/People/.hidden.duf", text);
writeBytes(CONTENT + "/People/empty.duf", "");
writeBytes(CONTENT + "/People/scene.duf", "{ \"type\" : \"scene\" }");
writeBytes(CONTENT + "/People/late.duf", new Array(1024).join(" ") + text);
// Poses, but not of a whole body of this generation: gone with the cleaning up.
writeBytes(CONTENT + "/People/hand.duf", text.replace(/BigToe/g, "Thumb1"));
writeBytes(CONTENT + "/People/older.duf", text + "abdomen2");
writeBytes(CONTENT + "/People/old.duf", text + "rHeel");
// The maker's own variants: gone with the second optimizing.
writePreset(MAKER + "002/013m mirror.duf", poseOf(17, "upright"));
writePreset(MAKER + "002/014m NoExpression.duf", poseOf(18, "upright"));
// One of each pair stays, whichever is found first.
writeBytes(FEMALE + "Copies/the same bytes.DUF", text);
writePreset(FEMALE + "Copies/mirrored.duf", mirrored(library[FEMALE + "Gamma/left side.duf"]));
writePreset(FEMALE + "Copies/similar.duf", slightlyOther(library[FEMALE + "Alpha/sit one.duf"]));
// In the custom library copies stay.
writeBytes(CUSTOM_FOLDER + "copy.duf", text);
found += 3 + 2 + 3 + 1;
var kept = 17 + 1, optimized = found - 2, browsable = optimized - 3;

// ---- what is told --------------------------------------------------------------------------------
var logged = Bench.progress().length;
eq(scan(), "Success! Indexed pose files: " + kept);
var log = Bench.progress().slice(logged);
log.forEach(function (record) {
    eq([record.title, record.total, record.cancellable], ["Scanning...", 100, true]);
});
eq([log[0].info, log[1].position], ["Scanning...", 50], "one step of 50 at the start");

function told(info) // texts of a phase without repetitions
{
    var list = [];
    log.forEach(function (record) {
        if (record.info.indexOf(info) == 0 && list.slice(-1)[0] !== record.info)
            list.push(record.info);
    });
    return list;
}
function texts0(info, numbers, of)
{
    return numbers.map(function (number) { return info + "... " + number + (of ? " of " + of : ""); });
}
function upTo(count, from)
{
    var list = [];
    for (var i = from || 0; i < count; ++i)
        list.push(i);
    return list;
}
eq(told("Scanning pose files"), texts0("Scanning pose files", upTo(found + 1, 1)));
var PHASES = [["Identifying pose files", found], ["Optimizing pose index (1)", found],
    ["Optimizing pose index (2)", found], ["Ignoring duplicate poses", optimized],
    ["Skipping mirrored poses", optimized], ["Skipping similar poses", optimized],
    ["Cleaning up", optimized]];
PHASES.forEach(function (phase) {
    eq(told(phase[0]), texts0(phase[0], upTo(phase[1]), phase[1]));
});
eq(told("Indexing poses").length, browsable, "indexing tells of what can be browsed only");
log.forEach(function (record, i) {
    var numbers = /(\d+) of (\d+)$/.exec(record.info), count = /files\.\.\. (\d+)$/.exec(record.info);
    if (i + 1 < log.length && log[i + 1].info == record.info)
        return; // the text comes before the position
    if (numbers)
        eq(record.position, Math.floor(numbers[1] * 100 / numbers[2]), record.info);
    if (count)
        eq(record.position, Math.floor(Math.sqrt(count[1])), record.info);
});

// ---- the index file ------------------------------------------------------------------------------
var entries = readIndexFile(), names = {};
eq(entries.length, kept);
entries.forEach(function (entry) {
    var name = fileName(entry.path);
    names[name] = true;
    eq(entry.hash, djb2(readBytes(entry.path)), "hash of " + name);
    var male = /Genesis 8 Male|011ma/.test(entry.path) && name != "012f.duf";
    if (name != "010f0.duf")
        eq(entry.code, male ? 264 : 8, "figure code of " + name);
    eq(entry.signed, true, name);
    entry.slots.forEach(function (q, slot) {
        near(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3], 1, 1e-5, name + " slot " + slot);
    });
});
assert(names["copy.duf"], "a copy in the custom library stays");
[["stand one.duf", "the same bytes.DUF"], ["left side.duf", "mirrored.duf"],
    ["sit one.duf", "similar.duf"]].forEach(function (pair) {
    eq((names[pair[0]] ? 1 : 0) + (names[pair[1]] ? 1 : 0), 1, "one stays of " + pair);
});

// Written, read and written again it is the same: a pose more and a pose less.
var bytes = readBytes(dataFile("poseIndex"));
Bench.restartPlugin();
Bench.resize(PANE, SIZE[0], SIZE[1]);
Bench.expect({ file: "more" });
click(13);
assert(readBytes(dataFile("poseIndex")) !== bytes, "a pose more");
click(1);
click(100);
click(201, "middle");
Bench.expect({ title: "Quillon - Delete Custom Pose", button: "Yes" });
click(220);
eq(readBytes(dataFile("poseIndex")) === bytes, true, "read and written it is the same");
click(202);
click(202);

// ---- no trace of it ------------------------------------------------------------------------------
// A figure somewhere else, turned, scaled, posed, with limits and locks of the user's own.
function setStage()
{
    figure.getXPosControl().setValue(37.5);
    figure.getZPosControl().setValue(-81.25);
    figure.getYRotControl().setValue(90);
    figure.getScaleControl().setValue(1.1);
    channelOf("hip/y").setValue(15);
    channelOf("lShin/x").setValue(40);
    channelOf("rForearmBend/y").setValue(60);
    figure.findBone("hip").getYPosControl().setValue(-12);
    figure.findProperty("eCTRLMouthSmile").setValue(0.4);
}
setStage();
click(6, "right"); // limits are on again: browsing has switched them off
eq(channelOf("rShin/x").isClamped(), true);
["x", "y", "z"].forEach(function (axis) { // a flag a bone is what a scan puts back
    channelOf("lThighBend/" + axis).setIsClamped(false);
});
channelOf("lHand/z").lock(true);

// Of the figure and its hip what a pose does not move.
var PLACE = ["figure/XTranslate", "figure/YTranslate", "figure/ZTranslate", "figure/XRotate",
    "figure/YRotate", "figure/ZRotate", "figure/Scale"];

function leavesNoTrace(what, indexed, run)
{
    var pose = Bench.rawState(figure), flags = Bench.flagState(figure), index = dataFile("poseIndex");
    var file = readBytes(index), ranks = readBytes(dataFile("ranks"));
    click(0); // a reference pose, that a scan deletes
    assert(readBytes(REFERENCE) !== null, "a reference pose");
    command(what, 1, 2, run);
    eq(differences(flags, Bench.flagState(figure)), [], what + ": locks and limits");
    var cleared = Bench.rawState(figure);
    PLACE.forEach(function (name) { eq(cleared[name], pose[name], what + ": " + name); });
    eq([channelOf("lShin/x").getValue(), channelOf("rForearmBend/y").getValue()], [0, 0],
        what + ": the pose is cleared");
    eq(readBytes(REFERENCE), null, what + ": the reference pose is deleted");
    UndoStack.undo();
    eq(differences(pose, Bench.rawState(figure)), [], what + ": one undo brings the pose back");
    eq(differences(flags, Bench.flagState(figure)), [], what + ": undo and the flags");
    eq(readBytes(index) === file, true, what + ": the index file");
    eq(readBytes(dataFile("ranks")), ranks, what + ": the rank file");
    click(1);
    if (indexed) {
        click(100);
        eq(counter(), "MATCHING POSES FOUND: " + indexed, what);
    } else {
        Bench.expect({ title: "Quillon - Pose Finder Tool", button: "No" });
        click(100);
        eq(counter(), NOTHING, what);
    }
    UndoStack.undo(); // choosing the category has cleared the pose
    if (!indexed)
        UndoStack.redo();
    eq(differences(pose, Bench.rawState(figure)), [], what + ": undo in the end");
    click(202);
    click(202);
}

// The figure's place has no say in the signatures: the bytes are the same as before.
leavesNoTrace("a whole scan", kept, function () {
    eq(scan(), "Success! Indexed pose files: " + kept);
});
eq(readBytes(dataFile("poseIndex")) === bytes, true, "the same index for a figure that stands elsewhere");

var CANCELS = ["Scanning pose files... 3", "Identifying", "Optimizing pose index (1)",
    "Optimizing pose index (2)", "Ignoring", "Indexing poses... ", "Skipping mirrored",
    "Skipping similar", "Cleaning up", "Cleaning up... " + (optimized - 1)];
CANCELS.forEach(function (info) {
    leavesNoTrace("cancelled at '" + info + "'", 0, function () {
        yes();
        Bench.cancelProgress({ title: "Scanning...", info: info });
        Bench.expect({ title: "Info", text: "Scanning aborted", button: "OK" });
        click(14);
    });
});
// In the midst of the phase that poses the figure.
var nth = told("Indexing poses")[Math.floor(browsable / 2)];
leavesNoTrace("cancelled at '" + nth + "'", 0, function () {
    yes();
    Bench.cancelProgress({ info: nth });
    Bench.expect({ title: "Info", text: "Scanning aborted", button: "OK" });
    click(14);
});

// What was on disk all the time is there after a restart; the position went with the empty index.
Bench.restartPlugin();
Bench.resize(PANE, SIZE[0], SIZE[1]);
click(1);
click(100);
eq(counter(), NOTHING);
click(201);
eq(counter(), "POSE 1 of " + kept, "the index of the last whole scan");
click(202);

// ---- browsing with a figure that stands elsewhere ------------------------------------------------
// Its hip stays where it is, its size as well; whoever stands or sits faces where it faced.
function hip() { return figure.findBone("hip"); }
function heading()
{
    var front = turned(hip().getWSRot(), [0, 0, 1]);
    return Math.atan2(front[0], front[2]) * 180 / Math.PI;
}
function stays(what, at)
{
    near(hip().getWSPos(), at.hip, 1e-3, what + ": the hip");
    eq(figure.getScaleControl().getValue(), at.scale, what + ": the size");
    if (/stand|sit|turned|01[012]/.test(label()[0]) && label()[0] != "hand stand")
        near(heading(), at.heading, 0.05, what + ": the heading");
}
setStage();
click(100);
var at = { hip: hip().getWSPos(), scale: figure.getScaleControl().getValue(), heading: 90 };
eq(at.scale.toFixed(4), "1.1000");
near(heading(), 90, 0.01, "the cleared figure");
var seen = 0;
for (var i = 0; i < kept; ++i) {
    press("next", 201, "left");
    stays(label()[0], at);
    seen += label()[0] == "turned" ? 1 : 0;
}
eq(seen, 1);
// Moved and turned in between: it goes on from there.
figure.getXPosControl().setValue(figure.getXPosControl().getValue() + 100);
figure.getYRotControl().setValue(figure.getYRotControl().getValue() - 60);
var list = matchesOf(entries, 2, { female: 1, male: 1, rankFilter: 15 }, {});
click(202);
click(102);
at = { hip: hip().getWSPos(), scale: at.scale, heading: heading() };
for (i = 0; i < list.length; ++i) {
    press("next", 201, "left");
    stays(label()[0] + ", moved", at);
}
figure.getZPosControl().setValue(figure.getZPosControl().getValue() + 100);
at.hip[2] += 100;
press("next", 201, "left");
stays("moved while browsing", at);
quit(0);
