// A slot of the host brings up a window that nobody answers: nothing of the script is run after it.
MainWindow.getActionMgr().findAction("TrialAction").trigger();
for (;;) { }
