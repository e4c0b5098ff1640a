// The browsing pages by real clicks: categories, stepping, products, filters, ranks. What matches
// is reckoned by match_model.js from the bytes of the index file.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

var library = writeLibrary();
var settings = { female: 1, male: 1, rankFilter: 15, ignorePairs: 0 };

function matches(category)
{
    return matchesOf(entries, category, settings, readRankFile());
}

// ---- an empty index ------------------------------------------------------------------------------
var FIRST_TIME = "Because this is the first time you are using this tool,\n"
    + "inizialization is needed. It may take some time, but\nit can be stopped and done later. Proceed?";
click(1);
command("empty index, No", 0, 1, function () {
    Bench.expect({ title: "Quillon - Pose Finder Tool", text: FIRST_TIME, button: "No" });
    click(101);
});
eq(counter(), NOTHING, "the page opens with nothing");
[201, 200, 210, 224, 213, 212, 220, 214].forEach(function (button) {
    press("empty index, " + button, button, "left", 0);
    click(button); // and back
});
click(202);
command("empty index, Yes", 0, 2, function () {
    yes("Quillon - Pose Finder Tool");
    Bench.expect({ title: "Info", text: "Success! Indexed pose files: 16", button: "OK" });
    click(101);
});
var entries = readIndexFile();
eq(entries.length, 16, "all of the library is indexed");
eq(entries.map(function (e) { return e.path; }).sort(), (function () {
    var paths = [];
    for (var path in library)
        paths.push(path);
    return paths.sort();
})(), "paths");
eq(counter(), "MATCHING POSES FOUND: " + matches(1).length, "the category that was asked for");
click(202);

// ---- every category: count, order, wrapping, first and last --------------------------------------
var EXPECTED_COUNTS = [16, 5, 5, 2, 1, 1, 1, 1]; // as the library was made
for (var category = 0; category < 8; ++category) {
    var list = matches(category), n = list.length, what = "category " + category;
    eq(n, EXPECTED_COUNTS[category], what + ": the model");
    var posed = category > 0; // the pose of the last category is cleared, which can be undone
    command(what, posed ? 1 : 0, 0, function () { click(100 + category); });
    eq(counter(), "MATCHING POSES FOUND: " + n, what);

    press(what + ", first", 200, "middle");
    function isAt(k, how)
    {
        var entry = entries[list[k]];
        eq(counter(), category == 0 ? "POSE " + (list[k] + 1) + " of " + entries.length
                                    : "MATCHING POSE " + (k + 1) + " of " + n, what + ", " + how);
        wears(library[entry.path], what + ", " + how);
    }
    isAt(0, "first");
    press(what + ", last", 201, "middle");
    isAt(n - 1, "last");
    press(what + ", next wraps", 201, "left");
    isAt(0, "next after the last");
    press(what + ", previous wraps", 200, "left");
    isAt(n - 1, "previous before the first");
    for (var k = 0; k < n; ++k) {
        press(what + ", next", 201, "left");
        isAt(k, "next " + k);
    }
    for (k = n - 2; k >= 0; --k) {
        press(what + ", previous", 200, "left");
        isAt(k, "previous " + k);
    }
    press(what + ", back", 202, ["left", "right", "middle"][category % 3], 0);
}

// One step back brings the pose before, bit for bit.
click(101);
click(200, "middle");
var before = Bench.poseState(figure);
click(201);
assert(differences(before, Bench.poseState(figure)).length > 0, "the next pose is another");
UndoStack.undo();
eq(differences(before, Bench.poseState(figure)), [], "undo brings back the pose before");
click(202);

// ---- labels --------------------------------------------------------------------------------------
var LABELS = { "stand one.duf": ["stand one"], "stand two (mirrored).duf": ["stand two"],
    "sit two mir.duf": ["sit two"],
    "010f0.duf": ["BT02 010", "This is a pose PAIR product (F+M)"],
    "011ma.duf": ["BT02 011", "This is a pose PAIR product (M+M)"],
    "012f.duf": ["012f", "This is a G8 FEMALE product"] };
click(100);
click(200, "middle");
var labelled = 0;
for (var i = 0; i < entries.length; ++i) {
    var expected = LABELS[fileName(entries[i].path)];
    if (expected) {
        eq(label(), expected, entries[i].path);
        ++labelled;
    }
    click(201);
}
eq(labelled, 6);

// ---- products, both ways -------------------------------------------------------------------------
function folder(number) { return entries[number].path.replace(/[^\/]*$/, ""); }

// The first of the next run of another product; backwards the first of the nearest earlier run.
function otherProduct(list, at, direction)
{
    var n = list.length, k = at;
    do {
        k = (k + direction + n) % n;
    } while (k != at && folder(list[k]) == folder(list[at]));
    while (direction < 0 && k != at && folder(list[(k - 1 + n) % n]) == folder(list[k]))
        k = (k - 1 + n) % n;
    return k;
}
[0, 1].forEach(function (category) {
    click(202);
    click(100 + category);
    click(200, "middle");
    var list = matches(category);
    for (var round = 0; round < 2 * list.length; ++round) {
        var direction = round < list.length ? 1 : -1;
        var at = list.indexOf(category == 0 ? ordinal() - 1 : list[ordinal() - 1]);
        var to = otherProduct(list, at, direction);
        press("product " + direction + " from " + at, direction > 0 ? 201 : 200, "right");
        wears(library[entries[list[to]].path], "product " + direction + " from " + at);
        if (round % 3 == 2)
            click(201); // so that runs are entered in their middle, too
    }
});
// All matches are of one product: nothing moves.
click(202);
click(107);
click(201);
press("the only product", 201, "right", 0);
press("the only product, backwards", 200, "right", 0);
eq(counter(), "MATCHING POSE 1 of 1");
click(202);

// ---- include filters -----------------------------------------------------------------------------
click(101);
click(200, "middle");

// Flips a switch; the current pose stays when it still matches, else the next match forward.
function flips(button, change)
{
    var shown = matches(1)[ordinal() - 1], was = isOn(button), had = Bench.poseState(figure);
    change();
    var list = matches(1), what = "switch " + button + " with " + list.length + " left";
    press(what, button, ["left", "right", "middle"][button % 3], list.length ? 1 : 0);
    eq(isOn(button), !was, what);
    if (!list.length) {
        eq(counter(), NOTHING, what);
        eq(differences(had, Bench.poseState(figure)), [], what + ": the figure is left alone");
        return;
    }
    var next = shown === undefined ? list[0] : list.filter(function (n) { return n >= shown; })[0];
    next = next === undefined ? list[0] : next;
    eq(counter(), "MATCHING POSE " + (list.indexOf(next) + 1) + " of " + list.length, what);
    wears(library[entries[next].path], what);
}
function flipFemale() { settings.female = 1 - settings.female; }
function flipMale() { settings.male = 1 - settings.male; }
flips(210, flipFemale);
flips(211, flipMale); // nothing is left
flips(210, flipFemale);
flips(211, flipMale);
flips(211, flipMale);
flips(210, flipFemale);
flips(211, flipMale);
flips(210, flipFemale);

// ---- ranks ---------------------------------------------------------------------------------------
function tipTells(button, line)
{
    click(202); // so that the tip is another one in between
    click(101);
    Bench.move(PANE, place(button)[0] * paneSize()[0] / 512, place(button)[1] * paneSize()[1] / 1024);
    assert(shows(line), "the tip of " + button + " tells '" + line + "': " + show(texts()));
}
click(200, "middle");
var ranked = entries[matches(1)[0]], second = entries[matches(1)[1]];
["left", "right", "middle"].forEach(function (which, k) { // one way, whichever button
    press("rank, " + which, 213, which, 0);
    eq(readRankFile()[ranked.hash], [1, 2, undefined][k], "rank file after " + which);
});
press("rank", 213, "left", 0);
click(201);
press("rank", 213, "left", 0);
press("rank", 213, "right", 0);
eq([readRankFile()[ranked.hash], readRankFile()[second.hash]], [1, 2], "one favourite, one hidden");
tipTells(213, "Hidden");
click(200, "middle");

[[224, 1], [225, 2], [226, 4], [227, 8]].forEach(function (row) {
    flips(row[0], function () { settings.rankFilter ^= row[1]; });
});
eq(settings.rankFilter, 0);
eq(counter(), NOTHING, "no rank is included");
flips(225, function () { settings.rankFilter ^= 2; });
eq(matches(1), [entries.indexOf(ranked)], "the favourite only");
flips(226, function () { settings.rankFilter ^= 4; });
eq(matches(1).length, 2, "the favourite and the hidden one");
flips(224, function () { settings.rankFilter ^= 1; });
flips(227, function () { settings.rankFilter ^= 8; });

// A part lock keeps the rank from being changed.
click(219);
endStatus();
press("rank with a lock on", 213, "left", 0);
["ERROR", "Rank cannot be changed if", "part of the pose is locked"].forEach(function (line) {
    assert(shows(line), "the status message tells '" + line + "'");
});
click(219);
endStatus();

// ---- a restart -----------------------------------------------------------------------------------
settings.male = 0;
click(211);
click(202);
var saved = readSettingsFile();
eq([saved.female, saved.male, saved.rankFilter], [1, 0, 15], "saved when the page is left");
var indexBytes = readBytes(dataFile("poseIndex")), rankBytes = readBytes(dataFile("ranks"));
Bench.restartPlugin();
Bench.resize(PANE, SIZE[0], SIZE[1]);
eq(readBytes(dataFile("poseIndex")) == indexBytes, true, "the index file survives");
eq(readBytes(dataFile("ranks")) == rankBytes, true, "the rank file survives");
click(1);
click(101);
eq([isOn(210), isOn(211)], [true, false], "switches after a restart");
eq(counter(), "MATCHING POSES FOUND: " + matches(1).length, "matches after a restart");
click(200, "middle");
flips(211, flipMale);
eq(entries.map(function (e) { return e.path; }), readIndexFile().map(function (e) { return e.path; }));

// A rescan keeps the ranks.
click(202);
click(202);
eq(scan(), "Success! Indexed pose files: 16");
eq([readRankFile()[ranked.hash], readRankFile()[second.hash]], [1, 2], "ranks after a rescan");

// ---- no figure selected --------------------------------------------------------------------------
click(1);
Scene.selectAll(false);
Scene.setPrimarySelection(null);
command("a category without a figure", 0, 1, function () {
    Bench.expect(NO_FIGURE);
    click(101);
});
[200, 201, 210, 211, 224, 214, 223].forEach(function (button) {
    ["left", "left"].forEach(function (which) { // there and back
        command("button " + button + " without a figure", 0, 1, function () {
            Bench.expect(NO_FIGURE);
            click(button, which);
        });
    });
});
press("mirror without a figure", 212, "left", 0);
figure.select(true);
Scene.setPrimarySelection(figure);
entries = readIndexFile();
press("next, with the figure again", 201, "left");
eq(ordinal() > 0, true, "a sitting pose only: " + counter());
wears(library[entries[matches(1)[ordinal() - 1]].path], "with the figure again");
quit(0);
