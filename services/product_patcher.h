// product_patcher.h - brings the installed scripts of the maker's other products up to date.
//
// What is written over which scripts is in patch_table.h and patch_scripts.h. Only files that exist
// are written, in every content directory of the host that has them, and nothing outside: a link
// that leads out of its content directory is not followed. Each folder is read once, however many
// links lead to it; a script behind one of them goes by the link's name, too. A script that can be
// replaced gets both of its blocks in one step or stays as it was, whatever ends the host in
// between; what such an end leaves beside it goes with the next patch. How a file is written, and
// what of it stays, is told in whole_file.h; the host's temporary folder keeps old bytes. Errors: a
// file that cannot be opened for writing, or not written in full, is skipped without a message. GUI
// thread only.
#pragma once

#include <QString>

namespace quillon {

// Runs the whole table below a progress window with Cancel; the pane is busy meanwhile. A cancelled
// patch keeps what it has written, which is nothing if it was cancelled while the scripts were
// searched. True: at least one file was written.
bool patchProducts();

// Writes length bytes over every installed script whose path ends in "/" + nameSuffix (exact case).
// The number of files written.
int overwriteScripts(const QString& nameSuffix, const char* data, int length);

} // namespace quillon
