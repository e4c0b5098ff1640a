#include "figure/prop_origin.h"

#include "figure/node_place.h"

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

struct Placement {
    DzTime time;
    DzMatrix3 scale_world;
    DzQuat rot_world;
    DzVec3 posCm_world;
};

} // namespace

static Placement placementAt(const DzNode* node, DzTime time)
{
    return Placement {time, node->getWSScale(time), node->getWSRot(time), node->getWSPos(time)};
}

static std::vector<Placement> keyedPlacements(const DzNode* node)
{
    std::vector<Placement> placements;
    const int count = frameCount();
    for (int frame = 0; frame < count; ++frame)
        if (hasKeyInFrame(node, frame))
            placements.push_back(placementAt(node, frame * dzScene->getTimeStep()));
    return placements;
}

// ---- between the geometry's space and the world ----------------------------------------------

static DzVec3 toWorld(const Placement& at, const DzVec3& offset)
{
    return at.rot_world.multVec(at.scale_world.multVec(offset));
}

static bool isFlat(const DzMatrix3& scale)
{
    return scale.row(0).cross(scale.row(1)).dot(scale.row(2)) == 0;
}

// What toWorld() makes the given offset of. A scale of 0 along an axis has no way back: zero then.
static DzVec3 fromWorld(const Placement& at, const DzVec3& offset_world)
{
    if (isFlat(at.scale_world))
        return DzVec3(0, 0, 0);
    return at.scale_world.inverse().multVec(at.rot_world.inverse().multVec(offset_world));
}

// ---- the new origin --------------------------------------------------------------------------

// The box lies along the world's axes: only an unturned node has that of its geometry. What a lock
// or a scale leaves of the node's placement is taken out of the centre that was read.
static DzVec3 geometryCentre(DzNode* node)
{
    const DzVec3 before = node->getOrigin();
    DzUndoStackHold hold;
    node->setWSRot(DzQuat());
    node->setOrigin(DzVec3(0, 0, 0), true);
    node->setWSPos(DzVec3(0, 0, 0)); // the origin has moved it
    const DzBox3 box = node->getLocalBoundingBox();
    DzVec3 centre = before;
    if (box.isValid()) {
        const DzVec3 read = box.getMin() + (box.getMax() - box.getMin()) * 0.5f;
        centre = node->getOrigin() + fromWorld(placementAt(node, dzScene->getTime()), read);
    }
    hold.cancel();
    return centre;
}

static DzVec3 newOrigin(DzNode* node, OriginChoice choice, const Placement& last)
{
    switch (choice) {
    case OriginChoice::Imported:
        return DzVec3(0, 0, 0);
    case OriginChoice::ObjectCentre:
        return geometryCentre(node);
    case OriginChoice::WorldCentre:
        return node->getOrigin() + fromWorld(last, -last.posCm_world);
    case OriginChoice::Keep:
        break;
    }
    return node->getOrigin();
}

// ---- the change ------------------------------------------------------------------------------

static bool setOriginAndPlaces(
    DzNode* node, OriginChoice choice, const std::vector<Placement>& keyed)
{
    const DzVec3 before = node->getOrigin();
    const DzVec3 wanted = newOrigin(node, choice, keyed.back());
    if (wanted != before)
        node->setOrigin(wanted, true);
    const DzVec3 moved = node->getOrigin() - before; // as it was taken
    bool followed = (before + moved - wanted).length() <= kOriginToleranceCm;
    for (const Placement& was : keyed) {
        followed &= turnTo(node, was.time, was.rot_world);
        followed &= moveTo(node, was.time, was.posCm_world + toWorld(was, moved));
    }
    return followed;
}

bool setPropOrigin(DzNode* node, DzRotationOrder order, OriginChoice choice)
{
    const std::vector<Placement> keyed = keyedPlacements(node);
    DzUndoStackHold hold;
    node->setRotationOrder(order);
    return keepOrTakeBack(&hold, keyed.empty() || setOriginAndPlaces(node, choice, keyed));
}

void setTranslationNudge(DzNode* node, float stepCm)
{
    node->getXPosControl()->setSensitivity(stepCm);
    node->getYPosControl()->setSensitivity(stepCm);
    node->getZPosControl()->setSensitivity(stepCm);
}

} // namespace quillon
