// Nodes, properties, time, selection and undo as scripts see them.
include("lib.js");

var figure = Scene.loadFigure("Genesis8Female");
var thigh = figure.findBone("lThighBend");

// ---- transforms ----------------------------------------------------------------------------
eq(thigh.getRotationOrder(), "YZX");
thigh.getXRotControl().setValue(-90);
var local = thigh.getLocalRot();
near(local[0], 0.707, 0.01, "x of the lifted thigh");
near(local[3], Math.SQRT1_2, 1e-6, "w of the lifted thigh");
eq(thigh.getLocalScale(), [[1, 0, 0], [0, 1, 0], [0, 0, 1]]);
figure.setWSPos([10, 20, 30]);
near(figure.getWSPos(), [10, 20, 30], 1e-5);
near(figure.getWSPos(4800), [10, 20, 30], 1e-5, "later");
figure.setWSRot([0, -Math.SQRT1_2, 0, Math.SQRT1_2]); // 90 degrees about Y
near(figure.getYRotControl().getValue(), 90, 1e-3);
near(figure.getWSRot(), [0, -Math.SQRT1_2, 0, Math.SQRT1_2], 1e-6);
throws(function () { thigh.setWSPos([1, 2]); }, "vector");
throws(function () { thigh.setWSRot("x"); }, "quaternion");
throws(function () { thigh.setRotationOrder("XXY"); }, "rotation order");

var prop = Scene.addProp("Box", [-1, -2, -3], [4, 5, 6]);
eq(prop.getLocalBoundingBox(), [[-1, -2, -3], [4, 5, 6]]);
eq(prop.getLocalBoundingBox().max, [4, 5, 6]);
prop.setRotationOrder("ZYX");
eq(prop.getRotationOrder(), "ZYX");
prop.setOrigin([1, 2, 3]);
eq(prop.getOrigin(), [1, 2, 3]);
eq(prop.getLocalPos(), [0, 0, 0]);
prop.setLocalScale([[2, 0, 0], [0, 3, 0], [0, 0, 4]]);
near(prop.getZScaleControl().getValue(), 4, 1e-6);
near(prop.getWSScale()[1], [0, 3, 0], 1e-6);
prop.setLocalPos([7, 8, 9]);
near(prop.getWSPos(), [8, 10, 12], 1e-5, "the origin counts");
assert(figure.addNodeChild(prop), "a figure can carry a prop");
assert(prop.getNodeParent() === figure, "and is its parent");

// ---- properties ----------------------------------------------------------------------------
var p = prop.getXRotControl();
assert(prop.findProperty("XRotate") === p, "a channel is found by its name");
eq(prop.findProperty("xrotate"), null, "exact names only");
eq(p.getNumKeys(), 0);
p.setValue(0, 1);
p.setValue(4800, 3);
eq(p.getNumKeys(), 2);
eq(p.getKeyTime(1), 4800);
eq(p.getKeyValue(1), 3);
near(p.getValue(0), 1, 0);
p.deleteAllKeys();
eq(p.getNumKeys(), 0);
p.setMinMax(-5, 5);
eq([p.getMin(), p.getMax()], [-5, 5]);
p.setIsClamped(true);
p.setValue(50);
eq([p.getValue(), p.getRawValue(), p.isClamped()], [5, 50, true]);
p.lock(true);
p.setValue(1);
eq([p.getRawValue(), p.isLocked()], [50, true]);
p.lock(false);
p.setRawValue(2);
eq(p.getRawValue(), 2);
assert(p.getSensitivity() > 0, "a step of the sliders");
eq(p.getNumControllers(), 0);
assert(figure.findBone("lShin").getXRotControl().getNumControllers() > 0, "controls drive bones");

// ---- selection -----------------------------------------------------------------------------
Scene.selectAll(false);
eq(Scene.getPrimarySelection(), null);
thigh.select(true);
assert(Scene.getPrimarySelection() === thigh && thigh.isSelected(), "one bone");
var shin = figure.findBone("lShin");
shin.select(true);
eq(Scene.selectedNodes().length, 2);
Scene.setPrimarySelection(shin);
assert(Scene.getPrimarySelection() === shin && thigh.isSelected(), "two bones, the second first");
Scene.setPrimarySelection(prop);
assert(prop.isSelected() && !shin.isSelected(), "what was not selected is selected alone");

// ---- mutilation ----------------------------------------------------------------------------
eq(figure.removeBone("head"), true);
eq(figure.findBone("head"), null);
eq(figure.bones().length, 169);
eq(figure.removeBone("head"), false);
assert(figure.findControl("pCTRLHipBend"), "a control of the figure node");
eq(figure.removeControl("pCTRLHipBend"), true);
eq(figure.findControl("pCTRLHipBend"), null);
eq(figure.removeControl("pCTRLHipBend"), false);
prop.setName("Crate");
assert(Scene.findNode("Crate") === prop, "by its new name");

// ---- time ----------------------------------------------------------------------------------
eq([Scene.getTime(), Scene.getTimeStep()], [0, 160]);
Scene.setTime(320);
eq(Scene.getTime(), 320);
Scene.setAnimRange(160, 1600);
eq(Scene.getAnimRange(), [160, 1600]);
eq(Scene.getAnimRange().end, 1600);
Scene.setTime(0);

// ---- undo ----------------------------------------------------------------------------------
var count = UndoStack.count();
eq(UndoStack.captions().length, count);
eq(UndoStack.captions()[0], "Load Figure");
var before = Bench.poseState(figure);
shin.getXRotControl().setValue(33);
eq(UndoStack.count(), count + 1);
eq(differences(before, Bench.poseState(figure)), ["lShin/XRotate"]);
assert(UndoStack.undo(), "something to undo");
eq(differences(before, Bench.poseState(figure)), []);
assert(UndoStack.redo(), "something to redo");
eq(Bench.poseState(figure)["lShin/XRotate"], 33);
eq(UndoStack.isLocked(), false);

// ---- states --------------------------------------------------------------------------------
figure.getXPosControl().setValue(12);
eq(Bench.poseState(figure)["figure/XTranslate"], 12);
eq(Bench.poseState(figure)["Genesis8Female/XTranslate"], 12);
eq(Bench.poseState(shin)["lShin/XRotate"], 33, "asked of a bone");
figure.findBone("lHand").getXRotControl().lock(true);
var flags = Bench.flagState(figure)["lHand/XRotate"];
eq([flags.locked, flags.clamped], [true, figure.findBone("lHand").getXRotControl().isClamped()]);
Scene.removeNode(prop);
eq(Scene.findNode("Crate"), null);
quit(0);
