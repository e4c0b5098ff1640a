// bench_widgets.h - which widget a script means, and letting the event loop catch up.
#pragma once

#include <QString>

class QScriptContext;
class QWidget;

namespace quillon {

// A class name, a wrapped object, or a window title, in this order of trial. Of several widgets
// the one last shown wins: visible before hidden, a window of the present dialog before others.
// Null: an error was thrown that names what was looked for.
QWidget* widgetArgument(QScriptContext*, int argument);

// Runs posted events, pending paints and deletions that were asked for, without waiting.
void settle();

} // namespace quillon
