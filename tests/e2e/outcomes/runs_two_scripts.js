// As runs_a_script.js, twice. With "once" as the argument it runs one, and tells of what is pending.
include("../lib.js");

var names = Bench.accessible("TrialPane").map(function (child) { return child.name; });
function run()
{
    Bench.press("TrialPane", 15, 15 + 20 * names.indexOf("run script"), "left");
}
run();
if (args[0] == "once") {
    eq(Bench.pendingCalls().map(function (order) { return [order.name, order.n]; }), [["execute", 1]]);
    quit(0);
}
run();
