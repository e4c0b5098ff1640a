// args: a folder with presets, how many of them get a picture from the helper, a PNG to write.
include("lib.js");

var library = MainWindow.getPaneMgr().findPane("DzContentLibraryPane");
var count = parseInt(args[1], 10);
library.browseToNativeFolder(args[0]);
library.showPane();
for (var i = 0; i < 6000 && library.picturesMade() < count; ++i)
    Bench.wait(20);
Bench.wait(50);
eq(library.picturesMade(), count, "pictures made");
Bench.grab(library, args[2]);
quit(0);
