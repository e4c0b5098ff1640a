#include "dzmorph.h"

#include "dzfloatproperty.h"

DzMorph::DzMorph(const QString& name)
    : DzModifier(name)
    , m_value(new DzFloatProperty(QLatin1String("Value")))
{
    addProperty(m_value);
}

DzFloatProperty* DzMorph::getValueChannel() const
{
    return m_value;
}
