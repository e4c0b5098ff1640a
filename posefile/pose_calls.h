// pose_calls.h - the calls of this room that find their figure by themselves: that of the primary
// selection, at the scene's time. The room's edge for those who have neither; nothing that a press
// runs comes through here.
#pragma once

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

} // namespace quillon
