// dzclassfactory.h - makes instances of one class, for the host and for scripts.
#pragma once

#include "dzguid.h"

#include <QPointer>
#include <QScriptEngine>
#include <QString>
#include <QVariant>

struct QMetaObject;
class QObject;

class DZCORE_EXPORT DzClassFactory {
public:
    DzClassFactory(const QMetaObject* metaObject, const DzGuid& guid);
    virtual ~DzClassFactory();

    QString className() const;
    const QMetaObject* metaObject() const;
    const DzGuid& getGuid() const;
    bool createsKindOf(const QMetaObject* base) const; // the class is base or derives from it

    // A new instance that the caller owns; null when it cannot be made.
    virtual QObject* createInstance() const = 0;
    virtual QObject* createInstance(const QVariantList& args) const; // base: ignores the arguments

    // Makes the class known to a script engine. The base call remembers the engine; an override
    // calls it first, then sets the constructor as a global. Called once for each engine.
    virtual void registerClass(QScriptEngine*) const;
    QScriptEngine* getScriptEngine() const; // the engine registered last; null once it is gone

private:
    Q_DISABLE_COPY(DzClassFactory)
    const QMetaObject* m_meta;
    DzGuid m_guid;
    mutable QPointer<QScriptEngine> m_engine;
};
