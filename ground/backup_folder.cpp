#include "ground/backup_folder.h"

#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/plain_file.h"
#include "ground/plugin_settings.h"
#include "ground/save_result.h"
#include "ground/whole_file.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <numeric>
#include <set>
#include <vector>

namespace quillon {

static const char kEnd[] = ".bak";

QString backupFolder()
{
    const QString& folder = dataFiles().folder;
    return folder.isEmpty() ? QString() : folder + QLatin1String("backup/");
}

// ---- how full a file is

namespace {

// Files that begin with version and count.
const struct TableRow {
    const char* start; // of the name
    int recordBytes; // of the shortest one
} kTables[] = {
    {"ranks", 8}, // and those that are kept
    {"poseIndex", 173},
};
const int kHeadBytes = 8;
const qint32 kVersion = 1; // others may count elsewhere

} // namespace

static const TableRow* tableOf(const QString& name)
{
    for (const TableRow& row : kTables) {
        if (name.startsWith(QLatin1String(row.start)))
            return &row;
    }
    return nullptr;
}

// What the head promises, as far as the file goes. 0 of what is no table.
static qint64 recordsIn(const QString& name, const QByteArray& head, qint64 size)
{
    const TableRow* row = tableOf(name);
    if (!row || size < kHeadBytes)
        return 0;
    const qint64 room = (size - kHeadBytes) / row->recordBytes;
    qint32 fields[2] = {0, 0}; // version and count
    if (head.size() >= kHeadBytes)
        std::memcpy(fields, head.constData(), sizeof fields);
    return fields[0] == kVersion ? qBound(qint64(0), qint64(fields[1]), room) : room;
}

static bool hasContent(const QString& path, const QByteArray& bytes)
{
    const bool isTableHead = tableOf(QFileInfo(path).fileName()) && bytes.size() == kHeadBytes;
    const bool isDefault = path == dataFiles().settings && bytes == defaultSettingsFile();
    return !bytes.isEmpty() && !isTableHead && !isDefault;
}

// ---- the copies

namespace {

struct BackupCopy {
    QString path;
    QString file; // the name of what it is a copy of
    qint64 size;
    qint64 records;
};
typedef std::vector<BackupCopy> BackupCopies;

} // namespace

static bool readAll(const QString& path, QByteArray* bytes)
{
    QFile file(path);
    return openPlainFile(&file, QIODevice::ReadOnly) && readAllOf(&file, kLargestDatFile + 1, bytes)
        && bytes->size() <= kLargestDatFile;
}

static BackupCopy copyAt(const QFileInfo& info)
{
    QFile file(info.filePath());
    QByteArray head;
    if (openPlainFile(&file, QIODevice::ReadOnly))
        head = file.read(kHeadBytes);
    const QString name = info.fileName().section(QLatin1Char('.'), 0, -3); // without date and end
    return {info.filePath(), name, info.size(), recordsIn(name, head, info.size())};
}

// Oldest first: the dates in the names sort.
static BackupCopies allCopies()
{
    const QFileInfoList found
        = QDir(backupFolder())
              .entryInfoList(
                  QStringList(QLatin1Char('*') + QLatin1String(kEnd)), QDir::Files, QDir::Name);
    BackupCopies copies;
    for (const QFileInfo& each : found)
        copies.push_back(copyAt(each));
    return copies;
}

static BackupCopies copiesOf(const QString& file, const BackupCopies& all)
{
    BackupCopies own;
    std::copy_if(all.begin(), all.end(), std::back_inserter(own),
        [&file](const BackupCopy& each) { return each.file == file; });
    return own;
}

static bool isAmong(const QByteArray& bytes, const BackupCopies& copies)
{
    return std::any_of(copies.begin(), copies.end(), [&bytes](const BackupCopy& copy) {
        QByteArray kept;
        return copy.size == bytes.size() && readAll(copy.path, &kept) && kept == bytes;
    });
}

static qint64 bytesOf(const BackupCopies& copies)
{
    return std::accumulate(copies.begin(), copies.end(), qint64(0),
        [](qint64 sum, const BackupCopy& each) { return sum + each.size; });
}

// ---- which make room for a new one

// All copies of a file but the fullest, of equals the last, where that is fuller than the new one.
static BackupCopies thatMayGo(BackupCopies own, qint64 newRecords)
{
    const auto fullest = std::max_element(own.rbegin(), own.rend(),
        [](const BackupCopy& a, const BackupCopy& b) { return a.records < b.records; });
    if (fullest != own.rend() && fullest->records > newRecords)
        own.erase(std::next(fullest).base());
    return own;
}

static void take(BackupCopies::iterator copy, BackupCopies* from, BackupCopies* victims)
{
    victims->push_back(*copy);
    from->erase(copy);
}

// Of its own copies: first those that are not fuller, then the others, each time the oldest.
static BackupCopies tooManyFor(const BackupCopy& fresh, const BackupCopies& all, int generations)
{
    const BackupCopies own = copiesOf(fresh.file, all);
    BackupCopies mayGo = thatMayGo(own, fresh.records);
    BackupCopies victims;
    for (int left = int(own.size()); left >= generations && !mayGo.empty(); --left) {
        const auto poorer = std::find_if(mayGo.begin(), mayGo.end(),
            [&fresh](const BackupCopy& each) { return each.records <= fresh.records; });
        take(poorer == mayGo.end() ? mayGo.begin() : poorer, &mayGo, &victims);
    }
    return victims;
}

static void removeAll(const BackupCopies& gone, BackupCopies* copies)
{
    copies->erase(std::remove_if(copies->begin(), copies->end(),
                      [&gone](const BackupCopy& each) {
                          return std::any_of(gone.begin(), gone.end(),
                              [&each](const BackupCopy& one) { return one.path == each.path; });
                      }),
        copies->end());
}

// Of all that are left the longest, so that few go. Where that is not room enough none goes.
static BackupCopies tooLongFor(const BackupCopy& fresh, const BackupCopies& left)
{
    const qint64 none = -1; // whatever a file's fullest copy has is more
    qint64 over = bytesOf(left) + fresh.size - kBackupBytes;
    BackupCopies mayGo, victims;
    std::set<QString> files;
    for (const BackupCopy& each : left) {
        if (!files.insert(each.file).second)
            continue;
        const BackupCopies some
            = thatMayGo(copiesOf(each.file, left), each.file == fresh.file ? fresh.records : none);
        mayGo.insert(mayGo.end(), some.begin(), some.end());
    }
    for (; over > 0 && bytesOf(mayGo) >= over; over -= victims.back().size)
        take(std::max_element(mayGo.begin(), mayGo.end(),
                 [](const BackupCopy& a, const BackupCopy& b) { return a.size < b.size; }),
            &mayGo, &victims);
    return victims;
}

// ---- copying

// Behind those of the same second, also where the first of them have gone.
static QString freshName(const QString& path)
{
    const QString date = QDateTime::currentDateTime().toString(QLatin1String("yyyyMMdd-HHmmss"));
    const QString start = QFileInfo(path).fileName() + QLatin1Char('.') + date + QLatin1Char('-');
    const QStringList same = QDir(backupFolder())
                                 .entryList(QStringList(start + QLatin1Char('*')),
                                     QDir::AllEntries | QDir::Hidden | QDir::System, QDir::Name);
    const int number = same.isEmpty()
        ? 0
        : same.last().mid(start.size()).section(QLatin1Char('.'), 0, 0).toInt() + 1;
    return backupFolder() + start
        + QString::fromLatin1("%1%2").arg(number, 3, 10, QLatin1Char('0')).arg(QLatin1String(kEnd));
}

bool backUp(const QString& path, int generations)
{
    const At at = whatIsAt(path);
    if (at == At::Nothing || at == At::SomethingElse || QFileInfo(path).size() > kLargestDatFile)
        return true;
    QByteArray bytes;
    if (!readAll(path, &bytes))
        return false;
    const QString name = QFileInfo(path).fileName();
    const BackupCopy fresh
        = {freshName(path), name, bytes.size(), recordsIn(name, bytes, bytes.size())};
    BackupCopies all = allCopies();
    if (!hasContent(path, bytes) || isAmong(bytes, copiesOf(name, all)))
        return true;
    if (!QDir().mkpath(backupFolder()) || !writeWholeFile(fresh.path, bytes))
        return false;
    BackupCopies victims = tooManyFor(fresh, all, generations);
    removeAll(victims, &all);
    const BackupCopies more = tooLongFor(fresh, all);
    victims.insert(victims.end(), more.begin(), more.end());
    for (const BackupCopy& victim : victims)
        QFile::remove(victim.path);
    return true;
}

bool backUpForeign(const QString& path, int generations)
{
    const qint64 size = QFileInfo(path).size(); // 0 where there is none
    const bool isKept
        = size > kLargestDatFile ? setAside(path, generations) : backUp(path, generations);
    if (isKept && size > 0)
        logLine(path + QLatin1String(" is damaged or of another version; a copy is in ")
            + backupFolder());
    return isKept;
}

bool setAside(const QString& path, int generations)
{
    if (isMissing(path))
        return true;
    if (QFileInfo(path).size() <= kLargestDatFile && backUp(path, generations))
        return QFile::remove(path);
    // What is too long for a copy, or finds the disk full, gets another name.
    return QDir().mkpath(backupFolder()) && QFile::rename(path, freshName(path));
}

} // namespace quillon
