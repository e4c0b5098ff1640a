// pose_signature.h - reduces the pose that a figure has to ten orientations.
// The hip's is that of the world, so it holds where the figure faces; the others are local.
// Missing figures and bones give the identity, or zero. Nothing here changes the scene.
#pragma once

#include "finder/pose_index.h"
#include "ground/host_types.h"

class DzSkeleton;

namespace quillon {

const char kHipName[] = "hip";

DzQuat boneLocalRotation(const DzSkeleton* figure, const QString& boneName, DzTime time);
// Turned further by yawDeg about the world's Y axis.
DzQuat boneWorldRotation(
    const DzSkeleton* figure, const QString& boneName, DzTime time, double yawDeg = 0);
DzVec3 boneWorldPosition(const DzSkeleton* figure, const QString& boneName, DzTime time); // cm
DzMatrix3 boneWorldScale(const DzSkeleton* figure, const QString& boneName, DzTime time);

// One slot of the figure's own signature; in HipSlot, the pelvis in the world.
DzQuat slotRotation(const DzSkeleton* figure, SignatureSlot slot, DzTime time);

// Writes all ten slots of the entry, or nothing when the figure has no hip.
void takeSignature(int entry, DzSkeleton* figure, DzTime time);

} // namespace quillon
