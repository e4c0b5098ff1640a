#include "finder/browse_tables.h"

#include "finder/category_table.h"
#include "finder/pose_signature.h"
#include "ground/plugin_settings.h"

#include <algorithm>
#include <iterator>

namespace quillon {

static const int kPartCount = kSignatureSlots - 1; // all but the hip
static const float kRadPerDegSingle = 0.017453292f; // single precision, as the angles made of it

void makeYawTable(BrowseTables* tables, int type, const DzSkeleton* figure, DzTime time)
{
    const DzQuat base
        = categoryRow(type).parts ? poseTypeBase(type) : slotRotation(figure, HipSlot, time);
    for (int i = 0; i < kYawCount; ++i) {
        tables->yaw[i] = base * DzQuat(DzVec3(0, 1, 0), double(float(i) * kRadPerDegSingle));
        tables->yawProbes[i] = probeOf(tables->yaw[i]);
    }
}

void setPartReferences(BrowseTables* tables, int type, const DzSkeleton* figure, DzTime time)
{
    const PartReferences* parts = categoryRow(type).parts;
    for (int slot = TorsoSlot; slot < kSignatureSlots; ++slot) {
        const double* q = parts ? (*parts)[slot] : nullptr;
        tables->references[slot]
            = q ? DzQuat(q[0], q[1], q[2], q[3]) : slotRotation(figure, SignatureSlot(slot), time);
        tables->referenceProbes[slot] = probeOf(tables->references[slot]);
    }
}

// The user's setting of each slot.
// clang-format off
static const BodyArea kAreas[] = {
    AreaHip, AreaTorso, AreaLeftShin, AreaRightShin, AreaLeftThigh, AreaRightThigh,
    AreaLeftArm, AreaRightArm, AreaLeftForearm, AreaRightForearm};
// clang-format on
static_assert(std::size(kAreas) == std::size_t(kSignatureSlots), "one area per slot");

void setSimilarityFilters(BrowseTables* tables, int type)
{
    tables->filters.slotBits = isCategory(type) ? categoryRow(type).filters : 0;
    if (!isCategory(type) || !categoryRow(type).filtersByUser)
        return;
    for (int slot = 0; slot < kSignatureSlots; ++slot)
        tables->filters.slotBits |= unsigned(pluginSettings().similarity[kAreas[slot]]) << slot;
}

float bestYawSimilarity(const BrowseTables& tables, const DzQuat& hip)
{
    const Probe probe = probeOf(hip);
    float best = kRejected;
    for (const Probe& yaw : tables.yawProbes)
        best = std::max(best, probeSimilarity(probe, yaw, kBrowseTolerance));
    return best;
}

float browseScore(const BrowseTables& tables, int entry)
{
    const PoseIndexEntry* e = poseEntry(entry);
    if (!e || !e->hasSignature)
        return kRejected;
    const SimilarityFilters& filters = tables.filters;
    float sum = filters.on(HipSlot) ? bestYawSimilarity(tables, e->signature[HipSlot]) : 0;
    for (int slot = TorsoSlot; slot < kSignatureSlots; ++slot)
        sum += filters.on(slot) ? probeSimilarity(
                   probeOf(e->signature[slot]), tables.referenceProbes[slot], kBrowseTolerance)
                                : 1.0f;
    return sum / float(kPartCount + (filters.on(HipSlot) ? 1 : 0));
}

} // namespace quillon
