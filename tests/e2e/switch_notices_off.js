// Checks the box that mutes update notices, by the settings dialog.
include("lib.js");
include("pane_lib.js");

Bench.expect({ title: "Quillon Settings",
    fields: { "Don't notify me about plugin updates": true }, button: "Accept" });
click(15, "left");
eq(Bench.pendingExpects().length, 0);
quit(0);
