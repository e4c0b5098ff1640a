#include "finder/pose_apply.h"

#include "finder/browse_options.h"
#include "finder/browse_setup.h"
#include "finder/figure_facing.h"
#include "finder/figure_place.h"
#include "finder/pose_index.h"
#include "finder/pose_ranks.h"
#include "finder/selected_figure.h"
#include "pane/page_state.h"
#include "ground/plugin_settings.h"
#include "posefile/part_locks.h"
#include "posefile/pose_reader.h"
#include "posefile/reference_pose.h"
#include "posefile/swap_symmetrize.h"

#include "dzbone.h"
#include "dzskeleton.h"
#include "dzundostack.h"

namespace quillon {

static const char kUndoCaption[] = "quillon_stack";
static const bool kResetFirst = true;

static unsigned g_applied = 0;

unsigned appliedPoseCount()
{
    return g_applied;
}

void countSceneChange()
{
    ++g_applied;
}

// ---- the tables

void ensureSetUp(DzSkeleton* figure, DzTime time)
{
    const int type = pageState().browsingCategory;
    if (!isSetUpFor(type) && setUpFor(type, figure, time))
        countSceneChange();
}

bool prepareFigure(DzSkeleton* figure, DzTime time)
{
    ensureSetUp(figure, time);
    return followFigure(figure, time);
}

// ---- a pose

static void applyReference()
{
    applyPoseFile(referencePosePath(), kResetFirst);
}

// The neighbour against the direction takes over; -1 when it was the last pose of all.
static int positionWithout(int removed, SearchDirection direction)
{
    const int count = poseCount();
    if (count == 0)
        return -1;
    return direction == SearchForwards ? (removed + count - 1) % count : removed % count;
}

static void dropCurrentPose(SearchDirection direction)
{
    qint32& position = pluginSettings().currentPose;
    removeEntry(position);
    position = positionWithout(position, direction);
    writePoseIndex();
}

static void applyFoundPose(SearchDirection direction)
{
    if (pageState().referenceOverlay)
        return applyReference();
    const QString path = poseEntry(pluginSettings().currentPose)->path;
    if (applyPoseFile(path, kResetFirst))
        return;
    dropCurrentPose(direction);
    applyReference();
}

// Locked parts take the reference pose before they are locked.
static void applyWithLocks(DzSkeleton* figure, DzTime time, SearchDirection direction)
{
    clearUnlockedParts(figure);
    if (anyPartLockOn())
        applyReference();
    setPartLocks(figure, true);
    applyFoundPose(direction);
    putBackRotationUnderHip(time);
    setPartLocks(figure, false);
}

// A figure that stands so at the next press has not been moved by the user.
static void noteFigureLeft(DzSkeleton* figure, DzTime time)
{
    hipChanged(figure, StoreHip, time);
    notePlaceLeft(time);
}

void applyCurrentPose(DzSkeleton* figure, DzTime time, SearchDirection direction)
{
    DzUndoStackHold hold;
    releaseBrowsingLimits(figure);
    putBackRotation(time); // else the last step's turn would end up in the hip
    applyWithLocks(figure, time, direction);
    putBackPlace(time); // before the turn, which moves the figure round its hip
    turnToStoredFacing(figure, time);
    enforceBrowsingLimits(figure);
    noteFigureLeft(figure, time);
    refreshCurrentRank();
    hold.accept(QLatin1String(kUndoCaption));
    countSceneChange();
    pageState().tablesValid = true;
}

void reapplyCurrentPose(DzSkeleton* figure, DzTime time)
{
    if (!hipOf(figure) || !poseEntry(pluginSettings().currentPose))
        return;
    prepareFigure(figure, time);
    applyCurrentPose(figure, time, SearchHere);
}

bool mirrorCurrentPose(DzSkeleton* figure, DzTime time)
{
    if (!hipOf(figure))
        return false;
    DzUndoStackHold hold;
    if (!mirrorWholePose(figure, time)) {
        hold.cancel();
        return false;
    }
    turnToStoredFacing(figure, time);
    noteFigureLeft(figure, time);
    hold.accept(QLatin1String(kUndoCaption));
    countSceneChange();
    return true;
}

bool reapplyCurrentPoseMirrored(DzSkeleton* figure, DzTime time)
{
    const unsigned applied = g_applied;
    DzUndoStackHold hold;
    reapplyCurrentPose(figure, time);
    if (mirrorCurrentPose(figure, time)) {
        hold.accept(QLatin1String(kUndoCaption));
        return true;
    }
    hold.cancel();
    noteFigureLeft(figure, time);
    g_applied = applied;
    return false;
}

} // namespace quillon
