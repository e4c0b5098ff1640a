// Every button of the main page with each mouse button on every kind of selection: boxes, undo
// steps and status texts.
include("lib.js");
include("pane_lib.js");

var REFERENCE = args[0] + "/data/Brannoc/Quillon/reference.duf";
var INVALID = { title: "Error", text: "Invalid selection", button: "OK" };
var NO_FIGURE = { title: "Error", text: "Please select a Genesis 8 figure first.", button: "OK" };
var NO_SCANNER = { title: "Error", button: "OK",
    text: "The scanner needs a Genesis 8 figure as a reference.\n"
        + "Please load and select a Genesis 8 figure and retry." };

var figure = Scene.loadFigure("Genesis8Female");
var prop = Scene.addProp("box", [-5, 0, -5], [5, 10, 5]);
var stranger = Scene.loadFigure("Genesis8Male");
stranger.setName("SomebodyElse");

function selectOnly()
{
    Scene.selectAll(false);
    for (var i = 0; i < arguments.length; ++i)
        arguments[i].select(true);
    if (arguments.length)
        Scene.setPrimarySelection(arguments[0]);
}

var SELECTIONS = {
    nothing: function () { selectOnly(); },
    prop: function () { selectOnly(prop); },
    figure: function () { selectOnly(figure); },
    bone: function () { selectOnly(figure.findBone("lForearmBend")); },
    bones: function () { selectOnly(figure.findBone("lForearmBend"), figure.findBone("lShin")); },
    boneAndRoot: function () { selectOnly(figure.findBone("lForearmBend"), figure); },
    stranger: function () { selectOnly(stranger); }
};

function isNode(s) { return s != "nothing"; }
function isFigure(s) { return s == "figure" || s == "bone" || s == "bones" || s == "boneAndRoot"; }

// What a press does: box (none: null), undo steps, status line (none: null).
function outcome(button, which, s)
{
    var none = { box: null, steps: 0, status: null };
    var invalid = { box: INVALID, steps: 0, status: null };
    function step(status) { return { box: null, steps: 1, status: status }; }
    switch (button) {
    case 0:
        if (which == "middle")
            return none;
        if (!isFigure(s))
            return { box: NO_FIGURE, steps: 0, status: null };
        return which == "left" ? { box: null, steps: 0, status: "Reference Pose memorized" }
                               : step("Reference Pose shown");
    case 2:
        return isFigure(s) ? step("Reset succeeded") : invalid;
    case 3:
        if (!isNode(s))
            return invalid;
        if (!isFigure(s)) // the dialog is cancelled: no message, the step stays
            return { box: { title: "Optimize Prop Origin", button: "Cancel" }, steps: 1, status: null };
        return step(which == "middle" ? null : "Optimization succeeded");
    case 4:
        if (which == "right")
            return none;
        return isNode(s) ? step("Swapping succeeded") : invalid;
    case 5:
        if (which == "right")
            return none;
        if (!isFigure(s))
            return invalid;
        return s == "figure" || s == "boneAndRoot" ? none : step("Symmetrization succeeded");
    case 6:
        if (s != "figure")
            return invalid;
        return step({ left: "Bone rotation limits clamped", right: "Expression limits clamped",
            middle: "All pose limits un-clamped" }[which]);
    case 7:
        return s == "figure" ? step("Bone translations reset succeeded") : invalid;
    case 8:
        if (which == "middle")
            return none;
        return s == "figure" ? step("Figure pose baking succeeded") : invalid;
    case 12:
        return { box: { title: "Quillon", button: "No" }, steps: 0, status: null };
    case 13:
        return isFigure(s) ? { box: { button: "Cancel" }, steps: 0, status: null }
                           : { box: NO_FIGURE, steps: 0, status: null };
    case 14:
        return isFigure(s) ? { box: { title: "Quillon", button: "No" }, steps: 0, status: null }
                           : { box: NO_SCANNER, steps: 0, status: null };
    case 15:
        return { box: { title: "Quillon Settings", button: "Cancel" }, steps: 0, status: null };
    default:
        return none;
    }
}

var STATUS_WORDS = /succeeded|clamped|memorized|shown/;
var presses = 0;
for (var s in SELECTIONS) {
    for (var button = 0; button < 16; ++button) {
        if (button == 1)
            continue; // opens another page: below
        ["left", "right", "middle"].forEach(function (which) {
            var what = s + ", button " + button + ", " + which;
            SELECTIONS[s]();
            Bench.removeFile(REFERENCE);
            if (button == 0 && which == "right" && isFigure(s))
                ; // shows even without a file
            endStatus();
            var expected = outcome(button, which, s);
            var dialogs = Bench.dialogs().length, steps = UndoStack.count();
            if (expected.box)
                Bench.expect(expected.box);
            click(button, which);
            eq(Bench.dialogs().length - dialogs, expected.box ? 1 : 0, what + ": boxes");
            eq(Bench.pendingExpects().length, 0, what + ": the box that was expected");
            eq(UndoStack.count() - steps, expected.steps, what + ": undo steps");
            if (expected.steps)
                eq(UndoStack.captions().slice(-1)[0], "quillon_stack", what);
            var shown = texts().filter(function (line) { return STATUS_WORDS.test(line); });
            eq(shown.length ? shown[0] : null, expected.status, what + ": status");
            ++presses;
        });
    }
}
eq(presses, 7 * 15 * 3);

// ---- kinds of boxes ------------------------------------------------------------------------
SELECTIONS.nothing();
function boxOf(button, which, answer)
{
    Bench.expect({ button: answer });
    click(button, which);
    var d = Bench.dialogs().slice(-1)[0];
    return [d.kind, d.icon, d.title, d.buttons.join(" "), d.parentClass];
}
eq(boxOf(2, "left", "OK"), ["message", "critical", "Error", "OK", ""]);
eq(boxOf(0, "left", "OK"), ["message", "warning", "Error", "OK", "PoseBenchWindow"]);
eq(boxOf(14, "left", "OK"), ["message", "warning", "Error", "OK", "PoseBenchWindow"]);
eq(boxOf(12, "left", "No"), ["message", "question", "Quillon", "Yes No", ""]);
SELECTIONS.figure();
eq(boxOf(14, "left", "No"), ["message", "question", "Quillon", "Yes No", ""]);

// The reference pose is replaced only after a Yes.
click(0, "left");
assert(shows("Reference Pose memorized"), "memorized");
var first = Bench.readFile(REFERENCE);
figure.findBone("lForearmBend").getYRotControl().setValue(-30);
endStatus();
Bench.expect({ title: "Quillon", button: "No",
    text: "There is already a memorized reference pose. Do you want to replace it with the currently "
        + "selected figure pose?" });
click(0, "left");
assert(!shows("Reference Pose memorized"), "No does nothing more");
eq(Bench.readFile(REFERENCE), first);
Bench.expect({ title: "Quillon", button: "Yes" });
click(0, "left");
assert(shows("Reference Pose memorized"), "Yes replaces");
assert(Bench.readFile(REFERENCE) != first, "the file is another");

// Nothing to patch: status and box.
Bench.expect({ title: "Quillon", button: "Yes" });
Bench.expect({ title: "Complete", text: "No products requiring a patch were found", button: "OK" });
click(12, "left");
eq(Bench.pendingExpects().length, 0);

// ---- clicks of other buttons, keys, pages -----------------------------------------------------
var steps = UndoStack.count(), urls = Bench.urls().length;
click(2, "x1");
click(401, "x1");
eq([UndoStack.count() - steps, Bench.urls().length - urls], [0, 0], "other mouse buttons");
click(401, "left");
eq(Bench.urls().length - urls, 1, "the link opens a page");
assert(/index\.htm$/.test(Bench.urls().slice(-1)[0]), Bench.urls().slice(-1)[0]);
click(400, "left");
eq(Bench.urls().length - urls, 1, "the banner opens none while it is hidden");

["a", "Delete", "Space", "Escape", "Tab"].forEach(function (key) {
    eq(Bench.key(PANE, key), false, "key " + key + " is left to the host");
});

["left", "right", "middle"].forEach(function (which) {
    click(1, which);
    Bench.move(PANE, 5, 5);
    eq(Bench.accessible(PANE)[0].name, "Browse All Poses", "the picker page");
    click(202, which);
    assert(Bench.accessible(PANE)[0].name.indexOf("REFERENCE POSE") == 0, "the main page");
});
quit(0);
