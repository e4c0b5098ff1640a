#include "finder/figure_place.h"

#include "finder/figure_facing.h"
#include "finder/pose_signature.h"
#include "finder/selected_figure.h"
#include "posefile/pose_channels.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzskeleton.h"

#include <QPointer>

#include <cmath>
#include <vector>

namespace quillon {

static const double kNoTurnRad = 1e-6; // what the single-precision directions leave open

typedef std::vector<KeptValue> KeptChannels;

namespace {

struct FigurePlace {
    QPointer<DzSkeleton> figure; // null: none is remembered
    QPointer<DzBone> hip;
    KeptChannels rotation; // of the figure
    KeptChannels place; // position and scale of the figure, then of the hip
    std::vector<float> left; // stored values of all these channels after the last change of ours
};

} // namespace

static FigurePlace g_place;

static void keep(const DzNode* node, DzTime time, KeptChannels* kept)
{
    for (DzFloatProperty* channel : {node->getXPosControl(), node->getYPosControl(),
             node->getZPosControl(), node->getScaleControl(), node->getXScaleControl(),
             node->getYScaleControl(), node->getZScaleControl()})
        kept->push_back(keepValue(channel, time));
}

void rememberPlace(DzSkeleton* figure, DzTime time)
{
    forgetPlace();
    DzBone* hip = hipOf(figure);
    if (!hip)
        return;
    g_place.figure = figure;
    g_place.hip = hip;
    for (DzFloatProperty* channel :
        {figure->getXRotControl(), figure->getYRotControl(), figure->getZRotControl()})
        g_place.rotation.push_back(keepValue(channel, time));
    keep(figure, time, &g_place.place);
    keep(hip, time, &g_place.place);
}

void forgetPlace()
{
    g_place = FigurePlace();
}

bool isPlaceOf(const DzSkeleton* figure)
{
    return figure && g_place.figure == figure && g_place.hip && g_place.hip == hipOf(figure);
}

static std::vector<float> presentValues(DzTime time)
{
    std::vector<float> values;
    for (const KeptChannels* channels : {&g_place.rotation, &g_place.place})
        for (const KeptValue& each : *channels)
            values.push_back(each.channel->getRawValue(time));
    return values;
}

void notePlaceLeft(DzTime time)
{
    if (isPlaceOf(g_place.figure))
        g_place.left = presentValues(time);
}

bool isPlaceAsLeft(const DzSkeleton* figure, DzTime time)
{
    return isPlaceOf(figure) && !g_place.left.empty() && g_place.left == presentValues(time);
}

static bool isPlaceLive()
{
    return isPlaceOf(g_place.figure);
}

static void putBack(const KeptChannels& kept, DzTime time)
{
    for (const KeptValue& each : kept)
        putBackValue(each, time);
}

void putBackRotation(DzTime time)
{
    if (isPlaceLive())
        putBack(g_place.rotation, time);
}

void putBackRotationUnderHip(DzTime time)
{
    if (!isPlaceLive())
        return;
    const DzQuat figureRot_world = g_place.figure->getWSRot(time);
    const DzQuat hipRot_world = g_place.hip->getWSRot(time);
    putBackRotation(time);
    if (g_place.figure->getWSRot(time) != figureRot_world)
        g_place.hip->setWSRot(time, hipRot_world);
}

void putBackPlace(DzTime time)
{
    if (isPlaceLive())
        putBack(g_place.place, time);
}

// The right-handed turn about Y that brings one horizontal direction to another.
static double turnRadBetween(const DzVec3& from, const DzVec3& to)
{
    const double sine = double(from.m_z) * double(to.m_x) - double(from.m_x) * double(to.m_z);
    const double cosine = double(from.m_x) * double(to.m_x) + double(from.m_z) * double(to.m_z);
    return std::atan2(sine, cosine);
}

void turnToStoredFacing(DzSkeleton* figure, DzTime time)
{
    const DzVec3 facing = facingDirection(slotRotation(figure, HipSlot, time));
    const double turnRad = turnRadBetween(facing, figureFacing().direction);
    if (std::fabs(turnRad) < kNoTurnRad)
        return;
    const DzQuat turn(DzVec3(0, 1, 0), turnRad);
    const DzVec3 pivotCm_world = hipOf(figure)->getWSPos(time);
    const DzVec3 fromPivotCm_world = figure->getWSPos(time) - pivotCm_world;
    figure->setWSRot(time, figure->getWSRot(time) * turn);
    figure->setWSPos(time, pivotCm_world + turn.multVec(fromPivotCm_world));
}

} // namespace quillon
