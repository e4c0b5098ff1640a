// dztimerange.h - a span of ticks, both ends included.
#pragma once

#include "dztime.h"

class DzTimeRange {
public:
    DzTimeRange()
        : m_start(0)
        , m_end(0)
    {
    }
    DzTimeRange(DzTime start, DzTime end)
        : m_start(start)
        , m_end(end)
    {
    }

    DzTime getStart() const
    {
        return m_start;
    }
    DzTime getEnd() const
    {
        return m_end;
    }
    DzTime getDuration() const
    {
        return m_end - m_start;
    }
    bool isIncluded(DzTime t) const
    {
        return m_start <= t && t <= m_end;
    }
    bool operator==(const DzTimeRange& r) const
    {
        return m_start == r.m_start && m_end == r.m_end;
    }
    bool operator!=(const DzTimeRange& r) const
    {
        return !(*this == r);
    }

private:
    DzTime m_start, m_end;
};
