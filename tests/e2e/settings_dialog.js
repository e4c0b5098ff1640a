// The settings dialog by real clicks: its look, and what each combination of boxes stores.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");

var LABELS = [" Allow pose limits violation in Pose Finder",
    " Allow face expression limits violation in Pose Finder", " Allow bone translations ",
    " Ignore poses from pose-pair products ", " Don't notify me about plugin updates "];
var FIELDS = ["poseViolation", "faceViolation", "translations", "ignorePairs", "mute"];
var about = MainWindow.getActionMgr().findAction("QuillonAboutAction");

// boxes: five numbers 0 or 1, by label; null: as they are
function dialog(boxes, button)
{
    var fields = {};
    LABELS.forEach(function (label, i) {
        if (boxes)
            fields[label] = boxes[i] == 1;
    });
    Bench.expect({ title: "Quillon Settings", fields: fields, button: button });
    click(15);
    eq(Bench.pendingExpects().length, 0, "the dialog came up");
    return Bench.dialogs().slice(-1)[0];
}

function stored()
{
    var s = readSettingsFile();
    return FIELDS.map(function (field) { return s[field]; });
}

function shown(record) // the boxes when it opened
{
    return LABELS.map(function (label) { return record.fields[label] ? 1 : 0; });
}

// ---- its look ------------------------------------------------------------------------------------
var first = dialog(null, "Cancel");
eq([first.kind, first.title, first.parentClass], ["dialog", "Quillon Settings", "PoseBenchWindow"]);
eq(first.size, [300, 300]);
var labels = [];
for (var label in first.fields)
    labels.push(label);
eq(labels, LABELS, "five boxes in this order, blanks included");
eq(shown(first), [1, 0, 1, 0, 0], "defaults");
eq(first.buttons.slice().sort(), ["Accept", "Cancel"], "no help button");
eq(readBytes(dataFile("settings")), null, "Cancel saves nothing");

Bench.expect({ title: "Quillon Settings", button: "Cancel", run: function (window) {
    eq([window.width, window.height], [300, 300]);
    eq([window.minimumWidth, window.maximumWidth, window.minimumHeight, window.maximumHeight],
        [300, 300, 300, 300], "a fixed size");
    eq(window.modal, true);
    var boxes = Bench.draws(window).filter(function (draw) { return draw.kind == "text"; });
    LABELS.forEach(function (text) { // the whole label, inside the dialog
        var line = boxes.filter(function (draw) {
            return draw.text.replace(/^ +| +$/g, "") == text.replace(/^ +| +$/g, "");
        })[0];
        assert(line, "'" + text + "' is painted as a whole");
        assert(line.rect.x >= 0 && line.rect.x + line.rect.width <= 300, "'" + text + "' is inside");
    });
} });
click(15);

// ---- every mouse button opens it, nothing of the scene matters --------------------------------------
["left", "right", "middle"].forEach(function (which) {
    var dialogs = Bench.dialogs().length;
    Bench.expect({ title: "Quillon Settings", button: "Cancel" });
    click(15, which);
    eq(Bench.dialogs().length, dialogs + 1, which);
});
Bench.press(PANE, place(15)[0], place(15)[1], "x1");
eq(UndoStack.count(), 0);

// A host that has no main window yet: the button does nothing but clear the message.
var dialogsBefore = Bench.dialogs().length;
Bench.failCall("getInterface", 1);
click(15);
eq(Bench.pendingCalls(), [], "the window was asked for");
eq(Bench.dialogs().length, dialogsBefore, "no window, no dialog");
eq(readBytes(dataFile("settings")), null, "nothing is saved");

// ---- every combination, from fields off and from fields on --------------------------------------------
function writeFields(fields) // settings.dat with these five, then a start
{
    Bench.stopPane();
    var bytes = readBytes(dataFile("settings"));
    eq(bytes.length, 58);
    // version, first set, include, rank, locks, second set, rank filter, origin, nudge: 48 bytes
    writeBytes(dataFile("settings"), bytes.substr(0, 48)
        + String.fromCharCode.apply(null, fields) + bytes.substr(53));
    Bench.startPane();
    Bench.resize(PANE, SIZE[0], SIZE[1]);
}

[[[1, 1, 1, 1, 1], 1], [[0, 1, 0, 0, 1], 5]].forEach(function (row) {
    var before = row[0];
    for (var bits = 0; bits < 32; bits += row[1]) {
        var boxes = [bits & 1, bits >> 1 & 1, bits >> 2 & 1, bits >> 3 & 1, bits >> 4 & 1];
        writeFields(before);
        var bytes = readBytes(dataFile("settings"));
        about.enabled = false;
        eq(shown(dialog(boxes, "Cancel")), before, "boxes show the fields");
        eq(readBytes(dataFile("settings")), bytes, "Cancel changes nothing");
        eq(about.enabled, false, "nor the About action");
        var paints = Bench.paintCount(PANE);
        eq(shown(dialog(boxes, "Accept")), before, "Cancel has left the fields");
        eq(stored(), [boxes[0] || boxes[1], 0, boxes[2], boxes[3], boxes[4]],
            "fields " + before + ", boxes " + boxes);
        eq(about.enabled, true, "the About action is there again");
        assert(Bench.paintCount(PANE) > paints, "the pane is repainted");
        var now = readBytes(dataFile("settings"));
        eq([now.substr(0, 48), now.substr(53)], [bytes.substr(0, 48), bytes.substr(53)],
            "every other field is as it was");
    }
});
// What OK stored is what the next one shows.
dialog([0, 1, 0, 1, 0], "Accept");
eq(shown(dialog(null, "Accept")), [1, 0, 0, 1, 0]);
eq(stored(), [1, 0, 0, 1, 0]);
Bench.restartPlugin();
Bench.resize(PANE, SIZE[0], SIZE[1]);
eq(shown(dialog(null, "Cancel")), [1, 0, 0, 1, 0], "after a restart");

// A file that cannot be written is nobody's business; the fields are what was chosen.
Bench.failCall("open", 1);
dialog([0, 0, 1, 0, 1], "Accept");
Bench.dropCalls();
eq(shown(dialog(null, "Cancel")), [0, 0, 1, 0, 1]);
quit(0);
