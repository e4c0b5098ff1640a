// The rank file: what is in it against a plain reading of the bytes, the ranks of poses with these
// keys, and the ranks written and read again against themselves.
#include "fuzz/dat_bytes.h"
#include "fuzz/fuzz_target.h"
#include "fuzz/fuzz_world.h"

using namespace quillon;

static bool hasKey(const std::vector<RankRecord>& records, quint32 key)
{
    return std::any_of(
        records.begin(), records.end(), [key](const RankRecord& each) { return each.key == key; });
}

// Of records with the same key the first one counts.
static std::vector<RankRecord> plainRecords(const QByteArray& bytes)
{
    std::vector<RankRecord> records;
    fuzz::DatBytes file = {bytes};
    if (file.number<qint32>() != 1)
        return records;
    for (qint32 left = file.number<qint32>(); left > 0 && file.size() >= 8; --left) {
        RankRecord record;
        record.rank = file.number<qint32>();
        record.key = file.number<quint32>();
        const bool counts = record.rank == 1 || record.rank == 2;
        if (counts && !hasKey(records, record.key) && records.size() < size_t(kRankCapacity))
            records.push_back(record);
    }
    return records;
}

static QByteArray plainFile(const std::vector<RankRecord>& records)
{
    const auto bytesOf = [](quint32 n) { return QByteArray(reinterpret_cast<char*>(&n), 4); };
    QByteArray bytes = bytesOf(1) + bytesOf(quint32(records.size()));
    for (const RankRecord& each : records)
        bytes += bytesOf(quint32(each.rank)) + bytesOf(each.key);
    return bytes;
}

static void checkRanks(const std::vector<RankRecord>& records)
{
    truncatePoseIndex(0);
    const int entry = appendPose(QLatin1String("/a.duf"));
    for (const RankRecord& each : records) {
        entryToChange(entry)->contentHash = each.key;
        FUZZ_CHECK(rankOf(entry) == each.rank);
    }
    truncatePoseIndex(0);
}

QUILLON_FUZZ_TARGET(pose_ranks)
{
    fuzz::world();
    createRankStore();
    writeFile(dataFiles().ranks, input.copy());
    FUZZ_CHECK(readRanks());
    const std::vector<RankRecord> records = plainRecords(input.copy());
    FUZZ_CHECK(rankRecordCount() == int(records.size()));
    checkRanks(records);

    FUZZ_CHECK(writeRanks());
    FUZZ_CHECK(fileBytes(dataFiles().ranks) == plainFile(records));
    FUZZ_CHECK(readRanks());
    FUZZ_CHECK(rankRecordCount() == int(records.size()));
    FUZZ_CHECK(writeRanks());
    FUZZ_CHECK(fileBytes(dataFiles().ranks) == plainFile(records));
}
