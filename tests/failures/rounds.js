// rounds.js - one command, one call of it that fails, and what is looked at afterwards:
// include("rounds.js") after commands.js.
var keptRounds = 0; // in which a save failed
var SPARE_ANSWERS = 8; // of windows that come only when something fails

// What may lie about until the next start: the poses of a swap that failed, a file whose lock could
// not be had, what could not be removed beside a file. (That goes with the next process only.)
var NOTHING = /^$/;
var OF_NO_INSTALLATION = /_\.dat$/; // whose key comes from the temporary folder's path
var LEFT_FOR_NOW = /^temp\/qlntemp_\w+\.duf$|\.lock$|\.\d+\.new$/;

function answerAll(command)
{
    answer(command.answers);
    for (var i = 0; i < SPARE_ANSWERS; ++i)
        Bench.expect({});
}

// The pane is as the command wants it; the state of the files then.
function beginRound(command, world)
{
    bringBack(world);
    UndoStack.clearAll();
    if (!command.prepare) {
        Scene.clear();
        if (command.before)
            command.before();
        figure = Scene.getPrimarySelection();
        return;
    }
    openPane();
    loadFigure();
    command.prepare();
}

// The toolkit locks its own settings, the file dialog's and those of the host's window. What a failing
// call or a kill leaves of such a lock it would wait for half a minute; no file of the plug-in is in it.
function dropToolkitLocks()
{
    var config = HOME + "/../config"; // as drive.sh says
    Bench.files(config).forEach(function (name) {
        if (/\.lock$/.test(name))
            assert(Bench.removeFile(config + "/" + name), "'" + name + "' can be removed");
    });
    Bench.removeFile(HOME + "/settings.ini.lock");
}

function runCommand(command)
{
    answerAll(command);
    command.run();
    Bench.dropExpects();
}

function paneIsThere()
{
    return MainWindow.getPaneMgr().findPane(PANE) !== null;
}

// The pane as the next start of the host gives it.
function startAnew()
{
    if (paneIsThere())
        Bench.stopPane();
    answerAll({});
    openPane();
    Bench.dropExpects();
}

// [before, after, after the next start], with nothing failing.
function statesOf(command, world)
{
    beginRound(command, world);
    var states = [worldNow()];
    runCommand(command);
    states.push(worldNow());
    startAnew();
    states.push(worldNow());
    Bench.stopPane();
    command.owns.forEach(function (name) {
        assert(states[0][name] !== states[1][name], "the command saves '" + name + "'");
    });
    return states;
}

// ---- what is looked at ---------------------------------------------------------------------------

function isOnPage(tip) // by how the tip of its first button begins
{
    return Bench.accessible(PANE)[0].name.indexOf(tip) == 0;
}

// The picker opens and closes again, from whatever page.
function takesPresses(faults)
{
    answerAll({});
    for (var i = 0; i < 3; ++i)
        press(202);
    if (!press(1) || !isOnPage("Browse All Poses"))
        faults.push("the pane takes no press any more");
    press(202);
    if (!isOnPage("REFERENCE POSE"))
        faults.push("the pane does not go back to its main page");
    Bench.dropExpects();
}

function locked()
{
    var flags = Bench.flagState(figure), list = [];
    for (var channel in flags)
        if (flags[channel].locked)
            list.push(channel);
    return list.join(" ");
}

function figureNow()
{
    return JSON.stringify(Bench.rawState(figure));
}

function sayings(since) // texts of the pane and of the boxes since then
{
    var boxes = Bench.dialogs().slice(since).map(function (box) { return box.text; });
    return boxes.concat(paneIsThere() ? Bench.texts(PANE) : []);
}

function isKept(command, states, now) // a file of the command is the old one
{
    return command.owns.some(function (name) {
        return now[name] === states[0][name] && now[name] !== states[1][name];
    });
}

function isSuccessTold(command, since)
{
    var told = sayings(since);
    function isTold(expression)
    {
        return expression && told.some(function (text) { return expression.test(text); });
    }
    return isTold(command.success) && !isTold(command.excuse);
}

function lookAtFigure(before, trouble, faults)
{
    if (UndoStack.isLocked())
        faults.push("the undo stack is locked");
    if (!trouble.mayLock && locked() != before.locked)
        faults.push("channels were locked or unlocked: " + locked());
    var steps = UndoStack.count() - before.steps;
    if (steps > 1)
        faults.push(steps + " undo steps");
    if (steps > 0)
        UndoStack.undo();
    if (!trouble.mayStay && figureNow() != before.figure)
        faults.push(steps > 0 ? "undo does not bring back the pose" : "the pose changed without a step");
}

function beforeCommand()
{
    return figure && { locked: locked(), steps: UndoStack.count(), figure: figureNow() };
}

// What goes wrong while a command runs: begin() brings it about, end() ends it and is false if it
// never came; mayLock: channels may stay locked; mayStay: the pose may, without a step; left: what may
// lie about after the next start; leavesOut: a pose is written without what the host did not tell.
function failingCall(call, n)
{
    return { name: call + " " + n, mayLock: call == "lock",
        mayStay: call == "accept" || call == "beginHold",
        leavesOut: Bench.callNames().host.indexOf(call) >= 0,
        left: { unlink: BESIDE, getTempPath: OF_NO_INSTALLATION }[call] || NOTHING,
        begin: function () { Bench.failCall(call, n); },
        end: function () { return Bench.dropCalls() == 0; } };
}

// One round; faults as texts.
function faultsWith(trouble, command, world, states)
{
    beginRound(command, world);
    var before = beforeCommand(), since = Bench.dialogs().length;
    trouble.begin();
    runCommand(command);
    var faults = trouble.end() ? [] : ["it never came"], now = worldNow();
    dropToolkitLocks();
    var left = new RegExp(LEFT_FOR_NOW.source + "|" + trouble.left.source);
    faults = faults.concat(faultsOf(now, states, left, trouble.leavesOut));
    var kept = isKept(command, states, now);
    keptRounds += kept;
    if (kept && isSuccessTold(command, since))
        faults.push("success is told");
    if (before)
        lookAtFigure(before, trouble, faults);
    if (paneIsThere())
        takesPresses(faults);
    startAnew();
    lookAtNextStart(states, trouble, faults);
    Bench.stopPane();
    return faults;
}

function lookAtNextStart(states, trouble, faults)
{
    faultsOf(worldNow(), states, trouble.left, trouble.leavesOut).forEach(function (fault) {
        faults.push("after the next start: " + fault);
    });
    takesPresses(faults);
}

// 1 to count, no more than that many: the first ones, then ever fewer, and the last one.
function chosenOf(count, most)
{
    var list = [];
    for (var i = 0; i < Math.min(count, most); ++i) {
        var share = most > 1 ? i / (most - 1) : 0;
        list.push(count <= most ? i + 1 : 1 + Math.round((count - 1) * share * share));
    }
    return list.filter(function (n, at) { return at == 0 || n != list[at - 1]; });
}

// {name: how often the command makes the call}, for those that it makes.
function callsOf(command, world, calls)
{
    var MANY = 1000000, counts = {};
    beginRound(command, world);
    calls.forEach(function (call) { Bench.failCall(call, MANY); });
    runCommand(command);
    Bench.pendingCalls().forEach(function (order) {
        if (order.n < MANY)
            counts[order.name] = MANY - order.n;
    });
    Bench.dropCalls();
    if (paneIsThere())
        Bench.stopPane();
    return counts;
}
