#include "dzclassfactory.h"

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
