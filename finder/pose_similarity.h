// pose_similarity.h - how alike two poses are, and how well a pose fits the type browsed for.
//
// Two rotations are compared by what they make of the axes Y and Z. With a tolerance of at most 2
// a comparison passes with a score in (0.001, 1] or is rejected with a value that no sum of passing
// ones outweighs; above 2 it only ranks. All scores are single precision.
// Owns: the yaw table, the part references and the similarity filters of the type browsed for.
#pragma once

#include "finder/pose_index.h"

#include "dztime.h"
#include "dzvec3.h"

class DzSkeleton;

namespace quillon {

const float kRejected = -1000000.0f;
const float kDuplicateTolerance = 0.5f; // of the scanner's last test
const float kBrowseTolerance = 0.75f;

// ---- two rotations

// The images of the probe axes, all that a comparison looks at.
struct Probe {
    DzVec3 y, z;
};
Probe probeOf(const DzQuat&);
float probeSimilarity(const Probe& a, const Probe& b, float tolerance);

// Tolerance 0: always 1.
float partSimilarity(const DzQuat& a, const DzQuat& b, float tolerance);

// ---- two entries of the pose index; false when one of them is none

// Whether b is a with left and right exchanged. Only the y and z components are looked at and signs
// are not normalised, so two different symmetric poses are mirrors, too.
bool isMirrorOf(int entryA, int entryB);
// Same figure code, and no slot rejected at kDuplicateTolerance.
bool isSimilarPose(int entryA, int entryB);

// The same for passes that hold one entry against thousands: what the tests look at, taken from an
// entry once.
struct MirrorMarks {
    float y[kSignatureSlots], z[kSignatureSlots];
};
MirrorMarks mirrorMarksOf(const PoseIndexEntry&);
bool areMirrored(const MirrorMarks& a, const MirrorMarks& b);

struct PoseProbes {
    quint32 figureCode;
    Probe slot[kSignatureSlots];
};
PoseProbes probesOf(const PoseIndexEntry&);
bool areSimilar(const PoseProbes& a, const PoseProbes& b);

// ---- an entry and the type browsed for

// 360 turns of the type's hip orientation, by whole degrees; of ReferencePose, of the figure's.
void buildYawTable(int type, const DzSkeleton* figure, DzTime time);
const int kYawCount = 360;
const DzQuat& yawRotation(int degrees); // 0..kYawCount-1

// Slots 2 to 10 of the type; of ReferencePose, the figure's own.
void setPartReferences(int type, const DzSkeleton* figure, DzTime time);
const DzQuat& partReference(SignatureSlot slot); // not HipSlot

// Which slots take part in the score: by the type; for ReferencePose, by the user's settings.
struct SimilarityFilters {
    bool on[kSignatureSlots];
};
void setSimilarityFilters(int type);
const SimilarityFilters& similarityFilters();

// Above 0 exactly when no slot that takes part is rejected; kRejected without a signature.
float browseScore(int entry);

// The best score of the hip against the yaw table.
float bestYawSimilarity(const DzQuat& hip);

} // namespace quillon
