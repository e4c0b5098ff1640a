// backup_folder.h - dated copies of the data files, taken before something replaces or deletes
// them.
//
// They lie in "backup/" of the data folder as "<name>.<date and time>-<number>.bak", so that no
// search for poses takes one for a pose. Whoever wants one back copies it over the file without the
// ending, while no host runs.
//
// Whatever has content is copied, and then older copies make room: of a file five are kept, of the
// pose index two, and of all no more than 64 MB. The fullest copy of each file stays until there is
// one as full, if need be as one too many or over the limit. Of ranks and poses the fuller file is
// that of more records; of other files none is fuller than another. Owns: nothing.
#pragma once

#include <QString>

namespace quillon {

const int kGenerations = 5;
const int kIndexGenerations = 2;
const qint64 kBackupBytes = qint64(64) << 20;

QString backupFolder(); // with its last slash; empty without a data folder

// Copies the file there. True also when there is nothing that is worth a copy: no plain file, an
// empty one, a table without records, settings that are the defaults, one longer than any that is
// read (dat_file.h), one that has a copy with the same bytes. False: the copy could not be made.
[[nodiscard]] bool backUp(const QString& path, int generations = kGenerations);

// The same of a file of another version, or one that lacks its head, which is about to be replaced:
// the host's log tells of it.
[[nodiscard]] bool backUpForeign(const QString& path, int generations = kGenerations);

// Removes the file once it has been copied, or is not worth a copy; where none can be made, it
// being too long or the disk full, it moves there. False: it is where it was.
[[nodiscard]] bool setAside(const QString& path, int generations = kGenerations);

} // namespace quillon
