// A box that nobody answers ends the script, but not before its time and not much later.
var pane = MainWindow.getPaneMgr().findPane("TrialPane");
Bench.press(pane, 15, 15, "left"); // "ask"
print("never here");
