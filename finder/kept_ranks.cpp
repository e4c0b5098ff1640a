#include "finder/kept_ranks.h"

#include "finder/pose_ranks.h"
#include "ground/backup_folder.h"
#include "ground/data_folder.h"
#include "ground/save_lock.h"
#include "ground/whole_file.h"

#include <algorithm>
#include <unordered_set>

namespace quillon {

static bool readKept(RankRecords* kept)
{
    const RankFile found = readRankFile(dataFiles().ranksKept, kept);
    return found != RankFile::Unreadable
        && (found != RankFile::Foreign || backUpForeign(dataFiles().ranksKept));
}

static bool writeKept(const RankRecords& kept)
{
    return writeRankFile(dataFiles().ranksKept, kept);
}

// Those that have the keys of others make room for them.
static void dropKeysOf(const RankRecords& others, RankRecords* kept)
{
    std::unordered_set<quint32> keys;
    for (const RankRecord& each : others)
        keys.insert(each.key);
    kept->erase(std::remove_if(kept->begin(), kept->end(),
                    [&keys](const RankRecord& each) { return keys.count(each.key) != 0; }),
        kept->end());
}

bool keepRanks(const RankRecords& records)
{
    if (records.empty())
        return true;
    if (!ensureDataFolder())
        return false;
    const SaveLock lock;
    RankRecords kept;
    if (!lock.mayGoOn() || !readKept(&kept))
        return false;
    dropKeysOf(records, &kept);
    kept.insert(kept.end(), records.begin(), records.end());
    if (int(kept.size()) > kRankCapacity)
        kept.erase(kept.begin(), kept.end() - kRankCapacity);
    return writeKept(kept);
}

bool keepRanksOf(const QString& rankFile)
{
    RankRecords records;
    return readRankFile(rankFile, &records) != RankFile::Unreadable && keepRanks(records);
}

template <typename Drop> static bool dropKept(Drop drop)
{
    if (isMissing(dataFiles().ranksKept)) // as it is mostly
        return true;
    const SaveLock lock;
    RankRecords kept;
    if (!lock.mayGoOn() || !readKept(&kept))
        return false;
    const auto end = std::remove_if(kept.begin(), kept.end(), drop);
    if (end == kept.end())
        return true;
    kept.erase(end, kept.end());
    return writeKept(kept);
}

bool forgetKeptRank(quint32 key)
{
    return dropKept([key](const RankRecord& each) { return each.key == key; });
}

bool moveRanksAfterScan(bool everyPoseWasSeen)
{
    RankRecords kept;
    if (!joinRanksOnDisk() // what another host gave is kept, too
        || !readKept(&kept) || (everyPoseWasSeen && !keepRanks(ranksWithoutPose())))
        return false;
    const bool pruned = everyPoseWasSeen && pruneRanks();
    const bool returned = returnRanks(kept);
    if ((pruned || returned) && !writeRanks())
        return false;
    return dropKept([](const RankRecord& each) { return hasRankRecord(each.key); });
}

} // namespace quillon
