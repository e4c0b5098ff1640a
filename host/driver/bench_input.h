// bench_input.h - the pointer and the keyboard for scripts: mouse and key events as a window system
// would deliver them, through the application, with focus, hover and modality as ever.
//   press(widget, x, y, button[, {move, modifiers, double, through}])   true, or false and nothing
//       was done: a modal window keeps input from the widget. through: true presses all the same,
//       as when the click was under way before the window opened. move: false leaves the pointer
//       where it is.
//   move(widget, x, y)     true or false likewise
//   resize(widget, w, h)   [w, h] that it has now: the size given, unless it is a dialog of fixed
//                          size. With less room than it wants, a window squeezes its parts.
//   key(widget, key)       true when the widget, in a window what has the focus there, accepted it.
//                          A key that the host takes for a shortcut does its work and is false: a
//                          pane that swallows no key gives false for every one.
//   focus()                class name of the widget that has the keyboard focus
// Positions are in pixels of the widget; a child that lies there gets the events.
#pragma once

class QScriptValue;

namespace quillon {

void addInputFunctions(QScriptValue bench);

} // namespace quillon
