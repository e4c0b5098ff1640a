#include "finder/pose_similarity.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace quillon {

static const float kLeastScore = 0.001f;
static const float kLastRejectingTolerance = 2.0f;
static const float kMirrorTolerance = 0.1f;

// ---- two rotations

Probe probeOf(const DzQuat& q)
{
    return Probe {q.multVec(DzVec3(0, 1, 0)), q.multVec(DzVec3(0, 0, 1))};
}

static float scoreOf(const DzVec3& a, const DzVec3& b, float tolerance)
{
    const float score = 1.0f - (a - b).length() / tolerance;
    return std::max(0.0f, std::min(1.0f, score));
}

float probeSimilarity(const Probe& a, const Probe& b, float tolerance)
{
    if (tolerance == 0)
        return 1;
    const float score = std::min(scoreOf(a.y, b.y, tolerance), scoreOf(a.z, b.z, tolerance));
    return tolerance <= kLastRejectingTolerance && score <= kLeastScore ? kRejected : score;
}

float partSimilarity(const DzQuat& a, const DzQuat& b, float tolerance)
{
    return probeSimilarity(probeOf(a), probeOf(b), tolerance);
}

// ---- two entries

// The slot of the other side; hip and torso are their own.
// clang-format off
static const SignatureSlot kOtherSide[] = {
    HipSlot, TorsoSlot, RightShinSlot, LeftShinSlot, RightThighSlot, LeftThighSlot,
    RightArmSlot, LeftArmSlot, RightForearmSlot, LeftForearmSlot};
// clang-format on
static_assert(std::size(kOtherSide) == std::size_t(kSignatureSlots), "one row per slot");

MirrorMarks mirrorMarksOf(const PoseIndexEntry& entry)
{
    MirrorMarks marks;
    for (int slot = 0; slot < kSignatureSlots; ++slot) {
        marks.y[slot] = float(entry.signature[slot].m_y);
        marks.z[slot] = float(entry.signature[slot].m_z);
    }
    return marks;
}

static bool areOpposite(float a, float b)
{
    return std::fabs(a - -b) < kMirrorTolerance;
}

bool areMirrored(const MirrorMarks& a, const MirrorMarks& b)
{
    for (int slot = 0; slot < kSignatureSlots; ++slot) {
        const SignatureSlot other = kOtherSide[slot];
        if (!areOpposite(a.y[slot], b.y[other]) || !areOpposite(a.z[slot], b.z[other]))
            return false;
    }
    return true;
}

bool isMirrorOf(int entryA, int entryB)
{
    const PoseIndexEntry *a = poseEntry(entryA), *b = poseEntry(entryB);
    return a && b && areMirrored(mirrorMarksOf(*a), mirrorMarksOf(*b));
}

PoseProbes probesOf(const PoseIndexEntry& entry)
{
    PoseProbes probes;
    probes.figureCode = entry.figureCode;
    for (int slot = 0; slot < kSignatureSlots; ++slot)
        probes.slot[slot] = probeOf(entry.signature[slot]);
    return probes;
}

bool areSimilar(const PoseProbes& a, const PoseProbes& b)
{
    if (a.figureCode != b.figureCode)
        return false;
    for (int slot = 0; slot < kSignatureSlots; ++slot) {
        if (probeSimilarity(a.slot[slot], b.slot[slot], kDuplicateTolerance) < 0)
            return false;
    }
    return true;
}

bool isSimilarPose(int entryA, int entryB)
{
    const PoseIndexEntry *a = poseEntry(entryA), *b = poseEntry(entryB);
    return a && b && areSimilar(probesOf(*a), probesOf(*b));
}

} // namespace quillon
