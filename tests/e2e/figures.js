// Every figure loads, and every channel of it can be set and read.
include("lib.js");

function controlCount(state)
{
    var count = 0;
    for (var key in state)
        if (key.indexOf("/") < 0)
            ++count;
    return count;
}

function channels(figure)
{
    var found = [];
    var nodes = [figure].concat(figure.bones());
    for (var i = 0; i < nodes.length; ++i) {
        var node = nodes[i];
        found.push(node.getXPosControl(), node.getYPosControl(), node.getZPosControl(),
            node.getXRotControl(), node.getYRotControl(), node.getZRotControl(),
            node.getScaleControl(), node.getXScaleControl(), node.getYScaleControl(),
            node.getZScaleControl());
    }
    return found;
}

function setEverything(figure)
{
    var all = channels(figure);
    for (var i = 0; i < all.length; ++i) {
        all[i].lock(false);
        all[i].setIsClamped(false);
        all[i].setValue(0.25 + i / 1024);
    }
    for (i = 0; i < all.length; ++i)
        eq(all[i].getValue(), 0.25 + i / 1024, all[i].getOwner().getName() + "/" + all[i].getName());
    return all.length;
}

function moveControls(figure)
{
    var state = Bench.rawState(figure);
    for (var key in state) {
        if (key.indexOf("/") >= 0)
            continue;
        var control = figure.findControl(key);
        assert(control, "the control " + key + " is found");
        var value = control.getMin() / 2 + control.getMax() / 2;
        control.setRawValue(value);
        near(control.getRawValue(), value, 1e-6, key);
    }
}

for (var i = 0; i < FIGURES.length; ++i) {
    var figure = Scene.loadFigure(FIGURES[i]);
    eq(figure.getName(), FIGURES[i]);
    assert(figure.className() == "DzFigure", "it is a figure");
    assert(Scene.getPrimarySelection() === figure, "it is the primary selection");
    assert(Scene.findNode(FIGURES[i]) === figure, "the scene knows it");
    eq(figure.bones().length, 170, "bones");
    var morphs = i < 2 ? 21 : 98;
    var before = Bench.poseState(figure);
    var resting = 0;
    for (var key in before)
        resting += /(X|Y|Z)(Translate|Rotate)$/.test(key) && before[key] == 0;
    eq(resting, 171 * 6, "channels at rest");
    assert(controlCount(before) > 200, "controls and morphs are told");
    eq(setEverything(figure), 171 * 10, "channels");
    moveControls(figure);
    var moved = differences(before, Bench.rawState(figure));
    assert(moved.length > 171 * 10 - 1, "all channels have moved");
    Scene.removeNode(figure);
    eq(Scene.findNode(FIGURES[i]), null, "after it was removed");
}
throws(function () { Scene.loadFigure("Nobody"); }, "Nobody");
quit(0);
