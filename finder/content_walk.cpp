#include "finder/content_walk.h"

#include <QDirIterator>
#include <QFileInfo>

namespace quillon {

static const char kPresetSuffix[] = ".duf";

// The name is looked at first: a file system may have to be asked for the rest.
static bool isPreset(const QString& path, const QDirIterator& at)
{
    return path.endsWith(QLatin1String(kPresetSuffix), Qt::CaseInsensitive)
        && at.fileInfo().isFile();
}

// The iterator is given no names to look for: it would not come back before it has found one, be
// there ever so many others.
void walkContent(const QString& directory, const ContentVisitor& visitor)
{
    QDirIterator entries(directory,
        QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks,
        QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        if (isPreset(path, entries))
            visitor.visitPreset(path);
        if (visitor.isDone())
            return;
    }
}

} // namespace quillon
