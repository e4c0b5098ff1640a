// A script makes and deletes a pane of its own. The host's pane goes on as if nothing had been: its
// buttons work, its tips show, and what they changed is saved at the end.
include("frame_check.js");

Bench.writeFile(dataFile("settings"), OTHER_SETTINGS);
var pane = Bench.startPane();
include("pane_lib.js");
var textsBefore = Bench.texts(pane).join("|");
check("the version line", textsBefore.indexOf("Quillon v0.93") >= 0);
var figure = Scene.loadFigure("Genesis8Female");
Scene.setPrimarySelection(figure);
var bend = figure.findBone("lForearmBend").getYRotControl();

function pressReset(when)
{
    bend.setValue(-40);
    var steps = UndoStack.count();
    click(2);
    same("the bend, " + when, bend.getValue(), 0);
    same("undo steps, " + when, UndoStack.count() - steps, 1);
    check("the status shows, " + when, shows("Reset succeeded"));
    endStatus();
    check("the tip shows, " + when, shows("Reset Figure Pose"));
}

pressReset("alone");
var second = new DzQuillonPane();
check("a pane of its own", second && String(second) != "undefined" && second != pane);
pressReset("beside another pane");
second.deleteLater();
second = undefined;
Bench.wait(50);
check("still the pane", MainWindow.getPaneMgr().findPane("DzQuillonPane") == pane);
pressReset("after the other pane");
same("timers", Bench.timers(PANE).length, 2);

// ---- pages, boxes and dialogs ------------------------------------------------------------------
click(1);
same("the picker page", Bench.accessible(PANE)[0].name, "Browse All Poses");
click(202, "right");
same("the main page", Bench.accessible(PANE)[0].name.indexOf("REFERENCE POSE"), 0);
same("number of boxes", Bench.dialogs().length, 0);
Scene.selectAll(false);
Scene.setPrimarySelection(null);
Bench.expect({ title: "Error", text: "Invalid selection", button: "OK" });
click(2);
Bench.expect({ title: "Quillon Settings", button: "Cancel" });
click(15, "middle");
same("answers left", Bench.pendingExpects().length, 0);
same("crash marker", contentOf(dataFile("crashed")), "");

Bench.stopPane();
same("settings at the end", contentOf(dataFile("settings")), OTHER_SETTINGS);
