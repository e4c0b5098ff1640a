// bench_progress.h - progress windows for scripts:
//   cancelProgress({title, info, steps})   progress()
// The log has an entry for each change that a user could have seen.
#pragma once

class QScriptValue;

namespace quillon {

void addProgressFunctions(QScriptValue bench); // watches from here on

} // namespace quillon
