// A custom library in a folder that no content directory holds: its poses are known until the next
// scan.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");
include("preset_lib.js");
include("match_model.js");

var figure = Scene.loadFigure("Genesis8Male");
include("finder_lib.js");

scan();
var installed = readIndexFile().length;
assert(installed > 3, "there are poses: " + installed);
Bench.expect({ file: "apart" });
click(13);
eq(readIndexFile().length, installed + 1, "known without a scan");
scan();
eq(readIndexFile().length, installed, "the scan does not come by its folder");
assert(Bench.readFile(CUSTOM_FOLDER + "apart.duf"), "the file is still there");
quit(0);
