// save_result.h - where the results of saves end.
//
// What writes a file says whether it could; whoever calls it passes that on, up to the command of
// the pane or the end of the pane itself, which hands it in here. So does a function whose own
// result says something else. Of a failure nothing is told: the file is as it was, and what was to
// be saved is still in memory and goes into the next save of the same file.
#pragma once

namespace quillon {

inline void noteSaveResult(bool saved)
{
    static_cast<void>(saved);
}

} // namespace quillon
