#include "figure/prop_origin.h"

#include "figure/channel_snapshot.h"
#include "figure/node_place.h"
#include "figure/same_place.h"
#include "ground/host_calls.h"

#include "dzfloatproperty.h"
#include "dznode.h"
#include "dznumericproperty.h"
#include "dzscene.h"
#include "dzundostack.h"

#include <vector>

namespace quillon {

static const float kOriginToleranceCm = 1e-3f; // rounding on the way into three channels

// ---- frames ----------------------------------------------------------------------------------

int frameCount()
{
    const DzTime step = dzScene->getTimeStep();
    const DzTimeRange range = dzScene->getAnimRange();
    return step > 0 ? int(range.getEnd() / step - range.getStart() / step + 1) : 0;
}

static bool hasKeyWithin(const DzNumericProperty* property, const DzTimeRange& frame)
{
    for (int i = 0; i < property->getNumKeys(); ++i)
        if (frame.isIncluded(property->getKeyTime(i)))
            return true;
    return false;
}

bool hasKeyInFrame(const DzNode* node, int frame)
{
    const DzTime step = dzScene->getTimeStep();
    const DzTimeRange range(frame * step, (frame + 1) * step - 1);
    for (int i = 0; i < node->getNumProperties(); ++i) {
        const auto* property = qobject_cast<DzNumericProperty*>(node->getProperty(i));
        if (property && property->canAnimate() && property->hasKeys()
            && hasKeyWithin(property, range))
            return true;
    }
    return false;
}

namespace {

struct KeyedPlace {
    DzTime time;
    NodePlace world;
};

} // namespace

static std::vector<KeyedPlace> keyedPlaces(const DzNode* node)
{
    std::vector<KeyedPlace> places;
    const int count = frameCount();
    for (int frame = 0; frame < count; ++frame) {
        const DzTime time = frame * dzScene->getTimeStep();
        if (hasKeyInFrame(node, frame))
            places.push_back(KeyedPlace {time, worldPlaceOf(node, time)});
    }
    return places;
}

// ---- between the geometry's space and the world ----------------------------------------------

static DzVec3 toWorld(const NodePlace& at, const DzVec3& offset)
{
    return at.rot.multVec(at.scale.multVec(offset));
}

static bool isFlat(const DzMatrix3& scale)
{
    return scale.row(0).cross(scale.row(1)).dot(scale.row(2)) == 0;
}

// What toWorld() makes the given offset of. A scale of 0 along an axis has no way back: zero then.
static DzVec3 fromWorld(const NodePlace& at, const DzVec3& offset_world)
{
    if (isFlat(at.scale))
        return DzVec3(0, 0, 0);
    return at.scale.inverse().multVec(at.rot.inverse().multVec(offset_world));
}

// ---- the new origin --------------------------------------------------------------------------

static void putBackOrigin(DzNode* node, const DzVec3& before)
{
    if (!samePlace(node->getOrigin(), before))
        setOriginPoint(node, before);
}

// The box lies along the world's axes: only an unturned node has that of its geometry. What a lock
// or a scale leaves of the node's placement is taken out of the centre that was read. All is put
// back by hand: a host's undo may know nothing of origins.
static DzVec3 geometryCentre(DzNode* node)
{
    const DzUndoStackLock unrecorded;
    const DzTime time = dzScene->getTime();
    const DzVec3 before = node->getOrigin();
    ChannelSnapshot channels;
    keepPoseChannels(node, time, &channels);
    node->setWSRot(DzQuat());
    setOriginPoint(node, DzVec3(0, 0, 0));
    node->setWSPos(DzVec3(0, 0, 0)); // the origin has moved it
    const DzBox3 box = node->getLocalBoundingBox();
    DzVec3 centre = before;
    if (box.isValid()) {
        const DzVec3 read = lowCorner(box) + (highCorner(box) - lowCorner(box)) * 0.5f;
        centre = node->getOrigin() + fromWorld(worldPlaceOf(node, time), read);
    }
    setOriginPoint(node, before); // that very value: next to zero it is not where it was
    for (const KeptValue& each : channels)
        putBackStored(each, time);
    return centre;
}

static DzVec3 newOrigin(DzNode* node, OriginChoice choice, const NodePlace& last_world)
{
    switch (choice) {
    case OriginChoice::Imported:
        return DzVec3(0, 0, 0);
    case OriginChoice::ObjectCentre:
        return geometryCentre(node);
    case OriginChoice::WorldCentre:
        return node->getOrigin() + fromWorld(last_world, -last_world.posCm);
    case OriginChoice::Keep:
        break;
    }
    return node->getOrigin();
}

// ---- the change ------------------------------------------------------------------------------

static bool setOriginAndPlaces(
    DzNode* node, OriginChoice choice, const std::vector<KeyedPlace>& keyed)
{
    const DzVec3 before = node->getOrigin();
    const DzVec3 wanted = newOrigin(node, choice, keyed.back().world);
    if (!samePlace(wanted, before))
        setOriginPoint(node, wanted);
    const DzVec3 moved = node->getOrigin() - before; // as it was taken
    bool followed = (before + moved - wanted).length() <= kOriginToleranceCm;
    for (const KeyedPlace& was : keyed) {
        followed &= turnTo(node, was.time, was.world.rot);
        followed &= moveTo(node, was.time, was.world.posCm + toWorld(was.world, moved));
    }
    return followed;
}

bool setPropOrigin(DzNode* node, DzRotationOrder order, OriginChoice choice)
{
    const std::vector<KeyedPlace> keyed = keyedPlaces(node);
    const DzRotationOrder orderBefore = node->getRotationOrder();
    const DzVec3 originBefore = node->getOrigin();
    DzUndoStackHold hold;
    node->setRotationOrder(order);
    if (keepOrTakeBack(&hold, keyed.empty() || setOriginAndPlaces(node, choice, keyed)))
        return true;
    putBackOrigin(node, originBefore); // what the host's undo left of it
    if (node->getRotationOrder().order() != orderBefore.order())
        node->setRotationOrder(orderBefore);
    return false;
}

void setTranslationNudge(DzNode* node, float stepCm)
{
    node->getXPosControl()->setSensitivity(stepCm);
    node->getYPosControl()->setSensitivity(stepCm);
    node->getZPosControl()->setSensitivity(stepCm);
}

} // namespace quillon
