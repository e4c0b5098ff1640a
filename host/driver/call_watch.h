// call_watch.h - fails or ends the process at calls that a plug-in makes, by the names of
// call_table.h.
// A host call counts when the plug-in itself makes it, and not when the host does so on the way
// through another call. A file call counts when a plug-in is anywhere among its callers.
// Costs nothing to speak of while nothing is asked for. GUI thread only; calls on other threads
// pass.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace quillon {

struct CallRow;

struct CallOrder {
    const CallRow* call;
    int left; // calls until it strikes; 1: the next one
    bool die; // the process ends there, as in a crash; otherwise the call fails once
};

void startCallWatch(const QStringList& pluginFiles); // absolute

void orderCall(const CallOrder&); // left >= 1
QList<CallOrder> pendingCalls(); // those that have not struck, oldest first
void dropCallOrders();

// For file_calls.cpp. Safe at any time, also before main().
bool callsAreWatched();
bool fileCallFails(const char* name); // counts the call; true when it is to fail now

} // namespace quillon
