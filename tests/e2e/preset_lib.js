// preset_lib.js - pose presets to scan: include("preset_lib.js") after bytes_lib.js.
var CONTENT = ContentMgr.getContentDirectoryPath(0);

// What a scan asks of a pose of the whole body.
var WHOLE_BODY = ["lBigToe/x", "rBigToe/x", "lPinky1/x", "rPinky1/x", "head/x"];

// values: {"bone/axis": degrees}; extra: lines of other entries
function presetText(values, extra)
{
    var lines = extra ? extra.slice() : [];
    function add(channel, value)
    {
        var parts = channel.split("/");
        lines.push("{ \"url\" : \"name://@selection/" + parts[0] + ":?rotation/" + parts[1]
            + "/value\", \"keys\" : [ [ 0, " + value + " ] ] }");
    }
    WHOLE_BODY.forEach(function (channel) {
        if (!(channel in values))
            add(channel, 0);
    });
    for (var channel in values)
        add(channel, values[channel]);
    return "{\n\t\"asset_info\" : { \"type\" : \"preset_pose\" },\n\t\"scene\" : { \"animations\" : [\n\t\t"
        + lines.join(",\n\t\t") + "\n\t] }\n}\n";
}

function writePreset(path, values, extra)
{
    writeBytes(path, utf8(presetText(values, extra)));
}

// ---- poses of known kinds ----------------------------------------------------------------------

var HIPS = { upright: {}, up: { "hip/x": -90 }, down: { "hip/x": 90 }, left: { "hip/z": 90 },
    right: { "hip/z": -90 }, inverted: { "hip/x": 180 } };

// No two of these are mirrored or similar to each other, whatever the body does: the left forearm
// has no counterpart, and the right arm tells them apart.
function armsOf(number)
{
    return { "lForearmBend/y": -50, "rShldrBend/z": 70 - 35 * (number % 5),
        "rForearmBend/y": 35 * Math.floor(number / 5) };
}

function poseOf(number, hip, thighsDeg)
{
    var values = armsOf(number);
    for (var channel in HIPS[hip])
        values[channel] = HIPS[hip][channel];
    if (thighsDeg) {
        values["lThighBend/x"] = values["rThighBend/x"] = -thighsDeg;
        values["lShin/x"] = values["rShin/x"] = thighsDeg;
    }
    return values;
}

var FEMALE = CONTENT + "/People/Genesis 8 Female/Poses/";
var MALE = CONTENT + "/People/Genesis 8 Male/Poses/";
var MAKER = CONTENT + "/data/Brannoc/poses/";

// path -> values, written at once
function writeLibrary()
{
    var poses = {}, number = 0;
    function add(path, hip, thighsDeg)
    {
        poses[path] = poseOf(number++, hip, thighsDeg);
        writePreset(path, poses[path]);
    }
    add(FEMALE + "Alpha/stand one.duf", "upright");
    add(FEMALE + "Alpha/stand two (mirrored).duf", "upright");
    add(FEMALE + "Alpha/sit one.duf", "upright", 88);
    add(FEMALE + "Beta/sit two mir.duf", "upright", 84);
    add(FEMALE + "Beta/stand three.duf", "upright");
    add(FEMALE + "Gamma/back.duf", "up");
    add(FEMALE + "Gamma/belly.duf", "down");
    add(FEMALE + "Gamma/left side.duf", "left");
    add(FEMALE + "Gamma/right side.duf", "right");
    add(FEMALE + "Gamma/hand stand.duf", "inverted");
    add(MALE + "Delta/stand four.duf", "upright");
    add(MALE + "Delta/sit three.duf", "upright", 80);
    add(MALE + "Delta/on the back.duf", "up");
    add(MAKER + "002/010f0.duf", "upright", 90);
    add(MAKER + "002/011ma.duf", "upright", 86);
    add(MAKER + "003/012f.duf", "upright");
    return poses;
}
