// kill.js - ends the process at each call that changes files, of each command: to be started again
// and again in the same home, while it ends by a kill. Each start looks at what the one before left.
// args: "every" or the most kills at a call of a command; then commands, all without one.
include("begin.js");

var LEFT_UNTIL_AGAIN = /^content\/.*\.dse\.\d+\.new$/;
var PLAN = HOME + "/states/plan";

// {kills: [[command, call, n, of]], at: the number of the one that was tried last}
function readPlan()
{
    var bytes = readBytes(PLAN);
    return bytes && JSON.parse(bytes);
}

function writePlan(plan)
{
    writeBytes(PLAN, JSON.stringify(plan));
}

function makePlan()
{
    var world = makeWorld(), plan = { kills: [], at: -1, bad: 0 };
    keepState("world", world);
    commandsOf(args.slice(1)).forEach(function (name) {
        statesOf(COMMANDS[name], world).forEach(function (state, i) { keepState(name + i, state); });
        var counts = callsOf(COMMANDS[name], world, CHANGING);
        for (var call in counts)
            chosenOf(counts[call], limitOf(args[0])).forEach(function (n) {
                plan.kills.push([name, call, n, counts[call]]);
            });
    });
    return plan;
}

function lookAtItDoneAgain(command, done, faults)
{
    runCommand(command);
    faultsOf(worldNow(), [done], NOTHING).forEach(function (fault) {
        faults.push("done again: " + fault);
    });
}

function lookAtKilled(plan)
{
    var kill = plan.kills[plan.at], faults = [];
    dropToolkitLocks();
    startAnew();
    var states = [0, 1, 2].map(function (i) { return keptState(kill[0] + i); });
    var command = COMMANDS[kill[0]];
    lookAtNextStart(states, { left: command.tidies ? LEFT_UNTIL_AGAIN : NOTHING }, faults);
    if (command.tidies)
        lookAtItDoneAgain(command, states[1], faults);
    Bench.stopPane();
    plan.bad += faults.length > 0;
    faults.forEach(function (fault) {
        print(kill[0] + ", killed at " + kill[1] + " " + kill[2] + " of " + kill[3] + ": " + fault);
    });
}

function dieAtNext(plan)
{
    ++plan.at;
    writePlan(plan);
    if (plan.at == plan.kills.length)
        return;
    var kill = plan.kills[plan.at], command = COMMANDS[kill[0]];
    beginRound(command, keptState("world"));
    Bench.dieAtCall(kill[1], kill[2]);
    runCommand(command);
    throw new Error(kill.join(" ") + ": the call was not made");
}

var plan = readPlan();
if (plan)
    lookAtKilled(plan);
else
    plan = makePlan();
dieAtNext(plan);
print(plan.kills.length + " kills, " + plan.bad + " of them with faults");
quit(plan.bad ? 1 : 0);
