// bytes_lib.js - files as texts of one character a byte: include("bytes_lib.js") after lib.js.
var BASE64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

function toBase64(bytes)
{
    var parts = [];
    for (var i = 0; i < bytes.length; i += 3) {
        var bits = bytes.charCodeAt(i) << 16;
        if (i + 1 < bytes.length)
            bits |= bytes.charCodeAt(i + 1) << 8;
        if (i + 2 < bytes.length)
            bits |= bytes.charCodeAt(i + 2);
        parts.push(BASE64.charAt(bits >> 18), BASE64.charAt(bits >> 12 & 63),
            i + 1 < bytes.length ? BASE64.charAt(bits >> 6 & 63) : "=",
            i + 2 < bytes.length ? BASE64.charAt(bits & 63) : "=");
    }
    return parts.join("");
}

var SIXBITS = {};
for (var sixbits = 0; sixbits < 64; ++sixbits)
    SIXBITS[BASE64.charAt(sixbits)] = sixbits;

function fromBase64(text)
{
    var parts = [], length = text.replace(/=+$/, "").length;
    for (var i = 0; i < length; i += 4) {
        var bits = 0;
        for (var k = 0; k < 4; ++k)
            bits = bits << 6 | (i + k < length ? SIXBITS[text.charAt(i + k)] : 0);
        parts.push(String.fromCharCode(bits >> 16 & 255));
        if (i + 2 < length)
            parts.push(String.fromCharCode(bits >> 8 & 255));
        if (i + 3 < length)
            parts.push(String.fromCharCode(bits & 255));
    }
    return parts.join("");
}

function utf8(text)
{
    return unescape(encodeURIComponent(text));
}

function fromUtf8(bytes)
{
    return decodeURIComponent(escape(bytes));
}

function writeBytes(path, bytes)
{
    assert(Bench.writeFile(path, toBase64(bytes)), "'" + path + "' can be written");
}

function readBytes(path) // null: there is no such file
{
    var text = Bench.readFile(path);
    return text === null ? null : fromBase64(text);
}

function hex(bytes)
{
    var text = "";
    for (var i = 0; i < bytes.length; ++i)
        text += ("0" + bytes.charCodeAt(i).toString(16)).slice(-2);
    return text;
}

// Goes through bytes, little-endian.
function Reader(bytes)
{
    var at = 0;
    this.unsigned = function () {
        var value = 0;
        for (var i = 3; i >= 0; --i)
            value = value * 256 + bytes.charCodeAt(at + i);
        at += 4;
        return value;
    };
    this.integer = function () { return this.unsigned() | 0; };
    this.real = function () {
        var bits = this.unsigned();
        var exponent = Math.floor(bits / 0x800000) % 256, fraction = bits % 0x800000;
        var size = exponent == 0 ? fraction * Math.pow(2, -149)
                                 : (1 + fraction / 0x800000) * Math.pow(2, exponent - 127);
        return bits >= 0x80000000 ? -size : size;
    };
    this.flag = function () { return bytes.charCodeAt(at++); };
    this.text = function (length) { return bytes.substr((at += length) - length, length); };
    this.isAtEnd = function () { return at == bytes.length; };
}

function djb2(bytes) // of signed bytes
{
    var hash = 5381;
    for (var i = 0; i < bytes.length; ++i) {
        var byte = bytes.charCodeAt(i);
        hash = (hash * 33 + (byte < 128 ? byte : byte - 256)) % 4294967296;
        if (hash < 0)
            hash += 4294967296;
    }
    return hash;
}

// ---- the plug-in's files -----------------------------------------------------------------------

var DATA_FOLDER = App.getDataFolderPath() + "/Brannoc/Quillon/";
var CUSTOM_FOLDER = DATA_FOLDER + "custom/";
var REFERENCE = DATA_FOLDER + "reference.duf";
var KEY = ("0000000" + djb2(utf8(App.getTempPath().split("/").slice(-2)[0])).toString(16)).slice(-8);

function dataFile(stem) // "settings", "ranks", "poseIndex"
{
    return DATA_FOLDER + stem + "_" + KEY + ".dat";
}

// [{path, hash, code, slots, signed}]; slots: ten [x, y, z, w]
function readIndexFile()
{
    var reader = new Reader(readBytes(dataFile("poseIndex")));
    eq(reader.integer(), 1, "version of the index file");
    var entries = [];
    for (var left = reader.integer(); left > 0; --left) {
        var entry = { path: fromUtf8(reader.text(reader.integer())), hash: reader.unsigned(),
            code: reader.unsigned(), slots: [] };
        for (var slot = 0; slot < 10; ++slot)
            entry.slots.push([reader.real(), reader.real(), reader.real(), reader.real()]);
        entry.signed = reader.flag() == 1;
        entries.push(entry);
    }
    assert(reader.isAtEnd(), "the index file ends behind its last entry");
    return entries;
}

function readRankFile() // {hash: rank}
{
    var bytes = readBytes(dataFile("ranks")), ranks = {};
    if (bytes === null)
        return ranks;
    var reader = new Reader(bytes);
    eq(reader.integer(), 1, "version of the rank file");
    for (var left = reader.integer(); left > 0; --left) {
        var rank = reader.integer();
        ranks[reader.unsigned()] = rank;
    }
    assert(reader.isAtEnd(), "the rank file ends behind its last record");
    return ranks;
}

// The fields of settings.dat by name.
function readSettingsFile()
{
    var reader = new Reader(readBytes(dataFile("settings")));
    function flags(count)
    {
        var list = [];
        while (list.length < count)
            list.push(reader.flag());
        return list;
    }
    eq(reader.integer(), 3, "version of the settings file");
    var s = { similarity: flags(10), female: reader.flag(), male: reader.flag(), rank: reader.integer(),
        locks: flags(6), similarityCopy: flags(10), rankFilter: reader.integer(),
        propOrigin: reader.integer(), nudge: reader.real(), poseViolation: reader.flag(),
        faceViolation: reader.flag(), translations: reader.flag(), ignorePairs: reader.flag(),
        mute: reader.flag(), reserved: reader.flag(), position: reader.integer() };
    assert(reader.isAtEnd(), "the settings file has 58 bytes");
    return s;
}
