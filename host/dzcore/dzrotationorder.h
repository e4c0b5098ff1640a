// dzrotationorder.h - the six sequences of turns about the own axes. The first letter is the turn
// applied first.
#pragma once

#include "dzcore_export.h"

#include <QString>

class DZCORE_EXPORT DzRotationOrder {
public:
    enum RotOrder { XYZ = 0, XZY, YXZ, YZX, ZXY, ZYX };

    DzRotationOrder(RotOrder order = XYZ)
        : m_order(order)
    {
    }

    RotOrder order() const
    {
        return m_order;
    }
    int operator[](int i) const; // axis 0..2 (x, y, z) of the i-th turn, i in 0..2
    QString toString() const; // "XYZ"
    static DzRotationOrder fromString(const QString&, bool* ok = nullptr); // XYZ when unknown

    bool operator==(const DzRotationOrder& o) const
    {
        return m_order == o.m_order;
    }
    bool operator!=(const DzRotationOrder& o) const
    {
        return m_order != o.m_order;
    }

private:
    RotOrder m_order;
};
