// What the settings dialog's boxes mean while browsing: limits of body and face, bone translations,
// pose-pair products. By real clicks.
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
    var kind = parts[1] == "t" ? "XPosControl" : parts[1].toUpperCase() + "RotControl";
    return figure.findBone(parts[0])["get" + kind]();
}
function entry(url, value)
{
    return "{ \"url\" : \"name://@selection" + url + "\", \"keys\" : [ [ 0, " + value + " ] ] }";
}

// A file that goes beyond every limit, and moves bones.
var BODY_BONE = channelOf("rShin/x"), BODY_CONTROL = figure.findProperty("pCTRLTorsoSlump");
var FACE_BONE = channelOf("rEye/x"), FACE_CONTROL = figure.findProperty("eCTRLMouthSmile");
var HAND = channelOf("lHand/t"), PECTORAL = channelOf("lPectoral/t");
[HAND, PECTORAL].forEach(function (channel) { channel.lock(false); });
var library = writeLibrary();
var values = poseOf(16, "upright");
values["rShin/x"] = 170;
values["rEye/x"] = 50;
var WILD = FEMALE + "Wild/beyond.duf";
writePreset(WILD, values, [entry("#pCTRLTorsoSlump:?value/value", 1.75),
    entry("#eCTRLMouthSmile:?value/value", 2.5), entry("/lHand:?translation/x/value", 1.5),
    entry("/lPectoral:?translation/x/value", 0.75)]);
scan();
var entries = readIndexFile();
eq(entries.length, 17);

// ---- settings by the dialog, of the face by the file -----------------------------------------------
var LABELS = [" Allow pose limits violation in Pose Finder", " Allow bone translations ",
    " Ignore poses from pose-pair products "];
function setBoxes(body, translations, ignorePairs)
{
    var fields = {};
    fields[LABELS[0]] = body;
    fields[" Allow face expression limits violation in Pose Finder"] = false; // else body as well
    fields[LABELS[1]] = translations;
    fields[LABELS[2]] = ignorePairs;
    Bench.expect({ title: "Quillon Settings", fields: fields, button: "Accept" });
    click(15);
}
function writeFace(on) // what the dialog can only switch off
{
    Bench.stopPane();
    var bytes = readBytes(dataFile("settings"));
    writeBytes(dataFile("settings"), bytes.substr(0, 49) + (on ? "\x01" : "\x00") + bytes.substr(50));
    Bench.startPane();
    Bench.resize(PANE, SIZE[0], SIZE[1]);
}
function goToWild()
{
    click(1);
    click(100);
    click(200, "middle");
    for (var i = 0; label()[0] != "beyond" && i < entries.length; ++i)
        click(201);
    eq(label()[0], "beyond");
}

var rig = Bench.flagState(figure);
[[true, true, true], [false, true, true], [true, false, true], [false, false, true],
    [true, true, false], [false, false, false]].forEach(function (row) {
    var body = row[0], face = row[1], translations = row[2], what = "body, face, translations " + row;
    setBoxes(body, translations, false);
    writeFace(face);
    goToWild();
    near(BODY_BONE.getValue(), body ? 170 : 155, 1e-3, what + ": a bone of the body");
    near(BODY_CONTROL.getValue(), body ? 1.75 : 1, 1e-4, what + ": a control of the body");
    near(FACE_CONTROL.getValue(), face ? 2.5 : 1, 1e-4, what + ": a control of the face");
    near(FACE_BONE.getValue(), face ? 50 : FACE_BONE.getMax(), 1e-3, what + ": a bone of the face");
    eq([BODY_BONE.isClamped(), BODY_CONTROL.isClamped(), FACE_BONE.isClamped(),
        FACE_CONTROL.isClamped()], [!body, !body, !face, !face], what + ": limits");
    near([HAND.getValue(), PECTORAL.getValue()], translations ? [1.5, 0.75] : [0, 0], 1e-4,
        what + ": translations");
    assert(!shows("Bone translations reset succeeded") && !shows("Bone rotation limits clamped"),
        what + ": no status of their own");
    var locked = locks(figure);
    eq([locked["lHand/ZRotate"], locked["lForearmBend/XRotate"]],
        [rig["lHand/ZRotate"].locked, rig["lForearmBend/XRotate"].locked], what + ": locks");

    // Undo takes the flags back with the pose.
    click(200);
    var state = [Bench.rawState(figure), Bench.flagState(figure)];
    figure.getXPosControl().setValue(figure.getXPosControl().getValue()); // nothing changes
    BODY_BONE.setIsClamped(body); // the user's own: the other way round
    var before = [Bench.rawState(figure), Bench.flagState(figure)];
    press(what + ", next", 201, "left");
    eq(BODY_BONE.isClamped(), !body, what + ": limits again");
    UndoStack.undo();
    eq(differences(before[0], Bench.rawState(figure)), [], what + ": undo of the pose");
    eq(differences(before[1], Bench.flagState(figure)), [], what + ": undo of the limits");
    UndoStack.undo();
    click(202);
    click(202);
});

// Bones of locked parts keep the reference pose's translation.
setBoxes(true, false, false);
HAND.setValue(0.5);
PECTORAL.setValue(0.25);
Bench.removeFile(REFERENCE);
click(0);
goToWild();
press("left hand", 218, "left");
near([HAND.getValue(), PECTORAL.getValue()], [0.5, 0], 1e-4, "the locked hand and the rest");
press("left hand off", 218, "left");
near([HAND.getValue(), PECTORAL.getValue()], [0, 0], 1e-4, "without the lock");
click(202);
click(202);

// ---- pose-pair products ----------------------------------------------------------------------------
var settings = { female: 1, male: 1, rankFilter: 15, ignorePairs: 1 };
setBoxes(true, true, true);
click(1);
[0, 1].forEach(function (category) {
    var list = matchesOf(entries, category, settings, {});
    eq(list.length, [15, 3][category], "without the pairs");
    click(100 + category);
    eq(counter(), "MATCHING POSES FOUND: " + list.length);
    press("first", 200, "middle");
    list.forEach(function (number, k) {
        eq(label()[0].indexOf("BT02"), -1);
        eq(counter(), category ? "MATCHING POSE " + (k + 1) + " of " + list.length
                               : "POSE " + (number + 1) + " of 17");
        press("next", 201, "left");
    });
    click(202);
});
quit(0);
