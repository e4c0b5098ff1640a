#include "finder/pose_similarity.h"

#include "finder/pose_signature.h"
#include "finder/pose_type.h"
#include "ground/plugin_settings.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace quillon {

static const float kLeastScore = 0.001f;
static const float kLastRejectingTolerance = 2.0f;
static const float kMirrorTolerance = 0.1f;
static const int kPartCount = kSignatureSlots - 1; // all but the hip
static const float kRadPerDeg = 0.017453292f; // single precision, as the angles made of it

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

// ---- the type browsed for

static DzQuat g_yaw[kYawCount];
static Probe g_yawProbes[kYawCount];
static DzQuat g_references[kSignatureSlots]; // that of the hip is not used
static Probe g_referenceProbes[kSignatureSlots];
static SimilarityFilters g_filters;

void buildYawTable(int type, const DzSkeleton* figure, DzTime time)
{
    const DzQuat base
        = type == ReferencePose ? slotRotation(figure, HipSlot, time) : poseTypeBase(type);
    for (int i = 0; i < kYawCount; ++i) {
        g_yaw[i] = base * DzQuat(DzVec3(0, 1, 0), double(float(i) * kRadPerDeg));
        g_yawProbes[i] = probeOf(g_yaw[i]);
    }
}

const DzQuat& yawRotation(int degrees)
{
    Q_ASSERT_X(degrees >= 0 && degrees < kYawCount, "yawRotation", "whole degrees of one turn");
    return g_yaw[degrees];
}

namespace {

struct ReferenceRow {
    SignatureSlot slot;
    double sitting[4], other[4]; // x, y, z, w; made unit length
};

// clang-format off
const ReferenceRow kReferences[] = {
    {TorsoSlot,        { 0,      0,      0,     1    }, { 0,     0,  0,     1    }},
    {LeftShinSlot,     {-0.689, -0.104,  0.12,  0.707}, { 0,     0,  0,     1    }},
    {RightShinSlot,    {-0.689,  0.104, -0.12,  0.707}, { 0,     0,  0,     1    }},
    {LeftThighSlot,    { 0.698,  0.036, -0.122, 0.704}, { 0,     0,  0,     1    }},
    {RightThighSlot,   { 0.698, -0.036,  0.122, 0.704}, { 0,     0,  0,     1    }},
    {LeftArmSlot,      {-0.004,  0,      0.13,  0.991}, {-0.008, 0,  0.259, 0.966}},
    {RightArmSlot,     {-0.004,  0,     -0.13,  0.991}, {-0.008, 0, -0.259, 0.966}},
    {LeftForearmSlot,  { 0.268,  0.273,  0.008, 0.924}, { 0,     0,  0,     1    }},
    {RightForearmSlot, { 0.268, -0.273, -0.008, 0.924}, { 0,     0,  0,     1    }},
};
// clang-format on
static_assert(std::size(kReferences) == std::size_t(kPartCount), "one row per part");

} // namespace

void setPartReferences(int type, const DzSkeleton* figure, DzTime time)
{
    for (const ReferenceRow& row : kReferences) {
        const double* q = type == Sitting ? row.sitting : row.other;
        g_references[row.slot] = type == ReferencePose ? slotRotation(figure, row.slot, time)
                                                       : DzQuat(q[0], q[1], q[2], q[3]);
        g_referenceProbes[row.slot] = probeOf(g_references[row.slot]);
    }
}

const DzQuat& partReference(SignatureSlot slot)
{
    return g_references[slot];
}

namespace {

struct FilterRow {
    SignatureSlot slot;
    BodyArea area; // the user's setting for ReferencePose
    bool inType[ReferencePose]; // by pose type
};

// clang-format off
const FilterRow kFilters[] = {
    //                                All    Sit    Stand  Up     Down   Left   Right  Upside
    {HipSlot,          AreaHip,          {false, true,  true,  true,  true,  true,  true,  true }},
    {TorsoSlot,        AreaTorso,        {false, false, false, true,  true,  false, false, false}},
    {LeftShinSlot,     AreaLeftShin,     {false, false, false, false, false, false, false, false}},
    {RightShinSlot,    AreaRightShin,    {false, false, false, false, false, false, false, false}},
    {LeftThighSlot,    AreaLeftThigh,    {false, true,  true,  false, false, false, false, false}},
    {RightThighSlot,   AreaRightThigh,   {false, true,  true,  false, false, false, false, false}},
    {LeftArmSlot,      AreaLeftArm,      {false, false, false, false, false, false, false, false}},
    {RightArmSlot,     AreaRightArm,     {false, false, false, false, false, false, false, false}},
    {LeftForearmSlot,  AreaLeftForearm,  {false, false, false, false, false, false, false, false}},
    {RightForearmSlot, AreaRightForearm, {false, false, false, false, false, false, false, false}},
};
// clang-format on
static_assert(std::size(kFilters) == std::size_t(kSignatureSlots), "one row per slot");

} // namespace

void setSimilarityFilters(int type)
{
    const bool byUser = type == ReferencePose;
    const bool isType = type >= AllPoses && type < ReferencePose;
    for (const FilterRow& row : kFilters)
        g_filters.on[row.slot]
            = byUser ? pluginSettings().similarity[row.area] : isType && row.inType[type];
}

const SimilarityFilters& similarityFilters()
{
    return g_filters;
}

float bestYawSimilarity(const DzQuat& hip)
{
    const Probe probe = probeOf(hip);
    float best = kRejected;
    for (const Probe& yaw : g_yawProbes)
        best = std::max(best, probeSimilarity(probe, yaw, kBrowseTolerance));
    return best;
}

float browseScore(int entry)
{
    const PoseIndexEntry* e = poseEntry(entry);
    if (!e || !e->hasSignature)
        return kRejected;
    const bool withHip = g_filters.on[HipSlot];
    float sum = withHip ? bestYawSimilarity(e->signature[HipSlot]) : 0;
    for (int slot = TorsoSlot; slot < kSignatureSlots; ++slot)
        sum += g_filters.on[slot] ? probeSimilarity(
                   probeOf(e->signature[slot]), g_referenceProbes[slot], kBrowseTolerance)
                                  : 1.0f;
    return sum / float(kPartCount + (withHip ? 1 : 0));
}

} // namespace quillon
