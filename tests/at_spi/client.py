#!/usr/bin/python3
"""client.py HOME POSES - what a screen reader would do with posebench, over AT-SPI.

Runs inside run.sh's session, with posebench up and the Pose Finder scanned. Finds the pane, looks at
its buttons, presses some of them with each mouse button, and listens for what is announced.
"""
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
import pyatspi  # noqa: E402

LIMIT_S = 20


def wait_for(what, found):
    """The first true result of found(), asked for again while events are handled."""
    end = time.monotonic() + LIMIT_S
    while time.monotonic() < end:
        pump()
        result = found()
        if result:
            return result
    sys.exit("not so: " + what)


def pump():
    context = pyatspi.GLib.MainContext.default() if hasattr(pyatspi, "GLib") else gi_context()
    while context.iteration(False):
        pass
    time.sleep(0.02)


def gi_context():
    from gi.repository import GLib

    return GLib.MainContext.default()


def application():
    for child in pyatspi.Registry.getDesktop(0):
        if child and child.name == "posebench":
            return child
    return None


def descend(node, matches, depth=12):
    if matches(node):
        return node
    for i in range(node.childCount if depth else 0):
        child = node.getChildAtIndex(i)
        found = child and descend(child, matches, depth - 1)
        if found:
            return found
    return None


def is_pane(node):
    return node.childCount > 5 and any(
        node.getChildAtIndex(i) and node.getChildAtIndex(i).name.startswith(("Pose Finder", "REFERENCE POSE"))
        for i in range(min(3, node.childCount))
    )


def children(pane):
    pane.clear_cache()
    return [pane.getChildAtIndex(i) for i in range(pane.childCount)]


def button(pane, beginning):
    for child in children(pane):
        if child and child.name.startswith(beginning):
            return child
    return None


def actions(node):
    action = node.queryAction()
    return [action.getName(i) for i in range(action.nActions)]


def act(pane, beginning, name):
    node = wait_for("there is " + beginning, lambda: button(pane, beginning))
    node.queryAction().doAction(actions(node).index(name))


def text_starting(pane, beginning, role):
    for child in children(pane):
        if child and child.getRole() == role and child.name.startswith(beginning):
            return child.name
    return None


def check(claim, holds):
    if not holds:
        sys.exit("not so: " + claim)
    print("ok:", claim)


def main():
    bench = wait_for("posebench is on the bus", application)
    pane = wait_for("the pane is there", lambda: descend(bench, is_pane))
    # Once the application is there: it may miss who began to listen while it came onto the bus.
    announced = []
    pyatspi.Registry.registerEventListener(
        lambda event: announced.append(event.source_name or str(event.any_data)),
        "object:property-change:accessible-name",
    )
    states = []
    pyatspi.Registry.registerEventListener(
        lambda event: states.append((event.source_name, event.detail1)), "object:state-changed:checked"
    )
    reset = button(pane, "Reset Figure Pose")
    check("a button has its presses", actions(reset) == ["Press", "Right click", "Middle click"])
    check("it is a push button", reset.getRole() == pyatspi.ROLE_PUSH_BUTTON)

    act(pane, "Pose Finder", "Press")
    act(pane, "Browse All Poses", "Press")
    act(pane, "Apply Previous Pose", "Middle click")
    counter = wait_for("a counter", lambda: text_starting(pane, "POSE 1 of ", pyatspi.ROLE_LABEL))
    check("the counter is a text: " + counter, True)
    wait_for("the counter was announced", lambda: any(a.startswith("POSE 1 of ") for a in announced))
    act(pane, "Apply Next Pose", "Middle click")
    total = counter.rsplit(" ", 1)[1]
    last = "POSE %s of %s" % (total, total)
    wait_for("a middle press goes to the last", lambda: text_starting(pane, last, pyatspi.ROLE_LABEL))
    wait_for("and that was announced", lambda: last in announced)
    label = [c.name for c in children(pane) if c.getRole() == pyatspi.ROLE_LABEL][1]
    check("the pose has a name: " + label, len(label) > 2)
    check("which was announced", label in announced)

    lock = button(pane, "Preserve (lock) REFERENCE POSE's expression")
    check("a switch is off", not lock.getState().contains(pyatspi.STATE_CHECKED))
    check("and is one", lock.getRole() == pyatspi.ROLE_CHECK_BOX)
    act(pane, "Preserve (lock) REFERENCE POSE's expression", "Press")
    wait_for("it is on", lambda: button(pane, "Preserve (lock) REFERENCE POSE's expression")
             .getState().contains(pyatspi.STATE_CHECKED))
    wait_for("a switch tells when it changes", lambda: states)
    check("and tells so: " + str(states[-1]), states[-1][0].startswith("Preserve (lock)"))

    act(pane, "Current Pose Rank", "Press")
    error = "ERROR Rank cannot be changed if part of the pose is locked"
    wait_for("an error is a text", lambda: text_starting(pane, error, pyatspi.ROLE_ALERT))
    wait_for("and is announced", lambda: error in announced)
    check("sensitive buttons say so", button(pane, "Apply Next Pose").getState().contains(pyatspi.STATE_SENSITIVE))
    print("announced:", len(announced))
    menus = descend(bench, lambda node: node.getRole() == pyatspi.ROLE_MENU_BAR)
    leave = menus and descend(menus, lambda node: node.name == "Quit")
    check("the program can be left", leave)
    leave.queryAction().doAction(0)


main()
