// bench_timers.h - a widget's own timers for scripts, in order of creation:
//   timers(widget)          [{interval, active, singleShot, remaining}], in milliseconds;
//                           remaining is -1 of one that does not run
//   fireTimer(widget, i)    the timer runs out now; a single-shot one stops, as ever
#pragma once

class QScriptValue;

namespace quillon {

void addTimerFunctions(QScriptValue bench);

} // namespace quillon
