#include "dzmatrix3.h"

#include "dztransform.h"

DzMatrix3::DzMatrix3(bool identity)
{
    const float one = identity ? 1.0f : 0.0f;
    for (int i = 0; i < 3; ++i)
        m_row[i][i] = one;
}

DzMatrix3::DzMatrix3(
    const DzVec3& row0, const DzVec3& row1, const DzVec3& row2, const DzVec3& translation)
{
    m_row[0] = row0;
    m_row[1] = row1;
    m_row[2] = row2;
    m_row[3] = translation;
}

DzVec3 DzMatrix3::multVec(const DzVec3& v) const
{
    return m_row[0] * v.m_x + m_row[1] * v.m_y + m_row[2] * v.m_z + m_row[3];
}

DzMatrix3 DzMatrix3::operator*(const DzMatrix3& b) const
{
    DzMatrix3 r(false);
    for (int i = 0; i < 4; ++i) {
        const DzVec3& a = m_row[i];
        r.m_row[i] = b.m_row[0] * a.m_x + b.m_row[1] * a.m_y + b.m_row[2] * a.m_z;
    }
    r.m_row[3] += b.m_row[3];
    return r;
}

DzMatrix3 DzMatrix3::inverse() const
{
    Mat3d inv;
    if (!inverted(toMat3d(*this), &inv))
        return DzMatrix3();
    DzMatrix3 r = toDzMatrix3(inv);
    r.m_row[3] = -toDzVec3(inv * toVec3d(m_row[3]));
    return r;
}

bool DzMatrix3::isIdentity() const
{
    return *this == DzMatrix3();
}

bool DzMatrix3::operator==(const DzMatrix3& b) const
{
    return m_row[0] == b.m_row[0] && m_row[1] == b.m_row[1] && m_row[2] == b.m_row[2]
        && m_row[3] == b.m_row[3];
}
