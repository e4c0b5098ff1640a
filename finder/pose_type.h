// pose_type.h - the nine categories of poses, and the hip orientation that stands for each.
#pragma once

#include "dzquat.h"

namespace quillon {

enum PoseType {
    AllPoses,
    Sitting,
    Standing,
    LyingBellyUp,
    LyingBellyDown,
    LyingLeftSide,
    LyingRightSide,
    UpsideDown,
    ReferencePose
};

// Sets up the constant orientations. Called when the first pane is built.
void buildPoseTypeBases();
const DzQuat& poseTypeBase(int type); // AllPoses to UpsideDown

} // namespace quillon
