// Boxes and dialogs run events: while one is open a script takes the figure out of the scene, or
// deletes it. The command that asked then ends with nothing changed.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");
writeLibrary();

var WAYS = { "taken out": function () { Scene.removeNode(Scene.getPrimarySelection()); },
    "deleted": function () { Scene.clear(); } };

function loadAnew()
{
    Scene.clear();
    figure = Scene.loadFigure("Genesis8Female");
    eq(Scene.getPrimarySelection().name, figure.name, "a figure is selected");
    endStatus();
}

function state() // of the plug-in's files
{
    return [readBytes(dataFile("poseIndex")), readBytes(REFERENCE),
        readBytes(CUSTOM_FOLDER + "kept.duf"), readBytes(CUSTOM_FOLDER + "gone.duf")];
}

// One press, whose only window is answered after the figure has gone, both ways.
function goneDuring(what, button, expected, prepare)
{
    for (var way in WAYS) {
        loadAnew();
        if (prepare)
            prepare();
        var files = state(), dialogs = Bench.dialogs().length, logged = Bench.progress().length;
        expected.run = WAYS[way];
        Bench.expect(expected);
        click(button);
        var name = what + ", " + way;
        eq(Scene.nodes().length, 0, name + ": the figure is gone");
        eq(Bench.dialogs().length - dialogs, 1, name + ": no window more");
        eq(Bench.progress().length, logged, name + ": nothing is scanned");
        eq(show(state()) === show(files), true, name + ": the files are as they were");
        eq(UndoStack.isLocked(), false, name);
        assert(!shows("Reference Pose memorized") && !shows("Optimization succeeded"), name);
    }
}

// ---- before anything is indexed ------------------------------------------------------------------
goneDuring("the first scan", 101, { title: "Quillon - Pose Finder Tool", button: "Yes" },
    function () { click(1); });
eq(texts().filter(function (line) { return COUNTER.test(line); }), [], "nothing is browsed");
click(202);

loadAnew();
scan();

// ---- the main page -------------------------------------------------------------------------------
click(0);
eq(readBytes(REFERENCE) !== null, true, "a reference pose to be replaced");
goneDuring("replacing the reference pose", 0, { title: "Quillon", button: "Yes" },
    function () { figure.findBone("lShin").getXRotControl().setValue(40); });
goneDuring("the question of a scan", 14, { title: "Quillon", button: "Yes" });
goneDuring("saving", 13, { file: "gone" });

// ---- the browsing page ---------------------------------------------------------------------------
loadAnew();
Bench.expect({ file: "kept" });
click(13);
click(1);
click(100);
goneDuring("deleting", 220, { title: "Quillon - Delete Custom Pose", button: "Yes" },
    function () { click(201, "middle"); eq(label(), ["kept"]); });
click(202);
click(202);

// ---- a prop --------------------------------------------------------------------------------------
goneDuring("the rotation order", 3, { title: "Optimize Prop Origin" }, function () {
    Scene.clear();
    var prop = Scene.addProp("crate", [-10, 0, -20], [30, 50, 40]);
    prop.select(true);
    Scene.setPrimarySelection(prop);
});
quit(0);
