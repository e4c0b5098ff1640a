#include "ground/plain_file.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

namespace quillon {

bool mayBeOpened(const QString& path)
{
    const QFileInfo info(path);
    return info.isFile() || !info.exists();
}

bool openPlainFile(QFile* file, QIODevice::OpenMode mode)
{
    return mayBeOpened(file->fileName()) && file->open(mode);
}

int readAsMuchAs(QIODevice* device, char* buffer, int maxBytes)
{
    int count = 0;
    while (count < maxBytes) {
        const qint64 got = device->read(buffer + count, maxBytes - count);
        if (got <= 0)
            break;
        count += int(got);
    }
    return count;
}

bool readAllOf(QFile* file, qint64 maxBytes, QByteArray* bytes)
{
    const qint64 size = file->size(); // 0 also where it is not told
    const qint64 wanted = size > 0 ? qMin(size, maxBytes) : maxBytes;
    *bytes = file->read(wanted);
    return file->error() == QFile::NoError && (size <= 0 || bytes->size() == wanted);
}

} // namespace quillon
