// fail.js - each call of each command fails once, one after the other, in one process.
// args: "changing", "files", "host" or "all"; "every" or the most rounds for a call of a command; then
// commands, all without one.
include("begin.js");

var calls = callsOfKind(args[0]);
var chosen = commandsOf(args.slice(2));
var most = limitOf(args[1]), world = makeWorld(), rounds = 0, bad = 0;

function fail(name, states, call, n, count)
{
    var faults = faultsWith(failingCall(call, n), COMMANDS[name], world, states);
    ++rounds;
    bad += faults.length > 0;
    faults.forEach(function (fault) {
        print(name + ", " + call + " " + n + " of " + count + ": " + fault);
    });
}

chosen.forEach(function (name) {
    var command = COMMANDS[name], states = statesOf(command, world), began = rounds;
    var counts = callsOf(command, world, calls);
    for (var call in counts)
        chosenOf(counts[call], most).forEach(function (n) {
            fail(name, states, call, n, counts[call]);
        });
    print(name + ": " + (rounds - began) + " rounds");
});
print(rounds + " rounds, in " + keptRounds + " a save failed; " + bad + " with faults");
var saves = chosen.some(function (name) { return COMMANDS[name].owns.length > 0; });
assert(keptRounds > 0 || !saves || calls.indexOf("write") < 0, "some failing call keeps a file back");
quit(bad ? 1 : 0);
