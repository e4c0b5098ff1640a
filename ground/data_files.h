// data_files.h - where the plug-in keeps its files, and how every .dat file is read and written.
//
// Folder: "<host's data folder>/Brannoc/Quillon/". Names carry an installation key, so that two
// set-ups of the host that share a data folder (a release and a beta, say) do not share files.
// Files: little-endian, packed, values as they lie in memory; no .dat file is required to exist.
// Owns: the paths, the one reader, the one writer and the open state. GUI thread only.
// Errors: single reads and writes are not checked. A file that could not be written in full is
// thrown away when it is closed, and the file it was to replace stays as it was.
#pragma once

#include <QString>

#include <type_traits>

namespace quillon {

// ---- paths -----------------------------------------------------------------------------------

struct DataFiles {
    QString folder; // the DataFolder, with its last slash; empty: there is none
    QString customFolder; // custom pose library, with its last slash
    QString key; // eight hexadecimal digits or nothing
    QString settings;
    QString crashMarker;
    QString ranks;
    QString poseIndex;
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
bool ensureDataFolder();
// Gives files of the naming without a key their present names. A file of that name wins.
void migrateDataFiles();

// h = h * 33 + byte, from 5381; bytes count as signed, h wraps at 32 bits.
quint32 djb2Hash(const char* bytes, qint64 count);

// ---- the .dat primitives ---------------------------------------------------------------------

enum DatState { DatClosed = 0, DatReading = 1, DatWriting = 2 };
DatState datState();

// At most one file is open at a time. False leaves the state as it is.
bool openDatForReading(const QString& path);
bool openDatForWriting(const QString& path);
// A short read leaves the rest of the field as it was.
void readDat(void* field, int bytes);
void writeDat(const void* field, int bytes);
void closeDat();

template <typename T> void readDatField(T* field)
{
    static_assert(std::is_arithmetic<T>::value && !std::is_same<T, bool>::value, "a plain number");
    readDat(field, int(sizeof(T)));
}

template <typename T> void writeDatField(const T& field)
{
    static_assert(std::is_arithmetic<T>::value && !std::is_same<T, bool>::value, "a plain number");
    writeDat(&field, int(sizeof(T)));
}

// Puts a finished file in another's place in one step. False leaves both as they were.
bool replaceFile(const QString& finished, const QString& target);

} // namespace quillon
