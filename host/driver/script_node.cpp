#include "host/driver/script_scene.h"

#include "host/driver/script_values.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzskeleton.h"

namespace quillon {
namespace {

// getWSPos([t]) and its like
template <class T, T (DzNode::*Now)() const, T (DzNode::*At)(DzTime, bool) const>
QScriptValue readPlace(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    if (!node)
        return QScriptValue();
    if (!hasArgument(context, 0))
        return toScript(engine, (node->*Now)());
    return toScript(engine, (node->*At)(context->argument(0).toInt32(), false));
}

// setWSPos([t,] v) and its like
template <class T, void (DzNode::*Now)(const T&), void (DzNode::*At)(DzTime, const T&)>
QScriptValue writePlace(QScriptContext* context, QScriptEngine* engine)
{
    DzNode* node = thisObject<DzNode>(context);
    const bool timed = hasArgument(context, 1);
    T value;
    if (!node || !fromScript(context, timed ? 1 : 0, &value))
        return QScriptValue();
    if (timed)
        (node->*At)(context->argument(0).toInt32(), value);
    else
        (node->*Now)(value);
    return engine->undefinedValue();
}

template <DzFloatProperty* (DzNode::*Get)() const>
QScriptValue channel(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    return node ? toScript(engine, (node->*Get)()) : QScriptValue();
}

QScriptValue getRotationOrder(QScriptContext* context, QScriptEngine*)
{
    const DzNode* node = thisObject<DzNode>(context);
    return node ? QScriptValue(node->getRotationOrder().toString()) : QScriptValue();
}

// By name ("YZX") or by number (0..5 in the order XYZ XZY YXZ YZX ZXY ZYX).
QScriptValue setRotationOrder(QScriptContext* context, QScriptEngine* engine)
{
    DzNode* node = thisObject<DzNode>(context);
    if (!node)
        return QScriptValue();
    const QScriptValue given = context->argument(0);
    bool ok = given.isNumber() && given.toInt32() >= 0 && given.toInt32() <= 5;
    DzRotationOrder order;
    if (ok)
        order = DzRotationOrder(DzRotationOrder::RotOrder(given.toInt32()));
    else
        order = DzRotationOrder::fromString(given.toString(), &ok);
    if (!ok)
        return throwError(context, QString("'%1' is no rotation order").arg(given.toString()));
    node->setRotationOrder(order);
    return engine->undefinedValue();
}

QScriptValue getOrigin(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    return node ? toScript(engine, node->getOrigin(context->argument(0).toBool())) : QScriptValue();
}

QScriptValue setOrigin(QScriptContext* context, QScriptEngine* engine)
{
    DzNode* node = thisObject<DzNode>(context);
    DzVec3 origin;
    if (!node || !fromScript(context, 0, &origin))
        return QScriptValue();
    node->setOrigin(origin, context->argument(1).toBool());
    return engine->undefinedValue();
}

QScriptValue getOrientation(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    return node ? toScript(engine, node->getOrientation(context->argument(0).toBool()))
                : QScriptValue();
}

QScriptValue getLocalBoundingBox(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    return node ? toScript(engine, node->getLocalBoundingBox()) : QScriptValue();
}

QScriptValue getNodeParent(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    return node ? toScript(engine, node->getNodeParent()) : QScriptValue();
}

// addNodeChild(node[, inPlace])
QScriptValue addNodeChild(QScriptContext* context, QScriptEngine*)
{
    DzNode* node = thisObject<DzNode>(context);
    DzNode* child = node ? objectArgument<DzNode>(context, 0) : nullptr;
    return child ? QScriptValue(node->addNodeChild(child, context->argument(1).toBool()))
                 : QScriptValue();
}

QScriptValue removeNodeChild(QScriptContext* context, QScriptEngine*)
{
    DzNode* node = thisObject<DzNode>(context);
    DzNode* child = node ? objectArgument<DzNode>(context, 0) : nullptr;
    return child ? QScriptValue(node->removeNodeChild(child, context->argument(1).toBool()))
                 : QScriptValue();
}

QScriptValue getSkeleton(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    return node ? toScript(engine, node->getSkeleton()) : QScriptValue();
}

QScriptValue findBone(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    if (!node)
        return QScriptValue();
    const DzSkeleton* skeleton = node->getSkeleton();
    return toScript(engine, skeleton ? skeleton->findBone(textArgument(context, 0)) : nullptr);
}

QScriptValue removeBone(QScriptContext* context, QScriptEngine*)
{
    const DzNode* node = thisObject<DzNode>(context);
    if (!node)
        return QScriptValue();
    DzSkeleton* skeleton = node->getSkeleton();
    DzBone* bone = skeleton ? skeleton->findBone(textArgument(context, 0)) : nullptr;
    return bone && skeleton->removeBone(bone);
}

template <class List> QScriptValue wrappedList(QScriptEngine* engine, const List& objects)
{
    QScriptValue list = engine->newArray(uint(objects.size()));
    for (int i = 0; i < objects.size(); ++i)
        list.setProperty(quint32(i), toScript(engine, objects.at(i)));
    return list;
}

// All bones of the figure that the node belongs to, parents before their children.
QScriptValue bones(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    if (!node)
        return QScriptValue();
    const DzSkeleton* skeleton = node->getSkeleton();
    return wrappedList(engine, skeleton ? skeleton->getAllBones() : QObjectList());
}

QScriptValue children(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    return node ? wrappedList(engine, node->getNodeChildren()) : QScriptValue();
}

QScriptValue properties(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    if (!node)
        return QScriptValue();
    QList<DzProperty*> found;
    for (int i = 0; i < node->getNumProperties(); ++i)
        found += node->getProperty(i);
    return wrappedList(engine, found);
}

QScriptValue findProperty(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    return node ? toScript(engine, node->findProperty(textArgument(context, 0), true))
                : QScriptValue();
}

DzMorph* findMorph(const DzNode* node, const QString& name)
{
    const DzObject* object = node->getObject();
    return object ? qobject_cast<DzMorph*>(object->findModifier(name)) : nullptr;
}

// A property of the figure node, or the value of a morph of its object.
QScriptValue findControl(QScriptContext* context, QScriptEngine* engine)
{
    const DzNode* node = thisObject<DzNode>(context);
    if (!node)
        return QScriptValue();
    const QString name = textArgument(context, 0);
    if (DzProperty* property = node->findProperty(name, true))
        return toScript(engine, property);
    const DzMorph* morph = findMorph(node, name);
    return toScript(engine, morph ? morph->getValueChannel() : nullptr);
}

QScriptValue removeControl(QScriptContext* context, QScriptEngine*)
{
    DzNode* node = thisObject<DzNode>(context);
    if (!node)
        return QScriptValue();
    const QString name = textArgument(context, 0);
    if (DzProperty* property = node->findProperty(name, true))
        return node->removeProperty(property);
    DzMorph* morph = findMorph(node, name);
    return morph && node->getObject()->removeModifier(morph);
}

typedef DzNode N;

// clang-format off
const NativeRow kNode[] = {
    {"getXPosControl",   channel<&N::getXPosControl>},
    {"getYPosControl",   channel<&N::getYPosControl>},
    {"getZPosControl",   channel<&N::getZPosControl>},
    {"getXRotControl",   channel<&N::getXRotControl>},
    {"getYRotControl",   channel<&N::getYRotControl>},
    {"getZRotControl",   channel<&N::getZRotControl>},
    {"getScaleControl",  channel<&N::getScaleControl>},
    {"getXScaleControl", channel<&N::getXScaleControl>},
    {"getYScaleControl", channel<&N::getYScaleControl>},
    {"getZScaleControl", channel<&N::getZScaleControl>},
    {"getOriginXControl", channel<&N::getOriginXControl>},
    {"getOriginYControl", channel<&N::getOriginYControl>},
    {"getOriginZControl", channel<&N::getOriginZControl>},
    {"getOrientXControl", channel<&N::getOrientXControl>},
    {"getOrientYControl", channel<&N::getOrientYControl>},
    {"getOrientZControl", channel<&N::getOrientZControl>},
    {"getWSPos",      readPlace<DzVec3, &N::getWSPos, &N::getWSPos>},
    {"getWSRot",      readPlace<DzQuat, &N::getWSRot, &N::getWSRot>},
    {"getWSScale",    readPlace<DzMatrix3, &N::getWSScale, &N::getWSScale>},
    {"getLocalPos",   readPlace<DzVec3, &N::getLocalPos, &N::getLocalPos>},
    {"getLocalRot",   readPlace<DzQuat, &N::getLocalRot, &N::getLocalRot>},
    {"getLocalScale", readPlace<DzMatrix3, &N::getLocalScale, &N::getLocalScale>},
    {"setWSPos",      writePlace<DzVec3, &N::setWSPos, &N::setWSPos>},
    {"setWSRot",      writePlace<DzQuat, &N::setWSRot, &N::setWSRot>},
    {"setWSScale",    writePlace<DzMatrix3, &N::setWSScale, &N::setWSScale>},
    {"setLocalPos",   writePlace<DzVec3, &N::setLocalPos, &N::setLocalPos>},
    {"setLocalRot",   writePlace<DzQuat, &N::setLocalRot, &N::setLocalRot>},
    {"setLocalScale", writePlace<DzMatrix3, &N::setLocalScale, &N::setLocalScale>},
    {"getRotationOrder", getRotationOrder},
    {"setRotationOrder", setRotationOrder},
    {"getOrigin",      getOrigin},
    {"setOrigin",      setOrigin},
    {"getOrientation", getOrientation},
    {"getLocalBoundingBox", getLocalBoundingBox},
    {"getNodeParent",   getNodeParent},
    {"addNodeChild",    addNodeChild},
    {"removeNodeChild", removeNodeChild},
    {"children",        children},
    {"getSkeleton",     getSkeleton},
    {"findBone",        findBone},
    {"removeBone",      removeBone},
    {"bones",           bones},
    {"properties",      properties},
    {"findProperty",    findProperty},
    {"findControl",     findControl},
    {"removeControl",   removeControl},
};
// clang-format on

} // namespace

void equipNodeScripting(QScriptEngine* engine)
{
    addNatives(newPrototype(engine, qRegisterMetaType<DzNode*>()), kNode);
}

} // namespace quillon
