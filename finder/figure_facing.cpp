#include "finder/figure_facing.h"

#include "figure/selected_figure.h"
#include "finder/pose_signature.h"

#include "dzbone.h"
#include "dzskeleton.h"

#include <cmath>
#include <limits>

namespace quillon {

static const float kUpright = 0.7071f; // a little below cos 45
static const float kNoDirection = std::numeric_limits<float>::epsilon(); // squared length
static const float kShortDirection = 1e-6f; // squared length
static const double kOpposite = -0.9999999;
static const double kHalfTurnRad = 3.141592;
static const float kParallel = 0.01f;
static const float kHipTolerance = 0.1f;

namespace {

struct HipAxes {
    DzVec3 up, front, side; // images of Y, Z and X
};

} // namespace

static HipAxes axesOf(const DzQuat& hip)
{
    return HipAxes {
        hip.multVec(DzVec3(0, 1, 0)), hip.multVec(DzVec3(0, 0, 1)), hip.multVec(DzVec3(1, 0, 0))};
}

int classifyHipOrientation(const DzQuat& hip)
{
    const HipAxes axes = axesOf(hip);
    if (axes.up.m_y > kUpright)
        return Standing;
    if (axes.up.m_y < -kUpright)
        return UpsideDown;
    if (axes.front.m_y > kUpright)
        return LyingBellyUp;
    if (axes.front.m_y < -kUpright)
        return LyingBellyDown;
    if (axes.side.m_y <= 0)
        return LyingLeftSide;
    if (axes.side.m_y > 0)
        return LyingRightSide;
    return AllPoses; // not a number
}

// The axis of the body that shows where it faces: its front, or its feet when it lies.
static DzVec3 localDirection(const HipAxes& axes, int type)
{
    if (axes.up.m_y > kUpright)
        return DzVec3(0, 0, type == LyingBellyDown ? -1.0f : 1.0f);
    if (axes.up.m_y < -kUpright)
        return DzVec3(0, 0, -1);
    const bool bellyDown = !(axes.front.m_y > kUpright) && axes.front.m_y < -kUpright;
    return DzVec3(0, bellyDown && type == Standing ? 1.0f : -1.0f, 0);
}

DzVec3 facingDirection(const DzQuat& hip, int currentType)
{
    DzVec3 direction = hip.multVec(localDirection(axesOf(hip), currentType));
    direction.m_y = 0;
    if (!(direction.dot(direction) >= kNoDirection)) // also when it is not a number
        direction = DzVec3(0, 0, 1);
    return direction.normalized();
}

// ---- from a direction to a rotation

static DzQuat halfTurnFrom(const DzVec3& unit)
{
    DzVec3 axis = DzVec3(0, 0, 1).cross(unit);
    if (axis.length() < kParallel)
        axis = DzVec3(1, 0, 0).cross(unit);
    return DzQuat(axis.normalized(), kHalfTurnRad);
}

// About the one axis at right angles to both, neither of which is null. In double precision: close
// to a half turn little is left of 1 + dot.
static DzQuat turnBetween(const DzVec3& from, const DzVec3& to)
{
    const double a[3] = {double(from.m_x), double(from.m_y), double(from.m_z)};
    const double b[3] = {double(to.m_x), double(to.m_y), double(to.m_z)};
    const double lengths = std::sqrt(
        (a[0] * a[0] + a[1] * a[1] + a[2] * a[2]) * (b[0] * b[0] + b[1] * b[1] + b[2] * b[2]));
    const double dot = (a[0] * b[0] + a[1] * b[1] + a[2] * b[2]) / lengths;
    if (dot < kOpposite)
        return halfTurnFrom(from.normalized());
    const double s = std::sqrt(2 * (1 + dot));
    const double share = 1 / (lengths * s);
    return DzQuat((a[1] * b[2] - a[2] * b[1]) * share, (a[2] * b[0] - a[0] * b[2]) * share,
        (a[0] * b[1] - a[1] * b[0]) * share, s / 2);
}

DzQuat facingRotation(const DzVec3& direction, const DzVec3& up)
{
    if (direction.dot(direction) < kShortDirection)
        return DzQuat();
    DzVec3 d = direction.normalized();
    d.m_z = -d.m_z;
    const DzQuat first = turnBetween(DzVec3(0, 0, -1), d);
    const DzVec3 side = d.cross(up).normalized();
    const DzVec3 levelUp = side.cross(d);
    const DzQuat second = turnBetween(first.multVec(DzVec3(0, 1, 0)), levelUp);
    return second * first;
}

// ---- the figure

void deriveFacing(FigureFacing* facing, const DzSkeleton* figure, DzTime time)
{
    const DzQuat hip = slotRotation(figure, HipSlot, time);
    facing->currentType = classifyHipOrientation(hip);
    facing->direction = facingDirection(hip, facing->currentType);
    facing->hipPosCm_world = boneWorldPosition(figure, QLatin1String(kHipName), time);
}

void storeHip(FigureFacing* facing, const DzSkeleton* figure, DzTime time)
{
    if (!hipOf(figure))
        return;
    facing->hipRot_world = slotRotation(figure, HipSlot, time);
    facing->hipPosCm_world = boneWorldPosition(figure, QLatin1String(kHipName), time);
}

static bool differ(double a, double b)
{
    return std::fabs(float(a) - float(b)) >= kHipTolerance;
}

static bool differ(const DzQuat& a, const DzQuat& b)
{
    return differ(a.m_x, b.m_x) || differ(a.m_y, b.m_y) || differ(a.m_z, b.m_z)
        || differ(a.m_w, b.m_w);
}

static bool differ(const DzVec3& a, const DzVec3& b)
{
    return differ(double(a.m_x), double(b.m_x)) || differ(double(a.m_y), double(b.m_y))
        || differ(double(a.m_z), double(b.m_z));
}

bool hasHipMoved(const FigureFacing& facing, const DzSkeleton* figure, DzTime time)
{
    return hipOf(figure)
        && (differ(slotRotation(figure, HipSlot, time), facing.hipRot_world)
            || differ(
                boneWorldPosition(figure, QLatin1String(kHipName), time), facing.hipPosCm_world));
}

} // namespace quillon
