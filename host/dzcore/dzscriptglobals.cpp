#include "dzscriptglobals.h"
#include "dzaction.h"
#include "dzactionmgr.h"
#include "dzapp.h"
#include "dzbone.h"
#include "dzclassfactory.h"
#include "dzcontentmgr.h"
#include "dzfloatproperty.h"
#include "dzmainwindow.h"
#include "dzpane.h"
#include "dzpanegroup.h"
#include "dzpanemgr.h"
#include "dzscene.h"
#include "dzskeleton.h"
#include "dzundostack.h"

#include <QScriptContext>
#include <QScriptEngine>
#include <QStringList>

Q_DECLARE_METATYPE(DzAction*)
Q_DECLARE_METATYPE(DzActionMgr*)
Q_DECLARE_METATYPE(DzBone*)
Q_DECLARE_METATYPE(DzContentMgr*)
Q_DECLARE_METATYPE(DzFloatProperty*)
Q_DECLARE_METATYPE(DzMainWindow*)
Q_DECLARE_METATYPE(DzNode*)
Q_DECLARE_METATYPE(DzPane*)
Q_DECLARE_METATYPE(DzPaneGroup*)
Q_DECLARE_METATYPE(DzPaneMgr*)
Q_DECLARE_METATYPE(DzProperty*)
Q_DECLARE_METATYPE(DzSkeleton*)

static QScriptValue wrapObject(QScriptEngine* engine, QObject* object)
{
    return object ? engine->newQObject(
               object, QScriptEngine::QtOwnership, QScriptEngine::PreferExistingWrapperObject)
                  : engine->nullValue();
}

template <class T> static QScriptValue toScript(QScriptEngine* engine, T* const& object)
{
    return wrapObject(engine, object);
}

template <class T> static void fromScript(const QScriptValue& value, T*& object)
{
    object = qobject_cast<T*>(value.toQObject()); // null for anything else
}

template <class T> static void registerPointer(QScriptEngine* engine)
{
    qScriptRegisterMetaType<T*>(engine, toScript<T>, fromScript<T>);
}

static void registerPointers(QScriptEngine* engine)
{
    registerPointer<DzAction>(engine);
    registerPointer<DzActionMgr>(engine);
    registerPointer<DzBone>(engine);
    registerPointer<DzContentMgr>(engine);
    registerPointer<DzFloatProperty>(engine);
    registerPointer<DzMainWindow>(engine);
    registerPointer<DzNode>(engine);
    registerPointer<DzPane>(engine);
    registerPointer<DzPaneGroup>(engine);
    registerPointer<DzPaneMgr>(engine);
    registerPointer<DzProperty>(engine);
    registerPointer<DzSkeleton>(engine);
}

static QScriptValue printToLog(QScriptContext* context, QScriptEngine* engine)
{
    QStringList words;
    for (int i = 0; i < context->argumentCount(); ++i)
        words.append(context->argument(i).toString());
    if (dzApp)
        dzApp->log(words.join(QLatin1String(" ")));
    return engine->undefinedValue();
}

void dzEquipScriptEngine(QScriptEngine* engine)
{
    registerPointers(engine);
    QScriptValue global = engine->globalObject();
    QObject* window = dzApp ? dzApp->getInterface() : nullptr;
    QObject* content = dzApp ? dzApp->getContentMgr() : nullptr;
    global.setProperty(QLatin1String("App"), wrapObject(engine, dzApp));
    global.setProperty(QLatin1String("MainWindow"), wrapObject(engine, window));
    global.setProperty(QLatin1String("ContentMgr"), wrapObject(engine, content));
    global.setProperty(QLatin1String("Scene"), wrapObject(engine, dzScene));
    global.setProperty(QLatin1String("UndoStack"), wrapObject(engine, dzUndoStack));
    global.setProperty(QLatin1String("print"), engine->newFunction(printToLog));
    if (!dzApp)
        return;
    const QList<DzClassFactory*> factories = dzApp->getClassFactories();
    for (int i = 0; i < factories.size(); ++i)
        factories.at(i)->registerClass(engine);
}
