// Parts of the mishaps that mishap.sh brings about: the first argument says which. A second one is
// a pipe: it begins when a line is written there.
include("lib.js");

// Started without a pane, so that it can be said what the start may show.
var STARTS = { quiet_start: null,
    warned_start: { title: "Quillon plugin - Warning", button: "OK" } };
if (args[0] in STARTS) {
    if (STARTS[args[0]])
        Bench.expect(STARTS[args[0]]);
    Bench.startPane();
}
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

var MEMORIZED = "Reference Pose memorized", NOT_SAVED = "This could not be saved.";

function browse()
{
    click(1);
    click(100);
}

function leave()
{
    click(202);
    click(202);
}

function rankPoses(count)
{
    browse();
    for (var n = 0; n < count; ++n) {
        click(201);
        click(213);
    }
    leave();
}

var bends = 0;

function bend() // as never before
{
    figure.findBone("lForearmBend").getYRotControl().setValue(-(++bends % 9000) / 100);
}

function memorize()
{
    bend();
    if (readBytes(REFERENCE) !== null)
        yes();
    click(0);
}

function isReferenceWhole()
{
    var bytes = readBytes(REFERENCE);
    return bytes !== null && bytes.length > 1000 && bytes.substr(0, 2) == "\x1f\x8b";
}

// Calls of the plug-in fail one after the other until none does while it runs.
function eachFailure(call, run)
{
    for (var n = 1; n < 60; ++n) {
        Bench.failCall(call, n);
        run(n);
        if (Bench.dropCalls() > 0)
            return;
    }
    assert(false, call + " is called less than 60 times");
}

var ACTS = {
    // 16 poses, 6 of them ranked, a reference pose.
    prepare: function () {
        writeLibrary();
        eq(scan(), "Success! Indexed pose files: 16");
        rankPoses(6);
        memorize();
        assert(isReferenceWhole(), "a reference pose");
    },
    memorize_for_ever: function () {
        for (var n = 0; n < 100000; ++n) {
            memorize();
            assert(shows(MEMORIZED), "memorized");
            endStatus();
            print("memorized");
        }
    },
    // What fails is told, and what was there stays.
    write_fails: function () {
        ["open", "write", "sync", "rename"].forEach(function (call) {
            eachFailure(call, function (n) {
                var before = readBytes(REFERENCE);
                memorize();
                var changed = readBytes(REFERENCE) !== before;
                assert(isReferenceWhole(), call + " " + n + ": a whole reference pose");
                assert(shows(MEMORIZED) || shows(NOT_SAVED), call + " " + n + ": one of both is told");
                assert(!shows(MEMORIZED) || !shows(NOT_SAVED), call + " " + n + ": only one of both");
                eq(changed, shows(MEMORIZED), call + " " + n + ": success is told if it is one");
                endStatus();
            });
            eachFailure(call, function (n) {
                var path = CUSTOM_FOLDER + "mine.duf", before = readBytes(path);
                bend();
                Bench.expect({ file: "mine.duf" });
                click(13);
                var after = readBytes(path);
                assert(before === null || after !== null && after.substr(0, 2) == "\x1f\x8b",
                    call + " " + n + ": a whole custom pose");
                assert(after !== before || shows(NOT_SAVED), call + " " + n + ": it is told");
                endStatus();
            });
        });
    },
    next_four_times: function () {
        browse();
        for (var n = 0; n < 4; ++n)
            click(201);
    },
    scan: function () {
        print(scan());
    },
    scan_with_failing_opendir: function () {
        eachFailure("opendir", function (n) {
            Bench.expect({ title: "Quillon", button: "Yes" });
            Bench.expect({ button: "OK" });
            click(14);
            var ranked = 0, ranks = readRankFile(), kept = readBytes(dataFile("ranksKept"));
            for (var hash in ranks)
                ++ranked;
            ranked += kept === null ? 0 : (kept.length - 8) / 8;
            eq(ranked, 6, "ranks with opendir " + n + " failing");
        });
        eq(scan(), "Success! Indexed pose files: 16");
        var left = 0;
        for (var each in readRankFile())
            ++left;
        eq(left, 6, "ranks after the next scan");
    },
    cancel_a_scan_and_save: function () {
        yes();
        Bench.cancelProgress({ title: "Scanning...", info: "Identifying" });
        Bench.expect({ title: "Info", text: "Scanning aborted", button: "OK" });
        click(14);
        eq(readIndexFile().length, 16, "entries after the cancelled scan");
        Bench.expect({ file: "mine.duf" });
        click(13);
        eq(readIndexFile().length, 17, "entries after a custom pose was saved");
        eq(fileName(readIndexFile()[16].path), "mine.duf");
    },
    // The marker cannot be deleted at the end of a start, nor what else a start deletes.
    unlink_fails: function () {
        Bench.stopPane();
        for (var n = 1, left = 0; left == 0; ++n) {
            Bench.failCall("unlink", n);
            Bench.startPane();
            left = Bench.dropCalls();
            Bench.stopPane();
            Bench.startPane(); // one that finds a marker would warn
            eq(Bench.dialogs().length, 0, "boxes at the start after unlink " + n + " failed");
            Bench.stopPane();
        }
        assert(n > 2, "a start deletes something");
    },
    warned_start: function () {
        eq(Bench.dialogs().length, 1, "boxes");
        eq(readBytes(dataFile("poseIndex")), null, "the index is put away");
    },
    quiet_start: function () {
        eq(Bench.dialogs().length, 0, "boxes");
        browse();
        print(counter());
    },
    nothing: function () {},
    newer_host: function () {
        rankPoses(9);
        Bench.expect({ file: "mine.duf" });
        click(13);
        Bench.expect({ title: "Quillon Settings", button: "Accept",
            fields: { " Allow bone translations ": false } });
        click(15);
    },
};
if (args.length > 1) {
    print("started");
    Bench.readFile(args[1]);
}
ACTS[args[0]]();
quit(0);
