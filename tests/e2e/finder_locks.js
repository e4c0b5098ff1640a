// Part locks with a reference pose, the mirror toggle, the reference overlay, the body areas of the
// ninth category: by real clicks.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

// ---- content: the library, and two poses that move something of every part -----------------------
var library = writeLibrary();

// For each lock a few channels that belong to it and nothing else.
var PARTS = [
    ["chestUpper/x", "rShldrBend/z", "neckLower/x"],
    ["lThighBend/x", "rShin/x"],
    ["lFoot/x", "rBigToe/x"],
    ["lEye/y", "rEye/x"],
    ["lHand/z", "lIndex2/z"],
    ["rHand/z", "rThumb2/z"]
];
var LOCKS = [214, 215, 216, 217, 218, 219];

// Angles within the limits that differ from part to part.
function everyPart(factor)
{
    var values = { "lForearmBend/y": -30 };
    PARTS.forEach(function (channels, part) {
        channels.forEach(function (channel, i) {
            var property = channelOf(channel), span = factor * (0.2 + 0.05 * part + 0.03 * i);
            values[channel] = Math.round(100 * span
                * (span > 0 ? property.getMax() : -property.getMin())) / 100;
        });
    });
    return values;
}

function channelOf(channel)
{
    var parts = channel.split("/");
    return figure.findBone(parts[0])["get" + parts[1].toUpperCase() + "RotControl"]();
}

function valuesOf(channels)
{
    return channels.map(function (channel) { return channelOf(channel).getValue(); });
}

var REFERENCE_POSE = everyPart(1), BROWSED_POSE = everyPart(-1);
var TRIAL = FEMALE + "Trial/everything.duf";
var SMILE = "{ \"url\" : \"name://@selection#eCTRLMouthSmile:?value/value\", \"keys\" : [ [ 0, 0.5 ] ] }";
writePreset(TRIAL, BROWSED_POSE, [SMILE]);
library[TRIAL] = BROWSED_POSE;
scan();
var entries = readIndexFile();
eq(entries.length, 17);

function numberOf(path)
{
    for (var i = 0; i < entries.length; ++i)
        if (entries[i].path == path)
            return i;
    return -1;
}

// ---- the reference pose --------------------------------------------------------------------------
for (var channel in REFERENCE_POSE)
    channelOf(channel).setValue(REFERENCE_POSE[channel]);
wears(REFERENCE_POSE, "the figure in the reference pose");
command("memorize", 0, 0, function () { click(0); });
wears(REFERENCE_POSE, "memorizing changes nothing");

// What the user has locked before stays locked, of locked parts as of others; nothing else does.
channelOf("lHand/x").lock(true);
channelOf("rToe/x").lock(true);
figure.findProperty("eCTRLMouthSmile").setValue(0);
figure.findProperty("eCTRLMouthOpen").lock(true);

click(1);
click(100);
click(200, "middle");

// Forward to the pose of that path.
function goTo(path)
{
    for (var i = 0; i < entries.length && label()[0] != fileName(path).slice(0, -4); ++i)
        click(201);
    eq(label()[0], fileName(path).slice(0, -4));
}
goTo(TRIAL);
wears(BROWSED_POSE, "without a lock");
near(figure.findProperty("eCTRLMouthSmile").getValue(), 0.5, 1e-6, "the smile of the file");

// ---- each lock alone, then all -------------------------------------------------------------------
function wearsLocked(locked, what)
{
    PARTS.forEach(function (channels, part) {
        var source = locked.indexOf(part) >= 0 ? REFERENCE_POSE : BROWSED_POSE;
        near(valuesOf(channels), channels.map(function (c) { return source[c]; }), 1e-3,
            what + ", part " + part);
    });
    var smile = locked.indexOf(3) >= 0 ? 0 : 0.5;
    near(figure.findProperty("eCTRLMouthSmile").getValue(), smile, 1e-6, what + ": the smile");
}
LOCKS.forEach(function (lock, part) {
    var which = ["left", "right", "middle"][part % 3];
    press("lock " + lock, lock, which);
    eq(isOn(lock), true, "lock " + lock);
    wearsLocked([part], "lock " + lock);
    // Stepping away and back keeps it so.
    press("next with lock " + lock, 201, "left");
    press("previous with lock " + lock, 200, "left");
    wearsLocked([part], "back with lock " + lock);
    press("lock " + lock + " off", lock, which);
    eq(isOn(lock), false, "lock " + lock);
    wearsLocked([], "lock " + lock + " off");
});
LOCKS.forEach(function (lock, part) {
    press("locks up to " + lock, lock, "left");
    wearsLocked([0, 1, 2, 3, 4, 5].slice(0, part + 1), "locks up to " + lock);
});
var before = Bench.poseState(figure);
press("next with all locks", 201, "left");
var after = Bench.poseState(figure);
differences(before, after).forEach(function (name) { // what belongs to no part
    assert(/^(figure|hip)\//.test(name), "'" + name + "' is left alone by a pose with all locks on");
});
press("previous with all locks", 200, "left");
LOCKS.forEach(function (lock) { press("lock " + lock + " off", lock, "left"); });
wearsLocked([], "all locks off");
eq([channelOf("lHand/x").isLocked(), channelOf("rToe/x").isLocked(), channelOf("lHand/z").isLocked(),
    figure.findProperty("eCTRLMouthOpen").isLocked()], [true, true, false, true], "the user's locks");

// ---- mirror --------------------------------------------------------------------------------------
// Left and right exchanged, turns about Y and Z the other way.
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
channelOf("rToe/x").lock(false); // a lock of the user's would keep its side
channelOf("lHand/x").lock(false);
press("mirror", 212, "left");
eq(isOn(212), true);
wears(mirrored(BROWSED_POSE), "mirrored");
press("mirror off", 212, "right");
eq(isOn(212), false);
wears(BROWSED_POSE, "mirrored off");
press("mirror", 212, "middle");
UndoStack.undo();
wears(BROWSED_POSE, "undo of the mirror toggle");
UndoStack.redo();
wears(mirrored(BROWSED_POSE), "redo");
press("next clears the flag", 201, "left");
eq(isOn(212), false);
press("previous", 200, "left");
press("mirror", 212, "left");
press("next product keeps the flag", 201, "right");
eq(isOn(212), true);
var shownPath = entries[ordinal() - 1].path;
wears(library[shownPath], "but the pose is as the file has it");
press("so the toggle puts it off", 212, "left");
eq(isOn(212), false);
wears(library[shownPath], "flag off");
goTo(TRIAL);
press("mirror", 212, "left");
press("a lock clears the flag", 218, "left");
eq(isOn(212), false);
wearsLocked([4], "left hand");
press("mirror with a lock", 212, "left");
near(valuesOf(PARTS[4]), PARTS[4].map(function (c) { return REFERENCE_POSE[c]; }), 1e-3,
    "the locked hand keeps the reference pose");
near(channelOf("rForearmBend/y").getValue(), 30, 1e-3, "the rest is mirrored");
press("mirror off", 212, "left");
press("left hand off", 218, "left");

// ---- the reference overlay -----------------------------------------------------------------------
press("overlay", 223, "left");
eq(isOn(223), true);
wears(REFERENCE_POSE, "the reference pose shows");
press("overlay off", 223, "left");
eq(isOn(223), false);
wears(BROWSED_POSE, "the pose shows again");
press("overlay", 223, "right");
wears(REFERENCE_POSE, "the reference pose shows");
click(210);
eq(isOn(223), false, "any other press puts it off");
click(210);
goTo(TRIAL);
press("overlay", 223, "middle");
press("next", 201, "left");
eq(isOn(223), false);
press("previous", 200, "left");
wears(BROWSED_POSE, "a pose again");
press("overlay", 223, "left");
var count = UndoStack.count();
Bench.press(PANE, 3, Math.round(paneSize()[1] * 0.93), "left");
eq(isOn(223), false, "a press beside every button, too");
eq(UndoStack.count(), count);
click(223);
wears(REFERENCE_POSE, "so the next press on it shows the reference pose");
click(223);
click(202);

// ---- the ninth category --------------------------------------------------------------------------
var SITTING = FEMALE + "Alpha/sit one.duf";
click(100);
goTo(SITTING);
click(202);
click(202);
Bench.expect({ title: "Quillon", button: "Yes" });
click(0);
click(1);
var flags = [1, 0, 0, 1, 1, 0, 0, 0, 0, 1];
var settings = { female: 1, male: 1, rankFilter: 15, ignorePairs: 0 };
function reference()
{
    var asked = [];
    flags.forEach(function (on, area) {
        if (on)
            asked.push(area == 9 ? 0 : area + 1);
    });
    return { slots: entries[numberOf(SITTING)].slots, asked: asked };
}
function expectMatches(what)
{
    var list = matchesOf(entries, 8, settings, {}, reference());
    var found = /(\d+)$/.exec(counter());
    eq(found ? parseInt(found[1], 10) : 0, list.length, what + ": matches");
    return list;
}
command("the ninth category", 0, 0, function () { click(108); }); // is in that pose already
var list = expectMatches("the ninth category");
assert(list.length >= 4 && list.indexOf(numberOf(SITTING)) >= 0, "sitting poses: " + list);
press("first", 200, "middle");
for (var k = 0; k < list.length; ++k) {
    eq(counter(), "MATCHING POSE " + (k + 1) + " of " + list.length);
    wears(library[entries[list[k]].path], "match " + k);
    press("next", 201, "left");
}
// Every area, off and on by one mouse button after the other.
[9, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 3, 4, 9].forEach(function (area, i) {
    var was = isOn(300 + area);
    eq(was, flags[area] == 1, "area " + area);
    flags[area] = 1 - flags[area];
    var left = matchesOf(entries, 8, settings, {}, reference()).length;
    press("area " + area, 300 + area, ["left", "right", "middle"][i % 3], left ? 1 : 0);
    eq(isOn(300 + area), !was, "area " + area);
    expectMatches("areas " + flags);
});
click(202);
var saved = readSettingsFile();
eq(saved.similarity, flags, "areas as saved");
eq(saved.similarityCopy, flags, "and their copy");

// The squares belong to the ninth category alone.
click(100);
var sets = UndoStack.count();
click(305);
eq([UndoStack.count(), readSettingsFile().similarity], [sets, flags], "no square elsewhere");
click(202);

// ---- locks copy the areas: those of the body, not of the face and the hands -----------------------
LOCKS.forEach(function (lock, part) {
    var bytes = readBytes(dataFile("settings"));
    var other = flags.map(function (flag) { return 1 - flag; });
    Bench.stopPane();
    // 4 version, 10 first set, 2 include, 4 rank, 6 locks, 10 second set
    writeBytes(dataFile("settings"), bytes.substr(0, 26)
        + String.fromCharCode.apply(null, other) + bytes.substr(36));
    Bench.startPane();
    Bench.resize(PANE, SIZE[0], SIZE[1]);
    click(1);
    click(100);
    click(lock);
    click(lock);
    click(202);
    eq(readSettingsFile().similarityCopy, part < 3 ? flags : other, "second set after lock " + lock);
});
quit(0);
