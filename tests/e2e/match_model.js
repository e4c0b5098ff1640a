// match_model.js - which poses match a category, reckoned from the index file alone, with
// quaternions of its own: include("match_model.js").
// Quaternions are [x, y, z, w]; v is turned by q as conj(q) v q.

function times(a, b)
{
    return [a[3] * b[0] + a[0] * b[3] + a[1] * b[2] - a[2] * b[1],
        a[3] * b[1] - a[0] * b[2] + a[1] * b[3] + a[2] * b[0],
        a[3] * b[2] + a[0] * b[1] - a[1] * b[0] + a[2] * b[3],
        a[3] * b[3] - a[0] * b[0] - a[1] * b[1] - a[2] * b[2]];
}

function normalised(q)
{
    var length = Math.sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
    return [q[0] / length, q[1] / length, q[2] / length, q[3] / length];
}

function turned(q, v)
{
    return times(times([-q[0], -q[1], -q[2], q[3]], [v[0], v[1], v[2], 0]), q).slice(0, 3);
}

function distance(a, b)
{
    var x = a[0] - b[0], y = a[1] - b[1], z = a[2] - b[2];
    return Math.sqrt(x * x + y * y + z * z);
}

// Whether a slot is rejected: a probe axis is off by the tolerance, or almost so.
function rejects(a, b, tolerance)
{
    return [[0, 1, 0], [0, 0, 1]].some(function (axis) {
        return 1 - distance(turned(a, axis), turned(b, axis)) / tolerance <= 0.001;
    });
}

var TOLERANCE = 0.75;
var IDENTITY = [0, 0, 0, 1];
var BASES = [IDENTITY, IDENTITY, IDENTITY, [0, -0.707, -0.707, 0], [-0.707, 0, 0, 0.707],
    [-0.5, 0.5, 0.5, 0.5], [-0.5, -0.5, -0.5, 0.5], [0, 0, -1, 0]].map(normalised);
var SITTING = [null, IDENTITY, [-0.689, -0.104, 0.12, 0.707], [-0.689, 0.104, -0.12, 0.707],
    [0.698, 0.036, -0.122, 0.704], [0.698, -0.036, 0.122, 0.704], [-0.004, 0, 0.13, 0.991],
    [-0.004, 0, -0.13, 0.991], [0.268, 0.273, 0.008, 0.924], [0.268, -0.273, -0.008, 0.924]];
// Slots: 0 hip, 1 torso, 2 and 3 shins, 4 and 5 thighs, 6 and 7 arms, 8 and 9 forearms.
var SLOTS_ASKED = [[], [0, 4, 5], [0, 4, 5], [0, 1], [0, 1], [0], [0], [0]];

function hipFits(hip, base)
{
    for (var i = 0; i < 360; ++i) {
        var half = i * Math.PI / 360;
        if (!rejects(hip, times(base, [0, Math.sin(half), 0, Math.cos(half)]), TOLERANCE))
            return true;
    }
    return false;
}

// reference: of category 8, {slots: ten quaternions, asked: numbers of slots}
function fits(entry, category, reference)
{
    var slots = reference ? reference.slots : category == 1 ? SITTING : null;
    var base = reference ? reference.slots[0] : BASES[category];
    var asked = reference ? reference.asked : SLOTS_ASKED[category];
    return asked.every(function (slot) {
        if (slot == 0)
            return hipFits(entry.slots[0], base);
        return !rejects(entry.slots[slot], slots ? normalised(slots[slot]) : IDENTITY, TOLERANCE);
    });
}

// settings: as in readSettingsFile(); ranks: {hash: rank}. Numbers of the entries that match.
function matchesOf(entries, category, settings, ranks, reference)
{
    var numbers = [];
    entries.forEach(function (entry, number) {
        var custom = entry.path.indexOf("data/Brannoc/Quillon/custom") >= 0;
        var rank = custom ? 3 : ranks[entry.hash] || 0;
        var isPair = /data\/brannoc\/poses/i.test(entry.path) && /(0|a|b)\.duf/.test(entry.path);
        if (((entry.code == 8 && settings.female) || (entry.code == 264 && settings.male))
            && (settings.rankFilter >> rank & 1) && !(settings.ignorePairs && isPair) && entry.signed
            && fits(entry, category, reference))
            numbers.push(number);
    });
    return numbers;
}
