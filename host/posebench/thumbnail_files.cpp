#include "host/posebench/thumbnail_files.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quillon {

static const int kDrawing = 1; // another one when pictures look otherwise

QString thumbnailFile(const QString& folder, const QString& file)
{
    const QFileInfo info(file);
    if (!info.isFile())
        return QString();
    const QString key = QString("%1|%2|%3|%4|%5")
                            .arg(info.absoluteFilePath())
                            .arg(info.size())
                            .arg(info.lastModified().toMSecsSinceEpoch())
                            .arg(kThumbnailPx)
                            .arg(kDrawing);
    const QByteArray hash = QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1);
    return folder + '/' + QString::fromLatin1(hash.toHex()) + ".png";
}

void markUsed(const QString& thumbnail)
{
    QFile file(thumbnail);
    if (file.open(QIODevice::ReadWrite))
        file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
}

qint64 trimThumbnails(const QString& folder, qint64 limit)
{
    const QFileInfoList oldestFirst
        = QDir(folder).entryInfoList({"*.png"}, QDir::Files, QDir::Time | QDir::Reversed);
    qint64 bytes = 0;
    for (const QFileInfo& file : oldestFirst)
        bytes += file.size();
    if (bytes <= limit)
        return bytes;
    for (const QFileInfo& file : oldestFirst) {
        if (bytes <= limit / 10 * 9)
            break;
        if (QFile::remove(file.filePath()))
            bytes -= file.size();
    }
    return bytes;
}

} // namespace quillon
