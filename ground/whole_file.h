// whole_file.h - gives files new bytes so that a failure leaves the old ones.
//
// Beside: the bytes go into a new file of a name of this process and are flushed to the disk; then
// it takes the path in one step, so that a reader finds the old or the new bytes at any time, also
// after a crash. Whatever lay at the new file's name is removed first: a leftover of a crash, or a
// link, behind which nothing must be written; a folder there is left, and stands in the way. While
// another process holds the file it is tried again for a moment (kPatienceMs).
// In place: the bytes are written over the old ones, so that links to the file, its owner and its
// folder stay as they are. The old bytes lie in a file of their own meanwhile.
// Owns: nothing. Errors: false; the file then has its old bytes, and nothing lies beside it.
#pragma once

#include "ground/system_files.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace quillon {

// Beside, whether there was such a file before or not. A link at the path is followed: what it
// leads to is replaced. False also when something is there that is no plain file or that this user
// may not write.
[[nodiscard]] bool writeWholeFile(const QString& path, const QByteArray& bytes);

// Gives a file that is there new bytes. One that is not there, or no longer, is not created, and a
// link, a folder or what else is no plain file is left alone. Written beside if the file has one
// name only and the new one gets its owner, group and permissions; else, or if the folder takes no
// new file, in place. The old bytes are then kept in keepFolder until all is done, and if they
// cannot be, nothing is written; bytes that this user may not read cannot be kept. What a process
// that has ended left beside the file goes first, also where the file stays as it is.
[[nodiscard]] bool overwriteFile(
    const QString& path, const QByteArray& bytes, const QString& keepFolder);
// The same with each of the bytes written over those before: the last ones stay. Beside, the others
// are never seen; in place they are, until all is done. False, and the old bytes, if any of them
// cannot be written.
[[nodiscard]] bool overwriteFile(
    const QString& path, const QList<QByteArray>& inTurn, const QString& keepFolder);

// For files that nobody misses: straight into the file, behind a link if there is one. False leaves
// it cut short, and what is no plain file as it is.
[[nodiscard]] bool writePlainFile(const QString& path, const QByteArray& bytes);

// As the calls of system_files.h want it.
SystemPath systemPath(const QString& path);

FileMark markOf(const QString& path);
// The toolkit's exists() and isFile() are also false when the system cannot tell. Whoever would
// lose something by taking that for "no" asks here; an empty path is nothing.
At whatIsAt(const QString& path);
bool isMissing(const QString& path); // for certain
bool isSameMark(const FileMark& a, const FileMark& b); // also of no file twice

// Where the new bytes of a file lie until they are all there.
QString besideName(const QString& path);
// Removes from a folder of the plug-in's own what processes that have ended left there
// half-written.
void removeLeftovers(const QString& folder);
// The same beside one file: in other people's folders every other name is theirs.
void removeLeftoversOf(const QString& path);

// Puts a finished file in another's place in one step. False leaves both as they were.
[[nodiscard]] bool replaceFile(const QString& finished, const QString& target);

} // namespace quillon
