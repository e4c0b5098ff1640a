// The guide's pictures of the pages have a number for every button of the program: as told by
// docs/pictures/pages.json, given as the argument, which is written with them. When this fails, run
// docs/pictures/make and look at the legends.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");

function names()
{
    var buttons = Bench.accessible(PANE).filter(function (child) {
        return child.role != "StaticText"; // what the pane says
    });
    return buttons.map(function (button) { return button.name; }).sort();
}

var pages = JSON.parse(fromUtf8(readBytes(args[0])));
Scene.loadFigure("Genesis8Female");
eq(names(), pages.page_main.sort(), "main page");
click(1);
eq(names(), pages.page_picker.sort(), "picker");
Bench.expect({ button: "No" }); // no first scan
click(101);
function withoutState(list) // the rank and the folder differ with the pose
{
    return list.filter(function (name) { return !/Current Pose Rank|folder/.test(name); });
}
eq(withoutState(names()), withoutState(pages.page_browsing.sort()), "browsing page");
eq(names().length, pages.page_browsing.length, "browsing page");
quit(0);
