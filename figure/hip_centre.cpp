#include "figure/hip_centre.h"

#include "figure/channel_snapshot.h"
#include "figure/node_place.h"
#include "figure/same_place.h"

#include "dzfloatproperty.h"
#include "dznode.h"
#include "dzundostack.h"

namespace quillon {

// The host's setters of a place write all three channels; one that came out as it was loses the key
// that it got. Only translations are written here.
static void dropNeedlessKeys(const ChannelSnapshot& before, DzTime time)
{
    for (const KeptValue& each : before) {
        const float nowCm = storedValue(each.channel, time);
        if (each.channel->getNumKeys() != each.keyCount
            && samePlace(DzVec3(nowCm, 0, 0), DzVec3(each.stored, 0, 0)))
            putBackStored(each, time);
    }
}

bool hipAsCentre(DzNode* figure, DzNode* hip, DzTime time)
{
    const DzVec3 none(0, 0, 0);
    if (samePlace(hip->getLocalPos(time), none))
        return true;
    DzUndoStackHold hold;
    ChannelSnapshot before;
    keepPoseChannels(figure, time, &before);
    keepPoseChannels(hip, time, &before);
    const DzVec3 figureCm_world = figure->getWSPos(time);
    figure->setWSPos(time, none); // near the origin the difference is exact
    const DzVec3 beforeCm_world = hip->getWSPos(time);
    hip->setLocalPos(time, none);
    const DzVec3 afterCm_world = hip->getWSPos(time);
    const bool followed = moveTo(figure, time, figureCm_world + (beforeCm_world - afterCm_world));
    dropNeedlessKeys(before, time);
    return keepOrTakeBack(&hold, followed && samePlace(hip->getLocalPos(time), none));
}

// By the dials themselves: the host may make whole turns of no rotation. Below a turned parent the
// dials at 0 are not it.
static bool turnBack(DzNode* figure, DzTime time)
{
    for (DzFloatProperty* dial :
        {figure->getXRotControl(), figure->getYRotControl(), figure->getZRotControl()})
        dial->setValue(time, 0);
    return isTurnedTo(figure, time, DzQuat()) || turnTo(figure, time, DzQuat());
}

bool rootAsCentre(DzNode* figure, DzNode* hip, DzTime time)
{
    DzUndoStackHold hold;
    const DzQuat hip_world = hip->getWSRot(time);
    const DzVec3 hipCm_world = hip->getWSPos(time);
    const bool followed = turnBack(figure, time) && moveTo(figure, time, DzVec3(0, 0, 0))
        && turnTo(hip, time, hip_world) && moveTo(hip, time, hipCm_world);
    return keepOrTakeBack(&hold, followed);
}

} // namespace quillon
