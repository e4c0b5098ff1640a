// kept_ranks.h - ranks of poses that are not indexed now, in a file of their own: a drive may be
// offline today, or other content directories chosen, and the poses come back with a later scan.
// The file is that of rank_file.h, the longest kept first. Where there are too many the first go.
// A pose that is ranked anew has no kept rank. Owns: nothing; nothing of the file is held in
// memory. Errors: false when the file cannot be read or written; it is then as it was.
#pragma once

#include "finder/rank_file.h"

namespace quillon {

[[nodiscard]] bool keepRanks(const RankRecords& records);
// All of a rank file, which may be about to be deleted. True also when it has none.
[[nodiscard]] bool keepRanksOf(const QString& rankFile);
[[nodiscard]] bool forgetKeptRank(quint32 key);

// After a scan: kept ranks whose poses are indexed return to the ranks. Where every pose was seen,
// ranks of poses that are not indexed are kept instead. Both files are saved if they change, in an
// order in which no rank is in neither.
[[nodiscard]] bool moveRanksAfterScan(bool everyPoseWasSeen);

} // namespace quillon
