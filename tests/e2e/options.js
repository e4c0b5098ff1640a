// What the command line set up: script arguments, figure, selection, size, paths, content.
include("lib.js");

eq(args, ["--no-pane", "caf\u00e9", ""]);
eq(Scene.getPrimarySelection().getName(), "lHand");
eq(Scene.nodes()[0].getName(), "Genesis8_1Male");
eq(UndoStack.count(), 0, "nothing to undo at the start");
eq([MainWindow.width, MainWindow.height], [1200, 800]);
eq(App.getDataFolderPath(), "/C:/somewhere/data/base");
eq(App.getTempPath(), "");
eq(MainWindow.getPaneMgr().findPane("TrialPane"), null);
eq(ContentMgr.getNumContentDirectories(), 2);
assert(/^\/.*\/content \u0436$/.test(ContentMgr.getContentDirectoryPath(0)), "absolute, tidy");
assert(/^\/.*\/user$/.test(ContentMgr.getContentDirectoryPath(1)), "in the order given");
eq(Bench.readFile("shot.png").substr(0, 11), "iVBORw0KGgo", "the screenshot");
quit(0);
