#include "figure/bake_pose.h"

#include "figure/body_parts.h"
#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "figure/pose_limits.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzscene.h"
#include "dzskeleton.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quillon {

namespace {

const float kZeroThreshold = std::numeric_limits<float>::epsilon(); // 1.1920929e-07

// Places by bone number; the scratch space of a bake. Rotation and position: bones of the part.
DzMatrix3 g_scale_world[kBoneCount];
DzQuat g_rot_world[kBoneCount];
DzVec3 g_posCm_world[kBoneCount];

} // namespace

static void rememberPlaces(const DzNode* figure, FigureScope part, DzTime time)
{
    for (const FigureBone& each : bonesOf(figure))
        g_scale_world[each.number] = each.bone->getWSScale(time);
    for (const FigureBone& each : bonesOf(figure, part)) {
        g_rot_world[each.number] = each.bone->getWSRot(time);
        g_posCm_world[each.number] = each.bone->getWSPos(time);
    }
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
    std::vector<DzFloatProperty*> driving;
    for (const FigureControl& each : controlsOf(figure)) {
        if ((bonesDrivenBy(each.number) & driven).any())
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

// Parents first, each bone whole before the bones below it: a world scale may depend on the turns
// above. What is still in its place is not written: a round trip through rotation or scale leaves
// noise and keys.
static void putBack(const DzNode* figure, const BoneSet& part, DzTime time)
{
    for (const FigureBone& each : bonesOf(figure)) {
        if (each.bone->getWSScale(time) != g_scale_world[each.number])
            each.bone->setWSScale(time, g_scale_world[each.number]);
        if (!part.test(each.number))
            continue;
        if (each.bone->getWSRot(time) != g_rot_world[each.number])
            each.bone->setWSRot(time, g_rot_world[each.number]);
        if (each.bone->getWSPos(time) != g_posCm_world[each.number])
            each.bone->setWSPos(time, g_posCm_world[each.number]);
    }
}

static void setPartLimits(DzNode* figure, FigureScope part, bool clamp)
{
    if (part == FigureScope::Face) {
        setFaceLimits(figure, clamp, true);
        return;
    }
    setBodyBoneLimits(figure, clamp, true);
    setBodyControlLimits(figure, clamp, true);
}

void bakePose(DzNode* figure, int mouseButton)
{
    DzSkeleton* skeleton = figure ? figure->getSkeleton() : nullptr;
    if (!skeleton || (mouseButton != BakeBody && mouseButton != BakeFace))
        return;
    if (!skeleton->findBone(QLatin1String("head")))
        return; // not a complete figure

    const DzTime time = dzScene->getTime();
    const FigureScope part = mouseButton == BakeFace ? FigureScope::Face : FigureScope::Body;
    setPartLimits(skeleton, part, false);
    rememberPlaces(skeleton, part, time);
    const BoneSet bones = numbersOf(bonesOf(skeleton, part));
    zeroControls(controlsDriving(skeleton, bones), time);
    putBack(skeleton, bones, time);
    setPartLimits(skeleton, part, true);
}

} // namespace quillon
