// A long session: random commands by real clicks, and random doings of a user and of the world
// between them. After each command: at most one undo step, undo and redo exact at every key of every
// channel, nothing locked that was not, nothing that is no finite number.
// args: the number of commands, the seed, "trace" to be able to see after a crash which command it
// was (the last doings stand in the data folder's "trail"). A fault tells the seed and the number of
// its command; the same seed brings it about again.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");

var COMMANDS = parseInt(args[0], 10), SEED = parseInt(args[1], 10);
var number = 0, trail = []; // of the command, and the last doings before it
var size = Bench.resize(PANE, SIZE[0], SIZE[1]);

// ---- chance --------------------------------------------------------------------------------------
var chance = SEED >>> 0;

function below(n) // 0 to n - 1
{
    chance = (chance * 1664525 + 1013904223) % 4294967296; // exact: below 2^53
    return Math.floor(chance / 4294967296 * n);
}

function oneOf(list)
{
    return list[below(list.length)];
}

function weighted(rows) // [[weight, what]]
{
    var sum = 0, at;
    rows.forEach(function (row) { sum += row[0]; });
    at = below(sum);
    for (var i = 0; at >= rows[i][0]; ++i)
        at -= rows[i][0];
    return rows[i][1];
}

function between(low, high)
{
    return Math.round(1000 * (low + (high - low) * below(1000001) / 1000000)) / 1000;
}

// ---- the world -----------------------------------------------------------------------------------
var MOST_NODES = 4;
var FRAME = Scene.getTimeStep();
var vanished = {}; // path -> bytes

function writePoses()
{
    for (var i = 0; i < 9; ++i)
        writePreset((i < 6 ? FEMALE : MALE) + ["Alpha/", "Beta/", "Gamma/"][i % 3] + i + ".duf",
            poseOf(i, ["upright", "upright", "up", "down", "left", "inverted"][i % 6], i % 4 ? 0 : 85));
    writePreset(MAKER + "002/010f0.duf", poseOf(9, "upright", 90));
    writePreset(MAKER + "003/012f.duf", poseOf(10, "upright"));
}

function roots() // figures and props
{
    return Scene.nodes().filter(function (node) { return node.getNodeParent() === null; });
}

function figures()
{
    return roots().filter(function (node) { return node.bones !== undefined && node.bones().length; });
}

function channelsOf(node)
{
    return ["X", "Y", "Z"].map(function (axis) { return node["get" + axis + "RotControl"](); })
        .concat(["X", "Y", "Z"].map(function (axis) { return node["get" + axis + "PosControl"](); }));
}

function anyNode()
{
    var root = oneOf(roots());
    var bones = root && root.bones ? root.bones() : [];
    return bones.length && below(3) ? oneOf(bones) : root;
}

function selectOnly(node)
{
    Scene.selectAll(false);
    node.select(true);
    Scene.setPrimarySelection(node);
}

var DOINGS = {
    "select figure": function () {
        if (figures().length)
            selectOnly(oneOf(figures()));
    },
    "select": function () {
        if (roots().length)
            selectOnly(anyNode());
    },
    "select several": function () {
        for (var i = 1 + below(3); i > 0 && roots().length; --i)
            anyNode().select(true);
    },
    "select nothing": function () {
        Scene.selectAll(false);
        Scene.setPrimarySelection(null);
    },
    "pose": function () {
        for (var i = 1 + below(12); i > 0 && roots().length; --i)
            oneOf(channelsOf(anyNode())).setValue(between(-120, 120));
    },
    "dial": function () {
        var figure = oneOf(figures()), controls = figure ? figure.properties() : [];
        for (var i = 1 + below(5); i > 0 && controls.length; --i) {
            var control = oneOf(controls);
            if (control.setRawValue)
                control.setRawValue(between(-1, 1));
        }
    },
    "scale": function () {
        if (roots().length)
            anyNode()["get" + oneOf(["", "X", "Y", "Z"]) + "ScaleControl"]().setValue(between(0.5, 2));
    },
    "lock": function () {
        for (var i = 1 + below(4); i > 0 && roots().length; --i)
            oneOf(channelsOf(anyNode())).lock(below(2) == 1);
    },
    "limit": function () {
        if (roots().length)
            oneOf(channelsOf(anyNode())).setIsClamped(below(2) == 1);
    },
    "time": function () { Scene.setTime(FRAME * below(31)); },
    "remove bone": function () {
        var figure = oneOf(figures());
        if (figure && figure.bones().length > 120)
            figure.removeBone(oneOf(figure.bones()).getName());
    },
    "load figure": function () {
        if (roots().length >= MOST_NODES)
            Scene.removeNode(oneOf(roots()));
        Scene.loadFigure(oneOf(FIGURES));
    },
    "add prop": function () {
        if (roots().length >= MOST_NODES)
            Scene.removeNode(oneOf(roots()));
        var prop = Scene.addProp("crate", [-10, 0, -20], [30, 50, between(1, 90)]);
        if (below(2) && figures().length)
            oneOf(oneOf(figures()).bones()).addNodeChild(prop);
        if (below(2))
            selectOnly(prop);
    },
    "undo": function () { UndoStack.undo(); },
    "redo": function () { UndoStack.redo(); },
    "file vanishes": function () {
        var names = Bench.files(CONTENT).filter(function (name) { return /\.duf$/.test(name); });
        if (names.length < 4)
            return;
        var path = CONTENT + "/" + oneOf(names);
        vanished[path] = Bench.readFile(path);
        Bench.removeFile(path);
    },
    "files come back": function () {
        for (var path in vanished)
            Bench.writeFile(path, vanished[path]);
        vanished = {};
    },
    "restart": function () {
        Bench.restartPlugin();
        size = Bench.resize(PANE, SIZE[0], SIZE[1]);
        readSettingsFile(); // a whole one, or it throws
        readRankFile();
    },
    "status ends": endStatus
};

var DOING_ROWS = [[6, "select figure"], [4, "select"], [2, "select several"], [1, "select nothing"],
    [8, "pose"], [4, "dial"], [1, "scale"], [2, "lock"], [2, "limit"], [4, "time"],
    [1, "remove bone"], [2, "load figure"], [2, "add prop"], [2, "undo"], [2, "redo"],
    [1, "file vanishes"], [1, "files come back"], [1, "restart"], [1, "status ends"]];

// ---- the commands --------------------------------------------------------------------------------
var SCAN = 14, BACK = 202, WHICH = ["left", "left", "right", "middle"];

function range(from, to)
{
    var list = [];
    for (var i = from; i <= to; ++i)
        list.push(i);
    return list;
}

// [[weight, button]] of the page that shows, which the tip of its first button tells.
function buttonsNow()
{
    var first = Bench.accessible(PANE)[0].name;
    if (first.indexOf("REFERENCE POSE") == 0)
        return [[1, SCAN], [8, 1], [30, oneOf(range(0, 15))]];
    if (first.indexOf("Browse All Poses") == 0)
        return [[2, BACK], [12, oneOf(range(100, 108))]];
    return [[1, BACK], [10, 200], [14, 201], [6, oneOf(range(300, 309))], [6, oneOf(range(210, 213))],
        [6, oneOf(range(214, 219))], [3, 220], [3, 223], [4, oneOf(range(224, 227))]];
}

function answers()
{
    function button(yes, no)
    {
        return below(3) ? yes : no;
    }
    var file = oneOf(["", "one", "two", "three.duf"]);
    var window = { title: "Quillon - ", button: button("Yes", "No") };
    [{ title: "Quillon Settings", button: button("Accept", "Cancel"), fields: {
        " Allow pose limits violation in Pose Finder": below(2) == 1,
        " Allow bone translations ": below(2) == 1,
        " Ignore poses from pose-pair products ": below(2) == 1 } },
    { title: "Optimize Prop Origin", button: button("Accept", "Cancel") }, window, window,
    { title: "Quillon", text: "This procedure", button: below(8) ? "No" : "Yes" }, // scan
    { title: "Quillon", text: "Products by", button: below(4) ? "No" : "Yes" },
    { title: "Quillon", text: "already a memorized", button: button("Yes", "No") },
    { file: file }, { file: file && file.replace(/(\.duf)?$/, ".duf") }, // one that is there, once more
    { file: "" }, { file: "" }].forEach(Bench.expect);
}

function fault(what) // an error of the script or a claim
{
    if (/^Error: seed /.test(what))
        throw what;
    throw new Error("seed " + SEED + ", command " + number + " (" + trail.slice(-6).join("; ") + "): "
        + what);
}

function firstDifference(a, b)
{
    var one = a.split("\n"), other = b.split("\n"), i = 0, count = 0, at = -1;
    for (; i < Math.max(one.length, other.length); ++i)
        if (one[i] !== other[i] && ++count == 1)
            at = i;
    return count + " lines, first '" + one[at] + "' and '" + other[at] + "'";
}

function sameScene(a, b, what)
{
    if (a.text !== b.text)
        fault(what + ": " + firstDifference(a.text, b.text));
}

function command()
{
    var button = weighted(buttonsNow()), which = oneOf(WHICH), at = place(button);
    trail.push(button + " " + which);
    if (args[2] == "trace")
        writeBytes(App.getDataFolderPath() + "/trail", number + ": " + trail.slice(-6).join("; "));
    answers();
    var before = Bench.sceneState(), steps = UndoStack.count();
    if (!Bench.press(PANE, Math.round(at[0] * size[0] / 512), Math.round(at[1] * size[1] / 1024), which))
        fault("the pane takes no press");
    Bench.dropExpects();
    var after = Bench.sceneState(), made = UndoStack.count() - steps;
    if (UndoStack.isLocked() || UndoStack.getHoldDepth() != 0)
        fault("the undo stack is locked or held");
    if (show(before.locked) !== show(after.locked))
        fault("locked before " + show(before.locked) + ", now " + show(after.locked));
    if (after.notFinite.length && !before.notFinite.length)
        fault("not finite: " + after.notFinite);
    if (made < 0 || made > 1)
        fault(made + " undo steps");
    if (made == 0)
        return sameScene(before, after, "changed without a step");
    UndoStack.undo();
    sameScene(before, Bench.sceneState(), "undo");
    UndoStack.redo();
    sameScene(after, Bench.sceneState(), "redo");
}

// ---- the session ---------------------------------------------------------------------------------
writePoses();
Scene.loadFigure(FIGURES[below(4)]);
[{ title: "Quillon", text: "This procedure", button: "Yes" }, { title: "Info" }].forEach(Bench.expect);
click(SCAN);
eq(readIndexFile().length > 5, true, "poses are indexed");
UndoStack.clearAll();

function session()
{
    for (number = 1; number <= COMMANDS; ++number) {
        for (var doings = below(3); doings > 0; --doings) {
            var doing = weighted(DOING_ROWS);
            trail.push(doing);
            DOINGS[doing]();
        }
        command();
        if (number % 64 == 0) {
            UndoStack.clearAll(); // or its memory grows to its limit
            trail = [];
        }
    }
}
try {
    session();
} catch (error) {
    fault(error);
}
print(COMMANDS + " commands of seed " + SEED);
quit(0);
