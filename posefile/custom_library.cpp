#include "posefile/custom_library.h"

#include "ground/data_folder.h"

#include <QDir>

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
    return path.contains(QLatin1String(kCustomLibraryPart));
}

QString customPoseFileName(const QString& chosen)
{
    const QLatin1String suffix(kPoseSuffix);
    return chosen.endsWith(suffix, Qt::CaseInsensitive) ? chosen : chosen + suffix;
}

} // namespace quillon
