// What two hosts on one home have left; run by two_hosts.sh. Arguments: "prepare", or the two files
// of what they told.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

function prepare()
{
    for (var n = 0; n < 8; ++n)
        writePreset(FEMALE + "ab".charAt(n % 2) + Math.floor(n / 2) + ".duf", poseOf(n, "upright"));
    eq(scan(), "Success! Indexed pose files: 8");
    quit(0);
}

var START = { "setting translations": "1" }; // "0" of all others

// What each thing that was saved may be: what was told last, or what a host was about to save when
// it was killed.
function outcomes(lines)
{
    var possible = {};
    lines.forEach(function (line) {
        var words = line.split(" "), thing = words[1] + " " + words[2], value = words[3];
        var before = possible[thing];
        if (words[0] == "seen")
            assert(!before ? value == (START[thing] || "0") : before.indexOf(value) >= 0,
                thing + " is " + value + " after a start, and was " + before);
        possible[thing] = words[0] == "try" || words[0] == "fail" ? (before || [START[thing] || "0"]).concat(value)
                                                                  : [value];
    });
    return possible;
}

function check(what, possible, value)
{
    assert(possible.indexOf(String(value)) >= 0, what + " is " + value + ", was " + possible);
}

function checkAll()
{
    var entries = {}, ranks = readRankFile(), settings = readSettingsFile(), saves = 0, customs = 0;
    readIndexFile().forEach(function (entry) {
        var name = fileName(entry.path).replace(".duf", "");
        assert(!(name in entries), name + " is indexed once");
        entries[name] = entry;
    });
    args.forEach(function (file) {
        var lines = fromUtf8(readBytes(file)).split("\n").filter(function (line) { return line; });
        var possible = outcomes(lines);
        var done = lines.filter(function (line) { return /^done/.test(line); }).length;
        var failed = lines.filter(function (line) { return /^fail/.test(line); }).length;
        assert(done > 9 * failed, "of a host's saves " + done + " succeed and " + failed + " fail");
        saves += done;
        for (var thing in possible) {
            var kind = thing.split(" ")[0], name = thing.split(" ")[1];
            if (kind == "rank")
                check(thing, possible[thing], ranks[entries[name].hash] || 0);
            else if (kind == "setting")
                check(thing, possible[thing], settings[name]);
            else if (possible[thing].length == 1) { // it was told that it was saved
                assert(name in entries, name + " is indexed");
                eq(readBytes(entries[name].path).substr(0, 2), "\x1f\x8b", name + " is a pose");
                ++customs;
            }
        }
    });
    for (var n = 0; n < 8; ++n)
        assert(("ab".charAt(n % 2) + Math.floor(n / 2)) in entries, "what was scanned is indexed");
    print(saves + " saves, " + customs + " of them custom poses: nothing is lost");
    quit(0);
}

if (args[0] == "prepare")
    prepare();
else
    checkAll();
