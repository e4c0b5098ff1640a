// Modal windows are answered as queued, and told afterwards.
include("lib.js");

var pane = MainWindow.getPaneMgr().findPane("TrialPane");
var BUTTONS = Bench.accessible(pane).map(function (child) { return child.name; });

function press(name)
{
    Bench.press(pane, 15, 15 + 20 * BUTTONS.indexOf(name), "left");
    return Bench.texts(pane).slice(-2)[0]; // the outcome; the last line is the release
}

function last()
{
    return Bench.dialogs()[Bench.dialogs().length - 1];
}

// ---- message boxes -------------------------------------------------------------------------
Bench.expect({ title: "Trial", text: "Is this\na question?", button: "Yes" });
eq(press("ask"), "yes");
eq([last().kind, last().icon, last().title, last().text, last().answer, last().parentClass],
    ["message", "question", "Trial", "Is this\na question?", "Yes", ""]);
eq(last().buttons, ["Yes", "No"]);
assert(last().size[0] > 50 && last().size[1] > 50, "it had a size");
Bench.expect({ button: "No" });
eq(press("ask"), "no");

Bench.expect({ title: "Trial", button: "No" });
Bench.expect({ title: "Error" });
eq(press("warn"), "warned");
eq([last().icon, last().buttons, last().parentClass], ["warning", ["OK"], "PoseBenchWindow"]);
eq(Bench.pendingExpects().length, 1, "what does not fit waits");
Bench.expect({ text: "a question", button: "Yes" });
eq(press("ask twice"), "no yes");
eq(Bench.pendingExpects().length, 0);

// ---- a dialog with fields ------------------------------------------------------------------
Bench.expect({ title: "Trial Settings", button: "Cancel" });
eq(press("fill in"), "cancelled");
eq([last().kind, last().size[0], last().size[1], last().parentClass],
    ["dialog", 320, 400, "PoseBenchWindow"]);
eq([last().fields[" Allow it "], last().fields["Nudge"], last().fields["Order"]],
    [true, "0.5", "XYZ"]);
eq(last().fields["ZYX"], false);
Bench.expect({
    title: "Trial Settings",
    fields: { "Allow it": false, "Nudge": 1.25, "Order": "ZYX" },
    button: "Accept"
});
eq(press("fill in"), "filled off 1.25 ZYX");
Bench.expect({
    fields: { "ZYX": true },
    run: function (dialog) {
        eq(dialog.windowTitle, "Trial Settings");
        assert(Bench.texts(dialog).join("|").indexOf("Allow it") >= 0, "it can be read");
        var noted = Bench.texts(pane).length;
        eq(Bench.press(pane, 300, 300, "left"), false, "the modal window keeps it from the pane");
        eq(Bench.move(pane, 300, 300), false);
        eq(Bench.texts(pane).length, noted);
        eq(Bench.press(pane, 300, 300, "left", { through: true }), true);
        eq(Bench.texts(pane).pop(), "release 1 at 300,300 with 0", "as if it had begun before");
        eq(Bench.press(dialog, 1, 1, "left"), true);
    },
    button: "Accept"
});
eq(press("fill in"), "filled on 0.5 ZYX");
Bench.expect({ run: function (dialog) { dialog.reject(); } });
eq(press("fill in"), "cancelled");

// ---- groups with equal labels, one that can be switched off --------------------------------
Bench.expect({ button: "Cancel" });
eq(press("choose"), "cancelled");
var fields = last().fields;
eq([fields["Left"], fields["Left/Near"], fields["Left/Far"]], ["", false, false],
    "nothing is chosen yet");
eq([fields["Right"], fields["Right/Near"]], [false, false], "it is switched off");
Bench.expect({ fields: { "Left": "Far", "Right": true, "Right/Far": true }, button: "Accept" });
eq(press("choose"), "chosen far far on");
Bench.expect({ fields: { "Left/Near": true, "Right/Far": true, "Right": true } });
eq(press("choose"), "chosen near far on", "whatever comes first");
Bench.expect({ fields: { "Right": false } });
eq(press("choose").substr(-3), "off");

// ---- a file dialog -------------------------------------------------------------------------
var FILE = App.getDataFolderPath() + "/mine \u0436.trial";
Bench.expect({ file: FILE });
eq(press("save file"), "file " + FILE);
eq([last().kind, last().filter, last().directory, last().answer],
    ["file", "Trial Files (*.trial)", App.getDataFolderPath(), FILE]);
Bench.writeFile(FILE, "YWJj");
Bench.expect({ file: FILE });
eq(press("save file"), "file " + FILE, "an existing file");
var told = Bench.dialogs().length;
Bench.expect({ file: FILE });
Bench.expect({ text: "already exists", button: "Yes" });
eq(press("save file"), "file " + FILE, "asked back, answered by the script");
eq(Bench.dialogs().length, told + 2);
Bench.expect({ button: "Cancel" });
eq(press("save file"), "file ");
Bench.expect({ file: "" });
eq(press("save file"), "file ");

// ---- an action's box -----------------------------------------------------------------------
Bench.expect({ title: "About Trial", button: "ok" });
MainWindow.getActionMgr().findAction("TrialAction").trigger();
eq([last().icon, last().text], ["", "A plug-in made for trying."]);
eq(Bench.pendingExpects(), []);
quit(0);
