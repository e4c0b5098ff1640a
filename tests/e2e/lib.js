// lib.js - what scripts state their claims with: include("lib.js").
// A claim that does not hold throws, which ends posebench with exit code 1.

function assert(holds, claim)
{
    if (!holds)
        throw new Error("not so: " + claim);
}

function show(value)
{
    if (value instanceof Array)
        return "[" + value.map(show).join(", ") + "]";
    return typeof value == "string" ? "'" + value + "'" : String(value);
}

// Numbers, texts, booleans and arrays of them, exactly.
function eq(got, expected, what)
{
    var same = got === expected;
    if (got instanceof Array && expected instanceof Array)
        same = show(got) === show(expected);
    assert(same, (what ? what + ": " : "") + show(got) + " is " + show(expected));
}

// Numbers and arrays of numbers, each within the tolerance.
function near(got, expected, tolerance, what)
{
    if (got instanceof Array) {
        eq(got.length, expected.length, (what || "") + " length");
        for (var i = 0; i < got.length; ++i)
            near(got[i], expected[i], tolerance, (what || "") + "[" + i + "]");
        return;
    }
    assert(Math.abs(got - expected) <= tolerance,
        (what ? what + ": " : "") + got + " is " + expected + " within " + tolerance);
}

// That calling f throws an error whose text contains the words.
function throws(f, words)
{
    try {
        f();
    } catch (error) {
        assert(String(error).indexOf(words) >= 0, "'" + error + "' tells '" + words + "'");
        return;
    }
    assert(false, "something was thrown that tells '" + words + "'");
}

// Names of all keys whose values differ between two states of Bench.
function differences(a, b)
{
    var names = [];
    for (var key in a)
        if (!(key in b) || JSON.stringify(a[key]) !== JSON.stringify(b[key]))
            names.push(key);
    for (key in b)
        if (!(key in a))
            names.push(key);
    return names;
}

var FIGURES = ["Genesis8Female", "Genesis8Male", "Genesis8_1Female", "Genesis8_1Male"];
