#include "host/posebench/preset_picture.h"

#include "host/body/pose_picture.h"
#include "host/posebench/pose_preset_io.h"

#include "dzscene.h"
#include "dzskeleton.h"
#include "dzundostack.h"

namespace quillon {

QImage presetPicture(const QString& file, DzSkeleton* figure, const QSize& size, QString* why)
{
    PosePreset preset;
    if (!readPosePreset(file, &preset, why))
        return QImage();
    const DzUndoStackLock unrecorded;
    clearFigurePose(figure);
    applyPosePreset(preset, figure, dzScene->getTime());
    return posePicture(figure, size);
}

} // namespace quillon
