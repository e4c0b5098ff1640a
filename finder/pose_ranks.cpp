#include "finder/pose_ranks.h"

#include "finder/pose_index.h"
#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/plugin_settings.h"
#include "ground/status_message.h"
#include "posefile/part_locks.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <vector>

namespace quillon {

static const qint32 kFileVersion = 1;
static const char kRefusal[] = "ERROR\r\nRank cannot be changed if\r\npart of the pose is locked";

struct RankStore {
    std::vector<RankRecord> records; // every slot
    int count = 0; // of those in use
    std::vector<RankRecord> byKey; // hashed, the first record of each key; places without a rank
                                   // are free, and they are the most
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
    while (places < 2 * std::size_t(g_ranks.count))
        places *= 2;
    g_ranks.byKey.assign(places, RankRecord());
    for (int i = 0; i < g_ranks.count; ++i) {
        const RankRecord& record = g_ranks.records[std::size_t(i)];
        RankRecord* place = placeOf(record.key);
        if (place->rank == Unranked)
            *place = record;
    }
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
    return g_ranks.byKey.empty() ? int(Unranked) : placeOf(e->contentHash)->rank;
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
