#include "host/driver/call_table.h"

#include <cstring>

namespace quillon {
namespace {

// A test compares this with dzcore's marks.
// clang-format off
const CallRow kCalls[] = {
    // the application, its window and what it knows
    {"getInterface",             CallKind::Host,   nullptr},
    {"getDialogParent",          CallKind::Host,   nullptr},
    {"getContentMgr",            CallKind::Host,   nullptr},
    {"getDataFolderPath",        CallKind::Host,   nullptr},
    {"getTempPath",              CallKind::Host,   nullptr},
    {"getDocumentationPath",     CallKind::Host,   nullptr},
    {"getPluginsPath",           CallKind::Host,   nullptr},
    {"getAppDataPath",           CallKind::Host,   nullptr},
    {"getHomePath",              CallKind::Host,   nullptr},
    {"showURL",                  CallKind::Host,   nullptr},
    {"findClassFactory",         CallKind::Host,   nullptr},
    {"getNumContentDirectories", CallKind::Host,   nullptr},
    {"getContentDirectoryPath",  CallKind::Host,   nullptr},
    {"getPaneMgr",               CallKind::Host,   nullptr},
    {"getActionMgr",             CallKind::Host,   nullptr},
    {"findAction",               CallKind::Host,   nullptr},
    {"setIconFile",              CallKind::Host,   nullptr},
    // settings
    {"containsValue",            CallKind::Host,   nullptr},
    {"removeValue",              CallKind::Host,   nullptr},
    {"getBoolValue",             CallKind::Host,   nullptr},
    {"getIntValue",              CallKind::Host,   nullptr},
    {"getFloatValue",            CallKind::Host,   nullptr},
    {"getStringValue",           CallKind::Host,   nullptr},
    {"getColorValue",            CallKind::Host,   nullptr},
    {"setBoolValue",             CallKind::Host,   nullptr},
    {"setIntValue",              CallKind::Host,   nullptr},
    {"setFloatValue",            CallKind::Host,   nullptr},
    {"setStringValue",           CallKind::Host,   nullptr},
    {"setColorValue",            CallKind::Host,   nullptr},
    // panes
    {"findPane",                 CallKind::Host,   nullptr},
    {"getNumPaneGroups",         CallKind::Host,   nullptr},
    {"getPaneGroup",             CallKind::Host,   nullptr},
    {"createEmptyPaneGroup",     CallKind::Host,   nullptr},
    {"moveToGroup",              CallKind::Host,   nullptr},
    {"showPane",                 CallKind::Host,   nullptr},
    {"hidePane",                 CallKind::Host,   nullptr},
    {"togglePane",               CallKind::Host,   nullptr},
    {"minimize",                 CallKind::Host,   nullptr},
    {"restore",                  CallKind::Host,   nullptr},
    {"resize",                   CallKind::Host,   nullptr},
    // the scene
    {"getPrimarySelection",      CallKind::Host,   nullptr},
    {"getTime",                  CallKind::Host,   nullptr},
    {"getSkeleton",              CallKind::Host,   nullptr},
    {"findBone",                 CallKind::Host,   nullptr},
    {"getWSPos",                 CallKind::Host,   nullptr},
    {"getWSRot",                 CallKind::Host,   nullptr},
    {"getWSScale",               CallKind::Host,   nullptr},
    {"getLocalPos",              CallKind::Host,   nullptr},
    {"getLocalRot",              CallKind::Host,   nullptr},
    {"getLocalScale",            CallKind::Host,   nullptr},
    {"setWSPos",                 CallKind::Host,   nullptr},
    {"setWSRot",                 CallKind::Host,   nullptr},
    {"setWSScale",               CallKind::Host,   nullptr},
    {"setLocalPos",              CallKind::Host,   nullptr},
    {"setLocalRot",              CallKind::Host,   nullptr},
    {"setLocalScale",            CallKind::Host,   nullptr},
    {"setOrigin",                CallKind::Host,   nullptr},
    {"getLocalBoundingBox",      CallKind::Host,   nullptr},
    {"setRotationOrder",         CallKind::Host,   nullptr},
    // properties
    {"setValue",                 CallKind::Host,   nullptr},
    {"setRawValue",              CallKind::Host,   nullptr},
    {"setDoubleValue",           CallKind::Host,   nullptr},
    {"setSensitivity",           CallKind::Host,   nullptr},
    {"setIsClamped",             CallKind::Host,   nullptr},
    {"lock",                     CallKind::Host,   nullptr},
    {"deleteKeys",               CallKind::Host,   nullptr},
    // undo, progress, scripts, packed files
    {"beginHold",                CallKind::Host,   "DzUndoStackHold"},
    {"accept",                   CallKind::Host,   nullptr},
    {"openProgress",             CallKind::Host,   "DzProgress"},
    {"isCancelled",              CallKind::Host,   nullptr},
    {"execute",                  CallKind::Host,   "run"},
    {"gzOpen",                   CallKind::Host,   "open"},
    {"gzRead",                   CallKind::Within, nullptr},
    {"gzWrite",                  CallKind::Within, nullptr},
    // files
    {"open",                     CallKind::File,   nullptr},
    {"read",                     CallKind::File,   nullptr},
    {"write",                    CallKind::File,   nullptr},
    {"close",                    CallKind::File,   nullptr},
    {"sync",                     CallKind::File,   nullptr},
    {"truncate",                 CallKind::File,   nullptr},
    {"seek",                     CallKind::File,   nullptr},
    {"rename",                   CallKind::File,   nullptr},
    {"link",                     CallKind::File,   nullptr},
    {"unlink",                   CallKind::File,   nullptr},
    {"chmod",                    CallKind::File,   nullptr},
    {"flock",                    CallKind::File,   nullptr},
    {"mkdir",                    CallKind::File,   nullptr},
    {"rmdir",                    CallKind::File,   nullptr},
    {"stat",                     CallKind::File,   nullptr},
    {"realpath",                 CallKind::File,   nullptr},
    {"opendir",                  CallKind::File,   nullptr},
    {"readdir",                  CallKind::File,   nullptr},
};

// The system's and the toolkit's further words for a call of the table.
const struct {
    const char* word;
    const char* name;
} kOtherWords[] = {
    {"flush",     "write"},
    {"fsync",     "sync"},
    {"fdatasync", "sync"},
    {"ftruncate", "truncate"},
    {"remove",    "unlink"},
    {"mkpath",    "mkdir"},
    {"access",    "stat"},
    {"exists",    "stat"},
    {"entryList", "opendir"},
};
// clang-format on

} // namespace

const CallRow* findCall(const char* name)
{
    for (const CallRow& row : kCalls)
        if (std::strcmp(row.name, name) == 0)
            return &row;
    return nullptr;
}

const CallRow* findCall(const QString& name)
{
    for (const auto& other : kOtherWords)
        if (name == QLatin1String(other.word))
            return findCall(other.name);
    return findCall(name.toUtf8().constData());
}

QString unknownCall(const QString& name)
{
    return QString("'%1' is no call that can be watched; see --help").arg(name);
}

QStringList callNames(CallKind kind)
{
    QStringList names;
    for (const CallRow& row : kCalls)
        if (row.kind == kind)
            names += QString(row.name);
    return names;
}

} // namespace quillon
