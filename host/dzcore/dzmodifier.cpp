#include "dzmodifier.h"

#include "dzobject.h"

DzModifier::DzModifier(const QString& name)
    : DzElement(name)
    , m_object(nullptr)
{
}

bool DzModifier::isInScene() const
{
    return m_object && m_object->isInScene();
}
