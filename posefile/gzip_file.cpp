#include "posefile/gzip_file.h"

#include "ground/host_gzip.h"
#include "ground/plain_file.h"

#include <QFile>

namespace quillon {

// Reading it as gzip may have closed the file.
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
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const int count = readPacked(&file, buffer, maxBytes);
    if (count > 0 || !isOpenAtStart(&file))
        return count;
    return readAsMuchAs(&file, buffer, maxBytes);
}

} // namespace quillon
