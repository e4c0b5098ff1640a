// Bench.failCall: whose calls count, by which names, and what has not failed yet.
include("lib.js");

var pane = MainWindow.getPaneMgr().findPane("TrialPane");
var BUTTONS = Bench.accessible(pane).map(function (child) { return child.name; });

function press(name)
{
    Bench.press(pane, 15, 15 + 20 * BUTTONS.indexOf(name), "left");
    return Bench.texts(pane).slice(-2)[0]; // the outcome; the last line is the release
}

// The outcome while the call fails; then, with nothing left over, without.
function failing(call, name)
{
    Bench.failCall(call, 1);
    var outcome = press(name);
    eq(Bench.pendingCalls().length, 0, call + " has struck");
    return [outcome, press(name)];
}

// ---- calls of the host that lead to others of the host -------------------------------------
Scene.setPrimarySelection(Scene.addProp("Box", [-1, -1, -1], [1, 1, 1]));
eq(failing("execute", "run script"), ["not executed", "executed"]);
eq(failing("accept", "move once"), ["steps 0", "steps 1"]);
eq(failing("beginHold", "move once")[1], "steps 1");
var x = Scene.getPrimarySelection().getXPosControl();
var before = x.getValue();
eq(failing("setValue", "move once")[1], "steps 1");
eq(x.getValue(), before + 1, "one of two");
eq(failing("openProgress", "work")[1], "worked");
eq(failing("gzOpen", "read packed"), ["not packed", "read packed"]);
eq(failing("gzWrite", "read packed"), ["not packed", "read packed"], "through the toolkit");
eq(failing("gzRead", "read packed"), ["read ", "read packed"], "through the toolkit");

// ---- only what the plug-in calls by itself -------------------------------------------------
Bench.failCall("setValue", 1);
eq(press("move in world"), "at 7", "what the host sets on the way is none of its calls");
x.setValue(3);
eq(x.getValue(), 3, "nor are a script's");
eq([Bench.pendingCalls()[0].name, Bench.pendingCalls()[0].n], ["setValue", 1]);
eq(Bench.dropCalls(), 1);
eq(Bench.pendingCalls(), []);
press("move once");
eq(x.getValue(), 4, "dropped");
Bench.failCall("setValue", 3);
press("move once");
eq(Bench.pendingCalls()[0].n, 2, "it counts down");
Bench.dropCalls();

// ---- files, by the system's names and others -----------------------------------------------
Bench.writeFile(App.getDataFolderPath() + "/trial.dat", "AAEC");
eq(failing("stat", "look for file"), ["not there", "there"]);
eq(failing("exists", "look for file"), ["not there", "there"]);
eq(failing("flush", "write file"), ["not written", "written"]);
[["flock", "not locked"], ["link", "not linked"], ["realpath", "not resolved"],
    ["opendir", "not listed"], ["readdir", "not listed"], ["seek", "not sought"],
    ["chmod", "rights not changed"]].forEach(function (row) {
    eq(failing(row[0], "handle file"), [row[1], "handled"]);
});
Bench.removeFile(App.getDataFolderPath() + "/trial.dat.other");
Bench.removeFile(App.getDataFolderPath() + "/trial.dat");
Bench.removeFile(App.getDataFolderPath());
eq(failing("mkpath", "write file"), ["not opened", "written"]);
["remove", "fsync", "unlink"].forEach(function (name) { Bench.failCall(name, 1); });
eq(Bench.pendingCalls().map(function (order) { return order.name; }), ["unlink", "sync", "unlink"]);
Bench.dropCalls();

// ---- what is no call ------------------------------------------------------------------------
throws(function () { Bench.failCall("noSuchCall", 1); }, "'noSuchCall' is no call");
throws(function () { Bench.failCall("Open", 1); }, "'Open' is no call");
throws(function () { Bench.failCall("open", 0); }, "from 1");
eq(Bench.pendingCalls(), []);
quit(0);
