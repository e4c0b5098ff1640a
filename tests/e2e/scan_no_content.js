// Without a content directory a scan does nothing, and says nothing.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");

var figure = Scene.loadFigure("Genesis8Female");
figure.findBone("lShin").getXRotControl().setValue(30);
var pose = Bench.poseState(figure), steps = UndoStack.count();
Bench.expect({ title: "Quillon", button: "Yes" });
click(14);
eq([Bench.dialogs().length, Bench.progress().length], [1, 0], "the question, and no window more");
eq(differences(pose, Bench.poseState(figure)), [], "the pose");
eq(UndoStack.count(), steps);
eq(readBytes(dataFile("poseIndex")), null, "no index file");
quit(0);
