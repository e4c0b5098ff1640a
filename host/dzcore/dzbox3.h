// dzbox3.h - axis-aligned box; invalid until it includes a point.
#pragma once

#include "dzvec3.h"

class DZCORE_EXPORT DzBox3 {
public:
    DzBox3();
    DzBox3(const DzVec3& minimum, const DzVec3& maximum);

    bool isValid() const;
    const DzVec3& getMin() const
    {
        return m_min;
    }
    const DzVec3& getMax() const
    {
        return m_max;
    }
    DzVec3 getCenter() const;
    void include(const DzVec3&);
    void include(const DzBox3&); // an invalid box adds nothing

private:
    DzVec3 m_min, m_max;
};
