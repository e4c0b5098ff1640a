// pose_calls.h - the calls of this room that find their figure by themselves, that of the primary
// selection, or ask the scene for the time, and those whose choices come as numbers or flags. The
// room's edge for those who have none of these; nothing that a press runs comes through here.
#pragma once

#include "ground/host_types.h"
#include "posefile/pose_channels.h"

#include <QString>

class DzNode;

namespace quillon {

// See applyPose(), writePose() and the commands of reference_pose.h.
bool applyPoseFile(const QString& path, bool resetFirst, SetChannel set = setStoredValue);
bool writePoseFile(const QString& path, bool male, bool compressed);
void memorizeReferencePose();
void showReferencePose();

void setPartLocks(DzNode* figure, bool on); // see part_locks.h

// See applyRewritten().
bool applyThroughTempFiles(DzNode* figure, bool withChildren, bool useLocks, bool symmetrize,
    bool includeFace, bool mirrorAll);

// Bones below the selected ones take part unless reach is 3, SelectedBonesOnly.
bool swapOrSymmetrize(DzNode* figure, int reach, DzTime time, bool symmetrize);

} // namespace quillon
