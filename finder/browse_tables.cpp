#include "finder/browse_tables.h"

#include "finder/category_table.h"
#include "finder/pose_signature.h"
#include "ground/plugin_settings.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace quillon {

static const int kPartCount = kSignatureSlots - 1; // all but the hip
static const float kRadPerDegSingle = 0.017453292f; // single precision, as the angles made of it

static Images imagesOf(const Probe& probe)
{
    return Images {
        {probe.y.m_x, probe.y.m_y, probe.y.m_z}, {probe.z.m_x, probe.z.m_y, probe.z.m_z}};
}

static void forgetVerdicts(BrowseTables* tables)
{
    for (EntryFacts& each : tables->facts)
        each.nearby = each.away = 0;
}

void makeYawTable(BrowseTables* tables, int type, const DzSkeleton* figure, DzTime time)
{
    const DzQuat base
        = categoryRow(type).parts ? poseTypeBase(type) : slotRotation(figure, HipSlot, time);
    for (int i = 0; i < kYawCount; ++i) {
        tables->yaw[i] = base * DzQuat(DzVec3(0, 1, 0), double(float(i) * kRadPerDegSingle));
        tables->yawProbes[i] = probeOf(tables->yaw[i]);
        tables->yawImages.at[i] = imagesOf(tables->yawProbes[i]);
    }
    makeBalls(&tables->yawImages);
    forgetVerdicts(tables);
}

void setPartReferences(BrowseTables* tables, int type, const DzSkeleton* figure, DzTime time)
{
    const PartReferences* parts = categoryRow(type).parts;
    for (int slot = TorsoSlot; slot < kSignatureSlots; ++slot) {
        const double* q = parts ? (*parts)[slot] : nullptr;
        tables->references[slot]
            = q ? DzQuat(q[0], q[1], q[2], q[3]) : slotRotation(figure, SignatureSlot(slot), time);
        tables->referenceProbes[slot] = probeOf(tables->references[slot]);
        tables->referenceImages[slot] = imagesOf(tables->referenceProbes[slot]);
    }
    forgetVerdicts(tables);
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

// ---- verdicts

// Whether the images of the slot are known now; if not, they are not near.
static bool takeImages(BrowseTables* tables, int slot, const DzQuat& q, Images* images)
{
    const Images guess = guessedImages(q.m_x, q.m_y, q.m_z, q.m_w);
    const bool mayMatch = slot == HipSlot ? mayBeNearSome(tables->yawImages, guess)
                                          : mayBeNear(guess, tables->referenceImages[slot]);
    if (mayMatch)
        *images = imagesOf(probeOf(q));
    return mayMatch;
}

static bool isSlotNear(BrowseTables* tables, int entry, int slot, EntryFacts* facts)
{
    std::vector<Images>& ofSlot = tables->images[slot];
    if (entry >= int(ofSlot.size()))
        ofSlot.resize(std::size_t(poseCount()));
    Images* images = &ofSlot[std::size_t(entry)];
    const quint16 bit = quint16(1u << slot);
    if (!(facts->imaged & bit)) {
        if (!takeImages(tables, slot, poseEntry(entry)->signature[slot], images))
            return false;
        facts->imaged |= bit;
    }
    return slot == HipSlot ? isNearSome(tables->yawImages, *images)
                           : areNear(*images, tables->referenceImages[slot]);
}

static EntryFacts* factsOf(BrowseTables* tables, int entry, quint32 stamp)
{
    if (entry >= int(tables->facts.size()))
        tables->facts.resize(std::size_t(poseCount()));
    EntryFacts* facts = &tables->facts[std::size_t(entry)];
    if (facts->stamp != stamp) {
        *facts = EntryFacts();
        facts->stamp = stamp;
    }
    return facts;
}

template <typename T> static void removeFrom(std::vector<T>* of, int entry)
{
    if (entry < int(of->size()))
        of->erase(of->begin() + entry);
}

void forgetFacts(BrowseTables* tables, int removed)
{
    removeFrom(&tables->facts, removed);
    for (std::vector<Images>& ofSlot : tables->images)
        removeFrom(&ofSlot, removed);
}

// The dear hip comes last.
bool isMatch(BrowseTables* tables, int entry)
{
    const PoseIndexEntry* e = poseEntry(entry);
    if (!e || !e->hasSignature)
        return false;
    EntryFacts* facts = factsOf(tables, entry, e->stamp);
    const unsigned wanted = tables->filters.slotBits;
    if (wanted & facts->away)
        return false;
    const unsigned unknown = wanted & ~facts->nearby;
    for (int slot = kSignatureSlots - 1; unknown != 0 && slot >= 0; --slot) {
        const quint16 bit = quint16(1u << slot);
        if (!(unknown & bit))
            continue;
        const bool isNear = isSlotNear(tables, entry, slot, facts);
        (isNear ? facts->nearby : facts->away) |= bit;
        if (!isNear)
            return false;
    }
    return true;
}

} // namespace quillon
