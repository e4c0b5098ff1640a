#include "ground/host_gzip.h"

#include "ground/plain_file.h"

#include "dzgzio.h"

#include <QBuffer>

namespace quillon {

static const int kLevel = 6;
static const int kBufferBytes = 65536;

int readPacked(QIODevice* device, char* buffer, int maxBytes)
{
    DzGzIO gzip(device, kLevel, kBufferBytes);
    return gzip.open(QIODevice::ReadOnly) ? readAsMuchAs(&gzip, buffer, maxBytes) : 0;
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

// By way of memory: what the host's device makes of a write that fails when it is closed is
// unknown.
bool writePacked(QIODevice* device, const QByteArray& bytes)
{
    QBuffer packed;
    DzGzIO gzip(&packed, kLevel, kBufferBytes);
    if (!gzip.open(QIODevice::WriteOnly))
        return false;
    const bool taken = gzip.write(bytes) == bytes.size();
    gzip.close();
    return taken && device->write(packed.data()) == packed.data().size();
}

} // namespace quillon
