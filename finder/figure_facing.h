// figure_facing.h - how the selected figure lies and which way it faces, so that a found pose can
// be turned to face the same way, and whether the user has moved it since.
// Hip orientation is that of a signature's first slot. Directions are in the world, unit length.
// Owns: what was last derived from the figure. Nothing here changes the scene.
#pragma once

#include "finder/pose_type.h"

#include "dztime.h"
#include "dzvec3.h"

class DzSkeleton;

namespace quillon {

struct FigureFacing {
    int currentType = AllPoses; // class of the hip when it was last derived, not of a pose since
    DzVec3 direction = DzVec3(0, 0, 1); // horizontal
    DzQuat hipRot_world; // identity: cleared
    DzVec3 hipPosCm_world;
};
FigureFacing& figureFacing();

// Standing, upside down or one of the four lying types, by the axis that points up or down by more
// than 45 degrees; AllPoses when a number is none. Never Sitting.
int classifyHipOrientation(const DzQuat& hip);

// The horizontal direction that a figure with this hip faces; +Z where it has none. For hips
// between two classes it depends on the currentType that is stored.
DzVec3 facingDirection(const DzQuat& hip);

// The turn that makes a figure facing +Z face the direction, its up axis towards up. The identity
// for a direction of no length.
DzQuat facingRotation(const DzVec3& direction, const DzVec3& up);

// Takes type and direction from the figure, rebuilds the yaw table of poseType and stores the hip's
// position, but not its orientation.
void deriveFigureFacing(DzSkeleton* figure, int poseType, DzTime time);

enum HipMode { ClearHip, StoreHip, CompareHip };

// CompareHip: whether a component of the orientation or a coordinate (cm) differs from the stored
// one by 0.1 or more. StoreHip keeps both; ClearHip forgets both and rebuilds the yaw table of the
// category browsed. False without a change, in the other modes and without a hip.
bool hipChanged(DzSkeleton* figure, int mode, DzTime time);

} // namespace quillon
