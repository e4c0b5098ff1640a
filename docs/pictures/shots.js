// shots.js - takes the guide's pictures from the running program, as large as they come, with the places of
// the buttons and the dials' values beside them in shots.json. Run by make, which tells the folder.
var OUT = args[0] + "/";
var PANE = "DzQuillonPane";
var VIEW = "ViewportWidget";
var SIZE = [600, 1200]; // of the pane's pages
var facts = { pages: {}, dials: {} };

function click(x, y, which) // canvas of 512 x 1024
{
    var size = Bench.draws(PANE)[0].rect;
    Bench.press(PANE, Math.round(x * size[2] / 512), Math.round(y * size[3] / 1024), which || "left");
}

function endStatus()
{
    Bench.fireTimer(PANE, 0);
}

// ---- pages -------------------------------------------------------------------------------------

// Not what the pane says.
function isPressed(child)
{
    return child.role != "StaticText" && child.role != "AlertMessage";
}

function page(name)
{
    endStatus();
    Bench.resize(PANE, SIZE[0], SIZE[1]);
    Bench.move(PANE, 1, SIZE[1] - 1);
    Bench.grab(PANE, OUT + name + ".png");
    facts.pages[name] = Bench.accessible(PANE).filter(isPressed).map(function (button) {
        var r = button.rectangle;
        return { name: button.name, x: r.x, y: r.y, width: r.width, height: r.height };
    });
    Bench.resize(PANE, 512, 1024);
}

function dialog(name, answer, press)
{
    Bench.expect({ run: function (box) { Bench.grab(box, OUT + name + ".png"); }, button: answer });
    press();
}

var figure = Scene.loadFigure("Genesis8Female");
Bench.expect({ run: function (box) { Bench.grab(box, OUT + "dialog_scan.png"); }, button: "Yes" });
Bench.expect({ run: function (box) { Bench.grab(box, OUT + "dialog_scan_done.png"); }, button: "OK" });
click(317, 623);

// ---- the window, with a pose that stands -----------------------------------------------------------

click(197, 317);
click(412, 336);
for (var i = 0; i < 9; ++i)
    click(430, 470);
endStatus();
Bench.move(PANE, 1, 300);
Bench.grab(MainWindow, OUT + "posebench.png");
click(270, 988);
click(270, 988);

page("page_main");
dialog("dialog_settings", "Cancel", function () { click(437, 623); });
dialog("dialog_about", "OK", function () {
    MainWindow.getActionMgr().findAction("QuillonAboutAction").trigger();
});

click(197, 317);
page("page_picker");
click(254, 336); // sitting poses
for (i = 0; i < 3; ++i)
    click(430, 470);
page("page_browsing");
click(270, 988);
click(412, 600); // like the reference pose
click(430, 470);
page("page_areas");
click(270, 988);
click(270, 988);

// ---- a custom pose, to be deleted ----------------------------------------------------------------

Bench.expect({ file: "My seat" });
click(197, 623);
click(197, 317);
click(96, 336); // all poses
click(430, 470, "middle");
dialog("dialog_delete", "No", function () { click(61, 735); });
click(270, 988);
click(270, 988);

// ---- a start after a crash -----------------------------------------------------------------------

function dataFile(stem)
{
    return App.getDataFolderPath() + "/Brannoc/Quillon/" + stem;
}
Bench.stopPane();
// A program that ended while the plug-in started: what is left of it is a marker without its suffix, as it
// was called once.
Bench.writeFile(dataFile("crashed.dat"), "TQAAAA==");
dialog("dialog_crash", "OK", function () { Bench.startPane(); });

// ---- before and after ----------------------------------------------------------------------------

function channel(bone, axis)
{
    return figure.findBone(bone)["get" + axis + "RotControl"]();
}

function freshFigure()
{
    Scene.clear();
    figure = Scene.loadFigure("Genesis8Female");
    Scene.selectAll(false);
    Scene.setPrimarySelection(figure);
}

function pair(name, press, select)
{
    if (select) {
        Scene.selectAll(false);
        Scene.setPrimarySelection(figure.findBone(select));
    }
    Bench.grab(VIEW, OUT + name + "_before.png");
    press();
    Bench.grab(VIEW, OUT + name + "_after.png");
}

Bench.resize(MainWindow, 1720, 1000); // the view between the panes is as wide as a picture of a pair
Bench.resize(PANE, 512, 1024);

freshFigure();
channel("rShldrBend", "Z").setValue(-45);
channel("lThighBend", "X").setValue(-70);
channel("lShin", "X").setValue(80);
pair("swap", function () { click(77, 419); });

freshFigure();
channel("rShldrBend", "Z").setValue(-45);
channel("rForearmBend", "Y").setValue(60);
pair("symmetrize", function () { click(197, 419); }, "lCollar");

freshFigure();
figure.findBone("hip").getXPosControl().setValue(34);
pair("optimize", function () { click(437, 317); });

freshFigure();
function dials()
{
    return [["Arms Up Right", Math.round(100 * figure.findProperty("pCTRLArmsUpRight").getValue()) + " %"],
        ["Right shoulder X", channel("rShldrBend", "X").getRawValue().toFixed(1)],
        ["Right shoulder Y", channel("rShldrBend", "Y").getRawValue().toFixed(1)],
        ["Right shoulder Z", channel("rShldrBend", "Z").getRawValue().toFixed(1)]];
}
figure.findProperty("pCTRLArmsUpRight").setValue(0.8);
facts.dials.bake_before = dials();
pair("bake", function () { click(77, 521); });
facts.dials.bake_after = dials();

// ---- the prop's dialog ---------------------------------------------------------------------------

Scene.selectAll(false);
Scene.setPrimarySelection(Scene.addProp("Box", [-25, 0, -25], [25, 50, 25]));
dialog("dialog_prop_origin", "Cancel", function () { click(437, 317); });

print(JSON.stringify(facts));
quit(0);
