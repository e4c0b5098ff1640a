// Scans the content of the home, so that there is something to browse; then the window stays.
Scene.loadFigure("Genesis8Female");
var pane = MainWindow.getPaneMgr().findPane("DzQuillonPane");
function press(beginning)
{
    var r = Bench.accessible(pane).filter(function (child) {
        return child.name.indexOf(beginning) == 0;
    })[0].rectangle;
    Bench.press(pane, r.x + r.width / 2, r.y + r.height / 2);
}
Bench.expect({ title: "Quillon", button: "Yes" });
Bench.expect({ title: "Info", button: "OK" });
press("Re-initialize Pose Finder");
print("ready");
