// What assistive technology is told of the painted buttons, page by page: names, roles, states,
// rectangles. And that the pane keeps away from the keyboard.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");
writeLibrary();

function away() { Bench.move(PANE, 2, Math.round(paneSize()[1] * 0.995)); }

function children()
{
    away();
    return Bench.accessible(PANE).filter(function (child) { return !isText(child); });
}

// Counter, pose and message stand behind everything that can be pressed.
function isText(child) { return child.role == "StaticText" || child.role == "AlertMessage"; }

function names(list)
{
    return list.map(function (child) { return child.name; });
}

// A rectangle of the canvas in pixels, as the buttons are painted.
function pixels(x, y, w, h)
{
    var W = paneSize()[0], H = paneSize()[1];
    return [Math.floor(W * x / 512), Math.floor(H * y / 1024), Math.floor(W * w / 512),
        Math.floor(H * h / 1024)];
}

function rect(child)
{
    var r = child.rectangle;
    return [r.x, r.y, r.width, r.height];
}

// ---- main page -----------------------------------------------------------------------------------
var MAIN = [
    [0, "REFERENCE POSE Click to memorize figure pose (will be used as a reference by some "
        + "functions of the Pose Finder tool). Right-click to view current ref pose"],
    [1, "Pose Finder Browse all poses installed on your computer by directly applying them to the "
        + "figure. Also find by pose type, apply partial poses and much more!"],
    [2, "Reset Figure Pose Select the figure parts to reset. Right-click to reset face/hands/feet. "
        + "Mid-click to reset non-recursively"],
    [3, "Optimize Editing Makes placing the figure in the scene easier with the hip as center for "
        + "figure rotations. Right-click to use root instead"],
    [4, "Swap Pose Select the figure parts to swap, Select root for the entire figure. Mid-click "
        + "swaps non-recursively"],
    [5, "Symmetrize Pose Select the figure parts to make like the opposite parts. Mid-click works "
        + "non-recursively"],
    [6, "Pose Limits Clamp bone rotations within the default range. Right-click to clamp face. "
        + "Mid-click unclamps"],
    [7, "Bone Translations Limit figure bone translations within a small range. Right- click resets "
        + "to zero translation"],
    [8, "Bake Current Pose Reset all pose controls to zero without altering the pose. Right- click "
        + "to reset face pose controls"],
    [12, "Brannoc Products Updates Update all installed products by Brannoc Ltd to the latest version"],
    [13, "Save Current Pose Saves the pose to the plug-in's custom library. The custom pose then "
        + "becomes available when using the Pose Finder"],
    [14, "Re-initialize Pose Finder Scan or re-scan all installed poses. Use this feature the first "
        + "time you use the plug-in or after installing new products"],
    [15, "Plugin Settings"]
];
var LINK = "Click here to visit the plugin webpage with more information, latest updates and more!";
var main = children();
eq(names(main), MAIN.map(function (row) { return row[1]; }).concat([LINK]));
MAIN.forEach(function (row, i) {
    eq(rect(main[i]), pixels(30 + 120 * (row[0] % 4), 270 + 102 * Math.floor(row[0] / 4), 94, 94),
        row[1]);
    eq([main[i].role, main[i].state.checkable, main[i].state.invisible], ["Button", false, false]);
});
eq([rect(main[13]), main[13].role], [pixels(25, 730, 462, 180), "Link"]);

// Under the pointer a button is larger by a twentieth, here as where it is painted and hit.
var plain = rect(main[2]);
Bench.move(PANE, plain[0] + 10, plain[1] + 10);
var grown = rect(Bench.accessible(PANE)[2]);
eq([grown[2], grown[3]], [Math.floor(plain[2] * 1.05), Math.floor(plain[3] * 1.05)]);
assert(grown[0] < plain[0] && grown[1] < plain[1], "about its centre");

// ---- picker page ---------------------------------------------------------------------------------
click(1);
var picker = children();
var KINDS = ["a sitting", "a standing", "a laying-belly-up", "a laying-belly-down",
    "a laying-on-left-side", "a laying-on-right-side", "an upside-down"];
eq(names(picker), ["Browse All Poses"].concat(KINDS.map(function (kind) {
    return "Browse all poses similar to " + kind + " pose";
}), ["Browse all poses similar to the REFERENCE POSE (see the first icon on the Plug-in's main screen)",
    "Back To Main Page", LINK]));
for (var k = 0; k < 9; ++k)
    eq(rect(picker[k]), pixels(40 + 158 * (k % 3), 280 + 132 * Math.floor(k / 3), 112, 112));
eq(rect(picker[9]), pixels(210, 958, 120, 60));
click(202);

// ---- browsing page -------------------------------------------------------------------------------
scan();
click(1);
click(108);
var BROWSING = [
    ["Apply Previous Pose Right-click to skip to previous product. Mid-click for first", 24, 350, 120, 240],
    ["Apply Next Pose Right-click to skip to next product. Mid-click for last", 370, 350, 120, 240],
    ["Back To Pose Finder Picker", 210, 958, 120, 60],
    ["Include Genesis 8 Female poses", 24, 255, 80, 80, true],
    ["Include Genesis 8 Male poses", 122, 255, 80, 80, true],
    ["Toggle Mirrored Pose", 314, 255, 80, 80, false],
    ["Current Pose Rank Unranked (click to change)", 410, 255, 80, 80],
    ["Preserve (lock) REFERENCE POSE's upper body while browsing for poses", 24, 605, 80, 80, false],
    ["Preserve (lock) REFERENCE POSE's lower body while browsing for poses", 122, 605, 80, 60, false],
    ["Preserve (lock) REFERENCE POSE's feet while browsing for poses", 122, 665, 80, 20, false],
    ["Preserve (lock) REFERENCE POSE's expression while browsing for poses", 218, 605, 80, 80, false],
    ["Preserve (lock) REFERENCE POSE's left hand while browsing for poses", 314, 605, 80, 80, false],
    ["Preserve (lock) REFERENCE POSE's right hand while browsing for poses", 410, 605, 80, 80, false],
    ["Browse to the product's folder", 36, 710, 50, 50],
    ["Toggle REFERENCE POSE", 218, 255, 80, 80, false],
    ["Include Unranked Poses", 158, 352, 40, 40, true],
    ["Include Favorite Poses", 214, 352, 40, 40, true],
    ["Include Hidden Poses", 266, 352, 40, 40, true],
    ["Include Custom Library Poses", 322, 352, 40, 40, true]
];
var AREA_NAMES = ["TORSO", "LEFT SHIN", "RIGHT SHIN", "LEFT THIGH", "RIGHT THIGH", "LEFT ARM",
    "RIGHT ARM", "LEFT FOREARM", "RIGHT FOREARM"];
var AREAS_ON = [true, false, false, true, true, false, false, false, false, true];
function checkBrowsing(withAreas)
{
    var list = children();
    BROWSING.forEach(function (row, i) {
        // The folder's name comes with the folder.
        assert(list[i].name.indexOf(row[0]) == 0, "'" + list[i].name + "' is '" + row[0] + "'");
        eq(rect(list[i]), pixels(row[1], row[2], row[3], row[4]), row[0]);
        var isSwitch = row[5] !== undefined;
        eq([list[i].role, list[i].state.checkable, list[i].state.checked],
            [isSwitch ? "CheckBox" : "Button", isSwitch, row[5] === true], row[0]);
    });
    var at = BROWSING.length;
    for (var area = 0; withAreas && area < 10; ++area, ++at) {
        var what = area < 9 ? "Only show a pose if it has a " + AREA_NAMES[area].toLowerCase()
                + " pose similar to the reference pose's " + AREA_NAMES[area]
            : "Only show a pose if it has a hip orientation similar to the reference pose's HIP";
        eq(list[at].name, what);
        eq(rect(list[at]), pixels(AREAS[area][0] - 12, AREAS[area][1] - 12, 24, 24), what);
        eq([list[at].role, list[at].state.checkable, list[at].state.checked],
            ["CheckBox", true, AREAS_ON[area]], what);
    }
    eq([list.length, list[at].name, list[at].role], [at + 1, LINK, "Link"]);
    eq(rect(list[at]), pixels(25, 810, 462, 100));
}
checkBrowsing(true);
click(202);
click(101);
checkBrowsing(false);
// States follow the presses, names the rank.
click(201);
[[210, 3], [218, 11], [227, 18]].forEach(function (row) {
    var was = children()[row[1]].state.checked;
    click(row[0]);
    eq(children()[row[1]].state.checked, !was, "button " + row[0]);
    click(row[0]);
    eq(children()[row[1]].state.checked, was, "button " + row[0]);
});
["Favorite", "Hidden", "Unranked"].forEach(function (rank) {
    click(213);
    eq(children()[6].name, "Current Pose Rank " + rank + " (click to change)");
});
// Rectangles follow the size.
Bench.resize(PANE, 400, 800);
checkBrowsing(false);
Bench.resize(PANE, 733, 911);
checkBrowsing(false);

// ---- keyboard ------------------------------------------------------------------------------------
var focus = Bench.focus();
click(201);
eq(Bench.focus(), focus, "a press takes no keyboard focus");
assert(focus != PANE, "the pane has none");
["a", "Return", "Delete", "Space", "Left", "Escape", "F1"].forEach(function (key) {
    eq(Bench.key(PANE, key), false, "key " + key + " is left to the host");
});
quit(0);
