// The status message and the information banner over time, with their timers fired by hand.
include("lib.js");
include("pane_lib.js");
include("bytes_lib.js");

var figure = Scene.loadFigure("Genesis8Female");
var STATUS = 0, BANNER = 1; // the pane's timers, in the order in which it makes them
var NOTICE = "Latest updates and more:";
var TIP = "Reset Figure Pose"; // of button 2

function timer(which)
{
    var t = Bench.timers(PANE)[which];
    return t.active ? t.interval : 0;
}

function moveTo(x, y) // canvas
{
    Bench.move(PANE, Math.round(x * paneSize()[0] / 512), Math.round(y * paneSize()[1] / 1024));
}

function select(node)
{
    Scene.selectAll(false);
    Scene.setPrimarySelection(node);
}

eq(Bench.timers(PANE).map(function (t) { return t.singleShot; }), [true, true]);

// ---- status message ------------------------------------------------------------------------------
eq(timer(STATUS), 0, "no message, no timer");
click(2);
eq(timer(STATUS), 3000);
assert(shows("Reset succeeded") && !shows(TIP), "the message, not the tip");
click(4);
assert(shows("Swapping succeeded") && !shows("Reset succeeded"), "a new message replaces the text");
eq(timer(STATUS), 3000);
moveTo(77, 317);
assert(shows("Swapping succeeded"), "moving the pointer does not end it");
moveTo(place(2)[0], place(2)[1]);
Bench.fireTimer(PANE, STATUS);
eq(timer(STATUS), 0, "the timer runs once");
assert(!shows("Swapping succeeded") && shows(TIP), "the tip shows again");

// The timer is not started anew by a second message: it vanishes with the first one's time.
function remaining() { return Bench.timers(PANE)[STATUS].remaining; }
click(2);
while (remaining() > 2500)
    ; // the time runs
click(4);
assert(remaining() <= 2500, "3 s after the first message: " + remaining());
assert(shows("Swapping succeeded"), "the second one shows until then");
Bench.fireTimer(PANE, STATUS);

// Cleared by a box: the text goes, the timer runs on, and takes the next message early.
click(2);
select(null);
Bench.expect({ title: "Error", text: "Invalid selection", button: "OK" });
click(2);
eq(timer(STATUS), 3000, "the timer runs on");
assert(!shows("Reset succeeded") && shows(TIP), "the message is cleared");
select(figure);
click(2);
assert(shows("Reset succeeded"), "the next message");
[13, 14, 15].forEach(function (button) {
    Bench.expect(button == 13 ? { file: "" } : { button: button == 14 ? "No" : "Cancel" });
    click(button);
    assert(!shows("Reset succeeded"), "button " + button + " clears the message");
    click(2);
});
Bench.fireTimer(PANE, STATUS);
assert(!shows("Reset succeeded"), "gone");

// ---- banner --------------------------------------------------------------------------------------
function bannerShows()
{
    moveTo(10, 1015); // no button there: the text area is the banner's
    return shows(NOTICE);
}
Bench.restartPlugin();
Bench.resize(PANE, SIZE[0], SIZE[1]);
eq(timer(BANNER), 30000, "30 s after the start");
eq(bannerShows(), false, "hidden until then");
eq(timer(BANNER), 30000, "a move does not start anew what runs");
for (var round = 0; round < 3; ++round) {
    var paints = Bench.paintCount(PANE);
    Bench.fireTimer(PANE, BANNER);
    assert(Bench.paintCount(PANE) > paints, "it is painted by itself");
    eq(timer(BANNER), 0, "shown without an end until the pointer comes");
    assert(shows(NOTICE), "shown, round " + round);
    moveTo(10, 1014);
    eq(timer(BANNER), 30000, "from the first move on 30 s");
    eq(bannerShows(), true);
    moveTo(place(2)[0], place(2)[1]);
    assert(shows(TIP) && !shows(NOTICE), "a tip has the text area to itself");
    eq(bannerShows(), true, "then the notice has it again");
    Bench.fireTimer(PANE, BANNER);
    eq(bannerShows(), false, "hidden, round " + round);
    eq(timer(BANNER), 1200000, "for 20 minutes");
    moveTo(11, 1014);
    eq(timer(BANNER), 1200000, "whatever the pointer does");
}
// On every page.
Bench.fireTimer(PANE, BANNER);
[1, 202].forEach(function (button) {
    click(button);
    eq(bannerShows(), true, "on the page that button " + button + " opens");
});
Bench.fireTimer(PANE, BANNER);
Bench.fireTimer(PANE, BANNER);

// Without notices: not painted, and no move starts the timer.
var NOTIFY = " Don't notify me about plugin updates ";
function setMuted(muted)
{
    var fields = {};
    fields[NOTIFY] = muted;
    Bench.expect({ title: "Quillon Settings", fields: fields, button: "Accept" });
    click(15);
}
setMuted(true);
eq(bannerShows(), false, "not without notices");
Bench.fireTimer(PANE, BANNER);
Bench.fireTimer(PANE, BANNER); // due again
eq(timer(BANNER), 0);
eq(bannerShows(), false, "not painted when it is due");
eq(timer(BANNER), 0, "and no move starts its timer");
Bench.restartPlugin();
Bench.resize(PANE, SIZE[0], SIZE[1]);
eq(timer(BANNER), 0, "a start without notices starts no timer");
// Switched on in between they come with the next start.
setMuted(false);
eq(timer(BANNER), 0);
Bench.restartPlugin();
Bench.resize(PANE, SIZE[0], SIZE[1]);
eq(timer(BANNER), 30000);
quit(0);
