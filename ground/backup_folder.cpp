#include "ground/backup_folder.h"

#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/plain_file.h"
#include "ground/plugin_settings.h"
#include "ground/whole_file.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quillon {

static const char kEnd[] = ".bak";

QString backupFolder()
{
    const QString& folder = dataFiles().folder;
    return folder.isEmpty() ? QString() : folder + QLatin1String("backup/");
}

// Oldest first: the dates in the names sort.
static QFileInfoList copiesLike(const QString& pattern)
{
    return QDir(backupFolder()).entryInfoList(QStringList(pattern), QDir::Files, QDir::Name);
}

static QFileInfoList copiesOf(const QString& path)
{
    return copiesLike(QFileInfo(path).fileName() + QLatin1String(".*") + QLatin1String(kEnd));
}

static bool readAll(const QString& path, QByteArray* bytes)
{
    QFile file(path);
    const bool opened = openPlainFile(&file, QIODevice::ReadOnly);
    if (opened)
        *bytes = file.readAll();
    return opened && bytes->size() == file.size();
}

static bool isAmong(const QByteArray& bytes, const QFileInfoList& copies)
{
    for (const QFileInfo& copy : copies) {
        QByteArray kept;
        if (copy.size() == bytes.size() && readAll(copy.filePath(), &kept) && kept == bytes)
            return true;
    }
    return false;
}

static const int kTableHeadBytes = 8; // version and count

static bool isTable(const QString& path)
{
    return path.endsWith(QLatin1String(".dat"));
}

static bool isDefault(const QString& path, const QByteArray& bytes)
{
    return isTable(path) && (bytes.size() == kTableHeadBytes || bytes == defaultSettingsFile());
}

static qint64 bytesOf(const QFileInfoList& copies)
{
    qint64 sum = 0;
    for (const QFileInfo& copy : copies)
        sum += copy.size();
    return sum;
}

// Of the copies of one file: the oldest, of a table that is not fuller than what comes. -1: none.
static int oldestToGo(const QFileInfoList& copies, const QString& path, qint64 size)
{
    for (int i = 0; i < copies.size(); ++i) {
        if (!isTable(path) || copies.at(i).size() <= size)
            return i;
    }
    return -1;
}

// Of the copies of all files: the fullest that is not fuller, so that few go. -1: none.
static int fullestToGo(const QFileInfoList& copies, qint64 size)
{
    int fullest = -1;
    for (int i = 0; i < copies.size(); ++i) {
        const qint64 bytes = copies.at(i).size();
        if (bytes <= size && (fullest < 0 || bytes > copies.at(fullest).size()))
            fullest = i;
    }
    return fullest;
}

// What has to go for a new copy: of its file as many as are too many, of all what is over the
// bytes. False: there is no room, and nothing is to go.
static bool findVictims(const QString& path, qint64 size, int generations, QStringList* victims)
{
    QFileInfoList own = copiesOf(path);
    QFileInfoList all = copiesLike(QLatin1Char('*') + QLatin1String(kEnd));
    const qint64 room = kBackupBytes - (path == dataFiles().poseIndex ? kLeftByIndex : 0);
    while (own.size() >= generations || bytesOf(all) + size > room) {
        const bool tooMany = own.size() >= generations;
        QFileInfoList& from = tooMany ? own : all;
        const int victim = tooMany ? oldestToGo(own, path, size) : fullestToGo(all, size);
        if (victim < 0)
            return false;
        const QFileInfo info = from.at(victim);
        victims->append(info.filePath());
        own.removeAll(info);
        all.removeAll(info);
    }
    return true;
}

static QString freshName(const QString& path)
{
    const QString date = QDateTime::currentDateTime().toString(QLatin1String("yyyyMMdd-HHmmss"));
    QString name;
    for (int n = 0; name.isEmpty() || QFile::exists(name); ++n)
        name = QString::fromLatin1("%1%2.%3-%4%5")
                   .arg(backupFolder(), QFileInfo(path).fileName(), date)
                   .arg(n, 3, 10, QLatin1Char('0'))
                   .arg(QLatin1String(kEnd));
    return name;
}

bool backUp(const QString& path, int generations)
{
    const QFileInfo info(path);
    if (!info.isFile() || info.size() == 0 || info.size() > kLargestDatFile)
        return true;
    QByteArray bytes;
    if (!readAll(path, &bytes))
        return false;
    QStringList victims;
    if (isDefault(path, bytes) || isAmong(bytes, copiesOf(path))
        || !findVictims(path, bytes.size(), generations, &victims))
        return true;
    if (!QDir().mkpath(backupFolder()) || !writeWholeFile(freshName(path), bytes))
        return false;
    for (const QString& victim : victims)
        QFile::remove(victim);
    return true;
}

bool setAside(const QString& path, int generations)
{
    if (!QFile::exists(path))
        return true;
    if (QFileInfo(path).size() <= kLargestDatFile && backUp(path, generations))
        return QFile::remove(path);
    // What is too long for a copy, or finds the disk full, gets another name.
    return QDir().mkpath(backupFolder()) && QFile::rename(path, freshName(path));
}

} // namespace quillon
