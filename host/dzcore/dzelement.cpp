#include "dzelement.h"

#include "dzclock.h"
#include "dzcontroller.h"
#include "dzproperty.h"
#include "dzundoitem.h"
#include "dzundostack.h"

#include <utility>

DzElement::DzElement(const QString& name)
    : DzBase(name)
{
}

DzElement::~DzElement()
{
    m_byName.clear();
    qDeleteAll(m_properties);
    qDeleteAll(m_removed);
}

QString DzElement::getLabel() const
{
    return m_label.isEmpty() ? getName() : m_label;
}

void DzElement::setLabel(const QString& label)
{
    if (label == m_label)
        return;
    QString other = m_label;
    dzRecordExchange(this, [this, other]() mutable {
        std::swap(m_label, other);
        emit labelChanged(getLabel());
    });
    m_label = label;
    noteSceneChange();
    emit labelChanged(getLabel());
}

int DzElement::getNumProperties() const
{
    return m_properties.size();
}

DzProperty* DzElement::getProperty(int i) const
{
    return i >= 0 && i < m_properties.size() ? m_properties.at(i) : nullptr;
}

DzProperty* DzElement::findProperty(const QString& name) const
{
    return m_byName.value(name, nullptr);
}

DzProperty* DzElement::findProperty(const QString& name, bool caseSensitive) const
{
    if (caseSensitive)
        return findProperty(name);
    for (DzProperty* p : m_properties)
        if (p->getName().compare(name, Qt::CaseInsensitive) == 0)
            return p;
    return nullptr;
}

DzProperty* DzElement::findPropertyByLabel(const QString& label) const
{
    for (DzProperty* p : m_properties)
        if (p->getLabel() == label)
            return p;
    return nullptr;
}

bool DzElement::addProperty(DzProperty* property)
{
    if (!property || property->m_owner || m_byName.contains(property->getName()))
        return false;
    property->m_owner = this;
    m_properties.append(property);
    m_byName.insert(property->getName(), property);
    noteSceneChange();
    emit propertyAdded(property);
    emit propertyListChanged();
    return true;
}

bool DzElement::removeProperty(DzProperty* property)
{
    if (!property || property->m_owner != this || m_removed.contains(property))
        return false;
    m_properties.removeOne(property);
    m_removed.append(property);
    propertyNameChanged();
    const QList<DzController*> driven = property->m_driven;
    for (DzController* link : driven)
        link->getOwner()->removeController(link);
    noteSceneChange();
    emit propertyRemoved(property);
    emit propertyListChanged();
    return true;
}

void DzElement::propertyNameChanged()
{
    m_byName.clear();
    for (DzProperty* p : std::as_const(m_properties))
        m_byName.insert(p->getName(), p);
}

void DzElement::beginEdit()
{
    if (dzUndoStack)
        dzUndoStack->beginHold();
}

void DzElement::finishEdit()
{
    if (dzUndoStack)
        dzUndoStack->accept(getLabel());
}

void DzElement::cancelEdit()
{
    if (dzUndoStack)
        dzUndoStack->cancel();
}
