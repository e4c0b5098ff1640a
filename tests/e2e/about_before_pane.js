// The About box can be opened before there is a pane; what the pane would build is then missing.
include("frame_check.js");

var about = MainWindow.getActionMgr().findAction("QuillonAboutAction");
check("no pane yet", !MainWindow.getPaneMgr().findPane("DzQuillonPane"));

function aboutBox()
{
    var before = Bench.dialogs().length;
    Bench.expect({ title: "About Quillon plugin", button: "OK" });
    about.trigger();
    same("number of boxes", Bench.dialogs().length, before + 1);
    return Bench.dialogs()[before];
}

var box = aboutBox();
check("neither version nor anything after the v: " + box.text, box.text.indexOf("Quillon v\n\n") == 0);
same("parent", box.parentClass, "");

Bench.startPane();
check("the version after the v", aboutBox().text.indexOf("Quillon v0.93\n\n") == 0);
Bench.stopPane();
check("the version stays", aboutBox().text.indexOf("Quillon v0.93\n\n") == 0);
