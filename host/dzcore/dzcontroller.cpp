#include "dzcontroller.h"

#include "dzproperty.h"

DzController::DzController()
    : m_owner(nullptr)
    , m_driver(nullptr)
{
}

DzController::~DzController()
{
    readFrom(nullptr);
}

DzProperty* DzController::getOwner() const
{
    return m_owner;
}

DzProperty* DzController::getDriver() const
{
    return m_driver;
}

void DzController::readFrom(DzProperty* driver)
{
    if (m_driver)
        m_driver->m_driven.removeOne(this);
    m_driver = driver;
    if (m_driver)
        m_driver->m_driven.append(this);
}

void DzController::ownerChanged()
{
    if (m_owner)
        m_owner->valueDidChange();
}

const DzNumericController* DzController::numeric() const
{
    return nullptr;
}

DzNumericController::DzNumericController()
{
}

const DzNumericController* DzNumericController::numeric() const
{
    return this;
}
