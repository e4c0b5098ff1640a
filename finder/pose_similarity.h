// pose_similarity.h - how alike two poses are.
//
// Two rotations are compared by what they make of the axes Y and Z. With a tolerance of at most 2
// a comparison passes with a score in (0.001, 1] or is rejected with a value that no sum of passing
// ones outweighs; above 2 it only ranks. All scores are single precision.
#pragma once

#include "finder/image_match.h"
#include "finder/mirror_pass.h"
#include "finder/pose_index.h"
#include "finder/similar_pass.h"
#include "ground/host_types.h"

namespace quillon {

const float kRejected = -1000000.0f;

// ---- two rotations

// The images of the probe axes, all that a comparison looks at.
struct Probe {
    DzVec3 y, z; // unit length, as the rotation has
};
Probe probeOf(const DzQuat&);
// The worse of the two axes: 1 where the images agree, 0 where they are the tolerance apart or
// more, which up to a tolerance of 2 is kRejected. Tolerance 0, of a part that does not count:
// always 1. Not below 0.
float probeSimilarity(const Probe& a, const Probe& b, float tolerance);

// Unit quaternions; otherwise the same.
float partSimilarity(const DzQuat& a, const DzQuat& b, float tolerance);

// ---- two entries of the pose index; false when one of them is none

// Whether b is a with left and right exchanged. Only the y and z components are looked at and signs
// are not normalised, so two different symmetric poses are mirrors, too.
bool isMirrorOf(int entryA, int entryB);
// Same figure code, and no slot rejected at kDuplicateTolerance.
bool isSimilarPose(int entryA, int entryB);

// What the passes over a whole table look at, taken from an entry once. takesPart: neither dropped
// before nor of the custom library.
MirrorRow mirrorRowOf(const PoseIndexEntry&);
SimilarRow similarRowOf(const PoseIndexEntry&);

} // namespace quillon
