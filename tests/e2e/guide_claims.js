// What the user's guide says of the program where a reader could not guess it: by real clicks.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

function turn(bone, axis)
{
    return figure.findBone(bone)["get" + axis + "RotControl"]();
}

function hipHeight(node)
{
    return (node || figure).findBone("hip").getWSPos()[1];
}

function forearms()
{
    return [turn("lForearmBend", "Y").getValue(), turn("rForearmBend", "Y").getValue()];
}

function textOf(line)
{
    return Bench.draws(PANE).filter(function (draw) { return draw.kind == "text" && draw.text == line; })[0];
}

// ---- the text area is above the buttons ----------------------------------------------------------
var scale = paneSize()[1] / 1024;
Bench.move(PANE, place(2)[0] * paneSize()[0] / 512, place(2)[1] * scale);
var tip = textOf("Reset Figure Pose").rect;
assert(tip.y + tip.height < 270 * scale, "the text area lies above the first row of buttons");

// ---- NO MATCHING while no pose is current --------------------------------------------------------
writeLibrary();
scan();
Bench.stopPane();
Bench.removeFile(dataFile("settings"));
Bench.startPane();
Bench.resize(PANE, SIZE[0], SIZE[1]);
click(1);
click(100);
eq(counter(), NOTHING, "no pose is current, though there are matches");
click(201);
assert(/^POSE \d+ of 16$/.test(counter()), "an arrow takes the first of them: " + counter());

// ---- locks without a memorized pose --------------------------------------------------------------
turn("lHand", "Z").setValue(33);
click(218);
near(turn("lHand", "Z").getValue(), 33, 1e-4, "the part keeps what it has on the figure");
click(201);
near(turn("lHand", "Z").getValue(), 33, 1e-4, "while one browses");
click(218);
near(turn("lHand", "Z").getValue(), 0, 1e-4, "unlocked it takes the file's pose");

// ---- with one, the locked part takes the memorized pose at once ----------------------------------
click(202);
click(202);
turn("lHand", "Z").setValue(21);
turn("rForearmBend", "Y").setValue(11);
click(0);
eq(shows("Reference Pose memorized"), true, "memorized");
var reference = forearms();
click(1);
click(100);
click(201);
click(218);
near(turn("lHand", "Z").getValue(), 21, 1e-3, "locked: as memorized");
click(218);

// ---- the mirror button after "reference on, off" -------------------------------------------------
var plain = forearms();
click(212);
near(forearms(), [-plain[1], -plain[0]], 1e-3, "mirrored");
click(223);
near(forearms(), reference, 1e-3, "the reference pose");
click(223);
near(forearms(), plain, 1e-3, "back, the pose is not mirrored");
eq(isOn(212), true, "but the mirror button is still lit");
click(212);
near(forearms(), plain, 1e-3, "the first press puts the light out");
eq(isOn(212), false);
click(212);
near(forearms(), [-plain[1], -plain[0]], 1e-3, "the second mirrors");

// ---- lying figures keep the hip's height ---------------------------------------------------------
figure.findBone("hip").getYPosControl().setValue(5);
var standing = hipHeight();
click(202);
click(103);
click(201);
assert(figure.findBone("hip").getWSRot()[0] > 0.6, "it lies on the back");
near(hipHeight(), standing, 1e-3, "the hip is where it was: the figure floats");

// ---- an animated hip: the other frames move ------------------------------------------------------
click(202);
click(202);
var hip = figure.findBone("hip"), frame = 30 * Scene.getTimeStep();
click(2, "right");
hip.getYPosControl().setValue(0, 10);
hip.getYPosControl().setValue(frame, 40);
function heightAt(time)
{
    Scene.setTime(time);
    return hipHeight();
}
Scene.setAnimRange(0, frame);
var there = heightAt(frame), here = heightAt(0);
Scene.setPrimarySelection(figure);
click(3);
eq(shows("Optimization succeeded"), true, "hip as centre at the first frame");
near(heightAt(0), here, 1e-3, "in the frame that is shown nothing moves");
near(heightAt(frame), there + 10, 1e-3, "in the other frame the body has moved by what the hip had");
UndoStack.undo();
Scene.setTime(0);
hip.getYPosControl().deleteAllKeys();

// ---- what a locked channel refuses ---------------------------------------------------------------
Scene.setPrimarySelection(figure);
turn("lForearmBend", "Y").setValue(-40);
turn("rForearmBend", "Y").setValue(0);
turn("lForearmBend", "Y").lock(true);
click(4);
near(forearms(), [-40, 40], 1e-3, "swap: the locked channel stays, its partner takes its value");
turn("lForearmBend", "Y").lock(false);
turn("rForearmBend", "Y").setValue(0);
turn("lForearmBend", "Y").lock(true);
Scene.setPrimarySelection(figure.findBone("lForearmBend"));
click(2);
near(forearms(), [-40, 0], 1e-3, "reset: it stays");
click(1);
click(100);
click(201);
near(forearms()[0], -40, 1e-3, "browsing: it stays");
click(202);
click(202);
turn("lForearmBend", "Y").lock(false);
Scene.setPrimarySelection(figure);
hip.getYPosControl().setValue(0, 7);
hip.getYPosControl().lock(true);
var poseBefore = JSON.stringify(Bench.poseState(figure)), steps = UndoStack.count();
endStatus();
click(3);
eq(JSON.stringify(Bench.poseState(figure)), poseBefore, "optimize: nothing changes");
eq(shows("Optimization succeeded"), false, "and no success is told");
hip.getYPosControl().lock(false);

// ---- expressions without a mirror name stay on their side, on Genesis 8.1 ------------------------
function afterSwap(name, controls)
{
    var node = Scene.loadFigure(name);
    Scene.setPrimarySelection(node);
    node.findProperty(controls[0]).setValue(0.5);
    click(4);
    return controls.map(function (control) { return node.findProperty(control).getValue(); });
}
var CLOSED = ["eCTRLEyesClosedL", "eCTRLEyesClosedR"];
near(afterSwap("Genesis8Female", CLOSED), [0, 0.5], 1e-6, "Genesis 8: the other eye");
near(afterSwap("Genesis8_1Female", CLOSED), [0.5, 0], 1e-6, "Genesis 8.1: the same eye");
near(afterSwap("Genesis8_1Female", ["facs_jnt_JawLeft", "facs_jnt_JawRight"]), [0, 0.5], 1e-6,
    "Genesis 8.1: what is called Left and Right trades places");

// ---- custom poses: whatever they are like, a scan of their folder keeps them ---------------------
Scene.setPrimarySelection(figure);
var installed = readIndexFile().length;
["one", "the same again"].forEach(function (name) {
    Bench.expect({ file: name });
    click(13);
});
eq(readIndexFile().length, installed + 2, "known without a scan");
scan();
eq(readIndexFile().length, installed + 2, "and after one: the folder is below a content directory");
quit(0);
