// save_result.h - where the results of saves end.
//
// What writes a file says whether it could; whoever calls it passes that on, up to the command of
// the pane or the end of the pane itself, which hands it in here. So does a function whose own
// result says something else. After a failure the file is as it was, and what was to be saved is
// still in memory and goes into the next save of the same file.
#pragma once

class QString;

namespace quillon {

// Tells of a failure in the pane's text area and in the host's log.
void noteSaveResult(bool saved);
// In the log only: while there is nobody to read the text, at the start and the end.
void logSaveResult(bool saved);

// A line in the host's log, for what is too long for the text area.
void logLine(const QString& text);

} // namespace quillon
