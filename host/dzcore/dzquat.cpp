#include "dzquat.h"

#include "dztransform.h"

#include <cmath>

DzQuat::DzQuat(double x, double y, double z, double w, bool normalizeIt)
{
    setValue(x, y, z, w, normalizeIt);
}

DzQuat::DzQuat(const DzVec3& axis, double angleRad)
{
    setValue(axis, angleRad);
}

DzQuat::DzQuat(DzRotationOrder::RotOrder order, const DzVec3& anglesRad)
{
    setValue(order, anglesRad);
}

DzQuat::DzQuat(const DzMatrix3& m)
{
    setValue(m);
}

void DzQuat::setValue(double x, double y, double z, double w, bool normalizeIt)
{
    m_x = x;
    m_y = y;
    m_z = z;
    m_w = w;
    if (normalizeIt)
        normalize();
}

void DzQuat::setValue(const DzVec3& axis, double angleRad)
{
    const Vec3d n = toVec3d(axis);
    const double len = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    const double s = len > 0 ? -std::sin(angleRad / 2) / len : 0;
    setValue(n[0] * s, n[1] * s, n[2] * s, len > 0 ? std::cos(angleRad / 2) : 1, false);
}

void DzQuat::setValue(DzRotationOrder::RotOrder order, const DzVec3& anglesRad)
{
    const double a[3] = {anglesRad.m_x, anglesRad.m_y, anglesRad.m_z};
    *this = eulerTurn(order, a);
}

void DzQuat::setValue(const DzMatrix3& m)
{
    *this = rotationQuat(toMat3d(m));
}

double DzQuat::getValue(DzVec3& axis) const
{
    const double len = std::sqrt(m_x * m_x + m_y * m_y + m_z * m_z);
    if (len == 0) {
        axis = DzVec3();
        return 0;
    }
    axis = DzVec3(float(-m_x / len), float(-m_y / len), float(-m_z / len));
    return 2 * std::atan2(len, m_w);
}

void DzQuat::getValue(DzRotationOrder::RotOrder order, DzVec3& anglesRad) const
{
    double a[3];
    decompose(order, *this, a);
    anglesRad = DzVec3(float(a[0]), float(a[1]), float(a[2]));
}

void DzQuat::getMatrix(DzMatrix3& m) const
{
    m = toDzMatrix3(rotationMatrix(*this));
}

DzQuat DzQuat::operator*(const DzQuat& b) const
{
    return DzQuat(m_w * b.m_x + m_x * b.m_w + m_y * b.m_z - m_z * b.m_y,
        m_w * b.m_y - m_x * b.m_z + m_y * b.m_w + m_z * b.m_x,
        m_w * b.m_z + m_x * b.m_y - m_y * b.m_x + m_z * b.m_w,
        m_w * b.m_w - m_x * b.m_x - m_y * b.m_y - m_z * b.m_z, false);
}

DzQuat DzQuat::inverse() const
{
    const double n = m_x * m_x + m_y * m_y + m_z * m_z + m_w * m_w;
    if (n == 0)
        return DzQuat();
    if (n == 1)
        return DzQuat(-m_x, -m_y, -m_z, m_w, false);
    return DzQuat(-m_x / n, -m_y / n, -m_z / n, m_w / n, false);
}

DzVec3 DzQuat::multVec(const DzVec3& v) const
{
    return toDzVec3(rotationMatrix(*this) * toVec3d(v));
}

bool DzQuat::isIdentity() const
{
    return m_x == 0 && m_y == 0 && m_z == 0 && std::fabs(m_w) == 1;
}

double DzQuat::length() const
{
    return std::sqrt(m_x * m_x + m_y * m_y + m_z * m_z + m_w * m_w);
}

void DzQuat::normalize()
{
    const double len = length();
    if (len == 0 || !std::isfinite(len)) {
        *this = DzQuat();
        return;
    }
    m_x /= len;
    m_y /= len;
    m_z /= len;
    m_w /= len;
}

bool DzQuat::operator==(const DzQuat& q) const
{
    return m_x == q.m_x && m_y == q.m_y && m_z == q.m_z && m_w == q.m_w;
}

DzQuat DzQuat::slerp(const DzQuat& from, const DzQuat& to, double t)
{
    double dot = from.m_x * to.m_x + from.m_y * to.m_y + from.m_z * to.m_z + from.m_w * to.m_w;
    const double sign = dot < 0 ? -1 : 1;
    dot *= sign;
    double a = 1 - t, b = t;
    if (dot < 0.9999995) { // else so close that a straight line is as good
        const double angle = std::acos(dot);
        a = std::sin((1 - t) * angle) / std::sin(angle);
        b = std::sin(t * angle) / std::sin(angle);
    }
    b *= sign;
    return DzQuat(a * from.m_x + b * to.m_x, a * from.m_y + b * to.m_y, a * from.m_z + b * to.m_z,
        a * from.m_w + b * to.m_w);
}
