// Ends at once, also from within windows that stay open.
Bench.expect({ title: "Trial Settings", run: function (dialog) {
    Bench.expect({ title: "About Trial", run: function () {
        quit(7);
    } });
    MainWindow.getActionMgr().findAction("TrialAction").trigger();
    print("never here");
} });
Bench.press("TrialPane", 15, 95, "left"); // "fill in"
print("never here");
