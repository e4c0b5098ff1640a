// The transforms of a node: composition, caches, and the ways back from a placement to channels.
#include "dzclock.h"
#include "dzeulerchoice.h"
#include "dzfloatproperty.h"
#include "dzhostcalls.h"
#include "dzinexact.h"
#include "dznode.h"
#include "dzobject.h"
#include "dztransform.h"
#include "dzundoitem.h"
#include "dzundostack.h"

#include <QScopedPointer>

#include <cmath>
#include <utility>

bool dzEulerIgnoresLimits = false;
bool dzPlaceReadingNoise = false;
bool dzUndoForgetsOrigins = false;

namespace {

const double kRadPerDeg = 3.14159265358979323846 / 180;
const double kDegPerRad = 180 / 3.14159265358979323846;

// Reads channels at one time, or as if all had their default values.
struct Reader {
    DzTime t;
    bool defaults;

    double operator()(const DzFloatProperty* p) const
    {
        return defaults ? p->getDefaultedValue() : p->getValue(t);
    }
    Vec3d three(DzFloatProperty* const* p) const
    {
        return {{(*this)(p[0]), (*this)(p[1]), (*this)(p[2])}};
    }
};

DzQuat turnFromDegrees(DzRotationOrder order, const Vec3d& deg)
{
    const double rad[3] = {deg[0] * kRadPerDeg, deg[1] * kRadPerDeg, deg[2] * kRadPerDeg};
    return eulerTurn(order, rad);
}

bool isZero(const Vec3d& a)
{
    return a[0] == 0 && a[1] == 0 && a[2] == 0;
}

DzQuat conj(const DzQuat& q)
{
    return DzQuat(-q.m_x, -q.m_y, -q.m_z, q.m_w, false);
}

TurnRange turnRange(const DzFloatProperty* channel)
{
    return {channel->isLocked(), channel->isClamped() && !dzEulerIgnoresLimits,
        channel->getMin() * kRadPerDeg, channel->getMax() * kRadPerDeg};
}

// ---- what a reading may be off by, dzinexact.h

// The next of a fixed sequence, in [-2^-24, 2^-24].
double nextNoise()
{
    static quint32 g_state = 1;
    g_state = g_state * 1664525u + 1013904223u;
    return (double(g_state >> 8) / double(1 << 23) - 1) / double(1 << 24);
}

DzVec3 reading(const DzVec3& v)
{
    if (!dzPlaceReadingNoise)
        return v;
    const double length = double(v.length());
    DzVec3 noisy;
    for (int i = 0; i < 3; ++i)
        noisy[i] = float(double(v[i]) + length * nextNoise());
    return noisy;
}

DzQuat reading(const DzQuat& q)
{
    if (!dzPlaceReadingNoise)
        return q;
    const double x = nextNoise(), y = nextNoise(), z = nextNoise(), w = nextNoise();
    return DzQuat(q.m_x + x, q.m_y + y, q.m_z + z, q.m_w + w, false);
}

DzMatrix3 reading(DzMatrix3 m)
{
    for (int i = 0; dzPlaceReadingNoise && i < 9; ++i)
        m[i / 3][i % 3] += float(double(m.row(i / 3).length()) * nextNoise());
    return m;
}

} // namespace

void DzNode::composeWith(const Transform* parent, DzTime t, bool defaults, Transform* out) const
{
    const Reader read = {t, defaults};
    const Vec3d orientDeg = read.three(m_orient);
    const bool oriented = !isZero(orientDeg);
    const DzQuat orient = oriented ? turnFromDegrees(DzRotationOrder::XYZ, orientDeg) : DzQuat();

    DzQuat local = turnFromDegrees(m_order, read.three(m_channel + RotX));
    if (oriented)
        local = conj(orient) * local * orient;
    out->rotation = parent ? local * parent->rotation : local;

    const double all = read(m_channel[ScaleAll]);
    Vec3d axes = read.three(m_channel + ScaleX);
    for (double& a : axes.v)
        a *= all;
    out->localScale = diagonal3(axes);
    if (oriented && !(axes[0] == axes[1] && axes[1] == axes[2])) {
        const Mat3d o = rotationMatrix(orient);
        out->localScale = o * out->localScale * transposed(o);
    }
    Mat3d base = identity3();
    if (parent) {
        base = parent->scale;
        if (!m_inheritsScale) {
            Mat3d undone;
            inverted(parent->localScale, &undone);
            base = base * undone;
        }
    }
    out->scale = base * out->localScale;
    out->linear = rotationMatrix(out->rotation) * out->scale;

    out->origin = read.three(m_origin);
    const Vec3d translation = read.three(m_channel + PosX);
    out->position = parent
        ? parent->position + parent->linear * (out->origin - parent->origin + translation)
        : out->origin + translation;
}

DzNode::Transform DzNode::transformAt(DzTime t, bool defaults) const
{
    if (t == g_sceneTime && !defaults)
        return currentTransform();
    Transform out;
    if (m_parent) {
        const Transform parent = m_parent->transformAt(t, defaults);
        composeWith(&parent, t, defaults, &out);
    } else {
        composeWith(nullptr, t, defaults, &out);
    }
    return out;
}

const DzNode::Transform& DzNode::currentTransform() const
{
    if (m_currentEpoch != g_valueEpoch) {
        composeWith(
            m_parent ? &m_parent->currentTransform() : nullptr, g_sceneTime, false, m_current);
        m_currentEpoch = g_valueEpoch;
    }
    return *m_current;
}

// A valid cache implies valid caches above, so below an invalid one all are invalid.
void DzNode::invalidateTransform()
{
    if (m_currentEpoch != g_valueEpoch)
        return;
    m_currentEpoch = 0;
    emit transformChanged();
    for (DzNode* child : std::as_const(m_children))
        child->invalidateTransform();
}

// ---- world space ----------------------------------------------------------------------------

DzVec3 DzNode::getWSPos() const
{
    return getWSPos(g_sceneTime);
}

DzVec3 DzNode::getWSPos(DzTime t, bool defaultVal) const
{
    DZ_HOST_SEEN("getWSPos");
    return reading(toDzVec3(transformAt(t, defaultVal).position));
}

DzQuat DzNode::getWSRot() const
{
    return getWSRot(g_sceneTime);
}

DzQuat DzNode::getWSRot(DzTime t, bool defaultVal) const
{
    DZ_HOST_SEEN("getWSRot");
    return reading(transformAt(t, defaultVal).rotation);
}

DzMatrix3 DzNode::getWSScale() const
{
    return getWSScale(g_sceneTime);
}

DzMatrix3 DzNode::getWSScale(DzTime t, bool defaultVal) const
{
    DZ_HOST_SEEN("getWSScale");
    return reading(toDzMatrix3(transformAt(t, defaultVal).scale));
}

void DzNode::getWSTransform(DzVec3& position, DzQuat& rotation, DzMatrix3& scale) const
{
    getWSTransform(g_sceneTime, position, rotation, scale);
}

void DzNode::getWSTransform(DzTime t, DzVec3& position, DzQuat& rotation, DzMatrix3& scale) const
{
    const Transform at = transformAt(t, false);
    position = reading(toDzVec3(at.position));
    rotation = reading(at.rotation);
    scale = reading(toDzMatrix3(at.scale));
}

void DzNode::setWSPos(const DzVec3& position)
{
    setWSPos(g_sceneTime, position);
}

void DzNode::setWSPos(DzTime t, const DzVec3& position)
{
    if (DZ_HOST_CALL("setWSPos"))
        return;
    const DzImplicitHold hold("Move");
    const Vec3d origin = Reader {t, false}.three(m_origin);
    Vec3d translation = toVec3d(position) - origin;
    if (m_parent) {
        const Transform parent = m_parent->transformAt(t, false);
        Mat3d back;
        inverted(parent.linear, &back);
        translation = back * (toVec3d(position) - parent.position) - (origin - parent.origin);
    }
    setLocalPos(t, toDzVec3(translation));
}

void DzNode::setWSRot(const DzQuat& rotation)
{
    setWSRot(g_sceneTime, rotation);
}

void DzNode::setWSRot(DzTime t, const DzQuat& rotation)
{
    if (DZ_HOST_CALL("setWSRot"))
        return;
    setRotationFromLocal(
        t, m_parent ? rotation * m_parent->transformAt(t, false).rotation.inverse() : rotation);
}

void DzNode::setWSScale(const DzMatrix3& scale)
{
    setWSScale(g_sceneTime, scale);
}

void DzNode::setWSScale(DzTime t, const DzMatrix3& scale)
{
    if (DZ_HOST_CALL("setWSScale"))
        return;
    Mat3d local = toMat3d(scale);
    if (m_parent) {
        const Transform parent = m_parent->transformAt(t, false);
        Mat3d back;
        inverted(parent.scale, &back);
        local = m_inheritsScale ? back * local : parent.localScale * back * local;
    }
    setLocalScale(t, toDzMatrix3(local));
}

void DzNode::setWSTransform(const DzVec3& position, const DzQuat& rotation, const DzMatrix3& scale)
{
    setWSTransform(g_sceneTime, position, rotation, scale);
}

void DzNode::setWSTransform(
    DzTime t, const DzVec3& position, const DzQuat& rotation, const DzMatrix3& scale)
{
    const DzImplicitHold hold("Transform");
    setWSScale(t, scale);
    setWSRot(t, rotation);
    setWSPos(t, position);
}

// ---- against the parent -----------------------------------------------------------------------

DzVec3 DzNode::getLocalPos() const
{
    return getLocalPos(g_sceneTime);
}

DzVec3 DzNode::getLocalPos(DzTime t, bool defaultVal) const
{
    DZ_HOST_SEEN("getLocalPos");
    return reading(toDzVec3(Reader {t, defaultVal}.three(m_channel + PosX)));
}

DzQuat DzNode::getLocalRot() const
{
    return getLocalRot(g_sceneTime);
}

DzQuat DzNode::getLocalRot(DzTime t, bool defaultVal) const
{
    DZ_HOST_SEEN("getLocalRot");
    const Reader read = {t, defaultVal};
    const DzQuat turn = turnFromDegrees(m_order, read.three(m_channel + RotX));
    const Vec3d orientDeg = read.three(m_orient);
    if (isZero(orientDeg))
        return reading(turn);
    const DzQuat orient = turnFromDegrees(DzRotationOrder::XYZ, orientDeg);
    return reading(conj(orient) * turn * orient);
}

DzMatrix3 DzNode::getLocalScale() const
{
    return getLocalScale(g_sceneTime);
}

DzMatrix3 DzNode::getLocalScale(DzTime t, bool defaultVal) const
{
    DZ_HOST_SEEN("getLocalScale");
    return reading(toDzMatrix3(transformAt(t, defaultVal).localScale));
}

void DzNode::setLocalPos(const DzVec3& translation)
{
    setLocalPos(g_sceneTime, translation);
}

void DzNode::setLocalPos(DzTime t, const DzVec3& translation)
{
    if (DZ_HOST_CALL("setLocalPos"))
        return;
    const DzImplicitHold hold("Move");
    for (int i = 0; i < 3; ++i)
        m_channel[PosX + i]->setValue(t, translation[i]);
}

void DzNode::setLocalRot(const DzQuat& rotation)
{
    setLocalRot(g_sceneTime, rotation);
}

void DzNode::setLocalRot(DzTime t, const DzQuat& rotation)
{
    if (!DZ_HOST_CALL("setLocalRot"))
        setRotationFromLocal(t, rotation);
}

void DzNode::setRotationFromLocal(DzTime t, const DzQuat& local)
{
    const DzImplicitHold hold("Rotate");
    DzQuat turn = local;
    turn.normalize();
    const Vec3d orientDeg = Reader {t, false}.three(m_orient);
    if (!isZero(orientDeg)) {
        const DzQuat orient = turnFromDegrees(DzRotationOrder::XYZ, orientDeg);
        turn = orient * turn * conj(orient);
    }
    double present[3], rad[3];
    TurnRange ranges[3];
    for (int i = 0; i < 3; ++i) {
        present[i] = m_channel[RotX + i]->getValue(t) * kRadPerDeg;
        ranges[i] = turnRange(m_channel[RotX + i]);
    }
    decomposeNear(m_order, turn, present, ranges, rad);
    for (int i = 0; i < 3; ++i)
        m_channel[RotX + i]->setValue(t, float(rad[i] * kDegPerRad));
}

void DzNode::setLocalScale(const DzMatrix3& scale)
{
    setLocalScale(g_sceneTime, scale);
}

void DzNode::setLocalScale(DzTime t, const DzMatrix3& scale)
{
    if (DZ_HOST_CALL("setLocalScale"))
        return;
    const DzImplicitHold hold("Scale");
    Mat3d own = toMat3d(scale);
    const Vec3d orientDeg = Reader {t, false}.three(m_orient);
    if (!isZero(orientDeg)) {
        const Mat3d o = rotationMatrix(turnFromDegrees(DzRotationOrder::XYZ, orientDeg));
        own = transposed(o) * own * o;
    }
    m_channel[ScaleAll]->setValue(t, 1);
    for (int i = 0; i < 3; ++i)
        m_channel[ScaleX + i]->setValue(t, float(own.m[i][i]));
}

// ---- origin, orientation, boxes ---------------------------------------------------------------

DzVec3 DzNode::getOrigin(bool defaultVal) const
{
    return toDzVec3(Reader {g_sceneTime, defaultVal}.three(m_origin));
}

// The channels cannot animate, so a value set is the default value at the same time.
void DzNode::setOrigin(const DzVec3& origin, bool)
{
    if (DZ_HOST_CALL("setOrigin"))
        return;
    const DzImplicitHold hold("Origin");
    const QScopedPointer<DzUndoStackLock> forgotten(
        dzUndoForgetsOrigins ? new DzUndoStackLock : nullptr);
    for (int i = 0; i < 3; ++i)
        m_origin[i]->setValue(origin[i]);
}

DzQuat DzNode::getOrientation(bool defaultVal) const
{
    return turnFromDegrees(DzRotationOrder::XYZ, Reader {g_sceneTime, defaultVal}.three(m_orient));
}

void DzNode::setOrientation(const DzQuat& orientation, bool)
{
    const DzImplicitHold hold("Orientation");
    DzQuat q = orientation;
    q.normalize();
    double rad[3];
    decompose(DzRotationOrder::XYZ, q, rad);
    for (int i = 0; i < 3; ++i)
        m_orient[i]->setValue(float(rad[i] * kDegPerRad));
}

DzBox3 DzNode::getLocalBoundingBox() const
{
    DZ_HOST_SEEN("getLocalBoundingBox");
    DzBox3 box;
    const DzBox3 geometry = m_object ? m_object->getGeometryBox() : DzBox3();
    if (!geometry.isValid())
        return box;
    const Transform& at = currentTransform();
    for (int corner = 0; corner < 8; ++corner) {
        Vec3d p;
        for (int i = 0; i < 3; ++i)
            p[i] = double(corner >> i & 1 ? geometry.getMax()[i] : geometry.getMin()[i]);
        box.include(toDzVec3(at.linear * (p - at.origin)));
    }
    return box;
}

DzBox3 DzNode::getWSBoundingBox() const
{
    DzBox3 box;
    const DzBox3 local = getLocalBoundingBox();
    if (local.isValid()) {
        const DzVec3 p = getWSPos();
        box = DzBox3(local.getMin() + p, local.getMax() + p);
    }
    for (const DzNode* child : m_children)
        box.include(child->getWSBoundingBox());
    return box;
}

// Boxes are computed when asked for; there is nothing to drop.
void DzNode::invalidateBoundingBoxes()
{
}
