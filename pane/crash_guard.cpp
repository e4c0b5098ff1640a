#include "pane/crash_guard.h"

#include "ground/data_files.h"
#include "ground/message_boxes.h"

#include <QFile>

namespace quillon {

static const qint32 kMarker = 77; // what the file holds

static bool hasCrashMarker()
{
    if (!openDatForReading(dataFiles().crashMarker))
        return false;
    qint32 value = 0;
    readDatField(&value);
    closeDat();
    return value == kMarker;
}

void checkCrashMarker()
{
    if (!hasCrashMarker())
        return;
    showBox(Box::CrashWarning);
    QFile::remove(dataFiles().settings);
    QFile::remove(dataFiles().ranks);
    QFile::remove(dataFiles().poseIndex);
}

void writeCrashMarker()
{
    if (!ensureDataFolder() || !openDatForWriting(dataFiles().crashMarker))
        return;
    writeDatField(kMarker);
    closeDat();
}

void removeCrashMarker()
{
    QFile::remove(dataFiles().crashMarker);
}

} // namespace quillon
