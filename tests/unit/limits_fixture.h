// limits_fixture.h - the clamped flags of a figure: set all alike, and counted.
#pragma once

#include "figure_fixture.h"

namespace quillon {

inline void setAllFlags(const DzNode* figure, bool clamped)
{
    for (const FigureBone& each : bonesOf(figure)) {
        for (DzFloatProperty* channel : poseChannelsOf(each.bone).channel)
            channel->setIsClamped(clamped);
    }
    for (const FigureControl& each : controlsOf(figure))
        each.property->setIsClamped(clamped);
}

inline int clampedRotations(const DzNode* figure, FigureScope scope)
{
    int count = 0;
    for (const FigureBone& each : bonesOf(figure, scope)) {
        const PoseChannels channels = poseChannelsOf(each.bone);
        for (int i = 0; i < 3; ++i)
            count += channels.channel[i]->isClamped();
    }
    return count;
}

inline int clampedControls(const DzNode* figure, FigureScope scope)
{
    int count = 0;
    for (const FigureControl& each : ownControlsOf(figure, scope))
        count += each.property->isClamped();
    return count;
}

} // namespace quillon
