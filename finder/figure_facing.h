// figure_facing.h - how a figure lies and which way it faces, so that a found pose can be turned to
// face the same way, and whether the user has moved it since.
// Hip orientation is that of a signature's first slot. Directions are in the world, unit length.
// Nothing here changes the scene.
#pragma once

#include "finder/category_table.h"
#include "ground/host_types.h"

class DzSkeleton;

namespace quillon {

struct FigureFacing {
    int currentType = AllPoses; // class of the hip when it was last derived, not of a pose since
    DzVec3 direction = DzVec3(0, 0, 1); // horizontal
    DzQuat hipRot_world; // identity: cleared
    DzVec3 hipPosCm_world;
};

// Standing, upside down or one of the four lying types, by the axis that points up or down by more
// than 45 degrees; AllPoses when a number is none. Never Sitting.
int classifyHipOrientation(const DzQuat& hip);

// The horizontal direction that a figure with this hip faces; +Z where it has none. For hips
// between two classes it depends on currentType, the class of another hip.
DzVec3 facingDirection(const DzQuat& hip, int currentType);

// The turn that makes a figure facing +Z face the direction, its up axis towards up. The identity
// for a direction of no length.
DzQuat facingRotation(const DzVec3& direction, const DzVec3& up);

// Takes type, direction and hip position from the figure; the hip's orientation stays as stored.
void deriveFacing(FigureFacing*, const DzSkeleton* figure, DzTime time);

// Keeps the hip's orientation and position as they are now; nothing without a hip.
void storeHip(FigureFacing*, const DzSkeleton* figure, DzTime time);

// Whether a component of the orientation or a coordinate (cm) differs from the stored one by 0.1 or
// more. False without a hip.
bool hasHipMoved(const FigureFacing&, const DzSkeleton* figure, DzTime time);

} // namespace quillon
