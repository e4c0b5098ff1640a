#include "posefile/gzip_file.h"

#include "ground/plain_file.h"

#include "dzgzio.h"

#include <QBuffer>
#include <QFile>

namespace quillon {

static const int kLevel = 6;
static const int kBufferBytes = 65536;

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

// The gzip device leaves the file open as long as it is open itself.
static bool isOpenAtStart(QFile* file)
{
    if (file->isOpen() && file->seek(0))
        return true;
    file->close();
    return file->open(QIODevice::ReadOnly);
}

int readUnpackedOrAsIs(const QString& path, char* buffer, int maxBytes)
{
    if (!mayBeOpened(path))
        return 0;
    QFile file(path);
    DzGzIO gzip(&file, kLevel, kBufferBytes);
    const int count = gzip.open(QIODevice::ReadOnly) ? readAsMuchAs(&gzip, buffer, maxBytes) : 0;
    if (count > 0 || !isOpenAtStart(&file))
        return count;
    return readAsMuchAs(&file, buffer, maxBytes);
}

bool unpackBytes(const QByteArray& packed, int maxBytes, QByteArray* bytes)
{
    QBuffer buffer;
    buffer.setData(packed);
    DzGzIO gzip(&buffer, kLevel, kBufferBytes);
    if (!gzip.open(QIODevice::ReadOnly))
        return false;
    QByteArray piece(kBufferBytes, '\0');
    qint64 got = gzip.read(piece.data(), piece.size());
    while (got > 0 && bytes->size() + got <= maxBytes) {
        bytes->append(piece.constData(), int(got));
        got = gzip.read(piece.data(), piece.size());
    }
    return got == 0;
}

bool writePacked(QIODevice* device, const QByteArray& bytes)
{
    DzGzIO gzip(device, kLevel, kBufferBytes);
    if (!gzip.open(QIODevice::WriteOnly))
        return false;
    const bool taken = gzip.write(bytes) == bytes.size();
    gzip.close();
    return taken;
}

} // namespace quillon
