#include "ground/data_folder.h"

#include "ground/hash.h"
#include "ground/whole_file.h"

#include "dzapp.h"

#include <QDir>
#include <QFile>

namespace quillon {

struct DataFileName {
    const char* stem;
    QString DataFiles::*path;
};

// In the order of migration.
static const DataFileName kDataFileNames[] = {
    {"settings", &DataFiles::settings},
    {"crashed", &DataFiles::crashMarker},
    {"ranks", &DataFiles::ranks},
    {"poseIndex", &DataFiles::poseIndex},
    {"ranksKept", &DataFiles::ranksKept},
};

static const char kSuffix[] = ".dat";

static DataFiles g_files;

const DataFiles& dataFiles()
{
    return g_files;
}

QString dataFolderFor(const QString& hostDataPath)
{
    const QString part = QLatin1String("/data");
    const int at = hostDataPath.lastIndexOf(part);
    const QString base = at < 0 ? hostDataPath : hostDataPath.left(at + part.size());
    return base + QLatin1String("/Brannoc/Quillon/");
}

// A slash at the very start has none before it. QString would take the -1 as "from the end".
static QString secondToLastComponent(const QString& path)
{
    const int last = path.lastIndexOf(QLatin1Char('/'));
    const int before = last > 0 ? path.lastIndexOf(QLatin1Char('/'), last - 1) : -1;
    return before < 0 ? path : path.mid(before + 1, last - before - 1);
}

QString installationKeyFor(const QString& hostTempPath)
{
    const QByteArray bytes = secondToLastComponent(hostTempPath).toUtf8();
    if (bytes.isEmpty())
        return QString();
    const quint32 hash = djb2Hash(bytes.constData(), bytes.size());
    return QString::fromLatin1("%1").arg(hash, 8, 16, QLatin1Char('0'));
}

DataFiles dataFilesFor(const QString& hostDataPath, const QString& hostTempPath)
{
    DataFiles files;
    files.folder = dataFolderFor(hostDataPath);
    files.customFolder = files.folder + QLatin1String("custom/");
    files.key = installationKeyFor(hostTempPath);
    for (const DataFileName& name : kDataFileNames)
        files.*name.path = files.folder + QLatin1String(name.stem) + QLatin1Char('_') + files.key
            + QLatin1String(kSuffix);
    files.saveLock = files.folder + QLatin1String("saves_") + files.key + QLatin1String(".lock");
    return files;
}

void locateDataFiles()
{
    g_files = DataFiles();
    if (!dzApp)
        return;
    const QString dataPath = dzApp->getDataFolderPath();
    g_files = dataFilesFor(dataPath, dzApp->getTempPath());
}

bool ensureDataFolder()
{
    return !g_files.folder.isEmpty() && QDir().mkpath(g_files.folder);
}

void migrateDataFiles()
{
    if (g_files.folder.isEmpty())
        return;
    for (const DataFileName& name : kDataFileNames) {
        const QString old = g_files.folder + QLatin1String(name.stem) + QLatin1String(kSuffix);
        if (!isMissing(old))
            QFile::rename(old, g_files.*name.path);
    }
}

} // namespace quillon
