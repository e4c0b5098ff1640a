// full.js - each command with a disk that has room for a few more blocks only. The home is a disk of
// its own, a small one. args: commands, all without one.
include("begin.js");

var BLOCK = new Array(1366).join("AAAA"); // base64 of 4095 bytes, which take a block
var MOST_FREE = 24; // blocks
var world = makeWorld(), rounds = 0, bad = 0, blocks = 0;

function block(number)
{
    return HOME + "/filler/" + number;
}

function fill(free)
{
    for (blocks = 0; Bench.writeFile(block(blocks), BLOCK); ++blocks)
        assert(blocks < 4096, "the home is a small disk");
    Bench.removeFile(block(blocks)); // the one that did not fit
    for (; free > 0 && blocks > 0; --free)
        Bench.removeFile(block(--blocks));
}

function empty()
{
    while (blocks > 0)
        Bench.removeFile(block(--blocks));
    return true;
}

function fullDisk(free)
{
    return { name: free + " blocks free", left: NOTHING, end: empty,
        begin: function () { fill(free); } };
}

commandsOf(args).forEach(function (name) {
    var states = statesOf(COMMANDS[name], world);
    for (var free = 0; free < MOST_FREE; ++free) {
        var faults = faultsWith(fullDisk(free), COMMANDS[name], world, states);
        ++rounds;
        bad += faults.length > 0;
        faults.forEach(function (fault) { print(name + ", " + free + " blocks free: " + fault); });
    }
});
print(rounds + " rounds with a full disk, in " + keptRounds + " a save failed; " + bad
    + " with faults");
assert(keptRounds > 0, "a full disk keeps a file from being saved");
quit(bad ? 1 : 0);
