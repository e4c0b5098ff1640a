// The start after one that was killed: run by crash_guard.sh, which says as the first argument
// whether the killed start had got as far as its marker.
include("frame_check.js");

var marked = args[0] == "marked";
same("crash marker", contentOf(dataFile("crashed")), marked ? MARKER : "");
same("settings of the run before", contentOf(dataFile("settings")), OTHER_SETTINGS);

if (marked)
    Bench.expect({ title: "Quillon plugin - Warning", button: "OK" });
Bench.startPane();
same("number of boxes", Bench.dialogs().length, marked ? 1 : 0);
same("answers left", Bench.pendingExpects().length, 0);
if (marked) {
    var box = Bench.dialogs()[0];
    same("icon", box.icon, "warning");
    same("buttons", box.buttons.join(","), "OK");
    same("parent", box.parentClass, "");
    same("text", box.text,
        "Something went wrong the last time the Quillon plugin was loaded\nand Daz Studio crashed. " +
        "If the problem persists,\nremove the Quillon.dll file from the 'plugins' folder\nin the " +
        "main Daz Studio folder installation directory");
}
same("crash marker after the start", contentOf(dataFile("crashed")), "");
check("the pose index is dropped with the marker", marked == (contentOf(dataFile("poseIndex")) == ""));
Bench.restartPlugin();
same("number of boxes after the next start", Bench.dialogs().length, marked ? 1 : 0);
Bench.stopPane();
same("settings", contentOf(dataFile("settings")), marked ? DEFAULT_SETTINGS : OTHER_SETTINGS);
