#include "dzrotationorder.h"

static const char* const kOrderNames[] = {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"};

int DzRotationOrder::operator[](int i) const
{
    return kOrderNames[m_order][i] - 'X';
}

QString DzRotationOrder::toString() const
{
    return QLatin1String(kOrderNames[m_order]);
}

DzRotationOrder DzRotationOrder::fromString(const QString& text, bool* ok)
{
    for (int i = 0; i < 6; ++i) {
        if (text == QLatin1String(kOrderNames[i])) {
            if (ok)
                *ok = true;
            return RotOrder(i);
        }
    }
    if (ok)
        *ok = false;
    return XYZ;
}
