// index_saves.h - how changes of the pose index reach its file, which another host may have changed
// and which may hold poses that the table does not: after a scan that was cancelled, or while their
// drive is offline.
//
// A change of one entry is applied by its path to what is on disk. What cannot be written goes with
// the next change. Owns: nothing; what is known of the file is kept with the table (IndexOnDisk).
// Errors: false when the file cannot be read or written; it is then as it was.
#pragma once

#include <QString>

namespace quillon {

// After a scan: the table takes the place of the file, of which a copy is made.
[[nodiscard]] bool saveScannedIndex();

// After an entry was filled, refilled or taken out of the table.
[[nodiscard]] bool saveEntry(int entry);
[[nodiscard]] bool saveDeletion(const QString& path);
// The same of one whose file could not be applied. While the content directory that it was found in
// does not give its entries nothing is known of it, and it stays on disk. Before the first one goes
// there, a copy is made.
[[nodiscard]] bool saveVanishing(const QString& path);

// Once more what could not be written. At the end of a host there is no next change.
[[nodiscard]] bool saveWhatIsPending();

// The settings, with the applied pose's position in the file in place of that in the table.
[[nodiscard]] bool saveSettingsAndPosition();

} // namespace quillon
