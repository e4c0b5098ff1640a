// Widgets and windows have the very size that was asked for.
include("lib.js");

function size(widget)
{
    return [widget.width, widget.height];
}

var pane = MainWindow.getPaneMgr().findPane("DzQuillonPane");
eq(size(MainWindow), [900, 700], "from the command line");
eq(Bench.resize(pane, 500, 600), [500, 600]);
eq(size(pane), [500, 600]);
eq(Bench.resize(MainWindow, 800, 600), [800, 600], "smaller than what is in it");
eq([size(MainWindow), size(pane)], [[800, 600], [500, 600]]);
assert(pane.getPaneGroup().width() < 800, "its panels share what there is");
Bench.wait(10);
eq(size(MainWindow), [800, 600], "and it stays so");
eq(Bench.resize(pane, 1200, 1000), [1200, 1000]);
var group = pane.getPaneGroup();
assert(group.width() >= 1200 && group.height() >= 1000, "its group has room for it");
assert(MainWindow.width > 1200 && MainWindow.height > 1000, "and so has the window");
eq(Bench.resize(MainWindow, 1, 1), [1, 1]);
throws(function () { Bench.resize(pane, 0, 100); }, "at least one pixel");

Bench.expect({
    button: "OK",
    run: function (dialog) {
        var before = size(dialog);
        eq(Bench.resize(dialog, before[0] + 50, before[1] + 60), before, "of fixed size");
    }
});
MainWindow.getActionMgr().findAction("QuillonAboutAction").trigger();
quit(0);
