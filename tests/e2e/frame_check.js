// frame_check.js - included by the scripts that look at the plug-in's frame: its files, its start
// and its end. The host's temporary folder is expected to be ".../Studio4/temp".

function check(claim, holds)
{
    if (!holds)
        throw new Error("not so: " + claim);
}

function same(what, got, expected)
{
    if (String(got) !== String(expected))
        throw new Error(what + " is '" + got + "', expected '" + expected + "'");
}

var BASE64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

function base64FromHex(hex)
{
    var text = "";
    hex = hex.replace(/ /g, "");
    for (var i = 0; i < hex.length; i += 6) {
        var part = hex.substr(i, 6);
        var bytes = part.length / 2;
        var bits = parseInt((part + "0000").substr(0, 6), 16);
        for (var k = 0; k < 4; ++k)
            text += k <= bytes ? BASE64.charAt((bits >> (18 - 6 * k)) & 63) : "=";
    }
    return text;
}

var DATA_FOLDER = App.getDataFolderPath() + "/Brannoc/Quillon/";

function dataFile(stem) // "settings", "crashed", "ranks", "poseIndex"
{
    return DATA_FOLDER + stem + "_0ff58ef1.dat";
}

// Base64; empty when the file does not exist.
function contentOf(path)
{
    try {
        return String(Bench.readFile(path) || "");
    } catch (missing) {
        return "";
    }
}

var MARKER = base64FromHex("4d000000");

// What is saved when nothing was ever changed, field by field.
var DEFAULT_SETTINGS = base64FromHex(
    "03000000 01000001010000000001 01 01 00000000 000000000000 01000001010000000001 " +
    "0f000000 00000000 0000003f 01 00 01 00 00 01 ffffffff");
// Unlike the defaults in every field that has no effect on a start.
var OTHER_SETTINGS = base64FromHex(
    "03000000 00010100000101010100 01 00 02000000 010001000100 00010100000101010100 " +
    "05000000 02000000 00000040 00 01 00 01 01 01 ffffffff");
