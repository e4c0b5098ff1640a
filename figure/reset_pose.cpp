#include "figure/reset_pose.h"

#include "figure/body_parts.h"
#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "figure/node_place.h"
#include "figure/part_tables.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzskeleton.h"

#include <cmath>
#include <limits>
#include <utility>

namespace quillon {

namespace {

const float kZeroThreshold = std::numeric_limits<float>::epsilon(); // 1.1920929e-07
const int kHipNumber = 0;
const char* const kFacsPrefix = "facs_";

struct LocalPlacement {
    DzMatrix3 scale;
    DzQuat rot_local;
    DzVec3 posCm_local;
    bool reset;
};

LocalPlacement g_placements[kBoneCount]; // by bone number; rewritten by every selection reset

struct SelectionReset {
    DzSkeleton* figure;
    int mode;
    DzTime time;
};

} // namespace

static void zero(DzFloatProperty* property, DzTime time)
{
    if (std::fabs(property->getValue(time)) > kZeroThreshold)
        property->setValue(time, 0);
}

static bool isBodyControlProperty(const DzFloatProperty* property)
{
    return isBodyControl(controlNameOf(property));
}

static bool isFacsControlProperty(const DzFloatProperty* property)
{
    const QString name = controlNameOf(property);
    return name.startsWith(QLatin1String(kFacsPrefix)) && isBodyControl(name);
}

static void zeroThroughLinks(
    DzFloatProperty* property, DzTime time, const FollowDriver& follow = isBodyControlProperty)
{
    for (DzFloatProperty* each : driversFirst(property, follow))
        zero(each, time);
}

static void zeroCorrective(const char* name, const DzNode* bone, DzTime time)
{
    if (DzFloatProperty* control = findControl(QLatin1String(name), bone))
        zeroThroughLinks(control, time);
}

static void zeroCorrectives(const DzNode* bone, DzTime time)
{
    const QString boneName = bone->getName();
    if (isFaceBone(boneName)) {
        for (const char* name : kFaceCorrectives)
            zeroCorrective(name, bone, time);
    }
    for (const CorrectivePair& pair : kBodyCorrectives) {
        if (!boneName.contains(QLatin1String(pair.bone)))
            continue;
        for (const char* name : pair.controls)
            zeroCorrective(name, bone, time);
    }
}

// Brings a channel to 0 that was zeroed while a control still drove it: it holds the opposite of
// that control's share now. Limits may hide the share, not remove it.
static void zeroLeftShares(const DzNode* bone, DzTime time)
{
    for (DzFloatProperty* channel : poseChannelsOf(bone).channel) {
        if (!channel->hasControllers())
            continue;
        const bool hidden = channel->isClamped() && channel->getRawValue(time) != 0;
        if (hidden || channel->getValue(time) != 0)
            channel->setValue(time, 0);
    }
}

bool inResetPart(const DzNode* bone, int mode)
{
    const QString name = bone->getName();
    const bool extremity = isFaceBone(name) || isHandBone(name) || isFootBone(name);
    switch (mode) {
    case ResetBody:
        return !extremity;
    case ResetExtremities:
        return extremity;
    case ResetSelected:
        return true;
    default:
        return false;
    }
}

void zeroBoneChannels(DzNode* bone, DzTime time)
{
    for (DzFloatProperty* channel : poseChannelsOf(bone).channel)
        zero(channel, time);
}

void resetBone(DzNode* bone, DzTime time)
{
    zeroCorrectives(bone, time);
    for (DzFloatProperty* channel : poseChannelsOf(bone).channel)
        zeroThroughLinks(channel, time);
}

void zeroFacsMorphs(DzNode* figure, DzTime time)
{
    const DzObject* object = figure->getObject();
    for (int i = 0; object && i < object->getNumModifiers(); ++i) {
        const DzMorph* morph = qobject_cast<DzMorph*>(object->getModifier(i));
        if (morph && morph->getName().startsWith(QLatin1String(kFacsPrefix)))
            zero(morph->getValueChannel(), time);
    }
}

static void resetWholeFigure(DzSkeleton* figure, DzTime time)
{
    const std::vector<FigureBone> bones = bonesOf(figure);
    for (const FigureBone& each : bones)
        zeroBoneChannels(each.bone, time);
    for (const FigureControl& each : controlsOf(figure))
        zeroThroughLinks(each.property, time);
    if (isGenesis81())
        zeroFacsMorphs(figure, time);
    for (const FigureBone& each : bones)
        zeroLeftShares(each.bone, time);
}

// ---- selection

static void rememberPlacements(const std::vector<FigureBone>& bones, DzTime time)
{
    for (const FigureBone& each : bones) {
        LocalPlacement& kept = g_placements[each.number];
        kept.scale = each.bone->getLocalScale(time);
        kept.rot_local = each.bone->getLocalRot(time);
        kept.posCm_local = each.bone->getLocalPos(time);
        kept.reset = false;
    }
}

// A round trip through rotation or scale leaves noise and keys: only what moved is written.
static void putBackOthers(const std::vector<FigureBone>& bones, DzTime time)
{
    for (const FigureBone& each : bones) {
        const LocalPlacement& kept = g_placements[each.number];
        if (kept.reset)
            continue;
        if (each.bone->getLocalScale(time) != kept.scale)
            each.bone->setLocalScale(time, kept.scale);
        if (each.bone->getLocalRot(time) != kept.rot_local)
            each.bone->setLocalRot(time, kept.rot_local);
        if (each.bone->getLocalPos(time) != kept.posCm_local)
            each.bone->setLocalPos(time, kept.posCm_local);
    }
}

static void resetOnce(DzNode* bone, int boneNumber, DzTime time)
{
    if (g_placements[boneNumber].reset)
        return; // selected itself and below a selected one
    resetBone(bone, time);
    g_placements[boneNumber].reset = true;
}

static void resetBelow(const DzNode* bone, const SelectionReset& reset)
{
    DzNodeList below;
    bone->getNodeChildren(below, true);
    for (DzNode* node : std::as_const(below)) {
        const int number = boneIndex(node->getName());
        const bool ownBone
            = number >= 0 && isFigureNode(node) && node->getSkeleton() == reset.figure;
        if (ownBone && inResetPart(node, reset.mode))
            resetOnce(node, number, reset.time);
    }
}

static void turnUpright(DzNode* hip, DzTime time)
{
    if (hip->getWSRot(time) != DzQuat())
        turnTo(hip, time, DzQuat());
    g_placements[kHipNumber].reset = true;
}

static void resetSelectedBones(const std::vector<FigureBone>& bones, const SelectionReset& reset)
{
    const bool root = reset.figure->isSelected();
    const bool fromHip = root && reset.mode == ResetExtremities; // all of them hang below the hip
    const bool everyBone = root && !fromHip;
    for (auto each = bones.rbegin(); each != bones.rend(); ++each) {
        const bool isHip = each->number == kHipNumber;
        if (!everyBone && !each->bone->isSelected() && !(isHip && fromHip))
            continue;
        if (!everyBone && reset.mode != ResetSelected)
            resetBelow(each->bone, reset);
        if (isHip && reset.mode != ResetExtremities)
            turnUpright(each->bone, reset.time);
        else if (inResetPart(each->bone, reset.mode))
            resetOnce(each->bone, each->number, reset.time);
    }
}

static bool anyFaceBoneReset(const std::vector<FigureBone>& bones)
{
    for (const FigureBone& each : bones) {
        if (g_placements[each.number].reset && isFaceBone(boneName(each.number)))
            return true;
    }
    return false;
}

static void zeroFacsControls(DzSkeleton* figure, DzTime time)
{
    for (const FigureControl& each : controlsOf(figure)) {
        if (controlName(each.number).startsWith(QLatin1String(kFacsPrefix)))
            zeroThroughLinks(each.property, time, isFacsControlProperty);
    }
    zeroFacsMorphs(figure, time);
}

static void resetSelection(const SelectionReset& reset)
{
    const std::vector<FigureBone> bones = bonesOf(reset.figure);
    rememberPlacements(bones, reset.time);
    resetSelectedBones(bones, reset);
    putBackOthers(bones, reset.time);
    if (isGenesis81() && anyFaceBoneReset(bones)) {
        zeroFacsControls(reset.figure, reset.time);
        putBackOthers(bones, reset.time); // face bones that these controls held in place
    }
}

void resetPose(DzNode* figure, int mode)
{
    DzSkeleton* skeleton = figure ? figure->getSkeleton() : nullptr;
    if (!skeleton)
        return;
    const DzTime time = dzScene->getTime();
    if (mode == ResetWholeFigure)
        resetWholeFigure(skeleton, time);
    else if (mode >= ResetBody && mode <= ResetSelected)
        resetSelection(SelectionReset {skeleton, mode, time});
}

} // namespace quillon
