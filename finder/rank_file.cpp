#include "finder/rank_file.h"

#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/whole_file.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <unordered_set>

namespace quillon {

static const qint32 kFileVersion = 1;
static const qint64 kRecordBytes = 8;

static void readRecords(DatReader* file, RankRecords* records)
{
    std::unordered_set<quint32> seen;
    qint32 count = 0;
    file->readField(&count);
    for (qint32 n = 0;
         n < count && int(records->size()) < kRankCapacity && file->bytesLeft() >= kRecordBytes;
         ++n) {
        RankRecord record;
        file->readField(&record.rank);
        file->readField(&record.key);
        if ((record.rank == Favorite || record.rank == Hidden) && seen.insert(record.key).second)
            records->push_back(record);
    }
}

RankFile readRankFile(const QString& path, RankRecords* records)
{
    records->clear();
    const bool exists = !isMissing(path);
    DatReader file(path);
    if (!file.isOpen())
        return exists ? RankFile::Unreadable : RankFile::Missing;
    if (!file.isWhole())
        return RankFile::Unreadable;
    qint32 version = 0;
    file.readField(&version);
    if (version != kFileVersion)
        return RankFile::Foreign;
    readRecords(&file, records);
    return RankFile::Read;
}

static DatWriter fileOf(const RankRecords& records)
{
    DatWriter file;
    file.reserve(int(2 * sizeof(qint32) + records.size() * std::size_t(kRecordBytes)));
    file.writeField(kFileVersion);
    file.writeField(qint32(records.size()));
    for (const RankRecord& record : records) {
        file.writeField(record.rank);
        file.writeField(record.key);
    }
    return file;
}

bool isRankFileOf(const QString& path, const RankRecords& records)
{
    const QByteArray expected = fileOf(records).bytes();
    DatReader file(path);
    if (!file.isWhole() || file.bytesLeft() != expected.size())
        return false;
    QByteArray found(expected.size(), 0);
    file.read(found.data(), found.size());
    return found == expected;
}

bool writeRankFile(const QString& path, const RankRecords& records)
{
    return ensureDataFolder() && fileOf(records).save(path);
}

// ---- two hosts

typedef std::unordered_map<quint32, qint32> RankOfKey;

static RankOfKey byKey(const RankRecords& records)
{
    RankOfKey ranks;
    ranks.reserve(records.size());
    for (const RankRecord& each : records)
        ranks[each.key] = each.rank;
    return ranks;
}

static qint32 rankIn(const RankOfKey& ranks, quint32 key)
{
    const auto found = ranks.find(key);
    return found == ranks.end() ? qint32(Unranked) : found->second;
}

RankRecords mergedRanks(const RankRecords& base, const RankRecords& ours, const RankRecords& theirs)
{
    const RankOfKey baseRanks = byKey(base), ourRanks = byKey(ours), theirRanks = byKey(theirs);
    const auto weChanged
        = [&](quint32 key) { return rankIn(ourRanks, key) != rankIn(baseRanks, key); };
    RankRecords merged;
    for (const RankRecord& each : theirs) {
        const RankRecord held
            = {each.key, weChanged(each.key) ? rankIn(ourRanks, each.key) : each.rank};
        if (held.rank != Unranked)
            merged.push_back(held);
    }
    for (const RankRecord& each : ours) {
        if (weChanged(each.key) && theirRanks.count(each.key) == 0)
            merged.push_back(each);
    }
    merged.resize(std::min(merged.size(), std::size_t(kRankCapacity)));
    return merged;
}

} // namespace quillon
