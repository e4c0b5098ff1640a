#include "pane/crash_guard.h"

#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/message_boxes.h"

#include <QFile>

namespace quillon {

static const qint32 kMarker = 77; // what the file holds

static bool hasCrashMarker()
{
    DatReader file(dataFiles().crashMarker);
    qint32 value = 0;
    file.readField(&value);
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

bool writeCrashMarker()
{
    DatWriter file;
    file.writeField(kMarker);
    return ensureDataFolder() && file.save(dataFiles().crashMarker);
}

void removeCrashMarker()
{
    QFile::remove(dataFiles().crashMarker);
}

} // namespace quillon
