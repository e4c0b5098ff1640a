// make_pictures.js - the pictures of this folder, made from the running program:
//     build/release/bin/posebench --headless --home <new folder> --content samples/content
//         --size 1500x1000 --script docs/make_pictures.js docs/screenshots
var OUT = args[0] + "/";
var PANE = "DzQuillonPane";

function click(x, y, which)
{
    var size = Bench.draws(PANE)[0].rect;
    Bench.press(PANE, Math.round(x * size[2] / 512), Math.round(y * size[3] / 1024), which || "left");
}

function picturesOf(page)
{
    [[400, 800], [1080, 2160]].forEach(function (size) {
        Bench.resize(PANE, size[0], size[1]);
        Bench.move(PANE, 1, size[1] - 1);
        Bench.grab(PANE, OUT + page + "_" + size[0] + "x" + size[1] + ".png");
    });
    Bench.resize(PANE, 512, 1024);
}

Scene.loadFigure("Genesis8Female");
Bench.expect({ button: "Yes" }); // scan
Bench.expect({ title: "Info", button: "OK" });
click(317, 623);
click(197, 317); // the picker
click(254, 336); // sitting poses
for (var i = 0; i < 3; ++i)
    click(430, 470);
Bench.move(PANE, 1, 700);
Bench.grab(MainWindow, OUT + "../posebench.png");

picturesOf("page_browsing");
click(270, 988);
picturesOf("page_picker");
click(412, 600); // like the reference pose
click(430, 470);
picturesOf("page_browsing_areas");
click(270, 988);
click(270, 988);
picturesOf("page_main");

Bench.expect({ run: function (dialog) { Bench.grab(dialog, OUT + "settings_dialog.png"); }, button: "Cancel" });
click(437, 623);
Bench.expect({ run: function (dialog) { Bench.grab(dialog, OUT + "about_box.png"); }, button: "OK" });
MainWindow.getActionMgr().findAction("QuillonAboutAction").trigger();
quit(0);
