#include "posefile/part_locks.h"

#include "figure/body_parts.h"
#include "figure/channel_snapshot.h"
#include "figure/figure_lookup.h"
#include "figure/figure_walks.h"
#include "ground/plugin_settings.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

namespace quillon {

static_assert(kPartLockCount == kBodyPartCount, "a lock for each part, in the same order");

static ChannelSnapshot g_locked; // by setPartLocks(); controls before the bones they drive

bool anyPartLockOn()
{
    for (bool on : pluginSettings().partLocks) {
        if (on)
            return true;
    }
    return false;
}

typedef bool (*PartTest)(const QString& name, BodyPart part, const FigureModel& model);

static bool isOfLockedPart(const QString& name, PartTest isInPart, const FigureModel& model)
{
    for (int part = 0; part < kBodyPartCount; ++part) {
        if (pluginSettings().partLocks[part] && isInPart(name, BodyPart(part), model))
            return true;
    }
    return false;
}

static void lockAndKeep(DzFloatProperty* channel, DzTime time)
{
    if (channel->isLocked())
        return; // the rig's or the user's own lock, or locked with another part
    g_locked.push_back(keepValue(channel, time));
    channel->lock(true);
}

// Properties of the figure node only; pure shapes are left out.
static void lockControls(const DzSkeleton* figure, DzTime time)
{
    const FigureModel& model = modelOf(figure);
    for (int i = 0; i < figure->getNumProperties(); ++i) {
        DzFloatProperty* property = qobject_cast<DzFloatProperty*>(figure->getProperty(i));
        if (property && isOfLockedPart(property->getName(), controlInPart, model))
            lockAndKeep(property, time);
    }
}

static void lockBones(const DzSkeleton* figure, DzTime time)
{
    const FigureModel& model = modelOf(figure);
    for (const FigureBone& each : bonesOf(figure)) {
        if (!isOfLockedPart(boneName(each.number, model), boneInPart, model))
            continue;
        static const int kRotationCount = 3;
        const PoseChannels channels = poseChannelsOf(each.bone);
        const int count = each.number == kHipNumber ? kRotationCount : kPoseChannelCount;
        for (int i = 0; i < count; ++i)
            lockAndKeep(channels.channel[i], time);
    }
}

static void releaseLocked(DzTime time)
{
    for (const KeptValue& kept : g_locked)
        kept.channel->lock(false);
    putBackValues(g_locked, time);
    g_locked.clear();
}

void setPartLocks(DzNode* figure, bool on, DzTime time)
{
    const DzSkeleton* skeleton = figure ? figure->getSkeleton() : nullptr;
    if (!skeleton)
        return;
    if (!on)
        return releaseLocked(time);
    lockControls(skeleton, time);
    lockBones(skeleton, time);
}

} // namespace quillon
