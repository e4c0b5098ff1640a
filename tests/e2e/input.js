// Pointer and keys reach a pane as from a window system, and what it paints can be read.
include("lib.js");

var pane = MainWindow.getPaneMgr().findPane("TrialPane");
assert(pane, "the pane was started");
var PLAIN = Bench.texts("TrialPane").length;

function news() // what was noted since the last call
{
    var all = Bench.texts(pane).slice(PLAIN);
    var fresh = all.slice(news.seen || 0);
    news.seen = all.length;
    return fresh;
}

Bench.resize(pane, 500, 600);
eq([pane.width, pane.height], [500, 600], "the size asked for");

Bench.press(pane, 200, 100, "left");
eq(news(), ["enter", "move 200,100", "press 1 at 200,100 with 0", "release 1 at 200,100 with 0"]);
Bench.press(pane, 200, 100, "right", { move: false });
eq(news(), ["press 2 at 200,100 with 0", "release 2 at 200,100 with 0"]);
Bench.press("Trial", 5, 6, "middle", { modifiers: ["shift", "ctrl"] });
eq(news(), ["press 4 at 5,6 with 6000000", "release 4 at 5,6 with 6000000"]);
Bench.press("TrialPane", 5, 6, "x1", { modifiers: "alt" });
eq(news(), ["press 8 at 5,6 with 8000000", "release 8 at 5,6 with 8000000"]);
Bench.press(pane, 5, 6, "left", { "double": true });
eq(news(), ["press 1 at 5,6 with 0", "release 1 at 5,6 with 0", "double 1 at 5,6 with 0",
    "release 1 at 5,6 with 0"]);
Bench.press(pane, 8, 9, "left", { move: 0 });
eq(news().length, 2, "0 is no, as false is");
Bench.press(pane, 5, 6, "left");
Bench.press(pane, 5, 6, "left");
eq(news().length, 4, "two presses are no double click");
throws(function () { Bench.press(pane, 1, 1, "green"); }, "mouse button");
throws(function () { Bench.press("Nothing", 1, 1, "left"); }, "Nothing");

Bench.move(pane, 180, 20);
eq(news(), ["move 180,20"]);
Bench.move("DzContentLibraryPane", 5, 5);
eq(news(), ["leave"]);

// ---- repaints ------------------------------------------------------------------------------
var painted = Bench.paintCount(pane);
Bench.texts(pane);
eq(Bench.paintCount(pane), painted, "reading is no repaint");
Bench.move(pane, 5, 5); // enters
assert(Bench.paintCount(pane) > painted, "a note repaints");
painted = Bench.paintCount(pane);
Bench.move(pane, 6, 6);
eq(Bench.paintCount(pane), painted, "nothing noted, nothing repainted");

var draws = Bench.draws(pane);
eq([draws[0].kind, draws[0].colour], ["rect", "#141e28"]);
eq(draws[0].rect, [0, 0, 500, 600]);
eq([draws[1].kind, draws[1].colour, draws[1].pen], ["ellipse", "#400000", ""]);
eq(draws[1].rect, [200, 10, 30, 20]);
eq(draws[1].rect.width, 30);
eq([draws[2].kind, draws[2].text, draws[2].colour], ["text", "ask", "#c0c0c0"]);
near(draws[2].rect.x, 10, 0.01);
var picture = draws.filter(function (d) { return d.kind == "pixmap"; })[0];
eq(picture.rect, [240, 10, 16, 16]);
var noted = draws.filter(function (d) { return d.text == "enter"; })[0];
near(noted.rect.x, 120, 0.01, "after a translation");
eq(noted.colour, "#808080");

// ---- keys ----------------------------------------------------------------------------------
eq(Bench.key(pane, "t"), true);
eq(news().pop(), "key t");
eq(Bench.key(pane, "T"), true);
eq(news(), ["key T"]);
eq(Bench.key(pane, "Space"), false);
eq(Bench.key(pane, "Ctrl+Z"), false);
throws(function () { Bench.key(pane, "NoSuchKey"); }, "no key");
assert(Bench.focus() != "TrialPane", "a press gives no focus to a pane that takes none");

// ---- where the pointer is ------------------------------------------------------------------
var TELL = Bench.accessible(pane).map(function (child) { return child.name; }).indexOf("pointer");

function pointer() // as the pane finds it, asked without moving it
{
    Bench.press(pane, 15, 15 + 20 * TELL, "left", { move: false });
    return news()[1];
}

eq(Bench.move(pane, 77, 99), true);
news();
eq(pointer(), "77,99 on");
Bench.press(pane, 33, 5, "left");
news();
eq(pointer(), "33,5 on", "a press takes it there");
Bench.move("ViewportWidget", 5, 5);
news();
assert(pointer().indexOf("off") > 0, "it has left the pane");

// ---- accessible children -------------------------------------------------------------------
var children = Bench.accessible(pane);
eq(children.length, 19);
eq([children[1].name, children[1].role], ["warn", "Button"]);
eq([children[1].state.checkable, children[0].state.checkable], [true, false]);
eq(children[1].rectangle, [10, 30, 100, 18]);

// ---- a pane that does not show -------------------------------------------------------------
pane.hidePane();
news();
Bench.press(pane, 7, 8, "left", { move: false });
eq(news(), ["press 1 at 7,8 with 0", "release 1 at 7,8 with 0"]);
quit(0);
