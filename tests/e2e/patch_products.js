// The products update by clicks: question, progress, cancelling, failing writes, boxes.
// args: the content directory.
include("lib.js");
include("pane_lib.js");

var CONTENT = args[0];
var FIRST = "Brannoc/First Dance/FD01 ";
var OLD = "b2xk"; // "old"
var QUESTION = { title: "Quillon", button: "Yes",
    text: "Products by Brannoc Ltd will now be patched to the latest version.\n"
        + "This will overwrite the original files with new files.\n"
        + "If you need to revert back to the original version of a product after\n"
        + "it is patched, you will need to install it again. Proceed?" };
var NOTHING = { title: "Complete", text: "No products requiring a patch were found", button: "OK" };
var PATCHED = { title: "Success", text: "Products patching succeessful!", button: "OK" };

function install(name)
{
    Bench.writeFile(CONTENT + "/" + name, OLD);
}

function content(name)
{
    return Bench.readFile(CONTENT + "/" + name);
}

function isOld(name)
{
    return content(name) == OLD;
}

// Presses the button, with the boxes that are to come; gives the progress it ran.
function patch(boxes)
{
    var steps = UndoStack.count(), before = Bench.progress().length;
    boxes.forEach(function (box) { Bench.expect(box); });
    click(12, "left");
    eq(Bench.pendingExpects().length, 0);
    eq(UndoStack.count(), steps, "nothing to undo");
    endStatus();
    return Bench.progress().slice(before);
}

Bench.removeFile(CONTENT + "/" + FIRST + "001.dse"); // of an earlier run

// ---- No does nothing -------------------------------------------------------------------------
install(FIRST + "000.dse");
eq(patch([{ title: QUESTION.title, text: QUESTION.text, button: "No" }]).length, 0);
assert(isOld(FIRST + "000.dse"), "No leaves the file");

// ---- a whole run -----------------------------------------------------------------------------
install("People/" + FIRST + "025.dse");
install(FIRST + "026.dse"); // beyond the product's scripts
install("XBrannoc/First Dance/FD01 000.dse");
install("Brannoc/Light Rigs/Key Light 003.dse");
install("Brannoc/Camera Aids/Align Camera.dse");
var run = patch([QUESTION, PATCHED]);
var last = run[run.length - 1];
eq([last.title, last.total, last.position, last.cancellable], ["Updating...", 100, 100, true]);
[FIRST + "000.dse", "People/" + FIRST + "025.dse", "Brannoc/Light Rigs/Key Light 003.dse",
    "Brannoc/Camera Aids/Align Camera.dse"].forEach(function (name) {
    assert(!isOld(name) && content(name).length > 100, name + " is patched");
});
eq(content(FIRST + "000.dse"), content("People/" + FIRST + "025.dse"), "one product, one block");
assert(content(FIRST + "000.dse") != content("Brannoc/Camera Aids/Align Camera.dse"),
    "another product, another block");
assert(isOld(FIRST + "026.dse") && isOld("XBrannoc/First Dance/FD01 000.dse"), "others stay");
eq(content(FIRST + "001.dse"), null, "nothing is created");
var block = content(FIRST + "000.dse");

// ---- cancelling ------------------------------------------------------------------------------
install(FIRST + "000.dse");
install(FIRST + "001.dse");
Bench.cancelProgress({ title: "Updating...", steps: 1 });
patch([QUESTION, PATCHED]);
eq(content(FIRST + "000.dse"), block, "what was written stays");
assert(isOld(FIRST + "001.dse"), "the next script was not reached");

install(FIRST + "000.dse");
Bench.cancelProgress({ title: "Updating..." }); // before anything was written
patch([QUESTION, NOTHING]);
assert(isOld(FIRST + "000.dse"), "a cancel during the search writes nothing");

// ---- failing writes --------------------------------------------------------------------------
// What cannot be written beside the file is written over it: after the first and the second of the
// two blocks alike, the product's block stands there.
[["write", 1], ["write", 2], ["rename", 1], ["rename", 2]].forEach(function (failing) {
    var what = failing.join(" ");
    install(FIRST + "000.dse");
    install(FIRST + "001.dse");
    Bench.failCall(failing[0], failing[1]);
    patch([QUESTION, PATCHED]);
    eq(Bench.pendingCalls().length, 0, what);
    eq(content(FIRST + "000.dse"), block, what + " fails");
    eq(content(FIRST + "001.dse"), block, "after a failing " + what);
    eq(content(FIRST + "000.dse.new"), null, "nothing is left behind by " + what);
});

// ---- the status text when nothing is installed -----------------------------------------------
[FIRST + "000.dse", FIRST + "001.dse", "People/" + FIRST + "025.dse",
    "Brannoc/Light Rigs/Key Light 003.dse", "Brannoc/Camera Aids/Align Camera.dse"]
    .forEach(function (name) { Bench.removeFile(CONTENT + "/" + name); });
Bench.expect(QUESTION);
Bench.expect(NOTHING);
click(12, "right");
assert(shows("No products requiring") && shows("a patch were found"), "status of nothing patched");
eq(Bench.pendingExpects().length, 0);
quit(0);
