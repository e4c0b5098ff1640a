// Swap and symmetrize pressed with every bone selected, without children and with them: each press
// is one undo step that leaves the bone with its mirrored values, and undo gives back the same pose.
include("lib.js");
include("pane_lib.js");

var SWAP = 4, SYMMETRIZE = 5;
var CONTROLS = ["pCTRLHipBend", "pCTRLArmsUpLeft", "pCTRLlHandFist", "pCTRLKneesUpRight"];

var seed = 7;
function between(min, max)
{
    seed = (seed * 1103515245 + 12345) % 2147483648;
    return min + (max - min) * seed / 2147483648;
}

function poseAtRandom(figure)
{
    figure.bones().forEach(function (bone) {
        bone.getXRotControl().setValue(between(-10, 10));
        bone.getZRotControl().setValue(between(-10, 10));
    });
    CONTROLS.forEach(function (name) { figure.findProperty(name).setValue(between(0, 1)); });
}

function selectOnly(node)
{
    Scene.selectAll(false);
    node.select(true);
    Scene.setPrimarySelection(node);
}

// "rShin" for "lShin"; nothing for a bone that has no side.
function partnerOf(figure, bone)
{
    var name = bone.getName(), side = /^[lr][A-Z]/.test(name) ? name[0] : "";
    return side && figure.findBone((side == "l" ? "r" : "l") + name.substr(1));
}

// The bone's own bend, and the turn that a mirrored bone makes the other way.
function stored(bone)
{
    return [bone.getXRotControl().getRawValue(), bone.getZRotControl().getRawValue()];
}

function isFree(bone)
{
    return !bone.getXRotControl().isLocked() && !bone.getZRotControl().isLocked();
}

function pose(figure)
{
    return JSON.stringify(Bench.poseState(figure));
}

var checked = 0;

function isOfFace(bone)
{
    for (var node = bone.getNodeParent(); node; node = node.getNodeParent())
        if (node.getName() == "head")
            return true;
    return false;
}

// A swapped pair has each other's values, mirrored. A symmetrized bone has its partner's; the face
// is never symmetrized.
function checkValues(bone, partner, button, own, other, what)
{
    var expected = button == SYMMETRIZE && isOfFace(bone) ? own : [other[0], -other[1]];
    near(stored(bone), expected, 1e-4, what);
    if (button == SWAP)
        near(stored(partner), [own[0], -own[1]], 1e-4, what + ": partner");
    ++checked;
}

function press(figure, bone, button, which, before)
{
    var what = figure.getName() + ", " + bone.getName() + ", button " + button + " " + which;
    var partner = partnerOf(figure, bone), steps = UndoStack.count();
    var own = stored(bone), other = partner && stored(partner);
    selectOnly(bone);
    endStatus();
    click(button, which);
    eq(UndoStack.count(), steps + 1, what + ": undo steps");
    if (partner && isFree(bone) && isFree(partner))
        checkValues(bone, partner, button, own, other, what);
    UndoStack.undo();
    assert(pose(figure) === before, what + ": undo gives the same pose");
}

// Every bone, or every so many.
function pressAll(name, step)
{
    var figure = Scene.loadFigure(name), bones = figure.bones(), presses = 0;
    eq(bones.length, 170, name);
    poseAtRandom(figure);
    var before = pose(figure);
    for (var i = 0; i < bones.length; i += step) {
        [SWAP, SYMMETRIZE].forEach(function (button) {
            ["left", "middle"].forEach(function (which) {
                press(figure, bones[i], button, which, before);
                ++presses;
            });
        });
    }
    return presses;
}

eq(pressAll("Genesis8Female", 1), 680, "presses");
eq(pressAll("Genesis8_1Male", 2), 340, "presses");
assert(checked > 500, checked + " presses with values to look at");
