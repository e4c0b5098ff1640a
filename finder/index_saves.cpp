#include "finder/index_saves.h"

#include "finder/content_walk.h"
#include "finder/pose_index.h"
#include "ground/backup_folder.h"
#include "ground/dat_file.h"
#include "ground/data_folder.h"
#include "ground/plain_file.h"
#include "ground/plugin_settings.h"
#include "ground/save_lock.h"
#include "ground/whole_file.h"

#include <QFile>

namespace quillon {

static bool backUpIndex()
{
    return backUp(dataFiles().poseIndex, kIndexGenerations);
}

bool saveScannedIndex()
{
    if (!ensureDataFolder())
        return false;
    const SaveLock lock;
    indexOnDisk().isBehind = true;
    return lock.mayGoOn() && backUpIndex() && writePoseIndex();
}

// ---- single entries

// No more of it than is read. False: something is there, and not all of it can be read.
static bool readIndexBytes(QByteArray* bytes)
{
    QFile file(dataFiles().poseIndex);
    if (isMissing(file.fileName()))
        return true;
    return openPlainFile(&file, QIODevice::ReadOnly) && readAllOf(&file, kLargestDatFile, bytes);
}

static bool writeEdits(QByteArray bytes)
{
    IndexOnDisk& disk = indexOnDisk();
    const bool isMirrored = disk.isMirrored && isSameMark(markOf(dataFiles().poseIndex), disk.mark);
    applyEdits(disk.pending, &bytes);
    if (!writeWholeFile(dataFiles().poseIndex, bytes))
        return false;
    disk.mark = markOf(dataFiles().poseIndex);
    disk.isMirrored = isMirrored;
    disk.pending.clear();
    return true;
}

// Where there is no index file, or one of another version, the table is all that is known.
static bool savePending()
{
    if (!ensureDataFolder())
        return false;
    const SaveLock lock;
    QByteArray bytes;
    if (!lock.mayGoOn() || !readIndexBytes(&bytes))
        return false;
    if (!indexOnDisk().isBehind && isIndexFile(bytes))
        return writeEdits(bytes);
    const bool isForeign = !isIndexFile(bytes);
    const bool isBackedUp
        = isForeign ? backUpForeign(dataFiles().poseIndex, kIndexGenerations) : backUpIndex();
    return isBackedUp && writePoseIndex();
}

static bool saveEdit(const QString& path, const QByteArray& record)
{
    IndexOnDisk& disk = indexOnDisk();
    disk.pending.push_back(IndexEdit {path.toUtf8(), record});
    const bool saved = savePending();
    disk.isMirrored = disk.isMirrored && saved;
    return saved;
}

static bool hasTwin(int entry)
{
    for (int other = 0; other < poseCount(); ++other) {
        if (other != entry && poseEntry(other)->path == poseEntry(entry)->path)
            return true;
    }
    return false;
}

bool saveEntry(int entry)
{
    const PoseIndexEntry* e = poseEntry(entry);
    const bool saved = !e || saveEdit(e->path, recordOf(entry));
    if (hasTwin(entry)) // of two of one path the file has one
        indexOnDisk().isMirrored = false;
    return saved;
}

bool saveDeletion(const QString& path)
{
    return saveEdit(path, QByteArray());
}

bool saveVanishing(const QString& path)
{
    IndexOnDisk& disk = indexOnDisk();
    const bool isGone = isContentOnline(path);
    disk.isBackedUp = disk.isBackedUp || (isGone && backUpIndex());
    if (isGone && disk.isBackedUp)
        return saveDeletion(path);
    disk.isMirrored = false;
    return !isGone;
}

bool saveWhatIsPending()
{
    const IndexOnDisk& disk = indexOnDisk();
    return (disk.pending.empty() && !disk.isBehind) || savePending();
}

// ---- the position

static qint32 positionOnDisk()
{
    const qint32 position = pluginSettings().currentPose;
    const PoseIndexEntry* e = poseEntry(position);
    const IndexOnDisk& disk = indexOnDisk();
    if (!e || (disk.isMirrored && isSameMark(markOf(dataFiles().poseIndex), disk.mark)))
        return position;
    QByteArray bytes;
    return readIndexBytes(&bytes) && isIndexFile(bytes) ? entryOfPath(bytes, e->path.toUtf8())
                                                        : position;
}

bool saveSettingsAndPosition()
{
    return saveSettings(positionOnDisk());
}

} // namespace quillon
