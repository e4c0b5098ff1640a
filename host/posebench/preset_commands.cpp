#include "host/posebench/preset_commands.h"

#include "host/posebench/pose_preset_io.h"

#include "dzscene.h"
#include "dzskeleton.h"
#include "dzundostack.h"

#include <QMimeData>
#include <QUrl>

namespace quillon {

static bool readAll(const QStringList& files, std::vector<PosePreset>* presets, QString* why)
{
    for (const QString& file : files) {
        presets->emplace_back();
        if (!readPosePreset(file, &presets->back(), why))
            return false;
    }
    return true;
}

static QString outcome(const QString& what, int channels)
{
    if (!channels)
        return QObject::tr("%1: nothing in it is for this figure.").arg(what);
    return channels == 1 ? QObject::tr("%1: 1 channel set.").arg(what)
                         : QObject::tr("%1: %2 channels set.").arg(what).arg(channels);
}

bool applyPresetFiles(const QStringList& files, DzSkeleton* figure, QString* text)
{
    std::vector<PosePreset> presets;
    if (!figure) {
        *text = QObject::tr("Select a figure to apply a pose.");
        return false;
    }
    if (!readAll(files, &presets, text))
        return false;
    DzUndoStackHold hold;
    int channels = 0;
    for (const PosePreset& preset : presets)
        channels += applyPosePreset(preset, figure, dzScene->getTime());
    const QString what
        = presets.size() == 1 ? presets.front().name : QObject::tr("%1 Poses").arg(presets.size());
    hold.accept(
        presets.size() == 1 ? QString("Apply Pose %1").arg(what) : QString("Apply %1").arg(what));
    *text = outcome(what, channels);
    return true;
}

QStringList presetFilesOf(const QMimeData* data)
{
    QStringList files;
    const QList<QUrl> urls = data->urls();
    for (const QUrl& url : urls)
        if (url.isLocalFile() && url.toLocalFile().endsWith(".duf", Qt::CaseInsensitive))
            files << url.toLocalFile();
    return files;
}

} // namespace quillon
