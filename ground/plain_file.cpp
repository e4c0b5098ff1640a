#include "ground/plain_file.h"

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

} // namespace quillon
