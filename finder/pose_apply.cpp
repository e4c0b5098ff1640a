#include "finder/pose_apply.h"

#include "figure/selected_figure.h"
#include "finder/browse_options.h"
#include "finder/browse_session.h"
#include "finder/browse_setup.h"
#include "finder/index_saves.h"
#include "finder/pose_index.h"
#include "finder/pose_ranks.h"
#include "ground/plugin_settings.h"
#include "ground/save_result.h"
#include "ground/undo_step.h"
#include "posefile/part_locks.h"
#include "posefile/pose_reader.h"
#include "posefile/reference_pose.h"
#include "posefile/swap_symmetrize.h"

#include "dzbone.h"
#include "dzskeleton.h"

namespace quillon {

static const bool kResetFirst = true;

SceneOutcome prepareFigure(BrowseSession* session, DzSkeleton* figure, DzTime time)
{
    SceneOutcome outcome;
    outcome.changed = ensureSetUp(session, figure, time);
    outcome.moved = followFigure(session, figure, time);
    return outcome;
}

// ---- a pose

static void applyReference(DzSkeleton* figure, DzTime time)
{
    applyPose(figure, time, referencePosePath(), kResetFirst);
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
    const QString path = poseEntry(position)->path;
    removeEntry(position);
    position = positionWithout(position, direction);
    noteSaveResult(saveVanishing(path));
}

static void applyFoundPose(
    const BrowseSession& session, DzSkeleton* figure, DzTime time, SearchDirection direction)
{
    if (session.referenceOverlay)
        return applyReference(figure, time);
    const QString path = poseEntry(pluginSettings().currentPose)->path;
    if (applyPose(figure, time, path, kResetFirst))
        return;
    dropCurrentPose(direction);
    applyReference(figure, time);
}

// Locked parts take the reference pose before they are locked.
static void applyWithLocks(
    const BrowseSession& session, DzSkeleton* figure, DzTime time, SearchDirection direction)
{
    clearUnlockedParts(figure, time);
    if (anyPartLockOn())
        applyReference(figure, time);
    setPartLocks(figure, true, time);
    applyFoundPose(session, figure, time, direction);
    putBackRotationUnderHip(session.place, time);
    setPartLocks(figure, false, time);
}

// A figure that stands so at the next press has not been moved by the user.
static void noteFigureLeft(BrowseSession* session, DzSkeleton* figure, DzTime time)
{
    storeHip(&session->facing, figure, time);
    notePlaceLeft(&session->place, time);
}

void applyCurrentPose(
    BrowseSession* session, DzSkeleton* figure, DzTime time, SearchDirection direction)
{
    UndoStep step;
    step.note(true);
    releaseBrowsingLimits(figure, time);
    putBackRotation(session->place, time); // else the last step's turn would end up in the hip
    applyWithLocks(*session, figure, time, direction);
    putBackPlace(session->place, time); // before the turn, which moves the figure round its hip
    turnToFacing(session->facing, figure, time);
    enforceBrowsingLimits(figure, time);
    noteFigureLeft(session, figure, time);
    refreshCurrentRank();
    session->tablesState = Applied;
}

bool reapplyCurrentPose(BrowseSession* session, DzSkeleton* figure, DzTime time)
{
    if (!hipOf(figure) || !poseEntry(pluginSettings().currentPose))
        return false;
    prepareFigure(session, figure, time);
    applyCurrentPose(session, figure, time, SearchHere);
    return true;
}

bool mirrorCurrentPose(BrowseSession* session, DzSkeleton* figure, DzTime time)
{
    if (!hipOf(figure))
        return false;
    UndoStep step;
    if (!mirrorWholePose(figure, time)) {
        step.cancel();
        return false;
    }
    turnToFacing(session->facing, figure, time);
    noteFigureLeft(session, figure, time);
    step.note(true);
    return true;
}

bool reapplyCurrentPoseMirrored(BrowseSession* session, DzSkeleton* figure, DzTime time)
{
    const TablesState tablesBefore = session->tablesState;
    UndoStep step;
    reapplyCurrentPose(session, figure, time);
    if (mirrorCurrentPose(session, figure, time)) {
        step.note(true);
        return true;
    }
    step.cancel();
    noteFigureLeft(session, figure, time);
    session->tablesState = tablesBefore; // what was set up or applied has been taken back
    return false;
}

} // namespace quillon
