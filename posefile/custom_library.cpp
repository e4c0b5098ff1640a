#include "posefile/custom_library.h"

#include "ground/data_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <QStringMatcher>

namespace quillon {

const char kCustomLibraryPart[] = "data/Brannoc/Quillon/custom";
static const char kPoseSuffix[] = ".duf";

QString customLibraryFolder()
{
    return dataFiles().customFolder;
}

bool ensureCustomLibraryFolder()
{
    const QString folder = customLibraryFolder();
    return !folder.isEmpty() && QDir().mkpath(folder);
}

bool isCustomLibraryPath(const QString& path)
{
    static const QStringMatcher part((QLatin1String(kCustomLibraryPart)));
    return part.indexIn(path) >= 0;
}

static bool isSameOrBelow(const QString& folder, const QString& top)
{
    return folder == top || folder.startsWith(top + QLatin1Char('/'));
}

// Of the first parts of the path, those that are a library's own folder.
static QStringList librariesOn(const QString& path)
{
    QStringList folders;
    const QString library = QLatin1Char('/') + QLatin1String(kCustomLibraryPart);
    const QString inside = library + QLatin1Char('/');
    for (int at = path.indexOf(inside); at >= 0; at = path.indexOf(inside, at + 1))
        folders += path.left(at + library.size());
    return folders;
}

bool isDeletableCustomPose(const QString& path)
{
    const QString plain = QDir::fromNativeSeparators(path);
    if (!plain.endsWith(QLatin1String(kPoseSuffix), Qt::CaseInsensitive)
        || plain.split(QLatin1Char('/')).contains(QLatin1String("..")))
        return false;
    const QString folder = plain.left(plain.lastIndexOf(QLatin1Char('/')));
    const QString resolved = QFileInfo(folder).canonicalFilePath();
    const QStringList libraries = librariesOn(plain);
    for (int i = 0; i < libraries.size() && !resolved.isEmpty(); ++i) {
        if (isSameOrBelow(resolved, QFileInfo(libraries.at(i)).canonicalFilePath()))
            return true;
    }
    return false;
}

QString customPoseFileName(const QString& chosen)
{
    const QLatin1String suffix(kPoseSuffix);
    return chosen.endsWith(suffix, Qt::CaseInsensitive) ? chosen : chosen + suffix;
}

} // namespace quillon
