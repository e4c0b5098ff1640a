#include "plugin/class_factories.h"

#include "pane/dzquillonpane.h"
#include "plugin/dzquillonpaneaction.h"
#include "plugin/quillonaboutaction.h"

#include <QByteArray>
#include <QMetaEnum>
#include <QMetaObject>
#include <QMetaType>
#include <QScriptContext>
#include <QScriptEngine>
#include <QScriptValue>

Q_DECLARE_METATYPE(DzQuillonPane*)
Q_DECLARE_METATYPE(DzQuillonPaneAction*)
Q_DECLARE_METATYPE(QuillonAboutAction*)

// ---- what a script engine needs to know of a class -------------------------------------------

template <typename T> static constexpr int kClassSlot = -1;
template <> constexpr int kClassSlot<DzQuillonPane> = 0;
template <> constexpr int kClassSlot<DzQuillonPaneAction> = 1;
template <> constexpr int kClassSlot<QuillonAboutAction> = 2;

// The factories behind the script constructors; null before any engine knows the class, and after
// the factory's end. Plain pointers: a factory may end after other static objects.
static const DzClassFactory* g_scriptFactories[3] = {};

template <typename T> static const DzClassFactory*& scriptFactory()
{
    return g_scriptFactories[kClassSlot<T>];
}

// Gives T* its name in the meta-type system. Once in the process, however many engines there are.
template <typename T> static int registerPointerType()
{
    static const int s_id
        = qRegisterMetaType<T*>((QByteArray(T::staticMetaObject.className()) + '*').constData());
    return s_id;
}

void setEnumKeys(const QMetaObject& meta, QScriptValue object)
{
    for (int i = meta.enumeratorOffset(); i < meta.enumeratorCount(); ++i) {
        const QMetaEnum list = meta.enumerator(i);
        for (int k = 0; k < list.keyCount(); ++k)
            object.setProperty(QLatin1String(list.key(k)), QScriptValue(list.value(k)),
                QScriptValue::ReadOnly | QScriptValue::Undeletable);
    }
}

template <typename T> static QScriptValue toScript(QScriptEngine* engine, T* const& object)
{
    const QScriptValue value = engine->newQObject(object);
    if (scriptFactory<T>())
        setEnumKeys(T::staticMetaObject, value);
    return value;
}

template <typename T> static void fromScript(const QScriptValue& value, T*& object)
{
    object = qobject_cast<T*>(value.toQObject());
}

template <typename T> static QScriptValue construct(QScriptContext*, QScriptEngine* engine)
{
    const DzClassFactory* factory = scriptFactory<T>();
    QObject* object = factory ? factory->createInstance() : nullptr;
    return object ? toScript<T>(engine, static_cast<T*>(object)) : QScriptValue();
}

// ---- the factories ---------------------------------------------------------------------------

// Likely: a factory is made of the class's meta-object and its GUID. Guessed: a GUID is made of its
// text so. Else DZ_PLUGIN_CUSTOM_CLASS_GUID makes both, and leaves createInstance() to us.
template <typename T>
QuillonClassFactory<T>::QuillonClassFactory(const char* guid)
    : DzClassFactory(&T::staticMetaObject, DzGuid::fromString(QLatin1String(guid)))
{
}

template <typename T> QuillonClassFactory<T>::~QuillonClassFactory()
{
    if (scriptFactory<T>() == this)
        scriptFactory<T>() = nullptr;
}

template <typename T> QObject* QuillonClassFactory<T>::createInstance() const
{
    return new T;
}

template <typename T> QObject* QuillonClassFactory<T>::createInstance(const QVariantList&) const
{
    return createInstance();
}

// Guessed: the host calls this for each of its script engines, and the base class's work comes
// first. Else the compiler refuses the "override"; without this function scripts cannot make the
// classes, and all else works.
template <typename T> void QuillonClassFactory<T>::registerClass(QScriptEngine* engine) const
{
    DzClassFactory::registerClass(engine);
    scriptFactory<T>() = this;
    registerPointerType<T>();
    qScriptRegisterMetaType<T*>(engine, toScript<T>, fromScript<T>);
    const QScriptValue constructor = engine->newFunction(construct<T>);
    const QScriptValue wrapper = engine->newQMetaObject(&T::staticMetaObject, constructor);
    engine->globalObject().setProperty(
        QLatin1String(T::staticMetaObject.className()), wrapper, QScriptValue::KeepExistingFlags);
}

template class QuillonClassFactory<DzQuillonPane>;
template class QuillonClassFactory<DzQuillonPaneAction>;
template class QuillonClassFactory<QuillonAboutAction>;
