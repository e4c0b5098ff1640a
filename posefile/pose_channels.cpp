#include "posefile/pose_channels.h"

#include "dzfloatproperty.h"

namespace quillon {

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

KeptValue keepValue(DzFloatProperty* channel, DzTime time)
{
    return KeptValue {channel, storedValue(channel, time), channel->getValue(time)};
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

} // namespace quillon
