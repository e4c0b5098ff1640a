// bench_input.h - the pointer and the keyboard for scripts: mouse and key events as a window system
// would deliver them, through the application, with focus, hover and modality as ever.
//   press(widget, x, y, button[, {move, modifiers, double}])   move(widget, x, y)
//   resize(widget, w, h)   key(widget, key)   focus()
// Positions are in pixels of the widget; a child that lies there gets the events.
#pragma once

class QScriptValue;

namespace quillon {

void addInputFunctions(QScriptValue bench);

} // namespace quillon
