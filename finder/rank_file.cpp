#include "finder/rank_file.h"

#include "ground/dat_file.h"
#include "ground/data_folder.h"

#include <QFileInfo>

#include <cstddef>
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
    const bool exists = QFileInfo(path).exists();
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

bool writeRankFile(const QString& path, const RankRecords& records)
{
    if (!ensureDataFolder())
        return false;
    DatWriter file;
    file.reserve(int(2 * sizeof(qint32) + records.size() * std::size_t(kRecordBytes)));
    file.writeField(kFileVersion);
    file.writeField(qint32(records.size()));
    for (const RankRecord& record : records) {
        file.writeField(record.rank);
        file.writeField(record.key);
    }
    return file.save(path);
}

} // namespace quillon
