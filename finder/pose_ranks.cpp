#include "finder/pose_ranks.h"

#include "finder/pose_index.h"
#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/plugin_settings.h"
#include "ground/status_message.h"
#include "posefile/part_locks.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quillon {

static const qint32 kFileVersion = 1;
static const char kRefusal[] = "ERROR\r\nRank cannot be changed if\r\npart of the pose is locked";

struct RankStore {
    std::vector<RankRecord> records; // every slot
    int count = 0; // of those in use
    std::unordered_map<quint32, qint32> rankByKey; // of the first record with the key
};
static RankStore g_ranks;

// ---- the table

// After any change of the records.
static void indexRecords()
{
    g_ranks.rankByKey.clear();
    for (int i = 0; i < g_ranks.count; ++i)
        g_ranks.rankByKey.emplace(
            g_ranks.records[std::size_t(i)].key, g_ranks.records[std::size_t(i)].rank);
}

template <typename Drop> static void dropRecords(Drop drop)
{
    const auto end = g_ranks.records.begin() + g_ranks.count;
    const auto kept = std::remove_if(g_ranks.records.begin(), end, drop);
    g_ranks.count = int(kept - g_ranks.records.begin());
    std::fill(kept, end, RankRecord());
    indexRecords();
}

static bool isFull()
{
    return g_ranks.count >= int(g_ranks.records.size());
}

static void appendRecord(const RankRecord& record)
{
    if (!isFull())
        g_ranks.records[std::size_t(g_ranks.count++)] = record;
}

void createRankStore()
{
    g_ranks.records.assign(kRankCapacity, RankRecord());
    g_ranks.count = 0;
    indexRecords();
}

void freeRankStore()
{
    std::vector<RankRecord>().swap(g_ranks.records);
    g_ranks.count = 0;
    indexRecords();
}

int rankRecordCount()
{
    return g_ranks.count;
}

int rankOf(int entry)
{
    const PoseIndexEntry* e = poseEntry(entry);
    if (!e)
        return Unranked;
    if (e->isCustom)
        return CustomLibraryPose;
    const auto found = g_ranks.rankByKey.find(e->contentHash);
    return found == g_ranks.rankByKey.end() ? int(Unranked) : found->second;
}

static void setRank(quint32 key, int rank)
{
    const auto end = g_ranks.records.begin() + g_ranks.count;
    const auto record = std::find_if(
        g_ranks.records.begin(), end, [key](const RankRecord& each) { return each.key == key; });
    if (record != end)
        record->rank = rank;
    else
        appendRecord(RankRecord {key, rank});
    dropRecords([](const RankRecord& each) { return each.rank == Unranked; });
}

void refreshCurrentRank()
{
    pluginSettings().currentRank = rankOf(pluginSettings().currentPose);
}

bool setCurrentRank(int rank)
{
    if (anyPartLockOn()) {
        showStatusMessage(QLatin1String(kRefusal));
        return true;
    }
    PluginSettings& settings = pluginSettings();
    const PoseIndexEntry* current = poseEntry(settings.currentPose);
    const bool canBeGiven = rank >= Unranked && rank <= Hidden;
    if (!canBeGiven || !current || current->isCustom)
        return true;
    setRank(current->contentHash, rank);
    refreshCurrentRank();
    return writeRanks();
}

bool pruneRanks()
{
    std::unordered_set<quint32> indexed;
    for (int entry = 0; entry < poseCount(); ++entry)
        indexed.insert(poseEntry(entry)->contentHash);
    const int before = g_ranks.count;
    dropRecords([&indexed](const RankRecord& each) { return indexed.count(each.key) == 0; });
    return g_ranks.count < before;
}

// ---- the file

// Of the records with one key only the first is kept.
static void readRecords(DatReader* file)
{
    std::unordered_set<quint32> seen;
    qint32 count = 0;
    file->readField(&count);
    g_ranks.count = 0;
    for (qint32 n = 0; n < count && !isFull() && file->bytesLeft() >= qint64(sizeof(RankRecord));
         ++n) {
        RankRecord record;
        file->readField(&record.rank);
        file->readField(&record.key);
        if ((record.rank == Favorite || record.rank == Hidden) && seen.insert(record.key).second)
            appendRecord(record);
    }
    indexRecords();
}

bool readRanks()
{
    DatReader file(dataFiles().ranks);
    if (!file.isOpen())
        return false;
    qint32 version = 0;
    file.readField(&version);
    if (version == kFileVersion)
        readRecords(&file);
    return true;
}

bool writeRanks()
{
    if (!ensureDataFolder())
        return false;
    DatWriter file;
    file.writeField(kFileVersion);
    file.writeField(qint32(g_ranks.count));
    for (int i = 0; i < g_ranks.count; ++i) {
        file.writeField(g_ranks.records[std::size_t(i)].rank);
        file.writeField(g_ranks.records[std::size_t(i)].key);
    }
    return file.save(dataFiles().ranks);
}

} // namespace quillon
