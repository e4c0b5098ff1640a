// One of two hosts on one home; run by two_hosts.sh. Arguments: the name of the host, the number of
// its first save, that after its last. Each save is told before and after it is made.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

var host = args[0], first = parseInt(args[1], 10), end = parseInt(args[2], 10);
var LABEL = host == "a" ? " Allow bone translations " : " Ignore poses from pose-pair products ";
var FIELD = host == "a" ? "translations" : "ignorePairs";
var browsing = false, hashes = {}, ranks = {};

function tell(what)
{
    print(what);
}

function hasFailed()
{
    return texts().join(" ").indexOf("could not be saved") >= 0;
}

function save(what, run)
{
    tell("try " + what);
    run();
    tell((hasFailed() ? "fail " : "done ") + what);
    endStatus();
}

function goTo(page) // true: the browsing page
{
    if (page && !browsing) {
        click(1);
        click(100);
    } else if (!page && browsing) {
        click(202);
        click(202);
    }
    browsing = page;
}

function rankAPose(number)
{
    goTo(true);
    if (number % 3 == 0 || label()[0].charAt(0) != host) {
        do
            click(201);
        while (label()[0].charAt(0) != host || label()[0].indexOf("-") > 0);
    }
    var name = label()[0], rank = ((ranks[name] || 0) + 1) % 3;
    save("rank " + name + " " + rank, function () { click(213); });
    ranks[name] = rank;
}

function saveACustomPose(number)
{
    goTo(false);
    var name = host + "-" + number;
    save("custom " + name + " 1", function () {
        Bench.expect({ file: name + ".duf" });
        click(13);
    });
}

function changeASetting(number)
{
    goTo(false);
    var value = number % 20 < 10, fields = {};
    fields[LABEL] = value;
    save("setting " + FIELD + " " + (value ? 1 : 0), function () {
        Bench.expect({ title: "Quillon Settings", fields: fields, button: "Accept" });
        click(15);
    });
}

readIndexFile().forEach(function (entry) {
    hashes[fileName(entry.path).replace(".duf", "")] = entry.hash;
});
var onDisk = readRankFile();
for (var name in hashes) {
    if (name.charAt(0) == host && name.indexOf("-") < 0) {
        ranks[name] = onDisk[hashes[name]] || 0;
        tell("seen rank " + name + " " + ranks[name]);
    }
}
for (var number = first; number < end; ++number) {
    if (number % 10 == 8)
        changeASetting(number);
    else if (number % 10 >= 6)
        saveACustomPose(number);
    else
        rankAPose(number);
}
quit(0);
