#include "ground/data_files.h"

#include "dzapp.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

#if Q_BYTE_ORDER != Q_LITTLE_ENDIAN
#error "the .dat files hold values as they lie in the memory of a little-endian machine"
#endif

namespace quillon {

// ---- paths -----------------------------------------------------------------------------------

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
};

static const char kSuffix[] = ".dat";

static DataFiles g_files;

const DataFiles& dataFiles()
{
    return g_files;
}

QString dataFolderFor(const QString& hostDataPath)
{
    const QString mark = QLatin1String("/data");
    const int at = hostDataPath.lastIndexOf(mark);
    const QString base = at < 0 ? hostDataPath : hostDataPath.left(at + mark.size());
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
        if (QFile::exists(old))
            QFile::rename(old, g_files.*name.path);
    }
}

quint32 djb2Hash(const char* bytes, qint64 count)
{
    quint32 hash = 5381;
    for (qint64 i = 0; i < count; ++i)
        hash = hash * 33u + quint32(qint32(static_cast<signed char>(bytes[i])));
    return hash;
}

// ---- the .dat primitives ---------------------------------------------------------------------

static QFile g_reader;
static QFile g_writer; // writes beside the target, which it replaces when all is written
static QString g_target;
static bool g_writtenInFull;
static DatState g_state = DatClosed;

DatState datState()
{
    return g_state;
}

// Tried on an object of its own: a failure must not disturb the file that is open.
static bool canOpen(const QString& path, QIODevice::OpenMode mode)
{
    QFile trial(path);
    return trial.open(mode);
}

bool openDatForReading(const QString& path)
{
    if (!canOpen(path, QIODevice::ReadOnly))
        return false;
    closeDat();
    g_reader.setFileName(path);
    if (!g_reader.open(QIODevice::ReadOnly))
        return false;
    g_state = DatReading;
    return true;
}

// The file behind a link is the one to be replaced, not the link.
static QString resolveTarget(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

static bool mayBeWritten(const QString& path)
{
    const QFileInfo info(path);
    return !info.exists() || (info.isFile() && info.isWritable());
}

bool openDatForWriting(const QString& path)
{
    const QString target = resolveTarget(path);
    const QString beside = target + QLatin1String(".new");
    if (!mayBeWritten(path) || !canOpen(beside, QIODevice::Append))
        return false;
    closeDat();
    g_target = target;
    g_writer.setFileName(beside);
    if (!g_writer.open(QIODevice::WriteOnly))
        return false;
    g_writtenInFull = true;
    g_state = DatWriting;
    return true;
}

void readDat(void* field, int bytes)
{
    g_reader.read(static_cast<char*>(field), bytes);
}

void writeDat(const void* field, int bytes)
{
    g_writtenInFull &= g_writer.write(static_cast<const char*>(field), bytes) == bytes;
}

static void finishWriting()
{
    g_writtenInFull &= g_writer.flush() && g_writer.error() == QFile::NoError;
    g_writer.close();
    if (!g_writtenInFull || !replaceFile(g_writer.fileName(), g_target))
        QFile::remove(g_writer.fileName());
}

void closeDat()
{
    const DatState was = g_state;
    g_state = DatClosed;
    if (was == DatReading)
        g_reader.close();
    else if (was == DatWriting)
        finishWriting();
}

bool replaceFile(const QString& finished, const QString& target)
{
#ifdef Q_OS_WIN
    const QString from = QDir::toNativeSeparators(finished);
    const QString to = QDir::toNativeSeparators(target);
    return MoveFileExW(reinterpret_cast<const wchar_t*>(from.utf16()),
               reinterpret_cast<const wchar_t*>(to.utf16()), MOVEFILE_REPLACE_EXISTING)
        != 0;
#else
    return std::rename(
               QFile::encodeName(finished).constData(), QFile::encodeName(target).constData())
        == 0;
#endif
}

} // namespace quillon
