// A scan by a real click, timed by its phases: rows of common_row.h for scan_65536.sh. The times are
// the clock's, from what the progress window was told.
//   args: number of presets
include("../tests/e2e/lib.js");
include("../tests/e2e/pane_lib.js");
include("../tests/e2e/bytes_lib.js");

function peakKb() // the most memory that this process ever had
{
    return parseInt(/VmHWM:\s*(\d+)/.exec(readBytes("/proc/self/status"))[1], 10);
}

function row(name, n, ms, note)
{
    print([name, n, ms.toFixed(1), "-", "-", "-", "-", note || "-"].join("\t"));
}

// Presses the button and answers its two boxes; what the second one says, and how long it took.
function scan()
{
    var ended = 0;
    Bench.expect({ title: "Quillon", button: "Yes" });
    Bench.expect({ title: "Info", button: "OK", run: function () { ended = new Date().getTime(); } });
    var began = new Date().getTime();
    click(14);
    return { text: Bench.dialogs().slice(-1)[0].text, ms: ended - began };
}

// Name, how many entries and when it began.
function phasesOf(log)
{
    var phases = [];
    log.forEach(function (record) {
        var info = /^(.+)\.\.\. *(\d+)(?: of *(\d+))?$/.exec(record.info);
        if (!info)
            return;
        if (!phases.length || phases[phases.length - 1].name != info[1])
            phases.push({ name: info[1], ms: record.ms, told: 0 });
        var phase = phases[phases.length - 1];
        phase.n = parseInt(info[3] || info[2], 10);
        ++phase.told;
    });
    return phases;
}

var before = peakKb(), skipped = Bench.progress().length;
var whole = scan();
var log = Bench.progress().slice(skipped), start = log[0].ms, phases = phasesOf(log);
row("scan", parseInt(args[0], 10), whole.ms, whole.text);
phases.forEach(function (phase, i) {
    var end = i + 1 < phases.length ? phases[i + 1].ms : start + whole.ms;
    row("scan." + phase.name.toLowerCase().replace(/[^a-z0-9]+/g, "_").replace(/_$/, ""), phase.n,
        end - (i == 0 ? start : phase.ms), phase.told + " records");
});
row("scan.memory", parseInt(args[0], 10), 0,
    "peak " + peakKb() + " KiB, " + before + " before the scan");

// From the record at which Cancel is pressed to the box that tells of it.
phases.forEach(function (phase) {
    Bench.cancelProgress({ title: "Scanning...", info: phase.name });
    skipped = Bench.progress().length;
    var cancelled = scan();
    log = Bench.progress().slice(skipped);
    eq(cancelled.text, "Scanning aborted", phase.name);
    var pressed = log[log.length - 1].ms - log[0].ms;
    row("cancel." + phase.name.toLowerCase().replace(/[^a-z0-9]+/g, "_").replace(/_$/, ""), phase.n,
        Math.max(0, cancelled.ms - pressed), "from Cancel to the box, and the press before");
});
quit(0);
