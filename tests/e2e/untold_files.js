// What the system cannot tell about for a moment is not taken for missing: one failing stat costs
// neither the memorized pose nor a file that a start after a crash puts away.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");

var BACKUPS = DATA_FOLDER + "backup/";
var figure = Scene.loadFigure("Genesis8Female");

// False when the work has fewer such calls.
function strikes(n, work)
{
    Bench.failCall("stat", n);
    work();
    var struck = Bench.pendingCalls().length == 0;
    Bench.dropCalls();
    return struck;
}

function eachFailing(what, work, claim)
{
    for (var n = 1; strikes(n, work); ++n)
        claim("stat " + n + " fails while " + what + ": ");
    assert(n > 1, what + " looks for a file");
    print(what + ": " + (n - 1) + " failures");
}

// ---- memorizing --------------------------------------------------------------------------------

click(0);
var memorized = Bench.readFile(REFERENCE);
figure.findBone("lShin").getXRotControl().setValue(30);
eachFailing("a pose is memorized", function () {
    Bench.expect({ title: "Quillon", button: "No" });
    click(0);
}, function (what) {
    eq(Bench.pendingExpects().length, 0, what + "a question is asked");
    eq(Bench.readFile(REFERENCE) === memorized, true, what + "no means no");
});
Bench.stopPane();

// ---- a start after a crash ----------------------------------------------------------------------

var before = {};
before.settings = readBytes(dataFile("settings")).replace(/^([^]{4})[^]/, "$1\0"); // one switch off
before.ranks = "\1\0\0\0\1\0\0\0" + "\1\0\0\0\7\0\0\0";
before.poseIndex = "\1\0\0\0\1\0\0\0" + "\6\0\0\0/a.duf" + new Array(8 + 160 + 1 + 1).join("\1");

function backups()
{
    return Bench.files(DATA_FOLDER + "backup");
}

function crash()
{
    backups().forEach(function (name) { Bench.removeFile(BACKUPS + name); });
    for (var stem in before)
        writeBytes(dataFile(stem), before[stem]);
    writeBytes(dataFile("crashed"), "\x4d\0\0\0");
}

function isKept(stem)
{
    return readBytes(dataFile(stem)) === before[stem] || backups().some(function (name) {
        return name.indexOf(stem + "_") == 0 && readBytes(BACKUPS + name) === before[stem];
    });
}

crash();
eachFailing("the host starts after a crash", function () {
    if (Bench.pendingExpects().length == 0) // a marker that cannot be looked at warns of nothing
        Bench.expect({ title: "Quillon plugin - Warning", button: "OK" });
    Bench.startPane();
}, function (what) {
    Bench.stopPane();
    for (var stem in before)
        assert(isKept(stem), what + stem + " is where it was, or a copy of it");
    crash();
});
Bench.stopPane();
