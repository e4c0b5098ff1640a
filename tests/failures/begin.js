// begin.js - what the scripts of this folder begin with. posebench was started without a pane.
include("../e2e/lib.js");
include("../e2e/bytes_lib.js");
include("../e2e/preset_lib.js");
include("../e2e/pane_lib.js");
include("world.js");
include("commands.js");
include("rounds.js");

// Between two of these a kill leaves the same files.
var CHANGING = ["open", "write", "sync", "truncate", "close", "rename", "link", "unlink", "chmod",
    "mkdir", "rmdir", "flock"];

function callsOfKind(word) // "changing", "files", "host" or "all"
{
    var names = Bench.callNames();
    return { changing: CHANGING, files: names.files, host: names.host,
        all: names.files.concat(names.host) }[word];
}

// "every" or a number
function limitOf(word)
{
    return word == "every" ? Infinity : parseInt(word, 10);
}

function commandsOf(words) // all without one
{
    var names = [];
    words.forEach(function (word) { assert(word in COMMANDS, word + " is a command"); });
    for (var name in COMMANDS)
        if (!words.length || words.indexOf(name) >= 0)
            names.push(name);
    return names;
}
