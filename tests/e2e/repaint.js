// The pane repaints when something visible changes, and only then.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");
writeLibrary();

function moveTo(x, y) // canvas
{
    Bench.move(PANE, Math.round(x * paneSize()[0] / 512), Math.round(y * paneSize()[1] / 1024));
}

function repaints(what, count, run)
{
    var before = Bench.paintCount(PANE);
    run();
    eq(Bench.paintCount(PANE) - before, count, what + ": repaints");
}

function path(what, count, points)
{
    repaints(what, count, function () {
        points.forEach(function (point) { moveTo(point[0], point[1]); });
    });
}

function checkPage(what, button, empty)
{
    var at = place(button);
    moveTo(empty[0], empty[1]);
    path(what + ", over the ground", 0, [[empty[0] + 1, empty[1]], [empty[0], empty[1] + 1], empty]);
    path(what + ", onto a button", 1, [at]);
    path(what + ", within it", 0, [[at[0] + 3, at[1]], [at[0], at[1] - 3], [at[0] + 1, at[1] + 1], at]);
    path(what + ", off it", 1, [empty]);
}
checkPage("main page", 6, [10, 1015]);
path("from button to button", 2, [place(6), place(7)]);
repaints("nothing by itself", 0, function () { Bench.wait(50); });
repaints("the scene's doings", 0, function () {
    figure.findBone("lShin").getXRotControl().setValue(20);
    Scene.selectAll(false);
    figure.select(true);
    Scene.setPrimarySelection(figure);
});
repaints("the pointer leaves the pane", 1, function () { Bench.move("PoseBenchWindow", 1, 1); });
repaints("and stays away", 0, function () { Bench.move("PoseBenchWindow", 2, 1); });

click(1);
checkPage("picker page", 104, [20, 700]);
click(202);
scan();
click(1);
click(108);
checkPage("browsing page", 218, [10, 700]);
checkPage("next", 201, [10, 700]);
// The squares do not grow; each has its tip.
checkPage("an area", 307, [330, 550]);
path("from area to area", 2, [AREAS[7], AREAS[8]]);
// The rank button of a custom pose does not grow either, but has its tip.
click(202);
click(202);
Bench.expect({ file: "mine" });
click(13);
click(1);
click(100);
click(201, "middle");
checkPage("rank of a custom pose", 213, [10, 700]);

// A status message: one repaint when it comes, one when it goes; presses repaint as well.
click(202);
click(202);
moveTo(10, 1015);
click(2);
moveTo(10, 1015);
repaints("the message goes", 1, function () { Bench.fireTimer(PANE, 0); });
// While it covers the tips, the buttons still grow.
click(2);
path("under the message", 2, [place(6), place(7)]);
quit(0);
