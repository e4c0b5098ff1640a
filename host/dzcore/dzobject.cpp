#include "dzobject.h"

#include "dzclock.h"
#include "dzmodifier.h"
#include "dznode.h"

DzObject::DzObject(const QString& name)
    : DzElement(name)
    , m_node(nullptr)
{
}

bool DzObject::isInScene() const
{
    return m_node && m_node->isInScene();
}

DzObject::~DzObject()
{
    qDeleteAll(m_modifiers);
    qDeleteAll(m_removed);
}

int DzObject::getNumModifiers() const
{
    return m_modifiers.size();
}

DzModifier* DzObject::getModifier(int i) const
{
    return i >= 0 && i < m_modifiers.size() ? m_modifiers.at(i) : nullptr;
}

DzModifier* DzObject::findModifier(const QString& name) const
{
    return m_byName.value(name, nullptr);
}

bool DzObject::addModifier(DzModifier* modifier)
{
    if (!modifier || m_byName.contains(modifier->getName()))
        return false;
    modifier->m_object = this;
    m_modifiers.append(modifier);
    m_byName.insert(modifier->getName(), modifier);
    noteSceneChange();
    return true;
}

bool DzObject::removeModifier(DzModifier* modifier)
{
    if (!m_modifiers.removeOne(modifier))
        return false;
    m_byName.remove(modifier->getName());
    m_removed.append(modifier);
    noteSceneChange();
    return true;
}

DzBox3 DzObject::getGeometryBox() const
{
    return m_box;
}

void DzObject::setGeometryBox(const DzBox3& box)
{
    m_box = box;
    noteSceneChange();
}
