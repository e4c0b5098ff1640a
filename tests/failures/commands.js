// commands.js - the commands that touch files: include("commands.js") after pane_lib.js and world.js.
// prepare: in a pane that has started, what comes before the command. Without it the command itself
// starts or ends the pane. run: the command. answers: of its windows. owns: the files that it
// saves, by name. success: what is shown or said only when they are saved; excuse: or when this is
// said, too. tidies: what a kill leaves beside a file is there until the command is done again, which
// then comes to the same.
var figure = null;
var size; // of the pane, [w, h]

function loadFigure()
{
    Scene.clear();
    figure = Scene.loadFigure("Genesis8Female");
}

function openPane()
{
    Bench.startPane();
    size = Bench.resize(PANE, SIZE[0], SIZE[1]);
}

// As click() of pane_lib.js, for a pane that keeps its size.
function press(button, which)
{
    var at = place(button);
    return Bench.press(PANE, Math.round(at[0] * size[0] / 512), Math.round(at[1] * size[1] / 1024),
        which || "left");
}

function bend(degrees)
{
    figure.findBone("lForearmBend").getYRotControl().setValue(degrees);
}

function browse(which) // all poses; which: the first or the last one
{
    press(1);
    press(100);
    press(which == "last" ? 201 : 200, "middle");
}

var YES = { title: "Quillon", button: "Yes" };
var OK = { button: "OK" };
var SCRIPT = "content/Brannoc/First Dance/FD01 000.dse";

var NEWS = OWN + "newversion_093.png";
var MUTE = 52; // place in the settings

// What a start finds that was killed while it read the data files.
function putMarker()
{
    writeBytes(HOME + "/" + MARKER, "M\0\0\0");
}

var COMMANDS = {
    memorize: { owns: [OWN + "reference.duf"], answers: [YES], success: /Reference Pose memorized/,
        prepare: function () { bend(-70); }, run: function () { press(0); } },
    "show reference": { owns: [],
        prepare: function () { bend(-70); }, run: function () { press(0, "right"); } },
    save: { owns: [OWN + "custom/fresh.duf", INDEX], answers: [{ file: "fresh" }],
        prepare: function () { bend(-90); }, run: function () { press(13); } },
    replace: { owns: [OWN + "custom/own.duf", INDEX], answers: [{ file: "own.duf" }],
        prepare: function () { bend(-90); }, run: function () { press(13); } },
    "delete": { owns: [OWN + "custom/own.duf", INDEX],
        answers: [{ title: "Quillon - Delete Custom Pose", button: "Yes" }],
        prepare: function () { browse("last"); }, run: function () { press(220); } },
    rank: { owns: [RANKS], prepare: browse, run: function () { press(213); } },
    scan: { owns: [INDEX], answers: [YES, { title: "Info", button: "OK" }], success: /^Success!/,
        excuse: /could not be read/, // told beside, of what is missing
        prepare: function () { writePreset(FEMALE + "New/fourth.duf", poseOf(7, "upright")); },
        run: function () { press(14); } },
    settings: { owns: [SETTINGS],
        answers: [{ title: "Quillon Settings", button: "Accept",
            fields: { " Allow bone translations ": false } }],
        prepare: function () { }, run: function () { press(15); } },
    swap: { owns: [], success: /Swapping succeeded/,
        prepare: function () { bend(-70); }, run: function () { press(4); } },
    symmetrize: { owns: [], success: /Symmetrization succeeded/,
        prepare: function () {
            bend(-70);
            figure.select(false);
            figure.findBone("lForearmBend").select(true);
            Scene.setPrimarySelection(figure.findBone("lForearmBend"));
        }, run: function () { press(5); } },
    mirror: { owns: [], prepare: browse, run: function () { press(212); } },
    apply: { owns: [], prepare: browse, run: function () { press(201); } },
    lock: { owns: [], prepare: browse, run: function () { press(218); } },
    back: { owns: [SETTINGS],
        prepare: function () {
            browse();
            press(211);
        }, run: function () { press(202); } },
    patch: { owns: [SCRIPT], answers: [YES, OK], success: /succeessful/, tidies: true,
        prepare: function () { }, run: function () { press(12); } },
    start: { owns: [], run: openPane },
    "start after a crash": { owns: [], before: putMarker,
        answers: [{ title: "Quillon plugin - Warning", button: "OK" }], run: openPane },
    "start with old names": { owns: [], before: function () {
        [SETTINGS, RANKS, INDEX].forEach(function (name) {
            var old = name.replace("_" + KEY, "");
            Bench.writeFile(HOME + "/" + old, Bench.readFile(HOME + "/" + name));
            Bench.removeFile(HOME + "/" + name);
        });
    }, run: openPane },
    "start with news": { owns: [NEWS], before: function () {
        var settings = readBytes(HOME + "/" + SETTINGS);
        writeBytes(HOME + "/" + SETTINGS, // listens to news
            settings.substr(0, MUTE) + "\0" + settings.substr(MUTE + 1));
        writeBytes(HOME + "/" + NEWS, "older");
    }, run: openPane },
    end: { owns: [SETTINGS],
        before: function () {
            openPane();
            loadFigure();
            browse();
            press(211);
        }, run: function () { Bench.stopPane(); } }
};

// ---- the world that they begin with --------------------------------------------------------------

function makeWorld()
{
    bringBack({});
    [FEMALE + "Alpha/first.duf", FEMALE + "Alpha/second.duf", MALE + "Beta/third.duf"]
        .forEach(function (path, number) { writePreset(path, poseOf(number, "upright")); });
    writeBytes(HOME + "/" + SCRIPT, "old");
    openPane(); // with the news of the day
    assert(Bench.files(HOME + "/data").indexOf(NEWS.substr(5)) >= 0, "the picture was fetched");
    loadFigure();
    answer([YES, { title: "Info", text: "Indexed pose files: 3" }]);
    press(14);
    press(0);
    bend(-30);
    answer([{ file: "own" }]);
    press(13);
    browse();
    press(213);
    press(201);
    press(213);
    press(213);
    press(202);
    press(202);
    answer([{ title: "Quillon Settings", button: "Accept",
        fields: { " Don't notify me about plugin updates ": true } }]);
    press(15);
    eq(Bench.dropExpects(), 0, "every window came");
    Bench.stopPane();
    return worldNow();
}

function answer(windows)
{
    (windows || []).forEach(function (window) { Bench.expect(window); });
}
