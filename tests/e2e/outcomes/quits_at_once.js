// quit() in a callback, and in a handler of a signal, ends what the script was doing at that moment.
Bench.expect({
    run: function () {
        Scene.primarySelectionChanged.connect(function () { quit(6); });
        var box = Scene.addProp("Box", [-1, -1, -1], [1, 1, 1]);
        Scene.setPrimarySelection(box);
        for (;;) { }
    }
});
MainWindow.getActionMgr().findAction("TrialAction").trigger();
for (;;) { }
