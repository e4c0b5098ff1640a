// call_table.h - the calls of plug-ins that can be watched, by the names that scripts and the
// command line know them by: calls of the host as dzcore names them in its DZ_HOST_CALL marks,
// calls for files as the system does, and other words for these.
#pragma once

#include <QString>
#include <QStringList>

namespace quillon {

enum class CallKind {
    Host, // counts when the plug-in itself makes it
    Within, // of the host, but reached through the toolkit: a plug-in is anywhere among the callers
    File // as Within
};

struct CallRow {
    const char* name;
    CallKind kind;
    const char* function; // by which plug-ins make it, where that is not the name; else null
};

const CallRow* findCall(const QString& name); // null: there is none; exact, other words included
QString unknownCall(const QString& name); // one line for the user
QStringList callNames(CallKind kind); // in the order of the table, without other words

// For a name that dzcore or file_calls.cpp says itself.
const CallRow* findCall(const char* name);

} // namespace quillon
