// crash_guard.h - finds out that the last start of the plug-in never finished.
// A marker file exists exactly while the first pane is being built. A start that finds one warns,
// drops the data that may have been the cause, and goes on with defaults.
#pragma once

namespace quillon {

// Warns, and deletes settings, ranks and pose index, if there is a valid marker. The marker stays.
void checkCrashMarker();
bool writeCrashMarker();
void removeCrashMarker();

} // namespace quillon
