// bench_progress.h - progress windows for scripts:
//   cancelProgress({title, info, steps})   the next progress of that title is cancelled, once its
//                                          text begins with info, or after so many steps; at its
//                                          first sign when neither is given. Without a title: the
//                                          next that can be cancelled. An order that names one
//                                          which cannot be cancelled is used up by it.
//   pendingCancels()                       the orders that were not needed so far
//   dropCancels()                          forgets them; how many there were
//   progress()                             an entry for each change that a user could have seen:
//                                          {title, info, position, total, cancellable, ms}; ms by
//                                          the clock, since posebench began to watch
#pragma once

#include "dzprogresswatch.h"

#include <QList>

class QScriptValue;

namespace quillon {

struct ProgressEntry {
    DzProgressRecord record;
    qint64 ms; // since the watch began
};

void addProgressFunctions(QScriptValue bench); // watches from here on
const QList<ProgressEntry>& progressLog();

} // namespace quillon
