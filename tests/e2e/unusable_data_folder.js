// A file stands where the data folder should be: the plug-in starts, works and ends without a word,
// and the file stays as it was.
include("frame_check.js");

var inTheWay = App.getDataFolderPath() + "/Brannoc";
Bench.writeFile(inTheWay, MARKER);
var pane = Bench.startPane();
check("the version line", Bench.texts(pane).join("|").indexOf("Quillon v0.93") >= 0);
Bench.press(pane, 60, 300, "left");
Bench.restartPlugin();
Bench.stopPane();
same("number of boxes", Bench.dialogs().length, 0);
same("the file", contentOf(inTheWay), MARKER);
