#include "host/driver/script_scene.h"

#include "host/driver/script_values.h"
#include "host/figures/figure_loader.h"
#include "host/figures/prop_maker.h"

#include "dzfigure.h"
#include "dzproperty.h"
#include "dzscene.h"
#include "dzundostack.h"

namespace quillon {
namespace {

void selectOnly(DzNode* node)
{
    dzScene->selectAllNodes(false);
    node->select(true);
    dzScene->setPrimarySelection(node);
}

QScriptValue addToScene(QScriptEngine* engine, DzNode* node, const QString& caption)
{
    DzUndoStackHold hold;
    dzScene->addNode(node);
    hold.accept(caption);
    return toScript(engine, node);
}

QScriptValue loadFigureNode(QScriptContext* context, QScriptEngine* engine)
{
    QString why;
    DzFigure* figure = loadFigure(textArgument(context, 0), &why);
    if (!figure)
        return throwError(context, why);
    const QScriptValue wrapped = addToScene(engine, figure, QString("Load Figure"));
    selectOnly(figure);
    return wrapped;
}

QScriptValue addProp(QScriptContext* context, QScriptEngine* engine)
{
    DzVec3 min, max;
    if (!fromScript(context, 1, &min) || !fromScript(context, 2, &max))
        return QScriptValue();
    return addToScene(engine, makeProp(textArgument(context, 0), min, max), QString("Create Prop"));
}

QScriptValue removeNode(QScriptContext* context, QScriptEngine*)
{
    DzNode* node = objectArgument<DzNode>(context, 0);
    return node ? QScriptValue(dzScene->removeNode(node)) : QScriptValue();
}

QScriptValue findNode(QScriptContext* context, QScriptEngine* engine)
{
    return toScript(engine, dzScene->findNode(textArgument(context, 0)));
}

QScriptValue getNumNodes(QScriptContext*, QScriptEngine*)
{
    return dzScene->getNumNodes();
}

QScriptValue getNode(QScriptContext* context, QScriptEngine* engine)
{
    return toScript(engine, dzScene->getNode(intArgument(context, 0, -1)));
}

// Every node, parents before their children.
QScriptValue nodes(QScriptContext*, QScriptEngine* engine)
{
    QScriptValue list = engine->newArray(uint(dzScene->getNumNodes()));
    for (int i = 0; i < dzScene->getNumNodes(); ++i)
        list.setProperty(quint32(i), toScript(engine, dzScene->getNode(i)));
    return list;
}

QScriptValue clear(QScriptContext*, QScriptEngine* engine)
{
    dzScene->clear();
    return engine->undefinedValue();
}

QScriptValue getPrimarySelection(QScriptContext*, QScriptEngine* engine)
{
    return toScript(engine, dzScene->getPrimarySelection());
}

// A node that is not selected becomes the only one; null clears the selection.
QScriptValue setPrimarySelection(QScriptContext* context, QScriptEngine*)
{
    if (context->argument(0).isNull())
        return dzScene->setPrimarySelection(nullptr);
    DzNode* node = objectArgument<DzNode>(context, 0);
    if (!node)
        return QScriptValue();
    if (!node->isSelected())
        selectOnly(node);
    return dzScene->setPrimarySelection(node);
}

QScriptValue selectAll(QScriptContext* context, QScriptEngine* engine)
{
    dzScene->selectAllNodes(!hasArgument(context, 0) || context->argument(0).toBool());
    return engine->undefinedValue();
}

QScriptValue selectedNodes(QScriptContext*, QScriptEngine* engine)
{
    QScriptValue list = engine->newArray(uint(dzScene->getNumSelectedNodes()));
    for (int i = 0; i < dzScene->getNumSelectedNodes(); ++i)
        list.setProperty(quint32(i), toScript(engine, dzScene->getSelectedNode(i)));
    return list;
}

QScriptValue getTime(QScriptContext*, QScriptEngine*)
{
    return dzScene->getTime();
}

QScriptValue setTime(QScriptContext* context, QScriptEngine* engine)
{
    dzScene->setTime(intArgument(context, 0, 0));
    return engine->undefinedValue();
}

QScriptValue getTimeStep(QScriptContext*, QScriptEngine*)
{
    return dzScene->getTimeStep();
}

// [start, end], also as .start and .end
QScriptValue getAnimRange(QScriptContext*, QScriptEngine* engine)
{
    const DzTimeRange range = dzScene->getAnimRange();
    QScriptValue list = engine->newArray(2);
    list.setProperty(0, range.getStart());
    list.setProperty(1, range.getEnd());
    list.setProperty("start", range.getStart(), QScriptValue::SkipInEnumeration);
    list.setProperty("end", range.getEnd(), QScriptValue::SkipInEnumeration);
    return list;
}

QScriptValue setAnimRange(QScriptContext* context, QScriptEngine* engine)
{
    dzScene->setAnimRange(DzTimeRange(intArgument(context, 0, 0), intArgument(context, 1, 0)));
    return engine->undefinedValue();
}

QScriptValue count(QScriptContext*, QScriptEngine*)
{
    return dzUndoStack->getNumUndoItems();
}

QScriptValue captions(QScriptContext*, QScriptEngine* engine)
{
    return toScript(engine, dzUndoStack->getUndoCaptions());
}

const NativeRow kScene[] = {
    {"loadFigure", loadFigureNode},
    {"addProp", addProp},
    {"removeNode", removeNode},
    {"findNode", findNode},
    {"getNumNodes", getNumNodes},
    {"getNode", getNode},
    {"nodes", nodes},
    {"clear", clear},
    {"getPrimarySelection", getPrimarySelection},
    {"setPrimarySelection", setPrimarySelection},
    {"selectAll", selectAll},
    {"selectedNodes", selectedNodes},
    {"getTime", getTime},
    {"setTime", setTime},
    {"getTimeStep", getTimeStep},
    {"getAnimRange", getAnimRange},
    {"setAnimRange", setAnimRange},
};

const NativeRow kUndoStack[] = {
    {"count", count},
    {"captions", captions},
};

} // namespace

QScriptValue newPrototype(QScriptEngine* engine, int typeId)
{
    QScriptValue prototype = engine->newObject();
    prototype.setPrototype(engine->defaultPrototype(QMetaType::QObjectStar));
    engine->setDefaultPrototype(typeId, prototype);
    return prototype;
}

void equipSceneScripting(QScriptEngine* engine)
{
    equipPropertyScripting(engine);
    equipNodeScripting(engine);
    // These two are wrapped already, as globals.
    QScriptValue scene = newPrototype(engine, qRegisterMetaType<DzScene*>());
    addNatives(scene, kScene);
    toScript(engine, dzScene).setPrototype(scene);
    QScriptValue undo = newPrototype(engine, qRegisterMetaType<DzUndoStack*>());
    addNatives(undo, kUndoStack);
    toScript(engine, dzUndoStack).setPrototype(undo);
}

} // namespace quillon
