// The plug-in runs a script by a call of the host that leads to others of the same name.
include("../lib.js");

var names = Bench.accessible("TrialPane").map(function (child) { return child.name; });
Bench.press("TrialPane", 15, 15 + 20 * names.indexOf("run script"), "left");
