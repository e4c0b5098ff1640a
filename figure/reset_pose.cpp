#include "figure/reset_pose.h"

#include "figure/body_parts.h"
#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "figure/node_place.h"
#include "figure/part_tables.h"

#include "dzbone.h"
#include "dzerclink.h"
#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzskeleton.h"
#include "dzundostack.h"

#include <algorithm>
#include <cmath>
#include <iterator>
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

// A link that multiplies by 0 lets nothing of the stored value through, in neither direction.
static bool linksHideStored(const DzFloatProperty* property, DzTime time)
{
    for (int i = 0; i < property->getNumControllers(); ++i) {
        const DzERCLink* link = qobject_cast<DzERCLink*>(property->getController(i));
        const bool scales = link
            && (link->getType() == DzERCLink::ERCMultiply3
                || link->getType() == DzERCLink::ERCDivideInto1);
        if (scales && link->getProperty() && link->getProperty()->getDoubleValue(time) == 0)
            return true;
    }
    return false;
}

// The value as it would be without limits.
static float unlimitedValue(DzFloatProperty* property, DzTime time)
{
    const float value = property->getValue(time);
    if (!property->isClamped() || (value > property->getMin() && value < property->getMax()))
        return value;
    if (!property->hasControllers())
        return property->getRawValue(time);
    const DzUndoStackLock unrecorded; // the flag is back at once
    property->setIsClamped(false);
    const float unlimited = property->getValue(time);
    property->setIsClamped(true);
    return unlimited;
}

static bool isAtZero(const DzFloatProperty* property, DzTime time)
{
    return std::fabs(property->getRawValue(time)) <= kZeroThreshold
        && std::fabs(property->getValue(time)) <= kZeroThreshold;
}

// Limits may hide what is stored: a value of -0.5 in a range that begins at 0 reads 0, would be
// memorized with the pose and come out when the limits are lifted. What is stored need not be 0
// where a driver that stays moves the property: it is the opposite of that driver's share then,
// and stays unwritten when it is that already.
static void zero(DzFloatProperty* property, DzTime time)
{
    if (isAtZero(property, time))
        return;
    const float stored = property->getRawValue(time);
    if (linksHideStored(property, time)) {
        if (stored != 0)
            property->setRawValue(time, 0);
    } else if (stored - unlimitedValue(property, time) != stored) {
        property->setValue(time, 0);
    }
}

static bool isBodyControlProperty(const DzFloatProperty* property)
{
    return isBodyControl(controlNameOf(property));
}

// A control or morph that a face reset of Genesis 8.1 takes along.
static bool isFacsProperty(const DzFloatProperty* property)
{
    const QString name = controlNameOf(property);
    return name.startsWith(QLatin1String(kFacsPrefix))
        && (isBodyControl(name) || qobject_cast<DzMorph*>(property->getOwner()));
}

static void zeroThroughLinks(
    DzFloatProperty* property, DzTime time, const FollowDriver& follow = isBodyControlProperty)
{
    for (DzFloatProperty* each : driversFirst(property, follow))
        zero(each, time);
}

// A walk through the links that zeroes each property once.
struct ZeroWalk {
    std::vector<DzFloatProperty*> listed; // sorted; only these are zeroed
    std::vector<bool> entered; // one for each
    DzTime time;
};

static void zeroDriversFirst(DzFloatProperty* property, ZeroWalk* walk)
{
    const auto at = std::lower_bound(walk->listed.begin(), walk->listed.end(), property);
    const size_t place = size_t(at - walk->listed.begin());
    if (at == walk->listed.end() || *at != property || walk->entered[place])
        return;
    walk->entered[place] = true;
    for (int i = 0; i < property->getNumControllers(); ++i) {
        if (DzFloatProperty* driver = driverAt(property, i))
            zeroDriversFirst(driver, walk);
    }
    zero(property, walk->time);
}

// Each of them after those of them that drive it.
static void zeroAll(const std::vector<DzFloatProperty*>& properties, DzTime time)
{
    const auto atZero = [time](const DzFloatProperty* each) { return isAtZero(each, time); };
    if (std::all_of(properties.begin(), properties.end(), atZero))
        return;
    ZeroWalk walk {properties, std::vector<bool>(properties.size()), time};
    std::sort(walk.listed.begin(), walk.listed.end());
    for (DzFloatProperty* each : properties)
        zeroDriversFirst(each, &walk);
}

static void appendPoseChannels(const DzNode* bone, std::vector<DzFloatProperty*>* out)
{
    const PoseChannels channels = poseChannelsOf(bone);
    out->insert(out->end(), std::begin(channels.channel), std::end(channels.channel));
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

static std::vector<DzFloatProperty*> facsMorphsOf(const DzNode* figure)
{
    std::vector<DzFloatProperty*> channels;
    const DzObject* object = figure->getObject();
    for (int i = 0; object && i < object->getNumModifiers(); ++i) {
        const DzMorph* morph = qobject_cast<DzMorph*>(object->getModifier(i));
        if (morph && morph->getName().startsWith(QLatin1String(kFacsPrefix)))
            channels.push_back(morph->getValueChannel());
    }
    return channels;
}

void zeroFacsMorphs(DzNode* figure, DzTime time)
{
    zeroAll(facsMorphsOf(figure), time);
}

static void resetWholeFigure(DzSkeleton* figure, DzTime time)
{
    std::vector<DzFloatProperty*> properties;
    if (isGenesis81())
        properties = facsMorphsOf(figure);
    for (const FigureControl& each : controlsOf(figure))
        properties.push_back(each.property);
    for (const FigureBone& each : bonesOf(figure))
        appendPoseChannels(each.bone, &properties);
    zeroAll(properties, time);
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
    for (DzFloatProperty* channel :
        {hip->getXRotControl(), hip->getYRotControl(), hip->getZRotControl()}) {
        if (channel->getValue(time) == 0)
            zero(channel, time); // limits may hide what is stored
    }
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
            zeroThroughLinks(each.property, time, isFacsProperty);
    }
    zeroFacsMorphs(figure, time);
}

// Channels may have been zeroed against a driver that the reset moved later.
static void settleReset(const std::vector<FigureBone>& bones, DzTime time)
{
    std::vector<DzFloatProperty*> channels;
    for (const FigureBone& each : bones) {
        if (g_placements[each.number].reset && each.number != kHipNumber)
            appendPoseChannels(each.bone, &channels);
    }
    zeroAll(channels, time);
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
    settleReset(bones, reset.time);
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
