#include "dzerclink.h"

#include "dzfloatproperty.h"

#include <algorithm>

DzERCLink::DzERCLink(DzFloatProperty* driver, ERCType type, double scalar, double addend)
    : m_property(driver)
    , m_type(type)
    , m_scalar(scalar)
    , m_addend(addend)
{
    readFrom(driver);
}

DzNumericProperty* DzERCLink::getProperty() const
{
    return m_property;
}

const DzNumericProperty* DzERCLink::getCurrentProperty() const
{
    return m_property;
}

DzERCLink::ERCType DzERCLink::getType() const
{
    return m_type;
}

double DzERCLink::getScalar() const
{
    return m_scalar;
}

double DzERCLink::getAddend() const
{
    return m_addend;
}

void DzERCLink::addKeyValue(double driverValue, double value)
{
    const std::pair<double, double> key(driverValue, value);
    m_keys.insert(std::lower_bound(m_keys.begin(), m_keys.end(), key), key);
    ownerChanged();
}

double DzERCLink::keyedValue(double c) const
{
    if (m_keys.empty())
        return 0;
    if (c <= m_keys.front().first)
        return m_keys.front().second;
    for (size_t i = 1; i < m_keys.size(); ++i) {
        if (c <= m_keys[i].first) {
            const std::pair<double, double>&a = m_keys[i - 1], &b = m_keys[i];
            const double span = b.first - a.first;
            return span > 0 ? a.second + (b.second - a.second) * (c - a.first) / span : b.second;
        }
    }
    return m_keys.back().second;
}

double DzERCLink::apply(double v, DzTime t, bool defaults) const
{
    if (!m_property)
        return v;
    const double c = defaults ? m_property->getDefaultedValue() : m_property->getValue(t);
    switch (m_type) {
    case ERCDeltaAdd0:
        return v + c * m_scalar + m_addend;
    case ERCDivideInto1:
        return v != 0 ? c / v + m_addend : v;
    case ERCDivideBy2:
        return c != 0 ? v / c + m_addend : v;
    case ERCMultiply3:
        return c * v + m_addend;
    case ERCSubtract4:
        return v - c + m_addend;
    case ERCAdd5:
        return v + c + m_addend;
    case ERCKeyed6:
        return v + keyedValue(c);
    }
    return v;
}

bool DzERCLink::invert(double r, DzTime t, double* v) const
{
    const double c = m_property ? m_property->getValue(t) : 0;
    *v = r;
    if (!m_property)
        return true;
    switch (m_type) {
    case ERCDeltaAdd0:
        *v = r - m_addend - c * m_scalar;
        return true;
    case ERCDivideInto1:
        if (r == m_addend || c == 0)
            return false;
        *v = c / (r - m_addend);
        return true;
    case ERCDivideBy2:
        if (c != 0)
            *v = (r - m_addend) * c;
        return true;
    case ERCMultiply3:
        if (c == 0)
            return false;
        *v = (r - m_addend) / c;
        return true;
    case ERCSubtract4:
        *v = r - m_addend + c;
        return true;
    case ERCAdd5:
        *v = r - m_addend - c;
        return true;
    case ERCKeyed6:
        *v = r - keyedValue(c);
        return true;
    }
    return false;
}

void DzERCLink::driverRemoved()
{
    m_property = nullptr;
    ownerChanged();
}
