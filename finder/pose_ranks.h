// pose_ranks.h - the user's ranks of poses, by the hash of the pose file's content, and their file.
// The file is that of rank_file.h, with no more records than the table holds.
// Owns: the table, which exists as long as there is a pane, and its records.
#pragma once

#include "finder/rank_file.h"

namespace quillon {

void createRankStore(); // with room for the capacity, count 0
void freeRankStore(); // nor any room
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
// table full is not recorded. A kept rank of the pose (kept_ranks.h) goes. False when a file cannot
// be written.
bool setCurrentRank(int rank);

// The records of poses that are not indexed, in their order.
RankRecords ranksWithoutPose();
// Drops them. True when there was one.
bool pruneRanks();
// Adds those of indexed poses that have no record, as far as there is room. True when there was
// one.
bool returnRanks(const RankRecords& records);
bool hasRankRecord(quint32 key);

// Fills the table from the rank file; false when there is none.
bool readRanks();
// What another host has saved since joins the table; what changed here since holds. False when the
// file cannot be read.
bool joinRanksOnDisk();
// What changed since the table was last read or written is applied to what is on disk, and the
// table becomes that. Of a file of another version a copy is made. False when the folder or the
// file cannot be written, or not all of it can be read; the file is then as it was.
[[nodiscard]] bool writeRanks();

} // namespace quillon
