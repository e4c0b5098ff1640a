// Settings survive a restart. After a crash they do not, whatever the process remembers.
include("frame_check.js");

Bench.startPane();
Bench.stopPane();
same("first settings", contentOf(dataFile("settings")), DEFAULT_SETTINGS);

Bench.writeFile(dataFile("settings"), OTHER_SETTINGS);
Bench.startPane();
Bench.restartPlugin();
Bench.stopPane();
same("settings after restarts", contentOf(dataFile("settings")), OTHER_SETTINGS);

// The marker is there while the old pane still lives; only the next start looks at it.
Bench.startPane();
Bench.writeFile(dataFile("crashed"), MARKER);
Bench.expect({ title: "Quillon plugin - Warning", button: "OK" });
Bench.restartPlugin();
same("number of boxes", Bench.dialogs().length, 1);
same("crash marker", contentOf(dataFile("crashed")), "");
Bench.stopPane();
same("settings after the crash", contentOf(dataFile("settings")), DEFAULT_SETTINGS);

Bench.startPane();
same("number of boxes after the next start", Bench.dialogs().length, 1);
