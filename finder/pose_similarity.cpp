#include "finder/pose_similarity.h"

#include <algorithm>

namespace quillon {

static const float kLastRejectingTolerance = 2.0f;

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

static_assert(kMirrorSlots == kSignatureSlots && kPassSlots == kSignatureSlots,
    "rows hold every slot of a signature, in its order");

static bool takesPart(const PoseIndexEntry& entry)
{
    return entry.contentHash != 0 && !entry.isCustom;
}

MirrorRow mirrorRowOf(const PoseIndexEntry& entry)
{
    MirrorRow row;
    row.takesPart = takesPart(entry);
    float* number = row.yz;
    for (const DzQuat& q : entry.signature) {
        *number++ = float(q.m_y);
        *number++ = float(q.m_z);
    }
    return row;
}

SimilarRow similarRowOf(const PoseIndexEntry& entry)
{
    SimilarRow row;
    row.takesPart = takesPart(entry);
    row.figureCode = entry.figureCode;
    float* number = row.images;
    for (const DzQuat& q : entry.signature) {
        const Probe probe = probeOf(q);
        for (const DzVec3& image : {probe.y, probe.z}) {
            *number++ = float(image.m_x);
            *number++ = float(image.m_y);
            *number++ = float(image.m_z);
        }
    }
    return row;
}

bool isMirrorOf(int entryA, int entryB)
{
    const PoseIndexEntry *a = poseEntry(entryA), *b = poseEntry(entryB);
    return a && b && areMirroredRows(mirrorRowOf(*a), mirrorRowOf(*b));
}

bool isSimilarPose(int entryA, int entryB)
{
    const PoseIndexEntry *a = poseEntry(entryA), *b = poseEntry(entryB);
    return a && b && areSimilarRows(similarRowOf(*a), similarRowOf(*b));
}

} // namespace quillon
