#include "pane/crash_guard.h"

#include "finder/kept_ranks.h"
#include "ground/backup_folder.h"
#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/message_boxes.h"
#include "ground/plain_file.h"
#include "ground/save_result.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quillon {

static const qint32 kMarker = 77; // what the file holds

static bool hasCrashMarker()
{
    DatReader file(dataFiles().crashMarker);
    const bool isWhole = file.bytesLeft() == qint64(sizeof kMarker); // none is cut short or longer
    qint32 value = 0;
    file.readField(&value);
    return isWhole && value == kMarker;
}

void checkCrashMarker()
{
    if (!hasCrashMarker())
        return;
    showBox(Box::CrashWarning);
    logSaveResult(setAside(dataFiles().settings));
    logSaveResult(keepRanksOf(dataFiles().ranks)); // so that the next scan brings them back
    logSaveResult(setAside(dataFiles().ranks));
    logSaveResult(setAside(dataFiles().poseIndex, kIndexGenerations));
}

static void clearMarkersPlace()
{
    const QString& path = dataFiles().crashMarker;
    if (mayBeOpened(path))
        return;
    QString aside;
    for (int n = 1; aside.isEmpty() || QFileInfo(aside).exists(); ++n)
        aside = QString::fromLatin1("%1.%2").arg(path).arg(n);
    QDir().rename(path, aside);
}

bool writeCrashMarker()
{
    DatWriter file;
    file.writeField(kMarker);
    clearMarkersPlace();
    return ensureDataFolder() && file.save(dataFiles().crashMarker);
}

void removeCrashMarker()
{
    QFile marker(dataFiles().crashMarker);
    if (!marker.remove() && marker.exists()) // one that cannot be looked at is removed all the same
        openPlainFile(&marker, QIODevice::WriteOnly | QIODevice::Truncate);
}

// ---- the lock

static QString lockPath()
{
    logSaveResult(ensureDataFolder()); // without it there is neither lock nor marker
    return dataFiles().crashMarker + QLatin1String(".lock");
}

StartGuard::StartGuard()
    : m_lock(lockPath(), 0)
{
    if (m_lock.isOthers())
        return;
    checkCrashMarker();
    logSaveResult(writeCrashMarker());
}

StartGuard::~StartGuard()
{
    if (!m_lock.isOthers())
        removeCrashMarker();
}

} // namespace quillon
