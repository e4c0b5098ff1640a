#include "posefile/pose_calls.h"

#include "figure/figure_kind.h"
#include "figure/selected_figure.h"
#include "ground/save_result.h"
#include "posefile/part_locks.h"
#include "posefile/pose_reader.h"
#include "posefile/pose_writer.h"
#include "posefile/reference_pose.h"
#include "posefile/swap_symmetrize.h"

#include "dzscene.h"
#include "dzskeleton.h"

namespace quillon {

bool applyPoseFile(const QString& path, bool resetFirst, SetChannel set)
{
    return applyPose(figureOf(selectedNode()), dzScene->getTime(), path, resetFirst, set);
}

bool writePoseFile(const QString& path, bool male, bool compressed)
{
    return writePose(figureOf(selectedNode()), dzScene->getTime(), path, male, compressed);
}

void memorizeReferencePose()
{
    noteSaveResult(memorizeReferenceOf(figureOf(selectedNode()), dzScene->getTime()));
}

void showReferencePose()
{
    showReferenceOn(figureOf(selectedNode()), dzScene->getTime());
}

void setPartLocks(DzNode* figure, bool on)
{
    setPartLocks(figure, on, dzScene->getTime());
}

bool applyThroughTempFiles(DzNode* figure, bool withChildren, bool useLocks, bool symmetrize,
    bool includeFace, bool mirrorAll)
{
    Rewriting how;
    how.withChildren = withChildren;
    how.useLocks = useLocks;
    how.symmetrize = symmetrize;
    how.includeFace = includeFace;
    how.mirrorAll = mirrorAll;
    return applyRewritten(figure, dzScene->getTime(), how);
}

bool swapOrSymmetrize(DzNode* figure, int reach, DzTime time, bool symmetrize)
{
    return swapOrSymmetrize(
        figure, reach == SelectedBonesOnly ? SelectedBonesOnly : BonesBelowToo, time, symmetrize);
}

} // namespace quillon
