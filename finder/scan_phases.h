// scan_phases.h - the phases of a scan that work on the pose index alone.
// Each goes over the entries in order, tells its watch of those that EntriesToTell picks, and asks
// it after every one whether the scan is cancelled. False: it is, with the entries reached so far
// changed. A content hash of 0 marks an entry that is to go.
// An entry of the custom library is never dropped as a duplicate, mirror or near-duplicate, and
// drops no other entry. Owns: nothing.
#pragma once

#include "finder/scan_verdicts.h"

#include <QString>

#include <functional>

namespace quillon {

struct ScanWatch {
    std::function<void(int entry, int count)> show;
    std::function<void(const QString& path)> missFile; // that could not be read
    std::function<bool()> isCancelled; // asked after every entry
    TellVerdict tell; // of entries that are dropped; may be empty
};

// Where the progress stands at an entry, of 100.
int scanPosition(int entry, int count);

// Of which entries of a phase the progress window is told, so that telling tens of thousands takes
// no time: the first and the last one, each at which the position is a new one, and every
// ceil(count / 1000)th; up to 1000 that is every one. Asked in the order of the entries.
class EntriesToTell {
public:
    EntriesToTell(int count, int last);
    bool isDue(int entry);

private:
    int m_count, m_last, m_step, m_position;
};

bool identifyPoses(const ScanWatch&); // figure codes and hashes, from the files
bool keepIdentified(const ScanWatch&); // entries that were looked at
bool dropMakerVariants(const ScanWatch&); // the maker's mirrored and expressionless copies

// Marks the later ones of entries with equal hashes, of mirrors of each other, of poses that are
// alike. Entries marked before take no part.
bool markDuplicates(const ScanWatch&);
bool markMirrored(const ScanWatch&);
bool markSimilar(const ScanWatch&);

bool dropMarked(const ScanWatch&);

} // namespace quillon
