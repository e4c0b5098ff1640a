// A file stands where the data folder should be: the plug-in starts, works and ends without a word,
// and the file stays as it was.
include("frame_check.js");

var inTheWay = App.getDataFolderPath() + "/Brannoc";
Bench.writeFile(inTheWay, MARKER);
var pane = Bench.startPane();
include("pane_lib.js");
check("the version line", Bench.texts(pane).join("|").indexOf("Quillon v0.93") >= 0);
var figure = Scene.loadFigure("Genesis8Female");
Scene.setPrimarySelection(figure);
var bend = figure.findBone("lForearmBend").getYRotControl();

// ---- commands that need no file ----------------------------------------------------------------
bend.setValue(-40);
click(2);
same("the bend after a reset", bend.getValue(), 0);
check("its status", shows("Reset succeeded"));
UndoStack.undo();
same("the bend after an undo", bend.getValue(), -40);
endStatus();

// ---- the reference pose has nowhere to go --------------------------------------------------------
var steps = UndoStack.count();
click(0);
click(0); // nothing was memorized: no question
same("undo steps of memorizing", UndoStack.count() - steps, 0);
endStatus();
same("number of boxes", Bench.dialogs().length, 0);
same("the bend while nothing is memorized", bend.getValue(), -40);

// ---- settings hold for this run ------------------------------------------------------------------
var MUTE = " Don't notify me about plugin updates ";
function settings(fields, button)
{
    Bench.expect({ title: "Quillon Settings", fields: fields, button: button });
    click(15);
    same("answers left", Bench.pendingExpects().length, 0);
    return Bench.dialogs().slice(-1)[0].fields[MUTE];
}
var muted = {};
muted[MUTE] = true;
same("updates are muted at first", settings(muted, "Accept"), false);
same("updates are muted then", settings({}, "Cancel"), true);

// ---- saving a pose, browsing ----------------------------------------------------------------------
Bench.expect({ title: "Error", text: "Could not find Custom Pose Library folder.", button: "OK" });
click(13);
same("answers left", Bench.pendingExpects().length, 0);
click(1);
same("the picker page", Bench.accessible(PANE)[0].name, "Browse All Poses");
Bench.expect({ title: "Quillon - Pose Finder Tool", button: "No" });
click(100);
same("answers left", Bench.pendingExpects().length, 0);
check("the browsing page", shows("NO MATCHING POSES FOUND"));
click(202);
click(202);
same("the main page", Bench.accessible(PANE)[0].name.indexOf("REFERENCE POSE"), 0);
same("number of boxes in all", Bench.dialogs().length, 4);

Bench.restartPlugin();
same("updates are muted after a restart", settings({}, "Cancel"), false);
Bench.stopPane();
same("the file", contentOf(inTheWay), MARKER);
