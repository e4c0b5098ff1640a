#include "figure/bake_pose.h"

#include "figure/channel_snapshot.h"
#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "figure/pose_limits.h"
#include "figure/same_place.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

#include <algorithm>
#include <cmath>

namespace quillon {

namespace {

// How a bone looked before the bake. Only the bones of the part keep more than the scale.
struct KeptBone {
    DzBone* bone;
    bool inPart;
    NodePlace world;
    ChannelSnapshot turn; // the three rotation channels
};

} // namespace

static KeptBone keepBone(DzBone* bone, bool inPart, DzTime time)
{
    if (!inPart)
        return KeptBone {bone, false, {bone->getWSScale(time), DzQuat(), DzVec3()}, {}};
    return KeptBone {bone, true, worldPlaceOf(bone, time),
        {keepValue(bone->getXRotControl(), time), keepValue(bone->getYRotControl(), time),
            keepValue(bone->getZRotControl(), time)}};
}

static std::vector<KeptBone> keepBones(const DzNode* figure, const BoneSet& part, DzTime time)
{
    std::vector<KeptBone> kept;
    for (const FigureBone& each : bonesOf(figure))
        kept.push_back(keepBone(each.bone, part.test(size_t(each.number)), time));
    return kept;
}

static BoneSet numbersOf(const std::vector<FigureBone>& bones)
{
    BoneSet numbers;
    for (const FigureBone& each : bones)
        numbers.set(each.number);
    return numbers;
}

static std::vector<DzFloatProperty*> controlsDriving(const DzNode* figure, const BoneSet& driven)
{
    const FigureModel& model = modelOf(figure);
    std::vector<DzFloatProperty*> driving;
    for (const FigureControl& each : controlsOf(figure)) {
        if ((bonesDrivenBy(each.number, model) & driven).any())
            driving.push_back(each.property);
    }
    return driving;
}

static void zeroControls(const std::vector<DzFloatProperty*>& controls, DzTime time)
{
    const auto isListed = [&controls](const DzFloatProperty* driver) {
        return std::find(controls.begin(), controls.end(), driver) != controls.end();
    };
    for (DzFloatProperty* control : controls) {
        for (DzFloatProperty* each : driversFirst(control, isListed)) {
            if (std::fabs(each->getValue(time)) > kZeroThreshold)
                each->setValue(time, 0);
        }
    }
}

// The angles from before are within the limits, which the host knows nothing of while they are
// lifted: a rotation has other solutions. They lead to the same place unless a bone above that
// the bake leaves alone has moved.
static void turnBack(const KeptBone& kept, DzTime time)
{
    for (const KeptValue& channel : kept.turn)
        putBackLook(channel, time);
    if (!sameTurn(kept.bone->getWSRot(time), kept.world.rot))
        kept.bone->setWSRot(time, kept.world.rot);
}

// Parents first, each bone whole before the bones below it: a world scale may depend on the turns
// above. What is still in its place, as far as the host can tell, is not written: a round trip
// leaves noise and keys.
static void putBack(const std::vector<KeptBone>& kept, DzTime time)
{
    for (const KeptBone& each : kept) {
        if (!sameScale(each.bone->getWSScale(time), each.world.scale))
            each.bone->setWSScale(time, each.world.scale);
        if (!each.inPart)
            continue;
        turnBack(each, time);
        if (!samePlace(each.bone->getWSPos(time), each.world.posCm))
            each.bone->setWSPos(time, each.world.posCm);
    }
}

static void setPartLimits(DzNode* figure, FigureScope part, bool clamp, DzTime time)
{
    if (part == FigureScope::Face) {
        setFaceLimits(figure, clamp, true, time);
        return;
    }
    setBodyBoneLimits(figure, clamp, true, time);
    setBodyControlLimits(figure, clamp, true, time);
}

void bakePose(DzNode* figure, BakePart part, DzTime time)
{
    DzSkeleton* skeleton = figure ? figure->getSkeleton() : nullptr;
    if (!skeleton || !skeleton->findBone(QLatin1String("head")))
        return; // not a complete figure

    const FigureScope scope = part == BakeFace ? FigureScope::Face : FigureScope::Body;
    const BoneSet bones = numbersOf(bonesOf(skeleton, scope));
    // As they look, so before the limits are lifted.
    const std::vector<KeptBone> kept = keepBones(skeleton, bones, time);
    setPartLimits(skeleton, scope, false, time);
    zeroControls(controlsDriving(skeleton, bones), time);
    putBack(kept, time);
    setPartLimits(skeleton, scope, true, time);
    putBack(kept, time); // where a limit lifted a control off 0 again
}

} // namespace quillon
