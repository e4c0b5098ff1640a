// The banner with and without a picture of a newer version. args: "picture" or "none", a file for a
// picture of the pane.
include("lib.js");
include("pane_lib.js");

var known = args[0] == "picture";
Bench.move(PANE, 5, 5);

function pictures()
{
    return Bench.draws(PANE).filter(function (draw) { return draw.kind == "image"; }).length;
}

function pressBanner()
{
    var before = Bench.urls().length;
    click(400, "left");
    return Bench.urls().slice(before);
}

var hidden = pictures();
eq(pressBanner(), [], "no page while the banner is hidden");

Bench.fireTimer(PANE, 1); // the banner comes
Bench.move(PANE, 5, 5);
if (args[1])
    Bench.grab(PANE, args[1]);
var pages = pressBanner();
eq(pages.length, known ? 1 : 0, "pages of the new version");
if (known) {
    assert(/\/newversion\/newversion_093\.htm$/.test(pages[0]), pages[0]);
    assert(pictures() > hidden, "the picture is drawn");
}
quit(0);
