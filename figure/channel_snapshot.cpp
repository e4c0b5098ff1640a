#include "figure/channel_snapshot.h"

#include "figure/figure_walks.h"
#include "figure/same_place.h"

#include "dzbone.h"
#include "dzfloatproperty.h"

#include <algorithm>
#include <cstring>

namespace quillon {

// ---- channels

float storedValue(const DzFloatProperty* channel, DzTime time)
{
    return channel->getRawValue(time);
}

void setStoredValue(DzFloatProperty* channel, DzTime time, float value)
{
    if (channel->isLocked())
        return;
    if (channel->hasControllers())
        channel->setRawValue(time, value);
    else
        channel->setValue(time, value);
}

static bool hasKeyAt(const DzFloatProperty* channel, DzTime time)
{
    return channel->getNumKeys(DzTimeRange(time, time)) > 0;
}

KeptValue keepValue(DzFloatProperty* channel, DzTime time)
{
    return KeptValue {channel, storedValue(channel, time), channel->getValue(time),
        channel->getNumKeys(), hasKeyAt(channel, time)};
}

void keepPoseChannels(const DzNode* node, DzTime time, ChannelSnapshot* kept)
{
    for (DzFloatProperty* channel : poseChannelsOf(node).channel)
        kept->push_back(keepValue(channel, time));
}

// A limit hides how far the sum of the shares reaches; it is lifted while the difference is taken.
static void makeUpForDrivers(const KeptValue& kept, DzTime time)
{
    const bool clamped = kept.channel->isClamped();
    kept.channel->setIsClamped(false);
    const float difference = kept.value - kept.channel->getValue(time);
    const float stored = storedValue(kept.channel, time);
    if (stored + difference != stored) // else it is lost among the digits, and only a key is left
        setStoredValue(kept.channel, time, stored + difference);
    kept.channel->setIsClamped(clamped);
}

void putBackValue(const KeptValue& kept, DzTime time)
{
    if (kept.channel->isLocked())
        return;
    if (storedValue(kept.channel, time) != kept.stored)
        setStoredValue(kept.channel, time, kept.stored);
    if (kept.channel->getValue(time) != kept.value)
        makeUpForDrivers(kept, time);
}

void putBackValues(const ChannelSnapshot& kept, DzTime time)
{
    for (const KeptValue& each : kept)
        putBackValue(each, time);
}

void putBackLook(const KeptValue& kept, DzTime time)
{
    if (kept.channel->getValue(time) != kept.value)
        kept.channel->setValue(time, kept.value);
}

static bool isSame(float a, float b) // the sign of a 0, too
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void putBackStored(const KeptValue& kept, DzTime time)
{
    const bool hasOwnKey = hasKeyAt(kept.channel, time);
    if (!kept.hasOwnKey && kept.channel->canAnimate()) {
        if (hasOwnKey)
            kept.channel->deleteKeys(DzTimeRange(time, time));
    } else if (hasOwnKey != kept.hasOwnKey
        || !isSame(storedValue(kept.channel, time), kept.stored)) {
        kept.channel->setRawValue(time, kept.stored);
    }
}

bool isAsKept(const ChannelSnapshot& kept, DzTime time)
{
    return std::all_of(kept.begin(), kept.end(), [time](const KeptValue& each) {
        return storedValue(each.channel, time) == each.stored
            && each.channel->getNumKeys() == each.keyCount;
    });
}

// ---- places of nodes

NodePlace worldPlaceOf(const DzNode* node, DzTime time)
{
    return NodePlace {node->getWSScale(time), node->getWSRot(time), node->getWSPos(time)};
}

NodePlace localPlaceOf(const DzNode* node, DzTime time)
{
    return NodePlace {node->getLocalScale(time), node->getLocalRot(time), node->getLocalPos(time)};
}

void putBackLocalPlace(DzNode* node, DzTime time, const NodePlace& kept)
{
    if (!sameScale(node->getLocalScale(time), kept.scale))
        node->setLocalScale(time, kept.scale);
    if (!sameTurn(node->getLocalRot(time), kept.rot))
        node->setLocalRot(time, kept.rot);
    if (!samePlace(node->getLocalPos(time), kept.posCm))
        node->setLocalPos(time, kept.posCm);
}

} // namespace quillon
