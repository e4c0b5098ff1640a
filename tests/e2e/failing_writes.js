// File calls fail one at a time while the plug-in starts and saves: nothing is said, the settings
// on disk are always a whole file, the older one or a new one, and nothing is left beside it.
include("frame_check.js");

var OLDER = base64FromHex("01000000" + new Array(46 + 1).join("00")); // 50 bytes, version 1
var NEWER_LENGTH = DEFAULT_SETTINGS.length;
var older = 0;
var newer = 0;

function saveWithFailure(call, n)
{
    Bench.writeFile(dataFile("settings"), OLDER);
    Bench.startPane();
    Bench.failCall(call, n);
    Bench.stopPane();
    var content = contentOf(dataFile("settings"));
    check("a whole file after " + call + " " + n + ": " + content,
        content == OLDER || (content.length == NEWER_LENGTH && content.indexOf("AwAAA") == 0));
    content == OLDER ? ++older : ++newer;
    same("a file beside it after " + call + " " + n, contentOf(dataFile("settings") + ".new"), "");
}

var calls = ["open", "write", "close", "rename", "mkdir", "stat"];
for (var i = 0; i < calls.length; ++i) {
    for (var n = 1; n <= 6; ++n)
        saveWithFailure(calls[i], n);
}
same("number of boxes", Bench.dialogs().length, 0);
check("some failures kept the older file, others struck elsewhere", older >= 3 && newer >= 3);
print("older file kept: " + older + ", replaced: " + newer);
