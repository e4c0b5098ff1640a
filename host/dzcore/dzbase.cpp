#include "dzbase.h"

#include "dzclock.h"
#include "dzundoitem.h"

#include <utility>

DzBase::DzBase(const QString& name)
    : m_name(name)
{
}

DzBase::~DzBase()
{
}

QString DzBase::getName() const
{
    return m_name;
}

void DzBase::setName(const QString& name)
{
    if (name == m_name)
        return;
    QString other = m_name;
    dzRecordExchange(this, [this, other]() mutable {
        std::swap(m_name, other);
        nameDidChange();
    });
    m_name = name;
    noteSceneChange();
    nameDidChange();
}

QString DzBase::className() const
{
    return QLatin1String(metaObject()->className());
}

bool DzBase::iskindof(const QString& name) const
{
    return inherits(name.toLatin1().constData());
}

bool DzBase::isInScene() const
{
    return false;
}

void DzBase::nameDidChange()
{
    emit nameChanged(m_name);
}
