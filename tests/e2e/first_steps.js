// The script for the first run in a real host, run here: everything that this host has is as expected,
// what it lacks is told, and figure, prop and history are as before.
// args: the script.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");
var crate = Scene.addProp("crate", [-10, 0, -20], [30, 50, 40]);
writePreset(FEMALE + "Turned/turned.duf", poseOf(19, "upright"));
figure.findBone("lShin").getXRotControl().setValue(20);
figure.findBone("lHand").getXPosControl().lock(true);
figure.getYRotControl().setValue(15);
Scene.selectAll(false);
figure.select(true);
Scene.setPrimarySelection(figure);

// ---- the user: presses what the boxes ask for ---------------------------------------------------
var questions = [];
var presses = [
    ["right-click REFERENCE POSE", function () { click(0, "right"); }],
    ["click REFERENCE POSE", function () { click(0); }],
    ["run the scan", function () { scanned = scan(); }],
    ["Did the last box", function () { eq(scanned, "Success! Indexed pose files: 1"); }],
    ["begin another scan", function () {
        MainWindow.getPaneMgr().showPane(PANE);
        Bench.resize(PANE, SIZE[0], SIZE[1]);
        click(202);
        click(202);
        Bench.cancelProgress({ title: "Scanning...", info: "Indexing poses... " });
        yes();
        Bench.expect({ title: "Info", text: "Scanning aborted", button: "OK" });
        click(14);
    }],
    ["Did it end at once", function () { eq(Bench.pendingCancels().length, 0); }],
    ["browse to any pose", function () {
        click(1);
        click(100);
        click(201);
        eq(counter(), "POSE 1 of 1");
        click(220);
        eq(Bench.browsedFolders().slice(-1)[0], FEMALE + "Turned");
    }]];
var scanned = "", skip = "";
var MessageBox = { question: function (text) {
    questions.push(text);
    for (var i = 0; i < presses.length; ++i) {
        if (text.indexOf(presses[i][0]) < 0)
            continue;
        if (skip && text.indexOf(skip) >= 0)
            return 1;
        presses[i][1]();
        return 0;
    }
    assert(false, "a question that nobody knows: " + text);
} };

function wholeState()
{
    return [Bench.rawState(figure), Bench.flagState(figure), Bench.rawState(crate),
        { origin: crate.getOrigin(), selected: Scene.selectedNodes().length,
            time: Scene.getTime(), steps: UndoStack.count() }];
}

function keyCounts()
{
    var counts = {};
    figure.bones().concat([figure, crate]).forEach(function (node) {
        node.properties().forEach(function (property, i) {
            if (property.getNumKeys)
                counts[node.name + "/" + i] = property.getNumKeys();
        });
    });
    return counts;
}

function run()
{
    var before = wholeState(), keys = keyCounts();
    var lines = include(args[0]);
    var after = wholeState();
    for (var i = 0; i < before.length; ++i)
        eq(differences(before[i], after[i]), [], "left as found, part " + i);
    eq(differences(keys, keyCounts()), [], "keys");
    return lines;
}

function verdicts(lines, verdict)
{
    return lines.filter(function (line) { return line.indexOf(verdict + ": ") == 0; });
}

// ---- everything asked, everything pressed -------------------------------------------------------
var lines = run();
eq(verdicts(lines, "OTHERWISE"), []);
eq(verdicts(lines, "not asked"), []);
eq(questions.length, 7);
eq(verdicts(lines, "not there").map(function (line) { return line.split(" - ")[0]; }),
    ["not there: a turn of 90 degrees about Y", "not there: four numbers become a unit",
        "not there: writing the report"]);
eq(verdicts(lines, "as expected").length, 19);

// ---- nothing pressed, in a host whose scripts write files -----------------------------------------
var written = {};
function DzFile(path)
{
    this.open = function (how) { return how === DzFile.WriteOnly; };
    this.write = function (text) { written[path] = text; };
    this.close = function () { };
}
DzFile.WriteOnly = 2;
skip = "pane";
lines = run();
eq(written[App.getTempPath() + "/quillon_first_steps.txt"], lines.join("\n") + "\n", "the report");
eq(verdicts(lines, "not asked").length, 4);
skip = "";

// ---- a host that is otherwise tells so ----------------------------------------------------------
MessageBox = { question: function () { throw new Error("other arguments"); } };
lines = run();
eq(verdicts(lines, "not asked").length, 4);
assert(lines.join("\n").indexOf("other arguments") >= 0, "it tells why");
MessageBox = undefined;
crate.getOriginXControl().lock(true);
lines = run();
eq(verdicts(lines, "OTHERWISE").map(function (line) { return line.split(" - ")[0]; }),
    ["OTHERWISE: and moves the place in the world"]);
eq(verdicts(lines, "not asked").length, 4);

// ---- no figure ----------------------------------------------------------------------------------
Scene.selectAll(false);
lines = run();
assert(lines.join("\n").indexOf("select a Genesis 8 figure") >= 0, "it tells what is missing");
quit(0);
