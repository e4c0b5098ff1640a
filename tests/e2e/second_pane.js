// A script makes and deletes a pane of its own. The host's pane goes on as if nothing had been.
include("frame_check.js");

Bench.writeFile(dataFile("settings"), OTHER_SETTINGS);
var pane = Bench.startPane();
var textsBefore = Bench.texts(pane).join("|");
check("the version line", textsBefore.indexOf("Quillon v0.93") >= 0);

var second = new DzQuillonPane();
check("a pane of its own", second && String(second) != "undefined" && second != pane);
second.deleteLater();
second = undefined;
Bench.wait(50);

Bench.press(pane, 60, 300, "left");
Bench.press(pane, 60, 300, "right");
check("still the pane", MainWindow.getPaneMgr().findPane("DzQuillonPane") == pane);
same("number of boxes", Bench.dialogs().length, 0);
same("crash marker", contentOf(dataFile("crashed")), "");

Bench.stopPane();
same("settings at the end", contentOf(dataFile("settings")), OTHER_SETTINGS);
