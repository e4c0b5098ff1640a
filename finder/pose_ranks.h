// pose_ranks.h - the user's ranks of poses, by the hash of the pose file's content, and their file.
// File: version (1), count, then rank and key of each record. Records of a rank other than 1 and 2
// are not kept, nor are later ones of the same key, and reading ends when the table is full.
// Owns: the table, which exists as long as there is a pane, and its records.
#pragma once

#include <qglobal.h>

namespace quillon {

const int kRankCapacity = 65536;

enum PoseRank { Unranked, Favorite, Hidden, CustomLibraryPose };

struct RankRecord {
    quint32 key = 0; // contentHash of the pose
    qint32 rank = 0; // Favorite or Hidden; unranked poses have no record
};

void createRankStore(); // zeroed records, count 0
void freeRankStore();
int rankRecordCount();

// CustomLibraryPose for a pose of the custom library, whatever the table says; else the rank of the
// first record with the entry's hash; else Unranked, also outside the index.
int rankOf(int entry);

// Makes the current rank that of the current position, after the position changed without a pose
// being applied.
void refreshCurrentRank();

// Gives the pose at the current position the rank and writes the file. Refused, with nothing
// changed: while a part is locked (a status text says so), without a current pose, for a pose of
// the custom library, for a rank that is not Unranked, Favorite or Hidden. A rank that finds the
// table full is not recorded. False when the file cannot be written.
bool setCurrentRank(int rank);

// Drops the records of poses that are not indexed. True when there was one.
bool pruneRanks();

// Fills the table from the rank file; false when there is none.
bool readRanks();
// False when the folder or the file cannot be written; the file is then as it was.
[[nodiscard]] bool writeRanks();

} // namespace quillon
