#include "finder/figure_place.h"

#include "figure/same_place.h"
#include "figure/selected_figure.h"
#include "finder/pose_signature.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

#include <cmath>

namespace quillon {

typedef std::vector<KeptValue> KeptChannels;

static void keep(const DzNode* node, DzTime time, KeptChannels* kept)
{
    for (DzFloatProperty* channel : {node->getXPosControl(), node->getYPosControl(),
             node->getZPosControl(), node->getScaleControl(), node->getXScaleControl(),
             node->getYScaleControl(), node->getZScaleControl()})
        kept->push_back(keepValue(channel, time));
}

FigurePlace placeOf(DzSkeleton* figure, DzTime time)
{
    FigurePlace place;
    DzBone* hip = hipOf(figure);
    if (!hip)
        return place;
    place.figure = figure;
    place.hip = hip;
    for (DzFloatProperty* channel :
        {figure->getXRotControl(), figure->getYRotControl(), figure->getZRotControl()})
        place.rotation.push_back(keepValue(channel, time));
    keep(figure, time, &place.place);
    keep(hip, time, &place.place);
    return place;
}

bool isPlaceOf(const FigurePlace& place, const DzSkeleton* figure)
{
    return figure && place.figure == figure && place.hip && place.hip == hipOf(figure);
}

static bool isLive(const FigurePlace& place)
{
    return isPlaceOf(place, place.figure);
}

static std::vector<float> presentValues(const FigurePlace& place, DzTime time)
{
    std::vector<float> values;
    for (const KeptChannels* channels : {&place.rotation, &place.place})
        for (const KeptValue& each : *channels)
            values.push_back(each.channel->getRawValue(time));
    return values;
}

void notePlaceLeft(FigurePlace* place, DzTime time)
{
    if (isLive(*place))
        place->left = presentValues(*place, time);
}

bool isPlaceAsLeft(const FigurePlace& place, const DzSkeleton* figure, DzTime time)
{
    return isPlaceOf(place, figure) && !place.left.empty()
        && place.left == presentValues(place, time);
}

static void putBack(const KeptChannels& kept, DzTime time)
{
    for (const KeptValue& each : kept)
        putBackValue(each, time);
}

void putBackRotation(const FigurePlace& place, DzTime time)
{
    if (isLive(place))
        putBack(place.rotation, time);
}

void putBackRotationUnderHip(const FigurePlace& place, DzTime time)
{
    if (!isLive(place))
        return;
    const DzQuat figureRot_world = place.figure->getWSRot(time);
    const DzQuat hipRot_world = place.hip->getWSRot(time);
    putBackRotation(place, time);
    if (!sameTurn(place.figure->getWSRot(time), figureRot_world))
        place.hip->setWSRot(time, hipRot_world);
}

void putBackPlace(const FigurePlace& place, DzTime time)
{
    if (isLive(place))
        putBack(place.place, time);
}

// The right-handed turn about Y that brings one horizontal direction to another.
static double turnRadBetween(const DzVec3& from, const DzVec3& to)
{
    const double sine = double(from.m_z) * double(to.m_x) - double(from.m_x) * double(to.m_z);
    const double cosine = double(from.m_x) * double(to.m_x) + double(from.m_z) * double(to.m_z);
    return std::atan2(sine, cosine);
}

void turnToFacing(const FigureFacing& facing, DzSkeleton* figure, DzTime time)
{
    const DzVec3 now = facingDirection(slotRotation(figure, HipSlot, time), facing.currentType);
    const double turnRad = turnRadBetween(now, facing.direction);
    if (std::fabs(turnRad) <= kSameTurnRad)
        return;
    const DzQuat turn(DzVec3(0, 1, 0), turnRad);
    const DzVec3 pivotCm_world = hipOf(figure)->getWSPos(time);
    const DzVec3 fromPivotCm_world = figure->getWSPos(time) - pivotCm_world;
    figure->setWSRot(time, figure->getWSRot(time) * turn);
    figure->setWSPos(time, pivotCm_world + turn.multVec(fromPivotCm_world));
}

} // namespace quillon
