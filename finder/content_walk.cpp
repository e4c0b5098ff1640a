#include "finder/content_walk.h"

#include "dzapp.h"
#include "dzcontentmgr.h"

#include <QDir>
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

// The folder's own "." comes with them.
static const QFlags<QDir::Filter> kEntries(QDir::Files | QDir::Dirs | QDir::NoSymLinks);

// A folder that gives nothing at all could not be read: every other one has itself as an entry, but
// for the root of a drive.
static bool isMissed(const QString& folder)
{
    const QDir asked(folder);
    return !asked.isRoot() || !asked.exists();
}

// The iterator is given no names to look for: it would not come back before it has found one, be
// there ever so many others. False: the visitor is done.
static bool walkFolder(const QString& folder, const ContentVisitor& visitor)
{
    QDirIterator entries(folder, kEntries);
    if (!entries.hasNext() && isMissed(folder))
        visitor.missFolder(folder);
    while (entries.hasNext()) {
        const QString path = entries.next();
        if (path.endsWith(QLatin1String("/.")) || path.endsWith(QLatin1String("/..")))
            continue;
        if (isPreset(path, entries))
            visitor.visitPreset(path);
        if (visitor.isDone() || (entries.fileInfo().isDir() && !walkFolder(path, visitor)))
            return false;
    }
    return true;
}

void walkContent(const QString& directory, const ContentVisitor& visitor)
{
    walkFolder(directory, visitor);
}

bool canBeListed(const QString& folder)
{
    return QDirIterator(folder, kEntries).hasNext() || !isMissed(folder);
}

// The longest of those that the path lies in.
static QString contentDirectoryOf(const QString& path)
{
    QString found;
    const DzContentMgr* content = dzApp ? dzApp->getContentMgr() : nullptr;
    for (int i = 0; content && i < content->getNumContentDirectories(); ++i) {
        const QString directory = content->getContentDirectoryPath(i);
        const QString start
            = directory.endsWith(QLatin1Char('/')) ? directory : directory + QLatin1Char('/');
        if (path.startsWith(start) && directory.size() > found.size())
            found = directory;
    }
    return found;
}

bool isContentOnline(const QString& path)
{
    const QString directory = contentDirectoryOf(path);
    const QString asked = directory.isEmpty() ? QFileInfo(path).path() : directory;
    const QFlags<QDir::Filter> anything(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    return QDirIterator(asked, anything).hasNext();
}

} // namespace quillon
