// What the user's guide says of data when things go wrong, and that a copy is brought back as it tells: by real
// clicks.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Female");
include("finder_lib.js");

var FOLDER = App.getDataFolderPath() + "/Brannoc/Quillon/";

function restart()
{
    Bench.restartPlugin();
    Bench.resize(PANE, SIZE[0], SIZE[1]);
}

// The one copy of that file.
function copyOf(name)
{
    var copies = Bench.files(FOLDER + "backup").filter(function (file) { return file.indexOf(name) == 0; });
    eq(copies.length, 1, "copies of " + name + ": " + copies);
    return copies[0];
}

// As the guide tells: over the file it is of, without the ending from the date to .bak.
function bringBack(copy)
{
    var name = copy.replace(/\.\d{8}-\d{6}-\d{3}\.bak$/, "");
    assert(name != copy, "the ending is a date and .bak: " + copy);
    Bench.writeFile(FOLDER + name, Bench.readFile(FOLDER + "backup/" + copy));
}

function rankNow()
{
    return [isRank("Unranked"), isRank("Favorite")];
}

function isRank(name)
{
    return Bench.accessible(PANE).some(function (b) { return b.name.indexOf("Current Pose Rank " + name) == 0; });
}

writeLibrary();
scan();

// ---- a scan that is cancelled --------------------------------------------------------------------
figure.findBone("lHand").getZRotControl().setValue(21);
click(0);
var reference = Bench.readFile(FOLDER + "reference.duf");
var index = Bench.readFile(dataFile("poseIndex"));
yes();
Bench.expect({ title: "Info", text: "Scanning aborted", button: "OK" });
Bench.cancelProgress({ title: "Scanning..." });
click(14);
eq(Bench.readFile(dataFile("poseIndex")), index, "the index on disk stays");
eq(Bench.readFile(FOLDER + "reference.duf"), null, "the reference pose is gone");
restart();
click(1);
click(100);
click(201);
assert(/of 16$/.test(counter()), "after the next start the poses are there: " + counter());
click(202);
click(202);
Bench.stopPane();
bringBack(copyOf("reference.duf"));
eq(Bench.readFile(FOLDER + "reference.duf"), reference, "the reference pose is back");
Bench.startPane();
Bench.resize(PANE, SIZE[0], SIZE[1]);
click(2, "right");
click(0, "right");
near(figure.findBone("lHand").getZRotControl().getValue(), 21, 1e-3, "and is shown");

// ---- a crash at the start ------------------------------------------------------------------------
click(1);
click(100);
click(201, "middle");
click(213);
eq(rankNow(), [false, true], "the last pose is a favourite");
click(210); // no female poses: a setting
click(210);
click(211);
click(202);
click(202);
Bench.stopPane();
var settings = Bench.readFile(dataFile("settings"));
Bench.writeFile(FOLDER + "crashed.dat", "TQAAAA=="); // the marker of a start that never ended
Bench.expect({ title: "Quillon plugin - Warning", button: "OK" });
Bench.startPane();
Bench.resize(PANE, SIZE[0], SIZE[1]);
eq(JSON.stringify(readRankFile() || {}), "{}", "it begins afresh");
scan();
click(1);
click(100);
click(201, "middle");
eq(rankNow(), [false, true], "the rank has returned with its pose");
click(202);
click(202);
Bench.stopPane();
bringBack(copyOf("settings_"));
eq(Bench.readFile(dataFile("settings")), settings, "the settings are as they were");
Bench.startPane();
Bench.resize(PANE, SIZE[0], SIZE[1]);

// ---- browsing while a drive is missing -----------------------------------------------------------
var kept = {};
Bench.files(CONTENT).forEach(function (file) { kept[file] = Bench.readFile(CONTENT + "/" + file); });

function disconnect()
{
    var folders = {};
    for (var file in kept) {
        Bench.removeFile(CONTENT + "/" + file);
        for (var at = file.lastIndexOf("/"); at > 0; at = file.lastIndexOf("/", at - 1))
            folders[file.substr(0, at)] = true;
    }
    Object.keys(folders).sort().reverse().forEach(function (folder) { Bench.removeFile(CONTENT + "/" + folder); });
    assert(Bench.removeFile(CONTENT), "the content directory is gone");
}

index = Bench.readFile(dataFile("poseIndex"));
disconnect();
click(1);
click(100);
click(201);
click(201);
assert(!/of 16$/.test(counter()), "poses have left the Pose Finder: " + counter());
eq(Bench.readFile(dataFile("poseIndex")), index, "on disk they stay");
click(202);
click(202);
for (var file in kept)
    Bench.writeFile(CONTENT + "/" + file, kept[file]);
restart();
click(1);
click(100);
click(211); // male poses, which the settings left out
click(201);
assert(/of 16$/.test(counter()), "connected again, after the next start they are there: " + counter());
quit(0);
