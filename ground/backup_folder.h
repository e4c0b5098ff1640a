// backup_folder.h - dated copies of the data files, taken before something replaces or deletes
// them.
//
// They lie in "backup/" of the data folder as "<name>.<date and time>-<number>.bak", so that no
// search for poses takes one for a pose. Whoever wants one back copies it over the file without the
// ending, while no host runs. Of a file five copies are kept, of the pose index two, and of all no
// more than 64 MB, of which the index leaves some to the others. The fuller of two tables (".dat")
// is the longer one; a copy that makes room for a new one is never fuller than that. Of other files
// the oldest makes room: one pose is as full as another. Owns: nothing.
#pragma once

#include <QString>

namespace quillon {

const int kGenerations = 5;
const int kIndexGenerations = 2;
const qint64 kBackupBytes = qint64(64) << 20;
const qint64 kLeftByIndex = qint64(8) << 20;

QString backupFolder(); // with its last slash; empty without a data folder

// Copies the file there. True also when there is nothing that is worth a copy: no plain file, an
// empty one, a table without records, settings that are the defaults, one longer than any that is
// read (dat_file.h), one that has a copy with the same bytes, one that is poorer than all the
// copies that would have to go for it. False: the copy could not be made.
[[nodiscard]] bool backUp(const QString& path, int generations = kGenerations);

// Removes the file once it has been copied; where no copy can be made it moves there. False: it is
// where it was.
[[nodiscard]] bool setAside(const QString& path, int generations = kGenerations);

} // namespace quillon
