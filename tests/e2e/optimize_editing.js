// Optimize Editing by clicks on the pane and on its dialog: figures, props, keys, cancelling.
// args: the home folder, and a file for the dialog's picture.
include("lib.js");
include("pane_lib.js");

var STEP = Scene.getTimeStep();
var TITLE = "Optimize Prop Origin";
var SUCCEEDED = "Optimization succeeded";
var ORIGINS = ["No change", "Imported model origin", "Object center", "Current world center"];
var ORDERS = ["XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"];
var LOW = [-10, 0, -20], HIGH = [30, 50, 40];

function selectOnly(node)
{
    Scene.selectAll(false);
    node.select(true);
    Scene.setPrimarySelection(node);
}

// One press of the button: the undo steps it made, and whether it told success.
function optimize(which)
{
    var before = UndoStack.count();
    click(3, which);
    var told = shows(SUCCEEDED);
    endStatus();
    return [UndoStack.count() - before, told];
}

function worldPlaces(figure)
{
    return figure.bones().map(function (bone) { return bone.getWSPos().concat(bone.getWSRot()); });
}

// ---- figures -------------------------------------------------------------------------------
FIGURES.forEach(function (name) {
    var figure = Scene.loadFigure(name), hip = figure.findBone("hip");
    hip.getYPosControl().setValue(10);
    figure.findBone("lShin").getXRotControl().setValue(40);
    selectOnly(figure);
    var before = worldPlaces(figure);
    eq(optimize("left"), [1, true], "left click");
    eq(hip.getLocalPos(), [0, 0, 0]);
    near(figure.getWSPos(), [0, 10, 0], 1e-4, name);
    near(worldPlaces(figure), before, 1e-3, name + ", hip as centre");

    figure.setWSPos([100, 0, 0]);
    figure.getYRotControl().setValue(90);
    before = worldPlaces(figure);
    selectOnly(figure.findBone("lHand"));
    eq(optimize("right"), [1, true], "right click");
    eq(figure.getWSPos(), [0, 0, 0]);
    near(figure.getYRotControl().getValue(), 0, 1e-5);
    near(worldPlaces(figure), before, 1e-3, name + ", root as centre");

    before = Bench.poseState(figure);
    eq(optimize("middle"), [1, false], "middle click");
    eq(differences(before, Bench.poseState(figure)), []);
    UndoStack.undo();
    UndoStack.undo();
    near(figure.getYRotControl().getValue(), 90, 0, "undone in one step");
    Scene.removeNode(figure);
});

// ---- the dialog ----------------------------------------------------------------------------
function textPlace(dialog, text)
{
    var found = Bench.draws(dialog).filter(function (draw) { return draw.text == text; });
    eq(found.length, 1, "texts '" + text + "'");
    var r = found[0].rect;
    return [Math.round(r[0] + r[2] / 2), Math.round(r[1] + r[3] / 2)];
}

function clickText(dialog, text)
{
    var at = textPlace(dialog, text);
    Bench.press(dialog, at[0], at[1], "left");
}

function typeNudge(dialog, text)
{
    var shown = Bench.texts(dialog).slice(-1)[0], at = textPlace(dialog, shown);
    Bench.press(dialog, at[0], at[1], "left", { double: true }); // selects the word
    Bench.key(dialog, "Ctrl+A");
    for (var i = 0; i < text.length; ++i)
        Bench.key(dialog, text.charAt(i));
}

function lastDialog()
{
    return Bench.dialogs()[Bench.dialogs().length - 1];
}

// Runs the button with the dialog handed to the function, which has to close it.
function withDialog(answer)
{
    var seen = 0;
    Bench.expect({ title: TITLE, run: function (dialog) { ++seen; answer(dialog); } });
    var result = optimize("left");
    eq(seen, 1, "the dialog was shown");
    return result;
}

var prop = Scene.addProp("crate", LOW, HIGH);
prop.setRotationOrder("YXZ");
selectOnly(prop);

eq(withDialog(function (dialog) {
    eq(dialog.windowTitle, TITLE);
    eq([dialog.width, dialog.height], [220, 360]);
    eq(Bench.texts(dialog), ["Accept", "Cancel", " Origin "].concat(ORIGINS, [" Rotation order "],
        ORDERS, [" Translation nudge ", "0.5"]));
    if (args[1])
        Bench.grab(dialog, args[1]);
    clickText(dialog, "Cancel");
}), [1, false], "cancelled: no message, the step stays");
eq(lastDialog().answer, "Cancel");
eq(lastDialog().parentClass, "PoseBenchWindow");
eq([lastDialog().fields[" Origin "], lastDialog().fields[" Rotation order "]],
    ["No change", "YXZ"], "initial states");
eq(prop.getRotationOrder(), "YXZ");

// A prop without keys: order and nudge only, whatever origin is chosen.
prop.setOrigin([1, 2, 3]);
ORIGINS.forEach(function (origin, i) {
    var before = Bench.poseState(prop);
    eq(withDialog(function (dialog) {
        clickText(dialog, origin);
        clickText(dialog, ORDERS[i]);
        typeNudge(dialog, "1." + i);
        Bench.key(dialog, "Return");
    }), [1, true]);
    eq(differences(before, Bench.poseState(prop)), [], origin);
    eq(prop.getOrigin(), [1, 2, 3]);
    eq(prop.getRotationOrder(), ORDERS[i]);
    [prop.getXPosControl(), prop.getYPosControl(), prop.getZPosControl()].forEach(function (p) {
        near(p.getSensitivity(), 1 + i / 10, 1e-6, "nudge");
    });
});

// The next time the dialog shows what was stored; arrow keys move the choice, Escape leaves.
eq(withDialog(function (dialog) { Bench.key(dialog, "Escape"); }), [1, false]);
eq([lastDialog().fields[" Origin "], lastDialog().fields[" Translation nudge "]],
    ["Current world center", "1.3"]);
eq(withDialog(function (dialog) {
    Bench.key(dialog, "Up"); // from the checked origin
    Bench.key(dialog, "Return");
}), [1, true]);
eq(withDialog(function (dialog) { clickText(dialog, "Cancel"); }), [1, false]);
eq(lastDialog().fields[" Origin "], "Object center");

// What is no number is a half.
[["0,7", 0.5], ["nan", 0.5], ["inf", 0.5], ["2.5", 2.5], ["wide", 0.5]].forEach(function (row) {
    eq(withDialog(function (dialog) {
        typeNudge(dialog, row[0]);
        clickText(dialog, "Accept");
    }), [1, true], row[0]);
    near(prop.getXPosControl().getSensitivity(), row[1], 1e-6, row[0]);
});

// ---- keyed props -----------------------------------------------------------------------------
function turned(q, v) // q . v = conj(q) v q
{
    var x = -q[0], y = -q[1], z = -q[2], w = q[3];
    var tx = 2 * (y * v[2] - z * v[1]), ty = 2 * (z * v[0] - x * v[2]), tz = 2 * (x * v[1] - y * v[0]);
    return [v[0] + w * tx + y * tz - z * ty, v[1] + w * ty + z * tx - x * tz,
        v[2] + w * tz + x * ty - y * tx];
}

function corners(node, time)
{
    var out = [], o = node.getOrigin(), q = node.getWSRot(time), s = node.getWSScale(time),
        p = node.getWSPos(time);
    for (var corner = 0; corner < 8; ++corner) {
        var v = [0, 1, 2].map(function (i) { return (corner >> i & 1 ? HIGH[i] : LOW[i]) - o[i]; });
        var scaled = [0, 1, 2].map(function (j) {
            return v[0] * s[0][j] + v[1] * s[1][j] + v[2] * s[2][j];
        });
        var t = turned(q, scaled);
        out.push([t[0] + p[0], t[1] + p[1], t[2] + p[2]]);
    }
    return out;
}

function channels()
{
    return [prop.getXRotControl(), prop.getYRotControl(), prop.getZRotControl(),
        prop.getXPosControl(), prop.getYPosControl(), prop.getZPosControl()];
}

function key(frame, values)
{
    channels().forEach(function (p, i) { p.setValue(frame * STEP, values[i]); });
}

function channelsAt(frame)
{
    return channels().map(function (p) { return p.getValue(frame * STEP); });
}

var cart = Scene.addProp("cart", [-1, -1, -1], [1, 1, 1]);
cart.setWSPos([40, -20, 90]);
cart.getYRotControl().setValue(35);
cart.getXScaleControl().setValue(1.5);
cart.addNodeChild(prop);
prop.getZScaleControl().setValue(0.7);
key(0, [10, 20, 30, 5, 6, 7]);
key(12, [-60, 80, 200, -50, 16, 70]);
key(30, [90, 0, -45, 300, 0, -200]);
key(45, [1, 2, 3, 4, 5, 6]);

function keyedStay(start, end, frames, origin, order)
{
    Scene.setAnimRange(start * STEP, end * STEP);
    var before = frames.map(function (frame) { return corners(prop, frame * STEP); });
    var at45 = channelsAt(45);
    eq(withDialog(function (dialog) {
        clickText(dialog, origin);
        clickText(dialog, order);
        clickText(dialog, "Accept");
    }), [1, true]);
    frames.forEach(function (frame, i) {
        near(corners(prop, frame * STEP), before[i], 1e-3, origin + ", frame " + frame);
    });
    eq(prop.getRotationOrder(), order);
    eq(channelsAt(45), at45, "keys elsewhere");
}

ORIGINS.forEach(function (origin, i) {
    keyedStay(0, 30, [0, 12, 30], origin, ORDERS[(i + 3) % 6]);
});
near(prop.getWSPos(30 * STEP), [0, 0, 0], 1e-3, "world centre in the last keyed frame");
keyedStay(0, 30, [0, 12, 30], "Object center", "XYZ");
near(prop.getOrigin(), [10, 25, 10], 1e-3, "object centre");
// Frames are counted from 0: a range of 15 to 45 visits 0 to 30.
keyedStay(15, 45, [0, 12, 30], "Imported model origin", "ZYX");
eq(prop.getOrigin(), [0, 0, 0]);
// One undo each.
UndoStack.undo();
near(prop.getOrigin(), [10, 25, 10], 1e-3, "undone");
eq(prop.getRotationOrder(), "XYZ");

// ---- a channel that cannot follow: nothing changes, nothing is told -------------------------------
prop.getYPosControl().lock(true);
var held = [Bench.poseState(prop), Bench.rawState(prop), prop.getOrigin(), prop.getRotationOrder()];
["Imported model origin", "Current world center"].forEach(function (origin) { // the centre is it
    eq(withDialog(function (dialog) {
        clickText(dialog, origin);
        clickText(dialog, "YXZ");
        clickText(dialog, "Accept");
    }), [1, false], origin + ", locked");
    eq([Bench.poseState(prop), Bench.rawState(prop), prop.getOrigin(), prop.getRotationOrder()],
        held, origin);
});
prop.getYPosControl().lock(false);
selectOnly(held = Scene.loadFigure(FIGURES[0]));
held.findBone("hip").getYPosControl().setValue(10);
held.setWSPos([0, 5, 0]);
held.findBone("hip").getYPosControl().lock(true);
eq([optimize("left"), optimize("right")], [[1, false], [1, false]], "a locked hip");
eq(held.getWSPos(), [0, 5, 0]);
Scene.removeNode(held);
selectOnly(prop);

// ---- the fields are saved with the pane ------------------------------------------------------
eq(withDialog(function (dialog) {
    clickText(dialog, "Object center");
    typeNudge(dialog, "4");
    clickText(dialog, "Accept");
}), [1, true]);
Bench.restartPlugin();
eq(withDialog(function (dialog) { clickText(dialog, "Cancel"); }), [1, false]);
eq([lastDialog().fields[" Origin "], lastDialog().fields[" Translation nudge "]],
    ["Object center", "4"], "after a restart");
eq(Bench.pendingExpects().length, 0);
quit(0);
