// finder_calls.h - the calls of this room that find figure, time and session by themselves: the
// figure of the primary selection, the scene's time, the one session. The room's edge for those who
// have none of them; nothing that a press runs comes through here.
#pragma once

#include "ground/host_types.h"

class DzSkeleton;

namespace quillon {

void selectPoseType(int type); // as on the picker page, see chooseCategory()

// See countMatches() and searchPose(). True when the user had moved the figure.
bool findPose(int step, bool productSkip, bool countOnly);

bool scanPoses();
void saveCustomPose();
bool deleteCustomPose(int entry);

// Of the session's tables and facing.
void buildYawTable(int type, const DzSkeleton* figure, DzTime time);
float browseScore(int entry);
DzVec3 facingDirection(const DzQuat& hip);

enum HipMode { ClearHip, StoreHip, CompareHip };

// See hasHipMoved() and storeHip(). ClearHip forgets the hip and rebuilds the yaw table of the
// category browsed. False without a change, in the other modes and without a hip.
bool hipChanged(DzSkeleton* figure, int mode, DzTime time);

} // namespace quillon
