#include "finder/finder_calls.h"

#include "figure/selected_figure.h"
#include "finder/browse_session.h"
#include "finder/custom_pose_commands.h"
#include "finder/pose_browser.h"
#include "finder/pose_scanner.h"
#include "ground/save_result.h"

#include "dzscene.h"
#include "dzskeleton.h"

namespace quillon {

void selectPoseType(int type)
{
    const bool fromPicker = true;
    chooseCategory(type, selectedFigure(), dzScene->getTime(), fromPicker);
}

bool findPose(int step, bool productSkip, bool countOnly)
{
    DzSkeleton* figure = selectedFigure();
    const DzTime time = dzScene->getTime();
    if (!countOnly)
        return searchPose(figure, time, step, productSkip).moved;
    countMatches(figure, time);
    return false;
}

bool scanPoses()
{
    return scanPosesOn(selectedFigure(), dzScene->getTime());
}

void saveCustomPose()
{
    noteSaveResult(savePoseOf(supportedFigureAnywhereOf(selectedNode()), dzScene->getTime()));
}

bool deleteCustomPose(int entry)
{
    return deletePose(entry, selectedFigure());
}

void buildYawTable(int type, const DzSkeleton* figure, DzTime time)
{
    makeYawTable(&browseSession().tables, type, figure, time);
}

float browseScore(int entry)
{
    return browseScore(browseSession().tables, entry);
}

DzVec3 facingDirection(const DzQuat& hip)
{
    return facingDirection(hip, browseSession().facing.currentType);
}

bool hipChanged(DzSkeleton* figure, int mode, DzTime time)
{
    BrowseSession& session = browseSession();
    if (mode == CompareHip)
        return hasHipMoved(session.facing, figure, time);
    if (mode != ClearHip) {
        storeHip(&session.facing, figure, time);
    } else if (hipOf(figure)) {
        session.facing.hipRot_world = DzQuat();
        session.facing.hipPosCm_world = DzVec3();
        if (isCategory(session.type))
            makeYawTable(&session.tables, session.type, figure, time);
    }
    return false;
}

} // namespace quillon
