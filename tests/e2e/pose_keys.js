// The host's keys press the pane's own buttons; its Help menu leads to the guide and to the About
// boxes; assistive technology is told what a button can do.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");
writeLibrary();

function key(name)
{
    Bench.key(MainWindow, name);
    Bench.wait(0);
}

function button(beginning)
{
    return Bench.accessible(PANE).filter(function (child) {
        return child.name.indexOf(beginning) == 0;
    })[0];
}

function rank()
{
    return /^Current Pose Rank (\w+)/.exec(button("Current Pose Rank").name)[1];
}

// ---- nothing is browsed -----------------------------------------------------------------------
var before = UndoStack.count();
key("Ctrl+Right");
eq(UndoStack.count(), before, "no step without poses");

// ---- poses ------------------------------------------------------------------------------------
scan();
click(1);
click(100);
function count() { return parseInt(/of (\d+)$/.exec(counter())[1], 10); }
key("Ctrl+Shift+Left");
eq(ordinal(), 1, "the first pose");
var last = count();
assert(last > 3, "there are poses");
key("Ctrl+Right");
eq(ordinal(), 2, "the next pose");
key("Ctrl+Right");
key("Ctrl+Left");
eq(ordinal(), 2, "the previous pose");
eq(UndoStack.captions().slice(-1)[0], CAPTION, "as the pane does it");
key("Ctrl+Shift+Right");
eq(ordinal(), last, "the last pose");

// The same as a press by the mouse.
key("Ctrl+Shift+Left");
var byKey = Bench.poseState(figure);
click(200, "middle");
eq(differences(byKey, Bench.poseState(figure)), [], "keys and mouse come to the same pose");

eq(rank(), "Unranked");
key("Ctrl+Shift+F");
eq(rank(), "Favorite", "a favourite");
key("Ctrl+Shift+F");
eq(rank(), "Unranked", "and back");

var steps = UndoStack.count();
key("Ctrl+Z");
eq(UndoStack.count(), steps - 1, "undone");

// The pointer was not moved by a key: no button stays enlarged.
var plain = button("Apply Next Pose").rectangle;
key("Ctrl+Right");
eq(button("Apply Next Pose").rectangle.width, plain.width, "not enlarged");

// ---- time ------------------------------------------------------------------------------------
Scene.setTime(0);
key("Ctrl+P");
for (var i = 0; i < 100 && Scene.getTime() === 0; ++i)
    Bench.wait(20);
assert(Scene.getTime() > 0, "it plays");
key("Ctrl+P");
var stopped = Scene.getTime();
Bench.wait(100);
eq(Scene.getTime(), stopped, "it stands still");
Scene.setTime(0);

// ---- what assistive technology is told -----------------------------------------------------------
eq(button("Apply Next Pose").actions, ["Press", "Right click", "Middle click"], "actions");
eq(button("Apply Next Pose").state.disabled, false);
var texts_ = Bench.accessible(PANE).filter(function (child) { return child.role == "StaticText"; });
eq(texts_.map(function (child) { return child.name; }), [counter(), texts_[1].name], "the counter");
eq(texts_[1].name.indexOf(label()[0]), 0, "the pose");
click(217); // a locked part: the rank cannot change
click(213);
var alert = Bench.accessible(PANE).filter(function (child) { return child.role == "AlertMessage"; });
eq(alert.length, 1, "a message");
eq(alert[0].name, "ERROR Rank cannot be changed if part of the pose is locked");
click(217);

// ---- the product's folder ------------------------------------------------------------------
var library = MainWindow.getPaneMgr().findPane("DzContentLibraryPane");
eq(library.visible, false, "the library stands behind the pane");
click(220);
eq(Bench.browsedFolders().length, 1, "a folder is shown");
eq(library.currentFolder(), Bench.browsedFolders()[0]);
eq([library.visible, pane.visible], [true, true], "and both are in sight");

// ---- help ------------------------------------------------------------------------------------
key("F1");
var guide = Bench.urls().slice(-1)[0];
assert(/^file:\/\/.*\/docs\/Quillon\/index\.htm$/.test(guide), guide);
var html = Bench.readFile(decodeURIComponent(guide.substring(7)));
assert(html && html.length > 1000, "the guide can be read there");
function choose(menu, entry, answer)
{
    answer.button = answer.button || "OK";
    Bench.expect(answer);
    assert(Bench.menu(menu, entry), "there is " + entry);
    eq(Bench.pendingExpects().length, 0, entry);
}
choose("Help", "About Quillon...", { title: "About" });
choose("Help", "Mouse and Keys...", { title: "Mouse and Keys", button: "Close" });
choose("Help", "About Installed Plug-ins...", { title: "About Installed Plug-ins", button: "Close" });
quit(0);
