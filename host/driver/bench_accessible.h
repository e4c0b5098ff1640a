// bench_accessible.h - what assistive technology is told of a widget, for scripts:
//   accessible(widget)  its accessible children as {name, role, state, rectangle}, and
//                       actions where it has some: the names by which it can be made to do things
// role: the name of QAccessible's role ("Button"); state: an object of flags by QAccessible's names
// ("checked": true); rectangle: in pixels of the widget.
#pragma once

class QScriptValue;

namespace quillon {

void addAccessibleFunctions(QScriptValue bench);

} // namespace quillon
