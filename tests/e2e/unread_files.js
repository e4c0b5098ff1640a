// A file that cannot be read at the start, or not to its end, is not one that is not there: what the
// session then saves joins it. Each file call of the start fails once.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

var FILES = ["settings", "ranks", "poseIndex"];
var MINE = CUSTOM_FOLDER + "mine.duf";

writePreset(FEMALE + "a.duf", poseOf(1, "upright"));
writePreset(FEMALE + "b.duf", poseOf(2, "upright", 80));
scan();
click(1);
click(100);
[0, 1].forEach(function () {
    press("next", 201, "left");
    press("rank", 213, "left", 0);
});
Bench.stopPane();
var dialogs = Bench.dialogs().length;
var before = FILES.map(function (stem) { return Bench.readFile(dataFile(stem)); });
var given = ranks();
eq(given.length, 2, "two ranks");
eq(readIndexFile().length, 2, "two poses");

function ranks() // "hash rank", sorted
{
    var found = [], byHash = readRankFile();
    for (var hash in byHash)
        found.push(hash + " " + byHash[hash]);
    return found.sort();
}

function putBack()
{
    FILES.forEach(function (stem, i) { Bench.writeFile(dataFile(stem), before[i]); });
    Bench.removeFile(MINE);
}

// False when the start has fewer such calls. A custom pose is saved, which goes into the index.
function startWithout(call, n)
{
    var what = call + " " + n + " fails: ";
    putBack();
    Bench.failCall(call, n);
    Bench.startPane();
    var struck = Bench.pendingCalls().length == 0;
    Bench.dropCalls();
    pane = MainWindow.getPaneMgr().findPane(PANE);
    Bench.resize(PANE, SIZE[0], SIZE[1]);
    Scene.setPrimarySelection(figure);
    Bench.expect({ file: MINE });
    ++dialogs;
    click(13);
    Bench.stopPane();
    eq(ranks(), given, what + "the ranks");
    eq(readIndexFile().map(function (entry) { return fileName(entry.path); }).sort(),
        ["a.duf", "b.duf", "mine.duf"], what + "the index");
    eq(readBytes(dataFile("settings")).length, 58, what + "the settings");
    return struck;
}

["open", "read", "close"].forEach(function (call) {
    var n = 1;
    while (startWithout(call, n))
        assert(++n < 60, "a start ends");
    assert(n > 3, "three files at least: " + n);
    print(call + ": " + (n - 1) + " failures");
});
eq(Bench.dialogs().length, dialogs, "none but those of the saved poses");
