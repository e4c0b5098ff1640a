#include "pane/finder_commands.h"

#include "finder/browse_commands.h"
#include "ground/save_result.h"
#include "pane/page_state.h"

namespace quillon {

// ---- pages

bool browseCategory(const PressContext& press)
{
    openCategory(press.which, press.figure, press.time, pageState().picker);
    return true;
}

bool backToMain(const PressContext&)
{
    pageState().picker = false;
    return true;
}

bool backToPicker(const PressContext&)
{
    noteSaveResult(leaveCategory());
    return true;
}

// ---- stepping

bool previousPose(const PressContext& press)
{
    stepToNeighbour(press.figure, press.time, -1);
    return true;
}

bool previousProduct(const PressContext& press)
{
    stepPose(press.figure, press.time, -1, true);
    return true;
}

bool firstPose(const PressContext& press)
{
    stepPose(press.figure, press.time, -2, false);
    return true;
}

bool nextPose(const PressContext& press)
{
    stepToNeighbour(press.figure, press.time, +1);
    return true;
}

bool nextProduct(const PressContext& press)
{
    stepPose(press.figure, press.time, +1, true);
    return true;
}

bool lastPose(const PressContext& press)
{
    stepPose(press.figure, press.time, +2, false);
    return true;
}

// ---- filters, locks, the current pose

bool toggleArea(const PressContext& press)
{
    toggleAreaFilter(press.which, press.figure, press.time);
    return true;
}

bool toggleFemale(const PressContext& press)
{
    toggleFemaleFilter(press.figure, press.time);
    return true;
}

bool toggleMale(const PressContext& press)
{
    toggleMaleFilter(press.figure, press.time);
    return true;
}

bool toggleMirrored(const PressContext& press)
{
    toggleMirroredPose(press.figure, press.time);
    return true;
}

bool advanceRank(const PressContext& press)
{
    noteSaveResult(advanceCurrentRank(press.figure));
    return true;
}

bool togglePartLock(const PressContext& press)
{
    toggleLockOfPart(press.which, press.figure, press.time);
    return true;
}

bool openFolderOrDelete(const PressContext& press)
{
    openFolderOrDeletePose(press.figure, press.time);
    return true;
}

bool toggleReference(const PressContext& press)
{
    toggleReferenceOverlay(press.overlayBefore, press.figure, press.time);
    return true;
}

bool toggleRankFilter(const PressContext& press)
{
    toggleRankFilterBit(press.which, press.figure, press.time);
    return true;
}

} // namespace quillon
