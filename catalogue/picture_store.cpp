#include "catalogue/picture_store.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace quillon {

static const int kPictureVersion = 1; // another one when pictures look otherwise
static const int kNameDigits = 20;

static QString stateOf(const QString& file)
{
    if (file.isEmpty())
        return QString();
    const QFileInfo info(file);
    return QString("%1\n%2\n%3\n")
        .arg(file)
        .arg(info.size())
        .arg(info.lastModified().toMSecsSinceEpoch());
}

QString pictureName(const PictureJob& job)
{
    const QString key = QString("%1 %2 %3\n%4%5")
                            .arg(kPictureVersion)
                            .arg(kPicturePx)
                            .arg(int(job.male))
                            .arg(stateOf(job.pose), stateOf(job.own));
    const QString digits = QString::fromLatin1(
        QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1).toHex().left(kNameDigits));
    return QString("pictures/%1/%2.jpg").arg(digits.left(2), digits.mid(2));
}

void dropOtherPictures(const QString& output, const QSet<QString>& names)
{
    const QDir folder(output);
    QStringList others;
    QDirIterator files(
        output + "/pictures", QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString name = folder.relativeFilePath(files.next());
        if (!names.contains(name))
            others += name;
    }
    for (const QString& name : std::as_const(others)) {
        QFile::remove(folder.filePath(name));
        folder.rmdir(QFileInfo(name).path()); // when it was the last
    }
}

} // namespace quillon
