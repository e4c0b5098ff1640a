// The temporary folder cannot be used: swap, symmetrize and the mirror toggle change nothing and say
// nothing, and the toggle stays off. With "spoil" the script puts a file into the folder's place and
// takes it away at the end; then all three work, or fail as a whole with a file call that fails.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");
var SWAP = 4, SYMMETRIZE = 5, MIRROR = 212;
var FRAME_10 = 1600;
var MARKER = "bWFyaw=="; // "mark"
var SUCCEEDED = /succeeded/;

function selectOnly(node)
{
    Scene.selectAll(false);
    node.select(true);
    Scene.setPrimarySelection(node);
}

function rotation(bone, axis)
{
    return figure.findBone(bone)["get" + axis + "RotControl"]();
}

// Every rotation and translation: "bone/channel" -> number of keys.
function keyCounts()
{
    var counts = {};
    [figure].concat(figure.bones()).forEach(function (node) {
        ["X", "Y", "Z"].forEach(function (axis) {
            ["Rot", "Pos"].forEach(function (kind) {
                counts[node.getName() + "/" + axis + kind]
                    = node["get" + axis + kind + "Control"]().getNumKeys();
            });
        });
    });
    return counts;
}

function state()
{
    return { values: Bench.poseState(figure), stored: Bench.rawState(figure),
        flags: Bench.flagState(figure), keys: keyCounts() };
}

function unchanged(before, what)
{
    var after = state();
    for (var kind in before)
        eq(differences(before[kind], after[kind]), [], what + ": " + kind);
}

function status()
{
    return texts().filter(function (line) { return SUCCEEDED.test(line); });
}

var TEMP = App.getTempPath(), SPOIL = args[0] == "spoil";
if (SPOIL) {
    Bench.removeFile(TEMP + "/icon.png");
    assert(Bench.removeFile(TEMP), "the folder is empty");
    Bench.writeFile(TEMP, MARKER);
}

// ---- a pose with a hip that has been moved, and one to browse ------------------------------------
var POSE = FEMALE + "Trial/one arm.duf";
var BROWSED = { "lForearmBend/y": -40, "hip/y": 30, "rShldrBend/z": 20 };
writePreset(POSE, BROWSED);
scan();
figure.findBone("hip").getYPosControl().setValue(12);
figure.findBone("hip").getXPosControl().setValue(-7);
figure.getXPosControl().setValue(50);
rotation("lForearmBend", "Y").setValue(-33.3333321);
rotation("rThighBend", "X").setValue(-20);
figure.findProperty("pCTRLKneesUpLeft").setValue(0.5);
Scene.setTime(FRAME_10);

// ---- swap and symmetrize --------------------------------------------------------------------------
[figure, figure.findBone("lForearmBend"), figure.findBone("hip")].forEach(function (node) {
    [SWAP, SYMMETRIZE].forEach(function (button) {
        ["left", "middle"].forEach(function (which) {
            var what = node.getName() + ", button " + button + ", " + which;
            selectOnly(node);
            endStatus();
            var before = state(), dialogs = Bench.dialogs().length;
            click(button, which);
            unchanged(before, what);
            eq(status(), [], what + ": status");
            eq(Bench.dialogs().length, dialogs, what + ": boxes");
        });
    });
});

// ---- the mirror toggle ----------------------------------------------------------------------------
selectOnly(figure);
click(1);
click(100);
click(200, "middle");
near(rotation("lForearmBend", "Y").getValue(), -40, 1e-3, "the pose");
rotation("lShin", "X").setValue(15); // what the user adds is not taken back, either
["left", "right", "middle"].forEach(function (which) {
    var before = state(), count = counter();
    press("mirror toggle, " + which, MIRROR, which, 0);
    unchanged(before, "mirror toggle, " + which);
    eq(isOn(MIRROR), false, "the flag, " + which);
    eq(counter(), count);
});

if (!SPOIL)
    quit(0);
eq(Bench.readFile(TEMP), MARKER, "the file in the folder's place");

// ---- with a folder again --------------------------------------------------------------------------
Bench.removeFile(TEMP);
Bench.writeFile(TEMP + "/other", MARKER);
press("mirror toggle", MIRROR, "left");
eq(isOn(MIRROR), true);
near(rotation("rForearmBend", "Y").getValue(), 40, 1e-3, "mirrored");
press("mirror toggle off", MIRROR, "left");
click(202);
click(202);

// At another frame only what changes is keyed.
selectOnly(figure.findBone("lForearmBend"));
Scene.setTime(2 * FRAME_10);
["X", "Y", "Z"].forEach(function (axis) { // else they go to the figure node
    figure.findBone("hip")["get" + axis + "PosControl"]().setValue(0);
});
var before = state();
click(SWAP, "middle");
eq(status(), ["Swapping succeeded"]);
eq(differences(before.keys, state().keys), ["lForearmBend/YRot", "rForearmBend/YRot"], "keys");
UndoStack.undo();
unchanged(before, "undo");
Scene.setTime(FRAME_10);

// A press either does its work and says so, or does nothing and says nothing.
var done = 0, undone = 0;
["open", "write", "close", "rename", "read", "stat"].forEach(function (call) {
    for (var n = 1; n <= 4; ++n) {
        var what = call + " " + n;
        before = state();
        endStatus();
        Bench.failCall(call, n);
        click(SWAP, n % 2 ? "left" : "middle");
        Bench.dropCalls();
        if (status().length) {
            near(rotation("rForearmBend", "Y").getValue(),
                -before.values["lForearmBend/YRotate"], 1e-3, what);
            ++done;
        } else {
            unchanged(before, what);
            ++undone;
        }
    }
});
assert(done > 4 && undone > 4, "done " + done + ", undone " + undone);
quit(0);
