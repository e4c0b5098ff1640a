#include "figure/node_place.h"

#include "figure/same_place.h"
#include "ground/undo_step.h"

#include "dzfloatproperty.h"
#include "dznode.h"

#include <cmath>

namespace quillon {

namespace {

const double kPi = 3.14159265358979323846;
const double kDegPerRad = 180 / kPi;

// What counts as there: a hundredth of what anybody sees, and what single precision makes of a
// channel or place that is itself large.
const double kToleranceDeg = 1e-3;
const double kToleranceCm = 1e-3;
const double kChannelRounding = 2e-7; // of the three angles' sum
const double kPlaceRounding = 1e-6; // of the lengths that a place is made of
const double kRangeSlackDeg = 1e-4; // beyond a limit by rounding alone

struct Turn {
    DzFloatProperty* channel[3];
    double deg[3];
};

} // namespace

static Turn turnOf(const DzNode* node, DzTime time)
{
    Turn turn
        = {{node->getXRotControl(), node->getYRotControl(), node->getZRotControl()}, {0, 0, 0}};
    for (int i = 0; i < 3; ++i)
        turn.deg[i] = double(turn.channel[i]->getValue(time));
    return turn;
}

bool isTurnedTo(const DzNode* node, DzTime time, const DzQuat& rot_world)
{
    const Turn turn = turnOf(node, time);
    const double sumDeg = std::fabs(turn.deg[0]) + std::fabs(turn.deg[1]) + std::fabs(turn.deg[2]);
    return angleBetweenRad(node->getWSRot(time), rot_world) * kDegPerRad
        <= kToleranceDeg + kChannelRounding * sumDeg;
}

// The whole turns that bring the angle nearest to the present one within what lock and limits of
// the channel allow. False: none does.
static bool bringNear(const DzFloatProperty* channel, double presentDeg, double* deg)
{
    *deg += 360 * std::floor((presentDeg - *deg) / 360 + 0.5);
    if (channel->isLocked())
        return std::fabs(*deg - presentDeg) <= kRangeSlackDeg;
    if (!channel->isClamped())
        return true;
    const double low = double(channel->getMin()) - kRangeSlackDeg;
    const double high = double(channel->getMax()) + kRangeSlackDeg;
    if (*deg < low)
        *deg += 360 * std::ceil((low - *deg) / 360);
    else if (*deg > high)
        *deg += 360 * std::floor((high - *deg) / 360);
    return *deg >= low && *deg <= high;
}

// Both ways to make the rotation of three turns; the nearer one that all channels allow goes to
// the turn. False: none is allowed.
static bool findTurn(DzRotationOrder order, const DzQuat& euler, Turn* turn)
{
    DzVec3 rad;
    euler.getValue(order.order(), rad);
    const Turn present = *turn;
    double least = -1;
    for (bool flip : {false, true}) {
        double deg[3], cost = 0;
        bool allowed = true;
        for (int i = 0; i < 3; ++i) {
            const double solved = double(rad[i]) * kDegPerRad;
            deg[i] = !flip ? solved : i == order[1] ? 180 - solved : solved + 180;
            allowed &= bringNear(present.channel[i], present.deg[i], &deg[i]);
            cost += (deg[i] - present.deg[i]) * (deg[i] - present.deg[i]);
        }
        if (!allowed || (least >= 0 && cost >= least))
            continue;
        least = cost;
        for (int i = 0; i < 3; ++i)
            turn->deg[i] = deg[i];
    }
    return least >= 0;
}

bool turnTo(DzNode* node, DzTime time, const DzQuat& rot_world)
{
    Turn turn = turnOf(node, time);
    node->setWSRot(time, rot_world);
    if (isTurnedTo(node, time, rot_world))
        return true;
    const DzNode* parent = node->getNodeParent();
    const DzQuat rot_local = parent ? rot_world * parent->getWSRot(time).inverse() : rot_world;
    const DzQuat orient = node->getOrientation();
    const DzQuat euler = orient * rot_local * orient.inverse();
    if (!findTurn(node->getRotationOrder(), euler, &turn))
        return false;
    for (int i = 0; i < 3; ++i)
        turn.channel[i]->setValue(time, float(turn.deg[i]));
    return isTurnedTo(node, time, rot_world);
}

bool moveTo(DzNode* node, DzTime time, const DzVec3& posCm_world)
{
    node->setWSPos(time, posCm_world);
    double lengthsCm = double(posCm_world.length()) + double(node->getOrigin().length());
    if (const DzNode* parent = node->getNodeParent())
        lengthsCm += double(parent->getWSPos(time).length());
    return double((node->getWSPos(time) - posCm_world).length())
        <= kToleranceCm + kPlaceRounding * lengthsCm;
}

bool keepOrTakeBack(DzUndoStackHold* hold, bool keep)
{
    if (keep)
        hold->accept(QLatin1String(kUndoCaption));
    else
        hold->cancel();
    return keep;
}

} // namespace quillon
