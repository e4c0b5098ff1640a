// In a new home the pane docks itself as it is first shown. The window it came in goes; the main
// window gets the keys.
include("lib.js");

eq(Bench.focus(), "ViewportWidget");
var x = Scene.getPrimarySelection().getXPosControl();

function undoesByKey(when)
{
    x.setValue(5);
    Bench.key(MainWindow, "Ctrl+Z");
    eq(x.getValue(), 0, when);
}

undoesByKey("after the first start");
Bench.expect({ button: "OK" });
MainWindow.getActionMgr().findAction("QuillonAboutAction").trigger();
eq(Bench.focus(), "ViewportWidget", "after a box");
var group = MainWindow.getPaneMgr().createEmptyPaneGroup();
Bench.restartPlugin().moveToGroup(group); // in a window of its own
Bench.restartPlugin();
undoesByKey("after another start");
Bench.stopPane();
undoesByKey("without a pane");

// The host does what its shortcut says; no widget has accepted the key.
x.setValue(5);
eq(Bench.key(MainWindow, "Ctrl+Z"), false);
eq(x.getValue(), 0);
quit(0);
