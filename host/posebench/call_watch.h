// call_watch.h - fails or ends the process at calls that a plug-in makes: of the host by their
// names in dzcore (dzhostcalls.h), of files by those of the system: open, read, write, close, sync,
// truncate, rename, unlink, mkdir, rmdir, stat, opendir.
// A host call counts when the plug-in itself makes it, a file call when a plug-in is anywhere among
// its callers. Costs nothing to speak of while nothing is asked for. GUI thread only; calls on
// other threads pass.
#pragma once

#include <QString>
#include <QStringList>

namespace quillon {

void startCallWatch(const QStringList& pluginFiles); // absolute

void failCallOnce(const QString& name, int n); // the n-th from now, n >= 1
void dieAtCall(const QString& name);
QStringList fileCallNames();

// For file_calls.cpp. Safe at any time, also before main().
bool callsAreWatched();
bool fileCallFails(const char* name); // counts the call; true when it is to fail now

} // namespace quillon
