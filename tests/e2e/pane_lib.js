// pane_lib.js - the Quillon pane as a user meets it: include("pane_lib.js") after lib.js.
var PANE = "DzQuillonPane";
var SIZE = [512, 1024];
var pane = MainWindow.getPaneMgr().findPane(PANE);
if (pane) // else the script starts one
    Bench.resize(PANE, SIZE[0], SIZE[1]);

// Centre of a button on the canvas of 512 x 1024. Area squares: 300 and up.
var AREAS = [[258, 450], [276, 555], [240, 555], [270, 509], [246, 509], [280, 454], [236, 454],
    [300, 474], [216, 474], [258, 486]];
var PLACES = { 200: [84, 470], 201: [430, 470], 202: [270, 988], 210: [64, 295], 211: [162, 295],
    212: [354, 295], 213: [450, 295], 214: [64, 645], 215: [162, 630], 216: [162, 676],
    217: [258, 645], 218: [354, 645], 219: [450, 645], 220: [61, 735], 223: [258, 295],
    224: [178, 372], 225: [234, 372], 226: [286, 372], 227: [342, 372], 400: [60, 100],
    401: [256, 870] };

function place(button)
{
    if (button < 16)
        return [30 + 120 * (button % 4) + 47, 270 + 102 * Math.floor(button / 4) + 47];
    if (button >= 100 && button < 109)
        return [40 + 158 * ((button - 100) % 3) + 56, 280 + 132 * Math.floor((button - 100) / 3) + 56];
    if (button >= 300 && button < 310)
        return AREAS[button - 300];
    return PLACES[button];
}

// The pane is as large as its group lets it be: scale the canvas.
function paneSize()
{
    var back = Bench.draws(PANE)[0].rect; // the ground
    return [back.width || back[2], back.height || back[3]];
}

function click(button, which)
{
    var at = place(button), size = paneSize();
    Bench.press(PANE, Math.round(at[0] * size[0] / 512), Math.round(at[1] * size[1] / 1024),
        which || "left");
}

function texts()
{
    return Bench.texts(PANE);
}

function shows(line)
{
    return texts().indexOf(line) >= 0;
}

// Ends what the status message's timer began, so that tips show again.
function endStatus()
{
    Bench.fireTimer(PANE, 0);
}
