#include "dzbox3.h"

#include <algorithm>
#include <limits>

DzBox3::DzBox3()
{
    const float big = std::numeric_limits<float>::max();
    m_min = DzVec3(big, big, big);
    m_max = DzVec3(-big, -big, -big);
}

DzBox3::DzBox3(const DzVec3& minimum, const DzVec3& maximum)
    : m_min(minimum)
    , m_max(maximum)
{
}

bool DzBox3::isValid() const
{
    return m_min.m_x <= m_max.m_x && m_min.m_y <= m_max.m_y && m_min.m_z <= m_max.m_z;
}

DzVec3 DzBox3::getCenter() const
{
    return m_min + (m_max - m_min) * 0.5f;
}

void DzBox3::include(const DzVec3& p)
{
    for (int i = 0; i < 3; ++i) {
        m_min[i] = std::min(m_min[i], p[i]);
        m_max[i] = std::max(m_max[i], p[i]);
    }
}

void DzBox3::include(const DzBox3& box)
{
    if (!box.isValid())
        return;
    include(box.m_min);
    include(box.m_max);
}
