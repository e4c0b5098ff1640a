// finder_lib.js - the Pose Finder by real clicks: include("finder_lib.js") after pane_lib.js,
// bytes_lib.js, preset_lib.js and match_model.js. The main page is open, a figure is selected.
var COUNTER = /^(NO MATCHING POSES FOUND|MATCHING POSES FOUND: \d+|(MATCHING )?POSE \d+ of \d+)$/;
var CAPTION = "quillon_stack";
var NO_FIGURE = { title: "Error", text: "Please select a Genesis 8 figure first.", button: "OK" };
var NOTHING = "NO MATCHING POSES FOUND";

function yes(title)
{
    Bench.expect({ title: title || "Quillon", button: "Yes" });
}

// Presses the scan button, says Yes, takes the box at the end; returns its text.
function scan()
{
    yes();
    Bench.expect({ title: "Info", button: "OK" });
    click(14);
    return Bench.dialogs().slice(-1)[0].text;
}

// ---- what the browsing page tells --------------------------------------------------------------

function counter()
{
    var lines = texts().filter(function (line) { return COUNTER.test(line); });
    eq(lines.length, 1, "one counter line");
    return lines[0];
}

function ordinal() // of "MATCHING POSE 3 of 9"; 0: no such line
{
    return parseInt((/POSE (\d+) of/.exec(counter()) || [0, 0])[1], 10);
}

// The lines of the current pose's label: between the counter and the link.
function label()
{
    var scale = paneSize()[1] / 1024;
    return Bench.draws(PANE).filter(function (draw) {
        var middle = draw.rect.y + draw.rect.height / 2;
        return draw.kind == "text" && middle > 736 * scale && middle < 806 * scale;
    }).map(function (draw) { return draw.text; });
}

function isOn(button) // a switch, by what assistive technology is told
{
    var at = place(button), size = paneSize();
    var x = at[0] * size[0] / 512, y = at[1] * size[1] / 1024;
    return Bench.accessible(PANE).filter(function (child) {
        var r = child.rectangle;
        return x >= r.x && x < r.x + r.width && y >= r.y && y < r.y + r.height;
    })[0].state.checked;
}

// ---- what a press may change -------------------------------------------------------------------

function locks(node)
{
    var flags = Bench.flagState(node), locked = {};
    for (var channel in flags)
        locked[channel] = flags[channel].locked;
    return locked;
}

// Runs what brings about the given number of undo steps and of boxes, and nothing that outlives it.
function command(what, steps, boxes, run)
{
    var count = UndoStack.count(), dialogs = Bench.dialogs().length, locked = locks(figure);
    run();
    eq(UndoStack.isLocked(), false, what + ": the undo stack is locked");
    eq(differences(locked, locks(figure)), [], what + ": channels locked or unlocked");
    eq(UndoStack.count() - count, steps, what + ": undo steps");
    if (steps > 0)
        eq(UndoStack.captions().slice(-1)[0], CAPTION, what);
    eq(Bench.dialogs().length - dialogs, boxes, what + ": boxes");
    eq(Bench.pendingExpects().length, 0, what + ": boxes that never came");
}

function press(what, button, which, steps)
{
    command(what, steps === undefined ? 1 : steps, 0, function () { click(button, which); });
}

// That the figure has the rotations of the file, of a pose that is not mirrored.
function wears(values, what)
{
    for (var channel in values) {
        var parts = channel.split("/");
        if (parts[0] == "hip")
            continue; // turned to where the figure faces
        var property = figure.findBone(parts[0])["get" + parts[1].toUpperCase() + "RotControl"]();
        near(property.getValue(), values[channel], 1e-3, what + ": " + channel);
    }
}

function fileName(path)
{
    return path.substr(path.lastIndexOf("/") + 1);
}
