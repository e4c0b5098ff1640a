// Plug-ins, panes, groups, timers, progress, addresses, files and calls that fail.
include("lib.js");

var panes = MainWindow.getPaneMgr();
var pane = Bench.startPane();
assert(pane === panes.findPane("TrialPane"), "started once only");
var BUTTONS = Bench.accessible(pane).map(function (child) { return child.name; });

function press(name)
{
    Bench.press(pane, 15, 15 + 20 * BUTTONS.indexOf(name), "left");
    return Bench.texts(pane).slice(-2)[0]; // the outcome; the last line is the release
}

// ---- plug-ins ------------------------------------------------------------------------------
var plugin = Bench.plugins()[0];
eq(Bench.plugins().length, 1);
eq([plugin.name, plugin.author, plugin.version, plugin.description, plugin.sdkVersion],
    ["Trial", "Nobody", "1.2.3.4", "A plug-in made for trying.", "4.5.0.100"]);
eq(plugin.factories.map(function (f) { return f.className; }),
    ["TrialPane", "TrialPaneAction", "TrialAction"]);
eq(plugin.factories[0].guid, "0a0a0a0a-0001-4000-8000-000000000001");

// ---- panes and groups ----------------------------------------------------------------------
var group = panes.createEmptyPaneGroup();
assert(panes.getPaneGroup(panes.getNumPaneGroups() - 1) === group, "the new group is the last");
group.resize(410, 420);
eq([group.width(), group.height()], [410, 420]);
pane.moveToGroup(group);
assert(pane.getPaneGroup() === group, "it has moved");
group.minimize();
eq(group.isMinimized(), true);
group.restore();
eq(group.isMinimized(), false);
pane.hidePane();
eq(pane.visible, false);
pane.showPane();
eq(pane.visible, true);

// ---- timers --------------------------------------------------------------------------------
var timers = Bench.timers(pane);
eq(timers.length, 2);
eq([timers[0].interval, timers[0].active, timers[0].singleShot], [3000, false, true]);
eq([timers[1].interval, timers[1].active, timers[1].singleShot], [600000, true, false]);
eq(press("start timer"), "started");
eq(Bench.timers(pane)[0].active, true);
Bench.fireTimer(pane, 0);
eq(Bench.texts(pane).pop(), "time is up");
eq(Bench.timers(pane)[0].active, false, "once only");
var lines = Bench.texts(pane).length;
Bench.fireTimer(pane, 1);
eq(Bench.texts(pane).length, lines + 1);
eq(Bench.timers(pane)[1].active, true, "it goes on");
Bench.fireTimer(pane, 0);
eq(Bench.texts(pane).length, lines + 2, "also one that does not run");
throws(function () { Bench.fireTimer(pane, 2); }, "no timer 2");

// ---- progress ------------------------------------------------------------------------------
eq(press("work"), "worked");
var log = Bench.progress();
var end = log[log.length - 1];
eq([end.title, end.info, end.position, end.total, end.cancellable],
    ["Working", "Phase 2", 20, 20, true]);
Bench.cancelProgress({ title: "Working", info: "Phase 2" });
eq(press("work"), "cancelled work");
eq(Bench.progress().pop().position, 11, "noticed after the next step");
Bench.cancelProgress({ steps: 3 });
eq(press("work"), "cancelled work");
eq(Bench.progress().pop().position, 3);
eq(press("work"), "worked", "each cancels once");
Bench.cancelProgress({ title: "Work" });
eq(press("work"), "cancelled work", "by its title alone, as soon as it shows");
eq(Bench.progress().pop().position, 0);
Bench.cancelProgress({ title: "Counting", steps: 2 });
eq([press("count"), Bench.pendingCancels().length], ["counted", 0], "it cannot be, and that was it");
Bench.cancelProgress({ steps: 2 });
eq([press("count"), press("work")], ["counted", "cancelled work"], "the first that can be");
Bench.cancelProgress({ title: "Never", info: "x" });
eq(JSON.stringify(Bench.pendingCancels()), '[{"title":"Never","info":"x"}]');
eq([Bench.dropCancels(), Bench.pendingCancels().length], [1, 0]);
throws(function () { Bench.cancelProgress({}); }, "title");

// ---- addresses and folders -----------------------------------------------------------------
eq(Bench.urls(), []);
press("show address");
eq(Bench.urls(), ["http://trial.invalid/index.htm"]);
panes.findPane("DzContentLibraryPane").browseToNativeFolder(App.getTempPath());
eq(Bench.browsedFolders(), [App.getTempPath()]);

// ---- files ---------------------------------------------------------------------------------
var FILE = App.getTempPath() + "/a/\u00e9.txt";
eq(Bench.readFile(FILE), null);
eq(Bench.writeFile(FILE, "AAEC/w=="), true);
eq(Bench.readFile(FILE), "AAEC/w==");
eq(Bench.removeFile(FILE), true);
eq(Bench.removeFile(FILE), false);
eq(Bench.writeFile(App.getTempPath(), "AAEC"), false, "a folder is in the way");

// ---- calls that fail -----------------------------------------------------------------------
var DATA = App.getDataFolderPath() + "/trial.dat";
eq(press("write file"), "written");
eq(Bench.readFile(DATA), "dHJpYWw=");
Bench.failCall("write", 1);
eq(Bench.writeFile(FILE, "AAEC"), true, "only a plug-in's calls count");
eq(press("write file"), "not written");
eq(press("write file"), "written", "once");
Bench.failCall("open", 2);
eq([press("write file"), press("write file"), press("write file")],
    ["written", "not opened", "written"]);
Bench.failCall("findAction", 1);
assert(MainWindow.getActionMgr().findAction("TrialAction"), "asked by the script");
eq([press("find action"), press("find action")], ["not found", "found"]);
throws(function () { Bench.failCall("", 1); }, "''");

// ---- the end of a pane ---------------------------------------------------------------------
Bench.stopPane();
eq(panes.findPane("TrialPane"), null);
eq(Bench.readFile(App.getDataFolderPath() + "/closed.dat"), "Y2xvc2VkCg==");
pane = Bench.startPane();
assert(pane.getPaneGroup() === group, "in the group where it was");
var again = Bench.restartPlugin();
assert(again === panes.findPane("TrialPane") && again !== pane, "another one");
Bench.wait(10);

// ---- pictures ------------------------------------------------------------------------------
eq(Bench.grab(again, App.getTempPath() + "/pane.png"), true);
eq(Bench.grabViewport(App.getTempPath() + "/viewport.png"), true);
eq(Bench.readFile(App.getTempPath() + "/viewport.png").substr(0, 11), "iVBORw0KGgo", "a PNG");
eq(Bench.grab(again, "/no/such/folder/x.png"), false);
quit(0);
