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
DzVec3 g_anglesDeg[kBoneCount]; // of the rotation channels

} // namespace

static DzVec3 anglesDegOf(const DzNode* bone, DzTime time)
{
    return DzVec3(bone->getXRotControl()->getValue(time), bone->getYRotControl()->getValue(time),
        bone->getZRotControl()->getValue(time));
}

static void rememberPlaces(const DzNode* figure, FigureScope part, DzTime time)
{
    for (const FigureBone& each : bonesOf(figure))
        g_scale_world[each.number] = each.bone->getWSScale(time);
    for (const FigureBone& each : bonesOf(figure, part)) {
        g_rot_world[each.number] = each.bone->getWSRot(time);
        g_posCm_world[each.number] = each.bone->getWSPos(time);
        g_anglesDeg[each.number] = anglesDegOf(each.bone, time);
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

// The angles from before are within the limits, which the host knows nothing of while they are
// lifted: a rotation has other solutions. They lead to the same place unless a bone above that
// the bake leaves alone has moved.
static void turnBack(DzNode* bone, int number, DzTime time)
{
    DzFloatProperty* const channels[]
        = {bone->getXRotControl(), bone->getYRotControl(), bone->getZRotControl()};
    for (int axis = 0; axis < 3; ++axis) {
        if (channels[axis]->getValue(time) != g_anglesDeg[number][axis])
            channels[axis]->setValue(time, g_anglesDeg[number][axis]);
    }
    if (bone->getWSRot(time) != g_rot_world[number])
        bone->setWSRot(time, g_rot_world[number]);
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
        turnBack(each.bone, each.number, time);
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

void bakePose(DzNode* figure, int part)
{
    DzSkeleton* skeleton = figure ? figure->getSkeleton() : nullptr;
    if (!skeleton || (part != BakeBody && part != BakeFace))
        return;
    if (!skeleton->findBone(QLatin1String("head")))
        return; // not a complete figure

    const DzTime time = dzScene->getTime();
    const FigureScope scope = part == BakeFace ? FigureScope::Face : FigureScope::Body;
    rememberPlaces(skeleton, scope, time); // as they look, so before the limits are lifted
    setPartLimits(skeleton, scope, false);
    const BoneSet bones = numbersOf(bonesOf(skeleton, scope));
    zeroControls(controlsDriving(skeleton, bones), time);
    putBack(skeleton, bones, time);
    setPartLimits(skeleton, scope, true);
    putBack(skeleton, bones, time); // where a limit lifted a control off 0 again
}

} // namespace quillon
