#include "posefile/reference_pose.h"

#include "figure/same_place.h"
#include "figure/selected_figure.h"
#include "ground/data_folder.h"
#include "ground/message_boxes.h"
#include "ground/status_message.h"
#include "ground/undo_step.h"
#include "ground/whole_file.h"
#include "posefile/pose_reader.h"
#include "posefile/pose_writer.h"

#include "dzbone.h"
#include "dzskeleton.h"

namespace quillon {

QString referencePosePath()
{
    const QString& folder = dataFiles().folder;
    return folder.isEmpty() ? QString() : folder + QLatin1String("reference.duf");
}

bool memorizeReferenceOf(DzSkeleton* figure, DzTime time)
{
    const QString path = referencePosePath();
    const HeldNode held(figure);
    if (!isMissing(path) && (!showBox(Box::ReplaceReference) || held.isGone()))
        return true;
    const bool male = false, compressed = true;
    const bool saved = ensureDataFolder() && writePose(figure, time, path, male, compressed);
    if (saved)
        showStatusMessage(QLatin1String("\r\n\r\nReference Pose memorized\r\n\r\n"));
    return saved;
}

void showReferenceOn(DzSkeleton* figure, DzTime time)
{
    DzBone* hip = hipOf(figure);
    if (!hip)
        return;
    UndoStep step;
    step.note(true);
    const DzVec3 placeCm_world = hip->getWSPos(time);
    const bool resetFirst = true;
    applyPose(figure, time, referencePosePath(), resetFirst);
    if (!samePlace(hip->getWSPos(time), placeCm_world))
        hip->setWSPos(time, placeCm_world);
    showStatusMessage(
        QLatin1String("\r\nReference Pose shown\r\nUse 'undo' revert\r\nto current pose\r\n"));
}

} // namespace quillon
