// same_value.h - exact comparison of the host's value types, member by member: the host is not
// known to compare them itself.
#pragma once

#include "ground/host_types.h"

namespace quillon {

inline bool sameValue(const DzVec3& a, const DzVec3& b) // x, y, z
{
    return a.m_x == b.m_x && a.m_y == b.m_y && a.m_z == b.m_z;
}

// The same four numbers; q and -q, which turn alike, differ here.
inline bool sameValue(const DzQuat& a, const DzQuat& b)
{
    return a.m_x == b.m_x && a.m_y == b.m_y && a.m_z == b.m_z && a.m_w == b.m_w;
}

inline bool sameValue(const DzMatrix3& a, const DzMatrix3& b) // the axes' rows and the translation
{
    for (int i = 0; i < 4; ++i)
        if (!sameValue(a.row(i), b.row(i)))
            return false;
    return true;
}

} // namespace quillon
