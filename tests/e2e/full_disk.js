// Run by full_disk.sh: starts and ends go on without a word.
include("frame_check.js");

var pane = Bench.startPane();
check("the version line", Bench.texts(pane).join("|").indexOf("Quillon v0.93") >= 0);
Bench.restartPlugin();
Bench.stopPane();
same("number of boxes", Bench.dialogs().length, 0);
