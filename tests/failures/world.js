// world.js - the files that commands may touch, as they are and as they may be: include("world.js")
// after lib.js, bytes_lib.js and preset_lib.js. Bytes are base64; a state is {name: bytes}, names
// relative to the home.
var HOME = App.getDataFolderPath().replace(/\/data$/, "");
var WATCHED = ["data", "content", "temp"];
var PICTURE = /(^|\/)icon\.png$/; // made anew by each start, and nobody misses it

function worldNow()
{
    var state = {};
    WATCHED.forEach(function (folder) {
        Bench.files(HOME + "/" + folder).forEach(function (name) {
            if (!PICTURE.test(name))
                state[folder + "/" + name] = Bench.readFile(HOME + "/" + folder + "/" + name);
        });
    });
    return state;
}

// Without what has a row in the state and is the same already.
function bringBack(state)
{
    var now = worldNow();
    for (var name in now)
        if (!(name in state))
            assert(Bench.removeFile(HOME + "/" + name), "'" + name + "' can be removed");
    for (name in state)
        if (now[name] !== state[name])
            assert(Bench.writeFile(HOME + "/" + name, state[name]), "'" + name + "' can be written");
}

// Below a folder of its own, so that a later process finds it.
function keepState(as, state)
{
    var folder = HOME + "/states/" + as;
    Bench.files(folder).forEach(function (name) { Bench.removeFile(folder + "/" + name); });
    for (var name in state)
        assert(Bench.writeFile(folder + "/" + name, state[name]), "'" + name + "' can be kept");
}

function keptState(as)
{
    var folder = HOME + "/states/" + as, state = {};
    Bench.files(folder).forEach(function (name) {
        state[name] = Bench.readFile(folder + "/" + name);
    });
    return state;
}

// ---- whole or not --------------------------------------------------------------------------------
var OWN = "data/Brannoc/Quillon/";
var INDEX = OWN + "poseIndex_" + KEY + ".dat";
var SETTINGS = OWN + "settings_" + KEY + ".dat";
var RANKS = OWN + "ranks_" + KEY + ".dat";
var KEPT = OWN + "ranksKept_" + KEY + ".dat";
var MARKER = OWN + "crashed_" + KEY + ".dat";
var BACKUP = /^data\/Brannoc\/Quillon\/backup\//;
var BESIDE = /\.\d+\.new$/;

// Bytes of each entry; null where the file is not whole.
function entriesOf(base64)
{
    var bytes = fromBase64(base64), reader = new Reader(bytes), entries = [], at = 8;
    if (bytes.length < 8 || reader.integer() != 1)
        return null;
    for (var left = reader.integer(); left > 0; --left) {
        if (at + 4 > bytes.length)
            return null;
        var length = new Reader(bytes.substr(at, 4)).integer() + 4 + 4 + 4 + 160 + 1;
        entries.push(bytes.substr(at, length));
        at += length;
    }
    return at == bytes.length ? entries : null;
}

function pathOf(entry)
{
    return entry.substr(4, entry.length - 4 - 4 - 4 - 160 - 1);
}

// Entries of poses that were or are there, none twice. One whose file could not be read in a scan
// has no signature. A reference pose that could not be taken away is a pose as any other.
function isWholeIndex(base64, states)
{
    var known = {}, entries = entriesOf(base64);
    states.forEach(function (state) {
        (state[INDEX] ? entriesOf(state[INDEX]) : []).forEach(function (entry) {
            known[pathOf(entry)] = true;
        });
    });
    known[utf8(HOME + "/" + OWN + "reference.duf")] = true;
    return entries !== null && entries.every(function (entry) {
        var isKnown = known[pathOf(entry)];
        known[pathOf(entry)] = false;
        return isKnown;
    });
}

// Place and rank of the current pose follow what a step finds.
function withoutPlace(base64)
{
    var bytes = base64 ? fromBase64(base64) : "";
    return bytes.length == 58 ? bytes.substr(0, 16) + bytes.substr(20, 34) : null;
}

function isAmong(name, bytes, states)
{
    return states.some(function (state) { return state[name] === bytes; });
}

// Whether the file may have these bytes after any failure; undefined: it is not there.
function isWhole(name, bytes, states)
{
    if (isAmong(name, bytes, states))
        return true;
    if (bytes === undefined)
        return false;
    if (name == INDEX)
        return isWholeIndex(bytes, states);
    if (name == SETTINGS)
        return withoutPlace(bytes) !== null && states.some(function (state) {
            return withoutPlace(state[name]) === withoutPlace(bytes);
        });
    return false;
}

function oldNameOf(name) // that an earlier version would give it
{
    return name.replace("_" + KEY, "");
}

// That one of the bytes that the file may have lies in backup/.
function isBackedUp(original, now, states)
{
    for (var name in now)
        if (BACKUP.test(name) && now[name] !== undefined && isAmong(original, now[name], states))
            return true;
    return false;
}

function isPackedPose(name, base64)
{
    return /\.duf$/.test(name) && base64 !== undefined && base64.indexOf("H4sI") == 0
        && base64.length > 4000;
}

// What is wrong in the world, as texts. states: those before the command, after it, and after the
// next start, when nothing fails. leftovers: the names of files that may lie about. leavesOut: poses
// may lack what the host did not tell.
function faultsOf(now, states, leftovers, leavesOut)
{
    var faults = [], names = {};
    states.concat([now]).forEach(function (state) {
        for (var name in state)
            names[name] = true;
    });
    for (var name in names) {
        var known = states.some(function (state) { return name in state; });
        if (BACKUP.test(name)) {
            var original = name.replace(/backup\//, "").replace(/\.[-0-9]+\.bak$/, "");
            if (now[name] !== undefined && !isAmong(original, now[name], states))
                faults.push(name + " is no copy of the old file");
        } else if (name == MARKER && now[name] === "") {
            continue; // it could not be removed
        } else if (name == KEPT && now[RANKS] === undefined) {
            continue; // the start after a crash has put the ranks there
        } else if (!known) {
            if (!leftovers.test(name))
                faults.push(name + " is left over");
        } else if (now[oldNameOf(name)] !== undefined
            && isAmong(oldNameOf(name), now[oldNameOf(name)], states)) {
            continue; // it has not come to its new name yet
        } else if (now[name] === undefined && !isAmong(name, undefined, states)
            && isBackedUp(name, now, states)) {
            continue;
        } else if (leavesOut && isPackedPose(name, now[name])) {
            continue;
        } else if (!isWhole(name, now[name], states)) {
            faults.push(name + (now[name] === undefined
                ? " is gone" : " is neither the old nor the new one"));
        }
    }
    return faults;
}
