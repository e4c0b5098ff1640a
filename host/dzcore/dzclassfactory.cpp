#include "dzclassfactory.h"

#include <QMetaEnum>
#include <QMetaObject>

DzClassFactory::DzClassFactory(const QMetaObject* metaObject, const DzGuid& guid)
    : m_meta(metaObject)
    , m_guid(guid)
{
}

DzClassFactory::~DzClassFactory()
{
}

QString DzClassFactory::className() const
{
    return QString::fromLatin1(m_meta->className());
}

const QMetaObject* DzClassFactory::metaObject() const
{
    return m_meta;
}

const DzGuid& DzClassFactory::getGuid() const
{
    return m_guid;
}

bool DzClassFactory::createsKindOf(const QMetaObject* base) const
{
    for (const QMetaObject* meta = m_meta; meta; meta = meta->superClass()) {
        if (meta == base)
            return true;
    }
    return false;
}

QObject* DzClassFactory::createInstance(const QVariantList&) const
{
    return createInstance();
}

void DzClassFactory::registerClass(QScriptEngine* engine) const
{
    m_engine = engine;
}

QScriptEngine* DzClassFactory::getScriptEngine() const
{
    return m_engine;
}

void DzClassFactory::registerEnums(QScriptValue object) const
{
    for (int i = m_meta->enumeratorOffset(); i < m_meta->enumeratorCount(); ++i) {
        const QMetaEnum list = m_meta->enumerator(i);
        for (int k = 0; k < list.keyCount(); ++k)
            object.setProperty(QString::fromLatin1(list.key(k)), QScriptValue(list.value(k)),
                QScriptValue::ReadOnly | QScriptValue::Undeletable);
    }
}
