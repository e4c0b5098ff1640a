// crash_guard.h - finds out that the last start of the plug-in never finished.
// A marker file exists exactly while the first pane is being built. A start that finds one warns,
// drops the data that may have been the cause, and goes on with defaults. While a start lasts it
// holds a lock beside the marker: the marker of a host that is just starting is no crash.
#pragma once

#include "ground/file_lock.h"

namespace quillon {

// Lasts as long as the start. While another host starts it does nothing; where there can be no lock
// it goes on without.
class StartGuard {
public:
    StartGuard();
    ~StartGuard();

private:
    FileLock m_lock;
};

// Warns, and takes settings, ranks and pose index away, to the backups, if there is a valid marker.
// The ranks are kept for the next scan, too (kept_ranks.h). The marker stays.
void checkCrashMarker();
// What is no file and stands in its place is given another name.
[[nodiscard]] bool writeCrashMarker();
// One that cannot be removed is emptied.
void removeCrashMarker();

} // namespace quillon
