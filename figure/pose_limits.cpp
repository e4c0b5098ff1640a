#include "figure/pose_limits.h"

#include "figure/body_parts.h"
#include "figure/figure_walks.h"
#include "ground/host_calls.h"
#include "ground/status_message.h"
#include "ground/undo_step.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

#include <QPointer>

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace quillon {

namespace {

const float kZeroRangeCm = std::numeric_limits<float>::epsilon(); // 1.1920929e-07

const int kFirstControlSlot = kBoneCount;

// What a walk covers. Each slot of KeptClamps belongs to one walk only.
enum LimitWalk { BodyBoneWalk, BodyControlWalk, FaceWalk, LimitWalkCount };

struct KeptClamps {
    // Clamped flags: bones by number, then controls by number in the figure's model.
    bool clamped[kBoneCount + kControlCountMax];
    // The figure whose flags a walk keeps, since its remembering un-clamp; null: none.
    QPointer<DzNode> figure[LimitWalkCount];
};
KeptClamps g_kept;

// Flags of one bone's channels while they are free: locked and clamped as bits of ChannelFlag.
enum ChannelFlag {
    XRotLocked = 1,
    YRotLocked = 2,
    ZRotLocked = 4,
    XPosLocked = 8,
    YPosLocked = 16,
    ZPosLocked = 32,
    XPosClamped = 0x200,
    YPosClamped = 0x400,
    ZPosClamped = 0x800
};

struct FlaggedChannel {
    int group; // ChannelGroup
    DzFloatProperty* (DzNode::*channel)() const;
    unsigned lockedFlag;
    unsigned clampedFlag; // 0: the clamped flag is not touched
};

const FlaggedChannel kFlaggedChannels[] = {
    {RotationChannels, &DzNode::getXRotControl, XRotLocked, 0},
    {RotationChannels, &DzNode::getYRotControl, YRotLocked, 0},
    {RotationChannels, &DzNode::getZRotControl, ZRotLocked, 0},
    {TranslationChannels, &DzNode::getXPosControl, XPosLocked, XPosClamped},
    {TranslationChannels, &DzNode::getYPosControl, YPosLocked, YPosClamped},
    {TranslationChannels, &DzNode::getZPosControl, ZPosLocked, ZPosClamped},
};

// How a walk finds the flag of a bone or control.
struct FlagRule {
    bool clamp; // the flag, unless recalled
    bool recall; // take what was kept
    bool keep; // keep the present flag first
};

} // namespace

// ---- limits

static FlagRule flagRule(DzNode* figure, LimitWalk walk, bool clamp, bool remember)
{
    if (!remember)
        return FlagRule {clamp, false, false};
    // Kept flags are the user's; a second un-clamp would see its own.
    const bool keptAlready = g_kept.figure[walk] == figure;
    g_kept.figure[walk] = clamp ? nullptr : figure;
    return FlagRule {clamp, clamp, !clamp && !keptAlready};
}

static bool flagFor(const FlagRule& rule, int slot, bool present)
{
    if (rule.keep)
        g_kept.clamped[slot] = present;
    return rule.recall ? g_kept.clamped[slot] : rule.clamp;
}

// True when the limits now move the value.
static bool setClamped(DzFloatProperty* property, bool clamp, DzTime time)
{
    property->setIsClamped(false);
    if (!clamp)
        return false;
    const float unlimited = property->getValue(time);
    property->setIsClamped(true);
    return property->getValue(time) != unlimited;
}

// A rotation that the limits move is written back, so that what is stored lies in range for good
// and does not come back when the limits are lifted.
static void limitBone(DzBone* bone, bool clamp, DzTime time)
{
    bool moved = false;
    for (DzFloatProperty* channel :
        {bone->getXRotControl(), bone->getYRotControl(), bone->getZRotControl()})
        moved |= setClamped(channel, clamp, time);
    if (moved)
        bone->setWSRot(time, bone->getWSRot(time));
}

static void limitBones(DzNode* figure, FigureScope scope, const FlagRule& rule, DzTime time)
{
    for (const FigureBone& each : bonesOf(figure, scope)) {
        const bool present = each.bone->getXRotControl()->isClamped();
        limitBone(each.bone, flagFor(rule, each.number, present), time);
    }
}

static void limitControls(DzNode* figure, FigureScope scope, const FlagRule& rule, DzTime time)
{
    for (const FigureControl& each : ownControlsOf(figure, scope)) {
        const bool present = each.property->isClamped();
        const bool clamp = flagFor(rule, kFirstControlSlot + each.number, present);
        if (setClamped(each.property, clamp, time))
            each.property->setValue(time, each.property->getValue(time));
    }
}

void setBodyBoneLimits(DzNode* figure, bool clamp, bool remember, DzTime time)
{
    limitBones(figure, FigureScope::Body, flagRule(figure, BodyBoneWalk, clamp, remember), time);
}

void setBodyControlLimits(DzNode* figure, bool clamp, bool remember, DzTime time)
{
    limitControls(
        figure, FigureScope::Body, flagRule(figure, BodyControlWalk, clamp, remember), time);
}

void setFaceLimits(DzNode* figure, bool clamp, bool remember, DzTime time)
{
    const FlagRule rule = flagRule(figure, FaceWalk, clamp, remember);
    limitBones(figure, FigureScope::Face, rule, time);
    limitControls(figure, FigureScope::Face, rule, time);
}

void forgetLimits()
{
    g_kept = KeptClamps();
}

void setPoseLimits(DzNode* figure, bool clamp, LimitPart part, DzTime time)
{
    DzUndoStackHold hold;
    if (part & BodyLimits)
        setBodyBoneLimits(figure, clamp, false, time);
    if (part & FaceLimits)
        setFaceLimits(figure, clamp, false, time);
    hold.accept(QLatin1String(kUndoCaption));

    // The texts go with the masks the wrong way round; users know them so.
    const char* text = "\r\n\r\nExpression limits clamped\r\n\r\n";
    if (!clamp)
        text = "\r\n\r\nAll pose limits un-clamped\r\n\r\n";
    else if (part & FaceLimits)
        text = "\r\n\r\nBone rotation limits clamped\r\n\r\n";
    showStatusMessage(QLatin1String(text));
}

// ---- channels of one bone

static void setFlags(DzNode* bone, const FlaggedChannel& row, bool on)
{
    DzFloatProperty* channel = (bone->*row.channel)();
    channel->lock(on);
    if (row.clampedFlag)
        setSecondLimit(channel, on);
}

static unsigned flagsOf(const DzNode* bone, const FlaggedChannel& row)
{
    const DzFloatProperty* channel = (bone->*row.channel)();
    return (channel->isLocked() ? row.lockedFlag : 0)
        | (hasSecondLimit(channel) ? row.clampedFlag : 0);
}

static void switchChannels(DzNode* bone, bool enable, int channelMask)
{
    for (const FlaggedChannel& row : kFlaggedChannels) {
        if (channelMask & row.group)
            setFlags(bone, row, enable);
    }
}

// The flags that the channels had.
static unsigned freeChannels(DzNode* bone, int channelMask)
{
    unsigned flags = 0;
    for (const FlaggedChannel& row : kFlaggedChannels) {
        if (channelMask & row.group)
            flags |= flagsOf(bone, row);
    }
    switchChannels(bone, false, channelMask);
    return flags;
}

static void restoreFlags(DzNode* bone, int channelMask, unsigned flags)
{
    for (const FlaggedChannel& row : kFlaggedChannels) {
        if (!(channelMask & row.group))
            continue;
        if (flags & row.lockedFlag)
            (bone->*row.channel)()->lock(true);
        if (flags & row.clampedFlag)
            setSecondLimit((bone->*row.channel)(), true);
    }
}

void setChannelLimits(DzNode* bone, bool enable, int channelMask, bool remember)
{
    static unsigned g_keptFlags = 0; // by the last remembering call that released
    if (!remember)
        switchChannels(bone, enable, channelMask);
    else if (enable)
        restoreFlags(bone, channelMask, g_keptFlags);
    else
        g_keptFlags = freeChannels(bone, channelMask);
}

// ---- translations

bool isTranslatableBone(const QString& name, const FigureModel& model)
{
    return std::any_of(model.translatableBones.begin(), model.translatableBones.end(),
        [&name](const char* bone) { return name == QLatin1String(bone); });
}

void limitTranslation(DzNode* bone, float rangeCm, DzTime time)
{
    const float limitCm = rangeCm > kZeroRangeCm ? rangeCm : 0;
    for (DzFloatProperty* channel :
        {bone->getXPosControl(), bone->getYPosControl(), bone->getZPosControl()}) {
        const float valueCm = channel->getValue(time);
        const float wantedCm = qBound(-limitCm, valueCm, limitCm);
        if (wantedCm != valueCm)
            channel->setValue(time, wantedCm);
    }
}

void limitFreedTranslation(DzNode* bone, float rangeCm, DzTime time)
{
    const unsigned flags = freeChannels(bone, TranslationChannels);
    limitTranslation(bone, rangeCm, time);
    restoreFlags(bone, TranslationChannels, flags);
}

static void limitTranslationsBelow(DzNode* figure, float rangeCm, DzTime time)
{
    const FigureModel& model = modelOf(figure);
    DzNodeList below;
    figure->getNodeChildren(below, true);
    for (DzNode* node : std::as_const(below)) {
        const bool ownBone = isFigureNode(node) && node->getSkeleton() == figure;
        if (ownBone && isTranslatableBone(node->getName(), model))
            limitFreedTranslation(node, rangeCm, time);
    }
}

void limitBoneTranslations(DzNode* figure, float rangeCm, DzTime time)
{
    DzUndoStackHold hold;
    if (figure)
        limitTranslationsBelow(figure, rangeCm, time);
    hold.accept(QLatin1String(kUndoCaption));
    showStatusMessage(QLatin1String("\r\n\r\nBone translations reset succeeded\r\n\r\n"));
}

} // namespace quillon
