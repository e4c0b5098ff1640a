#include "dzproperty.h"

#include "dzclock.h"
#include "dzcontroller.h"
#include "dzelement.h"

#include <utility>

DzProperty::DzProperty(const QString& name, bool canAnimate, bool isUser)
    : DzBase(name)
    , m_owner(nullptr)
    , m_canAnimate(canAnimate)
    , m_isUser(isUser)
    , m_hidden(false)
{
}

DzProperty::~DzProperty()
{
    for (DzController* link : std::as_const(m_driven)) {
        link->m_driver = nullptr;
        link->driverRemoved();
    }
    qDeleteAll(m_controllers);
}

bool DzProperty::isInScene() const
{
    return m_owner && m_owner->isInScene();
}

DzElement* DzProperty::getOwner() const
{
    return m_owner;
}

QString DzProperty::getLabel() const
{
    return m_label.isEmpty() ? getName() : m_label;
}

void DzProperty::setLabel(const QString& label)
{
    m_label = label;
    emit labelChanged(getLabel());
}

QString DzProperty::getPath() const
{
    return m_path;
}

void DzProperty::setPath(const QString& path)
{
    m_path = path;
}

bool DzProperty::isHidden() const
{
    return m_hidden;
}

void DzProperty::setHidden(bool hidden)
{
    m_hidden = hidden;
}

bool DzProperty::canAnimate() const
{
    return m_canAnimate;
}

bool DzProperty::hasControllers() const
{
    return !m_controllers.isEmpty();
}

int DzProperty::getNumControllers() const
{
    return m_controllers.size();
}

DzController* DzProperty::getController(int i) const
{
    return i >= 0 && i < m_controllers.size() ? m_controllers.at(i) : nullptr;
}

// Whether property's value depends on driver, directly or through other drivers.
static bool dependsOn(const DzProperty* property, const DzProperty* driver)
{
    if (property == driver)
        return true;
    for (int i = 0; i < property->getNumControllers(); ++i) {
        const DzProperty* next = property->getController(i)->getDriver();
        if (next && dependsOn(next, driver))
            return true;
    }
    return false;
}

bool DzProperty::insertController(DzController* controller)
{
    if (!controller || controller->m_owner)
        return false;
    if (controller->m_driver && dependsOn(controller->m_driver, this))
        return false;
    controller->m_owner = this;
    m_controllers.append(controller);
    valueDidChange();
    return true;
}

bool DzProperty::removeController(DzController* controller)
{
    if (!m_controllers.removeOne(controller))
        return false;
    delete controller;
    valueDidChange();
    return true;
}

void DzProperty::nameDidChange()
{
    if (m_owner)
        m_owner->propertyNameChanged();
    DzBase::nameDidChange();
}
