#include "finder/pose_ranks.h"

#include "finder/kept_ranks.h"
#include "finder/pose_index.h"
#include "ground/backup_folder.h"
#include "ground/data_folder.h"
#include "ground/plugin_settings.h"
#include "ground/save_lock.h"
#include "ground/status_message.h"
#include "posefile/part_locks.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <vector>

namespace quillon {

static const char kRefusal[] = "ERROR\r\nRank cannot be changed if\r\npart of the pose is locked";

struct RankStore {
    RankRecords records; // their capacity is that of the table
    RankRecords synced; // as they were when the file was last read or written
    RankRecords byKey; // hashed; places without a rank are free, and they are the most
};
static RankStore g_ranks;

// ---- the table

static const std::size_t kFewestPlaces = 16;

// Where the key stands, or where it would.
static RankRecord* placeOf(quint32 key)
{
    const std::size_t last = g_ranks.byKey.size() - 1; // all bits on
    std::size_t at = quint64(key) * 0x9e3779b97f4a7c15u >> 40 & last; // the golden ratio's bits
    while (g_ranks.byKey[at].rank != Unranked && g_ranks.byKey[at].key != key)
        at = (at + 1) & last;
    return &g_ranks.byKey[at];
}

// After any change of the records.
static void indexRecords()
{
    std::size_t places = kFewestPlaces;
    while (places < 2 * g_ranks.records.size())
        places *= 2;
    g_ranks.byKey.assign(places, RankRecord());
    for (const RankRecord& record : g_ranks.records)
        *placeOf(record.key) = record;
}

template <typename Drop> static void dropRecords(Drop drop)
{
    RankRecords& records = g_ranks.records;
    records.erase(std::remove_if(records.begin(), records.end(), drop), records.end());
    indexRecords();
}

static void appendRecord(const RankRecord& record)
{
    if (g_ranks.records.size() < g_ranks.records.capacity())
        g_ranks.records.push_back(record);
}

void createRankStore()
{
    g_ranks.records.clear();
    g_ranks.synced.clear();
    g_ranks.records.reserve(kRankCapacity);
    indexRecords();
}

void freeRankStore()
{
    RankRecords().swap(g_ranks.records);
    RankRecords().swap(g_ranks.synced);
    indexRecords();
}

int rankRecordCount()
{
    return int(g_ranks.records.size());
}

static int rankOfKey(quint32 key)
{
    return g_ranks.byKey.empty() ? int(Unranked) : placeOf(key)->rank;
}

bool hasRankRecord(quint32 key)
{
    return rankOfKey(key) != Unranked;
}

int rankOf(int entry)
{
    const PoseIndexEntry* e = poseEntry(entry);
    if (!e)
        return Unranked;
    return e->isCustom ? int(CustomLibraryPose) : rankOfKey(e->contentHash);
}

static void setRank(quint32 key, int rank)
{
    const auto record = std::find_if(g_ranks.records.begin(), g_ranks.records.end(),
        [key](const RankRecord& each) { return each.key == key; });
    if (record != g_ranks.records.end())
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
    const quint32 key = current->contentHash;
    // In that order a host that ends in between leaves one of the two at least; and nothing would
    // try once more to forget a kept rank that must not return.
    if (rank == Unranked && !forgetKeptRank(key))
        return false;
    setRank(key, rank);
    refreshCurrentRank();
    return writeRanks() && (!hasRankRecord(key) || forgetKeptRank(key));
}

// ---- poses that are indexed, and poses that are not

static std::unordered_set<quint32> indexedKeys()
{
    std::unordered_set<quint32> keys;
    for (int entry = 0; entry < poseCount(); ++entry)
        keys.insert(poseEntry(entry)->contentHash);
    return keys;
}

RankRecords ranksWithoutPose()
{
    const std::unordered_set<quint32> indexed = indexedKeys();
    RankRecords without;
    for (const RankRecord& each : g_ranks.records) {
        if (indexed.count(each.key) == 0)
            without.push_back(each);
    }
    return without;
}

bool pruneRanks()
{
    const std::unordered_set<quint32> indexed = indexedKeys();
    const int before = rankRecordCount();
    dropRecords([&indexed](const RankRecord& each) { return indexed.count(each.key) == 0; });
    return rankRecordCount() < before;
}

bool returnRanks(const RankRecords& records)
{
    const std::unordered_set<quint32> indexed = indexedKeys();
    const int before = rankRecordCount();
    for (const RankRecord& each : records) {
        if (indexed.count(each.key) != 0 && !hasRankRecord(each.key))
            appendRecord(each);
    }
    indexRecords();
    return rankRecordCount() > before;
}

// ---- the file

static void putRecords(const RankRecords& records)
{
    g_ranks.records.clear();
    std::for_each(records.begin(), records.end(), appendRecord);
    indexRecords();
}

bool readRanks()
{
    RankRecords records;
    const RankFile found = readRankFile(dataFiles().ranks, &records);
    if (found == RankFile::Read) {
        putRecords(records);
        g_ranks.synced = g_ranks.records;
    }
    return found == RankFile::Read || found == RankFile::Foreign;
}

// What another host has saved meanwhile joins the table.
static RankFile joinFile()
{
    RankRecords onDisk;
    const RankFile found = readRankFile(dataFiles().ranks, &onDisk);
    if (found == RankFile::Read) {
        putRecords(mergedRanks(g_ranks.synced, g_ranks.records, onDisk));
        g_ranks.synced = onDisk;
        refreshCurrentRank(); // which the other host may have given
    }
    return found;
}

bool joinRanksOnDisk()
{
    return joinFile() != RankFile::Unreadable;
}

static bool writeMerged()
{
    const RankFile found = joinFile();
    return found != RankFile::Unreadable
        && (found != RankFile::Foreign || backUpForeign(dataFiles().ranks))
        && writeRankFile(dataFiles().ranks, g_ranks.records);
}

bool writeRanks()
{
    if (!ensureDataFolder())
        return false;
    const SaveLock lock;
    if (!lock.mayGoOn())
        return false;
    const bool saved = isRankFileOf(dataFiles().ranks, g_ranks.synced)
        ? writeRankFile(dataFiles().ranks, g_ranks.records)
        : writeMerged();
    if (saved)
        g_ranks.synced = g_ranks.records;
    return saved;
}

} // namespace quillon
