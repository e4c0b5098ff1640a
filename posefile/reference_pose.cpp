#include "posefile/reference_pose.h"

#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "ground/data_folder.h"
#include "ground/message_boxes.h"
#include "ground/status_message.h"
#include "posefile/pose_reader.h"
#include "posefile/pose_writer.h"

#include "dzbone.h"
#include "dzscene.h"
#include "dzskeleton.h"
#include "dzundostack.h"

#include <QFile>

namespace quillon {

QString referencePosePath()
{
    const QString& folder = dataFiles().folder;
    return folder.isEmpty() ? QString() : folder + QLatin1String("reference.duf");
}

void memorizeReferencePose()
{
    const QString path = referencePosePath();
    if (QFile::exists(path) && !showBox(Box::ReplaceReference))
        return;
    const bool male = false, compressed = true;
    if (ensureDataFolder())
        writePoseFile(path, male, compressed);
    showStatusMessage(QLatin1String("\r\n\r\nReference Pose memorized\r\n\r\n"));
}

void showReferencePose()
{
    DzSkeleton* figure = figureOf(dzScene->getPrimarySelection());
    DzBone* hip = figure ? findBone(QLatin1String("hip"), figure) : nullptr;
    if (!hip)
        return;
    const DzTime time = dzScene->getTime();
    DzUndoStackHold hold;
    const DzVec3 placeCm_world = hip->getWSPos(time);
    const bool resetFirst = true;
    applyPoseFile(referencePosePath(), resetFirst);
    if (hip->getWSPos(time) != placeCm_world)
        hip->setWSPos(time, placeCm_world);
    hold.accept(QLatin1String("quillon_stack"));
    showStatusMessage(
        QLatin1String("\r\nReference Pose shown\r\nUse 'undo' revert\r\nto current pose\r\n"));
}

} // namespace quillon
