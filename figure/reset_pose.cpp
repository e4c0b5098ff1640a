#include "figure/reset_pose.h"

#include "figure/body_parts.h"
#include "figure/channel_snapshot.h"
#include "figure/figure_kind.h"
#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "figure/node_place.h"
#include "figure/same_place.h"

#include "dzbone.h"
#include "dzerclink.h"
#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzskeleton.h"
#include "dzundostack.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace quillon {

namespace {

const char* const kFacsPrefix = "facs_";

// One reset of selected bones, and what it has done so far.
struct SelectionReset {
    DzSkeleton* figure;
    const FigureModel& model;
    ResetMode mode;
    DzTime time;
    std::vector<FigureBone> bones;
    std::vector<NodePlace> local; // of the bones, before the reset
    BoneSet done; // by bone number
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

static FollowDriver bodyControlsOf(const FigureModel& model)
{
    return [&model](const DzFloatProperty* property) {
        return isBodyControl(controlNameOf(property), model);
    };
}

// The controls and morphs that a face reset takes along.
static FollowDriver facsPropertiesOf(const FigureModel& model)
{
    return [&model](const DzFloatProperty* property) {
        const QString name = controlNameOf(property);
        return name.startsWith(QLatin1String(kFacsPrefix))
            && (isBodyControl(name, model) || qobject_cast<DzMorph*>(property->getOwner()));
    };
}

static void zeroThroughLinks(DzFloatProperty* property, DzTime time, const FollowDriver& follow)
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

static void zeroCorrectives(
    const DzNode* bone, DzTime time, const FigureModel& model, const FollowDriver& follow)
{
    const auto zeroNamed = [&](const char* name) {
        if (DzFloatProperty* control = findControl(QLatin1String(name), bone))
            zeroThroughLinks(control, time, follow);
    };
    const QString name = bone->getName();
    if (isFaceBone(name, model))
        std::for_each(model.faceCorrectives.begin(), model.faceCorrectives.end(), zeroNamed);
    for (int i = 0; i < model.bodyCorrectiveCount; ++i) {
        const CorrectivePair& pair = model.bodyCorrectives[i];
        if (name.contains(QLatin1String(pair.bone)))
            std::for_each(std::begin(pair.controls), std::end(pair.controls), zeroNamed);
    }
}

static bool inPart(const DzNode* bone, ResetMode mode, const FigureModel& model)
{
    const QString name = bone->getName();
    const bool extremity
        = isFaceBone(name, model) || isHandBone(name, model) || isFootBone(name, model);
    switch (mode) {
    case ResetBody:
        return !extremity;
    case ResetExtremities:
        return extremity;
    case ResetSelected:
        return true;
    case ResetWholeFigure:
        break; // no bone is asked for
    }
    return false;
}

bool inResetPart(const DzNode* bone, ResetMode mode)
{
    return inPart(bone, mode, modelOf(bone));
}

void zeroBoneChannels(DzNode* bone, DzTime time)
{
    for (DzFloatProperty* channel : poseChannelsOf(bone).channel)
        zero(channel, time);
}

static void resetByModel(DzNode* bone, DzTime time, const FigureModel& model)
{
    const FollowDriver follow = bodyControlsOf(model);
    zeroCorrectives(bone, time, model, follow);
    for (DzFloatProperty* channel : poseChannelsOf(bone).channel)
        zeroThroughLinks(channel, time, follow);
}

void resetBone(DzNode* bone, DzTime time)
{
    resetByModel(bone, time, modelOf(bone));
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
    if (modelOf(figure).hasFacsFace)
        properties = facsMorphsOf(figure);
    for (const FigureControl& each : controlsOf(figure))
        properties.push_back(each.property);
    for (const FigureBone& each : bonesOf(figure))
        appendPoseChannels(each.bone, &properties);
    zeroAll(properties, time);
}

// ---- selection

static SelectionReset beginReset(DzSkeleton* figure, ResetMode mode, DzTime time)
{
    SelectionReset reset = {figure, modelOf(figure), mode, time, bonesOf(figure), {}, BoneSet()};
    reset.local.reserve(reset.bones.size());
    for (const FigureBone& each : reset.bones)
        reset.local.push_back(localPlaceOf(each.bone, time));
    return reset;
}

static void putBackOthers(const SelectionReset& reset)
{
    for (size_t i = 0; i < reset.bones.size(); ++i) {
        if (!reset.done.test(size_t(reset.bones[i].number)))
            putBackLocalPlace(reset.bones[i].bone, reset.time, reset.local[i]);
    }
}

static void resetOnce(DzNode* bone, int boneNumber, SelectionReset* reset)
{
    if (reset->done.test(size_t(boneNumber)))
        return; // selected itself and below a selected one
    resetByModel(bone, reset->time, reset->model);
    reset->done.set(size_t(boneNumber));
}

static void resetBelow(const DzNode* bone, SelectionReset* reset)
{
    DzNodeList below;
    bone->getNodeChildren(below, true);
    for (DzNode* node : std::as_const(below)) {
        const int number = boneIndex(node->getName(), reset->model);
        const bool ownBone
            = number >= 0 && isFigureNode(node) && node->getSkeleton() == reset->figure;
        if (ownBone && inPart(node, reset->mode, reset->model))
            resetOnce(node, number, reset);
    }
}

static void turnUpright(DzNode* hip, DzTime time)
{
    if (!sameTurn(hip->getWSRot(time), DzQuat()))
        turnTo(hip, time, DzQuat());
    for (DzFloatProperty* channel :
        {hip->getXRotControl(), hip->getYRotControl(), hip->getZRotControl()}) {
        if (channel->getValue(time) == 0)
            zero(channel, time); // limits may hide what is stored
    }
}

static void resetSelectedBones(SelectionReset* reset)
{
    const bool root = reset->figure->isSelected();
    const bool fromHip = root && reset->mode == ResetExtremities; // all of them are below the hip
    const bool everyBone = root && !fromHip;
    for (auto each = reset->bones.rbegin(); each != reset->bones.rend(); ++each) {
        const bool isHip = each->number == kHipNumber;
        if (!everyBone && !each->bone->isSelected() && !(isHip && fromHip))
            continue;
        if (!everyBone && reset->mode != ResetSelected)
            resetBelow(each->bone, reset);
        if (isHip && reset->mode != ResetExtremities) {
            turnUpright(each->bone, reset->time);
            reset->done.set(kHipNumber);
        } else if (inPart(each->bone, reset->mode, reset->model)) {
            resetOnce(each->bone, each->number, reset);
        }
    }
}

static bool anyFaceBoneReset(const SelectionReset& reset)
{
    return std::any_of(reset.bones.begin(), reset.bones.end(), [&reset](const FigureBone& each) {
        return reset.done.test(size_t(each.number))
            && isFaceBone(boneName(each.number, reset.model), reset.model);
    });
}

static void zeroFacsControls(const SelectionReset& reset)
{
    const FollowDriver follow = facsPropertiesOf(reset.model);
    for (const FigureControl& each : controlsOf(reset.figure)) {
        if (controlName(each.number, reset.model).startsWith(QLatin1String(kFacsPrefix)))
            zeroThroughLinks(each.property, reset.time, follow);
    }
    zeroFacsMorphs(reset.figure, reset.time);
}

// Channels may have been zeroed against a driver that the reset moved later.
static void settleReset(const SelectionReset& reset)
{
    std::vector<DzFloatProperty*> channels;
    for (const FigureBone& each : reset.bones) {
        if (reset.done.test(size_t(each.number)) && each.number != kHipNumber)
            appendPoseChannels(each.bone, &channels);
    }
    zeroAll(channels, reset.time);
}

static void resetSelection(SelectionReset reset)
{
    resetSelectedBones(&reset);
    putBackOthers(reset);
    if (reset.model.hasFacsFace && anyFaceBoneReset(reset)) {
        zeroFacsControls(reset);
        putBackOthers(reset); // face bones that these controls held in place
    }
    settleReset(reset);
}

void resetPose(DzNode* figure, ResetMode mode, DzTime time)
{
    DzSkeleton* skeleton = figure ? figure->getSkeleton() : nullptr;
    if (!skeleton)
        return;
    if (mode == ResetWholeFigure)
        resetWholeFigure(skeleton, time);
    else
        resetSelection(beginReset(skeleton, mode, time));
}

} // namespace quillon
