// rank_file.h - files of ranks: those of the indexed poses and those that are kept for later.
// Version (1), count, then rank and key of each record. Of what lies there only records of a rank
// of 1 or 2 are read, of those with one key only the first, and no more than kRankCapacity.
// Owns: nothing.
#pragma once

#include <qglobal.h>

#include <vector>

class QString;

namespace quillon {

const int kRankCapacity = 65536;

enum PoseRank { Unranked, Favorite, Hidden, CustomLibraryPose };

struct RankRecord {
    quint32 key = 0; // contentHash of the pose
    qint32 rank = 0; // Favorite or Hidden; unranked poses have no record
};
typedef std::vector<RankRecord> RankRecords;

enum class RankFile {
    Missing, // nothing is there
    Unreadable, // something is, but not all of it can be read
    Foreign, // of another version
    Read
};

// The records in their order; none unless Read.
RankFile readRankFile(const QString& path, RankRecords* records);
// Whether it is what writing them makes. Sooner known than the records are read.
bool isRankFileOf(const QString& path, const RankRecords& records);
// False when the folder or the file cannot be written; the file is then as it was.
[[nodiscard]] bool writeRankFile(const QString& path, const RankRecords& records);

// What two hosts made of the same records: ours of each key that we changed (or unranked), theirs
// of the others, in their order and then ours. No more than kRankCapacity.
RankRecords mergedRanks(
    const RankRecords& base, const RankRecords& ours, const RankRecords& theirs);

} // namespace quillon
