// data_folder.h - where the plug-in keeps its files.
//
// Folder: "<host's data folder>/Brannoc/Quillon/". Names carry an installation key, so that two
// set-ups of the host that share a data folder (a release and a beta, say) do not share files.
// No file is required to exist. Owns: the paths. GUI thread only.
#pragma once

#include <QString>

namespace quillon {

struct DataFiles {
    QString folder; // the DataFolder, with its last slash; empty: there is none
    QString customFolder; // custom pose library, with its last slash
    QString key; // eight hexadecimal digits or nothing
    QString settings;
    QString crashMarker;
    QString ranks;
    QString ranksKept; // of poses that are not indexed now
    QString poseIndex;
    QString saveLock; // there while a host saves (save_lock.h)
};

// Cuts the path just after its last "/data" (plain text, case-sensitive), else keeps it whole, and
// appends the maker's folders.
QString dataFolderFor(const QString& hostDataPath);
// The hash of the second-to-last component of the path, of the whole path where it has no two
// slashes; empty for an empty text.
QString installationKeyFor(const QString& hostTempPath);
DataFiles dataFilesFor(const QString& hostDataPath, const QString& hostTempPath);

// The process's own, asked of the host. Without an application all paths are empty.
const DataFiles& dataFiles();
void locateDataFiles();

// Creates the folder with all missing parents. False if there is no folder or it cannot be made.
[[nodiscard]] bool ensureDataFolder();
// Gives files of the naming without a key their present names. A file of that name wins.
void migrateDataFiles();

} // namespace quillon
