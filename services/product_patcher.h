// product_patcher.h - brings the installed scripts of the maker's other products up to date.
//
// What is written over which scripts is in patch_table.h and patch_scripts.h. Only files that exist
// are written, in every content directory of the host that has them, and nothing outside: a link
// that leads out of its content directory is not followed. A file holds its old or its new bytes
// at any time, also when the host dies while it is replaced.
// Errors: a file that cannot be opened for writing, or whose folder takes no new file, is skipped
// without a message. GUI thread only.
#pragma once

#include <QString>

namespace quillon {

// Runs the whole table below a progress window with Cancel; the pane is busy meanwhile. A cancelled
// patch keeps what it has written. True: at least one file was written.
bool patchProducts();

// Writes length bytes over every installed script whose path ends in "/" + nameSuffix (exact case).
// The number of files written.
int overwriteScripts(const QString& nameSuffix, const char* data, int length);

} // namespace quillon
